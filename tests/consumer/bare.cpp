#include "cstring.h"
#include "exception.h"
#include <bedplate/bedplate.h> // both names are good at once

int main() { return CString("bare").GetLength() - 4; }
