// How the C library writes and reads doubles at the moment.
#ifndef BEDPLATE_NUMBER_LOCALE_H
#define BEDPLATE_NUMBER_LOCALE_H

#include <cfenv>
#include <langinfo.h>

namespace bedplate_private
{
/// Tells whether the decimal point is "." and rounding goes to the nearest. What is faster than the C library knows nothing
/// else.
inline bool AreNumbersPlain()
{
    const char* pszPoint = nl_langinfo(RADIXCHAR);
    return pszPoint[0] == '.' && pszPoint[1] == '\0' && fegetround() == FE_TONEAREST;
}
} // namespace bedplate_private

#endif
