// Printing by a printf-style format, for the two operations of the string unit that offer it.
#ifndef BEDPLATE_PRINTER_H
#define BEDPLATE_PRINTER_H

#include "cstring.h"

#include <climits>
#include <cstdarg>
#include <cstdint>

namespace bedplate_private
{
/// What a format and its arguments come to: its length is known before there is a buffer for it.
///
/// Plain conversions (%d %i %u %x %X %c %s %f %%, of int, long, long long and size_t, with width, precision and the
/// flags - and 0) are taken apart here into the pieces of the result. What is short gathers in one piece; long texts are
/// copied once, into their place.
/// A format with anything else goes to vsnprintf as a whole, and so does one that vsnprintf would reject: the result is
/// its own in any case.
class CPrinter
{
public:
    /// The arguments, and what they point to, must outlive the printer. Does not allocate.
    CPrinter(const char* pszFormat, va_list args);
    ~CPrinter() { va_end(m_args); }

    CPrinter(const CPrinter&)            = delete;
    CPrinter& operator=(const CPrinter&) = delete;

    /// Returns what vsnprintf returns: the length, printed NULs included, or a negative number.
    int GetPrinted() const { return m_iPrinted; }

    /// Returns the length up to the first NUL that is printed; GetPrinted() while that is not known.
    int GetTextSize() const { return m_iTextSize; }

    /// Tells whether Write may read the iSize bytes at pszBytes: an argument's, of which it has no copy.
    bool MayRead(const char* pszBytes, int iSize) const;

    /// Writes what was printed and a NUL into iCapacity bytes, which hold the text at least; GetTextSize() is then known.
    /// Returns whether that worked: vsnprintf may lack the memory for it.
    bool Write(char* pszTo, int iCapacity);

private:
    /// Bytes of the result: those at m_pszBytes or, where that is null, m_chFill over and over.
    struct CPiece
    {
        const char* m_pszBytes;
        int m_iCount;
        char m_chFill;
    };

    /// A conversion: what stands between a percent sign and the letter that it ends with, and that.
    struct CSpec
    {
        bool m_bLeft;
        bool m_bZero;
        int m_iWidth;
        int m_iPrecision; // -1 for none
        char m_chLength;  // 'l', 'L' for ll, 'z', or NUL
        char m_chType;
    };

    void PrintTrial();

    // Each of these returns false for what is better left to vsnprintf.
    bool Collect();
    bool ConvertPlain(char chType);
    bool ParseSpec(const char*& psz, CSpec& spec);
    bool ParseCount(const char*& psz, int& iCount);
    bool Convert(const CSpec& spec);
    bool ConvertSigned(const CSpec& spec);
    bool ConvertUnsigned(const CSpec& spec);
    bool ConvertText(const CSpec& spec);
    bool ConvertChar(const CSpec& spec);
    bool ConvertDouble(const CSpec& spec);
    template <class TInt>
    bool AddInteger(const CSpec& spec, TInt iValue, int iBase);
    bool AddNumber(const CSpec& spec, int iCount);
    bool AddPadded(const CSpec& spec, const char* pszBytes, int iCount);
    bool AddFill(char chFill, int iCount, int iBehind = 0);
    bool AddBytes(const char* pszBytes, std::int64_t iCount);
    bool AddPiece(const char* pszBytes, std::int64_t iCount, char chFill);
    bool FinishGathering();

    // Where the next bytes gather, how many there may be, and that some have been put there.
    char* Gathering() { return m_szScratch + m_iGathered; }
    int Space() const { return s_iScratch - m_iGathered; }
    void AddGathered(int iCount) { m_iGathered += iCount; }

    static constexpr int s_iMaxPieces = 32;
    static constexpr int s_iScratch   = 1024;
    static constexpr int s_iShort     = 64;
    static constexpr int s_iMaxWidth =
        INT_MAX - 512; // from which on no capacity that Format has is large enough

    const char* m_pszFormat;
    va_list m_args;
    va_list m_next; // the arguments that have not been converted yet
    int m_iPrinted  = 0;
    int m_iTextSize = 0;
    int m_iPieces   = 0; // -1 when vsnprintf printed
    int m_iGathered = 0; // bytes of scratch memory, the first m_iInPieces of them in pieces
    int m_iInPieces = 0;
    bool m_bTooLong = false; // no int holds the length
    CPiece m_aPieces[s_iMaxPieces];
    char m_szScratch[s_iScratch]; // what has gathered, or the beginning of what vsnprintf printed
};

/// Returns what CFormat does of what was printed.
CString PrintedText(CPrinter& printer);
} // namespace bedplate_private

#endif
