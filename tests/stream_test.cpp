#include "support.h"

namespace
{
TEST(Stream, LongFormatsAreAppendedWhole)
{
    CStream stream;
    const string strLong(2000, 'x');
    EXPECT_EQ(0, stream.AppendFormat("%s|%g\n", strLong.c_str(), 0.5));
    EXPECT_EQ(0, stream.AppendFormat("%s", stream.ToStr()));
    EXPECT_EQ(0, stream.AppendData(CString("end")));
    EXPECT_EQ(strLong + "|0.5\n" + strLong + "|0.5\nend", stream.ToStr());
    const char* pszNull          = nullptr;
    const wchar_t aUnprintable[] = {0x7FFFFFFF, 0};
    stream.ThrowOnFailure();
    EXPECT_EQ(-1, stream.AppendFormat("x%ls", aUnprintable));
    EXPECT_EQ(0, stream.AppendFormat(pszNull, 1));
    EXPECT_EQ("0 (CStream) Out of memory", Thrown([&] { stream.AppendData("x", INT_MAX); }));
}
} // namespace
