// How every array prints itself: its name shortened by two letters, its size and capacity, and then its elements.
#ifndef BEDPLATE_RENDERING_H
#define BEDPLATE_RENDERING_H

#include "strings/string_design.h"

#include <charconv>
#include <cstddef>
#include <cstring>

namespace bedplate_private
{
/// Appends what an array is called in its rendering: "CIntArr" for "CIntArray".
inline void AppendTag(CTextBuilder& text, const char* pszName) { text.Append(pszName, strlen(pszName) - 2); }

inline void AppendCount(CTextBuilder& text, int iCount)
{
    constexpr std::size_t iMaxDigits = 10;
    char* psz                        = text.Room(iMaxDigits);
    text.Advance(static_cast<std::size_t>(std::to_chars(psz, psz + iMaxDigits, iCount).ptr - psz));
}

/// Appends what comes before the elements: "CIntArr:(<size>/<capacity>)" and the separator.
template <class TArray>
void AppendHeader(CTextBuilder& text, const char* pszName, const TArray& arr, const char* pszSep)
{
    AppendTag(text, pszName);
    text.Append(":(", 2);
    AppendCount(text, arr.GetSize());
    text.Append("/", 1);
    AppendCount(text, arr.GetBufferSize());
    text.Append(")", 1);
    if (pszSep == nullptr)
        pszSep = "(null)"; // as the C library prints a null text
    text.Append(pszSep, strlen(pszSep));
}

/// Returns the rendering of an array without elements: "<CIntArr: unset>".
inline CString RenderUnset(const char* pszName)
{
    CTextBuilder text;
    text.Append("<", 1);
    AppendTag(text, pszName);
    text.Append(": unset>", 8);
    return text.Finish();
}
} // namespace bedplate_private

#endif
