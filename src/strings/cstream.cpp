#include "cstream.h"

#include "base/short_bytes.h"
#include "exception.h"

#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

using bedplate_private::MoveBytes;
using bedplate_private::PointsInto;

namespace
{
constexpr int s_iDefaultGrowSize = 512;
}

CStream::CStream(int iInitSize, int iGrowSize)
    : m_iLength(0),
      m_iAllocSize(0),
      m_iGrowSize(iGrowSize > 0 ? iGrowSize : s_iDefaultGrowSize),
      m_pszBuffer(nullptr)
{
    if (iInitSize > 0 && GetBuffer(iInitSize) == nullptr)
        throw CException("(CStream) Out of memory", 0);
}

CStream::~CStream()
{
    free(m_pszBuffer);
    m_pszBuffer  = nullptr;
    m_iLength    = 0;
    m_iAllocSize = 0;
}

void CStream::Clear()
{
    if (m_pszBuffer != nullptr)
        memset(m_pszBuffer, 0, static_cast<std::size_t>(m_iAllocSize));
    m_iLength = 0;
}

char* CStream::GetBuffer(int iCount)
{
    if (m_iAllocSize >= iCount)
    {
        Clear();
        return m_pszBuffer;
    }
    free(m_pszBuffer);
    m_iLength    = 0;
    m_iAllocSize = 0;
    m_pszBuffer  = static_cast<char*>(calloc(static_cast<std::size_t>(iCount), 1));
    if (m_pszBuffer != nullptr)
        m_iAllocSize = iCount;
    return m_pszBuffer;
}

void CStream::ReleaseBuffer(int iCount)
{
    if (m_pszBuffer == nullptr)
    {
        m_iLength = 0;
        return;
    }
    if (iCount < 0)
        iCount = static_cast<int>(strnlen(m_pszBuffer, static_cast<std::size_t>(m_iAllocSize)));
    m_iLength              = iCount < m_iAllocSize ? iCount : m_iAllocSize - 1;
    m_pszBuffer[m_iLength] = '\0';
}

/// Makes room for iNeeded bytes and a NUL, by as few steps as do.
bool CStream::Grow(long long iNeeded)
{
    const long long iSteps   = (iNeeded - m_iAllocSize) / m_iGrowSize + 1;
    const long long iNewSize = m_iAllocSize + iSteps * m_iGrowSize;
    if (iNewSize > INT_MAX)
        return false;
    char* pszNew = static_cast<char*>(realloc(m_pszBuffer, static_cast<std::size_t>(iNewSize)));
    if (pszNew == nullptr)
        return false;
    m_pszBuffer  = pszNew;
    m_iAllocSize = static_cast<int>(iNewSize);
    return true;
}

int CStream::AppendData(const char* pszData, int iCount)
{
    if (pszData == nullptr || iCount <= 0)
        return 0;
    const std::int64_t iNeeded = std::int64_t{m_iLength} + iCount;
    if (m_iAllocSize <= iNeeded)
    {
        // The bytes may be the stream's own, and move with it.
        const bool bOwn              = PointsInto(pszData, m_pszBuffer, m_iAllocSize);
        const std::ptrdiff_t iOffset = bOwn ? pszData - m_pszBuffer : 0;
        if (!Grow(iNeeded))
            return -1;
        if (bOwn)
            pszData = m_pszBuffer + iOffset;
    }
    memmove(m_pszBuffer + m_iLength, pszData, static_cast<std::size_t>(iCount));
    m_iLength              = static_cast<int>(iNeeded);
    m_pszBuffer[m_iLength] = '\0';
    return 0;
}

int CStream::AppendData(const CString& strText) { return AppendData(strText.ToStr(), strText.GetSize()); }

int CStream::AppendLine(const char* pszText, int iCount)
{
    char* const pszEnd = m_pszBuffer + m_iLength;
    if (m_iAllocSize - m_iLength <= iCount + 1)
    {
        const int iResult = AppendData(pszText, iCount);
        AppendData("\n", 1);
        return iResult;
    }
    // Mostly there is room for the line.
    MoveBytes(pszEnd, pszText, static_cast<std::size_t>(iCount));
    memcpy(pszEnd + iCount, "\n", 2); // with its NUL
    m_iLength += iCount + 1;
    return 0;
}

int CStream::AppendLine(const CString& strText) { return AppendLine(strText.ToStr(), strText.GetSize()); }
