// Entry point of test_initialize. Unlike the other test programs it creates
// no application object: these tests are about what the library does
// before one exists. (Defining main here keeps the shared one out.)
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
