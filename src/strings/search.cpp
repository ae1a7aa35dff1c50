#include "strings/search.h"

#include "base/short_bytes.h"

#include <cstdint>
#include <cstring>

namespace bedplate_private
{
const char* FindBytes(std::string_view svText, std::string_view svWanted)
{
    if (svWanted.size() > svText.size())
        return nullptr;
    // Mostly the first character is rare, and memchr passes over 1,000 others in a fiftieth of memmem's time. Where it is
    // not, memmem, which never takes much longer than the text is long and is the faster the longer the wanted one is, has
    // the rest.
    const char* psz              = svText.data();
    const char* const pszEnd     = psz + svText.size();
    const char* const pszLast    = pszEnd - svWanted.size();
    constexpr int iFree          = 4; // tries, about what memmem takes to start
    const std::uint64_t iAllowed = iFree * std::uint64_t{svWanted.size()};
    for (std::uint64_t iTried = 0; iTried <= iAllowed + static_cast<std::size_t>(psz - svText.data()) / 8;
         iTried += svWanted.size())
    {
        psz = static_cast<const char*>(
            memchr(psz, svWanted.front(), static_cast<std::size_t>(pszLast - psz) + 1));
        if (psz == nullptr || AreBytesEqual(psz, svWanted.data(), svWanted.size()))
            return psz;
        if (psz++ == pszLast)
            return nullptr;
    }
    return static_cast<const char*>(
        memmem(psz, static_cast<std::size_t>(pszEnd - psz), svWanted.data(), svWanted.size()));
}

const char* FindText(const char* pszText, std::size_t iText, const char* pszWanted)
{
    if (sizeof(void*) > 4)
        return strstr(pszText, pszWanted); // the C library's is the fastest where it may use vectors
    // A NUL that the text counts ends it. There mostly is none, so it is looked for only in front of a match.
    const char* pszFound = FindBytes({pszText, iText}, pszWanted);
    if (pszFound == nullptr)
        return nullptr;
    const std::size_t iSeen = static_cast<std::size_t>(pszFound - pszText);
    return memchr(pszText, '\0', iSeen) == nullptr ? pszFound : nullptr;
}
} // namespace bedplate_private
