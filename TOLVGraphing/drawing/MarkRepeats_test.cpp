#include "MarkRepeats.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace TOLVGraphing {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
const Rect kArea(0.0, 0.0, 200.0, 100.0);

/// How many of so many marks at one place are painted.
int paintedOf(MarkRepeats& repeats, int count, Point place)
{
    int painted = 0;
    for (int i = 0; i < count; ++i)
        painted += repeats.paints(place) ? 1 : 0;
    return painted;
}

TEST(MarkRepeats, AMarkIsPaintedOverItself255Times)
{
    MarkRepeats repeats(kArea);
    EXPECT_EQ(paintedOf(repeats, 254, {50.0, 50.0}), 254);
    EXPECT_TRUE(repeats.paints({50.0, 50.0}));
    EXPECT_EQ(paintedOf(repeats, 1000, {50.0, 50.0}), 0);
}

TEST(MarkRepeats, AMarkNearbyBeginsTheCountAnew)
{
    struct Case {
        Point other;
        bool isNear;
    };
    const Case cases[] = {
        {{51.0, 50.0}, true},
        {{50.0, 49.0}, true},
        {{74.0, 50.0}, true},
        {{26.0, 74.0}, true},
        {{50.0, 26.0}, true},
        {{75.0, 50.0}, false},
        {{25.0, 50.0}, false},
        {{50.0, 75.0}, false},
        {{50.0, 25.0}, false},
    };
    for (const Case& c : cases) {
        MarkRepeats repeats(kArea);
        ASSERT_EQ(paintedOf(repeats, 300, {50.0, 50.0}), 255);
        ASSERT_TRUE(repeats.paints(c.other));
        EXPECT_EQ(paintedOf(repeats, 300, {50.0, 50.0}), c.isNear ? 255 : 0) << toString(c.other);
    }
}

TEST(MarkRepeats, AMarkThatIsNotPaintedBeginsNothing)
{
    MarkRepeats repeats(kArea);
    EXPECT_EQ(paintedOf(repeats, 300, {50.0, 50.0}), 255);
    EXPECT_EQ(paintedOf(repeats, 300, {150.0, 50.0}), 255);
    // By turns, far from each other.
    for (int i = 0; i < 10; ++i) {
        EXPECT_FALSE(repeats.paints({50.0, 50.0}));
        EXPECT_FALSE(repeats.paints({150.0, 50.0}));
    }
}

TEST(MarkRepeats, MarksByTurnsAreCountedEachByItself)
{
    MarkRepeats repeats(kArea);
    int far = 0;
    for (int i = 0; i < 300; ++i)
        far += (repeats.paints({50.0, 50.0}) ? 1 : 0) + (repeats.paints({80.0, 50.0}) ? 1 : 0);
    EXPECT_EQ(far, 2 * 255);
    int near = 0;
    for (int i = 0; i < 300; ++i)
        near += (repeats.paints({120.0, 50.0}) ? 1 : 0) + (repeats.paints({121.0, 50.0}) ? 1 : 0);
    EXPECT_EQ(near, 2 * 300);
}

TEST(MarkRepeats, TheAreaReachesOutwardsToWholePoints)
{
    for (const Point& corner : {Point{-3.0, 3.0}, Point{1.0, 3.0}, Point{-3.0, 4.0}, Point{1.0, 4.0}}) {
        MarkRepeats repeats({-2.5, 3.0, 4.0, 1.5});
        EXPECT_EQ(paintedOf(repeats, 300, corner), 255) << toString(corner);
    }
}

TEST(MarkRepeats, PlacesOutsideAreNotCounted)
{
    for (const Rect& area : {Rect(0.0, 0.0, 2.0, 2.0), Rect(), Rect(5.0, 5.0, -2.0, 2.0), Rect(0.0, 0.0, 1e9, 1e9), Rect(kNaN, 0.0, 2.0, 2.0)}) {
        MarkRepeats repeats(area);
        for (const Point& place : {Point{2.0, 0.0}, Point{0.0, -1.0}, Point{-1e300, 1e300}})
            EXPECT_EQ(paintedOf(repeats, 300, place), 300) << toString(area) << " " << toString(place);
    }
}

} // namespace
} // namespace TOLVGraphing
