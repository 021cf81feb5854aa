// Case 8 of kelcore_bench; see BenchSupport.h for how cases are timed.
#include "BenchSupport.h"

#include "Kel_ConnectionUtils.h"
#include "Kel_LongLabel.h"
#include "Kel_WidgetList.h"
#include "Mv_ConnectionDict.h"
#include "Mv_ConnectionEnvironment.h"
#include "Mve_RecordArray.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <QWidget>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <random>
#include <vector>

using namespace bench;

namespace {

// --- 8. Widget list ------------------------------------------------------------

const int kFields = 5;
const char* const kFieldNames[kFields] = {"f0", "f1", "f2", "f3", "f4"};

// Tells a hand-made list which cell changed.
class CellSignal : public QObject
{
    Q_OBJECT
signals:
    void changed(int row, int field);
};

// The KelCore side: a record array of five long fields shown by a widget
// list whose every row holds five bound labels ("Bench8.f2[$Row]").
class KelRows
{
public:
    KelRows()
    {
        for (const char* field : kFieldNames)
            mRows.addField<long>(QString::fromLatin1(field));
        mRows.Publish(&mDict);
        mList.reset(new Kel_WidgetList(nullptr, "bench8List", [] {
            auto* row = new QWidget();
            auto* layout = new QHBoxLayout(row);
            for (const char* field : kFieldNames) {
                auto* label = new Kel_LongLabel(row);
                label->SetConnectionName(QByteArray("Bench8.") + field + "[$Row]");
                layout->addWidget(label);
            }
            return row;
        }));
        mList->setConnectionSpec("Bench8");
        Kel_ConnectionUtils::recursiveConnect(
            mList.get(), Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment(), &mDict));
    }
    ~KelRows() { mList.reset(); } // the rows go before their models

    Mve_RecordArray& rows() { return mRows; }
    Kel_WidgetList& list() { return *mList; }
    // What row's label of field shows.
    QString shown(long row, int field) const
    {
        QWidget* widget = mList->indexToRow(row);
        const QList<QLabel*> labels = widget ? widget->findChildren<QLabel*>() : QList<QLabel*>();
        return field < labels.size() ? labels[field]->text() : QString();
    }

private:
    Mv_ConnectionDict mDict;
    Mve_RecordArray mRows{"Bench8"};
    std::unique_ptr<Kel_WidgetList> mList;
};

// The plain-Qt side: the same rows of five labels in a box layout, and a
// signal whose slot writes a changed cell's value into its label.
class QtRows
{
public:
    QtRows() : mLayout(new QVBoxLayout(&mWidget))
    {
        QObject::connect(&mSignal, &CellSignal::changed, [this](int row, int field) {
            mLabels[size_t(row)][size_t(field)]->setNum(int(mValues[size_t(row)][size_t(field)]));
        });
    }
    void append()
    {
        auto* row = new QWidget();
        auto* layout = new QHBoxLayout(row);
        mValues.emplace_back(kFields, 0L);
        mLabels.emplace_back();
        for (int f = 0; f < kFields; ++f) {
            auto* label = new QLabel(row);
            label->setNum(int(mValues.back()[size_t(f)]));
            layout->addWidget(label);
            mLabels.back().push_back(label);
        }
        mLayout->insertWidget(mLayout->count(), row);
        row->show();
    }
    void set(int row, int field, long value)
    {
        mValues[size_t(row)][size_t(field)] = value;
        emit mSignal.changed(row, field);
    }

private:
    QWidget mWidget;
    QVBoxLayout* mLayout;
    CellSignal mSignal;
    std::vector<std::vector<long>> mValues;
    std::vector<std::vector<QLabel*>> mLabels;
};

// Per-change times of changing one cell of a list of n rows. The cells
// changed lie in the first ten rows whatever n is, so that both sizes touch
// the same memory and only what the other rows cost (nothing, it should be)
// tells them apart.
Result cellChange(int n)
{
    const int changes = 2000;
    std::vector<std::pair<int, int>> order(static_cast<size_t>(changes));
    std::mt19937 random(8);
    for (auto& cell : order)
        cell = {std::uniform_int_distribution<int>(0, std::min(n, 10) - 1)(random),
                std::uniform_int_distribution<int>(0, kFields - 1)(random)};

    KelRows kel;
    QtRows qt;
    for (int i = 0; i < n; ++i) {
        kel.rows().appendRow();
        qt.append();
    }
    long value = 0;
    const Result result = compare(
        [&] {
            const double start = nowNs();
            for (const auto& cell : order)
                kel.rows().setValue<long>(cell.first, QString::fromLatin1(kFieldNames[cell.second]), ++value);
            return (nowNs() - start) / changes;
        },
        [&] {
            const double start = nowNs();
            for (const auto& cell : order)
                qt.set(cell.first, cell.second, ++value);
            return (nowNs() - start) / changes;
        });
    kel.rows().setValue<long>(n - 1, QStringLiteral("f4"), -8);
    if (kel.list().rowSize() != n || kel.shown(n - 1, kFields - 1) != QStringLiteral("-8"))
        broken("case 8: a row does not show its element");
    return result;
}

// Per-row times of appending n rows to an empty list.
Result appendRows(int n)
{
    return compare(
        [&] {
            KelRows kel;
            settleHeap();
            const double start = nowNs();
            for (int i = 0; i < n; ++i)
                kel.rows().appendRow();
            const double elapsed = nowNs() - start;
            if (kel.list().rowSize() != n || kel.shown(n - 1, kFields - 1) != QStringLiteral("0"))
                broken("case 8: the appended rows are not all there");
            return elapsed / n;
        },
        [&] {
            QtRows qt;
            settleHeap();
            const double start = nowNs();
            for (int i = 0; i < n; ++i)
                qt.append();
            return (nowNs() - start) / n;
        });
}

// Prints the line of the larger run and the growth from the smaller one,
// which must stay within x1.5 (the same cost, within noise).
bool printGrowth(const char* name, const char* target, const char* smaller, const Result& few, const Result& many)
{
    const double growth = many.kelNs / few.kelNs;
    const bool met = growth <= 1.5;
    printLine(name, formatTime(many.kelNs), formatTime(many.qtNs), QString::number(many.ratio, 'f', 2),
              QString::fromLatin1(target), met);
    std::printf("    %s: %s (Qt %s); growth x%.2f\n", smaller, qPrintable(formatTime(few.kelNs)),
                qPrintable(formatTime(few.qtNs)), growth);
    return met;
}

bool benchWidgetList()
{
    // A change reaching every row would grow x100 here.
    const bool changeMet = printGrowth("8 widget list: one cell of 1,000 rows x 5", "as with 10 rows (<= x1.5)",
                                       "per change with 10 rows", cellChange(10), cellChange(1000));
    // Linear: the time per row stays put when there are ten times more.
    const bool appendMet = printGrowth("8 widget list: append 1,000 rows, per row", "linear (per row <= x1.5)",
                                       "per row appending 100", appendRows(100), appendRows(1000));
    return changeMet && appendMet;
}

} // namespace

namespace {
const BenchCaseRegistrar registration(8, [](const QString&) { return benchWidgetList(); });
} // namespace

#include "case8_widgetlist.moc"
