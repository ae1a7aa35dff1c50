// Reading a CString: comparing, searching and taking parts out.
#include "cstring.h"

#include "exception.h"
#include "strings/search.h"
#include "strings/string_design.h"

#include <algorithm>

using bedplate_private::StringDesign;
using bedplate_private::ViewOf;

namespace
{
/// The text of every string that has no buffer.
const char s_szEmpty[10] = {};

/// Returns iCount characters from iStart on, or those up to a NUL.
CString Part(const CString& strText, int iStart, int iCount)
{
    const char* pszStart = strText.ToStr() + iStart;
    return StringDesign::FromBytes({pszStart, strnlen(pszStart, static_cast<std::size_t>(iCount))});
}
} // namespace

const char* CString::EmptyText() { return s_szEmpty; }

void CString::ThrowIndexOverflow() { throw CException("CString::operator[] - index overflow", 0); }

void CString::ThrowInvalidString(const char* pszMessage) { throw CException(pszMessage, 0); }

CString CString::Repr() const
{
    if (IsEmpty())
        return CString("<CStr: unset>");
    return StringDesign::Concat({"<CStr: ", ViewOf(*this), ">"});
}

bool CString::StartsWith(const char* pszText) const
{
    if (pszText == nullptr)
        return false;
    const std::size_t iBytes = strlen(pszText);
    return iBytes <= static_cast<std::size_t>(m_iSize) && memcmp(ToStr(), pszText, iBytes) == 0;
}

bool CString::EndsWith(const char* pszText) const
{
    if (pszText == nullptr)
        return false;
    const std::size_t iBytes = strlen(pszText);
    return iBytes <= static_cast<std::size_t>(m_iSize) &&
           memcmp(ToStr() + m_iSize - iBytes, pszText, iBytes) == 0;
}

int CString::Find(const char* pszWanted, int iStart) const
{
    iStart = std::max(iStart, 0);
    if (pszWanted == nullptr || *pszWanted == '\0' || iStart >= m_iSize)
        return -1;
    return PositionOf(bedplate_private::FindText(m_pszData + iStart,
                                                 static_cast<std::size_t>(m_iSize - iStart), pszWanted));
}

CString CString::Left(int iCount) const { return Part(*this, 0, std::clamp(iCount, 0, m_iSize)); }

CString CString::Right(int iCount) const
{
    iCount = std::clamp(iCount, 0, m_iSize);
    return Part(*this, m_iSize - iCount, iCount);
}

CString CString::Mid(int iStart, int iCount) const
{
    iStart          = std::clamp(iStart, 0, m_iSize);
    const int iRest = m_iSize - iStart;
    if (iCount == -1)
        iCount = iRest;
    return Part(*this, iStart, std::clamp(iCount, 0, iRest));
}
