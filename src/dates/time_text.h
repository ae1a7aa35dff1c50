// What CTime and CDate need of the time, independent of the width of the program's time_t.
#ifndef BEDPLATE_TIME_TEXT_H
#define BEDPLATE_TIME_TEXT_H

#include "cstring.h"

#include <time.h>

namespace bedplate_private
{
/// Breaks the current time down in the local time zone.
void GetLocalNow(struct tm& tmNow);

/// Returns pszFormat, null counting as empty, with its letters replaced by the fields of a moment.
CString FormatTime(const char* pszFormat, const struct tm& tmTime, int iMicroseconds);
} // namespace bedplate_private

#endif
