// Hash tables: keys of 4 to 20 characters, each with a list of values.
#include "memory.h"
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

/// No table holds more keys than this: those from here on are missing everywhere.
constexpr long s_lMissing = 1000000;

const Keys& AllKeys()
{
    static const Keys s_keys = bench::RandomTexts(2 * s_lMissing);
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

    long Count() const { return m_lCount; }
    const std::string& Key(long lIndex) const { return AllKeys()[static_cast<size_t>(lIndex)]; }
    /// Calls work(key, number) for each key, or for the one that is lShift further.
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

// ---- One step of each work, on our side and on theirs -------------------------------------------------------------

void Add(CIntHash& hash, const std::string& strKey, int iValue) { hash.Set(strKey.c_str(), iValue); }
void Replace(CIntHash& hash, const std::string& strKey, int iValue)
{
    hash.Set(strKey.c_str(), iValue, true);
}
void Remove(CIntHash& hash, const std::string& strKey) { hash.Remove(strKey.c_str()); }
bool Find(CIntHash& hash, const std::string& strKey, int& iValue)
{
    return hash.Get(strKey.c_str(), &iValue) == 0;
}
void List(CIntHash& hash, const std::string& strKey)
{
    CIntArray values;
    hash.Get(strKey.c_str(), &values);
}
int CountKeys(CIntHash& hash)
{
    CStrArray keys;
    hash.GetKeys(keys);
    return keys.GetSize();
}

void Add(StdMap& map, const std::string& strKey, int iValue) { map[strKey].push_back(iValue); }
void Replace(StdMap& map, const std::string& strKey, int iValue) { map[strKey].assign(1, iValue); }
void Remove(StdMap& map, const std::string& strKey) { map.erase(strKey); }
template <class TMap>
bool Find(TMap& map, const std::string& strKey, int& iValue)
{
    const auto it = map.find(strKey);
    if (it != map.end())
        iValue = it->second[0];
    return it != map.end();
}
void List(StdMap& map, const std::string& strKey)
{
    const std::vector<int> values = map.find(strKey)->second;
    benchmark::DoNotOptimize(values.data());
}
size_t CountKeys(StdMap& map)
{
    std::vector<std::string> keys;
    for (const auto& entry : map)
        keys.push_back(entry.first);
    return keys.size();
}

// ---- The workloads: each measurement takes all keys once, in another order than they were put in ------------------

/// Returns what does the step with every key of a table.
template <class TStep>
auto All(const CTables& tables, TStep step, long lShift = 0)
{
    return [=](auto& pTable)
    { tables.ForKeys(lShift, [&](const std::string& strKey, int i) { step(*pTable, strKey, i); }); };
}

void LookUp(const std::string& strName, const CTables& tables, double dTarget, long lShift)
{
    const auto find = All(
        tables,
        [](auto& table, const std::string& strKey, int i)
        {
            const bool bFound = Find(table, strKey, i);
            benchmark::DoNotOptimize(bFound);
            benchmark::DoNotOptimize(i);
        },
        lShift);
    CWorkload(s_pszFamily, strName, tables.Count(), dTarget)
        .On("Bedplate", tables.OursFilled(), find)
        .On("std::unordered_map", tables.TheirsFilled(), find)
#ifdef BENCH_ABSL
        .On({"absl::flat_hash_map", s_dUnjudged},
            tables.TheirsFilled<absl::flat_hash_map<std::string, std::vector<int>>>(), find)
#endif
#ifdef BENCH_BOOST
        .On({"boost::unordered_map", s_dUnjudged},
            tables.TheirsFilled<boost::unordered_map<std::string, std::vector<int>>>(), find)
#endif
        ;
}

template <class TWork>
CWorkload Filled(const std::string& strName, const CTables& tables, double dTarget, TWork work)
{
    return CWorkload(s_pszFamily, strName, tables.Count(), dTarget)
        .On("Bedplate", tables.OursFilled(), work)
        .On("std::unordered_map", tables.TheirsFilled(), work);
}

void Work(long lCount, int iLoad)
{
    const CTables tables(lCount, iLoad);
    const double dTarget      = iLoad == 1 ? 1.5 : 2.5;
    const std::string strLoad = "-load" + std::to_string(iLoad);
    LookUp("hit" + strLoad, tables, dTarget, 0);
    LookUp("miss" + strLoad, tables, dTarget, s_lMissing);
    Filled("replace" + strLoad, tables, dTarget,
           All(tables, [](auto& table, auto& strKey, int i) { Replace(table, strKey, i); }));
    Filled("list" + strLoad, tables, dTarget,
           All(tables, [](auto& table, auto& strKey, int) { List(table, strKey); }));
    const auto keys = [=] { return Keys(AllKeys().begin(), AllKeys().begin() + lCount); };
    Filled("keys" + strLoad, tables, dTarget, [](auto& pTable) { return CountKeys(*pTable); })
        .On(bench::MemoryAlone(), keys,
            [=](const Keys& texts)
            {
                bench::RequestArray(lCount, sizeof(char*));
                bench::RequestStrings(texts);
            });

    const auto add    = All(tables, [](auto& table, auto& strKey, int i) { Add(table, strKey, i); });
    const auto remove = All(tables, [](auto& table, auto& strKey, int) { Remove(table, strKey); });
    CWorkload(s_pszFamily, "add" + strLoad, lCount, 1.0)
        .OnFresh("Bedplate", tables.Ours(), add)
        .OnFresh("std::unordered_map", tables.Theirs(), add)
        .OnFresh(
            bench::MemoryAlone(), [=] { return std::make_pair(keys(), bench::RequestNodes({})); },
            [](auto& table) { table.second = bench::RequestNodes(table.first); });
    CWorkload(s_pszFamily, "remove" + strLoad, lCount, dTarget)
        .OnFresh("Bedplate", tables.OursFilled(), remove)
        .OnFresh("std::unordered_map", tables.TheirsFilled(), remove);
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
    const auto lengthen = [=](auto pTable)
    {
        for (long i = 0; i < lValues - lValues / lList; ++i)
            Add(*pTable, tables.Key(i % (lValues / lList)), static_cast<int>(i));
        return pTable;
    };
    CWorkload(s_pszFamily, pszName, lValues, 1.0)
        .On(
            "Bedplate", [=] { return lengthen(tables.OursFilled()()); },
            [](auto& pHash)
            {
                CStream stream;
                pHash->Dump(&stream);
                return stream.GetLength();
            })
        .On(
            "std::to_chars", [=] { return lengthen(tables.TheirsFilled()()); },
            [](auto& pMap) { return DumpStd(*pMap); });
}
} // namespace

int main(int iArguments, char** ppszArguments)
{
    for (const int iLoad : {1, 8})
    {
        for (const long lCount : {100, 10000, 1000000})
            Work(lCount, iLoad);
    }
    Dump("dump", 100000, 1);
    Dump("dump-one-list", 100000, 100000);
    return bench::Main(iArguments, ppszArguments);
}
