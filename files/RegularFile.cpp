// Regular files only: the checks are per system.

#include "files/RegularFile.h"

#if defined(_WIN32)
#include "windows/RegularFile.inc"
#else
#include "unix/RegularFile.inc"
#endif
