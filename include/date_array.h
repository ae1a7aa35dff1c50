// CDateArray: a growable, ordered array of dates. As CIntArray, in whose header the operations are documented, but:
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
    BEDPLATE_INLINE CDateArray() {}
    CDateArray(int iCount, CDate date);
    CDateArray(CDateArray& arrSource);
    CDateArray(const CDateArray& arrSource) : CDateArray(const_cast<CDateArray&>(arrSource)) {}
    CDateArray(std::initializer_list<CDate> listValues) { bedplate_private::AddAll(*this, listValues); }
    CDateArray(CDateArray&& arrSource) noexcept { bedplate_private::ArrayMoves::Swap(*this, arrSource); }
    ~CDateArray();
    CDateArray& operator=(const CDateArray& arrSource);
    CDateArray& operator=(CDateArray&& arrSource) noexcept
    {
        return bedplate_private::ArrayMoves::Move(*this, arrSource);
    }

    BEDPLATE_INLINE int GetSize() const { return m_iSize; }
    BEDPLATE_INLINE int GetBufferSize() const { return m_iBufferSize; }

    BEDPLATE_INLINE CDate GetAt(int iIndex) const
    {
        return m_pData[bedplate_private::Checked("CDateArray::GetAt", iIndex, m_iSize)];
    }

    BEDPLATE_INLINE CDate& operator[](int iIndex) const
    {
        return m_pData[bedplate_private::Checked("CDateArray::operator[]", iIndex, m_iSize)];
    }

    BEDPLATE_INLINE CDate GetAtLast() const
    {
        return m_pData[bedplate_private::CheckedLast("CDateArray::GetAtLast", m_iSize)];
    }

    BEDPLATE_INLINE CDate* begin() { return m_pData; }
    BEDPLATE_INLINE const CDate* begin() const { return m_pData; }
    BEDPLATE_INLINE CDate* end() { return m_pData + m_iSize; }
    BEDPLATE_INLINE const CDate* end() const { return m_pData + m_iSize; }

    int Find(CDate date) const;
    bool IsIn(CDate date) const;
    CString Repr(const char* pszSep = ", ", bool bHeader = true) const;

    BEDPLATE_INLINE void SetAt(int iIndex, CDate date)
    {
        m_pData[bedplate_private::Checked("CDateArray::SetAt", iIndex, m_iSize)] = date;
    }

    BEDPLATE_INLINE int Add(CDate date)
    {
        if (m_iSize >= m_iBufferSize)
            MakeRoom();
        m_pData[m_iSize] = date;
        return m_iSize++;
    }

    int InsertAt(int iIndex, CDate date);
    int RemoveAt(int iIndex);
    void RemoveLast();
    void GrowBuffer(int iCount);
    void Reset(int iCount, CDate date);
    void Clear();
    void RemoveAll();
    void Sort();

private:
    friend struct bedplate_private::ArrayDesign<CDateArray>;
    friend struct bedplate_private::ArrayMoves;
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
