#ifndef KEL_DESIGNERCUSTOMWIDGET_H
#define KEL_DESIGNERCUSTOMWIDGET_H

#include <QObject>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

class Kel_FactoryEntryInterface;

// Presents one class of the widget factory to Qt Designer: its texts,
// include file and container flag come from the factory entry, and the
// designer's widgets are made by the entry itself.
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
    QString mClassName;
    Kel_FactoryEntryInterface* mEntryP; // the registry's; lives until the process ends
    bool mInitialized;
};

#endif
