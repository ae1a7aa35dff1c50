// CDate against texts that are moved a month at a time, by the documented steps, and days that are counted year by year.
#ifndef DATES_H
#define DATES_H

#include "engine.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <utility>

/// A date by the numbers of its text, whatever they are.
struct SSteps
{
    long long iYear, iMonth, iDay;

    explicit SSteps(const string& strText)
    {
        const int iNumber = static_cast<int>(strtol(strText.c_str(), nullptr, 10));
        iYear = iNumber / 10000, iMonth = iNumber % 10000 / 100, iDay = iNumber % 100;
    }
    template <class... TArgs>
    static string Cut(const char* pszFormat, TArgs... args)
    {
        char szText[40];
        return string(szText, static_cast<std::size_t>(snprintf(szText, sizeof szText, pszFormat, args...)))
            .substr(0, 8);
    }
    /// Returns the text; an empty one, which no date can get, if the number is no int.
    string Text() const
    {
        const long long iNumber = iYear * 10000 + iMonth * 100 + iDay;
        return iNumber >= INT_MIN && iNumber <= INT_MAX ? Cut("%08d", static_cast<int>(iNumber)) : "";
    }
    /// Carries the month into the year, after as many whole cycles of the calendar as there are.
    void CarryMonth()
    {
        iYear += iMonth / 4800 * 400, iMonth %= 4800;
        for (; iMonth <= 0; iMonth += 12)
            --iYear;
        for (; iMonth > 12; iMonth -= 12)
            ++iYear;
    }
    static bool IsLeap(long long iYear) { return iYear % 4 == 0 && (iYear % 100 != 0 || iYear % 400 == 0); }
    long long Days(int iMonths = 0) const
    {
        SSteps steps = *this;
        steps.iMonth += iMonths;
        steps.CarryMonth();
        return steps.iMonth == 2 ? 28 + IsLeap(steps.iYear) : 30 + (steps.iMonth + steps.iMonth / 8) % 2;
    }
    void AddDay(long long iDays)
    {
        const long long iCycles = std::abs(iDays) > 300000 ? iDays / 146097 - (iDays < 0 ? -1 : 1) : 0;
        iYear += iCycles * 400, iDay += iDays - iCycles * 146097;
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
    void AddMonths(int iYears, int iMonths, bool bCarry, bool bEndOfMonth)
    {
        const long long iOldDays = Days();
        iYear += iYears, iMonth += iMonths;
        if (bCarry)
            CarryMonth();
        if ((bEndOfMonth && iDay >= iOldDays) || iDay >= Days())
            iDay = Days();
    }
    bool IsInCalendar() const { return iYear >= 1 && iYear <= 9999 && iMonth >= 1 && iMonth <= 12; }
    /// Counts the days year by year and month by month. Year 0 counts as the formula has it.
    long long TotalDays() const
    {
        static const auto s_aDays = [] // before each year
        {
            std::array<int, 10000> aDays{-365};
            for (std::size_t i = 2; i < aDays.size(); ++i)
                aDays[i] = aDays[i - 1] + 365 + IsLeap(static_cast<int>(i) - 1);
            return aDays;
        }();
        if (iMonth < 1 || iMonth > 12)
            return 0;
        long long iTotal = s_aDays[static_cast<std::size_t>(iYear)] + iDay;
        for (int i = 1; i < iMonth; ++i)
            iTotal += Days(static_cast<int>(i - iMonth));
        return iTotal;
    }
    int DayOfWeek() const
    {
        const long long iY = iMonth == 1 || iMonth == 2 ? iYear - 1 : iYear, iC = iY / 100, iR = iY % 100;
        const long long iM = (iMonth + 9) % 12 + 1;
        const long long iH = (13 * iM - 1) / 5 + iDay + iR + iR / 4 + iC / 4 - 2 * iC;
        return static_cast<int>(((IsInCalendar() ? TotalDays() : iH) % 7 + 7) % 7);
    }
};

class CDates
{
public:
    static constexpr char s_szName[] = "dates";
    static constexpr int s_iStates   = 3;

    void Prepare(int iState, CChoices& choices)
    {
        CFault none;
        for (int i = 0; i < iState * 2; ++i)
            Set(choices, none), Holiday(choices, none);
    }
    void Check()
    {
        const SSteps steps(m_strText);
        Same("text", m_strText, m_date.ToStr());
        Same("end", 0, m_date.ToStr()[8]);
        Same("set", m_bSet, m_date.IsSet());
        Same("year", steps.iYear, m_date.GetYear());
        Same("month", steps.iMonth, m_date.GetMonth());
        Same("day", steps.iDay, m_date.GetDay());
    }

    void Set(CChoices& choices, CFault& fault)
    {
        const string strText = DrawText(choices), strOld = m_strText;
        const int iKind = choices.Byte() % 9, iAny = choices.AnyInt(), iMonth = choices.AnyInt(),
                  iDay = choices.AnyInt();
        const std::size_t iOwn =
            static_cast<std::size_t>(choices.Between(0, static_cast<int>(strOld.size())));
        const string strAny = SSteps::Cut("%08d", iAny), strToday = Today(),
                     strDay = SSteps::Cut("%04d%02d%02d", iAny, iMonth, iDay);
        const std::pair<string, std::function<void()>> aWays[] = {
            {"", [&] { m_date.Init(); }},
            {"", [&] { m_date.SetNull(); }},
            {strToday, [&] { m_date.SetAsToday(); }},
            {strAny, [&] { m_date.Set(iAny); }},
            {strAny, [&] { m_date = iAny; }},
            {strDay, [&] { m_date = CDate(iAny, iMonth, iDay); }},
            {strOld.substr(iOwn), [&] { m_date.Set(m_date.ToStr() + iOwn); }},
            {"", [&] { m_date.Set(static_cast<const char*>(nullptr)); }},
            {strText.substr(0, 8), [&] { m_date = CDate(CDate(strText.c_str())); }}};
        Free(fault, aWays[iKind].second);
        m_strText = iKind == 2 && m_date != strToday.c_str() ? Today() : aWays[iKind].first;
        m_bSet    = iKind > 1;
    }
    void Holiday(CChoices& choices, CFault&)
    {
        SSteps steps(m_strText);
        steps.AddDay(choices.Between(-9, 9));
        m_aHolidays.push_back(choices.Byte() % 4 == 0 ? m_strText : steps.Text());
        m_arrHolidays.Add(m_aHolidays.back().c_str());
    }
    void AddDay(CChoices& choices, CFault& fault)
    {
        const int iDays = DrawShift(choices);
        Move(
            fault, [&](SSteps& steps) { steps.AddDay(iDays); }, [&] { m_date.AddDay(iDays); });
    }
    void AddMonths(CChoices& choices, CFault& fault)
    {
        const int iCount  = DrawShift(choices);
        const bool bYears = choices.Byte() % 2 == 0, bToEnd = choices.Byte() % 2 == 0;
        Move(
            fault,
            [&](SSteps& steps)
            { steps.AddMonths(bYears ? iCount : 0, bYears ? 0 : iCount, !bYears, bToEnd); },
            [&] { bYears ? m_date.AddYear(iCount, bToEnd) : m_date.AddMonth(iCount, bToEnd); });
    }
    void BizDate(CChoices& choices, CFault& fault)
    {
        const bool bNext = choices.Byte() % 2 == 0, bHolidays = choices.Byte() % 4 > 0;
        CDate date;
        Free(fault,
             [&]
             {
                 date = m_date.GetBizDateAdjusted(bNext ? CDate::E_Next : CDate::E_Prev,
                                                  bHolidays ? &m_arrHolidays : nullptr);
             });
        Same("set", m_bSet, date.IsSet());
        string strText = m_strText;
        for (; m_bSet;)
        {
            SSteps steps(strText);
            if (steps.iYear < 1 || steps.iYear > 9999)
                return; // no calendar there; it only had to end
            const int iWeekday = steps.DayOfWeek();
            if (iWeekday != 0 && iWeekday != 6 &&
                (!bHolidays || std::count(m_aHolidays.begin(), m_aHolidays.end(), strText) == 0))
                break;
            steps.AddDay(bNext ? (iWeekday == 6 ? 2 : 1) : iWeekday == 0 ? -2 : -1);
            strText = steps.Text();
        }
        Same("business day", strText, date.ToStr());
    }
    void Calendar(CChoices& choices, CFault&)
    {
        SSteps steps(m_strText);
        const int iYear = static_cast<int>(steps.iYear), iMonth = static_cast<int>(steps.iMonth);
        const string strLast = SSteps::Cut("%04d%02d%02d", iYear, iMonth, static_cast<int>(steps.Days()));
        const CDate dateLast(m_date.GetLastDateOfMonth());
        Same("set", m_bSet, dateLast.IsSet());
        Same("last date", m_bSet ? strLast : "", dateLast.ToStr());
        const int iAnyYear = choices.AnyInt(), iAnyMonth = choices.AnyInt(), iAnyDay = choices.AnyInt();
        Same("weekday", steps.DayOfWeek(), CDate::GetDayOfWeek(iYear, iMonth, static_cast<int>(steps.iDay)));
        steps.iYear = iAnyYear, steps.iMonth = iAnyMonth, steps.iDay = iAnyDay;
        Same("days of any month", steps.Days(), CDate::GetMonthDays(iAnyYear, iAnyMonth));
        Same("any weekday", steps.DayOfWeek(), CDate::GetDayOfWeek(iAnyYear, iAnyMonth, iAnyDay));
    }
    void Compare(CChoices& choices, CFault&)
    {
        const string strOther = choices.Byte() % 4 == 0 ? m_strText : DrawText(choices).substr(0, 8);
        const CDate other(strOther.c_str());
        const int iOrder       = m_strText.compare(strOther);
        const long long iTotal = SSteps(m_strText).TotalDays(), iOther = SSteps(strOther).TotalDays();
        Same("total days", iTotal, CDate::GetTotalDays(m_date));
        Same("days between", iOther - iTotal, CDate::GetDaysDiff(m_date, other));
        Same("order", (iOrder > 0) - (iOrder < 0), CDateArray_SortCmp(&m_date, &other));
        Same("equal", iOrder == 0, m_date == other && !(m_date != other));
        Same("less", iOrder < 0, m_date < other && !(m_date >= other));
        Same("greater", iOrder > 0, m_date > other && !(m_date <= other));
    }

    static const SOperation<CDates> s_aOperations[7];

private:
    static string Today()
    {
        char szText[16];
        const std::time_t tNow = std::time(nullptr);
        return string(szText, strftime(szText, sizeof szText, "%Y%m%d", localtime(&tNow)));
    }
    static string DrawText(CChoices& choices)
    {
        static constexpr const char* s_aszOdd[] = {
            "20240231", "20240300", "20240199", "20240001", "20244501", "20249999", "00000000", "99999999",
            "99991231", "00010101", "2024",     "",         "abc",      "-0000005", "-1231",    "-9999999",
            "+2024011", " 2024115", "1e5",      "-0099100", "00000010", "20240131", "20230228", "20240430"};
        const int iKind = choices.Byte() % 8;
        if (iKind == 0)
            return choices.Text(9);
        if (iKind == 1)
            return s_aszOdd[static_cast<std::size_t>(choices.Byte()) % std::size(s_aszOdd)];
        if (iKind == 2)
            return std::to_string(choices.AnyInt());
        const int iYear  = iKind == 3 ? choices.Between(0, 9999) : choices.Between(1990, 2040),
                  iMonth = choices.Between(0, 13);
        return SSteps::Cut("%04d%02d%02d", iYear, iMonth, choices.Between(0, 32));
    }
    static int DrawShift(CChoices& choices)
    {
        const int iKind = choices.Byte() % 8;
        return iKind == 0  ? choices.AnyInt()
               : iKind < 3 ? choices.Between(-30000, 30000)
                           : choices.Between(-40, 40);
    }
    /// Makes a call that needs no memory.
    template <class TCall>
    static void Free(CFault& fault, TCall Call)
    {
        Same("failure", "", fault.Run(std::ref(Call)));
        Same("allocations", false, fault.WasHit());
    }
    template <class TMove, class TCall>
    void Move(CFault& fault, TMove MoveModel, TCall Call)
    {
        SSteps steps(m_strText);
        MoveModel(steps);
        Free(fault, Call);
        if (m_bSet)
            m_strText = steps.Text();
        if (m_bSet && m_strText.empty())
            m_strText = string(m_date.ToStr()).append(8, '?').substr(0, 8); // whatever it is
    }

    CDate m_date;
    string m_strText;
    bool m_bSet = false;
    CDateArray m_arrHolidays;
    std::vector<string> m_aHolidays;
};

inline const SOperation<CDates> CDates::s_aOperations[] = {
    {"Set", &CDates::Set},         {"Holiday", &CDates::Holiday},
    {"AddDay", &CDates::AddDay},   {"AddMonths", &CDates::AddMonths},
    {"BizDate", &CDates::BizDate}, {"Calendar", &CDates::Calendar},
    {"Compare", &CDates::Compare}};

#endif
