// What the family of the arrays does not show: documented examples, spare slots, texts of doubles, orders.
#include "support.h"

#include <bedplate/typed.h>
#include <cmath>
#include <cstdlib>
#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/asan_interface.h>
#endif

namespace
{
TEST(Array, SpareSlotsAreZero)
{
    CIntArray arrInts{2, 3, 5};
    arrInts.GrowBuffer(18);
    EXPECT_EQ(15, std::count(arrInts.end(), arrInts.begin() + 18, 0));
    arrInts.Clear();
    EXPECT_EQ(18, std::count(arrInts.begin(), arrInts.begin() + 18, 0));
    CDateArray arrDates{20240301};
    arrDates.RemoveLast();
    EXPECT_STREQ("00000000", arrDates.end()->ToStr());
}

#ifdef __SANITIZE_ADDRESS__
TEST(Array, TheSanitizerWatchesOverWhatLiesBehindABuffer)
{
    CIntArray arr(100000, 1);
    CString str;
    arr.Add(1);
    EXPECT_TRUE(__asan_address_is_poisoned(arr.begin() + arr.GetBufferSize()));
    EXPECT_TRUE(__asan_address_is_poisoned(str.GetBuffer(9000) + 9001));
}
#endif

TEST(Array, TextsStayInTheirStrings)
{
    CStrArray arr{"Ada Lovelace", "Grace"};
    arr.Add("grace");
    arr.SetAt(0, "Zoe");
    arr.Sort();
    EXPECT_STREQ("", arr.GetAt(3));
    EXPECT_EQ(Look("Zoe", 13), Look(arr[1]));
    EXPECT_EQ(Look("grace", 8), Look(arr[2]));
    arr.RemoveAt(1);
    arr.Add("long enough");
    EXPECT_EQ(Look("long enough", 12), Look(arr[2]));
}

TEST(Array, ListsMakeArraysOfExactlyTheirSize)
{
    EXPECT_EQ("CIntArr:(2/2), 3, 7", Bytes(CIntArray{3, 7}.Repr()));
    EXPECT_EQ("-0.000000|-inf|inf|nan|-nan",
              Bytes(CDblArray{-0.0, -HUGE_VAL, HUGE_VAL, NAN, -NAN}.Repr("|", false)));
    EXPECT_EQ("CBoolArr:(2/2), Y, N", Bytes(CBoolArray{true, false}.Repr()));
    EXPECT_EQ("CDateArr:(2/2), 20240131, ", Bytes(CDateArray{20240131, CDate()}.Repr()));
    EXPECT_EQ("CStrArr:(3/3), a, , c", Bytes(CStrArray{"a", nullptr, CString("c")}.Repr()));
    EXPECT_EQ(0, CIntArray(std::initializer_list<int>()).GetBufferSize());
    EXPECT_EQ(3, CStrArray{3}.GetSize()); // not a text
    const CString strText = SetBytes(*std::make_unique<CString>(), string("b\0c", 3), 3);
    CStrArray arr{strText};
    arr.Add(strText);
    arr.InsertAt(0, CString("x"));
    arr.SetAt(1, CString("y"));
    EXPECT_EQ("x,y,b", Bytes(arr.Join()));
    EXPECT_EQ(2, arr.Find(strText));
    EXPECT_FALSE(arr.IsIn(CString("z")));
}

TEST(Array, MovedTextsAreThoseThatACopyHas)
{
    CStrArray arrOdd{"odd"};
    arrOdd[0].GetBuffer(50);
    const CStrArray arrCopy(arrOdd);
    CStrArray arrMoved;
    arrMoved = std::move(arrOdd);
    EXPECT_EQ(Look(arrCopy[0]), Look(arrMoved[0]));
    CStrArray arrPlain{"of any length"};
    const CString* pPlain = &arrPlain[0];
    arrMoved              = std::move(arrPlain);
    EXPECT_EQ(pPlain, &arrMoved[0]); // not copied
    static_assert(std::is_nothrow_move_constructible<CStrArray>::value, "vectors move it");
    static_assert(std::is_nothrow_move_constructible<CPtrArray>::value, "vectors move it");
}

/// An item that counts those that are alive.
struct CCounted : CPtrArrayItem
{
    explicit CCounted(int iValue) : m_iValue(iValue) { ++s_iAlive; }
    ~CCounted() override { --s_iAlive; }
    int m_iValue;
    inline static int s_iAlive = 0;
};

string Values(const CPtrArrayOf<CCounted>& arr)
{
    string strValues;
    for (const CCounted& item : arr)
        strValues += std::to_string(item.m_iValue);
    return strValues;
}

TEST(Array, TypedArraysOwnTheirItems)
{
    const auto New = [](int iValue) { return std::make_unique<CCounted>(iValue); };
    {
        CPtrArrayOf<CCounted> arr;
        arr.AddNew(3).m_iValue = 4;
        EXPECT_EQ(1, arr.Add(New(1)));
        EXPECT_EQ(0, arr.InsertAt(0, New(3)));
        EXPECT_EQ(3, arr.InsertAt(9, New(2)));
        EXPECT_EQ(-2, arr.InsertAt(-1, New(9)) + arr.Add(nullptr));
        EXPECT_EQ("3412", Values(arr));
        arr.Sort([](const CCounted& left, const CCounted& right) { return right.m_iValue - left.m_iValue; });
        EXPECT_EQ("4321", Values(arr));
        EXPECT_EQ("0 CPtrArray::SetAt : Invalid Index(3:4)", Thrown([&] { arr.SetAt(4, New(5)); }));
        arr.SetAt(0, New(5));
        arr.SetAt(1, nullptr);
        EXPECT_EQ(4, CCounted::s_iAlive);
        EXPECT_EQ(3, arr.Detach(1)->m_iValue);
        EXPECT_EQ(&arr.GetAtLast(), &arr.end()[-1]);
        std::vector<CPtrArrayOf<CCounted>> arrays(1);
        arrays[0] = std::move(arr);
        arrays.resize(20);
        EXPECT_EQ("521", Values(arrays[0]));
        EXPECT_EQ(0, arrays[0].RemoveAt(0));
        EXPECT_EQ(2, CCounted::s_iAlive);
    }
    EXPECT_EQ(0, CCounted::s_iAlive);
}

TEST(Array, AnOrderThatThrowsOrContradictsItselfDoesNoHarm)
{
    CStrArray arr{"b", "a", "c", "B"};
    int iCalls = 0;
    EXPECT_EQ("0 enough", Thrown(
                              [&]
                              {
                                  arr.Sort([&](const CString&, const CString&)
                                           { return ++iCalls > 3 ? throw CException("enough", 0) : true; });
                              }));
    EXPECT_EQ("b,a,c,B", Bytes(arr.Join()));
    CStrArray arrMany(1000);
    arrMany.Sort([](const CString&, const CString&) { return true; });
    EXPECT_EQ(1000, arrMany.GetSize());
}

TEST(Array, LargeArraysOfItemsDoubleNoMore)
{
    CPtrArray arrFull(2097153, nullptr, false);
    EXPECT_EQ(0, arrFull.InsertAt(0, nullptr));
    EXPECT_EQ(2097153 + 1048576, arrFull.GetBufferSize());
}

/// Sorts random values, which few bits make recur, as qsort does with the array's comparison.
template <class TArray, class TValue>
void ExpectSorted(int iSize, int (*SortCmp)(const void*, const void*), TValue Value)
{
    CRandom random;
    TArray arr;
    while (arr.GetSize() < iSize)
        arr.Add(Value(random.Between(-10000, 10000)));
    TArray arrExpected(arr);
    qsort(arrExpected.begin(), Unsigned(iSize), sizeof *arr.begin(), SortCmp);
    arr.Sort();
    ASSERT_EQ(0, memcmp(arrExpected.begin(), arr.begin(), Unsigned(iSize) * sizeof *arr.begin())) << iSize;
}

TEST(Array, SortsAsQsortEvenWithNaN)
{
    const auto NaNs = [](int i) { return i % 9 == 0 ? static_cast<double>(NAN) : i / 4.0; };
    ExpectSorted<CIntArray>(20000, CIntArray_SortCmp, [](int i) { return i; });
    ExpectSorted<CDblArray>(20000, CDblArray_SortCmp, [](int i) { return i / 8.0; });
    ExpectSorted<CBoolArray>(20000, CBoolArray_SortCmp, [](int i) { return i % 3 == 0; });
    ExpectSorted<CDateArray>(20000, CDateArray_SortCmp, [](int i) { return CDate(i); });
    for (int iSize = 1; iSize < 200; ++iSize)
        ExpectSorted<CDblArray>(iSize, CDblArray_SortCmp, NaNs);
    EXPECT_TRUE(CDblArray(1, -0.0).IsIn(0.0));
    EXPECT_FALSE(CDblArray(1, NAN).IsIn(NAN));
}

TEST(Array, SortsTextsByTheirBytes)
{
    CStrArray arr;
    CRandom random;
    for (int i = 0; i < 3000; ++i) // mostly with a common beginning
    {
        const string strText = string("common\xe4\x01 prefix").substr(0, Unsigned(random.Between(0, 15))) +
                               "ab\x7f\x80"[random.Between(0, 3)] +
                               string(Unsigned(random.Between(0, 3)), 'c');
        arr.Add(strText.c_str());
    }
    CStrArray arrSorted(arr);
    arrSorted.Sort();
    arr.Sort(strcmp); // another way
    EXPECT_TRUE(arrSorted.Join() == arr.Join());
    CString astrTexts[] = {"b", "\xe4", ""};
    CString *pB = astrTexts, *pHigh = astrTexts + 1, *pEmpty = astrTexts + 2;
    EXPECT_EQ(0, CStrArray_SortCmp(&pB, &pB));
    EXPECT_EQ(-1, CStrArray_SortCmp(&pB, &pHigh));
    EXPECT_EQ(1, CStrArray_SortCmp(&pB, &pEmpty));
}
} // namespace
