// Everything that Bedplate offers.
#ifndef BEDPLATE_BEDPLATE_H
#define BEDPLATE_BEDPLATE_H

#include "bool_array.h"
#include "cdate.h"
#include "cdbl.h"
#include "cint.h"
#include "cint64.h"
#include "cstream.h"
#include "cstring.h"
#include "date_array.h"
#include "dbl_array.h"
#include "dbl_hash.h"
#include "exception.h"
#include "int_array.h"
#include "int_hash.h"
#include "ptr_array.h"
#include "ptr_hash.h"
#include "str_array.h"
#include "str_hash.h"

#endif
