#include "exception.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

CException::CException() : m_iCode(0), m_szText() {}

CException::CException(int iCode, const char* pszFormat, ...) : m_iCode(iCode), m_szText()
{
    if (pszFormat == nullptr)
        return;
    va_list args;
    va_start(args, pszFormat);
    // One byte less than there is room for: callers rely on a cut at 1022 characters.
    (void)vsnprintf(m_szText, sizeof m_szText - 1, pszFormat, args);
    va_end(args);
}

CException::CException(const char* pszText, int iCode) : m_iCode(iCode), m_szText()
{
    if (pszText != nullptr)
        memcpy(m_szText, pszText, strnlen(pszText, sizeof m_szText - 1));
}
