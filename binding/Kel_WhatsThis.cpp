#include "Kel_WhatsThis.h"

#include <QVariant>
#include <QWidget>

namespace {
const char* const kNameProperty = "kelWhatsThisName";
}

void Kel_WhatsThis::setBestWhatsThisName(QWidget* widget, const char* name)
{
    if (!widget || !name || !*name)
        return;
    const QString text = QString::fromLatin1(name);
    const QString previous = whatsThisName(widget);
    widget->setProperty(kNameProperty, text);
    // A derived class registers after its base: its name replaces the
    // base's default text, never a text that someone wrote.
    const QString current = widget->whatsThis();
    if (current.isEmpty() || current == previous)
        widget->setWhatsThis(text);
}

QString Kel_WhatsThis::whatsThisName(const QWidget* widget)
{
    return widget ? widget->property(kNameProperty).toString() : QString();
}
