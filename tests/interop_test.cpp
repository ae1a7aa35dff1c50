// Arrays as values, and what std_interop.h adds.
#include "std_interop.h"
#include "support.h"

#include <iomanip>
#include <sstream>
#include <unordered_map>

namespace
{
struct CItem : CPtrArrayItem
{
};

/// Checks that copies of a const array and of a temporary are what a copy of a variable is.
template <class TArray>
void ExpectCopies(TArray& arr)
{
    const TArray& arrConst = arr;
    const TArray arrAsBefore(arr),
        arrCopies[] = {arrConst, [arrConst] { return arrConst; }(), std::vector<TArray>(3, arrConst).back()};
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
} // namespace

TEST(Interop, ConstArraysAndTemporariesAreCopied)
{
    CIntArray arrInts(9, 7);
    CDblArray arrDbls(1, 0.5);
    CBoolArray arrBools(0, true);
    CDateArray arrDates(2, CDate(20240229));
    CStrArray arrTexts(2);
    arrTexts.Add("x");
    CPtrArray arrItems(true);
    arrItems.Add(new CItem);
    ExpectCopies(arrInts), ExpectCopies(arrDbls), ExpectCopies(arrBools);
    ExpectCopies(arrDates), ExpectCopies(arrTexts), ExpectCopies(arrItems);
}

TEST(Interop, StreamsPrintValuesWithTheirWidth)
{
    CString strBytes;
    CStrArray arrTexts;
    arrTexts.Add("x");
    EXPECT_EQ(Printed(SetBytes(strBytes, string("a\0b", 3), 9)), string("..a\0b|", 6));
    EXPECT_EQ(Printed(CString("abcdef")) + Printed(CDate(20240131)) + Printed(CDate()),
              "abcdef|20240131|.....|");
    EXPECT_EQ(Printed(CInt(1234)) + Printed(CDbl(0.5)) + Printed(CTime()), "1,234|.0.50|<CTime:unset>|");
    EXPECT_EQ(Printed(CException("ab", 7)) + Printed(arrTexts), "...ab|CStrArr:(1/1), x|");
}

TEST(Interop, EqualObjectsHashAlike)
{
    CString strCut;
    SetBytes(strCut, string("Ada\0x", 5), 9);
    std::unordered_map<CString, int> mapYears{{"Ada", 1815}};
    EXPECT_EQ(mapYears.count(strCut), 1u) << "the texts are equal up to the NUL";
    EXPECT_NE(std::hash<CString>()("Ada"), std::hash<CString>()("Adb"));
    EXPECT_EQ(std::hash<CDate>()(CDate()), std::hash<CDate>()(CDate("")));
    EXPECT_NE(std::hash<CDate>()(CDate(20240101)), std::hash<CDate>()(CDate(20240102)));
}

TEST(Interop, ViewsHoldAllBytes)
{
    const string strBytes("a\0b", 3);
    CString str;
    EXPECT_EQ(ToStringView(SetBytes(str, strBytes, 9)), strBytes);
    EXPECT_EQ(Look(FromStringView(strBytes)), FreshLook(strBytes));
    EXPECT_EQ(Look(FromStringView({})), FreshLook(""));
    EXPECT_EQ(ToStringView(CDate(20240131)).size(), 8u);
    volatile std::size_t iTooLong = SIZE_MAX;
    EXPECT_EQ(Thrown([&] { FromStringView({"", iTooLong}); }).substr(0, 3), "-11");
}

TEST(Interop, AlgorithmsTakeStringArrays)
{
    CStrArray arr;
    CString("pear,fig,apple").Split(',', &arr);
    EXPECT_EQ(std::max_element(arr.begin(), arr.end())->ToStr(), string("pear"));
    EXPECT_EQ(std::distance(arr.begin(), std::find(arr.begin(), arr.end(), "apple")), 2);
}
