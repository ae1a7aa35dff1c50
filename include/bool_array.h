// CBoolArray: a growable, ordered array of bools, one byte each. As CIntArray, with these differences:
//
//   - Sort and CBoolArray_SortCmp put false before true.
//   - Repr prints Y and N.
//   - Messages say "CBoolArray", Repr says "CBoolArr".
#ifndef BEDPLATE_BOOL_ARRAY_H
#define BEDPLATE_BOOL_ARRAY_H

#include "cstring.h"

#include <initializer_list>

class BEDPLATE_API CBoolArray
{
public:
    /// Makes an empty array without a buffer.
    BEDPLATE_INLINE CBoolArray() {}
    /// Makes an array of iCount times bValue, as Reset does.
    CBoolArray(int iCount, bool bValue);
    /// Makes a copy with arrSource's values and capacity.
    CBoolArray(CBoolArray& arrSource);
    /// The same for a const array or a temporary.
    CBoolArray(const CBoolArray& arrSource) : CBoolArray(const_cast<CBoolArray&>(arrSource)) {}
    /// Makes an array of the values of a list, in exactly as many slots.
    CBoolArray(std::initializer_list<bool> listValues)
    {
        if (listValues.size() > 0)
            GrowBuffer(static_cast<int>(listValues.size()));
        for (bool bValue : listValues)
            Add(bValue);
    }
    /// Takes over arrSource's buffer; arrSource is empty then, and without one.
    CBoolArray(CBoolArray&& arrSource) noexcept { bedplate_private::ArrayMoves::Swap(*this, arrSource); }
    /// Releases the buffer.
    ~CBoolArray();
    /// Takes over arrSource's values and capacity; after a failure the array is empty and without a buffer.
    CBoolArray& operator=(const CBoolArray& arrSource);
    /// As above.
    CBoolArray& operator=(CBoolArray&& arrSource) noexcept
    {
        return bedplate_private::ArrayMoves::Move(*this, arrSource);
    }

    /// Returns the number of values.
    BEDPLATE_INLINE int GetSize() const { return m_iSize; }
    /// Returns the capacity in slots.
    BEDPLATE_INLINE int GetBufferSize() const { return m_iBufferSize; }

    /// Returns value iIndex; throws for an index out of bounds.
    BEDPLATE_INLINE bool GetAt(int iIndex) const
    {
        return m_pData[bedplate_private::Checked("CBoolArray::GetAt", iIndex, m_iSize)];
    }

    /// Returns a reference to value iIndex; throws for an index out of bounds.
    BEDPLATE_INLINE bool& operator[](int iIndex) const
    {
        return m_pData[bedplate_private::Checked("CBoolArray::operator[]", iIndex, m_iSize)];
    }

    /// Returns the last value; throws when there is none.
    BEDPLATE_INLINE bool GetAtLast() const
    {
        return m_pData[bedplate_private::CheckedLast("CBoolArray::GetAtLast", m_iSize)];
    }

    /// Returns the first value's place, for range-for.
    BEDPLATE_INLINE bool* begin() { return m_pData; }
    /// As above.
    BEDPLATE_INLINE const bool* begin() const { return m_pData; }
    /// Returns the place behind the last value.
    BEDPLATE_INLINE bool* end() { return m_pData + m_iSize; }
    /// As above.
    BEDPLATE_INLINE const bool* end() const { return m_pData + m_iSize; }

    /// Returns the index of the first value equal to bValue, or -1.
    int Find(bool bValue) const;
    /// Tells whether Find finds bValue.
    bool IsIn(bool bValue) const;
    /// Renders the values.
    ///   Example   {true, false}: Repr(" ", false) -> "Y N"
    CString Repr(const char* pszSep = ", ", bool bHeader = true) const;

    /// Overwrites value iIndex; throws for an index out of bounds.
    BEDPLATE_INLINE void SetAt(int iIndex, bool bValue)
    {
        m_pData[bedplate_private::Checked("CBoolArray::SetAt", iIndex, m_iSize)] = bValue;
    }

    /// Appends bValue; returns its index.
    BEDPLATE_INLINE int Add(bool bValue)
    {
        if (m_iSize >= m_iBufferSize)
            MakeRoom();
        m_pData[m_iSize] = bValue;
        return m_iSize++;
    }

    /// Inserts bValue before value iIndex, or appends it at GetSize(); returns iIndex, throws when it is out of bounds.
    int InsertAt(int iIndex, bool bValue);
    /// Removes value iIndex; returns iIndex, throws when it is out of bounds.
    int RemoveAt(int iIndex);
    /// Removes the last value; nothing when there is none.
    void RemoveLast();
    /// Enlarges the buffer by a growth step (iCount <= 0) or by iCount slots (iCount above the capacity).
    void GrowBuffer(int iCount);
    /// Makes the array hold iCount times bValue; after a failure it is empty and without a buffer.
    void Reset(int iCount, bool bValue);
    /// Sets every slot to false and the size to 0; the buffer stays.
    void Clear();
    /// Releases the buffer.
    void RemoveAll();
    /// Sorts false before true. O(size).
    void Sort();

private:
    friend struct bedplate_private::ArrayMoves;
    friend struct bedplate_private::ArrayDesign<CBoolArray>;
    friend struct bedplate_private::LayoutCheck;

    void MakeRoom();

    bool* m_pData     = nullptr;
    int m_iSize       = 0;
    int m_iBufferSize = 0;
};

/// Compares two bools behind pointers, for qsort.
///   Returns   -1, 0 or 1.
BEDPLATE_API int CBoolArray_SortCmp(const void* pLeft, const void* pRight);

#endif
