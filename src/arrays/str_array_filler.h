// Giving a string array new content, for the units that do.
#ifndef BEDPLATE_STR_ARRAY_FILLER_H
#define BEDPLATE_STR_ARRAY_FILLER_H

#include "str_array.h"

#include <cstddef>

namespace bedplate_private
{
/// Replaces what an array holds, text by text. The outcome is that of Clear and Add, but each old string takes its new
/// text as it is, without being emptied in between, and emptying the rest cannot fail.
class CStrArrayFiller
{
public:
    /// The array is empty from here on.
    explicit CStrArrayFiller(CStrArray& arr) : m_arr(arr), m_iOldSize(arr.m_iSize) { arr.m_iSize = 0; }

    /// Empties the old strings that have not been used again.
    ~CStrArrayFiller();

    CStrArrayFiller(const CStrArrayFiller&)            = delete;
    CStrArrayFiller& operator=(const CStrArrayFiller&) = delete;

    /// Appends a text of iCount bytes, without a NUL among them, as CStrArray::Add does.
    void Add(const char* pszText, std::size_t iCount) { m_arr.InsertText(m_arr.m_iSize, pszText, iCount); }

    /// Makes room for iCount elements, as CStrArray::SetSize does for an empty array.
    void Reserve(int iCount) { m_arr.Reserve(iCount); }

private:
    CStrArray& m_arr;
    int m_iOldSize;
};
} // namespace bedplate_private

#endif
