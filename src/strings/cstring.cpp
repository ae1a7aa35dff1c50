// What a CString keeps its text in, and editing it there.
#include "cstring.h"

#include "base/allocation.h"
#include "strings/search.h"
#include "strings/string_design.h"
#include "strings/text_builder.h"
#include "strings/trimming.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstddef>

using namespace bedplate_private;

// ---- Memory -----------------------------------------------------------------------------------------------

void StringDesign::ThrowNoMemory(const char* pszExpression, const char* pszReason)
{
    ThrowAllocationFailure(pszExpression, pszReason, __FILE__, __LINE__);
}

// ---- Life -------------------------------------------------------------------------------------------------

CString StringDesign::FromBytes(std::string_view svBytes)
{
    CString strText = WithoutBuffer();
    Renew(strText, svBytes, CapacityFor(CheckText(svBytes)));
    return strText;
}

CString StringDesign::Concat(std::initializer_list<std::string_view> listParts)
{
    std::uint64_t iTotal = 0;
    for (const std::string_view& svPart : listParts)
        iTotal += svPart.size();
    const int iSize = CheckSize(iTotal + 1) - 1;
    CString strText = WithoutBuffer();
    ReplaceBuffer(strText, CapacityFor(iSize));
    char* psz = strText.m_pszData;
    for (const std::string_view& svPart : listParts)
        psz = CopyBytes(psz, svPart.data(), svPart.size());
    EndText(strText, iSize);
    return strText;
}

CString::CString() { MakeEmptyString(); }

CString::CString(const char* pszText)
{
    const std::string_view svText = ViewOf(pszText);
    StringDesign::Renew(*this, svText, StringDesign::CapacityFor(StringDesign::CheckText(svText)));
}

CString::CString(const CString& strOther) : CString(strOther.ToStr()) {}

CString& CString::operator=(const char* pszText)
{
    Set(pszText);
    return *this;
}

CString& CString::operator=(const CString& strOther)
{
    Set(strOther.ToStr());
    return *this;
}

CString& CString::operator=(CString&& strOther)
{
    // The copy would stay in a buffer that it fits in.
    const int iSize   = static_cast<int>(ViewOf(strOther).size());
    const bool bStays = m_pszData != nullptr && iSize > 0 && m_iBufferSize > iSize;
    const bool bSuits =
        strOther.m_pszData != nullptr && strOther.m_iBufferSize == StringDesign::CapacityFor(iSize);
    if (this == &strOther || bStays || !bSuits)
    {
        Set(strOther.ToStr());
        return *this;
    }
    StringDesign::Adopt(*this, strOther.m_pszData, iSize, strOther.m_iBufferSize);
    strOther.m_pszData = nullptr;
    StringDesign::DropBuffer(strOther);
    StringDesign::EndText(*this, iSize); // what is behind it is zero in a copy
    return *this;
}

int CString::Set(const char* pszText)
{
    const std::string_view svText = ViewOf(pszText);
    if (svText.empty())
    {
        MakeEmptyString();
        return 0;
    }
    const int iSize = StringDesign::CheckText(svText);
    if (m_pszData == nullptr || m_iBufferSize <= iSize)
        StringDesign::ReplaceBuffer(*this, iSize + 1);
    MoveBytes(m_pszData, svText.data(), svText.size()); // it may lie in the buffer that was kept
    StringDesign::EndText(*this, iSize);
    return iSize;
}

int CString::Set(const CString& strOther) { return Set(strOther.ToStr()); }

void CString::MakeEmptyString()
{
    StringDesign::ReplaceBuffer(*this, StringDesign::s_iEmptySize);
    StringDesign::EndText(*this, 0);
}

void CString::Empty() { MakeEmptyString(); }

void CString::Clear() { MakeEmptyString(); }

char* CString::GetBuffer(int iCount)
{
    StringDesign::ReplaceBuffer(
        *this, StringDesign::CheckSize(static_cast<unsigned>(std::max(iCount, 0)) + std::uint64_t{1}));
    StringDesign::EndText(*this, 0);
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

// ---- Inserting and appending --------------------------------------------------------------------------------

void StringDesign::InsertAnew(CString& strText, int iIndex, std::string_view svBytes, int iSize)
{
    char* const pszNew = NewText(iSize + 1);
    char* psz          = CopyBytes(pszNew, strText.ToStr(), static_cast<std::size_t>(iIndex));
    psz                = CopyBytes(psz, svBytes.data(), svBytes.size());
    psz  = CopyBytes(psz, strText.ToStr() + iIndex, static_cast<std::size_t>(strText.m_iSize - iIndex));
    *psz = '\0';
    Adopt(strText, pszNew, iSize, iSize + 1);
}

int StringDesign::Insert(CString& strText, int iIndex, std::string_view svBytes)
{
    const int iOldSize       = strText.m_iSize;
    const std::size_t iCount = svBytes.size();
    const int iSize          = CheckSize(std::uint64_t{iCount} + static_cast<unsigned>(iOldSize) + 1) - 1;
    const int iHead          = std::clamp(iIndex, 0, iOldSize);
    char* const pszText      = strText.m_pszData;
    if (iSize >= strText.m_iBufferSize && FitsReserve(strText, iSize + 1))
        strText.m_iBufferSize = iSize + 1;
    if (pszText == nullptr || iSize >= strText.m_iBufferSize)
    {
        InsertAnew(strText, iHead, svBytes, iSize);
        return iSize;
    }
    if (PointsInto(svBytes.data(), pszText, strText.m_iBufferSize))
    {
        // Moving the tail first could move or overwrite the bytes to insert, so they go behind it and then rotate
        // into their place.
        memmove(pszText + iOldSize, svBytes.data(), iCount);
        std::rotate(pszText + iHead, pszText + iOldSize, pszText + iSize);
    }
    else
    {
        memmove(pszText + iHead + iCount, pszText + iHead, static_cast<std::size_t>(iOldSize - iHead));
        memcpy(pszText + iHead, svBytes.data(), iCount);
    }
    pszText[iSize]  = '\0';
    strText.m_iSize = iSize;
    return iSize;
}

int CString::Insert(int iIndex, char chNew) { return StringDesign::Insert(*this, iIndex, {&chNew, 1}); }

int CString::Insert(int iIndex, const char* pszNew)
{
    const std::string_view svNew = ViewOf(pszNew);
    return svNew.empty() ? m_iSize : StringDesign::Insert(*this, iIndex, svNew);
}

/// Appends bytes, which may be the text's own; none change nothing.
void CString::Append(const char* pszBytes, decltype(sizeof 0) iCount)
{
    const int iSize = StringDesign::CheckSize(std::uint64_t{iCount} + static_cast<unsigned>(m_iSize) + 1) - 1;
    if (iCount == 0)
        return;
    if (!StringDesign::FitsReserve(*this, iSize + 1))
        return StringDesign::InsertAnew(*this, m_iSize, {pszBytes, iCount}, iSize);
    MoveBytes(m_pszData + m_iSize, pszBytes, iCount);
    m_pszData[iSize] = '\0'; // last, as the bytes may be the text's own and end there
    m_iSize          = iSize;
    m_iBufferSize    = iSize + 1;
}

namespace
{
template <class TLeft, class TRight>
CString Joined(const TLeft& left, const TRight& right)
{
    return StringDesign::Concat({ViewOf(left), ViewOf(right)});
}
} // namespace

CString CString::operator+(const char* pszText) const { return Joined(*this, pszText); }
CString CString::operator+(const CString& strOther) const { return Joined(*this, strOther); }
CString CString::operator+(const char* pszText) { return Joined(*this, pszText); }
CString CString::operator+(const CString& strOther) { return Joined(*this, strOther); }
CString operator+(const char* pszText, const CString& strText) { return Joined(pszText, strText); }

// ---- Removing and replacing -----------------------------------------------------------------------------------

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
        // Without a branch: where the character stands is hard to foretell, and at 64 bits one takes 1.6 times as long.
        const char ch  = *psz;
        const bool bIs = ch == chOld;
        *psz           = bIs ? chNew : ch;
        iReplaced += bIs ? 1 : 0;
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
    for (const char* psz; (psz = FindBytes(svText, svOld)) != nullptr; ++iMatches)
        svText.remove_prefix(static_cast<std::size_t>(psz - svText.data()) + svOld.size());
    return iText + iMatches * iMore;
}
} // namespace

int CString::Replace(const char* pszOld, const char* pszNew)
{
    std::string_view svText      = ViewOf(*this);
    const std::string_view svOld = ViewOf(pszOld);
    const std::string_view svNew = ViewOf(pszNew);
    const char* pszMatch         = svOld.empty() ? nullptr : FindBytes(svText, svOld);
    if (pszMatch == nullptr)
        return 0;

    CTextBuilder text(ReplacedLength(svText, svOld, svNew));
    int iMatches = 0;
    for (; pszMatch != nullptr; pszMatch = FindBytes(svText, svOld))
    {
        const std::size_t iBefore = static_cast<std::size_t>(pszMatch - svText.data());
        text.Append(svText.substr(0, iBefore));
        text.Append(svNew);
        svText.remove_prefix(iBefore + svOld.size());
        ++iMatches;
    }
    text.Append(svText);
    text.MoveTo(*this, text.GetSize() + 1);
    return iMatches;
}

// ---- Trimming and changing case -------------------------------------------------------------------------------

void StringDesign::Keep(CString& strText, int iBegin, int iEnd)
{
    strText.m_iSize = iEnd - iBegin;
    if (iBegin > 0)
        memmove(strText.m_pszData, strText.m_pszData + iBegin, static_cast<std::size_t>(strText.m_iSize));
    strText.m_pszData[strText.m_iSize] = '\0';
}

namespace
{
/// Cuts characters for which IsRemovable is true off the ends of a text.
template <class TRemovable>
void TrimEnds(CString& strText, bool bLeft, bool bRight, TRemovable IsRemovable)
{
    // Both ends are found before anything changes: a set to trim may lie in the text itself.
    const std::string_view svText = CountedText(strText);
    const std::string_view svKept = Trimmed(svText, bLeft, bRight, IsRemovable);
    if (svKept.size() == svText.size())
        return;
    const int iBegin = static_cast<int>(svKept.data() - svText.data());
    const int iEnd   = iBegin + static_cast<int>(svKept.size());
    // Bytes behind a NUL stay unless something in front of it goes.
    StringDesign::Keep(strText, iBegin, iEnd < static_cast<int>(svText.size()) ? iEnd : strText.GetLength());
}

// What a trim removes. None of them is asked about the NUL.

/// The characters of a set, a bit each; a null or empty set has none. Looking through the set for each character would take
/// as long as the text times the set.
class CInSet
{
public:
    explicit CInSet(const char* pszSet)
    {
        for (const char ch : ViewOf(pszSet))
            m_auBits[Word(ch)] |= Bit(ch);
    }

    bool operator()(char ch) const { return (m_auBits[Word(ch)] & Bit(ch)) != 0; }

private:
    static unsigned Word(char ch) { return static_cast<unsigned char>(ch) / 32; }
    static unsigned Bit(char ch) { return 1U << static_cast<unsigned char>(ch) % 32; }

    unsigned m_auBits[256 / 32] = {};
};

/// One character.
struct CIsChar
{
    char m_chWanted;

    bool operator()(char ch) const { return ch == m_chWanted; }
};
} // namespace

void CString::TrimLeft() { TrimEnds(*this, true, false, CIsWhite()); }
void CString::TrimLeft(char chOld) { TrimEnds(*this, true, false, CIsChar{chOld}); }
void CString::TrimLeft(const char* pszSet) { TrimEnds(*this, true, false, CInSet(pszSet)); }
void CString::TrimRight() { TrimEnds(*this, false, true, CIsWhite()); }
void CString::TrimRight(char chOld) { TrimEnds(*this, false, true, CIsChar{chOld}); }
void CString::TrimRight(const char* pszSet) { TrimEnds(*this, false, true, CInSet(pszSet)); }
void CString::Trim() { TrimEnds(*this, true, true, CIsWhite()); }
void CString::Trim(char chOld) { TrimEnds(*this, true, true, CIsChar{chOld}); }
void CString::Trim(const char* pszSet) { TrimEnds(*this, true, true, CInSet(pszSet)); }

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
