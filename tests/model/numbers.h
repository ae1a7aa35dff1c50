// CInt, CDbl, CTime and the reading of numbers against the C library's printf, strftime and strtod.
#ifndef NUMBERS_H
#define NUMBERS_H

#include "engine.h"

#include <cctype>
#include <cerrno>
#include <cmath>
#include <regex>

/// Has no state: each operation makes a new number or time.
class CNumbers
{
public:
    static constexpr char s_szName[] = "numbers";
    static constexpr int s_iStates   = 1;
    static const SOperation<CNumbers> s_aOperations[4];

    void Prepare(int, CChoices&) {}
    void Check() {}

    void Dbl(CChoices& choices, CFault& fault)
    {
        // Ties, carries into the integer, and the ends of the words that hold its parts are among them.
        static constexpr double s_adOdd[] = {-0.0,         0.5,           0.125,  999.995,  1e9 - 1e-7,
                                             4294967295.5, 0x1p64 - 2048, 0x1p64, 0x1p-12,  0x1p-12 - 0x1p-65,
                                             4.9e-324,     -1e300,        2.5,    HUGE_VAL, -HUGE_VAL,
                                             NAN};
        const int iKind = choices.Byte() % 4, iLarge = iKind == 2 ? 50 : 990;
        const double dBits = choices.AnyInt() + (iKind == 2 ? choices.AnyInt() * 0x1p-31 : 0);
        const double dValue =
            iKind == 0
                ? s_adOdd[choices.Byte() % 16]
                : std::ldexp(dBits, iKind == 1 ? -3 : choices.Between(iKind == 2 ? -50 : -1070, iLarge));
        const int iDecimals  = choices.Byte() % 4 > 0 ? choices.Between(-17, 17) : choices.AnyInt();
        const bool bGroup    = choices.Byte() % 4 > 0;
        const int iPrecision = iDecimals < -15 || iDecimals > 15 ? 15 : std::abs(iDecimals);
        string strText       = Grouped(Printed("%.*f", iPrecision, dValue), bGroup);
        while (iDecimals < 0 && strText.find('.') != string::npos && strchr("0.", strText.back()) != nullptr)
            strText.pop_back();
        SameText(fault, strText, [&] { return CDbl(dValue).ToFmtStr(iDecimals, bGroup); });
    }
    void Read(CChoices& choices, CFault&)
    {
        const string strText  = DrawNumber(choices);
        const double dRead    = CString(strText.c_str()).ToDbl();
        const double dCorrect = strtod(strText.c_str(), nullptr);
        const bool bSame      = memcmp(&dRead, &dCorrect, sizeof dRead) == 0; // zeros and NaNs too
        Same("double", strText, bSame ? strText : std::to_string(dRead));
        const bool bNumber = std::regex_match(strText, s_number) && std::isfinite(dCorrect);
        double dParsed     = 7;
        Same("is a number", bNumber, CString(strText.c_str()).ParseDbl(&dParsed));
        Same("stored", true, dParsed == (bNumber ? dCorrect : 7));
        ReadInts(strText);
    }
    void Ints(CChoices& choices, CFault& fault)
    {
        const int iInt         = choices.Byte() % 2 == 0 ? choices.AnyInt() : choices.Between(-1100, 1100);
        const long long iLong  = choices.Byte() % 8 > 0 ? AnyInt64(choices) : LLONG_MIN;
        const bool bGroup      = choices.Byte() % 4 > 0;
        const string strDigits = std::to_string(iLong);
        SameText(fault, Grouped(std::to_string(iInt), bGroup), [&] { return CInt(iInt).ToFmtStr(bGroup); });
        SameText(fault, Grouped(strDigits, bGroup), [&] { return CInt64(iLong).ToFmtStr(bGroup); });
        ReadInts(strDigits);
        ReadInts(strDigits + (choices.Byte() % 2 == 0 ? "0000000000" : "x"));
    }
    void Time(CChoices& choices, CFault& fault)
    {
        string strFormat = choices.Text(12);
        for (char& ch : strFormat)
            ch = choices.Byte() % 4 == 0 ? ch : "YMDhmslu yHS%-:."[choices.Byte() % 16];
        const CTime time      = DrawTime(choices);
        const char* pszFormat = strFormat.empty() ? nullptr : AtTheEnd(strFormat);
        const string strRepr  = time.IsSet() ? Formatted("h:m:s.u", time) : "<CTime:unset>";
        SameText(fault, "-", [] { return CTime::GetTimeStamp("-"); });
        SameText(fault, strRepr, [&] { return time.Repr(); });
        SameText(fault, Formatted(strFormat, time), [&] { return time.ToFmtStr(pszFormat); });
    }

private:
    static string Grouped(string strText, bool bGroup)
    {
        for (std::size_t i = std::min(strText.find('.'), strText.size()); i > 3 && isdigit(strText[i - 4]);)
            strText.insert(i -= 3, bGroup ? "," : "");
        return strText;
    }
    /// Returns the text of a number: with any digits, a point and a power; of a double; one at or beside the middle between
    /// two doubles, which have 53 bits; or of what numbers are made of.
    static string DrawNumber(CChoices& choices)
    {
        const int iKind      = choices.Byte() % 4;
        const string strSign = choices.Byte() % 4 == 0 ? "-" : "";
        string strText;
        for (int i = choices.Between(0, iKind == 0 ? 21 : 10); i > 0; --i)
            strText += "0123456789.eE+- x"[choices.Byte() % (iKind == 3 ? 17 : 10)];
        if (iKind == 3)
            return strText;
        const std::uint64_t uBits = std::strtoull(strText.c_str(), nullptr, 10);
        const string strPower     = "e" + std::to_string(choices.Between(-30, 30));
        if (iKind == 0 && !strText.empty() && choices.Byte() % 2 == 0)
            strText.insert(static_cast<std::size_t>(choices.Byte()) % strText.size(), ".");
        else if (iKind == 1)
            strText = Printed("%.*g", choices.Between(1, 21),
                              std::ldexp(static_cast<double>(uBits), choices.Between(-200, 200)));
        else if (iKind == 2)
            strText = std::to_string(((std::uint64_t{1} << 53) + uBits * 2 + 1) * 10 - 1 +
                                     static_cast<std::uint64_t>(choices.Byte() % 3));
        return strSign + strText + (iKind == 2 ? "e-1" : iKind == 0 ? strPower : "");
    }
    static long long AnyInt64(CChoices& choices)
    {
        const auto uHigh = static_cast<unsigned long long>(choices.AnyInt());
        return static_cast<long long>(uHigh << 32 ^ static_cast<unsigned>(choices.AnyInt())) >>
               choices.Byte() % 64;
    }
    /// Decimal numbers.
    static inline const std::regex s_number{R"([+-]?(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?)"};
    static inline const std::regex s_whole{R"([+-]?\d+)"};

    /// Reads what a text begins with, as the C library does, the nearest int; and the text if it is all of a number.
    static void ReadInts(const string& strText)
    {
        const CString str(strText.c_str());
        errno                     = 0;
        const long long iExpected = std::strtoll(strText.c_str(), nullptr, 10);
        const bool bLong          = errno == 0 && std::regex_match(strText, s_whole);
        const bool bInt           = bLong && iExpected == static_cast<int>(iExpected);
        int iInt                  = 7;
        long long iLong           = 7;
        Same("long read", iExpected, str.ToInt64());
        Same("int read", std::clamp<long long>(iExpected, INT_MIN, INT_MAX), str.ToInt());
        Same("long", bLong, str.ParseInt64(&iLong));
        Same("long stored", bLong ? iExpected : 7, iLong);
        Same("int", bInt, str.ParseInt(&iInt));
        Same("int stored", bInt ? iExpected : 7, iInt);
    }
    static string Printed(const char* pszFormat, int iPrecision, double dValue)
    {
        char szText[400];
        snprintf(szText, sizeof szText, pszFormat, iPrecision, dValue);
        return szText;
    }
    /// Returns a time that is set, as the C library breaks it down, or unset.
    static CTime DrawTime(CChoices& choices)
    {
        CTime time;
        struct timeval tv = {};
        const int iKind   = choices.Byte() % 8;
        if (iKind > 0)
        {
            tv.tv_sec  = choices.AnyInt();
            tv.tv_usec = choices.Between(0, 999) * (iKind > 3 ? 1 : 1001);
            time.Set(tv);
        }
        Same("set", iKind > 0, time.IsSet());
        Same("moment", true, timercmp(&time.GetTimeVal(), &tv, ==));
        return time;
    }
    /// The format with each letter printed by the C library.
    static string Formatted(const string& strFormat, const CTime& time)
    {
        const struct tm tmTime       = time.IsSet() ? *localtime(&time.GetTimeVal().tv_sec) : tm();
        const string strMicroseconds = std::to_string(1000000 + time.GetTimeVal().tv_usec);
        string strAll;
        for (char ch : strFormat)
        {
            const std::size_t i = string("YMDhms%lu").find(ch);
            strAll += i == string::npos ? string(1, ch)
                      : i > 6           ? strMicroseconds.substr(1, i == 7 ? 3 : 6)
                                        : string("%") + "YmdHMS%"[i];
        }
        char szText[400];
        return string(szText, strftime(szText, sizeof szText, strAll.c_str(), &tmTime));
    }
};

inline const SOperation<CNumbers> CNumbers::s_aOperations[] = {
    {"Ints", &CNumbers::Ints}, {"Dbl", &CNumbers::Dbl}, {"Read", &CNumbers::Read}, {"Time", &CNumbers::Time}};

#endif
