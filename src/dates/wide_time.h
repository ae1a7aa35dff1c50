// Included before everything else, it gives a unit a time_t of 64 bits on 32-bit systems too, whatever the builder's flags
// say.
#ifndef BEDPLATE_WIDE_TIME_H
#define BEDPLATE_WIDE_TIME_H

#ifndef __LP64__
#undef _TIME_BITS
#undef _FILE_OFFSET_BITS
#define _TIME_BITS 64
#define _FILE_OFFSET_BITS 64
#endif

#endif
