// The text of an integer, for CInt and CInt64.
#ifndef BEDPLATE_INT_TEXT_H
#define BEDPLATE_INT_TEXT_H

#include "base/digits.h"
#include "strings/string_design.h"

#include <charconv>
#include <cstddef>
#include <limits>
#include <type_traits>

namespace bedplate_private
{
/// Returns iValue in decimal, with a comma before every third digit from the right if bGroup is true.
template <class TInt>
CString IntText(TInt iValue, bool bGroup)
{
    using TUnsigned                  = std::make_unsigned_t<TInt>;
    constexpr std::size_t iMaxDigits = std::numeric_limits<TUnsigned>::digits10 + 1;
    if (!bGroup || (iValue > -1000 && iValue < 1000))
    {
        char szText[1 + iMaxDigits];
        const char* pszEnd = std::to_chars(szText, szText + sizeof szText, iValue).ptr;
        return StringDesign::FromPrinted({szText, static_cast<std::size_t>(pszEnd - szText)});
    }
    // The magnitude of the lowest number has no signed integer.
    const TUnsigned uMagnitude =
        iValue < 0 ? TUnsigned{0} - static_cast<TUnsigned>(iValue) : static_cast<TUnsigned>(iValue);
    char szDigits[iMaxDigits] = {}; // g++ believes that the digits might not fit and stay unwritten
    const char* pszEnd        = std::to_chars(szDigits, szDigits + iMaxDigits, uMagnitude).ptr;

    char szText[1 + GroupedSize(iMaxDigits)];
    char* pszTo = szText;
    if (iValue < 0)
        *pszTo++ = '-';
    pszTo = WriteGrouped(pszTo, szDigits, static_cast<std::size_t>(pszEnd - szDigits));
    return StringDesign::FromBytes({szText, static_cast<std::size_t>(pszTo - szText)});
}
} // namespace bedplate_private

#endif
