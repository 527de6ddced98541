// Runs the tests on Mesa's software renderer, which is the same on every machine.

#include "TestContext.h"

#include <gtest/gtest.h>

#include <cstdlib>

int main(int argumentCount, char** arguments)
{
    ::setenv("LIBGL_ALWAYS_SOFTWARE", "1", 1);
    testing::InitGoogleTest(&argumentCount, arguments);
    const int result = RUN_ALL_TESTS();
    TOLVGraphing::testing_support::closeTestDisplays();
    return result;
}
