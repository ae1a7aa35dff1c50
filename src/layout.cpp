// The layout of the exported classes, row by row as docs/abi.md promises it. It adds nothing to the library.
#include "bedplate.h"

#include <cstddef>

namespace bedplate_private
{
/// Where the members of each class stand; behind them, its size.
struct LayoutCheck
{
    using Places = const std::size_t[];

    static constexpr Places s_aiString = {offsetof(CString, m_pszData), offsetof(CString, m_iSize),
                                          offsetof(CString, m_iBufferSize), sizeof(CString)};

    template <class TArray>
    static constexpr Places s_aiArray = {offsetof(TArray, m_pData), offsetof(TArray, m_iSize),
                                         offsetof(TArray, m_iBufferSize), sizeof(TArray)};

    static constexpr Places s_aiPtrArray = {offsetof(CPtrArray, m_pData), offsetof(CPtrArray, m_iSize),
                                            offsetof(CPtrArray, m_iBufferSize), offsetof(CPtrArray, m_bOwner),
                                            sizeof(CPtrArray)};

    static constexpr Places s_aiStream = {offsetof(CStream, m_iLength), offsetof(CStream, m_iAllocSize),
                                          offsetof(CStream, m_iGrowSize), offsetof(CStream, m_pszBuffer),
                                          sizeof(CStream)};

    template <class THash>
    static constexpr Places s_aiHash = {offsetof(THash, m_pHashBag), offsetof(THash, m_iHashSize),
                                        offsetof(THash, m_iDataCnt), offsetof(THash, m_pIndex),
                                        sizeof(THash)};

    static constexpr Places s_aiPtrHash = {offsetof(CPtrHash, m_pHashBag), offsetof(CPtrHash, m_iHashSize),
                                           offsetof(CPtrHash, m_iDataCnt), offsetof(CPtrHash, m_bOwner),
                                           offsetof(CPtrHash, m_pIndex),   sizeof(CPtrHash)};

    static constexpr Places s_aiDate  = {offsetof(CDate, m_szDate), offsetof(CDate, m_bSet), sizeof(CDate)};
    static constexpr Places s_aiTime  = {offsetof(CTime, m_tvTime), offsetof(CTime, m_tmTime),
                                         offsetof(CTime, m_bSet)};
    static constexpr Places s_aiInt   = {offsetof(CInt, m_iValue), sizeof(CInt)};
    static constexpr Places s_aiInt64 = {offsetof(CInt64, m_iValue), sizeof(CInt64)};
    static constexpr Places s_aiDbl   = {offsetof(CDbl, m_dValue), sizeof(CDbl)};
    static constexpr Places s_aiException = {offsetof(CException, m_iCode), offsetof(CException, m_szText),
                                             sizeof(CException)};
};

namespace
{
template <std::size_t iCount>
constexpr bool Is(const std::size_t (&aiFound)[iCount], const std::size_t (&aiPromised)[iCount])
{
    for (std::size_t i = 0; i < iCount; ++i)
    {
        if (aiFound[i] != aiPromised[i])
            return false;
    }
    return true;
}

constexpr std::size_t s_iPtr = sizeof(void*);
constexpr bool s_b32         = s_iPtr == 4;

template <class TArray>
constexpr bool s_bArray = Is(LayoutCheck::s_aiArray<TArray>, {0, s_iPtr, s_iPtr + 4, s_b32 ? 12 : 16});

template <class THash>
constexpr bool s_bHash = Is(LayoutCheck::s_aiHash<THash>,
                            {0, s_iPtr, s_iPtr + 4, s_b32 ? 12 : 16, s_b32 ? 16 : 24});

static_assert(sizeof(int) == 4 && (s_iPtr == 4 || s_iPtr == 8), "the widths that are promised");
static_assert(Is(LayoutCheck::s_aiString, {0, s_iPtr, s_iPtr + 4, s_b32 ? 12 : 16}));
static_assert(s_bArray<CIntArray> && s_bArray<CDblArray> && s_bArray<CBoolArray> && s_bArray<CDateArray>);
static_assert(s_bArray<CStrArray>);
static_assert(Is(LayoutCheck::s_aiPtrArray, {0, s_iPtr, s_iPtr + 4, s_iPtr + 8, s_b32 ? 16 : 24}));
static_assert(Is(LayoutCheck::s_aiStream, {0, 4, 8, s_b32 ? 12 : 16, s_b32 ? 16 : 24}));
static_assert(s_bHash<CIntHash> && s_bHash<CDblHash> && s_bHash<CStrHash>);
static_assert(Is(LayoutCheck::s_aiPtrHash,
                 {0, s_iPtr, s_iPtr + 4, s_iPtr + 8, s_b32 ? 16 : 24, s_b32 ? 20 : 32}));
static_assert(Is(LayoutCheck::s_aiDate, {0, 9, 10}));
static_assert(Is(LayoutCheck::s_aiTime,
                 {0, sizeof(struct timeval), sizeof(struct timeval) + sizeof(struct tm)}));
static_assert(Is(LayoutCheck::s_aiInt, {0, 4}) && Is(LayoutCheck::s_aiInt64, {0, 8}));
static_assert(Is(LayoutCheck::s_aiDbl, {0, 8}));
static_assert(Is(LayoutCheck::s_aiException, {0, 4, 1028}));
} // namespace
} // namespace bedplate_private
