#include "ptr_array.h"

#include "base/growth.h"
#include "exception.h"
#include "strings/text_builder.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>

using bedplate_private::CTextBuilder;
using bedplate_private::GrowthStep;
using bedplate_private::ReservedSlots;

static_assert(sizeof(CPtrArray) == (sizeof(void*) == 4 ? 16 : 24), "the layout is part of the ABI");

namespace
{
constexpr int s_iFirstSize       = 16;
constexpr int s_iLargestDoubling = 1048576;

/// Returns a new buffer for iCapacity slots, or throws pszOutOfMemory.
CPtrArrayItem** NewSlots(long long iCapacity, const char* pszOutOfMemory)
{
    if (iCapacity > INT_MAX)
        throw CException(pszOutOfMemory, 0);
    try
    {
        return new CPtrArrayItem*[static_cast<std::size_t>(
            ReservedSlots<CPtrArrayItem*>(static_cast<int>(iCapacity)))];
    }
    catch (...)
    {
        throw CException(pszOutOfMemory, 0);
    }
}

/// Writes what "%p" prints; returns its length.
std::size_t PrintPointer(char* pszTo, const void* pItem)
{
    if (pItem == nullptr)
        return static_cast<std::size_t>(std::copy_n("(nil)", 5, pszTo) - pszTo);
    pszTo[0]           = '0';
    pszTo[1]           = 'x';
    const auto iNumber = reinterpret_cast<std::uintptr_t>(pItem);
    return static_cast<std::size_t>(
        std::to_chars(pszTo + 2, pszTo + 2 + 2 * sizeof iNumber, iNumber, 16).ptr - pszTo);
}
} // namespace

// ---- Life -------------------------------------------------------------------------------------------------

CPtrArray::CPtrArray(bool bOwner) : m_bOwner(bOwner)
{
    static_assert(offsetof(CPtrArray, m_pData) == 0 && offsetof(CPtrArray, m_iSize) == sizeof(void*) &&
                      offsetof(CPtrArray, m_iBufferSize) == sizeof(void*) + sizeof(int) &&
                      offsetof(CPtrArray, m_bOwner) == sizeof(void*) + 2 * sizeof(int),
                  "the members' order is part of the ABI");
}

CPtrArray::CPtrArray(int iCount, CPtrArrayItem* pItem, bool bOwner) : m_bOwner(bOwner)
{
    Reset(iCount, pItem);
}

CPtrArray::CPtrArray(CPtrArray& arrSource) { *this = arrSource; }

CPtrArray::~CPtrArray()
{
    DropAll();
    delete[] m_pData;
}

CPtrArray& CPtrArray::operator=(const CPtrArray& arrSource)
{
    if (this == &arrSource)
        return *this;
    RemoveAll();
    GrowBuffer(arrSource.m_iSize);
    std::copy(arrSource.begin(), arrSource.end(), m_pData);
    m_iSize  = arrSource.m_iSize;
    m_bOwner = false;
    return *this;
}

// ---- Reading ----------------------------------------------------------------------------------------------

void CPtrArray::ThrowIndex(const char* pszOperation, int iIndex) const
{
    throw CException(0, "CPtrArray::%s : Invalid Index(%d:%d)", pszOperation, m_iSize - 1, iIndex);
}

void CPtrArray::ThrowEmpty() { throw CException("CPtrArray::GetAtLast : Empty", 0); }

bool CPtrArray::IsIn(CPtrArrayItem* pItem) const { return std::find(begin(), end(), pItem) != end(); }

CString CPtrArray::Repr(const char* pszSep, bool bHeader) const
{
    if (m_iSize < 1)
        return CString("<CPtrArr: unset>");
    constexpr std::size_t iMaxPointer = 2 + 2 * sizeof(void*);
    const char* pszBetween            = pszSep != nullptr ? pszSep : "";
    const std::size_t iBetween        = strlen(pszBetween);
    CTextBuilder text(static_cast<std::int64_t>(iBetween) * (m_iSize - 1)); // and the pointers
    if (bHeader)
        text.AppendHeader("CPtrArr", m_iSize, m_iBufferSize, pszSep);
    for (int i = 0; i < m_iSize; ++i)
    {
        if (i > 0)
            text.Append(pszBetween, iBetween);
        text.Advance(PrintPointer(text.Room(iMaxPointer), m_pData[i]));
    }
    return text.Finish();
}

// ---- The buffer -------------------------------------------------------------------------------------------

void CPtrArray::Enlarge(long long iCapacity, const char* pszOutOfMemory)
{
    if (m_pData == nullptr || iCapacity > ReservedSlots<CPtrArrayItem*>(m_iBufferSize))
    {
        CPtrArrayItem** pNew = NewSlots(iCapacity, pszOutOfMemory);
        std::copy(m_pData, m_pData + m_iSize, pNew);
        delete[] m_pData;
        m_pData = pNew;
    }
    m_iBufferSize = static_cast<int>(iCapacity);
    std::fill(m_pData + m_iSize, m_pData + m_iBufferSize, nullptr);
}

/// Makes room for one more item in a full buffer.
void CPtrArray::MakeRoom()
{
    if (m_pData == nullptr)
        Enlarge(s_iFirstSize, "CPtrArray::Add : Out of memory");
    else
        GrowBuffer(0);
}

/// Does GrowBuffer(iCount) as an array of iSize items would.
void CPtrArray::Grow(int iCount, int iSize)
{
    if (iCount > 0 && iCount <= m_iBufferSize)
        return;
    const int iStep = iCount > 0 ? iCount : GrowthStep(iSize);
    Enlarge(static_cast<long long>(m_iBufferSize) + iStep, "CPtrArray::GrowBuffer : Out of memory");
}

void CPtrArray::GrowBuffer(int iCount) { Grow(iCount, m_iSize); }

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
    if (!InRange(iIndex))
        ThrowIndex("SetAt", iIndex);
    if (m_pData[iIndex] == pItem)
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
    std::copy_backward(m_pData + iPos, m_pData + m_iSize, m_pData + m_iSize + 1);
    m_pData[iPos] = pItem;
    ++m_iSize;
    return iPos;
}

int CPtrArray::RemoveAt(int iIndex)
{
    if (!InRange(iIndex))
        return -1;
    Drop(iIndex);
    std::copy(m_pData + iIndex + 1, m_pData + m_iSize, m_pData + iIndex);
    m_pData[--m_iSize] = nullptr;
    return iIndex;
}

void CPtrArray::RemoveLast()
{
    if (m_iSize > 0)
        Drop(--m_iSize);
}

void CPtrArray::Clear()
{
    DropAll();
    if (!m_bOwner && m_pData != nullptr)
        std::fill(m_pData, m_pData + m_iBufferSize, nullptr);
    m_iSize = 0;
}

void CPtrArray::RemoveAll()
{
    DropAll();
    delete[] m_pData;
    m_pData       = nullptr;
    m_iSize       = 0;
    m_iBufferSize = 0;
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
