#include "support.h"

#include <functional>

namespace
{
const char* const s_pszNull = nullptr;

/// Returns every text of up to iMaxLength characters out of three.
std::vector<string> AllTexts(std::size_t iMaxLength)
{
    std::vector<string> aTexts{""};
    for (std::size_t i = 0; aTexts[i].size() < iMaxLength; ++i)
        for (char ch : {'a', 'b', ' '})
            aTexts.push_back(string(aTexts[i]) + ch);
    return aTexts;
}

/// Calls Check(text, part) for all short texts, and one that holds a part many times, with all parts of up to 2.
template <class TCheck>
void Sweep(TCheck Check)
{
    std::vector<string> aTexts = AllTexts(6);
    for (aTexts.push_back(""); aTexts.back().size() < 200;)
        aTexts.back() += "ab aab";
    for (const string& strText : aTexts)
        for (const string& strPart : AllTexts(2))
        {
            SCOPED_TRACE("'" + strText + "' with '" + strPart + "'");
            Check(strText, strPart);
        }
}

TEST(String, GetBufferAndSetLeaveZeroBytesBehindTheText)
{
    CString str("hello");
    strcpy(str.GetBuffer(10), "0123456789");
    EXPECT_EQ("<CStr: unset>", Bytes(str.Repr()));
    str = "abc";
    str.ReleaseBuffer(10);
    EXPECT_EQ(Look(string("abc\0\0\0\0\0\0\0", 10), 11), Look(str));
    EXPECT_EQ(string(21, '\0'), string(str.GetBuffer(20), 21));
    *str.GetBuffer(-5) = 'x'; // no room but for the NUL, which is gone then
    EXPECT_THROW(str.ReleaseBuffer(-1), CException);
}

TEST(String, CountsAndIndexesOutOfBoundsThrow)
{
    for (int i = -3; i <= 13; ++i)
    {
        CString str;
        SetBytes(str, "0123456789", 10);
        EXPECT_EQ(i >= 0 && i < 10 ? "nothing" : "0 CString::operator[] - index overflow",
                  Thrown([&] { EXPECT_EQ('0' + i, str[i]); }));
        EXPECT_EQ(i >= -1 && i < 11 ? "nothing" : "0 CString::ReleaseBuffer - out of index",
                  Thrown([&] { str.ReleaseBuffer(i); }));
        const int iKept = i < 0 || i > 10 ? 10 : i;
        EXPECT_EQ(Look(string("0123456789").substr(0, Unsigned(iKept)), 11), Look(str));
    }
}

/// Returns what ==, !=, <, <=, > and >= say of two operands: 0 or 1 each, or what they throw.
template <class TLeft, class TRight>
string Compared(const TLeft& left, const TRight& right)
{
    const std::function<bool()> aCalls[] = {[&] { return left == right; }, [&] { return left != right; },
                                            [&] { return left < right; },  [&] { return left <= right; },
                                            [&] { return left > right; },  [&] { return left >= right; }};
    string strAll;
    for (const auto& Call : aCalls)
    {
        const string strThrown = Thrown([&] { strAll += Call() ? "1" : "0"; });
        strAll += strThrown == "nothing" ? "" : strThrown + "\n";
    }
    return strAll;
}

void ExpectOrdered(const char* pszLeft, const char* pszRight)
{
    const int iOrder         = string(pszLeft).compare(pszRight);
    const string strExpected = iOrder < 0 ? "011100" : iOrder == 0 ? "100101" : "010011";
    EXPECT_EQ(strExpected, Compared(CString(pszLeft), CString(pszRight))) << pszLeft << ", " << pszRight;
    EXPECT_EQ(strExpected, Compared(CString(pszLeft), pszRight)) << pszLeft << ", " << pszRight;
    EXPECT_EQ(strExpected, Compared(pszLeft, CString(pszRight))) << pszLeft << ", " << pszRight;
}

TEST(String, OperatorsOrderByUnsignedBytesInAllForms)
{
    const char* const aTexts[] = {"", "a", "abc", "abd", "ABC", "abcd", "\x7f", "\xe4", "ab\xe4"};
    for (const char* pszLeft : aTexts)
        for (const char* pszRight : aTexts)
            ExpectOrdered(pszLeft, pszRight);
    EXPECT_TRUE(CString("aBc1").CompareNoCase("AbC1") == 0 && CString("ABC").CompareNoCase("abd") < 0);
}

TEST(String, ComparingWithNullTextThrowsAndOtherReadingFindsNothing)
{
    CString str("abc");
    string strExpected;
    for (int i = 0; i < 6; ++i)
        strExpected += "0 CString::Compare - invalid string\n";
    EXPECT_EQ(strExpected, Compared(str, s_pszNull));
    EXPECT_EQ(strExpected, Compared(s_pszNull, str));
    EXPECT_EQ("0 CString::CompareNoCase - invalid string", Thrown([&] { str.CompareNoCase(nullptr); }));
    EXPECT_FALSE(str.StartsWith(nullptr) || str.EndsWith(nullptr));
    EXPECT_TRUE(str.Find(s_pszNull) == -1 && str.FindOneOf(NULL) == -1 && str.Replace(s_pszNull, "x") == 0);
    EXPECT_EQ(3, str.Insert(1, s_pszNull));
    str.Split(",", nullptr), str.Split(',', nullptr);
    EXPECT_EQ(FreshLook("abc"), Look(s_pszNull + ((str += s_pszNull) + s_pszNull)));
}

TEST(String, NumbersAreReadAsTheCLibraryDoesAndIntsClamp)
{
    const char* const aszInts[] = {"",           "abc",         " 42x",       "\t\n -5 6",
                                   "- 7",        "0x10",        "010",        "2147483647",
                                   "2147483648", "-2147483649", "4294967297", "-99999999999999999999"};
    const int aiExpected[]      = {0, 0, 42, -5, 0, 0, 10, INT_MAX, INT_MAX, INT_MIN, INT_MAX, INT_MIN};
    for (std::size_t i = 0; i < std::size(aiExpected); ++i)
        EXPECT_EQ(aiExpected[i], CString(aszInts[i]).ToInt()) << aszInts[i];
    EXPECT_TRUE(CString(" 1.5e3x").ToDbl() == 1500.0 && CString("abc").ToDbl() == 0.0);
}

TEST(String, EveryByteHasTheClassAndCaseOfTheCLocale)
{
    for (int i = 1; i <= 255; ++i)
    {
        const string strByte(1, static_cast<char>(i));
        CString strUpper(strByte.c_str()), strLower(strUpper), strTrimmed((strByte + "x" + strByte).c_str());
        strUpper.MakeUpper();
        strLower.MakeLower();
        strTrimmed.Trim();
        EXPECT_EQ(static_cast<char>(i >= 'a' && i <= 'z' ? i - 32 : i), strUpper[0]) << i;
        EXPECT_EQ(static_cast<char>(i >= 'A' && i <= 'Z' ? i + 32 : i), strLower[0]) << i;
        EXPECT_EQ(i == ' ' || (i >= '\t' && i <= '\r') ? 1 : 3, strTrimmed.GetLength()) << i;
    }
}

void ExpectFound(const string& strText, const string& strPart)
{
    const CString str(strText.c_str());
    const char* pszPart  = strPart.c_str();
    const string strTail = strText + '\0'; // where *pszPart, a NUL for the empty part, is found
    for (int iStart = -1; iStart <= Signed(strText.size()) + 1; ++iStart)
    {
        const std::size_t iFrom = Unsigned(std::max(iStart, 0));
        EXPECT_EQ(strPart.empty() ? -1 : Position(strText.find(strPart, iFrom)), str.Find(pszPart, iStart));
        EXPECT_EQ(iFrom < strText.size() ? Position(strTail.find(*pszPart, iFrom)) : -1,
                  str.Find(*pszPart, iStart));
    }
    EXPECT_EQ(Position(strTail.rfind(*pszPart)), str.ReverseFind(*pszPart));
    EXPECT_EQ(Position(strText.find_first_of(strPart)), str.FindOneOf(pszPart));
    const std::size_t iEnd = strText.size() - std::min(strText.size(), strPart.size());
    EXPECT_EQ(strText.compare(0, strPart.size(), strPart) == 0, str.StartsWith(pszPart));
    EXPECT_EQ(strText.substr(iEnd) == strPart, str.EndsWith(pszPart));
    EXPECT_EQ(FreshLook(strText + strPart), Look(str.ToStr() + CString(pszPart)));
}

void ExpectReplaced(const string& strText, const string& strOld)
{
    for (const char* pszNew : {s_pszNull, "b", "aa", "aba"})
    {
        string strExpected = strText;
        const int iCount   = NaiveReplace(strExpected, strOld, pszNew ? pszNew : "");
        CString str;
        const char* pszBefore = SetBytes(str, strText, 300).ToStr();
        EXPECT_EQ(iCount, str.Replace(strOld.c_str(), pszNew));
        EXPECT_EQ(Look(strExpected, iCount > 0 ? Signed(strExpected.size()) + 1 : 301), Look(str));
        EXPECT_EQ(iCount == 0, pszBefore == str.ToStr());
    }
}

template <class... TArg>
void ExpectTrimmed(const string& strText, const string& strRemovable, TArg... arg)
{
    CString astr[3];
    SetBytes(astr[0], strText, 300).TrimLeft(arg...);
    SetBytes(astr[1], strText, 300).TrimRight(arg...);
    SetBytes(astr[2], strText, 300).Trim(arg...);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(Look(NaiveTrim(strText, strRemovable, i + 1), 301), Look(astr[i])) << i;
}

void ExpectTrimmedInAllForms(const string& strText, const string& strSet)
{
    ExpectTrimmed(strText, " ");
    ExpectTrimmed(strText, "", s_pszNull);
    ExpectTrimmed(strText, strSet, strSet.c_str());
    ExpectTrimmed(strText, strSet.substr(0, 1), strSet[0]); // the NUL removes nothing
}

string NaiveSplit(string strText, const string& strSep, const char* pszWhite, bool bKeepEmptyLast)
{
    string strAll;
    int iPieces = 0;
    for (std::size_t i; !strSep.empty() && (i = strText.find(strSep)) != string::npos; ++iPieces)
    {
        strAll += "|" + NaiveTrim(strText.substr(0, i), pszWhite);
        strText.erase(0, i + strSep.size());
    }
    strText           = NaiveTrim(strText, pszWhite);
    const bool bStore = bKeepEmptyLast || !strText.empty();
    return std::to_string(iPieces + bStore) + strAll + (bStore ? "|" + strText : "");
}

/// The text, and its separator, stand in the very array that takes the pieces.
void ExpectSplit(const string& strText, const string& strSep)
{
    for (bool bTrim : {false, true})
    {
        CStrArray arr(9);
        arr.SetAt(1, strText.c_str());
        arr.SetAt(2, strSep.c_str());
        arr[1].Split(strSep.empty() && bTrim ? nullptr : arr.GetAt(2), &arr, bTrim);
        EXPECT_EQ(NaiveSplit(strText, strSep, bTrim ? " " : "", !bTrim), Texts(arr));
        EXPECT_TRUE(arr.GetBufferSize() == 9 || arr.GetSize() > 9);
        CString(strText.c_str())
            .Split(strSep[0], &arr, bTrim); // the NUL, for the empty separator, never matches
        EXPECT_EQ(NaiveSplit(strText, strSep.substr(0, 1), bTrim ? " " : "", false), Texts(arr));
    }
}

TEST(StringSweep, SearchesAndSumsAreThoseOfStdString) { Sweep(ExpectFound); }

TEST(StringSweep, ReplaceGoesLeftToRightWithoutOverlap) { Sweep(ExpectReplaced); }

TEST(StringSweep, SplitStoresEveryPieceButAnEmptyLastOne) { Sweep(ExpectSplit); }

TEST(StringSweep, TrimsRemoveWhatBelongsToTheSetAtEachEnd) { Sweep(ExpectTrimmedInAllForms); }

TEST(StringSweep, SubstringsAreCutAtTheEnds)
{
    const string strText = "abcdefgh";
    const CString str(strText.c_str());
    for (int i = -2; i <= 10; ++i)
    {
        const std::size_t iKept = Unsigned(std::clamp(i, 0, 8));
        EXPECT_EQ(FreshLook(strText.substr(0, iKept)), Look(str.Left(i))) << i;
        EXPECT_EQ(FreshLook(strText.substr(8 - iKept)), Look(str.Right(i))) << i;
        for (int iCount : {-2, -1, 0, 1, 2, 7, 8, 9, INT_MAX})
        {
            const string strTaken = strText.substr(iKept, iCount < -1 ? 0 : Unsigned(iCount)); // -1 takes all
            EXPECT_EQ(FreshLook(strTaken), Look(str.Mid(i, iCount))) << i << ", " << iCount;
        }
    }
}

struct SChange
{
    const char* szName;
    void (*Change)(CString& s);
    string strExpected;
};

void ExpectChanges(const string& strBytes, std::initializer_list<SChange> aRows)
{
    for (const SChange& row : aRows)
    {
        CString str;
        row.Change(SetBytes(str, strBytes, 20));
        EXPECT_EQ(row.strExpected, Bytes(str)) << row.szName;
    }
}

TEST(String, ArgumentsFromTheSameStringCountAsCopies)
{
    ExpectChanges(
        "abcab",
        {
            {"= a sum", [](CString& s) { s = s.ToStr() + s + s; }, "abcababcababcab"},
            {"Replace old", [](CString& s) { s.Replace(s.ToStr() + 3, s.ToStr()); }, "abcabcabcab"},
            {"Replace new", [](CString& s) { s.Replace("a", s.ToStr() + 2); }, "cabbccabb"},
            {"Trim", [](CString& s) { s.Trim(s.ToStr() + 3); }, "c"},
            {"Format", [](CString& s) { s.Format("%s-%s", s.ToStr() + 2, s.ToStr()); }, "cab-abcab"},
            {"Format long", [](CString& s) { s.Format("%600s", s.ToStr()); }, string(595, ' ') + "abcab"},
        });
}

TEST(String, EmbeddedNulIsKeptByLengthAndEndsTheTextByTerminator)
{
    ExpectChanges(string("ab\0cd", 5),
                  {
                      {"copy", [](CString& s) { s = CString(s); }, "ab"},
                      {"Repr", [](CString& s) { s = s.Repr(); }, "<CStr: ab>"},
                      {"Left", [](CString& s) { s = s.Left(4); }, "ab"},
                      {"Mid", [](CString& s) { s = s.Mid(1, 4); }, "b"},
                      {"Right", [](CString& s) { s = s.Right(2); }, "cd"},
                      {"sums", [](CString& s) { s = "x" + (s + s); }, "xabab"},
                      {"MakeUpper", [](CString& s) { s.MakeUpper(); }, string("AB\0CD", 5)},
                  });
}

TEST(String, SearchesStopAtAnEmbeddedNulUnlessStartedBehindIt)
{
    CString str;
    SetBytes(str, string("ab\0cd", 5), 30);
    EXPECT_TRUE(str == "ab" && str.StartsWith("ab") && str.EndsWith("cd") && !str.EndsWith("ab"));
    EXPECT_TRUE(str.Find('\0') == 2 && str.Find('\0', 3) == 5 && str.ReverseFind('\0') == 2);
    EXPECT_TRUE(str.Find("cd") == -1 && str.Find("cd", 3) == 3 && str.ReverseFind('c') == -1);
    CStrArray arr;
    str.Split('b', &arr);
    EXPECT_EQ("a", Bytes(arr.Join("|")));
}

TEST(String, FormatCapacityIsTheFirstMultipleAboveTheLength)
{
    for (int iLength : {0, 1, 7, 8, 511, 512, 513, 1023, 1024, 1535, 1536, 2000, 100000})
    {
        const string strText(Unsigned(iLength), 'x');
        CString str("old");
        EXPECT_EQ(iLength, str.Format("%s", strText.c_str()));
        EXPECT_EQ(Look(strText, (iLength / 512 + 1) * 512 + 1), Look(str));
        EXPECT_EQ(Look(strText, std::max(iLength + 1, 8)), Look(CFormat("%s", strText.c_str())));
    }
    EXPECT_EQ("7-x 1.50", Bytes(CFormat("%d-%s %.2f", 7, "x", 1.5)));
}

TEST(String, FormatEndsAtAPrintedNulAndIsEmptyForABadFormat)
{
    const wchar_t aUnprintable[] = {0x7FFFFFFF, 0};
    const char* pszNull          = nullptr;
    CString str, strNull("old"), strRejected("old");
    EXPECT_EQ(3, str.Format("a%cb", 0));
    EXPECT_EQ(Look("a", 513), Look(str));
    EXPECT_EQ(601, str.Format("%c%600d", 0, 1));
    EXPECT_EQ(Look("", 1025), Look(str));
    EXPECT_EQ(Look("a", 8), Look(CFormat("a%cb", 0)));
    EXPECT_EQ(Look("123456789", 10), Look(CFormat("123456789%c%600d", 0, 1)));
    EXPECT_EQ(Look("a", 8), Look(CFormat("a%c%600d", 0, 1)));
    EXPECT_TRUE(strRejected.Format("x%ls", aUnprintable) == -1 && strRejected.IsEmpty());
    EXPECT_TRUE(strNull.Format(pszNull, 1) == 0 && strNull.IsEmpty());
    EXPECT_TRUE(CFormat(pszNull, 1).IsEmpty() && CFormat("x%ls", aUnprintable).IsEmpty());
}
} // namespace
