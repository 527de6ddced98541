#include "NumberFormatter.h"

#include <TestPaths.h>

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <fstream>
#include <limits>
#include <string>

namespace TOLVGraphing {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// The double that a table's first column stands for: a number, and with an f behind it a single-precision one, widened.
double writtenNumber(std::string text)
{
    const bool isNegative = text.starts_with('-');
    const std::string digits = text.substr(isNegative ? 1 : 0);
    if (digits == "inf" || digits == "nan") {
        const double magnitude = digits == "inf" ? std::numeric_limits<double>::infinity() : kNaN;
        return std::copysign(magnitude, isNegative ? -1.0 : 1.0);
    }
    if (text.ends_with('f')) {
        float single = 0.0F;
        EXPECT_EQ(std::from_chars(text.data(), text.data() + text.size() - 1, single).ptr, text.data() + text.size() - 1) << text;
        return static_cast<double>(single);
    }
    double number = 0.0;
    EXPECT_EQ(std::from_chars(text.data(), text.data() + text.size(), number).ptr, text.data() + text.size()) << text;
    return number;
}

TEST(NumberFormatter, WritesEveryRowOfTheTable)
{
    std::ifstream table(TOLV_TEST_VECTORS "/number_format.tsv");
    ASSERT_TRUE(table.is_open());
    const NumberFormatter formatter;
    int rows = 0;
    for (std::string line; std::getline(table, line);) {
        if (line.starts_with('#') || line.empty())
            continue;
        const std::size_t first = line.find('\t');
        const std::size_t second = line.find('\t', first + 1);
        ASSERT_NE(second, std::string::npos) << line;
        const double number = writtenNumber(line.substr(0, first));
        const double formatted = writtenNumber(line.substr(first + 1, second - first - 1));
        EXPECT_TRUE(number == formatted || (std::isnan(number) && std::isnan(formatted))) << line;
        EXPECT_EQ(std::signbit(number), std::signbit(formatted)) << line;
        EXPECT_EQ(formatter.stringFromNumber(number), line.substr(second + 1)) << line;
        ++rows;
    }
    EXPECT_EQ(rows, 88);
}

struct Case {
    double number;
    const char* expected;
};

TEST(NumberFormatter, GroupsByThree)
{
    const Case cases[] = {
        {12.0, "12"},
        {123.0, "123"},
        {1234.0, "1,234"},
        {12345.0, "12,345"},
        {123456.0, "123,456"},
        {1234567.0, "1,234,567"}, //
        {-1234567.25, "-1,234,567.25"},
        {1e18, "1,000,000,000,000,000,000"},
    };
    for (const Case& one : cases)
        EXPECT_EQ(NumberFormatter().stringFromNumber(one.number), one.expected);
}

TEST(NumberFormatter, RoundsHalvesToEvenOnTheShortestDigits)
{
    const Case cases[] = {
        {0.0004999, "0"},
        {0.0005, "0"},
        {0.00050001, "0.001"},
        {0.0015, "0.002"},
        {0.0025, "0.002"},
        {0.0026, "0.003"},
        {0.9994, "0.999"},
        {0.9995, "1"},
        {0.9985, "0.998"},
        {9.9995, "10"},
        {99.9995, "100"},
        {999.9995, "1,000"},
        {999999.9995, "1,000,000"},
        {999999.9994, "999,999.999"},
        {-0.0005, "-0"},
        {-0.0006, "-0.001"},
        {-9.9996, "-10"},
    };
    for (const Case& one : cases)
        EXPECT_EQ(NumberFormatter().stringFromNumber(one.number), one.expected);
}

TEST(NumberFormatter, WritesTheEndsOfTheRange)
{
    EXPECT_EQ(NumberFormatter().stringFromNumber(std::numeric_limits<double>::denorm_min()), "0");
    const auto largest = NumberFormatter().stringFromNumber(std::numeric_limits<double>::max());
    ASSERT_TRUE(largest);
    EXPECT_EQ(largest->size(), 309U + 102U);
    EXPECT_TRUE(largest->starts_with("179,769,313,486,231,570,000,"));
    EXPECT_TRUE(largest->ends_with(",000"));
}

TEST(NumberFormatter, TakesTheNumberOfFractionDigits)
{
    struct DigitsCase {
        int digits;
        double number;
        const char* expected;
    };
    const DigitsCase cases[] = {
        {0, 0.5, "0"},
        {0, 1.5, "2"},
        {0, 0.51, "1"},
        {0, 999.5, "1,000"},
        {0, -0.5, "-0"},
        {1, 0.25, "0.2"},
        {1, 0.35, "0.4"},
        {6, 0.0000005, "0"},
        {6, 0.0000015, "0.000002"},
        {6, 1234.1234565, "1,234.123456"},
        {18, 0.1, "0.1"},
        {18, 1e-18, "0.000000000000000001"},
        {-3, 1.25, "1"},
        {99, 0.125, "0.125"},
    };
    for (const DigitsCase& one : cases)
        EXPECT_EQ(NumberFormatter(one.digits).stringFromNumber(one.number), one.expected) << one.digits;
}

TEST(NumberFormatter, CopiesKeepTheStyle)
{
    const auto copy = NumberFormatter(1).copy();
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->stringFromNumber(0.3125), "0.3");
}

TEST(NumberFormatter, LabelsNeverReadMinusZero)
{
    const NumberFormatter formatter;
    const Case cases[] = {
        {-0.0, "0"},
        {-0.0004, "0"},
        {-1e-300, "0"},
        {0.0, "0"},
        {-0.001, "-0.001"},
        {-10.0, "-10"},
        {-std::numeric_limits<double>::infinity(), "-∞"},
        {-kNaN, "NaN"},
    };
    for (const Case& one : cases)
        EXPECT_EQ(labelTextFromNumber(formatter, one.number), one.expected) << one.number;
}

/// Writes nothing at all, as a host's formatter may.
class SilentFormatter final : public NumberFormatter {
public:
    [[nodiscard]] std::optional<std::string> stringFromNumber(double) const override { return std::nullopt; }
};

TEST(NumberFormatter, LabelsTakeNothingForAnAnswer)
{
    EXPECT_EQ(labelTextFromNumber(SilentFormatter(), -0.0), std::nullopt);
    EXPECT_EQ(labelTextFromNumber(SilentFormatter(), 1.0), std::nullopt);
}

} // namespace
} // namespace TOLVGraphing
