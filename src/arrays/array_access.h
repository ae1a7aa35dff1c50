// What the hash tables may do with an array besides its public operations.
#ifndef BEDPLATE_ARRAY_ACCESS_H
#define BEDPLATE_ARRAY_ACCESS_H

#include <utility>

namespace bedplate_private
{
struct ArrayAccess
{
    /// Exchanges what two arrays of a kind hold; it cannot fail.
    template <class TArray>
    static void Swap(TArray& arrLeft, TArray& arrRight)
    {
        std::swap(arrLeft.m_pData, arrRight.m_pData);
        std::swap(arrLeft.m_iSize, arrRight.m_iSize);
        std::swap(arrLeft.m_iBufferSize, arrRight.m_iBufferSize);
    }
};
} // namespace bedplate_private

#endif
