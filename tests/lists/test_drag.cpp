// Pressing, moving and releasing on rows: the deferred select, the drag
// threshold, the drag action and the dragged document and picture.
#include "ListTestSupport.h"

#include <QDomDocument>
#include <QFontMetrics>

using namespace listtest;

namespace {

class Drag : public ListFixture
{
protected:
    void buildDraggable(int rows, Kel_ListView::SelectionMode mode)
    {
        build(rows, mode, 12);
        row->draggable = true;
    }
    QStringList draggedNames() const
    {
        QDomDocument document;
        EXPECT_TRUE(document.setContent(list->dragText));
        const QDomElement root = document.documentElement();
        EXPECT_EQ(root.tagName(), QStringLiteral("mobIDDragObjectList"));
        QStringList names;
        for (QDomElement e = root.firstChildElement(); !e.isNull(); e = e.nextSiblingElement())
            names << e.attribute(QStringLiteral("name"));
        return names;
    }
    // Selects all rows and drags them from row 4, 12 pixels to the right.
    void dragAllRows(int rows)
    {
        buildDraggable(rows, Kel_ListView::Multi);
        key(Qt::Key_A, Qt::ControlModifier);
        press(rowPoint(4));
        drag(rowPoint(4) + QPoint(12, 0));
    }
    void selectRange(long from, long to)
    {
        click(from);
        click(to, Qt::ShiftModifier);
    }
};

TEST_F(Drag, APressOnASelectedRowSelectsItAloneOnlyWhenReleasedWithoutADrag)
{
    buildDraggable(6, Kel_ListView::Extended);
    selectRange(1, 3);
    const QPoint at = rowPoint(2);
    press(at);
    EXPECT_EQ(selection(), (QList<long>{1, 2, 3})); // kept while a drag may follow
    drag(at + QPoint(10, -10));
    EXPECT_EQ(list->drags, 0);
    release(at + QPoint(10, -10));
    EXPECT_EQ(selection(), (QList<long>{2}));
    EXPECT_EQ(list->drags, 0);

    selectRange(1, 3);
    press(at);
    drag(at + QPoint(0, 11));
    ASSERT_EQ(list->drags, 1);
    EXPECT_EQ(draggedNames(), (QStringList{"clip1", "clip2", "clip3"}));
    EXPECT_EQ(list->dragAction, Qt::MoveAction);
    drag(at + QPoint(0, 40)); // one drag per press
    release(at + QPoint(0, 40));
    EXPECT_EQ(list->drags, 1);
    EXPECT_EQ(selection(), (QList<long>{1, 2, 3}));
}

TEST_F(Drag, APressOnAnUnselectedRowSelectsAtOnceAndCanDragIt)
{
    buildDraggable(6, Kel_ListView::Extended);
    selectRange(1, 3);
    press(rowPoint(5));
    EXPECT_EQ(selection(), (QList<long>{5}));
    drag(rowPoint(5) + QPoint(-11, 0));
    ASSERT_EQ(list->drags, 1);
    EXPECT_EQ(draggedNames(), (QStringList{"clip5"}));
    release(rowPoint(5) + QPoint(-11, 0));
}

TEST_F(Drag, RowsThatCannotBeDraggedSelectOnPressAndNeverDrag)
{
    build(6, Kel_ListView::Extended);
    selectRange(1, 3);
    press(rowPoint(2));
    EXPECT_EQ(selection(), (QList<long>{2}));
    drag(rowPoint(2) + QPoint(0, 30));
    release(rowPoint(2) + QPoint(0, 30));
    EXPECT_EQ(list->drags, 0);
}

TEST_F(Drag, ModifiersPickTheActionThroughTheMaskAndTheMap)
{
    buildDraggable(4, Kel_ListView::Single);
    click(1);
    press(rowPoint(1));
    drag(rowPoint(1) + QPoint(0, 20), Qt::ControlModifier);
    EXPECT_EQ(list->dragAction, Qt::CopyAction);
    release(rowPoint(1) + QPoint(0, 20));

    list->setDragActionMap(Qt::CopyAction, Qt::ShiftModifier | Qt::AltModifier,
                           {qMakePair(Qt::KeyboardModifiers(Qt::ShiftModifier | Qt::AltModifier), Qt::LinkAction),
                            qMakePair(Qt::KeyboardModifiers(Qt::ShiftModifier), Qt::MoveAction)});
    for (const auto& c : {qMakePair(Qt::KeyboardModifiers(Qt::ControlModifier), Qt::CopyAction), // masked out
                          qMakePair(Qt::KeyboardModifiers(Qt::ShiftModifier), Qt::MoveAction),
                          qMakePair(Qt::KeyboardModifiers(Qt::ShiftModifier | Qt::AltModifier), Qt::LinkAction),
                          qMakePair(Qt::KeyboardModifiers(Qt::AltModifier), Qt::CopyAction)}) {
        press(rowPoint(1));
        drag(rowPoint(1) + QPoint(0, 20), c.first);
        EXPECT_EQ(list->dragAction, c.second) << int(c.first);
        release(rowPoint(1) + QPoint(0, 20));
    }

    // An ignoring action gives up the pending drag.
    const int drags = list->drags;
    list->setDragActionMap(Qt::IgnoreAction, Qt::NoModifier, {});
    press(rowPoint(1));
    drag(rowPoint(1) + QPoint(0, 20));
    drag(rowPoint(1) + QPoint(0, 40));
    release(rowPoint(1) + QPoint(0, 40));
    EXPECT_EQ(list->drags, drags);
}

TEST_F(Drag, TwelveRowsShowNineRowPicturesAndACountOfTheRest)
{
    dragAllRows(12);
    ASSERT_EQ(list->drags, 1);
    QStringList expected;
    for (int i = 0; i < 12; ++i)
        expected << QStringLiteral("clip%1").arg(i);
    EXPECT_EQ(draggedNames(), expected);

    QFont font = QApplication::font();
    font.setPointSize(12);
    const QFontMetrics metrics(font);
    EXPECT_EQ(list->dragImage.height(), 9 * kRowHeight + metrics.height());
    EXPECT_EQ(list->dragImage.width(), qMax(100, metrics.horizontalAdvance(QStringLiteral("... (+3)")) + 6));
    release(rowPoint(4) + QPoint(12, 0));
    EXPECT_EQ(selection().size(), 12);
}

TEST_F(Drag, TenRowsShowTenRowPicturesAndNoCount)
{
    dragAllRows(10);
    ASSERT_EQ(list->drags, 1);
    EXPECT_EQ(draggedNames().size(), 10);
    EXPECT_EQ(list->dragImage.size(), QSize(100, 10 * kRowHeight));
    release(rowPoint(4) + QPoint(12, 0));
}

TEST_F(Drag, PressesReachTheRowViewInItsOwnCoordinates)
{
    struct PressProbe : Kel_ViewBase
    {
        QList<QPoint>* log;
        explicit PressProbe(QList<QPoint>* l) : log(l) { setSize(QSize(100, kRowHeight)); }
        void drawContents(QPainter*, const QRect&) override {}
        Kel_ViewInterface* clone() override { return new PressProbe(log); }
        void mousePressEvent(QMouseEvent*, const QPoint& p) override { *log << p; }
        void mouseReleaseEvent(QMouseEvent*, const QPoint& p) override { *log << p; }
    };
    build(5, Kel_ListView::Single);
    QList<QPoint> log;
    list->SetRowView(new PressProbe(&log));
    click(3);
    EXPECT_EQ(log, (QList<QPoint>{QPoint(30, 10), QPoint(30, 10)}));
    EXPECT_EQ(list->getCurrentCell(), 3);
}

} // namespace
