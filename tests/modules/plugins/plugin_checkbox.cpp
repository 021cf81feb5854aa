// A plug-in that makes its own bound check box.
#include "Kel_CheckBox.h"

#include <QtGlobal>

extern "C" Q_DECL_EXPORT QWidget* kelPluginMakeCheckBox(QWidget* parent, const char* checkedConnection)
{
    auto* box = new Kel_CheckBox(parent, "pluginBox");
    box->setText(QStringLiteral("From the plug-in"));
    box->setCheckedStateConnectionSpec(checkedConnection);
    return box;
}
