// CDate: a calendar date, held as its text YYYYMMDD; and CTime, a moment to the microsecond in local time.
//
//     CDate date(2024, 1, 31);
//     date.AddMonth(1);
//     printf("%s\n", date.ToStr());                                     // 20240229
//     CDateArray arrHolidays;
//     arrHolidays.Add(CDate(20240401));
//     CDate dateDue = CDate(20240330).GetBizDateAdjusted(CDate::E_Next, &arrHolidays);
//     printf("%s\n", dateDue.ToStr());                                  // 20240402
//     printf("%s\n", CTime::GetTimeStamp("Y-M-D h:m:s.l").ToStr());     // 2026-03-07 09:05:02.004
//
// Neither throws nor allocates, but for the texts that ToIsoStr and CTime return. A CString that is passed where a text is meant
// goes by its first NUL. Several threads may read one object at a time; one that changes it must be alone with it.
#ifndef BEDPLATE_CDATE_H
#define BEDPLATE_CDATE_H

#include "cstring.h"

#include <sys/time.h>
#include <time.h>

/// A date is either unset, with an empty text, or set. It is never checked: a set date has whatever text of up to 8
/// characters it was given, and a computation takes the text as a decimal number n (as strtol does, 0 without digits)
/// with year n / 10000, month n % 10000 / 100 and day n % 100. Within the years 1 to 9999 computations follow the
/// Gregorian calendar, also for the time before it was introduced. Results outside the years 0 to 9999 do not fit the
/// text and mean nothing, but every operation takes any int and returns at once.
class BEDPLATE_API CDate
{
public:
    /// Directions of business-day adjustment; any other value counts as E_Prev.
    enum E_Dir
    {
        E_Prev = 0,
        E_Next = 1
    };

    /// Makes an unset date.
    BEDPLATE_INLINE CDate() { Init(); }

    /// Makes the date of a number; see Set.
    CDate(int iDate);

    /// Makes a date with the first 8 characters of "%04d%02d%02d".
    ///   Example   CDate(2024, 1, 5) -> "20240105"; CDate(2024, 2, 30) -> "20240230"
    CDate(int iYear, int iMonth, int iDay);

    /// Makes the date of a text; see Set.
    CDate(const char* pszDate);
    explicit CDate(const CString& strDate) : CDate(strDate.ToStr()) {}

    /// Makes a copy, set or unset.
    BEDPLATE_INLINE CDate(const CDate& dateOther)
    {
        // All at once: processors wait when a word is read whose bytes have just been written one by one.
        __builtin_memcpy(static_cast<void*>(this), &dateOther, sizeof dateOther);
    }

    /// Sets all of the storage to zero; that outlives the object, in optimised programs too.
    BEDPLATE_INLINE ~CDate()
    {
        Init();
        // The compiler would drop stores into an object that ends here, were it not for a reader that it cannot see.
        __asm__ volatile("" : : "m"(m_szDate), "m"(m_bSet));
    }

    /// Copies dateOther, set or unset.
    CDate& operator=(const CDate& dateOther) = default;

    /// Makes the date unset.
    BEDPLATE_INLINE void Init() { __builtin_memset(static_cast<void*>(this), 0, sizeof *this); }
    void SetNull();

    /// Sets the date to today's in the local time zone, also beyond 2038.
    void SetAsToday();

    /// Sets the date to the first 8 characters of "%08d".
    ///   Example   Set(20240115) -> "20240115"; Set(1231) -> "00001231"; Set(-5) -> "-0000005"
    void Set(int iDate);

    /// Sets the date to the first 8 characters of pszDate, which may be its own text. A null text counts as empty; the
    /// date is set all the same. Written as a literal it is nullptr: NULL would be a number to some compilers.
    void Set(const char* pszDate);
    void Set(const CString& strDate) { Set(strDate.ToStr()); }

    /// Reads a text that is a real day, written YYYYMMDD or YYYY-MM-DD, and nothing else.
    ///   Returns   whether it is one. Only then is *pDate set to it; pDate may be null.
    ///   Example   "20240229" and "2024-02-29" -> true; "2023-02-29", "2024-2-29" and "20240229 " -> false
    static bool Parse(const char* pszText, CDate* pDate);
    static bool Parse(const CString& strText, CDate* pDate) { return Parse(strText.ToStr(), pDate); }

    // ---- Reading ------------------------------------------------------------------------------------------

    /// Returns the text, empty for an unset date; never null. It dies with the date.
    BEDPLATE_INLINE const char* ToStr() const { return m_szDate; }

    /// Tells whether the date was given a value.
    BEDPLATE_INLINE bool IsSet() const { return m_bSet; }

    /// Tells whether the text is a real day: 8 digits, of the years 1 to 9999.
    ///   Example   "20240229" -> true; "20230229", "2024-02-29" and an unset date -> false
    bool IsValid() const;

    /// Returns "YYYY-MM-DD", the empty string for an unset date. Of a text that is no real day it is "%04d-%02d-%02d" of
    /// GetYear(), GetMonth() and GetDay().
    ///   Throws    code -11 as CString.
    ///   Example   20240131 -> "2024-01-31"
    CString ToIsoStr() const;

    /// Returns the year, 0 for an unset date.
    int GetYear() const;

    /// Returns the month, 0 for an unset date.
    int GetMonth() const;

    /// Returns the day of the month, 0 for an unset date.
    int GetDay() const;

    // ---- The calendar -------------------------------------------------------------------------------------

    /// Returns the number of days of a month. Months outside 1 to 12 count on into other years: month 0 is December of
    /// the year before.
    ///   Example   GetMonthDays(2024, 2) -> 29; GetMonthDays(2023, 14) -> 29
    static int GetMonthDays(int iYear, int iMonth);

    /// Returns the day of the week, 0 for Sunday to 6 for Saturday, by Zeller's congruence; for months outside 1 to 12 a
    /// number without meaning. Days outside the month count on from its start.
    ///   Example   GetDayOfWeek(2024, 1, 1) -> 1
    static int GetDayOfWeek(int iYear, int iMonth, int iDay);

    /// Returns the date's own day of the week, in the same way; -1 for an unset date.
    ///   Example   CDate(20240101).GetDayOfWeek() -> 1
    int GetDayOfWeek() const;

    /// Returns the number of days from 0000-12-31 to a date, so that 0001-01-01 is day 1; 0 for a month outside 1 to 12.
    ///   Example   CDate(19700101) -> 719163
    static int GetTotalDays(const CDate& date);

    /// Returns GetTotalDays(dateLast) - GetTotalDays(dateFirst).
    ///   Example   CDate(20240101), CDate(20240301) -> 60
    static int GetDaysDiff(const CDate& dateFirst, const CDate& dateLast);

    // ---- Arithmetic: an unset date stays as it is ------------------------------------------------------------

    /// Moves the date by iDays. A day outside its month is carried over on the way.
    ///   Cost      O(1).
    ///   Example   20240301: AddDay(-1) -> 20240229; 20240231: AddDay(0) -> 20240302
    void AddDay(int iDays);

    /// Moves the date by iMonths. A day that the new month lacks becomes its last; with bEndOfMonth, so does the last
    /// day of the old month.
    ///   Example   20240131: AddMonth(1) -> 20240229; 20240229: AddMonth(1, true) -> 20240331
    void AddMonth(int iMonths, bool bEndOfMonth = false);

    /// Moves the date by iYears; as AddMonth.
    ///   Example   20240229: AddYear(1) -> 20250228
    void AddYear(int iYears, bool bEndOfMonth = false);

    /// Returns the last day of the date's month; an unset date for an unset one.
    CDate GetLastDateOfMonth() const;

    /// Returns the nearest business day, starting with the date itself, in a direction: a Monday to Friday that is not
    /// in *pHolidays, which may be null. An unset date gives an unset one.
    ///   Cost      O(holidays) for each year in which a holiday is passed. Where the dates leave the years 1 to 9999, it
    ///             stops after as many steps as there are holidays, and some more.
    ///   Example   20241228 (a Saturday): E_Next -> 20241230, E_Prev -> 20241227
    CDate GetBizDateAdjusted(CDate::E_Dir eDir, CDateArray* pHolidays) const;
    template <class TDates>
    CDate GetBizDateAdjusted(CDate::E_Dir eDir, const TDates* pHolidays) const
    {
        const CDateArray* pDates = pHolidays;
        return GetBizDateAdjusted(eDir, const_cast<CDateArray*>(pDates));
    }

    /// Moves the date to the iDays-th business day after it, or before it for a negative number; 0 leaves it where it is. The
    /// date itself may be any day and does not count. An unset date stays as it is.
    ///   Cost      O(holidays); for each holiday passed, a search in the list.
    ///   Example   20241224, holidays 20241225 and 20241226: AddBizDay(1) -> 20241227, AddBizDay(2) -> 20241230
    void AddBizDay(int iDays, const CDateArray* pHolidays = nullptr);

    /// Returns the number of business days after dateFirst up to dateLast; when dateLast is the earlier date, minus the number
    /// of those from dateLast up to the day before dateFirst. AddBizDay moves dateFirst by it to dateLast if that is a
    /// business day. 0 if either date is unset.
    ///   Cost      as AddBizDay.
    ///   Example   20241224 to 20241230, a Tuesday and a Monday, holidays as above -> 2
    static int GetBizDaysDiff(const CDate& dateFirst, const CDate& dateLast,
                              const CDateArray* pHolidays = nullptr);

private:
    friend struct bedplate_private::DateDesign;
    friend struct bedplate_private::LayoutCheck;

    char m_szDate[9];
    bool m_bSet;
};

// The comparison operators: in the order of the 8 bytes of text, which for dates of 8 digits is that of time. Unset dates
// come first and are equal to each other, and to a date that was set to the empty text.

/// Compares the 8 bytes.
BEDPLATE_API BEDPLATE_INLINE inline bool operator==(const CDate& dateLeft, const CDate& dateRight)
{
    return __builtin_memcmp(dateLeft.ToStr(), dateRight.ToStr(), 8) == 0;
}
BEDPLATE_API BEDPLATE_INLINE inline bool operator!=(const CDate& dateLeft, const CDate& dateRight)
{
    return __builtin_memcmp(dateLeft.ToStr(), dateRight.ToStr(), 8) != 0;
}
BEDPLATE_API BEDPLATE_INLINE inline bool operator<(const CDate& dateLeft, const CDate& dateRight)
{
    return __builtin_memcmp(dateLeft.ToStr(), dateRight.ToStr(), 8) < 0;
}
BEDPLATE_API BEDPLATE_INLINE inline bool operator<=(const CDate& dateLeft, const CDate& dateRight)
{
    return __builtin_memcmp(dateLeft.ToStr(), dateRight.ToStr(), 8) <= 0;
}
BEDPLATE_API BEDPLATE_INLINE inline bool operator>(const CDate& dateLeft, const CDate& dateRight)
{
    return __builtin_memcmp(dateLeft.ToStr(), dateRight.ToStr(), 8) > 0;
}
BEDPLATE_API BEDPLATE_INLINE inline bool operator>=(const CDate& dateLeft, const CDate& dateRight)
{
    return __builtin_memcmp(dateLeft.ToStr(), dateRight.ToStr(), 8) >= 0;
}

// On 32-bit systems the layout of CTime depends on how many bits a program gives time_t. The shared object has the class
// for both; the tag gives the one with 64 bits names of its own, so that no program gets the wrong one.
#if defined(_TIME_BITS) && _TIME_BITS == 64 && !defined(__LP64__)
#define BEDPLATE_TIME_ABI __attribute__((abi_tag("time64")))
#else
#define BEDPLATE_TIME_ABI
#endif

/// A moment, as seconds and microseconds since the epoch and broken down in the local time zone.
///
/// It follows the platform's time_t. On 32-bit x86 that has 32 bits and ends on 2038-01-19, unless the program is
/// compiled with -D_TIME_BITS=64 -D_FILE_OFFSET_BITS=64; the library serves both kinds of program.
class BEDPLATE_API BEDPLATE_TIME_ABI BEDPLATE_DEBUG CTime
{
public:
    /// Makes an unset time: the epoch, with all of GetTm() zero.
    CTime();

    /// Makes the time unset; that outlives the object, in optimised programs too.
    ~CTime();

    /// Takes the current time.
    void SetAsNow();

    /// Takes a given moment.
    void Set(const struct timeval& tvTime);

    /// Tells whether a time was taken.
    BEDPLATE_INLINE bool IsSet() const { return m_bSet; }

    /// Returns the seconds and microseconds since the epoch.
    BEDPLATE_INLINE const struct timeval& GetTimeVal() const { return m_tvTime; }

    /// Returns the same moment broken down in local time.
    BEDPLATE_INLINE const struct tm& GetTm() const { return m_tmTime; }

    /// Returns pszFormat with each of these letters, wherever it stands, replaced by a number:
    ///
    ///     Y  year, 4 digits     h  hour, 2 digits        l  milliseconds, 3 digits
    ///     M  month, 2 digits    m  minute, 2 digits      u  microseconds, 6 digits
    ///     D  day, 2 digits      s  second, 2 digits
    ///
    /// All other characters stay. A null format counts as empty. An unset time prints GetTm() as it is.
    ///   Throws    code -11 as CString.
    ///   Example   "Y-M-D h:m:s.l" -> "2026-03-07 09:05:02.004"; "Date D" -> "07ate 07"
    CString ToFmtStr(const char* pszFormat) const;

    /// Returns the current time as ToFmtStr prints it.
    static CString GetTimeStamp(const char* pszFormat);

    /// Returns "hh:mm:ss.uuuuuu", or "<CTime:unset>".
    CString Repr() const;

private:
    friend struct bedplate_private::LayoutCheck;

    struct timeval m_tvTime;
    struct tm m_tmTime;
    bool m_bSet;
};

#endif
