// Printing into a new string and into one that is there already.
#include "peers.h"
#include "workload.h"

#include "bedplate.h"

#include <cstdarg>
#include <cstdio>

namespace
{
using bench::CWorkload;

constexpr double s_dTarget = 1.0;

/// What a careful user of the C library writes: one attempt on the stack, a second one of the right size.
std::string PrintToString(const char* pszFormat, ...) __attribute__((format(printf, 1, 2)));
std::string PrintToString(const char* pszFormat, ...)
{
    char szBuffer[512];
    va_list arguments;
    va_start(arguments, pszFormat);
    va_list again;
    va_copy(again, arguments);
    const int iPrinted = std::vsnprintf(szBuffer, sizeof szBuffer, pszFormat, arguments);
    std::string strResult;
    if (iPrinted < static_cast<int>(sizeof szBuffer))
    {
        strResult.assign(szBuffer, static_cast<std::size_t>(iPrinted));
    }
    else
    {
        strResult.resize(static_cast<std::size_t>(iPrinted));
        std::vsnprintf(&strResult[0], strResult.size() + 1, pszFormat, again);
    }
    va_end(again);
    va_end(arguments);
    return strResult;
}

/// A new string with what the format makes of the arguments.
template <class... TArguments>
void NewString(const char* pszName, long lSize, const char* pszFormat, TArguments... arguments)
{
    CWorkload workload("format", pszName, lSize, s_dTarget);
    workload.Run("Bedplate", [=] { return CFormat(pszFormat, arguments...); });
    workload.Run("vsnprintf", [=] { return PrintToString(pszFormat, arguments...); });
    workload.Run("asprintf",
                 [=]
                 {
                     char* pszText      = nullptr;
                     const int iPrinted = asprintf(&pszText, pszFormat, arguments...);
                     benchmark::DoNotOptimize(pszText);
                     std::free(pszText);
                     return iPrinted;
                 });
#ifdef BENCH_ABSL
    workload.Run("absl::StrFormat", [=] { return absl::StrFormat(pszFormat, arguments...); });
#endif
#ifdef BENCH_FMT
    workload.Run("fmt::sprintf", [=] { return fmt::sprintf(pszFormat, arguments...); });
#endif
#ifdef BENCH_GLIB
    workload.Run("g_strdup_printf",
                 [=]
                 {
                     char* pszText = g_strdup_printf(pszFormat, arguments...);
                     benchmark::DoNotOptimize(pszText);
                     g_free(pszText);
                 });
#endif
#ifdef BENCH_QT
    workload.Run("QString::asprintf", [=] { return QString::asprintf(pszFormat, arguments...); });
#endif
}

/// The same into a string that is used again and again.
template <class... TArguments>
void SameString(const char* pszName, long lSize, const char* pszFormat, TArguments... arguments)
{
    CWorkload workload("format", pszName, lSize, s_dTarget);
    workload.On(
        "Bedplate", [] { return CString(); },
        [=](CString& str) { return str.Format(pszFormat, arguments...); });
    workload.On(
        "vsnprintf", [] { return std::string(); },
        [=](std::string& str) { str = PrintToString(pszFormat, arguments...); });
#ifdef BENCH_ABSL
    workload.On(
        "absl::StrAppendFormat", [] { return std::string(); },
        [=](std::string& str)
        {
            str.clear();
            absl::StrAppendFormat(&str, pszFormat, arguments...);
        });
#endif
#ifdef BENCH_GLIB
    workload.On(
        "g_string_printf", [] { return bench::CGString(); },
        [=](bench::CGString& str) { g_string_printf(str.Get(), pszFormat, arguments...); });
#endif
}
} // namespace

int main(int iArguments, char** ppszArguments)
{
    NewString("CFormat-short", 8, "%d-%s", 1234, "abc");
    SameString("Format-short", 8, "%d-%s", 1234, "abc");
    NewString("CFormat-numbers", 40, "%d;%5d;%x;%.2f;%c;%s", 123456, 42, 48879, 1234.5, 'c', "word");
    static const std::string s_strHalf = bench::RandomText(10000);
    for (const int iLength : {500, 2000, 20000})
    {
        const char* pszHalf = s_strHalf.c_str() + s_strHalf.size() - iLength / 2;
        NewString("CFormat", iLength, "%s-%d-%s", pszHalf, 1234, pszHalf);
        SameString("Format", iLength, "%s-%d-%s", pszHalf, 1234, pszHalf);
    }
    return bench::Main(iArguments, ppszArguments);
}
