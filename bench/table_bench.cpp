// Hash tables: keys of 17 characters with a value each, or with a list of values.
#include "peers.h"
#include "workload.h"

#include "bedplate.h"

#include <bit>
#include <unordered_map>

namespace
{
using bench::CContestant;

const bench::CRow s_rows[] = {
    {"table/hit", {1000, 100000}, 0.9},
    {"table/miss", {1000, 100000}, 0.9},
    {"table/insert", {1000, 100000}, 0.6},
    {"table/remove", {1000, 100000}, 0.9},
    {"table/replace", {1000, 100000}, 0.9},
    {"table/add-values", {1000, 100000}, 0.9},
    {"table/list", {1000, 100000}, 1.2},
    {"table/all-keys", {1000, 100000}, 0.5},
    {"table/dump", {1000, 100000}, 1.0},
    {"table/collide-hit", {1000, 100000}, 1.5}, // the peer: keys that do not collide
    {"table/collide-insert", {1000, 100000}, 1.5},
    {"table/collide-remove", {1000, 100000}, 1.5},
};

// ---- One step of each work, for each kind of table: Set, Get, Remove, Add to a list, read a list, all keys --------

class COurTable
{
public:
    using Key = std::string;
    explicit COurTable(long lBuckets) : m_hash(static_cast<int>(lBuckets)) {}

    void Set(const Key& key, int iValue) { m_hash.Set(key.c_str(), iValue, true); }
    void Add(const Key& key, int iValue) { m_hash.Set(key.c_str(), iValue); }
    int Get(const Key& key)
    {
        int iValue = -1;
        m_hash.Get(key.c_str(), &iValue);
        return iValue;
    }
    void Remove(const Key& key) { m_hash.Remove(key.c_str()); }
    void List(const Key& key) { m_hash.Get(key.c_str(), &m_list); }
    void AllKeys() { m_hash.GetKeys(m_keys); }
    int Dump()
    {
        CStream stream;
        m_hash.Dump(&stream);
        return stream.GetLength();
    }

private:
    CIntHash m_hash;
    CIntArray m_list;
    CStrArray m_keys;
};

/// The tables of the standard library, Abseil and Boost.
template <template <class...> class TMap>
class CStdTable
{
public:
    using Key = std::string;
    explicit CStdTable(long) {}

    void Set(const Key& key, int iValue) { m_values[key] = iValue; }
    void Add(const Key& key, int iValue) { m_lists[key].push_back(iValue); }
    int Get(const Key& key)
    {
        const auto it = m_values.find(key);
        return it != m_values.end() ? it->second : -1;
    }
    void Remove(const Key& key) { m_values.erase(key); }
    void List(const Key& key) { m_list = m_lists.find(key)->second; }
    void AllKeys()
    {
        m_keys.clear();
        for (const auto& entry : m_values)
            m_keys.push_back(entry.first);
    }

protected:
    TMap<std::string, int> m_values;
    TMap<std::string, std::vector<int>> m_lists;
    std::vector<int> m_list;
    std::vector<std::string> m_keys;
};

/// The standard library's, which prints what our dump says.
class CDumpedTable : public CStdTable<std::unordered_map>
{
public:
    using CStdTable::CStdTable;

    std::string Dump()
    {
        std::string strText = "Total HashBag size : " + std::to_string(m_values.bucket_count()) +
                              ", DataCnt : " + std::to_string(m_values.size()) + "\n";
        for (size_t i = 0; i < m_values.bucket_count(); ++i)
        {
            const std::string strBucket = std::to_string(i);
            if (m_values.begin(i) != m_values.end(i))
                ((strText += "Hash : ") += strBucket) += '\n';
            size_t iKeys = 0;
            for (auto it = m_values.begin(i); it != m_values.end(i); ++it, ++iKeys)
                strText.append("  Key : [")
                    .append(it->first)
                    .append("](")
                    .append(strBucket)
                    .append(")\n      : [")
                    .append(std::to_string(it->second))
                    .append("]\n");
            if (iKeys > 0)
                strText.append("      (Hash(")
                    .append(strBucket)
                    .append(") Cnt : ")
                    .append(std::to_string(iKeys))
                    .append(")\n");
        }
        return strText;
    }
};

#ifdef BENCH_QT
class CQtTable
{
public:
    using Key = QByteArray;
    explicit CQtTable(long) {}

    /// A key that is new is copied, as the other tables do, not shared.
    void Set(const Key& key, int iValue)
    {
        if (const auto it = m_values.find(key); it != m_values.end())
            *it = iValue;
        else
            m_values.insert(Key(key.constData(), key.size()), iValue);
    }
    int Get(const Key& key) { return m_values.value(key, -1); }
    void Remove(const Key& key) { m_values.remove(key); }

private:
    QHash<QByteArray, int> m_values;
};
#endif

#ifdef BENCH_GLIB
class CGlibTable
{
public:
    using Key = std::string;
    explicit CGlibTable(long) : m_pTable(g_hash_table_new_full(g_str_hash, g_str_equal, g_free, nullptr)) {}
    CGlibTable(const CGlibTable&)            = delete;
    CGlibTable& operator=(const CGlibTable&) = delete;
    ~CGlibTable() { g_hash_table_destroy(m_pTable); }

    void Set(const Key& key, int iValue)
    {
        g_hash_table_insert(m_pTable, g_strdup(key.c_str()), GINT_TO_POINTER(iValue + 1));
    }
    int Get(const Key& key) { return GPOINTER_TO_INT(g_hash_table_lookup(m_pTable, key.c_str())) - 1; }
    void Remove(const Key& key) { g_hash_table_remove(m_pTable, key.c_str()); }

private:
    GHashTable* m_pTable;
};
#endif

// ---- Keys -----------------------------------------------------------------------------------------------------------

using Texts = std::vector<std::string>;

/// Returns a text of 17 characters, another for each number.
std::string Text(unsigned uNumber)
{
    const std::string strNumber = std::to_string(uNumber * 2654435761U);
    return std::string("abcdefghijklmnopq", 17 - strNumber.size()) + strNumber;
}

Texts PlainTexts(long lCount)
{
    Texts texts;
    for (long i = 0; i < lCount; ++i)
        texts.push_back(Text(static_cast<unsigned>(i)));
    return texts;
}

/// Returns texts with one hash value: each pair of characters counts 16 times its first character and the second.
Texts OneHashValue(long lCount)
{
    Texts texts(static_cast<size_t>(lCount), "a");
    for (size_t i = 0; i < texts.size(); ++i)
    {
        for (size_t iRest = i, iPair = 0; iPair < 9; ++iPair, iRest /= 4)
            (texts[i] += static_cast<char>('a' + iRest % 4)) += static_cast<char>('q' - 16 * (iRest % 4));
    }
    return texts;
}

/// Returns texts that all belong into the first of 101 buckets.
Texts OneBucket(long lCount)
{
    static Texts s_texts;
    for (static unsigned s_uNext = 0; static_cast<long>(s_texts.size()) < lCount; ++s_uNext)
    {
        if (CIntHash::HashFunc(Text(s_uNext).c_str(), 17) % 101 == 0)
            s_texts.push_back(Text(s_uNext));
    }
    return {s_texts.begin(), s_texts.begin() + lCount};
}

// ---- The workloads: each measurement takes all keys once, in another order than they were put in ------------------

enum E_Content
{
    E_Values,
    E_Lists
};

/// A table, the keys that it holds, in the order in which they are used, and as many that it lacks.
template <class TTable>
struct CSubject
{
    CSubject(const Texts& texts, long lBuckets, E_Content eContent) : table(lBuckets)
    {
        const size_t iCount = texts.size() / 2;
        for (size_t i = 0; i < iCount; ++i)
        {
            keys.emplace_back(texts[i * 7919 % iCount].c_str());
            missing.emplace_back(texts[iCount + i * 7919 % iCount].c_str());
            if constexpr (requires { &TTable::Add; })
                eContent == E_Lists ? table.Add(texts[i].c_str(), 1) : table.Set(texts[i].c_str(), 1);
            else
                table.Set(texts[i].c_str(), 1);
        }
    }

    TTable table;
    std::vector<typename TTable::Key> keys;
    std::vector<typename TTable::Key> missing;
};

/// Measures one kind of table with the keys that texts(count) returns.
template <class TTable>
void Measure(const std::string& strName, const std::string& strPrefix = "table/",
             long (*buckets)(long) = nullptr, Texts (*texts)(long) = PlainTexts)
{
    const CContestant who(s_rows, strName);
    const auto countBuckets = [=](long lCount) { return buckets != nullptr ? buckets(lCount) : 0; };
    const auto filled       = [=](long lCount)
    { return CSubject<TTable>(texts(2 * lCount), countBuckets(lCount), E_Values); };
    const auto onKeys = [=](const char* pszWorkload, auto step)
    {
        who.On(strPrefix + pszWorkload, filled,
               [=](auto& subject)
               {
                   for (const auto& key : subject.keys)
                       step(subject.table, key);
               });
    };
    onKeys("hit", [](auto& table, auto& key) { benchmark::DoNotOptimize(table.Get(key)); });
    who.On(strPrefix + "miss", filled,
           [](auto& subject)
           {
               for (const auto& key : subject.missing)
                   benchmark::DoNotOptimize(subject.table.Get(key));
           });
    who.On(strPrefix + "insert", filled,
           [=](auto& subject)
           {
               TTable table(countBuckets(static_cast<long>(subject.keys.size())));
               for (const auto& key : subject.keys)
                   table.Set(key, 2);
           });
    onKeys("replace", [](auto& table, auto& key) { table.Set(key, 2); });
    onKeys("remove",
           [](auto& table, auto& key)
           {
               table.Remove(key);
               table.Set(key, 2);
           });
    if constexpr (requires { &TTable::AllKeys; })
    {
        const auto lists = [=](long lCount)
        { return CSubject<TTable>(texts(2 * lCount), countBuckets(lCount), E_Lists); };
        who.On(strPrefix + "all-keys", filled, [](auto& subject) { subject.table.AllKeys(); });
        who.On(strPrefix + "list", lists,
               [](auto& subject)
               {
                   for (const auto& key : subject.keys)
                       subject.table.List(key);
               });
        who.OnFresh(strPrefix + "add-values", lists,
                    [](auto& subject)
                    {
                        for (int iValue = 2; iValue <= 8; ++iValue)
                        {
                            for (const auto& key : subject.keys)
                                subject.table.Add(key, iValue);
                        }
                    });
    }
    if constexpr (requires { &TTable::Dump; })
        who.On(strPrefix + "dump", filled, [](auto& subject) { return subject.table.Dump(); });
}

} // namespace

int main(int iArguments, char** ppszArguments)
{
    const auto few      = [](long) { return 101L; };
    const auto matching = [](long lCount) { return lCount; };
    const auto power    = [](long lCount)
    { return static_cast<long>(std::bit_ceil(static_cast<unsigned long>(lCount))); };
    Measure<COurTable>("Bedplate:101 buckets", "table/", few);
    Measure<COurTable>("Bedplate:a bucket a key", "table/", matching);
    Measure<COurTable>("Bedplate:2^n buckets", "table/", power);
    Measure<COurTable>("Bedplate:one hash value", "table/collide-", matching, OneHashValue);
    Measure<COurTable>("Bedplate:one bucket", "table/collide-", few, OneBucket);
    Measure<COurTable>("keys without collisions", "table/collide-", matching);
    Measure<CDumpedTable>("std::unordered_map");
#ifdef BENCH_ABSL
    Measure<CStdTable<absl::flat_hash_map>>("Abseil");
#endif
#ifdef BENCH_BOOST
    Measure<CStdTable<boost::unordered_map>>("Boost");
#endif
#ifdef BENCH_QT
    Measure<CQtTable>("Qt");
#endif
#ifdef BENCH_GLIB
    Measure<CGlibTable>("GLib");
#endif
    return bench::Main(iArguments, ppszArguments);
}
