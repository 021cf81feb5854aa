#include "Kel_Application.h"

#include "Kel_Initialize.h"
#include "Kel_LanguageDialog.h"

#include "Ost_DirPaths.h"
#include "Ost_UIDialog.h"

#include <QDir>
#include <QLocale>
#include <QTranslator>
#include <QWidget>
#include <exception>

namespace {

// The texts of this class belong to the translation context of QApplication,
// where translators of the host application already find Qt's own texts.
QString appText(const char* text, const char* disambiguation = nullptr)
{
    return QCoreApplication::translate("QApplication", text, disambiguation);
}

// An empty directory name stands for no directory, not the current one.
QStringList translationFiles(const QString& dir)
{
    if (dir.isEmpty())
        return QStringList();
    return QDir(dir).entryList(QStringList(QStringLiteral("*.qm")), QDir::Files);
}

// Installs translator, once: installing it again would only stack it up.
void installOnce(QTranslator* translator)
{
    QCoreApplication::removeTranslator(translator);
    QCoreApplication::installTranslator(translator);
}

} // namespace

Kel_Application::Kel_Application(int& argc, char** argv)
    : QApplication(argc, argv), mQtTranslator(nullptr), mAppTranslator(nullptr), mExeName(), mMainWidget(nullptr)
{
    mExeName = Ost_DirPaths::GetApplicationExeName();
    Kel_Initialize(Ost_DirPaths::GetProductName().toLatin1().constData());
    mAppTranslator = std::make_unique<QTranslator>();
    mQtTranslator = std::make_unique<QTranslator>();
}

Kel_Application::~Kel_Application() = default;

bool Kel_Application::notify(QObject* receiver, QEvent* event)
{
    QString text;
    try {
        return QApplication::notify(receiver, event);
    } catch (const QString& thrown) {
        text = thrown;
    } catch (const char* thrown) {
        text = thrown ? QString::fromLatin1(thrown) : appText("Unknown exception in Kel_Application", "default error message");
    } catch (std::exception* thrown) {
        // Thrown by pointer, the object belongs to whoever threw it.
        text = thrown ? QString::fromLatin1(thrown->what())
                      : appText("Unknown exception in Kel_Application", "default error message");
    } catch (...) {
        text = appText("Unknown exception in Kel_Application", "default error message");
    }
    reportException(text);
    return false;
}

void Kel_Application::reportException(QString text)
{
    const QString message = appText("Exception: %1", "error report").arg(text, 0, QLatin1Char(' '));
    Ost_UIDialog::UIdialog(message, appText("OK"), 1, Ost_UIDialog::kErrorIcon, QString(), false,
                           QStringLiteral(__FILE__));
}

void Kel_Application::setMainWidget(QWidget* widget)
{
    mMainWidget = widget;
}

QWidget* Kel_Application::mainWidget()
{
    return mMainWidget;
}

bool Kel_Application::initTranslations(const QString& dir, const QString& fallbackDir, QString& locale)
{
    QString chosenDir = dir;
    if (translationFiles(chosenDir).isEmpty()) {
        chosenDir = fallbackDir;
        if (translationFiles(chosenDir).isEmpty())
            return false;
    }

    // Qt's own translation is optional: without it Qt's texts stay English.
    static_cast<void>(mQtTranslator->load(QStringLiteral("qt_") + locale, chosenDir));
    installOnce(mQtTranslator.get());
    const bool appLoaded = mAppTranslator->load(QStringLiteral("quor_") + locale, chosenDir);
    installOnce(mAppTranslator.get());
    if (appLoaded)
        return true;

    // No translation of our own texts for that locale: let the user choose.
    auto* dialog = new Kel_LanguageDialog(chosenDir, locale, mainWidget(), nullptr, Qt::Dialog);
    bool result = false;
    if (dialog->aborted()) {
        // English is the language of the source texts and needs no file.
        locale = QStringLiteral("en_US");
        result = true;
    } else if (dialog->exec() == QDialog::Accepted) {
        const QString chosen = dialog->locale();
        const QLocale chosenLocale(chosen);
        result = mAppTranslator->load(QStringLiteral("quor_") + chosen, chosenDir);
        if (result)
            locale = chosenLocale.name();
        static_cast<void>(mQtTranslator->load(QStringLiteral("qt_") + chosen, chosenDir));
    }
    delete dialog;
    return result;
}

QWidget* Kel_Application::findMainWidget(QWidget* widget)
{
    if (widget) {
        while (QWidget* parent = widget->parentWidget())
            widget = parent;
        return widget;
    }
    if (auto* app = dynamic_cast<Kel_Application*>(QCoreApplication::instance()))
        return app->mainWidget();
    return nullptr;
}
