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
} // namespace
