// Reading numbers from a CString.
#include "cstring.h"

#include "base/read_dbl.h"

#include <algorithm>
#include <climits>
#include <cstdlib>

namespace
{
bool IsDigit(char ch) { return ch >= '0' && ch <= '9'; }
} // namespace

int CString::ToInt() const
{
    // Most texts are a few digits, perhaps behind blanks and a sign; strtol has the last word on all others.
    const char* psz = ToStr();
    while (*psz == ' ' || (*psz >= '\t' && *psz <= '\r'))
        ++psz;
    const bool bNegative = *psz == '-';
    psz += *psz == '-' || *psz == '+' ? 1 : 0;
    const char* const pszDigits = psz;
    int iValue                  = 0;
    for (; IsDigit(*psz) && psz - pszDigits < 9; ++psz)
        iValue = iValue * 10 + (*psz - '0');
    if (psz != pszDigits && !IsDigit(*psz))
        return bNegative ? -iValue : iValue;
    // long is wider than int on 64-bit systems; the result is the same everywhere.
    return static_cast<int>(std::clamp<long>(strtol(ToStr(), nullptr, 10), INT_MIN, INT_MAX));
}

double CString::ToDbl() const
{
    const char* pszEnd;
    return bedplate_private::ReadDbl(ToStr(), &pszEnd);
}
