// log_report: sums up the log of a web server by status, path, host and hour.
#include <bedplate/bedplate.h>
#include <bedplate/typed.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

namespace
{
constexpr char s_szUsage[] = "usage: log_report LOG\n"
                             "  LOG  a line for each request, in the order of time:\n"
                             "       host YYYY-MM-DDThh:mm:ss method path status bytes milliseconds\n"
                             "Lines of another form are counted, and ignored otherwise.\n"
                             "Exit status: 0 success, 1 LOG cannot be read, 2 wrong usage, 3 out of memory\n";

/// The requests of one path, or of one host.
struct CTraffic : CPtrArrayItem
{
    int m_iRequests = 0, m_iErrors = 0;
    int m_iSlowest = 0; // milliseconds, as all times
    double m_dTime = 0, m_dBytes = 0;
};

struct CLog
{
    CString m_strFirst, m_strLast; // times of requests
    int m_iRequests = 0;
    int m_iBad = 0, m_iFirstBad = 0; // lines that are no requests, and the number of the first
    CPtrHashOf<CTraffic> m_hashPaths, m_hashHosts;
    CIntArray m_arrStates = CIntArray(600, 0);
    CIntArray m_arrHours  = CIntArray(24, 0);
};

/// Adds the request of a line; tells whether the line is one.
bool AddRequest(const CStrArray& arrFields, CLog& log)
{
    int iHour, iStatus, iBytes, iTime;
    if (arrFields.GetSize() != 7 || !arrFields[1].Mid(11, 2).ParseInt(&iHour) || iHour < 0 || iHour > 23 ||
        !arrFields[4].ParseInt(&iStatus) || iStatus < 100 || iStatus > 599 ||
        !arrFields[5].ParseInt(&iBytes) || !arrFields[6].ParseInt(&iTime))
        return false;
    if (log.m_iRequests++ == 0)
        log.m_strFirst = arrFields[1];
    log.m_strLast = arrFields[1];
    ++log.m_arrHours[iHour];
    ++log.m_arrStates[iStatus];
    for (CTraffic* pTraffic :
         {&log.m_hashHosts.FindOrAdd(arrFields[0]), &log.m_hashPaths.FindOrAdd(arrFields[3])})
    {
        ++pTraffic->m_iRequests;
        pTraffic->m_iErrors += iStatus >= 400 ? 1 : 0;
        pTraffic->m_iSlowest = std::max(pTraffic->m_iSlowest, iTime);
        pTraffic->m_dTime += iTime;
        pTraffic->m_dBytes += iBytes;
    }
    return true;
}

/// Reads a log; tells whether all of it could be read.
bool Read(const char* pszPath, CLog& log)
{
    std::ifstream file(pszPath);
    CStrArray arrFields;
    std::string strLine;
    for (int iLine = 1; std::getline(file, strLine); ++iLine)
    {
        CString(strLine.c_str()).Split(" ", &arrFields);
        if (!AddRequest(arrFields, log) && log.m_iBad++ == 0)
            log.m_iFirstBad = iLine;
    }
    return file.eof();
}

/// A number with separators, right-aligned.
CString Aligned(double dNumber, int iWidth, int iDecimals = 0)
{
    return CFormat("%*s", iWidth, CDbl(dNumber).ToFmtStr(iDecimals).ToStr());
}

void PrintBusiest(const char* pszTitle, const CPtrHashOf<CTraffic>& hash, size_t iShown)
{
    std::vector<std::pair<const char*, const CTraffic*>> all;
    for (const auto& entry : hash)
        all.emplace_back(entry.m_pszKey, &entry.m_value);
    std::sort(all.begin(), all.end(),
              [](const auto& left, const auto& right)
              {
                  const int iMore = left.second->m_iRequests - right.second->m_iRequests;
                  return iMore != 0 ? iMore > 0 : strcmp(left.first, right.first) < 0;
              });
    all.resize(std::min(all.size(), iShown));
    printf("\nRequests  Errors  Mean ms  Slowest        Bytes  %s\n", pszTitle);
    for (const auto& [pszName, pTraffic] : all)
    {
        const CString strMean = Aligned(pTraffic->m_dTime / pTraffic->m_iRequests, 7, 1);
        printf("%s  %s  %s  %s  %s  %s\n", Aligned(pTraffic->m_iRequests, 8).ToStr(),
               Aligned(pTraffic->m_iErrors, 6).ToStr(), strMean.ToStr(),
               Aligned(pTraffic->m_iSlowest, 7).ToStr(), Aligned(pTraffic->m_dBytes, 11).ToStr(), pszName);
    }
}

void Print(const CLog& log)
{
    printf("%s to %s: %s requests of %s hosts\n", log.m_strFirst.ToStr(), log.m_strLast.ToStr(),
           CInt(log.m_iRequests).ToFmtStr().ToStr(), CInt(log.m_hashHosts.GetKeyCnt()).ToFmtStr().ToStr());
    if (log.m_iBad > 0)
        printf("%d lines were not understood, the first is line %d\n", log.m_iBad, log.m_iFirstBad);
    puts("\nStatus  Requests");
    for (int i = 0; i < log.m_arrStates.GetSize(); ++i)
        if (log.m_arrStates[i] > 0)
            printf("%-6d  %s\n", i, Aligned(log.m_arrStates[i], 8).ToStr());
    PrintBusiest("Path", log.m_hashPaths, 10);
    PrintBusiest("Host", log.m_hashHosts, 5);
    puts("\nHour  Requests");
    const int iMost = *std::max_element(log.m_arrHours.begin(), log.m_arrHours.end());
    for (int i = 0; i < log.m_arrHours.GetSize(); ++i)
    {
        const std::string strBar(iMost > 0 ? static_cast<size_t>(log.m_arrHours[i] * 40.0 / iMost) : 0, '#');
        CString strLine = CFormat("%02d    %s  %s", i, Aligned(log.m_arrHours[i], 8).ToStr(), strBar.c_str());
        strLine.TrimRight();
        puts(strLine.ToStr());
    }
}
} // namespace

int main(int argc, char** argv)
try
{
    const bool bHelp = argc == 2 && CString(argv[1]) == "--help";
    if (argc != 2 || bHelp)
        return fputs(s_szUsage, bHelp ? stdout : stderr) >= 0 && bHelp ? 0 : 2;
    CLog log;
    if (!Read(argv[1], log))
        return fprintf(stderr, "log_report: %s cannot be read\n", argv[1]), 1;
    Print(log);
}
catch (const CException& e)
{
    fprintf(stderr, "log_report: %s\n", e.GetText());
    return 3;
}
catch (const std::bad_alloc&)
{
    return fputs("log_report: out of memory\n", stderr), 3;
}
