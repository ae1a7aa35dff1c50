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

/// Returns how many units are really allocated for a buffer of iCapacity: exactly as many up to iExact, and then the next
/// size of a series in which each is at most one eighth more than the one before. Growing to a capacity that the same
/// allocation holds takes no new buffer then; large arrays and texts, which grow by small steps, would spend their time
/// copying otherwise. It depends on the capacity alone, so no member has to remember it.
constexpr std::int64_t Reserved(int iCapacity, int iExact)
{
    if (iCapacity <= iExact)
        return iCapacity;
    // From one power of two to the next in six steps, in units of a 1,024th of the power.
    constexpr int aiSteps[] = {1152, 1296, 1458, 1640, 1845};
    const int iPower        = 31 - __builtin_clz(static_cast<unsigned>(iCapacity - 1));
    for (int iStep : aiSteps)
    {
        const std::int64_t iSize = (std::int64_t{iStep} << iPower) >> 10;
        if (iCapacity <= iSize)
            return iSize;
    }
    return std::int64_t{2} << iPower;
}

static_assert(Reserved(8192, 8192) == 8192 && Reserved(8193, 8192) == 9216 && Reserved(9216, 8192) == 9216 &&
                  Reserved(9217, 8192) == 10368 && Reserved(16384, 8192) == 16384 &&
                  Reserved(16385, 8192) == 18432 && Reserved(INT_MAX, 8192) == std::int64_t{INT_MAX} + 1,
              "a reserved size reserves itself");

/// Up to these sizes, allocations are exact.
constexpr int s_iExactSlots = 8192;
constexpr int s_iExactText  = 4096 + 1;

/// Returns how many slots are really allocated for an array's buffer of iCapacity slots.
constexpr std::int64_t ReservedSlots(int iCapacity) { return Reserved(iCapacity, s_iExactSlots); }

/// Returns how many bytes are really allocated for a text's buffer of iCapacity bytes, the NUL included.
constexpr std::int64_t ReservedText(int iCapacity) { return Reserved(iCapacity, s_iExactText); }
} // namespace bedplate_private

#endif
