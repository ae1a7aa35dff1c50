// CStream: an append-only buffer of bytes that collects a text, typically line by line.
//
//     CStream stream;
//     stream.AppendLine("first");
//     stream.AppendLine(CFormat("%d lines", 2));
//     fwrite(stream.ToStr(), 1, static_cast<size_t>(stream.GetLength()), stdout);
//     // first
//     // 2 lines
//
// A stream differs from a CString in three ways: it takes its memory from the C allocator, it grows in steps of a
// fixed size, and it reports most failures by return values. The content may hold NULs of its own; a NUL follows it.
//
// A pointer from ToStr() or GetBuffer() dies with the stream, and whenever it grows or GetBuffer is called. A stream is
// not copied. Several threads may read it at a time; one that changes it must be alone with it.
#ifndef BEDPLATE_CSTREAM_H
#define BEDPLATE_CSTREAM_H

#include "cstring.h"

class BEDPLATE_API CStream
{
public:
    /// Makes an empty stream with iInitSize zero bytes, or without a buffer for 0 or less. iGrowSize is the step by
    /// which it grows; 0 or less means 512.
    ///   Throws    code 0, "(CStream) Out of memory".
    explicit CStream(int iInitSize = 0, int iGrowSize = 0);

    /// Releases the buffer.
    ~CStream();

    CStream(const CStream&)            = delete;
    CStream& operator=(const CStream&) = delete;

    /// Takes over all that streamOther is and holds, pointers too. That is left empty, without a buffer.
    CStream(CStream&& streamOther) noexcept;

    /// Releases the buffer, and takes over as above. Moving a stream into itself changes nothing.
    CStream& operator=(CStream&& streamOther) noexcept;

    /// Has every operation that runs out of memory throw code 0, "(CStream) Out of memory", in place of returning -1 or
    /// null, so that nobody has to look at results; with false, they return it again. The stream is left as they say,
    /// except that AppendLine appends either all of its line or nothing.
    void ThrowOnFailure(bool bThrow = true);

    /// Returns the content, never null, with a NUL behind it.
    BEDPLATE_INLINE const char* ToStr() const { return m_pszBuffer != nullptr ? m_pszBuffer : ""; }

    /// Returns the length of the content in bytes.
    BEDPLATE_INLINE int GetLength() const { return m_iLength; }

    /// Returns the capacity in bytes, 0 without a buffer.
    BEDPLATE_INLINE int GetAllocSize() const { return m_iAllocSize; }

    /// Empties the stream and sets its whole buffer to zero; the capacity stays.
    void Clear();

    /// Hands out an empty buffer of at least iCount zero bytes, the NUL's included, for the caller to write into;
    /// ReleaseBuffer then sets the length. The content is gone. A buffer that is large enough is kept.
    ///   Returns   the buffer; null when it cannot be had, the stream then having none, and when there is none and
    ///             iCount is 0 or less.
    char* GetBuffer(int iCount);

    /// Sets the length after the caller wrote into the buffer, and a NUL there: to iCount, cut to the capacity less
    /// one; to that of the NUL-terminated text in the buffer for a negative iCount; to 0 without a buffer.
    void ReleaseBuffer(int iCount);

    /// Appends iCount bytes, which may be the stream's own. A null pointer or a count of 0 or less appends nothing.
    /// The capacity grows by as few whole steps as leave room for the content and its NUL.
    ///   Returns   0; -1 when the buffer cannot grow, also beyond INT_MAX bytes, and nothing changes.
    ///   Cost      O(iCount) on average, as far as the C allocator enlarges blocks in place.
    ///   Pointers  die when the buffer grows.
    ///   Example   CStream(100, 10): 150 bytes -> length 150, capacity 160
    int AppendData(const char* pszData, int iCount);

    /// Appends all strText.GetLength() bytes.
    int AppendData(const CString& strText);

    /// Appends all of strText and then, whatever became of that, a line feed.
    ///   Returns   what appending the text returned.
    int AppendLine(const CString& strText);

    /// The same for a text; a null one counts as empty.
    int AppendLine(const char* pszText);

    /// Appends a byte, which may be NUL.
    ///   Returns   0; -1 as AppendData.
    BEDPLATE_INLINE int AppendChar(char ch)
    {
        if (m_iAllocSize - m_iLength < 2)
            return AppendData(&ch, 1);
        m_pszBuffer[m_iLength]   = ch;
        m_pszBuffer[++m_iLength] = '\0';
        return 0;
    }

    /// Appends what CFormat makes of the format and the arguments, which may point into this stream. A null or rejected
    /// format appends nothing.
    ///   Returns   0, -1 for a rejected format; -1 when the buffer cannot grow, or there is no memory for the text, and
    ///             nothing changes.
    ///   Example   AppendFormat("%d rows\n", 3) -> 0, "3 rows\n"
    int AppendFormat(const char* pszFormat, ...) BEDPLATE_PRINTF(2, 3);
    template <class... TArguments, class = bedplate_private::AnyObject<TArguments...>>
    int AppendFormat(const char* pszFormat, const TArguments&... arguments) = delete;

private:
    friend class bedplate_private::CStreamLine;
    friend struct bedplate_private::LayoutCheck;

    BEDPLATE_LOCAL bool IsThrowing() const { return m_iGrowSize < 0; }
    BEDPLATE_LOCAL int Fail() const;
    BEDPLATE_LOCAL bool Grow(long long iNeeded);
    BEDPLATE_LOCAL bool Append(const char* pszData, int iCount);
    BEDPLATE_LOCAL int AppendLine(const char* pszText, int iCount);

    int m_iLength;
    int m_iAllocSize;
    int m_iGrowSize; // below 0 in a stream that throws
    char* m_pszBuffer;
};

#endif
