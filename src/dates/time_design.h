// CTime's operations. The units that compile them, one for each width of time_t on 32-bit systems, include this file and
// nothing else does: the class means another type in each.
#ifndef BEDPLATE_TIME_DESIGN_H
#define BEDPLATE_TIME_DESIGN_H

#include "cdate.h"

#include <cstddef>

namespace bedplate_private
{
/// Returns pszFormat, null counting as empty, with its letters replaced by the fields of a moment.
CString FormatTime(const char* pszFormat, const struct tm& tmTime, int iMicroseconds);
} // namespace bedplate_private

CTime::CTime() : m_tvTime(), m_tmTime(), m_bSet(false) {}

CTime::~CTime()
{
    m_bSet = false;
    // The compiler would drop a store into an object that ends here, were it not for a reader that it cannot see.
    __asm__ volatile("" : : "r"(this) : "memory");
}

void CTime::SetAsNow()
{
    struct timeval tvNow = {};
    (void)gettimeofday(&tvNow, nullptr);
    Set(tvNow);
}

void CTime::Set(const struct timeval& tvTime)
{
    m_tvTime = tvTime;
    m_tmTime = {};
    (void)localtime_r(&m_tvTime.tv_sec, &m_tmTime);
    m_bSet = true;
}

CString CTime::ToFmtStr(const char* pszFormat) const
{
    return bedplate_private::FormatTime(pszFormat, m_tmTime, static_cast<int>(m_tvTime.tv_usec));
}

CString CTime::GetTimeStamp(const char* pszFormat)
{
    CTime timeNow;
    timeNow.SetAsNow();
    return timeNow.ToFmtStr(pszFormat);
}

CString CTime::Repr() const
{
    if (!m_bSet)
        return CString("<CTime:unset>");
    return ToFmtStr("h:m:s.u");
}

#endif
