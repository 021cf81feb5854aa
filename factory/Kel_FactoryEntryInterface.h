#ifndef KEL_FACTORYENTRYINTERFACE_H
#define KEL_FACTORYENTRYINTERFACE_H

#include "kelcore_export.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

class QWidget;

// What the widget factory knows about one class that forms may name: how to
// create it and how Qt Designer presents it. Entries are registered with
// Kel_QtWidgetFactoryRegistry and live until the process ends.
class KELCORE_EXPORT Kel_FactoryEntryInterface
{
public:
    virtual bool runCustomEditor(QWidget* editorParent, QWidget* widget, QStringList* names,
                                 QList<QVariant>* values) const = 0;
    virtual bool hasCustomEditor() = 0;
    // Whether the designer may drop other widgets into this one.
    virtual bool isContainer() = 0;
    virtual QString getWhatsThis() = 0;
    virtual QString getToolTip() = 0;
    // The header that generated code includes for the class.
    virtual QString getIncludeFile() = 0;
    // A new widget owned by parent (Qt parent-child ownership); the flag is
    // unused by the library's own entries.
    virtual QWidget* create(QWidget* parent, const QString& name, bool flag) = 0;
    // Declared after the operations so that their slots come first. An entry
    // that is destroyed leaves the registry.
    virtual ~Kel_FactoryEntryInterface();

protected:
    Kel_FactoryEntryInterface() = default;
    Kel_FactoryEntryInterface(const Kel_FactoryEntryInterface&) = default;
    Kel_FactoryEntryInterface& operator=(const Kel_FactoryEntryInterface&) = default;
};

#endif
