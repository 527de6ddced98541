#include "TOLVCurve.h"

#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/RecordingContext.h"

#include <tests/support/RecordingOpenGL.h>

#include <gtest/gtest.h>

#include <limits>

namespace TOLVGraphing {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(TOLVCurve, StartsEmptyAndOpen)
{
    const TOLVCurve curve;
    EXPECT_TRUE(curve.path().isEmpty());
    EXPECT_EQ(curve.pointIdx(), 0U);
    EXPECT_FALSE(curve.closed());
    EXPECT_FALSE(curve.lineStyle());
    for (const TOLVDrawPoint& point : curve.DP())
        EXPECT_EQ(point.p, Point{});
}

TEST(TOLVCurve, FirstPointMovesAndOthersContinue)
{
    TOLVCurve curve;
    curve.addPoint({1.0, 2.0});
    curve.addPoint({3.0, 4.0});
    curve.addPoint({5.0, 6.0});
    EXPECT_EQ(toString(curve.path()), "M 1 2 L 3 4 L 5 6");
    EXPECT_EQ(curve.pointIdx(), 3U);
}

TEST(TOLVCurve, NonFinitePointsAreDroppedAndTheLineGoesOn)
{
    TOLVCurve curve;
    const Point dropped[] = {{kNaN, 0.0}, {0.0, kNaN}, {kInfinity, 0.0}, {0.0, -kInfinity}};
    for (const Point& point : dropped) {
        curve.addPoint(point);
        EXPECT_EQ(curve.pointIdx(), 0U);
    }
    curve.addPoint({1.0, 2.0});
    for (const Point& point : dropped) {
        curve.addPoint(point);
        EXPECT_EQ(curve.pointIdx(), 1U);
    }
    curve.addPoint({3.0, 4.0});
    EXPECT_EQ(toString(curve.path()), "M 1 2 L 3 4");
}

TEST(TOLVCurve, ClosingIsAMarkOnly)
{
    TOLVCurve curve;
    curve.addPoint({1.0, 2.0});
    curve.close();
    EXPECT_TRUE(curve.closed());
    EXPECT_EQ(toString(curve.path()), "M 1 2");
    curve.setClosed(false);
    EXPECT_FALSE(curve.closed());
}

TEST(TOLVCurve, ResetStartsOverAndKeepsTheStyle)
{
    TOLVCurve curve;
    const auto style = TOLVLineStyle::dashedLineStyle();
    curve.setLineStyle(style);
    curve.addPoint({1.0, 2.0});
    curve.close();
    curve.reset();
    EXPECT_TRUE(curve.path().isEmpty());
    EXPECT_EQ(curve.pointIdx(), 0U);
    EXPECT_FALSE(curve.closed());
    EXPECT_EQ(curve.lineStyle(), style);
    curve.addPoint({7.0, 8.0});
    EXPECT_EQ(toString(curve.path()), "M 7 8");
}

TEST(TOLVCurve, StrokesWithItsStyleBetweenSaveAndRestore)
{
    TOLVCurve curve;
    curve.setLineStyle(TOLVLineStyle::dashedLineStyle()->styleWithColor(Color(1.0, 0.0, 0.0)));
    curve.addPoint({1.0, 2.0});
    curve.addPoint({3.0, 4.0});
    RecordingContext context;
    const CurrentContextScope scope(context);
    curve.stroke();
    EXPECT_TRUE(curve.closed());
    EXPECT_EQ(context.text(), "save\nlineDash 0 [5, 2]\nlineWidth 1\nstrokeColor (1, 0, 0, 1)\nlineWidth 1\nstroke M 1 2 L 3 4\nrestore\n");
}

TEST(TOLVCurve, FillsByTheEvenOddRuleWithoutItsStyle)
{
    TOLVCurve curve;
    curve.setLineStyle(TOLVLineStyle::dashedLineStyle());
    curve.addPoint({1.0, 2.0});
    curve.addPoint({3.0, 4.0});
    RecordingContext context;
    const CurrentContextScope scope(context);
    curve.fillWithColor(Color(0.0, 1.0, 0.0));
    EXPECT_TRUE(curve.closed());
    EXPECT_EQ(context.text(), "save\nfillColor (0, 1, 0, 1)\neofill M 1 2 L 3 4\nrestore\n");
}

TEST(TOLVCurve, MayBeDrawnAgainAndWithoutAStyleOrAContext)
{
    TOLVCurve curve;
    curve.stroke();
    curve.fillWithColor(std::nullopt);
    EXPECT_TRUE(curve.closed());
    RecordingContext context;
    const CurrentContextScope scope(context);
    curve.stroke();
    curve.stroke();
    EXPECT_EQ(context.text(), "save\nstroke \nrestore\nsave\nstroke \nrestore\n");
}

TEST(TOLVCurve, StrokesInSpaceAsOneLineStripAtOneDepth)
{
    const auto context = std::make_shared<testing_support::RecordingOpenGLContext>("A");
    const testing_support::OpenGLScope scope(context);
    TOLVCurve curve;
    curve.addPoint({1.0, 2.5});
    curve.addPoint({kNaN, 0.0});
    curve.addPoint({3.0, 0.1});
    curve.addPoint({16777217.0, 6.0});
    curve.stroke3DAtZ(-0.25F);
    EXPECT_TRUE(curve.closed());
    EXPECT_EQ(context->lines(), (std::vector<std::string>{"perform A", "begin 3", "vertex3f 1 2.5 -0.25", "vertex3f 3 0.1 -0.25", "vertex3f 16777216 6 -0.25", "end", "done"}));
}

TEST(TOLVCurve, WithoutAnOpenGLContextItIsClosedAndNotDrawn)
{
    const testing_support::OpenGLScope scope;
    TOLVCurve curve;
    curve.addPoint({1.0, 2.5});
    curve.stroke3DAtZ(0.0F);
    EXPECT_TRUE(curve.closed());
}

TEST(TOLVCurve, AllPointsAreTheAcceptedOnes)
{
    TOLVCurve curve;
    EXPECT_TRUE(curve.allPoints().empty());
    for (const Point& point : {Point{1.0, 2.0}, Point{2.0, kNaN}, Point{3.0, 4.0}, Point{5.0, 6.0}})
        curve.addPoint(point);
    EXPECT_EQ(curve.allPoints(), (std::vector<Point>{{1.0, 2.0}, {3.0, 4.0}, {5.0, 6.0}}));
}

} // namespace
} // namespace TOLVGraphing
