// The list-selection dialog: offers the rows of a string array, opens on the
// model's choice and writes the user's choice back on OK only.
#include "Kel_ListSelectionDialog.h"
#include "Mv_ConnectionDict.h"
#include "Mve_Array.h"
#include "Mve_SimpleValue.h"
#include "TestSupport.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class ListSelection : public ::testing::Test
{
protected:
    void SetUp() override
    {
        for (Mv_ModelBase* m : std::initializer_list<Mv_ModelBase*>{&names, &chosen, &several})
            m->Publish(&dict);
        env = Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment(), &dict);
        dialog.setListConnectionSpec("Bin.names");
    }
    void show()
    {
        dialog.makeConnections(env);
        dialog.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    }
    void clickRow(int row)
    {
        QListWidget* list = dialog.listWidget();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
    }
    QPushButton* button(QDialogButtonBox::StandardButton which)
    {
        return dialog.findChild<QDialogButtonBox*>()->button(which);
    }
    QStringList selectedTexts() const
    {
        QStringList texts;
        for (const QListWidgetItem* item : dialog.listWidget()->selectedItems())
            texts << item->text();
        return texts;
    }

    Mv_ConnectionDict dict;
    Mve_Array<QString> names{std::vector<QString>{"Intro", "Interview", "Outro"}, "Bin.names"};
    Mve_SimpleValue<long> chosen{1, "Bin.chosen"};
    Mve_SimpleValue<SortedValueList<long>> several{SortedValueList<long>(), "Bin.several"};
    Mv_ConnectionEnvironment::Ptr env;
    Kel_ListSelectionDialog dialog;
};

TEST_F(ListSelection, OneChoiceOpensOnTheModelsRowAndIsWrittenOnOkOnly)
{
    dialog.setSelectionConnectionSpec("Bin.chosen");
    show();
    EXPECT_EQ(selectedTexts(), QStringList{"Interview"});
    clickRow(2);
    EXPECT_EQ(selectedTexts(), QStringList{"Outro"});
    EXPECT_EQ(chosen.getValue(), 1); // nothing written yet
    QTest::mouseClick(button(QDialogButtonBox::Ok), Qt::LeftButton);
    EXPECT_EQ(chosen.getValue(), 2);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);

    show();
    clickRow(0);
    QTest::mouseClick(button(QDialogButtonBox::Cancel), Qt::LeftButton);
    EXPECT_EQ(chosen.getValue(), 2);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
}

TEST_F(ListSelection, SeveralChoicesAndTheFilter)
{
    several.setValue([] {
        SortedValueList<long> l;
        l.add(0);
        return l;
    }());
    dialog.setMultiSelectionConnectionSpec("Bin.several");
    show();
    clickRow(2);
    QTest::keyClicks(dialog.findChild<QLineEdit*>("filter"), "int");
    EXPECT_FALSE(dialog.listWidget()->item(1)->isHidden());
    EXPECT_TRUE(dialog.listWidget()->item(2)->isHidden()); // hidden, still chosen
    clickRow(1);
    QTest::mouseClick(button(QDialogButtonBox::Ok), Qt::LeftButton);
    const SortedValueList<long> written = several.getValue();
    ASSERT_EQ(written.size(), 3);
    EXPECT_EQ(written.first(), 0);
    EXPECT_EQ(written.last(), 2);

    // The rows follow the array while the dialog is open.
    names.append("Credits");
    EXPECT_EQ(dialog.listWidget()->count(), 4);
}

TEST_F(ListSelection, ARefusedChoiceKeepsTheDialogOpenAndNoModelMeansNoOk)
{
    chosen.setReadOnly(true);
    dialog.setSelectionConnectionSpec("Bin.chosen");
    show();
    clickRow(0);
    QTest::mouseClick(button(QDialogButtonBox::Ok), Qt::LeftButton);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(dialog.findChild<QLabel*>("error")->isVisible());
    EXPECT_EQ(chosen.getValue(), 1);
    dialog.reject();

    Kel_ListSelectionDialog unbound;
    unbound.setListConnectionSpec("Bin.names");
    unbound.setSelectionConnectionSpec("Bin.nothing");
    unbound.makeConnections(env);
    EXPECT_EQ(unbound.listWidget()->count(), 3);
    EXPECT_FALSE(unbound.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled());
}

} // namespace
