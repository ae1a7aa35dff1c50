#include "cstring.h"

#include "allocation.h"
#include "exception.h"
#include "print_limit.h"
#include "str_array.h"
#include "string_design.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string_view>
#include <strings.h>
#include <utility>

using bedplate_private::CheckSize;
using bedplate_private::CTextBuilder;
using bedplate_private::NewArray;
using bedplate_private::StringDesign;

static_assert(sizeof(CString) == sizeof(char*) + 2 * sizeof(int), "the layout is part of the ABI");

namespace
{
/// The text of every string that has no buffer.
const char s_szEmpty[10] = {};

/// Texts shorter than this are printed on the stack first; Format's capacities are its multiples plus one.
constexpr int s_iTrialSize = 512;

bool IsNullOrEmpty(const char* pszText) { return pszText == nullptr || *pszText == '\0'; }

/// Tells whether pszText points into the iBufferSize bytes at pszBuffer.
bool PointsInto(const char* pszText, const char* pszBuffer, int iBufferSize)
{
    return pszBuffer != nullptr && !std::less<const char*>()(pszText, pszBuffer) &&
           std::less<const char*>()(pszText, pszBuffer + iBufferSize);
}

// The characters that a trim removes. None of them is asked about the NUL. The C library is given signed
// characters, as it is by everything else here.
bool IsWhite(char ch) { return isspace(ch) != 0; }
} // namespace

// ---- What the units share ---------------------------------------------------------------------------------

CString StringDesign::Adopt(char* pszText, int iSize, int iBufferSize)
{
    return CString(pszText, iSize, iBufferSize);
}

CString StringDesign::FromBytes(const char* pszHead, std::size_t iHead, const char* pszTail,
                                std::size_t iTail)
{
    const int iSize = CheckSize(static_cast<std::int64_t>(iHead) + static_cast<std::int64_t>(iTail) + 1,
                                "char[m_iBufferSize]") -
                      1;
    const int iBufferSize = CapacityFor(iSize);
    char* pszText         = NewArray<char>(iBufferSize, "char[m_iBufferSize]");
    memcpy(pszText, pszHead, iHead);
    memcpy(pszText + iHead, pszTail, iTail);
    memset(pszText + iSize, 0, static_cast<std::size_t>(iBufferSize - iSize));
    return Adopt(pszText, iSize, iBufferSize);
}

CString StringDesign::Substring(const CString& strText, int iStart, int iCount)
{
    const char* pszStart = strText.ToStr() + iStart;
    return FromBytes(pszStart, strnlen(pszStart, static_cast<std::size_t>(iCount)));
}

CTextBuilder::CTextBuilder(std::int64_t iForetold)
{
    if (iForetold >= static_cast<std::int64_t>(m_iCapacity))
    {
        const int iBufferSize = CheckSize(iForetold + 1, "char[m_iBufferSize]");
        m_pszText             = NewArray<char>(iBufferSize, "char[m_iBufferSize]");
        m_iCapacity           = static_cast<std::size_t>(iBufferSize);
    }
}

CTextBuilder::~CTextBuilder()
{
    if (m_pszText != m_szShort)
        delete[] m_pszText;
}

void CTextBuilder::Grow(std::size_t iCount)
{
    const int iNeeded = CheckSize(static_cast<std::int64_t>(m_iSize) + static_cast<std::int64_t>(iCount) + 1,
                                  "char[m_iBufferSize]");
    const std::int64_t iDoubled = std::min<std::int64_t>(2 * static_cast<std::int64_t>(m_iCapacity), INT_MAX);
    const int iBufferSize       = std::max(iNeeded, static_cast<int>(iDoubled));
    char* pszNew                = NewArray<char>(iBufferSize, "char[m_iBufferSize]");
    memcpy(pszNew, m_pszText, m_iSize);
    if (m_pszText != m_szShort)
        delete[] m_pszText;
    m_pszText   = pszNew;
    m_iCapacity = static_cast<std::size_t>(iBufferSize);
}

void CTextBuilder::AppendHeader(const char* pszTag, int iSize, int iBufferSize, const char* pszSep)
{
    char szHeader[64];
    const int iLength = snprintf(szHeader, sizeof szHeader, "%s:(%d/%d)", pszTag, iSize, iBufferSize);
    Append(szHeader, static_cast<std::size_t>(iLength));
    if (pszSep == nullptr)
        pszSep = "(null)"; // as the C library prints a null text
    Append(pszSep, strlen(pszSep));
}

char* CTextBuilder::Release(int iBufferSize)
{
    char* pszText = m_pszText;
    if (pszText != m_szShort && m_iCapacity == static_cast<std::size_t>(iBufferSize))
    {
        m_pszText = m_szShort;
    }
    else
    {
        pszText = NewArray<char>(iBufferSize, "char[m_iBufferSize]");
        memcpy(pszText, m_pszText, m_iSize);
    }
    memset(pszText + m_iSize, 0, static_cast<std::size_t>(iBufferSize) - m_iSize);
    return pszText;
}

CString CTextBuilder::Finish()
{
    const int iBufferSize = StringDesign::CapacityFor(GetSize());
    return StringDesign::Adopt(Release(iBufferSize), GetSize(), iBufferSize);
}

// ---- Life -------------------------------------------------------------------------------------------------

CString::CString()
{
    static_assert(offsetof(CString, m_pszData) == 0 && offsetof(CString, m_iSize) == sizeof(char*) &&
                      offsetof(CString, m_iBufferSize) == sizeof(char*) + sizeof(int),
                  "the members' order is part of the ABI");
    MakeEmptyString();
}

CString::CString(const char* pszText) { Set(pszText); }

CString::CString(const CString& strOther) { Set(strOther); }

CString::CString(char* pszAdopted, int iSize, int iBufferSize)
    : m_pszData(pszAdopted), m_iSize(iSize), m_iBufferSize(iBufferSize)
{
}

CString::~CString()
{
    m_iSize       = 0;
    m_iBufferSize = 0;
    delete[] m_pszData;
    m_pszData = nullptr;
}

CString& CString::operator=(const char* pszText)
{
    Set(pszText);
    return *this;
}

CString& CString::operator=(const CString& strOther)
{
    Set(strOther);
    return *this;
}

int CString::Set(const char* pszText)
{
    if (IsNullOrEmpty(pszText))
    {
        MakeEmptyString();
        return 0;
    }
    const std::size_t iBytes = strlen(pszText);
    const int iLength        = CheckSize(static_cast<std::int64_t>(iBytes) + 1, "char[m_iBufferSize]") - 1;
    if (m_pszData == nullptr || m_iBufferSize <= iLength)
    {
        delete[] m_pszData;
        m_pszData     = nullptr;
        m_iSize       = 0;
        m_iBufferSize = iLength + 1;
        m_pszData     = NewArray<char>(m_iBufferSize, "char[m_iBufferSize]");
    }
    memmove(m_pszData, pszText, iBytes); // pszText may lie in the buffer that was kept
    memset(m_pszData + iLength, 0, static_cast<std::size_t>(m_iBufferSize - iLength));
    m_iSize = iLength;
    return iLength;
}

int CString::Set(const CString& strOther) { return Set(strOther.ToStr()); }

void CString::MakeEmptyString()
{
    delete[] m_pszData;
    m_pszData     = nullptr;
    m_iSize       = 0;
    m_iBufferSize = StringDesign::s_iEmptySize;
    m_pszData     = NewArray<char>(m_iBufferSize, "char[m_iBufferSize]");
    memset(m_pszData, 0, StringDesign::s_iEmptySize);
}

void CString::Empty() { MakeEmptyString(); }

void CString::Clear() { MakeEmptyString(); }

char* CString::GetBuffer(int iCount)
{
    const int iNewSize = CheckSize(std::int64_t{1} + std::max(iCount, 0), "char[m_iBufferSize]");
    delete[] m_pszData;
    m_pszData     = nullptr;
    m_iSize       = 0;
    m_iBufferSize = iNewSize;
    m_pszData     = NewArray<char>(m_iBufferSize, "char[m_iBufferSize]");
    memset(m_pszData, 0, static_cast<std::size_t>(m_iBufferSize));
    return m_pszData;
}

void CString::ReleaseBuffer(int iCount)
{
    if (iCount == -1)
        iCount = static_cast<int>(strnlen(ToStr(), static_cast<std::size_t>(m_iBufferSize)));
    if (iCount < 0 || iCount >= m_iBufferSize || (m_pszData == nullptr && iCount > 0))
        throw CException("CString::ReleaseBuffer - out of index", 0);
    if (m_pszData == nullptr)
        return;
    m_iSize           = iCount;
    m_pszData[iCount] = '\0';
}

// ---- Reading ----------------------------------------------------------------------------------------------

const char* CString::EmptyText() { return s_szEmpty; }

void CString::ThrowIndexOverflow() { throw CException("CString::operator[] - index overflow", 0); }

CString CString::Repr() const
{
    if (IsEmpty())
        return CString("<CStr: unset>");
    const char szBefore[]   = "<CStr: ";
    const char szAfter[]    = ">";
    const std::size_t iText = strlen(ToStr());
    CTextBuilder text(static_cast<std::int64_t>(iText) + 8);
    text.Append(szBefore, sizeof szBefore - 1);
    text.Append(ToStr(), iText);
    text.Append(szAfter, sizeof szAfter - 1);
    return text.Finish();
}

// ---- Comparing --------------------------------------------------------------------------------------------

int CString::Compare(const char* pszText) const
{
    if (pszText == nullptr)
        throw CException("CString::Compare - invalid string", 0);
    return strcmp(ToStr(), pszText);
}

int CString::CompareNoCase(const char* pszText) const
{
    if (pszText == nullptr)
        throw CException("CString::CompareNoCase - invalid string", 0);
    return strcasecmp(ToStr(), pszText);
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

bool operator==(const CString& strLeft, const CString& strRight)
{
    return strLeft.Compare(strRight.ToStr()) == 0;
}
bool operator==(const CString& strLeft, const char* pszRight) { return strLeft.Compare(pszRight) == 0; }
bool operator==(const char* pszLeft, const CString& strRight) { return strRight.Compare(pszLeft) == 0; }

bool operator!=(const CString& strLeft, const CString& strRight)
{
    return strLeft.Compare(strRight.ToStr()) != 0;
}
bool operator!=(const CString& strLeft, const char* pszRight) { return strLeft.Compare(pszRight) != 0; }
bool operator!=(const char* pszLeft, const CString& strRight) { return strRight.Compare(pszLeft) != 0; }

bool operator<(const CString& strLeft, const CString& strRight)
{
    return strLeft.Compare(strRight.ToStr()) < 0;
}
bool operator<(const CString& strLeft, const char* pszRight) { return strLeft.Compare(pszRight) < 0; }
bool operator<(const char* pszLeft, const CString& strRight) { return strRight.Compare(pszLeft) > 0; }

bool operator<=(const CString& strLeft, const CString& strRight)
{
    return strLeft.Compare(strRight.ToStr()) <= 0;
}
bool operator<=(const CString& strLeft, const char* pszRight) { return strLeft.Compare(pszRight) <= 0; }
bool operator<=(const char* pszLeft, const CString& strRight) { return strRight.Compare(pszLeft) >= 0; }

bool operator>(const CString& strLeft, const CString& strRight)
{
    return strLeft.Compare(strRight.ToStr()) > 0;
}
bool operator>(const CString& strLeft, const char* pszRight) { return strLeft.Compare(pszRight) > 0; }
bool operator>(const char* pszLeft, const CString& strRight) { return strRight.Compare(pszLeft) < 0; }

bool operator>=(const CString& strLeft, const CString& strRight)
{
    return strLeft.Compare(strRight.ToStr()) >= 0;
}
bool operator>=(const CString& strLeft, const char* pszRight) { return strLeft.Compare(pszRight) >= 0; }
bool operator>=(const char* pszLeft, const CString& strRight) { return strRight.Compare(pszLeft) <= 0; }

// ---- Searching, extracting, converting --------------------------------------------------------------------

namespace
{
/// Turns a match inside pszText into its position.
int PositionOf(const char* pszMatch, const char* pszText)
{
    return pszMatch == nullptr ? -1 : static_cast<int>(pszMatch - pszText);
}
} // namespace

int CString::Find(char chWanted, int iStart) const
{
    iStart = std::max(iStart, 0);
    if (iStart >= m_iSize)
        return -1;
    return PositionOf(strchr(m_pszData + iStart, chWanted), m_pszData);
}

int CString::Find(const char* pszWanted, int iStart) const
{
    iStart = std::max(iStart, 0);
    if (IsNullOrEmpty(pszWanted) || iStart > m_iSize)
        return -1;
    return PositionOf(strstr(ToStr() + iStart, pszWanted), ToStr());
}

int CString::ReverseFind(char chWanted) const { return PositionOf(strrchr(ToStr(), chWanted), ToStr()); }

int CString::FindOneOf(char* pszSet) const
{
    if (IsNullOrEmpty(pszSet))
        return -1;
    return PositionOf(strpbrk(ToStr(), pszSet), ToStr());
}

CString CString::Left(int iCount) const
{
    return StringDesign::Substring(*this, 0, std::clamp(iCount, 0, m_iSize));
}

CString CString::Right(int iCount) const
{
    iCount = std::clamp(iCount, 0, m_iSize);
    return StringDesign::Substring(*this, m_iSize - iCount, iCount);
}

CString CString::Mid(int iStart, int iCount) const
{
    iStart          = std::clamp(iStart, 0, m_iSize);
    const int iRest = m_iSize - iStart;
    if (iCount == -1)
        iCount = iRest;
    return StringDesign::Substring(*this, iStart, std::clamp(iCount, 0, iRest));
}

int CString::ToInt() const
{
    // long is wider than int on 64-bit systems; the result is the same everywhere.
    return static_cast<int>(std::clamp<long>(strtol(ToStr(), nullptr, 10), INT_MIN, INT_MAX));
}

double CString::ToDbl() const { return strtod(ToStr(), nullptr); }

// ---- Editing ----------------------------------------------------------------------------------------------

int StringDesign::InsertBytes(CString& strText, int iIndex, const char* pszBytes, std::size_t iCount)
{
    const int iOldSize = strText.m_iSize;
    const int iSize =
        CheckSize(std::int64_t{iOldSize} + static_cast<std::int64_t>(iCount) + 1, "char[m_iBufferSize]") - 1;
    const int iHead         = std::clamp(iIndex, 0, iOldSize);
    const std::size_t iTail = static_cast<std::size_t>(iOldSize - iHead);
    char* pszText           = strText.m_pszData;
    if (pszText == nullptr || iSize >= strText.m_iBufferSize)
    {
        const int iNewSize = iSize + 1;
        pszText            = NewArray<char>(iNewSize, "char[m_iBufferSize]");
        memcpy(pszText, strText.ToStr(), static_cast<std::size_t>(iHead));
        memcpy(pszText + iHead, pszBytes, iCount);
        memcpy(pszText + iHead + iCount, strText.ToStr() + iHead, iTail);
        delete[] strText.m_pszData;
        strText.m_pszData     = pszText;
        strText.m_iBufferSize = iNewSize;
    }
    else if (PointsInto(pszBytes, pszText, strText.m_iBufferSize))
    {
        // Moving the tail first could move or overwrite the bytes to insert, so they go behind it and then rotate
        // into their place.
        memmove(pszText + iOldSize, pszBytes, iCount);
        std::rotate(pszText + iHead, pszText + iOldSize, pszText + iSize);
    }
    else
    {
        memmove(pszText + iHead + iCount, pszText + iHead, iTail);
        memcpy(pszText + iHead, pszBytes, iCount);
    }
    pszText[iSize]  = '\0';
    strText.m_iSize = iSize;
    return iSize;
}

int CString::Insert(int iIndex, char chNew) { return StringDesign::InsertBytes(*this, iIndex, &chNew, 1); }

int CString::Insert(int iIndex, const char* pszNew)
{
    if (IsNullOrEmpty(pszNew))
        return m_iSize;
    return StringDesign::InsertBytes(*this, iIndex, pszNew, strlen(pszNew));
}

int CString::Delete(int iIndex, int iCount)
{
    iIndex = std::max(iIndex, 0);
    if (iCount <= 0 || iIndex >= m_iSize)
        return m_iSize;
    iCount = std::min(iCount, m_iSize - iIndex);
    m_iSize -= iCount;
    memmove(m_pszData + iIndex, m_pszData + iIndex + iCount, static_cast<std::size_t>(m_iSize - iIndex));
    m_pszData[m_iSize] = '\0';
    return m_iSize;
}

int CString::Remove(char chOld)
{
    if (IsEmpty())
        return 0;
    char* pszEnd       = std::remove(m_pszData, m_pszData + m_iSize, chOld);
    const int iRemoved = static_cast<int>(m_pszData + m_iSize - pszEnd);
    m_iSize -= iRemoved;
    *pszEnd = '\0';
    return iRemoved;
}

int CString::Replace(char chOld, char chNew)
{
    if (chOld == chNew)
        return 0;
    int iReplaced = 0;
    for (int i = 0; i < m_iSize; ++i)
    {
        if (m_pszData[i] == chOld)
        {
            m_pszData[i] = chNew;
            ++iReplaced;
        }
    }
    return iReplaced;
}

namespace
{
/// Returns about how long svText is with every svOld replaced by svNew. If that may exceed INT_MAX, the matches are
/// counted and it is exact; so a text that cannot be is known before gigabytes of it are written.
std::int64_t ReplacedLength(std::string_view svText, std::string_view svOld, std::string_view svNew)
{
    const std::int64_t iText = static_cast<std::int64_t>(svText.size());
    const std::int64_t iOld  = static_cast<std::int64_t>(svOld.size());
    const std::int64_t iMore = static_cast<std::int64_t>(svNew.size()) - iOld;
    if (iText + iText / iOld * iMore <= INT_MAX)
        return iText;
    std::int64_t iMatches = 0;
    for (std::size_t i = svText.find(svOld); i != std::string_view::npos;
         i             = svText.find(svOld, i + svOld.size()))
        ++iMatches;
    return iText + iMatches * iMore;
}
} // namespace

int CString::Replace(const char* pszOld, const char* pszNew)
{
    if (IsNullOrEmpty(pszOld))
        return 0;
    const std::string_view svText(ToStr());
    const std::string_view svOld(pszOld);
    const std::string_view svNew(pszNew != nullptr ? pszNew : s_szEmpty);
    std::size_t iMatch = svText.find(svOld);
    if (iMatch == std::string_view::npos)
        return 0;

    CTextBuilder text(ReplacedLength(svText, svOld, svNew));
    int iMatches      = 0;
    std::size_t iFrom = 0;
    for (; iMatch != std::string_view::npos; iMatch = svText.find(svOld, iFrom))
    {
        text.Append(svText.data() + iFrom, iMatch - iFrom);
        text.Append(svNew.data(), svNew.size());
        iFrom = iMatch + svOld.size();
        ++iMatches;
    }
    text.Append(svText.data() + iFrom, svText.size() - iFrom);

    const int iNewSize = text.GetSize() + 1;
    char* pszResult    = text.Release(iNewSize);
    delete[] m_pszData;
    m_pszData     = pszResult;
    m_iSize       = text.GetSize();
    m_iBufferSize = iNewSize;
    return iMatches;
}

template <class TRemovable>
void StringDesign::TrimEnds(CString& strText, bool bLeft, bool bRight, TRemovable IsRemovable)
{
    // Both ends are found before anything changes: a set to trim may lie in the text itself.
    char* const pszText = strText.m_pszData;
    const int iText = static_cast<int>(strnlen(strText.ToStr(), static_cast<std::size_t>(strText.m_iSize)));
    int iBegin      = 0;
    while (bLeft && iBegin < iText && IsRemovable(pszText[iBegin]))
        ++iBegin;
    int iEnd = iText;
    while (bRight && iEnd > iBegin && IsRemovable(pszText[iEnd - 1]))
        --iEnd;

    if (iEnd < iText)
    {
        pszText[iEnd]   = '\0';
        strText.m_iSize = iEnd;
    }
    if (iBegin > 0)
    {
        strText.m_iSize -= iBegin;
        memmove(pszText, pszText + iBegin, static_cast<std::size_t>(strText.m_iSize) + 1);
    }
}

namespace
{
/// The characters of a set; a null or empty set has none.
struct CInSet
{
    const char* m_pszSet;

    bool operator()(char ch) const { return m_pszSet != nullptr && strchr(m_pszSet, ch) != nullptr; }
};

/// One character.
struct CIsChar
{
    char m_chWanted;

    bool operator()(char ch) const { return ch == m_chWanted; }
};
} // namespace

void CString::TrimLeft() { StringDesign::TrimEnds(*this, true, false, IsWhite); }
void CString::TrimLeft(char chOld) { StringDesign::TrimEnds(*this, true, false, CIsChar{chOld}); }
void CString::TrimLeft(const char* pszSet) { StringDesign::TrimEnds(*this, true, false, CInSet{pszSet}); }
void CString::TrimRight() { StringDesign::TrimEnds(*this, false, true, IsWhite); }
void CString::TrimRight(char chOld) { StringDesign::TrimEnds(*this, false, true, CIsChar{chOld}); }
void CString::TrimRight(const char* pszSet) { StringDesign::TrimEnds(*this, false, true, CInSet{pszSet}); }
void CString::Trim() { StringDesign::TrimEnds(*this, true, true, IsWhite); }
void CString::Trim(char chOld) { StringDesign::TrimEnds(*this, true, true, CIsChar{chOld}); }
void CString::Trim(const char* pszSet) { StringDesign::TrimEnds(*this, true, true, CInSet{pszSet}); }

void CString::MakeUpper()
{
    for (int i = 0; i < m_iSize; ++i)
        m_pszData[i] = static_cast<char>(toupper(m_pszData[i]));
}

void CString::MakeLower()
{
    for (int i = 0; i < m_iSize; ++i)
        m_pszData[i] = static_cast<char>(tolower(m_pszData[i]));
}

// ---- Formatting and appending -----------------------------------------------------------------------------

namespace
{
/// vsnprintf works in memory of its own for some numbers; running out of it is a failed allocation like any other.
[[noreturn]] void ThrowPrintFailure(const char* pszExpression, int iLine = __builtin_LINE())
{
    bedplate_private::ThrowAllocationFailure(pszExpression, std::bad_alloc().what(), __FILE__, iLine);
}

/// Prints into pszTrial, of s_iTrialSize bytes; returns vsnprintf's result. A width that makes a result of iTooLong
/// characters or more is a lack of memory.
int PrintTrial(char* pszTrial, const char* pszFormat, va_list args, int iTooLong)
{
    if (bedplate_private::IsPrintLimitReached(pszFormat, args, iTooLong))
    {
        errno = ENOMEM;
        return -1;
    }
    return vsnprintf(pszTrial, s_iTrialSize, pszFormat, args);
}
} // namespace

int CString::Format(const char* pszFormat, ...)
{
    if (pszFormat == nullptr)
    {
        MakeEmptyString();
        return 0;
    }
    char szTrial[s_iTrialSize];
    va_list args;
    va_start(args, pszFormat);
    const int iPrinted = PrintTrial(szTrial, pszFormat, args, INT_MAX / s_iTrialSize * s_iTrialSize);
    va_end(args);
    if (iPrinted < 0)
    {
        if (errno == ENOMEM)
            ThrowPrintFailure("char[m_iBufferSize]");
        MakeEmptyString();
        return -1;
    }
    const std::int64_t iTrials = std::int64_t{iPrinted} / s_iTrialSize + 1;
    const int iNewSize         = CheckSize(iTrials * s_iTrialSize + 1, "char[m_iBufferSize]");

    // The arguments may point into the old text: it lives until the new one is printed.
    const std::unique_ptr<char[]> pszOld(m_pszData);
    m_pszData     = nullptr;
    m_iSize       = 0;
    m_iBufferSize = iNewSize;
    m_pszData     = NewArray<char>(m_iBufferSize, "char[m_iBufferSize]");
    if (iPrinted < s_iTrialSize)
    {
        memcpy(m_pszData, szTrial, static_cast<std::size_t>(iPrinted));
    }
    else
    {
        va_start(args, pszFormat);
        const int iAgain = vsnprintf(m_pszData, static_cast<std::size_t>(m_iBufferSize), pszFormat, args);
        va_end(args);
        if (iAgain != iPrinted)
        {
            delete[] m_pszData;
            m_pszData = nullptr;
            ThrowPrintFailure("char[m_iBufferSize]");
        }
    }
    memset(m_pszData + iPrinted, 0, static_cast<std::size_t>(m_iBufferSize - iPrinted));
    m_iSize = static_cast<int>(strlen(m_pszData));
    return iPrinted;
}

CString CFormat(const char* pszFormat, ...)
{
    if (pszFormat == nullptr)
        return CString();
    char szTrial[s_iTrialSize];
    va_list args;
    va_start(args, pszFormat);
    const int iPrinted = PrintTrial(szTrial, pszFormat, args, INT_MAX);
    va_end(args);
    if (iPrinted < 0)
    {
        if (errno == ENOMEM)
            ThrowPrintFailure("char[iLen]");
        return CString();
    }

    const bool bShort = iPrinted < s_iTrialSize;
    const int iSize   = bShort ? static_cast<int>(strlen(szTrial)) : iPrinted;
    const int iLen = std::max(CheckSize(std::int64_t{iSize} + 1, "char[iLen]"), StringDesign::s_iEmptySize);
    std::unique_ptr<char[]> pszText(NewArray<char>(iLen, "char[iLen]"));
    if (bShort)
    {
        memcpy(pszText.get(), szTrial, static_cast<std::size_t>(iSize));
        memset(pszText.get() + iSize, 0, static_cast<std::size_t>(iLen - iSize));
        return StringDesign::Adopt(pszText.release(), iSize, iLen);
    }
    va_start(args, pszFormat);
    const int iAgain = vsnprintf(pszText.get(), static_cast<std::size_t>(iLen), pszFormat, args);
    va_end(args);
    if (iAgain != iPrinted)
        ThrowPrintFailure("char[iLen]");
    if (strlen(pszText.get()) != static_cast<std::size_t>(iSize))
        return CString(pszText.get()); // a printed NUL ends the text, and the capacity goes by the text
    return StringDesign::Adopt(pszText.release(), iSize, iLen);
}

void CString::ConcatInPlace(const char* pszText)
{
    if (IsNullOrEmpty(pszText))
        return;
    const std::size_t iBytes = strlen(pszText);
    const int iNewSize =
        CheckSize(std::int64_t{m_iSize} + static_cast<std::int64_t>(iBytes) + 1, "char[m_iBufferSize]");
    char* pszNew = NewArray<char>(iNewSize, "char[m_iBufferSize]");
    memcpy(pszNew, ToStr(), static_cast<std::size_t>(m_iSize));
    memcpy(pszNew + m_iSize, pszText, iBytes);
    pszNew[iNewSize - 1] = '\0';
    delete[] m_pszData;
    m_pszData     = pszNew;
    m_iSize       = iNewSize - 1;
    m_iBufferSize = iNewSize;
}

CString& CString::operator+=(const char* pszText)
{
    ConcatInPlace(pszText);
    return *this;
}

CString& CString::operator+=(const CString& strOther)
{
    ConcatInPlace(strOther.ToStr());
    return *this;
}

CString CString::operator+(const char* pszText) const
{
    if (pszText == nullptr)
        pszText = s_szEmpty;
    return StringDesign::FromBytes(ToStr(), strlen(ToStr()), pszText, strlen(pszText));
}

CString CString::operator+(const CString& strOther) const { return *this + strOther.ToStr(); }
CString CString::operator+(const char* pszText) { return std::as_const(*this) + pszText; }
CString CString::operator+(const CString& strOther) { return std::as_const(*this) + strOther.ToStr(); }

CString operator+(const char* pszText, const CString& strText)
{
    if (pszText == nullptr)
        pszText = s_szEmpty;
    return StringDesign::FromBytes(pszText, strlen(pszText), strText.ToStr(), strlen(strText.ToStr()));
}

// ---- Splitting --------------------------------------------------------------------------------------------

namespace
{
/// Cuts white space off the piece that begins at pszPiece; returns where it then begins.
char* TrimPiece(char* pszPiece)
{
    while (*pszPiece != '\0' && IsWhite(*pszPiece))
        ++pszPiece;
    char* pszEnd = pszPiece + strlen(pszPiece);
    while (pszEnd > pszPiece && IsWhite(pszEnd[-1]))
        --pszEnd;
    *pszEnd = '\0';
    return pszPiece;
}
} // namespace

template <class TFindSep>
void StringDesign::Split(const CString& strText, CStrArray& arrPieces, bool bTrim, bool bKeepEmptyLast,
                         std::size_t iSepLen, TFindSep FindSep)
{
    std::unique_ptr<char[]> pszPieces;
    try
    {
        pszPieces.reset(NewArray<char>(strText.m_iSize + 1, "char[m_iSize+1]"));
    }
    catch (const CException&)
    {
        arrPieces.Clear();
        throw;
    }

    // The pieces go into the copy one behind the other, each with its NUL. The array is emptied only then: it may
    // hold the text and the separator.
    const char* pszFrom = strText.ToStr();
    char* pszTo         = pszPieces.get();
    int iBeforeLast     = 0;
    while (const char* pszSep = FindSep(pszFrom))
    {
        const std::size_t iBytes = static_cast<std::size_t>(pszSep - pszFrom);
        memcpy(pszTo, pszFrom, iBytes);
        pszTo[iBytes] = '\0';
        pszTo += iBytes + 1;
        pszFrom = pszSep + iSepLen;
        ++iBeforeLast;
    }
    memcpy(pszTo, pszFrom, strlen(pszFrom) + 1);

    arrPieces.Clear();
    char* pszPiece = pszPieces.get();
    for (int i = 0; i <= iBeforeLast; ++i)
    {
        char* pszNext = pszPiece + strlen(pszPiece) + 1;
        if (bTrim)
            pszPiece = TrimPiece(pszPiece);
        if (i < iBeforeLast || bKeepEmptyLast || *pszPiece != '\0')
            arrPieces.Add(pszPiece);
        pszPiece = pszNext;
    }
}

void CString::Split(const char* pszSep, CStrArray* pArray, bool bTrim) const
{
    if (pArray == nullptr)
        return;
    const bool bMatches = !IsNullOrEmpty(pszSep);
    StringDesign::Split(*this, *pArray, bTrim, !bTrim, bMatches ? strlen(pszSep) : 0,
                        [=](const char* pszFrom) { return bMatches ? strstr(pszFrom, pszSep) : nullptr; });
}

void CString::Split(char chSep, CStrArray* pArray, bool bTrim) const
{
    if (pArray == nullptr)
        return;
    StringDesign::Split(*this, *pArray, bTrim, false, 1,
                        [=](const char* pszFrom)
                        { return chSep != '\0' ? strchr(pszFrom, chSep) : nullptr; });
}
