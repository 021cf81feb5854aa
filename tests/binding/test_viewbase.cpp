// The common part of light-weight views.
#include "Kel_ViewBase.h"
#include "Kel_ViewContainerInterface.h"
#include "Mve_SimpleValue.h"
#include "Ost_Assert.h"
#include "TestSupport.h"

#include <QFileInfo>
#include <QKeyEvent>
#include <QMimeData>
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
        calls.append(QStringLiteral("origin"));
        Kel_ViewBase::setOrigin(origin);
    }
    void setSize(const QSize& size) override
    {
        calls.append(QStringLiteral("size"));
        Kel_ViewBase::setSize(size);
    }

    // For the assignment rules: which listener a view holds, and a way to
    // give a view back its own listener before both are destroyed.
    Mvt_SimpleValue<QString>::Listener* toolTipListener() const { return mToolTipListener; }
    void restoreToolTipListener(Mvt_SimpleValue<QString>::Listener* listener) { mToolTipListener = listener; }

    QStringList calls;
};

// A parent that records what its views ask of it.
class RecordingContainer : public Kel_ViewContainerInterface
{
public:
    void childSizeChanged(Kel_ViewInterface* child, QSize newSize, QSize oldSize) override
    {
        sizeChanges.append({child, newSize, oldSize});
    }
    void childInsertedRow(Kel_ViewInterface*, int, int) override {}
    void childDeletedRow(Kel_ViewInterface*, int, int) override {}
    void childInsertedColumn(Kel_ViewInterface*) override {}
    void childBitsChanged(Kel_ViewInterface* child, const QRect& rect, bool immediate) override
    {
        repaints.append({child, rect, immediate});
    }
    QWidget* getBridgeWidget() override { return bridge; }
    void overlayChildEditWidget(Kel_ViewInterface*, QWidget*, int, int) override {}
    void removeView(Kel_ViewInterface*) override {}

    struct SizeChange
    {
        Kel_ViewInterface* child;
        QSize newSize;
        QSize oldSize;
    };
    struct Repaint
    {
        Kel_ViewInterface* child;
        QRect rect;
        bool immediate;
    };
    QVector<SizeChange> sizeChanges;
    QVector<Repaint> repaints;
    QWidget* bridge = nullptr;
};

// Collects assertion reports while it lives.
class AssertLog
{
public:
    AssertLog()
    {
        mPrevious = Ost_Assert::setHandler([this](const QString& condition, const QString& file, int) {
            conditions.append(condition);
            files.append(QFileInfo(file).completeBaseName());
        });
    }
    ~AssertLog() { Ost_Assert::setHandler(mPrevious); }
    QStringList conditions;
    QStringList files;

private:
    Ost_Assert::Handler mPrevious;
    DebugMessageCollector mQuiet;
};

} // namespace

TEST(ViewBase, InitialState)
{
    TestView view;
    EXPECT_FALSE(view.acceptsFocus());
    EXPECT_FALSE(view.canDrag(QPoint(1, 1)));
    EXPECT_FALSE(view.acceptsDrops());
    EXPECT_EQ(view.getDragType(), Kel_ViewBase::EDragType(2));
    EXPECT_EQ(sizeof(Kel_ViewBase::EDragType), 4u);
    EXPECT_EQ(view.getParent(), nullptr);
    EXPECT_EQ(view.getOrigin(), QPoint(0, 0));
    EXPECT_TRUE(view.getName().isEmpty());
    EXPECT_FALSE(view.isFixedAspect());
    EXPECT_EQ(view.getAspect(), 0.0f);
    EXPECT_TRUE(view.getReadOnly());
    EXPECT_EQ(view.getSize(), QSize(0, 0));
    EXPECT_EQ(view.getMinSize(), QSize(0, 0));
    EXPECT_EQ(view.getZOrder(), 0);
    EXPECT_TRUE(view.getToolTipConnectionID().isEmpty());
    EXPECT_EQ(view.getLocalDrawingRect(), QRect(0, 0, 0, 0));
}

TEST(ViewBase, GeometryAndAccessors)
{
    TestView view;
    view.setRectInParent(QRect(5, 20, 30, 10));
    EXPECT_EQ(view.calls, (QStringList{"origin", "size"}));
    EXPECT_EQ(view.getOrigin(), QPoint(5, 20));
    EXPECT_EQ(view.getWidth(), 30);
    EXPECT_EQ(view.getHeight(), 10);
    EXPECT_EQ(view.getLocalDrawingRect(), QRect(0, 0, 30, 10));
    EXPECT_EQ(view.getRectInParent(), QRect(5, 20, 30, 10));

    view.setAspect(1.5f);
    EXPECT_TRUE(view.isFixedAspect());
    EXPECT_EQ(view.getAspect(), 1.5f);
    view.setIsFixedAspect(false);
    EXPECT_FALSE(view.isFixedAspect());
    EXPECT_EQ(view.getAspect(), 1.5f);

    view.setCanDrag(true);
    EXPECT_TRUE(view.canDrag(QPoint(-100, 999)));
    view.setDragType(Kel_ViewBase::kDragMove);
    EXPECT_EQ(view.getDragType(), Kel_ViewBase::kDragMove);
    view.setReadOnly(false);
    EXPECT_FALSE(view.getReadOnly());
    view.setZOrder(-7);
    EXPECT_EQ(view.getZOrder(), -7);

    view.setName(QStringLiteral("Volume"));
    QPoint where(-1, -1);
    EXPECT_TRUE(view.findItem(QStringLiteral("Volume"), &where));
    EXPECT_EQ(where, QRect(0, 0, 30, 10).center());
    EXPECT_FALSE(view.findItem(QStringLiteral("Panel.Volume"), &where));
    EXPECT_EQ(view.findUiName(QPoint(1000, 1000)), QStringLiteral("Volume"));

    QDomDocument document;
    QPixmap pixmap;
    EXPECT_TRUE(view.getDragData(QPoint(1, 1), document, pixmap).isNull());
}

TEST(ViewBase, HandlersPassEventsOn)
{
    TestView view;
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(1, 1), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(1, 1), Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QMouseEvent move(QEvent::MouseMove, QPointF(1, 1), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QMouseEvent dbl(QEvent::MouseButtonDblClick, QPointF(1, 1), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
    QMimeData mime;
    QDragEnterEvent enter(QPoint(1, 1), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QDragMoveEvent dragMove(QPoint(1, 1), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QDragLeaveEvent leave;
    QDropEvent drop(QPointF(1, 1), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    for (QEvent* e : std::initializer_list<QEvent*>{&press, &release, &move, &dbl, &key, &enter, &dragMove, &leave, &drop})
        e->accept();

    view.mousePressEvent(&press, QPoint(1, 1));
    view.mouseReleaseEvent(&release, QPoint(1, 1));
    view.mouseMoveEvent(&move, QPoint(1, 1));
    view.mouseDoubleClickEvent(&dbl, QPoint(1, 1));
    view.keyPressEvent(&key);
    view.dragEnterEvent(&enter, QPoint(1, 1));
    view.dragMoveEvent(&dragMove, QPoint(1, 1));
    view.dragLeaveEvent(&leave, QPoint(1, 1));
    view.dropEvent(&drop, QPoint(1, 1));
    for (QEvent* e : std::initializer_list<QEvent*>{&press, &release, &move, &dbl, &key, &enter, &dragMove, &leave, &drop})
        EXPECT_FALSE(e->isAccepted()) << e->type();
    EXPECT_FALSE(view.event(&press));

    // Null events are survived.
    view.mousePressEvent(nullptr, QPoint());
    view.keyPressEvent(nullptr);
}

TEST(ViewBase, ToolTipComesFromItsModel)
{
    Mve_SimpleValue<QString> tip(QStringLiteral("Master volume"), "ViewBase.Tip");
    tip.Publish();
    TestView view;
    view.setSize(QSize(40, 12));
    QRect rect(1, 2, 3, 4);
    QString text = QStringLiteral("untouched");

    // No specification: nothing is connected.
    view.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_FALSE(view.getToolTip(QPoint(1, 1), &rect, &text));

    auto env = Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment());
    env->set(QStringLiteral("Scope"), QStringLiteral("ViewBase"));
    view.setToolTipConnectionID(QStringLiteral("$Scope.Tip"));
    EXPECT_FALSE(view.getToolTip(QPoint(1, 1), &rect, &text)); // not connected before makeConnections
    view.makeConnections(env);
    EXPECT_TRUE(view.getToolTip(QPoint(1, 1), &rect, &text));
    EXPECT_EQ(text, QStringLiteral("Master volume"));
    EXPECT_EQ(rect, QRect(0, 0, 40, 12));

    // An empty text shows nothing and leaves the outputs alone.
    tip.setValue(QString());
    text = QStringLiteral("untouched");
    EXPECT_FALSE(view.getToolTip(QPoint(1, 1), &rect, &text));
    EXPECT_EQ(text, QStringLiteral("untouched"));

    // A model that goes away takes the tool tip with it.
    tip.setValue(QStringLiteral("back"));
    EXPECT_TRUE(view.getToolTip(QPoint(1, 1), &rect, &text));
    tip.UnPublish();
    EXPECT_FALSE(view.getToolTip(QPoint(1, 1), &rect, &text));
}

TEST(ViewBase, ToolTipWithNullPointersIsReportedAndSurvived)
{
    Mve_SimpleValue<QString> tip(QStringLiteral("Pan"), "ViewBase.NullTip");
    tip.Publish();
    TestView view;
    view.setToolTipConnectionID(QStringLiteral("ViewBase.NullTip"));
    view.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());

    AssertLog asserts;
    QRect rect;
    QString text;
    view.getToolTip(QPoint(), nullptr, &text);
    EXPECT_EQ(text, QStringLiteral("Pan"));
    view.getToolTip(QPoint(), &rect, nullptr);
    view.getToolTip(QPoint(), nullptr, nullptr);
    const QString condition = QStringLiteral("oTipRect && oTipString");
    const QString file = QStringLiteral("Kel_ViewBase");
    EXPECT_EQ(asserts.conditions, (QStringList{condition, condition, condition}));
    EXPECT_EQ(asserts.files, (QStringList{file, file, file}));
}

TEST(ViewBase, CopiesHaveNoParentAndAnUnconnectedToolTip)
{
    Mve_SimpleValue<QString> tip(QStringLiteral("Solo"), "ViewBase.CopyTip");
    tip.Publish();
    RecordingContainer parent;
    TestView original;
    original.setParent(&parent);
    original.setName(QStringLiteral("Solo"));
    original.setRectInParent(QRect(3, 4, 20, 8));
    original.setMinSize(QSize(5, 5));
    original.setAspect(2.0f);
    original.setReadOnly(false);
    original.setAcceptsFocus(true);
    original.setCanDrag(true);
    original.setDragType(Kel_ViewBase::kDragLink);
    original.setZOrder(9);
    original.setToolTipConnectionID(QStringLiteral("ViewBase.CopyTip"));
    original.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    QRect rect;
    QString text;
    ASSERT_TRUE(original.getToolTip(QPoint(), &rect, &text));

    std::unique_ptr<Kel_ViewInterface> cloned(original.clone());
    auto* copy = static_cast<TestView*>(cloned.get());
    EXPECT_EQ(copy->getParent(), nullptr);
    EXPECT_FALSE(copy->getToolTip(QPoint(), &rect, &text));
    EXPECT_NE(copy->toolTipListener(), original.toolTipListener());
    EXPECT_EQ(copy->getName(), QStringLiteral("Solo"));
    EXPECT_EQ(copy->getRectInParent(), QRect(3, 4, 20, 8));
    EXPECT_EQ(copy->getMinSize(), QSize(5, 5));
    EXPECT_TRUE(copy->isFixedAspect());
    EXPECT_EQ(copy->getAspect(), 2.0f);
    EXPECT_FALSE(copy->getReadOnly());
    EXPECT_TRUE(copy->acceptsFocus());
    EXPECT_TRUE(copy->canDrag(QPoint()));
    EXPECT_EQ(copy->getDragType(), Kel_ViewBase::kDragLink);
    EXPECT_EQ(copy->getZOrder(), 9);
    EXPECT_EQ(copy->getToolTipConnectionID(), QStringLiteral("ViewBase.CopyTip"));

    // The copy connects on its own.
    copy->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_TRUE(copy->getToolTip(QPoint(), &rect, &text));
    EXPECT_EQ(text, QStringLiteral("Solo"));
}

TEST(ViewBase, AssignmentSharesParentAndListener)
{
    RecordingContainer parent;
    TestView source;
    source.setParent(&parent);
    source.setName(QStringLiteral("Source"));
    TestView target;
    auto* ownListener = target.toolTipListener();

    target = source;
    EXPECT_EQ(target.getParent(), &parent);
    EXPECT_EQ(target.getName(), QStringLiteral("Source"));
    EXPECT_EQ(target.toolTipListener(), source.toolTipListener());

    // Give the target its own listener back so that each view deletes one.
    target.restoreToolTipListener(ownListener);
}

TEST(ViewBase, RequestsReachTheParent)
{
    RecordingContainer parent;
    TestView view;
    view.setSize(QSize(10, 10));

    // Without a parent the requests go nowhere.
    view.sendAllBitsChanged();
    view.setSizeAndNotifyParent(QSize(12, 12));
    EXPECT_EQ(view.getSize(), QSize(12, 12));

    view.setParent(&parent);
    view.setOrigin(QPoint(5, 20));
    view.sendAllBitsChanged();
    view.sendAllBitsChangedImmediate();
    ASSERT_EQ(parent.repaints.size(), 2);
    EXPECT_EQ(parent.repaints[0].child, &view);
    EXPECT_EQ(parent.repaints[0].rect, QRect(0, 0, 12, 12));
    EXPECT_FALSE(parent.repaints[0].immediate);
    EXPECT_TRUE(parent.repaints[1].immediate);

    view.setSizeAndNotifyParent(QSize(30, 4));
    ASSERT_EQ(parent.sizeChanges.size(), 1);
    EXPECT_EQ(parent.sizeChanges[0].child, &view);
    EXPECT_EQ(parent.sizeChanges[0].newSize, QSize(30, 4));
    EXPECT_EQ(parent.sizeChanges[0].oldSize, QSize(12, 12));
    EXPECT_EQ(view.getSize(), QSize(30, 4));
}

TEST(ViewBase, AcceptingDropsOpensTheBridgeForGood)
{
    QWidget bridge;
    RecordingContainer parent;
    parent.bridge = &bridge;
    TestView view;
    view.setParent(&parent);

    view.setAcceptsDrops(false);
    EXPECT_TRUE(bridge.acceptDrops());
    EXPECT_FALSE(view.acceptsDrops());
    view.setAcceptsDrops(true);
    EXPECT_TRUE(view.acceptsDrops());
    view.setAcceptsDrops(false);
    EXPECT_TRUE(bridge.acceptDrops());
    EXPECT_FALSE(view.acceptsDrops());

    // Without a parent it is a programming error, reported; the flag is kept.
    TestView orphan;
    AssertLog asserts;
    orphan.setAcceptsDrops(true);
    EXPECT_TRUE(orphan.acceptsDrops());
    EXPECT_EQ(asserts.conditions, QStringList{QStringLiteral("mParent")});
}
