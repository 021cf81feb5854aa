#ifndef KEL_QTWIDGETFACTORYREGISTRY_H
#define KEL_QTWIDGETFACTORYREGISTRY_H

#include "kelcore_export.h"

#include <QString>
#include <QStringList>
#include <QUiLoader>

class Kel_FactoryEntryInterface;

// The form loader of the library: a QUiLoader that creates every class name
// registered in its process-wide table through that class's factory entry,
// and leaves all other names (Qt's own widgets, plug-in widgets) to Qt.
// The table is filled with the library's widgets when the library loads.
class KELCORE_EXPORT Kel_QtWidgetFactoryRegistry : public QUiLoader
{
    Q_OBJECT

public:
    explicit Kel_QtWidgetFactoryRegistry(QObject* parent = nullptr);
    ~Kel_QtWidgetFactoryRegistry() override;

    // Registers entry under key, replacing (not deleting) an entry already
    // registered under it. The table does not take ownership.
    static void registerEntry(const QString& key, Kel_FactoryEntryInterface* entry);
    // The entry registered under key, or null.
    static Kel_FactoryEntryInterface* getEntry(const QString& key);
    // Every registered key, in ascending order.
    static QStringList getAllKeys();
    // Removes every key under which entry is registered (entries call it
    // when they are destroyed).
    static void unregisterEntry(const Kel_FactoryEntryInterface* entry);

    // The registered entry's widget for className, else Qt's own.
    QWidget* createWidget(const QString& className, QWidget* parent = nullptr,
                          const QString& name = QString()) override;
};

#endif
