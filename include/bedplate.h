// Everything that Bedplate offers.
#ifndef BEDPLATE_BEDPLATE_H
#define BEDPLATE_BEDPLATE_H

#include "bool_array.h"
#include "cstring.h"
#include "dbl_array.h"
#include "exception.h"
#include "int_array.h"
#include "str_array.h"

#endif
