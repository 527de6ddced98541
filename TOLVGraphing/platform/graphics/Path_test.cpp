#include "Path.h"

#include "CurrentContext.h"
#include "RecordingContext.h"

#include <gtest/gtest.h>

namespace TOLVGraphing {
namespace {

using Lines = std::vector<std::string>;

TEST(Path, RectanglesRunCounterClockwiseFromTheOrigin)
{
    EXPECT_EQ(toString(Path::pathWithRect({1.0, 2.0, 10.0, 20.0})), "M 1 2 L 11 2 L 11 22 L 1 22 Z");
    EXPECT_EQ(toString(Path::pathWithRect({1.0, 2.0, 10.0, -20.0})), "M 1 2 L 11 2 L 11 -18 L 1 -18 Z");
}

TEST(Path, RoundedRectanglesHaveFourCurvesJoinedByLines)
{
    const Path path = Path::pathWithRoundedRect({0.0, 0.0, 100.0, 50.0}, 10.0, 20.0);
    EXPECT_EQ(toString(path),
        "M 10 0 L 90 0 C 95.522847498 0 100 8.954305004 100 20 L 100 30 C 100 41.045694996 95.522847498 50 90 50 "
        "L 10 50 C 4.477152502 50 0 41.045694996 0 30 L 0 20 C 0 8.954305004 4.477152502 0 10 0 Z");
    EXPECT_EQ(path.bounds(), Rect(0.0, 0.0, 100.0, 50.0));
}

TEST(Path, RoundedRectanglesLimitTheirRadii)
{
    const Path limited = Path::pathWithRoundedRect({0.0, 0.0, 8.0, 4.0}, 100.0, 100.0);
    EXPECT_EQ(limited, Path::pathWithRoundedRect({0.0, 0.0, 8.0, 4.0}, 4.0, 2.0));
    EXPECT_EQ(limited.points().front(), (Point{4.0, 0.0}));
    EXPECT_EQ(Path::pathWithRoundedRect({0.0, 0.0, 8.0, 4.0}, 0.0, 0.0).bounds(), Rect(0.0, 0.0, 8.0, 4.0));
}

TEST(Path, OvalsAreFourCurvesThatTouchTheSides)
{
    const Path path = Path::pathWithOvalInRect({-10.0, -20.0, 20.0, 40.0});
    EXPECT_EQ(toString(path),
        "M 10 0 C 10 11.045694996 5.522847498 20 0 20 C -5.522847498 20 -10 11.045694996 -10 0 "
        "C -10 -11.045694996 -5.522847498 -20 0 -20 C 5.522847498 -20 10 -11.045694996 10 0 Z");
    EXPECT_EQ(path.bounds(), Rect(-10.0, -20.0, 20.0, 40.0));
}

TEST(Path, ShapesHaveTheirRectanglesBounds)
{
    for (const Rect& rect : {Rect(0.1, 0.2, 0.3, 0.7), Rect(-1234.5, 17.25, 331.125, 4.0), Rect(1e6, -1e6, 12.5, 12.5), Rect(3.0, 4.0, 1e-7, 1e-9)}) {
        // The last coordinate is origin plus size rounded once, so the size comes back within that rounding.
        const Rect expected{rect.x(), rect.y(), rect.maxX() - rect.x(), rect.maxY() - rect.y()};
        EXPECT_EQ(Path::pathWithRect(rect).bounds(), expected);
        EXPECT_EQ(Path::pathWithRoundedRect(rect, rect.width() / 3.0, rect.height() / 5.0).bounds(), expected);
    }
}

TEST(Path, BoundsAreTight)
{
    struct Case {
        const char* name;
        Point start;
        Point control1;
        Point control2;
        Point end;
        Rect expected;
    };
    const Case cases[] = {
        {"arch", {0.0, 0.0}, {0.0, 4.0}, {8.0, 4.0}, {8.0, 0.0}, {0.0, 0.0, 8.0, 3.0}},
        {"arch below", {0.0, 0.0}, {0.0, -4.0}, {8.0, -4.0}, {8.0, 0.0}, {0.0, -3.0, 8.0, 3.0}},
        {"arch to the side", {0.0, 0.0}, {4.0, 0.0}, {4.0, 8.0}, {0.0, 8.0}, {0.0, 0.0, 3.0, 8.0}},
        {"straight", {1.0, 1.0}, {2.0, 2.0}, {3.0, 3.0}, {4.0, 4.0}, {1.0, 1.0, 3.0, 3.0}},
        {"a point", {5.0, 6.0}, {5.0, 6.0}, {5.0, 6.0}, {5.0, 6.0}, {5.0, 6.0, 0.0, 0.0}},
        {"tiny arch", {0.0, 0.0}, {0.0, 0x1p-58}, {0x1p-57, 0x1p-58}, {0x1p-57, 0.0}, {0.0, 0.0, 0x1p-57, 0x1.8p-59}},
        {"large arch", {0.0, 0.0}, {0.0, 4e15}, {8e15, 4e15}, {8e15, 0.0}, {0.0, 0.0, 8e15, 3e15}},
    };
    for (const Case& one : cases) {
        Path path;
        path.moveToPoint(one.start);
        path.addCurveToPoint(one.end, one.control1, one.control2);
        EXPECT_EQ(path.bounds(), one.expected) << one.name;
    }
}

TEST(Path, BoundsHoldBothTurnsOfACurve)
{
    Path path;
    path.moveToX(0.0, 0.0);
    path.addCurveToPoint({3.0, 0.0}, {1.0, 3.0}, {2.0, -3.0});
    // The turns are at t = (3 -+ sqrt 3) / 6 and reach sqrt 3 / 2.
    EXPECT_NEAR(path.bounds().maxY(), 0.8660254037844386, 1e-15);
    EXPECT_NEAR(path.bounds().y(), -0.8660254037844386, 1e-15);
}

TEST(Path, BoundsSurviveCoefficientsThatAreOnlyRounding)
{
    // The cubic coefficient of these arches is zero; away from the origin it comes out as rounding noise that the turn must not depend on.
    for (int i = 0; i < 200; ++i) {
        const double bottom = 10000.1 + 0.1 * i;
        Path path;
        path.moveToX(0.0, bottom);
        path.addCurveToPoint({3.0, bottom + 150.0}, {1.0, bottom + 400.0}, {2.0, bottom + 450.0});
        // The turn is at 4/7; the tolerance is the rounding of the coordinates.
        EXPECT_NEAR(path.bounds().height(), 16800.0 / 49.0, 1e-11) << bottom;
    }
}

TEST(Path, BoundsFollowAClosedPartFromItsStart)
{
    Path path;
    path.moveToX(0.0, 0.0);
    path.addLineToX(100.0, 0.0);
    path.addLineToX(100.0, 10.0);
    path.closeSubpath();
    // From (0, 0), where the closed part began, and not from (100, 10).
    path.addCurveToPoint({8.0, 0.0}, {0.0, 40.0}, {8.0, 40.0});
    EXPECT_EQ(path.bounds(), Rect(0.0, 0.0, 100.0, 30.0));
}

TEST(Path, EmptyPathsHaveZeroBounds)
{
    Path path;
    EXPECT_TRUE(path.isEmpty());
    EXPECT_EQ(path.bounds(), Rect());
    EXPECT_EQ(toString(path), "");
    path.closeSubpath();
    EXPECT_TRUE(path.isEmpty());
}

TEST(Path, TheFirstElementIsAMove)
{
    Path line;
    line.addLineToX(3.0, 4.0);
    line.addLineToX(5.0, 6.0);
    EXPECT_EQ(toString(line), "M 3 4 L 5 6");
    Path curve;
    curve.addCurveToPoint({5.0, 6.0}, {1.0, 2.0}, {3.0, 4.0});
    EXPECT_EQ(toString(curve), "M 1 2 C 1 2 3 4 5 6");
}

TEST(Path, BuildingAppliesATransform)
{
    const AffineTransform doubled{2.0, 0.0, 0.0, 2.0, 1.0, 0.0};
    Path path;
    path.moveToX(1.0, 1.0, &doubled);
    path.addLineToX(2.0, 1.0, &doubled);
    path.addCurveToPoint({3.0, 3.0}, {1.0, 2.0}, {2.0, 2.0}, &doubled);
    path.addRect({0.0, 0.0, 1.0, 1.0}, &doubled);
    EXPECT_EQ(toString(path), "M 3 2 L 5 2 C 3 4 5 4 7 6 M 1 0 L 3 0 L 3 2 L 1 2 Z");
    Path later;
    later.moveToX(1.0, 1.0);
    later.addLineToX(2.0, 1.0);
    later.transformUsingAffineTransform(doubled);
    EXPECT_EQ(toString(later), "M 3 2 L 5 2");
}

TEST(Path, AppendsPathsAndItself)
{
    Path path = Path::pathWithRect({0.0, 0.0, 1.0, 1.0});
    Path other;
    other.moveToX(5.0, 5.0);
    other.setLineWidth(3.0);
    path.addPath(other);
    EXPECT_EQ(toString(path), "M 0 0 L 1 0 L 1 1 L 0 1 Z M 5 5");
    EXPECT_FALSE(path.lineWidth().has_value());
    other.addPath(other);
    EXPECT_EQ(toString(other), "M 5 5 M 5 5");
}

TEST(Path, CopiesAreIndependent)
{
    Path path = Path::pathWithRect({0.0, 0.0, 1.0, 1.0});
    const Path copy = path;
    path.addLineToX(9.0, 9.0);
    EXPECT_NE(path, copy);
    EXPECT_EQ(toString(copy), "M 0 0 L 1 0 L 1 1 L 0 1 Z");
    path.removeAllPoints();
    EXPECT_TRUE(path.isEmpty());
}

TEST(Path, StrokesWithItsOwnWidthAndDashAndRestores)
{
    RecordingContext context;
    const CurrentContextScope scope(context);
    Path path;
    path.moveToX(0.0, 0.0);
    path.addLineToX(1.0, 0.0);
    path.stroke();
    path.setLineWidth(2.5);
    path.stroke();
    path.setLineDash(LineDash{{3.0, 1.0}, 0.5});
    path.stroke();
    path.setLineWidth(std::nullopt);
    path.stroke();
    const Lines expected{"stroke M 0 0 L 1 0",                                           //
        "save", "lineWidth 2.5", "stroke M 0 0 L 1 0", "restore",                        //
        "save", "lineWidth 2.5", "lineDash 0.5 [3, 1]", "stroke M 0 0 L 1 0", "restore", //
        "save", "lineDash 0.5 [3, 1]", "stroke M 0 0 L 1 0", "restore"};
    EXPECT_EQ(context.calls(), expected);
    EXPECT_EQ(context.depth(), 0);
}

TEST(Path, FillsAndClipsTheCurrentContext)
{
    RecordingContext context;
    const Path path = Path::pathWithRect({0.0, 0.0, 1.0, 1.0});
    {
        const CurrentContextScope scope(context);
        path.fill();
        path.addClip();
    }
    EXPECT_EQ(context.calls(), (Lines{"fill M 0 0 L 1 0 L 1 1 L 0 1 Z", "clip M 0 0 L 1 0 L 1 1 L 0 1 Z"}));
    // Without a context nothing is drawn, and nothing goes wrong.
    path.fill();
    path.stroke();
    path.addClip();
    EXPECT_EQ(context.calls().size(), 2U);
}

} // namespace
} // namespace TOLVGraphing
