// CBoolArray: a growable, ordered array of bools, one byte each. As CIntArray, in whose header the operations are documented, but:
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
    BEDPLATE_INLINE CBoolArray() {}
    CBoolArray(int iCount, bool bValue);
    CBoolArray(CBoolArray& arrSource);
    CBoolArray(const CBoolArray& arrSource) : CBoolArray(const_cast<CBoolArray&>(arrSource)) {}
    CBoolArray(std::initializer_list<bool> listValues) { bedplate_private::AddAll(*this, listValues); }
    CBoolArray(CBoolArray&& arrSource) noexcept { bedplate_private::ArrayMoves::Swap(*this, arrSource); }
    ~CBoolArray();
    CBoolArray& operator=(const CBoolArray& arrSource);
    CBoolArray& operator=(CBoolArray&& arrSource) noexcept
    {
        return bedplate_private::ArrayMoves::Move(*this, arrSource);
    }

    BEDPLATE_INLINE int GetSize() const { return m_iSize; }
    BEDPLATE_INLINE int GetBufferSize() const { return m_iBufferSize; }

    BEDPLATE_INLINE bool GetAt(int iIndex) const
    {
        return m_pData[bedplate_private::Checked("CBoolArray::GetAt", iIndex, m_iSize)];
    }

    BEDPLATE_INLINE bool& operator[](int iIndex) const
    {
        return m_pData[bedplate_private::Checked("CBoolArray::operator[]", iIndex, m_iSize)];
    }

    BEDPLATE_INLINE bool GetAtLast() const
    {
        return m_pData[bedplate_private::CheckedLast("CBoolArray::GetAtLast", m_iSize)];
    }

    BEDPLATE_INLINE bool* begin() { return m_pData; }
    BEDPLATE_INLINE const bool* begin() const { return m_pData; }
    BEDPLATE_INLINE bool* end() { return m_pData + m_iSize; }
    BEDPLATE_INLINE const bool* end() const { return m_pData + m_iSize; }

    int Find(bool bValue) const;
    bool IsIn(bool bValue) const;
    CString Repr(const char* pszSep = ", ", bool bHeader = true) const;

    BEDPLATE_INLINE void SetAt(int iIndex, bool bValue)
    {
        m_pData[bedplate_private::Checked("CBoolArray::SetAt", iIndex, m_iSize)] = bValue;
    }

    BEDPLATE_INLINE int Add(bool bValue)
    {
        if (m_iSize >= m_iBufferSize)
            MakeRoom();
        m_pData[m_iSize] = bValue;
        return m_iSize++;
    }

    int InsertAt(int iIndex, bool bValue);
    int RemoveAt(int iIndex);
    void RemoveLast();
    void GrowBuffer(int iCount);
    void Reset(int iCount, bool bValue);
    void Clear();
    void RemoveAll();
    void Sort();

private:
    friend struct bedplate_private::ArrayDesign<CBoolArray>;
    friend struct bedplate_private::ArrayMoves;
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
