// The one design behind the arrays that hold their elements in their buffer. Each unit states its array's ArrayTraits,
// derived from ValueTraits, and forwards its operations here:
//
//     s_szName                 the name of the class
//     s_iMaxText               how many bytes an element's text takes at most
//     CPrint                   a function object: writes an element's text to a place, and returns its length
//     Sort(pBegin, pEnd)       sorts ascending
//
// Elements are moved and copied as bytes, and a slot of zero bytes is an element.
#ifndef BEDPLATE_ARRAY_DESIGN_H
#define BEDPLATE_ARRAY_DESIGN_H

#include "arrays/rendering.h"
#include "base/growth.h"
#include "exception.h"
#include "strings/string_design.h"
#include "strings/text_builder.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <new>
#include <string_view>
#include <type_traits>

namespace bedplate_private
{
/// What the traits of most arrays have in common.
template <class TElem>
struct ValueTraits
{
    using Elem = TElem;

    /// Returns what a slot holds once its element has left it.
    static TElem Vacated() { return TElem(); }
};

template <class TArray>
struct ArrayTraits;

template <class TArray>
struct ArrayDesign
{
    using Traits = ArrayTraits<TArray>;
    using Elem   = typename Traits::Elem;

    static constexpr int s_iFirstSize = 4;

    [[noreturn]] static void ThrowOutOfMemory()
    {
        throw CException(0, "%s - Out of memory", Traits::s_szName);
    }

    // ---- The buffer -------------------------------------------------------------------------------------------

    /// Returns a new buffer for iCapacity slots, which the caller has to fill; null when there is no memory for it.
    static Elem* TryNewBuffer(std::int64_t iCapacity)
    {
        if (iCapacity > INT_MAX || iCapacity > PTRDIFF_MAX / static_cast<std::ptrdiff_t>(sizeof(Elem)))
            return nullptr;
        const int iSlots = ReservedSlots<Elem>(static_cast<int>(iCapacity));
        try
        {
            return static_cast<Elem*>(operator new[](sizeof(Elem) * static_cast<std::size_t>(iSlots)));
        }
        catch (...) // whatever the allocator throws
        {
            return nullptr;
        }
    }

    static Elem* NewBuffer(std::int64_t iCapacity)
    {
        Elem* pBuffer = TryNewBuffer(iCapacity);
        if (pBuffer == nullptr)
            ThrowOutOfMemory();
        return pBuffer;
    }

    /// Releases a buffer of iCapacity elements, which are destroyed all at once: their destructors leave zeros. One by one, they
    /// would take longer than appending.
    static void DeleteBuffer(Elem* pBuffer, int iCapacity)
    {
        if (!std::is_trivially_destructible<Elem>::value && pBuffer != nullptr)
            ZeroSlots(pBuffer, iCapacity);
        operator delete[](
            pBuffer); // called by itself, it may read: the zeros are written in optimised builds, too
    }

    /// Copies slots, which may overlap.
    static void CopySlots(Elem* pTo, const Elem* pFrom, int iCount)
    {
        if (iCount > 0)
            memmove(static_cast<void*>(pTo), pFrom, sizeof(Elem) * static_cast<std::size_t>(iCount));
    }

    static void ZeroSlots(Elem* pBegin, int iCount)
    {
        memset(static_cast<void*>(pBegin), 0, sizeof(Elem) * static_cast<std::size_t>(iCount));
    }

    /// Gives an array a larger capacity, its new slots being zero; false when there is no memory for it.
    static bool TryEnlarge(TArray& arr, std::int64_t iCapacity)
    {
        if (arr.m_pData == nullptr || iCapacity > ReservedSlots<Elem>(arr.m_iBufferSize))
        {
            Elem* pNew = TryNewBuffer(iCapacity);
            if (pNew == nullptr)
                return false;
            CopySlots(pNew, arr.m_pData, arr.m_iSize);
            DeleteBuffer(arr.m_pData, arr.m_iBufferSize);
            arr.m_pData = pNew;
        }
        arr.m_iBufferSize = static_cast<int>(iCapacity);
        ZeroSlots(arr.m_pData + arr.m_iSize, arr.m_iBufferSize - arr.m_iSize);
        return true;
    }

    static void GrowBuffer(TArray& arr, int iCount)
    {
        const std::int64_t iCapacity = GrownCapacity(arr.m_iBufferSize, iCount, arr.m_iSize);
        if (iCapacity > arr.m_iBufferSize && !TryEnlarge(arr, iCapacity))
            ThrowOutOfMemory();
    }

    /// Makes room for one more element in a full buffer.
    static void MakeRoom(TArray& arr) { GrowBuffer(arr, arr.m_pData == nullptr ? s_iFirstSize : 0); }

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

    /// Makes an array without a buffer a copy of arrSource, its capacity included.
    static void Copy(TArray& arr, const TArray& arrSource)
    {
        if (arrSource.m_pData == nullptr)
            return;
        arr.m_pData       = NewBuffer(arrSource.m_iBufferSize);
        arr.m_iSize       = arrSource.m_iSize;
        arr.m_iBufferSize = arrSource.m_iBufferSize;
        CopySlots(arr.m_pData, arrSource.m_pData, arr.m_iBufferSize);
    }

    /// A buffer of the wanted capacity is kept.
    static TArray& Assign(TArray& arr, const TArray& arrSource)
    {
        if (&arr == &arrSource)
            return arr;
        if (arr.m_pData != nullptr && arr.m_iBufferSize == arrSource.m_iBufferSize)
        {
            CopySlots(arr.m_pData, arrSource.m_pData, arr.m_iBufferSize);
            arr.m_iSize = arrSource.m_iSize;
            return arr;
        }
        RemoveAll(arr);
        Copy(arr, arrSource);
        return arr;
    }

    // ---- The elements -----------------------------------------------------------------------------------------

    static int Find(const TArray& arr, const Elem& value)
    {
        const Elem* pEnd   = arr.m_pData + arr.m_iSize;
        const Elem* pFound = std::find(static_cast<const Elem*>(arr.m_pData), pEnd, value);
        return pFound == pEnd ? -1 : static_cast<int>(pFound - arr.m_pData);
    }

    /// Inserts an element into room that is there.
    static int Place(TArray& arr, int iIndex, const Elem& value)
    {
        CopySlots(arr.m_pData + iIndex + 1, arr.m_pData + iIndex, arr.m_iSize - iIndex);
        arr.m_pData[iIndex] = value;
        ++arr.m_iSize;
        return iIndex;
    }

    /// Throws if there is no element iIndex; pszOperation is the name of a member.
    static void CheckIndex(const TArray& arr, const char* pszOperation, int iIndex)
    {
        if (IsIndex(iIndex, arr.m_iSize))
            return;
        char szOperation[40];
        (void)snprintf(szOperation, sizeof szOperation, "%s::%s", Traits::s_szName, pszOperation);
        ThrowIndex(szOperation, iIndex, arr.m_iSize, "Index");
    }

    static int InsertAt(TArray& arr, int iIndex, const Elem& value)
    {
        if (iIndex != arr.m_iSize)
            CheckIndex(arr, "InsertAt", iIndex);
        if (arr.m_iSize >= arr.m_iBufferSize)
            MakeRoom(arr);
        return Place(arr, iIndex, value);
    }

    static int RemoveAt(TArray& arr, int iIndex)
    {
        CheckIndex(arr, "RemoveAt", iIndex);
        CopySlots(arr.m_pData + iIndex, arr.m_pData + iIndex + 1, arr.m_iSize - 1 - iIndex);
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

    /// Appends the elements to a text, with svBetween between them.
    static void AppendElements(CTextBuilder& text, const TArray& arr, std::string_view svBetween)
    {
        const typename Traits::CPrint Print;
        for (int i = 0; i < arr.m_iSize; ++i)
        {
            if (i > 0)
                text.Append(svBetween);
            text.Advance(Print(text.Room(Traits::s_iMaxText), arr.m_pData[i]));
        }
    }

    static CString Repr(const TArray& arr, const char* pszSep, bool bHeader)
    {
        if (arr.m_iSize < 1)
            return RenderUnset(Traits::s_szName);
        const std::string_view svBetween = ViewOf(pszSep);
        CTextBuilder text(static_cast<std::int64_t>(svBetween.size()) *
                          (arr.m_iSize - 1)); // and the elements
        if (bHeader)
            AppendHeader(text, Traits::s_szName, arr, pszSep);
        AppendElements(text, arr, svBetween);
        return text.Finish();
    }
};
} // namespace bedplate_private

#endif
