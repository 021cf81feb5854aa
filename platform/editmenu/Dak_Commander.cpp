#include "Dak_Commander.h"

#include "Dak_EditMenu.h"

Dak_Commander::~Dak_Commander()
{
    // Only an existing menu can remember this commander; do not create one
    // (there may be no QApplication any more).
    if (Dak_EditMenu* menu = Dak_EditMenu::existingInstance())
        menu->forgetCommander(this);
}
