// Allocation for the string and string-array units, whose failures are reported as code -11 with the place and the
// expression that failed.
#ifndef BEDPLATE_ALLOCATION_H
#define BEDPLATE_ALLOCATION_H

#include "exception.h"

#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>

namespace bedplate_private
{
/// Throws the code -11 record. Only the last component of pszFile is shown: where the library was built is
/// nobody's business.
[[noreturn, gnu::cold, gnu::noinline]] inline void
ThrowAllocationFailure(const char* pszExpression, const char* pszReason, const char* pszFile, int iLine)
{
    const char* pszSlash = strrchr(pszFile, '/');
    throw CException(-11, "at %s(%d lines), (new %s) failed(%s)", pszSlash ? pszSlash + 1 : pszFile, iLine,
                     pszExpression, pszReason);
}

/// Throws the code -11 record for memory that there cannot be.
[[noreturn, gnu::cold, gnu::noinline]] inline void
ThrowBadAlloc(const char* pszExpression, const char* pszFile = __builtin_FILE(), int iLine = __builtin_LINE())
{
    ThrowAllocationFailure(pszExpression, std::bad_alloc().what(), pszFile, iLine);
}

/// Returns new TElem[iCount]. The default arguments take the caller's place, so each call is its own site.
template <class TElem>
TElem* NewArray(std::int64_t iCount, const char* pszExpression, const char* pszFile = __builtin_FILE(),
                int iLine = __builtin_LINE())
{
    try
    {
        return new TElem[static_cast<std::size_t>(iCount)];
    }
    catch (const std::bad_alloc& e)
    {
        ThrowAllocationFailure(pszExpression, e.what(), pszFile, iLine);
    }
}

/// Returns iSize as an int. A size that no int holds counts as a failed allocation; it is called before anything
/// is released.
inline int CheckSize(std::int64_t iSize, const char* pszExpression, const char* pszFile = __builtin_FILE(),
                     int iLine = __builtin_LINE())
{
    if (iSize > INT_MAX)
        ThrowBadAlloc(pszExpression, pszFile, iLine);
    return static_cast<int>(iSize);
}
} // namespace bedplate_private

#endif
