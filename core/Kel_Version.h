#ifndef KEL_VERSION_H
#define KEL_VERSION_H

#include "kelcore_export.h"

// The version of the KelCore library the application runs against ("major.minor.patch").
KELCORE_EXPORT const char* Kel_Version();

#endif
