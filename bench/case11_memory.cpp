// Case 11 of kelcore_bench: memory rather than time. What a bound property
// and a published value model cost on the heap, next to the Qt object each
// one stands beside: a check box for the property, a named QObject for the
// model (the library's counterpart of an object with a property and a
// changed signal).
#include "BenchSupport.h"

#include "Kel_BoundProperty.h"
#include "Kel_CheckBox.h"
#include "Mv_ConnectionDict.h"
#include "Mv_ConnectionEnvironment.h"
#include "Mve_SimpleValue.h"

#include <QCheckBox>
#include <QWidget>

#ifdef __GLIBC__
#include <malloc.h>
#endif
#include <cstdio>
#include <memory>
#include <vector>

using namespace bench;

namespace {

const int kObjects = 10000;

// Bytes of heap in use, blocks of the allocator included: counted by the
// allocator itself, so that every allocation counts, Qt's malloc'ed string
// and hash data as much as operator new.
double heapInUse()
{
#if defined(__GLIBC__) && (__GLIBC__ > 2 || (__GLIBC__ == 2 && __GLIBC_MINOR__ >= 33))
    const struct mallinfo2 info = mallinfo2();
    return double(info.uordblks) + double(info.hblkhd);
#else
    return 0;
#endif
}

// Heap bytes per object that make() leaves allocated, over kObjects calls.
// The objects stay alive until the count is taken.
template <class Make>
double bytesPerObject(Make make)
{
    const double before = heapInUse();
    make();
    return (heapInUse() - before) / kObjects;
}

// kObjects widgets made by make(panel), in panels of ten as a form has them.
template <class Make>
void makeInPanels(QWidget* window, Make make)
{
    QWidget* panel = nullptr;
    for (int i = 0; i < kObjects; ++i) {
        if (i % 10 == 0)
            panel = new QWidget(window);
        make(panel);
    }
}

QString formatBytes(double bytes)
{
    return QString::number(bytes, 'f', 0) + QStringLiteral(" B");
}

bool printBytes(const char* name, double kel, double qt)
{
    const double ratio = kel / qt;
    const bool met = ratio <= 1.0;
    printLine(name, formatBytes(kel), formatBytes(qt), QString::number(ratio, 'f', 2),
              QStringLiteral("bytes <= the Qt object's"), met);
    return met;
}

typedef Kel_BoundProperty<Mvt_SimpleValue<bool>::Listener> BoolProperty;

bool benchMemory()
{
    if (heapInUse() == 0) {
        printLine("11 memory", "-", "-", "-", "needs glibc 2.33", true);
        return true;
    }
    QStringList names;
    for (int i = 0; i < kObjects; ++i)
        names.append(QStringLiteral("Bench.Memory.Model%1").arg(i));
    settleHeap();

    // The first widgets of a kind fill Qt's caches (style, fonts); make
    // them before counting, whichever cases ran before.
    delete new Kel_CheckBox();

    // The Qt objects: check boxes, and named plain objects.
    QWidget qtWindow;
    const double perCheckBox =
        bytesPerObject([&] { makeInPanels(&qtWindow, [](QWidget* panel) { new QCheckBox(panel); }); });
    // Less the panels': a tenth of a plain widget per box.
    const double perPanel = bytesPerObject([&] {
        for (int i = 0; i < kObjects; ++i)
            new QWidget(&qtWindow);
    });
    const double perQtBox = perCheckBox - perPanel / 10;
    std::vector<std::unique_ptr<QObject>> objects;
    objects.reserve(kObjects);
    const double perQObject = bytesPerObject([&] {
        for (int i = 0; i < kObjects; ++i) {
            objects.emplace_back(new QObject());
            objects.back()->setObjectName(names.at(i));
        }
    });

    // A bound property as a widget holds it: a notification handler, a
    // specification, connected to a model that many properties share (its
    // place in the dictionary is that model's list of listeners).
    Mv_ConnectionDict dict;
    const auto env = Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment(), &dict);
    Mve_SimpleValue<bool> shared(false, QStringLiteral("Bench.Memory.Shared"));
    shared.Publish(&dict);
    const QString sharedSpec = QStringLiteral("Bench.Memory.Shared");
    std::vector<std::unique_ptr<BoolProperty>> properties;
    properties.reserve(kObjects);
    long notified = 0;
    const double perProperty = bytesPerObject([&] {
        for (int i = 0; i < kObjects; ++i) {
            properties.emplace_back(new BoolProperty(nullptr, Kel_BoundPropertyBase::kConnectWhenNamed));
            properties.back()->onNotify([&notified] { ++notified; });
            properties.back()->setSpec(sharedSpec);
            properties.back()->connect(env);
        }
    });
    if (notified != kObjects || shared.listenerCount() != kObjects)
        broken("case 11: a property did not connect");

    // Published value models, each under its own name in the dictionary.
    std::vector<std::unique_ptr<Mve_SimpleValue<long>>> models;
    models.reserve(kObjects);
    const double perModel = bytesPerObject([&] {
        for (int i = 0; i < kObjects; ++i) {
            models.emplace_back(new Mve_SimpleValue<long>(i, names.at(i)));
            models.back()->Publish(&dict);
        }
    });
    if (!models.back()->isPublished())
        broken("case 11: a model was not published");

    // For scale: a whole bound check box (three properties, one named)
    // against a plain one.
    QWidget kelWindow;
    const double perKelCheckBox = bytesPerObject([&] {
        makeInPanels(&kelWindow, [&](QWidget* panel) {
            auto* box = new Kel_CheckBox(panel);
            box->setCheckedStateConnectionSpec("Bench.Memory.Shared");
            box->makeConnections(env);
        });
    }) - perPanel / 10;

    bool met = printBytes("11 memory: bound property / QCheckBox", perProperty, perQtBox);
    met = printBytes("11 memory: published long model / QObject", perModel, perQObject) && met;
    std::printf("    sizeof: QCheckBox %d, QObject %d, bound property %d, value model %d; "
                "a bound Kel_CheckBox %s on the heap\n",
                int(sizeof(QCheckBox)), int(sizeof(QObject)), int(sizeof(BoolProperty)),
                int(sizeof(Mve_SimpleValue<long>)), qPrintable(formatBytes(perKelCheckBox)));
    properties.clear();
    models.clear();
    return met;
}

} // namespace

namespace {
const BenchCaseRegistrar registration(11, [](const QString&) { return benchMemory(); });
} // namespace
