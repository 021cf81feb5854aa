#include "Kel_WhatsThis.h"

#include <QVariant>
#include <QWidget>

namespace {
const char* const kNameProperty = "kelWhatsThisName";
}

void Kel_WhatsThis::setBestWhatsThisName(QWidget* widget, const char* name)
{
    // Only help lookup sees the name; the what's-this text that users read
    // stays whatever the form or the owner gives the widget.
    if (widget && name && *name)
        widget->setProperty(kNameProperty, QString::fromLatin1(name));
}

QString Kel_WhatsThis::whatsThisName(const QWidget* widget)
{
    return widget ? widget->property(kNameProperty).toString() : QString();
}
