#include "SINumberFormatter.h"

#include <tests/support/TickLabels.h>

#include <gtest/gtest.h>

#include <limits>

namespace TOLVGraphing {
namespace {

using namespace testing_support;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct Case {
    double number;
    const char* expected;
};

TEST(SINumberFormatter, WritesPrefixes)
{
    const Case cases[] = {
        {20.0, "20"},
        {200.0, "200"},
        {2000.0, "2k"},
        {20000.0, "20k"},
        {200000.0, "200k"},
        {1.5e6, "1.5M"},
        {-1.5e6, "-1.5M"},
        {1.0, "1"},
        {999.0, "999"},
        {1234.0, "1.234k"},
        {1e-15, "1f"},
        {2e-14, "20f"},
        {1e-12, "1p"},
        {1e-9, "1n"},
        {1e-6, "1\xC2\xB5"},
        {1.5e-5, "15µ"},
        {0.001, "1m"},
        {0.25, "250m"},
        {1e9, "1G"},
        {1e12, "1T"},
        {1e15, "1P"},
        {1e18, "1E"},
        {1.25e20, "125E"},
        {-999e18, "-999E"},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(SINumberFormatter().stringFromNumber(one.number), one.expected);
        EXPECT_EQ(SINumberFormatter().stringFromNumber(static_cast<double>(static_cast<float>(one.number))), one.expected);
    }
}

TEST(SINumberFormatter, OutsideThePrefixesItIsScientific)
{
    const Case cases[] = {
        {1e21, "1×10²¹"},
        {-2.5e30, "-2.5×10³⁰"},
        {9.9e-16, "9.9×10⁻¹⁶"},
        {1e300, "1×10³⁰⁰"},
        {static_cast<double>(std::numeric_limits<float>::max()), "3.40282×10³⁸"},
        {static_cast<double>(std::numeric_limits<float>::denorm_min()), "1×10⁻⁴⁵"},
        {5e-324, "5×10⁻³²⁴"},
    };
    for (const Case& one : cases)
        EXPECT_EQ(SINumberFormatter().stringFromNumber(one.number), one.expected);
}

TEST(SINumberFormatter, WithoutTicksSixDigitsAreWrittenAndCarriesRaiseThePrefix)
{
    const Case cases[] = {
        {static_cast<double>(3.14159265F), "3.14159"},
        {1234567.0, "1.23457M"},
        {999.9996, "1k"},
        {999.9994, "999.999"},
        {-999999.6, "-1M"},
        {0.9999996, "1"},
        {9.999996e20, "1×10²¹"},
        {9.999996e-16, "1f"},
        {1000000.5, "1M"},
        {static_cast<double>(0.1F), "100m"},
    };
    const auto single = axisWithTicks({5.0});
    for (const Case& one : cases) {
        EXPECT_EQ(SINumberFormatter().stringFromNumber(one.number), one.expected);
        EXPECT_EQ(SINumberFormatter(single).stringFromNumber(one.number), one.expected);
    }
}

TEST(SINumberFormatter, NothingHasASignOrAPrefix)
{
    for (const double number : {0.0, -0.0})
        EXPECT_EQ(SINumberFormatter().stringFromNumber(number), "0");
    const auto axis = axisWithTicks({0.0, 1000.0});
    for (const double number : {0.0, -0.0, -1e-300, -1.0, 4.0})
        EXPECT_EQ(labelTextFromNumber(SINumberFormatter(axis), number), "0") << number;
    EXPECT_EQ(labelTextFromNumber(SINumberFormatter(axis), -6.0), "-10");
}

TEST(SINumberFormatter, NumbersThatAreNotFiniteAreWrittenInDecimalStyle)
{
    EXPECT_EQ(SINumberFormatter().stringFromNumber(-kNaN), "NaN");
    EXPECT_EQ(SINumberFormatter().stringFromNumber(kInfinity), "+∞");
    EXPECT_EQ(SINumberFormatter().stringFromNumber(-kInfinity), "-∞");
}

TEST(SINumberFormatter, TheTicksDecideHowManyDigitsThereAre)
{
    const struct {
        TOLVAxis::Values ticks;
        double value;
        const char* expected;
    } cases[] = {
        {{1000000.0, 1000000.25, 1000000.5}, 1000000.25, "1.00000025M"},
        {{1000000.0, 1000000.25, 1000000.5}, 1000000.0, "1M"},
        {{0.0, 500.0, 1000.0, 1500.0}, 500.0, "500"},
        {{0.0, 500.0, 1000.0, 1500.0}, 1500.0, "1.5k"},
        {{0.0, 500.0, 1000.0, 1500.0}, 1234.567, "1.235k"},
        {{0.0, 500.0, 1000.0, 1500.0}, 999.9996, "1k"},
        {{999.9, 1000.0, 1000.1}, 999.9, "999.9"},
        {{999.9, 1000.0, 1000.1}, 1000.1, "1.0001k"},
        {{16777214.0, 16777215.0, 16777216.0}, 16777215.0, "16.777215M"},
        {{16777214.0, 16777216.0}, 16777215.0, "16.777215M"},
        {{0.0, 1e-5, 2e-5}, 2e-5, "20µ"},
        {{0.0, 1e21}, 1e21, "1×10²¹"},
    };
    for (const auto& one : cases) {
        const auto axis = axisWithTicks(one.ticks);
        EXPECT_EQ(SINumberFormatter(axis).stringFromNumber(static_cast<double>(static_cast<float>(one.value))), one.expected);
    }
}

TEST(SINumberFormatter, AnAxisThatIsGoneCountsAsNoneAlsoForCopies)
{
    auto axis = axisWithTicks({0.0, 1000.0});
    const SINumberFormatter formatter(axis);
    const auto copy = formatter.copy();
    ASSERT_TRUE(std::dynamic_pointer_cast<SINumberFormatter>(copy));
    EXPECT_EQ(formatter.stringFromNumber(1234567.0), "1.23457M");
    EXPECT_EQ(formatter.stringFromNumber(123.0), "120");
    EXPECT_EQ(copy->stringFromNumber(123.0), "120");
    axis.reset();
    EXPECT_EQ(formatter.stringFromNumber(123.0), "123");
    EXPECT_EQ(copy->stringFromNumber(123.0), "123");
}

TEST(SINumberFormatter, TellsLinearTicksApart)
{
    expectLabelsTellTicksApartOnLinearAxes<SINumberFormatter>();
}

TEST(SINumberFormatter, TellsLogarithmicTicksApart)
{
    expectLabelsTellTicksApartOnLogarithmicAxes<SINumberFormatter>();
}

} // namespace
} // namespace TOLVGraphing
