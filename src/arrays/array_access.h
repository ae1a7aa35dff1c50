// What the hash tables may do with an array besides its public operations.
#ifndef BEDPLATE_ARRAY_ACCESS_H
#define BEDPLATE_ARRAY_ACCESS_H

#include "api.h"

#include <string_view>

namespace bedplate_private
{
struct ArrayAccess
{
    /// Makes an array that has no buffer show elements in slots that it does not own. They must be taken away again, by
    /// null and 0, before anything but reading is done to it.
    template <class TArray, class TSlot>
    static void Show(TArray& arr, TSlot* pSlots, int iSize, int iBufferSize)
    {
        arr.m_pData       = pSlots;
        arr.m_iSize       = iSize;
        arr.m_iBufferSize = iBufferSize;
    }

    /// Takes the elements from iSize on out of an array that an operation failed on; their strings are empty.
    template <class TArray>
    static void Shorten(TArray& arr, int iSize)
    {
        arr.m_iSize = iSize;
    }
};

class CTextBuilder;

/// Appends the elements of an array to a text as Repr prints them, with a text between them.
void AppendElements(CTextBuilder& text, const CIntArray& arr, std::string_view svBetween);
void AppendElements(CTextBuilder& text, const CDblArray& arr, std::string_view svBetween);
void AppendElements(CTextBuilder& text, const CStrArray& arr, std::string_view svBetween);
void AppendElements(CTextBuilder& text, const CPtrArray& arr, std::string_view svBetween);
} // namespace bedplate_private

#endif
