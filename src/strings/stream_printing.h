// Printing into a stream, for the units that list what they hold.
#ifndef BEDPLATE_STREAM_PRINTING_H
#define BEDPLATE_STREAM_PRINTING_H

#include "cstream.h"

namespace bedplate_private
{
/// Does stream.AppendLine(CFormat(pszFormat, ...)); short lines take no memory of their own.
void PrintLine(CStream& stream, const char* pszFormat, ...) BEDPLATE_PRINTF(2, 3);
} // namespace bedplate_private

#endif
