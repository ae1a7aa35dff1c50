// log_report: sums up the log of a web server by status, path, host and hour.
#include <bedplate/bedplate.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
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
    explicit CTraffic(const char* pszName) : m_strName(pszName) {}

    CString m_strName;
    int m_iRequests = 0;
    int m_iErrors   = 0;
    int m_iSlowest  = 0; // milliseconds, as all times
    double m_dTime  = 0;
    double m_dBytes = 0;
};

struct CLog
{
    CString m_strFirst, m_strLast; // times of requests
    int m_iRequests = 0;
    int m_iBad      = 0; // lines that are no requests
    int m_iFirstBad = 0;
    CPtrHash m_hashPaths{true};
    CPtrHash m_hashHosts{true};
    CIntArray m_arrStates{600, 0};
    CIntArray m_arrHours{24, 0};
};

/// Reads a whole number from iLowest to iHighest; tells whether the text is one.
bool ReadNumber(const CString& strText, int iLowest, int iHighest, int& iNumber)
{
    iNumber = strText.ToInt();
    return iNumber >= iLowest && iNumber <= iHighest && strText == CFormat("%d", iNumber);
}

CTraffic& FindOrAdd(CPtrHash& hash, const char* pszName)
{
    if (CPtrArrayItem* pFound = hash.Get(pszName))
        return *static_cast<CTraffic*>(pFound);
    auto pNew = std::make_unique<CTraffic>(pszName);
    if (hash.Set(pszName, pNew.get()) != 0)
        throw std::bad_alloc();
    return *pNew.release();
}

/// Adds the request of a line; tells whether the line is one.
bool AddRequest(const CStrArray& arrFields, CLog& log)
{
    int iHour, iStatus, iBytes, iTime;
    if (arrFields.GetSize() != 7 || !ReadNumber("1" + arrFields[1].Mid(11, 2), 100, 123, iHour) ||
        !ReadNumber(arrFields[4], 100, 599, iStatus) || !ReadNumber(arrFields[5], 0, INT_MAX, iBytes) ||
        !ReadNumber(arrFields[6], 0, INT_MAX, iTime))
        return false;
    if (log.m_iRequests++ == 0)
        log.m_strFirst = arrFields[1];
    log.m_strLast = arrFields[1];
    ++log.m_arrHours[iHour - 100];
    ++log.m_arrStates[iStatus];
    for (CTraffic* pTraffic :
         {&FindOrAdd(log.m_hashHosts, arrFields.GetAt(0)), &FindOrAdd(log.m_hashPaths, arrFields.GetAt(3))})
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

/// Prints the busiest paths or hosts.
void PrintBusiest(const char* pszTitle, CPtrHash& hash, size_t iShown)
{
    CStrArray arrNames;
    hash.GetKeys(arrNames);
    std::vector<const CTraffic*> all;
    for (const CString& strName : arrNames)
        all.push_back(&FindOrAdd(hash, strName.ToStr()));
    std::sort(all.begin(), all.end(),
              [](const CTraffic* pLeft, const CTraffic* pRight)
              {
                  return pLeft->m_iRequests != pRight->m_iRequests ? pLeft->m_iRequests > pRight->m_iRequests
                                                                   : pLeft->m_strName < pRight->m_strName;
              });
    all.resize(std::min(all.size(), iShown));
    printf("\nRequests  Errors  Mean ms  Slowest        Bytes  %s\n", pszTitle);
    for (const CTraffic* pTraffic : all)
        printf("%s  %s  %s  %s  %s  %s\n", Aligned(pTraffic->m_iRequests, 8).ToStr(),
               Aligned(pTraffic->m_iErrors, 6).ToStr(),
               Aligned(pTraffic->m_dTime / pTraffic->m_iRequests, 7, 1).ToStr(),
               Aligned(pTraffic->m_iSlowest, 7).ToStr(), Aligned(pTraffic->m_dBytes, 11).ToStr(),
               pTraffic->m_strName.ToStr());
}

void Print(CLog& log)
{
    printf("%s to %s: %s requests of %s hosts\n", log.m_strFirst.ToStr(), log.m_strLast.ToStr(),
           CInt(log.m_iRequests).ToFmtStr().ToStr(), CInt(log.m_hashHosts.GetDataCnt()).ToFmtStr().ToStr());
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
    const bool bHelp = argc == 2 && strcmp(argv[1], "--help") == 0;
    if (argc != 2 || bHelp)
        return fputs(s_szUsage, bHelp ? stdout : stderr) >= 0 && bHelp ? 0 : 2;
    CLog log;
    if (!Read(argv[1], log))
    {
        fprintf(stderr, "log_report: %s cannot be read\n", argv[1]);
        return 1;
    }
    Print(log);
    return 0;
}
catch (const CException& e)
{
    fprintf(stderr, "log_report: %s\n", e.GetText());
    return 3;
}
catch (const std::bad_alloc&)
{
    fputs("log_report: out of memory\n", stderr);
    return 3;
}
