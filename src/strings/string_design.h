// What the units that build texts share with CString: making one from bytes, and collecting one piece by piece.
#ifndef BEDPLATE_STRING_DESIGN_H
#define BEDPLATE_STRING_DESIGN_H

#include "base/growth.h"
#include "base/short_bytes.h"
#include "cstring.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace bedplate_private
{
class CPrinter;

/// The part of CString that is not its callers' business. All of it lives in cstring.cpp, whose name the
/// allocation failures carry.
struct StringDesign
{
    /// The capacity of every empty string that has a buffer.
    static constexpr int s_iEmptySize = 8;

    /// The capacity of a new string that holds iLength characters.
    static int CapacityFor(int iLength) { return iLength > 0 ? iLength + 1 : s_iEmptySize; }

    /// Returns a string that takes over a buffer from new[].
    static CString Adopt(char* pszText, int iSize, int iBufferSize);

    /// Gives a string that has no buffer yet room for iCount bytes of text, which the caller writes: in cstring.cpp alone.
    [[gnu::always_inline]] static inline char* Construct(CString& strText, std::int64_t iCount);

    /// Gives a string that has no buffer yet the iCount bytes at pszText.
    static void Construct(CString& strText, const char* pszText, std::size_t iCount);

    /// Returns a string of iCount bytes.
    static CString FromBytes(const char* pszText, std::size_t iCount);

    /// Returns a string of the iHead bytes at pszHead and the iTail bytes at pszTail.
    static CString FromParts(const char* pszHead, std::size_t iHead, const char* pszTail, std::size_t iTail);

    /// Returns the string that CFormat makes of iCount bytes.
    static CString FromPrinted(const char* pszText, std::size_t iCount);

    /// Returns what a printer has printed; the empty string if that is nothing valid.
    static CString FromPrinter(CPrinter& printer);

    /// Makes an empty string as good as new; most are, and then nothing is allocated.
    static void Freshen(CString& strText)
    {
        if (strText.m_pszData == nullptr || strText.m_iSize != 0 || strText.m_iBufferSize != s_iEmptySize)
            strText.Clear();
    }

    // Strings that a string array keeps for later use have no buffer: they read as empty, like those that could not get
    // one.

    /// Returns a new string without a buffer.
    static CString* NewVacated();

    /// Takes a string's buffer away.
    static void Vacate(CString& strText);

    /// Gives a string, whatever it holds, the text that it would have after Clear and Set.
    static void SetAnew(CString& strText, const char* pszText, std::size_t iCount);

    /// Tells whether a string whose capacity becomes iCapacity can stay where it is, in memory that was reserved.
    static bool FitsReserve(const CString& strText, int iCapacity)
    {
        if (iCapacity <= s_iExactText || strText.m_pszData == nullptr)
            return false;
        const int iReserved = ReservedText(strText.m_iBufferSize);
        return iCapacity <= iReserved &&
               (iCapacity >= strText.m_iBufferSize || ReservedText(iCapacity) == iReserved);
    }

    /// Returns the text of strText from iStart on, at most iCount bytes and only up to a NUL.
    static CString Substring(const CString& strText, int iStart, int iCount);

    /// Inserts iCount bytes, which may be strText's own, before position iIndex; returns the new length.
    static int InsertBytes(CString& strText, int iIndex, const char* pszBytes, std::size_t iCount);

    /// Removes the characters for which IsRemovable is true from the ends.
    template <class TRemovable>
    static void TrimEnds(CString& strText, bool bLeft, bool bRight, TRemovable IsRemovable);

    /// Stores the pieces of strText between separators of iSepLen bytes, none for 0, in arrPieces.
    static void Split(const CString& strText, CStrArray& arrPieces, const char* pszSep, std::size_t iSepLen,
                      bool bTrim, bool bKeepEmptyLast);
};

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

    /// Appends iCount bytes.
    void Append(const char* pszBytes, std::size_t iCount)
    {
        CopyBytes(Room(iCount), pszBytes, iCount);
        Advance(iCount);
    }

    /// Returns the bytes of the text, without a NUL.
    const char* GetText() const { return m_pszText; }

    /// Returns the length of the text.
    int GetSize() const { return static_cast<int>(m_iSize); }

    /// Hands out the text, followed by zero bytes, in a buffer of iBufferSize bytes from new[]. Nothing may be appended
    /// afterwards.
    char* Release(int iBufferSize);

    /// Returns the text as a string of the usual capacity. Nothing may be appended afterwards.
    CString Finish();

private:
    void Grow(std::size_t iCount);

    char* m_pszText         = m_szShort;
    std::size_t m_iSize     = 0;
    std::size_t m_iCapacity = sizeof m_szShort;
    char m_szShort[512];
};
} // namespace bedplate_private

#endif
