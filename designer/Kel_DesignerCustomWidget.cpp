#include "Kel_DesignerCustomWidget.h"

#include "Kel_FactoryEntryInterface.h"

#include <QIcon>
#include <QWidget>

Kel_DesignerCustomWidget::Kel_DesignerCustomWidget(const QString& className, Kel_FactoryEntryInterface* entry,
                                                   QObject* parent)
    : QObject(parent), mClassName(className), mEntryP(entry), mInitialized(false)
{
}

QString Kel_DesignerCustomWidget::name() const
{
    return mClassName;
}

QString Kel_DesignerCustomWidget::group() const
{
    return QStringLiteral("KelCore");
}

QString Kel_DesignerCustomWidget::toolTip() const
{
    return mEntryP->getToolTip();
}

QString Kel_DesignerCustomWidget::whatsThis() const
{
    return mEntryP->getWhatsThis();
}

QString Kel_DesignerCustomWidget::includeFile() const
{
    return mEntryP->getIncludeFile();
}

QIcon Kel_DesignerCustomWidget::icon() const
{
    return QIcon();
}

bool Kel_DesignerCustomWidget::isContainer() const
{
    return mEntryP->isContainer();
}

QWidget* Kel_DesignerCustomWidget::createWidget(QWidget* parent)
{
    // Designer gives the widget its object name afterwards. An entry that
    // cannot make its widget (a form file that is missing) still gets a
    // placeholder, since the designer cannot cope with none.
    QWidget* widget = mEntryP->create(parent, QString(), false);
    return widget ? widget : new QWidget(parent);
}

bool Kel_DesignerCustomWidget::isInitialized() const
{
    return mInitialized;
}

void Kel_DesignerCustomWidget::initialize(QDesignerFormEditorInterface*)
{
    mInitialized = true;
}

QString Kel_DesignerCustomWidget::domXml() const
{
    QString objectName = mClassName;
    if (!objectName.isEmpty())
        objectName[0] = objectName[0].toLower();
    return QStringLiteral("<ui language=\"c++\">\n <widget class=\"%1\" name=\"%2\"/>\n</ui>\n")
        .arg(mClassName, objectName);
}
