// Thousands separators, for the units that print numbers.
#ifndef BEDPLATE_GROUPING_H
#define BEDPLATE_GROUPING_H

#include <cstddef>

namespace bedplate_private
{
/// How many bytes iDigits digits take with their separators.
constexpr std::size_t GroupedSize(std::size_t iDigits) { return iDigits + iDigits / 3; }

/// Writes the digits with a comma before every third from the right; returns the end of what was written.
inline char* WriteGrouped(char* pszTo, const char* pszDigits, std::size_t iDigits)
{
    for (std::size_t i = 0; i < iDigits; ++i)
    {
        if (i > 0 && (iDigits - i) % 3 == 0)
            *pszTo++ = ',';
        *pszTo++ = pszDigits[i];
    }
    return pszTo;
}
} // namespace bedplate_private

#endif
