// How every array prints itself: its name shortened by two letters, its size and capacity, and then its elements.
#ifndef BEDPLATE_RENDERING_H
#define BEDPLATE_RENDERING_H

#include "strings/text_builder.h"

#include <string_view>

namespace bedplate_private
{
/// Returns what an array is called in its rendering: "CIntArr" for "CIntArray".
inline std::string_view TagOf(std::string_view svName) { return svName.substr(0, svName.size() - 2); }

/// Appends what comes before the elements: "CIntArr:(<size>/<capacity>)" and the separator.
template <class TArray>
void AppendHeader(CTextBuilder& text, const char* pszName, const TArray& arr, const char* pszSep)
{
    text.Append(TagOf(pszName));
    text.Append(":(");
    text.Append(arr.GetSize());
    text.Append("/");
    text.Append(arr.GetBufferSize());
    text.Append(")");
    text.Append(pszSep != nullptr ? pszSep : "(null)"); // as the C library prints a null text
}

/// Returns the rendering of an array without elements: "<CIntArr: unset>".
inline CString RenderUnset(const char* pszName)
{
    CTextBuilder text;
    text.Append("<");
    text.Append(TagOf(pszName));
    text.Append(": unset>");
    return text.Finish();
}
} // namespace bedplate_private

#endif
