#include "cdbl.h"

#include "base/digits.h"
#include "base/fixed_text.h"
#include "strings/string_design.h"

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
    const bool bTrim = iDecimals < 0;
    if (iDecimals > s_iMaxDecimals || iDecimals < -s_iMaxDecimals)
        iDecimals = s_iMaxDecimals;
    else if (bTrim)
        iDecimals = -iDecimals;

    const bool bNegative = m_dValue < 0;
    char szNumber[FixedTextSize(s_iMaxDecimals)];
    const std::size_t iNumber = CFixedPrinter().Print(szNumber, bNegative ? -m_dValue : m_dValue, iDecimals);
    const char* const pszEnd  = szNumber + iNumber;
    const char* pszPoint      = static_cast<const char*>(memchr(szNumber, '.', iNumber));
    if (pszPoint == nullptr)
        pszPoint = pszEnd;
    const std::size_t iInteger = static_cast<std::size_t>(pszPoint - szNumber);

    if (!bTrim && !(bGroup && iInteger > 3))
        return StringDesign::Concat({bNegative ? "-" : "", {szNumber, iNumber}});

    char szText[1 + GroupedSize(FixedTextSize(s_iMaxDecimals))];
    char* pszTo = szText;
    if (bNegative)
        *pszTo++ = '-';
    if (bGroup && iInteger > 3 && std::isfinite(m_dValue))
    {
        pszTo = WriteGrouped(pszTo, szNumber, iInteger);
    }
    else
    {
        memcpy(pszTo, szNumber, iInteger);
        pszTo += iInteger;
    }

    const char* pszLast = pszEnd;
    while (bTrim && pszLast > pszPoint + 1 && pszLast[-1] == '0')
        --pszLast;
    if (pszLast > pszPoint + 1)
    {
        const std::size_t iFraction = static_cast<std::size_t>(pszLast - pszPoint);
        memcpy(pszTo, pszPoint, iFraction);
        pszTo += iFraction;
    }
    return StringDesign::FromBytes({szText, static_cast<std::size_t>(pszTo - szText)});
}
