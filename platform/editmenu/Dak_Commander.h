#ifndef DAK_COMMANDER_H
#define DAK_COMMANDER_H

#include "kelplatform_export.h"

// Something that takes keyboard focus and can be sent commands from the
// application's menus. Destroying it makes Dak_EditMenu forget it.
class KELPLATFORM_EXPORT Dak_Commander
{
public:
    Dak_Commander() = default;
    virtual ~Dak_Commander() = 0;
    Dak_Commander(const Dak_Commander&) = delete;
    Dak_Commander& operator=(const Dak_Commander&) = delete;
};

#endif
