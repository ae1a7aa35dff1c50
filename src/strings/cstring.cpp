#include "cstring.h"

#include "arrays/str_array_filler.h"
#include "base/allocation.h"
#include "base/growth.h"
#include "exception.h"
#include "strings/printer.h"
#include "strings/string_design.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>

using bedplate_private::AreBytesEqual;
using bedplate_private::CheckSize;
using bedplate_private::CopyBytes;
using bedplate_private::CPrinter;
using bedplate_private::CStrArrayFiller;
using bedplate_private::CTextBuilder;
using bedplate_private::MoveBytes;
using bedplate_private::NewArray;
using bedplate_private::PointsInto;
using bedplate_private::ReservedText;
using bedplate_private::StringDesign;
using bedplate_private::ThrowBadAlloc;

static_assert(sizeof(CString) == sizeof(char*) + 2 * sizeof(int), "the layout is part of the ABI");

namespace
{
/// The text of every string that has no buffer.
const char s_szEmpty[10] = {};

/// Format's capacities are its multiples plus one.
constexpr int s_iFormatStep = 512;

/// Returns a buffer for a string of that capacity. Every string's buffer comes from here, and holds what ReservedText says.
[[gnu::always_inline]] inline char* NewText(int iCapacity, const char* pszExpression = "char[m_iBufferSize]",
                                            int iLine = __builtin_LINE())
{
    return NewArray<char>(bedplate_private::ReservedText(iCapacity), pszExpression, __FILE__, iLine);
}

/// Writes the NUL that ends a text of iSize bytes, and zeros up to the end of its buffer; mostly that is the same.
void ZeroRest(char* pszText, int iSize, int iBufferSize)
{
    pszText[iSize] = '\0';
    if (iSize + 1 < iBufferSize)
        memset(pszText + iSize + 1, 0, static_cast<std::size_t>(iBufferSize - iSize - 1));
}

bool IsNullOrEmpty(const char* pszText) { return pszText == nullptr || *pszText == '\0'; }

// The characters that a trim removes. None of them is asked about the NUL. The C library is given signed
// characters, as it is by everything else here.
bool IsWhite(char ch) { return isspace(ch) != 0; }
} // namespace

// ---- What the units share ---------------------------------------------------------------------------------

CString StringDesign::Adopt(char* pszText, int iSize, int iBufferSize)
{
    return CString(pszText, iSize, iBufferSize);
}

char* StringDesign::Construct(CString& strText, std::int64_t iCount)
{
    const int iSize       = CheckSize(iCount + 1, "char[m_iBufferSize]") - 1;
    strText.m_iBufferSize = CapacityFor(iSize);
    strText.m_pszData     = NewText(strText.m_iBufferSize);
    strText.m_iSize       = iSize;
    if (iSize == 0)
        memset(strText.m_pszData, 0, s_iEmptySize);
    strText.m_pszData[iSize] = '\0';
    return strText.m_pszData;
}

void StringDesign::Construct(CString& strText, const char* pszText, std::size_t iCount)
{
    CopyBytes(Construct(strText, static_cast<std::int64_t>(iCount)), pszText, iCount);
}

CString StringDesign::FromBytes(const char* pszText, std::size_t iCount)
{
    CString str(nullptr, 0, 0);
    Construct(str, pszText, iCount);
    return str;
}

CString StringDesign::FromParts(const char* pszHead, std::size_t iHead, const char* pszTail,
                                std::size_t iTail)
{
    CString str(nullptr, 0, 0);
    char* pszText = Construct(str, static_cast<std::int64_t>(iHead) + static_cast<std::int64_t>(iTail));
    CopyBytes(CopyBytes(pszText, pszHead, iHead), pszTail, iTail);
    return str;
}

CString StringDesign::Substring(const CString& strText, int iStart, int iCount)
{
    const char* pszStart = strText.ToStr() + iStart;
    return FromBytes(pszStart, strnlen(pszStart, static_cast<std::size_t>(iCount)));
}

CString* StringDesign::NewVacated() { return new CString(nullptr, 0, s_iEmptySize); }

void StringDesign::Vacate(CString& strText)
{
    delete[] strText.m_pszData;
    strText.m_pszData     = nullptr;
    strText.m_iSize       = 0;
    strText.m_iBufferSize = s_iEmptySize;
}

void StringDesign::SetAnew(CString& strText, const char* pszText, std::size_t iCount)
{
    const int iSize       = CheckSize(static_cast<std::int64_t>(iCount) + 1, "char[m_iBufferSize]") - 1;
    const int iBufferSize = std::max(iSize + 1, s_iEmptySize);
    if (strText.m_pszData == nullptr || strText.m_iBufferSize != iBufferSize)
    {
        Vacate(strText);
        strText.m_iBufferSize = iBufferSize;
        strText.m_pszData     = NewText(iBufferSize);
    }
    CopyBytes(strText.m_pszData, pszText, iCount);
    ZeroRest(strText.m_pszData, iSize, iBufferSize);
    strText.m_iSize = iSize;
}

CTextBuilder::CTextBuilder(std::int64_t iForetold)
{
    if (iForetold >= static_cast<std::int64_t>(m_iCapacity))
    {
        const int iBufferSize = CheckSize(iForetold + 1, "char[m_iBufferSize]");
        m_pszText             = NewText(iBufferSize);
        m_iCapacity           = static_cast<std::size_t>(ReservedText(iBufferSize));
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
    char* pszNew                = NewText(iBufferSize);
    memcpy(pszNew, m_pszText, m_iSize);
    if (m_pszText != m_szShort)
        delete[] m_pszText;
    m_pszText   = pszNew;
    m_iCapacity = static_cast<std::size_t>(ReservedText(iBufferSize));
}

char* CTextBuilder::Release(int iBufferSize)
{
    char* pszText = m_pszText;
    if (pszText != m_szShort && m_iCapacity == static_cast<std::size_t>(ReservedText(iBufferSize)))
    {
        m_pszText = m_szShort;
    }
    else
    {
        pszText = NewText(iBufferSize);
        memcpy(pszText, m_pszText, m_iSize);
    }
    ZeroRest(pszText, GetSize(), iBufferSize);
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

CString::CString(const char* pszText)
{
    if (pszText == nullptr)
        pszText = s_szEmpty;
    StringDesign::Construct(*this, pszText, strlen(pszText));
}

CString::CString(const CString& strOther)
{
    StringDesign::Construct(*this, strOther.ToStr(), strlen(strOther.ToStr()));
}

CString::CString(char* pszAdopted, int iSize, int iBufferSize)
    : m_pszData(pszAdopted), m_iSize(iSize), m_iBufferSize(iBufferSize)
{
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
        m_pszData     = NewText(m_iBufferSize);
    }
    MoveBytes(m_pszData, pszText, iBytes); // pszText may lie in the buffer that was kept
    ZeroRest(m_pszData, iLength, m_iBufferSize);
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
    m_pszData     = NewText(m_iBufferSize);
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
    m_pszData     = NewText(m_iBufferSize);
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

void CString::ThrowInvalidString(const char* pszMessage) { throw CException(pszMessage, 0); }

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

// ---- Searching, extracting, converting --------------------------------------------------------------------

namespace
{
bool IsDigit(char ch) { return ch >= '0' && ch <= '9'; }

/// Returns where pszWanted, of iWanted > 0 bytes, first stands in iText bytes, or null.
const char* FindBytes(const char* pszText, std::size_t iText, const char* pszWanted, std::size_t iWanted)
{
    if (iWanted > iText)
        return nullptr;
    // Mostly the first character is rare, and memchr is quick at passing over all others. Where it is not, memmem, which
    // never takes much longer than the text is long, has the rest.
    const char* psz           = pszText;
    const char* const pszLast = pszText + iText - iWanted;
    const std::size_t iEffort = 1 + iWanted / 256; // of a comparison
    for (std::size_t i = 0; i <= 16 + static_cast<std::size_t>(psz - pszText) / 8; i += iEffort)
    {
        psz = static_cast<const char*>(memchr(psz, *pszWanted, static_cast<std::size_t>(pszLast - psz) + 1));
        if (psz == nullptr || AreBytesEqual(psz, pszWanted, iWanted))
            return psz;
        if (psz++ == pszLast)
            return nullptr;
    }
    return static_cast<const char*>(
        memmem(psz, static_cast<std::size_t>(pszText + iText - psz), pszWanted, iWanted));
}

/// Does what strstr does in a text of at most iText bytes.
const char* FindText(const char* pszText, std::size_t iText, const char* pszWanted)
{
    if (sizeof(void*) > 4)
        return strstr(pszText, pszWanted); // the C library's is the fastest where it may use vectors
    // In windows that grow: neither a NUL far in front of the end nor a match far in front of the NUL should cost a look at
    // all of the text.
    const std::size_t iWanted = strlen(pszWanted);
    for (std::size_t iWindow = 256 + 2 * iWanted;; iWindow *= 2)
    {
        const std::size_t iSeen = strnlen(pszText, std::min(iWindow, iText));
        const char* pszFound    = FindBytes(pszText, iSeen, pszWanted, iWanted);
        if (pszFound != nullptr || iSeen < iWindow)
            return pszFound;
        pszText += iSeen - iWanted; // a match may begin in this window and end in the next one
        iText -= iSeen - iWanted;
    }
}
} // namespace

int CString::Find(const char* pszWanted, int iStart) const
{
    iStart = std::max(iStart, 0);
    if (IsNullOrEmpty(pszWanted) || iStart >= m_iSize)
        return -1;
    return PositionOf(FindText(m_pszData + iStart, static_cast<std::size_t>(m_iSize - iStart), pszWanted));
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
    // Most texts are a few digits, perhaps behind blanks and a sign; strtol has the last word on all others.
    const char* psz = ToStr();
    while (*psz == ' ' || (*psz >= '\t' && *psz <= '\r'))
        ++psz;
    const bool bNegative = *psz == '-';
    psz += *psz == '-' || *psz == '+' ? 1 : 0;
    const char* const pszDigits = psz;
    int iValue                  = 0;
    for (; IsDigit(*psz) && psz - pszDigits < 9; ++psz)
        iValue = iValue * 10 + (*psz - '0');
    if (psz != pszDigits && !IsDigit(*psz))
        return bNegative ? -iValue : iValue;
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
    if (iSize >= strText.m_iBufferSize && FitsReserve(strText, iSize + 1))
        strText.m_iBufferSize = iSize + 1;
    if (pszText == nullptr || iSize >= strText.m_iBufferSize)
    {
        const int iNewSize = iSize + 1;
        pszText            = NewText(iNewSize);
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
    int iReplaced      = 0;
    char* const pszEnd = m_pszData + m_iSize;
    for (char* psz = m_pszData; psz != pszEnd; ++psz)
    {
        // Without a branch: where the character stands is hard to foretell.
        const char ch  = *psz;
        const bool bIs = ch == chOld;
        *psz           = bIs ? chNew : ch;
        iReplaced += bIs ? 1 : 0;
    }
    return iReplaced;
}

namespace
{
/// Returns where svWanted first stands in svText from iFrom on; npos for nowhere.
std::size_t FindFrom(std::string_view svText, std::size_t iFrom, std::string_view svWanted)
{
    const char* pszFound =
        FindBytes(svText.data() + iFrom, svText.size() - iFrom, svWanted.data(), svWanted.size());
    return pszFound != nullptr ? static_cast<std::size_t>(pszFound - svText.data()) : std::string_view::npos;
}

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
    for (std::size_t i = FindFrom(svText, 0, svOld); i != std::string_view::npos;
         i             = FindFrom(svText, i + svOld.size(), svOld))
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
    std::size_t iMatch = FindFrom(svText, 0, svOld);
    if (iMatch == std::string_view::npos)
        return 0;

    CTextBuilder text(ReplacedLength(svText, svOld, svNew));
    int iMatches      = 0;
    std::size_t iFrom = 0;
    for (; iMatch != std::string_view::npos; iMatch = FindFrom(svText, iFrom, svOld))
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

namespace
{
/// Replaces characters by their entries in one of the C library's tables of the other case.
void ChangeCase(char* pszText, int iCount, const std::int32_t* piTable)
{
    for (char* psz = pszText; psz != pszText + iCount; ++psz)
        *psz = static_cast<char>(piTable[static_cast<signed char>(*psz)]);
}
} // namespace

void CString::MakeUpper() { ChangeCase(m_pszData, m_iSize, *__ctype_toupper_loc()); }
void CString::MakeLower() { ChangeCase(m_pszData, m_iSize, *__ctype_tolower_loc()); }

// ---- Formatting and appending -----------------------------------------------------------------------------

// vsnprintf works in memory of its own for some numbers; running out of it is a failed allocation like any other.

int CString::Format(const char* pszFormat, ...)
{
    if (pszFormat == nullptr)
    {
        MakeEmptyString();
        return 0;
    }
    va_list args;
    va_start(args, pszFormat);
    CPrinter printer(pszFormat, args);
    va_end(args);
    const int iPrinted = printer.GetPrinted();
    if (iPrinted < 0)
    {
        if (errno == ENOMEM)
            ThrowBadAlloc("char[m_iBufferSize]");
        MakeEmptyString();
        return -1;
    }
    const std::int64_t iSteps = std::int64_t{iPrinted} / s_iFormatStep + 1;
    const int iNewSize        = CheckSize(iSteps * s_iFormatStep + 1, "char[m_iBufferSize]");

    // The arguments may point into the old text, which lives until the new one is printed then.
    std::unique_ptr<char[]> pszOld(m_pszData);
    if (m_pszData != nullptr && !printer.MayRead(m_pszData, m_iBufferSize))
        pszOld.reset();
    m_pszData     = nullptr;
    m_iSize       = 0;
    m_iBufferSize = iNewSize;
    std::unique_ptr<char[]> pszNew(NewText(iNewSize));
    if (!printer.Write(pszNew.get(), iNewSize))
        ThrowBadAlloc("char[m_iBufferSize]");
    m_pszData = pszNew.release();
    m_iSize   = printer.GetTextSize();
    memset(m_pszData + iPrinted, 0, static_cast<std::size_t>(m_iBufferSize - iPrinted));
    return iPrinted;
}

CString CFormat(const char* pszFormat, ...)
{
    if (pszFormat == nullptr)
        return CString();
    va_list args;
    va_start(args, pszFormat);
    CPrinter printer(pszFormat, args);
    va_end(args);
    return StringDesign::FromPrinter(printer);
}

namespace
{
/// Returns the capacity of the string that CFormat makes of iSize characters.
int PrintedCapacity(std::int64_t iSize)
{
    return std::max(CheckSize(iSize + 1, "char[iLen]"), StringDesign::s_iEmptySize);
}
} // namespace

CString StringDesign::FromPrinted(const char* pszText, std::size_t iCount)
{
    const int iSize = static_cast<int>(iCount);
    const int iLen  = PrintedCapacity(static_cast<std::int64_t>(iCount));
    char* pszNew    = NewText(iLen, "char[iLen]");
    CopyBytes(pszNew, pszText, iCount);
    ZeroRest(pszNew, iSize, iLen);
    return Adopt(pszNew, iSize, iLen);
}

CString StringDesign::FromPrinter(CPrinter& printer)
{
    if (printer.GetPrinted() < 0)
    {
        if (errno == ENOMEM)
            ThrowBadAlloc("char[iLen]");
        return CString();
    }

    const int iSize = printer.GetTextSize();
    const int iLen  = PrintedCapacity(iSize);
    std::unique_ptr<char[]> pszText(NewText(iLen, "char[iLen]"));
    if (!printer.Write(pszText.get(), iLen))
        ThrowBadAlloc("char[iLen]");
    // A printed NUL ends the text, and the capacity goes by the text.
    if (printer.GetTextSize() != iSize)
        return FromPrinted(pszText.get(), static_cast<std::size_t>(printer.GetTextSize()));
    ZeroRest(pszText.get(), iSize, iLen);
    return Adopt(pszText.release(), iSize, iLen);
}

void CString::ConcatInPlace(const char* pszText)
{
    if (IsNullOrEmpty(pszText))
        return;
    const std::size_t iBytes = strlen(pszText);
    const int iNewSize =
        CheckSize(std::int64_t{m_iSize} + static_cast<std::int64_t>(iBytes) + 1, "char[m_iBufferSize]");
    if (StringDesign::FitsReserve(*this, iNewSize))
    {
        MoveBytes(m_pszData + m_iSize, pszText, iBytes); // the NUL is written last: pszText may end there
    }
    else
    {
        char* pszNew = NewText(iNewSize);
        memcpy(pszNew, ToStr(), static_cast<std::size_t>(m_iSize));
        CopyBytes(pszNew + m_iSize, pszText, iBytes);
        delete[] m_pszData;
        m_pszData = pszNew;
    }
    m_pszData[iNewSize - 1] = '\0';
    m_iSize                 = iNewSize - 1;
    m_iBufferSize           = iNewSize;
}

CString CString::operator+(const char* pszText) const
{
    if (pszText == nullptr)
        pszText = s_szEmpty;
    return StringDesign::FromParts(ToStr(), strlen(ToStr()), pszText, strlen(pszText));
}

CString CString::operator+(const CString& strOther) const { return *this + strOther.ToStr(); }
CString CString::operator+(const char* pszText) { return std::as_const(*this) + pszText; }
CString CString::operator+(const CString& strOther) { return std::as_const(*this) + strOther.ToStr(); }

CString operator+(const char* pszText, const CString& strText)
{
    if (pszText == nullptr)
        pszText = s_szEmpty;
    return StringDesign::FromParts(pszText, strlen(pszText), strText.ToStr(), strlen(strText.ToStr()));
}

// ---- Splitting --------------------------------------------------------------------------------------------

namespace
{
/// Stores the pieces of the text from psz to pszEnd. FindSep(pszFrom) gives the next separator, of iSepLen bytes, or null.
template <class TFindSep>
void AddPieces(CStrArrayFiller& filler, const char* psz, const char* pszEnd, bool bTrim, bool bKeepEmptyLast,
               std::size_t iSepLen, TFindSep FindSep)
{
    for (const char* pszSep = psz; pszSep != nullptr; psz = pszSep + iSepLen)
    {
        pszSep            = FindSep(psz);
        const char* pszTo = pszSep != nullptr ? pszSep : pszEnd;
        while (bTrim && psz < pszTo && IsWhite(*psz))
            ++psz;
        while (bTrim && psz < pszTo && IsWhite(pszTo[-1]))
            --pszTo;
        if (pszSep != nullptr || bKeepEmptyLast || psz < pszTo)
            filler.Add(psz, static_cast<std::size_t>(pszTo - psz));
        if (pszSep == nullptr)
            break;
    }
}
} // namespace

void StringDesign::Split(const CString& strText, CStrArray& arrPieces, const char* pszSep,
                         std::size_t iSepLen, bool bTrim, bool bKeepEmptyLast)
{
    CStrArrayFiller filler(arrPieces);
    // The array may hold the text and the separator, and is about to overwrite them.
    const std::size_t iText = strnlen(strText.ToStr(), static_cast<std::size_t>(strText.m_iSize));
    const std::unique_ptr<char[]> pszCopy(
        NewArray<char>(std::int64_t{strText.m_iSize} + 1, "char[m_iSize+1]"));
    memcpy(pszCopy.get(), strText.ToStr(), iText);
    CTextBuilder sep;
    if (iSepLen <= iText)
        sep.Append(pszSep, iSepLen);

    const char* const pszEnd = pszCopy.get() + iText;
    const auto RestFrom      = [=](const char* psz) { return static_cast<std::size_t>(pszEnd - psz); };
    const auto Add           = [&](auto FindSep)
    { AddPieces(filler, pszCopy.get(), pszEnd, bTrim, bKeepEmptyLast, iSepLen, FindSep); };
    if (iSepLen == 0 || iSepLen > iText)
        Add([](const char*) { return static_cast<const char*>(nullptr); });
    else if (iSepLen == 1)
        Add([&, chSep = *pszSep](const char* psz)
            { return static_cast<const char*>(memchr(psz, chSep, RestFrom(psz))); });
    else
        Add([&](const char* psz) { return FindBytes(psz, RestFrom(psz), sep.GetText(), iSepLen); });
}

void CString::Split(const char* pszSep, CStrArray* pArray, bool bTrim) const
{
    if (pArray == nullptr)
        return;
    if (pszSep == nullptr)
        pszSep = s_szEmpty;
    StringDesign::Split(*this, *pArray, pszSep, strlen(pszSep), bTrim, !bTrim);
}

void CString::Split(char chSep, CStrArray* pArray, bool bTrim) const
{
    if (pArray != nullptr)
        StringDesign::Split(*this, *pArray, &chSep, chSep != '\0' ? 1 : 0, bTrim, false);
}
