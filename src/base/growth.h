// How every array grows.
#ifndef BEDPLATE_GROWTH_H
#define BEDPLATE_GROWTH_H

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>

namespace bedplate_private
{
/// Returns how many slots an array of iSize elements gains when it grows on demand.
inline int GrowthStep(int iSize) { return std::clamp(iSize / 8, 4, 1024); }

/// Returns the capacity that GrowBuffer(iCount) gives a buffer of iBufferSize slots that iSize elements are in: iCount is how
/// many to add, unless there are as many, or none for a growth step.
inline std::int64_t GrownCapacity(int iBufferSize, int iCount, int iSize)
{
    const int iStep = iCount < 1 ? GrowthStep(iSize) : (iCount > iBufferSize ? iCount : 0);
    return std::int64_t{iBufferSize} + iStep;
}

/// From one power of two to the next in six steps, in units of a 1,024th of the power.
constexpr unsigned s_auReserveSteps[] = {1152, 1296, 1458, 1640, 1845, 2048};

/// Tells whether buffers may be larger than their capacities say. Where the address sanitizer watches over the library they
/// may not: it is to see what is written behind them.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool s_bReserving = false;
#elif defined(__has_feature)
constexpr bool s_bReserving = !__has_feature(address_sanitizer);
#else
constexpr bool s_bReserving = true;
#endif

/// Returns how many units of iUnitSize bytes are really allocated for a buffer of iCapacity: exactly as many up to iExact,
/// which is 1,024 at least, and then the next size of a series in which each is at most one eighth more than the one
/// before. Growing to a capacity that the same allocation holds takes no new buffer then; large arrays and texts, which
/// grow by small steps, would spend their time copying otherwise. It depends on the capacity alone, so no member has to
/// remember it. A size that only the reserve makes too large for a request is taken as it is.
constexpr int Reserved(int iCapacity, int iExact, std::size_t iUnitSize)
{
    if (!s_bReserving || iCapacity <= iExact)
        return iCapacity;
    const unsigned uLast   = static_cast<unsigned>(iCapacity - 1);
    const int iShift       = 31 - __builtin_clz(uLast) - 10;
    const unsigned* puStep = s_auReserveSteps;
    while (*puStep <= uLast >> iShift)
        ++puStep;
    const unsigned uSize        = *puStep << iShift;
    constexpr std::size_t iMost = std::size_t{PTRDIFF_MAX};
    return uSize <= INT_MAX && uSize <= iMost / iUnitSize ? static_cast<int>(uSize) : iCapacity;
}

static_assert(!s_bReserving || (Reserved(8192, 8192, 4) == 8192 && Reserved(8193, 8192, 4) == 9216 &&
                                Reserved(9216, 8192, 4) == 9216 && Reserved(9217, 8192, 4) == 10368 &&
                                Reserved(16384, 8192, 4) == 16384 && Reserved(16385, 8192, 4) == 18432 &&
                                Reserved(INT_MAX, 8192, 1) == INT_MAX),
              "a reserved size reserves itself");

/// Up to these sizes, allocations are exact.
constexpr int s_iExactSlots = 8192;
constexpr int s_iExactText  = 1024;

/// Between these sizes in bytes, arrays' buffers double. They are mapped by themselves, so that pages which nobody has written
/// take no memory. Above, on 32 bits, it is addresses that are scarce. Appending 1,000,000 ints takes half the time of
/// reserving one eighth.
constexpr std::uint64_t s_iFirstDoubled = 128 * 1024;
constexpr std::uint64_t s_iLastDoubled  = 64 * 1024 * 1024;

/// Returns how many slots are really allocated for an array's buffer of iCapacity slots. That goes by the power of two below
/// iCapacity alone, so that a reserved size reserves itself.
template <class TElem>
constexpr int ReservedSlots(int iCapacity)
{
    if (s_bReserving && iCapacity > s_iExactSlots)
    {
        const int iPower           = 1 << (31 - __builtin_clz(static_cast<unsigned>(iCapacity - 1)));
        const std::uint64_t iBytes = std::uint64_t{sizeof(TElem)} * static_cast<unsigned>(iPower);
        if (iBytes >= s_iFirstDoubled && iBytes < s_iLastDoubled)
            return 2 * iPower;
    }
    return Reserved(iCapacity, s_iExactSlots, sizeof(TElem));
}

static_assert(!s_bReserving ||
                  (ReservedSlots<int>(32768) == 32768 && ReservedSlots<int>(32769) == 65536 &&
                   ReservedSlots<int>(65536) == 65536 && ReservedSlots<int>(16777216) == 16777216 &&
                   ReservedSlots<int>(16777217) == 18874368),
              "a reserved size reserves itself");

/// Returns how many bytes are really allocated for a text's buffer of iCapacity bytes, the NUL included.
constexpr int ReservedText(int iCapacity) { return Reserved(iCapacity, s_iExactText, 1); }
} // namespace bedplate_private

#endif
