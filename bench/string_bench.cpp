// Making, changing, searching and splitting texts.
#include "memory.h"
#include "peers.h"
#include "workload.h"

#include "bedplate.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdio>
#include <strings.h>

namespace
{
using bench::CHeapText;
using bench::CWorkload;
using bench::RandomText;
using bench::s_dUnjudged;

constexpr const char* s_pszFamily = "string";

#ifdef BENCH_QT
/// QByteArray shares its bytes; the copies compared here are deep.
QByteArray DeepCopy(const QByteArray& bytes) { return QByteArray(bytes.constData(), bytes.size()); }
#endif

/// Returns what makes a TText of the text, again for each subject.
template <class TText>
auto Maker(const std::string& strText)
{
    return [strText] { return TText(strText.c_str()); };
}

// ---- Making texts: judged against heap strings, and against std::string where that has to allocate too ------------

/// Short texts fit into std::string itself, which no string of this kind can match.
double StdTarget(long lLength) { return lLength > 15 ? 1.4 : s_dUnjudged; }

void Construct(long lLength)
{
    const std::string strText = RandomText(lLength);
    const auto text           = [strText] { return strText; };
    CWorkload(s_pszFamily, "construct", lLength, 1.0)
        .On("Bedplate", text, [](std::string& str) { return CString(str.c_str()); })
        .On({"std::string", StdTarget(lLength)}, text,
            [](std::string& str) { return std::string(str.c_str()); })
#ifdef BENCH_GLIB
        .On("GString", text, [](std::string& str) { return bench::CGString(str.c_str()); })
#endif
#ifdef BENCH_QT
        .On("QByteArray", text, [](std::string& str) { return QByteArray(str.c_str()); })
#endif
        .On("heap text", text, [](std::string& str) { return CHeapText(str.c_str()); })
        .On(
            bench::MemoryAlone(), [strText] { return strText; }, bench::RequestText);
}

void Copy(long lLength)
{
    const std::string strText = RandomText(lLength);
    CWorkload(s_pszFamily, "copy", lLength, 1.0)
        .On("Bedplate", Maker<CString>(strText), [](CString& str) { return CString(str); })
        .On({"std::string", StdTarget(lLength)}, Maker<std::string>(strText),
            [](std::string& str) { return std::string(str); })
#ifdef BENCH_GLIB
        .On("GString", Maker<bench::CGString>(strText),
            [](bench::CGString& str) { return bench::CGString(str); })
#endif
#ifdef BENCH_QT
        .On("QByteArray", Maker<QByteArray>(strText), [](QByteArray& str) { return DeepCopy(str); })
#endif
        .On("heap text", Maker<CHeapText>(strText), [](CHeapText& str) { return CHeapText(str); })
        .On(
            bench::MemoryAlone(), [strText] { return strText; }, bench::RequestText);
}

/// Into a string that has room for it.
void Assign(long lLength)
{
    const std::string strText = RandomText(lLength);
    CWorkload(s_pszFamily, "assign", lLength, 1.0)
        .On("Bedplate", Maker<CString>(strText), [strText](CString& str) { str = strText.c_str(); })
        .On({"std::string", StdTarget(lLength)}, Maker<std::string>(strText),
            [strText](std::string& str) { str = strText.c_str(); })
#ifdef BENCH_GLIB
        .On("GString", Maker<bench::CGString>(strText),
            [strText](bench::CGString& str) { g_string_assign(str.Get(), strText.c_str()); })
#endif
#ifdef BENCH_QT
        .On("QByteArray", Maker<QByteArray>(strText), [strText](QByteArray& str) { str = strText.c_str(); })
#endif
        ;
}

/// The middle half of a text twice as long.
void Substring(long lLength)
{
    const std::string strText = RandomText(2 * lLength);
    const int iFrom           = static_cast<int>(lLength / 2);
    const int iCount          = static_cast<int>(lLength);
    CWorkload(s_pszFamily, "substring", lLength, 1.0)
        .On("Bedplate", Maker<CString>(strText), [=](CString& str) { return str.Mid(iFrom, iCount); })
        .On({"std::string", StdTarget(lLength)}, Maker<std::string>(strText),
            [=](std::string& str)
            { return str.substr(static_cast<size_t>(iFrom), static_cast<size_t>(iCount)); })
#ifdef BENCH_QT
        .On("QByteArray", Maker<QByteArray>(strText), [=](QByteArray& str) { return str.mid(iFrom, iCount); })
#endif
        .On("heap text", Maker<CHeapText>(strText),
            [=](CHeapText& str) { return CHeapText(str.Text() + iFrom, static_cast<size_t>(iCount)); })
        .On(
            bench::MemoryAlone(), [=] { return strText.substr(0, static_cast<size_t>(iCount)); },
            bench::RequestText);
}

/// Two halves become one text.
void Concatenate(long lLength)
{
    const std::string strHalf = RandomText(lLength / 2 + 1);
    CWorkload(s_pszFamily, "concatenate", lLength, 1.0)
        .On("Bedplate", Maker<CString>(strHalf), [](CString& str) { return str + str; })
        .On({"std::string", StdTarget(lLength)}, Maker<std::string>(strHalf),
            [](std::string& str) { return str + str; })
#ifdef BENCH_GLIB
        .On("g_strconcat", Maker<bench::CGString>(strHalf),
            [](bench::CGString& str)
            {
                char* pszBoth = g_strconcat(str->str, str->str, nullptr);
                benchmark::DoNotOptimize(pszBoth);
                g_free(pszBoth);
            })
#endif
#ifdef BENCH_QT
        .On("QByteArray", Maker<QByteArray>(strHalf), [](QByteArray& str) { return QByteArray(str + str); })
#endif
        ;
}

void Append(long lPieces)
{
    static const char s_szPiece[] = "0123456789";
    const double dTarget          = lPieces >= 1000 ? 1.5 : s_dUnjudged;
    const auto append             = [lPieces](auto text, auto add)
    {
        for (long i = 0; i < lPieces; ++i)
            add(text);
        return text;
    };
    CWorkload(s_pszFamily, "append", lPieces, s_dUnjudged)
        .Run("Bedplate",
             [=]
             {
                 CString str;
                 for (long i = 0; i < lPieces; ++i)
                     str += s_szPiece;
                 return str.GetLength();
             })
        .Run(bench::MemoryAlone(), [=] { bench::RequestAppends(lPieces, sizeof s_szPiece - 1); })
        .Run({"std::string", dTarget},
             [=] { return append(std::string(), [](std::string& str) { str += s_szPiece; }); })
#ifdef BENCH_GLIB
        .Run("GString",
             [=]
             {
                 bench::CGString str;
                 for (long i = 0; i < lPieces; ++i)
                     g_string_append(str.Get(), s_szPiece);
                 return str->len;
             })
#endif
#ifdef BENCH_QT
        .Run("QByteArray", [=] { return append(QByteArray(), [](QByteArray& str) { str += s_szPiece; }); })
#endif
        ;
}

// ---- Reading: the letters x, y and z are not in the random texts ---------------------------------------

void Find(long lLength)
{
    const std::string strText = RandomText(lLength) + "bcxyz";
    const auto ours           = Maker<CString>(strText);
    const auto theirs         = Maker<std::string>(strText);
    CWorkload(s_pszFamily, "find-character", lLength, 1.1)
        .On("Bedplate", ours, [](CString& str) { return str.Find('x'); })
        .On("std::string", theirs, [](std::string& str) { return str.find('x'); })
        .On("strchr", theirs, [](std::string& str) { return std::strchr(str.c_str(), 'x'); });
    CWorkload(s_pszFamily, "find-text", lLength, 1.1)
        .On("Bedplate", ours, [](CString& str) { return str.Find("bcxyz"); })
        .On("std::string", theirs, [](std::string& str) { return str.find("bcxyz"); })
        .On("strstr", theirs, [](std::string& str) { return std::strstr(str.c_str(), "bcxyz"); });
    CWorkload(s_pszFamily, "find-last", lLength, 1.1)
        .On("Bedplate", Maker<CString>("x" + strText.substr(0, strText.size() - 5)),
            [](CString& str) { return str.ReverseFind('x'); })
        .On("std::string", Maker<std::string>("x" + strText.substr(0, strText.size() - 5)),
            [](std::string& str) { return str.rfind('x'); })
        .On("strrchr", Maker<std::string>("x" + strText.substr(0, strText.size() - 5)),
            [](std::string& str) { return std::strrchr(str.c_str(), 'x'); });
    CWorkload(s_pszFamily, "find-one-of", lLength, 1.1)
        .On("Bedplate", ours, [](CString& str) { return str.FindOneOf("zyx"); })
        .On("std::string", theirs, [](std::string& str) { return str.find_first_of("zyx"); })
        .On("strcspn", theirs, [](std::string& str) { return std::strcspn(str.c_str(), "zyx"); });
}

void Compare(long lLength)
{
    const std::string strText  = RandomText(lLength) + "a";
    const std::string strOther = RandomText(lLength) + "b";
    const auto ours            = Maker<CString>(strText);
    const auto theirs          = Maker<std::string>(strText);
    CWorkload(s_pszFamily, "compare", lLength, 1.1)
        .On("Bedplate", ours, [=](CString& str) { return str.Compare(strOther.c_str()); })
        .On("std::string", theirs, [=](std::string& str) { return str.compare(strOther.c_str()); })
        .On("strcmp", theirs, [=](std::string& str) { return std::strcmp(str.c_str(), strOther.c_str()); });
    const CString strOurOther(strOther.c_str());
    CWorkload(s_pszFamily, "equal", lLength, 1.1)
        .On("Bedplate", ours, [=](CString& str) { return str == strOurOther; })
        .On("std::string", theirs, [=](std::string& str) { return str == strOther; });
    CWorkload(s_pszFamily, "compare-no-case", lLength, 1.1)
        .On("Bedplate", ours, [=](CString& str) { return str.CompareNoCase(strOther.c_str()); })
        .On("strcasecmp", theirs,
            [=](std::string& str) { return strcasecmp(str.c_str(), strOther.c_str()); });
}

void ReadNumbers()
{
    CWorkload(s_pszFamily, "ToInt", 0, 1.1)
        .On("Bedplate", Maker<CString>(" 1234567"), [](CString& str) { return str.ToInt(); })
        .On("strtol", Maker<std::string>(" 1234567"),
            [](std::string& str) { return std::strtol(str.c_str(), nullptr, 10); })
        .On("std::stoi", Maker<std::string>(" 1234567"), [](std::string& str) { return std::stoi(str); });
    CWorkload(s_pszFamily, "ToDbl", 0, 1.1)
        .On("Bedplate", Maker<CString>("12345.678"), [](CString& str) { return str.ToDbl(); })
        .On("strtod", Maker<std::string>("12345.678"),
            [](std::string& str) { return std::strtod(str.c_str(), nullptr); })
        .On("std::stod", Maker<std::string>("12345.678"), [](std::string& str) { return std::stod(str); });
}

// ---- Editing ------------------------------------------------------------------------------------------------------

/// Returns the text with every eighth letter replaced by x.
std::string WithMarks(long lLength)
{
    std::string strText = RandomText(lLength);
    for (size_t i = 3; i < strText.size(); i += 8)
        strText[i] = 'x';
    return strText;
}

void ReplaceAll(std::string& strText, const char* pszOld, const char* pszNew)
{
    const size_t iOld = std::strlen(pszOld);
    std::string strResult;
    size_t iDone = 0;
    for (size_t i; (i = strText.find(pszOld, iDone)) != std::string::npos; iDone = i + iOld)
        strResult.append(strText, iDone, i - iDone).append(pszNew);
    strText = strResult.append(strText, iDone);
}

void Edit(long lLength)
{
    const auto ours   = Maker<CString>(WithMarks(lLength));
    const auto theirs = Maker<std::string>(WithMarks(lLength));
    CWorkload(s_pszFamily, "replace-text", lLength, 1.1)
        .OnFresh("Bedplate", ours, [](CString& str) { return str.Replace("x", "two"); })
        .OnFresh("std::string", theirs, [](std::string& str) { ReplaceAll(str, "x", "two"); })
#ifdef BENCH_ABSL
        .OnFresh({"absl::StrReplaceAll", s_dUnjudged}, theirs,
                 [](std::string& str) {
                     return absl::StrReplaceAll({{"x", "two"}}, &str);
                 })
#endif
#ifdef BENCH_BOOST
        .OnFresh({"boost::replace_all", s_dUnjudged}, theirs,
                 [](std::string& str) { boost::replace_all(str, "x", "two"); })
#endif
        ;
    CWorkload(s_pszFamily, "replace-character", lLength, 1.1)
        .On("Bedplate", ours, [](CString& str) { return str.Replace('x', 'y') + str.Replace('y', 'x'); })
        .On("std::replace", theirs,
            [](std::string& str)
            {
                std::replace(str.begin(), str.end(), 'x', 'y');
                std::replace(str.begin(), str.end(), 'y', 'x');
            });
    CWorkload(s_pszFamily, "remove", lLength, 1.1)
        .OnFresh("Bedplate", ours, [](CString& str) { return str.Remove('x'); })
        .OnFresh("std::erase", theirs, [](std::string& str) { return std::erase(str, 'x'); });
    CWorkload(s_pszFamily, "case", lLength, 1.1)
        .On("Bedplate", ours, [](CString& str) { str.MakeUpper(); })
        .On("toupper", theirs,
            [](std::string& str)
            {
                for (char& ch : str)
                    ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
            });
}

void TrimStd(std::string& strText)
{
    strText.erase(strText.find_last_not_of(" \t\n\v\f\r") + 1);
    strText.erase(0, strText.find_first_not_of(" \t\n\v\f\r"));
}

void Trim(long lLength)
{
    const std::string strText = "  \t" + RandomText(lLength) + " \n";
    CWorkload(s_pszFamily, "trim", lLength, 1.1)
        .OnFresh("Bedplate", Maker<CString>(strText), [](CString& str) { str.Trim(); })
        .OnFresh("std::string", Maker<std::string>(strText), TrimStd)
#ifdef BENCH_ABSL
        .OnFresh({"absl::Strip", s_dUnjudged}, Maker<std::string>(strText),
                 [](std::string& str) { absl::StripAsciiWhitespace(&str); })
#endif
        ;
}

// ---- Splitting ----------------------------------------------------------------------------------------------------

void SplitStd(const std::string& strLine, std::vector<std::string>& pieces)
{
    pieces.clear();
    size_t iFrom = 0;
    for (size_t i; (i = strLine.find(',', iFrom)) != std::string::npos; iFrom = i + 1)
        pieces.emplace_back(strLine, iFrom, i - iFrom);
    pieces.emplace_back(strLine, iFrom);
}

/// Into an array that is used again and again.
void Split(long lPieces)
{
    std::string strLine;
    for (const std::string& strPiece : bench::RandomTexts(lPieces))
        strLine += (strLine.empty() ? "" : ",") + strPiece;
    const auto vector = [] { return std::vector<std::string>(); };
    const CString strOurs(strLine.c_str());
    CWorkload(s_pszFamily, "split", lPieces, 1.5)
        .On(
            "Bedplate", [] { return CStrArray(); }, [=](CStrArray& pieces) { strOurs.Split(',', &pieces); })
        .On("std::string", vector, [=](std::vector<std::string>& pieces) { SplitStd(strLine, pieces); })
        .On(
            bench::MemoryAlone(), [=] { return bench::RandomTexts(lPieces); },
            [](std::vector<std::string>& pieces) { bench::RequestTexts(pieces); })
#ifdef BENCH_ABSL
        .On("absl::StrSplit", vector,
            [=](std::vector<std::string>& pieces) { pieces = absl::StrSplit(strLine, ','); })
#endif
#ifdef BENCH_BOOST
        .On("boost::split", vector,
            [=](std::vector<std::string>& pieces)
            { boost::split(pieces, strLine, [](char ch) { return ch == ','; }); })
#endif
#ifdef BENCH_GLIB
        .Run("g_strsplit",
             [=]
             {
                 char** ppszPieces = g_strsplit(strLine.c_str(), ",", 0);
                 benchmark::DoNotOptimize(ppszPieces);
                 g_strfreev(ppszPieces);
             })
#endif
#ifdef BENCH_QT
        .On("QByteArray", Maker<QByteArray>(strLine), [](QByteArray& str) { return str.split(','); })
#endif
        ;
}
} // namespace

int main(int iArguments, char** ppszArguments)
{
    for (const long lLength : {5, 30, 200, 1000})
    {
        Construct(lLength);
        Copy(lLength);
        Assign(lLength);
        Substring(lLength);
        Concatenate(lLength);
    }
    for (const long lPieces : {10, 100, 1000, 10000, 100000})
        Append(lPieces);
    for (const long lLength : {30, 1000, 100000})
    {
        Find(lLength);
        Compare(lLength);
        Edit(lLength);
        Trim(lLength);
    }
    ReadNumbers();
    for (const long lPieces : {10, 1000, 100000})
        Split(lPieces);
    return bench::Main(iArguments, ppszArguments);
}
