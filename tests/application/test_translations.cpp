// Choosing and loading translation files, with the language chooser.
#include "Kel_Application.h"
#include "Kel_LanguageDialog.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

namespace {

const QString kGermanDir = QStringLiteral(KEL_TEST_QM_DIR);

Kel_Application& app()
{
    return *dynamic_cast<Kel_Application*>(QCoreApplication::instance());
}

// The texts of the two fixture files: one of the application, one of Qt.
QString appText() { return QCoreApplication::translate("KelTest", "Hello"); }
QString qtText() { return QCoreApplication::translate("KelTest", "Cancel"); }

// Answers the language chooser like a user once it is shown modally (from
// inside its own event loop); counts how often it was shown.
struct Chooser
{
    explicit Chooser(std::function<void(Kel_LanguageDialog*, QComboBox*)> answer)
    {
        timer.setInterval(10);
        QObject::connect(&timer, &QTimer::timeout, [this, answer] {
            auto* dialog = qobject_cast<Kel_LanguageDialog*>(QApplication::activeModalWidget());
            if (!dialog || !dialog->isVisible())
                return;
            ++shown;
            timer.stop(); // each chooser answers one dialog
            answer(dialog, dialog->findChild<QComboBox*>());
            if (dialog->isVisible()) // the answer failed: do not hang
                dialog->reject();
        });
        timer.start();
    }
    static void press(QDialog* dialog, const QString& text)
    {
        for (QPushButton* button : dialog->findChildren<QPushButton*>()) {
            if (button->text() == text)
                QTest::mouseClick(button, Qt::LeftButton);
        }
    }
    QTimer timer;
    int shown = 0;
};

} // namespace

TEST(Translations, FallbackDirectoryThenNothing)
{
    QTemporaryDir empty;
    Chooser chooser([](Kel_LanguageDialog* d, QComboBox*) { d->reject(); });
    for (const QString& dir : {QString(), empty.path()}) {
        QString locale = QStringLiteral("de_DE");
        EXPECT_TRUE(app().initTranslations(dir, kGermanDir, locale));
        EXPECT_EQ(locale, QStringLiteral("de_DE"));
        EXPECT_EQ(appText(), QStringLiteral("Hallo (app)"));
        EXPECT_EQ(qtText(), QStringLiteral("Abbrechen (qt)"));
    }

    // No translation file anywhere: false, and nobody is asked.
    QString locale = QStringLiteral("fr_FR");
    EXPECT_FALSE(app().initTranslations(empty.path(), QString(), locale));
    EXPECT_EQ(locale, QStringLiteral("fr_FR"));
    QTest::qWait(30);
    EXPECT_EQ(chooser.shown, 0);
}

TEST(Translations, ChooserOffersEnglishAndTheLanguagesFound)
{
    // French is missing: the user is asked and picks English, for which
    // there is no file, so the application's texts stay untranslated.
    QString locale = QStringLiteral("fr_FR");
    Chooser english([](Kel_LanguageDialog* d, QComboBox* combo) {
        EXPECT_EQ(d->windowTitle(), QStringLiteral("Select Language"));
        EXPECT_EQ(d->findChild<QLabel*>()->text(), QStringLiteral("&Language:"));
        ASSERT_EQ(combo->count(), 2); // qt_de_DE names no language
        EXPECT_EQ(combo->itemText(0), QStringLiteral("English"));
        EXPECT_EQ(combo->itemText(1), QStringLiteral("Deutsch"));
        EXPECT_EQ(combo->currentIndex(), 0);
        Chooser::press(d, QStringLiteral("OK"));
    });
    EXPECT_FALSE(app().initTranslations(kGermanDir, QString(), locale));
    EXPECT_EQ(english.shown, 1);
    EXPECT_EQ(locale, QStringLiteral("fr_FR"));
    EXPECT_EQ(appText(), QStringLiteral("Hello"));

    // Picking German loads it and tells the caller.
    Chooser german([](Kel_LanguageDialog* d, QComboBox* combo) {
        QTest::keyClick(combo, Qt::Key_Down);
        EXPECT_EQ(d->language(), QStringLiteral("Deutsch"));
        Chooser::press(d, QStringLiteral("OK"));
    });
    EXPECT_TRUE(app().initTranslations(kGermanDir, QString(), locale));
    EXPECT_EQ(locale, QStringLiteral("de_DE"));
    EXPECT_EQ(appText(), QStringLiteral("Hallo (app)"));
    EXPECT_EQ(qtText(), QStringLiteral("Abbrechen (qt)"));

    // Cancelling is false and leaves the locale alone.
    locale = QStringLiteral("it_IT");
    Chooser cancel([](Kel_LanguageDialog* d, QComboBox*) { Chooser::press(d, QStringLiteral("Cancel")); });
    EXPECT_FALSE(app().initTranslations(kGermanDir, QString(), locale));
    EXPECT_EQ(cancel.shown, 1);
    EXPECT_EQ(locale, QStringLiteral("it_IT"));
}

TEST(LanguageDialog, PreselectionAndNothingToOffer)
{
    EXPECT_EQ(Kel_LanguageDialog(kGermanDir, QStringLiteral("de_DE")).locale(), QStringLiteral("de_DE"));
    EXPECT_EQ(Kel_LanguageDialog(kGermanDir, QStringLiteral("de_AT")).locale(), QStringLiteral("en_US"));
    EXPECT_FALSE(Kel_LanguageDialog(kGermanDir, QString()).aborted());
    QTemporaryDir empty;
    EXPECT_TRUE(Kel_LanguageDialog(empty.path(), QStringLiteral("de_DE")).aborted());

    // One entry per file that names its language, whatever its locale.
    QTemporaryDir two;
    for (const char* name : {"quor_de_DE.qm", "plugin_de_DE.qm", "quor_en_US.qm"})
        ASSERT_TRUE(QFile::copy(kGermanDir + QStringLiteral("/quor_de_DE.qm"), two.filePath(QLatin1String(name))));
    Kel_LanguageDialog twice(two.path(), QStringLiteral("de_DE"));
    auto* combo = twice.findChild<QComboBox*>();
    ASSERT_EQ(combo->count(), 4);
    for (int i = 1; i < 4; ++i)
        EXPECT_EQ(combo->itemText(i), QStringLiteral("Deutsch"));
    EXPECT_EQ(combo->itemData(3).toString(), QStringLiteral("en_US"));
    EXPECT_EQ(twice.locale(), QStringLiteral("de_DE"));
    EXPECT_TRUE(Kel_LanguageDialog(QString(), QStringLiteral("de_DE")).aborted());
}
