// Case 7 of kelcore_bench; see BenchSupport.h for how cases are timed.
#include "BenchSupport.h"

#include "Kel_BridgeQScrollArea.h"
#include "Kel_ListView.h"
#include "Kel_TextView.h"
#include "Mv_ConnectionEnvironment.h"
#include "Mve_Array.h"
#include "Mve_RecordArray.h"

#include <QApplication>
#include <QKeyEvent>
#include <QListView>
#include <QScrollBar>
#include <QStringListModel>
#include <QStyledItemDelegate>

#ifdef __GLIBC__
#include <malloc.h>
#endif
#include <cstdio>
#include <vector>

using namespace bench;

namespace {

// --- 7. A list view at 1,000 / 100,000 / 1,000,000 rows ------------------------
//
// Painting the visible rows and moving the selection with the Down key must
// cost the same at every size, and no more than a QListView in uniform-item
// mode over a QStringListModel doing the same; the list's own memory must
// not grow with the array.

const int kListRowHeight = 20;
const int kListVisibleRows = 30;
const int kListKeysPerRun = 10;

// QListView items as high as the list's rows, drawn by Qt's own delegate.
class FixedHeightDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        return QSize(QStyledItemDelegate::sizeHint(option, index).width(), kListRowHeight);
    }
};

// Bytes of heap in use (0 where the allocator cannot tell).
long heapInUse()
{
#if defined(__GLIBC__) && (__GLIBC__ > 2 || (__GLIBC__ == 2 && __GLIBC_MINOR__ >= 33))
    return long(mallinfo2().uordblks);
#else
    return 0;
#endif
}

struct ListFigures
{
    Result paint;
    Result key;
    long listBytes; // the list view with its row view, connected, without the model
};

void pressDown(QWidget* target)
{
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    QApplication::sendEvent(target, &press);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Down, Qt::NoModifier);
    QApplication::sendEvent(target, &release);
    QCoreApplication::processEvents(); // the repaints the key asked for
}

// One size: a record array and a QStringListModel of n names, a list view
// and a QListView of 30 visible rows scrolled to the middle.
ListFigures benchListOfSize(int n)
{
    const QString arrayName = QStringLiteral("Bench.List%1").arg(n);
    Mve_RecordArray clips(arrayName);
    Mve_Array<QString>* names = clips.addField<QString>(QStringLiteral("name"));
    clips.insertRows(0, n);
    std::vector<QString> values;
    values.reserve(size_t(n));
    QStringList strings;
    strings.reserve(n);
    for (int i = 0; i < n; ++i) {
        values.push_back(QStringLiteral("Clip %1").arg(i));
        strings.append(values.back());
    }
    names->setValues(values);
    clips.Publish();
    QStringListModel qtModel(strings);
    const auto env = Mv_ConnectionEnvironment::blankEnvironment();

    // The list's own memory: it must not grow with the array. One list made
    // and dropped first, so that what the first list of the process sets up
    // once is not counted.
    {
        Kel_ListView warmUp;
        warmUp.SetRowView(new Kel_TextView);
        warmUp.SetListConnectionName(arrayName);
        warmUp.SetSelectionConnectionName(arrayName + QStringLiteral(".WarmUp"));
        warmUp.makeConnections(env);
    }
    settleHeap();
    const long before = heapInUse();
    auto* list = new Kel_ListView;
    auto* cell = new Kel_TextView;
    cell->SetNameConnection(arrayName + QStringLiteral(".name[$Row]"));
    cell->setSize(QSize(300, kListRowHeight));
    list->SetRowView(cell);
    list->SetListConnectionName(arrayName);
    list->setSelectionMode(Kel_ListView::Single);
    list->makeConnections(env);
    settleHeap();
    const long listBytes = heapInUse() - before;

    const QSize size(320, kListVisibleRows * kListRowHeight);
    QWidget kelWindow;
    auto* bridge = new Kel_BridgeQScrollArea(&kelWindow);
    bridge->setChild(list);
    bridge->resize(size);
    kelWindow.resize(size);
    kelWindow.show();
    QWidget qtWindow;
    auto* view = new QListView(&qtWindow);
    view->setUniformItemSizes(true);
    view->setItemDelegate(new FixedHeightDelegate(view));
    view->setModel(&qtModel);
    view->resize(size);
    qtWindow.resize(size);
    qtWindow.show();
    QCoreApplication::processEvents();

    const int middle = middleListRow(n, kListRowHeight, kListVisibleRows);
    bridge->verticalScrollBar()->setValue(middle * kListRowHeight);
    view->scrollTo(qtModel.index(middle), QAbstractItemView::PositionAtTop);
    QCoreApplication::processEvents();

    ListFigures figures;
    figures.listBytes = listBytes;
    figures.paint = comparePaint(bridge, view, size);

    list->SetSelected(middle, false, Qt::NoModifier);
    view->setCurrentIndex(qtModel.index(middle));
    QCoreApplication::processEvents();
    figures.key = compare(
        [&] {
            const double start = nowNs();
            for (int i = 0; i < kListKeysPerRun; ++i)
                pressDown(bridge->viewportWidget());
            return (nowNs() - start) / kListKeysPerRun;
        },
        [&] {
            const double start = nowNs();
            for (int i = 0; i < kListKeysPerRun; ++i)
                pressDown(view);
            return (nowNs() - start) / kListKeysPerRun;
        });
    const long expected = middle + (kListKeysPerRun * (gRepetitions + 1)) % n;
    if (list->GetFirstRowSelection() != expected || view->currentIndex().row() != int(expected))
        broken("case 7: the Down key did not move the selection one row at a time");
    if (list->GetNumItems() != n)
        broken("case 7: the list does not see the whole array");
    return figures;
}

bool benchList()
{
    const int sizes[] = {1000, 100000, 1000000};
    std::vector<ListFigures> figures;
    for (int n : sizes)
        figures.push_back(benchListOfSize(n));
    bool met = true;
    for (size_t i = 0; i < figures.size(); ++i) {
        const QString label = QStringLiteral("7 list paint, 30 of %L1 rows").arg(sizes[i]);
        met = printRatio(qPrintable(label), figures[i].paint, 1.0) && met;
    }
    for (size_t i = 0; i < figures.size(); ++i) {
        const QString label = QStringLiteral("7 list Down key, %L1 rows").arg(sizes[i]);
        met = printRatio(qPrintable(label), figures[i].key, 1.0) && met;
    }
    const double paintGrowth = figures.back().paint.kelNs / figures.front().paint.kelNs;
    const double keyGrowth = figures.back().key.kelNs / figures.front().key.kelNs;
    std::printf("    1,000 -> 1,000,000 rows: paint x%.2f, Down key x%.2f (Qt: x%.2f, x%.2f)\n", paintGrowth, keyGrowth,
                figures.back().paint.qtNs / figures.front().paint.qtNs, figures.back().key.qtNs / figures.front().key.qtNs);
    std::printf("    list view memory (model excluded): %ld / %ld / %ld bytes at 1,000 / 100,000 / 1,000,000 rows\n",
                figures[0].listBytes, figures[1].listBytes, figures[2].listBytes);
    return met;
}

const BenchCaseRegistrar registration(7, [](const QString&) { return benchList(); });

} // namespace
