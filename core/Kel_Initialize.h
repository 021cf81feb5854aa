#ifndef KEL_INITIALIZE_H
#define KEL_INITIALIZE_H

#include "kelcore_export.h"

// One-time set-up of the library: product name, directory service and the
// resource path under which forms, images, menus, keymaps and translations
// are found. Call it once after the Qt application object exists (a
// Kel_Application does it itself); later calls do nothing. productName is
// Latin-1 text, the encoding in which Kel_Application passes it.
KELCORE_EXPORT void Kel_Initialize(const char* productName);

// Whether Kel_Initialize has run.
KELCORE_EXPORT bool Kel_IsInitialized();

#endif
