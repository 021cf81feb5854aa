// Case 2 of kelcore_bench; see BenchSupport.h for how cases are timed.
#include "BenchSupport.h"

#include "Kel_CheckBox.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_CreateWidgetFromUILayout.h"
#include "Mv_ConnectionEnvironment.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"
#include "Ost_Resource.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QUiLoader>
#include <QWidget>

#include <memory>
#include <vector>

using namespace bench;

namespace {

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
    return printRatio("2 connect a form of 300 bound widgets", r, 1.1);
}

} // namespace

namespace {
const BenchCaseRegistrar registration(2, [](const QString& resourceDir) { return benchForm(resourceDir); });
} // namespace
