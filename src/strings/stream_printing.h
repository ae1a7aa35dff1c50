// Printing into a stream, for the units that list what they hold.
#ifndef BEDPLATE_STREAM_PRINTING_H
#define BEDPLATE_STREAM_PRINTING_H

#include "cstream.h"
#include "strings/text_builder.h"

#include <charconv>
#include <cstddef>
#include <string_view>

namespace bedplate_private
{
/// Lines in the making, one after the other; as long as they are short, they take no memory of their own.
class CStreamLine
{
public:
    CStreamLine& operator<<(std::string_view svText)
    {
        m_text.Append(svText);
        return *this;
    }

    CStreamLine& operator<<(int iNumber)
    {
        constexpr std::size_t iMaxDigits = 11;
        char* psz                        = m_text.Room(iMaxDigits);
        m_text.Advance(static_cast<std::size_t>(std::to_chars(psz, psz + iMaxDigits, iNumber).ptr - psz));
        return *this;
    }

    /// Returns the text of the line, for what writes into it.
    CTextBuilder& GetText() { return m_text; }

    /// Does what stream.AppendLine of the line would, and begins the next one.
    void AppendTo(CStream& stream)
    {
        const int iSize = m_text.GetSize();
        m_text.Append("\n");
        if (stream.AppendData(m_text.GetText(), iSize + 1) != 0) // there may still be memory for a part of it
        {
            stream.AppendData(m_text.GetText(), iSize);
            stream.AppendData("\n", 1);
        }
        m_text.Clear();
    }

private:
    CTextBuilder m_text;
};
} // namespace bedplate_private

#endif
