// Hash tables: keys of 4 to 20 characters, each with a list of values.
#include "peers.h"
#include "workload.h"

#include "bedplate.h"

#include <charconv>
#include <unordered_map>

namespace
{
using bench::CWorkload;
using bench::s_dUnjudged;

constexpr const char* s_pszFamily = "table";

using Keys   = std::vector<std::string>;
using StdMap = std::unordered_map<std::string, std::vector<int>>;

/// The keys of the larger half of the numbers are never put into a table.
const Keys& AllKeys()
{
    static const Keys s_keys = bench::RandomTexts(2000000);
    return s_keys;
}

/// Tables of one size and load factor on both sides: how to make, fill and read them.
class CTables
{
public:
    CTables(long lCount, int iLoad) : m_lCount(lCount), m_iLoad(iLoad) {}

    auto Ours() const
    {
        return [*this] { return std::make_unique<CIntHash>(static_cast<int>(m_lCount / m_iLoad)); };
    }
    /// The standard library's table of the same load factor.
    auto Theirs() const
    {
        return [*this]
        {
            auto pMap = std::make_unique<StdMap>();
            pMap->max_load_factor(static_cast<float>(m_iLoad));
            pMap->rehash(static_cast<size_t>(m_lCount / m_iLoad));
            return pMap;
        };
    }
    auto OursFilled() const
    {
        return [*this]
        {
            auto pHash = Ours()();
            for (long i = 0; i < m_lCount; ++i)
                pHash->Set(Key(i).c_str(), static_cast<int>(i));
            return pHash;
        };
    }
    template <class TMap = StdMap>
    auto TheirsFilled() const
    {
        return [*this]
        {
            auto pMap = Empty<TMap>();
            for (long i = 0; i < m_lCount; ++i)
                (*pMap)[Key(i)].push_back(static_cast<int>(i));
            return pMap;
        };
    }

    /// The keys in an order that is not that of insertion; from m_lCount on those that are missing.
    const std::string& Key(long lIndex) const { return AllKeys()[static_cast<size_t>(lIndex)]; }
    /// Calls work(key, number) for each key; the numbers differ from the positions by lShift.
    template <class TWork>
    void ForKeys(long lShift, TWork work) const
    {
        for (long i = 0; i < m_lCount; ++i)
            work(Key(static_cast<long>(i * 7919LL % m_lCount) + lShift), static_cast<int>(i));
    }

private:
    template <class TMap>
    std::unique_ptr<TMap> Empty() const
    {
        if constexpr (std::is_same_v<TMap, StdMap>)
            return Theirs()();
        else
            return std::make_unique<TMap>();
    }

    long m_lCount;
    int m_iLoad;
};

/// Each measurement takes all keys once, in another order than they were put in.
void LookUp(const std::string& strLoad, long lCount, int iLoad, double dTarget)
{
    const CTables tables(lCount, iLoad);
    const auto find = [=](long lShift)
    {
        return [=](auto& pMap)
        {
            int iSum = 0;
            tables.ForKeys(lShift,
                           [&](const std::string& strKey, int)
                           {
                               const auto it = pMap->find(strKey);
                               if (it != pMap->end())
                                   iSum += it->second[0];
                           });
            return iSum;
        };
    };
    for (const bool bHit : {true, false})
    {
        const long lShift = bHit ? 0 : 1000000;
        CWorkload(s_pszFamily, (bHit ? "hit" : "miss") + strLoad, lCount, dTarget)
            .On("Bedplate", tables.OursFilled(),
                [=](auto& pHash)
                {
                    int iSum = 0;
                    tables.ForKeys(lShift,
                                   [&](const std::string& strKey, int)
                                   {
                                       int iValue = 0;
                                       if (pHash->Get(strKey.c_str(), &iValue) == 0)
                                           iSum += iValue;
                                   });
                    return iSum;
                })
            .On("std::unordered_map", tables.TheirsFilled(), find(lShift))
#ifdef BENCH_ABSL
            .On("absl::flat_hash_map",
                tables.TheirsFilled<absl::flat_hash_map<std::string, std::vector<int>>>(), find(lShift),
                s_dUnjudged)
#endif
#ifdef BENCH_BOOST
            .On("boost::unordered_map",
                tables.TheirsFilled<boost::unordered_map<std::string, std::vector<int>>>(), find(lShift),
                s_dUnjudged)
#endif
            ;
    }
}

void Insert(const std::string& strLoad, long lCount, int iLoad)
{
    const CTables tables(lCount, iLoad);
    CWorkload(s_pszFamily, "add" + strLoad, lCount, 1.0)
        .OnFresh(
            "Bedplate", tables.Ours(),
            [=](auto& pHash)
            { tables.ForKeys(0, [&](const std::string& strKey, int i) { pHash->Set(strKey.c_str(), i); }); })
        .OnFresh(
            "std::unordered_map", tables.Theirs(),
            [=](auto& pMap)
            { tables.ForKeys(0, [&](const std::string& strKey, int i) { (*pMap)[strKey].push_back(i); }); });
}

void Remove(const std::string& strLoad, long lCount, int iLoad, double dTarget)
{
    const CTables tables(lCount, iLoad);
    CWorkload(s_pszFamily, "remove" + strLoad, lCount, dTarget)
        .OnFresh(
            "Bedplate", tables.OursFilled(),
            [=](auto& pHash)
            { tables.ForKeys(0, [&](const std::string& strKey, int) { pHash->Remove(strKey.c_str()); }); })
        .OnFresh("std::unordered_map", tables.TheirsFilled(),
                 [=](auto& pMap)
                 { tables.ForKeys(0, [&](const std::string& strKey, int) { pMap->erase(strKey); }); });
}

/// The one value of each key becomes another.
void Replace(const std::string& strLoad, long lCount, int iLoad, double dTarget)
{
    const CTables tables(lCount, iLoad);
    CWorkload(s_pszFamily, "replace" + strLoad, lCount, dTarget)
        .On("Bedplate", tables.OursFilled(),
            [=](auto& pHash) {
                tables.ForKeys(0, [&](const std::string& strKey, int i)
                               { pHash->Set(strKey.c_str(), i, true); });
            })
        .On("std::unordered_map", tables.TheirsFilled(),
            [=](auto& pMap)
            { tables.ForKeys(0, [&](const std::string& strKey, int i) { (*pMap)[strKey].assign(1, i); }); });
}

/// The lists of all keys are copied into one array; then the keys are.
void List(const std::string& strLoad, long lCount, int iLoad, double dTarget)
{
    const CTables tables(lCount, iLoad);
    CWorkload(s_pszFamily, "list" + strLoad, lCount, dTarget)
        .On("Bedplate", tables.OursFilled(),
            [=](auto& pHash)
            {
                CIntArray values;
                tables.ForKeys(0,
                               [&](const std::string& strKey, int) { pHash->Get(strKey.c_str(), &values); });
                return values.GetSize();
            })
        .On("std::unordered_map", tables.TheirsFilled(),
            [=](auto& pMap)
            {
                std::vector<int> values;
                tables.ForKeys(0,
                               [&](const std::string& strKey, int)
                               {
                                   const auto it = pMap->find(strKey);
                                   if (it != pMap->end())
                                       values = it->second;
                               });
                return values.size();
            });
    CWorkload(s_pszFamily, "keys" + strLoad, lCount, dTarget)
        .On("Bedplate", tables.OursFilled(),
            [](auto& pHash)
            {
                CStrArray keys;
                pHash->GetKeys(keys);
                return keys.GetSize();
            })
        .On("std::unordered_map", tables.TheirsFilled(),
            [](auto& pMap)
            {
                std::vector<std::string> keys;
                for (const auto& entry : *pMap)
                    keys.push_back(entry.first);
                return keys.size();
            });
}

// ---- The dump -----------------------------------------------------------------------------------------------------

void AppendNumber(std::string& strText, size_t iNumber)
{
    char szNumber[24];
    const char* pszEnd = std::to_chars(szNumber, szNumber + sizeof szNumber, iNumber).ptr;
    strText.append(szNumber, static_cast<size_t>(pszEnd - szNumber));
}

/// The lines that Dump writes, for the standard library's table.
std::string DumpStd(const StdMap& map)
{
    std::string strText = "Total HashBag size : ";
    AppendNumber(strText, map.bucket_count());
    strText += ", DataCnt : ";
    AppendNumber(strText, map.size());
    strText += '\n';
    for (size_t iBucket = 0; iBucket < map.bucket_count(); ++iBucket)
    {
        if (map.begin(iBucket) == map.end(iBucket))
            continue;
        strText += "Hash : ";
        AppendNumber(strText, iBucket);
        strText += '\n';
        size_t iKeys = 0;
        for (auto it = map.begin(iBucket); it != map.end(iBucket); ++it, ++iKeys)
        {
            strText.append("  Key : [").append(it->first).append("](");
            AppendNumber(strText, iBucket);
            strText += ")\n      : [";
            for (const int& iValue : it->second)
            {
                if (&iValue != &it->second[0])
                    strText += ", ";
                AppendNumber(strText, static_cast<size_t>(iValue));
            }
            strText += "]\n";
        }
        strText += "      (Hash(";
        AppendNumber(strText, iBucket);
        strText += ") Cnt : ";
        AppendNumber(strText, iKeys);
        strText += ")\n";
    }
    return strText;
}

/// All values in lists of lList, the same on both sides.
void Dump(const char* pszName, long lValues, long lList)
{
    const CTables tables(lValues / lList, 1);
    CWorkload(s_pszFamily, pszName, lValues, 1.0)
        .On(
            "Bedplate",
            [=]
            {
                auto pHash = tables.OursFilled()();
                for (long i = 0; i < lValues - lValues / lList; ++i)
                    pHash->Set(tables.Key(i % (lValues / lList)).c_str(), static_cast<int>(i));
                return pHash;
            },
            [](auto& pHash)
            {
                CStream stream;
                pHash->Dump(&stream);
                return stream.GetLength();
            })
        .On(
            "std::to_chars",
            [=]
            {
                auto pMap = tables.TheirsFilled()();
                for (long i = 0; i < lValues - lValues / lList; ++i)
                    (*pMap)[tables.Key(i % (lValues / lList))].push_back(static_cast<int>(i));
                return pMap;
            },
            [](auto& pMap) { return DumpStd(*pMap); });
}
} // namespace

int main(int iArguments, char** ppszArguments)
{
    for (const int iLoad : {1, 8})
    {
        const std::string strLoad = "-load" + std::to_string(iLoad);
        const double dTarget      = iLoad == 1 ? 1.5 : 2.5;
        for (const long lCount : {100, 10000, 1000000})
        {
            LookUp(strLoad, lCount, iLoad, dTarget);
            Insert(strLoad, lCount, iLoad);
            Replace(strLoad, lCount, iLoad, dTarget);
            Remove(strLoad, lCount, iLoad, dTarget);
            List(strLoad, lCount, iLoad, dTarget);
        }
    }
    Dump("dump", 100000, 1);
    Dump("dump-one-list", 100000, 100000);
    return bench::Main(iArguments, ppszArguments);
}
