// CTime for the programs on 32-bit systems whose time_t has 64 bits.
#include "dates/wide_time.h"

#ifndef __LP64__
#include "dates/time_design.h"
#endif
