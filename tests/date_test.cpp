// What the model of dates does not show: every day of the calendar, texts in circles, documented rows, the storage.

#include "model/dates.h"

#include <cstring>
#include <gtest/gtest.h>
#include <new>

namespace
{
TEST(Date, EveryDayOfTheYears1To9999IsThatOfTheCalendar)
{
    int iTotal = 0;
    CDate dateWalk("00001231");
    for (int iYear = 1; iYear <= 9999; ++iYear)
        for (int iMonth = 1; iMonth <= 12; ++iMonth)
        {
            const int iDays = static_cast<int>(SSteps(SSteps::Cut("%04d%02d01", iYear, iMonth)).Days());
            ASSERT_EQ(iDays, CDate::GetMonthDays(iYear, iMonth)) << iYear << "/" << iMonth;
            for (int iDay = 1; iDay <= iDays; ++iDay)
            {
                const CDate date(iYear, iMonth, iDay), dateLast(dateWalk);
                CDate dateBack(date);
                dateWalk.AddDay(1), dateBack.AddDay(-1), ++iTotal;
                ASSERT_TRUE(dateWalk == date && dateBack == dateLast && CDate::GetTotalDays(date) == iTotal &&
                            CDate::GetDayOfWeek(iYear, iMonth, iDay) == iTotal % 7 &&
                            date.GetYear() == iYear && date.GetMonth() == iMonth && date.GetDay() == iDay)
                    << date.ToStr();
            }
            ASSERT_EQ(SSteps::Cut("%04d%02d%02d", iYear, iMonth, iDays), dateWalk.ToStr());
        }
    EXPECT_TRUE(iTotal == 3652059 && CDate::GetDaysDiff(20240101, 20240301) == 60);
}

struct SMove
{
    int iFrom, iCount;
    void (*Move)(CDate& date, int iCount);
    const char* pszTo;
};

TEST(Date, MovesAreTheDocumentedOnes)
{
    const auto Days     = [](CDate& date, int i) { date.AddDay(i); };
    const auto Months   = [](CDate& date, int i) { date.AddMonth(i); };
    const auto MonthEnd = [](CDate& date, int i) { date.AddMonth(i, true); };
    const auto Years    = [](CDate& date, int i) { date.AddYear(i); };
    const auto YearEnd  = [](CDate& date, int i) { date.AddYear(i, true); };
    CDateArray arrHolidays;
    for (int i : {20241225, 20241226, 20241231, 20250101})
        arrHolidays.Add(i);
    static CDateArray* s_pHolidays = &arrHolidays;
    const auto Business            = [](CDate& date, int i)
    { date = date.GetBizDateAdjusted(i > 0 ? CDate::E_Next : CDate::E_Prev, s_pHolidays); };
    const SMove aMoves[] = {{20240301, -1, Days, "20240229"},      {20231231, 1, Days, "20240101"},
                            {20240231, 0, Days, "20240302"},       {20240300, 0, Days, "20240229"},
                            {20240115, -400, Days, "20221211"},    {20240131, 1, Months, "20240229"},
                            {20240229, 1, Months, "20240329"},     {20240229, 1, MonthEnd, "20240331"},
                            {20240115, -13, MonthEnd, "20221215"}, {20240231, 0, MonthEnd, "20240229"},
                            {20230228, 12, MonthEnd, "20240229"},  {20240229, 1, Years, "20250228"},
                            {20230228, 1, Years, "20240228"},      {20230228, 1, YearEnd, "20240229"},
                            {20241228, 1, Business, "20241230"},   {20241229, 0, Business, "20241227"},
                            {20241225, 1, Business, "20241227"},   {20241225, 0, Business, "20241224"},
                            {20241231, 1, Business, "20250102"},   {20240601, 0, Business, "20240531"}};
    for (const SMove& move : aMoves)
    {
        CDate date(move.iFrom);
        move.Move(date, move.iCount);
        EXPECT_STREQ(move.pszTo, date.ToStr()) << move.iFrom << " by " << move.iCount;
    }
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
            EXPECT_TRUE(CDate(pszText).GetBizDateAdjusted(eDir, &arrHolidays).IsSet());
        }
}

TEST(Date, DestructionLeavesItsStorageZero)
{
    unsigned char aBytes[sizeof(CDate) + 1];
    memset(aBytes, 0xA5, sizeof aBytes);
    CDate* pDate = new (aBytes) CDate(20240229);
    pDate->~CDate();
    const volatile unsigned char* pBytes = aBytes;
    for (std::size_t i = 0; i <= sizeof(CDate); ++i)
        EXPECT_EQ(i < sizeof(CDate) ? 0 : 0xA5, pBytes[i]) << i;
}
} // namespace
