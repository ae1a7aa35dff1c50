// Reading numbers from a CString.
#include "cstring.h"

#include "base/read_dbl.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <system_error>

namespace
{
bool IsDigit(char ch) { return ch >= '0' && ch <= '9'; }

/// Reads a text as ToInt does. Most are a few digits, perhaps behind blanks and a sign, for which strtol takes 1.3 to 1.9 times as
/// long; returns false for all others.
template <class TInt>
bool ReadShort(const char* psz, TInt& iValue)
{
    while (*psz == ' ' || (*psz >= '\t' && *psz <= '\r'))
        ++psz;
    const bool bNegative = *psz == '-';
    psz += *psz == '-' || *psz == '+' ? 1 : 0;
    const char* const pszDigits = psz;
    for (iValue = 0; IsDigit(*psz) && psz - pszDigits < std::numeric_limits<TInt>::digits10; ++psz)
        iValue = iValue * 10 + (*psz - '0');
    iValue = bNegative ? -iValue : iValue;
    return psz != pszDigits && !IsDigit(*psz);
}

/// Reads a text that is a number and nothing else; returns whether it is one that a TInt holds.
template <class TInt>
bool ParseWhole(const CString& strText, TInt* piValue)
{
    const char* psz          = strText.ToStr();
    const char* const pszEnd = psz + strText.GetLength();
    psz += psz[0] == '+' && IsDigit(psz[1]) ? 1 : 0;
    TInt iValue;
    const auto result = std::from_chars(psz, pszEnd, iValue);
    if (result.ec != std::errc() || result.ptr != pszEnd)
        return false;
    if (piValue != nullptr)
        *piValue = iValue;
    return true;
}
} // namespace

int CString::ToInt() const
{
    int iValue;
    if (ReadShort(ToStr(), iValue))
        return iValue;
    // long is wider than int on 64-bit systems; the result is the same everywhere.
    return static_cast<int>(std::clamp<long>(strtol(ToStr(), nullptr, 10), INT_MIN, INT_MAX));
}

long long CString::ToInt64() const
{
    long long iValue;
    return ReadShort(ToStr(), iValue) ? iValue : strtoll(ToStr(), nullptr, 10);
}

double CString::ToDbl() const
{
    const char* pszEnd;
    return bedplate_private::ReadDbl(ToStr(), &pszEnd);
}

bool CString::ParseInt(int* piValue) const { return ParseWhole(*this, piValue); }
bool CString::ParseInt64(long long* piValue) const { return ParseWhole(*this, piValue); }

bool CString::ParseDbl(double* pdValue) const
{
    const char* pszEnd;
    const double dValue = bedplate_private::ReadDbl(ToStr(), &pszEnd);
    // strtod reads more: behind white space, hexadecimal numbers, infinities.
    if (m_iSize < 1 || pszEnd != ToStr() + m_iSize || !std::isfinite(dValue) ||
        isspace(static_cast<unsigned char>(*ToStr())) != 0 || strpbrk(ToStr(), "xX") != nullptr)
        return false;
    if (pdValue != nullptr)
        *pdValue = dValue;
    return true;
}
