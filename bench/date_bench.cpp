// Calendar arithmetic on YYYYMMDD texts, business days and time stamps.
#include "peers.h"
#include "workload.h"

#include "bedplate.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <sys/time.h>

namespace
{
using bench::CContestant;
using std::chrono::days;
using std::chrono::months;
using std::chrono::sys_days;
using std::chrono::year_month_day;

/// The size is the number of days or of holidays.
const bench::CRow s_rows[] = {
    {"date/add-days", {1, 1000}, 1.0},     {"date/add-months", {0}, 1.0}, {"date/add-years", {0}, 1.0},
    {"date/day-of-week", {0}, 1.0},        {"date/difference", {0}, 1.0}, {"date/month-end", {0}, 1.0},
    {"date/business-day", {10, 200}, 1.0}, {"date/stamp-now", {0}, 0.6},  {"date/stamp", {0}, 0.6},
};

// ---- A date text for std::chrono, which reads eight digits and writes eight, as CDate does -----------------------

struct DateText
{
    char szText[9];

    bool operator==(const DateText& other) const { return std::memcmp(szText, other.szText, 8) == 0; }
};

year_month_day Read(const DateText& text)
{
    unsigned uDate = 0;
    std::from_chars(text.szText, text.szText + 8, uDate);
    return {std::chrono::year(static_cast<int>(uDate / 10000)), std::chrono::month(uDate / 100 % 100),
            std::chrono::day(uDate % 100)};
}

DateText Write(const year_month_day& date)
{
    const auto uMonth = static_cast<unsigned>(date.month()), uDay = static_cast<unsigned>(date.day());
    DateText text = {};
    std::to_chars(text.szText, text.szText + 8,
                  static_cast<unsigned>(static_cast<int>(date.year())) * 10000 + uMonth * 100 + uDay);
    return text;
}

DateText LastOfMonth(const year_month_day& date)
{
    return Write(date.year() / date.month() / std::chrono::last);
}

DateText AddMonths(const year_month_day& date, int iMonths)
{
    const year_month_day moved = date + months(iMonths);
    return moved.ok() ? Write(moved) : LastOfMonth(moved);
}

/// Returns lCount days of 1990 to 2029 in random order.
std::vector<DateText> Texts(long lCount)
{
    std::vector<DateText> texts;
    for (int iDay : bench::RandomInts(lCount, 7305, 21914))
        texts.push_back(Write(year_month_day(sys_days(days(iDay)))));
    return texts;
}

/// 1,024 dates, and the days to add or the holidays that the size says.
template <class TDate, class THolidays>
struct CSubject
{
    std::vector<TDate> dates;
    THolidays holidays;
    int iDays;
};

/// Measures work(date, subject) on each date of the subject that make(size) returns.
template <class TMake, class TWork>
void OnDates(const CContestant& who, const char* pszWorkload, TMake make, TWork work)
{
    who.On(pszWorkload, make,
           [=](auto& subject)
           {
               for (const auto& date : subject.dates)
               {
                   const auto result = work(date, subject);
                   benchmark::DoNotOptimize(&result);
               }
           });
}

// ---- The contestants ---------------------------------------------------------------------------------------------

CSubject<CDate, CDateArray> OurDates(long lSize)
{
    CSubject<CDate, CDateArray> subject{{}, {}, static_cast<int>(lSize)};
    for (const DateText& text : Texts(1024))
        subject.dates.emplace_back(text.szText);
    for (const DateText& text : Texts(lSize))
        subject.holidays.Add(CDate(text.szText));
    return subject;
}

void Bedplate()
{
    const CContestant ours(s_rows, "Bedplate");
    const auto read = [&](const char* pszWorkload, auto work) { OnDates(ours, pszWorkload, OurDates, work); };
    const auto change = [&](const char* pszWorkload, auto work)
    {
        OnDates(ours, pszWorkload, OurDates,
                [=](CDate date, auto& subject)
                {
                    work(date, subject);
                    return date;
                });
    };
    change("date/add-days", [](CDate& date, auto& subject) { date.AddDay(subject.iDays); });
    change("date/add-months", [](CDate& date, auto&) { date.AddMonth(7); });
    change("date/add-years", [](CDate& date, auto&) { date.AddYear(3); });
    read("date/day-of-week", [](const CDate& date, auto&)
         { return CDate::GetDayOfWeek(date.GetYear(), date.GetMonth(), date.GetDay()); });
    read("date/difference",
         [](const CDate& date, auto& subject) { return CDate::GetDaysDiff(date, subject.dates[0]); });
    read("date/month-end", [](const CDate& date, auto&) { return date.GetLastDateOfMonth(); });
    read("date/business-day", [](const CDate& date, auto& subject)
         { return date.GetBizDateAdjusted(CDate::E_Next, &subject.holidays); });

    const auto time = [](long)
    {
        CTime timeFixed;
        timeFixed.Set({1700000000, 123456});
        return timeFixed;
    };
    ours.On("date/stamp-now", time, [](CTime&) { return CTime::GetTimeStamp("Y-M-D h:m:s.l"); });
    ours.On("date/stamp", time, [](CTime& timeFixed) { return timeFixed.ToFmtStr("Y-M-D h:m:s.l"); });
}

DateText NextBusinessDay(const DateText& text, const std::vector<DateText>& holidays)
{
    sys_days day    = Read(text);
    DateText result = text;
    while (std::chrono::weekday(day).iso_encoding() > 5 ||
           std::find(holidays.begin(), holidays.end(), result) != holidays.end())
    {
        day += days(1);
        result = Write(day);
    }
    return result;
}

void Chrono()
{
    const CContestant chrono(s_rows, "std::chrono");
    const auto make = [](long lSize) {
        return CSubject<DateText, std::vector<DateText>>{Texts(1024), Texts(lSize), static_cast<int>(lSize)};
    };
    const auto on = [&](const char* pszWorkload, auto work) { OnDates(chrono, pszWorkload, make, work); };
    on("date/add-days",
       [](const DateText& text, auto& subject) { return Write(sys_days(Read(text)) + days(subject.iDays)); });
    on("date/add-months", [](const DateText& text, auto&) { return AddMonths(Read(text), 7); });
    on("date/add-years", [](const DateText& text, auto&) { return AddMonths(Read(text), 36); });
    on("date/day-of-week",
       [](const DateText& text, auto&) { return std::chrono::weekday(sys_days(Read(text))).c_encoding(); });
    on("date/difference", [](const DateText& text, auto& subject)
       { return (sys_days(Read(subject.dates[0])) - sys_days(Read(text))).count(); });
    on("date/month-end", [](const DateText& text, auto&) { return LastOfMonth(Read(text)); });
    on("date/business-day",
       [](const DateText& text, auto& subject) { return NextBusinessDay(text, subject.holidays); });
}

tm LocalTime(time_t iTime)
{
    tm tmTime;
    return *localtime_r(&iTime, &tmTime);
}

std::string Stamp(const tm& tmTime, int iMicroseconds)
{
    char szText[64];
    const size_t iLength = std::strftime(szText, sizeof szText, "%Y-%m-%d %H:%M:%S", &tmTime);
    std::snprintf(szText + iLength, sizeof szText - iLength, ".%03d", iMicroseconds / 1000);
    return szText;
}

std::string StampNow(long)
{
    timeval tvNow;
    gettimeofday(&tvNow, nullptr);
    return Stamp(LocalTime(tvNow.tv_sec), static_cast<int>(tvNow.tv_usec));
}

void Stamps()
{
    const auto none = [](long lSize) { return lSize; };
    const CContestant c(s_rows, "strftime");
    c.On("date/stamp-now", none, StampNow);
    c.On(
        "date/stamp", [](long) { return LocalTime(1700000000); },
        [](const tm& tmTime) { return Stamp(tmTime, 123456); });
#ifdef BENCH_ABSL
    CContestant(s_rows, "Abseil")
        .On("date/stamp-now", none,
            [](long&)
            { return absl::FormatTime("%Y-%m-%d %H:%M:%E3S", absl::Now(), absl::LocalTimeZone()); });
#endif
#ifdef BENCH_QT
    CContestant(s_rows, "Qt")
        .On("date/stamp-now", none,
            [](long&) { return QDateTime::currentDateTime().toString("yyyy-MM-dd hh:mm:ss.zzz"); });
#endif
}
} // namespace

int main(int iArguments, char** ppszArguments)
{
    Bedplate();
    Chrono();
    Stamps();
    return bench::Main(iArguments, ppszArguments);
}
