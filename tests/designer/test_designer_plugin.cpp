// The Qt Designer plug-in, loaded as Designer loads it: it offers exactly the
// classes of the widget factory, described by their factory entries.
#include "Kel_CheckBox.h"
#include "Kel_FactoryEntryInterface.h"
#include "Kel_QtWidgetFactoryRegistry.h"
#include "Kel_SimpleFactoryEntry.h"

#include <QCheckBox>
#include <QDomDocument>
#include <QPluginLoader>
#include <QScrollArea>
#include <QWidget>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>
#include <gtest/gtest.h>
#include <memory>

#ifndef KEL_DESIGNER_PLUGIN
#define KEL_DESIGNER_PLUGIN ""
#endif

// Containers of the kinds an application registers: one that holds its
// children itself, one that holds them on a scrolled page.
class Test_DesignerPanel : public QWidget
{
    Q_OBJECT
public:
    Test_DesignerPanel(QWidget* parent, const char*) : QWidget(parent) {}
};
class Test_DesignerScroller : public QScrollArea
{
    Q_OBJECT
    Q_PROPERTY(QByteArray pageConnection MEMBER mPage)
public:
    Test_DesignerScroller(QWidget* parent, const char*) : QScrollArea(parent) {}
    QByteArray mPage;
};

namespace {

// Registered before the plug-in is loaded, as an application's would be.
const bool registered = [] {
    new Kel_SimpleFactoryEntry<Test_DesignerPanel, true>(QStringLiteral("Test_DesignerPanel"), QString(), QString());
    new Kel_SimpleFactoryEntry<Test_DesignerScroller, true>(QStringLiteral("Test_DesignerScroller"), QString(), QString());
    return true;
}();

QDesignerCustomWidgetCollectionInterface* plugin()
{
    static QPluginLoader loader(QStringLiteral(KEL_DESIGNER_PLUGIN));
    QObject* instance = loader.instance();
    EXPECT_NE(instance, nullptr) << loader.errorString().toStdString();
    return qobject_cast<QDesignerCustomWidgetCollectionInterface*>(instance);
}

QDesignerCustomWidgetInterface* offered(const QString& name)
{
    for (QDesignerCustomWidgetInterface* w : plugin()->customWidgets())
        if (w->name() == name)
            return w;
    return nullptr;
}

// The <widget> element of a class's domXml and its properties by name.
QDomElement widgetElement(QDesignerCustomWidgetInterface* w, QDomDocument& dom)
{
    EXPECT_TRUE(dom.setContent(w->domXml()));
    return dom.documentElement().firstChildElement(QStringLiteral("widget"));
}

QDomElement property(const QDomElement& widget, const QString& name)
{
    for (QDomElement p = widget.firstChildElement(QStringLiteral("property")); !p.isNull();
         p = p.nextSiblingElement(QStringLiteral("property")))
        if (p.attribute(QStringLiteral("name")) == name)
            return p;
    return QDomElement();
}

QSize geometrySize(const QDomElement& widget)
{
    const QDomElement rect = property(widget, QStringLiteral("geometry")).firstChildElement(QStringLiteral("rect"));
    return QSize(rect.firstChildElement(QStringLiteral("width")).text().toInt(),
                 rect.firstChildElement(QStringLiteral("height")).text().toInt());
}

} // namespace

TEST(DesignerPlugin, OffersEveryRegisteredClassAsTheRegistryDescribesIt)
{
    if (!*KEL_DESIGNER_PLUGIN)
        GTEST_SKIP() << "the Qt Designer plug-in is not built";
    ASSERT_NE(plugin(), nullptr);

    const QStringList keys = Kel_QtWidgetFactoryRegistry::getAllKeys();
    const QList<QDesignerCustomWidgetInterface*> widgets = plugin()->customWidgets();
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
        EXPECT_TRUE(w->whatsThis().startsWith(entry->getWhatsThis()));
        EXPECT_FALSE(w->icon().isNull());
        EXPECT_EQ(w->includeFile(), entry->getIncludeFile());
        EXPECT_EQ(w->isContainer(), entry->isContainer());

        // The widget box reads the class and a default object name from domXml.
        QDomDocument dom;
        const QDomElement widget = widgetElement(w, dom);
        EXPECT_EQ(widget.attribute(QStringLiteral("class")), w->name());
        EXPECT_FALSE(widget.attribute(QStringLiteral("name")).isEmpty());

        // Every class arrives at a usable size; containers at one to drop children into.
        const QSize size = geometrySize(widget);
        EXPECT_GE(size.width(), w->isContainer() ? 100 : 20);
        EXPECT_GE(size.height(), 20);

        QWidget parent;
        QWidget* made = w->createWidget(&parent);
        // A scroll area holds its children on the page Designer fills.
        if (qobject_cast<QScrollArea*>(made)) {
            EXPECT_FALSE(widget.firstChildElement(QStringLiteral("widget")).isNull());
        }
        ASSERT_NE(made, nullptr);
        EXPECT_EQ(made->parent(), &parent);
        EXPECT_EQ(QString::fromLatin1(made->metaObject()->className()), w->name());
    }
}

TEST(DesignerPlugin, NewWidgetsArriveLikeTheirStockCounterparts)
{
    if (!*KEL_DESIGNER_PLUGIN)
        GTEST_SKIP() << "the Qt Designer plug-in is not built";
    ASSERT_NE(plugin(), nullptr);
    ASSERT_TRUE(registered);

    // A check box arrives captioned as the stock one, at least as large.
    QDesignerCustomWidgetInterface* box = offered(QStringLiteral("Kel_CheckBox"));
    ASSERT_NE(box, nullptr);
    QDomDocument dom;
    const QDomElement boxXml = widgetElement(box, dom);
    EXPECT_EQ(property(boxXml, QStringLiteral("text")).text(), QStringLiteral("CheckBox"));
    QCheckBox stock(QStringLiteral("CheckBox"));
    EXPECT_GE(geometrySize(boxXml).width(), stock.sizeHint().width());
    EXPECT_GE(geometrySize(boxXml).height(), stock.sizeHint().height());
    // The widget box tells which properties name the models.
    EXPECT_TRUE(box->whatsThis().contains(QStringLiteral("checkedStateConnection")));
    EXPECT_FALSE(box->whatsThis().contains(QStringLiteral("objectName")));

    // A label is captioned as Designer's, and drawn differently in the box.
    QDesignerCustomWidgetInterface* label = offered(QStringLiteral("Kel_Label"));
    ASSERT_NE(label, nullptr);
    QDomDocument labelDom;
    EXPECT_EQ(property(widgetElement(label, labelDom), QStringLiteral("text")).text(), QStringLiteral("TextLabel"));
    EXPECT_NE(label->icon().pixmap(22).toImage(), box->icon().pixmap(22).toImage());

    // Containers take children: a plain one at a size to drop them into, a
    // scroll area through the contents page Designer fills.
    QDesignerCustomWidgetInterface* panel = offered(QStringLiteral("Test_DesignerPanel"));
    QDesignerCustomWidgetInterface* scroller = offered(QStringLiteral("Test_DesignerScroller"));
    ASSERT_NE(panel, nullptr);
    ASSERT_NE(scroller, nullptr);
    EXPECT_TRUE(panel->isContainer());
    QDomDocument panelDom;
    const QDomElement panelXml = widgetElement(panel, panelDom);
    EXPECT_GE(geometrySize(panelXml).width(), 100);
    EXPECT_TRUE(panelXml.firstChildElement(QStringLiteral("widget")).isNull());
    EXPECT_TRUE(property(panelXml, QStringLiteral("text")).isNull());
    QDomDocument scrollerDom;
    const QDomElement scrollerXml = widgetElement(scroller, scrollerDom);
    EXPECT_EQ(scrollerXml.firstChildElement(QStringLiteral("widget")).attribute(QStringLiteral("class")),
              QStringLiteral("QWidget"));
    EXPECT_EQ(property(scrollerXml, QStringLiteral("widgetResizable")).text(), QStringLiteral("true"));
    EXPECT_TRUE(scroller->whatsThis().endsWith(QStringLiteral("pageConnection.")));
}

#include "test_designer_plugin.moc"
