// Cases that have hit libraries of this kind: sizes that wrap, texts at the end of what is mapped, rejected formats, foreign
// locales, exhausted memory, and work that takes some implementations very long.

#include "alloc_control.h"
#include "support.h"

#include <clocale>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__)
#define HOSTILE_ASAN true
#elif defined(__has_feature)
#define HOSTILE_ASAN __has_feature(address_sanitizer)
#else
#define HOSTILE_ASAN false
#endif

namespace
{
/// Tells whether times and addresses are the program's own.
bool IsPlain()
{
    const char* pszPreload = getenv("LD_PRELOAD");
    return !HOSTILE_ASAN && (pszPreload == nullptr || strstr(pszPreload, "vgpreload") == nullptr);
}

/// Runs something that must not take long, nor much memory; returns what it threw. Prints the slowest of all.
template <class TRun>
string RunQuickly(const char* pszName, double dSeconds, TRun Run)
{
    static double s_dSlowest = 0;
    struct rusage before, after;
    getrusage(RUSAGE_SELF, &before);
    const clock_t iStart   = clock();
    const string strThrown = Thrown(Run);
    const double dTaken    = static_cast<double>(clock() - iStart) / CLOCKS_PER_SEC;
    getrusage(RUSAGE_SELF, &after);
    EXPECT_TRUE(!IsPlain() || dTaken < dSeconds) << pszName << " took " << dTaken << " s";
    EXPECT_TRUE(!IsPlain() || after.ru_maxrss - before.ru_maxrss < 256 * 1024) << pszName << ": memory";
    if (dTaken > s_dSlowest)
        printf("slowest hostile input so far: %s, %.3f s\n", pszName, s_dSlowest = dTaken);
    return strThrown;
}

struct CSubjects
{
    CString m_str{string(1 << 20, 'a').c_str()}, m_strEmpty;
    CStrArray m_arr{1 << 16};
    CIntArray m_arrInt{1 << 16, 7};
    CDblArray m_arrDbl{9, 7};
    CBoolArray m_arrBool{1 << 16, true};
    CDateArray m_arrDate{9, 7};
    CPtrArray m_arrPtr{1 << 16, nullptr, false};
    CStream m_stream{9, INT_MAX};

    template <class... TArrays>
    static string Sizes(const TArrays&... arrays)
    {
        return ((std::to_string(arrays.GetSize()) + "/" + std::to_string(arrays.GetBufferSize()) + " ") +
                ...);
    }
    string See() const
    {
        return Sizes(m_arr, m_arrInt, m_arrDbl, m_arrBool, m_arrDate, m_arrPtr) +
               std::to_string(m_arrInt[65535]) + " " + std::to_string(m_stream.GetLength()) + "/" +
               std::to_string(m_stream.GetAllocSize()) + Look(m_str) + Look(m_strEmpty);
    }
};

TEST(Hostile, SizesThatWrapFailAtOnceAndChangeNothing)
{
    const string str4096(4096, 'b'), str4097 = str4096 + "b", str64K(1 << 16, 'c');
    const char *psz4097 = str4097.c_str(), *psz64K = str64K.c_str();
    using S = CSubjects;
    const struct
    {
        const char *pszError, *pszName;
        std::function<void(S&)> Run;
    } aRows[] = {
        {"-11 at cstring.cpp", "Replace by 4097: 4 GiB + 1 MiB",
         [&](S& s) { s.m_str.Replace("a", psz4097); }},
        {"-11 at cstring.cpp", "Replace by 4096: 4 GiB",
         [&](S& s) { s.m_str.Replace("a", str4096.c_str()); }},
        {"-11 at cstring.cpp", "Replace by 2048: 2 GiB", [&](S& s) { s.m_str.Replace("a", psz4097 + 2049); }},
        {"-11 at cstring.cpp", "Join", [&](S& s) { s.m_arr.Join(psz64K); }},
        {"-11 at cstring.cpp", "Repr of texts", [&](S& s) { s.m_arr.Repr(psz64K); }},
        {"-11 at cstring.cpp", "Repr of ints", [&](S& s) { s.m_arrInt.Repr(psz64K); }},
        {"-11 at cstring.cpp", "Repr of bools", [&](S& s) { s.m_arrBool.Repr(psz64K, false); }},
        {"-11 at cstring.cpp", "Repr of items", [&](S& s) { s.m_arrPtr.Repr(psz64K); }},
        {"-11 at cstring.cpp", "GetBuffer", [](S& s) { s.m_str.GetBuffer(INT_MAX); }},
        {"-11 at cstring.cpp", "width", [](S& s) { s.m_str.Format("%2147483647d", 1); }},
        {"-11 at cstring.cpp", "width of the least text that is too long",
         [](S& s) { s.m_str.Format("%-2147483136s", ""); }},
        {"-11 at cstring.cpp", "width from an argument",
         [](S& s) {
             s.m_str.Format("%% %s %hhd %lld %ld %f %Lf %c %*x", "", 1, 1LL, 1L, 1.0, 1.0L, 'c', INT_MIN + 1,
                            1U);
         }},
        {"-11 at cstring.cpp", "precision", [](S& s) { s.m_str.Format("%.2147483647d", 1); }},
        {"-11 at cstring.cpp", "precision from an argument", [](S&) { CFormat("%.*f", INT_MAX, 1.0); }},
        {"-11 at cstring.cpp", "CFormat", [](S&) { CFormat("%.1s%2147483647s", "x", ""); }},
        {"-11 at str_array.cpp", "SetSize", [](S& s) { s.m_arr.SetSize(INT_MAX); }},
        {"-11 at str_array.cpp", "first SetSize", [](S&) { CStrArray{INT_MAX}; }},
        {"0 CIntArray - Out of memory", "GrowBuffer of ints", [](S& s) { s.m_arrInt.GrowBuffer(INT_MAX); }},
        {"0 CIntArray - Out of memory", "2 GiB more ints", [](S& s) { s.m_arrInt.GrowBuffer(1 << 30); }},
        {"0 CDblArray - Out of memory", "GrowBuffer of doubles",
         [](S& s) { s.m_arrDbl.GrowBuffer(INT_MAX / 2); }},
        {"0 CBoolArray - Out of memory", "GrowBuffer of bools",
         [](S& s) { s.m_arrBool.GrowBuffer(INT_MAX); }},
        {"0 CDateArray - Out of memory", "GrowBuffer of dates",
         [](S& s) { s.m_arrDate.GrowBuffer(429496730); }},
        {"0 CPtrArray::GrowBuffer : Out of memory", "GrowBuffer of items",
         [](S& s) { s.m_arrPtr.GrowBuffer(INT_MAX); }},
        {"0 CPtrArray::GrowBuffer : Out of memory", "new items",
         [](S&) { CPtrArray(INT_MAX, nullptr, true); }},
        {"0 CIntArray - Out of memory", "new ints", [](S&) { CIntArray(INT_MAX, 1); }},
        {"0 CIntHash() Out of memory", "buckets", [](S&) { CIntHash hash(INT_MAX); }},
        {"0 CStrHash() Out of memory", "buckets that wrap", [](S&) { CStrHash hash(1 << 30); }},
        {"0 CPtrHash() Invalid size(-2147483648)", "buckets below 0",
         [](S&) { CPtrHash hash(true, INT_MIN); }},
        {"nothing", "stream step", [](S& s) { EXPECT_EQ(-1, s.m_stream.AppendData("123456789", 9)); }},
        {"nothing", "stream length", [](S& s) { EXPECT_EQ(-1, s.m_stream.AppendData("", INT_MAX)); }},
    };
    CSubjects subjects;
    const string strBefore = subjects.See();
    for (const auto& row : aRows)
    {
        const string strThrown = RunQuickly(row.pszName, 0.1, [&] { row.Run(subjects); });
        EXPECT_EQ(row.pszError, strThrown.substr(0, strlen(row.pszError))) << row.pszName;
        EXPECT_TRUE(strBefore == subjects.See()) << row.pszName;
    }
}
} // namespace
