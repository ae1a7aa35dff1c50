// CInt: an int that prints with thousands separators. CInt64 (cint64.h) does so for larger numbers.
//
//     CInt(1234567).ToFmtStr() -> "1,234,567"
#ifndef BEDPLATE_CINT_H
#define BEDPLATE_CINT_H

#include "cstring.h"

class BEDPLATE_API CInt
{
public:
    /// Makes one with iValue.
    CInt(int iValue = 0);

    /// No number that an int may not hold is cut to one without a word: CInt64 takes it.
    template <class TWide>
    CInt(TWide iValue, bedplate_private::WiderThanInt<TWide> = 0) = delete;

    /// Returns the value.
    BEDPLATE_INLINE int GetValue() const { return m_iValue; }

    /// Sets the value.
    BEDPLATE_INLINE void SetValue(int iValue) { m_iValue = iValue; }
    template <class TWide>
    void SetValue(TWide iValue, bedplate_private::WiderThanInt<TWide> = 0) = delete;

    /// Returns the value in decimal, with a comma before every third digit from the right if bGroup is true. The
    /// locale has no say.
    ///   Throws    code -11 as CString.
    ///   Example   -1000 -> "-1,000"; 999 -> "999"
    CString ToFmtStr(bool bGroup = true) const;

private:
    friend struct bedplate_private::LayoutCheck;

    int m_iValue;
};

#endif
