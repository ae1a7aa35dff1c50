// What the model of the numbers does not show: setting, the largest numbers, rounding, what is no number.

#include "support.h"

#include <cfenv>
#include <cfloat>
#include <cmath>
#include <type_traits>

namespace
{
TEST(Number, TheyPrintTheValueThatTheyWereSetTo)
{
    CInt number(1);
    number.SetValue(INT_MIN + 1 - number.GetValue());
    EXPECT_STREQ("-2,147,483,648", number.ToFmtStr().ToStr());
    CDbl dbl(12345.678);
    dbl.SetValue(dbl.GetValue() * 2);
    EXPECT_STREQ("24691.4", dbl.ToFmtStr(1, false).ToStr());
    EXPECT_EQ(1 + 309 + 102 + 16, CDbl(-DBL_MAX).ToFmtStr(15).GetLength());
}

TEST(Number, WhatIsReadIsTheBeginningWhatIsParsedTheWholeTextOrNothing)
{
    EXPECT_EQ(-5, CString("\t\n\v\f\r -5 6").ToInt());
    EXPECT_EQ(-0.5, CString("\t\n\v\f\r -.5 6").ToDbl());
    int iValue    = 7;
    double dValue = 7;
    for (const char* psz : {"", "+", "-", "+-5", " 42", "42 ", "0x10", "4.0", "2147483648", "-2147483649"})
        EXPECT_FALSE(CString(psz).ParseInt(&iValue)) << psz;
    for (const char* psz : {"", "\v1", "1,5", "inf", "-nan", "0x1p3", "1e999", "-1e999"})
        EXPECT_FALSE(CString(psz).ParseDbl(&dValue)) << psz;
    CString strNul("42");
    strNul.Insert(2, '\0');
    EXPECT_FALSE(strNul.ParseInt(&iValue));
    EXPECT_FALSE(strNul.ParseDbl(&dValue));
    EXPECT_EQ(7, iValue);
    EXPECT_EQ(7, dValue);
    EXPECT_TRUE(CString("+2147483647").ParseInt(&iValue));
    EXPECT_EQ(INT_MAX, iValue);
    EXPECT_TRUE(CString("1").ParseInt(nullptr));
    EXPECT_TRUE(CString("1").ParseInt64(nullptr));
    EXPECT_TRUE(CString("1").ParseDbl(nullptr));
    static_assert(!std::is_constructible_v<CInt, long long> && std::is_constructible_v<CInt, unsigned>);
    static_assert(std::is_constructible_v<CInt, double> && std::is_constructible_v<CInt, char>);
}

TEST(Number, DoublesFollowTheRoundingMode)
{
    ASSERT_EQ(0, fesetround(FE_UPWARD));
    const CString str  = CDbl(0.121).ToFmtStr();
    const double dRead = CString("0.3").ToDbl();
    fesetround(FE_TONEAREST);
    EXPECT_STREQ("0.13", str.ToStr());
    EXPECT_EQ(0x1.3333333333334p-2, dRead); // 0.3 lies below
}
} // namespace
