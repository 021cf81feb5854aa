// The named-font table and its settings file.
#include "Kel_FontManager.h"
#include "TestSupport.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

QString key(const char* element)
{
    return QStringLiteral("FontSettings.Kel_FontTest.%1.Font").arg(QLatin1String(element));
}

} // namespace

TEST(FontManager, SettingsValuesWithZeroToFourParts)
{
    Kel_FontManager::setFont(key("Replaced"), QFont(QStringLiteral("Courier"), 7));
    Kel_FontManager::loadSettingsFile(testDataDir() + QStringLiteral("core/fonts.xml"));

    EXPECT_EQ(Kel_FontManager::getFont(key("Empty")), QFont());

    const QFont family = Kel_FontManager::getFont(key("Family"));
    EXPECT_EQ(family.family(), QStringLiteral("Arial"));
    EXPECT_FALSE(family.resolve() & QFont::SizeResolved);
    EXPECT_FALSE(family.resolve() & QFont::WeightResolved);
    EXPECT_FALSE(family.italic());

    const QFont sized = Kel_FontManager::getFont(key("Sized"));
    EXPECT_EQ(sized.family(), QStringLiteral("Arial"));
    EXPECT_EQ(sized.pointSize(), 12);
    EXPECT_EQ(sized.weight(), QFont::Normal);
    EXPECT_FALSE(sized.resolve() & QFont::WeightResolved);

    const QFont weighted = Kel_FontManager::getFont(key("Weighted"));
    EXPECT_EQ(weighted.family(), QStringLiteral("Courier"));
    EXPECT_EQ(weighted.pointSize(), 9);
    EXPECT_EQ(weighted.weight(), 75);
    EXPECT_FALSE(weighted.italic());

    const QFont extra = Kel_FontManager::getFont(key("Extra"));
    EXPECT_EQ(extra, QFont(QStringLiteral("Arial"), 12, 75, false));

    // Numbers that do not parse count as 0.
    EXPECT_EQ(Kel_FontManager::getFont(key("Garbled")), QFont(QStringLiteral("Arial"), 0, 0, false));

    // A file entry replaces what was there.
    EXPECT_EQ(Kel_FontManager::getFont(key("Replaced")), QFont(QStringLiteral("Times"), 20));
}

TEST(FontManager, OnlyTheWindowsFontSettingsAreRead)
{
    Kel_FontManager::loadSettingsFile(testDataDir() + QStringLiteral("core/fonts.xml"));
    EXPECT_FALSE(Kel_FontManager::hasFont(key("MacOnly")));
    EXPECT_FALSE(Kel_FontManager::hasFont(QStringLiteral("FontSettingsExtra.Kel_FontTest.Font")));
}

TEST(FontManager, UnknownKeyGivesADefaultFontAndIsRemembered)
{
    const QString unknown = QStringLiteral("FontSettings.Kel_Nowhere.Font");
    ASSERT_FALSE(Kel_FontManager::hasFont(unknown));
    EXPECT_EQ(Kel_FontManager::getFont(unknown), QFont());
    EXPECT_TRUE(Kel_FontManager::hasFont(unknown));

    // Once there, it is a font like any other.
    const QFont big(QStringLiteral("Helvetica"), 40);
    Kel_FontManager::setFont(unknown, big);
    EXPECT_EQ(Kel_FontManager::getFont(unknown), big);
}

TEST(FontManager, MissingOrEmptySettingsFileChangesNothing)
{
    const QString keep = QStringLiteral("FontSettings.Kel_Keep.Font");
    Kel_FontManager::setFont(keep, QFont(QStringLiteral("Courier"), 11));
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    {
        DebugMessageCollector log; // the empty text is reported as malformed XML
        Kel_FontManager::loadSettingsFile(dir.filePath(QStringLiteral("missing.xml")));
        Kel_FontManager::loadSettingsFile(QString());
    }
    QFile empty(dir.filePath(QStringLiteral("empty.xml")));
    ASSERT_TRUE(empty.open(QIODevice::WriteOnly));
    empty.write("<Settings><Windows/></Settings>");
    empty.close();
    Kel_FontManager::loadSettingsFile(empty.fileName());
    EXPECT_EQ(Kel_FontManager::getFont(keep), QFont(QStringLiteral("Courier"), 11));
}
