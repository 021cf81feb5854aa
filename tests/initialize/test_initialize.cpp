// Library initialisation without an application object.
#include "Kel_Initialize.h"
#include "Ost_Assert.h"
#include "Ost_DirPaths.h"
#include "Ost_Resource.h"
#include "TestSupport.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(Initialize, BeforeTheApplicationReportsAndStillInitialisesOnce)
{
    ASSERT_EQ(QCoreApplication::instance(), nullptr);
    ASSERT_FALSE(Kel_IsInitialized());
    QTemporaryDir resources;
    qputenv("KELCORE_RESOURCE_DIR", QFile::encodeName(resources.path()));
    QStringList reports;
    const Ost_Assert::Handler previous = Ost_Assert::setHandler([&](const QString& condition, const QString& file, int line) {
        reports << QStringLiteral("%1 @ %2:%3").arg(condition, QFileInfo(file).completeBaseName()).arg(line);
    });
    DebugMessageCollector quiet;

    Kel_Initialize("KelInitTest");
    EXPECT_EQ(reports, QStringList{QStringLiteral("qApp @ Kel_Initialize:38")});
    // The assertion does not stop the initialisation.
    EXPECT_TRUE(Kel_IsInitialized());
    EXPECT_EQ(Ost_DirPaths::GetProductName(), QStringLiteral("KelInitTest"));
    EXPECT_EQ(QDir(Ost_Resource::getResourcePath()).canonicalPath(), QDir(resources.path()).canonicalPath());

    // Later calls do nothing at all.
    Kel_Initialize("SomethingElse");
    Kel_Initialize(nullptr);
    EXPECT_EQ(reports.size(), 1);
    EXPECT_EQ(Ost_DirPaths::GetProductName(), QStringLiteral("KelInitTest"));
    Ost_Assert::setHandler(previous);
}
