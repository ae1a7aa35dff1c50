// Collecting a text piece by piece, for the units that build texts.
#ifndef BEDPLATE_TEXT_BUILDER_H
#define BEDPLATE_TEXT_BUILDER_H

#include "base/short_bytes.h"
#include "cstring.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace bedplate_private
{
/// Collects a text of any length and hands it out as a CString of the right capacity. Short texts are collected on
/// the stack; a text whose length was foretold is collected where it stays.
class CTextBuilder
{
public:
    /// Starts empty. iForetold is the length that the text will have, as far as it is known.
    explicit CTextBuilder(std::int64_t iForetold = 0);
    ~CTextBuilder();

    CTextBuilder(const CTextBuilder&)            = delete;
    CTextBuilder& operator=(const CTextBuilder&) = delete;

    /// Returns room for iCount bytes behind the text; Advance then tells how many were written there.
    char* Room(std::size_t iCount)
    {
        if (m_iCapacity - m_iSize <= iCount) // the NUL needs its byte too
            Grow(iCount);
        return m_pszText + m_iSize;
    }

    /// Adds iCount bytes that were written into Room.
    void Advance(std::size_t iCount) { m_iSize += iCount; }

    void Append(std::string_view svBytes)
    {
        CopyBytes(Room(svBytes.size()), svBytes.data(), svBytes.size());
        Advance(svBytes.size());
    }

    /// Appends a number in decimal.
    void Append(int iNumber)
    {
        constexpr std::size_t iMaxDigits = 11;
        char* psz                        = Room(iMaxDigits);
        Advance(static_cast<std::size_t>(std::to_chars(psz, psz + iMaxDigits, iNumber).ptr - psz));
    }

    /// Begins a new text in the same place.
    void Clear() { m_iSize = 0; }

    /// Returns the bytes of the text, without a NUL.
    const char* GetText() const { return m_pszText; }

    /// Returns the length of the text.
    int GetSize() const { return static_cast<int>(m_iSize); }

    /// Makes the text, with a capacity of iCapacity, strText's. Nothing may be appended afterwards.
    void MoveTo(CString& strText, int iCapacity);

    /// Returns the text as a string of the usual capacity. Nothing may be appended afterwards.
    CString Finish();

private:
    void Grow(std::uint64_t iCount);

    char* m_pszText         = m_szShort;
    std::size_t m_iSize     = 0;
    std::size_t m_iCapacity = sizeof m_szShort;
    char m_szShort[512];
};
} // namespace bedplate_private

#endif
