// Test entry point: every test runs inside a QApplication so that widgets,
// timers and the event loop are available.
#include "TestSupport.h"

#include <QApplication>
#include <gtest/gtest.h>

// The sanitizer builds read these even where ctest's environment does not
// reach (test discovery runs the executables too): leaks inside Qt and the
// system libraries are suppressed from the project's list, and undefined
// behaviour fails the test instead of scrolling past.
extern "C" const char* __lsan_default_options()
{
    return "suppressions=" KEL_LSAN_SUPPRESSIONS;
}

extern "C" const char* __ubsan_default_options()
{
    return "print_stacktrace=1:halt_on_error=1";
}

int main(int argc, char** argv)
{
    selectTestPlatform();
    ::testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
