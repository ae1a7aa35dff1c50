// Expected dates come from a calendar that is walked day by day, and from code that follows the documented steps of each
// operation literally, a month at a time.

#include "list_model.h"

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <new>
#include <set>

namespace
{
struct SSteps
{
    int iYear, iMonth, iDay;

    explicit SSteps(const string& strText)
    {
        const int iNumber = static_cast<int>(strtol(strText.c_str(), nullptr, 10));
        iYear = iNumber / 10000, iMonth = iNumber % 10000 / 100, iDay = iNumber % 100;
    }
    string Text() const { return Print("%08d", iYear * 10000 + iMonth * 100 + iDay).substr(0, 8); }

    /// Carries the month into the year, which is a step of its own in some operations.
    void CarryMonth()
    {
        for (; iMonth <= 0; iMonth += 12)
            --iYear;
        for (; iMonth > 12; iMonth -= 12)
            ++iYear;
    }
    int Days(int iMonths = 0) const
    {
        SSteps steps = *this;
        steps.iMonth += iMonths;
        steps.CarryMonth();
        const bool bLeap = steps.iYear % 4 == 0 && (steps.iYear % 100 != 0 || steps.iYear % 400 == 0);
        return steps.iMonth == 2 ? (bLeap ? 29 : 28) : 30 + (steps.iMonth + steps.iMonth / 8) % 2;
    }
    void AddDay(int iDays)
    {
        iDay += iDays;
        const bool bBack = iDay < 1;
        while (!bBack && iDay > Days())
        {
            iDay -= Days();
            if (++iMonth > 12)
                iMonth -= 12, ++iYear;
        }
        while (bBack && iDay < 1)
        {
            iDay += Days(-1);
            if (--iMonth <= 0)
                iMonth += 12, --iYear;
        }
    }
    void Add(int iYears, int iMonths, bool bCarry, bool bEndOfMonth)
    {
        const int iOldDays = Days();
        iYear += iYears, iMonth += iMonths;
        if (bCarry)
            CarryMonth();
        if ((bEndOfMonth && iDay >= iOldDays) || iDay >= Days())
            iDay = Days();
    }
    static int DayOfWeek(std::int64_t iYear, std::int64_t iMonth, std::int64_t iDay)
    {
        const std::int64_t iY = iMonth == 1 || iMonth == 2 ? iYear - 1 : iYear, iC = iY / 100, iR = iY % 100;
        const std::int64_t iM = (iMonth + 9) % 12 + 1;
        return static_cast<int>((((13 * iM - 1) / 5 + iDay + iR + iR / 4 + iC / 4 - 2 * iC) % 7 + 7) % 7);
    }
    /// Tells whether the date is a business day; else makes one step.
    bool StepToBizDate(CDate::E_Dir eDir, const std::set<string>& aHolidays)
    {
        const int iWeekday = DayOfWeek(iYear, iMonth, iDay);
        if (iWeekday != 0 && iWeekday != 6 && aHolidays.count(Text()) == 0)
            return true;
        AddDay(eDir == CDate::E_Next ? (iWeekday == 6 ? 2 : 1) : (iWeekday == 0 ? -2 : -1));
        return *this = SSteps(Text()), false;
    }
};

const std::vector<string> s_aOddTexts{"20240231", "20240300", "20240199", "20240001", "20244501", "20249999",
                                      "00000000", "99999999", "99991231", "00010101", "2024",     "",
                                      "abc",      "-0000005", "-1231",    "-9999999", "+2024011", " 2024115",
                                      "1e5",      "20000229", "-0099100", "00000010", "20230228", "20240430"};

TEST(Date, EveryDayOfTheYears1To9999IsThatOfTheCalendar)
{
    int iTotal = 0;
    CDate dateWalk("00001231");
    for (int iYear = 1; iYear <= 9999; ++iYear)
        for (int iMonth = 1; iMonth <= 12; ++iMonth)
        {
            const int iDays = SSteps(Print("%04d%02d01", iYear, iMonth)).Days();
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
            ASSERT_EQ(Print("%04d%02d%02d", iYear, iMonth, iDays), dateWalk.ToStr());
        }
    EXPECT_TRUE(iTotal == 3652059 && CDate::GetDaysDiff(20240101, 20240301) == 60);
}

TEST(Date, MovesOfAnyTextFollowTheDocumentedSteps)
{
    CRandom random;
    for (int i = 0; i < 60000; ++i)
    {
        string strText = s_aOddTexts[Unsigned(i) % s_aOddTexts.size()];
        if (i % 4 > 0)
            strText = i % 4 == 1 ? Print("%08d", random.Between(0, 99999999))
                                 : Print("%04d%02d%02d", random.Between(0, 9999), random.Between(0, 13),
                                         random.Between(0, 32));
        const int iRange  = i % 1001 == 0 ? 150000 : 40 + i % 3 * 1500,
                  iCount  = random.Between(-iRange, iRange);
        const bool bToEnd = random.Between(0, 1) == 0;
        const SSteps steps(strText);
        SSteps stepsDay(steps), stepsMonth(steps), stepsYear(steps);
        stepsDay.AddDay(iCount), stepsMonth.Add(0, iCount, true, bToEnd),
            stepsYear.Add(iCount % 10000, 0, false, bToEnd);
        CDate date(strText.c_str()), dateMonth(date), dateYear(date), dateLast(date.GetLastDateOfMonth());
        ASSERT_EQ(steps.iMonth >= 1 && steps.iMonth <= 12, CDate::GetTotalDays(date) != 0) << strText;
        date.AddDay(iCount), dateMonth.AddMonth(iCount, bToEnd), dateYear.AddYear(iCount % 10000, bToEnd);
        ASSERT_EQ(stepsDay.Text() + " " + stepsMonth.Text() + " " + stepsYear.Text(),
                  string(date.ToStr()) + " " + dateMonth.ToStr() + " " + dateYear.ToStr())
            << "'" << strText << "' by " << iCount << (bToEnd ? ", to month's end" : "");
        ASSERT_EQ(Print("%04d%02d%02d", steps.iYear, steps.iMonth, steps.Days()).substr(0, 8),
                  dateLast.ToStr());
    }
    CDate date(20240229), dateUnset;
    date.AddMonth(1, true), date.AddMonth(-13, false), date.AddYear(1, true);
    EXPECT_STREQ("20240229", date.ToStr());
    dateUnset.AddDay(1), dateUnset.AddMonth(1), dateUnset.AddYear(1);
    EXPECT_TRUE(!dateUnset.IsSet() && *dateUnset.ToStr() == '\0' && !dateUnset.GetLastDateOfMonth().IsSet());
}

TEST(Date, AnyIntIsTakenAndAnsweredAtOnce)
{
    const int aiValues[] = {INT_MIN, INT_MIN + 1, -1000000007, -100001, -401,        -12,    -1,
                            0,       1,           13,          100001,  INT_MAX - 1, INT_MAX};
    for (int i : aiValues)
        for (int j : aiValues)
        {
            for (int k : aiValues)
                EXPECT_EQ(Print("%04d%02d%02d", i, j, k).substr(0, 8), CDate(i, j, k).ToStr());
            for (int k = -30; k <= 30; ++k)
                ASSERT_EQ(SSteps::DayOfWeek(i, k, j), CDate::GetDayOfWeek(i, k, j))
                    << i << "/" << k << "/" << j;
            ASSERT_EQ(SSteps::DayOfWeek(i, j, i), CDate::GetDayOfWeek(i, j, i)) << i << "/" << j;
            SSteps steps("20000101"); // the calendar repeats after 4800 months
            steps.Add(0, static_cast<int>((std::int64_t{i} * 12 + j - 1) % 4800), true, false);
            ASSERT_EQ(steps.Days(), CDate::GetMonthDays(i, j)) << i << "/" << j;
        }
    for (const string& strText : s_aOddTexts)
        for (int i : aiValues)
        {
            CDate date(strText.c_str()), dateMonth(date), dateYear(date), dateNumber(i);
            date.AddDay(i), dateMonth.AddMonth(i, true), dateYear.AddYear(i), dateNumber.AddDay(i);
            EXPECT_EQ(24U, (string(date.ToStr()) + dateMonth.ToStr() + dateYear.ToStr()).size());
        }
}

TEST(Date, BusinessDaysAreThoseOfANaiveSearchEvenInCircles)
{
    CRandom random;
    const std::set<string> aNone;
    for (int iRound = 0; iRound < 400; ++iRound)
    {
        const CDate::E_Dir eDir = iRound % 2 == 0 ? CDate::E_Next : CDate::E_Prev;
        SSteps steps(
            Print("%04d%02d%02d", random.Between(1, 9990), random.Between(1, 12), random.Between(1, 28)));
        CDateArray arrHolidays;
        std::set<string> aHolidays;
        for (int i = 0; i < 90; ++i, steps.AddDay(1))
            if (random.Between(0, 6) >= iRound % 7 && aHolidays.insert(steps.Text()).second)
                arrHolidays.InsertAt(random.Between(0, arrHolidays.GetSize()), steps.Text().c_str());
        for (int i = 0; i < 110; ++i, steps.AddDay(-1))
        {
            const CDate date(steps.Text().c_str());
            SSteps stepsTo = steps;
            while (!stepsTo.StepToBizDate(eDir, i % 5 == 0 ? aNone : aHolidays))
                continue;
            const CDate dateTo = date.GetBizDateAdjusted(eDir, i % 5 == 0 ? nullptr : &arrHolidays);
            ASSERT_EQ(stepsTo.Text() + " from " + steps.Text(),
                      string(dateTo.ToStr()) + " from " + date.ToStr())
                << eDir;
        }
        const string& strOdd = s_aOddTexts[Unsigned(iRound / 2) % s_aOddTexts.size()];
        SSteps stepsOdd(strOdd); // each date that it leads to becomes a holiday: it must end all the same
        for (int i = 0; iRound < 48 && i < 2500 && !stepsOdd.StepToBizDate(eDir, aHolidays); ++i)
            if (aHolidays.insert(stepsOdd.Text()).second)
                arrHolidays.Add(stepsOdd.Text().c_str());
        (void)CDate(strOdd.c_str()).GetBizDateAdjusted(eDir, &arrHolidays);
    }
    EXPECT_FALSE(CDate().GetBizDateAdjusted(CDate::E_Next, nullptr).IsSet());
}

TEST(Date, HoldsTheFirstEightCharactersAndComparesThem)
{
    const CDate aDates[] = {
        CDate(), 20240229, 1231,           -5,     123456789,         INT_MIN,        "20240115XYZ",
        "2024",  "",       CDate(nullptr), "\xe4", CDate(2024, 7, 4), CDate(5, 1, 1), CDate(2024, 13, 1)};
    const string aTexts[] = {"",     "20240229", "00001231", "-0000005", "12345678", "-2147483", "20240115",
                             "2024", "",         "",         "\xe4",     "20240704", "00050101", "20241301"};
    for (int i = 0; i < 14; ++i)
    {
        const string& strText = aTexts[i];
        CDate date(aDates[i]);
        EXPECT_TRUE(strText == date.ToStr() && date.IsSet() == (i > 0)) << strText << " is " << date.ToStr();
        for (int j = 0; j < 14; ++j)
        {
            const CDate& dateOther = aDates[j];
            const int iOrder       = strText.compare(aTexts[j]);
            EXPECT_EQ((iOrder > 0) - (iOrder < 0), CDateArray_SortCmp(&date, &dateOther));
            EXPECT_TRUE((date == dateOther) == (iOrder == 0) && (date != dateOther) == (iOrder != 0) &&
                        (date < dateOther) == (iOrder < 0) && (date <= dateOther) == (iOrder <= 0) &&
                        (date > dateOther) == (iOrder > 0) && (date >= dateOther) == (iOrder >= 0))
                << strText << ", " << aTexts[j];
        }
        date.Set(date.ToStr() + strText.size() / 2); // its own text
        EXPECT_EQ(strText.substr(strText.size() / 2), date.ToStr());
        strText.empty() ? date.SetNull() : date.Init();
        EXPECT_TRUE(!date.IsSet() && *date.ToStr() == '\0' && !CDate(date).IsSet());
    }
    char aszNow[2][16]; // before and after, as midnight may pass
    CDate date;
    for (int i = 0; i < 2; date.SetAsToday(), ++i)
    {
        const std::time_t tNow = std::time(nullptr);
        (void)strftime(aszNow[i], sizeof aszNow[i], "%Y%m%d", localtime(&tNow));
        EXPECT_TRUE(i == 0 || date == aszNow[0] || date == aszNow[1]) << date.ToStr();
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
