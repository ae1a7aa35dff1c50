// Arrays as values, and what std_interop.h adds.
#include "std_interop.h"
#include "support.h"

#include <iomanip>
#include <sstream>
#include <unordered_map>

namespace
{
/// Checks that copies of a const array and of a temporary are what a copy of a variable is.
template <class TArray>
void ExpectCopies(TArray arr)
{
    const TArray arrAsBefore(arr), &arrConst = arr;
    const TArray arrCopies[] = {arrConst, [arrConst] { return arrConst; }(),
                                std::vector<TArray>(3, arrConst)[2]};
    for (const TArray& arrCopy : arrCopies)
    {
        EXPECT_EQ(arrCopy.Repr(), arrAsBefore.Repr());
        EXPECT_EQ(arrCopy.GetBufferSize(), arrAsBefore.GetBufferSize());
    }
}

template <class TValue>
string Printed(const TValue& value)
{
    std::ostringstream stream;
    stream << std::setw(5) << std::setfill('.') << value << '|';
    return stream.str();
}

const string s_strBytes("a\0b", 3);

TEST(Interop, ConstArraysAndTemporariesAreCopied)
{
    ExpectCopies(CIntArray(9, 7));
    ExpectCopies(CDblArray(1, 0.5));
    ExpectCopies(CBoolArray(0, true));
    ExpectCopies(CDateArray(2, CDate(20240229)));
    ExpectCopies(CStrArray(2));
    ExpectCopies(CPtrArray(3, nullptr, true));
}

TEST(Interop, StreamsPrintValuesWithTheirWidth)
{
    CString str;
    EXPECT_EQ(Printed(SetBytes(str, s_strBytes, 9)) + Printed(CString("abcdef")),
              ".." + s_strBytes + "|abcdef|");
    EXPECT_EQ(Printed(CDate(20240131)) + Printed(CDate()) + Printed(CTime()),
              "20240131|.....|<CTime:unset>|");
    EXPECT_EQ(Printed(CInt(1234)) + Printed(CDbl(0.5)) + Printed(CException("ab", 7)), "1,234|.0.50|...ab|");
    EXPECT_EQ(Printed(CIntArray(1, 7)) + Printed(CStrArray()), "CIntArr:(1/1), 7|<CStrArr: unset>|");
}

TEST(Interop, EqualObjectsHashAlike)
{
    CString str;
    const CString& strCut = SetBytes(str, string("Ada\0x", 5), 9);
    EXPECT_EQ((std::unordered_map<CString, int>{{"Ada", 1815}}.count(strCut)), 1u) << "equal up to the NUL";
    EXPECT_NE(std::hash<CString>()("Ada"), std::hash<CString>()("Adb"));
    EXPECT_EQ(std::hash<CDate>()(CDate()), std::hash<CDate>()(CDate("")));
    EXPECT_NE(std::hash<CDate>()(CDate(20240101)), std::hash<CDate>()(CDate(20240102)));
}

TEST(Interop, ViewsAndIteratorsReachEverything)
{
    CString str;
    EXPECT_EQ(ToStringView(SetBytes(str, s_strBytes, 9)), s_strBytes);
    EXPECT_EQ(Look(FromStringView(s_strBytes)) + Look(FromStringView({})),
              FreshLook(s_strBytes) + FreshLook(""));
    volatile std::size_t iTooLong = SIZE_MAX;
    EXPECT_EQ(Thrown([&] { FromStringView({"", iTooLong}); }).substr(0, 3), "-11");
    CStrArray arr;
    CString("pear,fig,apple").Split(',', &arr);
    EXPECT_EQ(*std::max_element(arr.begin(), arr.end()), "pear");
    EXPECT_EQ(std::distance(arr.begin(), std::find(arr.begin(), arr.end(), "apple")), 2);
}
} // namespace
