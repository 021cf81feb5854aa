// Choosing and loading translation files, with the language chooser.
#include "Kel_Application.h"
#include "Kel_LanguageDialog.h"
#include "TestSupport.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

namespace {

const QString kGermanDir = QStringLiteral(KEL_TEST_QM_DIR "/translations");

Kel_Application* application()
{
    return dynamic_cast<Kel_Application*>(QCoreApplication::instance());
}

QString appText()
{
    return QCoreApplication::translate("KelTest", "Hello");
}

QString qtText()
{
    return QCoreApplication::translate("KelTest", "Cancel");
}

QStringList entries(const QComboBox* combo)
{
    QStringList list;
    for (int i = 0; i < combo->count(); ++i)
        list.append(combo->itemText(i));
    return list;
}

QPushButton* buttonNamed(QWidget* dialog, const QString& text)
{
    for (QPushButton* button : dialog->findChildren<QPushButton*>()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

// Waits, inside the dialog's own event loop, for the language chooser to be
// shown modally and hands it to a handler that answers it like a user.
// Any other modal window, or none within a few seconds, is a failure.
class ChooserDriver
{
public:
    explicit ChooserDriver(std::function<void(Kel_LanguageDialog*)> handler) : mHandler(std::move(handler))
    {
        mTimer.setInterval(10);
        QObject::connect(&mTimer, &QTimer::timeout, [this] { poll(); });
        mTimer.start();
    }
    bool shown() const { return mShown; }

private:
    void poll()
    {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal || !modal->isVisible()) {
            if (++mPolls > 500)
                mTimer.stop();
            return;
        }
        mTimer.stop();
        mShown = true;
        auto* chooser = qobject_cast<Kel_LanguageDialog*>(modal);
        if (!chooser) {
            ADD_FAILURE() << "unexpected modal window " << modal->metaObject()->className();
            modal->close();
            return;
        }
        QPointer<Kel_LanguageDialog> guard(chooser);
        mHandler(chooser);
        if (guard && guard->isVisible()) {
            ADD_FAILURE() << "the handler left the chooser open";
            guard->reject();
        }
    }

    std::function<void(Kel_LanguageDialog*)> mHandler;
    QTimer mTimer;
    int mPolls = 0;
    bool mShown = false;
};

} // namespace

TEST(Translations, FallbackDirectoryWhenTheFirstHasNoFiles)
{
    Kel_Application* app = application();
    ASSERT_NE(app, nullptr);
    QTemporaryDir empty;
    ASSERT_TRUE(empty.isValid());

    for (const QString& dir : {QString(), empty.path()}) {
        QString locale = QStringLiteral("de_DE");
        ChooserDriver driver([](Kel_LanguageDialog* d) { d->reject(); });
        EXPECT_TRUE(app->initTranslations(dir, kGermanDir, locale));
        EXPECT_FALSE(driver.shown());
        EXPECT_EQ(locale, QStringLiteral("de_DE"));
        // Both the application's and Qt's texts are translated.
        EXPECT_EQ(appText(), QStringLiteral("Hallo (app)"));
        EXPECT_EQ(qtText(), QStringLiteral("Abbrechen (qt)"));
    }
}

TEST(Translations, NoFilesAnywhereIsFalseWithoutAsking)
{
    Kel_Application* app = application();
    ASSERT_NE(app, nullptr);
    QTemporaryDir first;
    QTemporaryDir second;
    ASSERT_TRUE(first.isValid() && second.isValid());

    QString locale = QStringLiteral("de_DE");
    ChooserDriver driver([](Kel_LanguageDialog* d) { d->reject(); });
    EXPECT_FALSE(app->initTranslations(first.path(), second.path(), locale));
    EXPECT_FALSE(app->initTranslations(QString(), QString(), locale));
    QTest::qWait(50);
    EXPECT_FALSE(driver.shown());
    EXPECT_EQ(locale, QStringLiteral("de_DE"));
}

TEST(Translations, ChooserOffersEnglishAndTheLanguagesFound)
{
    Kel_Application* app = application();
    ASSERT_NE(app, nullptr);

    // French is missing: the user is asked, and picks English, for which
    // there is no file: the application's texts stay untranslated.
    QString locale = QStringLiteral("fr_FR");
    ChooserDriver english([](Kel_LanguageDialog* d) {
        EXPECT_EQ(d->windowTitle(), QStringLiteral("Select Language"));
        auto* combo = d->findChild<QComboBox*>();
        ASSERT_NE(combo, nullptr);
        EXPECT_EQ(entries(combo), (QStringList{"English", "Deutsch"}));
        EXPECT_FALSE(combo->isEditable());
        EXPECT_EQ(combo->currentIndex(), 0);
        auto* label = d->findChild<QLabel*>();
        ASSERT_NE(label, nullptr);
        EXPECT_EQ(label->text(), QStringLiteral("&Language:"));
        EXPECT_EQ(label->buddy(), combo);
        QTest::mouseClick(buttonNamed(d, QStringLiteral("OK")), Qt::LeftButton);
    });
    EXPECT_FALSE(app->initTranslations(kGermanDir, kGermanDir, locale));
    EXPECT_TRUE(english.shown());
    EXPECT_EQ(locale, QStringLiteral("fr_FR"));
    EXPECT_EQ(appText(), QStringLiteral("Hello"));

    // Picking German loads it and reports the normalised locale.
    ChooserDriver german([](Kel_LanguageDialog* d) {
        auto* combo = d->findChild<QComboBox*>();
        ASSERT_NE(combo, nullptr);
        QTest::keyClick(combo, Qt::Key_Down);
        EXPECT_EQ(d->language(), QStringLiteral("Deutsch"));
        EXPECT_EQ(d->locale(), QStringLiteral("de_DE"));
        QTest::mouseClick(buttonNamed(d, QStringLiteral("OK")), Qt::LeftButton);
    });
    EXPECT_TRUE(app->initTranslations(kGermanDir, QString(), locale));
    EXPECT_TRUE(german.shown());
    EXPECT_EQ(locale, QStringLiteral("de_DE"));
    EXPECT_EQ(appText(), QStringLiteral("Hallo (app)"));
    EXPECT_EQ(qtText(), QStringLiteral("Abbrechen (qt)"));
}

TEST(Translations, CancellingTheChooserIsFalse)
{
    Kel_Application* app = application();
    ASSERT_NE(app, nullptr);
    QString locale = QStringLiteral("it_IT");
    ChooserDriver cancel([](Kel_LanguageDialog* d) {
        QTest::mouseClick(buttonNamed(d, QStringLiteral("Cancel")), Qt::LeftButton);
    });
    EXPECT_FALSE(app->initTranslations(kGermanDir, QString(), locale));
    EXPECT_TRUE(cancel.shown());
    EXPECT_EQ(locale, QStringLiteral("it_IT"));
    // The dialog is gone.
    for (QWidget* window : QApplication::topLevelWidgets())
        EXPECT_EQ(qobject_cast<Kel_LanguageDialog*>(window), nullptr);
}

TEST(LanguageDialog, PreselectsTheGivenLanguageAndCountry)
{
    Kel_LanguageDialog german(kGermanDir, QStringLiteral("de_DE"));
    EXPECT_FALSE(german.aborted());
    EXPECT_EQ(german.language(), QStringLiteral("Deutsch"));
    EXPECT_EQ(german.locale(), QStringLiteral("de_DE"));

    // Same language, other country: no match, English stays first.
    Kel_LanguageDialog austrian(kGermanDir, QStringLiteral("de_AT"));
    EXPECT_EQ(austrian.locale(), QStringLiteral("en_US"));

    Kel_LanguageDialog english(kGermanDir, QStringLiteral("en_US"), nullptr, "chooser");
    EXPECT_EQ(english.language(), QStringLiteral("English"));
    EXPECT_EQ(english.objectName(), QStringLiteral("chooser"));
}

TEST(LanguageDialog, NothingToOfferMeansAborted)
{
    QTemporaryDir empty;
    ASSERT_TRUE(empty.isValid());
    EXPECT_TRUE(Kel_LanguageDialog(empty.path(), QStringLiteral("de_DE")).aborted());
    EXPECT_TRUE(Kel_LanguageDialog(QString(), QStringLiteral("de_DE")).aborted());
    EXPECT_TRUE(Kel_LanguageDialog(empty.filePath(QStringLiteral("missing")), QString()).aborted());
}
