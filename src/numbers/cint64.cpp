#include "cint64.h"

#include "numbers/int_text.h"

CInt64::CInt64(long long iValue) : m_iValue(iValue) {}

CString CInt64::ToFmtStr(bool bGroup) const
{
    // 32-bit machines take three times as long over numbers of two words.
    const int iShort = static_cast<int>(m_iValue);
    if (iShort == m_iValue)
        return bedplate_private::IntText(iShort, bGroup);
    return bedplate_private::IntText(m_iValue, bGroup);
}
