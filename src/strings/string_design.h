// What CString's units share with each other, and with the units that make strings.
#ifndef BEDPLATE_STRING_DESIGN_H
#define BEDPLATE_STRING_DESIGN_H

#include "base/growth.h"
#include "base/short_bytes.h"
#include "cstring.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <new>
#include <string_view>

namespace bedplate_private
{
/// Returns a view of a text; a null one counts as empty.
inline std::string_view ViewOf(const char* pszText)
{
    return pszText != nullptr ? std::string_view(pszText) : std::string_view();
}

/// Returns a view of a string's text, up to its first NUL.
inline std::string_view ViewOf(const CString& strText) { return std::string_view(strText.ToStr()); }

/// Returns a view of the text that a string counts, up to a NUL.
inline std::string_view CountedText(const CString& strText)
{
    return {strText.ToStr(), strnlen(strText.ToStr(), static_cast<std::size_t>(strText.GetLength()))};
}

class CPrinter;

/// The access to a string's members. A buffer takes part in three steps: it is replaced, written, and ended.
struct StringDesign
{
    /// The capacity of every empty string that has a buffer.
    static constexpr int s_iEmptySize = CString::s_iEmptySize;

    /// Returns the capacity of a new string of iSize characters.
    static int CapacityFor(int iSize) { return iSize > 0 ? iSize + 1 : s_iEmptySize; }

    /// Throws the failure of an allocation. It is always cstring.cpp's: callers know it by that name, whichever unit
    /// wanted the memory.
    [[noreturn, gnu::cold]] static void ThrowNoMemory(const char* pszExpression = "char[m_iBufferSize]",
                                                      const char* pszReason     = "std::bad_alloc");

    /// Returns memory for a text, as much as ReservedText says for its capacity.
    [[gnu::always_inline]] static inline char* NewText(int iCapacity,
                                                       const char* pszExpression = "char[m_iBufferSize]")
    {
        try
        {
            return new char[static_cast<std::size_t>(ReservedText(iCapacity))];
        }
        catch (const std::bad_alloc& e)
        {
            ThrowNoMemory(pszExpression, e.what());
        }
    }

    /// Returns a size in bytes as an int; one that no int holds is a failed allocation. Called before anything changes.
    static int CheckSize(std::uint64_t iSize, const char* pszExpression = "char[m_iBufferSize]")
    {
        if (iSize > INT_MAX)
            ThrowNoMemory(pszExpression);
        return static_cast<int>(iSize);
    }

    /// Returns the length of a text that a string can hold.
    static int CheckText(std::string_view svText) { return CheckSize(std::uint64_t{svText.size()} + 1) - 1; }

    /// Takes a string's buffer away; what is left reads as empty.
    static void DropBuffer(CString& strText, int iCapacity = s_iEmptySize)
    {
        delete[] strText.m_pszData;
        strText.m_pszData     = nullptr;
        strText.m_iSize       = 0;
        strText.m_iBufferSize = iCapacity;
    }

    /// Replaces a string's buffer by a new one, which the caller writes. Without the memory there is none.
    static void ReplaceBuffer(CString& strText, int iCapacity,
                              const char* pszExpression = "char[m_iBufferSize]")
    {
        DropBuffer(strText, iCapacity);
        strText.m_pszData = NewText(iCapacity, pszExpression);
    }

    /// Replaces a string's buffer by one that holds a text.
    static void Adopt(CString& strText, char* pszText, int iSize, int iCapacity)
    {
        delete[] strText.m_pszData;
        strText.m_pszData     = pszText;
        strText.m_iSize       = iSize;
        strText.m_iBufferSize = iCapacity;
    }

    /// Ends a text that was written: behind its iSize bytes the buffer is zero. Mostly only the NUL is.
    static void EndText(CString& strText, int iSize)
    {
        strText.m_iSize          = iSize;
        strText.m_pszData[iSize] = '\0';
        if (iSize + 1 < strText.m_iBufferSize)
            memset(strText.m_pszData + iSize + 1, 0,
                   static_cast<std::size_t>(strText.m_iBufferSize - iSize - 1));
    }

    /// Returns a string without a buffer.
    static CString WithoutBuffer() { return CString(nullptr, 0, s_iEmptySize); }

    /// Gives a string, whatever it holds, a text and a capacity that it fits in. A buffer of that capacity is kept.
    static void Renew(CString& strText, std::string_view svText, int iCapacity,
                      const char* pszExpression = "char[m_iBufferSize]")
    {
        if (strText.m_pszData == nullptr || strText.m_iBufferSize != iCapacity)
            ReplaceBuffer(strText, iCapacity, pszExpression);
        CopyBytes(strText.m_pszData, svText.data(), svText.size());
        EndText(strText, static_cast<int>(svText.size()));
    }

    /// Returns a string of some bytes.
    static CString FromBytes(std::string_view svBytes);

    /// Returns a string of some texts, one behind the other.
    static CString Concat(std::initializer_list<std::string_view> listParts);

    /// Returns the string that CFormat makes of a text.
    static CString FromPrinted(std::string_view svText);

    /// Returns what CFormat does of what was printed.
    static CString FromPrinter(CPrinter& printer);

    /// Gives a string what Format makes of what was printed, and returns what Format returns.
    static int Reprint(CString& strText, CPrinter& printer);

    /// Tells whether a string whose capacity becomes iCapacity can stay where it is, in memory that was reserved.
    static bool FitsReserve(const CString& strText, int iCapacity)
    {
        return iCapacity > s_iExactText && strText.m_pszData != nullptr &&
               ReservedText(iCapacity) == ReservedText(strText.m_iBufferSize);
    }

    /// Inserts bytes, which may be strText's own, into a new buffer, where they make the length iSize.
    static void InsertAnew(CString& strText, int iIndex, std::string_view svBytes, int iSize);

    /// Inserts bytes, which may be strText's own, before position iIndex; returns the new length.
    static int Insert(CString& strText, int iIndex, std::string_view svBytes);

    /// Cuts a string to its bytes from iBegin to iEnd.
    static void Keep(CString& strText, int iBegin, int iEnd);

    // Spare strings are what a string array keeps for later use. They are empty; those that have not been used yet have no
    // buffer. RenewElement brings them to life.

    /// Returns a new spare string.
    static CString* NewSpare() { return new CString(nullptr, 0, s_iEmptySize); }

    /// Gives a string, whatever it holds, the text and the capacity that it would have after Clear and Set.
    static void RenewElement(CString& strText, std::string_view svText)
    {
        Renew(strText, svText, std::max(CheckText(svText) + 1, s_iEmptySize));
    }
};
} // namespace bedplate_private

#endif
