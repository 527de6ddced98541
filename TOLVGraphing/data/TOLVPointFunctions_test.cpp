#include "TOLVPointFunctions.h"

#include <gtest/gtest.h>

#include <cmath>

namespace TOLVGraphing {
namespace {

TEST(TOLVPointFunctions, MidpointLiesHalfWay)
{
    EXPECT_EQ(toString(TOLVNSPointMidpoint({1.0, 2.0}, {4.0, -6.0})), "(2.5, -2)");
}

TEST(TOLVPointFunctions, FractionalMidpointReachesBothEnds)
{
    struct Case {
        float fraction;
        Point expected;
    };
    const Point a{1.0, 10.0};
    const Point b{5.0, 2.0};
    for (const Case& one : {Case{0.0F, a}, Case{1.0F, b}, Case{0.25F, {2.0, 8.0}}, Case{-0.5F, {-1.0, 14.0}}, Case{2.0F, {9.0, -6.0}}})
        EXPECT_EQ(toString(TOLVNSPointFractionalMidpoint(a, b, one.fraction)), toString(one.expected));
}

TEST(TOLVPointFunctions, FractionIsSinglePrecision)
{
    EXPECT_EQ(TOLVNSPointFractionalMidpoint({0.0, 0.0}, {1.0, 1.0}, 0.1F).x, static_cast<double>(0.1F));
}

TEST(TOLVPointFunctions, SegmentLengthRootsInSinglePrecision)
{
    EXPECT_EQ(TOLVNSPointSegmentLength({1.0, 1.0}, {4.0, 5.0}), 5.0F);
    EXPECT_EQ(TOLVNSPointSegmentLength({2.0, 3.0}, {2.0, 3.0}), 0.0F);
    EXPECT_EQ(TOLVNSPointSegmentLength({0.0, 0.0}, {0.1, 0.2}), std::sqrt(static_cast<float>(0.2 * 0.2 + 0.1 * 0.1)));
}

TEST(TOLVPointFunctions, DrawPointIsZeroed)
{
    TOLVDrawPoint drawPoint{{1.0, 2.0}, {{{3.0, 4.0}, {5.0, 6.0}}}};
    TOLVDrawPointInit(drawPoint);
    EXPECT_EQ(drawPoint.p, Point{});
    EXPECT_EQ(drawPoint.cp[0], Point{});
    EXPECT_EQ(drawPoint.cp[1], Point{});
}

} // namespace
} // namespace TOLVGraphing
