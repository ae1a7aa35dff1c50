#include "cstream.h"

#include "base/short_bytes.h"
#include "exception.h"
#include "strings/printer.h"
#include "strings/string_design.h"

#include <climits>
#include <cstdarg>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

using namespace bedplate_private;

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

CStream::~CStream() { free(m_pszBuffer); }

CStream::CStream(CStream&& streamOther) noexcept
    : m_iLength(std::exchange(streamOther.m_iLength, 0)),
      m_iAllocSize(std::exchange(streamOther.m_iAllocSize, 0)),
      m_iGrowSize(streamOther.m_iGrowSize),
      m_pszBuffer(std::exchange(streamOther.m_pszBuffer, nullptr))
{
}

CStream& CStream::operator=(CStream&& streamOther) noexcept
{
    CStream streamNew(std::move(streamOther)); // which may be this one
    std::swap(m_iLength, streamNew.m_iLength);
    std::swap(m_iAllocSize, streamNew.m_iAllocSize);
    std::swap(m_pszBuffer, streamNew.m_pszBuffer);
    m_iGrowSize = streamNew.m_iGrowSize;
    return *this;
}

void CStream::ThrowOnFailure(bool bThrow)
{
    m_iGrowSize = bThrow != IsThrowing() ? -m_iGrowSize : m_iGrowSize;
}

/// Reports that memory has run out.
int CStream::Fail() const
{
    if (IsThrowing())
        throw CException("(CStream) Out of memory", 0);
    return -1;
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
    if (m_pszBuffer == nullptr)
        Fail();
    else
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
    const int iStep          = std::abs(m_iGrowSize);
    const long long iSteps   = (iNeeded - m_iAllocSize) / iStep + 1;
    const long long iNewSize = m_iAllocSize + iSteps * iStep;
    if (iNewSize > INT_MAX)
        return false;
    char* pszNew = static_cast<char*>(realloc(m_pszBuffer, static_cast<std::size_t>(iNewSize)));
    if (pszNew == nullptr)
        return false;
    m_pszBuffer  = pszNew;
    m_iAllocSize = static_cast<int>(iNewSize);
    return true;
}

bool CStream::Append(const char* pszData, int iCount)
{
    if (pszData == nullptr || iCount <= 0)
        return true;
    const long long iNeeded = static_cast<long long>(m_iLength) + iCount;
    if (m_iAllocSize <= iNeeded)
    {
        // The bytes may be the stream's own, and move with it.
        const bool bOwn              = PointsInto(pszData, m_pszBuffer, m_iAllocSize);
        const std::ptrdiff_t iOffset = bOwn ? pszData - m_pszBuffer : 0;
        if (!Grow(iNeeded))
            return false;
        if (bOwn)
            pszData = m_pszBuffer + iOffset;
    }
    memmove(m_pszBuffer + m_iLength, pszData, static_cast<std::size_t>(iCount));
    m_iLength              = static_cast<int>(iNeeded);
    m_pszBuffer[m_iLength] = '\0';
    return true;
}

int CStream::AppendData(const char* pszData, int iCount) { return Append(pszData, iCount) ? 0 : Fail(); }

int CStream::AppendData(const CString& strText) { return AppendData(strText.ToStr(), strText.GetSize()); }

int CStream::AppendLine(const char* pszText, int iCount)
{
    const int iOldLength = m_iLength;
    // As mostly: appending text and end apart takes two to four times as long.
    if (m_iAllocSize - m_iLength > iCount + 1)
    {
        MoveBytes(m_pszBuffer + iOldLength, pszText, static_cast<std::size_t>(iCount));
        m_iLength += iCount + 1;
        memcpy(m_pszBuffer + m_iLength - 1, "\n", 2); // with its NUL
        return 0;
    }
    const bool bText = Append(pszText, iCount);
    if (!IsThrowing())
    {
        Append("\n", 1);
        return bText ? 0 : -1;
    }
    if (bText && Append("\n", 1))
        return 0;
    ReleaseBuffer(iOldLength);
    return Fail();
}

int CStream::AppendLine(const CString& strText) { return AppendLine(strText.ToStr(), strText.GetSize()); }

int CStream::AppendLine(const char* pszText)
{
    const std::string_view svText = ViewOf(pszText);
    return AppendLine(svText.data(), StringDesign::CheckText(svText));
}

int CStream::AppendFormat(const char* pszFormat, ...)
try
{
    if (pszFormat == nullptr)
        return 0;
    CArguments args;
    va_start(args.m_list, pszFormat);
    va_start(args.m_again, pszFormat);
    CPrinter printer(pszFormat, args);
    if (printer.IsShort() && printer.GetPrinted() >= 0)
        return AppendData(printer.GetText(), printer.GetSize());
    const CString strText = StringDesign::FromPrinter(printer);
    return printer.GetPrinted() < 0 ? -1 : AppendData(strText);
}
catch (const CException&)
{
    return Fail();
}
