// The list view and the widget list as screen readers see them: rows
// reachable at any array size without painting, selection and focus
// events, and actions that select rows and run the list's scripts.
#include "AccessibilityTestSupport.h"

#include "Kel_BridgeQScrollArea.h"
#include "Kel_HStackView.h"
#include "Kel_ListView.h"
#include "Kel_ListViewWidget.h"
#include "Kel_LongIntView.h"
#include "Kel_TextView.h"
#include "Kel_WidgetList.h"
#include "Mve_ComputedContainer.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"

#include <QLabel>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>
#include <random>

using namespace a11ytest;

namespace {

const int kRowHeight = 20;

// Counts the paint events a widget receives.
class PaintCounter : public QObject
{
public:
    int paints = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            ++paints;
        return false;
    }
};

// A list of a million computed clips ("Clip 0" ...), two cells a row, in a
// scroll-area bridge, with scripts that write what they saw.
class MillionRows : public ::testing::Test
{
protected:
    void SetUp() override
    {
        names.setSizeFunction([this] { return rows; });
        publishAll({&names, &picked, &entered});
        bridge = new Kel_BridgeQScrollArea(&window);
        bridge->setObjectName(QStringLiteral("BigList"));
        list = new Kel_ListView;
        auto* row = new Kel_HStackView;
        auto* name = new Kel_TextView;
        name->SetNameConnection(QStringLiteral("A11yBig.name[$Row]"));
        name->setSize(QSize(120, kRowHeight));
        row->AddSubView(name);
        auto* number = new Kel_LongIntView;
        number->setConnectionName(QStringLiteral("$Row"));
        number->setSize(QSize(80, kRowHeight));
        row->AddSubView(number);
        list->SetRowView(row);
        list->SetListConnectionName(QStringLiteral("A11yBig.name"));
        list->setSelectionMode(Kel_ListView::Extended);
        list->setSelectionActionString(QStringLiteral("A11yBig.Picked = A11yBig.name[$Row]"));
        list->setEnterActionString(QStringLiteral("A11yBig.Entered = A11yBig.name[$Row]"));
        bridge->setChild(list);
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(bridge);
        window.resize(300, 200);
        bridge->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
        ASSERT_TRUE(showActive(window));
        table = dynamic_cast<QAccessibleInterface*>(Kel_ViewAccessibility::interfaceFor(list));
        ASSERT_NE(table, nullptr);
    }

    long rows = 1000000;
    Mve_ComputedContainer<QString> names{[](long row, QString& value) {
                                             value = QStringLiteral("Clip %1").arg(row);
                                             return row >= 0;
                                         },
                                         QStringLiteral("A11yBig.name")};
    Mve_SimpleValue<QString> picked{QString(), "A11yBig.Picked"};
    Mve_SimpleValue<QString> entered{QString(), "A11yBig.Entered"};
    QWidget window;
    Kel_BridgeQScrollArea* bridge = nullptr;
    Kel_ListView* list = nullptr;
    QAccessibleInterface* table = nullptr;
};

TEST_F(MillionRows, RowHalfAMillionIsReachableAndReadsItsTextWithoutPainting)
{
    EXPECT_EQ(table->role(), QAccessible::List);
    EXPECT_EQ(table->text(QAccessible::Name), QStringLiteral("BigList")); // the bridge names a default-named list
    ASSERT_NE(table->tableInterface(), nullptr);
    EXPECT_EQ(table->tableInterface()->rowCount(), 1000000);
    EXPECT_EQ(table->childCount(), 1000000);

    PaintCounter counter;
    bridge->viewportWidget()->installEventFilter(&counter);
    QApplication::processEvents();
    counter.paints = 0;
    const long currentBefore = list->getCurrentCell();

    QAccessibleInterface* row = table->tableInterface()->cellAt(500000, 0);
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->role(), QAccessible::ListItem);
    EXPECT_EQ(row->text(QAccessible::Name), QStringLiteral("Clip 500000, 500000"));
    EXPECT_EQ(table->child(500000), row);
    EXPECT_EQ(table->indexOfChild(row), 500000);
    EXPECT_EQ(row->parent(), table);
    ASSERT_NE(row->tableCellInterface(), nullptr);
    EXPECT_EQ(row->tableCellInterface()->rowIndex(), 500000);
    EXPECT_TRUE(row->state().offscreen);
    EXPECT_FALSE(table->child(0)->state().offscreen);
    const QPoint listTop = bridge->viewportWidget()->mapToGlobal(QPoint(0, 0));
    EXPECT_EQ(row->rect().top() - listTop.y(), 500000 * kRowHeight);
    EXPECT_EQ(row->rect().height(), kRowHeight);

    // Reading asked for no repaint and left the list's current row alone.
    QApplication::processEvents();
    EXPECT_EQ(counter.paints, 0);
    EXPECT_EQ(list->getCurrentCell(), currentBefore);

    // Outside the rows there is nothing.
    EXPECT_EQ(table->tableInterface()->cellAt(1000000, 0), nullptr);
    EXPECT_EQ(table->tableInterface()->cellAt(-1, 0), nullptr);
    EXPECT_EQ(table->tableInterface()->cellAt(0, 1), nullptr);
    EXPECT_EQ(table->child(-5), nullptr);
}

TEST_F(MillionRows, PressingARowThroughItsActionSelectsItAndRunsTheSelectionScript)
{
    QAccessibleInterface* row = table->tableInterface()->cellAt(500000, 0);
    ASSERT_NE(row->actionInterface(), nullptr);
    row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(picked.getValue(), QStringLiteral("Clip 500000"));
    EXPECT_TRUE(row->state().selected);
    EXPECT_EQ(table->tableInterface()->selectedRows(), QList<int>{500000});

    // Toggle adds another row in the extended mode; the list's press is Return.
    table->tableInterface()->cellAt(7, 0)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(table->tableInterface()->selectedRows(), (QList<int>{7, 500000}));
    EXPECT_EQ(picked.getValue(), QStringLiteral("Clip 7"));
    table->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(entered.getValue(), QStringLiteral("Clip 7"));

    EXPECT_TRUE(table->tableInterface()->unselectRow(7));
    EXPECT_EQ(table->tableInterface()->selectedRows(), QList<int>{500000});
    EXPECT_TRUE(table->tableInterface()->selectRow(3));
    EXPECT_EQ(table->tableInterface()->selectedRowCount(), 2);
}

TEST_F(MillionRows, KeysMoveTheFocusedRowAndAReaderHearsOfIt)
{
    EventRecorder recorder;
    bridge->setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(waitFor([&] { return bridge->viewportWidget()->hasFocus(); }));
    QTest::keyClick(bridge->viewportWidget(), Qt::Key_Down); // nothing selected: wraps to row 0
    QTest::keyClick(bridge->viewportWidget(), Qt::Key_Down);
    EXPECT_EQ(table->tableInterface()->selectedRows(), QList<int>{1});
    const QList<Event> focus = recorder.ofType(QAccessible::Focus);
    ASSERT_FALSE(focus.isEmpty());
    EXPECT_EQ(focus.last().name, QStringLiteral("Clip 1, 1"));
    EXPECT_EQ(table->focusChild(), table->tableInterface()->cellAt(1, 0));
    EXPECT_TRUE(table->focusChild()->state().focused);
    const QList<Event> selection = recorder.ofType(QAccessible::Selection);
    ASSERT_FALSE(selection.isEmpty());
    EXPECT_EQ(selection.last().name, QStringLiteral("Clip 1, 1"));
    // The row that lost the selection is told too.
    const QList<Event> removed = recorder.ofType(QAccessible::SelectionRemove);
    ASSERT_FALSE(removed.isEmpty());
    EXPECT_EQ(removed.last().name, QStringLiteral("Clip 0, 0"));

    // Selecting everything is one event for the list, not a million.
    recorder.events.clear();
    QTest::keyClick(bridge->viewportWidget(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(recorder.ofType(QAccessible::SelectionWithin).size(), 1);
    EXPECT_LT(recorder.events.size(), 10);
}

// A small list over a record array: element changes and row changes.
class ClipList : public ::testing::Test
{
protected:
    void SetUp() override
    {
        clips.addField<QString>(QStringLiteral("name"));
        clips.Publish();
        for (const char* name : {"Alpha", "Beta", "Gamma"}) {
            const long row = clips.appendRow();
            clips.setValue<QString>(row, QStringLiteral("name"), QString::fromLatin1(name));
        }
        widget = new Kel_ListViewWidget(&window, "clipList");
        widget->setListConnectionSpec("A11yClips");
        widget->setRowFields(QStringLiteral("name"));
        widget->setSelectionMode(Kel_ListView::Single);
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(widget);
        widget->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
        ASSERT_TRUE(showActive(window));
        table = Kel_ViewAccessibility::interfaceFor(widget->listView());
    }
    QStringList rowTexts() const
    {
        QStringList texts;
        for (int i = 0; i < table->childCount(); ++i)
            texts << table->child(i)->text(QAccessible::Name);
        return texts;
    }

    Mve_RecordArray clips{QStringLiteral("A11yClips")};
    QWidget window;
    Kel_ListViewWidget* widget = nullptr;
    QAccessibleInterface* table = nullptr;
};

TEST_F(ClipList, TheListIsFoundUnderItsWindowAndItsRowsFollowTheArray)
{
    QAccessibleInterface* root = QAccessible::queryAccessibleInterface(&window);
    QAccessibleInterface* found = findByName(root, QStringLiteral("clipList"), QAccessible::List);
    ASSERT_EQ(found, table);
    EXPECT_EQ(rowTexts(), (QStringList{"Alpha", "Beta", "Gamma"}));
    QAccessibleInterface* gamma = table->child(2);
    const QAccessible::Id gammaId = QAccessible::uniqueId(gamma);

    EventRecorder recorder;
    clips.setValue<QString>(1, QStringLiteral("name"), QStringLiteral("Bravo"));
    EXPECT_EQ(rowTexts(), (QStringList{"Alpha", "Bravo", "Gamma"}));
    ASSERT_FALSE(recorder.ofType(QAccessible::NameChanged).isEmpty());
    EXPECT_EQ(recorder.ofType(QAccessible::NameChanged).last().name, QStringLiteral("Bravo"));

    // Rows are positions: removing one drops the cells that were made.
    clips.removeRows(0);
    EXPECT_EQ(QAccessible::accessibleInterface(gammaId), nullptr);
    EXPECT_EQ(rowTexts(), (QStringList{"Bravo", "Gamma"}));
    EXPECT_FALSE(recorder.ofType(QAccessible::TableModelChanged).isEmpty());
}

TEST_F(ClipList, RandomEditsKeepEveryRowReadingItsElement)
{
    // Cells made before an edit must never read another row's element after it.
    std::mt19937 random(2511);
    QStringList shadow{"Alpha", "Beta", "Gamma"};
    int counter = 0;
    for (int step = 0; step < 200; ++step) {
        const int action = int(random() % 3);
        if (action == 0 || shadow.isEmpty()) {
            const long at = long(random() % (shadow.size() + 1));
            const QString name = QStringLiteral("N%1").arg(counter++);
            clips.insertRows(at);
            clips.setValue<QString>(at, QStringLiteral("name"), name);
            shadow.insert(int(at), name);
        } else if (action == 1) {
            const long at = long(random() % shadow.size());
            clips.removeRows(at);
            shadow.removeAt(int(at));
        } else {
            const long at = long(random() % shadow.size());
            const QString name = QStringLiteral("E%1").arg(counter++);
            clips.setValue<QString>(at, QStringLiteral("name"), name);
            shadow[int(at)] = name;
        }
        // Touch a few cells so that some exist across the next edit.
        if (!shadow.isEmpty())
            table->child(int(random() % shadow.size()));
        ASSERT_EQ(rowTexts(), shadow) << "step " << step;
    }
}

TEST(WidgetListAccessibility, RowsAreTheListsItemsInRowOrderAfterMoves)
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    int made = 0;
    auto* list = new Kel_WidgetList(&window, "effects", [&made] {
        auto* label = new QLabel(QStringLiteral("row made %1").arg(made++));
        label->setAccessibleName(label->text());
        return label;
    });
    layout->addWidget(list);
    for (int i = 0; i < 3; ++i)
        list->appendRow();
    ASSERT_TRUE(showActive(window));
    QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(list);
    ASSERT_NE(iface, nullptr);
    EXPECT_EQ(iface->role(), QAccessible::List);
    EXPECT_EQ(iface->text(QAccessible::Name), QStringLiteral("effects"));
    list->moveRow(0, 2);
    ASSERT_EQ(iface->childCount(), 3);
    QStringList names;
    for (int i = 0; i < 3; ++i) {
        QAccessibleInterface* row = iface->child(i);
        names << row->text(QAccessible::Name);
        EXPECT_EQ(row->object(), list->indexToRow(i));
        EXPECT_EQ(iface->indexOfChild(row), i);
        EXPECT_EQ(row->parent(), iface);
    }
    EXPECT_EQ(names, (QStringList{"row made 1", "row made 2", "row made 0"}));
    EXPECT_EQ(iface->child(3), nullptr);
}

} // namespace
