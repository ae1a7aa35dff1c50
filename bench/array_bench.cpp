// Filling, reading, changing, sorting and printing arrays.
#include "peers.h"
#include "workload.h"

#include "bedplate.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace
{
using bench::CContestant;

const bench::CRow s_rows[] = {
    {"array/append-ints", {100, 10000}, 1.6},    {"array/append-ints", {1000000}, 1.5},
    {"array/append-ints", {10000000}, 1.7},      {"array/append-pointers", {10000}, 1.6},
    {"array/append-pointers", {1000000}, 1.8},   {"array/append-dates", {10000, 100000}, 2.0},
    {"array/append-strings", {100, 10000}, 5.0}, {"array/read-ints", {100, 10000}, 1.1},
    {"array/insert-ints", {100, 10000}, 1.1},    {"array/find-ints", {100, 10000}, 1.1},
    {"array/copy-ints", {100, 10000}, 1.1},      {"array/copy-strings", {100, 10000}, 3.0},
    {"array/sort-ints", {1000, 100000}, 1.0},    {"array/sort-strings", {1000, 10000}, 1.2},
    {"array/sort-dates", {1000, 100000}, 1.0},   {"array/print-ints", {10, 1000}, 1.0},
    {"array/print-doubles", {10, 1000}, 1.0},    {"array/join-strings", {10, 1000}, 1.0},
};

// ---- Elements in vectors, and what they are in our arrays --------------------------------------------------------

/// What a date array holds, for a vector.
struct DateText
{
    char szText[9];
    bool bSet;

    bool operator<(const DateText& other) const { return std::memcmp(szText, other.szText, 8) < 0; }
};

/// Pointers are not owned, as those in a vector are not.
struct CBorrowingArray : CPtrArray
{
    CBorrowingArray() : CPtrArray(false) {}
};

const auto& Ours(const auto& value) { return value; }
const char* Ours(const std::string& strValue) { return strValue.c_str(); }
CDate Ours(const DateText& date) { return CDate(date.szText); }

template <class TElement>
std::vector<TElement> Random(long lCount)
{
    const std::vector<int> values = bench::RandomInts(lCount);
    if constexpr (std::is_arithmetic_v<TElement>)
        return {values.begin(), values.end()};
    else
        return std::vector<TElement>(values.size());
}

template <>
std::vector<std::string> Random(long lCount)
{
    return bench::RandomTexts(lCount);
}

template <>
std::vector<DateText> Random(long lCount)
{
    std::vector<DateText> values;
    for (int iDay : bench::RandomInts(lCount, 0, 36499))
    {
        DateText& date  = values.emplace_back(DateText{"", true});
        const int iDate = (1950 + iDay / 365) * 10000 + (iDay % 12 + 1) * 100 + iDay % 28 + 1;
        std::to_chars(date.szText, date.szText + 8, iDate);
    }
    return values;
}

/// Makes an array of random elements.
template <class TArray, class TElement>
TArray Filled(long lCount)
{
    TArray arr;
    for (const TElement& value : Random<TElement>(lCount))
    {
        if constexpr (requires { arr.Add(Ours(value)); })
            arr.Add(Ours(value));
        else
            arr.push_back(value);
    }
    return arr;
}

/// Measures add(array, one of 1,024 elements) on a new array, as often as the size says.
template <class TArray, class TElement, class TAdd>
void Append(const CContestant& who, const char* pszWorkload, TAdd add)
{
    who.On(
        pszWorkload, [](long lCount) { return std::pair(lCount, Random<TElement>(1024)); },
        [=](auto& both)
        {
            TArray arr;
            for (long i = 0; i < both.first; ++i)
                add(arr, both.second[i & 1023]);
            benchmark::DoNotOptimize(&*arr.begin());
        });
}

// ---- The contestants ---------------------------------------------------------------------------------------------

void Bedplate()
{
    const CContestant ours(s_rows, "Bedplate");
    const auto add = [](auto& arr, const auto& value) { arr.Add(value); };
    Append<CIntArray, int>(ours, "array/append-ints", add);
    Append<CBorrowingArray, CPtrArrayItem*>(ours, "array/append-pointers", add);
    Append<CDateArray, CDate>(ours, "array/append-dates", add);
    Append<CStrArray, std::string>(ours, "array/append-strings",
                                   [](auto& arr, auto& strValue) { arr.Add(strValue.c_str()); });
    ours.On("array/read-ints", Filled<CIntArray, int>,
            [](auto& arr)
            {
                for (int i = 0; i < arr.GetSize(); ++i)
                    benchmark::DoNotOptimize(arr.GetAt(i));
            });
    ours.On("array/insert-ints", Filled<CIntArray, int>,
            [](auto& arr)
            {
                arr.InsertAt(0, 1);
                arr.RemoveAt(0);
            });
    ours.On("array/find-ints", Filled<CIntArray, int>, [](auto& arr) { return arr.Find(arr.GetAtLast()); });
    ours.On("array/copy-ints", Filled<CIntArray, int>, [](auto& arr) { return CIntArray(arr); });
    ours.On("array/copy-strings", Filled<CStrArray, std::string>, [](auto& arr) { return CStrArray(arr); });
    const auto sort = [](auto& arr) { arr.Sort(); };
    ours.OnFresh("array/sort-ints", Filled<CIntArray, int>, sort);
    ours.OnFresh("array/sort-strings", Filled<CStrArray, std::string>, sort);
    ours.OnFresh("array/sort-dates", Filled<CDateArray, DateText>, sort);
    // Without the header, since the peers print none.
    const auto print = [](auto& arr) { return arr.Repr(", ", false); };
    ours.On("array/print-ints", Filled<CIntArray, int>, print);
    ours.On("array/print-doubles", Filled<CDblArray, double>, print);
    ours.On("array/join-strings", Filled<CStrArray, std::string>, [](auto& arr) { return arr.Join(","); });
}

/// What std::vector and those like it do.
template <template <class...> class TVector>
void Vector(const char* pszName)
{
    const CContestant peer(s_rows, pszName);
    const auto add = [](auto& arr, const auto& value) { arr.push_back(value); };
    Append<TVector<int>, int>(peer, "array/append-ints", add);
    Append<TVector<CPtrArrayItem*>, CPtrArrayItem*>(peer, "array/append-pointers", add);
    Append<TVector<DateText>, DateText>(peer, "array/append-dates", add);
    Append<TVector<std::string>, std::string>(peer, "array/append-strings", add);
    peer.On("array/insert-ints", Filled<TVector<int>, int>,
            [](auto& arr)
            {
                arr.insert(arr.begin(), 1);
                arr.erase(arr.begin());
            });
    peer.On("array/find-ints", Filled<TVector<int>, int>,
            [](auto& arr) { return std::find(arr.begin(), arr.end(), arr.back()); });
    const auto copy = [](auto& arr)
    {
        auto result = arr;
        benchmark::DoNotOptimize(&*result.begin()); // not shared from here on
    };
    peer.On("array/copy-ints", Filled<TVector<int>, int>, copy);
    peer.On("array/copy-strings", Filled<TVector<std::string>, std::string>, copy);
}

/// Measures sort(first, end) on vectors.
template <class TSort>
void Sort(const char* pszName, TSort sort)
{
    const CContestant peer(s_rows, pszName);
    const auto all = [=](auto& arr) { sort(arr.begin(), arr.end()); };
    peer.OnFresh("array/sort-ints", Random<int>, all);
    peer.OnFresh("array/sort-strings", Random<std::string>, all);
    peer.OnFresh("array/sort-dates", Random<DateText>, all);
}

/// Joins numbers with to_chars, as fast as the standard library allows.
template <class TValue, class... TStyle>
std::string JoinNumbers(const std::vector<TValue>& values, TStyle... style)
{
    std::string strResult;
    char szNumber[350];
    for (const TValue& value : values)
    {
        const char* pszEnd = std::to_chars(szNumber, szNumber + sizeof szNumber, value, style...).ptr;
        strResult.append(strResult.empty() ? "" : ", ")
            .append(szNumber, static_cast<size_t>(pszEnd - szNumber));
    }
    return strResult;
}

std::string JoinTexts(const std::vector<std::string>& texts)
{
    std::string strResult;
    for (const std::string& strText : texts)
        strResult.append(strResult.empty() ? "" : ",").append(strText);
    return strResult;
}

void Standard()
{
    Vector<std::vector>("std::vector");
    // The only peer that checks the index.
    CContestant(s_rows, "std::vector")
        .On("array/read-ints", Random<int>,
            [](auto& arr)
            {
                for (size_t i = 0; i < arr.size(); ++i)
                    benchmark::DoNotOptimize(arr.at(i));
            });
    Sort("std::sort", [](auto first, auto end) { std::sort(first, end); });
    const CContestant standard(s_rows, "std::to_chars");
    standard.On("array/print-ints", Random<int>, [](auto& arr) { return JoinNumbers(arr); });
    standard.On("array/print-doubles", Random<double>,
                [](auto& arr) { return JoinNumbers(arr, std::chars_format::fixed, 6); });
    standard.On("array/join-strings", Random<std::string>, JoinTexts);
}

void Others()
{
#ifdef BENCH_QT
    Vector<QVector>("Qt");
#endif
#ifdef BENCH_BOOST
    Sort("Boost",
         [](auto first, auto end)
         {
             if constexpr (std::is_same_v<decltype(*first), DateText&>)
                 boost::sort::pdqsort(first, end);
             else
                 boost::sort::spreadsort::spreadsort(first, end);
         });
    CContestant(s_rows, "Boost")
        .On("array/join-strings", Random<std::string>, [](auto& arr) { return boost::join(arr, ","); });
#endif
#ifdef BENCH_ABSL
    const CContestant abseil(s_rows, "Abseil");
    abseil.On("array/print-ints", Random<int>, [](auto& arr) { return absl::StrJoin(arr, ", "); });
    abseil.On("array/join-strings", Random<std::string>, [](auto& arr) { return absl::StrJoin(arr, ","); });
#endif
#ifdef BENCH_FMT
    const CContestant fmt(s_rows, "fmt");
    fmt.On("array/print-ints", Random<int>,
           [](auto& arr) { return fmt::format("{}", fmt::join(arr, ", ")); });
    fmt.On("array/print-doubles", Random<double>,
           [](auto& arr) { return fmt::format("{:f}", fmt::join(arr, ", ")); });
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
