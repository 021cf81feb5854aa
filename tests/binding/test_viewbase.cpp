// The common part of light-weight views.
#include "AssertRecorder.h"
#include "Kel_ViewBase.h"
#include "Mve_SimpleValue.h"
#include "RecordingParent.h"
#include "TestSupport.h"

#include <QMouseEvent>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

class TestView : public Kel_ViewBase
{
public:
    void drawContents(QPainter*, const QRect&) override {}
    Kel_ViewInterface* clone() override { return new TestView(*this); }
    void setOrigin(const QPoint& origin) override
    {
        calls += QStringLiteral("origin ");
        Kel_ViewBase::setOrigin(origin);
    }
    void setSize(const QSize& size) override
    {
        calls += QStringLiteral("size ");
        Kel_ViewBase::setSize(size);
    }
    QString calls;
};

// Failed assertions recorded, other messages kept off the log.
struct AssertLog : AssertRecorder
{
    DebugMessageCollector quiet;
};

} // namespace

TEST(ViewBase, StateGeometryAndEvents)
{
    TestView view;
    view.setRectInParent(QRect(5, 20, 30, 10));
    EXPECT_EQ(view.calls, QStringLiteral("origin size "));
    EXPECT_EQ(view.getLocalDrawingRect(), QRect(0, 0, 30, 10));

    view.setName(QStringLiteral("Volume"));
    QPoint where;
    EXPECT_TRUE(view.findItem(QStringLiteral("Volume"), &where));
    EXPECT_EQ(where, QRect(0, 0, 30, 10).center());
    EXPECT_FALSE(view.findItem(QStringLiteral("Panel.Volume"), &where));

    // Unhandled input travels on to the hosting widget.
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(1, 1), QPointF(1, 1), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    press.accept();
    view.mousePressEvent(&press, QPoint(1, 1));
    EXPECT_FALSE(press.isAccepted());
    EXPECT_FALSE(view.event(&press));
}

TEST(ViewBase, ToolTipComesFromItsModel)
{
    Mve_SimpleValue<QString> tip(QStringLiteral("Master volume"), "ViewBase.Tip");
    tip.Publish();
    TestView view;
    view.setSize(QSize(40, 12));
    QRect rect;
    QString text = QStringLiteral("untouched");
    view.setToolTipConnectionID(QStringLiteral("$Scope.Tip"));
    EXPECT_FALSE(view.getToolTip(QPoint(1, 1), &rect, &text)); // not connected yet

    view.makeConnections(environmentWith(QStringLiteral("Scope"), QStringLiteral("ViewBase")));
    EXPECT_TRUE(view.getToolTip(QPoint(1, 1), &rect, &text));
    EXPECT_EQ(text, QStringLiteral("Master volume"));
    EXPECT_EQ(rect, QRect(0, 0, 40, 12));

    tip.setValue(QString());
    EXPECT_FALSE(view.getToolTip(QPoint(1, 1), &rect, &text));

    // Null outputs are a programming error, reported and survived.
    tip.setValue(QStringLiteral("Pan"));
    AssertLog asserts;
    view.getToolTip(QPoint(), nullptr, &text);
    view.getToolTip(QPoint(), &rect, nullptr);
    const QString report = QStringLiteral("oTipRect && oTipString @ Kel_ViewBase");
    EXPECT_EQ(asserts.places, (QStringList{report, report}));
}

TEST(ViewBase, CopyHasNoParentAndItsOwnUnconnectedToolTip)
{
    Mve_SimpleValue<QString> tip(QStringLiteral("Solo"), "ViewBase.CopyTip");
    tip.Publish();
    RecordingParent parent;
    TestView original;
    original.setParent(&parent);
    original.setName(QStringLiteral("Solo"));
    original.setZOrder(9);
    original.setToolTipConnectionID(QStringLiteral("ViewBase.CopyTip"));
    original.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    QRect rect;
    QString text;

    std::unique_ptr<Kel_ViewInterface> copy(original.clone());
    EXPECT_EQ(copy->getParent(), nullptr);
    EXPECT_EQ(copy->getName(), QStringLiteral("Solo"));
    EXPECT_EQ(copy->getZOrder(), 9);
    EXPECT_FALSE(copy->getToolTip(QPoint(), &rect, &text));
    copy->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_TRUE(copy->getToolTip(QPoint(), &rect, &text));
}

TEST(ViewBase, RequestsToTheParent)
{
    TestView view;
    view.setName(QStringLiteral("V"));
    view.setSizeAndNotifyParent(QSize(10, 10)); // no parent: nowhere to go
    view.sendAllBitsChanged();

    RecordingParent parent;
    QWidget bridge;
    parent.bridge = &bridge;
    view.setParent(&parent);
    view.setOrigin(QPoint(5, 20));
    view.sendAllBitsChanged();
    view.sendAllBitsChangedImmediate();
    view.setSizeAndNotifyParent(QSize(30, 4));
    EXPECT_EQ(parent.log, (QStringList{"bits V 0,0 10x10", "bits V 0,0 10x10 now", "size V 30x4 from 10x10"}));

    // Asking for drops opens the shared bridge, and turning them off does not close it.
    view.setAcceptsDrops(false);
    EXPECT_TRUE(bridge.acceptDrops());
    EXPECT_FALSE(view.acceptsDrops());

    TestView orphan;
    AssertLog asserts;
    orphan.setAcceptsDrops(true);
    EXPECT_TRUE(orphan.acceptsDrops());
    EXPECT_EQ(asserts.places, QStringList{QStringLiteral("mParent @ Kel_ViewBase")});
}
