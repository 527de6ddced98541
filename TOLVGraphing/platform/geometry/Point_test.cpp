#include "Point.h"

#include <gtest/gtest.h>

#include <limits>

namespace TOLVGraphing {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kLargest = std::numeric_limits<double>::max();

TEST(Point, IsValidWhenBothCoordinatesAreFinite)
{
    struct Case {
        double number;
        bool valid;
    };
    const Case cases[] = {
        {0.0, true},
        {-0.0, true},
        {5e-324, true},
        {kLargest, true},
        {-kLargest, true}, //
        {kNaN, false},
        {-kNaN, false},
        {kInfinity, false},
        {-kInfinity, false},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(valid(one.number), one.valid) << one.number;
        EXPECT_EQ((Point{one.number, 1.0}.valid()), one.valid) << one.number;
        EXPECT_EQ((Point{1.0, one.number}.valid()), one.valid) << one.number;
        EXPECT_EQ((Size{one.number, 1.0}.valid()), one.valid) << one.number;
        EXPECT_EQ((Size{1.0, one.number}.valid()), one.valid) << one.number;
    }
}

TEST(Point, NegativeSizesAreValid)
{
    EXPECT_TRUE((Size{-3.0, 0.0}.valid()));
}

TEST(Point, ComparesByCoordinates)
{
    EXPECT_EQ((Point{1.0, 2.0}), (Point{1.0, 2.0}));
    EXPECT_NE((Point{1.0, 2.0}), (Point{1.0, 3.0}));
    EXPECT_NE((Point{1.0, 2.0}), (Point{0.0, 2.0}));
    EXPECT_EQ((Size{1.0, 2.0}), (Size{1.0, 2.0}));
    EXPECT_NE((Size{1.0, 2.0}), (Size{2.0, 1.0}));
    EXPECT_EQ(Point(), (Point{0.0, 0.0}));
}

TEST(Point, TextHasTheShortestDigits)
{
    EXPECT_EQ(toString(Point{0.1, -2.0}), "(0.1, -2)");
    EXPECT_EQ(toString(Point{1.0 / 3.0, 1e300}), "(0.3333333333333333, 1e+300)");
    EXPECT_EQ(toString(Size{2.5, -0.0}), "(2.5, -0)");
}

} // namespace
} // namespace TOLVGraphing
