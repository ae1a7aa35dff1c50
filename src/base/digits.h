// Writing digits, for the units that print numbers.
#ifndef BEDPLATE_DIGITS_H
#define BEDPLATE_DIGITS_H

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace bedplate_private
{
/// Writes the last iCount digits of a number to pszTo, zeros where it has fewer; returns what is left of it.
inline std::uint32_t WriteDigits(char* pszTo, int iCount, std::uint32_t uNumber)
{
    for (char* psz = pszTo + iCount; psz != pszTo; uNumber /= 10)
        *--psz = static_cast<char>('0' + uNumber % 10);
    return uNumber;
}

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
