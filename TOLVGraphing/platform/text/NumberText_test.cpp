#include "NumberText.h"

#include <gtest/gtest.h>

#include <limits>

namespace TOLVGraphing {
namespace {

TEST(NumberText, HasTheShortestDigitsOfADouble)
{
    struct Case {
        double number;
        const char* expected;
    };
    const Case cases[] = {
        {0.0, "0"},
        {-0.0, "-0"},
        {1.0, "1"},
        {-2.5, "-2.5"},
        {0.1, "0.1"},
        {1.0 / 3.0, "0.3333333333333333"},
        {100000.0, "1e+05"},
        {123456.0, "123456"},
        {1e300, "1e+300"},
        {5e-324, "5e-324"},
        {std::numeric_limits<double>::max(), "1.7976931348623157e+308"},
        {std::numeric_limits<double>::infinity(), "inf"},
        {-std::numeric_limits<double>::infinity(), "-inf"},
        {std::numeric_limits<double>::quiet_NaN(), "nan"},
        {-std::numeric_limits<double>::quiet_NaN(), "nan"},
    };
    for (const Case& one : cases)
        EXPECT_EQ(shortestText(one.number), one.expected);
}

TEST(NumberText, HasTheShortestDigitsOfAFloat)
{
    EXPECT_EQ(shortestText(0.1F), "0.1");
    EXPECT_EQ(shortestText(static_cast<double>(0.1F)), "0.10000000149011612");
    EXPECT_EQ(shortestText(16777216.0F), "16777216");
    EXPECT_EQ(shortestText(1e-45F), "1e-45");
    EXPECT_EQ(shortestText(-std::numeric_limits<float>::quiet_NaN()), "nan");
}

} // namespace
} // namespace TOLVGraphing
