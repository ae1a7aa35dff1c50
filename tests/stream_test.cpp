#include "support.h"

namespace
{
TEST(Stream, GrowsByWholeStepsAsDocumented)
{
    const int aiRows[][5] = {{0, 0, 3, 3, 512},        {0, 0, 511, 511, 512}, {0, 0, 512, 512, 1024},
                             {100, 10, 150, 150, 160}, {16, -1, 15, 15, 16},  {16, 1, 16, 16, 17}};
    for (const auto& [iInitSize, iGrowSize, iCount, iLength, iCapacity] : aiRows)
    {
        CStream stream(iInitSize, iGrowSize);
        EXPECT_EQ(0, stream.AppendData(string(Unsigned(iCount), 'x').c_str(), iCount));
        EXPECT_EQ(string(Unsigned(iLength), 'x'), stream.ToStr());
        EXPECT_EQ(iCapacity, stream.GetAllocSize()) << iInitSize << ", " << iGrowSize << ", " << iCount;
    }
}

TEST(Stream, CollectsLinesOfAnyBytes)
{
    CStream stream;
    CString strNul;
    EXPECT_EQ(0, stream.AppendLine("ab") + stream.AppendLine("") +
                     stream.AppendData(SetBytes(strNul, string("\0c", 2), 2)));
    EXPECT_EQ(string("ab\n\n\0c", 6), string(stream.ToStr(), Unsigned(stream.GetLength())));
}
} // namespace
