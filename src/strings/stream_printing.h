// Printing into a stream, for the units that list what they hold.
#ifndef BEDPLATE_STREAM_PRINTING_H
#define BEDPLATE_STREAM_PRINTING_H

#include "cstream.h"
#include "strings/text_builder.h"

namespace bedplate_private
{
/// A line in the making; a short one takes no memory of its own.
class CStreamLine
{
public:
    /// Adds a text or a number.
    template <class TPiece>
    CStreamLine& operator<<(const TPiece& piece)
    {
        m_text.Append(piece);
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
