// Today's date must not end in 2038 because a program's own time_t does.
#include "dates/wide_time.h"

#include "cdate.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace
{
constexpr std::size_t s_iDateText = 8;

/// Year, month and day. What they pass through on their way is inlined: AddMonth takes 1.5 times as long otherwise.
struct CCivil
{
    int m_iYear;
    int m_iMonth;
    int m_iDay;
};

/// Dates are moved by at most this many years. All that is farther away means nothing, and year * 10000 of what is not
/// still fits an int.
constexpr int s_iMostYears = 204700;

/// Limits a distance in units of which a year has iInYear.
int Limited(int iDistance, int iInYear)
{
    return std::clamp(iDistance, -s_iMostYears * iInYear, s_iMostYears * iInYear);
}

bool IsMonth(int iMonth) { return iMonth >= 1 && iMonth <= 12; }

/// A year divisible by 4 and not by 25 is not divisible by 100, and one divisible by 16 and 25 is by 400.
bool IsLeapYear(int iYear) { return (iYear & 3) == 0 && (iYear % 25 != 0 || (iYear & 15) == 0); }

/// Carries a month outside 1 to 12 into the year.
void CarryMonth(int& iYear, int& iMonth)
{
    const int iRest = iMonth % 12;
    iYear += iMonth / 12 - (iRest < 1 ? 1 : 0);
    iMonth = iRest < 1 ? iRest + 12 : iRest;
}

int MonthDays(int iYear, int iMonth)
{
    if (!IsMonth(iMonth))
    {
        iYear %= 400; // after which the calendar repeats, and there is room for any month
        CarryMonth(iYear, iMonth);
    }
    if (iMonth == 2)
        return IsLeapYear(iYear) ? 29 : 28;
    return 30 + ((iMonth + (iMonth >> 3)) & 1);
}

/// Returns the leap days of the years up to this one. Divisions truncate, also for years before 1: callers rely on what
/// GetTotalDays and GetDayOfWeek make of those.
inline int LeapDays(int iYear) { return iYear / 4 - iYear / 100 + iYear / 400; }

/// Returns the day's number, 1 for 0001-01-01.
inline int DayNumber(int iYear, int iMonth, int iDay)
{
    static constexpr short s_aDaysBefore[2][12] = {{0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334},
                                                   {0, 31, 60, 91, 121, 152, 182, 213, 244, 274, 305, 335}};
    return (iYear - 1) * 365 + LeapDays(iYear - 1) + s_aDaysBefore[IsLeapYear(iYear) ? 1 : 0][iMonth - 1] +
           iDay;
}

/// Reads four digits as two numbers of two; false for other characters.
inline bool ReadPairs(const char* psz, int& iFirst, int& iSecond)
{
    std::uint32_t uBytes; // the first character is the lowest byte
    memcpy(&uBytes, psz, sizeof uBytes);
    if ((uBytes & 0xF0F0F0F0u) != 0x30303030u || ((uBytes + 0x06060606u) & 0xF0F0F0F0u) != 0x30303030u)
        return false;
    uBytes &= 0x0F0F0F0Fu;
    uBytes  = uBytes * 10 + (uBytes >> 8);
    iFirst  = static_cast<int>(uBytes & 0xFF);
    iSecond = static_cast<int>(uBytes >> 16 & 0xFF);
    return true;
}

/// The inverse: four digits of two numbers below 100.
inline std::uint32_t WritePairs(unsigned uFirst, unsigned uSecond)
{
    const std::uint32_t uPairs = uFirst | uSecond << 16;
    const std::uint32_t uTens  = uPairs * 103 >> 10 & 0x000F000Fu;
    return 0x30303030u + uTens + ((uPairs - uTens * 10) << 8);
}

/// Year, month and day of any text.
[[gnu::noinline, gnu::cold]] CCivil CivilOfText(const char* pszDate)
{
    const int iDate = static_cast<int>(strtol(pszDate, nullptr, 10));
    return {iDate / 10000, iDate % 10000 / 100, iDate % 100};
}

/// Year, month and day. Nearly all texts are 8 digits.
[[gnu::always_inline]] inline CCivil CivilOf(const CDate& date)
{
    int iCentury, iYear, iMonth, iDay;
    if (ReadPairs(date.ToStr(), iCentury, iYear) && ReadPairs(date.ToStr() + 4, iMonth, iDay))
        return {iCentury * 100 + iYear, iMonth, iDay};
    return CivilOfText(date.ToStr());
}
} // namespace

/// The part of CDate that is not its callers' business.
struct bedplate_private::DateDesign
{
    /// Sets a date to a year of four digits, and a month and a day of two.
    static void SetParts(CDate& date, unsigned uYear, unsigned uMonth, unsigned uDay)
    {
        const std::uint64_t uMonthDay = WritePairs(uMonth, uDay);
        const std::uint64_t uText     = WritePairs(uYear / 100, uYear % 100) | uMonthDay << 32;
        memcpy(date.m_szDate, &uText, sizeof uText); // at once, for those who read it so
        date.m_szDate[s_iDateText] = '\0';
        date.m_bSet                = true;
    }

    /// Sets a date to its parts if they have that many digits; returns whether they do.
    [[gnu::always_inline]] static bool SetIfShort(CDate& date, int iYear, int iMonth, int iDay)
    {
        const unsigned uYear  = static_cast<unsigned>(iYear);
        const unsigned uMonth = static_cast<unsigned>(iMonth);
        const unsigned uDay   = static_cast<unsigned>(iDay);
        if (uYear > 9999 || uMonth > 99 || uDay > 99)
            return false;
        SetParts(date, uYear, uMonth, uDay);
        return true;
    }
};

namespace
{
/// Stores a date as its number.
[[gnu::always_inline]] inline void Store(CDate& date, CCivil civil)
{
    if (!bedplate_private::DateDesign::SetIfShort(date, civil.m_iYear, civil.m_iMonth, civil.m_iDay))
        date.Set(civil.m_iYear * 10000 + civil.m_iMonth * 100 + civil.m_iDay);
}

/// Stores a date in a month; with bLast, or if the month lacks the day, as the month's last day.
[[gnu::always_inline]] inline void StoreInMonth(CDate& date, CCivil civil, bool bLast)
{
    const int iMonthDays = MonthDays(civil.m_iYear, civil.m_iMonth);
    if (bLast || civil.m_iDay > iMonthDays)
        civil.m_iDay = iMonthDays;
    Store(date, civil);
}

/// Tells whether a day outside its month is carried by single months. For near ones that takes half as long as going by
/// number. For months that are none of the twelve it is the rule: texts may hold such as 0 and 45, and each step brings
/// them nearer to the twelve.
bool GoesByMonths(const CCivil& civil)
{
    return !IsMonth(civil.m_iMonth) || (civil.m_iDay > -60 && civil.m_iDay < 90);
}

/// Carries a day outside its month into the months around it, as far as it goes by months.
[[gnu::always_inline]] inline void CarryByMonths(CCivil& civil)
{
    for (int iDays; civil.m_iDay > (iDays = MonthDays(civil.m_iYear, civil.m_iMonth)) && GoesByMonths(civil);)
    {
        civil.m_iDay -= iDays;
        if (++civil.m_iMonth > 12)
        {
            civil.m_iMonth -= 12;
            ++civil.m_iYear;
        }
    }
    while (civil.m_iDay < 1 && GoesByMonths(civil))
    {
        if (--civil.m_iMonth < 1)
        {
            civil.m_iMonth += 12;
            --civil.m_iYear;
        }
        civil.m_iDay += MonthDays(civil.m_iYear, civil.m_iMonth);
    }
}

/// Carries a day outside its month, whose own number is 1 to 12, into the months and years around it: to the day's number
/// and back (Neri and Schneider, "Euclidean affine functions and their application to calendar algorithms"). Years
/// begin in March, so that the leap day is a year's last, and are moved beyond 0 by whole times 400.
CCivil CarryByNumber(CCivil civil)
{
    constexpr int iMoved      = 210000;
    constexpr int iMarchFirst = -305; // the number of 0000-03-01
    const unsigned uDays =
        static_cast<unsigned>(DayNumber(civil.m_iYear + iMoved, civil.m_iMonth, civil.m_iDay) - iMarchFirst);
    const unsigned uCentury      = (4 * uDays + 3) / 146097;
    const unsigned uDayOfCentury = (4 * uDays + 3) % 146097 / 4;
    const unsigned uYear         = (4 * uDayOfCentury + 3) / 1461;
    const unsigned uDayOfYear    = (4 * uDayOfCentury + 3) % 1461 / 4;
    const unsigned uMonth        = 2141 * uDayOfYear + 197913; // in units of 2^-16
    const int iMonth             = static_cast<int>(uMonth >> 16);
    civil.m_iDay                 = static_cast<int>((uMonth & 0xFFFF) / 2141) + 1;
    civil.m_iMonth               = iMonth > 12 ? iMonth - 12 : iMonth;
    civil.m_iYear                = static_cast<int>(100 * uCentury + uYear) - iMoved + (iMonth > 12 ? 1 : 0);
    return civil;
}
} // namespace

// ---- Life -------------------------------------------------------------------------------------------------

CDate::CDate(int iDate) { Set(iDate); }

CDate::CDate(int iYear, int iMonth, int iDay)
{
    if (bedplate_private::DateDesign::SetIfShort(*this, iYear, iMonth, iDay))
        return;
    char szDate[3 * 11 + 1];
    snprintf(szDate, sizeof szDate, "%04d%02d%02d", iYear, iMonth, iDay);
    Set(szDate);
}

CDate::CDate(const char* pszDate) { Set(pszDate); }

void CDate::SetNull() { Init(); }

void CDate::SetAsToday()
{
    const time_t tNow = time(nullptr);
    struct tm tmNow   = {};
    (void)localtime_r(&tNow, &tmNow);
    *this = CDate(tmNow.tm_year + 1900, tmNow.tm_mon + 1, tmNow.tm_mday);
}

void CDate::Set(int iDate)
{
    const unsigned uDate = static_cast<unsigned>(iDate);
    if (uDate <= 99999999)
        return bedplate_private::DateDesign::SetParts(*this, uDate / 10000, uDate % 10000 / 100, uDate % 100);
    char szDate[11 + 1];
    snprintf(szDate, sizeof szDate, "%08d", iDate);
    Set(szDate);
}

void CDate::Set(const char* pszDate)
{
    const std::size_t iLength = pszDate != nullptr ? strnlen(pszDate, s_iDateText) : 0;
    if (iLength > 0)
        memmove(m_szDate, pszDate, iLength);
    memset(m_szDate + iLength, 0, sizeof m_szDate - iLength);
    m_bSet = true;
}

bool CDate::Parse(const char* pszText, CDate* pDate)
{
    const std::size_t iLength    = pszText != nullptr ? strnlen(pszText, 11) : 0;
    char szDate[s_iDateText + 1] = "";
    if (iLength == 8)
        memcpy(szDate, pszText, 8);
    else if (iLength == 10 && pszText[4] == '-' && pszText[7] == '-')
        memcpy(mempcpy(mempcpy(szDate, pszText, 4), pszText + 5, 2), pszText + 8, 2);
    const CDate date(szDate);
    if (!date.IsValid())
        return false;
    if (pDate != nullptr)
        *pDate = date;
    return true;
}

// ---- Reading ----------------------------------------------------------------------------------------------

int CDate::GetYear() const { return CivilOf(*this).m_iYear; }
int CDate::GetMonth() const { return CivilOf(*this).m_iMonth; }
int CDate::GetDay() const { return CivilOf(*this).m_iDay; }

bool CDate::IsValid() const
{
    int iCentury, iYear, iMonth, iDay;
    if (!ReadPairs(m_szDate, iCentury, iYear) || !ReadPairs(m_szDate + 4, iMonth, iDay))
        return false;
    iYear += iCentury * 100;
    return iYear > 0 && IsMonth(iMonth) && iDay >= 1 && iDay <= MonthDays(iYear, iMonth);
}

CString CDate::ToIsoStr() const
{
    if (!m_bSet)
        return CString();
    const CCivil civil = CivilOf(*this);
    const CDate date(civil.m_iYear, civil.m_iMonth, civil.m_iDay);
    const char* const psz = date.m_szDate;
    if (date.IsValid())
    {
        const char szIso[] = {psz[0], psz[1], psz[2], psz[3], '-', psz[4], psz[5], '-', psz[6], psz[7], '\0'};
        return CString(szIso);
    }
    return CFormat("%04d-%02d-%02d", civil.m_iYear, civil.m_iMonth, civil.m_iDay);
}

// ---- The calendar -----------------------------------------------------------------------------------------

namespace
{
/// What the month adds to the day of the week: (13 * m - 1) / 5, with m counted from March. Numbers that are none of the
/// twelve go the same way; only what would overflow is limited. The table saves a fifth of GetDayOfWeek.
int WeekdayOfMonth(int iMonth)
{
    static constexpr unsigned char s_aWeekdays[] = {28, 31, 2, 5, 7, 10, 12, 15, 18, 20, 23, 25};
    if (IsMonth(iMonth))
        return s_aWeekdays[iMonth - 1];
    return (13 * ((std::min(iMonth, INT_MAX - 9) + 9) % 12 + 1) - 1) / 5;
}
} // namespace

int CDate::GetMonthDays(int iYear, int iMonth) { return MonthDays(iYear, iMonth); }

int CDate::GetDayOfWeek(int iYear, int iMonth, int iDay)
{
    // Zeller's congruence, to the letter also for years and months of which it makes something else than a day of the
    // week. Eight years of 365 days count as the one day by which they miss whole weeks, so that nothing overflows.
    constexpr unsigned uWeeks = 7u << 28;
    const int iMarchYear      = iMonth == 1 || iMonth == 2 ? std::max(iYear, -INT_MAX) - 1 : iYear;
    const int iYears          = (iMarchYear >> 3) + (iMarchYear & 7) + LeapDays(iMarchYear);
    return static_cast<int>((uWeeks + static_cast<unsigned>(iYears + WeekdayOfMonth(iMonth) + iDay % 7)) % 7);
}

int CDate::GetDayOfWeek() const
{
    const CCivil civil = CivilOf(*this);
    return m_bSet ? GetDayOfWeek(civil.m_iYear, civil.m_iMonth, civil.m_iDay) : -1;
}

int CDate::GetTotalDays(const CDate& date)
{
    const CCivil civil = CivilOf(date);
    return IsMonth(civil.m_iMonth) ? DayNumber(civil.m_iYear, civil.m_iMonth, civil.m_iDay) : 0;
}

int CDate::GetDaysDiff(const CDate& dateFirst, const CDate& dateLast)
{
    return GetTotalDays(dateLast) - GetTotalDays(dateFirst);
}

// ---- Arithmetic -------------------------------------------------------------------------------------------

void CDate::AddDay(int iDays)
{
    if (!m_bSet)
        return;
    CCivil civil = CivilOf(*this);
    civil.m_iDay += Limited(iDays, 365);
    if (civil.m_iDay < 1 || civil.m_iDay > 28)
        CarryByMonths(civil);
    if (civil.m_iDay < 1 || civil.m_iDay > 31)
        civil = CarryByNumber(civil);
    Store(*this, civil);
}

void CDate::AddMonth(int iMonths, bool bEndOfMonth)
{
    if (!m_bSet)
        return;
    CCivil civil     = CivilOf(*this);
    const bool bLast = bEndOfMonth && civil.m_iDay >= MonthDays(civil.m_iYear, civil.m_iMonth);
    civil.m_iMonth += Limited(iMonths, 12);
    CarryMonth(civil.m_iYear, civil.m_iMonth);
    StoreInMonth(*this, civil, bLast);
}

void CDate::AddYear(int iYears, bool bEndOfMonth)
{
    if (!m_bSet)
        return;
    CCivil civil     = CivilOf(*this);
    const bool bLast = bEndOfMonth && civil.m_iDay >= MonthDays(civil.m_iYear, civil.m_iMonth);
    civil.m_iYear += Limited(iYears, 1);
    StoreInMonth(*this, civil, bLast);
}

CDate CDate::GetLastDateOfMonth() const
{
    if (!m_bSet)
        return *this;
    const CCivil civil = CivilOf(*this);
    return CDate(civil.m_iYear, civil.m_iMonth, MonthDays(civil.m_iYear, civil.m_iMonth));
}
