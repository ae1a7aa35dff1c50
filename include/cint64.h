// CInt64: an integer of 64 bits that prints with thousands separators. As CInt, for numbers of 64 bits.
//
//     CInt64(-3000000000LL).ToFmtStr() -> "-3,000,000,000"
#ifndef BEDPLATE_CINT64_H
#define BEDPLATE_CINT64_H

#include "cstring.h"

class BEDPLATE_API CInt64
{
public:
    CInt64(long long iValue = 0);

    BEDPLATE_INLINE long long GetValue() const { return m_iValue; }
    BEDPLATE_INLINE void SetValue(long long iValue) { m_iValue = iValue; }

    CString ToFmtStr(bool bGroup = true) const;

private:
    friend struct bedplate_private::LayoutCheck;

    long long m_iValue;
};

#endif
