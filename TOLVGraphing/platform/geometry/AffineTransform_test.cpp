#include "AffineTransform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace TOLVGraphing {
namespace {

TEST(AffineTransform, IsTheIdentityByDefault)
{
    const AffineTransform identity;
    EXPECT_TRUE(identity.isIdentity());
    EXPECT_EQ(identity.apply(Point{3.0, -4.0}), (Point{3.0, -4.0}));
    EXPECT_EQ(toString(identity), "[1 0 0 1 0 0]");
}

TEST(AffineTransform, MapsPointsByItsSixNumbers)
{
    const AffineTransform transform{2.0, 3.0, 5.0, 7.0, 11.0, 13.0};
    EXPECT_EQ(transform.apply(Point{0.0, 0.0}), (Point{11.0, 13.0}));
    EXPECT_EQ(transform.apply(Point{1.0, 0.0}), (Point{13.0, 16.0}));
    EXPECT_EQ(transform.apply(Point{0.0, 1.0}), (Point{16.0, 20.0}));
    EXPECT_EQ(transform.apply(Point{10.0, 100.0}), (Point{531.0, 743.0}));
    EXPECT_EQ(toString(transform), "[2 3 5 7 11 13]");
}

TEST(AffineTransform, OperationsActBeforeWhatIsThere)
{
    AffineTransform scaledThenMoved;
    scaledThenMoved.scaleXBy(2.0, 3.0);
    scaledThenMoved.translateXBy(10.0, 20.0);
    EXPECT_EQ(scaledThenMoved, (AffineTransform{2.0, 0.0, 0.0, 3.0, 20.0, 60.0}));
    EXPECT_EQ(scaledThenMoved.apply(Point{1.0, 1.0}), (Point{22.0, 63.0}));

    AffineTransform movedThenScaled;
    movedThenScaled.translateXBy(10.0, 20.0);
    movedThenScaled.scaleXBy(2.0, 3.0);
    EXPECT_EQ(movedThenScaled, (AffineTransform{2.0, 0.0, 0.0, 3.0, 10.0, 20.0}));
}

TEST(AffineTransform, ConcatenateAppliesItsArgumentFirst)
{
    const AffineTransform first{2.0, 3.0, 5.0, 7.0, 11.0, 13.0};
    const AffineTransform second{1.0, -1.0, 4.0, 2.0, -3.0, 6.0};
    AffineTransform both = second;
    both.concatenate(first);
    for (const Point point : {Point{0.0, 0.0}, Point{1.0, 0.0}, Point{0.0, 1.0}, Point{-3.0, 8.0}})
        EXPECT_EQ(both.apply(point), second.apply(first.apply(point)));
    AffineTransform itself = first;
    itself.concatenate(itself);
    EXPECT_EQ(itself.apply(Point{1.0, 2.0}), first.apply(first.apply(Point{1.0, 2.0})));
}

TEST(AffineTransform, TurnsCounterClockwise)
{
    // The cosine of a quarter turn in doubles is 6e-17, hence the tolerance of 1e-15.
    AffineTransform quarter;
    quarter.rotateDegrees(90.0);
    EXPECT_NEAR(quarter.apply(Point{1.0, 0.0}).x, 0.0, 1e-15);
    EXPECT_EQ(quarter.apply(Point{1.0, 0.0}).y, 1.0);
    EXPECT_EQ(quarter.apply(Point{0.0, 1.0}).x, -1.0);

    AffineTransform radians;
    radians.rotateRadians(0.5);
    EXPECT_EQ(radians, (AffineTransform{std::cos(0.5), std::sin(0.5), -std::sin(0.5), std::cos(0.5), 0.0, 0.0}));
}

TEST(AffineTransform, TurnsAboutAPointThatStays)
{
    AffineTransform half;
    half.rotateDegrees(180.0, {10.0, 20.0});
    const Point centre = half.apply(Point{10.0, 20.0});
    EXPECT_NEAR(centre.x, 10.0, 1e-14);
    EXPECT_NEAR(centre.y, 20.0, 1e-14);
    const Point opposite = half.apply(Point{11.0, 22.0});
    EXPECT_NEAR(opposite.x, 9.0, 1e-14);
    EXPECT_NEAR(opposite.y, 18.0, 1e-14);
}

TEST(AffineTransform, RectanglesBecomeTheirBoundingBox)
{
    AffineTransform mirrored;
    mirrored.scaleXBy(-2.0, 1.0);
    EXPECT_EQ(mirrored.apply(Rect(1.0, 2.0, 3.0, 4.0)), Rect(-8.0, 2.0, 6.0, 4.0));
    const AffineTransform sheared{1.0, 0.0, 1.0, 1.0, 0.0, 0.0};
    EXPECT_EQ(sheared.apply(Rect(0.0, 0.0, 2.0, 3.0)), Rect(0.0, 0.0, 5.0, 3.0));
    // A negative size spans the same area from its other end.
    EXPECT_EQ(AffineTransform().apply(Rect(4.0, 6.0, -3.0, -4.0)), Rect(1.0, 2.0, 3.0, 4.0));
}

TEST(AffineTransform, InverseUndoes)
{
    AffineTransform transform;
    transform.translateXBy(8.0, -16.0);
    transform.scaleXBy(4.0, 0.5);
    EXPECT_EQ(transform.inverted(), (AffineTransform{0.25, 0.0, 0.0, 2.0, -2.0, 32.0}));
    const AffineTransform quarterTurn{0.0, 1.0, -1.0, 0.0, 3.0, 5.0};
    const AffineTransform back = quarterTurn.inverted();
    for (const Point point : {Point{0.0, 0.0}, Point{1.0, 2.0}, Point{-7.0, 0.5}})
        EXPECT_EQ(back.apply(quarterTurn.apply(point)), point);
}

TEST(AffineTransform, WhatCannotBeUndoneInvertsToTheIdentity)
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const AffineTransform& flat : {AffineTransform{0.0, 0.0, 0.0, 1.0, 5.0, 6.0}, AffineTransform{1.0, 2.0, 2.0, 4.0, 0.0, 0.0}, AffineTransform{nan, 0.0, 0.0, 1.0, 0.0, 0.0},
             AffineTransform{infinity, 0.0, 0.0, 1.0, 0.0, 0.0}})
        EXPECT_TRUE(flat.inverted().isIdentity()) << toString(flat);
}

} // namespace
} // namespace TOLVGraphing
