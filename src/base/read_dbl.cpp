#include "base/read_dbl.h"

#include "base/number_locale.h"
#include "base/short_bytes.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace bedplate_private
{
namespace
{
// A short decimal number is its digits, an integer, times a power of ten. The product of the integer and the upper 64 bits
// of the power tells the upper 64 bits of the result so well that nearly always only one double can be meant; strtod has
// the last word on all other texts. This takes a third of its time. It uses no floating point, whose precision on x86 a
// program may lower.

/// The largest power of five that 64 bits hold is 5^27.
constexpr int s_iMaxPower = 27;

constexpr int s_iMaxDigits = 19;

/// The upper 64 bits of 10^-27 to 10^27, the first of which is set; what lies below them is cut off.
struct CPowersOfTen
{
    constexpr CPowersOfTen() : m_auBits()
    {
        std::uint64_t uPower = 1;
        for (int i = 0; i <= s_iMaxPower; ++i, uPower *= 5) // a power of five has the same bits
        {
            m_auBits[s_iMaxPower - i] = i > 0 ? InverseBits(uPower) : 0;
            m_auBits[s_iMaxPower + i] = uPower << __builtin_clzll(uPower);
        }
    }

    /// The upper bits of 1 / uDivisor, by long division.
    static constexpr std::uint64_t InverseBits(std::uint64_t uDivisor)
    {
        std::uint64_t uBits = 0;
        for (std::uint64_t uRest = 1; uBits >> 63 == 0;)
        {
            uRest *= 2;
            uBits = uBits << 1 | (uRest >= uDivisor ? 1 : 0);
            uRest -= uRest >= uDivisor ? uDivisor : 0;
        }
        return uBits;
    }

    std::uint64_t m_auBits[2 * s_iMaxPower + 1];
};

constexpr CPowersOfTen s_powers;

/// Returns the upper 64 bits of a product of 128, and the first of the lower ones.
std::uint64_t MultiplyHigh(std::uint64_t uLeft, std::uint64_t uRight, unsigned& uNextBit)
{
#ifdef __SIZEOF_INT128__
    __extension__ using TWide = unsigned __int128;
    const TWide uProduct      = static_cast<TWide>(uLeft) * uRight;
    uNextBit                  = static_cast<unsigned>(uProduct >> 63) & 1;
    return static_cast<std::uint64_t>(uProduct >> 64);
#else
    const std::uint64_t uLeftLow = uLeft & UINT32_MAX, uLeftHigh = uLeft >> 32;
    const std::uint64_t uRightLow = uRight & UINT32_MAX, uRightHigh = uRight >> 32;
    const std::uint64_t uMiddle = uLeftHigh * uRightLow + (uLeftLow * uRightLow >> 32);
    const std::uint64_t uOther  = uLeftLow * uRightHigh + (uMiddle & UINT32_MAX);
    uNextBit                    = static_cast<unsigned>(uOther >> 31) & 1;
    return uLeftHigh * uRightHigh + (uMiddle >> 32) + (uOther >> 32);
#endif
}

/// A number as it stands in a text.
class CDecimal
{
public:
    /// Reads all of a text; returns the place of its NUL, or null if the text is anything but a short number.
    const char* Read(const char* psz)
    {
        m_bNegative = *psz == '-';
        psz += *psz == '-' || *psz == '+' ? 1 : 0;
        const char* const pszDigits = psz;
        psz                         = ReadDigits(psz);
        std::ptrdiff_t iDigits      = psz - pszDigits;
        if (*psz == '.')
        {
            const char* const pszFraction = psz + 1;
            psz                           = ReadDigits(pszFraction);
            m_iPower                      = static_cast<int>(pszFraction - psz);
            iDigits += psz - pszFraction;
        }
        if (iDigits < 1 || iDigits > s_iMaxDigits)
            return nullptr;
        if (*psz == 'e' || *psz == 'E')
            psz = ReadPower(psz);
        return *psz == '\0' && m_iPower >= -s_iMaxPower && m_iPower <= s_iMaxPower ? psz : nullptr;
    }

    /// Stores the double nearest to the number; returns false if that is not certain.
    bool Round(double& dValue) const
    {
        dValue = m_bNegative ? -0.0 : 0.0;
        if (m_uDigits == 0)
            return true;
        const int iZeros = __builtin_clzll(m_uDigits);
        unsigned uNextBit;
        std::uint64_t uUpper =
            MultiplyHigh(m_uDigits << iZeros, s_powers.m_auBits[m_iPower + s_iMaxPower], uNextBit);
        const int iCarried = static_cast<int>(uUpper >> 63);
        if (iCarried == 0)
            uUpper = uUpper << 1 | uNextBit;
        // The true bits are less than three units above these. A tie, half a unit of the double, is never certain.
        constexpr unsigned uHalf = 0x400;
        const unsigned uRest     = static_cast<unsigned>(uUpper) & (2 * uHalf - 1);
        if (uRest > uHalf - 3 && uRest <= uHalf)
            return false;
        // The power lies between 2^n and 2^(n + 1), n being its logarithm. The mantissa's first bit, which a double leaves
        // out, adds 1 to the exponent.
        const int iLogarithm      = m_iPower * 217706 >> 16;
        const int iExponent       = 1022 + 63 - iZeros + iCarried + iLogarithm;
        const std::uint64_t uBits = (static_cast<std::uint64_t>(iExponent) << 52) + (uUpper >> 11) +
                                    (uRest > uHalf ? 1 : 0) + BitsOf(dValue);
        memcpy(&dValue, &uBits, sizeof dValue);
        return true;
    }

private:
    /// Appends digits, the first of them in one word: in two, all takes 1.2 times as long at 32 bits.
    const char* ReadDigits(const char* psz)
    {
        constexpr std::uint32_t uMost = UINT32_MAX / 10 - 1;
        if (m_uDigits <= uMost)
        {
            std::uint32_t uDigits = static_cast<std::uint32_t>(m_uDigits);
            for (; IsDigit(*psz) && uDigits <= uMost; ++psz)
                uDigits = uDigits * 10 + static_cast<std::uint32_t>(*psz - '0');
            m_uDigits = uDigits;
        }
        for (; IsDigit(*psz); ++psz)
            m_uDigits = m_uDigits * 10 + static_cast<std::uint64_t>(*psz - '0');
        return psz;
    }

    /// Adds the power behind an "e", of at most two digits; returns the place where it ends, that of the "e" if there is none.
    const char* ReadPower(const char* const pszE)
    {
        const char* psz      = pszE + 1;
        const bool bNegative = *psz == '-';
        psz += *psz == '-' || *psz == '+' ? 1 : 0;
        if (!IsDigit(*psz))
            return pszE;
        int iPower = *psz++ - '0';
        if (IsDigit(*psz))
            iPower = iPower * 10 + (*psz++ - '0');
        m_iPower += bNegative ? -iPower : iPower;
        return psz;
    }

    static bool IsDigit(char ch) { return ch >= '0' && ch <= '9'; }

    std::uint64_t m_uDigits = 0;
    int m_iPower            = 0;
    bool m_bNegative        = false;
};
} // namespace

double ReadDbl(const char* pszText, const char** ppszEnd)
{
    CDecimal decimal;
    double dValue;
    *ppszEnd = decimal.Read(pszText);
    if (*ppszEnd != nullptr && decimal.Round(dValue) && AreNumbersPlain())
        return dValue;
    char* pszEnd;
    dValue   = strtod(pszText, &pszEnd);
    *ppszEnd = pszEnd;
    return dValue;
}
} // namespace bedplate_private
