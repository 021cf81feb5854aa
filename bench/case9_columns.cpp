// Case 9 of kelcore_bench; see BenchSupport.h for how cases are timed.
#include "BenchSupport.h"

#include "Kel_BridgeQScrollArea.h"
#include "Kel_ColumnDataModel.h"
#include "Kel_HStackView.h"
#include "Kel_ListWithColumns.h"
#include "Kel_TextView.h"
#include "Mv_ConnectionEnvironment.h"
#include "Mve_ComputedContainer.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>

#include <cstdio>
#include <memory>
#include <vector>

using namespace bench;

namespace {

// --- 9. A columned list of 20 columns at 1,000 / 1,000,000 rows ---------------
//
// Painting the visible rows of a 20-column list must cost the same at every
// size, and no more than a QTableView with uniform row heights over a table
// model of the same size. Both sides make each cell's text when it is asked
// for, so neither pays for storing twenty million strings.

const int kColumns = 20;
const int kColumnWidth = 60;
const int kRowHeight = 20;
const int kVisibleRows = 30;

QString cellText(long row, int column)
{
    return QStringLiteral("R%1 C%2").arg(row).arg(column);
}

class CellTextModel : public QAbstractTableModel
{
public:
    explicit CellTextModel(int rows) : mRows(rows) {}
    int rowCount(const QModelIndex& parent = QModelIndex()) const override { return parent.isValid() ? 0 : mRows; }
    int columnCount(const QModelIndex& parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : kColumns;
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != Qt::DisplayRole || !index.isValid())
            return QVariant();
        return cellText(index.row(), index.column());
    }

private:
    int mRows;
};

Result benchColumnsOfSize(int n)
{
    const QString base = QStringLiteral("Bench.Table%1").arg(n);
    // The rows: one computed text array per field, and the first as the list's array.
    std::vector<std::unique_ptr<Mve_ComputedContainer<QString>>> fields;
    for (int c = 0; c < kColumns; ++c) {
        fields.emplace_back(new Mve_ComputedContainer<QString>(
            [c](long row, QString& text) {
                text = cellText(row, c);
                return true;
            },
            base + QStringLiteral(".f%1").arg(c)));
        fields.back()->setSizeFunction([n] { return long(n); });
        fields.back()->Publish();
    }
    Kel_ColumnDataModel columns(base + QStringLiteral(".Columns"));
    for (int c = 0; c < kColumns; ++c) {
        Kel_ColumnDataModel::Column column;
        column.identifier = QStringLiteral("f%1").arg(c);
        column.label = QStringLiteral("Field %1").arg(c);
        column.width = kColumnWidth;
        column.minWidth = 10;
        column.connectionEnvironmentVars = QStringLiteral("Field=f%1").arg(c);
        columns.addColumn(column);
    }
    columns.publish();

    auto* list = new Kel_ListWithColumns;
    auto text = std::make_shared<Kel_TextView>();
    text->SetNameConnection(base + QStringLiteral(".$Field[$Row]"));
    list->SetViewTypeMap({{0, text}});
    list->SetRowHeight(kRowHeight);
    list->SetListConnectionName(base + QStringLiteral(".f0"));
    list->SetColumnDataModel(base + QStringLiteral(".Columns"));
    list->setSelectionMode(Kel_ListView::Single);

    const QSize size(2 + kColumns * (kColumnWidth + 5), kVisibleRows * kRowHeight);
    QWidget kelWindow;
    auto* bridge = new Kel_BridgeQScrollArea(&kelWindow);
    bridge->setChild(list);
    list->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    bridge->resize(size);
    kelWindow.resize(size);
    kelWindow.show();

    CellTextModel model(n);
    QWidget qtWindow;
    auto* table = new QTableView(&qtWindow);
    table->horizontalHeader()->hide();
    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(kRowHeight);
    table->horizontalHeader()->setDefaultSectionSize(kColumnWidth + 5);
    table->setModel(&model);
    table->resize(size);
    qtWindow.resize(size);
    qtWindow.show();
    QCoreApplication::processEvents();

    const int middle = middleListRow(n, kRowHeight, kVisibleRows);
    bridge->verticalScrollBar()->setValue(middle * kRowHeight);
    table->scrollTo(model.index(middle, 0), QAbstractItemView::PositionAtTop);
    QCoreApplication::processEvents();

    if (!list->rowStack() || list->rowStack()->count() != 2 * kColumns + 1 || list->GetNumItems() != n)
        broken("case 9: the columned list did not build its row of 20 columns over the whole array");

    const Result paint = comparePaint(bridge, table, size);
    // The cells read their rows: the first one was last painted showing a
    // row near the middle.
    const auto* first = dynamic_cast<Kel_TextView*>(list->rowStack()->viewAt(1));
    const QString shown = first ? first->getText() : QString();
    bool ok = false;
    const long shownRow = shown.section(QLatin1Char(' '), 0, 0).mid(1).toLong(&ok);
    if (!ok || shown != cellText(shownRow, 0) || shownRow < middle || shownRow > middle + kVisibleRows)
        broken("case 9: the columned list's cells do not show their fields");
    // The list leaves with its window; the column models go after it.
    return paint;
}

bool benchColumns()
{
    const int sizes[] = {1000, 1000000};
    std::vector<Result> figures;
    for (int n : sizes)
        figures.push_back(benchColumnsOfSize(n));
    bool met = true;
    for (size_t i = 0; i < figures.size(); ++i) {
        const QString label = QStringLiteral("9 columned list paint, 20 x 30 of %L1 rows").arg(sizes[i]);
        met = printRatio(qPrintable(label), figures[i], 1.0) && met;
    }
    std::printf("    1,000 -> 1,000,000 rows: paint x%.2f (Qt: x%.2f)\n", figures.back().kelNs / figures.front().kelNs,
                figures.back().qtNs / figures.front().qtNs);
    return met;
}

const BenchCaseRegistrar registration(9, [](const QString&) { return benchColumns(); });

} // namespace
