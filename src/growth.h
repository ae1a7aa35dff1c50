// How every array grows.
#ifndef BEDPLATE_GROWTH_H
#define BEDPLATE_GROWTH_H

#include <algorithm>
#include <climits>
#include <cstdint>

namespace bedplate_private
{
/// Returns how many slots an array of iSize elements gains when it grows on demand.
inline int GrowthStep(int iSize) { return std::clamp(iSize / 8, 4, 1024); }

/// Returns how many bytes are really allocated for a buffer of iBytes: exactly as many while that is little, then
/// the next power of two or one and a half times one, and multiples of 64 MB in the end. Growing to a capacity
/// that the same allocation holds takes no new buffer then; with steps of at most 1024 slots, large arrays would
/// spend their time copying otherwise. It depends on the capacity alone, so no member has to remember it, and
/// memory that is never touched costs addresses only.
constexpr std::int64_t ReservedBytes(std::int64_t iBytes)
{
    constexpr std::int64_t iExact      = 64 * 1024;
    constexpr std::int64_t iLargestGap = 64 * 1024 * 1024;
    if (iBytes <= iExact)
        return iBytes;
    std::int64_t iGap = iExact / 2;
    while (iGap < iLargestGap && iGap * 4 <= iBytes)
        iGap *= 2;
    return (iBytes + iGap - 1) / iGap * iGap;
}

static_assert(ReservedBytes(65536) == 65536 && ReservedBytes(65537) == 98304 &&
                  ReservedBytes(98305) == 131072 && ReservedBytes(131073) == 196608 &&
                  ReservedBytes(196608) == 196608,
              "a reserved size reserves itself");

/// Returns how many slots are really allocated for a buffer of iCapacity slots.
template <class TElem>
int ReservedSlots(int iCapacity)
{
    constexpr std::int64_t iElemSize = sizeof(TElem);
    return static_cast<int>(
        std::min<std::int64_t>(ReservedBytes(iCapacity * iElemSize) / iElemSize, INT_MAX));
}
} // namespace bedplate_private

#endif
