// What the model of the tables does not show: documented values and texts, what deleted items see, targets' own texts.

#include "support.h"

#include <functional>

namespace
{
TEST(Hash, HashValuesAreTheDocumentedOnes)
{
    struct SRow
    {
        const char* pszText;
        int iCount, iHash;
    };
    for (const SRow& row :
         {SRow{"", 0, 0}, SRow{nullptr, 5, 0}, SRow{"a", -1, 0}, SRow{"a", 1, 97}, SRow{"abcdef", 3, 26499},
          SRow{"hello", 5, 7258927}, SRow{"abcdefghij", 10, 88430234}, SRow{"\xff", 1, 805306383},
          SRow{"\xe9t\xe9", 3, 8233}, SRow{"\x80\x80\x80\x80\x80\x80\x80\x80\x80", 9, 125296368},
          SRow{"f\xc3\xbcr alle F\xc3\xa4lle", 16, 1069551253}})
        EXPECT_EQ(row.iHash, CIntHash::HashFunc(row.pszText, row.iCount)) << row.iHash;
}

TEST(Hash, RefusesSizesThatCannotBe)
{
    EXPECT_EQ("0 CIntHash() Invalid size(0)", Thrown([] { CIntHash hash(0); }));
    EXPECT_EQ("0 CPtrHash() Invalid size(-2147483648)", Thrown([] { CPtrHash hash(true, INT_MIN); }));
    EXPECT_EQ("0 CStrHash() Out of memory", Thrown([] { CStrHash hash(INT_MAX); }));
    EXPECT_EQ("0 CDblHash() Out of memory", Thrown([] { CDblHash hash(1 << 28); }));
}

TEST(IntHash, ListsItsKeysAsDocumented)
{
    CIntHash hash(8);
    CStream stream;
    hash.Set("a", 1), hash.Set("a", 2), hash.Set("i", 5), hash.Set(nullptr, 7), hash.Dump(&stream);
    EXPECT_STREQ(
        "Total HashBag size : 8, DataCnt : 4\nHash : 0\n  Key : [](0)\n      : [7]\n      (Hash(0) Cnt : 1)\n"
        "Hash : 1\n  Key : [a](1)\n      : [1, 2]\n  Key : [i](1)\n      : [5]\n      (Hash(1) Cnt : 2)\n",
        stream.ToStr());
}

TEST(StrHash, TakesTextsOfAnyConstnessAndKeysInItsTargets)
{
    CStrHash hash;
    char szText[] = "2";
    CStrArray arr;
    CString str("k");
    arr.Add("k"), hash.Set("k", "1"), hash.Set("k", szText), hash.Set("k", NULL);
    hash.Get(arr.GetAt(0), &arr), hash.Get(str.ToStr(), &str);
    EXPECT_STREQ("1|2|", arr.Join("|").ToStr());
    EXPECT_STREQ("1", str.ToStr());
    EXPECT_EQ(4 * 101, hash.GetHashSize() + CIntHash().GetHashSize() + CDblHash().GetHashSize() +
                           CPtrHash(false).GetHashSize());
}

/// Calls back while it is deleted.
struct CNoted : CPtrArrayItem
{
    explicit CNoted(std::function<void()> Note) : m_Note(Note) {}
    ~CNoted() override { m_Note(); }

    const std::function<void()> m_Note;
};

TEST(PtrHash, DeletedItemsSeeTheTableAsItWillBe)
{
    string
        strSeen; // the deleted item's key, whether the latest item is under it or none, the number of values
    const CPtrArrayItem* pLatest = nullptr;
    CPtrHash hash(true, 1);
    const auto Add = [&](const char* pszKey, bool bReplace)
    {
        const auto Note = [&, pszKey]
        {
            const CPtrArrayItem* pFirst = hash.Get(pszKey);
            strSeen += string(pszKey) +
                       (pFirst == nullptr   ? "-"
                        : pFirst == pLatest ? "+"
                                            : "?") +
                       std::to_string(hash.GetDataCnt()) + " ";
        };
        CNoted* pItem = new CNoted(Note);
        pLatest       = pItem;
        hash.Set(pszKey, pItem, bReplace);
    };
    Add("a", false), Add("a", false), Add("b", false), Add("a", true);
    hash.Remove("a"), Add("c", false), hash.Clear();
    EXPECT_EQ("a+2 a+2 a-1 b-1 c-0 ", strSeen);
}
} // namespace
