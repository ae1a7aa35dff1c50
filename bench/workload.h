// What the benchmark programs share. A program lists its workloads as rows, and has for each contestant one function
// that says how he does them; only what has a row is measured.
//
//     const CRow s_rows[] = {{"search/find-character", {30, 1000}, 1.1}};
//
//     const CContestant ours(s_rows, "Bedplate");
//     ours.On("search/find-character", MakeCString, [](CString& str) { return str.Find('x'); });
//
// measures "search/find-character/30/Bedplate" and "search/find-character/1000/Bedplate". A contestant of ours may have
// a variant, as in "Bedplate:101 buckets"; each is compared with all the others who are not ours.
#ifndef BEDPLATE_BENCH_WORKLOAD_H
#define BEDPLATE_BENCH_WORKLOAD_H

#include <benchmark/benchmark.h>

#include <climits>
#include <cstdlib>
#include <memory>
#include <random>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

namespace bench
{
/// A workload, the sizes of its data, and how many times the best peer's time ours may take: 0 if that is not judged.
/// The size 0 stands for work without one. What differs from size to size takes several rows.
struct CRow
{
    const char* pszWorkload; // family/name
    std::vector<long> sizes;
    double dTarget64;
    double dTarget32 = dTarget64;
};

/// Calls the work and makes the compiler believe that somebody looks at its result and at all memory.
template <class TWork, class... TSubject>
void Use(const TWork& work, TSubject&... subject)
{
    if constexpr (std::is_void_v<decltype(work(subject...))>)
    {
        work(subject...);
    }
    else
    {
        const auto& result = work(subject...);
        benchmark::DoNotOptimize(&result);
    }
    benchmark::ClobberMemory();
}

/// Who does the workloads of a program.
class CContestant
{
public:
    CContestant(std::span<const CRow> rows, std::string strName) : m_rows(rows), m_strName(std::move(strName))
    {
    }

    /// Measures work(subject) again and again on the one subject that make(size) returned.
    template <class TMake, class TWork>
    void On(const std::string& strWorkload, TMake make, TWork work) const
    {
        Register(strWorkload,
                 [=](benchmark::State& state, long lSize)
                 {
                     auto&& subject = make(lSize);
                     benchmark::DoNotOptimize(&subject);
                     for (auto _ : state)
                         Use(work, subject);
                 });
    }

    /// Measures work(element) on all elements of what make(size) returned, or work(element, rest) where that is a pair of the
    /// elements and something else.
    template <class TMake, class TWork>
    void OnEach(const std::string& strWorkload, TMake make, TWork work) const
    {
        On(strWorkload, make,
           [=](auto& subject)
           {
               if constexpr (requires { subject.second; })
                   for (auto& element : subject.first)
                       Use(work, element, subject.second);
               else
                   for (auto& element : subject)
                       Use(work, element);
           });
    }

    /// Measures work(subject) on subjects that are each used once. Their making and destruction are not measured.
    template <class TMake, class TWork>
    void OnFresh(const std::string& strWorkload, TMake make, TWork work) const
    {
        using Subject = decltype(make(0));
        Register(strWorkload,
                 [=](benchmark::State& state, long lSize)
                 {
                     const long lBatchSize = lSize < 2000 ? 100 : 1;
                     std::vector<std::unique_ptr<Subject>> subjects;
                     while (state.KeepRunningBatch(lBatchSize))
                     {
                         state.PauseTiming();
                         subjects.clear();
                         for (long i = 0; i < lBatchSize; ++i)
                             subjects.emplace_back(new Subject(make(lSize)));
                         state.ResumeTiming();
                         for (auto& pSubject : subjects)
                             Use(work, *pSubject);
                     }
                 });
    }

private:
    template <class TMeasure>
    void Register(const std::string& strWorkload, TMeasure measure) const
    {
        // scripts/bench --quick leaves the largest sizes out.
        const char* pszLargest = std::getenv("BEDPLATE_BENCH_LARGEST");
        const long lLargest    = pszLargest != nullptr ? std::atol(pszLargest) : LONG_MAX;
        for (const CRow& row : m_rows)
        {
            const double dTarget = sizeof(void*) == 8 ? row.dTarget64 : row.dTarget32;
            for (const long lSize : row.sizes)
            {
                if (row.pszWorkload == strWorkload && lSize <= lLargest)
                    benchmark::RegisterBenchmark(
                        (strWorkload + "/" + std::to_string(lSize) + "/" + m_strName).c_str(),
                        [=](benchmark::State& state)
                        {
                            measure(state, lSize);
                            state.SetLabel(std::to_string(dTarget));
                        });
            }
        }
    }

    std::span<const CRow> m_rows;
    std::string m_strName;
};

/// Runs what was registered, as the command line says.
inline int Main(int iArguments, char** ppszArguments)
{
    benchmark::Initialize(&iArguments, ppszArguments);
    if (benchmark::ReportUnrecognizedArguments(iArguments, ppszArguments))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

// ---- Data: the same in every run --------------------------------------------------------------------------------

/// Returns lCount random numbers from iLow to iHigh.
inline std::vector<int> RandomInts(long lCount, int iLow = -1000000000, int iHigh = 1000000000)
{
    std::mt19937 random(20240229);
    std::vector<int> values(static_cast<std::size_t>(lCount));
    for (int& iValue : values)
        iValue = iLow + static_cast<int>(random() % (static_cast<unsigned>(iHigh - iLow) + 1));
    return values;
}

/// Returns lLength random letters from a to w; x, y and z never occur.
inline std::string RandomText(long lLength)
{
    std::string strText;
    for (int iLetter : RandomInts(lLength, 'a', 'w'))
        strText += static_cast<char>(iLetter);
    return strText;
}

/// Returns lCount different texts of 4 to 20 characters in random order, as names and keys are.
inline std::vector<std::string> RandomTexts(long lCount)
{
    const std::string strPadding = RandomText(16);
    std::vector<std::string> texts;
    for (long i = 0; i < lCount; ++i)
    {
        const unsigned uMixed = static_cast<unsigned>(i) * 2654435761U; // odd, so that all are different
        texts.push_back(std::to_string(uMixed).append(strPadding, 0, uMixed % 11));
    }
    return texts;
}
} // namespace bench

#endif
