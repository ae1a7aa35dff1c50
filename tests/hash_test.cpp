#include "hash_tables.h"

#include <cstdint>

namespace
{
/// The documented hash function, step by step.
int DocumentedHash(const string& strKey)
{
    std::uint32_t uHash = 0;
    for (char ch : strKey)
    {
        uHash = static_cast<std::uint32_t>(std::int64_t{uHash} * 16 + static_cast<signed char>(ch));
        if (const std::uint32_t uTop = uHash & 0xF0000000)
            uHash ^= uTop ^ (uTop >> 24 | (uTop >= 0x80000000 ? 0xFFFFFF00 : 0));
    }
    return static_cast<int>(uHash & 0x3FFFFFFF);
}

/// A table as its listing shows it: keys in the order of their buckets, with the texts of their values.
struct SKey
{
    int iBucket, iValues;
    string strKey, strFirst, strAll;
};

struct SModel
{
    int iHashSize;
    std::vector<SKey> aKeys;

    std::vector<SKey>::iterator Find(const string& strKey)
    {
        return std::find_if(aKeys.begin(), aKeys.end(),
                            [&](const SKey& key) { return key.strKey == strKey; });
    }
    void Set(const string& strKey, const string& strText, bool bReplace)
    {
        SKey keyNew{DocumentedHash(strKey) % iHashSize, 1, strKey, strText, strText};
        const auto itKey    = Find(strKey);
        const auto IsBehind = [&](const SKey& key) { return key.iBucket > keyNew.iBucket; };
        if (itKey == aKeys.end())
            aKeys.insert(std::find_if(aKeys.begin(), aKeys.end(), IsBehind), keyNew);
        else if (bReplace)
            *itKey = keyNew;
        else
            itKey->strAll += ", " + strText, ++itKey->iValues;
    }
    void Remove(const string& strKey)
    {
        if (Find(strKey) != aKeys.end())
            aKeys.erase(Find(strKey));
    }
    string Dump() const
    {
        string strAll;
        int iValues = 0, iCount = 0;
        for (std::size_t i = 0; i < aKeys.size(); ++i)
        {
            const SKey& key = aKeys[i];
            if (i == 0 || key.iBucket != aKeys[i - 1].iBucket)
                strAll += Print("Hash : %d\n", key.iBucket), iCount = 0;
            strAll += "  Key : [" + key.strKey + Print("](%d)\n      : [", key.iBucket) + key.strAll + "]\n";
            ++iCount, iValues += key.iValues;
            if (i + 1 == aKeys.size() || key.iBucket != aKeys[i + 1].iBucket)
                strAll += Print("      (Hash(%d) Cnt : %d)\n", key.iBucket, iCount);
        }
        return Print("Total HashBag size : %d, DataCnt : %d\n", iHashSize, iValues) + strAll;
    }
};

template <class TTable>
class HashTable : public testing::Test
{
protected:
    static void ExpectAlike(SModel& model, typename TTable::Hash& hash, const char* pszKey)
    {
        ASSERT_EQ(model.Dump(), Dumped(hash));
        CStrArray arrKeys(3);
        hash.GetKeys(arrKeys);
        ASSERT_EQ(Signed(model.aKeys.size()), arrKeys.GetSize());
        for (int i = 0; i < arrKeys.GetSize(); ++i)
            ASSERT_EQ(model.aKeys[Unsigned(i)].strKey, arrKeys.GetAt(i));
        const auto itKey  = model.Find(pszKey != nullptr ? pszKey : "");
        const bool bThere = itKey != model.aKeys.end();
        typename TTable::First first{}, *pFirst = &first;
        typename TTable::List list, *pList      = &list;
        for (int i = 0; i < 2; ++i, pFirst = nullptr, pList = nullptr)
            ASSERT_TRUE(hash.Get(pszKey, pFirst) == bThere - 1 && hash.Get(pszKey, pList) == bThere - 1);
        ASSERT_EQ(bThere ? itKey->strFirst : Printed(typename TTable::First{}), Printed(first));
        ASSERT_TRUE(bThere ? list.Repr(", ", false) == itKey->strAll.c_str() : list.GetBufferSize() == 0)
            << list.Repr().ToStr();
    }
};

TYPED_TEST_SUITE(HashTable, CTables, );

TYPED_TEST(HashTable, RandomEditsAgreeInListingKeysValuesAndCount)
{
    CRandom random;
    std::vector<string> aKeys{"", "a", "A", "key", "Key", "\xff", "\xe9t\xe9", "abcdefghij", "i"};
    while (aKeys.size() < 40)
        aKeys.push_back(random.Text(20));
    for (int iHashSize : {1, 2, 13, 101})
    {
        typename TypeParam::Hash hash(iHashSize);
        SModel model{iHashSize, {}};
        for (int iStep = 0; iStep < 700; ++iStep)
        {
            const string& strKey = aKeys[Unsigned(random.Between(0, 39))];
            const char* pszKey   = strKey.empty() && iStep % 2 == 0 ? nullptr : strKey.c_str();
            const int iEdit      = random.Between(0, 20);
            SCOPED_TRACE(Print("step %d, edit %d of [%s]", iStep, iEdit, strKey.c_str()));
            typename TypeParam::Value value;
            if (iEdit < 14)
            {
                Assign(value, iStep);
                model.Set(strKey, Printed(value), iEdit < 3);
                ASSERT_EQ(0, hash.Set(pszKey, value, iEdit < 3));
            }
            else if (iEdit < 20)
                hash.Remove(pszKey), model.Remove(strKey);
            else if (iStep % 9 == 0)
                hash.Clear(), model.aKeys.clear();
            this->ExpectAlike(model, hash, pszKey);
            ASSERT_FALSE(this->HasFatalFailure());
        }
        hash.Dump(nullptr);
    }
}

TYPED_TEST(HashTable, HashValuesAreTheDocumentedOnesAndSizesPositive)
{
    CRandom random;
    const auto Hash = TypeParam::Hash::HashFunc;
    for (int i = 0; i < 20000; ++i)
    {
        string strKey(Unsigned(random.Between(0, 30)), 'a');
        for (char& ch : strKey)
            ch = static_cast<char>(random.Between(-128, 127));
        ASSERT_EQ(DocumentedHash(strKey), Hash(strKey.c_str(), Signed(strKey.size()))) << i;
    }
    const int aiExpected[] = {97, 26499, 7258927, 88430234, 805306383, 8233, 0, 0, 0};
    const int aiHashes[]   = {Hash("a", 1),           Hash("abcdef", 3),  Hash("hello", 5),
                              Hash("abcdefghij", 10), Hash("\xff", 1),    Hash("\xe9t\xe9", 3),
                              Hash("a", 0),           Hash("a", INT_MIN), Hash(nullptr, 9)};
    EXPECT_TRUE(std::equal(aiHashes, aiHashes + 9, aiExpected));
    typename TypeParam::Value value;
    const string strClass = "0 C" + Assign(value, 1) + "Hash() ";
    for (int iSize : {0, -5, INT_MIN})
        EXPECT_EQ(strClass + Print("Invalid size(%d)", iSize),
                  Thrown([&] { typename TypeParam::Hash hash(iSize); }));
    EXPECT_EQ(strClass + "Out of memory", Thrown([] { typename TypeParam::Hash hash(INT_MAX); }));
}

TEST(StrHash, TakesAnyKindOfTextAndCopiesIt)
{
    CStrHash hash;
    char szText[] = "variable";
    hash.Set("k", szText), hash.Set("k", "literal"), hash.Set("k", CString("constant").ToStr()),
        hash.Set("k", NULL);
    szText[0] = 'V';
    CStrArray arr;
    EXPECT_EQ("4|variable|literal|constant|", (hash.Get("k", &arr), Texts(arr)));
    EXPECT_EQ("1|literal", (hash.Set("k", arr.GetAt(1), true), hash.Get("k", &arr), Texts(arr)));
    EXPECT_TRUE(hash.GetHashSize() == 101 && hash.GetDataCnt() == 1);
}

/// Looks into the table from its destructor.
struct CWitness : CCountedItem
{
    CWitness(CPtrHash& hash, CPtrArrayItem*& pSeen) : CCountedItem(0), m_hash(hash), m_pSeen(pSeen) {}
    ~CWitness() override { m_pSeen = m_hash.Get("0"); }
    CPtrHash& m_hash;
    CPtrArrayItem*& m_pSeen;
};

TEST(PtrHash, OwnerDeletesEachItemOnceWhenItsKeyHasLostIt)
{
    std::vector<int>& aDeleted = CCountedItem::s_aDeleted;
    CPtrArrayItem *pSeen = nullptr, *pNew = new CCountedItem(9);
    aDeleted.clear();
    {
        CPtrHash hash(true, 2), hashHolder(false);
        for (int i = 0; i < 9; ++i)
            hash.Set(Print("%d", i % 3).c_str(), i == 0 ? new CWitness(hash, pSeen) : new CCountedItem(i));
        hashHolder.Set("k", hash.Get("1")), hashHolder.Set("k", nullptr, true),
            hashHolder.Set("l", hash.Get("1"));
        EXPECT_TRUE(hashHolder.Get("k") == nullptr && hashHolder.Get("k", &pSeen) == 0 &&
                    hashHolder.Get("absent") == nullptr);
        hashHolder.Remove("l"), hash.Set("0", nullptr), hash.Set("0", pNew, true);
        EXPECT_EQ(pNew, pSeen); // it was in place when the old ones were deleted
        EXPECT_EQ(std::vector<int>({0, 3, 6}), aDeleted);
        hash.Remove("1"), hash.Remove("1");
        EXPECT_EQ(std::vector<int>({0, 3, 6, 1, 4, 7}), aDeleted);
        hash.Clear(), hash.Set("0", new CCountedItem(10));
        EXPECT_EQ(10U, aDeleted.size());
    }
    std::sort(aDeleted.begin(), aDeleted.end());
    EXPECT_EQ(std::vector<int>({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}), aDeleted);
}
} // namespace
