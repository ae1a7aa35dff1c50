// Arrays as values, and what std_interop.h adds.
#include "support.h"
#include <bedplate/std_interop.h>

#include <iomanip>
#include <sstream>

namespace
{
/// Prints each value in five places, with a bar behind it.
template <class... TValues>
string Printed(const TValues&... values)
{
    std::ostringstream stream;
    ((stream << std::setfill('.') << std::setw(5) << values << '|'), ...);
    return stream.str();
}

const string s_strBytes("a\0b", 3);

TEST(Interop, ConstArraysAndTemporariesAreCopied)
{
    // Copies of a const array and of a temporary are what a copy of a variable is; Repr shows the sizes, too.
    const auto Expect = [](auto arr)
    {
        const auto arrOfVariable(arr), &arrConst = arr;
        for (const auto& arrCopy : {arrConst, [arrConst] { return arrConst; }(), std::vector(3, arrConst)[2]})
            EXPECT_EQ(arrCopy.Repr(), arrOfVariable.Repr());
    };
    Expect(CIntArray(9, 7));
    Expect(CBoolArray(0, true));
    Expect(CStrArray(2));
    Expect(CPtrArray(3, nullptr, true));
}

TEST(Interop, StreamsPrintValuesWithTheirWidth)
{
    EXPECT_EQ(Printed(FromStringView(s_strBytes), CString("abcdef"), CDate(20240131), CDate(), CTime()),
              ".." + s_strBytes + "|abcdef|20240131|.....|<CTime:unset>|");
    EXPECT_EQ(
        Printed(CInt(1234), CInt64(-56789), CDbl(0.5), CException("ab", 7), CIntArray(1, 7), CStrArray()),
        "1,234|-56,789|.0.50|...ab|CIntArr:(1/1), 7|<CStrArr: unset>|");
}

TEST(Interop, EqualObjectsHashAlike)
{
    EXPECT_EQ(std::hash<CString>()("Ada"), std::hash<CString>()(FromStringView({"Ada\0x", 5}))); // to the NUL
    EXPECT_NE(std::hash<CString>()("Ada"), std::hash<CString>()("Adb"));
    EXPECT_EQ(std::hash<CDate>()(CDate()), std::hash<CDate>()(CDate("")));
    EXPECT_NE(std::hash<CDate>()(CDate(20240101)), std::hash<CDate>()(CDate(20240102)));
}

TEST(Interop, ViewsAndIteratorsReachEverything)
{
    EXPECT_EQ(Look(FromStringView(s_strBytes)), FreshLook(s_strBytes));
    EXPECT_EQ(Look(FromStringView({})), FreshLook(""));
    EXPECT_EQ(ToStringView(FromStringView(s_strBytes)), s_strBytes);
    volatile std::size_t iTooLong = SIZE_MAX;
    EXPECT_EQ(Thrown([&] { FromStringView({"", iTooLong}); }).substr(0, 3), "-11");
    CStrArray arr;
    CString("pear,fig,apple").Split(',', &arr);
    std::sort(arr.begin(), arr.end(), std::greater<CString>());
    EXPECT_EQ(Look(arr.Join()), FreshLook("pear,fig,apple"));
    EXPECT_TRUE(std::binary_search(arr.begin(), arr.end(), "fig", std::greater<CString>()));
    EXPECT_EQ(arr.begin()[1], *(1 + arr.begin()));
}
} // namespace
