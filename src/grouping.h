// Thousands separators, for the units that print numbers.
#ifndef BEDPLATE_GROUPING_H
#define BEDPLATE_GROUPING_H

#include <cstddef>
#include <cstring>

namespace bedplate_private
{
/// How many bytes iDigits digits take with their separators.
constexpr std::size_t GroupedSize(std::size_t iDigits) { return iDigits + iDigits / 3; }

/// Writes the digits with a comma before every third from the right; returns the end of what was written.
inline char* WriteGrouped(char* pszTo, const char* pszDigits, std::size_t iDigits)
{
    const char* const pszEnd = pszDigits + iDigits;
    for (std::size_t i = iDigits % 3; i > 0; --i)
        *pszTo++ = *pszDigits++;
    for (bool bComma = iDigits % 3 != 0; pszDigits != pszEnd; bComma = true, pszDigits += 3)
    {
        if (bComma)
            *pszTo++ = ',';
        memcpy(pszTo, pszDigits, 3);
        pszTo += 3;
    }
    return pszTo;
}
} // namespace bedplate_private

#endif
