#ifndef KEL_EDITMENUTESTWINDOW_H
#define KEL_EDITMENUTESTWINDOW_H

#include "kelcore_export.h"

class QWidget;

// A small window for trying the Edit menu on the library's text widgets:
// the form "EditMenuTest" (resource path + "Forms/EditMenuTest.ui") under
// the menu bar "EditMenuTestMenubar" (a menu file holding <EditMenu/>),
// connected with the blank environment.
class KELCORE_EXPORT Kel_EditMenuTestWindow
{
public:
    // Builds, connects, shows and raises the window, which deletes itself
    // when closed; null when the form cannot be built.
    static QWidget* open();
};

#endif
