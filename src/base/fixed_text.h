// The text of a double in fixed-point notation, for the units that print doubles.
#ifndef BEDPLATE_FIXED_TEXT_H
#define BEDPLATE_FIXED_TEXT_H

#include "base/number_locale.h"

#include <cstddef>

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
    CFixedPrinter() : m_bPlain(AreNumbersPlain()) {}

    /// Writes what "%.*f" prints to pszTo, of FixedTextSize(iDecimals) bytes; returns its length.
    std::size_t Print(char* pszTo, double dValue, int iDecimals) const;

private:
    bool m_bPlain;
};
} // namespace bedplate_private

#endif
