// Container views: routing by z-order, requests passed up, dotted names,
// ownership of sub-views and copies. Input arrives through a plain bridge
// as real Qt events.
#define QTEST_QPA_MOUSE_HANDLING
#include "ViewTestSupport.h"

#include <QApplication>
#include <QMimeData>

TEST(ContainerView, PressGoesDownTheZOrderUntilAViewTakesIt)
{
    HostedPanel host;
    ProbeView* low = host.add(QStringLiteral("Low"), QRect(0, 0, 50, 50), 1);
    ProbeView* high = host.add(QStringLiteral("High"), QRect(20, 20, 50, 50), 2);
    high->takesMouse = false;
    low->setAcceptsFocus(true);

    QTest::mousePress(host.bridge, Qt::LeftButton, Qt::NoModifier, QPoint(30, 30));
    EXPECT_EQ(host.log, (QStringList{"press High 10,10", "press Low 30,30"}));

    // The view that took the press keeps the mouse outside every view, until the release.
    host.log.clear();
    QTest::mouseMove(host.bridge, QPoint(150, 90));
    QTest::mouseRelease(host.bridge, Qt::LeftButton, Qt::NoModifier, QPoint(150, 90));
    EXPECT_EQ(host.log, (QStringList{"move Low 150,90", "release Low 150,90"}));
    EXPECT_EQ(host.panel->getMouseView(), nullptr);

    // Keys go to the focus view, which a view that does not want focus never becomes.
    host.log.clear();
    high->takesMouse = true;
    QTest::mouseClick(host.bridge, Qt::LeftButton, Qt::NoModifier, QPoint(60, 60));
    QTest::keyClick(host.bridge, Qt::Key_A);
    EXPECT_EQ(host.log, (QStringList{"press High 40,40", "release High 40,40", "key Low a"}));
    host.panel->keyPressEvent(nullptr); // not handed on to the focus view
    EXPECT_EQ(host.log.size(), 3);
}

TEST(ContainerView, PaintsByZOrderAndKeepsAddingOrderForEqualOnes)
{
    Kel_ContainerViewBase panel;
    QStringList log;
    auto* top = new ProbeView(QStringLiteral("Top"), QRect(0, 0, 40, 40), 5, &log);
    panel.AddSubView(top);
    panel.AddSubView(new ProbeView(QStringLiteral("First"), QRect(10, 10, 40, 40), 1, &log));
    panel.AddSubView(new ProbeView(QStringLiteral("Second"), QRect(100, 0, 40, 40), 1, &log));
    panel.AddSubView(top); // already there: held once
    EXPECT_EQ(panel.getSubViews().size(), 3u);
    top->setZOrder(0); // refiling happens only when a view is added

    QImage image(200, 100, QImage::Format_ARGB32);
    QPainter painter(&image);
    panel.drawContents(&painter, QRect(20, 20, 100, 10));
    EXPECT_EQ(log, (QStringList{"paint First 10,10 30x10", "paint Second 0,20 20x10", "paint Top 20,20 20x10"}));

    // Removal looks a view up under its current z-order: after a change it
    // is not found and stays; back under its old one it goes.
    const int destroyed = ProbeView::sDestroyed;
    panel.removeView(top);
    EXPECT_EQ(ProbeView::sDestroyed, destroyed);
    EXPECT_EQ(panel.getSubViews().size(), 3u);
    top->setZOrder(5);
    panel.removeView(top);
    EXPECT_EQ(ProbeView::sDestroyed, destroyed + 1);
    EXPECT_EQ(panel.getSubViews().size(), 2u);

    // A container never takes itself or a container that holds it.
    auto* inner = new Kel_ContainerViewBase;
    panel.AddSubView(inner);
    panel.AddSubView(&panel);
    inner->AddSubView(&panel);
    inner->AddSubView(inner);
    EXPECT_EQ(panel.getSubViews().size(), 3u);
    EXPECT_TRUE(inner->getSubViews().empty());
    EXPECT_EQ(panel.getParent(), nullptr);
}

TEST(ContainerView, RequestsTravelUpTranslated)
{
    RecordingParent root;
    Kel_ContainerViewBase outer;
    outer.setName(QStringLiteral("Outer"));
    outer.setParent(&root);
    auto* inner = new Kel_ContainerViewBase;
    inner->setName(QStringLiteral("Inner"));
    inner->setRectInParent(QRect(100, 1000, 50, 50));
    outer.AddSubView(inner);
    auto* leaf = new ProbeView(QStringLiteral("Leaf"), QRect(5, 20, 10, 10));
    inner->AddSubView(leaf);

    leaf->sendAllBitsChanged();
    leaf->sendAllBitsChangedImmediate();
    inner->overlayChildEditWidget(leaf, nullptr, 1, 2);
    inner->childInsertedColumn(leaf);
    EXPECT_EQ(root.log, (QStringList{"bits Outer 105,1020 10x10", "bits Outer 105,1020 10x10 now",
                                     "overlay Outer 106,1022", "column Leaf"}));

    // Removing repaints the view's area at once, then deletes it; strangers are left alone.
    root.log.clear();
    const int destroyed = ProbeView::sDestroyed;
    ProbeView stranger(QStringLiteral("Stranger"), QRect(0, 0, 5, 5));
    inner->removeView(&stranger);
    inner->removeView(leaf);
    EXPECT_EQ(ProbeView::sDestroyed, destroyed + 1);
    EXPECT_EQ(root.log, QStringList{"bits Outer 105,1020 10x10 now"});
}

// "Panel" (300 x 200) holding "Row" at 10,50 (200 x 20), which holds
// "Button" at 100,0 (20 x 20) with the tool tip "Press me".
class NestedPanel : public ::testing::Test
{
protected:
    NestedPanel()
    {
        panel.setName(QStringLiteral("Panel"));
        panel.setSize(QSize(300, 200));
        row->setName(QStringLiteral("Row"));
        row->setRectInParent(QRect(10, 50, 200, 20));
        panel.AddSubView(row);
        auto* button = new ProbeView(QStringLiteral("Button"), QRect(100, 0, 20, 20));
        button->tip = QStringLiteral("Press me");
        row->AddSubView(button);
    }
    Kel_ContainerViewBase panel;
    Kel_ContainerViewBase* row = new Kel_ContainerViewBase; // owned by panel
};

// Dotted names lead to the centre of a view; a point names, and takes the
// tool tip of, the deepest view under it, in panel coordinates.
TEST_F(NestedPanel, NamesPointsAndTipsReachTheDeepestView)
{
    QPoint where;
    EXPECT_TRUE(panel.findItem(QStringLiteral("Panel.Row"), &where));
    EXPECT_EQ(where, QPoint(10, 50) + QRect(0, 0, 200, 20).center());
    EXPECT_TRUE(panel.findItem(QStringLiteral("Panel.Row.Button"), &where));
    EXPECT_EQ(where, QPoint(110, 50) + QRect(0, 0, 20, 20).center());
    EXPECT_FALSE(panel.findItem(QStringLiteral("Other.Row"), &where));
    EXPECT_FALSE(panel.findItem(QStringLiteral("Panel.Missing"), &where));

    EXPECT_EQ(panel.findUiName(QPoint(115, 55)), QStringLiteral("Panel.Row.Button"));
    EXPECT_EQ(panel.findUiName(QPoint(20, 55)), QStringLiteral("Panel.Row"));
    EXPECT_EQ(panel.findUiName(QPoint(5, 5)), QStringLiteral("Panel"));

    QRect rect;
    QString text;
    EXPECT_TRUE(panel.getToolTip(QPoint(115, 55), &rect, &text));
    EXPECT_EQ(text, QStringLiteral("Press me"));
    EXPECT_EQ(rect, QRect(110, 50, 20, 20));
    EXPECT_FALSE(panel.getToolTip(QPoint(20, 55), &rect, &text));
}

TEST_F(NestedPanel, CopyOwnsCopiesOfTheSubViewsInZOrderThenAddingOrder)
{
    row->AddSubView(new ProbeView(QStringLiteral("Low"), QRect(105, 5, 10, 10), -1));
    row->AddSubView(new ProbeView(QStringLiteral("Top"), QRect(105, 5, 10, 10)));
    std::unique_ptr<Kel_ViewInterface> copy(row->clone());
    auto* copied = dynamic_cast<Kel_ContainerViewBase*>(copy.get());
    ASSERT_NE(copied, nullptr);
    row->removeAllSubViews();
    QStringList order;
    for (const auto& entry : copied->getSubViews()) {
        order << entry.second->getName();
        EXPECT_EQ(entry.second->getParent(), copied);
    }
    EXPECT_EQ(order, (QStringList{"Low", "Button", "Top"}));
    EXPECT_EQ(copied->findUiName(QPoint(108, 8)), QStringLiteral("Row.Top"));
}

TEST(ContainerView, DragFollowsTheViewThatTakesIt)
{
    HostedPanel host;
    host.bridge->setAcceptDrops(true);
    host.add(QStringLiteral("Left"), QRect(0, 0, 100, 100));
    ProbeView* right = host.add(QStringLiteral("Right"), QRect(100, 0, 100, 100));
    QMimeData data;
    data.setText(QStringLiteral("clip"));
    const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
    auto move = [&](const QPoint& p) {
        QDragMoveEvent event(p, actions, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(host.bridge, &event);
        return event.isAccepted();
    };

    QDragEnterEvent enter(QPoint(10, 10), actions, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(host.bridge, &enter);
    EXPECT_TRUE(move(QPoint(20, 10)));
    EXPECT_TRUE(move(QPoint(120, 10)));
    right->takesDrags = false;
    EXPECT_FALSE(move(QPoint(130, 10)));
    EXPECT_EQ(host.log, (QStringList{"enter Left 10,10", "dragmove Left 20,10", "enter Right 20,10", "leave Left",
                                     "dragmove Right 20,10", "dragmove Right 30,10"}));
}

TEST(ContainerView, AViewAddedElsewhereLeavesItsFirstContainer)
{
    RecordingParent root;
    auto* first = new Kel_ContainerViewBase;
    first->setName(QStringLiteral("First"));
    first->setParent(&root);
    Kel_ContainerViewBase second;
    auto* cell = new ProbeView(QStringLiteral("Cell"), QRect(5, 5, 10, 10), 3);
    first->AddSubView(cell);
    first->setSubViewForMouseEvents(cell);
    cell->setZOrder(7); // moved whatever its z-order now

    second.AddSubView(cell);
    EXPECT_FALSE(first->isSubView(cell));
    EXPECT_TRUE(first->getSubViews().empty());
    EXPECT_EQ(first->getMouseView(), nullptr);
    EXPECT_TRUE(second.isSubView(cell));
    EXPECT_EQ(cell->getParent(), &second);
    // The place it left is repainted.
    EXPECT_EQ(root.log, QStringList{"bits First 5,5 10x10 now"});

    // Only the container that holds it now deletes it.
    const int destroyed = ProbeView::sDestroyed;
    delete first;
    EXPECT_EQ(ProbeView::sDestroyed, destroyed);

    // Bridges take part too: hosted by one, it leaves the container, and back.
    {
        Kel_BridgeQWidget bridge(nullptr, "Bridge");
        bridge.setChild(cell);
        EXPECT_TRUE(second.getSubViews().empty());
        EXPECT_EQ(cell->getParent(), &bridge);
        second.AddSubView(cell);
        EXPECT_EQ(bridge.getChild(), nullptr);
    }
    EXPECT_EQ(ProbeView::sDestroyed, destroyed);
    second.removeView(cell);
    EXPECT_EQ(ProbeView::sDestroyed, destroyed + 1);
}
