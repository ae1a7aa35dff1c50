// Widths near INT_MAX in printf formats. vsnprintf takes seconds to count the padding that such a width asks for, only for
// the result to be too large for a buffer; it is seen here beforehand.
#ifndef BEDPLATE_PRINT_LIMIT_H
#define BEDPLATE_PRINT_LIMIT_H

#include <climits>
#include <cstdarg>
#include <cstdlib>
#include <cstring>

namespace bedplate_private
{
/// Reads a format with the arguments that it names.
class CPrintLimit
{
public:
    CPrintLimit(const char* pszFormat, va_list args) : m_pszNext(pszFormat) { va_copy(m_args, args); }
    ~CPrintLimit() { va_end(m_args); }

    CPrintLimit(const CPrintLimit&)            = delete;
    CPrintLimit& operator=(const CPrintLimit&) = delete;

    /// Tells whether a conversion alone prints iLimit characters or more. A format with numbered arguments, or with a
    /// conversion that is not the C library's, is not read further.
    bool IsReached(long long iLimit)
    {
        while ((m_pszNext = strchr(m_pszNext, '%')) != nullptr)
        {
            ++m_pszNext;
            m_pszNext += strspn(m_pszNext, "-+ #0'I");
            const long long iWidth     = llabs(ReadNumber());
            const long long iPrecision = ReadPrecision();
            const bool bWide           = strncmp(m_pszNext, "ll", 2) == 0 || IsOneOf("Lqj");
            const bool bLong           = !bWide && IsOneOf("lzt");
            m_pszNext += strspn(m_pszNext, "hlLqjzt");
            const char chKind = *m_pszNext;
            if (chKind == '\0' || !SkipArgument(chKind, bLong, bWide))
                return false;
            if (iWidth >= iLimit || (iPrecision >= iLimit && strchr("diouxXfFeEaA", chKind) != nullptr))
                return true;
            ++m_pszNext;
        }
        return false;
    }

private:
    long long ReadNumber()
    {
        if (*m_pszNext == '*')
        {
            ++m_pszNext;
            return va_arg(m_args, int);
        }
        char* pszEnd = nullptr;
        const long long iNumber =
            *m_pszNext >= '1' && *m_pszNext <= '9' ? strtoll(m_pszNext, &pszEnd, 10) : 0;
        if (pszEnd != nullptr)
            m_pszNext = pszEnd;
        return iNumber > INT_MAX ? 0 : iNumber; // vsnprintf rejects larger ones at once
    }

    bool IsOneOf(const char* pszSet) const
    {
        return *m_pszNext != '\0' && strchr(pszSet, *m_pszNext) != nullptr;
    }

    long long ReadPrecision()
    {
        if (*m_pszNext != '.')
            return 0;
        ++m_pszNext;
        m_pszNext += strspn(m_pszNext, "0");
        return ReadNumber();
    }

    /// Passes over a conversion's argument, if it has one; false for a conversion that is not known.
    bool SkipArgument(char chKind, bool bLong, bool bWide)
    {
        if (strchr("%m", chKind) != nullptr)
            return true;
        if (strchr("spnS", chKind) != nullptr)
            (void)va_arg(m_args, void*);
        else if (strchr("eEfFgGaA", chKind) != nullptr)
            bWide ? (void)va_arg(m_args, long double) : (void)va_arg(m_args, double);
        else if (strchr("diouxXcC", chKind) == nullptr)
            return false;
        else if (bWide)
            (void)va_arg(m_args, long long);
        else
            bLong ? (void)va_arg(m_args, long) : (void)va_arg(m_args, int);
        return true;
    }

    const char* m_pszNext;
    va_list m_args;
};

/// Tells whether what a format prints has iLimit characters or more because of one width or precision. Formats that
/// cannot are told apart without being read: a number that large has these digits or comes from an argument.
inline bool IsPrintLimitReached(const char* pszFormat, va_list args, int iLimit)
{
    if (strchr(pszFormat, '*') == nullptr && strstr(pszFormat, "2147483") == nullptr)
        return false;
    return CPrintLimit(pszFormat, args).IsReached(iLimit);
}
} // namespace bedplate_private

#endif
