#ifndef BENCHSUPPORT_H
#define BENCHSUPPORT_H

// What every case of kelcore_bench shares: paired timing of KelCore against
// plain Qt doing the same work, the result line, and the case registry.
//
// A case lives in its own file (caseN_name.cpp) and registers itself with a
// static BenchCaseRegistrar giving its number and a function that runs it,
// prints its lines and answers whether it met its target. Cases run in
// ascending number; --case N runs one.
#include <QString>

class QSize;
class QWidget;

#include <functional>
#include <vector>

namespace bench {

// Repetitions per case; every repetition times both sides once.
extern int gRepetitions;

// Marks the run as broken: a case could not do its work, so its figures
// mean nothing (the program exits with 2).
void broken(const char* what);
bool isBroken();

// The CPU time of this thread, in nanoseconds: all the work measured runs on
// it, and time spent waiting for a core that other processes hold is not
// counted.
double nowNs();

double median(std::vector<double> values);

struct Result
{
    double kelNs;   // median time of one KelCore run
    double qtNs;    // median time of one plain-Qt run
    double ratio;   // median of the paired ratios
};

// Times kel and qt (each returns the nanoseconds of its own timed part)
// alternately, after one untimed warm-up run each. The side that goes first
// alternates, so neither always runs on a cold cache.
Result compare(const std::function<double()>& kel, const std::function<double()>& qt);

// Times painting two widgets of the same size, each rendered whole into an
// image of that size, as compare does.
Result comparePaint(QWidget* kel, QWidget* qt, const QSize& size);

// The row a list benchmark scrolls to: the middle of n rows, or as far down
// as a list's content (16,000,000 pixels at most) reaches.
int middleListRow(int n, int rowHeight, int visibleRows);

QString formatTime(double ns);

// One result line: case, KelCore's time, Qt's time, ratio, target, met.
void printLine(const char* name, const QString& kel, const QString& qt, const QString& ratio, const QString& target,
               bool met);

// printLine for a case whose target is a ratio; answers whether it is met.
bool printRatio(const char* name, const Result& r, double target);

// Gives memory freed by a previous run back to the system first, so that
// the allocator does not sort out that run's freed blocks in the middle of
// the next timed run.
void settleHeap();

struct BenchCase
{
    int number;
    // Runs the case; resourceDir is a scratch folder for files it writes.
    std::function<bool(const QString& resourceDir)> run;
};

// The registered cases, by ascending number.
std::vector<BenchCase>& benchCases();

struct BenchCaseRegistrar
{
    BenchCaseRegistrar(int number, std::function<bool(const QString& resourceDir)> run);
};

} // namespace bench

#endif
