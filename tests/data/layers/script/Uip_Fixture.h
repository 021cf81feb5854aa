// A script header.
#include "Kel_Fixture.h"
