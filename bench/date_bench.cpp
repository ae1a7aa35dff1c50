// Calendar arithmetic on YYYYMMDD texts, business days and time stamps.
#include "peers.h"
#include "workload.h"

#include "bedplate.h"

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <sys/time.h>

namespace
{
using bench::CWorkload;
using bench::s_dUnjudged;
using std::chrono::days;
using std::chrono::months;
using std::chrono::sys_days;
using std::chrono::year_month_day;

// ---- A date text for std::chrono ----------------------------------------------------------------------------------

struct DateText
{
    char szText[9];
};

int Digits(const char* pszText, int iCount)
{
    int iNumber = 0;
    for (int i = 0; i < iCount; ++i)
        iNumber = iNumber * 10 + (pszText[i] - '0');
    return iNumber;
}

void PutDigits(char* pszText, int iNumber, int iCount)
{
    for (int i = iCount - 1; i >= 0; --i, iNumber /= 10)
        pszText[i] = static_cast<char>('0' + iNumber % 10);
}

year_month_day Read(const DateText& text)
{
    return {std::chrono::year(Digits(text.szText, 4)),
            std::chrono::month(static_cast<unsigned>(Digits(text.szText + 4, 2))),
            std::chrono::day(static_cast<unsigned>(Digits(text.szText + 6, 2)))};
}

DateText Write(const year_month_day& date)
{
    DateText text = {};
    PutDigits(text.szText, static_cast<int>(date.year()), 4);
    PutDigits(text.szText + 4, static_cast<int>(static_cast<unsigned>(date.month())), 2);
    PutDigits(text.szText + 6, static_cast<int>(static_cast<unsigned>(date.day())), 2);
    return text;
}

year_month_day LastOfMonth(const year_month_day& date)
{
    return date.year() / date.month() / std::chrono::last;
}

year_month_day AddMonths(const year_month_day& date, int iMonths)
{
    const year_month_day moved = date + months(iMonths);
    return moved.ok() ? moved : LastOfMonth(moved);
}

// ---- The dates that are worked on: 1,024 days of 1990 to 2029, in random order ------------------------------------

constexpr size_t s_iDates = 1024;

std::vector<DateText> Texts()
{
    std::vector<DateText> texts;
    for (int iDay : bench::RandomInts(s_iDates, 7305, 21914))
        texts.push_back(Write(year_month_day(sys_days(days(iDay)))));
    return texts;
}

std::vector<CDate> Dates()
{
    std::vector<CDate> dates;
    for (const DateText& text : Texts())
        dates.emplace_back(text.szText);
    return dates;
}

/// Measures ours(date, next date) and the two peers on all dates; what they return is used.
template <class TOurs, class TChrono>
void Calendar(const char* pszName, long lSize, TOurs ours, TChrono chrono)
{
    const auto each = [](auto work)
    {
        return [work](auto& dates)
        {
            for (size_t i = 0; i < s_iDates; ++i)
            {
                const auto result = work(dates[i], dates[(i + 1) % s_iDates]);
                benchmark::DoNotOptimize(&result);
            }
        };
    };
    CWorkload("date", pszName, lSize, 1.0)
        .On("Bedplate", Dates, each(ours))
        .On("std::chrono", Texts, each(chrono));
}

void AddDays(int iDays)
{
    Calendar(
        "AddDay", iDays,
        [=](CDate date, const CDate&)
        {
            date.AddDay(iDays);
            return date;
        },
        [=](const DateText& text, const DateText&) { return Write(sys_days(Read(text)) + days(iDays)); });
}

void CalendarWork()
{
    Calendar(
        "AddMonth", 0,
        [](CDate date, const CDate&)
        {
            date.AddMonth(7);
            return date;
        },
        [](const DateText& text, const DateText&) { return Write(AddMonths(Read(text), 7)); });
    Calendar(
        "AddYear", 0,
        [](CDate date, const CDate&)
        {
            date.AddYear(3);
            return date;
        },
        [](const DateText& text, const DateText&) { return Write(AddMonths(Read(text), 36)); });
    Calendar(
        "day-of-week", 0,
        [](const CDate& date, const CDate&)
        { return CDate::GetDayOfWeek(date.GetYear(), date.GetMonth(), date.GetDay()); },
        [](const DateText& text, const DateText&)
        { return std::chrono::weekday(sys_days(Read(text))).c_encoding(); });
    Calendar(
        "difference", 0, [](const CDate& date, const CDate& next) { return CDate::GetDaysDiff(date, next); },
        [](const DateText& text, const DateText& next)
        { return (sys_days(Read(next)) - sys_days(Read(text))).count(); });
    Calendar(
        "month-end", 0, [](const CDate& date, const CDate&) { return date.GetLastDateOfMonth(); },
        [](const DateText& text, const DateText&) { return Write(LastOfMonth(Read(text))); });
}

// ---- Business days: the holidays are days of the same years, in random order --------------------------------------

std::uint64_t Pack(const char* pszText)
{
    std::uint64_t uKey;
    std::memcpy(&uKey, pszText, sizeof uKey);
    return uKey;
}

bool IsHoliday(const std::vector<std::uint64_t>& holidays, std::uint64_t uKey)
{
    for (const std::uint64_t uHoliday : holidays)
    {
        if (uHoliday == uKey)
            return true;
    }
    return false;
}

DateText NextBusinessDay(const DateText& text, const std::vector<std::uint64_t>& holidays)
{
    sys_days day    = Read(text);
    DateText result = text;
    while (std::chrono::weekday(day).iso_encoding() > 5 || IsHoliday(holidays, Pack(result.szText)))
    {
        day += days(1);
        result = Write(day);
    }
    return result;
}

void BusinessDays(long lHolidays)
{
    CDateArray arrHolidays;
    std::vector<std::uint64_t> holidays;
    for (int iDay : bench::RandomInts(lHolidays, 7300, 21999))
    {
        const DateText text = Write(year_month_day(sys_days(days(iDay))));
        arrHolidays.Add(CDate(text.szText));
        holidays.push_back(Pack(text.szText));
    }
    static std::vector<std::unique_ptr<CDateArray>> s_lists;
    s_lists.emplace_back(new CDateArray(arrHolidays));
    CDateArray* pHolidays = s_lists.back().get();
    Calendar(
        "business-day", lHolidays,
        [=](const CDate& date, const CDate&) { return date.GetBizDateAdjusted(CDate::E_Next, pHolidays); },
        [=](const DateText& text, const DateText&) { return NextBusinessDay(text, holidays); });
}

// ---- Time stamps --------------------------------------------------------------------------------------------------

std::string StampC(const tm& tmTime, long lMicroseconds)
{
    char szText[64];
    const size_t iLength = std::strftime(szText, sizeof szText, "%Y-%m-%d %H:%M:%S", &tmTime);
    std::snprintf(szText + iLength, sizeof szText - iLength, ".%03d", static_cast<int>(lMicroseconds / 1000));
    return szText;
}

std::string PrintC(const tm& tmTime, long lMicroseconds)
{
    char szText[64];
    std::snprintf(szText, sizeof szText, "%04d-%02d-%02d %02d:%02d:%02d.%03d", tmTime.tm_year + 1900,
                  tmTime.tm_mon + 1, tmTime.tm_mday, tmTime.tm_hour, tmTime.tm_min, tmTime.tm_sec,
                  static_cast<int>(lMicroseconds / 1000));
    return szText;
}

/// Returns print(local time, microseconds) of now.
template <class TPrint>
auto Now(TPrint print)
{
    return [print]
    {
        timeval tvNow;
        gettimeofday(&tvNow, nullptr);
        tm tmNow;
        localtime_r(&tvNow.tv_sec, &tmNow);
        return print(tmNow, tvNow.tv_usec);
    };
}

#ifdef BENCH_GLIB
void StampGLib()
{
    GDateTime* pNow = g_date_time_new_now_local();
    char* pszText   = g_date_time_format(pNow, "%Y-%m-%d %H:%M:%S");
    benchmark::DoNotOptimize(pszText);
    g_free(pszText);
    g_date_time_unref(pNow);
}
#endif

void TimeStamps()
{
    CWorkload("time", "stamp-now", 0, 0.6)
        .Run("Bedplate", [] { return CTime::GetTimeStamp("Y-M-D h:m:s.l"); })
        .Run("strftime", Now(StampC))
        .Run("snprintf", Now(PrintC))
#ifdef BENCH_ABSL
        .Run("absl::FormatTime",
             [] { return absl::FormatTime("%Y-%m-%d %H:%M:%E3S", absl::Now(), absl::LocalTimeZone()); })
#endif
#ifdef BENCH_GLIB
        .Run("g_date_time_format", StampGLib)
#endif
#ifdef BENCH_QT
        .Run("QDateTime", [] { return QDateTime::currentDateTime().toString("yyyy-MM-dd hh:mm:ss.zzz"); })
#endif
        ;
    CTime time;
    time.Set({1700000000, 123456});
    CWorkload("time", "ToFmtStr", 0, 0.6)
        .Run("Bedplate", [=] { return time.ToFmtStr("Y-M-D h:m:s.l"); })
        .Run("strftime", [=] { return StampC(time.GetTm(), time.GetTimeVal().tv_usec); })
        .Run("snprintf", [=] { return PrintC(time.GetTm(), time.GetTimeVal().tv_usec); });
}
} // namespace

int main(int iArguments, char** ppszArguments)
{
    for (const int iDays : {1, 30, 1000, 1000000})
        AddDays(iDays);
    CalendarWork();
    for (const long lHolidays : {10, 200, 5000})
        BusinessDays(lHolidays);
    TimeStamps();
    return bench::Main(iArguments, ppszArguments);
}
