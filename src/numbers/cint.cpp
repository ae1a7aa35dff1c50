#include "cint.h"

#include "base/digits.h"
#include "strings/string_design.h"

#include <charconv>
#include <cstddef>

using bedplate_private::GroupedSize;
using bedplate_private::StringDesign;
using bedplate_private::WriteGrouped;

CInt::CInt(int iValue) : m_iValue(iValue) {}

CString CInt::ToFmtStr(bool bGroup) const
{
    constexpr std::size_t iMaxDigits = 10;
    if (!bGroup || (m_iValue > -1000 && m_iValue < 1000))
    {
        char szText[1 + iMaxDigits];
        const char* pszEnd = std::to_chars(szText, szText + sizeof szText, m_iValue).ptr;
        return StringDesign::FromPrinted({szText, static_cast<std::size_t>(pszEnd - szText)});
    }
    // The magnitude of INT_MIN is no int.
    const unsigned uMagnitude =
        m_iValue < 0 ? 0u - static_cast<unsigned>(m_iValue) : static_cast<unsigned>(m_iValue);
    char szDigits[iMaxDigits];
    const char* pszEnd = std::to_chars(szDigits, szDigits + iMaxDigits, uMagnitude).ptr;

    char szText[1 + GroupedSize(iMaxDigits)];
    char* pszTo = szText;
    if (m_iValue < 0)
        *pszTo++ = '-';
    pszTo = WriteGrouped(pszTo, szDigits, static_cast<std::size_t>(pszEnd - szDigits));
    return StringDesign::FromBytes({szText, static_cast<std::size_t>(pszTo - szText)});
}
