#include "DecimalDigits.h"

#include <gtest/gtest.h>

#include <limits>

namespace TOLVGraphing {
namespace {

TEST(DecimalDigits, TheShortestDigitsOfADoubleAndOfAFloat)
{
    EXPECT_EQ(shortestDecimalDigits(0.1), (DecimalDigits{"1", 0}));
    EXPECT_EQ(shortestDecimalDigits(0.1F), (DecimalDigits{"1", 0}));
    EXPECT_EQ(shortestDecimalDigits(static_cast<double>(0.1F)), (DecimalDigits{"10000000149011612", 0}));
    EXPECT_EQ(shortestDecimalDigits(1234.5), (DecimalDigits{"12345", 4}));
    EXPECT_EQ(shortestDecimalDigits(0.0), (DecimalDigits{"0", 1}));
    EXPECT_EQ(shortestDecimalDigits(std::numeric_limits<float>::max()), (DecimalDigits{"34028235", 39}));
    EXPECT_EQ(shortestDecimalDigits(std::numeric_limits<float>::denorm_min()), (DecimalDigits{"1", -44}));
    EXPECT_EQ(shortestDecimalDigits(std::numeric_limits<double>::denorm_min()), (DecimalDigits{"5", -323}));
}

TEST(DecimalDigits, RoundsHalvesToEvenAndCarries)
{
    const struct {
        DecimalDigits digits;
        int kept;
        DecimalDigits expected;
    } cases[] = {
        {{"12345", 2}, 9, {"12345", 2}},
        {{"12345", 2}, 5, {"12345", 2}},
        {{"12345", 2}, 4, {"1234", 2}},
        {{"12355", 2}, 4, {"1236", 2}},
        {{"123451", 2}, 4, {"1235", 2}},
        {{"1995", 2}, 3, {"200", 2}},
        {{"9996", 3}, 3, {"1000", 4}},
        {{"6", 0}, 0, {"1", 1}},
        {{"5", 0}, 0, {"", 0}},
        {{"51", 0}, 0, {"1", 1}},
        {{"9", 0}, -1, {"0", 1}},
    };
    for (const auto& one : cases) {
        DecimalDigits rounded = one.digits;
        roundDecimalDigits(rounded, one.kept);
        EXPECT_EQ(rounded.digits, one.expected.digits) << one.digits.digits << " to " << one.kept;
        EXPECT_EQ(rounded.exponent, one.expected.exponent) << one.digits.digits << " to " << one.kept;
    }
}

TEST(DecimalDigits, TrailingZerosGo)
{
    const struct {
        const char* digits;
        const char* expected;
    } cases[] = {{"1200", "12"}, {"1002", "1002"}, {"0", ""}, {"000", ""}, {"", ""}};
    for (const auto& one : cases) {
        DecimalDigits decimal{one.digits, 3};
        removeTrailingZeros(decimal);
        EXPECT_EQ(decimal.digits, one.expected);
        EXPECT_EQ(decimal.exponent, 3);
    }
}

TEST(DecimalDigits, ReadBackAsTheNearestDouble)
{
    EXPECT_EQ(valueOfDecimalDigits({"12345", 4}), 1234.5);
    EXPECT_EQ(valueOfDecimalDigits({"1", 0}), 0.1);
    EXPECT_EQ(valueOfDecimalDigits({"5", -323}), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(valueOfDecimalDigits({"1", -400}), 0.0);
    EXPECT_EQ(valueOfDecimalDigits({"2", 309}), std::numeric_limits<double>::infinity());
    EXPECT_EQ(valueOfDecimalDigits({"", 7}), 0.0);
    EXPECT_EQ(valueOfDecimalDigits({"000", 2}), 0.0);
}

TEST(DecimalDigits, PlainTextIsGroupedAndCutOff)
{
    const struct {
        DecimalDigits digits;
        int fractionDigits;
        const char* expected;
    } cases[] = {
        {{"1", 1}, 3, "1"},
        {{"12345", 4}, 3, "1,234.5"},
        {{"12345", 4}, 0, "1,234"},
        {{"1", 10}, 3, "1,000,000,000"},
        {{"25", -3}, 9, "0.00025"},
        {{"25", -3}, 4, "0.0002"},
        {{"500", 0}, 3, "0.5"},
        {{"", 5}, 3, "0"},
        {{"0", 1}, 3, "0"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(groupedText(one.digits, one.fractionDigits), one.expected);
}

TEST(DecimalDigits, ScientificTextHasOneDigitBeforeThePoint)
{
    const struct {
        DecimalDigits digits;
        const char* expected;
    } cases[] = {
        {{"2", 4}, "2×10³"},
        {{"15", -8}, "1.5×10⁻⁹"},
        {{"3", 1}, "3×10⁰"},
        {{"1200", 1}, "1.2×10⁰"},
        {{"34028235", 39}, "3.4028235×10³⁸"},
        {{"1", 1234567891}, "1×10¹²³⁴⁵⁶⁷⁸⁹⁰"},
        {{"", 4}, "0"},
        {{"00", 4}, "0"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(scientificText(one.digits), one.expected);
    EXPECT_EQ(scientificText({"1", -4}),
        "1\xC3\x97"
        "10\xE2\x81\xBB\xE2\x81\xB5");
}

} // namespace
} // namespace TOLVGraphing
