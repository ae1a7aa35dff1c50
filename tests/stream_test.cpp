#include "support.h"

namespace
{
TEST(Stream, GrowsByWholeStepsAsDocumented)
{
    const int aiRows[][4] = {{0, 0, 3, 512},      {0, 0, 511, 512}, {0, 0, 512, 1024},
                             {100, 10, 150, 160}, {16, -1, 15, 16}, {16, 1, 16, 17}};
    for (const auto& [iInitSize, iGrowSize, iCount, iCapacity] : aiRows)
    {
        CStream stream(iInitSize, iGrowSize);
        EXPECT_EQ(0, stream.AppendData(CString(string(Unsigned(iCount), 'x').c_str())));
        EXPECT_EQ(string(Unsigned(iCount), 'x'), stream.ToStr());
        EXPECT_EQ(iCapacity, stream.GetAllocSize()) << iInitSize << ", " << iGrowSize << ", " << iCount;
    }
}

TEST(Stream, LongFormatsAreAppendedWhole)
{
    CStream stream;
    const string strLong(2000, 'x');
    EXPECT_EQ(0, stream.AppendFormat("%s|%g\n", strLong.c_str(), 0.5));
    EXPECT_EQ(0, stream.AppendFormat("%s", stream.ToStr()));
    EXPECT_EQ(strLong + "|0.5\n" + strLong + "|0.5\n", stream.ToStr());
    const char* pszNull          = nullptr;
    const wchar_t aUnprintable[] = {0x7FFFFFFF, 0};
    stream.ThrowOnFailure();
    EXPECT_EQ(-1, stream.AppendFormat("x%ls", aUnprintable));
    EXPECT_EQ(0, stream.AppendFormat(pszNull, 1));
    EXPECT_EQ("0 (CStream) Out of memory", Thrown([&] { stream.AppendData("x", INT_MAX); }));
}
} // namespace
