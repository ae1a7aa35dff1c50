#include "support.h"

namespace
{
TEST(Exception, CutsFormattedTextAt1022AndCopiedTextAt1023)
{
    for (std::size_t iLength : {0U, 1U, 1020U, 1021U, 1022U, 1023U, 1024U, 5000U})
    {
        const string strText(iLength, 'x');
        const CException printed(7, "%d%s", 0, strText.c_str()), copied(strText.c_str(), -11), copy(copied);
        EXPECT_EQ(("0" + strText).substr(0, 1022), printed.GetText()) << iLength;
        EXPECT_EQ(strText.substr(0, 1023), copy.GetText()) << iLength;
        EXPECT_EQ(-11, copy.GetCode());
    }
}

TEST(Exception, NullTextIsEmptyAndTheCodeIsKept)
{
    const char* pszNull         = nullptr;
    const CException aRecords[] = {CException(), CException(pszNull, 1), CException(2, pszNull, 1)};
    for (int i = 0; i < 3; ++i)
    {
        EXPECT_EQ(i, aRecords[i].GetCode());
        EXPECT_STREQ("", aRecords[i].GetText()) << i;
    }
}

} // namespace
