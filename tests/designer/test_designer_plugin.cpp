// The Qt Designer plug-in, loaded as Designer loads it: it offers exactly the
// classes of the widget factory, described by their factory entries.
#include "Kel_FactoryEntryInterface.h"
#include "Kel_QtWidgetFactoryRegistry.h"

#include <QDomDocument>
#include <QPluginLoader>
#include <QWidget>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>
#include <gtest/gtest.h>
#include <memory>

#ifndef KEL_DESIGNER_PLUGIN
#define KEL_DESIGNER_PLUGIN ""
#endif

TEST(DesignerPlugin, OffersEveryRegisteredClassAsTheRegistryDescribesIt)
{
    if (!*KEL_DESIGNER_PLUGIN)
        GTEST_SKIP() << "the Qt Designer plug-in is not built";
    QPluginLoader loader(QStringLiteral(KEL_DESIGNER_PLUGIN));
    QObject* instance = loader.instance();
    ASSERT_NE(instance, nullptr) << loader.errorString().toStdString();
    auto* collection = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(instance);
    ASSERT_NE(collection, nullptr);

    const QStringList keys = Kel_QtWidgetFactoryRegistry::getAllKeys();
    const QList<QDesignerCustomWidgetInterface*> widgets = collection->customWidgets();
    QStringList offered;
    for (QDesignerCustomWidgetInterface* w : widgets)
        offered << w->name();
    EXPECT_EQ(offered, keys);

    for (QDesignerCustomWidgetInterface* w : widgets) {
        SCOPED_TRACE(w->name().toStdString());
        Kel_FactoryEntryInterface* entry = Kel_QtWidgetFactoryRegistry::getEntry(w->name());
        ASSERT_NE(entry, nullptr);
        EXPECT_EQ(w->group(), QStringLiteral("KelCore"));
        EXPECT_EQ(w->toolTip(), entry->getToolTip());
        EXPECT_EQ(w->whatsThis(), entry->getWhatsThis());
        EXPECT_EQ(w->includeFile(), entry->getIncludeFile());
        EXPECT_EQ(w->isContainer(), entry->isContainer());

        // The widget box reads the class and a default object name from domXml.
        QDomDocument dom;
        ASSERT_TRUE(dom.setContent(w->domXml()));
        const QDomElement widget = dom.documentElement().firstChildElement(QStringLiteral("widget"));
        EXPECT_EQ(widget.attribute(QStringLiteral("class")), w->name());
        EXPECT_FALSE(widget.attribute(QStringLiteral("name")).isEmpty());

        QWidget parent;
        QWidget* made = w->createWidget(&parent);
        ASSERT_NE(made, nullptr);
        EXPECT_EQ(made->parent(), &parent);
        EXPECT_EQ(QString::fromLatin1(made->metaObject()->className()), w->name());
    }
}
