#ifndef KEL_LANGUAGEDIALOG_H
#define KEL_LANGUAGEDIALOG_H

#include "kelcore_export.h"

#include <QDialog>
#include <QString>

class QComboBox;

// Lets the user choose the language of the user interface among the
// translations found in a directory. English, the language of the source
// texts, is always offered first.
class KELCORE_EXPORT Kel_LanguageDialog : public QDialog
{
    Q_OBJECT
public:
    // Lists the "*.qm" files of dir; the entry matching locale (language and
    // country) is preselected. A directory without any such file makes the
    // dialog aborted: there is nothing to choose.
    Kel_LanguageDialog(const QString& dir, const QString& locale, QWidget* parent = nullptr,
                       const char* name = nullptr, Qt::WindowFlags flags = Qt::Dialog);

    // True when the directory held no translation file; the dialog need not be shown.
    bool aborted() const { return mAborted; }
    // The chosen entry's label, the language's own name for itself.
    QString language() const;
    // The chosen entry's locale text, e.g. "de_DE".
    QString locale() const;

private:
    void fillLanguages(const QString& dir, const QString& locale);

    QComboBox* mLanguagesP;
    bool mAborted;
};

#endif
