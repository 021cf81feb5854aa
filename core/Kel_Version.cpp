#include "Kel_Version.h"

const char* Kel_Version()
{
    return "0.1.0";
}
