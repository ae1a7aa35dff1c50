#include "support.h"

#include <cfloat>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <deque>

namespace
{
using CArrays = testing::Types<CIntArray, CDblArray, CBoolArray>;

// The names in Repr, values in an order of their own, how they print, and the comparisons.
const char* Name(int) { return "CIntArr"; }
const char* Name(double) { return "CDblArr"; }
const char* Name(bool) { return "CBoolArr"; }
int Value(int, int i) { return i % 5 == 0 ? INT_MAX - i : i % 5 == 1 ? INT_MIN + i : i * 7 % 100 - 50; }
double Value(double, int i) { return i % 9 == 0 ? -HUGE_VAL : (i * 7 % 100 - 50) / 8.0; }
bool Value(bool, int i) { return i * 7 % 3 == 0; }
string Printed(int iValue) { return std::to_string(iValue); }
string Printed(double dValue) { return std::to_string(dValue); } // as "%f"
string Printed(bool bValue) { return bValue ? "Y" : "N"; }
int Compare(const int* pLeft, const int* pRight) { return CIntArray_SortCmp(pLeft, pRight); }
int Compare(const double* pLeft, const double* pRight) { return CDblArray_SortCmp(pLeft, pRight); }
int Compare(const bool* pLeft, const bool* pRight) { return CBoolArray_SortCmp(pLeft, pRight); }

template <class TArray>
using CElem = decltype(std::declval<TArray>().GetAtLast());

/// Has the operations of the arrays that are edited with.
template <class TElem>
struct SModel
{
    std::deque<TElem> aValues;
    int iCapacity = 0;

    int GetSize() const { return Signed(aValues.size()); }
    int Add(TElem value) { return InsertAt(GetSize(), value); }
    void SetAt(int iIndex, TElem value) { aValues[Unsigned(iIndex)] = value; }
    int RemoveAt(int iIndex) { return aValues.erase(aValues.begin() + iIndex), iIndex; }
    void RemoveLast() { aValues.resize(Unsigned(std::max(GetSize() - 1, 0))); }
    void Clear() { aValues.clear(); }
    void RemoveAll() { *this = SModel(); }
    void Sort() { std::sort(aValues.begin(), aValues.end()); }
    int Step(int iMore) const { return iMore < 1 ? GrowthStep(GetSize()) : iMore > iCapacity ? iMore : 0; }
    void GrowBuffer(int iMore) { iCapacity += Step(iMore); }

    int InsertAt(int iIndex, TElem value)
    {
        iCapacity += GetSize() == iCapacity ? Step(0) : 0;
        return aValues.insert(aValues.begin() + iIndex, value), iIndex;
    }

    void Reset(int iCount, TElem value)
    {
        aValues.assign(Unsigned(std::max(iCount, 0)), value);
        iCapacity = iCount > 0 ? iCount : 4;
    }
};

/// The edits of an array or a model; i is 0 to the size. Each returns what its operation does.
template <class T, class TElem>
constexpr int (*s_aEdits[])(T& a, int i, TElem value) = {
    [](T& a, int, TElem value) { return a.Add(value); },
    [](T& a, int i, TElem value) { return a.InsertAt(i, value); },
    [](T& a, int i, TElem value) { return i < a.GetSize() ? a.SetAt(i, value), i : -1; },
    [](T& a, int, TElem) { return a.Sort(), 0; },
    [](T& a, int i, TElem) { return i < a.GetSize() ? a.RemoveAt(i) : (a.RemoveLast(), 0); },
    [](T& a, int, TElem) { return a.RemoveLast(), 0; },
    [](T& a, int i, TElem) { return a.GrowBuffer(a.GetSize() + i % 9 - 4), 0; },
    [](T& a, int i, TElem value) { return a.Reset(i - 1, value), 0; },
    [](T& a, int, TElem) { return a.Clear(), 0; },
    [](T& a, int, TElem) { return a.RemoveAll(), 0; },
};

template <class CArr>
class ValueArray : public testing::Test
{
protected:
    using Elem = CElem<CArr>;

    static bool IsZero(const CArr& arr, int iFrom, int iTo)
    {
        return std::count(arr.begin() + iFrom, arr.begin() + iTo, Elem()) == iTo - iFrom;
    }

    static void ExpectAlike(const SModel<Elem>& model, CArr& arr)
    {
        ASSERT_EQ(model.aValues, std::deque<Elem>(arr.begin(), arr.end()));
        ASSERT_EQ(model.iCapacity, arr.GetBufferSize());
        for (int i = 0; i < model.GetSize(); ++i)
            ASSERT_EQ(std::find(arr.begin(), arr.end(), arr[i]) - arr.begin(), arr.Find(arr[i]));
        string strText = Name(Elem()) + string(":(") + std::to_string(model.GetSize()) + "/" +
                         std::to_string(model.iCapacity) + ")";
        for (Elem value : model.aValues)
            strText += "; " + Printed(value);
        strText = model.GetSize() > 0 ? strText : string("<") + Name(Elem()) + ": unset>";
        ASSERT_EQ(FreshLook(strText), Look(arr.Repr("; ")));
    }

    /// Slots that a growth adds, that a value has left and that Clear has emptied hold zero.
    static void ExpectZeros(const CArr& arr, int iEdit, int iOldSize, int iOldCapacity)
    {
        const bool bGrown = (iOldCapacity > 0 || iEdit > 1) && iOldCapacity < arr.GetBufferSize();
        const int iTo     = bGrown || iEdit > 6 ? arr.GetBufferSize() : std::max(arr.GetSize(), iOldSize);
        EXPECT_TRUE(IsZero(arr, arr.GetSize(), iTo));
    }
};

TYPED_TEST_SUITE(ValueArray, CArrays, );

TYPED_TEST(ValueArray, RandomEditsAgreeInValuesCapacityReprAndResult)
{
    using Val = CElem<TypeParam>;
    CRandom random;
    TypeParam arr;
    SModel<Val> model;
    for (int iStep = 0; iStep < 10000; ++iStep)
    {
        const int iEdit = random.Between(0, iStep % 300 < 100 ? 1 : 9), i = random.Between(0, arr.GetSize());
        const Val value    = Value(Val(), random.Between(0, 99));
        const int iOldSize = arr.GetSize(), iOldCapacity = arr.GetBufferSize();
        SCOPED_TRACE("step " + std::to_string(iStep) + ", edit " + std::to_string(iEdit));
        ASSERT_EQ((s_aEdits<SModel<Val>, Val>[iEdit](model, i, value)),
                  (s_aEdits<TypeParam, Val>[iEdit](arr, i, value)));
        this->ExpectAlike(model, arr);
        this->ExpectZeros(arr, iEdit, iOldSize, iOldCapacity);
        TypeParam arrCopy(arr), arrAssigned(3, value);
        arrCopy = arrAssigned = arr = *&arr;
        this->ExpectAlike(model, arrCopy);
        ASSERT_FALSE(this->HasFailure());
    }
}

TYPED_TEST(ValueArray, GrowsByOneEighthWithinBoundsAndKeepsValues)
{
    using Val = CElem<TypeParam>;
    TypeParam arr;
    for (int i = 0, iCapacity = 0; i < 40000; ++i)
    {
        const bool bGrows = i == iCapacity;
        iCapacity += bGrows ? GrowthStep(i) : 0;
        ASSERT_EQ(i, arr.Add(Value(Val(), i)));
        ASSERT_EQ(iCapacity, arr.GetBufferSize()) << i;
        ASSERT_TRUE(i == 0 || !bGrows || this->IsZero(arr, i + 1, iCapacity)) << i;
    }
    TypeParam arrCopy(arr); // and grows on by itself
    for (int i = 40000; i < 50000; ++i)
        arrCopy.InsertAt(i, Value(Val(), i));
    for (int i = 0; i < 50000; ++i)
        ASSERT_EQ(Value(Val(), i), i < 40000 && i % 2 == 0 ? arr[i] : arrCopy.GetAt(i)) << i;
}

TYPED_TEST(ValueArray, BadIndexesThrowAndChangeNothing)
{
    const std::pair<string, void (*)(TypeParam&, int)> aRows[] = {
        {"GetAt", [](TypeParam& arr, int i) { (void)arr.GetAt(i); }},
        {"SetAt", [](TypeParam& arr, int i) { arr.SetAt(i, {}); }},
        {"operator[]", [](TypeParam& arr, int i) { (void)arr[i]; }},
        {"RemoveAt", [](TypeParam& arr, int i) { arr.RemoveAt(i); }},
        {"InsertAt", [](TypeParam& arr, int i) { arr.InsertAt(i, {}); }},
    };
    const string strClass = string("0 ") + Name(CElem<TypeParam>()) + "ay::";
    for (int iSize = 0; iSize <= 2; ++iSize)
    {
        TypeParam arr(iSize, 1);
        const string strBefore = Bytes(arr.Repr()),
                     strLast   = " : Invalid Index(" + std::to_string(iSize - 1) + ":";
        for (const auto& row : aRows)
            for (int i : {INT_MIN, -1, iSize + (row.first == "InsertAt"), INT_MAX})
                EXPECT_EQ(strClass + row.first + strLast + std::to_string(i) + ")",
                          Thrown([&] { row.second(arr, i); }));
        EXPECT_EQ(iSize > 0 ? "nothing" : strClass + "GetAtLast : Empty",
                  Thrown([&] { EXPECT_EQ(1, arr.GetAtLast()); }));
        EXPECT_EQ(strBefore, Bytes(arr.Repr()));
    }
}

TYPED_TEST(ValueArray, TakesAnySeparatorAndComparesForQsort)
{
    using Val = CElem<TypeParam>;
    TypeParam arr(2, Val());
    const string strZero = Printed(Val()), strHeader = string(Name(Val())) + ":(2/2)";
    EXPECT_EQ(strHeader + ", " + strZero + ", " + strZero, Bytes(arr.Repr()));
    EXPECT_EQ(strZero + "--" + strZero, Bytes(arr.Repr("--", false)));
    EXPECT_EQ(strHeader + "(null)" + strZero + strZero, Bytes(arr.Repr(nullptr)));
    for (int i = 0; i < 40; ++i)
    {
        arr[0] = Value(Val(), i);
        arr[1] = Value(Val(), i / 3);
        EXPECT_EQ((arr[0] > arr[1]) - (arr[0] < arr[1]), Compare(&arr[0], &arr[1]));
    }
}

TEST(DblArray, ReprOfAnyDoubleIsThatOfPrintfInEveryLocale)
{
    std::deque<double> aValues{-0.0,      DBL_MAX, -DBL_MAX, DBL_MIN, 4.9e-324, HUGE_VAL,
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
            ASSERT_EQ(Printed(dValue) + "|" + Printed(dValue), Bytes(CDblArray(2, dValue).Repr("|", false)));
    }
}

TEST(DblArray, SortsAsQsortEvenWithNaNAndFindsNone)
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
} // namespace
