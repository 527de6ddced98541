#include "AdaptiveNumberFormatter.h"

#include <tests/support/TickLabels.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using namespace testing_support;

using Labels = std::vector<std::string>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// The label of a value as an axis asks for it, in single precision.
std::string label(const std::shared_ptr<const TOLVAxis>& axis, double value)
{
    return labelTextFromNumber(AdaptiveNumberFormatter(axis), static_cast<double>(static_cast<float>(value))).value_or("nothing");
}

Labels labelsOf(const std::shared_ptr<const TOLVAxis>& axis, const TOLVAxis::Values& values)
{
    Labels labels;
    for (const double value : values)
        labels.push_back(label(axis, value));
    return labels;
}

TEST(AdaptiveNumberFormatter, LinearTicksHaveTheDigitsTheyNeed)
{
    const struct {
        double min;
        double max;
        Labels major;
        /// The first ones.
        Labels minor;
    } cases[] = {
        {0.0, 1.0, {"0", "1"}, {"0.1", "0.2", "0.3", "0.4"}},
        {-2.0, 2.0, {"-2", "-1", "0", "1", "2"}, {"-1.9", "-1.8"}},
        {0.0, 100.0, {"0", "100"}, {"10", "20"}},
        {0.0, 3500.0, {"0", "1000", "2000", "3000"}, {"100", "200"}},
        {0.0, 3e-4, {"0", "0.0001", "0.0002", "0.0003"}, {"0.00001", "0.00002"}},
        {0.0, 3e-5, {"0", "0.00001", "0.00002", "0.00003"}, {"0.000001", "0.000002"}},
        {0.0, 3.5e-6, {"0", "1×10⁻⁶", "2×10⁻⁶", "3×10⁻⁶"}, {"1×10⁻⁷", "2×10⁻⁷"}},
        {-3e-6, 0.0, {"-3×10⁻⁶", "-2×10⁻⁶", "-1×10⁻⁶", "0"}, {"-2.9×10⁻⁶", "-2.8×10⁻⁶"}},
        {0.0, 950e6, {"0", "100,000,000", "200,000,000", "300,000,000", "400,000,000", "500,000,000", "600,000,000", "700,000,000", "800,000,000", "900,000,000"}, {"10,000,000"}},
        {0.0, 3e9, {"0", "1×10⁹", "2×10⁹", "3×10⁹"}, {"1×10⁸", "2×10⁸"}},
        {-2e9, 0.0, {"-2×10⁹", "-1×10⁹", "0"}, {"-1.9×10⁹"}},
        {1e6, 1e6 + 1.0, {"1,000,000", "1,000,001"}, {"1,000,000.1", "1,000,000.2"}},
        {10000.3, 10000.4, {"10,000.3", "10,000.4"}, {"10,000.31", "10,000.32", "10,000.33", "10,000.34", "10,000.35", "10,000.36", "10,000.37", "10,000.38", "10,000.39"}},
        {999.9, 1000.1, {"999.9", "1000", "1000.1"}, {"999.91", "999.92"}},
        {1.0, 1.000003, {"1", "1.000001", "1.000002", "1.000003"}, {"1.0000001", "1.0000002", "1.0000004"}},
        {5e-4, 5.01e-4, {"5×10⁻⁴", "5.001×10⁻⁴", "5.002×10⁻⁴", "5.003×10⁻⁴", "5.004×10⁻⁴", "5.005×10⁻⁴", "5.006×10⁻⁴", "5.007×10⁻⁴", "5.008×10⁻⁴", "5.009×10⁻⁴"}, {"5.0001×10⁻⁴"}},
        {0.0, 3e-45, {"0", "1×10⁻⁴⁵", "3×10⁻⁴⁵"}, {}},
    };
    GraphWithAxis<TOLVLinearAxis> graph;
    for (const auto& one : cases) {
        graph.prepare(one.min, one.max);
        EXPECT_EQ(labelsOf(graph.axis(), graph.axis()->majorValues()), one.major);
        Labels minor = labelsOf(graph.axis(), graph.axis()->minorValues());
        ASSERT_GE(minor.size(), one.minor.size());
        minor.resize(one.minor.size());
        EXPECT_EQ(minor, one.minor);
    }
}

TEST(AdaptiveNumberFormatter, LogarithmicTicksDecideForThemselves)
{
    GraphWithAxis<TOLVLogarithmicAxis> graph;
    graph.prepare(1e-7, 1e10);
    EXPECT_EQ(labelsOf(graph.axis(), graph.axis()->majorValues()),
        (Labels{"1×10⁻⁷", "1×10⁻⁶", "0.00001", "0.0001", "0.001", "0.01", "0.1", "1", "10", "100", "1,000", "10,000", "100,000", "1,000,000", "10,000,000", "100,000,000", "1×10⁹",
            "1×10¹⁰"}));
    EXPECT_EQ(label(graph.axis(), 2e-7), "2×10⁻⁷");
    EXPECT_EQ(label(graph.axis(), 3000.0), "3,000");
    graph.prepare(20.0, 200.0, 2000.0);
    EXPECT_EQ(labelsOf(graph.axis(), graph.axis()->majorValues()), (Labels{"20", "30", "40", "50", "60", "70", "80", "90", "100", "200"}));
    EXPECT_EQ(label(graph.axis(), 21.0), "21");
    EXPECT_EQ(label(graph.axis(), 190.0), "190");
}

TEST(AdaptiveNumberFormatter, HostsTicksHaveAllDigitsThatTheyNeed)
{
    const auto offset = axisWithTicks({1000000.0, 1000000.25, 1000000.5, 1000000.75});
    EXPECT_EQ(labelsOf(offset, offset->majorValues()), (Labels{"1,000,000", "1,000,000.25", "1,000,000.5", "1,000,000.75"}));
    const auto eighths = axisWithTicks({-0.25, -0.125, 0.0, 0.125, 0.25});
    EXPECT_EQ(labelsOf(eighths, eighths->majorValues()), (Labels{"-0.25", "-0.125", "0", "0.125", "0.25"}));
    const auto hosts = axisWithTicks({1e-4, 1.0, 1e4, 1e8});
    EXPECT_EQ(labelsOf(hosts, hosts->majorValues()), (Labels{"0.0001", "1", "10,000", "100,000,000"}));
}

TEST(AdaptiveNumberFormatter, ValuesBetweenTicksHaveAboutTwoDigitsMore)
{
    const struct {
        double min;
        double max;
        double value;
        const char* expected;
    } cases[] = {
        {0.0, 100.0, 12.3456789, "12.3"},
        {0.0, 1.0, 0.123456789, "0.123"},
        {0.0, 1.0, 0.5, "0.5"},
        {0.0, 1.0, 0.5000001, "0.5"},
        {0.0, 1.0, 1.23456, "1.235"},
        {0.0, 1.0, -0.0004, "0"},
        {0.0, 1.0, -0.0006, "-0.001"},
        {0.0, 3500.0, 1234.5678, "1235"},
        {0.0, 3e9, 1.23456789e9, "1.235×10⁹"},
        {0.0, 3e9, 12345.0, "0"},
        {0.0, 3e-6, 1.23456789e-6, "1.235×10⁻⁶"},
        {1e6, 1e6 + 1.0, 1e6 + 0.4375, "1,000,000.44"},
        // Far beyond the ticks.
        {0.0, 1.0, 1e20, "1×10²⁰"},
        {0.0, 1.0, 2.5e8, "250,000,000"},
        {0.0, 3e-6, 7.5, "7.5×10⁰"},
    };
    GraphWithAxis<TOLVLinearAxis> graph;
    for (const auto& one : cases) {
        graph.prepare(one.min, one.max);
        EXPECT_EQ(label(graph.axis(), one.value), one.expected) << one.value;
    }
}

TEST(AdaptiveNumberFormatter, WithoutTicksTheShortestTextOfTheFloatIsWritten)
{
    const struct {
        double number;
        const char* expected;
    } cases[] = {
        {0.0, "0"},
        {-0.0, "0"},
        {1.0, "1"},
        {-1234567.0, "-1,234,567"},
        {static_cast<double>(0.1F), "0.1"},
        {static_cast<double>(-3.1415927F), "-3.1415927"},
        {static_cast<double>(0.0002F), "0.0002"},
        {static_cast<double>(0.00001F), "0.00001"},
        {static_cast<double>(0.0000099F), "9.9×10⁻⁶"},
        {123456792.0, "123,456,790"},
        {999999936.0, "999,999,940"},
        {1e9, "1×10⁹"},
        {-2.5e9, "-2.5×10⁹"},
        {static_cast<double>(std::numeric_limits<float>::max()), "3.4028235×10³⁸"},
        {static_cast<double>(std::numeric_limits<float>::lowest()), "-3.4028235×10³⁸"},
        {static_cast<double>(std::numeric_limits<float>::denorm_min()), "1×10⁻⁴⁵"},
        {static_cast<double>(std::numeric_limits<float>::min()), "1.1754944×10⁻³⁸"},
        // No floats.
        {0.1, "0.1"},
        {3.141592653589793, "3.141592653589793"},
        {1e300, "1×10³⁰⁰"},
        {5e-324, "5×10⁻³²⁴"},
    };
    const auto single = axisWithTicks({1.0});
    for (const auto& one : cases) {
        EXPECT_EQ(labelTextFromNumber(AdaptiveNumberFormatter({}), one.number), one.expected);
        EXPECT_EQ(labelTextFromNumber(AdaptiveNumberFormatter(single), one.number), one.expected);
    }
}

TEST(AdaptiveNumberFormatter, WithoutTicksEveryTextReadsBackAsItsFloat)
{
    std::mt19937 random(20250313);
    for (int round = 0; round < 20000; ++round) {
        const auto value = std::ldexp(static_cast<float>(random() >> 8), static_cast<int>(random() % 253) - 149);
        const auto text = labelTextFromNumber(AdaptiveNumberFormatter({}), static_cast<double>(value));
        ASSERT_TRUE(text);
        ASSERT_EQ(static_cast<float>(numberInLabel(*text)), value) << *text;
    }
}

TEST(AdaptiveNumberFormatter, NumbersThatAreNotFiniteAreWrittenInDecimalStyle)
{
    const auto axis = axisWithTicks({0.0, 1.0});
    for (const std::shared_ptr<const TOLVAxis>& one : {std::shared_ptr<const TOLVAxis>(axis), std::shared_ptr<const TOLVAxis>()}) {
        const AdaptiveNumberFormatter formatter(one);
        EXPECT_EQ(formatter.stringFromNumber(kNaN), "NaN");
        EXPECT_EQ(formatter.stringFromNumber(-kNaN), "NaN");
        EXPECT_EQ(formatter.stringFromNumber(kInfinity), "+∞");
        EXPECT_EQ(formatter.stringFromNumber(-kInfinity), "-∞");
    }
}

TEST(AdaptiveNumberFormatter, WhatRoundsToZeroHasNoSign)
{
    const auto axis = axisWithTicks({-1.0, 0.0, 1.0});
    for (const double number : {0.0, -0.0, -1e-300, -1e-45, -0.004, 0.004})
        EXPECT_EQ(AdaptiveNumberFormatter(axis).stringFromNumber(number), "0") << number;
    EXPECT_EQ(AdaptiveNumberFormatter(axis).stringFromNumber(-0.006), "-0.01");
}

TEST(AdaptiveNumberFormatter, AnAxisThatIsGoneCountsAsNone)
{
    auto axis = axisWithTicks({0.0, 1.0});
    const AdaptiveNumberFormatter formatter(axis);
    const double number = static_cast<double>(0.123456F);
    EXPECT_EQ(formatter.stringFromNumber(number), "0.12");
    axis.reset();
    EXPECT_EQ(formatter.stringFromNumber(number), "0.123456");
}

TEST(AdaptiveNumberFormatter, CopiesLookAtTheSameAxis)
{
    auto axis = axisWithTicks({0.0, 1.0});
    const auto copy = AdaptiveNumberFormatter(axis).copy();
    ASSERT_TRUE(std::dynamic_pointer_cast<AdaptiveNumberFormatter>(copy));
    EXPECT_EQ(axis.use_count(), 1);
    const double number = static_cast<double>(0.123456F);
    EXPECT_EQ(copy->stringFromNumber(number), "0.12");
    axis->setMajorValues({0.0, 0.1});
    EXPECT_EQ(copy->stringFromNumber(number), "0.123");
    axis.reset();
    EXPECT_EQ(copy->stringFromNumber(number), "0.123456");
}

TEST(AdaptiveNumberFormatter, WritesTheLabelsOfItsAxis)
{
    GraphWithAxis<TOLVLinearAxis> graph;
    graph.axis()->setTickLabelFormatter(std::make_shared<AdaptiveNumberFormatter>(graph.axis()));
    graph.prepare(0.0, 2e-4);
    EXPECT_EQ(graph.axis()->attributedStringForValue(static_cast<float>(graph.axis()->majorValues().at(2)), nullptr).string(), "0.0002");
    EXPECT_EQ(graph.axis()->attributedStringForValue(0.000123456F, nullptr).string(), "0.0001235");
}

TEST(AdaptiveNumberFormatter, TellsLinearTicksApart)
{
    expectLabelsTellTicksApartOnLinearAxes<AdaptiveNumberFormatter>();
}

TEST(AdaptiveNumberFormatter, TellsLogarithmicTicksApart)
{
    expectLabelsTellTicksApartOnLogarithmicAxes<AdaptiveNumberFormatter>();
}

TEST(AdaptiveNumberFormatter, TellsTheTicksOfTheDeepestLogarithmicAxisApart)
{
    const std::vector<double> all = logRange(3, 2e-30, 2e30);
    ASSERT_GT(all.size(), 50000U);
    const auto axis = axisWithTicks(logRange(1, 2e-30, 2e30), all);
    expectLabelsTellTicksApart(AdaptiveNumberFormatter(axis), *axis);
}

TEST(AdaptiveNumberFormatter, ValuesThatShouldBeOneTickButAreNeighbouringFloatsReadAlike)
{
    // The eleventh major value and the 110th minor one lie on both sides of the middle between two floats.
    GraphWithAxis<TOLVLinearAxis> graph;
    graph.prepare(1.0e-4, 1.2e-4);
    EXPECT_EQ(labelsOf(graph.axis(), graph.axis()->majorValues()), (Labels{"0.0001", "0.00011", "0.00012"}));
    EXPECT_EQ(label(graph.axis(), 0.00011), "0.00011");
}

/// Places behind the point.
std::size_t fractionDigits(const std::string& text)
{
    const std::size_t point = text.find('.');
    return point == std::string::npos ? 0 : text.size() - point - 1;
}

TEST(AdaptiveNumberFormatter, LinearTicksAreOfOneStyleAndHaveNoMorePlacesThanTheirStep)
{
    std::mt19937_64 random(20250314);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    GraphWithAxis<TOLVLinearAxis> graph;
    for (int round = 0; round < 300; ++round) {
        const double span = std::pow(10.0, 24.0 * unit(random) - 12.0);
        const double min = (round % 4 == 0 ? 0.0 : span * std::pow(10.0, 4.0 * unit(random))) * (round % 2 == 0 ? 1.0 : -1.0);
        graph.prepare(min, min + span, 100.0 + 900.0 * unit(random));
        SCOPED_TRACE(testing::Message() << "from " << min << " over " << span);
        const int places = std::max(0, -static_cast<int>(std::floor(std::log10(graph.axis()->minorStep() * 1.001))));
        int scientific = 0;
        int plain = 0;
        for (const float tick : ticksOfAxis(*graph.axis())) {
            const std::string text = label(graph.axis(), static_cast<double>(tick));
            if (text == "0")
                continue;
            const bool isScientific = text.find("×10") != std::string::npos;
            ++(isScientific ? scientific : plain);
            EXPECT_TRUE(isScientific || fractionDigits(text) <= static_cast<std::size_t>(places)) << text;
            EXPECT_FALSE(!isScientific && fractionDigits(text) > 0 && text.ends_with('0')) << text;
        }
        EXPECT_GT(scientific + plain, 0);
        EXPECT_TRUE(scientific == 0 || plain == 0);
    }
}

} // namespace
} // namespace TOLVGraphing
