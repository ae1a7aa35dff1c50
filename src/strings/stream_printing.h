// Printing into a stream, for the units that list what they hold.
#ifndef BEDPLATE_STREAM_PRINTING_H
#define BEDPLATE_STREAM_PRINTING_H

#include "cstream.h"
#include "strings/text_builder.h"

namespace bedplate_private
{
/// Lines in the making, one after the other; as long as they are short, they take no memory of their own.
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

    /// Returns the text of the line, for what writes into it.
    CTextBuilder& GetText() { return m_text; }

    /// Does what stream.AppendLine of the line would, and begins the next one.
    void AppendTo(CStream& stream)
    {
        stream.AppendLine(m_text.GetText(), m_text.GetSize());
        m_text.Clear();
    }

private:
    CTextBuilder m_text;
};
} // namespace bedplate_private

#endif
