#ifndef KEL_DESIGNERWIDGETCOLLECTION_H
#define KEL_DESIGNERWIDGETCOLLECTION_H

#include <QList>
#include <QObject>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

// The Qt Designer plug-in of the library: one custom widget for every key of
// Kel_QtWidgetFactoryRegistry, in key order.
class Kel_DesignerWidgetCollection : public QObject, public QDesignerCustomWidgetCollectionInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)

public:
    explicit Kel_DesignerWidgetCollection(QObject* parent = nullptr);

    QList<QDesignerCustomWidgetInterface*> customWidgets() const override;

private:
    QList<QDesignerCustomWidgetInterface*> mWidgets; // children of this object
};

#endif
