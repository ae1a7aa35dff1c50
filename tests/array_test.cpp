// What the family of the arrays does not show: documented examples, orders, texts of doubles, comparisons for qsort.
#include "support.h"

#include <cfloat>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <dlfcn.h>

namespace
{
TEST(Array, DocumentedExamplesHold)
{
    CIntArray arrInts;
    arrInts.Add(2), arrInts.Add(5), arrInts.InsertAt(1, 3);
    EXPECT_EQ("CIntArr:(3/4), 2, 3, 5", Bytes(arrInts.Repr()));
    arrInts.GrowBuffer(0), arrInts.GrowBuffer(3), arrInts.GrowBuffer(10);
    EXPECT_EQ("CIntArr:(3/18)(null)235", Bytes(arrInts.Repr(nullptr)));
    CDblArray arrDbls(1, 1.5);
    EXPECT_EQ("CDblArr:(1/1),1.500000", Bytes(arrDbls.Repr(",")));
    CBoolArray arrBools(2, true);
    arrBools[1] = false;
    EXPECT_EQ("Y N", Bytes(arrBools.Repr(" ", false)));
    CDateArray arrDates;
    for (int iDate : {20240301, 20231231, 0, 20240101})
        arrDates.Add(iDate > 0 ? CDate(iDate) : CDate());
    arrDates.Sort();
    EXPECT_EQ("CDateArr:(4/4),,20231231,20240101,20240301", Bytes(arrDates.Repr(",")));
    EXPECT_TRUE(arrDates.IsIn(CDate(2024, 3, 1)) && arrDates.Find("") == 0);
    EXPECT_EQ("0 CDateArray::InsertAt : Invalid Index(3:5)", Thrown([&] { arrDates.InsertAt(5, CDate()); }));
    CPtrArray arrItems(16, nullptr, true);
    arrItems.GrowBuffer(5), arrItems.GrowBuffer(20);
    EXPECT_EQ(36, arrItems.GetBufferSize());
    EXPECT_EQ("0 CPtrArray::SetAt : Invalid Index(15:16)", Thrown([&] { arrItems.SetAt(16, nullptr); }));
    CStrArray arrTexts;
    EXPECT_EQ(0, arrTexts.Add("Grace") + arrTexts.InsertAt(0, "Ada"));
    arrTexts.InsertAt(99, "grace"), arrTexts.SetAt(0, "Bob");
    arrTexts.Sort();
    EXPECT_EQ("CStrArr:(3/5), Bob, Grace, grace", Bytes(arrTexts.Repr()));
    EXPECT_EQ("Bob and Grace and grace", Bytes(arrTexts.Join(" and ")));
    arrTexts.SetAt(1, NULL);
    EXPECT_TRUE(arrTexts.Find(nullptr) == -1 && arrTexts.IsIn("") && !arrTexts.IsIn("bob"));
    EXPECT_EQ("0 CStrArray::operator[] : Invalid index(2:-1)", Thrown([&] { (void)arrTexts[-1]; }));
}

/// Fills an array by Add alone and compares the capacity with the documented rule; returns whether all is in place.
template <class TArray, class TValue>
void ExpectGrowth(TArray& arr, int iFirst, TValue value)
{
    int iCapacity = 0;
    for (int i = 0; i < 40000; ++i)
    {
        iCapacity += i < iCapacity ? 0 : i == 0 ? iFirst : GrowthStep(i);
        ASSERT_EQ(i, arr.Add(value(i)));
        ASSERT_EQ(iCapacity, arr.GetBufferSize()) << i;
    }
    for (int i = 0; i < 40000; ++i)
        ASSERT_EQ(value(i), arr.GetAt(i)) << i;
}

TEST(Array, GrowsByOneEighthWithinBoundsAndKeepsItsElements)
{
    CIntArray arrInts;
    CDblArray arrDbls;
    CBoolArray arrBools;
    CDateArray arrDates;
    CPtrArray arrItems(false);
    ExpectGrowth(arrInts, 4, [](int i) { return i; });
    ExpectGrowth(arrDbls, 4, [](int i) { return i / 8.0; });
    ExpectGrowth(arrBools, 4, [](int i) { return i % 3 == 0; });
    ExpectGrowth(arrDates, 4, [](int i) { return CDate(i); });
    ExpectGrowth(arrItems, 16, [&](int i) { return reinterpret_cast<CPtrArrayItem*>(&arrItems + i); });
    for (int iSize : {1, 16, 1048575, 1048576, 2097153})
    {
        CPtrArray arrFull(iSize, nullptr, false);
        arrFull.InsertAt(1, nullptr);
        EXPECT_EQ(iSize + std::min(iSize, 1048576), arrFull.GetBufferSize());
    }
    CStrArray arrTexts;
    arrTexts.Add("first");
    const CString* pFirst = &arrTexts[0];
    for (int i = 1, iCapacity = 1; i < 12000; ++i)
    {
        iCapacity += i == iCapacity ? GrowthStep(i) : 0;
        ASSERT_TRUE(arrTexts.Add("next") == i && arrTexts.GetBufferSize() == iCapacity) << i;
    }
    EXPECT_TRUE(arrTexts.InsertAt(0, "zero") == 0 && pFirst == &arrTexts[1]);
}

TEST(Array, ReprOfAnyDoubleIsThatOfPrintfInEveryLocale)
{
    std::vector<double> aValues{-0.0,      DBL_MAX, -DBL_MAX, DBL_MIN, 4.9e-324, HUGE_VAL,
                                -HUGE_VAL, NAN,     -NAN,     5e-7,    2.5};
    CRandom random;
    for (int i = 0; i < 3000; ++i)
    {
        const int iHigh    = random.Between(0, INT_MAX - 1),
                  aiBits[] = {i * 715827, i % 2 == 0 ? iHigh : -iHigh};
        aValues.push_back(0);
        memcpy(&aValues.back(), aiBits, sizeof(double));
    }
    for (const char* szLocale : {"de_DE.UTF-8", "fr_FR.UTF-8", "C"}) // where installed, with a decimal comma
    {
        (void)setlocale(LC_NUMERIC, szLocale);
        for (double dValue : aValues)
            ASSERT_EQ(std::to_string(dValue) + "|" + std::to_string(dValue), // "%f"
                      Bytes(CDblArray(2, dValue).Repr("|", false)));
    }
}

TEST(Array, SortsAsQsortEvenWithNaN)
{
    CRandom random;
    for (int iSize = 1; iSize < 200; ++iSize)
    {
        CDblArray arr;
        for (int i = 0; i < iSize; ++i)
            arr.Add(random.Between(0, 9) == 0 ? static_cast<double>(NAN) : random.Between(-50, 50) / 4.0);
        CDblArray arrExpected(arr);
        qsort(arrExpected.begin(), Unsigned(iSize), sizeof(double), CDblArray_SortCmp);
        arr.Sort();
        ASSERT_EQ(Bytes(arrExpected.Repr()), Bytes(arr.Repr())) << iSize;
        EXPECT_EQ(-1, arr.Find(NAN));
    }
    EXPECT_TRUE(CDblArray(1, -0.0).IsIn(0.0) && !CDblArray(1, 0.1 + 0.2).IsIn(0.3));
}

/// Sorts random values, which few bits make recur, as std::stable_sort does, and compares each with the next.
template <class TArray, class TValue>
void ExpectSorted(TValue (*Value)(int), int (*SortCmp)(const void*, const void*))
{
    CRandom random;
    TArray arr;
    for (int i = 0; i < 20000; ++i)
        arr.Add(Value(random.Between(-10000, 10000)));
    TArray arrExpected(arr);
    std::stable_sort(arrExpected.begin(), arrExpected.end());
    arr.Sort();
    ASSERT_TRUE(std::equal(arr.begin(), arr.end(), arrExpected.begin()));
    for (int i = 1; i < arr.GetSize(); ++i)
    {
        const int iOrder = arr[i - 1] == arr[i] ? 0 : -1;
        ASSERT_TRUE(SortCmp(&arr[i - 1], &arr[i]) == iOrder && SortCmp(&arr[i], &arr[i - 1]) == -iOrder);
    }
}

TEST(Array, SortsLargeArraysAndComparesForQsort)
{
    ExpectSorted<CIntArray>(
        +[](int i) { return i; }, CIntArray_SortCmp);
    ExpectSorted<CDblArray>(
        +[](int i) { return i / 8.0; }, CDblArray_SortCmp);
    ExpectSorted<CBoolArray>(
        +[](int i) { return i % 3 == 0; }, CBoolArray_SortCmp);
    ExpectSorted<CDateArray>(
        +[](int i) { return i % 5 == 0 ? CDate() : CDate(i); }, CDateArray_SortCmp);
    const double adValues[] = {NAN, 1.0};
    EXPECT_EQ(0, CDblArray_SortCmp(adValues, adValues + 1));
    EXPECT_NE(nullptr, dlsym(RTLD_DEFAULT, "CStrArray_SortCmp")); // with C linkage
    CString astrTexts[] = {"b", "", "\xe4", "B", "ab"}, strAll;
    CString* apTexts[]  = {astrTexts, astrTexts + 1, astrTexts + 2, astrTexts + 3, astrTexts + 4};
    qsort(apTexts, 5, sizeof(CString*), CStrArray_SortCmp);
    for (const CString* pText : apTexts)
        (strAll += *pText) += ",";
    EXPECT_EQ(",B,ab,b,\xe4,", Bytes(strAll));
    EXPECT_TRUE(CStrArray_SortCmp(apTexts, apTexts) == 0 && CStrArray_SortCmp(apTexts, apTexts + 1) == -1);
}
} // namespace
