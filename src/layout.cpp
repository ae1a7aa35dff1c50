// The layout of the exported classes, row by row as docs/abi.md promises it. It adds nothing to the library.
#include "bedplate.h"

#include <cstddef>
#include <initializer_list>

namespace bedplate_private
{
/// The members of each class: where they stand, and the size of the whole.
struct LayoutCheck
{
    template <class TArray>
    static constexpr std::size_t s_aiArray[] = {offsetof(TArray, m_pData), offsetof(TArray, m_iSize),
                                                offsetof(TArray, m_iBufferSize), sizeof(TArray)};

    static constexpr std::size_t s_aiPtrArray[] = {offsetof(CPtrArray, m_pData), offsetof(CPtrArray, m_iSize),
                                                   offsetof(CPtrArray, m_iBufferSize),
                                                   offsetof(CPtrArray, m_bOwner), sizeof(CPtrArray)};

    template <class THash>
    static constexpr std::size_t s_aiHash[] = {offsetof(THash, m_pHashBag), offsetof(THash, m_iHashSize),
                                               offsetof(THash, m_iDataCnt), offsetof(THash, m_pIndex),
                                               sizeof(THash)};

    static constexpr std::size_t s_iHashOwner = offsetof(CPtrHash, m_bOwner);
};

namespace
{
constexpr std::size_t s_iInt     = 4;
constexpr std::size_t s_iPointer = sizeof(void*);

template <std::size_t iCount>
constexpr bool Stands(const std::size_t (&aiFound)[iCount], const std::size_t (&aiPromised)[iCount])
{
    for (std::size_t i = 0; i < iCount; ++i)
    {
        if (aiFound[i] != aiPromised[i])
            return false;
    }
    return true;
}

template <class TArray>
constexpr bool s_bArray = Stands(LayoutCheck::s_aiArray<TArray>,
                                 {0, s_iPointer, s_iPointer + s_iInt, s_iPointer + 2 * s_iInt});

static_assert(sizeof(int) == s_iInt && (s_iPointer == 4 || s_iPointer == 8), "the widths that are promised");
static_assert(s_bArray<CIntArray> && s_bArray<CDblArray> && s_bArray<CBoolArray> && s_bArray<CDateArray>);
static_assert(s_bArray<CStrArray>);
static_assert(Stands(LayoutCheck::s_aiPtrArray, {0, s_iPointer, s_iPointer + s_iInt, s_iPointer + 2 * s_iInt,
                                                 s_iPointer == 4 ? 16 : 24}));

// An owner takes one more int, or what a pointer is aligned to.
template <class THash, std::size_t iOwner>
constexpr bool s_bHash = Stands(LayoutCheck::s_aiHash<THash>,
                                {0, s_iPointer, s_iPointer + s_iInt, s_iPointer + 2 * s_iInt + iOwner,
                                 2 * s_iPointer + 2 * s_iInt + iOwner});
static_assert(s_bHash<CIntHash, 0> && s_bHash<CDblHash, 0> && s_bHash<CStrHash, 0>);
static_assert(s_bHash<CPtrHash, s_iPointer> && LayoutCheck::s_iHashOwner == s_iPointer + 2 * s_iInt);
} // namespace
} // namespace bedplate_private
