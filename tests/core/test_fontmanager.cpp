// The named-font table and its settings file; the main-widget lookup.
#include "Kel_Application.h"
#include "Kel_FontManager.h"
#include "Kel_QtCompat.h"
#include "TestSupport.h"

#include <QWidget>
#include <gtest/gtest.h>

namespace {
QFont fontOf(const char* element)
{
    return Kel_FontManager::getFont(QStringLiteral("FontSettings.Kel_FontTest.%1.Font").arg(QLatin1String(element)));
}
} // namespace

TEST(FontManager, SettingsValuesWithZeroToFourParts)
{
    Kel_FontManager::setFont(QStringLiteral("FontSettings.Kel_FontTest.Replaced.Font"), QFont(QStringLiteral("X"), 7));
    Kel_FontManager::loadSettingsFile(testDataDir() + QStringLiteral("core/fonts.xml"));

    EXPECT_EQ(fontOf("Empty"), QFont());
    EXPECT_EQ(fontOf("Family").family(), QStringLiteral("Arial"));
    EXPECT_FALSE(Kel_QtCompat::fontResolveMask(fontOf("Family")) & (QFont::SizeResolved | QFont::WeightResolved));
    EXPECT_EQ(fontOf("Sized"), QFont(QStringLiteral("Arial"), 12));
    EXPECT_EQ(fontOf("Weighted"), QFont(QStringLiteral("Courier"), 9, 75, false));
    EXPECT_EQ(fontOf("Extra"), QFont(QStringLiteral("Arial"), 12, 75, false)); // fourth part ignored
    EXPECT_EQ(fontOf("Garbled"), QFont(QStringLiteral("Arial"), 0, 0, false)); // unparsable numbers are 0
    EXPECT_EQ(fontOf("Replaced"), QFont(QStringLiteral("Times"), 20));

    // Only parameters below "Windows" with the prefix "FontSettings." count.
    EXPECT_FALSE(Kel_FontManager::hasFont(QStringLiteral("FontSettings.Kel_FontTest.MacOnly.Font")));
    EXPECT_FALSE(Kel_FontManager::hasFont(QStringLiteral("FontSettingsExtra.Kel_FontTest.Font")));

    // A file that cannot be read changes nothing.
    DebugMessageCollector quiet;
    Kel_FontManager::loadSettingsFile(testDataDir() + QStringLiteral("core/missing.xml"));
    EXPECT_EQ(fontOf("Weighted"), QFont(QStringLiteral("Courier"), 9, 75, false));
}

TEST(FontManager, UnknownKeyGivesADefaultFontAndIsRemembered)
{
    const QString unknown = QStringLiteral("FontSettings.Kel_Nowhere.Font");
    ASSERT_FALSE(Kel_FontManager::hasFont(unknown));
    EXPECT_EQ(Kel_FontManager::getFont(unknown), QFont());
    EXPECT_TRUE(Kel_FontManager::hasFont(unknown));
}

TEST(FindMainWidget, TopLevelWindowOrNullUnderAPlainApplication)
{
    QWidget window;
    auto* inner = new QWidget(new QWidget(&window));
    EXPECT_EQ(Kel_Application::findMainWidget(inner), &window);
    EXPECT_EQ(Kel_Application::findMainWidget(&window), &window);
    EXPECT_EQ(Kel_Application::findMainWidget(nullptr), nullptr);
}
