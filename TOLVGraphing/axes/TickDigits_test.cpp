#include "TickDigits.h"

#include <tests/support/TickLabels.h>

#include <gtest/gtest.h>

#include <limits>

namespace TOLVGraphing {
namespace {

using testing_support::axisWithTicks;

TEST(TickDigits, TheShortestDigitsAreThoseOfTheFloat)
{
    EXPECT_EQ(shortestLabelDigits(static_cast<double>(0.1F)), (DecimalDigits{"1", 0}));
    EXPECT_EQ(shortestLabelDigits(static_cast<double>(-3.1415927F)), (DecimalDigits{"31415927", 1}));
    EXPECT_EQ(shortestLabelDigits(3.141592653589793), (DecimalDigits{"3141592653589793", 1}));
    EXPECT_EQ(shortestLabelDigits(1e300), (DecimalDigits{"1", 301}));
    EXPECT_EQ(shortestLabelDigits(1200.0), (DecimalDigits{"12", 4}));
    EXPECT_EQ(shortestLabelDigits(-0.0), (DecimalDigits{"", 1}));
}

TEST(TickDigits, SixDigitsAreSignificant)
{
    EXPECT_EQ(significantDigits(static_cast<double>(3.1415927F)), (DecimalDigits{"314159", 1}));
    EXPECT_EQ(significantDigits(999999.5), (DecimalDigits{"1", 7}));
    EXPECT_EQ(significantDigits(1234000.4), (DecimalDigits{"1234", 7}));
    EXPECT_EQ(significantDigits(0.0), (DecimalDigits{"", 1}));
}

struct Case {
    TOLVAxis::Values ticks;
    double number;
    DecimalDigits expected;
};

void expectDigits(const std::vector<Case>& cases)
{
    for (const Case& one : cases) {
        const auto axis = axisWithTicks(one.ticks);
        const auto found = digitsAmongTicks(static_cast<double>(static_cast<float>(one.number)), TickSpacing(axis));
        ASSERT_TRUE(found) << one.number;
        EXPECT_EQ(found->digits, one.expected.digits) << one.number;
        // The exponent of nothing means nothing.
        EXPECT_TRUE(found->digits.empty() || found->exponent == one.expected.exponent) << one.number << " has exponent " << found->exponent;
    }
}

TEST(TickDigits, TicksHaveTheDigitsOfTheirStep)
{
    expectDigits({
        {{0.0, 0.1, 0.2}, 0.1, {"1", 0}},
        {{0.0, 0.25, 0.5}, 0.25, {"25", 0}},
        {{0.0, 0.125, 0.25}, 0.125, {"125", 0}},
        {{1000000.0, 1000000.25, 1000000.5}, 1000000.25, {"100000025", 7}},
        {{1000000.0, 1000000.25, 1000000.5}, 1000000.5, {"10000005", 7}},
        {{1000000.0, 1000000.25, 1000000.5}, 1000000.0, {"1", 7}},
        {{0.0, 1.0 / 3.0, 2.0 / 3.0}, 1.0 / 3.0, {"3333", 0}},
        {{10.0, 20.0}, 20.0, {"2", 2}},
        {{-3.0, -2.0}, -3.0, {"3", 1}},
    });
}

TEST(TickDigits, TheNoiseOfTicksIsNotWritten)
{
    // 0.9000001 and 1.2e-16 come out of sums of tenths; 10000.311 is the 1000031st hundredth of a step that is rounded to a float.
    expectDigits({
        {{0.8, 0.9000001, 1.0}, 0.9000001, {"9", 0}},
        {{-0.1, 1.2e-16, 0.1}, 1.2e-16, {"", 0}},
        {{10000.3, 10000.3105469, 10000.3203125}, 10000.3105469, {"1000031", 5}},
    });
}

TEST(TickDigits, SmallTicksAmongLargeOnesAreNotRoundedAway)
{
    expectDigits({
        {{1e-4, 1.0, 1e4}, 1e-4, {"1", -3}},
        {{1e-6, 1.0}, 1e-6, {"1", -5}},
        {{1.1e-6, 1.0}, 1.1e-6, {"11", -5}},
        {{0.0, 1e-30, 1.0}, 1e-30, {"1", -29}},
        {{0.0, 2.5e-30, 5e-30}, 2.5e-30, {"25", -29}},
    });
}

TEST(TickDigits, NeighbouringFloatsHaveDigitsThatAreNoMiddleBetweenThem)
{
    // The shortest digits of 33554448 are 3355445, as far from it as from 33554452.
    expectDigits({
        {{33554444.0, 33554448.0, 33554452.0}, 33554448.0, {"33554448", 8}},
        {{33554448.0, 33554464.0}, 33554448.0, {"3355445", 8}},
        {{1.0, 1.0 + 0x1p-23, 1.0 + 0x1p-22}, 1.0 + 0x1p-23, {"10000001", 1}},
    });
}

TEST(TickDigits, OtherValuesHaveAboutTwoDigitsMore)
{
    expectDigits({
        {{0.0, 1.0, 2.0}, 0.123456, {"12", 0}},
        {{0.0, 1.0, 2.0}, 1.999, {"2", 1}},
        {{0.0, 0.5, 1.0}, 0.123456, {"123", 0}},
        {{0.0, 200.0}, 123.456, {"123", 3}},
        {{0.0, 1.0}, 0.004, {"", 0}},
        {{0.0, 1.0}, -0.004, {"", 0}},
        {{0.0, 1.0}, -0.006, {"1", -1}},
        // The float has no more.
        {{1000000.0, 1000001.0}, 1000000.4375, {"100000044", 7}},
        {{16777214.0, 16777216.0}, 16777215.0, {"16777215", 8}},
    });
}

TEST(TickDigits, NothingWithoutTicks)
{
    EXPECT_FALSE(digitsAmongTicks(1.0, TickSpacing()));
    EXPECT_FALSE(digitsAmongTicks(1e300, TickSpacing(axisWithTicks({0.0, 1.0}))));
}

} // namespace
} // namespace TOLVGraphing
