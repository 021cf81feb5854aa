// Kel_WidgetList: one real row widget per element, each reaching its element
// through its own index model; rows follow inserts, removals and moves.
#include "AssertRecorder.h"
#include "Kel_ActionButton.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_Label.h"
#include "Kel_LongLabel.h"
#include "Kel_WidgetList.h"
#include "Mv_ConnectionDict.h"
#include "Mv_Utils.h"
#include "Mve_Action.h"
#include "Mve_RecordArray.h"
#include "TestSupport.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QEvent>
#include <QPointer>
#include <QTest>
#include <gtest/gtest.h>
#include <random>

namespace {

// A shown window with a widget list over the record array "Fx". Each row
// shows its own index ("$Row"), its element's name, and has a button that
// removes its element.
class WidgetListTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fx.addField<QString>("name");
        fx.Publish();
        remove.Publish();
        list = new Kel_WidgetList(&window, "fxList", [this] { return makeRow(); });
        list->setConnectionSpec("Fx");
        (new QVBoxLayout(&window))->addWidget(list);
        window.resize(300, 400);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    QWidget* makeRow()
    {
        auto* row = new QWidget();
        row->setProperty("serial", ++serial);
        auto* layout = new QHBoxLayout(row);
        auto* index = new Kel_LongLabel(row, "index");
        index->setProperty("connectionName", QByteArray("$Row"));
        auto* name = new Kel_Label(row, "name");
        name->setProperty("textConnection", QByteArray("Fx.name[$Row]"));
        auto* button = new Kel_ActionButton(row, "remove", QStringLiteral("Remove"));
        button->setProperty("actionScript", QByteArray("Fx.Remove($Row)"));
        layout->addWidget(index);
        layout->addWidget(name);
        layout->addWidget(button);
        return row;
    }
    void addElements(std::initializer_list<const char*> names)
    {
        for (const char* n : names)
            fx.setValue<QString>(fx.appendRow(), "name", QString::fromLatin1(n));
    }
    void connect() { Kel_ConnectionUtils::recursiveConnect(&window, Mv_ConnectionEnvironment::blankEnvironment()); }
    static void deleteRemovedRows() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    template <class T>
    T* child(long row, const char* name) const
    {
        QWidget* w = list->indexToRow(row);
        return w ? w->findChild<T*>(QString::fromLatin1(name)) : nullptr;
    }
    // What the rows show, in layout order: "index:name".
    QStringList shown() const
    {
        QStringList rows;
        for (int i = 0; i < list->boxLayout()->count(); ++i) {
            QWidget* row = list->boxLayout()->itemAt(i)->widget();
            if (!row)
                continue;
            rows << row->findChild<QLabel*>(QStringLiteral("index"))->text() + QLatin1Char(':')
                        + row->findChild<QLabel*>(QStringLiteral("name"))->text();
        }
        return rows;
    }

    Mve_RecordArray fx{"Fx"};
    Mve_Action<void(long)> remove{[this](long row) { fx.removeRows(row); }, "Fx.Remove"};
    QWidget window;
    Kel_WidgetList* list = nullptr;
    int serial = 0;
    AssertRecorder asserts;
};

// Records every value an index model takes, as "tag:value".
class IndexRecorder
{
public:
    IndexRecorder(QStringList& log, const QString& modelName, const QString& tag)
        : mListener(Mv_Utils::Mv_MakeStaticConnectionSpec(modelName), Mv_ConnectionEnvironment::blankEnvironment())
    {
        mListener.setReceiveMessageCB([this, &log, tag](const Mv_MessageInterface& m) {
            if (m.is<Mvt_SimpleValue_Notifications::MsgValueChanged>())
                log << tag + QLatin1Char(':') + QString::number(mListener.value(-1));
        });
    }

private:
    Mvt_SimpleValue<long>::Listener mListener;
};

} // namespace

TEST_F(WidgetListTest, MakesOneRowPerElementEachShowingItsOwnElement)
{
    addElements({"Echo", "Reverb", "Delay"});
    connect();
    ASSERT_EQ(list->rowSize(), 3);
    EXPECT_EQ(shown(), QStringList({"0:Echo", "1:Reverb", "2:Delay"}));

    // A value change reaches its own row; the rows' index models are distinct names.
    fx.setValue<QString>(1, "name", QStringLiteral("Chorus"));
    EXPECT_EQ(shown(), QStringList({"0:Echo", "1:Chorus", "2:Delay"}));
    EXPECT_NE(list->rowConnectionName(0), list->rowConnectionName(1));
    EXPECT_TRUE(list->rowConnectionName(0).startsWith(QStringLiteral("fxList::Row")));
    EXPECT_EQ(list->rowToIndex(list->indexToRow(2)), 2);
    EXPECT_EQ(list->rowToIndex(&window), -1);

    // Appended elements become rows connected in the kept environment.
    addElements({"Flanger"});
    EXPECT_EQ(shown().last(), QStringLiteral("3:Flanger"));
}

TEST_F(WidgetListTest, InsertingAtZeroRenumbersTheOldRowsFromTheLastDown)
{
    addElements({"A", "B", "C"});
    connect();
    QStringList log;
    IndexRecorder r0(log, list->rowConnectionName(0), QStringLiteral("A"));
    IndexRecorder r1(log, list->rowConnectionName(1), QStringLiteral("B"));
    IndexRecorder r2(log, list->rowConnectionName(2), QStringLiteral("C"));
    QWidget* oldFirst = list->indexToRow(0);

    fx.insertRows(0);
    fx.setValue<QString>(0, "name", QStringLiteral("New"));
    EXPECT_EQ(log, QStringList({"C:3", "B:2", "A:1"}));
    EXPECT_EQ(shown(), QStringList({"0:New", "1:A", "2:B", "3:C"}));
    EXPECT_EQ(list->indexToRow(1), oldFirst);
}

TEST_F(WidgetListTest, DeletingPastTheEndDeletesToTheLastRow)
{
    addElements({"A", "B", "C", "D"});
    connect();
    const QPointer<QWidget> kept = list->indexToRow(0);
    const QPointer<QWidget> gone = list->indexToRow(2);
    list->deleteRows(1, 99);
    EXPECT_TRUE(asserts.conditions.isEmpty());
    EXPECT_EQ(list->rowSize(), 1);
    EXPECT_EQ(shown(), QStringList({"0:A"}));
    deleteRemovedRows();
    EXPECT_TRUE(kept);
    EXPECT_FALSE(gone);
}

TEST_F(WidgetListTest, BadPositionsAreReportedAndChangeNothing)
{
    addElements({"A", "B"});
    connect();
    list->deleteRows(-1, 1);
    list->deleteRows(1, 0);
    EXPECT_EQ(list->indexToRow(2), nullptr);
    EXPECT_EQ(list->indexToRow(-1), nullptr);
    EXPECT_FALSE(list->findPoi(QString(), nullptr));
    EXPECT_EQ(asserts.conditions, QStringList({"startIndex >= 0", "startIndex <= endIndex",
                                       "iIndex >= 0 && indx < mRowData.size()",
                                       "iIndex >= 0 && indx < mRowData.size()", "!isEmpty()"}));
    // A move from or to a position outside the list is ignored.
    list->moveRow(0, 2);
    list->moveRow(-1, 0);
    EXPECT_EQ(shown(), QStringList({"0:A", "1:B"}));
}

TEST_F(WidgetListTest, MovingKeepsTheWidgetAndParksItsIndexOutOfRangeMeanwhile)
{
    addElements({"A", "B", "C"});
    connect();
    QWidget* moved = list->indexToRow(0);
    QStringList log;
    IndexRecorder recorder(log, list->rowConnectionName(0), QStringLiteral("A"));

    fx.moveRow(0, 2);
    EXPECT_EQ(log, QStringList({"A:12", "A:2"})); // two rows remain while it is out: 2 + 10
    EXPECT_EQ(shown(), QStringList({"0:B", "1:C", "2:A"}));
    EXPECT_EQ(list->indexToRow(2), moved);
    EXPECT_EQ(list->boxLayout()->itemAt(2)->widget(), moved);

    fx.moveRow(2, 0);
    EXPECT_EQ(shown(), QStringList({"0:A", "1:B", "2:C"}));
    EXPECT_EQ(list->indexToRow(0), moved);
}

TEST_F(WidgetListTest, ARowsOwnButtonRemovesItsElementAndTheRow)
{
    addElements({"A", "B", "C"});
    connect();
    auto* button = child<Kel_ActionButton>(1, "remove");
    ASSERT_NE(button, nullptr);
    const QPointer<QWidget> row = list->indexToRow(1);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(fx.rowCount(), 2);
    EXPECT_EQ(shown(), QStringList({"0:A", "1:C"}));
    deleteRemovedRows();
    EXPECT_FALSE(row);

    // The renumbered row removes its new position.
    QTest::mouseClick(child<Kel_ActionButton>(1, "remove"), Qt::LeftButton);
    EXPECT_EQ(shown(), QStringList({"0:A"}));
}

TEST_F(WidgetListTest, RowsFollowTheArrayInAndOutOfTheDictionary)
{
    addElements({"A", "B"});
    connect();
    fx.UnPublish();
    EXPECT_EQ(list->rowSize(), 0);
    fx.Publish();
    EXPECT_EQ(shown(), QStringList({"0:A", "1:B"}));

    // A burst told as one replacement of everything.
    fx.beginUpdate();
    fx.removeRows(0, 2);
    fx.appendRow();
    fx.setValue<QString>(0, "name", QStringLiteral("X"));
    fx.endUpdate();
    EXPECT_EQ(shown(), QStringList({"0:X"}));

    // Connected again, the same rows stay and are connected anew.
    QWidget* row = list->indexToRow(0);
    connect();
    EXPECT_EQ(list->indexToRow(0), row);
    EXPECT_EQ(shown(), QStringList({"0:X"}));
}

TEST_F(WidgetListTest, RowIndexesResolveInTheEnvironmentsDictionary)
{
    Mv_ConnectionDict dict;
    Mve_RecordArray privateFx("Fx");
    privateFx.addField<QString>("name");
    privateFx.Publish(&dict);
    privateFx.setValue<QString>(privateFx.appendRow(), "name", QStringLiteral("Private"));
    Kel_ConnectionUtils::recursiveConnect(&window, Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::ConstPtr(), &dict));
    EXPECT_EQ(shown(), QStringList({"0:Private"}));
}

TEST_F(WidgetListTest, FindPoiAddressesRowsAndTheWidgetsInThem)
{
    addElements({"A", "B"});
    connect();
    QRect rect;
    ASSERT_TRUE(list->findPoi(QStringLiteral("Row1"), &rect));
    QWidget* row = list->indexToRow(1);
    EXPECT_EQ(rect, QRect(row->mapToGlobal(QPoint(0, 0)), row->size()));
    ASSERT_TRUE(list->findPoi(QStringLiteral("Row1.name"), &rect));
    QWidget* name = child<QWidget>(1, "name");
    EXPECT_EQ(rect, QRect(name->mapToGlobal(QPoint(0, 0)), name->size()));
    EXPECT_TRUE(list->findPoi(QStringLiteral("fxList"), &rect));
    EXPECT_EQ(rect.size(), list->size());

    for (const char* miss : {"Row2", "Row", "Rowx", "Row1.nothing", "Row1.name.deeper", "Other"})
        EXPECT_FALSE(list->findPoi(QString::fromLatin1(miss), &rect)) << miss;
}

TEST_F(WidgetListTest, RowsWithoutACallbackAreEmptyWidgetsKeepingTheirPlace)
{
    Kel_WidgetList bare(nullptr, nullptr);
    bare.appendRow();
    bare.insertRow(0);
    ASSERT_EQ(bare.rowSize(), 2);
    EXPECT_NE(bare.indexToRow(0), bare.indexToRow(1));
    EXPECT_TRUE(bare.rowConnectionName(0).startsWith(QStringLiteral("Kel_WidgetList::Row")));
}

// Random inserts, removals, moves and value changes on the array; after each
// step the rows must match a plain shadow: same widgets in the same order,
// each showing its position and its element, the layout in row order.
TEST_F(WidgetListTest, RandomEditsKeepRowsInStepWithAShadow)
{
    connect();
    std::mt19937 random(20261125);
    auto pick = [&random](long n) { return long(std::uniform_int_distribution<long>(0, n - 1)(random)); };
    std::vector<int> serials; // the widget of each element, by its serial
    QStringList names;
    int nextName = 0;
    for (int step = 0; step < 400; ++step) {
        const long size = long(names.size());
        const int op = int(pick(size == 0 ? 1 : 4));
        SCOPED_TRACE(step);
        if (op == 0) {
            const long at = pick(size + 1), count = 1 + pick(3);
            fx.insertRows(at, count);
            for (long k = 0; k < count; ++k) {
                const QString name = QStringLiteral("n%1").arg(nextName++);
                fx.setValue<QString>(at + k, "name", name);
                names.insert(int(at + k), name);
                serials.insert(serials.begin() + at + k, serial - int(count) + int(k) + 1);
            }
        } else if (op == 1) {
            const long at = pick(size), count = 1 + pick(3);
            fx.removeRows(at, count);
            const long end = std::min(size, at + count);
            names.erase(names.begin() + at, names.begin() + end);
            serials.erase(serials.begin() + at, serials.begin() + end);
        } else if (op == 2) {
            const long from = pick(size), to = pick(size);
            fx.moveRow(from, to);
            names.move(int(from), int(to));
            const int s = serials[size_t(from)];
            serials.erase(serials.begin() + from);
            serials.insert(serials.begin() + to, s);
        } else {
            const long at = pick(size);
            names[int(at)] = QStringLiteral("n%1").arg(nextName++);
            fx.setValue<QString>(at, "name", names[int(at)]);
        }

        ASSERT_EQ(list->rowSize(), long(names.size()));
        QStringList expected;
        for (int i = 0; i < names.size(); ++i) {
            expected << QString::number(i) + QLatin1Char(':') + names[i];
            ASSERT_EQ(list->indexToRow(i)->property("serial").toInt(), serials[size_t(i)]);
        }
        ASSERT_EQ(shown(), expected);
        if (step % 50 == 0)
            deleteRemovedRows();
    }
    EXPECT_TRUE(asserts.conditions.isEmpty());
}
