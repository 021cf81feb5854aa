// Entry point of test_application: the tests run inside a Kel_Application,
// the application object that hosts of the library use. (Defining main
// here keeps the shared QApplication one out.)
#include "Kel_Application.h"
#include "TestSupport.h"

#include <QFile>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    selectTestPlatform();
    // Resources come from the fixtures, not from a folder beside the program.
    qputenv("KELCORE_RESOURCE_DIR", QFile::encodeName(testDataDir()));
    ::testing::InitGoogleTest(&argc, argv);
    // A product name outside ASCII, which the application object hands to
    // the library initialisation itself.
    QCoreApplication::setApplicationName(QStringLiteral("Montage \u00e9"));
    Kel_Application app(argc, argv);
    return RUN_ALL_TESTS();
}
