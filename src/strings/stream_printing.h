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
/// A line in the making; a short one takes no memory of its own.
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

    /// Does what stream.AppendLine of the line would.
    void AppendTo(CStream& stream) const
    {
        stream.AppendData(m_text.GetText(), m_text.GetSize());
        stream.AppendData("\n", 1);
    }

private:
    CTextBuilder m_text;
};
} // namespace bedplate_private

#endif
