#include "Rect.h"

#include <gtest/gtest.h>

#include <limits>

namespace TOLVGraphing {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(Rect, IntegralRectGrowsToWholeCoordinates)
{
    struct Case {
        Rect rect;
        Rect expected;
    };
    const Case cases[] = {
        {{0.0, 0.0, 10.0, 20.0}, {0.0, 0.0, 10.0, 20.0}},
        {{0.2, 0.7, 10.0, 20.0}, {0.0, 0.0, 11.0, 21.0}},
        {{-0.2, -0.7, 10.0, 20.0}, {-1.0, -1.0, 11.0, 21.0}},
        {{-10.5, 3.0, 10.5, 0.1}, {-11.0, 3.0, 11.0, 1.0}},
        {{5.5, 5.5, 0.25, 0.25}, {5.0, 5.0, 1.0, 1.0}},
        {{5.0, 5.0, 1e-9, 1e-9}, {5.0, 5.0, 1.0, 1.0}},
        // Empty and negative rectangles give the zero rectangle, wherever they are.
        {{5.5, 5.5, 0.0, 3.0}, {}},
        {{5.5, 5.5, 3.0, 0.0}, {}},
        {{5.5, 5.5, -1.0, 3.0}, {}},
        {{5.5, 5.5, 3.0, -1.0}, {}},
        {{5.5, 5.5, kNaN, 3.0}, {}},
    };
    for (const Case& one : cases)
        EXPECT_EQ(integralRect(one.rect), one.expected) << toString(one.rect);
}

TEST(Rect, InsetRectIsRaw)
{
    struct Case {
        Rect rect;
        double dx;
        double dy;
        Rect expected;
    };
    const Case cases[] = {
        {{1.0, 2.0, 10.0, 20.0}, 1.0, 2.0, {2.0, 4.0, 8.0, 16.0}},
        {{1.0, 2.0, 10.0, 20.0}, -1.0, -2.0, {0.0, 0.0, 12.0, 24.0}},
        {{1.0, 2.0, 10.0, 20.0}, 5.0, 10.0, {6.0, 12.0, 0.0, 0.0}},
        {{1.0, 2.0, 10.0, 20.0}, 6.0, 11.0, {7.0, 13.0, -2.0, -2.0}},
        {{0.0, 0.0, 0.0, 0.0}, 0.5, 0.5, {0.5, 0.5, -1.0, -1.0}},
    };
    for (const Case& one : cases)
        EXPECT_EQ(insetRect(one.rect, one.dx, one.dy), one.expected) << toString(one.rect);
}

TEST(Rect, OffsetRectMovesTheOriginOnly)
{
    EXPECT_EQ(offsetRect({1.0, 2.0, 3.0, 4.0}, 10.0, -20.0), Rect(11.0, -18.0, 3.0, 4.0));
    EXPECT_EQ(offsetRect({1.0, 2.0, -3.0, 0.0}, 0.5, 0.5), Rect(1.5, 2.5, -3.0, 0.0));
}

struct PairCase {
    const char* name;
    Rect a;
    Rect b;
    Rect intersection;
    bool intersects;
};

const PairCase kPairs[] = {
    {"overlapping", {0.0, 0.0, 10.0, 10.0}, {5.0, 6.0, 10.0, 10.0}, {5.0, 6.0, 5.0, 4.0}, true},
    {"inside", {0.0, 0.0, 10.0, 10.0}, {2.0, 3.0, 4.0, 5.0}, {2.0, 3.0, 4.0, 5.0}, true},
    {"equal", {1.0, 2.0, 3.0, 4.0}, {1.0, 2.0, 3.0, 4.0}, {1.0, 2.0, 3.0, 4.0}, true},
    {"crossing", {0.0, 4.0, 10.0, 2.0}, {4.0, 0.0, 2.0, 10.0}, {4.0, 4.0, 2.0, 2.0}, true},
    {"disjoint in x", {0.0, 0.0, 10.0, 10.0}, {11.0, 0.0, 10.0, 10.0}, {}, false},
    {"disjoint in y", {0.0, 0.0, 10.0, 10.0}, {0.0, 11.0, 10.0, 10.0}, {}, false},
    {"touching sides", {0.0, 0.0, 10.0, 10.0}, {10.0, 0.0, 10.0, 10.0}, {}, false},
    {"touching tops", {0.0, 0.0, 10.0, 10.0}, {0.0, 10.0, 10.0, 10.0}, {}, false},
    {"touching corners", {0.0, 0.0, 10.0, 10.0}, {10.0, 10.0, 10.0, 10.0}, {}, false},
    {"no width", {0.0, 0.0, 10.0, 10.0}, {5.0, 5.0, 0.0, 2.0}, {}, false},
    {"no height", {0.0, 0.0, 10.0, 10.0}, {5.0, 5.0, 2.0, 0.0}, {}, false},
    {"negative width", {0.0, 0.0, 10.0, 10.0}, {8.0, 5.0, -4.0, 2.0}, {}, false},
    {"NaN place", {0.0, 0.0, 10.0, 10.0}, {kNaN, 5.0, 2.0, 2.0}, {}, false},
    {"NaN size", {0.0, 0.0, 10.0, 10.0}, {5.0, 5.0, 2.0, kNaN}, {}, false},
};

TEST(Rect, IntersectsOnlyWhereInteriorsOverlap)
{
    for (const PairCase& one : kPairs) {
        EXPECT_EQ(intersectsRect(one.a, one.b), one.intersects) << one.name;
        EXPECT_EQ(intersectsRect(one.b, one.a), one.intersects) << one.name;
    }
}

TEST(Rect, IntersectionOfTouchingOrDisjointRectanglesIsZero)
{
    for (const PairCase& one : kPairs) {
        EXPECT_EQ(intersectionRect(one.a, one.b), one.intersection) << one.name;
        EXPECT_EQ(intersectionRect(one.b, one.a), one.intersection) << one.name;
    }
}

TEST(Rect, UnionLeavesEmptyRectanglesOut)
{
    const Rect a{0.0, 0.0, 10.0, 10.0};
    EXPECT_EQ(unionRect(a, {20.0, -5.0, 5.0, 5.0}), Rect(0.0, -5.0, 25.0, 15.0));
    EXPECT_EQ(unionRect({20.0, -5.0, 5.0, 5.0}, a), Rect(0.0, -5.0, 25.0, 15.0));
    EXPECT_EQ(unionRect(a, {50.0, 50.0, 0.0, 5.0}), a);
    EXPECT_EQ(unionRect({50.0, 50.0, 0.0, 5.0}, a), a);
    EXPECT_EQ(unionRect(a, {2.0, 2.0, 2.0, 2.0}), a);
}

TEST(Rect, EndsAreOriginPlusSize)
{
    const Rect rect{1.5, -2.0, 4.0, 8.0};
    EXPECT_EQ(rect.maxX(), 5.5);
    EXPECT_EQ(rect.maxY(), 6.0);
    EXPECT_EQ(Rect(3.0, 3.0, -2.0, -1.0).maxX(), 1.0);
    EXPECT_EQ(Rect(3.0, 3.0, -2.0, -1.0).maxY(), 2.0);
}

TEST(Rect, IsEmptyWithoutPositiveArea)
{
    struct Case {
        double width;
        double height;
        bool empty;
    };
    const Case cases[] = {
        {1.0, 1.0, false},
        {5e-324, 5e-324, false},
        {0.0, 1.0, true},
        {1.0, 0.0, true},
        {-1.0, 1.0, true},
        {1.0, -1.0, true},
        {kNaN, 1.0, true},
        {1.0, kNaN, true},
    };
    for (const Case& one : cases)
        EXPECT_EQ(Rect(0.0, 0.0, one.width, one.height).isEmpty(), one.empty) << one.width << " x " << one.height;
}

TEST(Rect, IsValidWhenAllNumbersAreFinite)
{
    EXPECT_TRUE(Rect().valid());
    EXPECT_TRUE(Rect(1.0, 2.0, -3.0, 0.0).valid());
    for (const double number : {kNaN, kInfinity, -kInfinity}) {
        EXPECT_FALSE(Rect(number, 0.0, 1.0, 1.0).valid());
        EXPECT_FALSE(Rect(0.0, number, 1.0, 1.0).valid());
        EXPECT_FALSE(Rect(0.0, 0.0, number, 1.0).valid());
        EXPECT_FALSE(Rect(0.0, 0.0, 1.0, number).valid());
    }
}

TEST(Rect, TextIsOriginAndSize)
{
    EXPECT_EQ(toString(Rect(0.1, -2.0, 3.0, 4.5)), "(0.1, -2, 3, 4.5)");
}

} // namespace
} // namespace TOLVGraphing
