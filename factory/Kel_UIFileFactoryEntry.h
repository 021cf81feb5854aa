#ifndef KEL_UIFILEFACTORYENTRY_H
#define KEL_UIFILEFACTORYENTRY_H

#include "kelcore_export.h"

#include "Kel_FactoryEntryInterface.h"

// Lets a form file be used as a widget class inside other forms: the class
// name is the form name, and creating it loads resource path + "Forms/" +
// name + ".ui" into the parent (and the parent's layout, if it has one).
// Applications create one per embeddable form; constructing it registers it.
class KELCORE_EXPORT Kel_UIFileFactoryEntry final : public Kel_FactoryEntryInterface
{
public:
    explicit Kel_UIFileFactoryEntry(const QString& formName);
    Kel_UIFileFactoryEntry(const Kel_UIFileFactoryEntry&) = default;
    Kel_UIFileFactoryEntry(Kel_UIFileFactoryEntry&&) = default;
    Kel_UIFileFactoryEntry& operator=(const Kel_UIFileFactoryEntry&) = default;
    Kel_UIFileFactoryEntry& operator=(Kel_UIFileFactoryEntry&&) = default;
    ~Kel_UIFileFactoryEntry() override;

    bool runCustomEditor(QWidget*, QWidget*, QStringList*, QList<QVariant>*) const override;
    bool hasCustomEditor() override;
    bool isContainer() override;
    // The form name followed by ".ui file include".
    QString getWhatsThis() override;
    QString getToolTip() override;
    // Empty: a form has no header.
    QString getIncludeFile() override;
    // Kel_CreateWidgetFromUILayout(form name, parent, name, true); null when
    // the form cannot be loaded.
    QWidget* create(QWidget* parent, const QString& name, bool flag) override;

    const QString& formName() const { return mFormName; }

private:
    QString mFormName;
};

#endif
