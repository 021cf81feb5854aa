// Guided help's lookup: a dotted path from a window's name down through
// plain containers, bridges and their views, widget lists and open menus.
#include "Kel_BridgeQWidget.h"
#include "Kel_CheckBox.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_HStackView.h"
#include "Kel_MenuBar.h"
#include "Kel_PoiLookup.h"
#include "Kel_StringView.h"
#include "Kel_WidgetList.h"
#include "Mve_Action.h"
#include "Mve_Array.h"
#include "Ost_Resource.h"
#include "TestSupport.h"

#include <QFrame>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>
#include <memory>

namespace {

QRect screenRect(QWidget* widget)
{
    return QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size());
}

// "HelpWindow": a menu bar, a panel holding a "mute" box two frames down,
// a bridge "bin" showing the views "Clip.Name" and "Clip.Length", and a widget list
// "effects" of three rows each holding a label "title".
class PoiLookup : public ::testing::Test
{
protected:
    void SetUp() override
    {
        previous = Ost_Resource::getResourcePath();
        Ost_Resource::setResourcePath(testDataDir() + "poi/");
        open.Publish();
        effects.Publish();
        window = std::make_unique<QMainWindow>();
        window->setObjectName("HelpWindow");
        bar = new Kel_MenuBar(window.get());
        bar->setObjectName("Bar");
        bar->setProperty("menuBarFileName", QByteArray("HelpBar"));
        window->setMenuBar(bar);
        auto* central = new QWidget(window.get());
        auto* layout = new QVBoxLayout(central);
        auto* panel = new QFrame(central);
        panel->setObjectName("panel");
        auto* inner = new QFrame(panel);
        (new QVBoxLayout(panel))->addWidget(inner);
        mute = new Kel_CheckBox(inner, "mute");
        (new QVBoxLayout(inner))->addWidget(mute);
        layout->addWidget(panel);

        bin = new Kel_BridgeQWidget(central);
        bin->setObjectName("bin");
        auto* stack = new Kel_HStackView();
        stack->setName("Clip");
        for (const char* name : {"Name", "Length"}) {
            auto* view = new Kel_StringView();
            view->setName(name);
            view->setSize(QSize(80, 20));
            stack->AddSubView(view);
        }
        bin->setChild(stack);
        layout->addWidget(bin);

        list = new Kel_WidgetList(central);
        list->setObjectName("effects");
        list->setConnectionSpec("Help.Effects");
        list->setNewRowCB([] {
            auto* row = new QWidget;
            auto* title = new QLabel(QStringLiteral("effect"), row);
            title->setObjectName("title");
            (new QVBoxLayout(row))->addWidget(title);
            return row;
        });
        layout->addWidget(list);
        window->setCentralWidget(central);
        Kel_ConnectionUtils::recursiveConnect(window.get(), Mv_ConnectionEnvironment::blankEnvironment());
        window->resize(400, 400);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }
    void TearDown() override
    {
        window.reset();
        Ost_Resource::setResourcePath(previous);
    }

    QString previous;
    Mve_Action<void()> open{[] {}, "Help.Open"};
    Mve_Array<long> effects{std::vector<long>{1, 2, 3}, "Help.Effects"};
    std::unique_ptr<QMainWindow> window;
    Kel_MenuBar* bar = nullptr;
    Kel_CheckBox* mute = nullptr;
    Kel_BridgeQWidget* bin = nullptr;
    Kel_WidgetList* list = nullptr;
};

TEST_F(PoiLookup, PathsReachWidgetsThroughPlainContainersAndAtAnyDepth)
{
    QRect rect;
    QWidget* found = nullptr;
    ASSERT_TRUE(Kel_PoiLookup::find("HelpWindow.panel.mute", &rect, &found));
    EXPECT_EQ(found, mute);
    EXPECT_EQ(rect, screenRect(mute));
    EXPECT_TRUE(Kel_PoiLookup::find("HelpWindow.mute", &rect)); // the frames between need no names
    EXPECT_EQ(rect, screenRect(mute));
    EXPECT_TRUE(Kel_PoiLookup::find("HelpWindow", &rect));
    EXPECT_EQ(rect, screenRect(window.get()));

    for (const char* bad : {"", ".", "Nowhere", "HelpWindow.panel.nothing", "HelpWindow..mute", "HelpWindow.mute.more"})
        EXPECT_FALSE(Kel_PoiLookup::find(bad, &rect)) << bad;
    mute->hide();
    EXPECT_FALSE(Kel_PoiLookup::find("HelpWindow.panel.mute", &rect)); // not shown, nothing to point at
}

TEST_F(PoiLookup, BridgesWidgetListsAndOpenMenusResolveTheRestThemselves)
{
    QRect rect;
    QWidget* found = nullptr;
    ASSERT_TRUE(Kel_PoiLookup::find("HelpWindow.bin.Clip.Length", &rect, &found));
    EXPECT_EQ(found, bin);
    EXPECT_EQ(rect, QRect(bin->mapToGlobal(QRect(80, 0, 80, 20).center()), QSize(1, 1))); // the view's centre
    EXPECT_FALSE(Kel_PoiLookup::find("HelpWindow.bin.Clip.Duration", &rect));

    ASSERT_TRUE(waitFor([&] { return list->rowSize() == 3; }));
    ASSERT_TRUE(Kel_PoiLookup::find("HelpWindow.effects.Row1.title", &rect, &found));
    QWidget* title = list->findChildren<QLabel*>("title").value(1);
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(rect, screenRect(title));
    EXPECT_FALSE(Kel_PoiLookup::find("HelpWindow.effects.Row7", &rect));

    // Items of a menu can be pointed at while it is open.
    EXPECT_TRUE(Kel_PoiLookup::find("HelpWindow.Bar.File", &rect));
    EXPECT_FALSE(Kel_PoiLookup::find("HelpWindow.Bar.File.Open", &rect));
    QAction* file = bar->findAction(QVariant("File"));
    ASSERT_NE(file, nullptr);
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->actionGeometry(file).center());
    QMenu* menu = file->menu();
    ASSERT_TRUE(waitFor([menu] { return menu->isVisible(); }));
    EXPECT_TRUE(Kel_PoiLookup::find("HelpWindow.Bar.File.Open", &rect));
    EXPECT_TRUE(menu->geometry().contains(rect.center()));
    menu->close();
}

} // namespace
