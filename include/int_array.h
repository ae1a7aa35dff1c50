// CIntArray: a growable, ordered array of ints. CDblArray, CBoolArray and CDateArray are the same design for others;
// what stands here holds for them too.
//
//     CIntArray arrPrimes;
//     arrPrimes.Add(2);
//     arrPrimes.Add(5);
//     arrPrimes.InsertAt(1, 3);
//     printf("%s\n", arrPrimes.Repr().ToStr()); // CIntArr:(3/4), 2, 3, 5
//
// The values live in one buffer, which the array owns and which never shrinks except to nothing. A new array has no
// buffer. The first Add makes one of 4 slots; after that a full buffer grows by one eighth of the size, at least 4
// and at most 1024 slots. Growth is cheap all the same: behind a buffer of more than 8,192 slots more memory is held
// ready, up to one eighth, or as much again for buffers of 128 KB to 64 MB, so most steps copy nothing.
//
// Failures are CExceptions of code 0. An index out of bounds throws
// "CIntArray::<operation> : Invalid Index(<last>:<index>)", <last> being GetSize() - 1; a failed allocation, or a
// capacity beyond INT_MAX, throws "CIntArray - Out of memory". The array is unchanged after either, except where
// an operation says so.
//
// References from operator[], and begin() and end(), die with the buffer: in RemoveAll, Reset, assignment of another
// array and destruction, and when GrowBuffer, Add or InsertAt enlarges it.
//
// Several threads may read one array at a time, by its const operations; one that changes it or an element must be alone
// with it.
#ifndef BEDPLATE_INT_ARRAY_H
#define BEDPLATE_INT_ARRAY_H

#include "cstring.h"

#include <initializer_list>

class BEDPLATE_API CIntArray
{
public:
    /// Makes an empty array without a buffer. Does not allocate.
    BEDPLATE_INLINE CIntArray() {}

    /// Makes an array of iCount times iValue, as Reset does.
    ///   Throws    code 0, "CIntArray - Out of memory".
    ///   Example   CIntArray(3, 7) -> {7, 7, 7}, capacity 3
    CIntArray(int iCount, int iValue);

    /// Makes a copy with arrSource's values and capacity; without a buffer if arrSource has none.
    ///   Throws    code 0, "CIntArray - Out of memory".
    CIntArray(CIntArray& arrSource);
    CIntArray(const CIntArray& arrSource) : CIntArray(const_cast<CIntArray&>(arrSource)) {}

    /// Makes an array of the values of a list, in exactly as many slots.
    ///   Throws    code 0, "CIntArray - Out of memory".
    ///   Example   CIntArray{2, 3, 5} -> {2, 3, 5}, capacity 3; but CIntArray(3, 7) -> {7, 7, 7}
    CIntArray(std::initializer_list<int> listValues) { bedplate_private::AddAll(*this, listValues); }

    /// Takes over arrSource's buffer; arrSource is empty then, and without one. Does not allocate.
    CIntArray(CIntArray&& arrSource) noexcept { bedplate_private::ArrayMoves::Swap(*this, arrSource); }

    /// Releases the buffer.
    ~CIntArray();

    /// Takes over arrSource's values and capacity; without a buffer if arrSource has none. Assigning an array to
    /// itself changes nothing.
    ///   Returns   this array.
    ///   Throws    code 0, "CIntArray - Out of memory"; the array is then empty and without a buffer.
    ///   Cost      O(capacity); allocates unless the capacity stays as it is.
    ///   Pointers  die.
    CIntArray& operator=(const CIntArray& arrSource);

    /// Does RemoveAll() and takes over arrSource's buffer; arrSource is empty then, and without one. Moving an array to
    /// itself changes nothing.
    ///   Returns   this array.
    CIntArray& operator=(CIntArray&& arrSource) noexcept
    {
        return bedplate_private::ArrayMoves::Move(*this, arrSource);
    }

    // ---- Reading: O(1) and without allocation unless said ---------------------------------------------------

    /// Returns the number of values.
    BEDPLATE_INLINE int GetSize() const { return m_iSize; }

    /// Returns the capacity in slots.
    BEDPLATE_INLINE int GetBufferSize() const { return m_iBufferSize; }

    /// Returns value iIndex.
    ///   Throws    code 0, "CIntArray::GetAt : Invalid Index(<last>:<iIndex>)", unless 0 <= iIndex < GetSize().
    BEDPLATE_INLINE int GetAt(int iIndex) const
    {
        return m_pData[bedplate_private::Checked("CIntArray::GetAt", iIndex, m_iSize)];
    }

    /// Returns a reference to value iIndex, through which it may be changed, also in a const array.
    ///   Throws    code 0, "CIntArray::operator[] : Invalid Index(<last>:<iIndex>)", unless
    ///             0 <= iIndex < GetSize().
    BEDPLATE_INLINE int& operator[](int iIndex) const
    {
        return m_pData[bedplate_private::Checked("CIntArray::operator[]", iIndex, m_iSize)];
    }

    /// Returns the last value.
    ///   Throws    code 0, "CIntArray::GetAtLast : Empty", when there is none.
    BEDPLATE_INLINE int GetAtLast() const
    {
        return m_pData[bedplate_private::CheckedLast("CIntArray::GetAtLast", m_iSize)];
    }

    /// Returns the first value's place, for range-for; equal to end() when there is none.
    BEDPLATE_INLINE int* begin() { return m_pData; }
    BEDPLATE_INLINE const int* begin() const { return m_pData; }
    /// Returns the place behind the last value.
    BEDPLATE_INLINE int* end() { return m_pData + m_iSize; }
    BEDPLATE_INLINE const int* end() const { return m_pData + m_iSize; }

    /// Returns the index of the first value equal to iValue, or -1. O(size).
    int Find(int iValue) const;

    /// Tells whether a value equals iValue. O(size).
    bool IsIn(int iValue) const;

    /// Renders the values ("%d") with pszSep between them, behind "CIntArr:(<size>/<capacity>)" and pszSep when
    /// bHeader is true; an empty array is "<CIntArr: unset>" either way. A null separator counts as empty, but
    /// shows as "(null)" in the header.
    ///   Throws    code -11 as CString does.
    ///   Cost      O(result).
    ///   Example   {1, 2, 3} in 4 slots: Repr(",") -> "CIntArr:(3/4),1,2,3"; Repr(",", false) -> "1,2,3"
    CString Repr(const char* pszSep = ", ", bool bHeader = true) const;

    // ---- Changing -----------------------------------------------------------------------------------------

    /// Overwrites value iIndex.
    ///   Throws    code 0, "CIntArray::SetAt : Invalid Index(<last>:<iIndex>)", unless 0 <= iIndex < GetSize().
    BEDPLATE_INLINE void SetAt(int iIndex, int iValue)
    {
        m_pData[bedplate_private::Checked("CIntArray::SetAt", iIndex, m_iSize)] = iValue;
    }

    /// Appends iValue.
    ///   Returns   its index.
    ///   Throws    code 0, "CIntArray - Out of memory"; the array is unchanged.
    ///   Cost      O(1) on average; allocates only when the buffer is full.
    ///   Pointers  die when the buffer is enlarged.
    BEDPLATE_INLINE int Add(int iValue)
    {
        if (m_iSize >= m_iBufferSize)
            MakeRoom();
        m_pData[m_iSize] = iValue;
        return m_iSize++;
    }

    /// Inserts iValue before value iIndex; the values from iIndex on move up by one. iIndex == GetSize() appends.
    ///   Returns   iIndex.
    ///   Throws    code 0, "CIntArray::InsertAt : Invalid Index(<last>:<iIndex>)", unless
    ///             0 <= iIndex <= GetSize(); code 0, "CIntArray - Out of memory". The array is unchanged.
    ///   Cost      O(size); allocates only when the buffer is full.
    ///   Pointers  die when the buffer is enlarged.
    ///   Example   {1, 3}: InsertAt(1, 2) -> 1, {1, 2, 3}
    int InsertAt(int iIndex, int iValue);

    /// Removes value iIndex; the values behind it move down by one. The capacity stays.
    ///   Returns   iIndex.
    ///   Throws    code 0, "CIntArray::RemoveAt : Invalid Index(<last>:<iIndex>)", unless 0 <= iIndex < GetSize().
    ///   Cost      O(size); does not allocate.
    int RemoveAt(int iIndex);

    /// Removes the last value; nothing when there is none. The capacity stays.
    void RemoveLast();

    /// Enlarges the buffer by one growth step when iCount is 0 or less, by iCount slots when iCount is above the
    /// capacity, and not at all otherwise. The new slots are zero.
    ///   Throws    code 0, "CIntArray - Out of memory"; the array is unchanged.
    ///   Cost      O(capacity); may allocate.
    ///   Pointers  die when the capacity changes.
    ///   Example   capacity 4: GrowBuffer(0) -> 8, GrowBuffer(3) -> 4, GrowBuffer(10) -> 14
    void GrowBuffer(int iCount);

    /// Makes the array hold iCount times iValue in exactly iCount slots; for an iCount of 0 or less it is empty,
    /// with 4 slots.
    ///   Throws    code 0, "CIntArray - Out of memory"; the array is then empty and without a buffer.
    ///   Cost      O(iCount); allocates.
    ///   Pointers  die.
    void Reset(int iCount, int iValue);

    /// Sets every slot to zero and the size to 0; the buffer stays. O(capacity).
    void Clear();

    /// Releases the buffer; size and capacity are 0.
    void RemoveAll();

    /// Sorts ascending. O(size log size).
    void Sort();

private:
    friend struct bedplate_private::ArrayAccess;
    friend struct bedplate_private::ArrayDesign<CIntArray>;
    friend struct bedplate_private::ArrayMoves;
    friend struct bedplate_private::LayoutCheck;

    void MakeRoom();

    int* m_pData      = nullptr;
    int m_iSize       = 0;
    int m_iBufferSize = 0;
};

/// Compares two ints behind pointers, for qsort.
///   Returns   -1, 0 or 1.
BEDPLATE_API int CIntArray_SortCmp(const void* pLeft, const void* pRight);

#endif
