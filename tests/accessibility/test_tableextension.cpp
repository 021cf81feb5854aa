// A list that shows columns presents itself as a table by overriding the
// three column functions of the list's interface; the rest follows.
#include "AccessibilityTestSupport.h"

#include "Kel_BridgeQScrollArea.h"
#include "Kel_HStackView.h"
#include "Kel_ListView.h"
#include "Kel_ListViewAccessible_p.h"
#include "Kel_LongIntView.h"
#include "Kel_TextView.h"
#include "Mve_RecordArray.h"

#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

using namespace a11ytest;

namespace {

// Name and length columns: the cells of the row stack, with labels.
class TwoColumnTable : public Kel_ListViewAccessible
{
public:
    using Kel_ListViewAccessible::Kel_ListViewAccessible;
    int columnCount() const override { return 2; }
    Kel_ViewInterface* columnView(Kel_ViewInterface* rowView, int column) const override
    {
        auto* stack = dynamic_cast<Kel_HStackView*>(rowView);
        return stack ? stack->viewAt(column) : nullptr;
    }
    QString columnHeaderText(int column) const override
    {
        return column == 0 ? QStringLiteral("Name") : QStringLiteral("Length");
    }
};

const bool sTableRegistered = [] {
    Kel_ViewAccessibility::addViewCreator([](Kel_ViewInterface* view) -> QAccessibleInterface* {
        auto* list = dynamic_cast<Kel_ListView*>(view);
        return list && list->getName() == QLatin1String("Columns") ? new TwoColumnTable(list) : nullptr;
    });
    return true;
}();

class ColumnedList : public ::testing::Test
{
protected:
    void SetUp() override
    {
        clips.addField<QString>(QStringLiteral("name"));
        clips.addField<long>(QStringLiteral("length"), 0);
        clips.Publish();
        const struct
        {
            const char* name;
            long length;
        } rows[] = {{"Alpha", 12}, {"Beta", 40}, {"Gamma", 7}};
        for (const auto& r : rows) {
            const long row = clips.appendRow();
            clips.setValue<QString>(row, QStringLiteral("name"), QString::fromLatin1(r.name));
            clips.setValue<long>(row, QStringLiteral("length"), r.length);
        }
        auto* rowView = new Kel_HStackView;
        auto* name = new Kel_TextView;
        name->SetNameConnection(QStringLiteral("A11yColumns.name[$Row]"));
        name->setSize(QSize(120, 20));
        rowView->AddSubView(name);
        auto* length = new Kel_LongIntView;
        length->setConnectionName(QStringLiteral("A11yColumns.length[$Row]"));
        length->setSize(QSize(60, 20));
        rowView->AddSubView(length);
        list = new Kel_ListView;
        list->setName(QStringLiteral("Columns"));
        list->SetRowView(rowView);
        list->SetListConnectionName(QStringLiteral("A11yColumns"));
        list->setSelectionMode(Kel_ListView::Single);
        auto* bridge = new Kel_BridgeQScrollArea(&window);
        bridge->setChild(list);
        (new QVBoxLayout(&window))->addWidget(bridge);
        bridge->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
        ASSERT_TRUE(showActive(window));
        table = Kel_ViewAccessibility::interfaceFor(list);
        ASSERT_NE(dynamic_cast<TwoColumnTable*>(table), nullptr);
    }

    Mve_RecordArray clips{QStringLiteral("A11yColumns")};
    QWidget window;
    Kel_ListView* list = nullptr;
    QAccessibleInterface* table = nullptr;
};

TEST_F(ColumnedList, HeadersComeFirstThenOneCellPerColumnOfEachRow)
{
    EXPECT_EQ(table->role(), QAccessible::Table);
    EXPECT_EQ(table->tableInterface()->columnCount(), 2);
    EXPECT_EQ(table->tableInterface()->columnDescription(1), QStringLiteral("Length"));
    ASSERT_EQ(table->childCount(), 2 + 3 * 2);
    EXPECT_EQ(table->child(0)->role(), QAccessible::ColumnHeader);
    EXPECT_EQ(table->child(1)->text(QAccessible::Name), QStringLiteral("Length"));
    QStringList texts;
    for (int i = 2; i < table->childCount(); ++i) {
        QAccessibleInterface* cell = table->child(i);
        EXPECT_EQ(cell->role(), QAccessible::Cell);
        EXPECT_EQ(table->indexOfChild(cell), i);
        texts << cell->text(QAccessible::Name);
    }
    EXPECT_EQ(texts, (QStringList{"Alpha", "12", "Beta", "40", "Gamma", "7"}));

    QAccessibleInterface* betaLength = table->tableInterface()->cellAt(1, 1);
    ASSERT_NE(betaLength, nullptr);
    EXPECT_EQ(betaLength, table->child(2 + 1 * 2 + 1));
    EXPECT_EQ(betaLength->tableCellInterface()->columnHeaderCells(), QList<QAccessibleInterface*>{table->child(1)});
    EXPECT_EQ(table->tableInterface()->cellAt(1, 2), nullptr);
}

TEST_F(ColumnedList, ACellLiesWhereItsColumnIsPaintedInItsRow)
{
    QAccessibleInterface* betaName = table->tableInterface()->cellAt(1, 0);
    QAccessibleInterface* betaLength = table->tableInterface()->cellAt(1, 1);
    EXPECT_EQ(betaName->rect().size(), QSize(120, 20));
    EXPECT_EQ(betaLength->rect().topLeft(), betaName->rect().topRight() + QPoint(1, 0));
    EXPECT_EQ(table->tableInterface()->cellAt(2, 0)->rect().top(), betaName->rect().top() + 20);
    const QPoint centre = betaLength->rect().center();
    EXPECT_EQ(table->childAt(centre.x(), centre.y()), betaLength);
    // The header line sits above the first row.
    EXPECT_EQ(table->child(0)->rect().bottom() + 1, table->tableInterface()->cellAt(0, 0)->rect().top());
}

} // namespace
