// The selectable view: a highlight behind its content from a bool model;
// clicks and Space select and toggle through the model.
#include "Kel_SelectableView.h"
#include "Kel_StringView.h"
#include "Mve_SimpleValue.h"
#include "ViewTestSupport.h"

namespace {

struct SelectableHost
{
    SelectableHost()
    {
        selectable = new Kel_SelectableView;
        selectable->setName(QStringLiteral("Row"));
        selectable->setSize(QSize(120, 30));
        selectable->setHighlightColor(QColor(10, 200, 30));
        content = new ProbeView(QStringLiteral("Cell"), QRect(80, 0, 40, 30), 0, &host.log);
        content->takesMouse = false;
        selectable->AddSubView(content);
        host.panel->AddSubView(selectable);
    }
    void connect(const QString& spec)
    {
        selectable->setIsSelectedConnectionSpec(spec);
        selectable->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    }
    void click(Qt::KeyboardModifiers modifiers = Qt::NoModifier, QPoint at = QPoint(10, 10))
    {
        QTest::mouseClick(host.bridge, Qt::LeftButton, modifiers, at);
    }
    QColor shownAt(const QPoint& p) { return host.bridge->grab().toImage().pixelColor(p); }
    HostedPanel host;
    Kel_SelectableView* selectable;
    ProbeView* content;
};

} // namespace

TEST(SelectableView, ClicksSelectAndToggleThroughTheModel)
{
    Mve_SimpleValue<bool> selected(false, "SelectableView.Selected");
    selected.Publish();
    SelectableHost s;
    s.connect(QStringLiteral("SelectableView.Selected"));
    EXPECT_NE(s.shownAt(QPoint(5, 5)), QColor(10, 200, 30));

    s.click();
    EXPECT_TRUE(selected.getValue());
    EXPECT_EQ(s.shownAt(QPoint(5, 5)), QColor(10, 200, 30));
    s.click(); // a plain click selects; it never deselects
    EXPECT_TRUE(selected.getValue());
    s.click(Qt::ControlModifier);
    EXPECT_FALSE(selected.getValue());
    // Clicks on content that ignores the mouse select as well.
    s.click(Qt::NoModifier, QPoint(100, 10));
    EXPECT_TRUE(selected.getValue());
    EXPECT_TRUE(s.host.log.contains(QStringLiteral("press Cell 20,10")));

    // Content that takes the click keeps it to itself.
    selected.setValue(false);
    s.content->takesMouse = true;
    s.click(Qt::NoModifier, QPoint(100, 10));
    EXPECT_FALSE(selected.getValue());

    // Space toggles.
    QTest::keyClick(s.host.bridge, Qt::Key_Space);
    EXPECT_TRUE(selected.getValue());
    QTest::keyClick(s.host.bridge, Qt::Key_Space);
    EXPECT_FALSE(selected.getValue());

    // The model changing by itself repaints.
    selected.setValue(true);
    EXPECT_TRUE(waitFor([&] { return s.shownAt(QPoint(5, 5)) == QColor(10, 200, 30); }));
}

TEST(SelectableView, RefusedAndUnboundStayUnselected)
{
    Mve_SimpleValue<bool> locked(false, "SelectableView.Locked");
    locked.setReadOnly(true);
    locked.Publish();
    SelectableHost s;
    s.connect(QStringLiteral("SelectableView.Locked"));
    s.click();
    EXPECT_FALSE(locked.getValue());
    EXPECT_FALSE(s.selectable->isSelected());
    EXPECT_NE(s.shownAt(QPoint(5, 5)), QColor(10, 200, 30));

    // Unbound: never selected, and the click is left to the widget.
    s.connect(QString());
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(10, 10), QPointF(10, 10), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    s.selectable->mousePressEvent(&press, QPoint(10, 10));
    EXPECT_FALSE(press.isAccepted());
    EXPECT_FALSE(s.selectable->isSelected());

    // Copies carry the name and the colours, unconnected.
    s.connect(QStringLiteral("SelectableView.Locked"));
    locked.setValue(true);
    std::unique_ptr<Kel_ViewInterface> copy(s.selectable->clone());
    auto* copied = static_cast<Kel_SelectableView*>(copy.get());
    EXPECT_FALSE(copied->isSelected());
    EXPECT_EQ(copied->getIsSelectedConnectionSpec(), QStringLiteral("SelectableView.Locked"));
    EXPECT_EQ(copied->highlightColor(), QColor(10, 200, 30));
    copied->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_TRUE(copied->isSelected());
}

TEST(SelectableView, DrawsItsContentInTheHighlightedTextColour)
{
    Mve_SimpleValue<bool> selected(true, "SelectableView.Drawn");
    Mve_SimpleValue<QString> text(QStringLiteral("Clip 1"), "SelectableView.Text");
    publishAll({&selected, &text});
    Kel_SelectableView view;
    view.setSize(QSize(200, 30));
    view.setHighlightedTextColor(Qt::yellow);
    auto* label = new Kel_StringView;
    label->SetConnectionID(QStringLiteral("SelectableView.Text"));
    label->setSize(QSize(200, 30));
    view.AddSubView(label);
    view.setIsSelectedConnectionSpec(QStringLiteral("SelectableView.Drawn"));
    view.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());

    auto drawn = drawTexts(view); // with a blue pen
    ASSERT_EQ(drawn.size(), 1u);
    EXPECT_EQ(drawn[0].color, QColor(Qt::yellow));

    selected.setValue(false);
    drawn = drawTexts(view);
    ASSERT_EQ(drawn.size(), 1u);
    EXPECT_EQ(drawn[0].color, QColor(Qt::blue));
}
