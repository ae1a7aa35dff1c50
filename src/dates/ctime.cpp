// CTime for the platform's own time_t, whatever the builder's flags say, and the text of a moment.
#ifndef __LP64__
#undef _TIME_BITS
#endif

#include "dates/time_design.h"

#include "base/digits.h"
#include "strings/text_builder.h"

#include <cstdint>
#include <cstdio>

namespace
{
/// Appends iValue with at least iWidth digits, as "%0*lld" does. The year and the month of a struct tm are counted from
/// others than ours, so either may be more than an int holds.
void AppendPadded(bedplate_private::CTextBuilder& text, int iWidth, long long iValue)
{
    char* const pszTo = text.Room(static_cast<std::size_t>(iWidth));
    const bool bFits =
        bedplate_private::WriteDigits(pszTo, iWidth, static_cast<std::uint32_t>(iValue)) == 0 && iValue >= 0;
    if (bFits)
        return text.Advance(static_cast<std::size_t>(iWidth));
    char szLong[1 + 10 + 1];
    const int iLength = snprintf(szLong, sizeof szLong, "%0*lld", iWidth, iValue);
    text.Append({szLong, static_cast<std::size_t>(iLength)});
}

/// Appends the field that a format letter stands for, or the character itself.
void AppendField(bedplate_private::CTextBuilder& text, char ch, const struct tm& tmTime, int iMicroseconds)
{
    switch (ch)
    {
    case 'Y':
        return AppendPadded(text, 4, tmTime.tm_year + 1900LL);
    case 'M':
        return AppendPadded(text, 2, tmTime.tm_mon + 1LL);
    case 'D':
        return AppendPadded(text, 2, tmTime.tm_mday);
    case 'h':
        return AppendPadded(text, 2, tmTime.tm_hour);
    case 'm':
        return AppendPadded(text, 2, tmTime.tm_min);
    case 's':
        return AppendPadded(text, 2, tmTime.tm_sec);
    case 'l':
        return AppendPadded(text, 3, iMicroseconds / 1000);
    case 'u':
        return AppendPadded(text, 6, iMicroseconds);
    default:
        text.Append({&ch, 1});
    }
}
} // namespace

CString bedplate_private::FormatTime(const char* pszFormat, const struct tm& tmTime, int iMicroseconds)
{
    CTextBuilder text;
    for (const char* psz = pszFormat; psz != nullptr && *psz != '\0'; ++psz)
        AppendField(text, *psz, tmTime, iMicroseconds);
    return text.Finish();
}
