// The column header over a column data model, driven with real mouse
// events: dividers, column drags with their cancel bands, sorting and the
// context menu.
#include "Kel_BridgeQScrollArea.h"
#include "Kel_ColumnDataModel.h"
#include "Kel_HStackView.h"
#include "HeaderTestSupport.h"
#include "Kel_Header.h"
#include "Kel_ListWithColumns.h"
#include "Kel_PopupMenu.h"
#include "Kel_TransparentOverlay.h"
#include "Mve_Action.h"
#include "Mve_Array.h"
#include "Mve_ContainerMirror.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"
#include "Ost_Resource.h"
#include "TestSupport.h"

#include <QApplication>
#include <QFile>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <vector>

namespace {

const QString kBase = QStringLiteral("HeaderTest.Columns");
const int kHeaderWidth = 400;
const int kHeaderHeight = 24;

// Columns "Name" (100, min 40), "Duration" (80, min 30), "Kind" (60, min 20)
// shown in that order, and "Colour" hidden. With no margin and no offset the
// dividers are at 102, 187 and 252; the positions span [0,105), [105,190)
// and [190,255).
class HeaderTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        model = headertest::makeColumns(kBase, &sorts);
        model->setAddColumnFunction([this](long position) { added.push_back(position); });
        ASSERT_TRUE(model->publish());
        build(kBase);
    }
    void TearDown() override
    {
        window.reset();
        QApplication::processEvents(); // deferred deletions of overlays and menus
        model.reset();
    }
    void build(const QString& base)
    {
        window.reset(new QWidget);
        header = new Kel_Header(window.get(), "Header");
        header->setColumnBaseConnectionName(base);
        header->setColumnSelectionConnectionSpec("HeaderTest.SelectColumns");
        header->setGeometry(0, 0, kHeaderWidth, kHeaderHeight);
        window->resize(kHeaderWidth, 200);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        header->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    }

    void press(const QPoint& at, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(header, button, Qt::NoModifier, at);
    }
    void release(const QPoint& at, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseRelease(header, button, Qt::NoModifier, at);
    }
    // A move with the left button held (or, hovering, none), delivered at
    // once also where a display server would send the pointer's moves later.
    void drag(const QPoint& to, Qt::MouseButtons buttons = Qt::LeftButton)
    {
        QMouseEvent move(QEvent::MouseMove, to, header->mapToGlobal(to), Qt::NoButton, buttons, Qt::NoModifier);
        QApplication::sendEvent(header, &move);
    }
    void hover(const QPoint& to) { drag(to, Qt::NoButton); }
    long width(long column) const { return model->column(column).width; }
    std::vector<long> order() const { return model->visibleColumns(); }
    bool overlayShown() const { return header->columnDragOverlay() && header->columnDragOverlay()->isVisible(); }

    // Opens the context menu over x and clicks the item of that text; false
    // when there is no such enabled item.
    bool choose(int x, const QString& text)
    {
        press(QPoint(x, 10), Qt::RightButton);
        release(QPoint(x, 10), Qt::RightButton);
        Kel_PopupMenu* menu = header->contextMenu();
        if (!menu)
            return false;
        QAction* item = nullptr;
        for (QAction* action : menu->actions())
            item = action->text() == text ? action : item;
        if (!item || !item->isEnabled()) {
            menu->close();
            return false;
        }
        const QPoint at = menu->actionGeometry(item).center();
        QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, at);
        QApplication::processEvents();
        return true;
    }
    QStringList menuTexts(int x)
    {
        press(QPoint(x, 10), Qt::RightButton);
        release(QPoint(x, 10), Qt::RightButton);
        QStringList texts;
        if (Kel_PopupMenu* menu = header->contextMenu()) {
            for (QAction* action : menu->actions())
                texts << (action->isSeparator() ? QStringLiteral("-") : action->text());
            menu->close();
        }
        return texts;
    }

    std::unique_ptr<Kel_ColumnDataModel> model;
    std::unique_ptr<QWidget> window;
    Kel_Header* header = nullptr; // owned by the window
    std::vector<long> sorts;      // column, or -1 - column for descending
    std::vector<long> added;
};

TEST_F(HeaderTest, DividersFollowWidthsMarginAndOffset)
{
    EXPECT_EQ(header->dividerPositions(), (QVector<int>{102, 187, 252}));
    EXPECT_EQ(header->columnIndexForPos(QPoint(104, 5)), 0);
    EXPECT_EQ(header->columnIndexForPos(QPoint(105, 5)), 1);
    EXPECT_EQ(header->columnIndexForPos(QPoint(255, 5)), -1);

    model->setWidth(0, 10); // below its minimum: shown 40 wide, as the list shows it
    EXPECT_EQ(header->dividerPositions(), (QVector<int>{42, 127, 192}));
    model->setWidth(0, 100);
    header->setLeftMargin(6);
    header->setOffset(20, false);
    EXPECT_EQ(header->dividerPositions(), (QVector<int>{88, 173, 238}));
    EXPECT_EQ(header->dividerIndexForPos(90), 0);
    EXPECT_EQ(header->centerOfColumn(1), (93 + 173) / 2);

    // Guided help finds a label by identifier or text, where it is shown.
    QRect found;
    ASSERT_TRUE(header->findPoi(QStringLiteral("Duration"), &found));
    EXPECT_EQ(found, QRect(header->mapToGlobal(QPoint(93, 0)), QSize(80, kHeaderHeight)));
    ASSERT_TRUE(header->findPoi(QStringLiteral("duration"), &found));
    EXPECT_FALSE(header->findPoi(QStringLiteral("colour"), &found)); // hidden
    header->setOffset(300, false);
    EXPECT_FALSE(header->findPoi(QStringLiteral("name"), &found)); // scrolled away
}

TEST_F(HeaderTest, APressTwoPixelsFromADividerResizesAndThreePixelsAwayIsALabelPress)
{
    for (int x : {100, 104}) {
        press(QPoint(x, 10));
        EXPECT_TRUE(header->isDraggingDivider()) << x;
        drag(QPoint(x + 30, 10));
        EXPECT_EQ(width(0), 130);
        release(QPoint(x + 30, 10));
        EXPECT_FALSE(header->isDraggingDivider());
        model->setWidth(0, 100);
    }
    for (int x : {99, 105}) {
        press(QPoint(x, 10));
        EXPECT_FALSE(header->isDraggingDivider()) << x;
        release(QPoint(x, 10));
    }
    EXPECT_EQ(width(0), 100);
    EXPECT_EQ(sorts, (std::vector<long>{0, 1})); // the two label clicks sorted
}

TEST_F(HeaderTest, ADividerStopsAtTheMinimumAndFarAboveOrBelowRestoresTheWidth)
{
    press(QPoint(187, 10)); // the right edge of "Duration": 80, minimum 30
    drag(QPoint(187 - 70, 10));
    EXPECT_EQ(width(1), 30);
    drag(QPoint(187 + 25, kHeaderHeight + 80));
    EXPECT_EQ(width(1), 105); // 80 pixels below still resizes
    drag(QPoint(187 + 25, kHeaderHeight + 81));
    EXPECT_EQ(width(1), 80);
    drag(QPoint(187 + 25, -81));
    EXPECT_EQ(width(1), 80);
    drag(QPoint(187 - 10, -80));
    EXPECT_EQ(width(1), 70);
    release(QPoint(187 + 40, kHeaderHeight + 81));
    EXPECT_EQ(width(1), 80);
    EXPECT_TRUE(sorts.empty());
}

TEST_F(HeaderTest, AColumnDraggedFarPastTheRightEdgeGoesBackAndTheOverlayHides)
{
    press(QPoint(50, 10)); // grabbed 50 pixels into "Name"
    drag(QPoint(190, 10)); // its right edge well into "Kind"
    EXPECT_TRUE(header->isDraggingColumn());
    EXPECT_EQ(order(), (std::vector<long>{1, 2, 0}));
    EXPECT_EQ(model->columnBeingDragged(), 2);
    EXPECT_TRUE(overlayShown());
    EXPECT_EQ(header->columnDragOverlay()->pos(), header->mapToGlobal(QPoint(140, 0)));

    drag(QPoint(kHeaderWidth + 150, 10));
    EXPECT_EQ(order(), (std::vector<long>{1, 2, 0}));
    EXPECT_TRUE(overlayShown());
    drag(QPoint(kHeaderWidth + 151, 10));
    EXPECT_EQ(order(), (std::vector<long>{0, 1, 2}));
    EXPECT_EQ(model->columnBeingDragged(), 0);
    EXPECT_FALSE(overlayShown());

    drag(QPoint(190, 10)); // back over the header
    EXPECT_TRUE(overlayShown());
    EXPECT_EQ(order(), (std::vector<long>{1, 2, 0}));
    drag(QPoint(190, -51)); // above
    EXPECT_EQ(order(), (std::vector<long>{0, 1, 2}));
    EXPECT_FALSE(overlayShown());

    release(QPoint(190, -51));
    EXPECT_FALSE(header->isDraggingColumn());
    EXPECT_EQ(model->columnBeingDragged(), -1);
    EXPECT_EQ(order(), (std::vector<long>{0, 1, 2}));
    QPointer<Kel_TransparentOverlay> overlay = header->columnDragOverlay();
    EXPECT_TRUE(overlay.isNull());
    EXPECT_TRUE(sorts.empty()); // a drag is no click
}

TEST_F(HeaderTest, AColumnDraggedLeftLandsWhereItsLeftEdgePassesACentre)
{
    press(QPoint(230, 10)); // "Kind", grabbed 40 pixels in
    drag(QPoint(187, 10)); // left edge 147: just at the centre of "Duration"
    EXPECT_EQ(order(), (std::vector<long>{0, 1, 2}));
    drag(QPoint(186, 10)); // left edge 146, past it
    EXPECT_EQ(order(), (std::vector<long>{0, 2, 1}));
    drag(QPoint(60, 10)); // left edge 20, before the centre of "Name"
    EXPECT_EQ(order(), (std::vector<long>{2, 0, 1}));
    release(QPoint(60, 10));
    EXPECT_EQ(order(), (std::vector<long>{2, 0, 1}));
    EXPECT_EQ(model->columnBeingDragged(), -1);
}

TEST_F(HeaderTest, HoveringADividerShowsTheSplitCursorAndAnOverlayComesFromTheCallback)
{
    hover(QPoint(186, 10));
    EXPECT_EQ(header->cursor().shape(), Qt::SplitHCursor);
    hover(QPoint(150, 10));
    EXPECT_EQ(header->cursor().shape(), Qt::ArrowCursor);

    QPointer<Kel_TransparentOverlay> made;
    header->setCreateColumnDragOverlayCB([&made](QWidget* owner) { return made = new Kel_TransparentOverlay(owner); });
    press(QPoint(150, 10));
    drag(QPoint(150, 40));
    ASSERT_FALSE(made.isNull());
    EXPECT_EQ(header->columnDragOverlay(), made.data());
    EXPECT_EQ(made->pixmap().size(), QSize(80, kHeaderHeight)); // a picture of the label
    release(QPoint(150, 40));
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(made.isNull());
}

// Columns changed by someone else, or the model going away, under a drag
// end it without moving anything more.
TEST_F(HeaderTest, TheModelChangingUnderADragEndsItQuietly)
{
    press(QPoint(50, 10));
    drag(QPoint(190, 10));
    ASSERT_EQ(order(), (std::vector<long>{1, 2, 0}));
    model->hideColumn(1);
    drag(QPoint(60, 10)); // would have moved "Name" back to the front
    EXPECT_FALSE(header->isDraggingColumn());
    EXPECT_EQ(model->columnBeingDragged(), -1);
    EXPECT_EQ(order(), (std::vector<long>{2, 0}));
    release(QPoint(60, 10));
    model->showColumn(1, 0);

    press(QPoint(50, 10));
    drag(QPoint(190, 10));
    ASSERT_TRUE(header->isDraggingColumn());
    model->unpublish();
    drag(QPoint(250, 10));
    release(QPoint(250, 10));
    EXPECT_FALSE(header->isDraggingColumn());
    press(QPoint(102, 10));
    drag(QPoint(150, 10));
    release(QPoint(150, 10));
    EXPECT_TRUE(menuTexts(50).startsWith(QStringLiteral("Hide this Column")));
}

// A header and a columned list on one model: the labels sit over the cells,
// and a column dragged in the header moves the list's cells.
TEST_F(HeaderTest, TheLabelsLineUpWithTheListsCellsAndDragsMoveThem)
{
    auto* bridge = new Kel_BridgeQScrollArea(window.get());
    bridge->setGeometry(0, kHeaderHeight, kHeaderWidth, 150);
    auto* list = new Kel_ListWithColumns;
    bridge->setChild(list);
    list->SetColumnDataModel(kBase);
    list->SetRowHeight(20);
    bridge->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    bridge->show();

    const auto cellEdges = [list] {
        QVector<int> rights;
        for (int p = 0; 2 * p + 1 < list->rowStack()->count(); ++p)
            rights << list->rowStack()->viewAt(2 * p + 1)->getRectInParent().right() + 1;
        return rights;
    };
    const auto cellNames = [list] {
        QStringList names;
        for (int p = 0; 2 * p + 1 < list->rowStack()->count(); ++p)
            names << list->rowStack()->viewAt(2 * p + 1)->getName();
        return names;
    };
    EXPECT_EQ(cellEdges(), header->dividerPositions());
    press(QPoint(102, 10));
    drag(QPoint(132, 10));
    release(QPoint(132, 10));
    EXPECT_EQ(cellEdges(), header->dividerPositions());
    EXPECT_EQ(cellEdges()[0], 132);

    press(QPoint(50, 10)); // "Name", now 130 wide: its right edge past the middle of "Kind"
    drag(QPoint(190, 10));
    release(QPoint(190, 10));
    EXPECT_EQ(cellNames(), (QStringList{"Duration", "Kind", "Name"}));
    EXPECT_EQ(cellEdges(), header->dividerPositions());
}

TEST_F(HeaderTest, AClickSortsAndARightClickDoesNot)
{
    QTest::mouseClick(header, Qt::LeftButton, Qt::NoModifier, QPoint(150, 10));
    QTest::mouseClick(header, Qt::LeftButton, Qt::NoModifier, QPoint(150, 10));
    EXPECT_EQ(sorts, (std::vector<long>{1, -2})); // ascending, then descending
    QTest::mouseClick(header, Qt::LeftButton, Qt::NoModifier, QPoint(300, 10)); // no column
    QTest::mouseClick(header, Qt::LeftButton, Qt::NoModifier, QPoint(102, 10)); // a divider
    press(QPoint(150, 10), Qt::RightButton);
    release(QPoint(150, 10), Qt::RightButton);
    EXPECT_EQ(sorts, (std::vector<long>{1, -2}));
    ASSERT_NE(header->contextMenu(), nullptr);
    header->contextMenu()->close();
}

TEST_F(HeaderTest, TheContextMenuHidesShowsAndAddsColumnsWhereItWasOpened)
{
    QTemporaryDir resources;
    Ost_Resource::setResourcePath(resources.path());
    bool selected = false;
    Mve_Action<void()> selectColumns([&selected] { selected = true; }, QStringLiteral("HeaderTest.SelectColumns"));
    selectColumns.Publish();
    header->addContextMenuItem(QStringLiteral("Later"), QStringLiteral("export"));
    header->addContextMenuItem(QStringLiteral("Copy"), QStringLiteral("action0:copy"));
    header->addContextMenuItem(QStringLiteral("Paste"), QStringLiteral("action1:paste"));
    header->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());

    EXPECT_EQ(menuTexts(150), (QStringList{"Hide this Column", "-", "Show Colour", "-", "New Column",
                                           "Select Working Set of Columns", "-", "Copy", "-", "Paste", "-",
                                           "Later"}));

    ASSERT_TRUE(choose(150, QStringLiteral("Show Colour")));
    EXPECT_EQ(order(), (std::vector<long>{0, 3, 1, 2})); // at the clicked position
    ASSERT_TRUE(choose(150, QStringLiteral("Hide this Column")));
    EXPECT_EQ(order(), (std::vector<long>{0, 1, 2}));
    model->setCanHide(1, false);
    EXPECT_FALSE(choose(150, QStringLiteral("Hide this Column")));
    EXPECT_FALSE(choose(350, QStringLiteral("Hide this Column"))); // on no column
    ASSERT_TRUE(choose(350, QStringLiteral("Show Colour")));
    EXPECT_EQ(order(), (std::vector<long>{0, 1, 2, 3})); // appended

    ASSERT_TRUE(choose(50, QStringLiteral("New Column")));
    ASSERT_TRUE(choose(390, QStringLiteral("New Column")));
    EXPECT_EQ(added, (std::vector<long>{0, 4}));
    ASSERT_TRUE(choose(390, QStringLiteral("Select Working Set of Columns")));
    EXPECT_TRUE(selected);

    QStringList chosen;
    QObject::connect(header, &Kel_Header::contextMenuItemChosen,
                     [&chosen](const QString& id, int column) { chosen << QStringLiteral("%1@%2").arg(id).arg(column); });
    ASSERT_TRUE(choose(50, QStringLiteral("Paste")));
    ASSERT_TRUE(choose(390, QStringLiteral("Copy")));
    EXPECT_EQ(chosen, (QStringList{"action1:paste@0", "action0:copy@-1"}));

    // Items of one submenu title share a submenu, reached with the keys.
    header->clearContextMenuItems();
    header->addContextMenuItem(QStringLiteral("As CSV"), QStringLiteral("csv"), QStringLiteral("Export"));
    header->addContextMenuItem(QStringLiteral("As XML"), QStringLiteral("xml"), QStringLiteral("Export"));
    const QStringList texts = menuTexts(150);
    EXPECT_EQ(texts.mid(texts.size() - 2), (QStringList{"-", "Export"}));
    press(QPoint(150, 10), Qt::RightButton);
    release(QPoint(150, 10), Qt::RightButton);
    Kel_PopupMenu* menu = header->contextMenu();
    ASSERT_NE(menu, nullptr);
    QMenu* exportMenu = menu->actions().last()->menu();
    ASSERT_NE(exportMenu, nullptr);
    ASSERT_EQ(exportMenu->actions().size(), 2);
    menu->setActiveAction(menu->actions().last());
    QTest::keyClick(menu, Qt::Key_Right);
    QTest::keyClick(exportMenu, Qt::Key_Down);
    QTest::keyClick(exportMenu, Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(chosen.mid(2), (QStringList{"xml@1"}));

    // Without the privilege to create properties there is no "New Column".
    QFile settings(resources.filePath(QStringLiteral("Settings.xml")));
    ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
    settings.write("<Settings><Windows><Privileges><CreateProperty>false</CreateProperty></Privileges></Windows></Settings>");
    settings.close();
    EXPECT_FALSE(menuTexts(50).contains(QStringLiteral("New Column")));
    Ost_Resource::setResourcePath(QString());
}

TEST_F(HeaderTest, WithoutAModelGesturesDoNothing)
{
    build(QStringLiteral("HeaderTest.Missing"));
    EXPECT_TRUE(header->dividerPositions().isEmpty());
    press(QPoint(50, 10));
    drag(QPoint(200, 10));
    release(QPoint(200, 10));
    EXPECT_FALSE(header->isDraggingColumn());
    EXPECT_EQ(menuTexts(50), (QStringList{"Hide this Column"}));
    header->grab(); // paints without a model
}

// A read-only visible-column array refuses the header's moves: the order
// and the dragged position stay.
TEST_F(HeaderTest, AReadOnlyContainerRefusesTheMove)
{
    const QString base = QStringLiteral("HeaderTest.Fixed");
    Mve_RecordArray columns(base);
    columns.addField<long>(QStringLiteral("width"));
    columns.addField<long>(QStringLiteral("minWidth"));
    columns.addField<QString>(QStringLiteral("label"));
    columns.insertRows(0, 3);
    for (long c = 0; c < 3; ++c)
        columns.setValue<long>(c, QStringLiteral("width"), 100 - 20 * c);
    Mve_Array<long> visible(std::vector<long>{0, 1, 2}, base + QStringLiteral(".sortedVisibleColumns"));
    visible.setReadOnly(true);
    Mve_ContainerMirror container(visible.GetConnectionName(), base + QStringLiteral(".sortedVisibleColumns.arrayMetaData"));
    Mve_SimpleValue<long> dragged(-1, base + QStringLiteral(".columnBeingDragged"));
    for (Mv_ModelBase* m : std::initializer_list<Mv_ModelBase*>{&columns, &visible, &container, &dragged})
        m->Publish();
    build(base);

    press(QPoint(50, 10));
    drag(QPoint(190, 10));
    EXPECT_TRUE(header->isDraggingColumn());
    EXPECT_EQ(visible.values(), (std::vector<long>{0, 1, 2}));
    EXPECT_EQ(dragged.getValue(), 0);
    release(QPoint(190, 10));
    EXPECT_EQ(visible.values(), (std::vector<long>{0, 1, 2}));
    EXPECT_EQ(dragged.getValue(), -1);
    window.reset();
}

// Random drags against a shadow order: while a column is dragged the model
// shows it moved from where it started to the dragged position, the other
// columns keeping their order; a release in the cancel band leaves the
// order as it was before the drag.
TEST_F(HeaderTest, RandomDragsKeepTheOrderConsistent)
{
    model->showColumn(3);
    std::mt19937 random(20261125);
    const auto between = [&random](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(random); };
    for (int round = 0; round < 150; ++round) {
        if (between(0, 5) == 0) { // the application changes the columns between drags
            const long column = between(0, 3);
            if (model->visiblePosition(column) < 0)
                model->showColumn(column, between(0, 3));
            else if (model->visibleColumns().size() > 2)
                model->hideColumn(column);
            model->setWidth(between(0, 3), between(30, 120));
        }
        const std::vector<long> before = order();
        const QVector<int> dividers = header->dividerPositions();
        const int start = between(0, int(before.size()) - 1);
        const int left = start == 0 ? 0 : dividers[start - 1] + 3;
        const QPoint pressAt(between(left + 4, dividers[start] - 4), between(2, kHeaderHeight - 2));
        press(pressAt);
        QPoint at = pressAt;
        const int moves = between(1, 6);
        for (int m = 0; m < moves; ++m) {
            const bool farAway = between(0, 4) == 0;
            at = farAway ? QPoint(between(-400, kHeaderWidth + 400), between(-120, 120))
                         : QPoint(between(-20, kHeaderWidth), between(-40, 60));
            drag(at);
            if (!header->isDraggingColumn())
                continue; // still within the drag distance
            const long position = model->columnBeingDragged();
            ASSERT_GE(position, 0);
            std::vector<long> expected = before;
            const long column = expected[size_t(start)];
            expected.erase(expected.begin() + start);
            expected.insert(expected.begin() + position, column);
            ASSERT_EQ(order(), expected) << "round " << round << " move " << m;
        }
        release(at);
        const bool cancelled = at.x() < -150 || at.x() > kHeaderWidth + 150 || at.y() < -50 ||
                               at.y() > kHeaderHeight + 50;
        if (cancelled) {
            ASSERT_EQ(order(), before) << "round " << round;
        }
        ASSERT_EQ(model->columnBeingDragged(), -1);
        ASSERT_FALSE(header->isDraggingColumn());
    }
}

} // namespace
