// The column data model as its readers (a columned list, a header) see it:
// through listeners on the published names.
#include "Kel_ColumnDataModel.h"
#include "Mv_ConnectionDict.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"
#include "Mvt_Action.h"
#include "Mvt_ArrayContainer_Notifications.h"
#include "Mvt_Container_API.h"
#include "Mvt_Root_Notifications.h"
#include "TestSupport.h"

#include <QStringList>
#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace {

typedef Mvt_Container_API<long, Mvt_SimpleValue<long>>::Listener LongArray;
typedef Mvt_Container_API<long, Mvt_SimpleValue<bool>>::Listener BoolArray;
typedef Mvt_Container_API<long, Mvt_SimpleValue<QString>>::Listener StringArray;
typedef Mvt_Container_API<long, Mvt_Action<void()>>::Listener ActionArray;

// What a reader knows of an index array, learnt only from notifications:
// after each change it must equal the array's contents.
class IndexShadow
{
public:
    IndexShadow(const QString& name, Mv_ConnectionDict* dict)
    {
        mListener.SetConnectionName(name);
        mListener.setReceiveMessageCB([this](const Mv_MessageInterface& m) { heard(m); });
        mListener.connect(Mv_ConnectionEnvironment::create({}, dict));
    }
    std::vector<long> known;
    int notifications = 0;
    const LongArray& listener() const { return mListener; }

    std::vector<long> read() const
    {
        std::vector<long> values;
        for (long i = 0; i < mListener.size(); ++i)
            values.push_back(mListener.element<long>(i, -99));
        return values;
    }

private:
    void heard(const Mv_MessageInterface& m)
    {
        if (m.is<Mvt_Root_Notifications::MsgConnectedChanged>()) {
            known = read();
        } else if (const auto* r = m.as<Mvt_ArrayContainer_Notifications::MsgElementsReplaced>()) {
            ++notifications;
            known.erase(known.begin() + r->first(), known.begin() + r->removedEnd());
            for (long i = 0; i < r->insertedCount(); ++i)
                known.insert(known.begin() + r->first() + i, mListener.element<long>(r->first() + i, -99));
        } else if (const auto* mv = m.as<Mvt_ArrayContainer_Notifications::MsgElementsMoved>()) {
            ++notifications;
            const long v = known[size_t(mv->from())];
            known.erase(known.begin() + mv->from());
            known.insert(known.begin() + mv->to(), v);
        }
    }
    LongArray mListener;
};

class ColumnDataModelTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        model.addColumn(QStringLiteral("name"), QStringLiteral("Name"), 120, 40);
        model.addColumn(QStringLiteral("duration"), QStringLiteral("Duration"), 80);
        Kel_ColumnDataModel::Column tape;
        tape.identifier = QStringLiteral("tape");
        tape.label = QStringLiteral("Tape");
        tape.canHide = false;
        model.addColumn(tape);
        ASSERT_TRUE(model.publish(&dict));
    }

    Mv_ConnectionEnvironment::Ptr env() const { return Mv_ConnectionEnvironment::create({}, &dict); }
    template <class L>
    void connect(L& listener, const QString& suffix)
    {
        listener.SetConnectionName(QStringLiteral("Cols") + suffix);
        listener.connect(env());
    }
    void checkConsistent()
    {
        std::vector<long> all = model.visibleColumns();
        const std::vector<long> hidden = model.hiddenColumns();
        all.insert(all.end(), hidden.begin(), hidden.end());
        std::sort(all.begin(), all.end());
        for (long c = 0; c < model.columnCount(); ++c) {
            ASSERT_EQ(all[size_t(c)], c) << "every column shown or hidden exactly once";
            EXPECT_EQ(model.column(c).visible, model.visiblePosition(c) >= 0);
        }
        ASSERT_EQ(long(all.size()), model.columnCount());
    }

    mutable Mv_ConnectionDict dict;
    Kel_ColumnDataModel model{QStringLiteral("Cols")};
};

TEST_F(ColumnDataModelTest, PublishesEveryNameAtOnceAndRefusesATakenOne)
{
    for (const char* suffix : {"", ".identifier", ".label", ".width", ".minWidth", ".viewType", ".readOnly",
                               ".connectionEnvironmentVars", ".canHide", ".visible", ".isSorted",
                               ".isSortedAscending", ".sortedVisibleColumns", ".hiddenColumns",
                               ".sortedVisibleColumns.arrayMetaData", ".hiddenColumns.arrayMetaData",
                               ".hideColumn", ".sortByColumn", ".showColumn", ".columnBeingDragged",
                               ".Actions.addNewColumn"})
        EXPECT_TRUE(dict.isPublished(QStringLiteral("Cols") + QLatin1String(suffix))) << suffix;

    StringArray labels;
    connect(labels, QStringLiteral(".label"));
    EXPECT_EQ(labels.element<QString>(2), QStringLiteral("Tape"));
    Mvt_SimpleValue<long>::Listener dragged;
    connect(dragged, QStringLiteral(".columnBeingDragged"));
    EXPECT_EQ(dragged.value(7), -1);

    // Renamed: the old names are gone, the listener waits for its name again.
    model.setBaseName(QStringLiteral("Other"));
    EXPECT_FALSE(dict.isPublished(QStringLiteral("Cols.label")));
    EXPECT_TRUE(dict.isPublished(QStringLiteral("Other.sortedVisibleColumns.arrayMetaData")));
    EXPECT_FALSE(labels.isConnectedToModel());

    // A second model cannot take a name in use, and leaves nothing behind.
    Mve_SimpleValue<long> squatter(0, QStringLiteral("Second.hideColumn"));
    ASSERT_TRUE(squatter.Publish(&dict));
    Kel_ColumnDataModel second(QStringLiteral("Second"));
    EXPECT_FALSE(second.publish(&dict));
    EXPECT_FALSE(dict.isPublished(QStringLiteral("Second")));
    EXPECT_FALSE(dict.isPublished(QStringLiteral("Second.sortedVisibleColumns")));
    EXPECT_FALSE(Kel_ColumnDataModel().publish(&dict)) << "no base name";
}

TEST_F(ColumnDataModelTest, ReadersWriteDescriptionsButNotWhatTheModelKeepsConsistent)
{
    LongArray widths, visible;
    BoolArray flags;
    StringArray ids;
    connect(widths, QStringLiteral(".width"));
    connect(visible, QStringLiteral(".sortedVisibleColumns"));
    connect(flags, QStringLiteral(".visible"));
    connect(ids, QStringLiteral(".identifier"));

    EXPECT_EQ(widths.setElement<long>(1, 95), Mvt_SimpleValue_BaseAPI::kSetChanged);
    EXPECT_EQ(model.column(1).width, 95);
    EXPECT_EQ(visible.setElement<long>(0, 2), Mvt_SimpleValue_BaseAPI::kSetRefused);
    EXPECT_EQ(flags.setElement<bool>(0, false), Mvt_SimpleValue_BaseAPI::kSetRefused);
    EXPECT_EQ(ids.setElement<QString>(0, QStringLiteral("x")), Mvt_SimpleValue_BaseAPI::kSetRefused);
    EXPECT_EQ(model.visibleColumns(), std::vector<long>({0, 1, 2}));

    Mvt_ArrayContainer::Listener records;
    connect(records, QString());
    EXPECT_FALSE(records.requestMove(0, 2)) << "a column's index is its identity";
    EXPECT_EQ(model.columnIndex(QStringLiteral("tape")), 2);
    EXPECT_EQ(model.columnIndex(QStringLiteral("nope")), -1);
}

TEST_F(ColumnDataModelTest, TheContainerMovesTheVisibleColumnsAndTellsBothNames)
{
    IndexShadow array(QStringLiteral("Cols.sortedVisibleColumns"), &dict);
    Mvt_ArrayContainer::Listener meta;
    int metaMoves = 0;
    meta.setReceiveMessageCB([&](const Mv_MessageInterface& m) {
        metaMoves += m.is<Mvt_ArrayContainer_Notifications::MsgElementsMoved>();
    });
    connect(meta, QStringLiteral(".sortedVisibleColumns.arrayMetaData"));
    EXPECT_EQ(meta.size(), 3);

    EXPECT_TRUE(meta.requestMove(0, 2));
    EXPECT_EQ(model.visibleColumns(), std::vector<long>({1, 2, 0}));
    EXPECT_EQ(array.known, model.visibleColumns());
    EXPECT_EQ(metaMoves, 1);
    EXPECT_FALSE(meta.requestMove(0, 3));
    EXPECT_FALSE(meta.requestMove(-1, 0));

    model.hideColumn(1);
    EXPECT_EQ(meta.size(), 2);
    Mvt_ArrayContainer::Listener hiddenMeta;
    connect(hiddenMeta, QStringLiteral(".hiddenColumns.arrayMetaData"));
    EXPECT_EQ(hiddenMeta.size(), 1);
}

TEST_F(ColumnDataModelTest, HideAndShowActionsFollowCanHideAndVisibility)
{
    ActionArray hide;
    Mvt_Container_API<long, Mvt_Action<void(long)>>::Listener show;
    connect(hide, QStringLiteral(".hideColumn"));
    connect(show, QStringLiteral(".showColumn"));
    IndexShadow visible(QStringLiteral("Cols.sortedVisibleColumns"), &dict);
    IndexShadow hidden(QStringLiteral("Cols.hiddenColumns"), &dict);

    EXPECT_FALSE(hide.isElementEnabled(2)) << "tape cannot be hidden by the user";
    EXPECT_FALSE(hide.triggerElement(2));
    EXPECT_FALSE(hide.triggerElement(3)) << "no such column";
    EXPECT_TRUE(hide.triggerElement(0));
    EXPECT_FALSE(hide.isElementEnabled(0)) << "already hidden";
    EXPECT_EQ(visible.known, std::vector<long>({1, 2}));
    EXPECT_EQ(hidden.known, std::vector<long>({0}));
    EXPECT_FALSE(model.column(0).visible);

    EXPECT_FALSE(show.isElementEnabled(1)) << "shown already";
    EXPECT_TRUE(show.triggerElement(0, {Mv_Variant(1L)}));
    EXPECT_EQ(visible.known, std::vector<long>({1, 0, 2}));
    EXPECT_TRUE(hidden.known.empty());
    EXPECT_TRUE(model.column(0).visible);

    // Code may hide what the user may not; a position past the end appends.
    EXPECT_TRUE(model.hideColumn(2));
    EXPECT_TRUE(show.triggerElement(2, {Mv_Variant(99L)}));
    EXPECT_EQ(visible.known, std::vector<long>({1, 0, 2}));
    checkConsistent();
}

TEST_F(ColumnDataModelTest, SortingKeepsOneSortedColumnAndTogglesItsDirection)
{
    ActionArray sortBy;
    connect(sortBy, QStringLiteral(".sortByColumn"));
    EXPECT_FALSE(sortBy.isElementEnabled(0)) << "nothing sorts the rows yet";
    EXPECT_FALSE(model.sortByColumn(0));

    QStringList calls;
    bool accept = true;
    model.setSortFunction([&](long column, bool ascending) {
        calls << QStringLiteral("%1%2").arg(column).arg(ascending ? '+' : '-');
        return accept;
    });
    ASSERT_TRUE(sortBy.triggerElement(1));
    ASSERT_TRUE(sortBy.triggerElement(1));
    ASSERT_TRUE(sortBy.triggerElement(0));
    EXPECT_EQ(calls, QStringList({"1+", "1-", "0+"}));
    EXPECT_EQ(model.sortColumn(), 0);
    BoolArray sorted, ascending;
    connect(sorted, QStringLiteral(".isSorted"));
    connect(ascending, QStringLiteral(".isSortedAscending"));
    EXPECT_TRUE(sorted.element<bool>(0));
    EXPECT_FALSE(sorted.element<bool>(1));
    EXPECT_TRUE(ascending.element<bool>(0));

    accept = false;
    EXPECT_FALSE(model.sortByColumn(2));
    EXPECT_EQ(model.sortColumn(), 0) << "a refused sort changes no flag";
    model.clearSort();
    EXPECT_EQ(model.sortColumn(), -1);
    EXPECT_FALSE(model.isSortedAscending());
}

TEST_F(ColumnDataModelTest, AddActionAsksTheApplicationAndRemovalRenumbers)
{
    Mvt_Action<void(long)>::Listener add;
    connect(add, QStringLiteral(".Actions.addNewColumn"));
    EXPECT_FALSE(add.isEnabled());
    int enabledChanges = 0;
    add.setReceiveMessageCB([&](const Mv_MessageInterface& m) {
        enabledChanges += m.is<Mvt_Action_Notifications::MsgEnabledChanged>();
    });
    model.setAddColumnFunction([&](long position) {
        Kel_ColumnDataModel::Column c;
        c.identifier = QStringLiteral("new");
        model.addColumn(c, position);
    });
    EXPECT_EQ(enabledChanges, 1);
    ASSERT_TRUE(add.call(1));
    EXPECT_EQ(model.visibleColumns(), std::vector<long>({0, 3, 1, 2}));
    ActionArray hide;
    connect(hide, QStringLiteral(".hideColumn"));
    EXPECT_EQ(hide.size(), 4) << "the action arrays grow with the columns";

    IndexShadow visible(QStringLiteral("Cols.sortedVisibleColumns"), &dict);
    model.hideColumn(2);
    ASSERT_TRUE(model.removeColumn(1));
    EXPECT_EQ(visible.known, std::vector<long>({0, 2}));
    EXPECT_EQ(model.hiddenColumns(), std::vector<long>({1}));
    EXPECT_EQ(model.column(1).identifier, QStringLiteral("tape"));
    EXPECT_EQ(hide.size(), 3);
    EXPECT_FALSE(model.removeColumn(3));
    checkConsistent();

    model.clearColumns();
    EXPECT_TRUE(visible.known.empty());
    EXPECT_EQ(model.columnCount(), 0);
    model.setAddColumnFunction(nullptr);
    EXPECT_FALSE(add.call(0));
}

// Any order of hides, shows, moves, adds and removes keeps every column
// in one place, and a reader that follows only the notifications knows the
// arrays exactly.
TEST_F(ColumnDataModelTest, RandomEditsKeepReadersInStep)
{
    IndexShadow visible(QStringLiteral("Cols.sortedVisibleColumns"), &dict);
    IndexShadow hidden(QStringLiteral("Cols.hiddenColumns"), &dict);
    IndexShadow meta(QStringLiteral("Cols.sortedVisibleColumns.arrayMetaData"), &dict);
    Mvt_ArrayContainer::Listener mover;
    connect(mover, QStringLiteral(".sortedVisibleColumns.arrayMetaData"));
    std::mt19937 random(20261125);
    auto pick = [&](long n) { return long(std::uniform_int_distribution<long>(0, std::max(0L, n - 1))(random)); };

    for (int step = 0; step < 600; ++step) {
        const long columns = model.columnCount();
        switch (random() % 6) {
        case 0: model.hideColumn(pick(columns + 1)); break;
        case 1: model.showColumn(pick(columns + 1), pick(columns + 2) - 1); break;
        case 2: mover.requestMove(pick(columns + 1), pick(columns + 1)); break;
        case 3:
            if (columns < 12) {
                Kel_ColumnDataModel::Column c;
                c.visible = random() % 3 != 0;
                model.addColumn(c, pick(columns + 2) - 1);
            }
            break;
        case 4:
            if (columns > 2)
                model.removeColumn(pick(columns));
            break;
        default: model.moveVisibleColumn(pick(columns), pick(columns)); break;
        }
        SCOPED_TRACE(step);
        ASSERT_NO_FATAL_FAILURE(checkConsistent());
        ASSERT_EQ(visible.known, model.visibleColumns());
        ASSERT_EQ(visible.read(), model.visibleColumns());
        ASSERT_EQ(hidden.known, model.hiddenColumns());
        ASSERT_EQ(meta.listener().size(), long(model.visibleColumns().size()));
    }
    EXPECT_GT(visible.notifications, 100);
}

TEST_F(ColumnDataModelTest, AReaderMayDestroyTheModelFromANotification)
{
    auto owned = std::make_unique<Kel_ColumnDataModel>(QStringLiteral("Owned"));
    owned->addColumn(QStringLiteral("a"), QStringLiteral("A"), 10);
    owned->addColumn(QStringLiteral("b"), QStringLiteral("B"), 10);
    ASSERT_TRUE(owned->publish(&dict));
    LongArray visible;
    visible.setReceiveMessageCB([&](const Mv_MessageInterface& m) {
        if (m.is<Mvt_ArrayContainer_Notifications::MsgElementsReplaced>())
            owned.reset();
    });
    visible.SetConnectionName(QStringLiteral("Owned.sortedVisibleColumns"));
    visible.connect(env());
    owned->hideColumn(0);
    EXPECT_FALSE(owned);
    EXPECT_FALSE(dict.isPublished(QStringLiteral("Owned.hiddenColumns")));
}

} // namespace
