// What needs a time_t of 64 bits on 32-bit systems too: today's date, which must not end in 2038 because the program's
// own time_t does, and CTime for the programs whose time_t has 64 bits.
#ifndef __LP64__
#undef _TIME_BITS
#undef _FILE_OFFSET_BITS
#define _TIME_BITS 64
#define _FILE_OFFSET_BITS 64
#include "dates/time_design.h"
#endif

#include "dates/time_text.h"

void bedplate_private::GetLocalNow(struct tm& tmNow)
{
    const time_t tNow = time(nullptr);
    tmNow             = {};
    (void)localtime_r(&tNow, &tmNow);
}
