// CDblArray: a growable, ordered array of doubles. As CIntArray, with these differences:
//
//   - Find and IsIn compare exactly: 0.0 finds -0.0, and a NaN finds nothing.
//   - Sort and CDblArray_SortCmp take a NaN to equal everything: an array that holds one ends in no useful order.
//   - Repr prints "%f", six decimals with the current locale's decimal point.
//   - Messages say "CDblArray", Repr says "CDblArr".
#ifndef BEDPLATE_DBL_ARRAY_H
#define BEDPLATE_DBL_ARRAY_H

#include "cstring.h"

#include <initializer_list>

class BEDPLATE_API CDblArray
{
public:
    /// Makes an empty array without a buffer.
    BEDPLATE_INLINE CDblArray() {}
    /// Makes an array of iCount times dValue, as Reset does.
    CDblArray(int iCount, double dValue);
    /// Makes a copy with arrSource's values and capacity.
    CDblArray(CDblArray& arrSource);
    /// The same for a const array or a temporary.
    CDblArray(const CDblArray& arrSource) : CDblArray(const_cast<CDblArray&>(arrSource)) {}
    /// Makes an array of the values of a list, in exactly as many slots.
    CDblArray(std::initializer_list<double> listValues)
    {
        if (listValues.size() > 0)
            GrowBuffer(static_cast<int>(listValues.size()));
        for (double dValue : listValues)
            Add(dValue);
    }
    /// Takes over arrSource's buffer; arrSource is empty then, and without one.
    CDblArray(CDblArray&& arrSource) noexcept { bedplate_private::ArrayMoves::Swap(*this, arrSource); }
    /// Releases the buffer.
    ~CDblArray();
    /// Takes over arrSource's values and capacity; after a failure the array is empty and without a buffer.
    CDblArray& operator=(const CDblArray& arrSource);
    /// As above.
    CDblArray& operator=(CDblArray&& arrSource) noexcept
    {
        return bedplate_private::ArrayMoves::Move(*this, arrSource);
    }

    /// Returns the number of values.
    BEDPLATE_INLINE int GetSize() const { return m_iSize; }
    /// Returns the capacity in slots.
    BEDPLATE_INLINE int GetBufferSize() const { return m_iBufferSize; }

    /// Returns value iIndex; throws for an index out of bounds.
    BEDPLATE_INLINE double GetAt(int iIndex) const
    {
        return m_pData[bedplate_private::Checked("CDblArray::GetAt", iIndex, m_iSize)];
    }

    /// Returns a reference to value iIndex; throws for an index out of bounds.
    BEDPLATE_INLINE double& operator[](int iIndex) const
    {
        return m_pData[bedplate_private::Checked("CDblArray::operator[]", iIndex, m_iSize)];
    }

    /// Returns the last value; throws when there is none.
    BEDPLATE_INLINE double GetAtLast() const
    {
        return m_pData[bedplate_private::CheckedLast("CDblArray::GetAtLast", m_iSize)];
    }

    /// Returns the first value's place, for range-for.
    BEDPLATE_INLINE double* begin() { return m_pData; }
    /// As above.
    BEDPLATE_INLINE const double* begin() const { return m_pData; }
    /// Returns the place behind the last value.
    BEDPLATE_INLINE double* end() { return m_pData + m_iSize; }
    /// As above.
    BEDPLATE_INLINE const double* end() const { return m_pData + m_iSize; }

    /// Returns the index of the first value equal to dValue, or -1.
    int Find(double dValue) const;
    /// Tells whether Find finds dValue.
    bool IsIn(double dValue) const;
    /// Renders the values.
    ///   Example   {1.5}: Repr(",") -> "CDblArr:(1/4),1.500000"
    CString Repr(const char* pszSep = ", ", bool bHeader = true) const;

    /// Overwrites value iIndex; throws for an index out of bounds.
    BEDPLATE_INLINE void SetAt(int iIndex, double dValue)
    {
        m_pData[bedplate_private::Checked("CDblArray::SetAt", iIndex, m_iSize)] = dValue;
    }

    /// Appends dValue; returns its index.
    BEDPLATE_INLINE int Add(double dValue)
    {
        if (m_iSize >= m_iBufferSize)
            MakeRoom();
        m_pData[m_iSize] = dValue;
        return m_iSize++;
    }

    /// Inserts dValue before value iIndex, or appends it at GetSize(); returns iIndex, throws when it is out of bounds.
    int InsertAt(int iIndex, double dValue);
    /// Removes value iIndex; returns iIndex, throws when it is out of bounds.
    int RemoveAt(int iIndex);
    /// Removes the last value; nothing when there is none.
    void RemoveLast();
    /// Enlarges the buffer by a growth step (iCount <= 0) or by iCount slots (iCount above the capacity).
    void GrowBuffer(int iCount);
    /// Makes the array hold iCount times dValue; after a failure it is empty and without a buffer.
    void Reset(int iCount, double dValue);
    /// Sets every slot to 0.0 and the size to 0; the buffer stays.
    void Clear();
    /// Releases the buffer.
    void RemoveAll();
    /// Sorts ascending.
    void Sort();

private:
    friend struct bedplate_private::ArrayAccess;
    friend struct bedplate_private::ArrayDesign<CDblArray>;
    friend struct bedplate_private::ArrayMoves;
    friend struct bedplate_private::LayoutCheck;

    void MakeRoom();

    double* m_pData   = nullptr;
    int m_iSize       = 0;
    int m_iBufferSize = 0;
};

/// Compares two doubles behind pointers, for qsort.
///   Returns   -1, 0 or 1; 0 too when either is a NaN.
BEDPLATE_API int CDblArray_SortCmp(const void* pLeft, const void* pRight);

#endif
