// Printing and reading numbers: 1,024 at a time, of all magnitudes up to a billion.
#include "peers.h"
#include "workload.h"

#include "bedplate.h"

#include <charconv>

namespace
{
using bench::CContestant;

const bench::CRow s_rows[] = {
    {"number/print-int", {0}, 0}, // most of them have room in std::string itself
    {"number/print-int-grouped", {0}, 1.1},
    {"number/print-double", {0}, 1.5},
    {"number/print-double-grouped", {0}, 0.7},
    {"number/print-double-trimmed", {0}, 1.5},
    {"number/read-int", {0}, 1.1},
    {"number/read-double", {0}, 1.5},
};

std::vector<double> Doubles(long)
{
    std::vector<double> numbers;
    int iShift = 0;
    for (int iNumber : bench::RandomInts(1024))
        numbers.push_back((iNumber >> (iShift++ % 30)) + 0.375);
    return numbers;
}

std::vector<int> Ints(long)
{
    const std::vector<double> numbers = Doubles(0);
    return {numbers.begin(), numbers.end()};
}

template <class TText>
std::vector<TText> IntTexts(long)
{
    std::vector<TText> texts;
    for (int iNumber : Ints(0))
        texts.emplace_back(std::to_string(iNumber).c_str());
    return texts;
}

/// Numbers below ten with five decimals, as "3.14159".
template <class TText>
std::vector<TText> DoubleTexts(long)
{
    std::vector<TText> texts;
    for (int iNumber : bench::RandomInts(1024, 100000, 999999))
        texts.emplace_back(std::to_string(iNumber).insert(1, ".").c_str());
    return texts;
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

/// Measures a peer's print(number, decimals...), and what has to be done to its result.
template <class TPrint>
void Print(const CContestant& who, TPrint print)
{
    who.OnEach("number/print-int", Ints, [=](int iNumber) { return print(iNumber); });
    who.OnEach("number/print-int-grouped", Ints, [=](int iNumber) { return Grouped(print(iNumber)); });
    who.OnEach("number/print-double", Doubles, [=](double dNumber) { return print(dNumber, 2); });
    who.OnEach("number/print-double-grouped", Doubles,
               [=](double dNumber) { return Grouped(print(dNumber, 2)); });
    who.OnEach("number/print-double-trimmed", Doubles,
               [=](double dNumber) { return Trimmed(print(dNumber, 6)); });
}

/// Measures a peer's read(text, number), which stores what it reads.
template <class TRead>
void Read(const CContestant& who, TRead read)
{
    who.OnEach("number/read-int", IntTexts<std::string>,
               [=](const std::string& strText)
               {
                   int iNumber = 0;
                   read(strText, iNumber);
                   return iNumber;
               });
    who.OnEach("number/read-double", DoubleTexts<std::string>,
               [=](const std::string& strText)
               {
                   double dNumber = 0;
                   read(strText, dNumber);
                   return dNumber;
               });
}

void Bedplate()
{
    const CContestant ours(s_rows, "Bedplate");
    ours.OnEach("number/print-int", Ints, [](int iNumber) { return CInt(iNumber).ToFmtStr(false); });
    ours.OnEach("number/print-int-grouped", Ints, [](int iNumber) { return CInt(iNumber).ToFmtStr(); });
    ours.OnEach("number/print-double", Doubles,
                [](double dNumber) { return CDbl(dNumber).ToFmtStr(2, false); });
    ours.OnEach("number/print-double-grouped", Doubles,
                [](double dNumber) { return CDbl(dNumber).ToFmtStr(); });
    ours.OnEach("number/print-double-trimmed", Doubles,
                [](double dNumber) { return CDbl(dNumber).ToFmtStr(-6, false); });
    ours.OnEach("number/read-int", IntTexts<CString>, [](const CString& str) { return str.ToInt(); });
    ours.OnEach("number/read-double", DoubleTexts<CString>, [](const CString& str) { return str.ToDbl(); });
}

void Standard()
{
    const CContestant standard(s_rows, "std::to_chars");
    Print(standard,
          [](auto number, auto... decimals)
          {
              char szNumber[350];
              char* pszEnd = szNumber + sizeof szNumber;
              if constexpr (sizeof...(decimals) > 0)
                  pszEnd = std::to_chars(szNumber, pszEnd, number, std::chars_format::fixed, decimals...).ptr;
              else
                  pszEnd = std::to_chars(szNumber, pszEnd, number).ptr;
              return std::string(szNumber, static_cast<size_t>(pszEnd - szNumber));
          });
    Read(CContestant(s_rows, "std::from_chars"), [](const std::string& strText, auto& number)
         { std::from_chars(strText.data(), strText.data() + strText.size(), number); });
}

void Others()
{
#ifdef BENCH_ABSL
    Read(CContestant(s_rows, "Abseil"),
         [](const std::string& strText, auto& number)
         {
             if constexpr (std::is_same_v<decltype(number), int&>)
                 benchmark::DoNotOptimize(absl::SimpleAtoi(strText, &number));
             else
                 benchmark::DoNotOptimize(absl::SimpleAtod(strText, &number));
         });
#endif
#ifdef BENCH_FMT
    const CContestant fmt(s_rows, "fmt");
    fmt.OnEach("number/print-int", Ints, [](int iNumber) { return fmt::format("{}", iNumber); });
    fmt.OnEach("number/print-int-grouped", Ints,
               [](int iNumber) { return fmt::format("{}", fmt::group_digits(iNumber)); });
    fmt.OnEach("number/print-double", Doubles, [](double dNumber) { return fmt::format("{:.2f}", dNumber); });
#endif
}
} // namespace

int main(int iArguments, char** ppszArguments)
{
    Bedplate();
    Standard();
    Others();
    return bench::Main(iArguments, ppszArguments);
}
