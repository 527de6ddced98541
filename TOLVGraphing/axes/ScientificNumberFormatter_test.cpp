#include "ScientificNumberFormatter.h"

#include <tests/support/TickLabels.h>

#include <gtest/gtest.h>

#include <limits>

namespace TOLVGraphing {
namespace {

using namespace testing_support;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(ScientificNumberFormatter, WithoutTicksSixDigitsAreWritten)
{
    const struct {
        double number;
        const char* expected;
    } cases[] = {
        {2000.0, "2×10³"},
        {1.5e-9, "1.5×10⁻⁹"},
        {-3.0, "-3×10⁰"},
        {0.0, "0"},
        {-0.0, "0"},
        {static_cast<double>(0.1F), "1×10⁻¹"},
        {static_cast<double>(3.14159265F), "3.14159×10⁰"},
        {-1234567.0, "-1.23457×10⁶"},
        {9.999996, "1×10¹"},
        {0.9999996, "1×10⁰"},
        {99999.95, "1×10⁵"},
        {99999.94, "9.99999×10⁴"},
        {6e12, "6×10¹²"},
        {7e34, "7×10³⁴"},
        {-8e-18, "-8×10⁻¹⁸"},
        {1e300, "1×10³⁰⁰"},
        {static_cast<double>(std::numeric_limits<float>::max()), "3.40282×10³⁸"},
        {static_cast<double>(std::numeric_limits<float>::denorm_min()), "1×10⁻⁴⁵"},
        {kNaN, "NaN"},
        {kInfinity, "+∞"},
        {-kInfinity, "-∞"},
    };
    const auto single = axisWithTicks({5.0});
    for (const auto& one : cases) {
        EXPECT_EQ(ScientificNumberFormatter().stringFromNumber(one.number), one.expected);
        EXPECT_EQ(ScientificNumberFormatter(single).stringFromNumber(one.number), one.expected);
    }
}

TEST(ScientificNumberFormatter, TheTicksDecideHowManyDigitsThereAre)
{
    const struct {
        TOLVAxis::Values ticks;
        double value;
        const char* expected;
    } cases[] = {
        {{0.0, 0.1, 0.2}, 0.0, "0"},
        {{0.0, 0.1, 0.2}, 0.2, "2×10⁻¹"},
        {{0.0, 0.1, 0.2}, 0.12345, "1.23×10⁻¹"},
        {{0.0, 0.1, 0.2}, -0.0004, "0"},
        {{0.0, 0.1, 0.2}, -0.0006, "-1×10⁻³"},
        {{9.0, 10.0, 11.0}, 9.9996, "1×10¹"},
        {{9.0, 10.0, 11.0}, 9.99, "9.99×10⁰"},
        {{1000000.0, 1000000.25, 1000000.5}, 1000000.25, "1.00000025×10⁶"},
        {{16777214.0, 16777216.0}, 16777215.0, "1.6777215×10⁷"},
        {{1e-44, 2e-44}, 2e-44, "2×10⁻⁴⁴"},
        {{-1e38, 3.4028235e38}, 3.4028235e38, "3.4×10³⁸"},
    };
    for (const auto& one : cases) {
        const auto axis = axisWithTicks(one.ticks);
        EXPECT_EQ(labelTextFromNumber(ScientificNumberFormatter(axis), static_cast<double>(static_cast<float>(one.value))), one.expected);
    }
}

TEST(ScientificNumberFormatter, WritesTheTicksOfLogarithmicAxes)
{
    GraphWithAxis<TOLVLogarithmicAxis> graph;
    graph.prepare(0.01, 100.0);
    EXPECT_EQ(labelsOfTicks(ScientificNumberFormatter(graph.axis()), {0.01F, 0.1F, 1.0F, 3.0F, 10.0F, 100.0F}),
        (std::vector<std::string>{"1×10⁻²", "1×10⁻¹", "1×10⁰", "3×10⁰", "1×10¹", "1×10²"}));
}

TEST(ScientificNumberFormatter, AnAxisThatIsGoneCountsAsNoneAlsoForCopies)
{
    auto axis = axisWithTicks({0.0, 1000.0});
    const ScientificNumberFormatter formatter(axis);
    const auto copy = formatter.copy();
    ASSERT_TRUE(std::dynamic_pointer_cast<ScientificNumberFormatter>(copy));
    EXPECT_EQ(formatter.stringFromNumber(123.0), "1.2×10²");
    EXPECT_EQ(copy->stringFromNumber(123.0), "1.2×10²");
    axis.reset();
    EXPECT_EQ(formatter.stringFromNumber(123.0), "1.23×10²");
    EXPECT_EQ(copy->stringFromNumber(123.0), "1.23×10²");
}

TEST(ScientificNumberFormatter, TellsLinearTicksApart)
{
    expectLabelsTellTicksApartOnLinearAxes<ScientificNumberFormatter>();
}

TEST(ScientificNumberFormatter, TellsLogarithmicTicksApart)
{
    expectLabelsTellTicksApartOnLogarithmicAxes<ScientificNumberFormatter>();
}

} // namespace
} // namespace TOLVGraphing
