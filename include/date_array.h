// CDateArray: a growable, ordered array of dates. As CIntArray, with these differences:
//
//   - Find, IsIn, Sort and CDateArray_SortCmp go by the 8 bytes of the texts, not by whether a date is set; unset
//     dates come first.
//   - New slots are unset dates. A slot that a date has left holds the text 00000000.
//   - Repr prints the texts, nothing for an unset date.
//   - Messages say "CDateArray", Repr says "CDateArr".
#ifndef BEDPLATE_DATE_ARRAY_H
#define BEDPLATE_DATE_ARRAY_H

#include "cdate.h"
#include "cstring.h"

#include <initializer_list>

class BEDPLATE_API CDateArray
{
public:
    /// Makes an empty array without a buffer.
    BEDPLATE_INLINE CDateArray() {}
    /// Makes an array of iCount times date, as Reset does.
    CDateArray(int iCount, CDate date);
    /// Makes a copy with arrSource's values and capacity.
    CDateArray(CDateArray& arrSource);
    /// The same for a const array or a temporary.
    CDateArray(const CDateArray& arrSource) : CDateArray(const_cast<CDateArray&>(arrSource)) {}
    /// Makes an array of the values of a list, in exactly as many slots.
    CDateArray(std::initializer_list<CDate> listValues)
    {
        if (listValues.size() > 0)
            GrowBuffer(static_cast<int>(listValues.size()));
        for (const CDate& date : listValues)
            Add(date);
    }
    /// Takes over arrSource's buffer; arrSource is empty then, and without one.
    CDateArray(CDateArray&& arrSource) noexcept { bedplate_private::ArrayMoves::Swap(*this, arrSource); }
    /// Releases the buffer.
    ~CDateArray();
    /// Takes over arrSource's values and capacity; after a failure the array is empty and without a buffer.
    CDateArray& operator=(const CDateArray& arrSource);
    /// As above.
    CDateArray& operator=(CDateArray&& arrSource) noexcept
    {
        return bedplate_private::ArrayMoves::Move(*this, arrSource);
    }

    /// Returns the number of values.
    BEDPLATE_INLINE int GetSize() const { return m_iSize; }
    /// Returns the capacity in slots.
    BEDPLATE_INLINE int GetBufferSize() const { return m_iBufferSize; }

    /// Returns value iIndex; throws for an index out of bounds.
    BEDPLATE_INLINE CDate GetAt(int iIndex) const
    {
        return m_pData[bedplate_private::Checked("CDateArray::GetAt", iIndex, m_iSize)];
    }

    /// Returns a reference to value iIndex; throws for an index out of bounds.
    BEDPLATE_INLINE CDate& operator[](int iIndex) const
    {
        return m_pData[bedplate_private::Checked("CDateArray::operator[]", iIndex, m_iSize)];
    }

    /// Returns the last date; throws when there is none.
    BEDPLATE_INLINE CDate GetAtLast() const
    {
        return m_pData[bedplate_private::CheckedLast("CDateArray::GetAtLast", m_iSize)];
    }

    /// Returns the first value's place, for range-for.
    BEDPLATE_INLINE CDate* begin() { return m_pData; }
    /// As above.
    BEDPLATE_INLINE const CDate* begin() const { return m_pData; }
    /// Returns the place behind the last date.
    BEDPLATE_INLINE CDate* end() { return m_pData + m_iSize; }
    /// As above.
    BEDPLATE_INLINE const CDate* end() const { return m_pData + m_iSize; }

    /// Returns the index of the first date with the text of date, or -1.
    int Find(CDate date) const;
    /// Tells whether Find finds date.
    bool IsIn(CDate date) const;
    /// Renders the values.
    ///   Example   {20240105, 20240210}: Repr(",") -> "CDateArr:(2/4),20240105,20240210"
    CString Repr(const char* pszSep = ", ", bool bHeader = true) const;

    /// Overwrites value iIndex; throws for an index out of bounds.
    BEDPLATE_INLINE void SetAt(int iIndex, CDate date)
    {
        m_pData[bedplate_private::Checked("CDateArray::SetAt", iIndex, m_iSize)] = date;
    }

    /// Appends date; returns its index.
    BEDPLATE_INLINE int Add(CDate date)
    {
        if (m_iSize >= m_iBufferSize)
            MakeRoom();
        m_pData[m_iSize] = date;
        return m_iSize++;
    }

    /// Inserts date before value iIndex, or appends it at GetSize(); returns iIndex, throws when it is out of bounds.
    int InsertAt(int iIndex, CDate date);
    /// Removes value iIndex; returns iIndex, throws when it is out of bounds.
    int RemoveAt(int iIndex);
    /// Removes the last date; nothing when there is none.
    void RemoveLast();
    /// Enlarges the buffer by a growth step (iCount <= 0) or by iCount slots (iCount above the capacity).
    void GrowBuffer(int iCount);
    /// Makes the array hold iCount times date; after a failure it is empty and without a buffer.
    void Reset(int iCount, CDate date);
    /// Sets every slot to an unset date and the size to 0; the buffer stays.
    void Clear();
    /// Releases the buffer.
    void RemoveAll();
    /// Sorts ascending, unset dates first.
    void Sort();

private:
    friend struct bedplate_private::ArrayMoves;
    friend struct bedplate_private::ArrayDesign<CDateArray>;
    friend struct bedplate_private::LayoutCheck;

    void MakeRoom();

    CDate* m_pData    = nullptr;
    int m_iSize       = 0;
    int m_iBufferSize = 0;
};

/// Compares two dates behind pointers, for qsort.
///   Returns   -1, 0 or 1.
BEDPLATE_API int CDateArray_SortCmp(const void* pLeft, const void* pRight);

#endif
