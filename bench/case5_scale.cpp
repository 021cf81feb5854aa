// Case 5 of kelcore_bench; see BenchSupport.h for how cases are timed.
#include "BenchSupport.h"

#include "Mv_ConnectionDict.h"
#include "Mv_ConnectionEnvironment.h"
#include "Mve_SimpleValue.h"

#include <QHash>
#include <QStringList>

#include <cmath>
#include <cstdio>
#include <memory>
#include <vector>

using namespace bench;

namespace {

// --- 5. Publish and look up at scale -----------------------------------------

// Per-operation times of publishing n models and connecting one listener to
// each, in a dictionary of their own; the plain-Qt side inserts the names in
// a QHash and looks each one up.
Result publishAndConnect(int n)
{
    QStringList names;
    names.reserve(n);
    for (int i = 0; i < n; ++i)
        names.append(QStringLiteral("Scale.Model%1.value").arg(i));

    return compare(
        [&] {
            Mv_ConnectionDict dict;
            auto env = Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment(), &dict);
            std::vector<std::unique_ptr<Mve_SimpleValue<long>>> models;
            std::vector<std::unique_ptr<Mvt_SimpleValue<long>::Listener>> listeners;
            models.reserve(size_t(n));
            listeners.reserve(size_t(n));
            for (int i = 0; i < n; ++i) {
                models.emplace_back(new Mve_SimpleValue<long>(i, names.at(i)));
                listeners.emplace_back(new Mvt_SimpleValue<long>::Listener());
                listeners.back()->SetConnectionName(names.at(i));
            }
            settleHeap();
            const double start = nowNs();
            for (int i = 0; i < n; ++i)
                models[size_t(i)]->Publish(&dict);
            for (int i = 0; i < n; ++i)
                listeners[size_t(i)]->connect(env);
            const double elapsed = nowNs() - start;
            if (!listeners.front()->isConnectedToModel() || !listeners.back()->isConnectedToModel())
                broken("case 5: a listener did not find its model");
            listeners.clear();
            models.clear();
            return elapsed / n;
        },
        [&] {
            std::vector<std::unique_ptr<Mve_SimpleValue<long>>> models;
            models.reserve(size_t(n));
            for (int i = 0; i < n; ++i)
                models.emplace_back(new Mve_SimpleValue<long>(i, names.at(i)));
            std::vector<Mv_ModelBase*> found(static_cast<size_t>(n));
            settleHeap();
            const double start = nowNs();
            QHash<QString, Mv_ModelBase*> table;
            for (int i = 0; i < n; ++i)
                table.insert(names.at(i), models[size_t(i)].get());
            for (int i = 0; i < n; ++i)
                found[size_t(i)] = table.value(names.at(i));
            const double elapsed = nowNs() - start;
            return elapsed / n;
        });
}

bool benchScale()
{
    const int sizes[] = {1000, 10000, 100000};
    std::vector<Result> results;
    for (int n : sizes)
        results.push_back(publishAndConnect(n));

    QString perOp, growth;
    for (size_t i = 0; i < results.size(); ++i) {
        const int n = sizes[i];
        perOp += QStringLiteral("%1%2: %3 (Qt %4)")
                     .arg(i ? ", " : "")
                     .arg(n)
                     .arg(formatTime(results[i].kelNs), formatTime(results[i].qtNs));
        if (i == 0)
            continue;
        // Growth of the total time over one decade, against n log n's.
        const double total = 10 * results[i].kelNs / results[i - 1].kelNs;
        const double qtTotal = 10 * results[i].qtNs / results[i - 1].qtNs;
        const double nlogn = 10 * std::log(double(n)) / std::log(double(n / 10));
        growth += QStringLiteral("%1%2 -> %3: x%4 (n log n x%5, Qt x%6)")
                      .arg(i > 1 ? ", " : "")
                      .arg(n / 10)
                      .arg(n)
                      .arg(total, 0, 'f', 1)
                      .arg(nlogn, 0, 'f', 1)
                      .arg(qtTotal, 0, 'f', 1);
    }
    // The growth is reported for comparison with plain QHash; the target
    // is the ratio at the largest size.
    const bool met = printRatio("5 publish + connect, per model at 100,000", results.back(), 1.5);
    std::printf("    per model: %s\n    total time per decade: %s\n", qPrintable(perOp), qPrintable(growth));
    return met;
}

} // namespace

namespace {
const BenchCaseRegistrar registration(5, [](const QString&) { return benchScale(); });
} // namespace
