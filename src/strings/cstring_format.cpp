// Printing into a CString.
#include "cstring.h"

#include "base/allocation.h"
#include "strings/printer.h"
#include "strings/string_design.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <memory>

using bedplate_private::CPrinter;
using bedplate_private::StringDesign;

namespace
{
/// Format's capacities are its multiples plus one.
constexpr int s_iFormatStep = 512;

/// Returns the capacity of the string that CFormat makes of iSize characters.
int PrintedCapacity(std::uint64_t iSize)
{
    return std::max(StringDesign::CheckSize(iSize + 1, "char[iLen]"), StringDesign::s_iEmptySize);
}
} // namespace

// vsnprintf works in memory of its own for some numbers; running out of it is a failed allocation like any other.

int CString::Format(const char* pszFormat, ...)
{
    if (pszFormat == nullptr)
    {
        MakeEmptyString();
        return 0;
    }
    va_list args;
    va_start(args, pszFormat);
    CPrinter printer(pszFormat, args);
    va_end(args);
    const int iPrinted = printer.GetPrinted();
    if (iPrinted < 0)
    {
        if (errno == ENOMEM)
            StringDesign::ThrowNoMemory();
        MakeEmptyString();
        return -1;
    }
    const std::int64_t iSteps = std::int64_t{iPrinted} / s_iFormatStep + 1;
    const int iCapacity = StringDesign::CheckSize(static_cast<std::uint64_t>(iSteps * s_iFormatStep + 1));

    // The arguments may point into the old text, which lives until the new one is printed then.
    std::unique_ptr<char[]> pszOld(m_pszData);
    if (m_pszData != nullptr && !printer.MayRead(m_pszData, m_iBufferSize))
        pszOld.reset();
    m_pszData = nullptr;
    StringDesign::ReplaceBuffer(*this, iCapacity);
    if (!printer.Write(m_pszData, iCapacity))
    {
        StringDesign::DropBuffer(*this, iCapacity);
        StringDesign::ThrowNoMemory();
    }
    // Behind a printed NUL, too, there are zeros only from the end of what was printed on.
    StringDesign::EndText(*this, iPrinted);
    m_iSize = printer.GetTextSize();
    return iPrinted;
}

CString CFormat(const char* pszFormat, ...)
{
    if (pszFormat == nullptr)
        return CString();
    va_list args;
    va_start(args, pszFormat);
    CPrinter printer(pszFormat, args);
    va_end(args);
    return bedplate_private::PrintedText(printer);
}

CString StringDesign::FromPrinted(std::string_view svText)
{
    CString strText = WithoutBuffer();
    Renew(strText, svText, PrintedCapacity(svText.size()), "char[iLen]");
    return strText;
}

CString bedplate_private::PrintedText(CPrinter& printer)
{
    if (printer.GetPrinted() < 0)
    {
        if (errno == ENOMEM)
            StringDesign::ThrowNoMemory("char[iLen]");
        return CString();
    }

    const int iSize = printer.GetTextSize();
    CString strText = StringDesign::WithoutBuffer();
    StringDesign::ReplaceBuffer(strText, PrintedCapacity(static_cast<unsigned>(iSize)), "char[iLen]");
    if (!printer.Write(const_cast<char*>(strText.ToStr()), strText.GetBufferSize()))
        StringDesign::ThrowNoMemory("char[iLen]");
    // A printed NUL ends the text, and the capacity goes by the text.
    if (printer.GetTextSize() != iSize)
        return StringDesign::FromPrinted({strText.ToStr(), static_cast<std::size_t>(printer.GetTextSize())});
    StringDesign::EndText(strText, iSize);
    return strText;
}
