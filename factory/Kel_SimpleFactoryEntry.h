#ifndef KEL_SIMPLEFACTORYENTRY_H
#define KEL_SIMPLEFACTORYENTRY_H

#include "Kel_FactoryEntryInterface.h"
#include "Kel_QtWidgetFactoryRegistry.h"

#include <QWidget>

// The factory entry of one widget class T of the library, constructible as
// T(QWidget* parent, const char* name). Container tells the designer whether
// other widgets may be dropped into it. Constructing an entry registers it.
template <class T, bool Container>
class Kel_SimpleFactoryEntry final : public Kel_FactoryEntryInterface
{
public:
    // An empty tool tip becomes the key, an empty what's-this text the tool
    // tip; the include file is the key followed by ".h".
    Kel_SimpleFactoryEntry(const QString& key, const QString& toolTip, const QString& whatsThis)
        : mToolTip(toolTip.isEmpty() ? key : toolTip)
        , mWhatsThis(whatsThis.isEmpty() ? mToolTip : whatsThis)
        , mIncludeFile(key + QStringLiteral(".h"))
    {
        Kel_QtWidgetFactoryRegistry::registerEntry(key, this);
    }

    // Registers T under key until the process ends, the description serving
    // as both tool tip and what's-this text: how the library registers its
    // own classes when it is loaded.
    static void registerClass(const char* key, const char* description)
    {
        new Kel_SimpleFactoryEntry(QString::fromLatin1(key), QString::fromLatin1(description), QString());
    }

    bool runCustomEditor(QWidget*, QWidget*, QStringList*, QList<QVariant>*) const override { return false; }
    bool hasCustomEditor() override { return false; }
    bool isContainer() override { return Container; }
    QString getWhatsThis() override { return mWhatsThis; }
    QString getToolTip() override { return mToolTip; }
    QString getIncludeFile() override { return mIncludeFile; }
    QWidget* create(QWidget* parent, const QString& name, bool) override
    {
        // The library's widgets take their object name as Latin-1.
        return new T(parent, name.toLatin1().constData());
    }

private:
    QString mToolTip;
    QString mWhatsThis;
    QString mIncludeFile;
};

#endif
