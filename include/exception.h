// CException: the one type that the library throws.
//
//     try { strName.ReleaseBuffer(99); }
//     catch (const CException& e) { printf("%d %s\n", e.GetCode(), e.GetText()); }
//     // 0 CString::ReleaseBuffer - out of index
//
// Two codes are in use:
//
//       0   a check of the library's own failed: a bad index, an empty container, a null text, or memory ran out
//           in a class that reports it with a fixed text. The text names the class and the operation.
//     -11   an allocation failed in CString, CFormat or CStrArray:
//           "at <file>(<line> lines), (new <expression>) failed(<reason>)".
//
// A record is a plain value of 1028 bytes that owns no memory. Building, copying and reading one never fails. It is
// no std::exception.
#ifndef BEDPLATE_EXCEPTION_H
#define BEDPLATE_EXCEPTION_H

#include "api.h"

class BEDPLATE_API CException
{
public:
    /// Makes a record with code 0 and the empty text.
    CException();

    /// Makes a record with iCode and the text formatted as by vsnprintf, cut to 1022 characters.
    /// A null or rejected format leaves the text as far as it was written, at least empty.
    ///   Example   CException(0, "row %d", 7).GetText() -> "row 7"
    CException(int iCode, const char* pszFormat, ...) BEDPLATE_PRINTF(3, 4);
    template <class... TArguments, class = bedplate_private::AnyObject<TArguments...>>
    CException(int iCode, const char* pszFormat, const TArguments&... arguments) = delete;

    /// Makes a record with a copy of pszText, cut to 1023 characters, and iCode. A null text counts as empty.
    CException(const char* pszText, int iCode);

    /// Returns the NUL-terminated text, never null. The pointer lives as long as the record.
    BEDPLATE_INLINE const char* GetText() const { return m_szText; }

    /// Returns the code.
    BEDPLATE_INLINE int GetCode() const { return m_iCode; }

private:
    friend struct bedplate_private::LayoutCheck;

    int m_iCode;
    char m_szText[1024];
};

#endif
