// Cases that have hit libraries of this kind: sizes that wrap, texts at the end of what is mapped, rejected formats,
// foreign locales, exhausted memory, and work that some implementations take very long for. A program of its own, which
// may have 512 MB: memory that runs out here has really run out.
#include "support.h"

#include <clocale>
#include <cstdio>
#include <ctime>
#include <functional>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__) // g++ defines it; builds with clang++ are those that count what runs
constexpr bool s_bSanitized = true;
#else
constexpr bool s_bSanitized = false;
#endif
#ifdef __clang__
constexpr double s_dSlower = 10;
#else
constexpr double s_dSlower  = 1;
#endif

namespace
{
/// Tells whether times and addresses are the program's own. If so, there are 512 MB from now on.
bool IsPlain()
{
    const struct rlimit limit = {512U << 20, 512U << 20};
    const char* pszPreload    = getenv("LD_PRELOAD");
    const bool bValgrind      = pszPreload != nullptr && strstr(pszPreload, "vgpreload") != nullptr;
    return !s_bSanitized && !bValgrind && setrlimit(RLIMIT_DATA, &limit) == 0;
}
const bool s_bPlain = IsPlain();

struct SRow
{
    const char* pszName;
    std::function<void()> Run;
};

/// Runs rows that must throw what begins with a text, within some seconds of computing and with less than 200 MB touched.
void RunRows(const char* pszThrown, double dSeconds, const std::vector<SRow>& aRows)
{
    static double s_dSlowest = 0;
    for (const SRow& row : aRows)
    {
        struct rusage before, after;
        getrusage(RUSAGE_SELF, &before);
        const clock_t iStart = clock();
        EXPECT_EQ(pszThrown, Thrown(row.Run).substr(0, strlen(pszThrown))) << row.pszName;
        const double dTaken = static_cast<double>(clock() - iStart) / CLOCKS_PER_SEC;
        getrusage(RUSAGE_SELF, &after);
        EXPECT_TRUE(!s_bPlain || dTaken < s_dSlower * dSeconds) << row.pszName << " took " << dTaken << " s";
        EXPECT_TRUE(!s_bPlain || after.ru_maxrss - before.ru_maxrss < 200 * 1024)
            << row.pszName << ": memory";
        if (dTaken > s_dSlowest)
            printf("slowest hostile input: %.3f s, %s\n", s_dSlowest = dTaken, row.pszName);
    }
}

template <class... TArrays>
string Sizes(const TArrays&... arrays)
{
    return ((std::to_string(arrays.GetSize()) + "/" + std::to_string(arrays.GetBufferSize()) + " ") + ...);
}

/// Pages of 'x', iTimes the same ones, then a page of NULs or one that must not be touched.
class CMapped
{
public:
    CMapped(std::size_t iBytes, std::size_t iTimes, bool bNuls) : m_iBytes(iBytes * iTimes + 4096)
    {
        const int iFile = memfd_create("text", 0);
        m_pData = static_cast<char*>(mmap(nullptr, m_iBytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
        EXPECT_TRUE(m_pData != MAP_FAILED && ftruncate(iFile, static_cast<off_t>(iBytes)) == 0);
        for (std::size_t i = 0; i < iTimes; ++i)
            mmap(m_pData + i * iBytes, iBytes, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED, iFile, 0);
        mprotect(End(), 4096, bNuls ? PROT_READ : PROT_NONE);
        memset(m_pData, 'x', iBytes);
        close(iFile);
    }
    ~CMapped() { munmap(m_pData, m_iBytes); }
    char* End() const { return m_pData + m_iBytes - 4096; }

private:
    std::size_t m_iBytes;
    char* m_pData;
};

TEST(Hostile, SizesThatWrapFailAtOnceAndChangeNothing)
{
    const string str4097(4097, 'b'), str64K(1 << 16, 'c');
    const char *psz4097 = str4097.c_str(), *psz64K = str64K.c_str();
    CString s(string(1 << 20, 'a').c_str());
    CStrArray arr(1 << 16);
    CIntArray arrInt(1 << 16, 7);
    CDblArray arrDbl(9, 7);
    CBoolArray arrBool(1 << 16, true);
    CDateArray arrDate(9, 7);
    CPtrArray arrPtr(1 << 16, nullptr, false);
    CStream stream(9, INT_MAX);
    const auto See = [&]
    {
        return Sizes(arr, arrInt, arrDbl, arrBool, arrDate, arrPtr) + std::to_string(arrInt[65535]) +
               Look(s) + std::to_string(stream.GetLength()) + "/" + std::to_string(stream.GetAllocSize());
    };
    const string strBefore = See();
    RunRows("-11 at cstring.cpp(", 0.1,
            {{"Replace by 4097, 4 GiB + 1 MiB", [&] { s.Replace("a", psz4097); }},
             {"Replace by 4096, 4 GiB", [&] { s.Replace("a", psz4097 + 1); }},
             {"Replace by 2048, 2 GiB", [&] { s.Replace("a", psz4097 + 2049); }},
             {"Join", [&] { arr.Join(psz64K); }},
             {"Repr of texts", [&] { arr.Repr(psz64K); }},
             {"Repr of ints", [&] { arrInt.Repr(psz64K); }},
             {"Repr of bools", [&] { arrBool.Repr(psz64K, false); }},
             {"Repr of items", [&] { arrPtr.Repr(psz64K); }},
             {"GetBuffer", [&] { s.GetBuffer(INT_MAX); }},
             {"width", [&] { s.Format("%2147483647d", 1); }},
             {"least width that is too long", [&] { s.Format("%-2147483136s", ""); }},
             {"width of a long",
              [&] { s.Format("%s%hhd%lld%ld%zu%*x", "", 1, 1LL, 1L, sizeof s, INT_MIN + 1, 1U); }},
             {"width of a double", [&] { s.Format("%% %f%Lf%c%m%*.1g", 1.0, 1.0L, 'c', INT_MAX, 1.0); }},
             {"precision", [&] { s.Format("%.2147483647d", 1); }},
             {"precision from an argument", [] { CFormat("%.*f", INT_MAX, 1.0); }},
             {"CFormat", [] { CFormat("%2147483647s", "x"); }}});
    RunRows("-11 at str_array.cpp(", 0.1,
            {{"SetSize", [&] { arr.SetSize(INT_MAX); }}, {"first SetSize", [] { CStrArray{INT_MAX}; }}});
    RunRows("0 ", 0.1,
            {{"ints", [&] { arrInt.GrowBuffer(INT_MAX); }},
             {"4 GiB of ints", [&] { arrInt.GrowBuffer(1 << 30); }},
             {"8 GiB of doubles", [&] { arrDbl.GrowBuffer(1 << 30); }},
             {"bools", [&] { arrBool.GrowBuffer(INT_MAX); }},
             {"4 GiB + 4 of dates", [&] { arrDate.GrowBuffer(429496730); }},
             {"items", [&] { arrPtr.GrowBuffer(INT_MAX); }},
             {"new items", [] { CPtrArray(INT_MAX, nullptr, true); }},
             {"new ints", [] { CIntArray(INT_MAX, 1); }},
             {"buckets", [] { CIntHash hash(INT_MAX); }},
             {"4 GiB of buckets", [] { CStrHash hash(1 << 30); }},
             {"buckets below 0", [] { CPtrHash hash(true, INT_MIN); }}});
    if (s_bPlain)
        RunRows("0 (CStream) Out of memory", 0.1, {{"new stream", [] { CStream large(INT_MAX); }}});
    RunRows("nothing", 0.1,
            {{"stream step", [&] { EXPECT_EQ(-1, stream.AppendData("123456789", 9)); }},
             {"stream length", [&] { EXPECT_EQ(-1, stream.AppendData("", INT_MAX)); }}});
    EXPECT_TRUE(strBefore == See());
}

TEST(Hostile, TextsBeyondIntMaxAreFailures)
{
    if (!s_bPlain)
        GTEST_SKIP() << "such a text takes half the addresses";
    const CMapped mapped(1 << 20, 2048, true);        // 2 GiB
    const char* pszMost = mapped.End() + 1 - INT_MAX; // on 32-bit systems no object may be larger
    const char* pszLong = sizeof pszMost > 4 ? pszMost - 2 : pszMost;
    CString str("kept"), strOther;
    CStrArray arr(4);
    const std::function<void()> aRows[] = {[&] { strOther.Set(pszLong); },
                                           [&] { (void)CString(pszLong); },
                                           [&] { str += pszMost; },
                                           [&] { (void)(str + pszMost); },
                                           [&] { (void)(pszMost + str); },
                                           [&] { str.Insert(2, pszMost); },
                                           [&] { str.Replace("kept", pszLong); },
                                           [&] { arr.Join(pszMost); }};
    for (const auto& Run : aRows)
        EXPECT_EQ("-11 at cstring.cpp(", Thrown(Run).substr(0, 19)) << &Run - aRows;
    EXPECT_EQ(Look("kept", 5), Look(str));
    EXPECT_TRUE(!str.StartsWith(pszMost) && !str.EndsWith(pszMost) && str.Compare(pszMost) < 0);
}

TEST(Hostile, NothingIsReadBehindATextOrBytes)
{
    const CMapped mapped(1 << 16, 1, false);
    CString s("xx, and long enough to be searched");
    CStrArray arr;
    CStrHash hash;
    CStream stream;
    CDateArray dates;
    for (const int iLength : {0, 1, 7, 8, 9, 64, 511, 1023, 1024, 5000})
    {
        char* psz    = mapped.End() - iLength - 1; // to read the byte behind its NUL ends the program
        psz[iLength] = '\0';
        s.Empty(), s.Set(psz), s = psz, s = psz + (s + psz), s += psz, s.Insert(1, psz);
        s.Find(psz), s.FindOneOf(psz), s.StartsWith(psz), s.EndsWith(psz), s.Compare(psz),
            s.CompareNoCase(psz);
        s.Replace(psz, psz), CString("x").Replace("x", psz), s.TrimLeft(psz), s.TrimRight(psz), s.Trim(psz),
            s.Split(psz, &arr);
        s.Format(psz, 1), s = CFormat(psz, 1), CException(psz, 1), CException(1, psz, 1),
                          CException(1, "%s", psz);
        arr.Add(psz), arr.InsertAt(0, psz), arr.SetAt(0, psz), arr.Find(psz), arr.Join(psz), arr.Repr(psz);
        CIntArray(9, 1).Repr(psz), CPtrArray(9, nullptr, false).Repr(psz), CDate(psz).Set(psz),
            dates.Repr(psz);
        hash.Set(psz, psz), hash.Get(psz, &s), hash.Get(psz, &arr), hash.Remove(psz),
            CTime::GetTimeStamp(psz);
        CIntHash::HashFunc(psz, iLength + 1), stream.AppendData(psz, iLength + 1), stream.AppendLine(psz);
        psz[iLength] = 'x';
    }
    EXPECT_EQ(2 * 7657, stream.GetLength());
}

TEST(Hostile, BytesAreKeptWhateverTheyAre)
{
    string strAll, strKeys;
    CStrHash hash(7);
    CStrArray arr;
    CStream stream;
    for (char ch = 1; ch != 0; ++ch)
    {
        const char szKey[] = {ch, '\0'};
        strAll += ch;
        EXPECT_TRUE(hash.Set(szKey, szKey) == 0 && hash.Set(szKey, "") == 0 &&
                    stream.AppendData(szKey, 2) == 0);
    }
    hash.GetKeys(arr), arr.Sort();
    EXPECT_TRUE(Bytes(arr.Join("")) == strAll && Bytes(CFormat("%s", strAll.c_str())) == strAll);
    EXPECT_EQ("   7|   7|%!   7",
              Bytes(CFormat("%1$*2$d|", 7, 4) + CFormat("%*d|", 4, 7) + CFormat("%!%*d", 4, 7)));
    EXPECT_TRUE(hash.GetDataCnt() == 510 && stream.GetLength() == 510 && stream.ToStr()[509] == '\0');
}

TEST(Hostile, RejectedFormatsGiveTheEmptyText)
{
    const wchar_t szInvalid[] = {0x7fffffff, 0};
    for (const char* pszFormat : {"%", "abc%", "abc%-", "%ls", "%.3ls", "%2147483648d", "%.2147483648d",
                                  "%99999999999d", "%*", "", static_cast<const char*>(nullptr)})
    {
        CString str("old text");
        EXPECT_EQ(pszFormat == nullptr || *pszFormat == '\0' ? 0 : -1, str.Format(pszFormat, szInvalid))
            << pszFormat;
        EXPECT_TRUE(str.IsEmpty() && CFormat(pszFormat, szInvalid).IsEmpty()) << pszFormat;
        EXPECT_GE(3U, strlen(CException(1, pszFormat, szInvalid).GetText())) << pszFormat;
    }
}

/// What is made of some texts and numbers; what a locale may change comes first, in brackets.
string SeeLocale()
{
    CString strUpper("aiI\xe4"), strLower("aiI\xc4"), strText;
    CStrArray arr;
    strUpper.MakeUpper(), strLower.MakeLower();
    CString("b\xe4,\xc4 A, \xa0 ,a").Split(",", &arr, true), arr.Sort();
    strText = CFormat("[%.1f %'d %g]", -1234.5, 1234567, CString("1.5").ToDbl() + CString("1,25").ToDbl());
    strText += "[" + CDblArray(1, 0.5).Repr("") + "][" + strUpper + "/" + strLower + "]";
    strText += CFormat("%d", CString("\xe4").Compare("z") > 0);
    strText += arr.Join() + CInt(-1234567).ToFmtStr() + CFormat("|%d|%5s", CString("-12.5").ToInt(), "\xe4");
    return Bytes(strText + CTime().ToFmtStr("Y-M-D h:m:s.l") + CFormat("%d", CIntHash::HashFunc("\xe4", 1)));
}

TEST(Hostile, LocalesChangeOnlyWhatIsListed)
{
    const string strGerman                       = "[-1234,5 1.234.567 2,25][CDblArr:(1/1)0,500000]";
    const std::pair<const char*, string> aRows[] = {
        {"C", "[-1234.5 1234567 2.5][CDblArr:(1/1)0.500000][AII\xe4/aii\xc4]"},
        {"de_DE.UTF-8", strGerman + "[AII\xe4/aii\xc4]"},
        {"tr_TR.ISO-8859-9", strGerman + "[A\xddI\xc4/ai\xfd\xe4]"}};
    const string strSame = "1a,b\xe4,\xa0,\xc4 A-1,234,567|-12|    \xe4"
                           "1900-01-00 00:00:00.000805306388";
    setenv("LOCPATH", TEST_LOCALES, 1);
    for (const auto& [pszName, pszDiffers] : aRows)
    {
        ASSERT_NE(nullptr, setlocale(LC_ALL, pszName)) << pszName << " in " << TEST_LOCALES;
        EXPECT_EQ(pszDiffers + strSame, SeeLocale()) << pszName;
        const bool bFolds =
            *pszName == 't' && !s_bSanitized; // sanitizers replace strcasecmp by one for ASCII
        EXPECT_EQ(bFolds, CString("\xe4").CompareNoCase("\xc4") == 0) << pszName;
    }
    setlocale(LC_ALL, "C");
}

TEST(Hostile, WorkTakesTimeInProportion)
{
    CString strLong(string(1000000, 'a').c_str()), strOut, strSplit(string(200000, ',').c_str());
    CStrArray arrTexts(100000), arrOut;
    CIntHash hash(1009);
    CStream stream;
    CDblArray arrDbl(10000, 1e300);
    CIntArray arrSorted, arrPipe, arrSame(1000000, 1);
    for (int i = 0; i < 1000000; ++i)
        arrSorted.Add(i), arrPipe.Add(std::min(i, 1000000 - i));
    for (int i = 0; i < 100000; ++i)
        hash.Set(CFormat("%d", i / 10).ToStr(), i);
    RunRows("nothing", 0.1,
            {{"format 1 MB", [&] { strOut.Format("%s", strLong.ToStr()), CFormat("%1000000d", 1); }},
             {"join 100,000 texts", [&] { arrTexts.Join(", "); }},
             {"dump 100,000 values", [&] { hash.Dump(&stream); }},
             {"replace 1,000,000 matches", [&] { (strOut = strLong).Replace("a", "bc"); }},
             {"almost match 1,000,000 times", [&] { strLong.Replace("aaaaaaaaaaaaaaaab", ""); }},
             {"split into 200,000 pieces", [&] { strSplit.Split(',', &arrOut); }},
             {"print 10,000 large doubles", [&] { arrDbl.Repr(); }}});
    RunRows("nothing", 0.5,
            {{"sort what is sorted", [&] { arrSorted.Sort(); }},
             {"sort what is equal", [&] { arrSame.Sort(); }},
             {"sort an organ pipe", [&] { arrPipe.Sort(); }}});
}

TEST(Hostile, MemoryThatRunsOutIsAFailureAndTheObjectsLive)
{
    if (!s_bPlain)
        GTEST_SKIP() << "a sanitizer ends the program instead";
    CString str("kept");
    CStrArray arr;
    CIntArray arrInt;
    CStrHash hash(9);
    CStream stream(0, 1 << 20);
    const string strMegabyte(1 << 20, 'x');
    const char* psz    = strMegabyte.c_str();
    const auto Exhaust = [](auto Run)
    {
        return Thrown(
            [&]
            {
                for (;;)
                    Run();
            });
    };
    EXPECT_EQ("-11 at cstring.cpp(", Exhaust([&] { str += str; }).substr(0, 19));
    EXPECT_EQ("0 CIntArray - Out of memory", Exhaust([&] { arrInt.GrowBuffer(arrInt.GetBufferSize() + 1); }));
    EXPECT_EQ("-11 at cstring.cpp(", Exhaust([&] { arr.Add(psz); }).substr(0, 19));
    EXPECT_EQ("-11 at cstring.cpp(", Exhaust([&] { hash.Set("key", psz); }).substr(0, 19));
    while (stream.AppendData(psz, 1 << 20) == 0)
    {
    }
    str.Clear(), arr.RemoveAll();
    EXPECT_EQ(0, hash.Set("key", "works again"));
}
} // namespace
