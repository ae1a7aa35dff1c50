// CTime is compiled here for the platform's own time_t, whatever the builder's flags say, and in time64.cpp for the
// other one.
#ifndef __LP64__
#undef _TIME_BITS
#endif

#include "cdate.h"

#include "base/digits.h"
#include "date_array.h"
#include "dates/time_design.h"
#include "dates/time_text.h"
#include "strings/text_builder.h"

#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <type_traits>

static_assert(sizeof(CDate) == 10, "the layout is part of the ABI");

namespace
{
constexpr std::size_t s_iDateText = 8;

/// Year, month and day. Most computations stay within ints, which 32-bit machines divide much faster; those with
/// large arguments take 64 bits, in which nothing overflows.
template <class TInt>
struct CCivil
{
    TInt m_iYear;
    TInt m_iMonth;
    TInt m_iDay;
};

/// Tells whether moving a date by this much stays within ints.
bool IsSmall(int iCount) { return iCount >= -100000 && iCount <= 100000; }

template <class TInt>
TInt FloorDiv(TInt iLeft, TInt iRight)
{
    return (iLeft >= 0 ? iLeft : iLeft - iRight + 1) / iRight;
}

template <class TInt>
bool IsMonth(TInt iMonth)
{
    return iMonth >= 1 && iMonth <= 12;
}

/// A year divisible by 4 and not by 25 is not divisible by 100, and one divisible by 16 and 25 is by 400.
template <class TInt>
bool IsLeapYear(TInt iYear)
{
    return (iYear & 3) == 0 && (iYear % 25 != 0 || (iYear & 15) == 0);
}

/// Carries a month outside 1 to 12 into the year.
template <class TInt>
void CarryMonth(TInt& iYear, TInt& iMonth)
{
    const TInt iYears = FloorDiv<TInt>(iMonth - 1, 12);
    iYear += iYears;
    iMonth -= iYears * 12;
}

template <class TInt>
int MonthDays(TInt iYear, TInt iMonth)
{
    if (!IsMonth(iMonth))
        CarryMonth(iYear, iMonth);
    if (iMonth == 2)
        return IsLeapYear(iYear) ? 29 : 28;
    return 30 + static_cast<int>((iMonth + (iMonth >> 3)) & 1);
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

template <class TInt>
bool IsBelow100(TInt iNumber)
{
    return iNumber >= 0 && iNumber < 100;
}

/// Year, month and day of any text.
[[gnu::noinline, gnu::cold]] CCivil<int> CivilOfText(const char* pszDate)
{
    const int iValue = static_cast<int>(strtol(pszDate, nullptr, 10));
    return {iValue / 10000, iValue % 10000 / 100, iValue % 100};
}

/// Year, month and day. Nearly all texts are 8 digits.
template <class TInt>
[[gnu::always_inline]] inline CCivil<TInt> CivilOf(const CDate& date)
{
    int iCentury, iYear, iMonth, iDay;
    if (ReadPairs(date.ToStr(), iCentury, iYear) && ReadPairs(date.ToStr() + 4, iMonth, iDay))
        return {iCentury * 100 + iYear, iMonth, iDay};
    const CCivil<int> civil = CivilOfText(date.ToStr());
    return {civil.m_iYear, civil.m_iMonth, civil.m_iDay};
}
} // namespace

/// The part of CDate that is not its callers' business.
struct bedplate_private::DateDesign
{
    /// Sets a date to a year of four digits, and a month and a day of two.
    static void SetParts(CDate& date, int iYear, int iMonth, int iDay)
    {
        static_assert(offsetof(CDate, m_szDate) == 0 && offsetof(CDate, m_bSet) == 9,
                      "the members' order is part of the ABI");
        const unsigned uYear = static_cast<unsigned>(iYear);
        const std::uint64_t uMonthDay =
            WritePairs(static_cast<unsigned>(iMonth), static_cast<unsigned>(iDay));
        const std::uint64_t uText = WritePairs(uYear / 100, uYear % 100) | uMonthDay << 32;
        memcpy(date.m_szDate, &uText, sizeof uText); // at once, for those who read it so
        date.m_szDate[s_iDateText] = '\0';
        date.m_bSet                = true;
    }
};

namespace
{
/// Stores a date as its number; one that no int holds is cut as unsigned arithmetic cuts it.
template <class TInt>
void Store(CDate& date, const CCivil<TInt>& civil)
{
    if (civil.m_iYear >= 0 && civil.m_iYear < 10000 && IsBelow100(civil.m_iMonth) && IsBelow100(civil.m_iDay))
        return bedplate_private::DateDesign::SetParts(date, static_cast<int>(civil.m_iYear),
                                                      static_cast<int>(civil.m_iMonth),
                                                      static_cast<int>(civil.m_iDay));
    const TInt iValue = civil.m_iYear * 10000 + civil.m_iMonth * 100 + civil.m_iDay;
    date.Set(static_cast<int>(static_cast<std::uint32_t>(iValue)));
}

/// Carries a day outside its month, whose own number is 1 to 12, into the months and years around it. The day number
/// and its inverse count years from March, so that the leap day is a year's last (Howard Hinnant, "chrono-Compatible
/// Low-Level Date Algorithms"); all years are moved beyond 0 by whole eras of 400.
template <class TInt>
void CarryDay(CCivil<TInt>& civil)
{
    using TUnsigned        = std::make_unsigned_t<TInt>;
    constexpr TInt iEras   = sizeof(TInt) == 4 ? 25 : 15000;
    const TUnsigned uMonth = static_cast<TUnsigned>(civil.m_iMonth + 9) % 12;
    const TUnsigned uYear =
        static_cast<TUnsigned>(civil.m_iYear - (civil.m_iMonth > 2 ? 0 : 1) + iEras * 400);
    const TUnsigned uDays = uYear * 365 + uYear / 4 - uYear / 100 + uYear / 400 + (153 * uMonth + 2) / 5 +
                            static_cast<TUnsigned>(civil.m_iDay - 1);

    const TUnsigned uEra      = uDays / 146097;
    const unsigned uDayOfEra  = static_cast<unsigned>(uDays - uEra * 146097);
    const unsigned uYearOfEra = (uDayOfEra - uDayOfEra / 1460 + uDayOfEra / 36524 - uDayOfEra / 146096) / 365;
    const unsigned uDayOfYear = uDayOfEra - (365 * uYearOfEra + uYearOfEra / 4 - uYearOfEra / 100);
    const unsigned uMarchMonth = (5 * uDayOfYear + 2) / 153;
    civil.m_iDay               = static_cast<TInt>(uDayOfYear - (153 * uMarchMonth + 2) / 5 + 1);
    civil.m_iMonth             = static_cast<TInt>(uMarchMonth < 10 ? uMarchMonth + 3 : uMarchMonth - 9);
    civil.m_iYear              = static_cast<TInt>(uYearOfEra) + (static_cast<TInt>(uEra) - iEras) * 400 +
                    (civil.m_iMonth <= 2 ? 1 : 0);
}

/// Carries a day that is at most some months away from its month, by single months.
template <class TInt>
void CarryDayByMonths(CCivil<TInt>& civil)
{
    for (int iDays; civil.m_iDay > (iDays = MonthDays(civil.m_iYear, civil.m_iMonth));)
    {
        civil.m_iDay -= iDays;
        if (++civil.m_iMonth > 12)
        {
            civil.m_iMonth = 1;
            ++civil.m_iYear;
        }
    }
    while (civil.m_iDay < 1)
    {
        if (--civil.m_iMonth < 1)
        {
            civil.m_iMonth = 12;
            --civil.m_iYear;
        }
        civil.m_iDay += MonthDays(civil.m_iYear, civil.m_iMonth);
    }
}

/// Steps one month on while the day lies beyond the end of a month that is none of the twelve.
template <class TInt>
void StepForward(CCivil<TInt>& civil)
{
    while (!IsMonth(civil.m_iMonth) && civil.m_iDay > MonthDays(civil.m_iYear, civil.m_iMonth))
    {
        civil.m_iDay -= MonthDays(civil.m_iYear, civil.m_iMonth);
        if (++civil.m_iMonth > 12)
        {
            civil.m_iMonth -= 12;
            ++civil.m_iYear;
        }
    }
}

/// Steps one month back while the day lies before the start of a month that is none of the twelve.
template <class TInt>
void StepBack(CCivil<TInt>& civil)
{
    while (!IsMonth(civil.m_iMonth) && civil.m_iDay < 1)
    {
        civil.m_iDay += MonthDays<TInt>(civil.m_iYear, civil.m_iMonth - 1);
        if (--civil.m_iMonth <= 0)
        {
            civil.m_iMonth += 12;
            --civil.m_iYear;
        }
    }
}

template <class TInt>
void MoveDays(CDate& date, int iDays)
{
    CCivil<TInt> civil = CivilOf<TInt>(date);
    civil.m_iDay += iDays;
    // Texts may hold months such as 0 and 45. Those are left by single steps, of which there are less than a hundred.
    if (civil.m_iDay >= 1)
        StepForward(civil);
    else
        StepBack(civil);
    if (IsMonth(civil.m_iMonth))
        civil.m_iDay > -60 && civil.m_iDay < 90 ? CarryDayByMonths(civil) : CarryDay(civil);
    Store(date, civil);
}

/// Moves a date by months, carried into the years, or by years alone, and fits the day to the new month.
template <class TInt>
void MoveMonths(CDate& date, int iYears, int iMonths, bool bCarry, bool bEndOfMonth)
{
    CCivil<TInt> civil      = CivilOf<TInt>(date);
    const int iOldMonthDays = MonthDays(civil.m_iYear, civil.m_iMonth);
    civil.m_iYear += iYears;
    civil.m_iMonth += iMonths;
    if (bCarry && !IsMonth(civil.m_iMonth))
        CarryMonth(civil.m_iYear, civil.m_iMonth);
    const int iMonthDays = MonthDays(civil.m_iYear, civil.m_iMonth);
    if ((bEndOfMonth && civil.m_iDay >= iOldMonthDays) || civil.m_iDay >= iMonthDays)
        civil.m_iDay = iMonthDays;
    Store(date, civil);
}
} // namespace

// ---- Life -------------------------------------------------------------------------------------------------

CDate::CDate(int iDate) { Set(iDate); }

CDate::CDate(int iYear, int iMonth, int iDay)
{
    if (iYear >= 0 && iYear <= 9999 && IsBelow100(iMonth) && IsBelow100(iDay))
    {
        bedplate_private::DateDesign::SetParts(*this, iYear, iMonth, iDay);
        return;
    }
    char szDate[3 * 11 + 1];
    snprintf(szDate, sizeof szDate, "%04d%02d%02d", iYear, iMonth, iDay);
    Set(szDate);
}

CDate::CDate(const char* pszDate) { Set(pszDate); }

void CDate::SetNull() { Init(); }

void CDate::SetAsToday()
{
    struct tm tmNow;
    bedplate_private::GetLocalNow(tmNow);
    *this = CDate(tmNow.tm_year + 1900, tmNow.tm_mon + 1, tmNow.tm_mday);
}

void CDate::Set(int iDate)
{
    if (iDate < 0 || iDate > 99999999)
    {
        char szDate[11 + 1];
        snprintf(szDate, sizeof szDate, "%08d", iDate);
        return Set(szDate);
    }
    bedplate_private::DateDesign::SetParts(*this, iDate / 10000, iDate % 10000 / 100, iDate % 100);
}

void CDate::Set(const char* pszDate)
{
    const std::size_t iLength = pszDate != nullptr ? strnlen(pszDate, s_iDateText) : 0;
    if (iLength > 0)
        memmove(m_szDate, pszDate, iLength);
    memset(m_szDate + iLength, 0, sizeof m_szDate - iLength);
    m_bSet = true;
}

// ---- Reading ----------------------------------------------------------------------------------------------

int CDate::GetYear() const { return CivilOf<int>(*this).m_iYear; }
int CDate::GetMonth() const { return CivilOf<int>(*this).m_iMonth; }
int CDate::GetDay() const { return CivilOf<int>(*this).m_iDay; }

// ---- The calendar -----------------------------------------------------------------------------------------

namespace
{
/// Zeller's congruence, also for years and months of which it makes something else than a day of the week.
int DayOfWeekByCongruence(int iYear, int iMonth, int iDay)
{
    if (iYear == INT_MIN)
        iYear += 400; // the calendar, and the congruence, repeat; and there is room for one less
    const int iMarchYear = iMonth == 1 || iMonth == 2 ? iYear - 1 : iYear;
    const int iCentury   = iMarchYear / 100;
    const int iRest      = iMarchYear % 100;
    const int iMarch     = ((iMonth > INT_MAX - 9 ? iMonth - 12 : iMonth) + 9) % 12 + 1;
    const int iSum       = (13 * iMarch - 1) / 5 + iDay % 7 + iRest + iRest / 4 + iCentury / 4 - 2 * iCentury;
    return (iSum % 7 + 7) % 7;
}
} // namespace

int CDate::GetMonthDays(int iYear, int iMonth)
{
    if (IsMonth(iMonth))
        return MonthDays(iYear, iMonth);
    return MonthDays<std::int64_t>(iYear, iMonth);
}

int CDate::GetDayOfWeek(int iYear, int iMonth, int iDay)
{
    if (iYear < 1 || !IsMonth(iMonth))
        return DayOfWeekByCongruence(iYear, iMonth, iDay);
    static constexpr unsigned char s_aMonths[] = {0, 3, 2, 5, 0, 3, 5, 1, 4, 6, 2, 4};
    const unsigned uYear                       = static_cast<unsigned>(iYear) - (iMonth < 3 ? 1 : 0);
    const unsigned uDay                        = static_cast<unsigned>(iDay % 7 + 7);
    return static_cast<int>((uYear + uYear / 4 - uYear / 100 + uYear / 400 + s_aMonths[iMonth - 1] + uDay) %
                            7);
}

int CDate::GetTotalDays(const CDate& date)
{
    static constexpr short s_aDaysBefore[2][12] = {{0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334},
                                                   {0, 31, 60, 91, 121, 152, 182, 213, 244, 274, 305, 335}};
    const CCivil<int> civil                     = CivilOf<int>(date);
    if (!IsMonth(civil.m_iMonth))
        return 0;
    const int iYears = civil.m_iYear - 1;
    return iYears * 365 + iYears / 4 - iYears / 100 + iYears / 400 + civil.m_iDay +
           s_aDaysBefore[IsLeapYear(civil.m_iYear) ? 1 : 0][civil.m_iMonth - 1];
}

int CDate::GetDaysDiff(const CDate& dateFirst, const CDate& dateLast)
{
    return GetTotalDays(dateLast) - GetTotalDays(dateFirst);
}

// ---- Arithmetic -------------------------------------------------------------------------------------------

void CDate::AddDay(int iDays)
{
    if (m_bSet)
        IsSmall(iDays) ? MoveDays<int>(*this, iDays) : MoveDays<std::int64_t>(*this, iDays);
}

void CDate::AddMonth(int iMonths, bool bEndOfMonth)
{
    if (m_bSet)
        IsSmall(iMonths) ? MoveMonths<int>(*this, 0, iMonths, true, bEndOfMonth)
                         : MoveMonths<std::int64_t>(*this, 0, iMonths, true, bEndOfMonth);
}

void CDate::AddYear(int iYears, bool bEndOfMonth)
{
    if (m_bSet)
        IsSmall(iYears) ? MoveMonths<int>(*this, iYears, 0, false, bEndOfMonth)
                        : MoveMonths<std::int64_t>(*this, iYears, 0, false, bEndOfMonth);
}

CDate CDate::GetLastDateOfMonth() const
{
    if (!m_bSet)
        return *this;
    const CCivil<int> civil = CivilOf<int>(*this);
    return CDate(civil.m_iYear, civil.m_iMonth, MonthDays(civil.m_iYear, civil.m_iMonth));
}

CDate CDate::GetBizDateAdjusted(CDate::E_Dir eDir, CDateArray* pHolidays) const
{
    CDate date(*this);
    if (!m_bSet)
        return date;
    const bool bForward = eDir == E_Next;
    const int iStep     = bForward ? 1 : -1;
    // In the years 1 to 9999 each holiday is met once, with at most one weekend before it. Texts beyond them may go
    // round in circles; those are given up.
    std::int64_t iStepsLeft = 1000 + 2 * std::int64_t{pHolidays != nullptr ? pHolidays->GetSize() : 0};
    for (; iStepsLeft > 0; --iStepsLeft)
    {
        const CCivil<int> civil = CivilOf<int>(date);
        const int iWeekday      = GetDayOfWeek(civil.m_iYear, civil.m_iMonth, civil.m_iDay);
        if (iWeekday == 0)
            date.AddDay(bForward ? 1 : -2);
        else if (iWeekday == 6)
            date.AddDay(bForward ? 2 : -1);
        else if (pHolidays != nullptr && pHolidays->IsIn(date))
            date.AddDay(iStep);
        else
            break;
    }
    return date;
}

// ---- The text of a moment ---------------------------------------------------------------------------------

namespace
{
/// Appends iValue with at least iWidth digits, as "%0*lld" does. The year and the month of a struct tm are counted from
/// others than ours, so either may be more than an int holds.
void AppendPadded(bedplate_private::CTextBuilder& text, int iWidth, long long iValue)
{
    char* const pszTo = text.Room(static_cast<std::size_t>(iWidth));
    const bool bFits =
        bedplate_private::WriteDigits(pszTo, iWidth, static_cast<std::uint32_t>(iValue)) == 0 && iValue >= 0;
    if (bFits)
        return text.Advance(static_cast<std::size_t>(iWidth));
    char szLong[1 + 10 + 1];
    const int iLength = snprintf(szLong, sizeof szLong, "%0*lld", iWidth, iValue);
    text.Append(szLong, static_cast<std::size_t>(iLength));
}

/// Appends the field that a format letter stands for, or the character itself.
void AppendField(bedplate_private::CTextBuilder& text, char ch, const struct tm& tmTime, int iMicroseconds)
{
    switch (ch)
    {
    case 'Y':
        return AppendPadded(text, 4, tmTime.tm_year + 1900LL);
    case 'M':
        return AppendPadded(text, 2, tmTime.tm_mon + 1LL);
    case 'D':
        return AppendPadded(text, 2, tmTime.tm_mday);
    case 'h':
        return AppendPadded(text, 2, tmTime.tm_hour);
    case 'm':
        return AppendPadded(text, 2, tmTime.tm_min);
    case 's':
        return AppendPadded(text, 2, tmTime.tm_sec);
    case 'l':
        return AppendPadded(text, 3, iMicroseconds / 1000);
    case 'u':
        return AppendPadded(text, 6, iMicroseconds);
    default:
        text.Append(&ch, 1);
    }
}
} // namespace

CString bedplate_private::FormatTime(const char* pszFormat, const struct tm& tmTime, int iMicroseconds)
{
    CTextBuilder text;
    for (const char* psz = pszFormat; psz != nullptr && *psz != '\0'; ++psz)
        AppendField(text, *psz, tmTime, iMicroseconds);
    return text.Finish();
}
