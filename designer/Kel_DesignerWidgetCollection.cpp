#include "Kel_DesignerWidgetCollection.h"

#include "Kel_DesignerCustomWidget.h"
#include "Kel_QtWidgetFactoryRegistry.h"

Kel_DesignerWidgetCollection::Kel_DesignerWidgetCollection(QObject* parent) : QObject(parent)
{
    for (const QString& key : Kel_QtWidgetFactoryRegistry::getAllKeys()) {
        if (Kel_FactoryEntryInterface* entry = Kel_QtWidgetFactoryRegistry::getEntry(key))
            mWidgets.append(new Kel_DesignerCustomWidget(key, entry, this));
    }
}

QList<QDesignerCustomWidgetInterface*> Kel_DesignerWidgetCollection::customWidgets() const
{
    return mWidgets;
}
