// Splitting a CString into the elements of a CStrArray, and making lines of quoted values of them. It belongs to the
// arrays: strings know nothing of them.
#include "cstring.h"

#include "arrays/str_array_filler.h"
#include "strings/search.h"
#include "strings/string_design.h"
#include "strings/text_builder.h"
#include "strings/trimming.h"

#include <cstddef>
#include <memory>

using namespace bedplate_private;

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
        if (m_svSep.size() == 1) // by FindBytes, it takes 1.1 to 1.6 times as long
            return static_cast<const char*>(memchr(svText.data(), m_svSep.front(), svText.size()));
        return FindBytes(svText, m_svSep);
    }
};

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
            svCut = Trimmed(svCut, true, true, CIsWhite());
        if (pszSep != nullptr || cutting.m_bKeepEmptyLast || !svCut.empty())
            filler.Add(svCut.data(), svCut.size());
    } while (pszSep != nullptr);
}

/// Returns a copy of what a string and a separator hold, one behind the other: the array that is filled may hold both.
std::unique_ptr<char[]> CopyOf(std::string_view svText, std::string_view svSep)
{
    const char szExpression[] = "char[m_iSize+1]";
    const int iSize = StringDesign::CheckSize(std::uint64_t{svText.size()} + svSep.size() + 1, szExpression);
    std::unique_ptr<char[]> pszCopy(StringDesign::NewText(iSize, szExpression));
    svText.copy(pszCopy.get(), svText.size());
    svSep.copy(pszCopy.get() + svText.size(), svSep.size());
    return pszCopy;
}

void SplitCopy(const CString& strText, CStrArray& arrPieces, const CCutting& cutting)
{
    CStrArrayFiller filler(arrPieces);
    const std::string_view svText = CountedText(strText);
    // A separator that is longer than the text never matches.
    const std::string_view svSep =
        cutting.m_svSep.size() <= svText.size() ? cutting.m_svSep : std::string_view();
    const auto pszCopy = CopyOf(svText, svSep);
    AddPieces(filler, {pszCopy.get(), svText.size()},
              {{pszCopy.get() + svText.size(), svSep.size()}, cutting.m_bTrim, cutting.m_bKeepEmptyLast});
}

// ---- Quoted values ----------------------------------------------------------------------------------------------

/// Reads values one by one. A value is written over the text that it was read from, as it is not longer.
class CQuotedReader
{
public:
    CQuotedReader(char* pszText, std::size_t iSize, char chSep)
        : m_psz(pszText), m_pszEnd(pszText + iSize), m_chSep(chSep)
    {
    }

    /// Reads the next value; returns whether another one follows.
    bool Read(std::string_view& svValue)
    {
        char* const pszValue = m_psz;
        const bool bQuoted   = m_psz < m_pszEnd && *m_psz == '"';
        char* pszTo          = bQuoted ? ReadQuoted(pszValue) : pszValue;
        for (; m_psz < m_pszEnd && *m_psz != m_chSep; *pszTo++ = *m_psz++)
            m_bSound = m_bSound && !bQuoted && *m_psz != '"';
        svValue = {pszValue, static_cast<std::size_t>(pszTo - pszValue)};
        return m_psz++ < m_pszEnd;
    }

    /// Tells whether all quotes so far stood where they may.
    bool IsSound() const { return m_bSound; }

private:
    /// Writes what is in quotes to pszTo, and returns its end.
    char* ReadQuoted(char* pszTo)
    {
        for (++m_psz; m_psz < m_pszEnd; *pszTo++ = *m_psz++)
        {
            const bool bQuote = *m_psz == '"'; // the last one, or the first of two
            if (bQuote && (++m_psz == m_pszEnd || *m_psz != '"'))
                return pszTo;
        }
        m_bSound = false;
        return pszTo;
    }

    char* m_psz;
    char* const m_pszEnd;
    const char m_chSep;
    bool m_bSound = true;
};

void AppendQuoted(CTextBuilder& text, std::string_view svValue, char chSep)
{
    const char szSpecial[] = {'"', '\n', '\r', chSep};
    if (svValue.find_first_of({szSpecial, sizeof szSpecial}) == std::string_view::npos)
        return text.Append(svValue);
    text.Append("\"");
    for (std::size_t i; (i = svValue.find('"')) != std::string_view::npos; svValue.remove_prefix(i + 1))
    {
        text.Append(svValue.substr(0, i + 1));
        text.Append("\"");
    }
    text.Append(svValue);
    text.Append("\"");
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

bool CString::SplitQuoted(char chSep, CStrArray* pArray) const
{
    if (pArray == nullptr)
        return false;
    CStrArrayFiller filler(*pArray);
    std::string_view svText = CountedText(*this);
    for (const char ch : {'\n', '\r'})
        svText.remove_suffix(!svText.empty() && svText.back() == ch ? 1 : 0);
    const auto pszCopy = CopyOf(svText, {});
    CQuotedReader reader(pszCopy.get(), svText.size(), chSep);
    for (bool bMore = true; bMore;)
    {
        std::string_view svValue;
        bMore = reader.Read(svValue);
        filler.Add(svValue.data(), svValue.size());
    }
    return reader.IsSound();
}

CString CString::Quoted(char chSep) const
{
    CTextBuilder text;
    AppendQuoted(text, CountedText(*this), chSep);
    return text.Finish();
}

CString CStrArray::JoinQuoted(char chSep) const
{
    CTextBuilder text;
    for (int i = 0; i < m_iSize; ++i)
    {
        text.Append({&chSep, i > 0 ? 1U : 0U});
        AppendQuoted(text, CountedText(*m_pData[i]), chSep);
    }
    return text.Finish();
}
