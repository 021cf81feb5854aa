// The widgets that choose among the rows of a list: Kel_CheckBoxList,
// Kel_EnhancedCheckBoxList, Kel_RadioGroupListBox, Kel_DropdownList and
// Kel_PopupDisplay, driven with real input.
#include "Kel_CheckBoxList.h"
#include "Kel_DropdownList.h"
#include "Kel_EnhancedCheckBoxList.h"
#include "Kel_PopupDisplay.h"
#include "Kel_RadioGroupListBox.h"
#include "Mve_Array.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"
#include "TestSupport.h"
#include "WidgetTestSupport.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>
#include <random>

namespace {

// A shown window, and a record array "Choice.Channels" of three rows with a
// name and a checked field.
class ChoiceWidgetTest : public WidgetWindowTest
{
protected:
    void SetUp() override
    {
        WidgetWindowTest::SetUp();
        channels.addField<QString>(QStringLiteral("name"));
        channels.addField<bool>(QStringLiteral("checked"), false);
        const QString names[] = {QStringLiteral("Left"), QStringLiteral("Right"), QStringLiteral("Centre")};
        for (const QString& name : names)
            channels.setValue(channels.appendRow(), QStringLiteral("name"), name);
        channels.setValue(1, QStringLiteral("checked"), true);
        channels.Publish();
    }
    static void clickButton(QAbstractButton* button)
    {
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(6, button->height() / 2));
    }
    bool checkedAt(long row) const { return channels.value<bool>(row, QStringLiteral("checked")); }
    static QStringList itemsOf(const QComboBox* combo)
    {
        QStringList items;
        for (int i = 0; i < combo->count(); ++i)
            items.append(combo->itemText(i));
        return items;
    }

    Mve_RecordArray channels{"Choice.Channels"};
};

} // namespace

TEST_F(ChoiceWidgetTest, CheckBoxListIsEmptyWithoutItsListAndInertWithoutItsStates)
{
    auto* list = add<Kel_CheckBoxList>("channels");
    list->setListConnectionSpec("Choice.Channels");
    auto* missing = add<Kel_CheckBoxList>("missing");
    missing->setListConnectionSpec("Choice.NotPublished");
    auto* unbound = add<Kel_CheckBoxList>("unbound");
    show();
    connect();
    EXPECT_EQ(list->count(), 3);
    EXPECT_EQ(missing->count(), 0);
    EXPECT_EQ(unbound->count(), 0);

    // Captions without a state array: the boxes cannot be operated.
    Mve_RecordArray namesOnly("Choice.Names");
    namesOnly.addField<QString>(QStringLiteral("name"));
    namesOnly.setValue(namesOnly.appendRow(), QStringLiteral("name"), QStringLiteral("Only"));
    namesOnly.Publish();
    list->setListConnectionSpec("Choice.Names");
    connect();
    ASSERT_EQ(list->count(), 1);
    EXPECT_EQ(list->box(0)->text(), QStringLiteral("Only"));
    EXPECT_FALSE(list->box(0)->isEnabled());
}

TEST_F(ChoiceWidgetTest, EnhancedListTicksAndUnticksEveryRowAndCountsThem)
{
    auto* list = add<Kel_EnhancedCheckBoxList>("channels");
    list->setListConnectionSpec("Choice.Channels");
    show();
    EXPECT_FALSE(list->allButton()->isEnabled());
    connect();
    EXPECT_EQ(list->summaryLabel()->text(), QStringLiteral("1 of 3"));
    QTest::mouseClick(list->allButton(), Qt::LeftButton);
    EXPECT_TRUE(checkedAt(0) && checkedAt(1) && checkedAt(2));
    EXPECT_EQ(list->summaryLabel()->text(), QStringLiteral("3 of 3"));
    QTest::mouseClick(list->noneButton(), Qt::LeftButton);
    EXPECT_FALSE(checkedAt(0) || checkedAt(1) || checkedAt(2));
    EXPECT_EQ(list->summaryLabel()->text(), QStringLiteral("0 of 3"));

    // Refused for every row: the boxes keep the model's state.
    channels.setReadOnly(true);
    QTest::mouseClick(list->allButton(), Qt::LeftButton);
    EXPECT_FALSE(list->box(0)->isChecked() || list->box(1)->isChecked() || list->box(2)->isChecked());
    EXPECT_EQ(list->summaryLabel()->text(), QStringLiteral("0 of 3"));
}

TEST_F(ChoiceWidgetTest, RadioGroupShowsTheRowWhoseIdIsCurrent)
{
    channels.addField<QString>(QStringLiteral("id"));
    channels.setValue(0, QStringLiteral("id"), QStringLiteral("L"));
    channels.setValue(1, QStringLiteral("id"), QStringLiteral("R"));
    channels.setValue(2, QStringLiteral("id"), QStringLiteral("C"));
    Mve_SimpleValue<QString> current(QStringLiteral("R"), "Choice.Channels.currentID");
    current.Publish();
    auto* group = add<Kel_RadioGroupListBox>("group");
    group->SetConn("Choice.Channels");
    show();
    connect();
    ASSERT_EQ(group->count(), 3);
    EXPECT_EQ(group->button(0)->text(), QStringLiteral("Left"));
    EXPECT_EQ(group->currentRow(), 1);
    current.setValue(QStringLiteral("L"));
    EXPECT_EQ(group->currentRow(), 0);
    // An id that no row has chooses none.
    current.setValue(QStringLiteral("X"));
    EXPECT_EQ(group->currentRow(), -1);
}

TEST_F(ChoiceWidgetTest, RadioGroupModelsNamedOnTheirOwnAndRowIndexesAsIds)
{
    // No id array: a row's id is its index, here in a long model.
    Mve_SimpleValue<long> chosen(2, "Choice.ChosenRow");
    chosen.Publish();
    auto* group = add<Kel_RadioGroupListBox>("group");
    group->SetListConn("Choice.Channels");
    group->SetItemNameConn("Choice.Channels.name");
    group->SetCurrentIDConn("Choice.ChosenRow");
    auto* unbound = add<Kel_RadioGroupListBox>("unbound");
    unbound->SetListConn("Choice.Channels");
    show();
    connect();
    EXPECT_EQ(group->currentRow(), 2);
    clickButton(group->button(1));
    EXPECT_EQ(chosen.getValue(), 1);

    // Without a current id the rows are there but cannot be chosen.
    ASSERT_EQ(unbound->count(), 3);
    EXPECT_FALSE(unbound->button(0)->isEnabled());
    EXPECT_EQ(unbound->currentRow(), -1);
    chosen.UnPublish();
    EXPECT_FALSE(group->button(0)->isEnabled());
    EXPECT_EQ(group->currentRow(), -1);
}

TEST_F(ChoiceWidgetTest, DropdownListShowsTheArrayAndWritesTheChosenIndex)
{
    Mve_Array<QString> formats(std::vector<QString>{QStringLiteral("PAL"), QStringLiteral("NTSC")}, "Choice.Formats");
    Mve_SimpleValue<long> index(1, "Choice.FormatIndex");
    Mve_SimpleValue<bool> enabled(true, "Choice.FormatsEnabled");
    publishAll({&formats, &index, &enabled});
    auto* list = add<Kel_DropdownList>("formats");
    list->setListConnectionSpec("Choice.Formats");
    list->setCurrentIndexConnectionSpec("Choice.FormatIndex");
    list->setEnabledStateConnectionSpec("Choice.FormatsEnabled");
    auto* unbound = add<Kel_DropdownList>("unbound");
    show();
    connect();
    EXPECT_EQ(itemsOf(list), QStringList({QStringLiteral("PAL"), QStringLiteral("NTSC")}));
    EXPECT_EQ(list->currentIndex(), 1);
    EXPECT_TRUE(list->isEnabled());
    EXPECT_FALSE(unbound->isEnabled());

    list->setFocus();
    QTest::keyClick(list, Qt::Key_Up);
    EXPECT_EQ(index.getValue(), 0);
    formats.append(QStringLiteral("SECAM"));
    EXPECT_EQ(list->count(), 3);
    index.setValue(7);
    EXPECT_EQ(list->currentIndex(), -1);
    index.setValue(2);
    EXPECT_EQ(list->currentText(), QStringLiteral("SECAM"));

    index.setReadOnly(true);
    QTest::keyClick(list, Qt::Key_Up);
    EXPECT_EQ(list->currentIndex(), 2);
    enabled.setValue(false);
    EXPECT_FALSE(list->isEnabled());
    enabled.setValue(true);
    formats.UnPublish();
    EXPECT_FALSE(list->isEnabled());
    EXPECT_EQ(list->count(), 0);
}

TEST_F(ChoiceWidgetTest, PopupDisplayShowsAndSetsTheCurrentName)
{
    Mve_SimpleValue<QString> rate(QStringLiteral("25"), "Choice.Rate");
    rate.Publish();
    auto* popup = add<Kel_PopupDisplay>("rate");
    popup->addItems({QStringLiteral("24"), QStringLiteral("25"), QStringLiteral("30")});
    popup->setCurrentNameConnectionSpec("Choice.Rate");
    auto* unbound = add<Kel_PopupDisplay>("unbound");
    unbound->addItems({QStringLiteral("a"), QStringLiteral("b")});
    show();
    connect();
    EXPECT_EQ(popup->currentText(), QStringLiteral("25"));
    popup->setFocus();
    QTest::keyClick(popup, Qt::Key_Down);
    EXPECT_EQ(rate.getValue(), QStringLiteral("30"));
    rate.setValue(QStringLiteral("50"));
    EXPECT_EQ(popup->currentIndex(), -1);

    rate.setValue(QStringLiteral("24"));
    rate.setValidator([](const QString& v) { return v != QStringLiteral("25"); });
    QTest::keyClick(popup, Qt::Key_Down);
    EXPECT_EQ(popup->currentText(), QStringLiteral("24"));
    EXPECT_EQ(rate.getValue(), QStringLiteral("24"));

    EXPECT_FALSE(unbound->isEnabled());
    rate.UnPublish();
    EXPECT_FALSE(popup->isEnabled());
}

// Rows inserted, removed and moved, values changed by the application and
// ticks and choices made by the user, in random order: the boxes and radio
// buttons always show the model, row for row.
TEST_F(ChoiceWidgetTest, ListsFollowEveryOrderOfRowChangesAndClicks)
{
    channels.addField<QString>(QStringLiteral("id"));
    for (long row = 0; row < channels.rowCount(); ++row)
        channels.setValue(row, QStringLiteral("id"), QStringLiteral("id%1").arg(row));
    Mve_SimpleValue<QString> current(QStringLiteral("id0"), "Choice.Channels.currentID");
    current.Publish();
    auto* list = add<Kel_CheckBoxList>("channels");
    list->setListConnectionSpec("Choice.Channels");
    auto* group = add<Kel_RadioGroupListBox>("group");
    group->SetConn("Choice.Channels");
    show();
    connect();

    std::mt19937 random(20261125);
    auto pick = [&random](long n) { return long(std::uniform_int_distribution<long>(0, n - 1)(random)); };
    int nextId = 100;
    for (int step = 0; step < 300; ++step) {
        SCOPED_TRACE(step);
        QCoreApplication::processEvents(); // new boxes show, as they would for a user
        const long rows = channels.rowCount();
        switch (pick(8)) {
        case 0:
        case 7: {
            const long row = pick(rows + 1);
            channels.insertRows(row);
            channels.setValue(row, QStringLiteral("name"), QStringLiteral("N%1").arg(nextId));
            channels.setValue(row, QStringLiteral("id"), QStringLiteral("id%1").arg(nextId++));
            break;
        }
        case 1:
            if (rows > 0)
                channels.removeRows(pick(rows));
            break;
        case 2:
            if (rows > 1)
                channels.moveRow(pick(rows), pick(rows));
            break;
        case 3:
            if (rows > 0)
                channels.setValue(pick(rows), QStringLiteral("checked"), pick(2) == 0);
            break;
        case 4:
            channels.setReadOnly(pick(3) == 0);
            current.setReadOnly(channels.isReadOnly());
            break;
        case 5:
            if (list->count() > 0) {
                const long row = pick(list->count());
                ASSERT_TRUE(list->box(int(row))->isVisible());
                const bool before = checkedAt(row);
                clickButton(list->box(int(row)));
                EXPECT_EQ(checkedAt(row), channels.isReadOnly() ? before : !before);
            }
            break;
        case 6:
            if (group->count() > 0) {
                const long row = pick(group->count());
                const QString before = current.getValue();
                clickButton(group->button(int(row)));
                const QString id = channels.value<QString>(row, QStringLiteral("id"));
                EXPECT_EQ(current.getValue(), current.isReadOnly() ? before : id);
            }
            break;
        }
        ASSERT_EQ(list->count(), channels.rowCount());
        ASSERT_EQ(group->count(), channels.rowCount());
        long chosen = -1;
        for (int row = 0; row < list->count(); ++row) {
            EXPECT_EQ(list->box(row)->text(), channels.value<QString>(row, QStringLiteral("name")));
            EXPECT_EQ(list->box(row)->isChecked(), checkedAt(row));
            EXPECT_EQ(group->button(row)->text(), list->box(row)->text());
            if (chosen < 0 && channels.value<QString>(row, QStringLiteral("id")) == current.getValue())
                chosen = row;
        }
        EXPECT_EQ(group->currentRow(), chosen);
    }
}
