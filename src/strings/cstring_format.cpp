// Printing into a CString.
#include "cstring.h"

#include "strings/printer.h"
#include "strings/string_design.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <memory>
#include <utility>

using namespace bedplate_private;

namespace
{
/// Format's capacities are its multiples plus one.
constexpr int s_iFormatStep = 512;

/// Throws if a format was not rejected, but there was no memory for it: vsnprintf needs some for a few numbers.
void CheckMemory(const CPrinter& printer, const char* pszExpression)
{
    if (printer.GetPrinted() < 0 && errno == ENOMEM)
        StringDesign::ThrowNoMemory(pszExpression);
}

/// Returns the capacity of the string that CFormat makes of iSize characters.
int PrintedCapacity(std::size_t iSize)
{
    return std::max(StringDesign::CheckSize(std::uint64_t{iSize} + 1, "char[iLen]"),
                    StringDesign::s_iEmptySize);
}
} // namespace

int CString::Format(const char* pszFormat, ...)
{
    if (pszFormat == nullptr)
    {
        MakeEmptyString();
        return 0;
    }
    CArguments args;
    va_start(args.m_list, pszFormat);
    va_start(args.m_again, pszFormat);
    CPrinter printer(pszFormat, args);
    return StringDesign::Reprint(*this, printer);
}

int CString::AppendFormat(const char* pszFormat, ...)
{
    if (pszFormat == nullptr)
        return 0;
    CArguments args;
    va_start(args.m_list, pszFormat);
    va_start(args.m_again, pszFormat);
    CPrinter printer(pszFormat, args);
    CheckMemory(printer, "char[m_iBufferSize]");
    if (printer.GetPrinted() >= 0 && !printer.IsShort())
        *this += StringDesign::FromPrinter(printer);
    else
        Append(printer.GetText(), static_cast<std::size_t>(std::max(printer.GetSize(), 0)));
    return printer.GetPrinted();
}

CString CFormat(const char* pszFormat, ...)
{
    if (pszFormat == nullptr)
        return CString();
    CArguments args;
    va_start(args.m_list, pszFormat);
    va_start(args.m_again, pszFormat);
    CPrinter printer(pszFormat, args);
    return StringDesign::FromPrinter(printer);
}

int StringDesign::Reprint(CString& strText, CPrinter& printer)
{
    CheckMemory(printer, "char[m_iBufferSize]");
    const int iPrinted = printer.GetPrinted();
    if (iPrinted < 0)
    {
        strText.MakeEmptyString();
        return -1;
    }
    const unsigned uSteps = static_cast<unsigned>(iPrinted / s_iFormatStep) + 1;
    const int iCapacity   = CheckSize(uSteps * s_iFormatStep + 1);

    // The arguments may point into the old text, so it lives until they have been read.
    const std::unique_ptr<char[]> pszOld(printer.IsShort() ? nullptr
                                                           : std::exchange(strText.m_pszData, nullptr));
    ReplaceBuffer(strText, iCapacity);
    if (!printer.Write(strText.m_pszData, iCapacity))
    {
        DropBuffer(strText, iCapacity);
        ThrowNoMemory();
    }
    EndText(strText, iPrinted);
    strText.m_iSize = printer.GetSize();
    return iPrinted;
}

CString StringDesign::FromPrinted(std::string_view svText)
{
    CString strText = WithoutBuffer();
    Renew(strText, svText, PrintedCapacity(svText.size()), "char[iLen]");
    return strText;
}

CString StringDesign::FromPrinter(CPrinter& printer)
{
    CheckMemory(printer, "char[iLen]");
    const int iPrinted = printer.GetPrinted();
    if (iPrinted < 0)
        return CString();
    if (printer.IsShort())
        return FromPrinted({printer.GetText(), static_cast<std::size_t>(printer.GetSize())});

    CString strText = WithoutBuffer();
    ReplaceBuffer(strText, PrintedCapacity(static_cast<std::size_t>(iPrinted)), "char[iLen]");
    if (!printer.Write(strText.m_pszData, strText.m_iBufferSize))
        ThrowNoMemory("char[iLen]");
    if (printer.GetSize() != iPrinted) // a NUL was printed, and the capacity goes by the text
        return FromPrinted(strText.m_pszData);
    EndText(strText, iPrinted);
    return strText;
}
