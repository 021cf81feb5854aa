// Case 6 of kelcore_bench; see BenchSupport.h for how cases are timed.
#include "BenchSupport.h"

#include "Mv_ConnectionDict.h"
#include "Mv_ConnectionEnvironment.h"
#include "Mve_Array.h"
#include "Mve_Index.h"

#include <cstdio>
#include <memory>
#include <random>
#include <vector>

using namespace bench;

namespace {

// --- 6. One element of a large array -----------------------------------------

// Tells the receivers of a hand-made array which element changed.
class IndexSignal : public QObject
{
    Q_OBJECT
signals:
    void changed(int index);
};

// Per-change times of changing one element of an array of n longs that n
// element listeners show, each following its own index model ("Cells[Row7]",
// the shape of a widget list's rows); the plain-Qt side emits the index to
// one slot that finds the row's receiver by index and hands it the value.
Result elementChange(int n)
{
    const int changes = 2000;
    std::vector<long> order(static_cast<size_t>(changes));
    std::mt19937 random(7);
    for (long& index : order)
        index = long(std::uniform_int_distribution<int>(0, n - 1)(random));

    Mv_ConnectionDict dict;
    auto env = Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment(), &dict);
    Mve_Array<long> cells(std::vector<long>(size_t(n), 0), QStringLiteral("Cells"));
    cells.Publish(&dict);
    std::vector<std::unique_ptr<Mve_Index<long>>> rows;
    std::vector<std::unique_ptr<Mvt_SimpleValue<long>::Listener>> listeners;
    long shown = 0;
    for (int i = 0; i < n; ++i) {
        rows.emplace_back(new Mve_Index<long>(i, QStringLiteral("Row%1").arg(i)));
        rows.back()->Publish(&dict);
        listeners.emplace_back(new Mvt_SimpleValue<long>::Listener());
        Mvt_SimpleValue<long>::Listener* listener = listeners.back().get();
        listener->SetConnectionName(QStringLiteral("Cells[Row%1]").arg(i));
        listener->setReceiveMessageCB([listener, &shown](const Mv_MessageInterface&) { shown += listener->value(); });
        listener->connect(env);
    }

    std::vector<long> plain(size_t(n), 0);
    std::vector<long> plainShown(size_t(n), 0);
    IndexSignal signal;
    QObject::connect(&signal, &IndexSignal::changed, [&](int index) { plainShown[size_t(index)] += plain[size_t(index)]; });

    long value = 0;
    const Result result = compare(
        [&] {
            const double start = nowNs();
            for (long index : order)
                cells.setAt(index, ++value);
            return (nowNs() - start) / changes;
        },
        [&] {
            const double start = nowNs();
            for (long index : order) {
                plain[size_t(index)] = ++value;
                emit signal.changed(int(index));
            }
            return (nowNs() - start) / changes;
        });
    if (shown == 0)
        broken("case 6: the element listeners heard nothing");
    return result;
}

bool benchElements()
{
    const Result small = elementChange(100);
    const Result large = elementChange(10000);
    const double growth = large.kelNs / small.kelNs;
    // A change reaching every listener of the array would grow x100 here.
    const bool met = growth <= 3.0;
    printLine("6 element change, 10,000 element listeners", formatTime(large.kelNs), formatTime(large.qtNs),
              QString::number(large.ratio, 'f', 2), QStringLiteral("x100 listeners: time <= x3"), met);
    std::printf("    per change with 100 listeners: %s (Qt %s); 100 -> 10,000 listeners: x%.2f\n",
                qPrintable(formatTime(small.kelNs)), qPrintable(formatTime(small.qtNs)), growth);
    return met;
}

} // namespace

namespace {
const BenchCaseRegistrar registration(6, [](const QString&) { return benchElements(); });
} // namespace

#include "case6_elements.moc"
