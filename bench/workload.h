// What the benchmark programs share: how a workload is named, measured and judged.
//
//     CWorkload("string", "find-character", 1000, 1.1)
//         .On("Bedplate", MakeCString, [](CString& str) { return str.Find('x'); })
//         .On("std::string", MakeStdString, [](std::string& str) { return str.find('x'); });
//
// measures "string/find-character/1000/Bedplate" and ".../std::string". The label of a measurement is the target: how
// many times this peer's time ours may take; a label of 0 means that the peer is there for comparison only.
#ifndef BEDPLATE_BENCH_WORKLOAD_H
#define BEDPLATE_BENCH_WORKLOAD_H

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace bench
{
/// The target of a peer that is not judged.
constexpr double s_dUnjudged = 0.0;

/// Who does the work, and the target if it is not the workload's.
struct CWho
{
    CWho(const char* pszName) : m_pszName(pszName) {}
    CWho(const char* pszName, double dTarget) : m_pszName(pszName), m_dTarget(dTarget) {}

    const char* m_pszName;
    double m_dTarget = -1;
};

/// Calls the work and makes the compiler believe that somebody looks at its result and at all memory.
template <class TWork, class... TSubject>
void Use(TWork& work, TSubject&... subject)
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

/// One kind of work on one size of data. The size 0 stands for work without one.
class CWorkload
{
public:
    /// dTarget holds for every peer that has none of its own.
    CWorkload(const char* pszFamily, const std::string& strName, long lSize, double dTarget)
        : m_strName(std::string(pszFamily) + "/" + strName + "/" + std::to_string(lSize) + "/"),
          m_lSize(lSize),
          m_dTarget(dTarget)
    {
    }

    /// Measures work() by itself.
    template <class TWork>
    CWorkload& Run(const CWho& who, TWork work)
    {
        return Register(who,
                        [work](benchmark::State& state) mutable
                        {
                            for (auto _ : state)
                                Use(work);
                        });
    }

    /// Measures work(subject) again and again on the one subject that make() returned.
    template <class TMake, class TWork>
    CWorkload& On(const CWho& who, TMake make, TWork work)
    {
        return Register(who,
                        [make, work](benchmark::State& state) mutable
                        {
                            auto&& subject = make();
                            benchmark::DoNotOptimize(&subject);
                            for (auto _ : state)
                                Use(work, subject);
                        });
    }

    /// Measures work(subject) on subjects that are each used once. Their making and destruction are not measured.
    template <class TMake, class TWork>
    CWorkload& OnFresh(const CWho& who, TMake make, TWork work)
    {
        using Subject         = decltype(make());
        const long lBatchSize = m_lSize < 2000 ? 100 : 1;
        return Register(who,
                        [make, work, lBatchSize](benchmark::State& state) mutable
                        {
                            std::vector<std::unique_ptr<Subject>> subjects;
                            while (state.KeepRunningBatch(lBatchSize))
                            {
                                state.PauseTiming();
                                subjects.clear();
                                for (long i = 0; i < lBatchSize; ++i)
                                    subjects.emplace_back(new Subject(make()));
                                state.ResumeTiming();
                                for (auto& pSubject : subjects)
                                    Use(work, *pSubject);
                            }
                        });
    }

private:
    template <class TMeasure>
    CWorkload& Register(const CWho& who, TMeasure measure)
    {
        // scripts/bench --quick leaves the largest sizes out.
        const char* pszLargest = std::getenv("BEDPLATE_BENCH_LARGEST");
        if (pszLargest != nullptr && m_lSize > std::atol(pszLargest))
            return *this;
        const std::string strTarget = std::to_string(who.m_dTarget < 0 ? m_dTarget : who.m_dTarget);
        benchmark::RegisterBenchmark((m_strName + who.m_pszName).c_str(),
                                     [measure, strTarget](benchmark::State& state) mutable
                                     {
                                         measure(state);
                                         state.SetLabel(strTarget);
                                     });
        return *this;
    }

    std::string m_strName;
    long m_lSize;
    double m_dTarget;
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
        std::string strText   = std::to_string(uMixed);
        strText.append(strPadding, 0, uMixed % 11);
        texts.push_back(strText);
    }
    return texts;
}

/// A text in one block of the heap, its length in front: the least that a string without a small buffer has to do.
class CHeapText
{
public:
    CHeapText(const char* pszText, std::size_t iLength)
        : m_pBlock(static_cast<char*>(std::malloc(sizeof(std::size_t) + iLength + 1)))
    {
        std::memcpy(m_pBlock, &iLength, sizeof iLength);
        std::memcpy(m_pBlock + sizeof iLength, pszText, iLength);
        m_pBlock[sizeof iLength + iLength] = '\0';
    }
    explicit CHeapText(const char* pszText) : CHeapText(pszText, std::strlen(pszText)) {}
    CHeapText(const CHeapText& other) : CHeapText(other.Text(), other.Length()) {}
    CHeapText& operator=(const CHeapText&) = delete;
    ~CHeapText() { std::free(m_pBlock); }

    char* Text() const { return m_pBlock + sizeof(std::size_t); }
    std::size_t Length() const
    {
        std::size_t iLength;
        std::memcpy(&iLength, m_pBlock, sizeof iLength);
        return iLength;
    }

private:
    char* m_pBlock;
};
} // namespace bench

#endif
