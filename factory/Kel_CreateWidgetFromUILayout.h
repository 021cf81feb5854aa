#ifndef KEL_CREATEWIDGETFROMUILAYOUT_H
#define KEL_CREATEWIDGETFROMUILAYOUT_H

#include "kelcore_export.h"

#include <QString>

class QWidget;

// Loads the form file resource path + "Forms/" + formName + ".ui" (formName
// may contain folders) with the library's widget factory and returns its top
// widget, a child of parent; with addToParentLayout it is also added to the
// parent's layout when the parent has one. The widgets come back
// unconnected: the caller connects them with Kel_ConnectionUtils::recursiveConnect.
// name is not used; the top widget keeps the object name the form gives it.
// Null when the form is missing or cannot be built, or when a form would
// embed itself.
KELCORE_EXPORT QWidget* Kel_CreateWidgetFromUILayout(const QString& formName, QWidget* parent, const char* name = nullptr,
                                      bool addToParentLayout = true);

#endif
