// CStream against std::string.
#ifndef STREAMS_H
#define STREAMS_H

#include "strings.h"

#include <optional>

class CStreams
{
public:
    static constexpr char s_szName[] = "streams";
    static constexpr int s_iStates   = 3; // without a buffer, with room, full
    static const SOperation<CStreams> s_aOperations[7];

    void Prepare(int iState, CChoices& choices)
    {
        CFault none;
        m_strText = choices.Text(20);
        Construct(iState == 0 ? 0 : Length(m_strText) + (iState == 1 ? 20 : 1), choices.Between(-1, 9), none);
        if (iState > 0)
            m_strBytes = m_strText, m_stream->AppendData(m_strText.data(), Length(m_strText));
    }

    void Check()
    {
        Same("length", Length(m_strBytes), m_stream->GetLength());
        Same("bytes and NUL", m_strBytes + '\0', string(m_stream->ToStr(), m_strBytes.size() + 1));
        Same("capacity", m_iCapacity, m_stream->GetAllocSize());
    }

    void DoConstruct(CChoices& choices, CFault& fault)
    {
        const int iSize = AnySize(choices);
        Construct(iSize, AnySize(choices), fault);
    }

    void DoClear(CChoices&, CFault& fault)
    {
        fault.Run([this] { m_stream->Clear(); });
        NeedsMemory(fault, false);
        m_strBytes.clear();
    }

    /// Asks for a buffer, sees that it is zero, and writes into it.
    void DoGetBuffer(CChoices& choices, CFault& fault)
    {
        const int iCount      = choices.Byte() % 8 > 0 ? choices.Between(-1, 60) : AnySize(choices);
        const char* pszBefore = m_stream->ToStr();
        char* pszNew          = nullptr;
        fault.Run([&] { pszNew = m_stream->GetBuffer(iCount); });
        const bool bNew = NeedsMemory(fault, iCount > m_iCapacity);
        if (bNew)
            m_iCapacity = fault.WasHit() || IsTooLarge(iCount) ? 0 : iCount;
        m_strBytes.clear();
        Same("buffer", m_iCapacity > 0, pszNew != nullptr);
        Check();
        if (pszNew == nullptr)
            return;
        Same("buffer kept", true, bNew || pszNew == pszBefore);
        const int iSeen = std::min(m_iCapacity, 3000);
        Same("zero bytes", iSeen, static_cast<int>(std::count(pszNew, pszNew + iSeen, '\0')));
        m_strBytes = string(static_cast<std::size_t>(iSeen), '\0');
        strcpy(pszNew, choices.Text(std::min(iSeen - 1, 20)).c_str());
        strcpy(&m_strBytes[0], pszNew);
        Release(choices.Between(-2, 80), fault);
    }

    void DoReleaseBuffer(CChoices& choices, CFault& fault)
    {
        const int iSize = std::min(m_iCapacity, 3000), iOld = Length(m_strBytes);
        if (iSize > iOld) // what is behind the text has no documented value
            m_strBytes.append(m_stream->ToStr() + iOld, static_cast<std::size_t>(iSize - iOld));
        Release(m_iCapacity > 3000 ? choices.Between(-2, iOld) : choices.AnyInt(), fault);
    }

    void DoAppend(CChoices& choices, CFault& fault)
    {
        const int iKind = choices.Byte() % 8, iFrom = choices.Between(0, std::min(Length(m_strBytes), 600));
        const bool bOwn = iKind < 3;
        DrawText(choices);
        if (bOwn)
            m_strText = m_strBytes.substr(static_cast<std::size_t>(iFrom), 600);
        const int iCount    = iKind == 3   ? -choices.Byte()
                              : iKind == 4 ? INT_MAX - choices.Byte()
                                           : Length(m_strText);
        const char* pszData = bOwn ? m_stream->ToStr() + iFrom : iKind == 5 ? nullptr : m_strText.data();
        int iFound          = 0;
        fault.Run([&] { iFound = m_stream->AppendData(pszData, iCount); });
        Same("result", Append(pszData != nullptr ? iCount : 0, fault.GetHits() > 0), iFound);
        NeedsMemory(fault, m_bGrows);
    }

    void DoAppendString(CChoices& choices, CFault& fault)
    {
        const CString strText = DrawText(choices);
        int iFound            = 0;
        fault.Run([&] { iFound = m_stream->AppendData(strText); });
        Same("result", Append(Length(m_strText), fault.GetHits() > 0), iFound);
        NeedsMemory(fault, m_bGrows);
    }

    /// The line feed is appended whatever became of the text.
    void DoAppendLine(CChoices& choices, CFault& fault)
    {
        const CString strText = DrawText(choices);
        int iFound            = 0;
        fault.Run([&] { iFound = m_stream->AppendLine(strText); });
        Same("result", Append(Length(m_strText), iFound < 0 && fault.WasHit()), iFound);
        const bool bGrew = m_bGrows;
        m_strText        = "\n";
        Append(1, fault.GetHits() > (iFound < 0));
        NeedsMemory(fault, bGrew || m_bGrows);
    }

private:
    static bool IsTooLarge(std::int64_t iSize) { return iSize > static_cast<int>(s_iTooLarge); }

    static bool NeedsMemory(const CFault& fault, bool bNeeds)
    {
        Same("needs memory", true, bNeeds || !fault.WasHit());
        return bNeeds;
    }

    void Construct(int iSize, int iGrow, CFault& fault)
    {
        const string strThrown = fault.Run([&] { m_stream.emplace(iSize, iGrow); });
        const bool bFails      = NeedsMemory(fault, iSize > 0) && (fault.WasHit() || IsTooLarge(iSize));
        Same("thrown", bFails ? "0 (CStream) Out of memory" : "", strThrown);
        if (bFails)
            m_stream.emplace(0, iGrow);
        m_strBytes.clear();
        m_iCapacity = bFails ? 0 : std::max(iSize, 0);
        m_iGrow     = iGrow > 0 ? iGrow : 512;
    }

    /// m_strBytes is all that is in the buffer.
    void Release(int iCount, CFault& fault)
    {
        fault.Run([&] { m_stream->ReleaseBuffer(iCount); });
        NeedsMemory(fault, false);
        const int iLength = iCount < 0 ? Length(m_strBytes.c_str()) : iCount;
        m_strBytes.resize(static_cast<std::size_t>(std::min(iLength, std::max(m_iCapacity - 1, 0))));
    }

    CString DrawText(CChoices& choices)
    {
        m_strText = choices.Text(20);
        std::replace(m_strText.begin(), m_strText.end(), '0', '\0');
        CString str;
        m_strText.copy(str.GetBuffer(Length(m_strText)), m_strText.size());
        str.ReleaseBuffer(Length(m_strText));
        return str;
    }

    /// Appends iCount bytes of m_strText to the model; returns what that gives.
    int Append(int iCount, bool bHit)
    {
        const std::int64_t iNeeded = std::int64_t{iCount} + Length(m_strBytes);
        std::int64_t iNew          = m_iCapacity;
        m_bGrows                   = iCount > 0 && iNew <= iNeeded;
        if (m_bGrows)
            iNew += ((iNeeded - iNew) / m_iGrow + 1) * m_iGrow;
        if (m_bGrows && (bHit || IsTooLarge(iNew)))
            return -1;
        m_iCapacity = static_cast<int>(iNew);
        m_strBytes.append(m_strText, 0, static_cast<std::size_t>(std::max(iCount, 0)));
        return 0;
    }

    std::optional<CStream> m_stream;
    string m_strBytes;
    int m_iCapacity = 0, m_iGrow = 0;
    string m_strText;      // what is appended
    bool m_bGrows = false; // whether the last append needed more capacity
};

inline const SOperation<CStreams> CStreams::s_aOperations[] = {
    {"construct", &CStreams::DoConstruct},   {"Clear", &CStreams::DoClear},
    {"GetBuffer", &CStreams::DoGetBuffer},   {"ReleaseBuffer", &CStreams::DoReleaseBuffer},
    {"AppendData", &CStreams::DoAppend},     {"AppendData(CString)", &CStreams::DoAppendString},
    {"AppendLine", &CStreams::DoAppendLine},
};

#endif
