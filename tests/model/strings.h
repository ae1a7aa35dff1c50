// CString and CFormat against std::string. A model of a string has the operations of CString, written anew; each row of
// the table says once what is done to both.
#ifndef STRINGS_H
#define STRINGS_H

#include "engine.h"

#include <algorithm>
#include <cstring>
#include <utility>

inline int Length(const string& strText) { return static_cast<int>(strText.size()); }

/// A size that is small or cannot be had; those in between take time.
inline int AnySize(CChoices& choices)
{
    const int i = choices.AnyInt();
    return i > 65536 && i <= static_cast<int>(s_iTooLarge) ? i % 65536 : i;
}

/// A text that a model is given.
struct CSaid : string
{
    CSaid(const char* psz = nullptr) : string(psz != nullptr ? psz : ""), bNull(psz == nullptr) {}
    bool bNull;
};

/// What memory an operation needs, and what a string becomes without it: what it was, or a string without buffer.
enum EMemory
{
    E_None,
    E_Keeps,
    E_GivesUp,
    E_Prints // as E_Keeps, for CFormat
};

struct SStringModel
{
    string strBytes;
    int iCapacity   = 8; // without a buffer, what was asked for
    EMemory eMemory = E_None;
    bool bBuffer    = true;

    static SStringModel New(const string& strNew)
    {
        return {strNew, strNew.empty() ? 8 : Length(strNew) + 1, E_Keeps};
    }
    static SStringModel Cut(const string& strNew) { return New(strNew.c_str()); }

    int GetLength() const { return Length(strBytes); }
    int GetBufferSize() const { return iCapacity; }
    const char* ToStr() const { return strBytes.c_str(); }
    std::size_t At(int i) const { return static_cast<std::size_t>(std::clamp(i, 0, GetLength())); }
    string Tail(int i) const { return ToStr() + At(i); }
    int Become(const SStringModel& after) { return (*this = after).GetLength(); }

    int Set(const CSaid& said)
    {
        const int iNew   = New(said).iCapacity;
        const bool bKept = bBuffer && !said.empty() && iNew <= iCapacity;
        return Become({said, bKept ? iCapacity : iNew, bKept ? E_None : E_GivesUp});
    }
    SStringModel& operator=(const CSaid& said) { return Set(said), *this; }
    void MakeEmptyString() { Set(nullptr); }
    void Empty() { Set(nullptr); }
    void Clear() { Set(nullptr); }

    char* GetBuffer(int n)
    {
        const bool bWraps = n == INT_MAX;
        Become({string(40, '\0'), std::max(n, 0) + !bWraps, bWraps ? E_Keeps : E_GivesUp});
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
        int iCount = 0;
        for (std::size_t i = 0; !strOld.empty() && (i = strText.find(strOld, i)) != string::npos; ++iCount)
            strText.replace(i, strOld.size(), strNew), i += strNew.size();
        return iCount;
    }

    int InsertBytes(int i, const string& strNew)
    {
        strBytes.insert(At(i), strNew);
        const bool bFits = strNew.empty() || (bBuffer && GetLength() < iCapacity);
        return bFits ? GetLength() : Become(New(strBytes));
    }
    int Insert(int i, char ch) { return InsertBytes(i, string(1, ch)); }
    int Insert(int i, const CSaid& said) { return InsertBytes(i, said); }
    int Delete(int i, int n)
    {
        return Length(strBytes.erase(At(i), static_cast<std::size_t>(std::max(n, 0))));
    }
    int Remove(char ch) { return ReplaceAll(strBytes, string(1, ch), ""); }
    int Replace(char ch, char chNew) { return ch == chNew ? 0 : ReplaceAll(strBytes, {ch}, {chNew}); }

    int Replace(const CSaid& saidOld, const CSaid& saidNew)
    {
        string strText   = ToStr();
        const int iCount = ReplaceAll(strText, saidOld, saidNew);
        if (iCount > 0)
            Become({strText, Length(strText) + 1, E_Keeps});
        return iCount;
    }

    /// Removes what strSet holds at the start (1), the end (2) or both (3).
    void TrimEnds(int iEnds, const string& strSet)
    {
        const std::size_t iText = strlen(ToStr());
        std::size_t iBegin = 0, iEnd = iText;
        while ((iEnds & 1) != 0 && iBegin < iEnd && strSet.find(strBytes[iBegin]) != string::npos)
            ++iBegin;
        while ((iEnds & 2) != 0 && iBegin < iEnd && strSet.find(strBytes[iEnd - 1]) != string::npos)
            --iEnd;
        strBytes = strBytes.substr(iBegin, iEnd < iText ? iEnd - iBegin : string::npos);
    }
    void TrimLeft(const CSaid& saidSet = " \t\n\v\f\r") { TrimEnds(1, saidSet); }
    void TrimLeft(char ch) { TrimEnds(1, {ch}); }
    void TrimRight(const CSaid& saidSet = " \t\n\v\f\r") { TrimEnds(2, saidSet); }
    void TrimRight(char ch) { TrimEnds(2, {ch}); }
    void Trim(const CSaid& saidSet = " \t\n\v\f\r") { TrimEnds(3, saidSet); }
    void Trim(char ch) { TrimEnds(3, {ch}); }

    void ShiftCase(char chFirst)
    {
        for (char& ch : strBytes)
            ch = static_cast<char>(ch >= chFirst && ch < chFirst + 26 ? ch ^ 0x20 : ch);
    }
    void MakeUpper() { ShiftCase('a'); }
    void MakeLower() { ShiftCase('A'); }

    /// Knows the format "%s%c%*d".
    int Format(const char*, const char* psz, char ch, int iWidth, int iValue)
    {
        const string strNumber = std::to_string(iValue);
        const string strPad(static_cast<std::size_t>(std::max(abs(iWidth) - Length(strNumber), 0)), ' ');
        const string strPadded = iWidth < 0 ? strNumber + strPad : strPad + strNumber;
        const string strAll    = (psz != nullptr ? psz : "(null)") + (ch + strPadded);
        Become({strAll.c_str(), (Length(strAll) / 512 + 1) * 512 + 1, E_GivesUp});
        return Length(strAll);
    }

    void ConcatInPlace(const CSaid& said) { Become(said.empty() ? *this : New(strBytes + said)); }
    SStringModel& operator+=(const CSaid& said) { return ConcatInPlace(said), *this; }
    SStringModel operator+(const CSaid& said) const { return New(ToStr() + said); }

    SStringModel Left(int n) const { return Cut(strBytes.substr(0, At(n))); }
    SStringModel Right(int n) const { return Cut(strBytes.substr(strBytes.size() - At(n))); }
    SStringModel Mid(int i, int n) const
    {
        return Cut(strBytes.substr(At(i), static_cast<std::size_t>(n < -1 ? 0 : n)));
    }
    SStringModel Repr() const { return Cut("<CStr: " + (strBytes.empty() ? "unset" : Tail(0)) + ">"); }

    char operator[](int i) const
    {
        if (i < 0 || i >= GetLength())
            throw CException("CString::operator[] - index overflow", 0);
        return ToStr()[i];
    }

    static int Found(std::size_t i, int iFrom = 0)
    {
        return i == string::npos ? -1 : static_cast<int>(i) + std::max(iFrom, 0);
    }
    int Find(char ch, int i) const
    {
        return std::max(i, 0) < GetLength() ? Found((Tail(i) + '\0').find(ch), i) : -1;
    }
    int Find(const CSaid& said, int i) const
    {
        return !said.empty() && i <= GetLength() ? Found(Tail(i).find(said), i) : -1;
    }
    int ReverseFind(char ch) const { return Found((Tail(0) + '\0').rfind(ch)); }
    int FindOneOf(const CSaid& said) const { return Found(Tail(0).find_first_of(said)); }
    bool StartsWith(const CSaid& said) const
    {
        return !said.bNull && strBytes.compare(0, said.size(), said) == 0;
    }
    bool EndsWith(const CSaid& said) const
    {
        const std::size_t iEnd = strBytes.size() - std::min(strBytes.size(), said.size());
        return !said.bNull && strBytes.compare(iEnd, string::npos, said) == 0;
    }

    int Compare(const CSaid& said, const char* pszWhat = "Compare") const
    {
        if (said.bNull)
            throw CException(("CString::" + string(pszWhat) + " - invalid string").c_str(), 0);
        return Tail(0).compare(said);
    }
    int CompareNoCase(CSaid said) const
    {
        SStringModel left(*this), right{said};
        left.MakeLower(), right.MakeLower();
        said.assign(right.strBytes);
        return left.Compare(said, "CompareNoCase");
    }

    int ToInt() const { return static_cast<int>(std::clamp<long long>(atoll(ToStr()), INT_MIN, INT_MAX)); }
    double ToDbl() const { return strtod(ToStr(), nullptr); }

    /// Returns the pieces with a bar behind each.
    string Split(const string& strSep, bool bTrim, bool bKeepEmptyLast) const
    {
        string strAll;
        for (std::size_t iFrom = 0, i = 0; i != string::npos; iFrom = i + strSep.size())
        {
            i = strSep.empty() ? string::npos : Tail(0).find(strSep, iFrom);
            SStringModel piece{Tail(0).substr(iFrom, i - iFrom)};
            if (bTrim)
                piece.Trim();
            if (i != string::npos || bKeepEmptyLast || piece.GetLength() > 0)
                strAll += piece.strBytes + "|";
        }
        return strAll;
    }
};

inline SStringModel operator+(const char* psz, const SStringModel& str)
{
    return SStringModel::New(CSaid(psz) + str.ToStr());
}

inline CString New(const CString&) { return {}; }
inline CString New(const CString&, const char* psz) { return {psz}; }
inline CString Copy(const CString& str) { return {str}; }
inline SStringModel New(const SStringModel&, const CSaid& said = nullptr) { return SStringModel::New(said); }
inline SStringModel Copy(const SStringModel& str) { return SStringModel::Cut(str.strBytes); }

/// Returns what the six operators say, a bit each.
template <class TLeft, class TRight>
int Operators(const TLeft& l, const TRight& r)
{
    return (l == r) + 2 * (l != r) + 4 * (l < r) + 8 * (l <= r) + 16 * (l > r) + 32 * (l >= r);
}
template <class TRight>
int Operators(const SStringModel& l, const TRight& r)
{
    return Operators(l.Compare(r), 0);
}
inline int Operators(const char* l, const SStringModel& r) { return Operators(0, r.Compare(l)); }

/// What an operation is called with. The texts may be those of the string itself; to the model they are copies.
template <class TOther>
struct SStringArguments
{
    const char *psz, *pszNew;
    const TOther* pOther;
    char ch, chNew;
    int i, n;
};
using CArguments = SStringArguments<CString>;
using CCopies    = SStringArguments<CSaid>;

inline CString Print(const CArguments& a) { return CFormat("%s%c%*d", a.psz, a.ch, a.n % 600, a.i); }
inline SStringModel Print(const CCopies& a)
{
    SStringModel text;
    text.Format("", a.psz, a.ch, a.n % 600, a.i);
    return {text.strBytes, std::max(text.GetLength() + 1, 8), E_Prints};
}

/// Sets a length, but not beyond the text, where the buffer has no documented bytes.
template <class TString>
int Release(TString& str, int i)
{
    return str.ReleaseBuffer(i > str.GetLength() ? str.GetBufferSize() : i), 0;
}

/// Asks for a buffer, sees that it is zero, and writes into it.
template <class TString, class TArguments>
int Refill(TString& str, const TArguments& a)
{
    const int iRoom   = std::clamp(a.i, 0, 40);
    char* pszNew      = str.GetBuffer(a.i);
    const auto iZeros = std::count(pszNew, pszNew + iRoom, '\0');
    memset(pszNew, a.ch, static_cast<std::size_t>(iRoom));
    str.ReleaseBuffer(std::clamp(a.n, -1, iRoom));
    return static_cast<int>(iZeros);
}

class CStrings
{
public:
    static constexpr char s_szName[] = "strings";
    static constexpr int s_iStates   = 4; // fresh, with room, full, without a buffer
    struct SRow
    {
        const char* szName;
        std::function<void(CStrings&, CChoices&, CFault&)> Do;
    };
    static const SRow s_aOperations[60];

    void Prepare(int iState, CChoices& choices)
    {
        const string strText = choices.Text(30) + "ab";
        const int iSize      = iState == 3 ? 1 << 30 : Length(strText) + (iState == 1 ? 20 : 0);
        if (iState == 0)
            return;
        CFault().Run(
            [&]
            { strText.copy(m_str.GetBuffer(iSize), strText.size()), m_str.ReleaseBuffer(Length(strText)); });
        m_model = {iState == 3 ? "" : strText, iSize + 1, E_None, iState != 3};
    }

    void Check() { Compare(m_model, m_str); }

private:
    /// Does the same to a string and to its model. Without its memory the string is what the model says.
    template <class TForm>
    static auto Edit(TForm Form)
    {
        return [=](CStrings& f, CChoices& choices, CFault& fault)
        {
            f.Draw(choices);
            SStringModel after    = f.m_model;
            after.eMemory         = E_None;
            const char* pszBefore = f.m_str.ToStr();
            double dExpected = 0, dFound = 0;
            const string strThrows = CFault().Run([&] { dExpected = Form(after, f.m_copies); });
            if (after.GetLength() > 2000) // keeps the texts small
                return f.m_str.Clear(), f.m_model.Clear();
            const bool bDone = Done(fault, after, strThrows, [&] { dFound = Form(f.m_str, f.m_args); });
            if (bDone)
                Same("result", dExpected, dFound), f.m_model = after;
            else if (after.eMemory == E_GivesUp)
                f.m_model = {"", after.iCapacity, E_None, false};
            if (after.eMemory == (bDone ? E_None : E_Keeps))
                Same("buffer kept", true, pszBefore == f.m_str.ToStr());
        };
    }

    /// Makes a new string and its model.
    template <class TForm>
    static auto Make(TForm Form)
    {
        return [=](CStrings& f, CChoices& choices, CFault& fault)
        {
            f.Draw(choices);
            const SStringModel expected = Form(f.m_model, f.m_copies);
            alignas(CString) char aPlace[sizeof(CString)];
            CString* pMade = nullptr;
            if (!Done(fault, expected, "", [&] { pMade = new (aPlace) CString(Form(f.m_str, f.m_args)); }))
                return;
            Compare(expected, *pMade);
            pMade->~CString();
        };
    }

    /// Splits the string, or its copy in the very array that takes the pieces.
    void DoSplit(CChoices& choices, CFault& fault)
    {
        Draw(choices);
        const bool bChar = m_args.i % 2 == 0, bTrim = m_args.n % 2 == 0;
        const string strSep = bChar ? string(1, m_args.ch).c_str() : CSaid(m_copies.psz);
        CStrArray arr;
        arr.Add(m_model.ToStr()), arr.Add(strSep.c_str());
        const CString& str     = m_args.chNew < 'b' ? arr[0] : m_str;
        const char* pszSep     = m_args.chNew < 'a' ? m_args.psz : arr.GetAt(1);
        const string strThrown = WithoutLine(
            fault.Run([&] { bChar ? str.Split(m_args.ch, &arr, bTrim) : str.Split(pszSep, &arr, bTrim); }));
        string strFound;
        for (int i = 0; i < arr.GetSize(); ++i)
            strFound += string(arr.GetAt(i)) + "|";
        const string strPieces = m_model.Split(strSep, bTrim, !bChar && !bTrim);
        if (!fault.WasHit())
            return Same("thrown", "", strThrown), Same("pieces", strPieces, strFound);
        const bool bText = strThrown == Failure("char[m_iBufferSize]");
        if (strThrown == Failure("char[m_iSize+1]") ||
            (bText && (strFound == "||" || strFound == "|" + strSep + "|")))
            return Same("pieces after the failure", true,
                        bText || strFound.empty()); // no copy; a failed Clear
        if (bText && strPieces.compare(0, strFound.size(), strFound) != 0)
            strFound.pop_back(); // the element that could not be set
        Same("pieces before the failure", strPieces.substr(0, strFound.size()), strFound);
        Same("thrown", true,
             bText || strThrown.find("at str_array.cpp( lines), (new CString") != string::npos);
    }

    void DoOther(CChoices& choices, CFault&) { m_strOther = choices.Text(20).c_str(); }

    static void Compare(const SStringModel& model, const CString& str)
    {
        Same("length", model.GetLength(), str.GetLength());
        Same("bytes and NUL", model.strBytes + '\0', string(str.ToStr(), model.strBytes.size() + 1));
        Same("capacity", model.iCapacity, str.GetBufferSize());
        Same("size and emptiness", true,
             str.GetSize() == str.GetLength() && str.IsEmpty() == model.strBytes.empty());
    }

    void Draw(CChoices& choices)
    {
        const int iKind       = choices.Byte() % 8;
        const bool bOwn       = iKind % 2 == 1 && m_model.GetLength() <= 600;
        const CString& strOwn = bOwn ? m_str : m_strOther;
        m_strOwn              = bOwn ? m_model.strBytes : m_strOther.ToStr();
        m_said                = m_strOwn.c_str();
        m_strText             = choices.Text(iKind < 6 ? 20 : 2);
        const int iFrom       = choices.Between(0, Length(m_strOwn));
        m_args                = {iKind < 7 ? m_strText.c_str() : nullptr,
                  nullptr,
                  &strOwn,
                  Char(choices),
                  Char(choices),
                  Int(choices),
                  Int(choices)};
        m_copies = {m_args.psz, nullptr, &m_said, m_args.ch, m_args.chNew, m_args.i, m_args.n};
        if (iKind < 4)
            m_args.psz = strOwn.ToStr() + iFrom, m_copies.psz = m_strOwn.c_str() + iFrom;
        if (iKind != 5)
            m_args.pszNew = strOwn.ToStr(), m_copies.pszNew = m_said.c_str();
    }

    static char Char(CChoices& choices) { return "ab ,A\xe4"[choices.Byte() % 7]; }

    int Int(CChoices& choices) const
    {
        return choices.Byte() % 8 > 0 ? choices.Between(-2, m_model.GetLength() + 2) : AnySize(choices);
    }

    /// Returns whether a call did what it is for, which may be to throw. If not, it must have failed as documented.
    template <class TCall>
    static bool Done(CFault& fault, const SStringModel& after, const string& strThrows, TCall Call)
    {
        const string strThrown = WithoutLine(fault.Run(Call));
        if (!fault.WasHit() && (after.eMemory == E_None || after.iCapacity <= static_cast<int>(s_iTooLarge)))
            return Same("thrown", strThrows, strThrown), true;
        Same("thrown", Failure(after.eMemory == E_Prints ? "char[iLen]" : "char[m_iBufferSize]"), strThrown);
        Same("needs memory", true, after.eMemory != E_None);
        return false;
    }

    static string Failure(const string& strExpression)
    {
        return "-11 at cstring.cpp( lines), (new " + strExpression + ") failed(std::bad_alloc)";
    }

    CString m_str, m_strOther;
    SStringModel m_model;
    CArguments m_args{};
    CCopies m_copies{};
    string m_strText, m_strOwn;
    CSaid m_said;
};

inline const CStrings::SRow CStrings::s_aOperations[] = {
    {"Set", Edit([](auto& s, auto& a) { return s.Set(a.psz); })},
    {"Set string", Edit([](auto& s, auto& a) { return s.Set(*a.pOther); })},
    {"=", Edit([](auto& s, auto& a) { return &(s = a.psz) == &s; })},
    {"= string", Edit([](auto& s, auto& a) { return &(s = *a.pOther) == &s; })},
    {"MakeEmptyString", Edit([](auto& s, auto&) { return s.MakeEmptyString(), 0; })},
    {"Empty", Edit([](auto& s, auto&) { return s.Empty(), 0; })},
    {"Clear", Edit([](auto& s, auto&) { return s.Clear(), 0; })},
    {"GetBuffer", Edit([](auto& s, auto& a) { return Refill(s, a); })},
    {"ReleaseBuffer", Edit([](auto& s, auto& a) { return Release(s, a.i); })},
    {"Insert char", Edit([](auto& s, auto& a) { return s.Insert(a.i, a.ch); })},
    {"Insert", Edit([](auto& s, auto& a) { return s.Insert(a.i, a.psz); })},
    {"Delete", Edit([](auto& s, auto& a) { return s.Delete(a.i, a.n); })},
    {"Remove", Edit([](auto& s, auto& a) { return s.Remove(a.ch); })},
    {"Replace char", Edit([](auto& s, auto& a) { return s.Replace(a.ch, a.chNew); })},
    {"Replace", Edit([](auto& s, auto& a) { return s.Replace(a.psz, a.pszNew); })},
    {"TrimLeft", Edit([](auto& s, auto&) { return s.TrimLeft(), 0; })},
    {"TrimLeft char", Edit([](auto& s, auto& a) { return s.TrimLeft(a.ch), 0; })},
    {"TrimLeft set", Edit([](auto& s, auto& a) { return s.TrimLeft(a.psz), 0; })},
    {"TrimRight", Edit([](auto& s, auto&) { return s.TrimRight(), 0; })},
    {"TrimRight char", Edit([](auto& s, auto& a) { return s.TrimRight(a.ch), 0; })},
    {"TrimRight set", Edit([](auto& s, auto& a) { return s.TrimRight(a.psz), 0; })},
    {"Trim", Edit([](auto& s, auto&) { return s.Trim(), 0; })},
    {"Trim char", Edit([](auto& s, auto& a) { return s.Trim(a.ch), 0; })},
    {"Trim set", Edit([](auto& s, auto& a) { return s.Trim(a.psz), 0; })},
    {"MakeUpper", Edit([](auto& s, auto&) { return s.MakeUpper(), 0; })},
    {"MakeLower", Edit([](auto& s, auto&) { return s.MakeLower(), 0; })},
    {"Format", Edit([](auto& s, auto& a) { return s.Format("%s%c%*d", a.psz, a.ch, a.n % 600, a.i); })},
    {"ConcatInPlace", Edit([](auto& s, auto& a) { return s.ConcatInPlace(a.psz), 0; })},
    {"+=", Edit([](auto& s, auto& a) { return &(s += a.psz) == &s; })},
    {"+= string", Edit([](auto& s, auto& a) { return &(s += *a.pOther) == &s; })},
    {"[]", Edit([](auto& s, auto& a) { return s[a.i]; })},
    {"Compare", Edit([](auto& s, auto& a) { return Operators(s.Compare(a.psz), 0); })},
    {"CompareNoCase", Edit([](auto& s, auto& a) { return Operators(s.CompareNoCase(a.psz), 0); })},
    {"operators", Edit([](auto& s, auto& a) { return Operators(s, *a.pOther); })},
    {"operators, text right", Edit([](auto& s, auto& a) { return Operators(s, a.psz); })},
    {"operators, text left", Edit([](auto& s, auto& a) { return Operators(a.psz, s); })},
    {"StartsWith", Edit([](auto& s, auto& a) { return s.StartsWith(a.psz); })},
    {"EndsWith", Edit([](auto& s, auto& a) { return s.EndsWith(a.psz); })},
    {"Find char", Edit([](auto& s, auto& a) { return s.Find(a.ch, a.i); })},
    {"Find", Edit([](auto& s, auto& a) { return s.Find(a.psz, a.i); })},
    {"ReverseFind", Edit([](auto& s, auto& a) { return s.ReverseFind(a.ch); })},
    {"FindOneOf", Edit([](auto& s, auto& a) { return s.FindOneOf(const_cast<char*>(a.psz)); })},
    {"FindOneOf const", Edit([](auto& s, auto& a) { return s.FindOneOf(a.psz); })},
    {"ToInt", Edit([](auto& s, auto&) { return s.ToInt(); })},
    {"ToDbl", Edit([](auto& s, auto&) { return s.ToDbl(); })},
    {"default", Make([](auto& s, auto&) { return New(s); })},
    {"construct", Make([](auto& s, auto& a) { return New(s, a.psz); })},
    {"copy", Make([](auto& s, auto&) { return Copy(s); })},
    {"Left", Make([](auto& s, auto& a) { return s.Left(a.i); })},
    {"Right", Make([](auto& s, auto& a) { return s.Right(a.i); })},
    {"Mid", Make([](auto& s, auto& a) { return s.Mid(a.i, a.n); })},
    {"Repr", Make([](auto& s, auto&) { return s.Repr(); })},
    {"+", Make([](auto& s, auto& a) { return s + a.psz; })},
    {"+ string", Make([](auto& s, auto& a) { return s + *a.pOther; })},
    {"const +", Make([](auto& s, auto& a) { return std::as_const(s) + a.psz; })},
    {"const + string", Make([](auto& s, auto& a) { return std::as_const(s) + *a.pOther; })},
    {"text +", Make([](auto& s, auto& a) { return a.psz + s; })},
    {"CFormat", Make([](auto&, auto& a) { return Print(a); })},
    {"Split", &CStrings::DoSplit},
    {"other string", &CStrings::DoOther},
};

#endif
