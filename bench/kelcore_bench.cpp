// kelcore_bench: what the library costs over doing the same work by hand in
// plain Qt. Every case times KelCore and its plain-Qt counterpart in turn, in
// the same run, and reports the medians and the median of the paired ratios
// (KelCore / Qt), so that a busy machine slows both sides alike. Times are
// CPU time of the one thread that does all the work.
//
// Run it through tools/bench.sh. Options: --quick (fewer repetitions, for a
// smoke run), --case N (only case N, for profiling). The exit status is 2
// when a case could not do its work, else 0: missed targets are reported,
// not failed.
#include "Kel_CheckBox.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_CreateWidgetFromUILayout.h"
#include "Kel_PopupMenu.h"
#include "Mnu_QtManager.h"
#include "Mv_ConnectionDict.h"
#include "Mv_ConnectionEnvironment.h"
#include "Mve_Action.h"
#include "Mve_Array.h"
#include "Mve_Index.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"
#include "Ost_Resource.h"
#include "Uip_ParseNode.h"
#include "Uip_ParseScript.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QLoggingCategory>
#include <QMenu>
#include <QPixmap>
#include <QTemporaryDir>
#include <QUiLoader>
#include <QWidget>

#include <algorithm>
#ifdef __GLIBC__
#include <malloc.h>
#endif
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <functional>
#include <memory>
#include <random>
#include <vector>

namespace {

// Repetitions per case; every repetition times both sides once.
int gRepetitions = 21;
// Set when a case could not do its work; its figures then mean nothing.
bool gBroken = false;

void broken(const char* what)
{
    std::fprintf(stderr, "%s\n", what);
    gBroken = true;
}

// The CPU time of this thread: all the work measured runs on it, and time
// spent waiting for a core that other processes hold is not counted.
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

struct Result
{
    double kelNs;   // median time of one KelCore run
    double qtNs;    // median time of one plain-Qt run
    double ratio;   // median of the paired ratios
};

// Times kel and qt (each returns the nanoseconds of its own timed part)
// alternately, after one untimed warm-up run each. The side that goes first
// alternates, so neither always runs on a cold cache.
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

// --- 1. Notification fan-out -------------------------------------------------

// The plain-Qt side of the fan-out: one signal that every box listens to.
class BoolSignal : public QObject
{
    Q_OBJECT
signals:
    void changed(bool value);
};

bool benchFanOut()
{
    const int kBoxes = 10000;
    Mve_SimpleValue<bool> value(false, QStringLiteral("Bench.FanOut"));
    value.Publish();
    const auto env = Mv_ConnectionEnvironment::blankEnvironment();

    // Panels of ten boxes in a window that is never shown, as in closed
    // panels. Qt looks for a checked sibling whenever a box is unchecked, so
    // 10,000 siblings of one parent would measure that search instead.
    QWidget kelWindow, qtWindow;
    QWidget* kelPanel = nullptr;
    QWidget* qtPanel = nullptr;
    Kel_CheckBox* lastKelBox = nullptr;
    QCheckBox* lastQtBox = nullptr;
    BoolSignal signal;
    for (int i = 0; i < kBoxes; ++i) {
        if (i % 10 == 0) {
            kelPanel = new QWidget(&kelWindow);
            qtPanel = new QWidget(&qtWindow);
        }
        lastKelBox = new Kel_CheckBox(kelPanel);
        lastKelBox->setCheckedStateConnectionSpec("Bench.FanOut");
        lastKelBox->makeConnections(env);
        lastQtBox = new QCheckBox(qtPanel);
        QObject::connect(&signal, &BoolSignal::changed, lastQtBox, &QCheckBox::setChecked);
    }

    // As an event loop would have done by now (and destroying widgets with
    // thousands of events still queued is slow).
    QCoreApplication::sendPostedEvents();
    bool qtValue = false;
    const Result r = compare(
        [&] {
            const double start = nowNs();
            value.setValue(!value.getValue());
            return nowNs() - start;
        },
        [&] {
            const double start = nowNs();
            qtValue = !qtValue;
            emit signal.changed(qtValue);
            return nowNs() - start;
        });
    if (lastKelBox->isChecked() != value.getValue() || lastQtBox->isChecked() != qtValue)
        broken("case 1: the boxes do not show the value");
    return printRatio("1 fan-out: 10,000 bound check boxes", r, 2.0);
}

// --- 2. Connect a form -------------------------------------------------------

struct FormWidget
{
    const char* kelClass;
    const char* qtClass;
};

// The classes the widget factory registers, and the Qt class each extends.
const FormWidget kFormWidgets[] = {
    {"Kel_CheckBox", "QCheckBox"},
    {"Kel_Label", "QLabel"},
    {"Kel_LongLabel", "QLabel"},
    {"Kel_ActionButton", "QPushButton"},
    {"Kel_ImmediateActionButton", "QWidget"},
};

// The bindings of widget i of the given kind: property name and value.
QList<QPair<QString, QString>> bindings(int kind, int i)
{
    const QString n = QString::number(i);
    switch (kind) {
    case 0:
        return {{"checkedStateConnection", "$Deck.Check" + n}, {"enabledStateConnection", "Bench.Form.Enabled"}};
    case 1:
        return {{"textConnection", "$Deck.Text" + n}};
    case 2:
        return {{"connectionName", "$Deck.Long" + n}};
    case 3:
        return {{"actionScript", "$Deck.Act" + n + "()"}, {"enabledStateConnection", "Bench.Form.Enabled"}};
    default:
        return {{"actionScript", "$Deck.Act" + n + "()"}, {"enabledConnSpec", "Bench.Form.Enabled"}};
    }
}

// A form of 30 frames of 10 widgets each, with texts and bindings. The bound
// form names the library's classes; the plain form is the same text with
// the Qt classes they extend, on which the loader sets the bindings as
// dynamic properties.
QString formText(bool bound)
{
    const int kFrames = 30, kPerFrame = 10;
    QString ui = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ui version=\"4.0\">\n"
                                "<class>BenchForm</class>\n<widget class=\"QWidget\" name=\"benchForm\">\n"
                                "<layout class=\"QVBoxLayout\" name=\"formLayout\">\n");
    int i = 0;
    for (int f = 0; f < kFrames; ++f) {
        ui += QStringLiteral("<item><widget class=\"QFrame\" name=\"frame%1\">\n"
                             "<layout class=\"QHBoxLayout\" name=\"frameLayout%1\">\n")
                  .arg(f);
        for (int w = 0; w < kPerFrame; ++w, ++i) {
            const int kind = i % 5;
            ui += QStringLiteral("<item><widget class=\"%1\" name=\"w%2\">\n")
                      .arg(QLatin1String(bound ? kFormWidgets[kind].kelClass : kFormWidgets[kind].qtClass))
                      .arg(i);
            if (kind != 4)
                ui += QStringLiteral("<property name=\"text\"><string>Item %1</string></property>\n").arg(i);
            for (const auto& b : bindings(kind, i))
                ui += QStringLiteral("<property name=\"%1\"><cstring>%2</cstring></property>\n").arg(b.first, b.second);
            ui += QStringLiteral("</widget></item>\n");
        }
        ui += QStringLiteral("</layout></widget></item>\n");
    }
    ui += QStringLiteral("</layout></widget>\n");
    if (bound) {
        ui += QStringLiteral("<customwidgets>\n");
        for (const FormWidget& w : kFormWidgets) {
            ui += QStringLiteral("<customwidget><class>%1</class><extends>%2</extends><header>%1.h</header>"
                                 "</customwidget>\n")
                      .arg(QLatin1String(w.kelClass), QLatin1String(w.qtClass));
        }
        ui += QStringLiteral("</customwidgets>\n");
    }
    ui += QStringLiteral("<resources/>\n<connections/>\n</ui>\n");
    return ui;
}

bool writeFile(const QString& path, const QString& text)
{
    QFile file(path);
    return file.open(QFile::WriteOnly) && file.write(text.toUtf8()) >= 0;
}

bool benchForm(const QString& resourceDir)
{
    Ost_Resource::setResourcePath(resourceDir);
    QDir(resourceDir).mkpath(QStringLiteral("Forms"));
    const QString plainPath = resourceDir + QStringLiteral("Forms/Plain.ui");
    if (!writeFile(resourceDir + QStringLiteral("Forms/Bound.ui"), formText(true)) || !writeFile(plainPath, formText(false))) {
        broken("case 2: cannot write the forms");
        return false;
    }

    // Every binding finds its model, as in a running application.
    std::vector<std::unique_ptr<Mv_ModelBase>> models;
    Mve_SimpleValue<bool> enabled(true, QStringLiteral("Bench.Form.Enabled"));
    enabled.Publish();
    for (int i = 0; i < 300; ++i) {
        const QString n = QString::number(i);
        switch (i % 5) {
        case 0:
            models.emplace_back(new Mve_SimpleValue<bool>(i % 2, "BenchDeck.Check" + n));
            break;
        case 1:
            models.emplace_back(new Mve_SimpleValue<QString>("Text " + n, "BenchDeck.Text" + n));
            break;
        case 2:
            models.emplace_back(new Mve_SimpleValue<long>(i, "BenchDeck.Long" + n));
            break;
        default:
            models.emplace_back(new Mve_Action<void()>([] {}, "BenchDeck.Act" + n));
            break;
        }
        models.back()->Publish();
    }
    auto env = Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment());
    env->set(QStringLiteral("Deck"), QStringLiteral("BenchDeck"));

    bool complete = true;
    const Result r = compare(
        [&] {
            const double start = nowNs();
            QWidget* form = Kel_CreateWidgetFromUILayout(QStringLiteral("Bound"), nullptr);
            Kel_ConnectionUtils::recursiveConnect(form, env);
            const double elapsed = nowNs() - start;
            complete = complete && form && form->findChild<QWidget*>(QStringLiteral("w299"));
            delete form;
            return elapsed;
        },
        [&] {
            const double start = nowNs();
            QFile file(plainPath);
            file.open(QFile::ReadOnly);
            QUiLoader loader;
            QWidget* form = loader.load(&file, nullptr);
            const double elapsed = nowNs() - start;
            complete = complete && form && form->findChild<QWidget*>(QStringLiteral("w299"));
            delete form;
            return elapsed;
        });
    if (!complete)
        broken("case 2: a form did not load completely");
    return printRatio("2 connect a form of 300 bound widgets", r, 1.5);
}

// --- 3. Menu rebuild ---------------------------------------------------------

bool benchMenu()
{
    const int kListItems = 1000, kCommands = 50;

    Mve_RecordArray list(QStringLiteral("Bench.Menu.Items"));
    list.addField<QString>(QStringLiteral("name"));
    list.addField<QString>(QStringLiteral("id"));
    list.addField<QString>(QStringLiteral("accelerator"));
    list.addField<QString>(QStringLiteral("iconName"));
    list.addField<QPixmap>(QStringLiteral("icon"));
    list.addField<bool>(QStringLiteral("selected"));
    list.Publish();
    for (int i = 0; i < kListItems; ++i) {
        const long row = list.appendRow();
        list.setValue<QString>(row, QStringLiteral("name"), QStringLiteral("Clip %1").arg(i));
        list.setValue<QString>(row, QStringLiteral("id"), QStringLiteral("clip%1").arg(i));
    }
    Mve_Action<void()> play([] {}, QStringLiteral("Bench.Menu.Play"));
    play.Publish();

    QString xml = QStringLiteral("<Menu><Name>Bench</Name><Text>Bench</Text>"
                                 "<ListSegment><ItemsConnectionName>Bench.Menu.Items</ItemsConnectionName></ListSegment>");
    for (int i = 0; i < kCommands; ++i) {
        xml += QStringLiteral("<CommandSegment><Name>Command%1</Name><Text>Command %1</Text>"
                              "<ActionScript>Bench.Menu.Play()</ActionScript></CommandSegment>")
                   .arg(i);
    }
    xml += QStringLiteral("</Menu>");
    QDomDocument document;
    document.setContent(xml);
    QDomElement root = document.documentElement();
    Mnu_QtManager manager;
    manager.setMenus(&root);
    manager.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    manager.instantiateMenus();
    Kel_PopupMenu* kelMenu = manager.getPopupMenu();

    // By hand: the same items, rebuilt the same way on every opening.
    QMenu qtMenu;
    QObject::connect(&qtMenu, &QMenu::aboutToShow, &qtMenu, [&qtMenu, &list, kListItems, kCommands] {
        qtMenu.clear();
        for (int i = 0; i < kListItems; ++i) {
            QAction* action = qtMenu.addAction(list.value<QString>(i, QStringLiteral("name")));
            action->setData(list.value<QString>(i, QStringLiteral("name")));
        }
        for (int i = 0; i < kCommands; ++i) {
            QAction* action = qtMenu.addAction(QStringLiteral("Command %1").arg(i));
            action->setData(QStringLiteral("Command%1").arg(i));
        }
    });

    const Result r = compare(
        [&] {
            const double start = nowNs();
            emit kelMenu->aboutToShow();
            return nowNs() - start;
        },
        [&] {
            const double start = nowNs();
            emit qtMenu.aboutToShow();
            return nowNs() - start;
        });
    const bool complete = kelMenu->actions().size() == kListItems + kCommands
                       && qtMenu.actions().size() == kListItems + kCommands;
    if (!complete)
        broken("case 3: the menus do not have all their items");
    return printRatio("3 menu rebuild: 1,000 list items + 50 commands", r, 2.0);
}

// --- 4. Script evaluation ----------------------------------------------------

bool benchScript()
{
    const int kCalls = 200000;
    long plays = 0;
    const boost::function<void()> playFunction = [&plays] { ++plays; };
    Mve_SimpleValue<long> a(0, QStringLiteral("Bench.Script.A"));
    Mve_SimpleValue<long> b(0, QStringLiteral("Bench.Script.B"));
    Mve_Action<void()> play(playFunction, QStringLiteral("Bench.Script.Play"));
    a.Publish();
    b.Publish();
    play.Publish();

    Uip_ParseError error;
    std::unique_ptr<Uip_ParseNode> script(Uip_ParseScript(QStringLiteral("Bench.Script.A = Bench.Script.B; Bench.Script.Play()"), &error));
    if (!script || !script->ConnectAndTypeCheck(Mv_ConnectionEnvironment::blankEnvironment(), nullptr)) {
        broken("case 4: the script does not connect");
        return false;
    }

    // B changes on every call, so that every assignment really stores.
    bool ok = true;
    const Result r = compare(
        [&] {
            const double start = nowNs();
            for (int i = 0; i < kCalls; ++i) {
                b.setValue(i);
                ok = script->Evaluate(nullptr) && ok;
            }
            return (nowNs() - start) / kCalls;
        },
        [&] {
            const double start = nowNs();
            for (int i = 0; i < kCalls; ++i) {
                b.setValue(i);
                a.setValue(b.getValue());
                playFunction();
            }
            return (nowNs() - start) / kCalls;
        });
    ok = ok && a.getValue() == kCalls - 1 && plays == 2 * long(kCalls) * (gRepetitions + 1);
    if (!ok)
        broken("case 4: the script did not run every time");
    const double perStatement = r.kelNs / 2;
    const bool met = perStatement < 1000;
    printLine("4 script \"A = B; Play()\", per call", formatTime(r.kelNs), formatTime(r.qtNs),
              QString::number(r.ratio, 'f', 1),
              QStringLiteral("< 1 us/statement (%1)").arg(formatTime(perStatement)), met);
    return met;
}

// --- 5. Publish and look up at scale -----------------------------------------

// Gives the memory freed by the previous run back first: otherwise the
// allocator sorts out the previous run's 200,000 freed blocks in the middle
// of the next timed run, and that grows with the previous n, not this one.
void settleHeap()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

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

    bool met = true;
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
        met = met && total <= nlogn;
    }
    const Result& largest = results.back();
    printLine("5 publish + connect, per model at 100,000", formatTime(largest.kelNs), formatTime(largest.qtNs),
              QString::number(largest.ratio, 'f', 1), QStringLiteral("growth <= n log n"), met);
    std::printf("    per model: %s\n    total time per decade: %s\n", qPrintable(perOp), qPrintable(growth));
    return met;
}

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
            gRepetitions = 3;
        else if (!std::strcmp(argv[i], "--case") && i + 1 < argc)
            only = std::atoi(argv[++i]);
    }

    QTemporaryDir resources;
    std::printf("KelCore vs plain Qt, medians of %d runs; ratio = KelCore / Qt, paired runs\n", gRepetitions);
    std::printf("%-48s %10s %10s %6s   %-26s %s\n", "case", "KelCore", "Qt", "ratio", "target", "");
    int missed = 0;
    if ((!only || only == 1) && !benchFanOut())
        ++missed;
    if ((!only || only == 2) && !benchForm(resources.path() + QLatin1Char('/')))
        ++missed;
    if ((!only || only == 3) && !benchMenu())
        ++missed;
    if ((!only || only == 4) && !benchScript())
        ++missed;
    if ((!only || only == 5) && !benchScale())
        ++missed;
    if ((!only || only == 6) && !benchElements())
        ++missed;
    if (gBroken) {
        std::printf("some cases did not do their work: their figures are not valid\n");
        return 2;
    }
    std::printf(missed ? "targets missed: %d\n" : "all targets met\n", missed);
    // Missed targets are results, not failures of the program.
    return 0;
}

#include "kelcore_bench.moc"
