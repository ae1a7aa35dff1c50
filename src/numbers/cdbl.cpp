#include "cdbl.h"

#include "base/digits.h"
#include "base/fixed_text.h"
#include "strings/string_design.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>

using bedplate_private::CFixedPrinter;
using bedplate_private::FixedTextSize;
using bedplate_private::GroupedSize;
using bedplate_private::StringDesign;
using bedplate_private::WriteGrouped;

namespace
{
constexpr int s_iMaxDecimals = 15;
}

CDbl::CDbl(double dValue) : m_dValue(dValue) {}

CString CDbl::ToFmtStr(int iDecimals, bool bGroup) const
{
    const bool bTrim     = iDecimals < 0;
    const bool bNegative = m_dValue < 0;
    const int iMost = std::min(bTrim ? -std::max(iDecimals, -s_iMaxDecimals) : iDecimals, s_iMaxDecimals);
    char szNumber[FixedTextSize(s_iMaxDecimals)];
    const std::size_t iNumber = CFixedPrinter().Print(szNumber, bNegative ? -m_dValue : m_dValue, iMost);

    const char* pszEnd   = szNumber + iNumber;
    const char* pszPoint = static_cast<const char*>(memchr(szNumber, '.', iNumber));
    if (pszPoint == nullptr)
        pszPoint = pszEnd;
    while (bTrim && pszEnd > pszPoint && (pszEnd[-1] == '0' || pszEnd[-1] == '.'))
        --pszEnd;

    char szText[1 + GroupedSize(FixedTextSize(s_iMaxDecimals))];
    char* pszTo = szText;
    if (bNegative)
        *pszTo++ = '-';
    const std::size_t iInteger = static_cast<std::size_t>(pszPoint - szNumber);
    if (bGroup && iInteger > 3 && std::isfinite(m_dValue))
        pszTo = WriteGrouped(pszTo, szNumber, iInteger);
    else
        pszTo = std::copy_n(szNumber, iInteger, pszTo);
    pszTo = std::copy(pszPoint, pszEnd, pszTo);
    return StringDesign::FromBytes({szText, static_cast<std::size_t>(pszTo - szText)});
}
