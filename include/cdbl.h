// CDbl: a double that prints with thousands separators and a chosen number of decimals.
//
//     CDbl(1234567.891).ToFmtStr() -> "1,234,567.89"
#ifndef BEDPLATE_CDBL_H
#define BEDPLATE_CDBL_H

#include "cstring.h"

class BEDPLATE_API CDbl
{
public:
    /// Makes one with dValue.
    CDbl(double dValue = 0.0);

    /// Returns the value.
    BEDPLATE_INLINE double GetValue() const { return m_dValue; }

    /// Sets the value.
    BEDPLATE_INLINE void SetValue(double dValue) { m_dValue = dValue; }

    /// Returns the value as "%.*f" prints it, with iDecimals decimals, at most 15, and with a comma before every third
    /// digit of the integer part from the right if bGroup is true. A negative iDecimals means -iDecimals decimals less
    /// the zeros at their end. Every finite value is printed in full. Infinities and NaNs print as the C library prints
    /// them, never grouped. A host whose locale has another decimal point than "." gets texts that are not meant for
    /// reading.
    ///   Throws    code -11 as CString.
    ///   Example   1234.5: ToFmtStr() -> "1,234.50"; ToFmtStr(-3) -> "1,234.5"; ToFmtStr(0) -> "1,234"
    CString ToFmtStr(int iDecimals = 2, bool bGroup = true) const;

private:
    friend struct bedplate_private::LayoutCheck;

    double m_dValue;
};

#endif
