// How the C library writes and reads doubles at the moment.
#ifndef BEDPLATE_NUMBER_LOCALE_H
#define BEDPLATE_NUMBER_LOCALE_H

#include <fpu_control.h>
#include <langinfo.h>

namespace bedplate_private
{
/// Tells whether the C library rounds what it prints and reads to the nearest. It looks at the same word. Calling fegetround takes
/// a tenth longer to read a short number, and needs libm.
inline bool IsRoundingToNearest()
{
    fpu_control_t uControl;
    _FPU_GETCW(uControl);
    return (uControl & _FPU_RC_ZERO) == _FPU_RC_NEAREST; // rounding to zero has all the bits
}

/// Tells whether the decimal point is "." and rounding goes to the nearest. What is faster than the C library knows nothing
/// else.
inline bool AreNumbersPlain()
{
    const char* pszPoint = nl_langinfo(RADIXCHAR);
    return pszPoint[0] == '.' && pszPoint[1] == '\0' && IsRoundingToNearest();
}
} // namespace bedplate_private

#endif
