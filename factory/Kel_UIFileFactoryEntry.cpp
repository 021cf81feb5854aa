#include "Kel_UIFileFactoryEntry.h"

#include "Kel_CreateWidgetFromUILayout.h"
#include "Kel_QtWidgetFactoryRegistry.h"

Kel_UIFileFactoryEntry::Kel_UIFileFactoryEntry(const QString& formName) : mFormName(formName)
{
    Kel_QtWidgetFactoryRegistry::registerEntry(formName, this);
}

Kel_UIFileFactoryEntry::~Kel_UIFileFactoryEntry() = default;

bool Kel_UIFileFactoryEntry::runCustomEditor(QWidget*, QWidget*, QStringList*, QList<QVariant>*) const
{
    return false;
}

bool Kel_UIFileFactoryEntry::hasCustomEditor()
{
    return false;
}

bool Kel_UIFileFactoryEntry::isContainer()
{
    return false;
}

QString Kel_UIFileFactoryEntry::getWhatsThis()
{
    return mFormName + QStringLiteral(".ui file include");
}

QString Kel_UIFileFactoryEntry::getToolTip()
{
    return getWhatsThis();
}

QString Kel_UIFileFactoryEntry::getIncludeFile()
{
    return QString();
}

QWidget* Kel_UIFileFactoryEntry::create(QWidget* parent, const QString& name, bool)
{
    return Kel_CreateWidgetFromUILayout(mFormName, parent, name.toLocal8Bit().constData(), true);
}
