// Making, changing and searching texts, and printing into them.
#include "peers.h"
#include "workload.h"

#include "bedplate.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <strings.h>

namespace
{
using bench::RandomText;

const bench::CRow s_rows[] = {
    // std::string has room for 15 bytes in itself, which no string of another kind can match.
    {"string/construct", {10}, 0},
    {"string/construct", {30, 1000}, 1.4},
    {"string/copy", {10}, 0},
    {"string/copy", {30, 1000}, 1.4},
    {"string/assign", {30, 1000}, 1.1},
    {"string/assign-and-trim", {20}, 1.4},
    {"string/substring", {30, 1000}, 1.4},
    {"string/concatenate", {30, 1000}, 1.4},
    {"string/append", {1000}, 2.3},
    {"string/append", {10000}, 1.7},
    {"string/append", {100000}, 2.0},
    {"string/replace-text", {30, 1000}, 1.1},
    {"string/replace-character", {30, 1000}, 1.1},
    {"string/remove-character", {30, 1000}, 1.1},
    {"string/upper-case", {30, 1000}, 1.1},
    {"string/split", {10, 1000}, 1.5},
    {"search/find-character", {30, 1000}, 1.1},
    {"search/find-text", {30, 1000}, 1.1},
    {"search/find-last", {30, 1000}, 1.1},
    {"search/find-one-of", {30, 1000}, 1.1},
    {"search/compare", {30, 1000}, 1.1},
    {"search/equal", {30, 1000}, 1.1},
    {"search/compare-no-case", {30, 1000}, 1.1},
    {"format/short", {0}, 0.9},
    {"format/short-again", {0}, 0.9},
    {"format/numbers", {0}, 1.0},
    {"format/numbers-again", {0}, 1.0},
    {"format/long", {500, 20000}, 1.0},
    {"format/long-again", {500, 20000}, 1.0},
    {"format/lines", {1000}, 1.7},
};

// ---- What is worked on: x, y and z are not among the letters -----------------------------------------------------

std::string Letters(long lLength) { return RandomText(lLength); }
std::string Searched(long lLength) { return "z" + RandomText(lLength) + "bcxy"; }

std::string EighthsMarked(long lLength)
{
    std::string strText = RandomText(lLength);
    for (size_t i = 3; i < strText.size(); i += 8)
        strText[i] = 'x';
    return strText;
}

std::string Line(long lPieces)
{
    std::string strLine;
    for (const std::string& strPiece : bench::RandomTexts(lPieces))
        strLine += (strLine.empty() ? "" : ",") + strPiece;
    return strLine;
}

constexpr const char* s_pszSpaced = "  \ttwenty bytes of text \n";

/// A contestant whose texts are TText.
template <class TText>
class CTexts : public bench::CContestant
{
public:
    explicit CTexts(const char* pszName) : CContestant(s_rows, pszName) {}

    /// Measures work(text) on the text that source(size) is.
    template <class TWork>
    void OnText(const char* pszWorkload, std::string (*source)(long), TWork work) const
    {
        On(
            pszWorkload, [=](long lSize) { return TText(source(lSize).c_str()); }, work);
    }

    /// Measures work(text, other) on two texts that differ in their last letter.
    template <class TWork>
    void OnTwo(const char* pszWorkload, TWork work) const
    {
        On(
            pszWorkload,
            [](long lLength) {
                return std::pair(TText((RandomText(lLength) + "a").c_str()),
                                 TText((RandomText(lLength) + "b").c_str()));
            },
            [=](auto& both) { return work(both.first, both.second); });
    }

    /// Measures copying a text of which every eighth letter is an x, and work(copy).
    template <class TWork>
    void OnCopy(const char* pszWorkload, TWork work) const
    {
        OnText(pszWorkload, EighthsMarked,
               [=](const TText& source)
               {
                   TText text(source);
                   work(text);
                   benchmark::DoNotOptimize(&text);
               });
    }

    /// Measures making a text of pieces of ten bytes.
    void Append() const
    {
        On(
            "string/append", [](long lPieces) { return lPieces; },
            [](const long& lPieces)
            {
                TText text;
                for (long i = 0; i < lPieces; ++i)
                    text += "0123456789";
                return text;
            });
    }

    /// Measures split(text, pieces) into pieces that are used again and again.
    template <class TPieces, class TSplit>
    void Split(TSplit split) const
    {
        On(
            "string/split",
            [](long lPieces) { return std::pair<TText, TPieces>(Line(lPieces).c_str(), TPieces()); },
            [=](auto& both) { split(both.first, both.second); });
    }

    /// Measures print(text, format, arguments...) into new texts, or again and again into one.
    template <class TPrint>
    void Print(const std::string& strKind, TPrint print) const
    {
        const auto make = [](long lLength) { return std::pair(TText(), RandomText(lLength / 2)); };
        On("format/short" + strKind, make,
           [=](auto& both) { return print(both.first, "%s-%d", "abcdefghij", 1234); });
        On("format/numbers" + strKind, make,
           [=](auto& both)
           { return print(both.first, "%d;%5d;%x;%.2f;%c;%s", 123456, 42, 48879, 1234.5, 'c', "word"); });
        On("format/long" + strKind, make,
           [=](auto& both)
           { return print(both.first, "%s-%d-%s", both.second.c_str(), 1234, both.second.c_str()); });
    }

    /// Measures writing lines with add(buffer, line).
    template <class TBuffer, class TAdd>
    void Write(TAdd add) const
    {
        On(
            "format/lines",
            [](long lCount)
            {
                std::vector<TText> lines;
                for (const std::string& strLine : bench::RandomTexts(lCount))
                    lines.emplace_back(strLine.c_str());
                return lines;
            },
            [=](const std::vector<TText>& lines)
            {
                TBuffer buffer;
                for (const TText& line : lines)
                    add(buffer, line);
                benchmark::DoNotOptimize(&buffer);
            });
    }
};

// ---- The contestants ---------------------------------------------------------------------------------------------

void Bedplate()
{
    const CTexts<CString> ours("Bedplate");
    CTexts<std::string>("Bedplate")
        .OnText("string/construct", Letters, [](auto& str) { return CString(str.c_str()); });
    ours.OnText("string/copy", Letters, [](auto& str) { return CString(str); });
    ours.OnTwo("string/assign", [](auto& str, auto& strOther) { str = strOther.ToStr(); });
    ours.OnText("string/assign-and-trim", Letters, [](auto& str) { (str = s_pszSpaced).Trim(); });
    ours.OnText("string/substring", Letters, [](auto& str) { return str.Mid(5, str.GetLength() - 8); });
    ours.OnTwo("string/concatenate", [](auto& str, auto& strOther) { return str + strOther; });
    ours.Append();
    ours.OnCopy("string/replace-text", [](auto& str) { str.Replace("x", "two"); });
    ours.OnCopy("string/replace-character", [](auto& str) { str.Replace('x', 'y'); });
    ours.OnCopy("string/remove-character", [](auto& str) { str.Remove('x'); });
    ours.OnCopy("string/upper-case", [](auto& str) { str.MakeUpper(); });
    ours.Split<CStrArray>([](auto& str, auto& pieces) { str.Split(',', &pieces); });
    ours.OnText("search/find-character", Searched, [](auto& str) { return str.Find('x'); });
    ours.OnText("search/find-text", Searched, [](auto& str) { return str.Find("bcxy"); });
    ours.OnText("search/find-last", Searched, [](auto& str) { return str.ReverseFind('z'); });
    ours.OnText("search/find-one-of", Searched, [](auto& str) { return str.FindOneOf("yx"); });
    ours.OnTwo("search/compare", [](auto& str, auto& strOther) { return str.Compare(strOther.ToStr()); });
    ours.OnTwo("search/equal", [](auto& str, auto& strOther) { return str == strOther; });
    ours.OnTwo("search/compare-no-case",
               [](auto& str, auto& strOther) { return str.CompareNoCase(strOther.ToStr()); });
    ours.Print("", [](CString&, auto... arguments) { return CFormat(arguments...); });
    ours.Print("-again", [](CString& str, auto... arguments) { return str.Format(arguments...); });
    ours.Write<CStream>([](CStream& stream, const CString& strLine) { stream.AppendLine(strLine); });
}

void TrimStd(std::string& strText)
{
    strText.erase(strText.find_last_not_of(" \t\n\v\f\r") + 1);
    strText.erase(0, strText.find_first_not_of(" \t\n\v\f\r"));
}

void ReplaceStd(std::string& strText, const std::string& strOld, const char* pszNew)
{
    std::string strResult;
    size_t iDone = 0;
    for (size_t i; (i = strText.find(strOld, iDone)) != std::string::npos; iDone = i + strOld.size())
        strResult.append(strText, iDone, i - iDone).append(pszNew);
    strText = strResult.append(strText, iDone);
}

void SplitStd(const std::string& strLine, std::vector<std::string>& pieces)
{
    pieces.clear();
    size_t iFrom = 0;
    for (size_t i; (i = strLine.find(',', iFrom)) != std::string::npos; iFrom = i + 1)
        pieces.emplace_back(strLine, iFrom, i - iFrom);
    pieces.emplace_back(strLine, iFrom);
}

void Standard()
{
    const CTexts<std::string> standard("std::string");
    standard.OnText("string/construct", Letters, [](auto& str) { return std::string(str.c_str()); });
    standard.OnText("string/copy", Letters, [](auto& str) { return std::string(str); });
    standard.OnTwo("string/assign", [](auto& str, auto& strOther) { str = strOther.c_str(); });
    standard.OnText("string/assign-and-trim", Letters, [](auto& str) { TrimStd(str = s_pszSpaced); });
    standard.OnText("string/substring", Letters, [](auto& str) { return str.substr(5, str.size() - 8); });
    standard.OnTwo("string/concatenate", [](auto& str, auto& strOther) { return str + strOther; });
    standard.Append();
    standard.OnCopy("string/replace-text", [](auto& str) { ReplaceStd(str, "x", "two"); });
    standard.OnCopy("string/replace-character",
                    [](auto& str) { std::replace(str.begin(), str.end(), 'x', 'y'); });
    standard.OnCopy("string/remove-character", [](auto& str) { std::erase(str, 'x'); });
    standard.OnCopy(
        "string/upper-case", [](auto& str)
        { std::transform(str.begin(), str.end(), str.begin(), [](int ch) { return std::toupper(ch); }); });
    standard.Split<std::vector<std::string>>(SplitStd);
    standard.OnText("search/find-character", Searched, [](auto& str) { return str.find('x'); });
    standard.OnText("search/find-text", Searched, [](auto& str) { return str.find("bcxy"); });
    standard.OnText("search/find-last", Searched, [](auto& str) { return str.rfind('z'); });
    standard.OnText("search/find-one-of", Searched, [](auto& str) { return str.find_first_of("yx"); });
    standard.OnTwo("search/compare", [](auto& str, auto& strOther) { return str.compare(strOther.c_str()); });
    standard.OnTwo("search/equal", [](auto& str, auto& strOther) { return str == strOther; });
    standard.Write<std::string>([](auto& strAll, auto& strLine) { (strAll += strLine) += '\n'; });
}

void CLibrary()
{
    const CTexts<std::string> c("C library");
    c.OnText("search/find-character", Searched, [](auto& str) { return std::strchr(str.c_str(), 'x'); });
    c.OnText("search/find-text", Searched, [](auto& str) { return std::strstr(str.c_str(), "bcxy"); });
    c.OnText("search/find-last", Searched, [](auto& str) { return std::strrchr(str.c_str(), 'z'); });
    c.OnText("search/find-one-of", Searched, [](auto& str) { return std::strcspn(str.c_str(), "yx"); });
    c.OnTwo("search/compare",
            [](auto& str, auto& strOther) { return std::strcmp(str.c_str(), strOther.c_str()); });
    c.OnTwo("search/compare-no-case",
            [](auto& str, auto& strOther) { return strcasecmp(str.c_str(), strOther.c_str()); });
    c.Print("",
            [](auto&, auto... arguments)
            {
                char* pszText    = nullptr;
                const int iCount = asprintf(&pszText, arguments...);
                std::free(pszText);
                return iCount;
            });
}

void Abseil()
{
#ifdef BENCH_ABSL
    const CTexts<std::string> abseil("Abseil");
    abseil.OnText("string/assign-and-trim", Letters,
                  [](auto& str) { absl::StripAsciiWhitespace(&(str = s_pszSpaced)); });
    abseil.OnCopy("string/replace-text", [](auto& str) { absl::StrReplaceAll({{"x", "two"}}, &str); });
    abseil.Split<std::vector<std::string>>([](auto& str, auto& pieces)
                                           { pieces = absl::StrSplit(str, ','); });
    abseil.OnTwo("search/compare-no-case",
                 [](auto& str, auto& strOther) { return absl::EqualsIgnoreCase(str, strOther); });
    abseil.Print("", [](auto&, auto... arguments) { return absl::StrFormat(arguments...); });
    abseil.Print("-again",
                 [](std::string& str, auto... arguments)
                 {
                     str.clear();
                     absl::StrAppendFormat(&str, arguments...);
                     return str.size();
                 });
#endif
}

void Fmt()
{
#ifdef BENCH_FMT
    const CTexts<std::string> fmt("fmt");
    fmt.Print("", [](auto&, auto... arguments) { return fmt::sprintf(arguments...); });
    fmt.Write<fmt::memory_buffer>(
        [](auto& buffer, auto& strLine)
        {
            buffer.append(strLine);
            buffer.push_back('\n');
        });
#endif
}

void GLib()
{
#ifdef BENCH_GLIB
    const CTexts<std::string> glib("GLib");
    glib.OnTwo("string/concatenate", [](auto& str, auto& strOther)
               { g_free(g_strconcat(str.c_str(), strOther.c_str(), nullptr)); });
    glib.OnText("string/split", Line, [](auto& str) { g_strfreev(g_strsplit(str.c_str(), ",", 0)); });
    glib.Print("", [](auto&, auto... arguments) { g_free(g_strdup_printf(arguments...)); });
#endif
}

void QtCore()
{
#ifdef BENCH_QT
    const CTexts<QByteArray> qt("Qt");
    CTexts<std::string>("Qt").OnText("string/construct", Letters,
                                     [](auto& str) { return QByteArray(str.c_str()); });
    // QByteArray shares its bytes; what is compared is a copy that can be changed.
    qt.OnText("string/copy", Letters,
              [](auto& bytes) { return QByteArray(bytes.constData(), bytes.size()); });
    qt.OnTwo("string/assign", [](auto& bytes, auto& other) { bytes = other.constData(); });
    qt.OnText("string/assign-and-trim", Letters,
              [](auto& bytes) { bytes = std::move(bytes = s_pszSpaced).trimmed(); });
    qt.OnText("string/substring", Letters, [](auto& bytes) { return bytes.mid(5, bytes.size() - 8); });
    qt.OnTwo("string/concatenate", [](auto& bytes, auto& other) { return QByteArray(bytes + other); });
    qt.Append();
    qt.OnCopy("string/replace-text", [](auto& bytes) { bytes.replace("x", "two"); });
    qt.OnCopy("string/replace-character", [](auto& bytes) { bytes.replace('x', 'y'); });
    qt.OnCopy("string/upper-case", [](auto& bytes) { bytes = std::move(bytes).toUpper(); });
    qt.OnText("string/split", Line, [](auto& bytes) { return bytes.split(','); });
    qt.OnText("search/find-character", Searched, [](auto& bytes) { return bytes.indexOf('x'); });
    qt.OnText("search/find-text", Searched, [](auto& bytes) { return bytes.indexOf("bcxy"); });
    qt.Print("", [](auto&, auto... arguments) { return QString::asprintf(arguments...); });
#endif
}
} // namespace

int main(int iArguments, char** ppszArguments)
{
    Bedplate();
    Standard();
    CLibrary();
    Abseil();
    Fmt();
    GLib();
    QtCore();
    return bench::Main(iArguments, ppszArguments);
}
