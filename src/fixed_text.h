// The text of a double in fixed-point notation, for the units that print doubles.
#ifndef BEDPLATE_FIXED_TEXT_H
#define BEDPLATE_FIXED_TEXT_H

#include <cfenv>
#include <charconv>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <langinfo.h>

namespace bedplate_private
{
/// How many bytes the longest text with iDecimals decimals takes: a sign, 309 digits, a decimal point of several
/// bytes and a NUL.
constexpr std::size_t FixedTextSize(int iDecimals)
{
    return 1 + 309 + 16 + static_cast<std::size_t>(iDecimals) + 1;
}

/// Prints doubles in fixed-point notation. It looks at the locale and the rounding mode when it is made, and is not meant
/// to outlive the operation that makes it.
class CFixedPrinter
{
public:
    /// Writes what "%.*f" prints to pszTo, of FixedTextSize(iDecimals) bytes; returns its length.
    std::size_t Print(char* pszTo, double dValue, int iDecimals) const
    {
        const std::size_t iSize = FixedTextSize(iDecimals);
        if (!m_bPlain)
            return static_cast<std::size_t>(snprintf(pszTo, iSize, "%.*f", iDecimals, dValue));
        const auto result = std::to_chars(pszTo, pszTo + iSize, dValue, std::chars_format::fixed, iDecimals);
        return static_cast<std::size_t>(result.ptr - pszTo);
    }

private:
    // to_chars is several times as fast, but knows neither the locale's decimal point nor other rounding modes.
    bool m_bPlain = fegetround() == FE_TONEAREST && strcmp(nl_langinfo(RADIXCHAR), ".") == 0;
};
} // namespace bedplate_private

#endif
