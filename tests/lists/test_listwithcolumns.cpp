// The columned list over a column data model, in a shown scroll area, driven
// through the model (as a header would) and with real mouse and key events.
#include "Kel_BlankView.h"
#include "Kel_BridgeQScrollArea.h"
#include "Kel_ColumnDataModel.h"
#include "Kel_ColumnDragView.h"
#include "Kel_ColumnSeparatorView.h"
#include "Kel_HStackView.h"
#include "Kel_ListWithColumns.h"
#include "Kel_ListWithColumnsWidget.h"
#include "Kel_FactoryEntryInterface.h"
#include "Kel_QtWidgetFactoryRegistry.h"
#include "Kel_TextView.h"
#include "Mv_ConnectionDict.h"
#include "Mve_Action.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"
#include "TestSupport.h"

#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>
#include <memory>
#include <random>

namespace {

const long kTextCell = 1;
const long kUnknownCell = 7;

// Clips with three text fields; columns "name", "tape" (read-only) and
// "duration", each a text cell showing the field its variable names.
class ColumnListTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        clips.reset(new Mve_RecordArray(QStringLiteral("ColTest.Clips")));
        for (const char* field : {"name", "tape", "duration"})
            clips->addField<QString>(QLatin1String(field));
        clips->Publish();
        for (int i = 0; i < 4; ++i) {
            clips->appendRow();
            clips->setValue<QString>(i, QStringLiteral("name"), QStringLiteral("clip%1").arg(i));
            clips->setValue<QString>(i, QStringLiteral("tape"), QStringLiteral("tape%1").arg(i));
        }
        addTextColumn(QStringLiteral("name"), QStringLiteral("Name"), 80, false);
        addTextColumn(QStringLiteral("tape"), QStringLiteral("Tape"), 60, true);
        addTextColumn(QStringLiteral("duration"), QStringLiteral("Duration"), 70, false);
        ASSERT_TRUE(columns.publish());

        window.reset(new QWidget);
        auto* layout = new QVBoxLayout(window.get());
        bridge = new Kel_BridgeQScrollArea(window.get());
        layout->addWidget(bridge);
        after = new QLineEdit(window.get());
        layout->addWidget(after);
        list = new Kel_ListWithColumns;
        bridge->setChild(list);
        auto prototype = std::make_shared<Kel_TextView>();
        prototype->SetNameConnection(QStringLiteral("ColTest.Clips.$Field[$Row]"));
        list->SetViewTypeMap({{int(kTextCell), prototype}});
        list->SetListConnectionName(QStringLiteral("ColTest.Clips"));
        list->SetColumnDataModel(QStringLiteral("ColTest.Cols"));
        list->setSelectionMode(Kel_ListView::Single);
        list->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
        window->resize(400, 300);
        window->show();
        // Keyboard focus needs the active window on a display server.
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    void TearDown() override
    {
        window.reset();
        clips.reset();
    }

    long addTextColumn(const QString& field, const QString& label, long width, bool readOnly)
    {
        Kel_ColumnDataModel::Column c;
        c.identifier = field;
        c.label = label;
        c.width = width;
        c.minWidth = 10;
        c.viewType = kTextCell;
        c.readOnly = readOnly;
        c.connectionEnvironmentVars = QStringLiteral("Field=") + field;
        return columns.addColumn(c);
    }

    Kel_HStackView* stack() const { return list->rowStack(); }
    QWidget* content() const { return bridge->viewportWidget(); }
    // The cell names left to right, each checked to be followed by a separator.
    QStringList cells() const
    {
        QStringList names;
        Kel_HStackView* row = stack();
        EXPECT_EQ(row->count() % 2, 1);
        EXPECT_EQ(row->viewAt(0)->getWidth(), 2);
        int x = 2;
        for (int i = 1; i + 1 < row->count(); i += 2) {
            Kel_ViewInterface* cell = row->viewAt(i);
            Kel_ViewInterface* separator = row->viewAt(i + 1);
            EXPECT_EQ(cell->getOrigin().x(), x) << "cells lie side by side";
            EXPECT_TRUE(dynamic_cast<kel_listwithcolumns::Kel_ColumnSeparatorView*>(separator))
                << "after " << cell->getName().toStdString();
            EXPECT_EQ(separator->getSize(), list->separatorSize());
            x += cell->getWidth() + separator->getWidth();
            names << cell->getName();
        }
        return names;
    }
    QPoint cellPoint(long row, long position) const
    {
        Kel_ViewInterface* cell = stack()->viewAt(Kel_ListWithColumns::columnIndexToViewIndex(position));
        return QPoint(cell->getOrigin().x() + 5, int(row * list->getCellHeight()) + 5);
    }
    QList<long> selection() const
    {
        QList<long> rows;
        for (long r : list->getSelectedList()->getValue())
            rows << r;
        return rows;
    }
    std::pair<long, long> grid() const { return {list->gridRow(), list->gridColumn()}; }
    void key(int k, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(content(), Qt::Key(k), modifiers);
    }

    std::unique_ptr<Mve_RecordArray> clips;
    Kel_ColumnDataModel columns{QStringLiteral("ColTest.Cols")};
    std::unique_ptr<QWidget> window;
    Kel_BridgeQScrollArea* bridge = nullptr;
    QLineEdit* after = nullptr;
    Kel_ListWithColumns* list = nullptr;
};

TEST_F(ColumnListTest, BuildsABlankThenACellAndSeparatorPerVisibleColumn)
{
    ASSERT_EQ(stack()->count(), 7);
    EXPECT_EQ(cells(), QStringList({"Name", "Tape", "Duration"}));
    EXPECT_EQ(list->getCellHeight(), 47);
    EXPECT_TRUE(stack()->viewAt(3)->getReadOnly());
    EXPECT_FALSE(stack()->viewAt(1)->getReadOnly());

    // Each cell reaches its own field of the clicked row.
    QTest::mouseClick(content(), Qt::LeftButton, Qt::NoModifier, cellPoint(2, 0));
    ASSERT_EQ(list->getCurrentCell(), 2);
    for (int i : {1, 3}) // painting moved the row view; read the current row again
        static_cast<Kel_TextView*>(stack()->viewAt(i))->updateAppearance();
    EXPECT_EQ(static_cast<Kel_TextView*>(stack()->viewAt(1))->getText(), QStringLiteral("clip2"));
    EXPECT_EQ(static_cast<Kel_TextView*>(stack()->viewAt(3))->getText(), QStringLiteral("tape2"));
    EXPECT_EQ(list->getMinSize().width(), 2 + 80 + 60 + 70 + 3 * 5) << "the cells' extent, not the port's";

    // A copy follows the same columns once connected.
    std::unique_ptr<Kel_ListWithColumns> copy(static_cast<Kel_ListWithColumns*>(list->clone()));
    copy->SetSelectionConnectionName(QStringLiteral("ColTest.Copy"));
    copy->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    ASSERT_TRUE(copy->rowStack());
    columns.hideColumn(1);
    EXPECT_EQ(copy->rowStack()->count(), 5);
    EXPECT_EQ(copy->rowStack()->viewAt(3)->getName(), QStringLiteral("Duration"));
}

TEST_F(ColumnListTest, FollowsTheColumnModelAwayAndBack)
{
    columns.unpublish();
    EXPECT_EQ(stack()->count(), 1) << "only the blank is left";
    columns.hideColumn(0);
    ASSERT_TRUE(columns.publish());
    EXPECT_EQ(cells(), QStringList({"Tape", "Duration"}));
    columns.setBaseName(QStringLiteral("ColTest.Elsewhere"));
    EXPECT_EQ(stack()->count(), 1);
    columns.setBaseName(QStringLiteral("ColTest.Cols"));
    EXPECT_EQ(cells(), QStringList({"Tape", "Duration"}));
}

TEST_F(ColumnListTest, UnnamedUnknownAndChangedColumnsKeepTheirPlace)
{
    Kel_ColumnDataModel::Column c;
    c.width = 33;
    c.viewType = kUnknownCell;
    columns.addColumn(c); // column 3
    columns.addColumn(c); // column 4, no label
    EXPECT_EQ(cells(), QStringList({"Name", "Tape", "Duration", "column3", "column4"}));
    Kel_ViewInterface* unknown = stack()->viewAt(7);
    EXPECT_TRUE(dynamic_cast<Kel_BlankView*>(unknown));
    EXPECT_EQ(unknown->getWidth(), 33);

    // A shown column's label, type and read-only flag reach its cell at once,
    // in its place and at its width.
    columns.setLabel(3, QStringLiteral("x"));
    columns.setViewType(0, kUnknownCell);
    columns.setReadOnly(2, true);
    EXPECT_EQ(cells(), QStringList({"Name", "Tape", "Duration", "x", "column4"}));
    EXPECT_TRUE(dynamic_cast<Kel_BlankView*>(stack()->viewAt(1)));
    EXPECT_EQ(stack()->viewAt(1)->getWidth(), 80);
    EXPECT_TRUE(stack()->viewAt(5)->getReadOnly());
    columns.setViewType(0, kTextCell);
    EXPECT_EQ(stack()->viewAt(1)->getName(), QStringLiteral("Name"));
    EXPECT_FALSE(dynamic_cast<Kel_BlankView*>(stack()->viewAt(1)));

    // A hidden column's change waits for it to be shown.
    columns.hideColumn(3);
    columns.setLabel(3, QStringLiteral("y"));
    columns.showColumn(3, 0);
    EXPECT_EQ(cells(), QStringList({"y", "Name", "Tape", "Duration", "column4"}));
}

TEST_F(ColumnListTest, WidthsNeverGoBelowTheMinimumWhileTheModelKeepsItsValue)
{
    Kel_ColumnDataModel::Column c;
    c.label = QStringLiteral("Narrow");
    c.width = 30;
    c.minWidth = 60;
    const long narrow = columns.addColumn(c);
    EXPECT_EQ(stack()->viewAt(7)->getWidth(), 60);
    EXPECT_EQ(columns.column(narrow).width, 30);

    columns.setWidth(0, 120); // what a header's divider drag writes
    EXPECT_EQ(stack()->viewAt(1)->getWidth(), 120);
    EXPECT_EQ(stack()->viewAt(3)->getOrigin().x(), 2 + 120 + 5) << "later cells move along";
    columns.setMinWidth(narrow, 90);
    EXPECT_EQ(stack()->viewAt(7)->getWidth(), 90);
    columns.setWidth(narrow, 100);
    EXPECT_EQ(stack()->viewAt(7)->getWidth(), 100);
}

TEST_F(ColumnListTest, MovedCellsTakeTheirOwnSeparatorAlong)
{
    Mvt_ArrayContainer::Listener meta; // the header's way of reordering
    meta.SetConnectionName(QStringLiteral("ColTest.Cols.sortedVisibleColumns.arrayMetaData"));
    meta.connect(Mv_ConnectionEnvironment::blankEnvironment());
    std::vector<Kel_ViewInterface*> separators;
    for (int i = 2; i < 7; i += 2)
        separators.push_back(stack()->viewAt(i));

    ASSERT_TRUE(meta.requestMove(0, 2));
    EXPECT_EQ(cells(), QStringList({"Tape", "Duration", "Name"}));
    EXPECT_EQ(stack()->viewAt(6), separators[0]) << "Name's own separator follows it";
    ASSERT_TRUE(meta.requestMove(2, 0));
    EXPECT_EQ(cells(), QStringList({"Name", "Tape", "Duration"}));
    EXPECT_EQ(stack()->viewAt(2), separators[0]);
    EXPECT_EQ(stack()->viewAt(4), separators[1]);
}

TEST_F(ColumnListTest, ADraggedColumnIsMarkedWhereverItGoes)
{
    Mvt_SimpleValue<long>::Listener dragged;
    dragged.SetConnectionName(QStringLiteral("ColTest.Cols.columnBeingDragged"));
    dragged.connect(Mv_ConnectionEnvironment::blankEnvironment());
    ASSERT_EQ(stack()->proxyCount(), 0);

    dragged.set(1);
    ASSERT_EQ(stack()->proxyCount(), 1);
    auto proxyRect = [this] {
        for (const auto& entry : stack()->getSubViews()) {
            if (dynamic_cast<kel_listwithcolumns::Kel_ColumnDragView*>(entry.second))
                return entry.second->getRectInParent();
        }
        return QRect();
    };
    EXPECT_EQ(proxyRect(), QRect(2 + 80 + 5, 0, 60 + 5, 47)) << "the Tape cell and its separator";
    EXPECT_EQ(stack()->count(), 7) << "proxies take no place among the cells";

    columns.moveVisibleColumn(1, 0);
    dragged.set(0);
    ASSERT_EQ(stack()->proxyCount(), 1);
    EXPECT_EQ(proxyRect(), QRect(2, 0, 65, 47));
    EXPECT_EQ(cells(), QStringList({"Tape", "Name", "Duration"}));

    dragged.set(-1);
    EXPECT_EQ(stack()->proxyCount(), 0);
}

TEST_F(ColumnListTest, FixedAspectCellsSetTheRowHeightAndTheirMinimumWidth)
{
    auto picture = std::make_shared<Kel_BlankView>();
    picture->setAspect(0.5f);
    auto map = list->GetViewTypeMap();
    map[2] = picture;
    list->SetViewTypeMap(map);
    Kel_ColumnDataModel::Column c;
    c.label = QStringLiteral("Picture");
    c.width = 120;
    c.viewType = 2;
    const long column = columns.addColumn(c);
    EXPECT_EQ(list->GetRowHeight(), 60);
    EXPECT_EQ(list->getCellHeight(), 60);
    EXPECT_EQ(stack()->viewAt(1)->getHeight(), 60) << "every cell follows the row";
    const long fontRowHeight = list->GetFontRowHeight();
    EXPECT_EQ(columns.column(column).minWidth, long(fontRowHeight / 0.5));

    // A smaller font keeps the height the picture needs at its width, and
    // the picture's width follows the row height.
    QFont font = list->GetFont();
    font.setPointSize(8);
    list->SetFont(font);
    EXPECT_EQ(list->GetRowHeight(), 60);
    EXPECT_EQ(columns.column(column).width, 120);
    columns.setWidth(column, 160);
    EXPECT_EQ(list->GetRowHeight(), 80);
}

TEST_F(ColumnListTest, TabWalksTheEditableCellsAndLeavesTheGridAtTheEnds)
{
    EXPECT_EQ(grid(), std::make_pair(-1L, -1L));
    QTest::mouseClick(content(), Qt::LeftButton, Qt::NoModifier, cellPoint(2, 0));
    EXPECT_EQ(grid(), std::make_pair(2L, 0L));
    EXPECT_EQ(selection(), QList<long>({2}));
    EXPECT_TRUE(content()->hasFocus());

    key(Qt::Key_Tab);
    EXPECT_EQ(grid(), std::make_pair(2L, 2L)) << "the read-only tape is skipped";
    key(Qt::Key_Tab);
    EXPECT_EQ(grid(), std::make_pair(3L, 0L)) << "on to the next row";
    EXPECT_EQ(selection(), QList<long>({3}));
    key(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(grid(), std::make_pair(2L, 2L));
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(grid(), std::make_pair(2L, 0L));
    key(Qt::Key_Up);
    key(Qt::Key_Up);
    key(Qt::Key_Up);
    EXPECT_EQ(grid(), std::make_pair(3L, 0L)) << "up wraps to the bottom";
    key(Qt::Key_Down);
    EXPECT_EQ(grid(), std::make_pair(0L, 0L)) << "down wraps to the top";

    key(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(grid(), std::make_pair(-1L, -1L)) << "before the first cell: out of the grid";
    EXPECT_TRUE(selection().isEmpty());
    EXPECT_TRUE(content()->hasFocus());
    key(Qt::Key_Tab);
    EXPECT_TRUE(after->hasFocus()) << "outside the grid Tab moves the focus on";

    QTest::mouseClick(content(), Qt::LeftButton, Qt::NoModifier, cellPoint(3, 2));
    EXPECT_EQ(grid(), std::make_pair(3L, 2L));
    key(Qt::Key_Tab);
    EXPECT_EQ(grid(), std::make_pair(-1L, -1L)) << "past the last cell: out of the grid";
    EXPECT_TRUE(selection().isEmpty());

    // With one editable column a walk comes round to it and stays put.
    columns.setReadOnly(2, true);
    columns.hideColumn(2);
    columns.showColumn(2, 2);
    QTest::mouseClick(content(), Qt::LeftButton, Qt::NoModifier, cellPoint(1, 0));
    key(Qt::Key_Tab);
    EXPECT_EQ(grid(), std::make_pair(1L, 0L));
    key(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(grid(), std::make_pair(1L, 0L));
}

TEST_F(ColumnListTest, ReadOnlyCellsAndEscapeLeaveNoGridCell)
{
    QTest::mouseClick(content(), Qt::LeftButton, Qt::NoModifier, cellPoint(1, 1));
    EXPECT_EQ(list->gridColumn(), -1) << "a read-only cell is no grid cell";
    EXPECT_EQ(selection(), QList<long>({1}));
    key(Qt::Key_Down);
    EXPECT_EQ(selection(), QList<long>({2})) << "without a grid cell the selection moves";

    QTest::mouseClick(content(), Qt::LeftButton, Qt::NoModifier, cellPoint(1, 2));
    EXPECT_EQ(grid(), std::make_pair(1L, 2L));
    key(Qt::Key_Escape);
    EXPECT_EQ(grid(), std::make_pair(-1L, -1L));
    EXPECT_EQ(selection(), QList<long>({1})) << "the row stays selected";

    QTest::mouseClick(content(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 4 * 47 + 10));
    EXPECT_EQ(list->gridRow(), -1) << "below the rows";
    long row = -1, column = -1;
    EXPECT_EQ(list->GetCellAt(QPoint(2 + 80 + 2, 10), &row, &column), stack()->viewAt(2));
    EXPECT_EQ(column, 0) << "a separator counts as the column on its left";
    EXPECT_EQ(list->GetCellAt(QPoint(1, 47 + 3), &row, &column), stack()->viewAt(0));
    EXPECT_EQ(std::make_pair(row, column), std::make_pair(1L, -1L));
    EXPECT_EQ(list->GetCellAt(QPoint(1, 4 * 47), &row, &column), nullptr);

    // A list that selects nothing leaves every key to its widget.
    list->setSelectionMode(Kel_ListView::None);
    QTest::mouseClick(content(), Qt::LeftButton, Qt::NoModifier, cellPoint(1, 0));
    key(Qt::Key_Down);
    EXPECT_EQ(list->gridRow(), 1);
    key(Qt::Key_Tab);
    EXPECT_TRUE(after->hasFocus());
}

TEST_F(ColumnListTest, ReturnRunsTheEnterActionOnlyOutsideTheGrid)
{
    int entered = 0;
    Mve_Action<void()> enter([&entered] { ++entered; }, QStringLiteral("ColTest.Enter"));
    Mve_SimpleValue<QString> chosen(QString(), QStringLiteral("ColTest.Chosen"));
    publishAll({&enter, &chosen});
    list->setEnterActionString(QStringLiteral("ColTest.Enter()"));
    list->setSelectionActionString(QStringLiteral("ColTest.Chosen = ColTest.Clips.name[$Row]"));
    list->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    ASSERT_EQ(stack()->count(), 7) << "connecting again rebuilds the same row";

    QTest::mouseClick(content(), Qt::LeftButton, Qt::NoModifier, cellPoint(1, 0));
    EXPECT_EQ(chosen.getValue(), QStringLiteral("clip1"));
    key(Qt::Key_Return);
    EXPECT_EQ(entered, 0) << "the first Return leaves the cell";
    EXPECT_EQ(list->gridRow(), -1);
    key(Qt::Key_Enter);
    EXPECT_EQ(entered, 1);
    EXPECT_EQ(selection(), QList<long>({1}));

    chosen.setValue(QString());
    Mvt_SimpleValue<long>::Listener current(list->getCurrentRowConnectionName());
    current.connect(Mv_ConnectionEnvironment::blankEnvironment());
    current.set(3);
    ASSERT_EQ(list->getCurrentCell(), 3);
    list->executeSelectionAction();
    EXPECT_EQ(chosen.getValue(), QStringLiteral("clip1")) << "run for the first selected row";
}

// Any order of shows, hides and moves of visible columns leaves the row
// stack with the visible columns' cells in order, each with its separator.
TEST_F(ColumnListTest, RandomColumnEditsKeepTheRowInOrder)
{
    for (int i = 3; i < 8; ++i) {
        Kel_ColumnDataModel::Column c;
        c.label = QStringLiteral("C%1").arg(i);
        c.width = 20 + i;
        c.visible = i % 2 == 0;
        columns.addColumn(c);
    }
    const QStringList labels = {"Name", "Tape", "Duration", "C3", "C4", "C5", "C6", "C7"};
    std::vector<long> shadow = columns.visibleColumns();
    Mvt_ArrayContainer::Listener meta;
    meta.SetConnectionName(QStringLiteral("ColTest.Cols.sortedVisibleColumns.arrayMetaData"));
    meta.connect(Mv_ConnectionEnvironment::blankEnvironment());
    std::mt19937 random(1711);
    auto pick = [&](size_t n) { return long(random() % std::max<size_t>(n, 1)); };

    for (int step = 0; step < 300; ++step) {
        switch (random() % 4) {
        case 0:
            if (!shadow.empty()) {
                const long p = pick(shadow.size());
                columns.hideColumn(shadow[size_t(p)]);
                shadow.erase(shadow.begin() + p);
            }
            break;
        case 1: {
            const std::vector<long> hidden = columns.hiddenColumns();
            if (!hidden.empty()) {
                const long column = hidden[size_t(pick(hidden.size()))];
                const long p = pick(shadow.size() + 1);
                columns.showColumn(column, p);
                shadow.insert(shadow.begin() + p, column);
            }
            break;
        }
        default: {
            const long from = pick(shadow.size());
            const long to = pick(shadow.size());
            if (meta.requestMove(from, to)) {
                const long column = shadow[size_t(from)];
                shadow.erase(shadow.begin() + from);
                shadow.insert(shadow.begin() + to, column);
            }
            break;
        }
        }
        QStringList expected;
        for (long column : shadow)
            expected << labels[int(column)];
        SCOPED_TRACE(step);
        ASSERT_EQ(cells(), expected);
    }
}

TEST(ListWithColumnsWidget, FormsShowTextColumnsOfTheRecordFields)
{
    Mve_RecordArray clips(QStringLiteral("ColTest.FormClips"));
    clips.addField<QString>(QStringLiteral("name"));
    clips.addField<QString>(QStringLiteral("kind"));
    clips.Publish();
    clips.insertRows(0, 3);
    clips.setValue<QString>(1, QStringLiteral("kind"), QStringLiteral("audio"));
    Kel_ColumnDataModel columns(QStringLiteral("ColTest.FormColumns"));
    Kel_ColumnDataModel::Column kind;
    kind.label = QStringLiteral("Kind");
    kind.width = 90;
    kind.connectionEnvironmentVars = QStringLiteral("Field=kind");
    columns.addColumn(kind);
    columns.publish();

    Kel_FactoryEntryInterface* entry = Kel_QtWidgetFactoryRegistry::getEntry(QStringLiteral("Kel_ListWithColumnsWidget"));
    ASSERT_TRUE(entry);
    std::unique_ptr<QWidget> widget(entry->create(nullptr, QStringLiteral("Bin"), false));
    auto* listWidget = qobject_cast<Kel_ListWithColumnsWidget*>(widget.get());
    ASSERT_TRUE(listWidget);
    widget->setProperty("listConnection", QByteArray("ColTest.FormClips"));
    widget->setProperty("columnDataModel", QByteArray("ColTest.FormColumns"));
    widget->setProperty("rowHeight", 22);
    widget->setProperty("selectionMode", 0);
    EXPECT_EQ(widget->property("columnDataModel").toByteArray(), QByteArray("ColTest.FormColumns"));
    listWidget->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    widget->resize(300, 120);
    widget->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(widget.get()));

    Kel_ListWithColumns* list = listWidget->columnsView();
    ASSERT_TRUE(list && list->rowStack());
    ASSERT_EQ(list->rowStack()->count(), 3);
    EXPECT_EQ(list->getCellHeight(), 22);
    QTest::mouseClick(listWidget->viewportWidget(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 22 + 5));
    EXPECT_TRUE(list->IsRowSelected(1));
    auto* text = dynamic_cast<Kel_TextView*>(list->rowStack()->viewAt(1));
    ASSERT_TRUE(text);
    text->updateAppearance();
    EXPECT_EQ(text->getText(), QStringLiteral("audio"));
    EXPECT_EQ(text->getWidth(), 90);
}

} // namespace
