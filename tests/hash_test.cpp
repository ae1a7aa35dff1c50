// What the model of the tables does not show: documented values and texts, what deleted items see, targets' own texts.

#include "alloc_control.h"
#include "support.h"
#include <bedplate/typed.h>

#include <cstdlib>
#include <memory>
#include <tuple>
#include <utility>

namespace
{
TEST(Hash, HashValuesAreTheDocumentedOnes)
{
    for (const auto& [pszText, iCount, iHash] :
         {std::tuple("", 0, 0), std::tuple("a", -1, 0), std::tuple("a", 1, 97), std::tuple("abcd", 3, 26499),
          std::tuple("abcdefghij", 10, 88430234), std::tuple("\xff", 1, 805306383),
          std::tuple("\x80\x80\x80\x80\x80\x80\x80\x80\x80", 9, 125296368),
          std::tuple("f\xc3\xbcr alle F\xc3\xa4lle", 16, 1069551253)})
        EXPECT_EQ(iHash, CIntHash::HashFunc(pszText, iCount)) << pszText;
    EXPECT_EQ(0, CStrHash::HashFunc(nullptr, 5));
}

TEST(Hash, RefusesSizesThatCannotBeAndHasADefault)
{
    EXPECT_EQ("0 CIntHash() Invalid size(0)", Thrown([] { CIntHash hash(0); }));
    EXPECT_EQ(2 * 101, CDblHash().GetHashSize() + CPtrHash(false).GetHashSize());
}

TEST(IntHash, ListsItsKeysAsDocumented)
{
    CIntHash hash(8), hashLong;
    CStream stream, streamLong;
    for (const char* pszKey : {"a", "a", "i"})
        hash.Set(pszKey, hash.GetDataCnt());
    hash.Set(nullptr, 7);
    hash.Dump(&stream);
    EXPECT_STREQ(
        "Total HashBag size : 8, DataCnt : 4\n"
        "Hash : 0\n  Key : [](0)\n      : [7]\n      (Hash(0) Cnt : 1)\n"
        "Hash : 1\n  Key : [a](1)\n      : [0, 1]\n  Key : [i](1)\n      : [2]\n      (Hash(1) Cnt : 2)\n",
        stream.ToStr());
    const string strLong(600, 'k'); // a line that is not put together on the stack
    hashLong.Set(strLong.c_str(), 1);
    hashLong.Dump(&streamLong);
    EXPECT_NE(nullptr, strstr(streamLong.ToStr(), ("\n  Key : [" + strLong + "](").c_str()));
}

TEST(StrHash, TakesStringsAndTextsOfAnyConstnessAndKeysInItsTargets)
{
    CStrHash hash;
    char szText[] = "2";
    const CString strKey("k"), strText("t");
    EXPECT_EQ(0, hash.Set(strKey, "1") + hash.Set("k", szText) + hash.Set("k", NULL) +
                     hash.Set("k", strText) + hash.Set(strKey, strText, false));
    *hash.Find(strKey) += "!";
    hash.Remove(strText);
    CStrArray arr{"k"};
    CString str("k");
    EXPECT_EQ(0, hash.Get(arr.GetAt(0), &arr) + hash.Get(str.ToStr(), &str));
    EXPECT_STREQ("1!|2||t|t, 1!", (arr.Join("|") + ", " + str).ToStr());
}

TEST(IntHash, IsGoneThroughInOrderWhileItChanges)
{
    CIntHash hash(1);
    for (int i = 0; i < 10; ++i)
        hash.Set(std::to_string(i).c_str(), i);
    for (auto it = hash.begin(); it != hash.end();)
    {
        const auto entry = *it;
        ++it;
        entry.m_value % 3 > 0 ? hash.Remove(entry.m_pszKey) : (void)hash.Set(entry.m_pszKey, 70);
    }
    for (auto [pszKey, iValue] : hash)
        iValue += *pszKey;
    string strSeen;
    for (const auto& entry : std::as_const(hash))
        strSeen += entry.m_pszKey + std::to_string(entry.m_value) + " ";
    EXPECT_EQ("048 354 660 966 ", strSeen);
    EXPECT_EQ(nullptr, std::as_const(hash).Find(CString("1")));
}

TEST(IntHash, GoesOnWhileItsIndexCannotGrow)
{
    CIntHash hash(7);
    const auto Set = [&](int iFailing)
    {
        const CString strKey = CInt(hash.GetKeyCnt()).ToFmtStr();
        CFailingAllocation failing(iFailing, true);
        return hash.Set(strKey, hash.GetKeyCnt());
    };
    while (hash.GetKeyCnt() < 1000)
        ASSERT_EQ(0, Set(0));
    while (Set(2) == 0) // there is memory for the node alone
        ;
    EXPECT_LT(1100, hash.GetKeyCnt());
    EXPECT_EQ(-99, Set(2));
    EXPECT_EQ(0, Set(0));
    for (int i = 0; i < hash.GetKeyCnt(); ++i)
        EXPECT_EQ(i, *hash.Find(CInt(i).ToFmtStr()));
}

TEST(IntHash, ThrowsForAKeyThatThereIsOnlyTooLittleMemoryFor)
{
    const std::unique_ptr<char, decltype(&free)> pszKey(static_cast<char*>(malloc(s_iTooLarge + 2)), &free);
    memset(pszKey.get(), 'k', s_iTooLarge + 1);
    pszKey.get()[s_iTooLarge + 1] = '\0';
    CIntHash hash;
    EXPECT_EQ("-11 at cstring.cpp(", Thrown([&] { hash.Set(pszKey.get(), 1); }).substr(0, 19));
    EXPECT_EQ(0, hash.GetKeyCnt());
}

TEST(PtrHash, IsMovedWithItsItems)
{
    CPtrHash hash(true), hashOther(false, 3);
    auto& hashSame = hash;
    hash.Set("a", new CPtrArrayItem());
    hash      = std::move(hashSame);
    hashOther = std::move(hash);
    EXPECT_EQ(101, hashOther.GetHashSize());
    EXPECT_NE(nullptr, hashOther.Get(CString("a"))); // and the leak checker sees who owns it
}

struct CShip : CPtrArrayItem
{
    int m_iCrew = 1;
};

TEST(PtrHashOf, KnowsItsItemsAndGivesThemBack)
{
    CPtrHashOf<CShip> hash(1);
    hash.FindOrAdd("Argo").m_iCrew += 49;
    hash.FindOrAdd(CString("Argo")).m_iCrew += 1;
    hash.Set("Pinta", std::make_unique<CShip>());
    hash.Set("Pinta", std::make_unique<CShip>());
    string strSeen;
    for (auto [pszKey, ship] : hash)
        strSeen += pszKey + std::to_string(++ship.m_iCrew) + " ";
    for (const auto& entry : std::as_const(hash))
        strSeen += std::to_string(entry.m_value.m_iCrew) + " ";
    EXPECT_EQ("Argo52 Pinta2 52 2 ", strSeen);
    CPtrHashOf<CShip> hashMoved(std::move(hash));
    EXPECT_EQ(2, hashMoved.Detach("Pinta")->m_iCrew);
    EXPECT_EQ(nullptr, hashMoved.Detach("Pinta"));
    EXPECT_EQ(1 + 1, hashMoved.GetKeyCnt() + hashMoved.GetHash().GetDataCnt());
}

TEST(PtrHashOf, DeletesItemsThatItCannotTake)
{
    CPtrHashOf<CShip> hash;
    auto pShip = std::make_unique<CShip>();
    {
        CFailingAllocation failing(1, true);
        EXPECT_EQ(-99, hash.Set("Argo", std::move(pShip)));
    }
    const auto Add = [&]
    {
        CFailingAllocation failing(2, true); // behind the item
        hash.FindOrAdd("Argo");
    };
    EXPECT_EQ("0 CPtrHash::FindOrAdd : Out of memory", Thrown(Add));
    EXPECT_EQ(-1, hash.Set("Argo", nullptr));
    EXPECT_EQ(nullptr, std::as_const(hash).Find("Argo"));
}

/// Notes how many values its table has while it is deleted, if it is no longer the first under its key then.
struct CNoted : CPtrArrayItem
{
    explicit CNoted(const char* pszKey) : m_pszKey(pszKey) { s_hash.Set(pszKey, this); }
    ~CNoted() override { s_strSeen += s_hash.Get(m_pszKey) == this ? '?' : "01234"[s_hash.GetDataCnt()]; }

    const char* m_pszKey;
    static inline string s_strSeen;
    static inline CPtrHash s_hash{true};
};

TEST(PtrHash, DeletedItemsSeeTheTableAsItWillBe)
{
    for (const char* pszKey : {"a", "a", "b", "c"})
        new CNoted(pszKey);
    CNoted::s_hash.Set("a", new CPtrArrayItem(), true);
    CNoted::s_hash.Remove("a");
    CNoted::s_hash.Clear();
    new CNoted("d");
    CNoted::s_hash.Set("d", nullptr, true);
    EXPECT_EQ("33101", CNoted::s_strSeen);
}
} // namespace
