#include "strings/printer.h"

#include "base/fixed_text.h"
#include "base/short_bytes.h"
#include "strings/print_limit.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstdio>
#include <cstring>
#include <utility>

namespace bedplate_private
{
namespace
{
/// Returns the next percent sign, or the NUL. What stands between two conversions is mostly short.
const char* FindPercent(const char* psz)
{
    constexpr int iFew = 3;
    for (int i = 0; i < iFew; ++i, ++psz)
    {
        if (*psz == '%' || *psz == '\0')
            return psz;
    }
    return strchrnul(psz, '%');
}
} // namespace

CPrinter::CPrinter(const char* pszFormat, va_list args) : m_pszFormat(pszFormat)
{
    va_copy(m_args, args);
    va_copy(m_next, args);
    const bool bCollected = Collect();
    va_end(m_next);
    if (bCollected)
        return;
    const bool bTooLong = m_bTooLong || m_iGathered - m_iInPieces > INT_MAX - m_iPrinted;
    m_iPieces           = -1;
    m_iPrinted          = -1;
    // Texts that cannot be are refused at once: vsnprintf counts them character by character.
    if (bTooLong)
        errno = EOVERFLOW;
    else if (IsPrintLimitReached(pszFormat, args, s_iMaxWidth))
        errno = ENOMEM;
    else
        PrintTrial();
}

/// Has vsnprintf print into the scratch memory, where short texts have room.
void CPrinter::PrintTrial()
{
    va_copy(m_next, m_args);
    m_iPrinted = vsnprintf(m_szScratch, s_iScratch, m_pszFormat, m_next);
    va_end(m_next);
    if (m_iPrinted >= 0 && m_iPrinted < s_iScratch)
        m_iTextSize = static_cast<int>(strlen(m_szScratch));
    else
        m_iTextSize = m_iPrinted;
}

bool CPrinter::MayRead(const char* pszBytes, int iSize) const
{
    if (m_iPieces < 0)
        return m_iPrinted >= s_iScratch;
    return std::any_of(m_aPieces, m_aPieces + m_iPieces,
                       [=](const CPiece& piece) { return PointsInto(piece.m_pszBytes, pszBytes, iSize); });
}

bool CPrinter::Write(char* pszTo, int iCapacity)
{
    if (m_iPieces < 0 && m_iPrinted < s_iScratch)
    {
        const int iCount = std::min(m_iPrinted, iCapacity - 1);
        memcpy(pszTo, m_szScratch, static_cast<std::size_t>(iCount));
        pszTo[iCount] = '\0';
        return true;
    }
    if (m_iPieces < 0)
    {
        if (vsnprintf(pszTo, static_cast<std::size_t>(iCapacity), m_pszFormat, m_args) != m_iPrinted)
            return false;
        m_iTextSize = static_cast<int>(strlen(pszTo));
        return true;
    }
    pszTo[m_iPrinted] = '\0';
    for (const CPiece* pPiece = m_aPieces; pPiece != m_aPieces + m_iPieces; ++pPiece)
    {
        const std::size_t iCount = static_cast<std::size_t>(pPiece->m_iCount);
        if (pPiece->m_pszBytes != nullptr)
            CopyBytes(pszTo, pPiece->m_pszBytes, iCount);
        else
            memset(pszTo, pPiece->m_chFill, iCount);
        pszTo += iCount;
    }
    return true;
}

// ---- Taking the format apart ------------------------------------------------------------------------------

bool CPrinter::Collect()
{
    for (const char* psz = m_pszFormat;;)
    {
        const char* pszPercent = FindPercent(psz);
        if (pszPercent != psz && !AddBytes(psz, pszPercent - psz))
            return false;
        if (*pszPercent == '\0')
            break;
        psz               = pszPercent + 1;
        const bool bPlain = *psz == 's' || *psz == 'd';
        if (bPlain && !ConvertPlain(*psz++))
            return false;
        if (bPlain)
            continue;
        CSpec spec;
        if (!ParseSpec(psz, spec) || !Convert(spec))
            return false;
    }
    const bool bFinished = FinishGathering();
    m_iTextSize          = m_iPrinted;
    return bFinished;
}

/// Converts what most formats ask for: %s and %d with nothing between.
bool CPrinter::ConvertPlain(char chType)
{
    if (chType == 's')
    {
        const char* pszText = va_arg(m_next, const char*);
        return pszText != nullptr && AddBytes(pszText, static_cast<std::int64_t>(strlen(pszText)));
    }
    const auto result = std::to_chars(Gathering(), Gathering() + Space(), va_arg(m_next, int));
    AddGathered(static_cast<int>(result.ptr - Gathering()));
    return result.ec == std::errc();
}

/// Reads a conversion behind its percent sign, and moves psz behind it.
bool CPrinter::ParseSpec(const char*& psz, CSpec& spec)
{
    spec = {false, false, 0, -1, '\0', '\0'};
    for (; *psz == '-' || *psz == '0'; ++psz)
        (*psz == '-' ? spec.m_bLeft : spec.m_bZero) = true;
    if (!ParseCount(psz, spec.m_iWidth))
        return false;
    if (spec.m_iWidth < 0) // from an argument
    {
        spec.m_bLeft  = true;
        spec.m_iWidth = -spec.m_iWidth;
    }
    if (*psz == '.')
    {
        spec.m_iPrecision = 0;
        if (!ParseCount(++psz, spec.m_iPrecision))
            return false;
    }
    if (*psz == 'l' || *psz == 'z')
        spec.m_chLength = *psz++;
    if (spec.m_chLength == 'l' && *psz == 'l')
    {
        spec.m_chLength = 'L';
        ++psz;
    }
    spec.m_chType = *psz++;
    return true;
}

/// Reads a width or a precision: digits, a star for an argument, or nothing.
bool CPrinter::ParseCount(const char*& psz, int& iCount)
{
    if (*psz == '*')
    {
        ++psz;
        iCount = va_arg(m_next, int);
        return iCount != INT_MIN;
    }
    std::int64_t iNumber = 0;
    for (; *psz >= '0' && *psz <= '9' && iNumber <= INT_MAX; ++psz)
        iNumber = iNumber * 10 + (*psz - '0');
    iCount = static_cast<int>(iNumber);
    return iNumber <= INT_MAX;
}

bool CPrinter::Convert(const CSpec& spec)
{
    switch (spec.m_chType)
    {
    case 'd':
    case 'i':
        return ConvertSigned(spec);
    case 'u':
    case 'x':
    case 'X':
        return ConvertUnsigned(spec);
    case 's':
        return ConvertText(spec);
    case 'c':
        return ConvertChar(spec);
    case 'f':
        return ConvertDouble(spec);
    case '%':
        return spec.m_iWidth == 0 && spec.m_iPrecision < 0 && spec.m_chLength == '\0' && AddBytes("%", 1);
    default:
        return false;
    }
}

// ---- Conversions ------------------------------------------------------------------------------------------

bool CPrinter::ConvertSigned(const CSpec& spec)
{
    switch (spec.m_chLength)
    {
    case '\0':
        return AddInteger(spec, va_arg(m_next, int), 10);
    case 'l':
        return AddInteger(spec, va_arg(m_next, long), 10);
    case 'L':
        return AddInteger(spec, va_arg(m_next, long long), 10);
    default:
        return false;
    }
}

bool CPrinter::ConvertUnsigned(const CSpec& spec)
{
    const int iBase = spec.m_chType == 'u' ? 10 : 16;
    switch (spec.m_chLength)
    {
    case '\0':
        return AddInteger(spec, va_arg(m_next, unsigned), iBase);
    case 'l':
        return AddInteger(spec, va_arg(m_next, unsigned long), iBase);
    case 'L':
        return AddInteger(spec, va_arg(m_next, unsigned long long), iBase);
    default:
        return AddInteger(spec, va_arg(m_next, std::size_t), iBase);
    }
}

template <class TInt>
bool CPrinter::AddInteger(const CSpec& spec, TInt iValue, int iBase)
{
    char* const pszDigits = Gathering();
    const auto result     = std::to_chars(pszDigits, pszDigits + Space(), iValue, iBase);
    if (result.ec != std::errc() || spec.m_iPrecision >= 0)
        return false;
    if (spec.m_chType == 'X')
    {
        for (char* psz = pszDigits; psz != result.ptr; ++psz)
            *psz = static_cast<char>(*psz >= 'a' ? *psz - 'a' + 'A' : *psz);
    }
    return AddNumber(spec, static_cast<int>(result.ptr - pszDigits));
}

/// Texts are cut by a precision. How a null one prints depends on it, too.
bool CPrinter::ConvertText(const CSpec& spec)
{
    const char* pszText = spec.m_chLength == '\0' ? va_arg(m_next, const char*) : nullptr;
    if (pszText == nullptr || spec.m_bZero)
        return false;
    const std::size_t iCount = spec.m_iPrecision < 0
                                   ? strlen(pszText)
                                   : strnlen(pszText, static_cast<std::size_t>(spec.m_iPrecision));
    return iCount <= INT_MAX && AddPadded(spec, pszText, static_cast<int>(iCount));
}

bool CPrinter::ConvertChar(const CSpec& spec)
{
    if (spec.m_chLength != '\0' || spec.m_bZero || Space() == 0)
        return false;
    *Gathering() = static_cast<char>(va_arg(m_next, int));
    return *Gathering() != '\0' && AddNumber(spec, 1);
}

bool CPrinter::ConvertDouble(const CSpec& spec)
{
    const int iDecimals = spec.m_iPrecision < 0 ? 6 : spec.m_iPrecision;
    if (spec.m_chLength != '\0' || iDecimals > 30)
        return false;
    const double dValue = va_arg(m_next, double);
    if (static_cast<int>(FixedTextSize(iDecimals)) > Space() || dValue - dValue != 0)
        return false;
    return AddNumber(spec, static_cast<int>(CFixedPrinter().Print(Gathering(), dValue, iDecimals)));
}

// ---- Pieces -----------------------------------------------------------------------------------------------

/// Adds a number, or a character, whose iCount characters stand where bytes gather. Zeros go between sign and digits.
bool CPrinter::AddNumber(const CSpec& spec, int iCount)
{
    const int iSign = spec.m_bZero && !spec.m_bLeft && *Gathering() == '-' ? 1 : 0;
    const int iFill = std::max(spec.m_iWidth - iCount, 0);
    AddGathered(iSign);
    if (!spec.m_bLeft && !AddFill(spec.m_bZero ? '0' : ' ', iFill, iCount - iSign))
        return false;
    AddGathered(iCount - iSign);
    return !spec.m_bLeft || AddFill(' ', iFill);
}

bool CPrinter::AddPadded(const CSpec& spec, const char* pszBytes, int iCount)
{
    const int iFill = std::max(spec.m_iWidth - iCount, 0);
    return (spec.m_bLeft || AddFill(' ', iFill)) && AddBytes(pszBytes, iCount) &&
           (!spec.m_bLeft || AddFill(' ', iFill));
}

/// Adds chFill iCount times, before the iBehind bytes that stand where bytes gather.
bool CPrinter::AddFill(char chFill, int iCount, int iBehind)
{
    if (iCount == 0)
        return true;
    if (iCount > s_iShort || iCount > Space() - iBehind)
        return FinishGathering() && AddPiece(nullptr, iCount, chFill);
    memmove(Gathering() + iCount, Gathering(), static_cast<std::size_t>(iBehind));
    memset(Gathering(), chFill, static_cast<std::size_t>(iCount));
    AddGathered(iCount);
    return true;
}

bool CPrinter::AddBytes(const char* pszBytes, std::int64_t iCount)
{
    if (iCount > s_iShort || iCount > Space())
        return FinishGathering() && AddPiece(pszBytes, iCount, '\0');
    CopyBytes(Gathering(), pszBytes, static_cast<std::size_t>(iCount));
    AddGathered(static_cast<int>(iCount));
    return true;
}

/// Makes a piece of what has gathered since the last one.
bool CPrinter::FinishGathering()
{
    const int iCount = m_iGathered - std::exchange(m_iInPieces, m_iGathered);
    return iCount == 0 || AddPiece(Gathering() - iCount, iCount, '\0');
}

bool CPrinter::AddPiece(const char* pszBytes, std::int64_t iCount, char chFill)
{
    m_bTooLong = iCount > INT_MAX - m_iPrinted;
    if (m_iPieces == s_iMaxPieces || m_bTooLong)
        return false;
    m_aPieces[m_iPieces++] = {pszBytes, static_cast<int>(iCount), chFill};
    m_iPrinted += static_cast<int>(iCount);
    return true;
}
} // namespace bedplate_private
