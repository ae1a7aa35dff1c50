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

/// What dates are worked on with: days to add, and a date and holidays to compare with.
template <class TDate, class THolidays>
struct COperands
{
    int iDays;
    TDate date;
    THolidays holidays;
};

// ---- The contestants ---------------------------------------------------------------------------------------------

auto OurDates(long lSize)
{
    std::vector<CDate> dates;
    for (const DateText& text : Texts(1024))
        dates.emplace_back(text.szText);
    CDateArray arrHolidays;
    for (const DateText& text : Texts(lSize))
        arrHolidays.Add(CDate(text.szText));
    return std::pair(dates, COperands<CDate, CDateArray>{static_cast<int>(lSize), dates[0], arrHolidays});
}

void Bedplate()
{
    const CContestant ours(s_rows, "Bedplate");
    const auto on     = [&](const char* pszWorkload, auto work) { ours.OnEach(pszWorkload, OurDates, work); };
    const auto change = [&](const char* pszWorkload, auto work)
    { on(pszWorkload, [=](CDate date, auto& operands) { return work(date, operands), date; }); };
    change("date/add-days", [](CDate& date, auto& operands) { date.AddDay(operands.iDays); });
    change("date/add-months", [](CDate& date, auto&) { date.AddMonth(7); });
    change("date/add-years", [](CDate& date, auto&) { date.AddYear(3); });
    on("date/day-of-week", [](const CDate& date, auto&)
       { return CDate::GetDayOfWeek(date.GetYear(), date.GetMonth(), date.GetDay()); });
    on("date/difference",
       [](const CDate& date, auto& operands) { return CDate::GetDaysDiff(date, operands.date); });
    on("date/month-end", [](const CDate& date, auto&) { return date.GetLastDateOfMonth(); });
    on("date/business-day", [](const CDate& date, auto& operands)
       { return date.GetBizDateAdjusted(CDate::E_Next, &operands.holidays); });

    CTime timeFixed;
    timeFixed.Set({1700000000, 123456});
    const auto time = [=](long) { return timeFixed; };
    ours.On("date/stamp-now", time, [](CTime&) { return CTime::GetTimeStamp("Y-M-D h:m:s.l"); });
    ours.On("date/stamp", time, [](CTime& timeOther) { return timeOther.ToFmtStr("Y-M-D h:m:s.l"); });
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

auto TheirDates(long lSize)
{
    const std::vector<DateText> dates = Texts(1024);
    return std::pair(
        dates, COperands<DateText, std::vector<DateText>>{static_cast<int>(lSize), dates[0], Texts(lSize)});
}

void Chrono()
{
    const CContestant chrono(s_rows, "std::chrono");
    const auto on = [&](const char* pszWorkload, auto work) { chrono.OnEach(pszWorkload, TheirDates, work); };
    on("date/add-days", [](const DateText& text, auto& operands)
       { return Write(sys_days(Read(text)) + days(operands.iDays)); });
    on("date/add-months", [](const DateText& text, auto&) { return AddMonths(Read(text), 7); });
    on("date/add-years", [](const DateText& text, auto&) { return AddMonths(Read(text), 36); });
    on("date/day-of-week",
       [](const DateText& text, auto&) { return std::chrono::weekday(sys_days(Read(text))).c_encoding(); });
    on("date/difference", [](const DateText& text, auto& operands)
       { return (sys_days(Read(operands.date)) - sys_days(Read(text))).count(); });
    on("date/month-end", [](const DateText& text, auto&) { return LastOfMonth(Read(text)); });
    on("date/business-day",
       [](const DateText& text, auto& operands) { return NextBusinessDay(text, operands.holidays); });
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
