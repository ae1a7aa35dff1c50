// Searching bytes for bytes.
#ifndef BEDPLATE_SEARCH_H
#define BEDPLATE_SEARCH_H

#include <cstddef>
#include <string_view>

namespace bedplate_private
{
/// Returns where svWanted, which is not empty, first stands in svText, or null.
const char* FindBytes(std::string_view svText, std::string_view svWanted);

/// Does what strstr does, in a text of iText bytes that a NUL follows.
const char* FindText(const char* pszText, std::size_t iText, const char* pszWanted);
} // namespace bedplate_private

#endif
