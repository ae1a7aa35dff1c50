#include "ptr_array.h"

#include "arrays/array_access.h"
#include "arrays/array_design.h"
#include "arrays/sorting.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace bedplate_private
{
template <>
struct ArrayTraits<CPtrArray> : ValueTraits<CPtrArrayItem*>
{
    static constexpr char s_szName[]        = "CPtrArray";
    static constexpr std::size_t s_iMaxText = 2 + 2 * sizeof(void*);

    /// As "%p" prints.
    struct CPrint
    {
        std::size_t operator()(char* pszTo, const CPtrArrayItem* pItem) const
        {
            if (pItem == nullptr)
                return static_cast<std::size_t>(std::copy_n("(nil)", 5, pszTo) - pszTo);
            pszTo[0]           = '0';
            pszTo[1]           = 'x';
            const auto iNumber = reinterpret_cast<std::uintptr_t>(pItem);
            return static_cast<std::size_t>(std::to_chars(pszTo + 2, pszTo + s_iMaxText, iNumber, 16).ptr -
                                            pszTo);
        }
    };
};
} // namespace bedplate_private

using bedplate_private::Checked;
using bedplate_private::GrownCapacity;
using bedplate_private::IsIndex;
using Design = bedplate_private::ArrayDesign<CPtrArray>;

namespace
{
constexpr int s_iFirstSize       = 16;
constexpr int s_iLargestDoubling = 1048576;
} // namespace

// ---- Life -------------------------------------------------------------------------------------------------

CPtrArray::CPtrArray(bool bOwner) : m_bOwner(bOwner) {}

CPtrArray::CPtrArray(int iCount, CPtrArrayItem* pItem, bool bOwner) : m_bOwner(bOwner)
{
    Reset(iCount, pItem);
}

CPtrArray::CPtrArray(CPtrArray& arrSource) { *this = arrSource; }

CPtrArray::~CPtrArray()
{
    DropAll();
    Design::DeleteBuffer(m_pData, m_iBufferSize);
}

CPtrArray& CPtrArray::operator=(const CPtrArray& arrSource)
{
    if (this == &arrSource)
        return *this;
    RemoveAll();
    GrowBuffer(arrSource.m_iSize);
    Design::CopySlots(m_pData, arrSource.m_pData, arrSource.m_iSize);
    m_iSize  = arrSource.m_iSize;
    m_bOwner = false;
    return *this;
}

CPtrArray& CPtrArray::operator=(CPtrArray&& arrSource)
{
    if (this == &arrSource)
        return *this;
    RemoveAll();
    // The capacity of a copy: the source's may be lowered to it, as its memory goes by no capacity of ours.
    const int iCapacity = arrSource.m_iSize > 0 ? arrSource.m_iSize : bedplate_private::GrowthStep(0);
    if (arrSource.m_iBufferSize < iCapacity)
        GrowBuffer(0);
    else
    {
        bedplate_private::ArrayMoves::Swap(*this, arrSource);
        m_iBufferSize = iCapacity;
    }
    arrSource.RemoveAll();
    m_bOwner = arrSource.m_bOwner;
    return *this;
}

// ---- Reading ----------------------------------------------------------------------------------------------

bool CPtrArray::IsIn(CPtrArrayItem* pItem) const { return Design::Find(*this, pItem) >= 0; }

CString CPtrArray::Repr(const char* pszSep, bool bHeader) const
{
    return Design::Repr(*this, pszSep, bHeader);
}
void bedplate_private::AppendElements(CTextBuilder& text, const CPtrArray& arr, std::string_view svBetween)
{
    Design::AppendElements(text, arr, svBetween);
}

// ---- The buffer -------------------------------------------------------------------------------------------

void CPtrArray::Enlarge(long long iCapacity, const char* pszOutOfMemory)
{
    if (iCapacity > m_iBufferSize && !Design::TryEnlarge(*this, iCapacity))
        throw CException(pszOutOfMemory, 0);
}

/// Does GrowBuffer(iCount) as an array of iSize items would.
void CPtrArray::Grow(int iCount, int iSize)
{
    Enlarge(GrownCapacity(m_iBufferSize, iCount, iSize), "CPtrArray::GrowBuffer : Out of memory");
}

void CPtrArray::GrowBuffer(int iCount) { Grow(iCount, m_iSize); }

/// Makes room for one more item in a full buffer.
void CPtrArray::MakeRoom()
{
    if (m_pData == nullptr)
        Enlarge(s_iFirstSize, "CPtrArray::Add : Out of memory");
    else
        GrowBuffer(0);
}

// ---- Changing ---------------------------------------------------------------------------------------------

/// Gives up what slot iIndex holds.
void CPtrArray::Drop(int iIndex)
{
    CPtrArrayItem* pItem = m_pData[iIndex];
    if (!m_bOwner)
        return;
    m_pData[iIndex] = nullptr;
    delete pItem;
}

/// Gives up what all slots in use hold, first to last.
void CPtrArray::DropAll()
{
    for (int i = 0; i < m_iSize; ++i)
        Drop(i);
}

void CPtrArray::SetAt(int iIndex, CPtrArrayItem* pItem)
{
    if (m_pData[Checked("CPtrArray::SetAt", iIndex, m_iSize)] == pItem)
        return;
    Drop(iIndex);
    m_pData[iIndex] = pItem;
}

int CPtrArray::InsertAt(int iIndex, CPtrArrayItem* pItem)
{
    if (iIndex < 0)
        return -1;
    const int iPos = std::min(iIndex, m_iSize);
    if (m_pData == nullptr)
        MakeRoom();
    else if (m_iSize >= m_iBufferSize)
        Enlarge(static_cast<long long>(m_iBufferSize) + std::min(m_iBufferSize, s_iLargestDoubling),
                "CPtrArray::InsertAt : Out of memory");
    return Design::Place(*this, iPos, pItem);
}

int CPtrArray::RemoveAt(int iIndex)
{
    if (!IsIndex(iIndex, m_iSize))
        return -1;
    Drop(iIndex);
    return Design::RemoveAt(*this, iIndex);
}

CPtrArrayItem* CPtrArray::Detach(int iIndex)
{
    CPtrArrayItem* pItem = m_pData[Checked("CPtrArray::Detach", iIndex, m_iSize)];
    Design::RemoveAt(*this, iIndex);
    return pItem;
}

void CPtrArray::RemoveLast()
{
    if (m_iSize > 0)
        Drop(--m_iSize);
}

void CPtrArray::Clear()
{
    DropAll();
    Design::Clear(*this);
}

void CPtrArray::RemoveAll()
{
    DropAll();
    Design::RemoveAll(*this);
}

void CPtrArray::Reset(int iCount, CPtrArrayItem* pItem)
{
    // The room is that of an array without items, but nothing goes before it is there.
    Grow(iCount, 0);
    for (int i = 0; i < m_iSize; ++i)
    {
        if (m_pData[i] != pItem)
            Drop(i);
    }
    m_iSize = std::max(iCount, 0);
    std::fill(m_pData, m_pData + m_iSize, pItem);
}

void CPtrArray::SortBy(bool (*pIsBefore)(void*, CPtrArrayItem*, CPtrArrayItem*), void* pOrder)
{
    const auto Less = [=](CPtrArrayItem* pLeft, CPtrArrayItem* pRight)
    { return pIsBefore(pOrder, pLeft, pRight); };
    if (!bedplate_private::SortCopy(m_pData, m_iSize, Less))
        throw CException("CPtrArray::Sort : Out of memory", 0);
}
