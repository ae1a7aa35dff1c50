#include "base/fixed_text.h"

#include "base/digits.h"
#include "base/short_bytes.h"

#include <charconv>
#include <cstdint>
#include <cstdio>

namespace bedplate_private
{
namespace
{
constexpr std::uint32_t s_auPowersOfTen[] = {1,      10,      100,      1000,      10000,
                                             100000, 1000000, 10000000, 100000000, 1000000000};
constexpr int s_iMaxDecimals              = 9;
constexpr int s_iMantissaBits             = 52;

/// A number of moderate size as its integer part and its fraction in units of 2^-64, both exact.
class CParts
{
public:
    /// Returns whether the number, whose sign does not count, can be taken apart so.
    bool Take(double dValue)
    {
        const std::uint64_t uBits     = BitsOf(dValue);
        const int iExponent           = static_cast<int>(uBits >> s_iMantissaBits & 0x7FF) - 1023;
        const std::uint64_t uImplicit = std::uint64_t{1} << s_iMantissaBits;
        const std::uint64_t uMantissa = (uBits & (uImplicit - 1)) | uImplicit;
        m_uInteger                    = 0;
        m_uFraction                   = 0;
        if (uBits << 1 == 0)
            return true;
        if (iExponent < s_iMantissaBits - 64 || iExponent >= 64)
            return false;
        if (iExponent >= s_iMantissaBits)
        {
            m_uInteger = uMantissa << (iExponent - s_iMantissaBits);
            return true;
        }
        if (iExponent >= 0)
            m_uInteger = uMantissa >> (s_iMantissaBits - iExponent);
        m_uFraction =
            uMantissa << (64 - s_iMantissaBits + iExponent); // the bits of the integer are shifted out
        return true;
    }

    /// Makes the fraction one in units of 10^-iDecimals, rounded to the nearest, a tie to the even one.
    void Round(int iDecimals)
    {
        // The product has 96 bits: the upper 32 are the digits, the others tell how much more there is.
        const std::uint32_t uPower = s_auPowersOfTen[iDecimals];
        const std::uint64_t uLow   = (m_uFraction & 0xFFFFFFFF) * uPower;
        const std::uint64_t uHigh  = (m_uFraction >> 32) * uPower + (uLow >> 32);
        const std::uint64_t uRest  = uHigh << 32 | (uLow & 0xFFFFFFFF);
        const std::uint64_t uHalf  = std::uint64_t{1} << 63;
        m_uFraction                = uHigh >> 32;
        const bool bOdd            = ((iDecimals > 0 ? m_uFraction : m_uInteger) & 1) != 0;
        if (uRest > uHalf || (uRest == uHalf && bOdd))
            ++m_uFraction;
        if (m_uFraction == uPower)
        {
            m_uFraction = 0;
            ++m_uInteger;
        }
    }

    /// Writes the integer part to pszTo; returns the end of what was written.
    char* WriteInteger(char* pszTo) const
    {
        constexpr int iMaxDigits = 20;
        if (m_uInteger <= UINT32_MAX) // one word: numbers of two take 1.15 times as long at 32 bits
            return std::to_chars(pszTo, pszTo + iMaxDigits, static_cast<std::uint32_t>(m_uInteger)).ptr;
        return std::to_chars(pszTo, pszTo + iMaxDigits, m_uInteger).ptr;
    }

    /// Writes the rounded fraction as iDecimals digits; returns the end of what was written.
    char* WriteFraction(char* pszTo, int iDecimals) const
    {
        WriteDigits(pszTo, iDecimals, static_cast<std::uint32_t>(m_uFraction));
        return pszTo + iDecimals;
    }

private:
    std::uint64_t m_uInteger;
    std::uint64_t m_uFraction;
};
} // namespace

std::size_t CFixedPrinter::Print(char* pszTo, double dValue, int iDecimals) const
{
    const std::size_t iSize = FixedTextSize(iDecimals);
    if (!m_bPlain)
        return static_cast<std::size_t>(snprintf(pszTo, iSize, "%.*f", iDecimals, dValue));
    CParts parts;
    if (iDecimals > s_iMaxDecimals || !parts.Take(dValue))
    {
        const auto result = std::to_chars(pszTo, pszTo + iSize, dValue, std::chars_format::fixed, iDecimals);
        return static_cast<std::size_t>(result.ptr - pszTo);
    }
    parts.Round(iDecimals);
    char* psz = pszTo;
    if (__builtin_signbit(dValue))
        *psz++ = '-';
    psz = parts.WriteInteger(psz);
    if (iDecimals > 0)
    {
        *psz++ = '.';
        psz    = parts.WriteFraction(psz, iDecimals);
    }
    return static_cast<std::size_t>(psz - pszTo);
}
} // namespace bedplate_private
