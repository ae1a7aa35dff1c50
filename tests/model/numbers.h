// CInt, CDbl and CTime against the C library's printf and strftime.
#ifndef NUMBERS_H
#define NUMBERS_H

#include "engine.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <ctime>

class CNumbers
{
public:
    static constexpr char s_szName[] = "numbers";
    static constexpr int s_iStates   = 2;

    void Prepare(int iState, CChoices& choices)
    {
        CFault none;
        if (iState > 0)
            SetInt(choices, none), SetDbl(choices, none), SetTime(choices, none);
    }
    void Check()
    {
        Same("int", m_iValue, m_int.GetValue());
        Same("double", true,
             m_dbl.GetValue() == m_dValue || (std::isnan(m_dValue) && std::isnan(m_dbl.GetValue())));
        Same("set", m_bSet, m_time.IsSet());
        Same("seconds", m_tv.tv_sec, m_time.GetTimeVal().tv_sec);
        Same("microseconds", m_tv.tv_usec, m_time.GetTimeVal().tv_usec);
        Same("zone", m_bSet && LocalTime(m_tv.tv_sec).tm_isdst > 0, m_time.GetTm().tm_isdst > 0);
    }

    void SetInt(CChoices& choices, CFault&)
    {
        m_iValue = choices.Byte() % 2 == 0 ? choices.AnyInt() : choices.Between(-1100, 1100);
        m_iValue % 2 == 0 ? m_int.SetValue(m_iValue) : void(m_int = CInt(m_iValue));
    }
    void SetDbl(CChoices& choices, CFault&)
    {
        static constexpr double s_adOdd[] = {0.0,  -0.0,   0.125,    2.5,      999.995,   -0.001, 1e15,
                                             1e45, -1e300, 4.9e-324, HUGE_VAL, -HUGE_VAL, NAN,    -NAN};
        const int iKind = choices.Byte() % 4, iBits = choices.AnyInt();
        m_dValue = iKind == 0   ? s_adOdd[static_cast<std::size_t>(choices.Byte()) % std::size(s_adOdd)]
                   : iKind == 1 ? iBits / 1000.0
                                : std::ldexp(iBits, choices.Between(-1070, 990));
        m_dValue < 0 ? m_dbl.SetValue(m_dValue) : void(m_dbl = CDbl(m_dValue));
    }
    void SetTime(CChoices& choices, CFault& fault)
    {
        struct timeval tvBefore, tvAfter;
        const int iSeconds      = choices.AnyInt(),
                  iMicroseconds = choices.Between(0, 999) * (choices.Byte() % 2 == 0 ? 1 : 1001);
        m_tv.tv_sec = iSeconds, m_tv.tv_usec = iMicroseconds;
        const bool bNow = choices.Byte() % 4 == 0;
        gettimeofday(&tvBefore, nullptr);
        Same("failure", "", fault.Run([&] { bNow ? m_time.SetAsNow() : m_time.Set(m_tv); }));
        gettimeofday(&tvAfter, nullptr);
        m_bSet = true;
        if (bNow)
            m_tv = m_time.GetTimeVal();
        Same("now", true, !bNow || (!timercmp(&m_tv, &tvBefore, <) && !timercmp(&m_tv, &tvAfter, >)));
    }

    void PrintInt(CChoices& choices, CFault& fault)
    {
        const bool bGroup      = choices.Byte() % 4 > 0;
        const string strNumber = std::to_string(m_iValue);
        Print(fault, bGroup ? Grouped(strNumber) : strNumber, [&] { return m_int.ToFmtStr(bGroup); });
    }
    void PrintDbl(CChoices& choices, CFault& fault)
    {
        const int iDecimals  = choices.Byte() % 4 > 0 ? choices.Between(-17, 17) : choices.AnyInt();
        const int iPrecision = iDecimals < -15 || iDecimals > 15 ? 15 : std::abs(iDecimals);
        const bool bGroup    = choices.Byte() % 4 > 0;
        char szText[400];
        snprintf(szText, sizeof szText, "%.*f", iPrecision, m_dValue);
        const string strText(szText), strInteger = strText.substr(0, strText.find('.'));
        string strRest = strText.substr(strInteger.size());
        while (iDecimals < 0 && !strRest.empty() && (strRest.back() == '0'))
            strRest.pop_back();
        const string strExpected = (bGroup && std::isfinite(m_dValue) ? Grouped(strInteger) : strInteger) +
                                   (strRest == "." ? "" : strRest);
        Print(fault, strExpected, [&] { return m_dbl.ToFmtStr(iDecimals, bGroup); });
    }
    void PrintTime(CChoices& choices, CFault& fault)
    {
        const string strFormat = DrawFormat(choices);
        const char* pszFormat  = strFormat.empty() && choices.Byte() % 2 == 0 ? nullptr : strFormat.c_str();
        Print(fault, Formatted(strFormat, m_bSet ? LocalTime(m_tv.tv_sec) : tm(), m_tv.tv_usec),
              [&] { return m_time.ToFmtStr(pszFormat); });
    }
    void ReprTime(CChoices&, CFault& fault)
    {
        const string strTime = Formatted("h:m:s.u", LocalTime(m_tv.tv_sec), m_tv.tv_usec);
        Print(fault, m_bSet ? strTime : "<CTime:unset>", [&] { return m_time.Repr(); });
    }
    void Stamp(CChoices& choices, CFault& fault)
    {
        string strFormat = DrawFormat(choices);
        for (char& ch : strFormat)
            ch = ch == 'l' || ch == 'u' ? 's' : ch;
        struct timeval tvBefore, tvAfter; // not time(), which lags behind
        gettimeofday(&tvBefore, nullptr);
        const string strFound = Text(fault, [&] { return CTime::GetTimeStamp(strFormat.c_str()); });
        gettimeofday(&tvAfter, nullptr);
        time_t tNow = tvBefore.tv_sec;
        while (tNow < tvAfter.tv_sec && Formatted(strFormat, LocalTime(tNow), 0) != strFound)
            ++tNow;
        Same("stamp", fault.WasHit() ? "" : Formatted(strFormat, LocalTime(tNow), 0), strFound);
    }

    static const SOperation<CNumbers> s_aOperations[8];

private:
    static string Grouped(string strDigits)
    {
        for (std::size_t i = strDigits.size(); i > 3 && isdigit(strDigits[i - 4]);)
            strDigits.insert(i -= 3, ",");
        return strDigits;
    }
    static struct tm LocalTime(time_t tSeconds)
    {
        struct tm tmTime = {};
        localtime_r(&tSeconds, &tmTime);
        return tmTime;
    }
    static string DrawFormat(CChoices& choices)
    {
        string strFormat(static_cast<std::size_t>(choices.Between(0, 12)), 'Y');
        for (char& ch : strFormat)
            ch = choices.Byte() % 8 == 0 ? static_cast<char>(choices.Between(1, 255))
                                         : "YMDhmslu yHS%-:."[choices.Byte() % 16];
        return strFormat;
    }
    /// The format with each letter printed by the C library.
    static string Formatted(const string& strFormat, const struct tm& tmTime, long iMicroseconds)
    {
        string strAll;
        for (char ch : strFormat)
        {
            const std::size_t iLetter = string("YMDhms").find(ch);
            const char szConversion[] = {'%', "YmdHMS?"[std::min<std::size_t>(iLetter, 6)], '\0'};
            char szText[16]           = {ch, '\0'};
            if (iLetter != string::npos)
                (void)strftime(szText, sizeof szText, szConversion, &tmTime);
            else if (ch == 'l' || ch == 'u')
                snprintf(szText, sizeof szText, ch == 'l' ? "%03ld" : "%06ld",
                         ch == 'l' ? iMicroseconds / 1000 : iMicroseconds);
            strAll += szText;
        }
        return strAll;
    }
    /// Returns the text that a call gives, or an empty one if it failed as it should.
    template <class TCall>
    static string Text(CFault& fault, TCall Call)
    {
        char szText[500]       = "";
        const string strThrown = fault.Run(
            [&]
            {
                const CString str = Call();
                Same("length", strlen(str.ToStr()), static_cast<std::size_t>(str.GetLength()));
                strncat(szText, str.ToStr(), sizeof szText - 1);
            });
        Failed(fault, strThrown, "-11 cstring.cpp char[m_iBufferSize]|-11 cstring.cpp char[iLen]");
        return szText;
    }
    template <class TCall>
    static void Print(CFault& fault, const string& strExpected, TCall Call)
    {
        const string strFound = Text(fault, Call);
        Same("text", fault.WasHit() ? "" : strExpected, strFound);
    }

    CInt m_int;
    CDbl m_dbl;
    CTime m_time;
    int m_iValue        = 0;
    double m_dValue     = 0;
    bool m_bSet         = false;
    struct timeval m_tv = {};
};

inline const SOperation<CNumbers> CNumbers::s_aOperations[] = {
    {"SetInt", &CNumbers::SetInt},     {"SetDbl", &CNumbers::SetDbl},     {"SetTime", &CNumbers::SetTime},
    {"PrintInt", &CNumbers::PrintInt}, {"PrintDbl", &CNumbers::PrintDbl}, {"PrintTime", &CNumbers::PrintTime},
    {"ReprTime", &CNumbers::ReprTime}, {"Stamp", &CNumbers::Stamp}};

#endif
