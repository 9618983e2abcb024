// The test programs' entry: GoogleTest with unbuffered output, so a crash under Wine still
// leaves every line printed before it.
#include <gtest/gtest.h>
#include <cstdio>

int main(int argc, char** argv)
{
    setvbuf(stdout, nullptr, _IONBF, 0);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
