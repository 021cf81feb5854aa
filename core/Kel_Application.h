#ifndef KEL_APPLICATION_H
#define KEL_APPLICATION_H

#include "kelcore_export.h"

#include <QApplication>
#include <QString>
#include <QTranslator>
#include <memory>

class QWidget;

// The application object for hosts of the library: initialises the library,
// loads translations, and reports exceptions that escape event handlers
// instead of letting them end the process.
class KELCORE_EXPORT Kel_Application : public QApplication
{
public:
    // Initialises the library with the directory service's product name.
    Kel_Application(int& argc, char** argv);
    ~Kel_Application() override;
    Kel_Application(const Kel_Application&) = delete;
    Kel_Application& operator=(const Kel_Application&) = delete;

    // Delivers the event; an exception thrown while handling it is reported
    // through reportException and the event counts as not handled (false).
    bool notify(QObject* receiver, QEvent* event) override;

    // Shows "Exception: <text>" in a modal error box. Hosts may override it.
    virtual void reportException(QString text);
    // Registers the main window (not owned); dialogs without a parent use it.
    virtual void setMainWidget(QWidget* widget);
    virtual QWidget* mainWidget();

    // Loads and installs "qt_<locale>.qm" and "quor_<locale>.qm" from dir, or
    // from fallbackDir when dir holds no translation file. When the
    // application's own file is missing the user picks a language; locale
    // then receives the chosen one. False when nothing usable was found or
    // the user cancelled.
    bool initTranslations(const QString& dir, const QString& fallbackDir, QString& locale);

    // The top-level window containing widget; for null, the registered main
    // widget of a running Kel_Application (else null).
    static QWidget* findMainWidget(QWidget* widget);

private:
    std::unique_ptr<QTranslator> mQtTranslator;
    std::unique_ptr<QTranslator> mAppTranslator;
    QString mExeName;
    QWidget* mMainWidget; // not owned: the application's main window
};

#endif
