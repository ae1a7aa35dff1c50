// Every operation that allocates runs with its 1st, 2nd, ... allocation failing, once and from then on, until it
// succeeds. The states that it is seen to leave, and the messages, must be exactly the documented ones.

#include "alloc_control.h"
#include "support.h"

#include <cstdio>
#include <set>

namespace
{
using CTexts = std::set<string>;

const char* const s_pszLong = "longer than eight bytes";

// What every operation starts with, what is then seen of it, and what it must still be good for after a failure.

void Prepare(CString& str) { str = "hello world"; }
string Describe(const CString& str) { return Look(str); }

void Reuse(CString& str)
{
    EXPECT_EQ(Bytes(str), Bytes(str.Mid(0)));
    str.Insert(str.GetLength(), "end");
    EXPECT_TRUE(str.EndsWith("end") && str.Set("alive") == 5);
}

void Prepare(CStrArray& arr) { CString("a b c").Split(' ', &arr); } // in five slots

string Describe(const CStrArray& arr) { return Texts(arr) + " in " + std::to_string(arr.GetBufferSize()); }

void Reuse(CStrArray& arr)
{
    CStrArray arrCopy(arr), arrAssigned;
    arrAssigned = arr;
    EXPECT_TRUE(Texts(arr) == Texts(arrCopy) && Texts(arr) == Texts(arrAssigned));
    EXPECT_EQ(Bytes(arr.Join("|")), Bytes(arrCopy.Join("|")));
    EXPECT_EQ(arr.GetSize() == 0, arr.Repr("", false) == "<CStrArr: unset>");
    EXPECT_EQ(arr.GetSize() == 0 ? -1 : 0, arr.Find(arr.GetAt(0)));
    arr.Sort();
    arr.InsertAt(0, s_pszLong);
    arr.FreeExtra();
    CString("x,y").Split(',', &arr);
    EXPECT_EQ("2|x|y", Texts(arr));
}

template <class TArray>
void Prepare(TArray& arr)
{
    arr.Reset(4, 1);
}

template <class TArray>
string Describe(const TArray& arr)
{
    return std::to_string(arr.GetSize()) + "/" + std::to_string(arr.GetBufferSize()) + Bytes(arr.Repr());
}

template <class TArray>
void Reuse(TArray& arr)
{
    EXPECT_TRUE(arr.InsertAt(0, 1) == 0 && arr.Add(0) == arr.GetSize() - 1);
    arr.Reset(2, 1);
    EXPECT_EQ(2, arr.GetBufferSize());
}

/// aStates holds what Describe says after the failures, "same" for no change; aErrors the codes and texts, for code
/// -11 the expression and its unit.
template <class TSubject>
struct SOperation
{
    const char* szName;
    void (*Run)(TSubject&);
    CTexts aStates, aErrors;
};

/// Returns "<code> <text>", and for a code -11 record in its exact form "-11 <expression> in <unit>".
string Summary(const CException& error)
{
    char szUnit[16] = "", szExpression[32] = "";
    int iLine = 0, iEnd = 0;
    sscanf(error.GetText(), "at %15[a-z_].cpp(%d lines), (new %31[^)]) failed(std::bad_alloc)%n", szUnit,
           &iLine, szExpression, &iEnd);
    const bool bWhole = iLine > 0 && error.GetText()[iEnd] == '\0';
    return std::to_string(error.GetCode()) + " " +
           (bWhole ? string(szExpression) + " in " + szUnit : error.GetText());
}

/// Runs op with one allocation failing; returns whether it threw, and adds what was seen to aStates and aErrors.
template <class TSubject>
bool RunOnce(const SOperation<TSubject>& op, int iNth, bool bOnwards, CTexts& aStates, CTexts& aErrors)
{
    const long iLive  = LiveBlocks();
    bool bThrown      = false;
    char szState[100] = "same"; // this and the record need no memory, which would count as a leak
    CException error;
    {
        TSubject subject;
        Prepare(subject);
        const string strBefore = Describe(subject);
        CFailingAllocation failing(iNth, bOnwards);
        try
        {
            op.Run(subject);
        }
        catch (const CException& e)
        {
            bThrown = true;
            error   = e;
        }
        EXPECT_EQ(bThrown, failing.Disarm() > 0);
        const string strState = Describe(subject);
        if (strState != strBefore)
            snprintf(szState, sizeof szState, "%s", strState.c_str());
        Reuse(subject);
    }
    EXPECT_EQ(iLive, LiveBlocks()) << "leak";
    if (bThrown)
        aStates.insert(szState), aErrors.insert(Summary(error));
    return bThrown;
}

template <class TSubject>
void FailEachAllocation(std::initializer_list<SOperation<TSubject>> aOperations)
{
    for (const auto& op : aOperations)
    {
        CTexts aStates, aErrors;
        for (bool bOnwards : {false, true})
        {
            SCOPED_TRACE(string(op.szName) + (bOnwards ? ", from then on" : ", once"));
            for (int iNth = 1; iNth < 200 && RunOnce(op, iNth, bOnwards, aStates, aErrors);)
                ++iNth;
        }
        EXPECT_EQ(op.aStates, aStates) << op.szName;
        EXPECT_EQ(op.aErrors, aErrors) << op.szName;
    }
}

const string s_strText = "-11 char[m_iBufferSize] in cstring", s_strPrint = "-11 char[iLen] in cstring";
const CTexts s_aSame{"same"}, s_aText{s_strText}, s_aPrint{s_strPrint};

TEST(Allocation, FailedStringOperationLeavesTheDocumentedState)
{
    FailEachAllocation<CString>({
        {"Set", [](CString& s) { s.Set(s_pszLong); }, {"'' in 24"}, s_aText},
        {"=", [](CString& s) { s = CString("hello world!"); }, {"same", "'' in 13"}, s_aText},
        {"Clear", [](CString& s) { s.Clear(); }, {"'' in 8"}, s_aText},
        {"GetBuffer", [](CString& s) { s.GetBuffer(30); }, {"'' in 31"}, s_aText},
        {"Format", [](CString& s) { s.Format("%s", s.ToStr()); }, {"'' in 513"}, s_aText},
        {"Format long", [](CString& s) { s.Format("%600s", s.ToStr()); }, {"'' in 1025"}, s_aText},
        {"Insert text", [](CString& s) { s.Insert(3, s.ToStr() + 2); }, s_aSame, s_aText},
        {"Replace", [](CString& s) { s.Replace("o", ""); }, s_aSame, s_aText},
        {"+=", [](CString& s) { s += s; }, s_aSame, s_aText},
        {"sums", [](CString& s) { CString sum((s + "!") + ("<" + (s + s))); }, s_aSame, s_aText},
        {"copies", [](CString& s) { CString a(s), b("b"), c, d(s.Left(2)); }, s_aSame, s_aText},
        {"Repr", [](CString& s) { s.Repr(); }, s_aSame, s_aText},
        {"CFormat", [](CString& s) { CFormat("%s%600s", s.ToStr(), ""); }, s_aSame, s_aPrint},
        {"CFormat NUL", [](CString&) { CFormat("12345678%c%600d", 0, 0); }, s_aSame, s_aPrint},
    });
}

TEST(Allocation, FailedStringArrayOperationLeavesTheDocumentedState)
{
    const CTexts aCleared{"3||b|c in 5", "3|||c in 5", "3||| in 5"};
    const CTexts aFirst{s_strText, "-11 CString in str_array", "-11 CString*[m_iBufferSize] in str_array"};
    const CTexts aLarger{s_strText, "-11 CString in str_array", "-11 CString*[iNewMax] in str_array"};
    const CTexts aAdded{"same", "3|a|b|c in 3", "4|a|b|c| in 7"};
    const CTexts aAdding{s_strText, *aFirst.begin(), "-11 CString*[iNewMax] in str_array",
                         "-11 CString*[m_iSize] in str_array"};
    const CTexts aUnsplit{"same", "0 in 5", "1| in 5", "3||b|c in 5", "3|||c in 5", "3||| in 5"};
    const CTexts aSplit{s_strText, "-11 char[m_iSize+1] in cstring"};
    using CArr = CStrArray;
    FailEachAllocation<CStrArray>({
        {"first SetSize", [](CArr& a) { a.RemoveAll(), a.SetSize(4); }, {"0 in 0"}, aFirst},
        {"new arrays", [](CArr& a) { CArr copy(a), sized(3); }, s_aSame, aFirst},
        {"larger SetSize", [](CArr& a) { a.SetSize(9); }, s_aSame, aLarger},
        {"smaller SetSize", [](CArr& a) { a.SetSize(1); }, {"3|a||c in 5", "3|a|| in 5"}, s_aText},
        {"larger Add", [](CArr& a) { a.FreeExtra(), a.Add(s_pszLong); }, aAdded, aAdding},
        {"InsertAt", [](CArr& a) { a.InsertAt(1, s_pszLong); }, {"4|a||b|c in 5"}, s_aText},
        {"SetAt", [](CArr& a) { a.SetAt(1, s_pszLong); }, {"3|a||c in 5"}, s_aText},
        {"RemoveAt", [](CArr& a) { a.RemoveAt(1); }, {"2|a|c in 5"}, s_aText},
        {"RemoveLast", [](CArr& a) { a.RemoveLast(); }, {"2|a|b in 5"}, s_aText},
        {"Clear", [](CArr& a) { a.Clear(); }, aCleared, s_aText},
        {"FreeExtra", [](CArr& a) { a.FreeExtra(); }, s_aSame, {"-11 CString*[m_iSize] in str_array"}},
        {"reading", [](CArr& a) { a.GetAtLast(), a.Join(), a.Repr(); }, s_aSame, s_aText},
        {"Split", [](CArr& a) { CString("long piece!").Split('!', &a); }, aUnsplit, aSplit},
    });
}

template <class CArr>
void FailEachArrayAllocation(const string& strName)
{
    const CTexts aMemory{"0 " + strName + "ay - Out of memory"}, aNone{"0/0<" + strName + ": unset>"};
    FailEachAllocation<CArr>({
        {"first Add", [](CArr& a) { a.RemoveAll(), a.Add(1); }, aNone, aMemory},
        {"Add to full", [](CArr& a) { a.Add(1); }, s_aSame, aMemory},
        {"InsertAt", [](CArr& a) { a.InsertAt(1, 1); }, s_aSame, aMemory},
        {"GrowBuffer", [](CArr& a) { a.GrowBuffer(99); }, s_aSame, aMemory},
        {"Reset", [](CArr& a) { a.Reset(9, 1); }, aNone, aMemory},
        {"=", [](CArr& a) { a = CArr(9, 1); }, {"same", *aNone.begin()}, aMemory},
        {"copies", [](CArr& a) { CArr copy(a), filled(3, 1); }, s_aSame, aMemory},
        {"Repr", [](CArr& a) { a.Repr(); }, s_aSame, s_aText},
    });
    CArr arr(4, 1);
    const string strBefore = Describe(arr);
    EXPECT_EQ(*aMemory.begin(), Thrown([&] { arr.GrowBuffer(INT_MAX); })); // to INT_MAX + 4 slots
    EXPECT_EQ(strBefore, Describe(arr));
    EXPECT_EQ(*aMemory.begin(), Thrown([&] { arr.Reset(INT_MAX, 1); }));
    EXPECT_EQ(*aNone.begin(), Describe(arr));
}

TEST(Allocation, FailedValueArrayOperationLeavesTheDocumentedState)
{
    FailEachArrayAllocation<CIntArray>("CIntArr");
    FailEachArrayAllocation<CDblArray>("CDblArr");
    FailEachArrayAllocation<CBoolArray>("CBoolArr");
}

TEST(Allocation, TextsBeyondIntMaxChangeNothing)
{
    CString str(string(60000, 'a').c_str());
    const string strBefore = Look(str), strLong(60000, 'b');
    CStrArray arr(40000);
    EXPECT_EQ("-11 ", Thrown([&] { str.GetBuffer(INT_MAX); }).substr(0, 4));
    EXPECT_EQ("-11 ", Thrown([&] { str.Replace("a", strLong.c_str()); }).substr(0, 4));
    EXPECT_EQ("-11 ", Thrown([&] { arr.Join(strLong.c_str()); }).substr(0, 4));
    EXPECT_EQ("-11 ", Thrown([&] { arr.SetSize(INT_MAX); }).substr(0, 4));
    EXPECT_TRUE(Look(str) == strBefore && arr.GetSize() == 40000 && arr.GetBufferSize() == 40000);
    EXPECT_EQ("-11 ", Thrown([&] { str.GetBuffer(INT_MAX - 1); }).substr(0, 4)); // a size, but not to be had
    EXPECT_EQ(Look("", INT_MAX), Look(str));
}

TEST(Allocation, ReadingAndEditingInPlaceNeedNoMemory)
{
    CString str("  hello world  "), strOther("Hello");
    CStrArray arr(3);
    CIntArray arrInt(9, 3);
    CFailingAllocation failing(1, true);
    str.Trim(), str.Insert(0, "full"), str.Delete(3, 2), str.Remove('l'), str.MakeUpper();
    str.Find("W"), str.ReleaseBuffer(-1), str.Set("kept"), strOther.CompareNoCase(str.ToStr());
    EXPECT_THROW((void)str[99], CException);
    arr.Sort(), arr.SetAt(1, "b"), arr.Find("c"), arr.FreeExtra(), arr.GetAt(9);
    arrInt.Sort(), arrInt.RemoveAt(3), arrInt.InsertAt(0, 4), arrInt.Find(4), arrInt.Clear();
    CStrArray arrNone;
    CIntArray arrCopy(arrInt = CIntArray());
    EXPECT_EQ(0, failing.Disarm());
    EXPECT_EQ("kept,b,", Bytes(str += arr.Join()));
}
} // namespace
