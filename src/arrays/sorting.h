// Sorting numbers by their digits, for the arrays whose elements are numbers or can be made into some.
#ifndef BEDPLATE_SORTING_H
#define BEDPLATE_SORTING_H

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <type_traits>
#include <utility>

namespace bedplate_private
{
/// Memory that an operation can do without: null when there is none. It comes from the C allocator, whose failures are
/// nobody's exception.
template <class TElem>
std::unique_ptr<TElem[], void (*)(void*)> TryNewScratch(std::size_t iCount)
{
    const std::size_t iMost = static_cast<std::size_t>(-1) / sizeof(TElem);
    return {static_cast<TElem*>(iCount > iMost ? nullptr : malloc(iCount * sizeof(TElem))), free};
}

/// Fewer items than this are as well compared.
constexpr std::size_t s_iFewItems = 1500;

/// Sorts items ascending by the unsigned numbers that ToKey makes of them, one digit of 11 bits after the other, lowest
/// first. Equal ones stay in their order.
template <class TItem, class TToKey>
void SortDigits(TItem* pItems, TItem* pScratch, std::size_t iCount, TToKey ToKey)
{
    using Key                = decltype(ToKey(*pItems));
    constexpr unsigned iBits = 11;
    constexpr Key iMask      = (Key{1} << iBits) - 1;
    TItem* pFrom             = pItems;
    TItem* pTo               = pScratch;
    for (unsigned iShift = 0; iShift < 8 * sizeof(Key); iShift += iBits)
    {
        std::size_t aiPlaces[iMask + 1] = {};
        for (std::size_t i = 0; i < iCount; ++i)
            ++aiPlaces[ToKey(pFrom[i]) >> iShift & iMask];
        if (aiPlaces[ToKey(pFrom[0]) >> iShift & iMask] == iCount)
            continue; // all alike
        std::size_t iPlace = 0;
        for (std::size_t& iDigits : aiPlaces)
            iPlace += std::exchange(iDigits, iPlace);
        for (std::size_t i = 0; i < iCount; ++i)
            pTo[aiPlaces[ToKey(pFrom[i]) >> iShift & iMask]++] = pFrom[i];
        std::swap(pFrom, pTo);
    }
    if (pFrom != pItems)
        std::copy(pFrom, pFrom + iCount, pItems);
}

/// Sorts elements ascending, by the unsigned numbers that ToKey makes of them and FromKey makes them of again. Those that
/// are sorted already stay as they are. A few numbers are as well compared as they are.
template <class TKey, class TElem, class TToKey, class TFromKey>
void SortByKey(TElem* pBegin, TElem* pEnd, TToKey ToKey, TFromKey FromKey)
{
    if (std::is_sorted(pBegin, pEnd))
        return;
    const std::size_t iCount = static_cast<std::size_t>(pEnd - pBegin);
    const bool bFew          = iCount < s_iFewItems;
    if (bFew && std::is_arithmetic<TElem>::value)
        return std::sort(pBegin, pEnd);
    const auto pKeys = TryNewScratch<TKey>(bFew ? iCount : 2 * iCount);
    if (pKeys == nullptr)
        return std::sort(pBegin, pEnd);
    std::transform(pBegin, pEnd, pKeys.get(), ToKey);
    if (bFew)
        std::sort(pKeys.get(), pKeys.get() + iCount);
    else
        SortDigits(pKeys.get(), pKeys.get() + iCount, iCount, [](TKey uKey) { return uKey; });
    std::transform(pKeys.get(), pKeys.get() + iCount, pBegin, FromKey);
}

/// Sorts by an order of the caller's, which may throw, and contradict itself: a copy is sorted, by a sort that stays within
/// bounds, and taken over at the end. Equal elements stay in their order. Returns false when there is no memory for it.
template <class TElem, class TLess>
bool SortCopy(TElem* pElems, int iSize, TLess Less)
{
    const std::size_t iCount = static_cast<std::size_t>(iSize);
    if (iCount < 2)
        return true;
    const auto pCopy = TryNewScratch<TElem>(iCount);
    if (pCopy == nullptr)
        return false;
    std::copy(pElems, pElems + iCount, pCopy.get());
    std::stable_sort(pCopy.get(), pCopy.get() + iCount, Less);
    std::copy(pCopy.get(), pCopy.get() + iCount, pElems);
    return true;
}
} // namespace bedplate_private

#endif
