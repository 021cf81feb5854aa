#include "Kel_QtWidgetFactoryRegistry.h"

#include "Kel_FactoryEntryInterface.h"

#include <QHash>
#include <QMap>

namespace {

typedef QMap<QString, Kel_FactoryEntryInterface*> EntryTable;

EntryTable& table()
{
    // Never destroyed, like the entries it points to: entries registered from
    // static objects may still look it up during static destruction.
    static EntryTable* const entries = new EntryTable;
    return *entries;
}

// The same entries by key, for the lookup of every widget a form creates:
// a search of the ordered table compares the class name with a handful of
// keys scattered over the heap, a hash finds it in one or two places.
QHash<QString, Kel_FactoryEntryInterface*>& index()
{
    static QHash<QString, Kel_FactoryEntryInterface*>* const entries = new QHash<QString, Kel_FactoryEntryInterface*>;
    return *entries;
}

} // namespace

Kel_QtWidgetFactoryRegistry::Kel_QtWidgetFactoryRegistry(QObject* parent) : QUiLoader(parent)
{
}

Kel_QtWidgetFactoryRegistry::~Kel_QtWidgetFactoryRegistry() = default;

void Kel_QtWidgetFactoryRegistry::registerEntry(const QString& key, Kel_FactoryEntryInterface* entry)
{
    table().insert(key, entry);
    index().insert(key, entry);
}

Kel_FactoryEntryInterface* Kel_QtWidgetFactoryRegistry::getEntry(const QString& key)
{
    return index().value(key, nullptr);
}

QStringList Kel_QtWidgetFactoryRegistry::getAllKeys()
{
    return table().keys();
}

void Kel_QtWidgetFactoryRegistry::unregisterEntry(const Kel_FactoryEntryInterface* entry)
{
    EntryTable& entries = table();
    for (auto it = entries.begin(); it != entries.end();) {
        if (it.value() == entry) {
            index().remove(it.key());
            it = entries.erase(it);
        } else {
            ++it;
        }
    }
}

QWidget* Kel_QtWidgetFactoryRegistry::createWidget(const QString& className, QWidget* parent, const QString& name)
{
    if (Kel_FactoryEntryInterface* entry = getEntry(className))
        return entry->create(parent, name, false);
    return QUiLoader::createWidget(className, parent, name);
}
