// CInt64: as CInt, for numbers of 64 bits.
//
//     CInt64(3000000000LL).ToFmtStr() -> "3,000,000,000"
#ifndef BEDPLATE_CINT64_H
#define BEDPLATE_CINT64_H

#include "cstring.h"

class BEDPLATE_API CInt64
{
public:
    /// Makes one with iValue.
    CInt64(long long iValue = 0);

    /// Returns the value.
    BEDPLATE_INLINE long long GetValue() const { return m_iValue; }

    /// Sets the value.
    BEDPLATE_INLINE void SetValue(long long iValue) { m_iValue = iValue; }

    /// Returns the value as CInt::ToFmtStr does.
    ///   Throws    code -11 as CString.
    ///   Example   -9223372036854775807 -> "-9,223,372,036,854,775,807"
    CString ToFmtStr(bool bGroup = true) const;

private:
    long long m_iValue;
};

#endif
