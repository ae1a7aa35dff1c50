// CDate against a list of all days of the calendar. What is not in the list means nothing, and is only done.
#ifndef DATES_H
#define DATES_H

#include "engine.h"

/// Returns the days of a month; months are counted on from January of the year 0.
inline int MonthDays(int iMonths)
{
    const int iYear = iMonths / 12, iMonth = iMonths % 12 + 1;
    const bool bLeap = iYear % 4 == 0 && (iYear % 100 != 0 || iYear % 400 == 0);
    return iMonth == 2 ? 28 + bLeap : 30 + (iMonth + iMonth / 8) % 2;
}

/// All days as their numbers, each at the place that GetTotalDays returns.
inline const std::vector<int> s_aCalendar = []
{
    std::vector<int> aDays{1231};
    for (int iMonths = 12; iMonths < 120000; ++iMonths)
        for (int iDay = 1; iDay <= MonthDays(iMonths); ++iDay)
            aDays.push_back(iMonths / 12 * 10000 + (iMonths % 12 + 1) * 100 + iDay);
    return aDays;
}();

class CDates
{
public:
    static constexpr char s_szName[] = "dates";
    static constexpr int s_iStates   = 1; // each operation draws a new date
    static const SOperation<CDates> s_aOperations[7];

    void Prepare(int, CChoices&) {}
    void Check()
    {
        Same("set", m_bSet, m_date.IsSet());
        Same("number", Number(m_date), (m_date.GetYear() * 100 + m_date.GetMonth()) * 100 + m_date.GetDay());
    }

    void Set(CChoices& choices, CFault& fault)
    {
        const string strText = choices.Text(9);
        const int iAny = choices.AnyInt(), iKind = choices.Byte() % 2;
        m_bSet = true;
        Same("failure", "", fault.Run([&] { iKind > 0 ? m_date.Set(AtTheEnd(strText)) : m_date.Set(iAny); }));
        Same("text", iKind > 0 ? strText.substr(0, 8) : Text(iAny), m_date.ToStr());
    }
    void AddDay(CChoices& choices, CFault& fault)
    {
        const int iDate = Draw(choices), iDays = choices.AnyInt();
        Move(After(iDate, iDays), fault, [&] { m_date.AddDay(iDays); });
    }
    void AddMonths(CChoices& choices, CFault& fault)
    {
        const int iDate = Draw(choices), iCount = choices.AnyInt();
        const bool bYears = choices.Byte() % 2 == 0, bToEnd = choices.Byte() % 2 == 0;
        const std::int64_t iMonths = Months(iDate) + std::int64_t{iCount} * (bYears ? 12 : 1);
        const bool bIsEnd          = iDate % 100 >= MonthDays(Months(iDate));
        Move(InMonth(iMonths, bToEnd && bIsEnd ? 99 : iDate % 100), fault,
             [&] { bYears ? m_date.AddYear(iCount, bToEnd) : m_date.AddMonth(iCount, bToEnd); });
    }
    void BizDays(CChoices& choices, CFault& fault)
    {
        const int iDate = Draw(choices), iDays = choices.Between(-60, 60);
        const int iLast = After(iDate, choices.Between(-60, 60)), iNear = choices.Byte() % 9;
        int iMoved = iDate, iAdjusted = iDate, aiHolidays[4] = {};
        CDateArray arrHolidays, *pHolidays = iNear > 0 ? &arrHolidays : nullptr;
        for (int& iHoliday : aiHolidays)
            arrHolidays.Add(iHoliday = iNear > 0 ? After(iDate, choices.Between(-iNear, iNear)) : 0);
        const auto IsBizDay = [&](int i)
        { return TotalDays(i) % 7 % 6 != 0 && std::count(aiHolidays, aiHolidays + 4, i) == 0; };
        while (IsInCalendar(iAdjusted) && !IsBizDay(iAdjusted))
            iAdjusted = After(iAdjusted, iDays > 0 ? 1 : -1);
        for (int iLeft = std::abs(iDays); iLeft > 0 && IsInCalendar(iMoved); iLeft -= IsBizDay(iMoved))
            iMoved = After(iMoved, iDays > 0 ? 1 : -1);
        if (m_date.IsValid() && IsInCalendar(iLast))
        {
            int iBizDays    = 0;
            const int iStep = iDate < iLast ? 1 : -1;
            for (int i = iDate; i != iLast;)
                iBizDays += IsBizDay(i = After(i, iStep)) ? iStep : 0;
            Same("business days", iBizDays, CDate::GetBizDaysDiff(m_date, CDate(iLast), pHolidays));
        }
        const CDate date(m_date);
        if (m_date.IsValid() || !m_bSet)
            Move(iMoved, fault, [&] { m_date.AddBizDay(iDays, pHolidays); });
        m_date.AddBizDay(choices.AnyInt(), pHolidays);
        m_date          = date;
        const auto eDir = iDays > 0 ? CDate::E_Next : CDate::E_Prev;
        Move(iAdjusted, fault, [&] { m_date = m_date.GetBizDateAdjusted(eDir, pHolidays); });
    }
    void Read(CChoices& choices, CFault& fault)
    {
        const int iDate        = Draw(choices);
        const string strDigits = Text(iDate), strTail = choices.Byte() % 4 == 0 ? "0" : "";
        const string strIso = string(strDigits).insert(6, "-").insert(4, "-");
        const bool bReal    = std::binary_search(s_aCalendar.begin() + 1, s_aCalendar.end(), iDate);
        Same("valid", bReal && strDigits == m_date.ToStr(), m_date.IsValid());
        for (const string& strText : {strDigits, strIso})
        {
            CDate date(11112233);
            const bool bRead = CDate::Parse(CString((strText + strTail).c_str()), &date);
            Same("read", bReal && strTail.empty(), bRead);
            Same("what was read", bRead ? iDate : 11112233, Number(date));
        }
        const string strShown = bReal ? strIso : m_date.ToIsoStr().ToStr();
        SameText(fault, strShown, [&] { return m_date.ToIsoStr(); });
    }
    void Calendar(CChoices& choices, CFault& fault)
    {
        const int iYear = choices.AnyInt(), iMonth = choices.AnyInt(), iDay = choices.AnyInt();
        const std::int64_t iMonths = (std::int64_t{iYear} * 12 + iMonth - 1) % 4800 + 4800; // in 400 years
        const int iDate            = Draw(choices);
        Same("days of any month", MonthDays(static_cast<int>(iMonths)), CDate::GetMonthDays(iYear, iMonth));
        Same("any weekday", true, CDate::GetDayOfWeek(iYear, iMonth, iDay) / 7 == 0);
        const std::int64_t iDays = std::int64_t{TotalDays(iDate)} - iDate % 100 + iDay;
        if (IsInCalendar(iDate))
            Same("weekday", (iDays % 7 + 7) % 7, CDate::GetDayOfWeek(iDate / 10000, iDate / 100 % 100, iDay));
        Move(InMonth(Months(iDate), 99), fault, [&] { m_date = m_date.GetLastDateOfMonth(); });
    }
    void Compare(CChoices& choices, CFault&)
    {
        const int iOther = Draw(choices);
        const CDate other(m_date);
        const int iDate = choices.Byte() % 4 == 0 ? iOther : Draw(choices),
                  iAll  = CDate::GetTotalDays(m_date);
        if (IsInCalendar(iDate) || iDate < 1)
            Same("total days", TotalDays(iDate), iAll);
        Same("days between", CDate::GetTotalDays(other) - iAll, CDate::GetDaysDiff(m_date, other));
        const int iOrder = string(m_date.ToStr()).compare(other.ToStr());
        Same("order", (iOrder > 0) - (iOrder < 0), CDateArray_SortCmp(&m_date, &other));
        Same("equal", iOrder == 0, m_date == other && !(m_date != other));
        Same("less", iOrder < 0, m_date < other && !(m_date >= other));
        Same("greater", iOrder > 0, m_date > other && !(m_date <= other));
    }

private:
    static int Number(const CDate& date) { return static_cast<int>(strtol(date.ToStr(), nullptr, 10)); }
    static int Months(int iDate) { return iDate / 10000 * 12 + iDate / 100 % 100 - 1; }
    static bool IsInCalendar(int iDate) { return iDate >= 10000 && (iDate / 100 + 99) % 100 < 12; }
    static string Text(int iNumber)
    {
        char szText[16];
        snprintf(szText, sizeof szText, "%08d", iNumber);
        return string(szText, 8);
    }
    /// Returns the date in a month that has this day or else its last; 0 outside the calendar.
    static int InMonth(std::int64_t iMonths, int iDay)
    {
        const int i = static_cast<int>(iMonths);
        return iMonths < 12 || iMonths >= 120000
                   ? 0
                   : i / 12 * 10000 + (i % 12 + 1) * 100 + std::min(iDay, MonthDays(i));
    }
    /// Returns the place in the calendar; days outside the month count on from its start.
    static int TotalDays(int iDate)
    {
        const auto itFirst =
            std::lower_bound(s_aCalendar.begin(), s_aCalendar.end(), iDate - iDate % 100 + 1);
        return IsInCalendar(iDate) ? static_cast<int>(itFirst - s_aCalendar.begin()) + iDate % 100 - 1 : 0;
    }
    static int After(int iDate, int iDays)
    {
        const std::size_t iAt = static_cast<std::size_t>(std::int64_t{TotalDays(iDate)} + iDays);
        return iAt < s_aCalendar.size() ? s_aCalendar[iAt] : 0;
    }
    /// Makes a new date, unset or of any number, and returns its number.
    int Draw(CChoices& choices)
    {
        const int iKind = choices.Byte() % 8, iMonth = choices.Between(0, 13), iDay = choices.Between(0, 32);
        const int iYear = iKind == 1 ? choices.Between(0, 9999) : choices.Between(1990, 2040);
        m_bSet          = iKind > 0;
        m_date = iKind == 0 ? CDate() : iKind == 2 ? CDate(choices.AnyInt()) : CDate(iYear, iMonth, iDay);
        return Number(m_date);
    }
    /// Makes a call that moves the date to a day, or to none of the calendar.
    template <class TCall>
    void Move(int iDate, CFault& fault, TCall Call)
    {
        const bool bMeant = m_bSet && IsInCalendar(Number(m_date)) && IsInCalendar(iDate);
        Same("failure", "", fault.Run(Call));
        Same("text", bMeant ? Text(iDate) : m_date.ToStr(), m_date.ToStr());
        Same("unset", !m_bSet, m_date == CDate());
    }

    CDate m_date;
    bool m_bSet = false;
};

inline const SOperation<CDates> CDates::s_aOperations[] = {
    {"Set", &CDates::Set},         {"AddDay", &CDates::AddDay}, {"AddMonths", &CDates::AddMonths},
    {"BizDays", &CDates::BizDays}, {"Read", &CDates::Read},     {"Calendar", &CDates::Calendar},
    {"Compare", &CDates::Compare}};

#endif
