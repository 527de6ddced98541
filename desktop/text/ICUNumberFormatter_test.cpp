#include "ICUNumberFormatter.h"

#include "TOLVGraphing/platform/text/NumberText.h"

#include <TestPaths.h>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <limits>
#include <random>
#include <sstream>

using namespace TOLVGraphing;

TEST(ICUNumberFormatter, writesTheListedTexts)
{
    std::ifstream file(TOLV_TEST_VECTORS "/number_format.tsv");
    ASSERT_TRUE(file);
    const ICUNumberFormatter icu("en_US");
    const NumberFormatter own;
    std::string line;
    int rows = 0;
    while (std::getline(file, line)) {
        if (line.starts_with('#'))
            continue;
        std::istringstream fields(line);
        std::string written;
        std::string number;
        std::string expected;
        std::getline(fields, written, '\t');
        std::getline(fields, number, '\t');
        std::getline(fields, expected, '\t');
        const double value = std::strtod(number.c_str(), nullptr);
        EXPECT_EQ(icu.stringFromNumber(value), expected) << written;
        EXPECT_EQ(own.stringFromNumber(value), expected) << written;
        ++rows;
    }
    EXPECT_EQ(rows, 88);
}

TEST(ICUNumberFormatter, agreesWithTheBaseClassForRandomNumbers)
{
    const ICUNumberFormatter icu("en_US");
    const NumberFormatter own;
    std::mt19937_64 random(20240607);
    int different = 0;
    const auto compare = [&](double value) {
        const auto expected = icu.stringFromNumber(value);
        if (own.stringFromNumber(value) != expected && ++different < 10)
            ADD_FAILURE() << shortestText(value) << ": ICU writes " << *expected << ", the base class " << *own.stringFromNumber(value);
    };
    for (int i = 0; i < 50000; ++i) {
        const std::uint64_t bits = random();
        compare(std::bit_cast<double>(bits));
        compare(static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(bits))));
        // Values whose digits end near the third place, where halves decide.
        compare(static_cast<double>(static_cast<std::int64_t>(bits % 2000000001U) - 1000000000) / 20000.0);
        compare(static_cast<double>(static_cast<float>(static_cast<std::int64_t>(bits % 200001U) - 100000) / 16.0F));
    }
    EXPECT_EQ(different, 0);
}

TEST(ICUNumberFormatter, specialValuesHaveFixedTexts)
{
    const ICUNumberFormatter icu("en_US");
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(icu.stringFromNumber(std::nan("")), "NaN");
    EXPECT_EQ(icu.stringFromNumber(-std::nan("")), "NaN");
    EXPECT_EQ(icu.stringFromNumber(kInfinity), "+∞");
    EXPECT_EQ(icu.stringFromNumber(-kInfinity), "-∞");
    EXPECT_EQ(icu.stringFromNumber(-0.0), "-0");
    const auto largest = icu.stringFromNumber(std::numeric_limits<double>::max());
    ASSERT_TRUE(largest);
    EXPECT_EQ(largest->size(), 309U + 102U);
}

TEST(ICUNumberFormatter, followsTheLocale)
{
    struct Row {
        const char* locale;
        double number;
        const char* expected;
    };
    const Row rows[] = {
        {"de_DE", 1234567.875, "1.234.567,875"},
        {"de_CH", 1234567.5, "1’234’567.5"},
        {"fr_FR", 1234.5, "1\u202F234,5"},
        {"en_IN", 1234567.0, "12,34,567"},
        {"ar_EG", 12.5, "١٢٫٥"},
        {"no such locale", 1234.5, "1,234.5"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(ICUNumberFormatter(row.locale).stringFromNumber(row.number), row.expected) << row.locale;
}

TEST(ICUNumberFormatter, copiesAreIndependentAndEqual)
{
    auto original = std::make_unique<ICUNumberFormatter>("de_DE");
    const std::shared_ptr<NumberFormatter> copy = original->copy();
    original.reset();
    EXPECT_EQ(copy->stringFromNumber(1234.5), "1.234,5");
    const auto* sameClass = dynamic_cast<const ICUNumberFormatter*>(copy.get());
    ASSERT_NE(sameClass, nullptr);
    EXPECT_EQ(sameClass->locale(), "de_DE");
}
