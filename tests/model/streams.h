// CStream against std::string.
#ifndef STREAMS_H
#define STREAMS_H

#include "strings.h"

#include <optional>

struct SStreamModel
{
    string strBytes;
    int iCapacity = 0, iGrow = 512;
    const CFault* pFault = nullptr;
    int iAsked = 0, iHits = 0; // allocations since pFault was set, and how many of them fail on purpose

    bool Allocates(std::int64_t iSize)
    {
        const bool bHit = pFault->Fails(++iAsked);
        iHits += bHit;
        return !bHit && iSize <= static_cast<int>(s_iTooLarge);
    }

    int GetLength() const { return Length(strBytes); }
    void Clear() { strBytes.clear(); }

    char* GetBuffer(int n)
    {
        if (n > iCapacity)
            iCapacity = Allocates(n) ? n : 0;
        strBytes = string(static_cast<std::size_t>(std::min(iCapacity, 100)), '\0');
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
            if (iNew > INT_MAX || !Allocates(iNew))
                return -1;
            iCapacity = static_cast<int>(iNew);
        }
        strBytes += string(pszData, static_cast<std::size_t>(n)); // which may be its own
        return 0;
    }
    int AppendData(const string& strText) { return AppendData(strText.data(), Length(strText)); }

    int AppendLine(const string& strText)
    {
        const int iResult = AppendData(strText);
        AppendData("\n", 1);
        return iResult;
    }
};

class CStreams
{
public:
    static constexpr char s_szName[] = "streams";
    static constexpr int s_iStates   = 3; // without a buffer, with room, full
    struct SRow
    {
        const char* szName;
        std::function<void(CStreams&, CChoices&, CFault&)> Do;
    };
    static const SRow s_aOperations[7];

    void Prepare(int iState, CChoices& choices)
    {
        const string strText = choices.Text(20);
        CFault none;
        Construct(iState == 0 ? 0 : Length(strText) + (iState == 1 ? 20 : 1), choices.Between(-1, 9), none);
        if (iState > 0)
            m_model.AppendData(strText), m_stream->AppendData(strText.data(), Length(strText));
    }

    void Check()
    {
        Same("length", m_model.GetLength(), m_stream->GetLength());
        Same("bytes and NUL", m_model.strBytes + '\0',
             string(m_stream->ToStr(), m_model.strBytes.size() + 1));
        Same("capacity", m_model.iCapacity, m_stream->GetAllocSize());
    }

private:
    /// What an operation is called with. The bytes may be the stream's own.
    template <class TString>
    struct SArguments
    {
        const char* psz;
        int iCount;
        const TString& str;
        int i, n;
    };

    /// Does the same to the stream and to its model, which tells the allocations that fail.
    template <class TForm>
    static auto Do(TForm Form)
    {
        return [=](CStreams& f, CChoices& choices, CFault& fault)
        {
            const int iKind = choices.Byte() % 8, iOwn = std::min(f.m_model.GetLength(), 600);
            const int iFrom = choices.Between(0, iOwn), i = choices.Between(-2, 60),
                      n    = choices.Between(-2, 60);
            string strText = choices.Text(20);
            std::replace(strText.begin(), strText.end(), '0', '\0');
            CString str;
            strText.copy(str.GetBuffer(Length(strText)), strText.size());
            str.ReleaseBuffer(Length(strText));
            const string strOwn = f.m_model.strBytes;
            SArguments<string> copies{strText.data(), Length(strText), strText,
                                      iKind < 7 ? i : AnySize(choices), n};
            SArguments<CString> args{copies.psz, copies.iCount, str, copies.i, n};
            if (iKind < 3)
                copies.psz = strOwn.data() + iFrom, args.psz = f.m_stream->ToStr() + iFrom,
                args.iCount = copies.iCount = iOwn - iFrom;
            else if (iKind == 3)
                copies.psz = args.psz = nullptr;
            else if (iKind == 4)
                args.iCount = copies.iCount = iFrom % 2 == 0 ? -std::abs(i) : INT_MAX - std::abs(n);
            f.m_model.pFault = &fault, f.m_model.iAsked = f.m_model.iHits = 0;
            const int iExpected = Form(f.m_model, copies);
            int iFound          = 0;
            fault.Run([&] { iFound = Form(*f.m_stream, args); });
            Same("result", iExpected, iFound);
            Same("failed allocations", f.m_model.iHits, fault.GetHits());
        };
    }

    void DoConstruct(CChoices& choices, CFault& fault)
    {
        const int iSize = AnySize(choices);
        Construct(iSize, AnySize(choices), fault);
    }

    void Construct(int iSize, int iGrow, CFault& fault)
    {
        m_model                = {"", 0, iGrow > 0 ? iGrow : 512, &fault};
        const bool bMade       = iSize <= 0 || m_model.Allocates(iSize);
        const string strThrown = fault.Run([&] { m_stream.emplace(iSize, iGrow); });
        Same("thrown", bMade ? "" : "0 (CStream) Out of memory", strThrown);
        Same("failed allocations", m_model.iHits, fault.GetHits());
        if (!bMade)
            m_stream.emplace(0, iGrow);
        m_model.iCapacity = bMade ? std::max(iSize, 0) : 0;
    }

    std::optional<CStream> m_stream;
    SStreamModel m_model;
};

/// Asks for a buffer, sees that it is zero, and writes into it.
template <class TStream>
int RefillStream(TStream& stream, int iAsked, int iLength)
{
    char* pszNew    = stream.GetBuffer(iAsked);
    const int iRoom = std::clamp(iAsked, 0, 60);
    if (pszNew == nullptr)
        return -1;
    const auto iZeros = std::count(pszNew, pszNew + iRoom, '\0');
    memset(pszNew, 'x', static_cast<std::size_t>(iRoom));
    stream.ReleaseBuffer(iLength);
    return static_cast<int>(iZeros);
}

inline const CStreams::SRow CStreams::s_aOperations[] = {
    {"construct", &CStreams::DoConstruct},
    {"Clear", Do([](auto& s, const auto&) { return s.Clear(), 0; })},
    {"GetBuffer", Do([](auto& s, const auto& a) { return RefillStream(s, a.i, a.n); })},
    {"ReleaseBuffer",
     Do([](auto& s, const auto& a) { return s.ReleaseBuffer(std::min(a.i, s.GetLength())), 0; })},
    {"AppendData", Do([](auto& s, const auto& a) { return s.AppendData(a.psz, a.iCount); })},
    {"AppendData string", Do([](auto& s, const auto& a) { return s.AppendData(a.str); })},
    {"AppendLine", Do([](auto& s, const auto& a) { return s.AppendLine(a.str); })},
};

#endif
