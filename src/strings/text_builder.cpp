#include "strings/text_builder.h"

#include "strings/string_design.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>

namespace bedplate_private
{
CTextBuilder::CTextBuilder(std::int64_t iForetold)
{
    if (iForetold >= static_cast<std::int64_t>(m_iCapacity))
        Grow(static_cast<std::uint64_t>(iForetold));
}

CTextBuilder::~CTextBuilder()
{
    if (m_pszText != m_szShort)
        delete[] m_pszText;
}

/// Grows to room for iCount more bytes and a NUL. What was there decides by how much more; at first, that is nothing.
void CTextBuilder::Grow(std::uint64_t iCount)
{
    const int iNeeded     = StringDesign::CheckSize(std::uint64_t{m_iSize} + iCount + 1);
    const auto iDoubled   = std::min<std::uint64_t>(2 * std::uint64_t{m_iSize}, INT_MAX);
    const int iBufferSize = std::max(iNeeded, static_cast<int>(iDoubled));
    char* pszNew          = StringDesign::NewText(iBufferSize);
    memcpy(pszNew, m_pszText, m_iSize);
    if (m_pszText != m_szShort)
        delete[] m_pszText;
    m_pszText   = pszNew;
    m_iCapacity = static_cast<std::size_t>(ReservedText(iBufferSize));
}

void CTextBuilder::MoveTo(CString& strText, int iCapacity)
{
    char* pszText = m_pszText;
    if (pszText != m_szShort && m_iCapacity == static_cast<std::size_t>(ReservedText(iCapacity)))
    {
        m_pszText = m_szShort;
    }
    else
    {
        pszText = StringDesign::NewText(iCapacity);
        memcpy(pszText, m_pszText, m_iSize);
    }
    StringDesign::Adopt(strText, pszText, GetSize(), iCapacity);
    StringDesign::EndText(strText, GetSize());
}

CString CTextBuilder::Finish()
{
    CString strText = StringDesign::WithoutBuffer();
    MoveTo(strText, StringDesign::CapacityFor(GetSize()));
    return strText;
}
} // namespace bedplate_private
