// Printing by a printf-style format, for the operations that offer it.
#ifndef BEDPLATE_PRINTER_H
#define BEDPLATE_PRINTER_H

#include <cstdarg>
#include <cstddef>
#include <cstdint>

namespace bedplate_private
{
/// The arguments behind a format, for va_start: for the printer, and once more for vsnprintf. Copying a list that has just been
/// started makes the processor wait. They are ended however the operation ends.
struct CArguments
{
    va_list m_list;
    va_list m_again;

    ~CArguments()
    {
        va_end(m_list);
        va_end(m_again);
    }
};

/// What a format and its arguments come to: its length is known before there is a buffer for it.
///
/// The usual conversions (%d %i %u %x %X %c %s %f %%, of int, long, long long and size_t, with width, precision and the
/// flags - and 0) are made here. What is short is printed into memory of the printer's own; a long text is noted, and
/// copied once, into its place. A format with anything else goes to vsnprintf as a whole, and so does one that vsnprintf
/// would reject: the result is its own in any case.
class CPrinter
{
public:
    /// The arguments, and what they point to, must outlive the printer unless IsShort(). Does not allocate.
    CPrinter(const char* pszFormat, CArguments& args);

    CPrinter(const CPrinter&)            = delete;
    CPrinter& operator=(const CPrinter&) = delete;

    /// Returns what vsnprintf returns: the length, printed NULs included, or a negative number.
    int GetPrinted() const { return m_iPrinted; }

    /// Tells whether the result is there already: GetSize() bytes at GetText(), and a NUL.
    bool IsShort() const { return m_bShort; }
    const char* GetText() const { return m_szShort; }

    /// Returns the length up to the first NUL that was printed, as soon as the result is there.
    int GetSize() const { return m_iSize; }

    /// Writes the result and a NUL into iCapacity bytes, which hold them. Returns whether that worked: vsnprintf may have no
    /// memory for what it had before.
    bool Write(char* pszTo, int iCapacity);

private:
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

    /// What is not short: the bytes at m_pszBytes or, where that is null, m_chFill over and over.
    struct CLongPiece
    {
        const char* m_pszAt; // in the short bytes
        const char* m_pszBytes;
        std::size_t m_iCount;
        char m_chFill;
    };

    void PrintByVsnprintf();

    // Each of these returns false for what is better left to vsnprintf.
    bool Print(const char* psz);
    bool PrintPlain(char chType);
    bool ParseSpec(const char*& psz, CSpec& spec);
    bool ParseCount(const char*& psz, int& iCount);
    bool Convert(const CSpec& spec);
    bool ConvertInteger(const CSpec& spec);
    bool ConvertText(const CSpec& spec);
    bool ConvertDouble(const CSpec& spec);
    template <class TInt>
    bool PutInteger(const CSpec& spec, TInt iValue, int iBase);
    bool PutNumber(const CSpec& spec, int iCount);
    bool Put(const char* pszBytes, std::size_t iCount);
    bool Fill(char chFill, int iCount, int iBehind = 0);
    bool PutLong(const char* pszBytes, std::size_t iCount, char chFill);

    std::size_t Room() const { return static_cast<std::size_t>(m_szShort + s_iShort - m_pszEnd); }

    static constexpr int s_iMostLong           = 24;
    static constexpr int s_iShort              = 1024;
    static constexpr std::size_t s_iShortPiece = 64;

    const char* m_pszFormat;
    CArguments& m_args;
    int m_iPrinted       = 0;
    int m_iSize          = 0;
    int m_iLong          = 0;    // long pieces
    bool m_bOwn          = true; // not vsnprintf's
    bool m_bShort        = true;
    char* m_pszEnd       = m_szShort; // of the short bytes
    std::int64_t m_iMore = 0;         // bytes in long pieces
    CLongPiece m_aLong[s_iMostLong];
    char m_szShort[s_iShort + 1];
};
} // namespace bedplate_private

#endif
