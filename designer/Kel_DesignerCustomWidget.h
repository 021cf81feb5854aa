#ifndef KEL_DESIGNERCUSTOMWIDGET_H
#define KEL_DESIGNERCUSTOMWIDGET_H

#include <QIcon>
#include <QObject>
#include <QSize>
#include <QStringList>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

class Kel_FactoryEntryInterface;

// Presents one class of the widget factory to Qt Designer: its texts,
// include file and container flag come from the factory entry, and the
// designer's widgets are made by the entry itself. What a new widget looks
// like on a form (caption, size) and in the widget box (icon, the bound
// properties in the what's-this text) follows the Qt class it is built on,
// so that a Kel_CheckBox arrives like a stock check box.
class Kel_DesignerCustomWidget : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    Kel_DesignerCustomWidget(const QString& className, Kel_FactoryEntryInterface* entry, QObject* parent);

    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override;
    QWidget* createWidget(QWidget* parent) override;
    bool isInitialized() const override;
    void initialize(QDesignerFormEditorInterface* core) override;
    QString domXml() const override;

private:
    // What a sample of the class tells about it; made once, when first asked.
    struct Traits
    {
        QString captionProperty; // "text", "title" or empty when the Qt base has no caption
        QString caption;         // the stock widget's caption ("CheckBox")
        QSize size;              // the size a new widget gets on a form
        QIcon icon;
        bool scrollArea = false; // Designer fills a scroll area through a contents page
        QStringList ownProperties; // the properties the library's classes add
    };
    const Traits& traits() const;

    QString mClassName;
    Kel_FactoryEntryInterface* mEntryP; // the registry's; lives until the process ends
    bool mInitialized;
    mutable bool mHasTraits = false;
    mutable Traits mTraits;
};

#endif
