#include "PathWindow.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace TOLVGraphing;
using namespace TOLVGraphing::paint;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
const Rect kWindow{0.0, 0.0, 100.0, 100.0};

Path polyline(std::initializer_list<Point> points, bool closed = false)
{
    Path path;
    for (const Point& point : points)
        path.addLineToPoint(point);
    if (closed)
        path.closeSubpath();
    return path;
}

std::string textOf(const std::vector<StrokeRun>& runs)
{
    std::string text;
    for (const StrokeRun& run : runs) {
        text += run.isClosed ? "closed" : "open";
        for (const Point& point : run.points)
            text += " " + toString(point);
        text += "; ";
    }
    return text;
}

double areaOf(const Path& path)
{
    double twice = 0.0;
    const auto points = path.points();
    for (std::size_t i = 0; i < points.size(); ++i) {
        const Point a = points[i];
        const Point b = points[(i + 1) % points.size()];
        twice += a.x * b.y - b.x * a.y;
    }
    return std::abs(twice) / 2.0;
}

} // namespace

TEST(PathWindow, reachCoversControlPointsAndSkipsNonFiniteOnes)
{
    Path path = polyline({{1.0, 2.0}, {kNaN, 5.0}, {-3.0, 4.0}});
    path.addCurveToPoint({0.0, 0.0}, {7.0, 0.0}, {0.0, 9.0});
    const PathReach reach = reachOfPath(path, {2.0, 0.0, 0.0, 1.0, 0.0, 1.0});
    EXPECT_FALSE(reach.isFinite);
    EXPECT_EQ(reach.low, (Point{-6.0, 1.0}));
    EXPECT_EQ(reach.high, (Point{14.0, 10.0}));
    EXPECT_TRUE(reachOfPath({}, {}).liesWithin(kWindow));
    EXPECT_FALSE(reachOfPath(polyline({{1e308, 0.0}}), {1e10, 0.0, 0.0, 1.0, 0.0, 0.0}).liesWithin({-1e300, -1e300, 2e300, 2e300}));
}

TEST(PathWindow, nonFiniteElementsAreLeftOut)
{
    struct Case {
        Path path;
        const char* expected;
    };
    Path droppedMove = polyline({{0.0, 0.0}, {1.0, 1.0}});
    droppedMove.moveToX(kNaN, 0.0);
    droppedMove.addLineToX(5.0, 5.0);
    droppedMove.addLineToX(6.0, 6.0);
    Path droppedCurve = polyline({{0.0, 0.0}});
    droppedCurve.addCurveToPoint({1.0, 1.0}, {kInfinity, 0.0}, {0.0, 0.0});
    droppedCurve.addCurveToPoint({2.0, 2.0}, {1.0, 0.0}, {0.0, 1.0});
    droppedCurve.closeSubpath();
    const Case cases[] = {
        {polyline({{0.0, 0.0}, {kNaN, 1.0}, {2.0, 2.0}}, true), "M 0 0 L 2 2 Z"},
        {polyline({{kInfinity, 0.0}, {1.0, 1.0}, {2.0, 2.0}}), "M 1 1 L 2 2"},
        {droppedMove, "M 0 0 L 1 1 M 5 5 L 6 6"},
        {droppedCurve, "M 0 0 C 1 0 0 1 2 2 Z"},
        {polyline({{kNaN, 0.0}, {0.0, -kInfinity}}, true), ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(toString(finiteElements(c.path)), c.expected);
}

TEST(PathWindow, linesAreCutAtTheWindow)
{
    struct Case {
        const char* name;
        Path path;
        const char* expected;
    };
    const Case cases[] = {
        {"inside", polyline({{1.0, 1.0}, {9.0, 9.0}}), "open (1, 1) (9, 9); "},
        {"across", polyline({{-1e9, 50.0}, {1e9, 50.0}}), "open (0, 50) (100, 50); "},
        {"past a corner", polyline({{-50.0, 90.0}, {10.0, 180.0}}), ""},
        {"out and back", polyline({{50.0, 50.0}, {150.0, 50.0}, {150.0, 60.0}, {50.0, 60.0}}), "open (50, 50) (100, 50); open (100, 60) (50, 60); "},
        {"closed inside", polyline({{1.0, 1.0}, {9.0, 1.0}, {9.0, 9.0}}, true), "closed (1, 1) (9, 1) (9, 9); "},
        {"closed, joined where it starts", polyline({{50.0, 50.0}, {150.0, 50.0}, {50.0, 170.0}}, true), "open (50, 100) (50, 50) (100, 50); "},
    };
    for (const Case& c : cases)
        EXPECT_EQ(textOf(strokeRunsWithin(c.path, {}, kWindow)), c.expected) << c.name;
}

TEST(PathWindow, runsKnowTheirPlaceAlongTheLine)
{
    // Two device units a point.
    const AffineTransform doubled{2.0, 0.0, 0.0, 2.0, 0.0, 0.0};
    const auto runs = strokeRunsWithin(polyline({{-10.0, 5.0}, {200.0, 5.0}, {200.0, 10.0}, {0.0, 10.0}}), doubled, kWindow);
    ASSERT_EQ(runs.size(), 2U);
    EXPECT_DOUBLE_EQ(runs[0].startLength, 10.0);
    EXPECT_DOUBLE_EQ(runs[1].startLength, 210.0 + 5.0 + 150.0);
}

TEST(PathWindow, curvesAreFollowedInTheWindow)
{
    // A circle so large that it crosses the window as a nearly straight line at x = 50.
    const double radius = 1.0e8;
    const Path circle = Path::pathWithOvalInRect({50.0 - 2.0 * radius, 50.0 - radius, 2.0 * radius, 2.0 * radius});
    const auto runs = strokeRunsWithin(circle, {}, kWindow);
    ASSERT_FALSE(runs.empty());
    for (const StrokeRun& run : runs) {
        for (const Point& point : run.points)
            EXPECT_NEAR(point.x, 50.0, 0.1);
    }
    EXPECT_NEAR(areaOf(filledPathWithin(circle, {}, kWindow)), 5000.0, 10.0);
}

TEST(PathWindow, fillsKeepTheirInside)
{
    EXPECT_DOUBLE_EQ(areaOf(filledPathWithin(Path::pathWithRect({-1e12, -1e12, 2e12, 2e12}), {}, kWindow)), 10000.0);
    EXPECT_DOUBLE_EQ(areaOf(filledPathWithin(Path::pathWithRect({50.0, 25.0, 1e300, 1e300}), {}, kWindow)), 50.0 * 75.0);
    EXPECT_EQ(areaOf(filledPathWithin(Path::pathWithRect({200.0, 0.0, 1e9, 50.0}), {}, kWindow)), 0.0);
    EXPECT_DOUBLE_EQ(areaOf(filledPathWithin(polyline({{0.0, 0.0}, {1e9, 1e9}, {1e9, 0.0}}), {}, kWindow)), 5000.0);
}

TEST(PathWindow, extremeCoordinatesStayFinite)
{
    Path path = polyline({{-1e308, 1e308}, {1e308, -1e308}, {1e308, 1e308}}, true);
    path.addCurveToPoint({1e300, 3.0}, {-1e308, 0.0}, {5.0, 1e308});
    path.addLineToX(4.0, 4.0);
    for (const StrokeRun& run : strokeRunsWithin(path, {1e5, 0.0, 0.0, 1e5, 0.0, 0.0}, kWindow)) {
        for (const Point& point : run.points)
            EXPECT_TRUE(point.valid());
    }
    const Path area = filledPathWithin(path, {1e5, 0.0, 0.0, 1e5, 0.0, 0.0}, kWindow);
    for (const Point& point : area.points())
        EXPECT_TRUE(point.valid() && point.x >= -1e-6 && point.x <= 100.000001);
}
