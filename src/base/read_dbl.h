// The double that a text stands for, for the units that read numbers.
#ifndef BEDPLATE_READ_DBL_H
#define BEDPLATE_READ_DBL_H

namespace bedplate_private
{
/// Does what strtod does: returns the number that the text begins with, 0.0 if it begins with none, and stores the place
/// behind it.
double ReadDbl(const char* pszText, const char** ppszEnd);
} // namespace bedplate_private

#endif
