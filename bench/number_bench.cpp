// Printing numbers plainly, with thousands separators, and without the zeros at the end.
#include "memory.h"
#include "peers.h"
#include "workload.h"

#include "bedplate.h"

#include <charconv>
#include <cstdio>

namespace
{
using bench::CHeapText;
using bench::CWorkload;

constexpr const char* s_pszFamily = "number";

/// Measures work(number) on 1,024 numbers of all magnitudes up to a billion; what it returns is used.
template <class TWork>
auto ForNumbers(TWork work)
{
    std::vector<double> numbers;
    int iShift = 0;
    for (int iNumber : bench::RandomInts(1024))
        numbers.push_back((iNumber >> (iShift++ % 30)) + 0.375);
    return [=]
    {
        for (const double dNumber : numbers)
        {
            const auto& result = work(dNumber);
            benchmark::DoNotOptimize(&result);
        }
    };
}

/// Returns the printed number with commas put between its thousands.
std::string Grouped(std::string strNumber)
{
    const size_t iStart = strNumber[0] == '-' ? 1 : 0;
    size_t iEnd         = strNumber.find('.');
    for (iEnd = iEnd == std::string::npos ? strNumber.size() : iEnd; iEnd > iStart + 3;)
        strNumber.insert(iEnd -= 3, 1, ',');
    return strNumber;
}

std::string Trimmed(std::string strNumber)
{
    strNumber.erase(strNumber.find_last_not_of('0') + 1);
    if (strNumber.back() == '.')
        strNumber.pop_back();
    return strNumber;
}

template <class TText>
TText PrintInt(double dNumber)
{
    char szNumber[16];
    std::snprintf(szNumber, sizeof szNumber, "%d", static_cast<int>(dNumber));
    return TText(szNumber);
}

template <class TText>
TText PrintDbl(double dNumber, int iDecimals)
{
    char szNumber[350];
    std::snprintf(szNumber, sizeof szNumber, "%.*f", iDecimals, dNumber);
    return TText(szNumber);
}

template <class TText>
TText ToChars(double dNumber, int iDecimals)
{
    char szNumber[350];
    const char* pszEnd =
        std::to_chars(szNumber, szNumber + sizeof szNumber, dNumber, std::chars_format::fixed, iDecimals).ptr;
    return TText(szNumber, static_cast<size_t>(pszEnd - szNumber));
}

void Ints()
{
    CWorkload(s_pszFamily, "CInt-plain", 0, 1.0)
        .Run("Bedplate",
             ForNumbers([](double dNumber) { return CInt(static_cast<int>(dNumber)).ToFmtStr(false); }))
        .Run("snprintf", ForNumbers(PrintInt<CHeapText>))
#ifdef BENCH_FMT
        .Run({"fmt::format", bench::s_dUnjudged},
             ForNumbers([](double dNumber) { return fmt::format("{}", static_cast<int>(dNumber)); }))
#endif
        ;
    CWorkload(s_pszFamily, "CInt-grouped", 0, 0.7)
        .Run("Bedplate",
             ForNumbers([](double dNumber) { return CInt(static_cast<int>(dNumber)).ToFmtStr(); }))
        .Run("snprintf", ForNumbers([](double dNumber) { return Grouped(PrintInt<std::string>(dNumber)); }))
        .Run(bench::MemoryAlone(), ForNumbers(
                                       [](double dNumber)
                                       {
                                           bench::RequestText("1,234,567");
                                           return dNumber;
                                       }))
        .Run("std::to_string",
             ForNumbers([](double dNumber) { return Grouped(std::to_string(static_cast<int>(dNumber))); }))
#ifdef BENCH_FMT
        .Run("fmt::format",
             ForNumbers([](double dNumber)
                        { return fmt::format("{}", fmt::group_digits(static_cast<int>(dNumber))); }))
#endif
        ;
}

void Dbls()
{
    CWorkload(s_pszFamily, "CDbl-plain", 0, 1.0)
        .Run("Bedplate", ForNumbers([](double dNumber) { return CDbl(dNumber).ToFmtStr(2, false); }))
        .Run("snprintf", ForNumbers([](double dNumber) { return PrintDbl<CHeapText>(dNumber, 2); }))
        .Run({"std::to_chars", 1.5},
             ForNumbers([](double dNumber) { return ToChars<CHeapText>(dNumber, 2); }))
#ifdef BENCH_FMT
        .Run({"fmt::format", bench::s_dUnjudged},
             ForNumbers([](double dNumber) { return fmt::format("{:.2f}", dNumber); }))
#endif
        ;
    CWorkload(s_pszFamily, "CDbl-grouped", 0, 0.7)
        .Run("Bedplate", ForNumbers([](double dNumber) { return CDbl(dNumber).ToFmtStr(); }))
        .Run("snprintf",
             ForNumbers([](double dNumber) { return Grouped(PrintDbl<std::string>(dNumber, 2)); }))
        .Run("std::to_chars",
             ForNumbers([](double dNumber) { return Grouped(ToChars<std::string>(dNumber, 2)); }));
    CWorkload(s_pszFamily, "CDbl-trimmed", 0, 1.0)
        .Run("Bedplate", ForNumbers([](double dNumber) { return CDbl(dNumber).ToFmtStr(-6, false); }))
        .Run("snprintf",
             ForNumbers([](double dNumber) { return Trimmed(PrintDbl<std::string>(dNumber, 6)); }))
        .Run({"std::to_chars", 1.5},
             ForNumbers([](double dNumber) { return Trimmed(ToChars<std::string>(dNumber, 6)); }));
}
} // namespace

int main(int iArguments, char** ppszArguments)
{
    Ints();
    Dbls();
    return bench::Main(iArguments, ppszArguments);
}
