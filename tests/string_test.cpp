#include "support.h"

#include <cmath>

namespace
{
const char* const s_pszNull = nullptr;

/// Returns what the six operators say, a bit each.
template <class TLeft, class TRight>
int Operators(const TLeft& l, const TRight& r)
{
    return (l == r) + 2 * (l != r) + 4 * (l < r) + 8 * (l <= r) + 16 * (l > r) + 32 * (l >= r);
}

TEST(String, GetBufferAndSetLeaveZeroBytesBehindTheText)
{
    CString str("hello");
    strcpy(str.GetBuffer(10), "0123456789");
    str = "abc";
    str.ReleaseBuffer(10);
    EXPECT_EQ(Look(string("abc\0\0\0\0\0\0\0", 10), 11), Look(str));
    EXPECT_THROW(str.ReleaseBuffer(11), CException);
    *str.GetBuffer(-5) = 'x'; // no room but for the NUL, which is gone then
    EXPECT_THROW(str.ReleaseBuffer(-1), CException);
    str.MakeEmptyString();
    str.Empty();
    EXPECT_EQ(FreshLook(""), Look(str));
}

TEST(String, TakesNullTextsAndItsOwnArray)
{
    CString str("abc");
    EXPECT_EQ("0 CString::Compare - invalid string", Thrown([&] { str.Compare(nullptr); }));
    EXPECT_EQ("0 CString::Compare - invalid string", Thrown([&] { return s_pszNull <= str; }));
    EXPECT_EQ("0 CString::CompareNoCase - invalid string", Thrown([&] { str.CompareNoCase(nullptr); }));
    EXPECT_FALSE(str.StartsWith(nullptr));
    EXPECT_FALSE(str.EndsWith(nullptr));
    EXPECT_EQ(-1, str.Find(s_pszNull));
    EXPECT_EQ(-1, str.FindOneOf(NULL));
    EXPECT_EQ(0, str.Replace(s_pszNull, "x"));
    CStrArray arr{"a, b,", ","}; // which may hold the text and the separator
    arr[0].Split(",", nullptr);
    arr[0].Split(',', nullptr);
    arr[0].Split(arr.GetAt(1), &arr, true);
    EXPECT_EQ("a|b", Bytes(arr.Join("|")));
    str.Split(s_pszNull, &arr);
    EXPECT_EQ("abc", Bytes(arr.Join("|")));
    EXPECT_FALSE(CString("a").SplitQuoted(',', nullptr));
}

TEST(String, EveryByteHasTheClassAndCaseOfTheCLocale)
{
    for (int i = 1; i <= 255; ++i)
    {
        const char szBytes[] = {static_cast<char>(i), 0, 'B', static_cast<char>(i), 0};
        CString strUpper(szBytes), strLower, strTrimmed(strUpper + "x" + strUpper);
        strUpper.MakeUpper();
        SetBytes(strLower, string(szBytes, 4), 4).MakeLower(); // by length
        strTrimmed.Trim();
        EXPECT_EQ(static_cast<char>(i >= 'a' && i <= 'z' ? i - 32 : i), strUpper[0]) << i;
        EXPECT_EQ(static_cast<char>(i >= 'A' && i <= 'Z' ? i + 32 : i), strLower[3]) << i;
        EXPECT_EQ(i == ' ' || (i >= '\t' && i <= '\r') ? 1 : 3, strTrimmed.GetLength()) << i;
    }
}

TEST(String, OperatorsDoAsTheOperationsThatTheyStandFor)
{
    const char* const aszTexts[] = {"", "a", "ab", "b", "\xe4"};
    for (int i = 0; i < 5; ++i)
        for (int j = 0; j < 5; ++j)
        {
            CString strLeft(aszTexts[i]), strRight(aszTexts[j]), strSum;
            const string strBoth = FreshLook(string(aszTexts[i]) + aszTexts[j]);
            EXPECT_EQ(Operators(i, j), Operators(strLeft, strRight)) << i << ", " << j;
            EXPECT_EQ(Operators(i, j), Operators(strLeft, aszTexts[j])) << i << ", " << j;
            EXPECT_EQ(Operators(i, j), Operators(aszTexts[i], strRight)) << i << ", " << j;
            EXPECT_EQ(strBoth, Look(((strSum = strLeft) += strRight).ToStr()));
            EXPECT_EQ(strBoth, Look(((strSum = aszTexts[i]) += aszTexts[j]).ToStr()));
        }
}

TEST(String, TextsEndAtTheirFirstNul)
{
    CString strLeft, strRight;
    SetBytes(strLeft, string("ab\0cd", 5), 5);
    SetBytes(strRight, string("ab\0xd", 5), 5);
    EXPECT_EQ(Operators(1, 1), Operators(strLeft, strRight));
    EXPECT_EQ(Operators(1, 1), Operators(strLeft, CString("ab")));
    CStrArray arr(2), arrPieces;
    SetBytes(arr[0], string("a\0b", 3), 3);
    strcpy(arr[1].GetBuffer(100), "b,c,dd"); // not released
    EXPECT_EQ(1, arr.Find("b,c,dd"));
    EXPECT_EQ(-1, arr.Find(""));
    EXPECT_EQ("a|b,c,dd", Bytes(arr.Join("|")));
    arr[1].Split(',', &arrPieces); // by length
    EXPECT_EQ("", Bytes(arrPieces.Join("|")));
}

TEST(String, LongFormatsAreAssembledFromWhatTheyName)
{
    const string strLong(2000, 'x');
    // More short pieces than fit together, more long ones than are taken apart.
    for (int iCount = 40; iCount < 70; ++iCount)
    {
        const string strBetween(Unsigned(iCount), '-');
        string strFormat;
        char szExpected[5000];
        for (int i = 0; i < 20; ++i)
            strFormat += strBetween + CFormat("%%%dd%%.%ds", iCount, iCount).ToStr();
#define TWO 7, strLong.c_str(), 7, strLong.c_str()
#define TEN TWO, TWO, TWO, TWO, TWO
        snprintf(szExpected, sizeof szExpected, strFormat.c_str(), TEN, TEN);
        EXPECT_EQ(szExpected, Bytes(CFormat(strFormat.c_str(), TEN, TEN))) << iCount;
    }
}

TEST(String, FormatsReadTheirOwnStringWhateverTheLength)
{
    for (int iLength = 1020; iLength <= 1028; ++iLength) // about that up to which results are printed at once
    {
        const string strText(Unsigned(iLength - 2), 'x');
        CString str(strText.c_str());
        EXPECT_EQ(iLength, str.Format("%s%+d", str.ToStr(), 7)); // by the C library
        EXPECT_EQ(strText + "+7", Bytes(str));
        EXPECT_EQ(iLength + 2, str.Format("%d%s%d", 1, str.ToStr(), 2)); // a long piece
        EXPECT_EQ("1" + strText + "+72", Bytes(str));
    }
}

TEST(String, LongTextsGrowIntoTheMemoryBehindThem)
{
#ifndef __SANITIZE_ADDRESS__ // which is to see every overrun
    CString str(string(1100, 'a').c_str());
    int iBuffers = 0;
    while (str.GetLength() < 100000)
    {
        const char* psz = str.ToStr();
        str.GetLength() % 2 == 0 ? (void)str.Insert(7, 'b') : str.ConcatInPlace("c");
        iBuffers += psz != str.ToStr() ? 1 : 0;
    }
    EXPECT_LT(iBuffers, 45); // to grow 90 times by an eighth at most takes 39
#endif
}

TEST(Stream, LongFormatsAreAppendedWhole)
{
    CStream stream;
    const string strLong(2000, 'x');
    EXPECT_EQ(0, stream.AppendFormat("%s|%g\n", strLong.c_str(), 0.5));
    EXPECT_EQ(0, stream.AppendFormat("%s", stream.ToStr()));
    EXPECT_EQ(0, stream.AppendData(CString("end")));
    EXPECT_EQ(strLong + "|0.5\n" + strLong + "|0.5\nend", stream.ToStr());
    const char* pszNull          = nullptr;
    const wchar_t aUnprintable[] = {0x7FFFFFFF, 0};
    stream.ThrowOnFailure();
    EXPECT_EQ(-1, stream.AppendFormat("x%ls", aUnprintable));
    EXPECT_EQ(0, stream.AppendFormat(pszNull, 1));
    EXPECT_EQ("0 (CStream) Out of memory", Thrown([&] { stream.AppendData("x", INT_MAX); }));
    stream = CStream(0, 100);
    stream.AppendChar('x');
    EXPECT_EQ(100, stream.GetAllocSize());
}

/// Objects are no arguments of formats: this can be called with what all of those take.
[[maybe_unused]] constexpr auto s_Format =
    [](const auto&... arguments) -> decltype(CFormat("", arguments...), CString().Format("", arguments...),
                                             CString().AppendFormat("", arguments...),
                                             CStream().AppendFormat("", arguments...),
                                             CException(1, "", arguments...)) { return CException(); };
template <class... TArguments>
constexpr bool s_bTakes = std::is_invocable_v<decltype(s_Format), TArguments...>;
static_assert(s_bTakes<>);
static_assert(s_bTakes<int, char, double, const char*, char[2], void*, std::nullptr_t>);
static_assert(!s_bTakes<int, const char*, CString, int>);
static_assert(!s_bTakes<CDate>);

TEST(String, AMovedStringIsEmptyUntilItIsSetAgain)
{
    CString strFrom("a text");
    const char* psz = strFrom.ToStr();
    CString strTo(std::move(strFrom));
    EXPECT_EQ(psz, strTo.ToStr());
    EXPECT_EQ(Look("", 8), Look(strFrom));
    strFrom.Insert(0, "a new one");
    psz              = strFrom.ToStr();
    CString& strSame = strFrom;
    strFrom          = std::move(strSame);
    strTo            = CString();
    strTo            = std::move(strFrom);
    EXPECT_EQ(psz, strTo.ToStr());
    EXPECT_EQ(Look("a new one", 10), Look(strTo));
    CString strEmptied("1234567");
    strEmptied.Trim("1234567"); // which leaves some behind the text
    strTo = std::move(strEmptied);
    strTo.ReleaseBuffer(7);
    EXPECT_EQ(Look(string(7, '\0'), 8), Look(strTo));
}

TEST(String, StringsAreTakenWhereTextsAre)
{
    CString str("a,b,,a"), strComma(","), strA("a"), strX("x");
    CStrArray arr;
    EXPECT_EQ(3, str.Find(strComma, 2));
    EXPECT_EQ(1, str.FindOneOf(strComma));
    EXPECT_TRUE(str.StartsWith(strA));
    EXPECT_TRUE(str.EndsWith(strA));
    EXPECT_GT(str.Compare(strA), 0);
    EXPECT_EQ(0, CString("A").CompareNoCase(strA));
    str.Split(strComma, &arr);
    EXPECT_EQ("a|b||a", Bytes(arr.Join("|")));
    EXPECT_EQ(7, str.Insert(0, strX));
    EXPECT_EQ(2, str.Replace(strA, strX));
    EXPECT_EQ(3, str.Replace(strX, "y"));
    EXPECT_EQ(3, str.Replace("y", strX));
    EXPECT_EQ("xx,b,,x", Bytes(str));
    str.TrimLeft(strX);
    str.TrimRight(strX);
    str.Trim(strComma);
    EXPECT_EQ("b", Bytes(str));
}

/// Prints a value by every format of one conversion, and compares with snprintf.
template <class TValue>
void ExpectFormats(const string& strConversion, TValue value)
{
    std::size_t iLead = 1;
    for (const char* pszFlags : {"", "-", "0", "-0", "+", " ", "#"})
        for (const string strCounts : {"", "1", "12", "*", ".0", ".3", ".31", "7.2", "*.12", "."})
            for (int iWidth : {-9, 0, 20})
            {
                // In front there is what is too long to be copied twice, and what takes the width if nothing else does.
                iLead                  = 90 - iLead;
                const string strFormat = string(iLead, '<') + (strCounts[0] == '*' ? "%%%" : "%d%%%") +
                                         pszFlags + strCounts + strConversion + "> end";
                const char* pszFormat = strFormat.c_str();
                char szExpected[600];
                snprintf(szExpected, sizeof szExpected, pszFormat, iWidth, value);
                EXPECT_STREQ(szExpected, CFormat(pszFormat, iWidth, value).ToStr()) << strFormat;
            }
}

TEST(String, EveryFormatPrintsAsWithSnprintf)
{
    for (const char* psz : {"d", "i", "u", "x", "X", "c", "o", "hd"})
        for (int iValue : {0, 7, -1, INT_MIN, 0x65ABCDEF})
            ExpectFormats(psz, iValue);
    for (const char* psz : {"lld", "llu", "llX"})
        ExpectFormats(psz, -123456789012LL);
    ExpectFormats("ld", -77L);
    ExpectFormats("lx", 77UL);
    ExpectFormats("zu", sizeof(CString));
    ExpectFormats("zd", static_cast<std::ptrdiff_t>(-3));
    for (double dValue : {0.0, -0.5, 2.5, 1e22, -1e300, HUGE_VAL})
        for (const char* psz : {"f", "e", "g"})
            ExpectFormats(psz, dValue);
    ExpectFormats("s", "a text");
    ExpectFormats("p", static_cast<void*>(nullptr));
}
} // namespace
