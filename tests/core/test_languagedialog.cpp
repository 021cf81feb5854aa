// The language chooser as a user meets it: one entry per translation file,
// picked from the open list with the mouse and confirmed with OK.
#include "Kel_LanguageDialog.h"
#include "TestSupport.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace {

// German, Spanish and French, each naming itself.
const QString kDir = QStringLiteral(KEL_TEST_LANGUAGES_QM_DIR);

QPushButton* button(QDialog& dialog, const QString& text)
{
    for (QPushButton* b : dialog.findChildren<QPushButton*>()) {
        if (b->text() == text)
            return b;
    }
    return nullptr;
}

// Opens the list with a click and clicks the entry with that label.
void pick(QComboBox* combo, const QString& label)
{
    QTest::mouseClick(combo, Qt::LeftButton);
    QAbstractItemView* list = combo->view();
    ASSERT_TRUE(waitFor([list] { return list->isVisible(); }));
    const int row = combo->findText(label);
    ASSERT_GE(row, 0) << label.toStdString();
    // Entries may be wider than the list; click the part that shows.
    const QRect rect = list->visualRect(list->model()->index(row, 0)).intersected(list->viewport()->rect());
    // The list ignores a release that comes within a double-click time of
    // the click that opened it (the end of a press-drag-release choice).
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
    ASSERT_TRUE(waitFor([list] { return !list->isVisible(); }));
}

} // namespace

TEST(LanguageDialog, ChoosingALanguageAndAcceptingGivesIt)
{
    Kel_LanguageDialog dialog(kDir, QStringLiteral("de_DE"));
    ASSERT_FALSE(dialog.aborted());
    QSignalSpy finished(&dialog, &QDialog::finished);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));

    auto* combo = dialog.findChild<QComboBox*>();
    ASSERT_NE(combo, nullptr);
    QStringList entries;
    for (int i = 0; i < combo->count(); ++i)
        entries << combo->itemText(i) + QLatin1Char('=') + combo->itemData(i).toString();
    EXPECT_EQ(entries, QStringList({"English=en_US", "Deutsch=de_DE", QStringLiteral("Espa\u00f1ol=es_ES"),
                                    QStringLiteral("Fran\u00e7ais=fr_FR")}));
    EXPECT_EQ(dialog.language(), QStringLiteral("Deutsch")); // the given locale

    pick(combo, QStringLiteral("Fran\u00e7ais"));
    QTest::mouseClick(button(dialog, QStringLiteral("OK")), Qt::LeftButton);
    ASSERT_EQ(finished.count(), 1);
    EXPECT_EQ(finished.first().first().toInt(), int(QDialog::Accepted));
    EXPECT_EQ(dialog.language(), QStringLiteral("Fran\u00e7ais"));
    EXPECT_EQ(dialog.locale(), QStringLiteral("fr_FR"));
}
