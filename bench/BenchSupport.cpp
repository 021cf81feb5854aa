#include "BenchSupport.h"

#include <QImage>
#include <QWidget>

#ifdef __GLIBC__
#include <malloc.h>
#endif
#include <algorithm>
#include <cstdio>
#include <ctime>

namespace bench {

int gRepetitions = 21;

namespace {
bool gBroken = false;
}

void broken(const char* what)
{
    std::fprintf(stderr, "%s\n", what);
    gBroken = true;
}

bool isBroken()
{
    return gBroken;
}

double nowNs()
{
    timespec t;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return double(t.tv_sec) * 1e9 + double(t.tv_nsec);
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

Result compare(const std::function<double()>& kel, const std::function<double()>& qt)
{
    kel();
    qt();
    std::vector<double> kelTimes, qtTimes, ratios;
    for (int i = 0; i < gRepetitions; ++i) {
        double k, q;
        if (i % 2) {
            k = kel();
            q = qt();
        } else {
            q = qt();
            k = kel();
        }
        kelTimes.push_back(k);
        qtTimes.push_back(q);
        ratios.push_back(k / q);
    }
    return Result{median(kelTimes), median(qtTimes), median(ratios)};
}

QString formatTime(double ns)
{
    if (ns >= 1e6)
        return QString::number(ns / 1e6, 'f', 2) + QStringLiteral(" ms");
    if (ns >= 1e4)
        return QString::number(ns / 1e3, 'f', 1) + QStringLiteral(" us");
    return QString::number(ns, 'f', 0) + QStringLiteral(" ns");
}

void printLine(const char* name, const QString& kel, const QString& qt, const QString& ratio, const QString& target,
               bool met)
{
    std::printf("%-48s %10s %10s %6s   %-26s %s\n", name, qPrintable(kel), qPrintable(qt), qPrintable(ratio),
                qPrintable(target), met ? "met" : "MISSED");
    std::fflush(stdout);
}

bool printRatio(const char* name, const Result& r, double target)
{
    const bool met = r.ratio <= target;
    printLine(name, formatTime(r.kelNs), formatTime(r.qtNs), QString::number(r.ratio, 'f', 2),
              QStringLiteral("ratio <= %1").arg(target, 0, 'f', 1), met);
    return met;
}

Result comparePaint(QWidget* kel, QWidget* qt, const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    return compare(
        [&] {
            const double start = nowNs();
            kel->render(&image);
            return nowNs() - start;
        },
        [&] {
            const double start = nowNs();
            qt->render(&image);
            return nowNs() - start;
        });
}

int middleListRow(int n, int rowHeight, int visibleRows)
{
    return std::min(n / 2, 16000000 / rowHeight - visibleRows * 2);
}

void settleHeap()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

std::vector<BenchCase>& benchCases()
{
    static std::vector<BenchCase> cases;
    return cases;
}

BenchCaseRegistrar::BenchCaseRegistrar(int number, std::function<bool(const QString& resourceDir)> run)
{
    auto& cases = benchCases();
    const auto at = std::find_if(cases.begin(), cases.end(), [&](const BenchCase& c) { return c.number > number; });
    cases.insert(at, BenchCase{number, std::move(run)});
}

} // namespace bench
