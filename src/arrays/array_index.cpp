// What the arrays throw for an index out of bounds.
#include "api.h"
#include "exception.h"

namespace bedplate_private
{
void ThrowIndex(const char* pszOperation, int iIndex, int iSize, const char* pszIndex)
{
    throw CException(0, "%s : Invalid %s(%d:%d)", pszOperation, pszIndex, iSize - 1, iIndex);
}

void ThrowEmpty(const char* pszOperation) { throw CException(0, "%s : Empty", pszOperation); }
} // namespace bedplate_private
