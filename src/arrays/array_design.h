// The one design behind the arrays that hold their elements inline. Each unit names its array's ArrayTraits, derives
// nothing and forwards its operations here:
//
//     Elem                     the element type
//     s_szName, s_szTag        the class name in messages, the name in Repr
//     s_szUnset                Repr of an empty array
//     s_szOutOfMemory          the text of a failed allocation; a literal, as nothing can be formatted then
//     s_iMaxText               how many bytes a value's text takes at most
//     Vacated()                what a slot holds once its element has left it
//     CPrint                   a function object: writes a value's text to a place, and returns its length
//     Sort(pBegin, pEnd)       sorts ascending
//
// Elements are moved and copied as bytes, and a slot of zero bytes is an element.
#ifndef BEDPLATE_ARRAY_DESIGN_H
#define BEDPLATE_ARRAY_DESIGN_H

#include "base/growth.h"
#include "exception.h"
#include "strings/text_builder.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace bedplate_private
{
template <class TArray>
struct ArrayTraits;

template <class TArray>
struct ArrayDesign
{
    using Traits = ArrayTraits<TArray>;
    using Elem   = typename Traits::Elem;

    static constexpr int s_iFirstSize = 4;

    static_assert(sizeof(TArray) == sizeof(Elem*) + 2 * sizeof(int), "the layout is part of the ABI");

    /// Called by a constructor, where the class is complete, to have the compiler check the members' order.
    static void CheckLayout()
    {
        static_assert(offsetof(TArray, m_pData) == 0 && offsetof(TArray, m_iSize) == sizeof(Elem*) &&
                          offsetof(TArray, m_iBufferSize) == sizeof(Elem*) + sizeof(int),
                      "the members' order is part of the ABI");
    }

    // ---- Failures ---------------------------------------------------------------------------------------------

    [[noreturn]] static void ThrowIndex(const TArray& arr, const char* pszOperation, int iIndex)
    {
        throw CException(0, "%s::%s : Invalid Index(%d:%d)", Traits::s_szName, pszOperation, arr.m_iSize - 1,
                         iIndex);
    }

    [[noreturn]] static void ThrowEmpty() { throw CException(0, "%s::GetAtLast : Empty", Traits::s_szName); }

    [[noreturn]] static void ThrowOutOfMemory() { throw CException(Traits::s_szOutOfMemory, 0); }

    static void CheckIndex(const TArray& arr, const char* pszOperation, int iIndex, int iEnd)
    {
        if (iIndex < 0 || iIndex >= iEnd)
            ThrowIndex(arr, pszOperation, iIndex);
    }

    // ---- The buffer -------------------------------------------------------------------------------------------

    // Buffers have the size that new[] would give them: for elements with a destructor, there is room for a count in front.
    // They are made and destroyed all at once: a slot of zero bytes is an element, and zero bytes are what a destroyed one
    // leaves.

    static constexpr bool s_bPlain          = std::is_trivially_destructible<Elem>::value;
    static constexpr std::size_t s_iInFront = s_bPlain ? 0 : sizeof(std::size_t);

    /// Returns a new buffer for iCapacity slots, which the caller has to fill.
    static Elem* NewBuffer(std::int64_t iCapacity)
    {
        if (iCapacity > INT_MAX)
            ThrowOutOfMemory();
        const std::int64_t iBytes =
            ReservedSlots<Elem>(static_cast<int>(iCapacity)) * static_cast<std::int64_t>(sizeof(Elem));
        if (iBytes > PTRDIFF_MAX - static_cast<std::ptrdiff_t>(s_iInFront))
            ThrowOutOfMemory();
        try
        {
            char* pBlock = static_cast<char*>(operator new[](static_cast<std::size_t>(iBytes) + s_iInFront));
            return reinterpret_cast<Elem*>(pBlock + s_iInFront);
        }
        catch (...) // whatever the allocator throws
        {
            ThrowOutOfMemory();
        }
    }

    /// Destroys iCapacity elements and releases their buffer.
    static void DeleteBuffer(Elem* pBuffer, int iCapacity)
    {
        if (pBuffer == nullptr)
            return;
        if (!s_bPlain)
        {
            ZeroSlots(pBuffer, iCapacity);
            // The compiler would drop stores into memory that ends here, were it not for a reader that it cannot see.
            __asm__ volatile("" : : "r"(pBuffer) : "memory");
        }
        operator delete[](reinterpret_cast<char*>(pBuffer) - s_iInFront);
    }

    static void MoveSlots(Elem* pTo, const Elem* pFrom, int iCount)
    {
        memmove(static_cast<void*>(pTo), pFrom, sizeof(Elem) * static_cast<std::size_t>(iCount));
    }

    static void CopySlots(Elem* pTo, const Elem* pFrom, int iCount)
    {
        memcpy(static_cast<void*>(pTo), pFrom, sizeof(Elem) * static_cast<std::size_t>(iCount));
    }

    static void ZeroSlots(Elem* pBegin, int iCount)
    {
        memset(static_cast<void*>(pBegin), 0, sizeof(Elem) * static_cast<std::size_t>(iCount));
    }

    static void GrowBuffer(TArray& arr, int iCount)
    {
        if (iCount >= 1 && iCount <= arr.m_iBufferSize)
            return;
        const int iStep              = iCount >= 1 ? iCount : GrowthStep(arr.m_iSize);
        const std::int64_t iCapacity = std::int64_t{arr.m_iBufferSize} + iStep;
        if (arr.m_pData == nullptr || iCapacity > INT_MAX ||
            iCapacity > ReservedSlots<Elem>(arr.m_iBufferSize))
        {
            Elem* pNew = NewBuffer(iCapacity);
            if (arr.m_pData != nullptr)
                CopySlots(pNew, arr.m_pData, arr.m_iSize);
            DeleteBuffer(arr.m_pData, arr.m_iBufferSize);
            arr.m_pData = pNew;
        }
        arr.m_iBufferSize = static_cast<int>(iCapacity);
        ZeroSlots(arr.m_pData + arr.m_iSize, arr.m_iBufferSize - arr.m_iSize);
    }

    /// Makes room for one more element in a full buffer.
    static void MakeRoom(TArray& arr)
    {
        if (arr.m_pData != nullptr)
            return GrowBuffer(arr, 0);
        arr.m_pData       = NewBuffer(s_iFirstSize);
        arr.m_iBufferSize = s_iFirstSize;
        ZeroSlots(arr.m_pData, s_iFirstSize);
    }

    static void RemoveAll(TArray& arr)
    {
        DeleteBuffer(arr.m_pData, arr.m_iBufferSize);
        arr.m_pData       = nullptr;
        arr.m_iSize       = 0;
        arr.m_iBufferSize = 0;
    }

    static void Clear(TArray& arr)
    {
        if (arr.m_pData != nullptr)
            ZeroSlots(arr.m_pData, arr.m_iBufferSize);
        arr.m_iSize = 0;
    }

    static void Reset(TArray& arr, int iCount, const Elem& value)
    {
        RemoveAll(arr);
        if (iCount <= 0)
            return GrowBuffer(arr, 0);
        arr.m_pData       = NewBuffer(iCount);
        arr.m_iSize       = iCount;
        arr.m_iBufferSize = iCount;
        std::fill_n(arr.m_pData, iCount, value);
    }

    /// Replaces what arr holds by a copy of arrSource, its capacity included.
    static void Assign(TArray& arr, const TArray& arrSource)
    {
        if (&arr == &arrSource)
            return;
        RemoveAll(arr);
        if (arrSource.m_pData == nullptr)
            return;
        arr.m_pData       = NewBuffer(arrSource.m_iBufferSize);
        arr.m_iSize       = arrSource.m_iSize;
        arr.m_iBufferSize = arrSource.m_iBufferSize;
        CopySlots(arr.m_pData, arrSource.m_pData, arr.m_iBufferSize);
    }

    // ---- The elements -----------------------------------------------------------------------------------------

    static int Find(const TArray& arr, const Elem& value)
    {
        const Elem* pEnd   = arr.m_pData + arr.m_iSize;
        const Elem* pFound = std::find(static_cast<const Elem*>(arr.m_pData), pEnd, value);
        return pFound == pEnd ? -1 : static_cast<int>(pFound - arr.m_pData);
    }

    static int InsertAt(TArray& arr, int iIndex, const Elem& value)
    {
        if (iIndex < 0 || iIndex > arr.m_iSize)
            ThrowIndex(arr, "InsertAt", iIndex);
        if (iIndex == arr.m_iSize)
            return arr.Add(value);
        if (arr.m_iSize >= arr.m_iBufferSize)
            GrowBuffer(arr, 0);
        MoveSlots(arr.m_pData + iIndex + 1, arr.m_pData + iIndex, arr.m_iSize - iIndex);
        arr.m_pData[iIndex] = value;
        ++arr.m_iSize;
        return iIndex;
    }

    static int RemoveAt(TArray& arr, int iIndex)
    {
        CheckIndex(arr, "RemoveAt", iIndex, arr.m_iSize);
        MoveSlots(arr.m_pData + iIndex, arr.m_pData + iIndex + 1, arr.m_iSize - 1 - iIndex);
        RemoveLast(arr);
        return iIndex;
    }

    static void RemoveLast(TArray& arr)
    {
        if (arr.m_iSize > 0)
            arr.m_pData[--arr.m_iSize] = Traits::Vacated();
    }

    static void Sort(TArray& arr)
    {
        if (arr.m_iSize > 1)
            Traits::Sort(arr.m_pData, arr.m_pData + arr.m_iSize);
    }

    /// The comparison for qsort: elements that are neither less nor greater, NaNs among them, are equal.
    static int Compare(const void* pLeft, const void* pRight)
    {
        const Elem& left  = *static_cast<const Elem*>(pLeft);
        const Elem& right = *static_cast<const Elem*>(pRight);
        return left < right ? -1 : (right < left ? 1 : 0);
    }

    static CString Repr(const TArray& arr, const char* pszSep, bool bHeader)
    {
        if (arr.m_iSize < 1)
            return CString(Traits::s_szUnset);
        const typename Traits::CPrint Print;
        const char* pszBetween     = pszSep != nullptr ? pszSep : "";
        const std::size_t iBetween = strlen(pszBetween);
        CTextBuilder text(static_cast<std::int64_t>(iBetween) * (arr.m_iSize - 1)); // and the values
        if (bHeader)
            text.AppendHeader(Traits::s_szTag, arr.m_iSize, arr.m_iBufferSize, pszSep);
        for (int i = 0; i < arr.m_iSize; ++i)
        {
            if (i > 0)
                text.Append(pszBetween, iBetween);
            text.Advance(Print(text.Room(Traits::s_iMaxText), arr.m_pData[i]));
        }
        return text.Finish();
    }
};
} // namespace bedplate_private

#endif
