#include "cint.h"

#include "numbers/int_text.h"

CInt::CInt(int iValue) : m_iValue(iValue) {}

CString CInt::ToFmtStr(bool bGroup) const { return bedplate_private::IntText(m_iValue, bGroup); }
