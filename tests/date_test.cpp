// What the model of dates does not show: every day of the calendar, texts in circles, long ways, the storage.

#include "model/dates.h"

#include <gtest/gtest.h>
#include <new>

namespace
{
TEST(Date, EveryDayOfTheYears1To9999IsThatOfTheCalendar)
{
    ASSERT_EQ(3652060U, s_aCalendar.size());
    CDate dateWalk(s_aCalendar[0]);
    for (int i = 1; i < 3652060; ++i)
    {
        dateWalk.AddDay(1);
        ASSERT_EQ(CDate(s_aCalendar[static_cast<std::size_t>(i)]), dateWalk);
        ASSERT_EQ(i, CDate::GetTotalDays(dateWalk));
        ASSERT_EQ(i % 7, dateWalk.GetDayOfWeek());
    }
}

TEST(Date, DaysOfTheWeekFollowTheCongruenceForAnyYearAndMonth)
{
    for (int iYear = -2100; iYear < 2100; iYear += iYear % 3 == 0 ? 1 : 7)
        for (int iMonth = -40; iMonth <= 40; ++iMonth)
        {
            const int iMarchYear = iMonth == 1 || iMonth == 2 ? iYear - 1 : iYear;
            const int iCentury = iMarchYear / 100, iRest = iMarchYear % 100, iMarch = (iMonth + 9) % 12 + 1;
            const int iSum = (13 * iMarch - 1) / 5 + 17 + iRest + iRest / 4 + iCentury / 4 - 2 * iCentury;
            ASSERT_EQ((iSum % 7 + 7) % 7, CDate::GetDayOfWeek(iYear, iMonth, 17)) << iYear << " " << iMonth;
        }
}

TEST(Date, PartsThatAreNoTwoDigitsAreStoredAsANumber)
{
    CDate dateDay("-0000003"), dateMonth("-0000200");
    dateDay.AddYear(1);
    dateMonth.AddYear(1);
    EXPECT_STREQ("00009997", dateDay.ToStr());
    EXPECT_STREQ("00009800", dateMonth.ToStr());
}

TEST(Date, BusinessDaysBehindLongRunsOfHolidaysAreFound)
{
    CDateArray arrHolidays; // in no order, every day of 8 years
    CDate date(20000101);
    for (int i = 0; i < 2922; ++i, date.AddDay(1))
        i % 2 == 0 ? arrHolidays.InsertAt(0, date) : arrHolidays.Add(date);
    EXPECT_STREQ("20080101", CDate(20000103).GetBizDateAdjusted(CDate::E_Next, &arrHolidays).ToStr());
    EXPECT_STREQ("19991231", CDate(20071231).GetBizDateAdjusted(CDate::E_Prev, &arrHolidays).ToStr());
    date = CDate(19991231);
    date.AddBizDay(1, &arrHolidays);
    EXPECT_STREQ("20080101", date.ToStr());
    EXPECT_EQ(0, CDate::GetBizDaysDiff(CDate(), date));
}

TEST(Date, OnlyRealDaysAreRead)
{
    CDate date(20240229);
    for (const char* psz : {static_cast<const char*>(nullptr), "20230229", "2024-02-290", "2024/02/29",
                            "00000101", "+2024101", "2024-0229", "202402-29"})
        EXPECT_FALSE(CDate::Parse(psz, &date)) << (psz != nullptr ? psz : "null");
    EXPECT_STREQ("20240229", date.ToStr());
    EXPECT_TRUE(CDate::Parse("99991231", nullptr));
    EXPECT_STREQ("2024-02-31", CDate(20240231).ToIsoStr().ToStr());
    EXPECT_STREQ("0000-01-15", CDate("0115").ToIsoStr().ToStr());
    EXPECT_STREQ("", CDate().ToIsoStr().ToStr());
    EXPECT_EQ(-1, CDate().GetDayOfWeek());
}

TEST(Date, TextsAreTakenAsTheyAre)
{
    CDate date("20240115"), dateOdd(" 2021215"), dateToday;
    const string strBefore = CTime::GetTimeStamp("YMD").ToStr();
    dateToday.SetAsToday();
    dateOdd.AddDay(1);
    date.Set(date.ToStr() + 4);
    EXPECT_LE(strBefore, dateToday.ToStr());
    EXPECT_LE(dateToday, CDate(CTime::GetTimeStamp("YMD")));
    EXPECT_STREQ("-0050101", CDate(-5, 1, 1).ToStr());
    EXPECT_STREQ("02021216", dateOdd.ToStr());
    EXPECT_STREQ("0115", date.ToStr());
    date.Set(static_cast<const char*>(nullptr));
    EXPECT_TRUE(date.IsSet());
    EXPECT_STREQ("", date.ToStr());
    date.SetNull();
    EXPECT_FALSE(date.IsSet());
}

TEST(Date, BusinessDaysOfTextsInCirclesEnd)
{
    for (const char* pszText : {"99999999", "99991231", "00000000", "-9999999", "-0099100", "abc"})
        for (const CDate::E_Dir eDir : {CDate::E_Next, CDate::E_Prev})
        {
            CDateArray arrHolidays; // each date that it leads to becomes a holiday
            for (int i = 0; i < 60; ++i)
                arrHolidays.Add(CDate(pszText).GetBizDateAdjusted(eDir, &arrHolidays));
        }
}

TEST(Date, DestructionLeavesItsStorageZero)
{
    std::vector<char> aBytes(sizeof(CDate), 'x');
    (new (aBytes.data()) CDate(20240229))->~CDate();
    const volatile char* pBytes = aBytes.data();
    EXPECT_TRUE(std::all_of(pBytes, pBytes + sizeof(CDate), [](char ch) { return ch == 0; }));
}
} // namespace
