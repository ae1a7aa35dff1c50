// Splitting a CString into the elements of a CStrArray. It belongs to the arrays: strings know nothing of them.
#include "cstring.h"

#include "arrays/str_array_filler.h"
#include "strings/search.h"
#include "strings/string_design.h"

#include <cctype>
#include <cstddef>
#include <memory>

using bedplate_private::CStrArrayFiller;
using bedplate_private::FindBytes;
using bedplate_private::StringDesign;
using bedplate_private::ViewOf;

namespace
{
/// How a text is cut.
struct CCutting
{
    std::string_view m_svSep; // never matches if it is empty
    bool m_bTrim;
    bool m_bKeepEmptyLast;

    const char* FindSep(std::string_view svText) const
    {
        if (m_svSep.empty() || svText.empty())
            return nullptr;
        if (m_svSep.size() == 1)
            return static_cast<const char*>(memchr(svText.data(), m_svSep.front(), svText.size()));
        return FindBytes(svText, m_svSep);
    }
};

std::string_view Trimmed(std::string_view svText)
{
    while (!svText.empty() && isspace(svText.front()) != 0)
        svText.remove_prefix(1);
    while (!svText.empty() && isspace(svText.back()) != 0)
        svText.remove_suffix(1);
    return svText;
}

void AddPieces(CStrArrayFiller& filler, std::string_view svText, const CCutting& cutting)
{
    const char* pszSep;
    do
    {
        pszSep                 = cutting.FindSep(svText);
        std::string_view svCut = svText;
        if (pszSep != nullptr)
        {
            svCut = svText.substr(0, static_cast<std::size_t>(pszSep - svText.data()));
            svText.remove_prefix(svCut.size() + cutting.m_svSep.size());
        }
        if (cutting.m_bTrim)
            svCut = Trimmed(svCut);
        if (pszSep != nullptr || cutting.m_bKeepEmptyLast || !svCut.empty())
            filler.Add(svCut.data(), svCut.size());
    } while (pszSep != nullptr);
}

/// Cuts a text. The array may hold the text and the separator, and is about to overwrite them.
void SplitCopy(const CString& strText, CStrArray& arrPieces, const CCutting& cutting)
{
    CStrArrayFiller filler(arrPieces);
    const std::string_view svText(strText.ToStr(),
                                  strnlen(strText.ToStr(), static_cast<std::size_t>(strText.GetLength())));
    // A separator that is longer than the text never matches, so what it reads does not matter.
    const std::string_view svSep =
        cutting.m_svSep.size() <= svText.size() ? cutting.m_svSep : std::string_view();
    const std::unique_ptr<char[]> pszCopy(StringDesign::NewText(
        StringDesign::CheckSize(std::uint64_t{svText.size()} + svSep.size() + 1, "char[m_iSize+1]"),
        "char[m_iSize+1]"));
    svText.copy(pszCopy.get(), svText.size());
    svSep.copy(pszCopy.get() + svText.size(), svSep.size());
    AddPieces(filler, {pszCopy.get(), svText.size()},
              {{pszCopy.get() + svText.size(), svSep.size()}, cutting.m_bTrim, cutting.m_bKeepEmptyLast});
}
} // namespace

void CString::Split(const char* pszSep, CStrArray* pArray, bool bTrim) const
{
    if (pArray != nullptr)
        SplitCopy(*this, *pArray, {ViewOf(pszSep), bTrim, !bTrim});
}

void CString::Split(char chSep, CStrArray* pArray, bool bTrim) const
{
    if (pArray != nullptr)
        SplitCopy(*this, *pArray, {{&chSep, chSep != '\0' ? 1U : 0U}, bTrim, false});
}
