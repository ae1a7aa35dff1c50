// Cases that have hit libraries of this kind: sizes that wrap, rejected formats, foreign locales, exhausted memory, and
// work that some implementations take very long for. A program of its own, which may have 512 MB: memory that runs out
// here has really run out.
#include "support.h"

#include <cerrno>
#include <clocale>
#include <cstdio>
#include <ctime>
#include <dlfcn.h>
#include <functional>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

/// A call and its text, for a table of calls.
#define CALL(...) CCall(#__VA_ARGS__, [&] { __VA_ARGS__; })
using CCall = std::pair<const char*, std::function<void()>>;

namespace
{
const bool s_bSanitized = dlsym(RTLD_DEFAULT, "__asan_init") != nullptr;

/// Whether times and addresses are the program's own (valgrind preloads). If so, there are 512 MB from now on.
const struct rlimit s_limit = {512U << 20, 512U << 20};
const bool s_bPlain =
    !s_bSanitized && getenv("LD_PRELOAD") == nullptr && setrlimit(RLIMIT_DATA, &s_limit) == 0;

/// An address of as much memory as that limit allows, or MAP_FAILED.
void* MapLimit(int iProtect)
{
    return mmap(nullptr, s_limit.rlim_cur, iProtect, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
}

/// Whether an emulator runs the program. Those let it set the limit, but do not keep it.
const bool s_bEmulated = s_bPlain && munmap(MapLimit(PROT_WRITE), s_limit.rlim_cur) == 0;

/// Makes sure that there is no more memory than that: for an emulator by taking all addresses but those of one such block.
/// Fails there at 64 bits, which have too many.
bool KeepLimit()
{
    void* pLast = MAP_FAILED;
    for (void* p = pLast; s_bEmulated && sizeof p == 4 && (p = MapLimit(PROT_NONE)) != MAP_FAILED;)
        pLast = p;
    return !s_bEmulated || munmap(pLast, s_limit.rlim_cur) == 0;
}

/// Makes calls that must throw what begins with a text, each within some seconds of computing. Those with a second or
/// more are meant to take long, and not among the slowest.
void Expect(const char* pszThrown, double dSeconds, const std::vector<CCall>& aCalls)
{
    // Other programs slow the machine down, emulators the program, and clang++'s code counts what it does.
    const bool bSlow         = s_bEmulated || strstr(__VERSION__, "lang") != nullptr;
    const double dMost       = dSeconds * (bSlow ? 10 : 4);
    static double s_dSlowest = 0;
    for (const auto& [pszCall, Call] : aCalls)
    {
        const clock_t iStart = clock();
        EXPECT_EQ(pszThrown, Thrown(Call).substr(0, strlen(pszThrown))) << pszCall;
        const double dTaken = static_cast<double>(clock() - iStart) / CLOCKS_PER_SEC;
        EXPECT_TRUE(!s_bPlain || dTaken < dMost) << pszCall << " took " << dTaken << " s";
        if (dSeconds < 1 && dTaken > s_dSlowest)
            printf("slowest hostile input: %.3f s, %s\n", s_dSlowest = dTaken, pszCall);
    }
}

/// Maps 2 GiB of 'x', all the same pages, and behind them one of NULs. Returns its address, or null if there are not as
/// many addresses in a row.
char* MapText()
{
    constexpr std::size_t iSize = 1 << 20, iCount = 2048;
    void* pStart = mmap(nullptr, iCount * iSize + 4096, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pStart == MAP_FAILED)
        return nullptr;
    const int iFile = memfd_create("text", 0);
    EXPECT_EQ(static_cast<ssize_t>(iSize), write(iFile, string(iSize, 'x').data(), iSize));
    char* psz = static_cast<char*>(pStart);
    for (std::size_t i = 0; i < iCount; ++i, psz += iSize)
        mmap(psz, iSize, PROT_READ, MAP_SHARED | MAP_FIXED, iFile, 0);
    close(iFile);
    return psz;
}

TEST(Hostile, SizesThatWrapFailAtOnceAndChangeNothing)
{
    const string str4097(4097, 'b'), str64K(1 << 16, 'c');
    const char *psz4097 = str4097.c_str(), *psz64K = str64K.c_str();
    CString s(string(1 << 20, 'a').c_str());
    CStrArray arr(1 << 16);
    CIntArray arrInt(1 << 16, 7);
    CBoolArray arrBool(1 << 16, true);
    CDateArray arrDate(9, 7);
    CStream stream(9, INT_MAX);
    const auto See = [&]
    { return Look(s) + Look(arr.Repr() + arrInt.Repr() + arrBool.Repr() + arrDate.Repr()); };
    const string strBefore = See();
    // One byte of 1 MiB becoming 4097 wraps to 1 MiB, 4096 to 0, 2048 below 0. %-2147483136s is the least too long.
    Expect("-11 at cstring.cpp(", 0.1,
           {CALL(s.Replace("a", psz4097)), CALL(s.Replace("a", psz4097 + 1)),
            CALL(s.Replace("a", psz4097 + 2049)), CALL(arr.Join(psz64K)), CALL(arr.Repr(psz64K)),
            CALL(arrInt.Repr(psz64K)), CALL(CPtrArray(1 << 16, nullptr, false).Repr(psz64K)),
            CALL(s.Format("%2147483647d", 1)), CALL(s.Format("%-2147483136s", "")),
            CALL(s.GetBuffer(INT_MAX))});
    Expect("-11 at str_array.cpp(", 0.1, {CALL(arr.SetSize(INT_MAX)), CALL(CStrArray{INT_MAX})});
    // Sizes of 2 GiB and more, of 4 GiB and of a little more than that.
    Expect("0 ", 0.1,
           {CALL(arrInt.GrowBuffer(INT_MAX)), CALL(arrInt.GrowBuffer(1 << 30)),
            CALL(CDblArray(INT_MAX / 4 + 2, 1)), CALL(arrBool.GrowBuffer(INT_MAX)),
            CALL(arrDate.GrowBuffer(429496730)), CALL(CPtrArray(INT_MAX, nullptr, true)),
            CALL(CIntHash hash(INT_MAX)), CALL(CStrHash hash(1 << 30)), CALL(CPtrHash hash(true, INT_MIN))});
    EXPECT_EQ(-1, s.AppendFormat("%2147483647d%2147483647d", 1, 1));
    EXPECT_EQ(-2, stream.AppendData("123456789", 9) + stream.AppendData("", INT_MAX) + stream.GetLength());
    EXPECT_TRUE(strBefore == See());
}

TEST(Hostile, TextsBeyondIntMaxAreFailures)
{
    const char* pszEnd = s_bPlain ? MapText() : nullptr;
    if (pszEnd == nullptr)
        GTEST_SKIP() << "no 2 GB of addresses in a row are free";
    const char* pszMost = pszEnd + 1 - INT_MAX;
    const char* pszLong = sizeof pszMost > 4 ? pszMost - 2 : pszMost; // no object of 32 bits may be larger
    CString str("kept");
    Expect("-11 at cstring.cpp(", 10,
           {CALL(CString("").Set(pszLong)), CALL((void)CString(pszLong)), CALL(str += pszMost),
            CALL((void)(str + pszMost)), CALL((void)(pszMost + str)), CALL(str.Insert(2, pszMost)),
            CALL(str.Replace("kept", pszLong)), CALL(CStrArray(4).Join(pszMost))});
    EXPECT_EQ(Look("kept", 5), Look(str));
    EXPECT_FALSE(str.StartsWith(pszMost));
    EXPECT_FALSE(str.EndsWith(pszMost));
    EXPECT_TRUE(str.Compare(pszMost) < 0);
}

TEST(Hostile, RejectedFormatsGiveTheEmptyText)
{
    const wchar_t szInvalid[] = {0x7fffffff, 0};
    for (const char* psz : {"%", "abc%", "abc%-", "%ls", "%.3ls", "%2147483648d", "%.2147483648d",
                            "%99999999999d", "%*", "", static_cast<const char*>(nullptr)})
    {
        CString str("old text");
        const int iPrinted = psz == nullptr || *psz == '\0' ? 0 : -1;
        errno              = ENOMEM; // of something else
        EXPECT_EQ(iPrinted, str.AppendFormat(psz, szInvalid)) << psz;
        EXPECT_EQ(iPrinted, str.Format(psz, szInvalid)) << psz;
        EXPECT_TRUE(str.IsEmpty()) << psz;
        EXPECT_TRUE(CFormat(psz, szInvalid).IsEmpty()) << psz;
        EXPECT_GE(3U, strlen(CException(1, psz, szInvalid).GetText())) << psz;
    }
    EXPECT_EQ("   7|   7|%!   7",
              Bytes(CFormat("%1$*2$d|", 7, 4) + CFormat("%*d|", 4, 7) + CFormat("%!%*d", 4, 7)));
}

/// What is made of some texts and numbers; what a locale may change comes first, in brackets.
string SeeLocale()
{
    CString strUpper("aiI\xe4"), strLower("aiI\xc4");
    CStrArray arr;
    strUpper.MakeUpper();
    strLower.MakeLower();
    CString("b\xe4,\xc4 A, \xa0 ,a").Split(",", &arr, true);
    arr.Sort();
    const double dSum = CString("1.5").ToDbl() + CString("1,25").ToDbl() + CString("-12.5").ToInt();
    return Bytes(CFormat("[%.1f %'d %g]", -1234.5, 1234567, dSum) + CDblArray(1, 0.5).Repr("") + "[" +
                 strUpper + "/" + strLower + "]" + arr.Join() + CInt(-1234567).ToFmtStr() +
                 CFormat("|%5s|%d", "\xe4", CIntHash::HashFunc("\xe4", 1)));
}

TEST(Hostile, LocalesChangeOnlyWhatIsListed)
{
    const string strSame                         = "a,b\xe4,\xa0,\xc4 A-1,234,567|    \xe4|805306388";
    const std::pair<const char*, string> aRows[] = {
        {"de_DE.UTF-8", "[-1234,5 1.234.567 -9,75]CDblArr:(1/1)0,500000[AII\xe4/aii\xc4]"},
        {"ps_AF.UTF-8", // points and separators of two bytes
         "[-1234\u066b5 1\u066c234\u066c567 -10]CDblArr:(1/1)0\u066b500000[AII\xe4/aii\xc4]"},
        {"tr_TR.ISO-8859-9", "[-1234,5 1.234.567 -9,75]CDblArr:(1/1)0,500000[A\xddI\xc4/ai\xfd\xe4]"},
        {"C", "[-1234.5 1234567 -9.5]CDblArr:(1/1)0.500000[AII\xe4/aii\xc4]"}};
    setenv("LOCPATH", TEST_LOCALES, 1);
    for (const auto& [pszName, strDiffers] : aRows)
    {
        ASSERT_NE(nullptr, setlocale(LC_ALL, pszName)) << pszName << " in " << TEST_LOCALES;
        EXPECT_EQ(strDiffers + strSame, SeeLocale()) << pszName;
        char szPadded[100];
        snprintf(szPadded, sizeof szPadded, "%8.1f|%-8.1f|%08.1f|%.1f", 1.5, 2.5, -3.5, 4.5);
        EXPECT_EQ(szPadded, Bytes(CFormat("%8.1f|%-8.1f|%08.1f|%.1f", 1.5, 2.5, -3.5, 4.5))) << pszName;
        const bool bFolds = *pszName == 't' && !s_bSanitized; // whose strcasecmp knows ASCII alone
        EXPECT_EQ(bFolds, CString("\xe4").CompareNoCase("\xc4") == 0) << pszName;
    }
}

TEST(Hostile, WorkTakesTimeInProportion)
{
    CString strLong(string(1000000, 'a').c_str()), strOut, strSplit(string(200000, ',').c_str());
    CStrArray arrTexts(100000), arrOut;
    CIntHash hash(1009);
    CStream stream;
    CIntArray arrPipe, arrSame(1000000, 1); // the pipe is sorted twice
    for (int i = 0; i < 1000000; ++i)
        arrPipe.Add(std::min(i, 1000000 - i));
    const auto Fill = [&]
    {
        for (int i = 0; i < 100000; ++i)
            hash.Set(CFormat("%d", i), i);
    };
    Expect("nothing", 0.1,
           {{"format 1 MB", [&] { strOut.Format("%s%1000000d", strLong.ToStr(), 1); }},
            {"join 100,000 texts", [&] { arrTexts.Join(", "); }},
            {"add 100,000 keys", Fill},
            {"dump 100,000 keys", [&] { hash.Dump(&stream); }},
            {"replace 1,000,000 matches", [&] { (strOut = strLong).Replace("a", "bc"); }},
            {"trim by a large set", [&] { (strOut = strLong).Trim((string(1000000, 'b') + 'a').c_str()); }},
            {"almost match 1,000,000 times", [&] { strLong.Replace("aaaaaaaaaaaaaaaab", ""); }},
            {"split into 200,000 pieces", [&] { strSplit.Split(',', &arrOut); }},
            {"print 10,000 large doubles", [&] { CDblArray(10000, 1e300).Repr(); }}});
    Expect("nothing", 0.5, {CALL(arrPipe.Sort()), CALL(arrPipe.Sort()), CALL(arrSame.Sort())});
}

TEST(Hostile, MemoryThatRunsOutIsAFailureAndTheObjectsLive)
{
    if (!s_bPlain || !KeepLimit())
        GTEST_SKIP() << "no limit of memory is kept: a sanitizer would end the program, an emulator has more "
                        "at 64 bits";
    const string strMegabyte(1 << 20, 'x');
    const char* psz = strMegabyte.c_str();
    CString str("kept");
    CStrArray arr;
    CIntArray arrInt;
    CStrHash hash(9);
    CStream stream(0, 1 << 20);
    Expect("-11 at cstring.cpp(", 10, { CALL(while (true) str += str) });
    Expect("-11 at cstring.cpp(", 10, { CALL(while (true) arr.Add(psz)) });
    Expect("-11 at cstring.cpp(", 10, { CALL(while (true) hash.Set("key", psz)) });
    Expect("0 CIntArray - Out", 10, { CALL(while (true) arrInt.GrowBuffer(arrInt.GetBufferSize() + 1)) });
    Expect("nothing", 10, { CALL(while (stream.AppendData(psz, 1 << 20) == 0){}) });
    Expect("0 (CStream) Out of memory", 0.1, {CALL(CStream large(INT_MAX))});
    // The C library takes memory of its own for many decimals.
    Expect("-11 at cstring.cpp(", 0.1,
           {CALL(str.Format("%.600000000f", 1.5)), CALL(str.AppendFormat("%.600000000f", 1.5)),
            CALL(CFormat("%.600000000f", 1.5))});
    str.Clear();
    arr.RemoveAll();
    EXPECT_EQ(0, hash.Set("key", "works again"));
}
} // namespace
