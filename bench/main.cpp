// kelcore_bench: what the library costs over doing the same work by hand in
// plain Qt. Every case times KelCore and its plain-Qt counterpart in turn, in
// the same run, and reports the medians and the median of the paired ratios
// (KelCore / Qt), so that a busy machine slows both sides alike. Times are
// CPU time of the one thread that does all the work.
//
// Run it through tools/bench.sh. Options: --quick (fewer repetitions, for a
// smoke run), --case N (only case N, for profiling). The exit status is 2
// when a case could not do its work, else 0: missed targets are reported,
// not failed. Each case is a file of its own (caseN_name.cpp).
#include "BenchSupport.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// Debug messages (when QT_LOGGING_RULES turns them on) would bury the results.
void dropMessages(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type != QtDebugMsg && type != QtInfoMsg && !message.startsWith(QLatin1String("QStandardPaths:")))
        std::fprintf(stderr, "%s\n", qPrintable(message));
}

} // namespace

int main(int argc, char** argv)
{
    qInstallMessageHandler(dropMessages);
    // As in a release build of an application: no debug output from the
    // library's categories, so that its traces cost nothing.
    // QT_LOGGING_RULES="kel.*.debug=true" measures them too.
    QLoggingCategory::setFilterRules(QStringLiteral("kel.*.debug=false"));
    QApplication app(argc, argv);

    int only = 0;
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--quick"))
            bench::gRepetitions = 3;
        else if (!std::strcmp(argv[i], "--case") && i + 1 < argc)
            only = std::atoi(argv[++i]);
    }

    QTemporaryDir resources;
    std::printf("KelCore vs plain Qt, medians of %d runs; ratio = KelCore / Qt, paired runs\n", bench::gRepetitions);
    std::printf("%-48s %10s %10s %6s   %-26s %s\n", "case", "KelCore", "Qt", "ratio", "target", "");
    int missed = 0;
    for (const bench::BenchCase& c : bench::benchCases()) {
        if (!only || only == c.number) {
            if (!c.run(resources.path() + QLatin1Char('/')))
                ++missed;
        }
    }
    if (bench::isBroken()) {
        std::printf("some cases did not do their work: their figures are not valid\n");
        return 2;
    }
    std::printf(missed ? "targets missed: %d\n" : "all targets met\n", missed);
    // Missed targets are results, not failures of the program.
    return 0;
}
