// CStream against std::string.
#ifndef STREAMS_H
#define STREAMS_H

#include "strings.h"

struct SStreamModel
{
    string strBytes;
    int iCapacity = 0, iGrow = 512;
    const CFault* pFault = nullptr;
    int iAsked           = 0; // allocations since pFault was set, which tells those that fail
    bool bThrows         = false;
    bool bFailed         = false; // whether one of those has

    bool Allocates(std::int64_t n)
    {
        bFailed = n > INT_MAX || pFault->Fails(++iAsked) || n > std::int64_t{s_iTooLarge};
        return !bFailed;
    }

    int GetLength() const { return Length(strBytes); }
    void Clear() { strBytes.clear(); }

    char* GetBuffer(int n)
    {
        if (n > iCapacity)
            iCapacity = Allocates(n) ? n : 0;
        strBytes = string(static_cast<std::size_t>(iCapacity), '\0');
        return iCapacity > 0 ? &strBytes[0] : nullptr;
    }

    void ReleaseBuffer(int n)
    {
        n = n < 0 ? Length(strBytes.c_str()) : n;
        strBytes.resize(static_cast<std::size_t>(std::min(n, std::max(iCapacity - 1, 0))));
    }

    int AppendData(const char* pszData, int n)
    {
        const std::int64_t iNeeded = std::int64_t{n} + GetLength();
        if (pszData == nullptr || n <= 0)
            return 0;
        if (iCapacity <= iNeeded)
        {
            const std::int64_t iNew = iCapacity + ((iNeeded - iCapacity) / iGrow + 1) * iGrow;
            if (!Allocates(iNew))
                return -1;
            iCapacity = static_cast<int>(iNew);
        }
        strBytes.append(pszData, static_cast<std::size_t>(n));
        return 0;
    }
    int AppendLine(const CString& str)
    {
        const string strBefore = strBytes;
        const int iResult      = AppendData(str.ToStr(), str.GetLength());
        if (iResult == 0 || !bThrows)
            AppendData("\n", 1);
        if (bFailed && bThrows)
            strBytes = strBefore;
        return iResult;
    }
    int AppendChar(char ch) { return AppendData(&ch, 1); }
    int AppendFormat(const char* pszFormat, const char* psz, int iWidth, int i)
    {
        char szText[200];
        return AppendData(szText, snprintf(szText, sizeof szText, pszFormat, psz, iWidth, i));
    }
    void ThrowOnFailure(bool bThrow) { bThrows = bThrow; }
};

class CStreams
{
public:
    static constexpr char s_szName[] = "streams";
    static constexpr int s_iStates   = 3; // without a buffer, with room, full
    static const SOperation<CStreams> s_aOperations[11];

    void Prepare(int iState, CChoices& choices)
    {
        const CString str(choices.Text(20).c_str());
        CFault none;
        Construct(iState > 0 ? str.GetLength() + (iState == 1 ? 20 : 2) : 0, choices, none);
        if (iState > 0)
        {
            m_model.AppendLine(str);
            m_stream->AppendLine(str);
        }
    }

    void Check()
    {
        Same("length", m_model.GetLength(), m_stream->GetLength());
        Same("bytes and NUL", m_model.strBytes + '\0',
             string(m_stream->ToStr(), m_model.strBytes.size() + 1));
        Same("capacity", m_model.iCapacity, m_stream->GetAllocSize());
    }

private:
    /// Does the same to the stream and to its model, which reads the arguments first: they may be the stream's own.
    template <class TForm>
    static auto Do(TForm Form)
    {
        return [Call = WithResult(Form)](CStreams& f, CChoices& choices, CFault& fault)
        {
            if (f.m_model.GetLength() > 1 << 20) // lines of its own text double it
            {
                f.m_stream->Clear();
                f.m_model.Clear();
            }
            const int iKind  = choices.Byte() % 8;
            const int iOwn   = std::min(f.m_model.GetLength(), 600);
            const int iFrom  = choices.Between(0, iOwn);
            const int n      = choices.Between(-2, 60);
            const int iLarge = INT_MAX - 60 + n;
            string strText   = choices.Text(20);
            if (iKind == 6)
                strText.resize(static_cast<std::size_t>(choices.LengthAtAnEdge()), 'a');
            CString str(strText.c_str());
            str.Replace('0', '\0');
            const char* pszOwn   = f.m_stream->ToStr() + iFrom;
            const char* pszOther = AtTheEnd({str.ToStr(), strText.size()});
            const char* psz      = iKind < 3 ? pszOwn : iKind == 3 ? nullptr : pszOther;
            const int iLength    = iKind < 3    ? iOwn - iFrom
                                   : iKind == 4 ? iLarge
                                   : iKind == 5 ? -1
                                                : str.GetLength();
            const SStringArguments a{
                psz, nullptr, "%.60s%*d", str, str, 'x', '\0', iLength, iKind == 3 ? iLarge : n};
            f.m_model.pFault       = &fault;
            f.m_model.iAsked       = 0;
            f.m_model.bFailed      = false;
            const int iExpected    = Call(f.m_model, a);
            int iFound             = 0;
            const bool bThrows     = f.m_model.bFailed && f.m_model.bThrows;
            const string strThrown = fault.Run([&] { iFound = Call(*f.m_stream, a); });
            Same("thrown", bThrows ? "0 (CStream) Out of memory" : "", strThrown);
            Same("result", bThrows ? 0 : iExpected, iFound);
        };
    }

    void DoConstruct(CChoices& choices, CFault& fault)
    {
        const int iLarge = choices.Byte() % 4 == 0 ? INT_MAX - 60 : 0;
        Construct(iLarge + choices.Between(-9, 60), choices, fault);
    }

    void Construct(int iSize, CChoices& choices, CFault& fault)
    {
        const int iGrow        = choices.Between(-1, 30);
        m_model                = {"", 0, iGrow > 0 ? iGrow : 512, &fault};
        const bool bMade       = m_model.GetBuffer(iSize) != nullptr || iSize <= 0;
        const string strThrown = fault.Run([&] { m_stream.emplace(iSize, iGrow); });
        Same("thrown", bMade ? "" : "0 (CStream) Out of memory", strThrown);
        if (!bMade)
            m_stream.emplace(0, iGrow);
        m_model.Clear();
    }

    std::optional<CStream> m_stream;
    SStreamModel m_model;
};

inline const SOperation<CStreams> CStreams::s_aOperations[] = {
    {"construct", &CStreams::DoConstruct},
    {"Clear", Do([](auto& s, auto&) { s.Clear(); })},
    {"GetBuffer", Do([](auto& s, auto& a) { return Refill(s, a.n, a.ch, a.i); })},
    {"ReleaseBuffer", Do([](auto& s, auto& a) { s.ReleaseBuffer(std::min(a.n, s.GetLength() + 1)); })},
    {"AppendData", Do([](auto& s, auto& a) { return s.AppendData(a.psz, a.i); })},
    {"AppendLine text", Do([](auto& s, auto& a) { return s.AppendLine(a.psz); })},
    {"AppendChar", Do([](auto& s, auto& a) { return s.AppendChar(static_cast<char>(a.i)); })},
    {"AppendFormat", Do([](auto& s, auto& a) { return s.AppendFormat(a.pszFormat, a.psz, a.n % 60, a.i); })},
    {"ThrowOnFailure", Do([](auto& s, auto& a) { s.ThrowOnFailure(a.n > 20); })},
    {"move", Do([](auto& s, auto&) { return (s = std::decay_t<decltype(s)>(std::move(s))).GetLength(); })},
    {"AppendLine", Do([](auto& s, auto& a) { return s.AppendLine(a.str); })},
};

#endif
