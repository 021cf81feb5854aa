// A core file that reaches up into the script language.
#include "Uip_Fixture.h"
#include "Kel_Fixture.h"
#include <QString>
