// The columned list and its header as screen readers see them: a table
// headed by the column labels that follows the column model, cells reached
// at any row, the keyboard's grid cell announced, and the header's labels
// with their sort state and actions.
#include "AccessibilityTestSupport.h"

#include "Kel_BridgeQScrollArea.h"
#include "Kel_ColumnDataModel.h"
#include "Kel_HStackView.h"
#include "Kel_Header.h"
#include "Kel_ListWithColumns.h"
#include "Kel_PopupMenu.h"
#include "Kel_TextView.h"
#include "Mve_ComputedContainer.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>
#include <vector>

using namespace a11ytest;

namespace {

const long kTextCell = 1;

// A million computed clips shown in columns "Name", "Tape" (read-only) and
// "Duration", with a header on the same column model above the list.
class ColumnedTable : public ::testing::Test
{
protected:
    void SetUp() override
    {
        for (auto* container : {&names, &tapes, &durations})
            container->setSizeFunction([] { return 1000000L; });
        publishAll({&names, &tapes, &durations});
        addColumn(QStringLiteral("name"), QStringLiteral("Name"), false);
        addColumn(QStringLiteral("tape"), QStringLiteral("Tape"), true);
        addColumn(QStringLiteral("duration"), QStringLiteral("Duration"), false);
        columns.setSortFunction([this](long column, bool ascending) {
            sorts.push_back(ascending ? column : -1 - column);
            return true;
        });
        ASSERT_TRUE(columns.publish());

        auto* layout = new QVBoxLayout(&window);
        before = new QLineEdit(&window);
        layout->addWidget(before);
        header = new Kel_Header(&window, "ClipHeader");
        header->setColumnBaseConnectionName(QStringLiteral("A11yCols.Columns"));
        layout->addWidget(header);
        bridge = new Kel_BridgeQScrollArea(&window);
        bridge->setObjectName(QStringLiteral("Clips"));
        layout->addWidget(bridge);
        list = new Kel_ListWithColumns;
        bridge->setChild(list);
        auto prototype = std::make_shared<Kel_TextView>();
        prototype->SetNameConnection(QStringLiteral("$Field[$Row]"));
        list->SetViewTypeMap({{int(kTextCell), prototype}});
        list->SetRowHeight(20);
        list->SetListConnectionName(QStringLiteral("A11yCols.name"));
        list->SetColumnDataModel(QStringLiteral("A11yCols.Columns"));
        list->setSelectionMode(Kel_ListView::Single);
        bridge->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
        header->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
        window.resize(400, 300);
        ASSERT_TRUE(showActive(window));
        table = Kel_ViewAccessibility::interfaceFor(list);
        ASSERT_NE(table, nullptr);
        ASSERT_NE(table->tableInterface(), nullptr);
    }
    void TearDown() override
    {
        QApplication::processEvents(); // menus deleted later
    }

    void addColumn(const QString& field, const QString& label, bool readOnly)
    {
        Kel_ColumnDataModel::Column c;
        c.identifier = field;
        c.label = label;
        c.width = 90;
        c.minWidth = 20;
        c.viewType = kTextCell;
        c.readOnly = readOnly;
        c.connectionEnvironmentVars = QStringLiteral("Field=A11yCols.") + field;
        columns.addColumn(c);
    }
    QStringList headerTexts() const
    {
        QStringList texts;
        for (int c = 0; c < table->tableInterface()->columnCount(); ++c)
            texts << table->child(c)->text(QAccessible::Name);
        return texts;
    }
    QStringList rowTexts(int row) const
    {
        QStringList texts;
        for (int c = 0; c < table->tableInterface()->columnCount(); ++c)
            texts << table->tableInterface()->cellAt(row, c)->text(QAccessible::Name);
        return texts;
    }
    // A click on the cell of a visible position in a row.
    void clickCell(long row, long position)
    {
        Kel_ViewInterface* cell = list->rowStack()->viewAt(Kel_ListWithColumns::columnIndexToViewIndex(position));
        const QPoint at(cell->getOrigin().x() + 5, int(row * list->getCellHeight()) + 5);
        QTest::mouseClick(bridge->viewportWidget(), Qt::LeftButton, Qt::NoModifier, at);
    }
    QAccessibleInterface* headerInterface() const { return QAccessible::queryAccessibleInterface(header); }

    Mve_ComputedContainer<QString> names{[](long row, QString& v) {
                                             v = QStringLiteral("Clip %1").arg(row);
                                             return row >= 0;
                                         },
                                         QStringLiteral("A11yCols.name")};
    Mve_ComputedContainer<QString> tapes{[](long row, QString& v) {
                                             v = QStringLiteral("Tape %1").arg(row % 7);
                                             return row >= 0;
                                         },
                                         QStringLiteral("A11yCols.tape")};
    Mve_ComputedContainer<QString> durations{[](long row, QString& v) {
                                                 v = QStringLiteral("%1s").arg(row % 60);
                                                 return row >= 0;
                                             },
                                             QStringLiteral("A11yCols.duration")};
    Kel_ColumnDataModel columns{QStringLiteral("A11yCols.Columns")};
    std::vector<long> sorts; // column, or -1 - column for descending
    QWidget window;
    QLineEdit* before = nullptr;
    Kel_Header* header = nullptr;
    Kel_BridgeQScrollArea* bridge = nullptr;
    Kel_ListWithColumns* list = nullptr;
    QAccessibleInterface* table = nullptr;
};

TEST_F(ColumnedTable, IsATableHeadedByTheLabelsWithEveryRowReachable)
{
    EXPECT_EQ(table->role(), QAccessible::Table);
    EXPECT_EQ(table->text(QAccessible::Name), QStringLiteral("Clips"));
    EXPECT_EQ(table->tableInterface()->columnCount(), 3);
    EXPECT_EQ(table->tableInterface()->rowCount(), 1000000);
    EXPECT_EQ(headerTexts(), (QStringList{"Name", "Tape", "Duration"}));
    EXPECT_EQ(table->child(0)->role(), QAccessible::ColumnHeader);
    EXPECT_EQ(table->tableInterface()->columnDescription(2), QStringLiteral("Duration"));

    QAccessibleInterface* tape = table->tableInterface()->cellAt(500000, 1);
    ASSERT_NE(tape, nullptr);
    EXPECT_EQ(tape->role(), QAccessible::Cell);
    EXPECT_EQ(tape->text(QAccessible::Name), QStringLiteral("Tape 4"));
    EXPECT_EQ(tape->text(QAccessible::Value), tape->text(QAccessible::Name));
    EXPECT_EQ(rowTexts(500000), (QStringList{"Clip 500000", "Tape 4", "20s"}));
    EXPECT_EQ(table->indexOfChild(tape), 3 + 500000 * 3 + 1);
    EXPECT_EQ(tape->tableCellInterface()->columnHeaderCells(), QList<QAccessibleInterface*>{table->child(1)});
    EXPECT_TRUE(tape->state().offscreen);
    EXPECT_FALSE(table->tableInterface()->cellAt(0, 1)->state().offscreen);
    // The cell lies where its column is painted in its row.
    const QPoint listTop = bridge->viewportWidget()->mapToGlobal(QPoint(0, 0));
    EXPECT_EQ(tape->rect().top() - listTop.y(), 500000 * list->getCellHeight());
    EXPECT_EQ(tape->rect().left() - listTop.x(),
              list->rowStack()->viewAt(Kel_ListWithColumns::columnIndexToViewIndex(1))->getOrigin().x());
    EXPECT_EQ(tape->rect().width(), 90);

    EXPECT_EQ(table->tableInterface()->cellAt(1000000, 0), nullptr);
    EXPECT_EQ(table->tableInterface()->cellAt(0, 3), nullptr);
}

TEST_F(ColumnedTable, FollowsColumnsMovedHiddenShownAndRelabelled)
{
    EventRecorder recorder;
    QAccessibleInterface* oldCell = table->tableInterface()->cellAt(2, 0);
    const QAccessible::Id oldId = QAccessible::uniqueId(oldCell);

    ASSERT_TRUE(columns.moveVisibleColumn(0, 2));
    // The cells made before the move are gone: (2, 0) is another column now.
    EXPECT_EQ(QAccessible::accessibleInterface(oldId), nullptr);
    EXPECT_EQ(headerTexts(), (QStringList{"Tape", "Duration", "Name"}));
    EXPECT_EQ(rowTexts(2), (QStringList{"Tape 2", "2s", "Clip 2"}));
    auto changes = recorder.ofType(QAccessible::TableModelChanged);
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0].iface, table);
    EXPECT_EQ(changes[0].modelChange, QAccessibleTableModelChangeEvent::ModelReset);

    recorder.events.clear();
    ASSERT_TRUE(columns.hideColumn(columns.columnIndex(QStringLiteral("duration"))));
    EXPECT_EQ(table->tableInterface()->columnCount(), 2);
    EXPECT_EQ(headerTexts(), (QStringList{"Tape", "Name"}));
    EXPECT_EQ(rowTexts(9), (QStringList{"Tape 2", "Clip 9"}));
    EXPECT_EQ(table->childCount(), 2 + 1000000 * 2);
    changes = recorder.ofType(QAccessible::TableModelChanged);
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0].modelChange, QAccessibleTableModelChangeEvent::ColumnsRemoved);
    EXPECT_EQ(changes[0].firstColumn, 1);
    EXPECT_EQ(changes[0].lastColumn, 1);

    recorder.events.clear();
    ASSERT_TRUE(columns.showColumn(columns.columnIndex(QStringLiteral("duration")), 0));
    EXPECT_EQ(headerTexts(), (QStringList{"Duration", "Tape", "Name"}));
    EXPECT_EQ(rowTexts(61), (QStringList{"1s", "Tape 5", "Clip 61"}));
    changes = recorder.ofType(QAccessible::TableModelChanged);
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0].modelChange, QAccessibleTableModelChangeEvent::ColumnsInserted);
    EXPECT_EQ(changes[0].firstColumn, 0);
    EXPECT_EQ(changes[0].lastColumn, 0);

    // A label is read from the model when asked.
    columns.setLabel(columns.columnIndex(QStringLiteral("tape")), QStringLiteral("Reel"));
    EXPECT_EQ(headerTexts(), (QStringList{"Duration", "Reel", "Name"}));
}

TEST_F(ColumnedTable, KeysMovingBetweenCellsAnnounceTheGridCell)
{
    EventRecorder recorder;
    clickCell(3, 0);
    ASSERT_TRUE(bridge->hasFocus());
    ASSERT_EQ(list->gridRow(), 3);
    QList<Event> focus = recorder.ofType(QAccessible::Focus);
    ASSERT_FALSE(focus.isEmpty());
    EXPECT_EQ(focus.last().iface, table->tableInterface()->cellAt(3, 0));
    EXPECT_EQ(table->focusChild(), table->tableInterface()->cellAt(3, 0));

    // Tab skips the read-only tape column.
    recorder.events.clear();
    QTest::keyClick(bridge->viewportWidget(), Qt::Key_Tab);
    focus = recorder.ofType(QAccessible::Focus);
    ASSERT_FALSE(focus.isEmpty());
    EXPECT_EQ(focus.last().iface, table->tableInterface()->cellAt(3, 2));
    EXPECT_EQ(focus.last().name, QStringLiteral("3s"));
    EXPECT_TRUE(table->tableInterface()->cellAt(3, 2)->state().focused);

    recorder.events.clear();
    QTest::keyClick(bridge->viewportWidget(), Qt::Key_Down);
    focus = recorder.ofType(QAccessible::Focus);
    ASSERT_FALSE(focus.isEmpty());
    EXPECT_EQ(focus.last().iface, table->tableInterface()->cellAt(4, 2));
    EXPECT_EQ(focus.last().name, QStringLiteral("4s"));

    // Leaving the grid gives the focus back to the row.
    QTest::keyClick(bridge->viewportWidget(), Qt::Key_Escape);
    EXPECT_EQ(table->focusChild(), table->tableInterface()->cellAt(4, 0));
}

TEST_F(ColumnedTable, HeaderLabelsAreColumnHeadersWithSortStateAndActions)
{
    QAccessibleInterface* iface = headerInterface();
    ASSERT_NE(iface, nullptr);
    EXPECT_EQ(iface->role(), QAccessible::Grouping);
    EXPECT_EQ(iface->text(QAccessible::Name), QStringLiteral("ClipHeader"));
    ASSERT_EQ(iface->childCount(), 3);
    QStringList labels;
    for (int i = 0; i < iface->childCount(); ++i) {
        QAccessibleInterface* item = iface->child(i);
        EXPECT_EQ(item->role(), QAccessible::ColumnHeader);
        EXPECT_EQ(item->parent(), iface);
        EXPECT_EQ(iface->indexOfChild(item), i);
        labels << item->text(QAccessible::Name);
    }
    EXPECT_EQ(labels, (QStringList{"Name", "Tape", "Duration"}));
    EXPECT_EQ(iface->child(3), nullptr);

    QAccessibleInterface* tape = iface->child(1);
    EXPECT_EQ(tape->rect(), QRect(header->mapToGlobal(header->labelRect(1).topLeft()), header->labelRect(1).size()));
    EXPECT_EQ(iface->childAt(tape->rect().center().x(), tape->rect().center().y()), tape);
    EXPECT_TRUE(tape->text(QAccessible::Value).isEmpty());

    ASSERT_NE(tape->actionInterface(), nullptr);
    EXPECT_TRUE(tape->actionInterface()->actionNames().contains(QAccessibleActionInterface::showMenuAction()));
    {
        // A reader hears that the sorted label's description changed.
        EventRecorder recorder;
        tape->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QStringList described;
        for (const Event& e : recorder.ofType(QAccessible::DescriptionChanged))
            described << e.name;
        EXPECT_TRUE(described.contains(QStringLiteral("Tape")));
    }
    EXPECT_EQ(sorts, (std::vector<long>{1}));
    EXPECT_EQ(tape->text(QAccessible::Value), QStringLiteral("ascending"));
    tape->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(tape->text(QAccessible::Value), QStringLiteral("descending"));
    EXPECT_FALSE(tape->text(QAccessible::Description).isEmpty());
    EXPECT_TRUE(iface->child(0)->text(QAccessible::Value).isEmpty());

    // An item stays with its column when the column moves.
    ASSERT_TRUE(columns.moveVisibleColumn(1, 0));
    EXPECT_EQ(iface->child(0), tape);
    EXPECT_EQ(iface->indexOfChild(tape), 0);
    // A hidden column's item is no longer valid, and a reader is told.
    EventRecorder recorder;
    ASSERT_TRUE(columns.hideColumn(columns.columnIndex(QStringLiteral("tape"))));
    EXPECT_FALSE(tape->isValid());
    EXPECT_EQ(iface->childCount(), 2);
    const QList<Event> reorders = recorder.ofType(QAccessible::ObjectReorder);
    ASSERT_FALSE(reorders.isEmpty());
    EXPECT_EQ(reorders.last().iface, iface);

    QAccessibleInterface* duration = iface->child(1);
    duration->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    ASSERT_NE(header->contextMenu(), nullptr);
    EXPECT_TRUE(header->contextMenu()->isVisible());
    header->contextMenu()->close();
    // Removing a column renumbers the later ones: the item made for the
    // hidden "Tape" (column 1) must not come to name "Duration", which
    // takes index 1. Readers hold items by id; the old one is gone or invalid.
    const QAccessible::Id tapeId = QAccessible::uniqueId(tape);
    ASSERT_TRUE(columns.removeColumn(columns.columnIndex(QStringLiteral("name"))));
    ASSERT_EQ(iface->childCount(), 1);
    EXPECT_EQ(iface->child(0)->text(QAccessible::Name), QStringLiteral("Duration"));
    QAccessibleInterface* oldTape = QAccessible::accessibleInterface(tapeId);
    EXPECT_TRUE(!oldTape || !oldTape->isValid());
    EXPECT_TRUE(iface->child(0)->isValid());
}

TEST_F(ColumnedTable, TheHeaderIsReachedByTabAndAnnouncesTheChosenLabel)
{
    EventRecorder recorder;
    before->setFocus();
    QTest::keyClick(before, Qt::Key_Tab);
    ASSERT_TRUE(header->hasFocus());
    QAccessibleInterface* iface = headerInterface();
    EXPECT_EQ(iface->focusChild(), iface->child(0));
    EXPECT_TRUE(iface->child(0)->state().focused);

    recorder.events.clear();
    QTest::keyClick(header, Qt::Key_Right);
    const QList<Event> focus = recorder.ofType(QAccessible::Focus);
    ASSERT_EQ(focus.size(), 1);
    EXPECT_EQ(focus[0].iface, iface->child(1));
    EXPECT_EQ(focus[0].name, QStringLiteral("Tape"));
    EXPECT_FALSE(iface->child(0)->state().focused);

    // The next Tab goes on to the list.
    QTest::keyClick(header, Qt::Key_Tab);
    EXPECT_TRUE(bridge->hasFocus());
    EXPECT_EQ(iface->focusChild(), nullptr);
}

} // namespace
