// What the model of the tables does not show: documented values and texts, and what compiles.

#include "bedplate.h"

#include <gtest/gtest.h>

namespace
{
template <class THash>
class HashTable : public testing::Test
{
};

using CHashes = testing::Types<CIntHash, CDblHash, CStrHash, CPtrHash>;
TYPED_TEST_SUITE(HashTable, CHashes, );

TYPED_TEST(HashTable, HashValuesAreTheDocumentedOnes)
{
    struct SRow
    {
        const char* pszText;
        int iCount, iHash;
    };
    for (const SRow& row :
         {SRow{"", 0, 0}, SRow{"a", 1, 97}, SRow{"abcdef", 3, 26499}, SRow{"hello", 5, 7258927},
          SRow{"abcdefghij", 10, 88430234}, SRow{"\xff", 1, 805306383}, SRow{"\xe9t\xe9", 3, 8233}})
        EXPECT_EQ(row.iHash, TypeParam::HashFunc(row.pszText, row.iCount)) << row.pszText;
}

TEST(IntHash, ListsItsKeysAsDocumented)
{
    CIntHash hash(8);
    CStream stream;
    hash.Set("a", 1), hash.Set("a", 2), hash.Set("i", 5), hash.Dump(&stream);
    EXPECT_STREQ("Total HashBag size : 8, DataCnt : 3\nHash : 1\n  Key : [a](1)\n      : [1, 2]\n"
                 "  Key : [i](1)\n      : [5]\n      (Hash(1) Cnt : 2)\n",
                 stream.ToStr());
}

TEST(StrHash, TakesTextsOfAnyConstness)
{
    CStrHash hash;
    char szText[] = "2";
    CStrArray arr;
    hash.Set("k", "1"), hash.Set("k", szText), hash.Set("k", NULL), hash.Get("k", &arr);
    EXPECT_STREQ("1|2|", arr.Join("|").ToStr());
    EXPECT_EQ(101 + 101 + 101 + 101, hash.GetHashSize() + CIntHash().GetHashSize() +
                                         CDblHash().GetHashSize() + CPtrHash(false).GetHashSize());
}
} // namespace
