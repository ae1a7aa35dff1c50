// What the model of dates does not show: every day of the calendar, texts in circles, documented rows, the storage.

#include "model/dates.h"

#include <cstring>
#include <gtest/gtest.h>
#include <new>

namespace
{
TEST(Date, EveryDayOfTheYears1To9999IsThatOfTheCalendar)
{
    ASSERT_TRUE(s_aCalendar.size() == 3652060 && s_aCalendar.back() == 99991231);
    CDate dateWalk(s_aCalendar[0]);
    for (int i = 1; i < 3652060; ++i)
    {
        const int iDay = s_aCalendar[static_cast<std::size_t>(i)];
        const CDate date(iDay / 10000, iDay / 100 % 100, iDay % 100), dateLast(dateWalk);
        CDate dateBack(date);
        dateWalk.AddDay(1), dateBack.AddDay(-1);
        ASSERT_TRUE(dateWalk == date && dateBack == dateLast && CDate(iDay) == date &&
                    CDate::GetTotalDays(date) == i &&
                    CDate::GetDayOfWeek(date.GetYear(), date.GetMonth(), date.GetDay()) == i % 7)
            << iDay;
    }
}

TEST(Date, MovesAreTheDocumentedOnes)
{
    const auto Days     = [](CDate& date, int i) { date.AddDay(i); };
    const auto Months   = [](CDate& date, int i) { date.AddMonth(i); };
    const auto MonthEnd = [](CDate& date, int i) { date.AddMonth(i, true); };
    const auto Years    = [](CDate& date, int i) { date.AddYear(i); };
    const auto Business = [](CDate& date, int i)
    {
        CDateArray arrHolidays;
        for (int iHoliday : {20241225, 20241226, 20241231, 20250101})
            arrHolidays.Add(iHoliday);
        date = date.GetBizDateAdjusted(i > 0 ? CDate::E_Next : CDate::E_Prev, &arrHolidays);
    };
    struct SMove
    {
        CDate date;
        int iCount;
        void (*Move)(CDate& date, int iCount);
        const char* pszTo;
    };
    for (SMove move : {SMove{20240301, -1, Days, "20240229"}, SMove{20240231, 0, Days, "20240302"},
                       SMove{" 2021215", 1, Days, "02021216"}, SMove{CDate(), 1, Days, ""},
                       SMove{20240131, 1, Months, "20240229"}, SMove{20240229, 1, MonthEnd, "20240331"},
                       SMove{20240229, 1, Years, "20250228"}, SMove{20241228, 1, Business, "20241230"},
                       SMove{20241229, 0, Business, "20241227"}, SMove{20241225, 0, Business, "20241224"},
                       SMove{20241231, 1, Business, "20250102"}})
    {
        move.Move(move.date, move.iCount);
        EXPECT_STREQ(move.pszTo, move.date.ToStr());
    }
}

TEST(Date, TextsAreTakenAsTheyAre)
{
    CDate date("20240115"), dateToday;
    const string strBefore = CTime::GetTimeStamp("YMD").ToStr();
    dateToday.SetAsToday();
    EXPECT_TRUE(strBefore <= dateToday.ToStr() && dateToday <= CTime::GetTimeStamp("YMD").ToStr());
    EXPECT_STREQ("-0050101", CDate(-5, 1, 1).ToStr());
    date.Set(date.ToStr() + 4);
    EXPECT_TRUE(date.GetMonth() == 1 && date.GetDay() == 15 && CDate("+2024011").GetYear() == 202);
    date.Set(static_cast<const char*>(nullptr));
    EXPECT_TRUE(date.IsSet() && date == CDate());
    date.SetNull();
    EXPECT_FALSE(date.IsSet());
}

TEST(Date, BusinessDaysOfTextsInCirclesEnd)
{
    for (const char* pszText :
         {"99999999", "99991231", "00000000", "-9999999", "-0099100", "20249999", "abc"})
        for (const CDate::E_Dir eDir : {CDate::E_Next, CDate::E_Prev})
        {
            CDateArray arrHolidays; // each date that it leads to becomes a holiday
            for (int i = 0; i < 60; ++i)
                arrHolidays.Add(CDate(pszText).GetBizDateAdjusted(eDir, &arrHolidays));
            EXPECT_EQ(60, arrHolidays.GetSize());
        }
}

TEST(Date, DestructionLeavesItsStorageZero)
{
    unsigned char aBytes[sizeof(CDate)];
    memset(aBytes, 0xA5, sizeof aBytes);
    CDate* pDate = new (aBytes) CDate(20240229);
    pDate->~CDate();
    const volatile unsigned char* pBytes = aBytes;
    for (std::size_t i = 0; i < sizeof(CDate); ++i)
        EXPECT_EQ(0, pBytes[i]) << i;
}
} // namespace
