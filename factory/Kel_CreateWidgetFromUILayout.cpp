#include "Kel_CreateWidgetFromUILayout.h"

#include "Kel_QtWidgetFactoryRegistry.h"
#include "Ost_Resource.h"

#include <QFile>
#include <QLayout>
#include <QSet>
#include <QWidget>

namespace {

// Forms being loaded right now. A form that embeds itself (directly or
// through other forms) would otherwise recurse until the stack overflows.
QSet<QString>& formsInProgress()
{
    static QSet<QString> forms;
    return forms;
}

// Marks a form as being loaded for as long as it lives, even if a widget's
// constructor throws.
class FormInProgress
{
public:
    explicit FormInProgress(const QString& path) : mPath(path) { formsInProgress().insert(path); }
    ~FormInProgress() { formsInProgress().remove(mPath); }
    FormInProgress(const FormInProgress&) = delete;
    FormInProgress& operator=(const FormInProgress&) = delete;

private:
    QString mPath;
};

} // namespace

QWidget* Kel_CreateWidgetFromUILayout(const QString& formName, QWidget* parent, const char* /*name*/,
                                      bool addToParentLayout)
{
    const QString path = Ost_Resource::getResourcePath() + QStringLiteral("Forms/") + formName
                       + QStringLiteral(".ui");
    QFile file(path);
    // A missing form is an ordinary outcome: no loader, no warnings.
    if (!file.open(QFile::ReadOnly))
        return nullptr;
    if (formsInProgress().contains(path))
        return nullptr;

    QWidget* widget = nullptr;
    {
        const FormInProgress guard(path);
        Kel_QtWidgetFactoryRegistry loader;
        widget = loader.load(&file, parent);
    }
    file.close();

    if (widget && addToParentLayout && parent && parent->layout())
        parent->layout()->addWidget(widget);
    return widget;
}
