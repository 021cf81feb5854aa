// Case 1 of kelcore_bench; see BenchSupport.h for how cases are timed.
#include "BenchSupport.h"

#include "Kel_CheckBox.h"
#include "Mv_ConnectionEnvironment.h"
#include "Mve_SimpleValue.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QWidget>

using namespace bench;

namespace {

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
    return printRatio("1 fan-out: 10,000 bound check boxes", r, 1.2);
}

} // namespace

namespace {
const BenchCaseRegistrar registration(1, [](const QString&) { return benchFanOut(); });
} // namespace

#include "case1_fanout.moc"
