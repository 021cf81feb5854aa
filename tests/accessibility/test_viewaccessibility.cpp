// The accessibility tree of panels of views: roles, names, values, states,
// rectangles, actions and events, as a screen reader or a UI-test tool
// reads them through Qt's accessibility API.
#include "AccessibilityTestSupport.h"

#include "Kel_BoolTextView.h"
#include "Kel_BridgeQScrollArea.h"
#include "Kel_BridgeQWidget.h"
#include "Kel_ContainerViewBase.h"
#include "Kel_HStackView.h"
#include "Kel_LongIntView.h"
#include "Kel_RevealView.h"
#include "Kel_SelectableView.h"
#include "Kel_StringView.h"
#include "Kel_VStackView.h"
#include "Mve_SimpleValue.h"

#include <QAccessibleWidget>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>
#include <memory>
#include <random>

using namespace a11ytest;

namespace {

// view, named and placed in container.
template <class View>
View* placed(View* view, const char* name, const QRect& rect, Kel_ContainerViewBase* container)
{
    view->setName(QString::fromLatin1(name));
    view->setRectInParent(rect);
    container->AddSubView(view);
    return view;
}

// Like the demo's "Views" page: captioned values in rows of a container,
// hosted by a scroll-area bridge, on models of its own.
class ValuesPanel : public ::testing::Test
{
protected:
    void SetUp() override
    {
        publishAll({&volume, &volumeTip, &state, &muted});
        auto* panel = new Kel_ContainerViewBase;
        panel->setName(QStringLiteral("Panel"));
        auto* row = new Kel_HStackView;
        row->setName(QStringLiteral("Mixer"));
        volumeView = placed(new Kel_LongIntView, "Volume", QRect(0, 0, 60, 20), row);
        volumeView->setConnectionName(QStringLiteral("A11yValues.Volume"));
        volumeView->setToolTipConnectionID(QStringLiteral("A11yValues.VolumeTip"));
        placed(new Kel_BoolTextView, "Muted", QRect(0, 0, 60, 20), row)->setConnectionName(QStringLiteral("A11yValues.Muted"));
        panel->AddSubView(row);
        placed(new Kel_StringView, "State", QRect(10, 30, 100, 20), panel)->SetConnectionID(QStringLiteral("A11yValues.State"));
        placed(new Kel_StringView, "Missing", QRect(10, 60, 100, 20), panel)
            ->SetConnectionID(QStringLiteral("A11yValues.NotPublished"));
        panel->setSize(QSize(300, 200));

        window.resize(320, 240);
        auto* layout = new QVBoxLayout(&window);
        bridge = new Kel_BridgeQScrollArea(&window);
        bridge->setObjectName(QStringLiteral("ValuesBridge"));
        bridge->setChild(panel);
        layout->addWidget(bridge);
        bridge->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
        ASSERT_TRUE(showActive(window));
        root = QAccessible::queryAccessibleInterface(&window);
        ASSERT_NE(root, nullptr);
    }

    Mve_SimpleValue<long> volume{40, "A11yValues.Volume"};
    Mve_SimpleValue<QString> volumeTip{"Output volume", "A11yValues.VolumeTip"};
    Mve_SimpleValue<QString> state{"Stopped", "A11yValues.State"};
    Mve_SimpleValue<bool> muted{true, "A11yValues.Muted"};
    QWidget window;
    Kel_BridgeQScrollArea* bridge = nullptr;
    Kel_LongIntView* volumeView = nullptr;
    QAccessibleInterface* root = nullptr;
};

TEST_F(ValuesPanel, EachViewReportsItsRoleNameValueAndState)
{
    // Named by the tool tip; the number through the value interface too.
    QAccessibleInterface* volumeIface = findByName(root, QStringLiteral("Output volume"));
    ASSERT_NE(volumeIface, nullptr);
    EXPECT_EQ(volumeIface->role(), QAccessible::StaticText);
    EXPECT_EQ(volumeIface->text(QAccessible::Value), QStringLiteral("40"));
    ASSERT_NE(volumeIface->valueInterface(), nullptr);
    EXPECT_EQ(volumeIface->valueInterface()->currentValue().toLongLong(), 40);
    ASSERT_NE(volumeIface->textInterface(), nullptr);
    EXPECT_EQ(volumeIface->textInterface()->text(0, 2), QStringLiteral("40"));
    EXPECT_TRUE(volumeIface->state().readOnly);
    EXPECT_FALSE(volumeIface->state().disabled);

    // Named by its point-of-interest name without a tool tip.
    QAccessibleInterface* stateIface = findByName(root, QStringLiteral("State"));
    ASSERT_NE(stateIface, nullptr);
    EXPECT_EQ(stateIface->text(QAccessible::Value), QStringLiteral("Stopped"));
    EXPECT_EQ(stateIface->valueInterface(), nullptr); // text, not a number

    QAccessibleInterface* mutedIface = findByName(root, QStringLiteral("Muted"));
    ASSERT_NE(mutedIface, nullptr);
    EXPECT_EQ(mutedIface->text(QAccessible::Value), QStringLiteral("Yes"));
    EXPECT_TRUE(mutedIface->state().checkable);
    EXPECT_TRUE(mutedIface->state().checked);
    muted.setValue(false);
    EXPECT_FALSE(mutedIface->state().checked);
    EXPECT_EQ(mutedIface->text(QAccessible::Value), QStringLiteral("No"));

    // A view whose model is missing cannot show anything.
    QAccessibleInterface* missingIface = findByName(root, QStringLiteral("Missing"));
    ASSERT_NE(missingIface, nullptr);
    EXPECT_TRUE(missingIface->state().disabled);

    QAccessibleInterface* rowIface = findByName(root, QStringLiteral("Mixer"));
    ASSERT_NE(rowIface, nullptr);
    EXPECT_EQ(rowIface->role(), QAccessible::Grouping);
    EXPECT_EQ(rowIface->childCount(), 2);
}

TEST_F(ValuesPanel, TheTreeIsConsistentFromTheWindowDownToEveryView)
{
    const QList<QAccessibleInterface*> all = walk(root);
    // The bridge's content widget hosts the panel view as its first child.
    QAccessibleInterface* content = QAccessible::queryAccessibleInterface(bridge->viewportWidget());
    ASSERT_NE(content, nullptr);
    EXPECT_TRUE(all.contains(content));
    ASSERT_GE(content->childCount(), 1);
    EXPECT_EQ(content->child(0)->text(QAccessible::Name), QStringLiteral("Panel"));
    EXPECT_EQ(content->text(QAccessible::Name), QStringLiteral("ValuesBridge"));
    for (QAccessibleInterface* iface : all) {
        if (iface == root)
            continue;
        QAccessibleInterface* parent = iface->parent();
        ASSERT_NE(parent, nullptr) << iface->text(QAccessible::Name).toStdString();
        const int index = parent->indexOfChild(iface);
        ASSERT_GE(index, 0) << iface->text(QAccessible::Name).toStdString();
        EXPECT_EQ(parent->child(index), iface);
    }
    // Children in reading order: the row at the top, then State, then Missing.
    QAccessibleInterface* panel = content->child(0);
    ASSERT_EQ(panel->childCount(), 3);
    EXPECT_EQ(panel->child(0)->text(QAccessible::Name), QStringLiteral("Mixer"));
    EXPECT_EQ(panel->child(1)->text(QAccessible::Name), QStringLiteral("State"));
    EXPECT_EQ(panel->child(2)->text(QAccessible::Name), QStringLiteral("Missing"));
}

TEST_F(ValuesPanel, ARectangleIsWhereTheViewIsPaintedAndHitTestingFindsIt)
{
    QAccessibleInterface* stateIface = findByName(root, QStringLiteral("State"));
    ASSERT_NE(stateIface, nullptr);
    const QRect expected(bridge->viewportWidget()->mapToGlobal(QPoint(10, 30)), QSize(100, 20));
    EXPECT_EQ(stateIface->rect(), expected);
    QAccessibleInterface* panel = stateIface->parent();
    EXPECT_EQ(panel->childAt(expected.center().x(), expected.center().y()), stateIface);
    EXPECT_EQ(panel->childAt(expected.right() + 150, expected.center().y()), nullptr);
}

TEST_F(ValuesPanel, AModelChangeIsAValueChangedEventOnlyWhileSomeoneListens)
{
    // Nobody listens: a change builds no interface and sends nothing.
    ASSERT_FALSE(Kel_ViewAccessibility::reportsEvents());
    volume.setValue(39);
    EXPECT_EQ(Kel_ViewAccessibility::existingInterface(volumeView), nullptr);

    QAccessibleInterface* volumeIface = findByName(root, QStringLiteral("Output volume"));
    ASSERT_NE(volumeIface, nullptr);
    EventRecorder recorder;
    volume.setValue(41);
    const QList<Event> changes = recorder.ofType(QAccessible::ValueChanged);
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes.first().iface, volumeIface);
    EXPECT_EQ(changes.first().value.toString(), QStringLiteral("41"));
    // The same value again changes nothing to tell.
    volume.setValue(41);
    EXPECT_EQ(recorder.ofType(QAccessible::ValueChanged).size(), 1);
}

TEST_F(ValuesPanel, ARemovedViewTakesItsInterfaceWithIt)
{
    QAccessibleInterface* stateIface = findByName(root, QStringLiteral("State"));
    ASSERT_NE(stateIface, nullptr);
    const QAccessible::Id id = QAccessible::uniqueId(stateIface);
    auto* panel = static_cast<Kel_ContainerViewBase*>(bridge->getChild());
    panel->removeView(panel->getViewByName(QStringLiteral("State")));
    EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr);
    EXPECT_EQ(findByName(root, QStringLiteral("State")), nullptr);
    EXPECT_EQ(walk(root).size(), walk(root).size()); // walking again touches no dead view
}

// Like the demo's "View gallery": reveal groups holding selectable rows in a
// plain bridge, between two line edits.
class GalleryPanel : public ::testing::Test
{
protected:
    void SetUp() override
    {
        publishAll({&open0, &open1, &selected0, &selected1, &title0, &name0, &name1});
        auto* column = new Kel_VStackView;
        column->setName(QStringLiteral("Clips"));
        column->AddSubView(group(0));
        column->AddSubView(group(1));
        auto* layout = new QVBoxLayout(&window);
        before = new QLineEdit(&window);
        bridge = new Kel_BridgeQWidget(&window, "galleryBridge");
        after = new QLineEdit(&window);
        layout->addWidget(before);
        layout->addWidget(bridge);
        layout->addWidget(after);
        bridge->setChild(column);
        bridge->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
        ASSERT_TRUE(showActive(window));
        root = QAccessible::queryAccessibleInterface(&window);
    }

    Kel_RevealView* group(int i)
    {
        auto* reveal = new Kel_RevealView;
        reveal->setName(QStringLiteral("Clip%1").arg(i));
        if (i == 0)
            reveal->setTitleConnection(QStringLiteral("A11yGallery.Title0"));
        else
            reveal->setTitle(QStringLiteral("Harbour"));
        reveal->setRevealStateConnection(QStringLiteral("A11yGallery.Open%1").arg(i));
        auto* row = new Kel_SelectableView;
        row->setName(QStringLiteral("Row%1").arg(i));
        row->setIsSelectedConnectionSpec(QStringLiteral("A11yGallery.Selected%1").arg(i));
        auto* name = new Kel_StringView;
        name->SetConnectionID(QStringLiteral("A11yGallery.Name%1").arg(i));
        name->setSize(QSize(150, 24));
        row->AddSubView(name);
        row->setSize(name->getSize());
        reveal->setBody(row);
        reveals[i] = reveal;
        rows[i] = row;
        return reveal;
    }
    QAccessibleInterface* iface(Kel_ViewInterface* view) { return Kel_ViewAccessibility::interfaceFor(view); }
    Kel_ViewInterface* focused() const { return bridge->focusedView(); }

    Mve_SimpleValue<bool> open0{true, "A11yGallery.Open0"};
    Mve_SimpleValue<bool> open1{true, "A11yGallery.Open1"};
    Mve_SimpleValue<bool> selected0{false, "A11yGallery.Selected0"};
    Mve_SimpleValue<bool> selected1{true, "A11yGallery.Selected1"};
    Mve_SimpleValue<QString> title0{"Interview", "A11yGallery.Title0"};
    Mve_SimpleValue<QString> name0{"Interview, take 2", "A11yGallery.Name0"};
    Mve_SimpleValue<QString> name1{"Harbour at dawn", "A11yGallery.Name1"};
    QWidget window;
    QLineEdit* before = nullptr;
    QLineEdit* after = nullptr;
    Kel_BridgeQWidget* bridge = nullptr;
    Kel_RevealView* reveals[2] = {};
    Kel_SelectableView* rows[2] = {};
    QAccessibleInterface* root = nullptr;
};

TEST_F(GalleryPanel, RevealGroupsAndSelectableRowsReportTheirStates)
{
    QAccessibleInterface* group0 = findByName(root, QStringLiteral("Interview"), QAccessible::Grouping);
    ASSERT_NE(group0, nullptr); // named by its title
    EXPECT_TRUE(group0->state().expandable);
    EXPECT_TRUE(group0->state().expanded);
    EXPECT_EQ(group0->childCount(), 1);
    QAccessibleInterface* row1 = findByName(root, QStringLiteral("Row1"), QAccessible::ListItem);
    ASSERT_NE(row1, nullptr);
    EXPECT_TRUE(row1->state().selectable);
    EXPECT_TRUE(row1->state().selected);
    EXPECT_EQ(row1->text(QAccessible::Value), QStringLiteral("Harbour at dawn"));

    open0.setValue(false);
    EXPECT_TRUE(group0->state().collapsed);
    EXPECT_EQ(group0->childCount(), 0); // a folded body is not there to read
    EXPECT_EQ(findByName(root, QStringLiteral("Row0")), nullptr);
}

TEST_F(GalleryPanel, ActionsPressToggleAndFocusAsTheMouseAndKeysWould)
{
    EventRecorder recorder;
    QAccessibleInterface* row0 = iface(rows[0]);
    ASSERT_NE(row0->actionInterface(), nullptr);
    EXPECT_EQ(row0->actionInterface()->actionNames(),
              (QStringList{QAccessibleActionInterface::pressAction(), QAccessibleActionInterface::toggleAction(),
                           QAccessibleActionInterface::setFocusAction()}));
    row0->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(selected0.getValue());
    ASSERT_FALSE(recorder.ofType(QAccessible::StateChanged).isEmpty());
    EXPECT_EQ(recorder.ofType(QAccessible::StateChanged).last().iface, row0);
    row0->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_FALSE(selected0.getValue());

    QAccessibleInterface* group1 = iface(reveals[1]);
    group1->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_FALSE(open1.getValue());
    EXPECT_TRUE(group1->state().collapsed);

    group1->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_TRUE(bridge->hasFocus());
    EXPECT_EQ(focused(), reveals[1]);
    EXPECT_TRUE(group1->state().focused);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(bridge)->focusChild(), group1);
    ASSERT_FALSE(recorder.ofType(QAccessible::Focus).isEmpty());
    EXPECT_EQ(recorder.ofType(QAccessible::Focus).last().iface, group1);

    // A read-only view offers nothing to press.
    rows[0]->setReadOnly(true);
    EXPECT_EQ(row0->actionInterface()->actionNames(), QStringList{QAccessibleActionInterface::setFocusAction()});
    row0->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_FALSE(selected0.getValue());
}

TEST_F(GalleryPanel, TabWalksTheViewsInReadingOrderAndSpaceOperatesThem)
{
    before->setFocus();
    ASSERT_TRUE(waitFor([&] { return before->hasFocus(); }));
    const QList<Kel_ViewInterface*> order{reveals[0], rows[0], reveals[1], rows[1]};
    for (Kel_ViewInterface* expected : order) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        ASSERT_TRUE(bridge->hasFocus());
        EXPECT_EQ(focused(), expected) << expected->getName().toStdString();
    }
    QTest::keyClick(bridge, Qt::Key_Tab);
    EXPECT_TRUE(after->hasFocus());
    QTest::keyClick(after, Qt::Key_Backtab);
    EXPECT_EQ(focused(), rows[1]);

    // Space toggles the focused view, whichever it is.
    QTest::keyClick(bridge, Qt::Key_Space);
    EXPECT_FALSE(selected1.getValue());
    QTest::keyClick(bridge, Qt::Key_Backtab);
    EXPECT_EQ(focused(), reveals[1]);
    QTest::keyClick(bridge, Qt::Key_Space);
    EXPECT_FALSE(open1.getValue());
    EXPECT_FALSE(selected1.getValue()); // the row's state stays as it was

    // A folded body is skipped: from the first group's row, Tab leaves.
    QTest::keyClick(bridge, Qt::Key_Backtab);
    EXPECT_EQ(focused(), rows[0]);
    QTest::keyClick(bridge, Qt::Key_Tab);
    EXPECT_EQ(focused(), reveals[1]);
    QTest::keyClick(bridge, Qt::Key_Tab);
    EXPECT_TRUE(after->hasFocus());
}

TEST_F(GalleryPanel, AClickFocusesTheViewClickedAndAReaderHearsOfThatOneOnly)
{
    after->setFocus();
    ASSERT_TRUE(waitFor([&] { return after->hasFocus(); }));
    EventRecorder recorder;
    QRect rect;
    ASSERT_EQ(Kel_ViewAccessibility::hostWidget(rows[1], &rect), bridge);
    QTest::mouseClick(bridge, Qt::LeftButton, Qt::NoModifier, rect.center());
    EXPECT_TRUE(bridge->hasFocus());
    EXPECT_EQ(focused(), rows[1]);
    const QList<Event> focus = recorder.ofType(QAccessible::Focus);
    ASSERT_EQ(focus.size(), 1);
    EXPECT_EQ(focus.first().iface, iface(rows[1]));
}

TEST_F(GalleryPanel, TheFocusedViewIsFramedWhileTheBridgeHasTheFocus)
{
    bridge->setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(waitFor([&] { return bridge->hasFocus(); }));
    ASSERT_EQ(focused(), reveals[0]);
    QTest::keyClick(bridge, Qt::Key_Tab);
    ASSERT_EQ(focused(), rows[0]);
    const QImage withFocus = bridge->grab().toImage();
    after->setFocus();
    ASSERT_TRUE(waitFor([&] { return after->hasFocus(); }));
    const QImage without = bridge->grab().toImage();
    // The frame runs along the row's edges: the row's top edge differs.
    QRect rect;
    ASSERT_EQ(Kel_ViewAccessibility::hostWidget(rows[0], &rect), bridge);
    int differing = 0;
    for (int x = rect.left(); x <= rect.right(); ++x)
        differing += withFocus.pixel(x, rect.top()) != without.pixel(x, rect.top()) ? 1 : 0;
    EXPECT_GT(differing, rect.width() / 4);
    // Nothing else changed.
    EXPECT_EQ(withFocus.pixel(rect.center()), without.pixel(rect.center()));
}

} // namespace

namespace {

TEST(KeyboardFocusOrder, TabVisitsEveryFocusableViewOnceInReadingOrderWhateverTheTree)
{
    std::mt19937 random(25);
    for (int round = 0; round < 20; ++round) {
        QWidget window;
        auto* layout = new QVBoxLayout(&window);
        auto* before = new QLineEdit(&window);
        auto* bridge = new Kel_BridgeQWidget(&window, "randomBridge");
        auto* after = new QLineEdit(&window);
        layout->addWidget(before);
        layout->addWidget(bridge);
        layout->addWidget(after);

        // Rows of cells, added in a random order; some rows take the focus
        // themselves (selectable), and so do some cells.
        auto* column = new Kel_VStackView;
        QList<Kel_ViewInterface*> expected;
        const int rows = 1 + int(random() % 4);
        for (int r = 0; r < rows; ++r) {
            Kel_ContainerViewBase* row = random() % 3 == 0 ? static_cast<Kel_ContainerViewBase*>(new Kel_SelectableView)
                                                           : new Kel_ContainerViewBase;
            row->setName(QStringLiteral("row%1").arg(r));
            if (row->acceptsFocus())
                expected.append(row);
            const int cells = int(random() % 4);
            QList<int> order;
            for (int c = 0; c < cells; ++c)
                order.insert(int(random() % (order.size() + 1)), c);
            QVector<Kel_ViewInterface*> byPlace(cells, nullptr);
            for (int c : order) {
                auto* cell = new Kel_StringView;
                cell->setName(QStringLiteral("cell%1.%2").arg(r).arg(c));
                cell->setRectInParent(QRect(c * 30, 0, 30, 20));
                cell->setAcceptsFocus(random() % 2 == 0);
                row->AddSubView(cell);
                byPlace[c] = cell;
            }
            for (Kel_ViewInterface* cell : byPlace) {
                if (cell->acceptsFocus())
                    expected.append(cell);
            }
            row->setSize(QSize(120, 20));
            column->AddSubView(row);
        }
        bridge->setChild(column);
        ASSERT_TRUE(showActive(window));
        before->setFocus();
        ASSERT_TRUE(waitFor([&] { return before->hasFocus(); }));

        QList<Kel_ViewInterface*> visited;
        QTest::keyClick(before, Qt::Key_Tab);
        while (bridge->hasFocus() && visited.size() <= expected.size()) {
            visited.append(bridge->focusedView());
            QTest::keyClick(bridge, Qt::Key_Tab);
        }
        EXPECT_EQ(visited, expected) << "round " << round;
        if (expected.isEmpty()) {
            EXPECT_TRUE(after->hasFocus()) << "round " << round; // not a tab stop
            continue;
        }
        ASSERT_TRUE(after->hasFocus()) << "round " << round;
        QList<Kel_ViewInterface*> back;
        QTest::keyClick(after, Qt::Key_Backtab);
        while (bridge->hasFocus() && back.size() <= expected.size()) {
            back.prepend(bridge->focusedView());
            QTest::keyClick(bridge, Qt::Key_Backtab);
        }
        EXPECT_EQ(back, expected) << "round " << round;
        EXPECT_TRUE(before->hasFocus()) << "round " << round;
    }
}

} // namespace
