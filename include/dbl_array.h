// CDblArray: a growable, ordered array of doubles. As CIntArray, in whose header the operations are documented, but:
//
//   - Find and IsIn compare exactly: 0.0 finds -0.0, and a NaN finds nothing.
//   - Sort and CDblArray_SortCmp take a NaN to equal everything: an array that holds one ends in no useful order.
//   - Repr prints "%f", six decimals with the current locale's decimal point, as in "CDblArr:(1/4),1.500000".
//   - Messages say "CDblArray", Repr says "CDblArr".
#ifndef BEDPLATE_DBL_ARRAY_H
#define BEDPLATE_DBL_ARRAY_H

#include "cstring.h"

#include <initializer_list>

class BEDPLATE_API CDblArray
{
public:
    BEDPLATE_INLINE CDblArray() {}
    CDblArray(int iCount, double dValue);
    CDblArray(CDblArray& arrSource);
    CDblArray(const CDblArray& arrSource) : CDblArray(const_cast<CDblArray&>(arrSource)) {}
    CDblArray(std::initializer_list<double> listValues) { bedplate_private::AddAll(*this, listValues); }
    CDblArray(CDblArray&& arrSource) noexcept { bedplate_private::ArrayMoves::Swap(*this, arrSource); }
    ~CDblArray();
    CDblArray& operator=(const CDblArray& arrSource);
    CDblArray& operator=(CDblArray&& arrSource) noexcept
    {
        return bedplate_private::ArrayMoves::Move(*this, arrSource);
    }

    BEDPLATE_INLINE int GetSize() const { return m_iSize; }
    BEDPLATE_INLINE int GetBufferSize() const { return m_iBufferSize; }

    BEDPLATE_INLINE double GetAt(int iIndex) const
    {
        return m_pData[bedplate_private::Checked("CDblArray::GetAt", iIndex, m_iSize)];
    }

    BEDPLATE_INLINE double& operator[](int iIndex) const
    {
        return m_pData[bedplate_private::Checked("CDblArray::operator[]", iIndex, m_iSize)];
    }

    BEDPLATE_INLINE double GetAtLast() const
    {
        return m_pData[bedplate_private::CheckedLast("CDblArray::GetAtLast", m_iSize)];
    }

    BEDPLATE_INLINE double* begin() { return m_pData; }
    BEDPLATE_INLINE const double* begin() const { return m_pData; }
    BEDPLATE_INLINE double* end() { return m_pData + m_iSize; }
    BEDPLATE_INLINE const double* end() const { return m_pData + m_iSize; }

    int Find(double dValue) const;
    bool IsIn(double dValue) const;
    CString Repr(const char* pszSep = ", ", bool bHeader = true) const;

    BEDPLATE_INLINE void SetAt(int iIndex, double dValue)
    {
        m_pData[bedplate_private::Checked("CDblArray::SetAt", iIndex, m_iSize)] = dValue;
    }

    BEDPLATE_INLINE int Add(double dValue)
    {
        if (m_iSize >= m_iBufferSize)
            MakeRoom();
        m_pData[m_iSize] = dValue;
        return m_iSize++;
    }

    int InsertAt(int iIndex, double dValue);
    int RemoveAt(int iIndex);
    void RemoveLast();
    void GrowBuffer(int iCount);
    void Reset(int iCount, double dValue);
    void Clear();
    void RemoveAll();
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
