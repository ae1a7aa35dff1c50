#include "support.h"

#include <cstdlib>
#include <dlfcn.h>
#include <memory>

namespace
{
/// Has the operations of CStrArray that are edited with. Text arguments are copies: where they come from cannot matter.
struct SModel
{
    std::vector<std::shared_ptr<CString>> aElements;
    int iCapacity = 0;

    int GetSize() const { return Signed(aElements.size()); }
    bool IsValid(int iIndex) const { return iIndex >= 0 && iIndex < GetSize(); }
    string GetAt(int iIndex) const { return IsValid(iIndex) ? aElements[Unsigned(iIndex)]->ToStr() : ""; }
    int Add(string strText) { return InsertAt(GetSize(), strText); }
    void Clear() { aElements.clear(); }
    void FreeExtra() { iCapacity = GetSize(); }
    void RemoveLast() { RemoveAt(GetSize() - 1); }
    int RemoveAt(int i) { return IsValid(i) ? aElements.erase(aElements.begin() + i), i : -1; }

    int SetSize(int iSize)
    {
        if (iSize < 0)
            return -1;
        if (iSize > iCapacity)
            iCapacity = iCapacity == 0 ? iSize : std::max(iCapacity + GrowthStep(GetSize()), iSize);
        iCapacity = iSize == 0 ? 0 : iCapacity;
        aElements.resize(Unsigned(iSize));
        for (auto& pElement : aElements)
            pElement = pElement ? pElement : std::make_shared<CString>(); // a slot comes into use like new
        return 0;
    }

    void SetAt(int iIndex, string strText)
    {
        if (IsValid(iIndex))
            aElements[Unsigned(iIndex)]->Set(strText.c_str());
    }

    int InsertAt(int iIndex, string strText)
    {
        const int iPos = std::min(iIndex, GetSize());
        if (iIndex < 0 || SetSize(GetSize() + 1) < 0)
            return -1;
        std::rotate(aElements.begin() + iPos, aElements.end() - 1, aElements.end());
        return SetAt(iPos, strText), iPos;
    }

    void Sort()
    {
        const auto IsLess = [](const auto& pLeft, const auto& pRight)
        { return Bytes(*pLeft) < Bytes(*pRight); };
        std::sort(aElements.begin(), aElements.end(), IsLess);
    }

    string Join(const string& strSep) const
    {
        string strAll;
        for (int i = 0; i < GetSize(); ++i)
            strAll += (i > 0 ? strSep : "") + GetAt(i);
        return strAll;
    }
};

/// The edits of an array or a model, with an index from -1 to beyond the size; each returns what its operation does.
template <class T>
constexpr int (*s_aEdits[])(T& a, int i, const char* psz) = {
    [](T& a, int i, const char* psz) { return a.InsertAt(i, psz); },
    [](T& a, int i, const char*) { return a.InsertAt(i, a.GetAt(i / 2)); },
    [](T& a, int i, const char*) { return a.Add(a.GetAt(i)); },
    [](T& a, int i, const char* psz) { return a.SetAt(i, psz), 0; },
    [](T& a, int i, const char*) { return a.RemoveAt(i); },
    [](T& a, int, const char*) { return a.RemoveLast(), 0; },
    [](T& a, int i, const char*) { return a.SetSize(i); },
    [](T& a, int, const char*) { return a.FreeExtra(), 0; },
    [](T& a, int, const char*) { return a.Clear(), 0; },
    [](T& a, int, const char*) { return a.Sort(), 0; },
};

void ExpectAlike(const SModel& model, CStrArray& arr)
{
    const string strSizes = std::to_string(model.GetSize()) + "/" + std::to_string(model.iCapacity);
    const string strRepr  = "CStrArr:(" + strSizes + ")::" + model.Join("::");
    ASSERT_EQ(model.iCapacity, arr.GetBufferSize());
    for (int i = 0; i < model.GetSize(); ++i)
    {
        ASSERT_EQ(Look(*model.aElements[Unsigned(i)]), Look(arr[i])) << i;
        ASSERT_EQ(model.GetAt(i), model.GetAt(arr.Find(arr.GetAt(i))));
        ASSERT_LE(arr.Find(arr.GetAt(i)), i);
    }
    ASSERT_EQ(FreshLook(model.Join("::")), Look(arr.Join("::")));
    ASSERT_EQ(FreshLook(model.GetSize() > 0 ? strRepr : "<CStrArr: unset>"), Look(arr.Repr("::")));
}

TEST(StrArrayModel, RandomEditsAgreeInTextsCapacitiesAndResult)
{
    CRandom random;
    CStrArray arr;
    SModel model;
    for (int iStep = 0; iStep < 6000; ++iStep)
    {
        const int iEdit      = random.Between(0, iStep % 300 < 100 ? 3 : 9),
                  i          = random.Between(-1, model.GetSize() + 3);
        const string strText = random.Text(12);
        SCOPED_TRACE("step " + std::to_string(iStep) + ", edit " + std::to_string(iEdit));
        ASSERT_EQ(s_aEdits<SModel>[iEdit](model, i, strText.c_str()),
                  s_aEdits<CStrArray>[iEdit](arr, i, strText.c_str()));
        for (int k = 0; iEdit == 9 && k < arr.GetSize(); ++k) // equal texts may come in any order
            SetBytes(*model.aElements[Unsigned(k)], model.GetAt(k), arr[k].GetBufferSize() - 1);
        CStrArray arrCopy(arr), arrAssigned(random.Between(0, 9));
        arrAssigned = arr = *&arr;
        ExpectAlike(model, arr);
        EXPECT_TRUE(Texts(arr) == Texts(arrAssigned) && Texts(arr) == Texts(arrCopy));
        EXPECT_EQ(arr.GetSize(), arrCopy.GetBufferSize());
        ASSERT_FALSE(HasFailure());
    }
}

TEST(StrArray, GrowsByOneEighthWithinBoundsAndKeepsStringObjects)
{
    CStrArray arr;
    arr.Add("first");
    const CString* pFirst = &arr[0];
    for (int i = 1, iCapacity = 1; i < 12000; ++i)
    {
        iCapacity += i == iCapacity ? GrowthStep(i) : 0;
        ASSERT_EQ(i, arr.Add("next"));
        ASSERT_EQ(iCapacity, arr.GetBufferSize()) << i;
    }
    EXPECT_EQ(0, arr.InsertAt(0, "zero"));
    EXPECT_EQ(pFirst, &arr[1]);
}

TEST(StrArray, OnlyOperatorAndGetAtLastThrowForABadIndex)
{
    CStrArray arr(-3);
    EXPECT_EQ("0 CStrArray::GetAtLast : Empty", Thrown([&] { arr.GetAtLast(); }));
    for (int iSize = 0; iSize < 3; ++iSize, arr.Add("y"))
        for (int i : {-1, iSize, iSize + 3})
            EXPECT_EQ("0 CStrArray::operator[] : Invalid index(" + std::to_string(iSize - 1) + ":" +
                          std::to_string(i) + ")",
                      arr.GetAt(i) + Thrown([&] { (void)arr[i]; }));
    EXPECT_EQ(FreshLook("y"), Look(arr.GetAtLast()));
}

TEST(StrArray, NullAndConstantTextsAreTaken)
{
    CStrArray arr(4), arrEmpty;
    char szText[] = "mutable";
    arr.SetAt(0, "literal");
    arr.SetAt(1, static_cast<const char*>("constant"));
    arr.SetAt(2, szText);
    arr.SetAt(3, "gone");
    EXPECT_EQ("literal,constant,mutable,gone", Bytes(arr.Join()));
    arr.SetAt(3, NULL);
    EXPECT_EQ(4, arr.Add(nullptr));
    EXPECT_EQ("CStrArr:(5/8), literal, constant, mutable, , ", Bytes(arr.Repr()));
    EXPECT_EQ("CStrArr:(5/8)(null)literalconstantmutable", Bytes(arr.Repr(nullptr)));
    EXPECT_EQ("literalconstantmutable", Bytes(arr.Repr("", false)));
    EXPECT_TRUE(arr.Find(nullptr) == -1 && arr.IsIn("") && !arr.IsIn("LITERAL"));
    EXPECT_EQ(0, (arr = arrEmpty).GetBufferSize());
}

TEST(StrArray, SortComparisonHasCLinkageAndServesQsort)
{
    EXPECT_NE(nullptr, dlsym(RTLD_DEFAULT, "CStrArray_SortCmp"));
    CString astrTexts[] = {"b", "", "\xe4", "B", "ab"};
    CString* apTexts[]  = {astrTexts, astrTexts + 1, astrTexts + 2, astrTexts + 3, astrTexts + 4};
    qsort(apTexts, 5, sizeof(CString*), CStrArray_SortCmp);
    CString strAll;
    for (const CString* pText : apTexts)
        (strAll += *pText) += ",";
    EXPECT_EQ(",B,ab,b,\xe4,", Bytes(strAll));
    EXPECT_TRUE(CStrArray_SortCmp(apTexts, apTexts) == 0 && CStrArray_SortCmp(apTexts, apTexts + 1) == -1);
}
} // namespace
