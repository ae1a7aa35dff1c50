#include "cint.h"

#include "numbers/int_text.h"

static_assert(sizeof(CInt) == sizeof(int), "the layout is part of the ABI");

CInt::CInt(int iValue) : m_iValue(iValue) {}

CString CInt::ToFmtStr(bool bGroup) const { return bedplate_private::IntText(m_iValue, bGroup); }
