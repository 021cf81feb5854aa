// Reading parameters out of settings XML.
#include "Ost_Setting.h"
#include "TestSupport.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <climits>
#include <gtest/gtest.h>

namespace {

QString exampleXml()
{
    QFile file(testDataDir() + QStringLiteral("services_settings.xml"));
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.readAll());
}

// "name=value" for every parameter, in order.
QStringList dump(const Ost_Setting& settings)
{
    QStringList lines;
    QString name;
    QString value;
    for (int i = 0; settings.GetNthParam(i, name, value); ++i)
        lines.append(name + QLatin1Char('=') + value);
    EXPECT_EQ(lines.size(), settings.GetParamCount());
    return lines;
}

} // namespace

TEST(ServicesSetting, StartRootAndPrefixSelectDottedNamesBeforeOrAfterTheXml)
{
    const QString xml = exampleXml();
    ASSERT_FALSE(xml.isEmpty());
    Ost_Setting settings;
    ASSERT_TRUE(settings.SetXML(xml, false));
    EXPECT_EQ(settings.GetParamCount(), 7); // empty start root: named from just below the document root
    QString value;
    EXPECT_TRUE(settings.GetParam(QStringLiteral("Windows.MainWindow.Geometry"), value));
    settings.SetStartRoot(QStringLiteral("Windows"));
    EXPECT_EQ(dump(settings), QStringList({QStringLiteral("FontSettings.Kel_Header.Font=Arial,12"),
                                           QStringLiteral("FontSettings.Kel_Header.Color=#202020"),
                                           QStringLiteral("FontSettings.Kel_Body.Font=Helvetica,10"),
                                           QStringLiteral("FontSettingsExtra.Scale=1.25"),
                                           QStringLiteral("MainWindow.Geometry=10,10,800,600"),
                                           QStringLiteral("MainWindow.Title=Kel <Demo>")}));
    EXPECT_TRUE(settings.GetParam(QStringLiteral("FontSettings.Kel_Body.Font"), value));
    EXPECT_EQ(value, QStringLiteral("Helvetica,10"));
    EXPECT_FALSE(settings.GetParam(QStringLiteral("FontSettings.Kel_Body"), value));

    Ost_Setting before;
    before.SetStartRoot(QStringLiteral("Windows"));
    before.SetPrefix(QStringLiteral("FontSettings"));
    ASSERT_TRUE(before.SetXML(xml, false));
    settings.SetPrefix(QStringLiteral("FontSettings"));
    const QStringList fonts({QStringLiteral("FontSettings.Kel_Header.Font=Arial,12"),
                             QStringLiteral("FontSettings.Kel_Header.Color=#202020"),
                             QStringLiteral("FontSettings.Kel_Body.Font=Helvetica,10")});
    EXPECT_EQ(dump(before), fonts);
    EXPECT_EQ(dump(settings), fonts);

    // A prefix naming a leaf exactly keeps that leaf; a partial word does not match.
    settings.SetPrefix(QStringLiteral("FontSettingsExtra.Scale"));
    EXPECT_EQ(dump(settings), QStringList(QStringLiteral("FontSettingsExtra.Scale=1.25")));
    settings.SetPrefix(QStringLiteral("FontSett"));
    EXPECT_EQ(settings.GetParamCount(), 0);
    settings.SetPrefix(QString());
    settings.SetStartRoot(QStringLiteral("Mac"));
    EXPECT_EQ(dump(settings), QStringList(QStringLiteral("FontSettings.Kel_Header.Font=Lucida Grande,13")));
    settings.SetStartRoot(QStringLiteral("Linux"));
    EXPECT_EQ(settings.GetParamCount(), 0);
}

TEST(ServicesSetting, MergeOverridesReplaceStartsOverMalformedTextChangesNothing)
{
    Ost_Setting settings;
    settings.SetStartRoot(QStringLiteral("W"));
    ASSERT_TRUE(settings.SetXML(QStringLiteral("<R><W><A>1</A><B><C>2</C></B></W></R>"), false));
    ASSERT_TRUE(settings.SetXML(QStringLiteral("<X><W><B><C>20</C></B><D>3</D></W></X>"), true));
    EXPECT_EQ(dump(settings), QStringList({"A=1", "B.C=20", "D=3"}));

    // Repeated names inside one text behave the same way.
    ASSERT_TRUE(settings.SetXML(QStringLiteral("<W><E>x</E><F/><E>y</E></W>"), false));
    EXPECT_EQ(dump(settings), QStringList({"E=y", "F="}));

    // Malformed text is reported and keeps the earlier parameters.
    ASSERT_TRUE(settings.SetXML(QStringLiteral("<W><A>1</A></W>"), false));
    DebugMessageCollector log;
    EXPECT_FALSE(settings.SetXML(QStringLiteral("<W>\n<A>2</A>\n<B>oops</C>\n</W>"), false));
    ASSERT_EQ(log.messages().size(), 1);
    const QRegularExpression expected(QStringLiteral("^Ost_Setting::SetXML parse error .+ at line 3 column \\d+$"));
    EXPECT_TRUE(expected.match(log.messages().first()).hasMatch()) << qPrintable(log.messages().first());

    for (const QString& bad : {QString(), QStringLiteral("not xml"), QStringLiteral("<R><A>1</A>"),
                               QStringLiteral("<W/><S/>"), QStringLiteral("<W>&undefined;</W>")})
        EXPECT_FALSE(settings.SetXML(bad, true)) << qPrintable(bad);
    EXPECT_EQ(dump(settings), QStringList(QStringLiteral("A=1")));
}

TEST(ServicesSetting, NthParamRangeDeepNestingAndMixedContent)
{
    Ost_Setting settings;
    // Text beside child elements and attributes are not values.
    ASSERT_TRUE(settings.SetXML(QStringLiteral("<R>junk<A k='v'>text<!-- c -->more</A>junk<B/></R>"), false));
    EXPECT_EQ(dump(settings), QStringList({"A=textmore", "B="}));
    QString name = QStringLiteral("untouched"), value;
    for (int n : {-1, 2, INT_MAX, INT_MIN})
        EXPECT_FALSE(settings.GetNthParam(n, name, value)) << n;
    EXPECT_EQ(name, QStringLiteral("untouched"));

    const int depth = 20000;
    ASSERT_TRUE(settings.SetXML(QStringLiteral("<E>").repeated(depth) + QStringLiteral("</E>").repeated(depth), false));
    EXPECT_EQ(settings.GetParamCount(), 1);

    // Many leaves below deep nesting would make names far larger than the
    // text, and take long to build: refused, the earlier text kept.
    DebugMessageCollector log;
    const QString deepAndWide = QStringLiteral("<E>").repeated(5000) + QStringLiteral("<L/>").repeated(50000)
                                + QStringLiteral("</E>").repeated(5000);
    EXPECT_FALSE(settings.SetXML(deepAndWide, false));
    EXPECT_EQ(settings.GetParamCount(), 1);
    ASSERT_EQ(log.messages().size(), 1);
    EXPECT_TRUE(log.messages().first().startsWith(QStringLiteral("Ost_Setting::SetXML parse error parameter names too long")));
}
