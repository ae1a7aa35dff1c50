// What the model of the numbers does not show: documented texts, the largest numbers, rounding.

#include "bedplate.h"

#include <cfenv>
#include <cfloat>
#include <climits>
#include <cmath>
#include <gtest/gtest.h>

namespace
{
TEST(Number, IntsPrintAsDocumented)
{
    for (const auto& [iValue, pszText] :
         {std::pair(0, "0"), std::pair(999, "999"), std::pair(-999, "-999"), std::pair(1000, "1,000"),
          std::pair(-1000, "-1,000"), std::pair(123456, "123,456"), std::pair(INT_MAX, "2,147,483,647"),
          std::pair(INT_MIN, "-2,147,483,648")})
        EXPECT_STREQ(pszText, CInt(iValue).ToFmtStr().ToStr());
}

TEST(Number, DoublesPrintAsDocumented)
{
    struct SRow
    {
        double dValue;
        int iDecimals;
        const char* pszText;
    };
    for (const SRow& row :
         {SRow{1234567.891, 2, "1,234,567.89"}, SRow{-1234.5, 2, "-1,234.50"}, SRow{1234.5, -3, "1,234.5"},
          SRow{1234.0, -2, "1,234"}, SRow{100.0, -3, "100"}, SRow{-1e6, -1, "-1,000,000"},
          SRow{999.999, 2, "1,000.00"}, SRow{0.125, 2, "0.12"}, SRow{2.5, 0, "2"}, SRow{1234.5, 0, "1,234"},
          SRow{1234.5678, 20, "1,234.567800000000034"}, SRow{0.5, -20, "0.5"}, SRow{0.5, INT_MIN, "0.5"},
          SRow{0.5, INT_MAX, "0.500000000000000"}, SRow{-0.0, 2, "-0.00"}, SRow{-0.0, -2, "-0"},
          SRow{-0.001, 2, "-0.00"}, SRow{HUGE_VAL, 2, "inf"}, SRow{-HUGE_VAL, -2, "-inf"}})
        EXPECT_STREQ(row.pszText, CDbl(row.dValue).ToFmtStr(row.iDecimals).ToStr());
    EXPECT_STREQ("12345.7", CDbl(12345.678).ToFmtStr(1, false).ToStr());
    EXPECT_EQ(1 + 309 + 102 + 16, CDbl(-DBL_MAX).ToFmtStr(15).GetLength());
}

TEST(Number, DoublesFollowTheRoundingMode)
{
    ASSERT_EQ(0, fesetround(FE_UPWARD));
    const CString str = CDbl(0.121).ToFmtStr();
    fesetround(FE_TONEAREST);
    EXPECT_STREQ("0.13", str.ToStr());
}
} // namespace
