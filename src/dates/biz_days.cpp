// CDate's business days: Mondays to Fridays that are not in a list of holidays.
#include "cdate.h"

#include "base/short_bytes.h"
#include "date_array.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace
{
bool IsWeekend(const CDate& date) { return date.GetDayOfWeek() % 6 == 0; }

/// A list of holidays, which may be none, that is asked for one date after the other. When a date is found, all of its
/// year are noted, so that a long run of holidays does not read the list once for each day.
class CHolidays
{
public:
    explicit CHolidays(const CDateArray* pDates) : m_pDates(pDates) {}

    int GetSize() const { return m_pDates != nullptr ? m_pDates->GetSize() : 0; }

    bool IsIn(const CDate& date)
    {
        if (m_bNoted && IsOfYear(date))
            return (m_auDays[date.GetMonth()] >> date.GetDay() & 1) != 0;
        if (m_pDates == nullptr || !m_pDates->IsIn(date))
            return false;
        Note(date);
        return true;
    }

    /// Returns on how many weekdays from dateFirst to dateLast there are holidays.
    int Count(const CDate& dateFirst, const CDate& dateLast) const
    {
        int iCount = 0;
        for (int i = 0; i < GetSize(); ++i)
        {
            const CDate& date = (*m_pDates)[i];
            if (dateFirst <= date && date <= dateLast && date.IsValid() && !IsWeekend(date) &&
                m_pDates->Find(date) == i) // once, however often it is in the list
                ++iCount;
        }
        return iCount;
    }

private:
    static std::uint32_t YearOf(const CDate& date)
    {
        return bedplate_private::LoadWord<std::uint32_t>(date.ToStr());
    }
    bool IsOfYear(const CDate& date) const { return YearOf(date) == m_uYear && date.IsValid(); }

    void Note(const CDate& dateOfYear)
    {
        m_bNoted = true;
        m_uYear  = YearOf(dateOfYear);
        std::fill_n(m_auDays, 13, 0);
        for (const CDate& date : *m_pDates)
        {
            if (IsOfYear(date))
                m_auDays[date.GetMonth()] |= std::uint32_t{1} << date.GetDay();
        }
    }

    const CDateArray* m_pDates;
    bool m_bNoted         = false;
    std::uint32_t m_uYear = 0;  // four characters
    std::uint32_t m_auDays[13]; // a bit for each holiday of a month
};

/// Moves a date that is no business day to the next one in a direction.
void LeaveHolidays(CDate& date, bool bForward, CHolidays& holidays)
{
    // In the years 1 to 9999 each holiday is met once, with at most one weekend before it. Texts beyond them may go
    // round in circles; those are given up.
    for (std::int64_t iStepsLeft = 1000 + 2 * std::int64_t{holidays.GetSize()}; iStepsLeft > 0; --iStepsLeft)
    {
        const int iWeekday = date.GetDayOfWeek();
        if (iWeekday == 0)
            date.AddDay(bForward ? 1 : -2);
        else if (iWeekday == 6)
            date.AddDay(bForward ? 2 : -1);
        else if (holidays.IsIn(date))
            date.AddDay(bForward ? 1 : -1);
        else
            break;
    }
}

/// Returns how many days it takes from a day of the week to pass iCount weekdays, backwards for a negative count.
int DaysOfWeekdays(int iDayOfWeek, int iCount)
{
    constexpr int iMost = 50000000; // beyond all dates, and what it takes fits an int
    iCount              = std::clamp(iCount, -iMost, iMost);
    // The day's place in a week that begins with five weekdays: on Monday, or backwards on Friday.
    const int iPlace    = (iCount > 0 ? iDayOfWeek + 6 : 12 - iDayOfWeek) % 7;
    const int iWeekdays = std::min(iPlace, 4) + std::abs(iCount);
    const int iDays     = iWeekdays / 5 * 7 + iWeekdays % 5 - iPlace;
    return iCount > 0 ? iDays : -iDays;
}

/// Returns how many weekdays there are from 0001-01-01, a Monday, to the day of this number.
int CountWeekdays(int iTotalDays) { return iTotalDays / 7 * 5 + std::min(iTotalDays % 7, 5); }

CDate Moved(CDate date, int iDays)
{
    date.AddDay(iDays);
    return date;
}
} // namespace

CDate CDate::GetBizDateAdjusted(CDate::E_Dir eDir, CDateArray* pHolidays) const
{
    CDate date(*this);
    CHolidays holidays(pHolidays);
    if (m_bSet)
        LeaveHolidays(date, eDir == E_Next, holidays);
    return date;
}

void CDate::AddBizDay(int iDays, const CDateArray* pHolidays)
{
    if (!m_bSet || iDays == 0)
        return;
    const int iStep = iDays > 0 ? 1 : -1;
    const CDate dateNearest(Moved(*this, iStep));
    AddDay(DaysOfWeekdays(GetDayOfWeek(), iDays));
    CHolidays holidays(pHolidays);
    for (int i = holidays.Count(std::min(dateNearest, *this), std::max(dateNearest, *this)); i > 0; --i)
    {
        AddDay(iStep);
        LeaveHolidays(*this, iStep > 0, holidays);
    }
}

int CDate::GetBizDaysDiff(const CDate& dateFirst, const CDate& dateLast, const CDateArray* pHolidays)
{
    if (!dateFirst.m_bSet || !dateLast.m_bSet || dateFirst == dateLast)
        return 0;
    const bool bForward = dateFirst < dateLast;
    const CDate dateFrom(bForward ? Moved(dateFirst, 1) : dateLast);
    const CDate dateTo(bForward ? dateLast : Moved(dateFirst, -1));
    const int iDays = CountWeekdays(GetTotalDays(dateTo)) - CountWeekdays(GetTotalDays(dateFrom) - 1) -
                      CHolidays(pHolidays).Count(dateFrom, dateTo);
    return bForward ? iDays : -iDays;
}
