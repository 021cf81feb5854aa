#ifndef KEL_VERSION_H
#define KEL_VERSION_H

// The version of the KelCore library the application runs against ("major.minor.patch").
const char* Kel_Version();

#endif
