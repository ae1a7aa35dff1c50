// CString and CFormat against std::string. A model of a string has the operations of CString, written anew; each row of
// the table says once what is done to both.
#ifndef STRINGS_H
#define STRINGS_H

#include "engine.h"

constexpr char s_szWhite[] = " \t\n\v\f\r";

/// A text that a model is given.
struct CSaid : string
{
    CSaid(const char* psz) : string(psz != nullptr ? psz : "") {}
    CSaid(const CString& str) : string(str.ToStr()) {}
    CSaid(const string& str) : string(str) {}
    CSaid(char ch) : string(1, ch) {}
};

struct SStringModel
{
    string strBytes;
    int iCapacity;
    bool bBuffer  = true;  // if not, the capacity is what was asked for
    bool bNew     = true;  // whether the last operation took a new buffer,
    bool bGivesUp = false; // and is without one where it cannot be had

    SStringModel(const CSaid& said = "") : strBytes(said), iCapacity(Exact(said)) {}
    static int Exact(const string& strText) { return strText.empty() ? 8 : Length(strText) + 1; }

    int GetLength() const { return Length(strBytes); }
    const char* ToStr() const { return strBytes.c_str(); }
    std::size_t At(int i) const { return static_cast<std::size_t>(std::clamp(i, 0, GetLength())); }
    string Tail(int i) const { return ToStr() + At(i); }
    SStringModel Cut(std::size_t i, std::size_t n) const { return {strBytes.substr(i, n).c_str()}; }

    int Become(const string& strNew, int iNew, bool bMayGiveUp = false)
    {
        strBytes  = strNew;
        iCapacity = iNew;
        bBuffer   = true;
        bNew      = true;
        bGivesUp  = bMayGiveUp;
        return GetLength();
    }

    int Set(const CSaid& said)
    {
        const bool bKept = bBuffer && !said.empty() && Exact(said) <= iCapacity;
        Become(said, bKept ? iCapacity : Exact(said));
        bNew = bGivesUp = !bKept;
        return GetLength();
    }
    void Clear() { Set(nullptr); }

    char* GetBuffer(int n)
    {
        Become(string(static_cast<std::size_t>(n), '\0'), n + 1, true);
        return &strBytes[0];
    }

    void ReleaseBuffer(int n)
    {
        n = n == -1 ? Length(ToStr()) : n;
        if (n < 0 || n >= iCapacity || (!bBuffer && n > 0))
            throw CException("CString::ReleaseBuffer - out of index", 0);
        strBytes.resize(static_cast<std::size_t>(n));
    }

    static int ReplaceAll(string& strText, const string& strOld, const string& strNew)
    {
        string strAll;
        int iCount        = 0;
        std::size_t iFrom = 0;
        for (std::size_t i; !strOld.empty() && (i = strText.find(strOld, iFrom)) != string::npos; ++iCount)
        {
            strAll.append(strText, iFrom, i - iFrom) += strNew;
            iFrom = i + strOld.size();
        }
        strText = strAll.append(strText, iFrom);
        return iCount;
    }

    int Insert(int i, const CSaid& said)
    {
        strBytes.insert(At(i), said);
        const bool bFits = said.empty() || (bBuffer && GetLength() < iCapacity);
        return bFits ? GetLength() : Become(strBytes, Exact(strBytes));
    }
    int Delete(int i, int n) { return Length(strBytes.erase(At(i), std::size_t(std::max(n, 0)))); }
    int Remove(char ch) { return ReplaceAll(strBytes, {ch}, ""); }
    int Replace(char ch, char chNew) { return ch == chNew ? 0 : ReplaceAll(strBytes, {ch}, {chNew}); }
    int Replace(const CSaid& saidOld, const CSaid& saidNew)
    {
        string strText   = ToStr();
        const int iCount = ReplaceAll(strText, saidOld, saidNew);
        if (iCount > 0)
            Become(strText, Length(strText) + 1);
        return iCount;
    }

    void TrimLeft(const CSaid& saidSet = s_szWhite)
    {
        strBytes.erase(0, std::min(strlen(ToStr()), Tail(0).find_first_not_of(saidSet)));
    }
    void TrimRight(const CSaid& saidSet = s_szWhite)
    {
        const string strText   = ToStr();
        const std::size_t iEnd = strText.find_last_not_of(saidSet) + 1;
        strBytes               = iEnd < strText.size() ? strText.substr(0, iEnd) : strBytes;
    }
    void Trim(const CSaid& saidSet = s_szWhite)
    {
        TrimLeft(saidSet);
        TrimRight(saidSet);
    }

    /// Returns a text up to the first NUL that was printed, and the length with all behind it.
    static std::pair<string, int> Print(const char* pszFormat, const char* psz, char ch, int iWidth, int i)
    {
        static char s_szText[16384];
        const int iLength = snprintf(s_szText, sizeof s_szText, pszFormat, psz, ch, iWidth, i);
        return {s_szText, iLength};
    }
    int Format(const char* pszFormat, const char* psz, char ch, int iWidth, int i)
    {
        const auto [strText, iLength] = Print(pszFormat, psz, ch, iWidth, i);
        Become(strText, (iLength / 512 + 1) * 512 + 1, true);
        return iLength;
    }

    int AppendFormat(const char* pszFormat, const char* psz, char ch, int iWidth, int i)
    {
        const auto [strText, iLength] = Print(pszFormat, psz, ch, iWidth, i);
        ConcatInPlace(strText);
        return iLength;
    }
    SStringModel& operator+=(char ch) { return ConcatInPlace(string(1, ch).c_str()); }
    SStringModel operator+(char ch) const { return *this + string(1, ch).c_str(); }
    SStringModel& ConcatInPlace(const CSaid& said)
    {
        return *this = said.empty() ? *this : SStringModel(strBytes + said);
    }
    SStringModel operator+(const CSaid& said) const { return {ToStr() + said}; }

    SStringModel Left(int n) const { return Cut(0, At(n)); }
    SStringModel Right(int n) const { return Cut(strBytes.size() - At(n), string::npos); }
    SStringModel Mid(int i, int n) const { return Cut(At(i), static_cast<std::size_t>(n < -1 ? 0 : n)); }
    SStringModel Quoted(char chSep) const
    {
        string strText = Tail(0);
        if (strText.find_first_of(string("\"\r\n") + chSep) == string::npos)
            return {strText};
        for (std::size_t i = 0; (i = strText.find('"', i)) != string::npos; i += 2)
            strText.insert(i, 1, '"');
        return {'"' + strText + '"'};
    }
    SStringModel Repr() const { return {"<CStr: " + (strBytes.empty() ? "unset" : Tail(0)) + ">"}; }

    char operator[](int i) const
    {
        const bool bThere = i >= 0 && i < GetLength();
        return bThere ? ToStr()[i] : throw CException("CString::operator[] - index overflow", 0);
    }

    static int Found(std::size_t i, int iFrom)
    {
        return i == string::npos ? -1 : static_cast<int>(i) + iFrom;
    }
    int Find(const CSaid& said, int iFrom) const
    {
        const int i = std::max(iFrom, 0);
        return !said.empty() && i < GetLength() ? Found((Tail(i) + '\0').find(said), i) : -1;
    }
    int ReverseFind(char ch) const { return Found((Tail(0) + '\0').rfind(ch), 0); }
    int FindOneOf(const CSaid& said) const { return Found(Tail(0).find_first_of(said), 0); }
    bool StartsWith(const CSaid& said) const { return strBytes.compare(0, said.size(), said) == 0; }
    bool EndsWith(const CSaid& said) const { return Right(Length(said)).strBytes == said; }

    int Compare(const CSaid& said) const { return Tail(0).compare(said); }
    int CompareNoCase(const CSaid& said) const { return strcasecmp(ToStr(), said.c_str()); }
};

/// What an operation is called with. The texts may be those of the string itself: the model reads them first.
struct SStringArguments
{
    const char *psz, *pszOrNull, *pszFormat;
    const CString& str;
    CString& strMoved;
    char ch, chNew;
    int i, n, iWidth = n % 1500;
};

inline SStringModel operator+(const char* psz, const SStringModel& str) { return {CSaid(psz) + str.ToStr()}; }
inline int Sign(int i) { return (i > 0) - (i < 0); }

/// Returns the pieces with a bar behind each.
inline SStringModel Split(const SStringModel& str, const CSaid& sep, bool bTrim, bool bKeepEmptyLast)
{
    const string strText = str.ToStr();
    string strAll;
    for (std::size_t iFrom = 0, i = 0; i != string::npos; iFrom = i + sep.size())
    {
        i = sep.empty() ? string::npos : strText.find(sep, iFrom);
        SStringModel piece(strText.substr(iFrom, i - iFrom));
        piece.Trim(bTrim ? s_szWhite : "");
        if (i != string::npos || bKeepEmptyLast || piece.GetLength() > 0)
            strAll += piece.strBytes + "|";
    }
    return {strAll};
}
template <class TSep>
CString Split(const CString& str, TSep sep, bool bTrim, bool)
{
    CStrArray arr;
    str.Split(sep, &arr, bTrim);
    arr.Add("");
    return arr.Join("|");
}

/// Returns the values of a line with a bar behind each, and whether it is sound.
inline SStringModel SplitQuoted(const SStringModel& str, char chSep)
{
    string strText = str.ToStr(), strAll, strValue;
    for (char ch : {'\n', '\r'})
        strText.erase(strText.size() - (!strText.empty() && strText.back() == ch ? 1 : 0));
    bool bSound  = true;
    char chState = 'S'; // at the start of a value, plain, in quotes, behind a quote in them
    for (char ch : strText)
    {
        const bool bQuote = ch == '"' && chState != 'P';
        const bool bEnds  = ch == chSep && chState != 'Q';
        if (bEnds)
            strAll += std::exchange(strValue, "") + "|";
        else if (!bQuote || chState == 'B')
            strValue += ch;
        bSound  = bSound && (bEnds || bQuote || (ch != '"' && chState != 'B'));
        chState = bEnds ? 'S' : bQuote ? (chState == 'Q' ? 'B' : 'Q') : chState == 'Q' ? 'Q' : 'P';
    }
    return {strAll + strValue + "|" + (bSound && chState != 'Q' ? "sound" : "not")};
}
inline CString SplitQuoted(const CString& str, char chSep)
{
    CStrArray arr, arrAgain;
    const bool bSound = str.SplitQuoted(chSep, &arr);
    arr.JoinQuoted(chSep).SplitQuoted(chSep, &arrAgain);
    Same("read again", true, arr.Join("|") == arrAgain.Join("|"));
    arr.Add(bSound ? "sound" : "not");
    return arr.Join("|");
}

/// Returns what CFormat makes: a text whose capacity is never less than an empty one's.
inline SStringModel Printed(const SStringModel&, const SStringArguments& a)
{
    SStringModel str(SStringModel::Print(a.pszFormat, a.pszOrNull, a.ch, a.iWidth, a.i).first);
    str.iCapacity = std::max(str.iCapacity, 8);
    return str;
}
inline CString Printed(const CString&, const SStringArguments& a)
{
    return CFormat(a.pszFormat, a.pszOrNull, a.ch, a.iWidth, a.i);
}

/// A string is moved as it is copied.
inline int Move(SStringModel& str, CString& strMoved) { return str.Set(strMoved); }
inline int Move(CString& str, CString& strMoved) { return (str = std::move(strMoved)).GetLength(); }

/// Asks for a buffer, sees that it is zero, and writes into it. Also for streams, which may have none.
template <class TBuffer>
int Refill(TBuffer& buffer, int iAsked, char ch, int iLength)
{
    char* pszNew    = buffer.GetBuffer(iAsked);
    const int iRoom = std::max(iAsked, 0);
    if (pszNew == nullptr)
        return -1;
    const auto iZeros = std::count(pszNew, pszNew + iRoom, '\0');
    memset(pszNew, ch, static_cast<std::size_t>(iRoom));
    buffer.ReleaseBuffer(iLength);
    return static_cast<int>(iZeros);
}

class CStrings
{
public:
    static constexpr char s_szName[] = "strings";
    static constexpr int s_iStates   = 5; // fresh, with room, full, without a buffer, long
    static const SOperation<CStrings> s_aOperations[48];

    void Prepare(int iState, CChoices& choices)
    {
        string strText = choices.Text(30) + "ab";
        if (iState == 4)
            strText.resize(static_cast<std::size_t>(choices.LengthAtAnEdge()), 'a');
        if (iState == 3)
        {
            CFault(1).Run([&] { m_str.Clear(); });
            m_model.bBuffer = false;
        }
        else if (iState > 0)
            Both([&](auto& s) { s.Set(strText.c_str()); });
        if (iState == 1)
            Both([](auto& s) { s.Delete(1, 9); });
    }

    void Check() { Compare(m_model, m_str); }

private:
    /// Does the same to a string and to its model. Without its memory the string is what the model says.
    template <class TForm>
    static auto Do(TForm Form)
    {
        return [Call = WithResult(Form)](CStrings& f, CChoices& choices, CFault& fault)
        {
            const SStringArguments a = f.Draw(choices, fault.GetNth() < 4);
            SStringModel after       = f.m_model;
            const char* pszBefore    = f.m_str.ToStr();
            after.bNew = after.bGivesUp = false;
            decltype(Call(after, a)) expected{};
            constexpr bool bMakes  = std::is_class_v<decltype(expected)>; // a string, which needs memory
            const string strThrows = CFault().Run([&] { expected = Call(after, a); });
            const string strThrown = fault.Run([&] { Compare(expected, Call(f.m_str, a)); });
            if (!strThrows.empty())
                return Same("thrown", strThrows, strThrown);
            const bool bFailed = Failed(fault, strThrown, after.bNew || bMakes ? s_strWays : "");
            if (bFailed)
            {
                after.strBytes.clear();
                after.bBuffer = false;
            }
            const bool bChanged = !bFailed || after.bGivesUp;
            Same("buffer kept", true, (bChanged && after.bNew) || pszBefore == f.m_str.ToStr());
            if (bChanged)
                f.m_model = after;
        };
    }

    template <class TCall>
    void Both(TCall Call)
    {
        Call(m_str);
        Call(m_model);
    }

    static void Compare(double dExpected, double dFound) { Same("result", dExpected, dFound); }
    static void Compare(const SStringModel& model, const CString& str)
    {
        const std::string_view svBytes(model.ToStr(), model.strBytes.size() + 1);
        Same("length", model.GetLength(), str.GetLength());
        Same("bytes and NUL", svBytes, std::string_view(str.ToStr(), svBytes.size()));
        Same("capacity", model.iCapacity, str.GetBufferSize());
    }

    SStringArguments Draw(CChoices& choices, bool bMayBeLong)
    {
        const int iKind = choices.Byte();
        if (m_model.GetLength() > (iKind % 16 == 0 ? 300 : 9000)) // keeps the texts small
            Both([](auto& s) { s.Clear(); });
        string strText = choices.Text(iKind % 4 == 0 ? 20 : 2);
        if (bMayBeLong && choices.Byte() % 4 == 0) // and much alike
        {
            const std::size_t iLength = static_cast<std::size_t>(choices.LengthAtAnEdge());
            while (strText.size() < iLength)
                strText += strText + "b";
            strText.resize(iLength);
        }
        std::replace(strText.begin(), strText.end(), '%', '"');
        m_strOther = strText.c_str();
        m_strMoved = m_strOther + "moved";
        m_strMoved.Delete(choices.Byte() % 9, iKind % 3 * 9); // some have room, and some no text
        const CString& str    = iKind < 100 ? m_str : m_strOther;
        const char* pszOther  = AtTheEnd(strText);
        const char* psz       = iKind < 100 ? m_str.ToStr() : pszOther;
        const int iSkipped    = iKind % 8 == 2 ? 0 : choices.Between(0, str.GetLength());
        const char* pszOrNull = iKind % 16 == 1 ? nullptr : iKind % 2 == 0 ? psz + iSkipped : pszOther;
        const char* pszFormat = choices.Byte() % 4 == 0 ? "%s%c%+*d" : "%s%c%*d"; // '+' is the C library's
        const auto Char       = [&] { return "ab ,A\xe4"[choices.Byte() % 7]; };
        const auto Int        = [&]
        { return choices.Byte() % 8 > 0 ? choices.Between(-2, m_model.GetLength() + 2) : choices.AnyInt(); };
        return {psz + iSkipped, pszOrNull, pszFormat, str, m_strMoved, Char(), Char(), Int(), Int()};
    }

    CString m_str, m_strOther, m_strMoved;
    SStringModel m_model;
};

inline const SOperation<CStrings> CStrings::s_aOperations[] = {
    {"Set", Do([](auto& s, auto& a) { return s.Set(a.pszOrNull); })},
    {"Clear", Do([](auto& s, auto&) { s.Clear(); })},
    {"GetBuffer", Do([](auto& s, auto& a)
                     { return Refill(s, 15 + (a.i & 4095), a.ch, std::clamp(a.n, -1, 15 + (a.i & 4095))); })},
    {"ReleaseBuffer", Do([](auto& s, auto& a) { s.ReleaseBuffer(std::min(a.i, s.GetLength() + 1)); })},
    {"Insert char", Do([](auto& s, auto& a) { return s.Insert(a.i, a.ch); })},
    {"Insert", Do([](auto& s, auto& a) { return s.Insert(a.i, a.pszOrNull); })},
    {"Delete", Do([](auto& s, auto& a) { return s.Delete(a.i, a.n); })},
    {"Remove", Do([](auto& s, auto& a) { return s.Remove(a.ch); })},
    {"Replace char", Do([](auto& s, auto& a) { return s.Replace(a.ch, a.chNew); })},
    {"Replace", Do([](auto& s, auto& a) { return s.Replace(a.psz, a.pszOrNull); })},
    {"TrimLeft", Do([](auto& s, auto&) { s.TrimLeft(); })},
    {"TrimLeft char", Do([](auto& s, auto& a) { s.TrimLeft(a.ch); })},
    {"TrimLeft set", Do([](auto& s, auto& a) { s.TrimLeft(a.pszOrNull); })},
    {"TrimRight", Do([](auto& s, auto&) { s.TrimRight(); })},
    {"TrimRight char", Do([](auto& s, auto& a) { s.TrimRight(a.ch); })},
    {"TrimRight set", Do([](auto& s, auto& a) { s.TrimRight(a.pszOrNull); })},
    {"Trim", Do([](auto& s, auto&) { s.Trim(); })},
    {"Trim char", Do([](auto& s, auto& a) { s.Trim(a.ch); })},
    {"Trim set", Do([](auto& s, auto& a) { s.Trim(a.pszOrNull); })},
    {"Format", Do([](auto& s, auto& a) { return s.Format(a.pszFormat, a.pszOrNull, a.ch, a.iWidth, a.i); })},
    {"CFormat", Do([](auto& s, auto& a) { return Printed(s, a); })},
    {"ConcatInPlace", Do([](auto& s, auto& a) { s.ConcatInPlace(a.pszOrNull); })},
    {"AppendFormat",
     Do([](auto& s, auto& a)
        { return s.AppendFormat(a.pszFormat, a.psz, a.ch, a.ch != 0 ? a.iWidth : a.n % 9, a.i); })},
    {"+= char", Do([](auto& s, auto& a) { return (s += a.ch).GetLength(); })},
    {"move", Do([](auto& s, auto& a) { return Move(s, a.strMoved); })},
    {"[]", Do([](auto& s, auto& a) { return s[a.i]; })},
    {"Compare", Do([](auto& s, auto& a) { return Sign(s.Compare(a.psz)); })},
    {"CompareNoCase", Do([](auto& s, auto& a) { return Sign(s.CompareNoCase(a.psz)); })},
    {"StartsWith", Do([](auto& s, auto& a) { return s.StartsWith(a.psz); })},
    {"EndsWith", Do([](auto& s, auto& a) { return s.EndsWith(a.psz); })},
    {"Find char", Do([](auto& s, auto& a) { return s.Find(a.ch, a.i); })},
    {"Find", Do([](auto& s, auto& a) { return s.Find(a.psz, a.i); })},
    {"ReverseFind", Do([](auto& s, auto& a) { return s.ReverseFind(a.ch); })},
    {"FindOneOf", Do([](auto& s, auto& a) { return s.FindOneOf(a.psz); })},
    {"construct", Do([](auto& s, auto& a) { return std::decay_t<decltype(s)>(a.pszOrNull); })},
    {"copy", Do([](auto& s, auto& a) { return std::decay_t<decltype(s)>(a.str); })},
    {"Left", Do([](auto& s, auto& a) { return s.Left(a.i); })},
    {"Right", Do([](auto& s, auto& a) { return s.Right(a.i); })},
    {"Mid", Do([](auto& s, auto& a) { return s.Mid(a.i, a.n); })},
    {"Repr", Do([](auto& s, auto&) { return s.Repr(); })},
    {"+", Do([](auto& s, auto& a) { return s + a.pszOrNull; })},
    {"+ char", Do([](auto& s, auto& a) { return s + a.ch; })},
    {"text +", Do([](auto& s, auto& a) { return a.pszOrNull + s; })},
    {"Split", Do([](auto& s, auto& a) { return Split(s, a.psz, a.n > 0, a.n <= 0); })},
    {"Quoted", Do([](auto& s, auto& a) { return s.Quoted(a.ch); })},
    {"SplitQuoted", Do([](auto& s, auto& a) { return SplitQuoted(s, a.ch); })},
    {"SplitQuoted line", Do([](auto& s, auto& a) { return SplitQuoted(s + a.psz + a.chNew + a.psz, ','); })},
    {"Split char", Do([](auto& s, auto& a) { return Split(s, a.ch, a.n > 0, false); })},
};

#endif
