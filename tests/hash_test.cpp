// What the model of the tables does not show: documented values and texts, what deleted items see, targets' own texts.

#include "support.h"

#include <tuple>

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
    EXPECT_EQ("0 CStrHash() Out of memory", Thrown([] { CStrHash hash(INT_MAX); }));
    EXPECT_EQ(2 * 101, CDblHash().GetHashSize() + CPtrHash(false).GetHashSize());
}

TEST(IntHash, ListsItsKeysAsDocumented)
{
    CIntHash hash(8);
    CStream stream;
    hash.Set("a", 1), hash.Set("a", 2), hash.Set("i", 5), hash.Set(nullptr, 7), hash.Dump(&stream);
    EXPECT_STREQ(
        "Total HashBag size : 8, DataCnt : 4\n"
        "Hash : 0\n  Key : [](0)\n      : [7]\n      (Hash(0) Cnt : 1)\n"
        "Hash : 1\n  Key : [a](1)\n      : [1, 2]\n  Key : [i](1)\n      : [5]\n      (Hash(1) Cnt : 2)\n",
        stream.ToStr());
    const string strLong(600, 'k'); // a line that is not put together on the stack
    hash.Clear(), stream.Clear(), hash.Set(strLong.c_str(), 1), hash.Dump(&stream);
    EXPECT_NE(nullptr, strstr(stream.ToStr(), ("\n  Key : [" + strLong + "](").c_str()));
}

TEST(StrHash, TakesTextsOfAnyConstnessAndKeysInItsTargets)
{
    CStrHash hash;
    char szText[] = "2";
    CStrArray arr;
    CString str("k");
    arr.Add("k"), hash.Set("k", "1"), hash.Set("k", szText), hash.Set("k", NULL);
    hash.Get(arr.GetAt(0), &arr), hash.Get(str.ToStr(), &str);
    EXPECT_STREQ("1|2|, 1", (arr.Join("|") + ", " + str).ToStr());
}

/// Notes how many values its table has while it is deleted, if it is no longer under the key "a" then.
struct CNoted : CPtrArrayItem
{
    ~CNoted() override { s_strSeen += s_hash.Get("a") == this ? '?' : "01234"[s_hash.GetDataCnt()]; }

    static inline string s_strSeen;
    static inline CPtrHash s_hash{true};
};

TEST(PtrHash, DeletedItemsSeeTheTableAsItWillBe)
{
    for (const char* pszKey : {"a", "a", "b"})
        CNoted::s_hash.Set(pszKey, new CNoted());
    CNoted::s_hash.Set("a", new CNoted(), true), CNoted::s_hash.Remove("a"), CNoted::s_hash.Clear();
    EXPECT_EQ("2210", CNoted::s_strSeen);
}
} // namespace
