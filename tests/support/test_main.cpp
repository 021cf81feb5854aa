// Test entry point: every test runs inside a QApplication so that widgets,
// timers and the event loop are available.
#include <QApplication>
#include <gtest/gtest.h>

// The sanitizer builds read these even where ctest's environment does not
// reach (test discovery runs the executables too). They only cover leaks
// inside Qt's offscreen platform plugin and fontconfig.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libqoffscreen.so\n"
           "leak:QPlatformScreen::QPlatformScreen\n"
           "leak:QWindowSystemInterface::handleScreenAdded\n"
           "leak:libfontconfig.so\n";
}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? QByteArray("offscreen")
                                                                     : qgetenv("QT_QPA_PLATFORM"));
    ::testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
