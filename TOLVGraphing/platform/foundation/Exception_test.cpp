#include "Exception.h"

#include "Log.h"

#include <gtest/gtest.h>

namespace TOLVGraphing {
namespace {

TEST(Exception, CarriesNameAndReason)
{
    const Exception exception("LengthMismatch", "x has 3 values and y has 2");
    EXPECT_EQ(exception.name(), "LengthMismatch");
    EXPECT_EQ(exception.reason(), "x has 3 values and y has 2");
    EXPECT_STREQ(exception.what(), "LengthMismatch: x has 3 values and y has 2");
}

TEST(Exception, UnrecognizedOperationNamesClassAndOperation)
{
    const UnrecognizedOperation exception("TOLVAxis", "draw");
    EXPECT_EQ(exception.name(), "UnrecognizedOperation");
    EXPECT_EQ(exception.reason(), "TOLVAxis does not implement draw");
    EXPECT_THROW(throw exception, Exception);
}

TEST(AssertionFailure, FillsItsArgumentIn)
{
    const AssertionFailure failure("Invalid parameter not satisfying: %@", "index >= 0", "TOLVGraphData", 17);
    EXPECT_STREQ(failure.what(), "Invalid parameter not satisfying: index >= 0");
    EXPECT_EQ(failure.format(), "Invalid parameter not satisfying: %@");
    EXPECT_EQ(failure.argument(), "index >= 0");
    EXPECT_EQ(failure.file(), "TOLVGraphData");
    EXPECT_EQ(failure.line(), 17);
    EXPECT_STREQ(AssertionFailure("plain", "unused", "", 0).what(), "plain");
    EXPECT_STREQ(AssertionFailure("%@ and %@", "%@", "", 0).what(), "%@ and %@");
}

TEST(StopProgramDeathTest, WritesItsMessageAndAborts)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(stopProgram("no way to go on"), testing::KilledBySignal(SIGABRT), "no way to go on");
    EXPECT_EXIT(stopProgram(), testing::KilledBySignal(SIGABRT), "");
}

} // namespace
} // namespace TOLVGraphing
