// Filling, reading, changing, sorting and printing arrays.
#include "memory.h"
#include "peers.h"
#include "workload.h"

#include "bedplate.h"

#include <algorithm>
#include <charconv>
#include <map>

namespace
{
using bench::CWorkload;
using bench::RandomInts;
using bench::s_dUnjudged;

constexpr const char* s_pszFamily = "array";

/// What a date array holds, for std::vector.
struct PackedDate
{
    char szText[9];
    bool bSet;
};

bool operator<(const PackedDate& left, const PackedDate& right)
{
    return std::memcmp(left.szText, right.szText, 8) < 0;
}
bool operator==(const PackedDate& left, const PackedDate& right)
{
    return std::memcmp(left.szText, right.szText, 8) == 0;
}

/// Pointers are not owned, as those in a vector are not.
struct CBorrowingArray : CPtrArray
{
    CBorrowingArray() : CPtrArray(false) {}
};

// ---- The kinds of element: how a random one looks on our side (Ours) and on theirs (Theirs) -----------------------

struct CInts
{
    using Array  = CIntArray;
    using Theirs = int;
    static int Ours(const int& iValue) { return iValue; }
    static std::vector<int> Random(long lCount) { return RandomInts(lCount); }
};

struct CDbls
{
    using Array  = CDblArray;
    using Theirs = double;
    static double Ours(const double& dValue) { return dValue; }
    static std::vector<double> Random(long lCount)
    {
        std::vector<double> values;
        for (int iValue : RandomInts(lCount))
            values.push_back(iValue / 1000.0);
        return values;
    }
};

struct CBools
{
    using Array  = CBoolArray;
    using Theirs = char; // a vector of bool packs its bits, and has no addresses to sort with
    static bool Ours(const char& bValue) { return bValue != 0; }
    static std::vector<char> Random(long lCount)
    {
        std::vector<char> values;
        for (int iValue : RandomInts(lCount, 0, 1))
            values.push_back(static_cast<char>(iValue));
        return values;
    }
};

struct CStrs
{
    using Array  = CStrArray;
    using Theirs = std::string;
    static const char* Ours(const std::string& strValue) { return strValue.c_str(); }
    static std::vector<std::string> Random(long lCount) { return bench::RandomTexts(lCount); }
};

struct CPtrs
{
    using Array  = CBorrowingArray;
    using Theirs = CPtrArrayItem*;
    static CPtrArrayItem* Ours(CPtrArrayItem* const& pValue) { return pValue; }
    static std::vector<CPtrArrayItem*> Random(long lCount)
    {
        static CPtrArrayItem s_item;
        return std::vector<CPtrArrayItem*>(static_cast<size_t>(lCount), &s_item);
    }
};

struct CDates
{
    using Array  = CDateArray;
    using Theirs = PackedDate;
    static CDate Ours(const PackedDate& date) { return CDate(date.szText); }
    static std::vector<PackedDate> Random(long lCount)
    {
        std::vector<PackedDate> values;
        for (int iValue : RandomInts(lCount, 0, 36499))
        {
            PackedDate date = {"", true};
            const int iDate = (1950 + iValue / 365) * 10000 + (iValue % 12 + 1) * 100 + iValue % 28 + 1;
            std::to_chars(date.szText, date.szText + 8, iDate);
            values.push_back(date);
        }
        return values;
    }
};

/// Returns lCount random values of a kind, which are made when they are first asked for.
template <class TKind>
const std::vector<typename TKind::Theirs>& Values(long lCount, bool bSorted = false)
{
    static std::map<std::pair<long, bool>, std::vector<typename TKind::Theirs>> s_known;
    auto& values = s_known[{lCount, bSorted}];
    if (values.empty())
    {
        values = TKind::Random(lCount);
        if (bSorted)
            std::sort(values.begin(), values.end());
    }
    return values;
}

/// Return what makes the array of such values on our side and on theirs, again for each subject.
template <class TKind>
auto Ours(long lCount, bool bSorted = false)
{
    return [=]
    {
        auto pArray = std::make_unique<typename TKind::Array>();
        for (const auto& value : Values<TKind>(lCount, bSorted))
            pArray->Add(TKind::Ours(value));
        return pArray;
    };
}

template <class TKind>
auto Theirs(long lCount, bool bSorted = false)
{
    return [=] { return Values<TKind>(lCount, bSorted); };
}

// ---- Appending ----------------------------------------------------------------------------------------------------

/// Appends the values again and again until there are lCount elements.
template <class TArray, class TValue, class TAdd>
auto FillUp(long lCount, const std::vector<TValue>& values, TAdd add)
{
    return [=]
    {
        TArray arr = {};
        for (size_t i = 0, iNext = 0; i < static_cast<size_t>(lCount);
             ++i, iNext          = iNext + 1 < values.size() ? iNext + 1 : 0)
            add(arr, values[iNext]);
        benchmark::DoNotOptimize(&*arr.begin());
        return 0;
    };
}

template <class TKind>
void Append(const char* pszName, long lCount, double dTarget)
{
    using Vector         = std::vector<typename TKind::Theirs>;
    const Vector& values = Values<TKind>(1000);
    std::vector<decltype(TKind::Ours(values[0]))> ours;
    for (const auto& value : values)
        ours.push_back(TKind::Ours(value));
    CWorkload workload(s_pszFamily, pszName, lCount, dTarget);
    workload
        .Run("Bedplate", FillUp<typename TKind::Array>(lCount, ours,
                                                       [](auto& arr, const auto& value) { arr.Add(value); }))
        .Run("std::vector",
             FillUp<Vector>(lCount, values, [](auto& arr, const auto& value) { arr.push_back(value); }));
    if constexpr (!std::is_same_v<TKind, CStrs>)
        workload.Run(bench::MemoryAlone(),
                     [=] { bench::RequestArray(lCount, sizeof(typename TKind::Theirs)); });
}

// ---- Reading ------------------------------------------------------------------------------------------------------

/// Adds up numbers by index, with the bounds checked at each step, and by a loop over all.
template <class TKind>
void Read(const std::string& strKind, long lCount)
{
    using Number      = typename TKind::Theirs;
    const auto ours   = Ours<TKind>(lCount);
    const auto theirs = Theirs<TKind>(lCount);
    CWorkload(s_pszFamily, "read-" + strKind, lCount, 1.1)
        .On("Bedplate", ours,
            [](auto& pArray)
            {
                Number sum = 0;
                for (int i = 0; i < pArray->GetSize(); ++i)
                    sum += pArray->GetAt(i) & 1;
                return sum;
            })
        .On("std::vector::at", theirs,
            [](auto& arr)
            {
                Number sum = 0;
                for (size_t i = 0; i < arr.size(); ++i)
                    sum += arr.at(i) & 1;
                return sum;
            });
}

/// The same for every kind: what is read is handed to the benchmark library.
template <class TKind>
void ReadAny(const std::string& strKind, long lCount)
{
    const auto ours   = Ours<TKind>(lCount);
    const auto theirs = Theirs<TKind>(lCount);
    CWorkload(s_pszFamily, "read-" + strKind, lCount, 1.1)
        .On("Bedplate", ours,
            [](auto& pArray)
            {
                for (int i = 0; i < pArray->GetSize(); ++i)
                    benchmark::DoNotOptimize(&(*pArray)[i]);
            })
        .On("std::vector::at", theirs,
            [](auto& arr)
            {
                for (size_t i = 0; i < arr.size(); ++i)
                    benchmark::DoNotOptimize(&arr.at(i));
            });
    CWorkload(s_pszFamily, "loop-" + strKind, lCount, 1.1)
        .On("Bedplate", ours,
            [](auto& pArray)
            {
                for (auto& value : *pArray)
                    benchmark::DoNotOptimize(&value);
            })
        .On("std::vector", theirs,
            [](auto& arr)
            {
                for (auto& value : arr)
                    benchmark::DoNotOptimize(&value);
            });
    CWorkload last(s_pszFamily, "last-" + strKind, lCount, 1.1);
    last.On("Bedplate", ours, [](auto& pArray) { return pArray->GetAtLast(); })
        .On("std::vector::at", theirs, [](auto& arr) { return arr.at(arr.size() - 1); });
    if constexpr (std::is_same_v<TKind, CStrs>)
        last.On(bench::MemoryAlone(), theirs, [](auto& arr) { bench::RequestText(arr.back()); });
}

// ---- Changing -----------------------------------------------------------------------------------------------------

template <class TKind>
void Change(const std::string& strKind, long lCount, double dTarget)
{
    const auto ours     = Ours<TKind>(lCount);
    const auto theirs   = Theirs<TKind>(lCount);
    const auto& first   = Values<TKind>(lCount).front();
    const auto& last    = Values<TKind>(lCount).back();
    const auto ourFirst = TKind::Ours(first);
    const auto ourLast  = TKind::Ours(last);
    // One each, so that the size stays.
    CWorkload(s_pszFamily, "front-" + strKind, lCount, dTarget)
        .On("Bedplate", ours,
            [=](auto& pArray)
            {
                pArray->InsertAt(0, ourFirst);
                pArray->RemoveAt(0);
            })
        .On("std::vector", theirs,
            [=](auto& arr)
            {
                arr.insert(arr.begin(), first);
                arr.erase(arr.begin());
            });
    CWorkload copying(s_pszFamily, "copy-" + strKind, lCount, dTarget);
    copying
        .On("Bedplate", ours,
            [](auto& pArray)
            {
                typename TKind::Array copy(*pArray);
                return copy.GetSize();
            })
        .On("std::vector", theirs,
            [](auto& arr)
            {
                auto copy(arr);
                benchmark::DoNotOptimize(copy.data());
                return copy.size();
            });
    if constexpr (std::is_same_v<TKind, CStrs>)
        copying.On(bench::MemoryAlone(), theirs, bench::RequestStrings);
    // The last value may stand further in front too: both find the same one.
    CWorkload(s_pszFamily, "find-" + strKind, lCount, dTarget)
        .On("Bedplate", ours, [=](auto& pArray) { return pArray->Find(ourLast); })
        .On("std::find", theirs,
            [=](auto& arr) { return std::find(arr.begin(), arr.end(), last) - arr.begin(); });
}

template <class TKind>
void Sort(const std::string& strKind, long lCount)
{
    for (const bool bSorted : {false, true})
    {
        CWorkload(s_pszFamily, (bSorted ? "sort-sorted-" : "sort-random-") + strKind, lCount, 1.0)
            .OnFresh("Bedplate", Ours<TKind>(lCount, bSorted), [](auto& pArray) { pArray->Sort(); })
            .OnFresh("std::sort", Theirs<TKind>(lCount, bSorted),
                     [](auto& arr) { std::sort(arr.begin(), arr.end()); });
    }
}

// ---- Printing: our header is left out, since the peers have none ---------------------------------------------------

/// Joins the values with to_chars, as fast as the standard library allows; fixed with 6 decimals for doubles.
template <class TValue, class... TStyle>
std::string JoinStd(const std::vector<TValue>& values, TStyle... style)
{
    std::string strResult;
    char szNumber[350];
    for (const TValue& value : values)
    {
        const char* pszEnd = std::to_chars(szNumber, szNumber + sizeof szNumber, value, style...).ptr;
        if (!strResult.empty())
            strResult += ", ";
        strResult.append(szNumber, static_cast<size_t>(pszEnd - szNumber));
    }
    return strResult;
}

void PrintInts(long lCount)
{
    CWorkload(s_pszFamily, "repr-ints", lCount, 1.0)
        .On("Bedplate", Ours<CInts>(lCount), [](auto& pArray) { return pArray->Repr(", ", false); })
        .On("std::to_chars", Theirs<CInts>(lCount), [](auto& arr) { return JoinStd(arr); })
#ifdef BENCH_ABSL
        .On("absl::StrJoin", Theirs<CInts>(lCount), [](auto& arr) { return absl::StrJoin(arr, ", "); })
#endif
#ifdef BENCH_FMT
        .On("fmt::join", Theirs<CInts>(lCount),
            [](auto& arr) { return fmt::format("{}", fmt::join(arr, ", ")); })
#endif
        ;
}

void PrintDbls(long lCount)
{
    CWorkload(s_pszFamily, "repr-doubles", lCount, 1.0)
        .On("Bedplate", Ours<CDbls>(lCount), [](auto& pArray) { return pArray->Repr(", ", false); })
        .On("std::to_chars", Theirs<CDbls>(lCount),
            [](auto& arr) { return JoinStd(arr, std::chars_format::fixed, 6); })
#ifdef BENCH_FMT
        .On("fmt::join", Theirs<CDbls>(lCount),
            [](auto& arr) { return fmt::format("{:f}", fmt::join(arr, ", ")); })
#endif
        ;
}

/// Appends texts with their separators to a string of the right size.
template <class TValue, class TText>
std::string JoinTexts(const std::vector<TValue>& values, const char* pszSep, TText text)
{
    size_t iLength = 0;
    for (const TValue& value : values)
        iLength += std::strlen(text(value)) + 2;
    std::string strResult;
    strResult.reserve(iLength);
    for (const TValue& value : values)
    {
        if (!strResult.empty())
            strResult += pszSep;
        strResult += text(value);
    }
    return strResult;
}

void PrintTexts(long lCount)
{
    const auto text = [](const std::string& str) { return str.c_str(); };
    CWorkload(s_pszFamily, "join-strings", lCount, 2.0)
        .On("Bedplate", Ours<CStrs>(lCount), [](auto& pArray) { return std::as_const(*pArray).Join(","); })
        .On("std::string", Theirs<CStrs>(lCount), [=](auto& arr) { return JoinTexts(arr, ",", text); })
#ifdef BENCH_ABSL
        .On("absl::StrJoin", Theirs<CStrs>(lCount), [](auto& arr) { return absl::StrJoin(arr, ","); })
#endif
#ifdef BENCH_BOOST
        .On("boost::join", Theirs<CStrs>(lCount), [](auto& arr) { return boost::join(arr, ","); })
#endif
        ;
    CWorkload(s_pszFamily, "repr-strings", lCount, 1.0)
        .On("Bedplate", Ours<CStrs>(lCount), [](auto& pArray) { return pArray->Repr(", ", false); })
        .On("std::string", Theirs<CStrs>(lCount), [=](auto& arr) { return JoinTexts(arr, ", ", text); })
#ifdef BENCH_ABSL
        .On("absl::StrJoin", Theirs<CStrs>(lCount), [](auto& arr) { return absl::StrJoin(arr, ", "); })
#endif
        ;
    CWorkload(s_pszFamily, "repr-dates", lCount, 1.0)
        .On("Bedplate", Ours<CDates>(lCount), [](auto& pArray) { return pArray->Repr(", ", false); })
        .On("std::string", Theirs<CDates>(lCount),
            [](auto& arr)
            { return JoinTexts(arr, ", ", [](const PackedDate& date) { return date.szText; }); });
}
} // namespace

int main(int iArguments, char** ppszArguments)
{
    for (const long lCount : {100, 10000, 1000000, 10000000})
    {
        Append<CInts>("append-ints", lCount, 1.6);
        Append<CDbls>("append-doubles", lCount, 1.6);
        Append<CPtrs>("append-pointers", lCount, 1.6);
    }
    for (const long lCount : {100, 10000, 100000})
        Append<CDates>("append-dates", lCount, 1.6);
    for (const long lCount : {100, 10000, 1000000})
        Append<CStrs>("append-strings", lCount, 5.0);
    for (const long lCount : {100, 10000, 1000000})
    {
        Read<CInts>("sum-ints", lCount);
        ReadAny<CInts>("ints", lCount);
    }
    ReadAny<CDbls>("doubles", 10000);
    ReadAny<CStrs>("strings", 10000);
    ReadAny<CDates>("dates", 10000);
    for (const long lCount : {100, 10000})
    {
        Change<CInts>("ints", lCount, 1.1);
        Change<CDbls>("doubles", lCount, 1.1);
        Change<CStrs>("strings", lCount, 1.1);
        Change<CDates>("dates", lCount, 3.0);
    }
    for (const long lCount : {1000, 100000})
    {
        Sort<CInts>("ints", lCount);
        Sort<CDbls>("doubles", lCount);
        Sort<CBools>("bools", lCount);
        Sort<CStrs>("strings", lCount);
        Sort<CDates>("dates", lCount);
    }
    for (const long lCount : {10, 1000, 100000, 1000000})
    {
        PrintInts(lCount);
        PrintDbls(lCount);
        PrintTexts(lCount);
    }
    return bench::Main(iArguments, ppszArguments);
}
