#include "str_array.h"

#include "arrays/array_access.h"
#include "arrays/rendering.h"
#include "arrays/sorting.h"
#include "arrays/str_array_filler.h"
#include "base/allocation.h"
#include "base/growth.h"
#include "exception.h"
#include "strings/string_design.h"
#include "strings/text_builder.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

using namespace bedplate_private;

namespace
{
constexpr char s_szName[] = "CStrArray";

void DestroyStrings(CString** pTable, int iFrom, int iTo)
{
    for (int i = iFrom; i < iTo; ++i)
        delete pTable[i];
}

/// Fills the slots from iFrom up to iTo with new strings, or none of them. Those from iUsed on are spare.
void CreateStrings(CString** pTable, int iFrom, int iTo, int iUsed)
{
    int i = iFrom;
    try
    {
        for (; i < iTo; ++i)
            pTable[i] = i < iUsed ? new CString() : StringDesign::NewSpare();
    }
    catch (const std::bad_alloc& e)
    {
        DestroyStrings(pTable, iFrom, i);
        ThrowAllocationFailure("CString", e.what(), __FILE__, __LINE__);
    }
    catch (...)
    {
        DestroyStrings(pTable, iFrom, i);
        throw;
    }
}

/// Returns the length of a string, which its text does not exceed. In a buffer that was handed out, there may be a text
/// that the string does not count yet.
std::size_t LengthOf(const CString& strText)
{
    return strText.IsEmpty() ? strlen(strText.ToStr()) : static_cast<std::size_t>(strText.GetLength());
}

/// Returns the length of a string's text, which ends at a NUL.
std::size_t TextLength(const CString& strText) { return strnlen(strText.ToStr(), LengthOf(strText)); }

/// Tells whether a string's text is the one of iLength bytes. A longer string may hold a NUL.
bool IsText(const CString& strText, const char* pszText, int iLength)
{
    if (strText.IsEmpty())
        return strcmp(strText.ToStr(), pszText) == 0;
    // The length tells most texts apart: comparing all by strcmp takes 1.4 to 2 times as long.
    return strText.GetLength() >= iLength && strText.ToStr()[iLength] == '\0' &&
           AreBytesEqual(strText.ToStr(), pszText, static_cast<std::size_t>(iLength));
}

/// Tells whether a copy of an element would have its text and capacity.
bool IsLikeCopy(const CString* pText)
{
    const std::size_t iLength = TextLength(*pText);
    return static_cast<std::size_t>(pText->GetLength()) == iLength &&
           static_cast<std::size_t>(pText->GetBufferSize()) ==
               std::max<std::size_t>(iLength + 1, StringDesign::s_iEmptySize);
}

/// Returns the length of all strings with iSepLen bytes between them.
std::int64_t JoinedLength(const CStrArray& arr, std::size_t iSepLen)
{
    std::int64_t iTotal = static_cast<std::int64_t>(iSepLen) * std::max(arr.GetSize() - 1, 0);
    for (const CString& strText : arr)
        iTotal += static_cast<std::int64_t>(LengthOf(strText));
    return iTotal;
}

} // namespace

void bedplate_private::AppendElements(CTextBuilder& text, const CStrArray& arr, std::string_view svBetween)
{
    const std::size_t iLength = static_cast<std::size_t>(JoinedLength(arr, svBetween.size()));
    char* const pszTo         = text.Room(iLength);
    const auto Write          = [=, &arr](auto Length)
    {
        char* psz            = pszTo;
        std::size_t iBetween = 0;
        for (const CString& strText : arr)
        {
            psz      = CopyBytes(psz, svBetween.data(), iBetween);
            psz      = CopyBytes(psz, strText.ToStr(), Length(strText));
            iBetween = svBetween.size();
        }
        return static_cast<std::size_t>(psz - pszTo);
    };
    // Texts end at their first NUL. One look through the result tells whether there is a NUL in any of them; one through each
    // string takes 1.4 to 3 times as long in all.
    const std::size_t iWritten = Write([](const CString& strText) { return LengthOf(strText); });
    const auto CutLength       = [](const CString& strText) { return TextLength(strText); };
    text.Advance(memchr(pszTo, '\0', iLength) == nullptr ? iWritten : Write(CutLength));
}

CStrArrayFiller::~CStrArrayFiller()
{
    for (int i = m_arr.m_iSize; i < m_iOldSize; ++i)
        StringDesign::DropBuffer(*m_arr.m_pData[i]);
}

// ---- Life -------------------------------------------------------------------------------------------------

CStrArray::CStrArray(int iCount) { SetSize(iCount); }

// Through the default constructor: the destructor then runs when a text cannot be copied.
CStrArray::CStrArray(CStrArray& arrSource) : CStrArray() { *this = arrSource; }

CStrArray::~CStrArray()
{
    DestroyStrings(m_pData, 0, m_iBufferSize);
    delete[] m_pData;
}

CStrArray& CStrArray::operator=(const CStrArray& arrSource)
{
    if (this == &arrSource)
        return *this;
    if (arrSource.m_iSize == 0)
    {
        RemoveAll();
        return *this;
    }
    CStrArrayFiller filler(*this);
    filler.Reserve(arrSource.m_iSize);
    try
    {
        for (const CString& strText : arrSource)
            InsertText(m_iSize, strText.ToStr(), TextLength(strText));
    }
    catch (const CException&)
    {
        for (; m_iSize < arrSource.m_iSize; ++m_iSize)
            StringDesign::DropBuffer(*m_pData[m_iSize]);
        throw;
    }
    return *this;
}

/// Returns the capacity that a buffer of iBufferSize slots, with iSize elements, is given for iNewSize elements.
long long CStrArray::CapacityFor(int iBufferSize, int iSize, int iNewSize)
{
    if (iBufferSize == 0 || iNewSize <= iBufferSize)
        return std::max(iBufferSize, iNewSize);
    return std::max<long long>(static_cast<long long>(iBufferSize) + GrowthStep(iSize), iNewSize);
}

CStrArray& CStrArray::operator=(CStrArray&& arrSource)
{
    if (this == &arrSource)
        return *this;
    if (!TakeOver(arrSource))
        *this = std::as_const(arrSource);
    arrSource.RemoveAll();
    return *this;
}

/// Takes over another array's elements, unless that would show: a copy has the capacity that this array grows to, and strings
/// of exact capacities.
bool CStrArray::TakeOver(CStrArray& arrSource)
{
    const int iSize           = arrSource.m_iSize;
    const bool bFits          = iSize <= m_iBufferSize;
    const long long iCapacity = CapacityFor(m_iBufferSize, 0, iSize);
    if (iSize == 0 || (!bFits && iCapacity > arrSource.m_iBufferSize) ||
        !std::all_of(arrSource.m_pData, arrSource.m_pData + iSize, IsLikeCopy))
        return false;
    if (bFits)
    {
        CStrArrayFiller filler(*this);
        std::swap_ranges(m_pData, m_pData + iSize, arrSource.m_pData);
        m_iSize = iSize;
        return true;
    }
    DestroyStrings(arrSource.m_pData, static_cast<int>(iCapacity), arrSource.m_iBufferSize);
    arrSource.m_iBufferSize = static_cast<int>(iCapacity);
    RemoveAll();
    ArrayMoves::Swap(*this, arrSource);
    return true;
}

// ---- Reading ----------------------------------------------------------------------------------------------

const char* CStrArray::EmptyText()
{
    static const char szEmpty[2] = {};
    return szEmpty;
}

CString CStrArray::GetAtLast() const { return *m_pData[CheckedLast("CStrArray::GetAtLast", m_iSize)]; }

int CStrArray::Find(const char* pszText) const
{
    if (pszText == nullptr)
        return -1;
    const int iLength = static_cast<int>(std::min<std::size_t>(strlen(pszText), INT_MAX));
    for (int i = 0; i < m_iSize; ++i)
    {
        if (IsText(*m_pData[i], pszText, iLength))
            return i;
    }
    return -1;
}

bool CStrArray::IsIn(const char* pszText) const { return Find(pszText) >= 0; }

CString CStrArray::Join(const char* pszSep) { return std::as_const(*this).Join(pszSep); }

CString CStrArray::Join(const char* pszSep) const
{
    const std::string_view svSep = ViewOf(pszSep);
    CTextBuilder text(JoinedLength(*this, svSep.size()));
    AppendElements(text, *this, svSep);
    return text.Finish();
}

CString CStrArray::Repr(const char* pszSep, bool bHeader) const
{
    if (m_iSize < 1)
        return RenderUnset(s_szName);
    const std::string_view svSep = ViewOf(pszSep);
    CTextBuilder header;
    if (bHeader)
        AppendHeader(header, s_szName, *this, pszSep);
    CTextBuilder text(header.GetSize() + JoinedLength(*this, svSep.size()));
    text.Append({header.GetText(), static_cast<std::size_t>(header.GetSize())});
    AppendElements(text, *this, svSep);
    return text.Finish();
}

// ---- Changing ---------------------------------------------------------------------------------------------

void CStrArray::SetAt(int iIndex, char* pszText)
{
    if (IsIndex(iIndex, m_iSize))
        m_pData[iIndex]->Set(pszText);
}

int CStrArray::Add(const char* pszText)
{
    if (pszText == nullptr)
        pszText = "";
    return InsertText(m_iSize, pszText, strlen(pszText));
}

int CStrArray::InsertAt(int iIndex, const char* pszText)
{
    if (iIndex < 0)
        return -1;
    if (pszText == nullptr)
        pszText = "";
    return InsertText(std::min(iIndex, m_iSize), pszText, strlen(pszText));
}

/// Inserts a text of iCount bytes before element iIndex, which is at most the size; returns iIndex. Where memory fails, a
/// text that every string has room for is not inserted; of others, and of the empty text, the element stays, empty.
int CStrArray::InsertText(int iIndex, const char* pszText, std::size_t iCount)
{
    const bool bFits = iCount > 0 && iCount < StringDesign::s_iEmptySize;
    if (m_iSize == m_iBufferSize)
    {
        const int iNewSize = CheckSize(std::int64_t{m_iSize} + 1, "CString*[iNewMax]");
        Reserve(iNewSize, bFits ? iNewSize : m_iSize);
    }
    ++m_iSize;
    if (iIndex < m_iSize - 1)
        std::rotate(m_pData + iIndex, m_pData + m_iSize - 1, m_pData + m_iSize);
    try
    {
        StringDesign::RenewElement(*m_pData[iIndex], {pszText, iCount});
    }
    catch (const CException&)
    {
        if (bFits)
        {
            std::rotate(m_pData + iIndex, m_pData + iIndex + 1, m_pData + m_iSize);
            --m_iSize;
        }
        throw;
    }
    return iIndex;
}

/// Makes sure that there are slots for iNewSize elements, with a string in each; the new ones below iUsed are in use.
void CStrArray::Reserve(int iNewSize, int iUsed)
{
    if (iNewSize <= m_iBufferSize)
        return;
    const char* pszExpression = m_pData == nullptr ? "CString*[m_iBufferSize]" : "CString*[iNewMax]";
    const int iNewMax         = CheckSize(CapacityFor(m_iBufferSize, m_iSize, iNewSize), pszExpression);
    std::unique_ptr<CString*[]> pNew;
    if (m_pData == nullptr || iNewMax > ReservedSlots<CString*>(m_iBufferSize))
    {
        pNew.reset(NewArray<CString*>(ReservedSlots<CString*>(iNewMax), pszExpression));
        std::copy(m_pData, m_pData + m_iBufferSize, pNew.get());
    }
    CreateStrings(pNew ? pNew.get() : m_pData, m_iBufferSize, iNewMax, iUsed);
    if (pNew)
    {
        delete[] m_pData;
        m_pData = pNew.release();
    }
    m_iBufferSize = iNewMax;
}

int CStrArray::SetSize(int iNewSize)
{
    if (iNewSize < 0)
        return -1;
    if (iNewSize == 0)
    {
        RemoveAll();
        return 0;
    }
    // Before the buffer changes: spare strings may fail to get buffers of their own.
    for (int i = m_iSize; i < std::min(iNewSize, m_iBufferSize); ++i)
        StringDesign::RenewElement(*m_pData[i], {});
    Reserve(iNewSize, iNewSize);
    for (int i = iNewSize; i < m_iSize; ++i)
        m_pData[i]->Clear();
    m_iSize = iNewSize;
    return 0;
}

int CStrArray::RemoveAt(int iIndex)
{
    if (!IsIndex(iIndex, m_iSize))
        return -1;
    std::rotate(m_pData + iIndex, m_pData + iIndex + 1, m_pData + m_iSize);
    RemoveLast();
    return iIndex;
}

void CStrArray::RemoveLast()
{
    if (m_iSize > 0)
        m_pData[--m_iSize]->Clear();
}

void CStrArray::Clear()
{
    for (int i = 0; i < m_iSize; ++i)
        m_pData[i]->Clear();
    m_iSize = 0;
}

void CStrArray::RemoveAll()
{
    DestroyStrings(m_pData, 0, m_iBufferSize);
    delete[] m_pData;
    m_pData       = nullptr;
    m_iSize       = 0;
    m_iBufferSize = 0;
}

void CStrArray::FreeExtra()
{
    if (m_iSize == m_iBufferSize)
        return;
    CString** pNew = nullptr;
    if (m_iSize > 0)
    {
        pNew = NewArray<CString*>(ReservedSlots<CString*>(m_iSize), "CString*[m_iSize]");
        memcpy(pNew, m_pData, sizeof(CString*) * static_cast<std::size_t>(m_iSize));
    }
    DestroyStrings(m_pData, m_iSize, m_iBufferSize);
    delete[] m_pData;
    m_pData       = pNew;
    m_iBufferSize = m_iSize;
}

// ---- Sorting ----------------------------------------------------------------------------------------------

int CStrArray_SortCmp(const void* pLeft, const void* pRight)
{
    const CString& strLeft  = **static_cast<const CString* const*>(pLeft);
    const CString& strRight = **static_cast<const CString* const*>(pRight);
    const int iOrder        = strLeft.Compare(strRight.ToStr());
    return iOrder < 0 ? -1 : (iOrder > 0 ? 1 : 0);
}

namespace
{
/// A string with the first eight bytes of its text as a number, which mostly decide.
struct CSortEntry
{
    std::uint64_t m_uPrefix;
    CString* m_pString;
};

std::uint64_t PrefixOf(const CString& strText)
{
    std::uint64_t uPrefix = 0;
    memcpy(&uPrefix, strText.ToStr(), std::min<std::size_t>(TextLength(strText), sizeof uPrefix));
    return __builtin_bswap64(uPrefix);
}

/// Equal prefixes are equal texts when they end in a NUL.
bool IsLessEntry(const CSortEntry& left, const CSortEntry& right)
{
    if (left.m_uPrefix != right.m_uPrefix)
        return left.m_uPrefix < right.m_uPrefix;
    return (left.m_uPrefix & 0xFF) != 0 &&
           strcmp(left.m_pString->ToStr() + 8, right.m_pString->ToStr() + 8) < 0;
}

/// Sorts entries by their prefixes, and then those of equal prefixes.
void SortEntries(CSortEntry* pBegin, CSortEntry* pScratch, std::size_t iCount)
{
    SortDigits(pBegin, pScratch, iCount, [](const CSortEntry& entry) { return entry.m_uPrefix; });
    CSortEntry* const pEnd = pBegin + iCount;
    while (pBegin != pEnd)
    {
        CSortEntry* const pNext = std::find_if(
            pBegin, pEnd, [=](const CSortEntry& entry) { return entry.m_uPrefix != pBegin->m_uPrefix; });
        std::sort(pBegin, pNext, IsLessEntry);
        pBegin = pNext;
    }
}

bool IsLess(const CString* pLeft, const CString* pRight)
{
    return strcmp(pLeft->ToStr(), pRight->ToStr()) < 0;
}
} // namespace

void CStrArray::Sort()
{
    if (m_iSize < 2 || std::is_sorted(m_pData, m_pData + m_iSize, IsLess))
        return;
    const std::size_t iCount = static_cast<std::size_t>(m_iSize);
    const bool bFew          = iCount < s_iFewItems;
    const auto pEntries      = TryNewScratch<CSortEntry>(bFew ? iCount : 2 * iCount);
    if (pEntries == nullptr)
        return std::sort(m_pData, m_pData + m_iSize, IsLess);
    CSortEntry* const pEnd = std::transform(m_pData, m_pData + m_iSize, pEntries.get(),
                                            [](CString* pString) {
                                                return CSortEntry{PrefixOf(*pString), pString};
                                            });
    if (bFew)
        std::sort(pEntries.get(), pEnd, IsLessEntry);
    else
        SortEntries(pEntries.get(), pEnd, iCount);
    std::transform(pEntries.get(), pEnd, m_pData, [](const CSortEntry& entry) { return entry.m_pString; });
}

void CStrArray::SortBy(bool (*pIsBefore)(void*, const CString&, const CString&), void* pOrder)
{
    const auto Less = [=](CString* pLeft, CString* pRight) { return pIsBefore(pOrder, *pLeft, *pRight); };
    if (!SortCopy(m_pData, m_iSize, Less))
        ThrowBadAlloc("CString*[m_iSize]");
}
