#include "list_model.h"

#include <cfloat>
#include <cmath>
#include <cstdlib>

namespace
{
string Grouped(string strDigits)
{
    for (int i = Signed(strDigits.size()) - 3; i > 0; i -= 3)
        strDigits.insert(Unsigned(i), ",");
    return strDigits;
}

/// The documented text of a double, by way of snprintf.
string Expected(double dValue, int iDecimals, bool bGroup)
{
    const int iPrecision    = iDecimals < -15 || iDecimals > 15 ? 15 : std::abs(iDecimals);
    const string strText    = Print("%.*f", iPrecision, dValue < 0 ? -dValue : dValue);
    const string strInteger = strText.substr(0, strText.find('.'));
    string strRest          = strText.substr(strInteger.size());
    if (iDecimals < 0)
        strRest = NaiveTrim(strRest, "0", 2);
    bGroup = bGroup && std::isdigit(strInteger[0]); // neither -0 nor inf
    return (dValue < 0 ? "-" : "") + (bGroup ? Grouped(strInteger) : strInteger) +
           (strRest == "." ? "" : strRest);
}

TEST(Number, IntsPrintWithAndWithoutCommas)
{
    EXPECT_EQ("0 2,147,483,647 1,000 -999 -1,000",
              Bytes(CInt().ToFmtStr() + " " + CInt(INT_MAX).ToFmtStr() + " " + CInt(1000).ToFmtStr() + " " +
                    CInt(-999).ToFmtStr() + " " + CInt(-1000).ToFmtStr()));
    for (long long i = INT_MIN; i <= INT_MAX; i += std::abs(i) < 2000000 ? 37 : 99992)
    {
        CInt number;
        number.SetValue(static_cast<int>(i));
        ASSERT_EQ((i < 0 ? "-" : "") + Grouped(std::to_string(std::abs(i))), Bytes(number.ToFmtStr()));
        ASSERT_EQ(std::to_string(number.GetValue()), Bytes(number.ToFmtStr(false)));
    }
}

TEST(Number, DoublesPrintWithChosenDecimals)
{
    const std::pair<double, int> aRows[] = {
        {1234567.891, 2}, {-1234.5, 2}, {1234.5, -3},   {1234.0, -2},   {100.0, -3},
        {-1e6, -1},       {999.999, 2}, {0.125, 2},     {2.5, 0},       {1234.5, 0},
        {1234.5678, 20},  {0.5, -20},   {0.5, INT_MIN}, {0.5, INT_MAX}, {-0.0, 2},
        {-0.0, -2},       {-0.001, 2},  {-NAN, 2},      {HUGE_VAL, 2},  {-HUGE_VAL, -2}};
    string strAll;
    for (const auto& [dValue, iDecimals] : aRows)
        strAll += Bytes(CDbl(dValue).ToFmtStr(iDecimals)) + " ";
    EXPECT_EQ("1,234,567.89 -1,234.50 1,234.5 1,234 100 -1,000,000 1,000.00 0.12 2 1,234 "
              "1,234.567800000000034 0.5 0.5 "
              "0.500000000000000 -0.00 -0 -0.00 -nan inf -inf ",
              strAll);
    CDbl number;
    number.SetValue(-1234567.891);
    EXPECT_TRUE(number.GetValue() < 0 && number.ToFmtStr() == "-1,234,567.89" &&
                number.ToFmtStr(1, false) == "-1234567.9");
}

TEST(Number, AnyDoublePrintsInFullAsPrintfDoes)
{
    std::vector<double> adValues{DBL_MAX, -DBL_MAX, DBL_MIN, 4.9e-324, -4.9e-324, NAN,
                                 -NAN,    -0.0,     999.995, 1e15,     1e45,      -1e300};
    CRandom random;
    while (adValues.size() < 100000)
    {
        const int aiBits[]  = {random.Between(0, INT_MAX - 1), random.Between(-INT_MAX / 2, INT_MAX / 2) * 2};
        const double dPlain = std::ldexp(aiBits[1], random.Between(-40, 30));
        adValues.push_back(adValues.size() % 2 == 0 ? dPlain : dPlain / 1000);
        if (adValues.size() % 4 == 0)
            memcpy(&adValues.back(), aiBits, sizeof(double));
    }
    for (double dValue : adValues)
    {
        const int iDecimals = random.Between(-17, 17);
        const bool bGroup   = iDecimals % 3 != 0;
        ASSERT_EQ(Expected(dValue, iDecimals, bGroup), Bytes(CDbl(dValue).ToFmtStr(iDecimals, bGroup)))
            << dValue << " with " << iDecimals;
    }
}
} // namespace
