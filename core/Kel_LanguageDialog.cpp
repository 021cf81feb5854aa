#include "Kel_LanguageDialog.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTranslator>
#include <QVBoxLayout>

namespace {

// Every translation file names its language by translating this text.
const char* const kNativeNameContext = "Kel_LanguageDialog";
const struct
{
    const char* source;
    const char* comment;
} kNativeName = QT_TRANSLATE_NOOP3("Kel_LanguageDialog", "English", "The native name of this language");

// "quor_de_DE.qm" -> "de_DE": the part after the file's prefix.
QString localeOfFile(const QString& fileName)
{
    const QString base = QFileInfo(fileName).completeBaseName();
    const int underscore = base.indexOf(QLatin1Char('_'));
    return underscore < 0 ? base : base.mid(underscore + 1);
}

bool sameLanguageAndCountry(const QString& a, const QString& b)
{
    const QLocale la(a);
    const QLocale lb(b);
    return la.language() == lb.language() && la.country() == lb.country();
}

} // namespace

Kel_LanguageDialog::Kel_LanguageDialog(const QString& dir, const QString& locale, QWidget* parent, const char* name,
                                       Qt::WindowFlags flags)
    : QDialog(parent, flags), mLanguagesP(new QComboBox(this)), mAborted(false)
{
    setObjectName(QString::fromLatin1(name));
    setModal(true);
    setWindowTitle(tr("Select Language"));

    auto* label = new QLabel(tr("&Language:"), this);
    label->setBuddy(mLanguagesP);
    mLanguagesP->setEditable(false);
    auto* cancel = new QPushButton(tr("Cancel"), this);
    auto* ok = new QPushButton(tr("OK"), this);
    ok->setDefault(true);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);

    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(mLanguagesP, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cancel);
    buttons->addWidget(ok);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(row);
    layout->addLayout(buttons);

    fillLanguages(dir, locale);
}

void Kel_LanguageDialog::fillLanguages(const QString& dir, const QString& locale)
{
    const QDir directory(dir);
    const QStringList files = directory.entryList(QStringList(QStringLiteral("*.qm")), QDir::Files, QDir::Name);
    if (dir.isEmpty() || files.isEmpty()) {
        mAborted = true;
        return;
    }

    mLanguagesP->addItem(QStringLiteral("English"), QStringLiteral("en_US"));
    for (const QString& file : files) {
        QTranslator translator;
        if (!translator.load(directory.filePath(file)))
            continue;
        const QString nativeName = translator.translate(kNativeNameContext, kNativeName.source, kNativeName.comment);
        // Every file that names its language is offered, even when another
        // file is for the same locale: the list shows what the folder holds.
        if (nativeName.isEmpty())
            continue;
        mLanguagesP->addItem(nativeName, localeOfFile(file));
    }

    for (int i = 0; i < mLanguagesP->count(); ++i) {
        if (sameLanguageAndCountry(mLanguagesP->itemData(i).toString(), locale)) {
            mLanguagesP->setCurrentIndex(i);
            break;
        }
    }
}

QString Kel_LanguageDialog::language() const
{
    return mLanguagesP->currentText();
}

QString Kel_LanguageDialog::locale() const
{
    return mLanguagesP->currentData().toString();
}
