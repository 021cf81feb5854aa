#ifndef KEL_INITIALIZE_P_H
#define KEL_INITIALIZE_P_H

// Internal to the library; not installed.

// Adds a step that Kel_Initialize runs after the directory service and the
// resource path are set (at once when the library is initialised already).
// Subsystems above core/ register theirs from a static initialiser of their
// own file, so that core/ needs to know none of them. Answers true, for use
// in such an initialiser.
bool Kel_AddInitializationStep(void (*step)());

#endif
