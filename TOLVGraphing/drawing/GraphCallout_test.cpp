#include "GraphCallout.h"

#include "../platform/foundation/Exception.h"

#include <tests/support/DrawnLines.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::EvenTextScope;
using testing_support::linesDrawn;
using Lines = std::vector<std::string>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
/// How far the pointer reaches below the pill: the turned square's rounded corner lies 2 + sqrt(8) from its centre, which is 2 above the pill's lower edge.
const double kPointerDepth = std::sqrt(8.0);

class GraphCalloutTest : public testing::Test {
protected:
    /// The callout of a text of four characters at a place.
    GraphCallout calloutAt(double x, double y, double fontSize = 10.0)
    {
        AttributedString string("1234", TextAttributes{Font{"Helvetica", fontSize}, Color::blackColor()});
        const Size size = string.size();
        return GraphCallout(TOLVLabel::labelWithAttributedString(std::move(string), {{x, y}, size}), style, x + 10.0);
    }

    EvenTextScope text;
    std::shared_ptr<TOLVLineStyle> style = TOLVLineStyle::solidLineWithColor(Color(1.0, 0.0, 0.0), 2.0);
};

TEST_F(GraphCalloutTest, RecoloursTheTextAndSnapsItVertically)
{
    const auto label = TOLVLabel::labelWithAttributedString(AttributedString("1234"), {20.25, 30.75, 7.0, 9.0});
    const GraphCallout callout(label, style, 25.0);
    EXPECT_EQ(callout.label, label);
    EXPECT_EQ(callout.lineStyle, style);
    EXPECT_EQ(label->label().attributes().foregroundColor, Color(1.0, 0.0, 0.0));
    EXPECT_EQ(toString(label->rect()), "(20.25, 30, 7, 9)");
}

TEST_F(GraphCalloutTest, ThereIsNoneWithoutALabel)
{
    try {
        const GraphCallout callout(nullptr, style, 25.0);
        FAIL() << "expected an exception";
    } catch (const Exception& exception) {
        EXPECT_STREQ(exception.what(), "NullLabel: A callout stands around a label");
    }
}

TEST_F(GraphCalloutTest, ThePillIsFourPointsWiderOnEachSideAndThePointerStandsAtX)
{
    const GraphCallout callout = calloutAt(20.25, 30.75);
    // The text box (20.25, 30.75, 20, 10) lies in (20, 30) to (41, 41).
    Path outer = Path::pathWithRoundedRect({16.0, 30.0, 29.0, 14.0}, 7.0, 7.0);
    Path inner = Path::pathWithRoundedRect({17.0, 31.0, 27.0, 12.0}, 6.0, 6.0);
    AffineTransform pointer;
    pointer.translateXBy(30.25, 32.0);
    pointer.rotateDegrees(45.0);
    Path outerPointer = Path::pathWithRoundedRect({-4.0, -4.0, 8.0, 8.0}, 2.0, 2.0);
    outerPointer.transformUsingAffineTransform(pointer);
    Path innerPointer = Path::pathWithRoundedRect({-3.0, -3.0, 6.0, 6.0}, 1.0, 1.0);
    innerPointer.transformUsingAffineTransform(pointer);
    outer.addPath(outerPointer);
    inner.addPath(innerPointer);
    EXPECT_EQ(toString(callout.outerPath), toString(outer));
    EXPECT_EQ(toString(callout.innerPath), toString(inner));
}

TEST_F(GraphCalloutTest, ThePillIsFourteenPointsHighWhateverTheFont)
{
    for (const double size : {1.0, 10.0, 100.0}) {
        const Rect bounds = calloutAt(20.0, 30.0, size).bounds();
        EXPECT_NEAR(bounds.maxY() - 30.0, 14.0, 1e-9) << size;
        EXPECT_NEAR(30.0 - bounds.y(), kPointerDepth, 0.01) << size;
    }
}

TEST_F(GraphCalloutTest, BoundsAreTight)
{
    const Rect bounds = calloutAt(20.0, 30.0).bounds();
    EXPECT_NEAR(bounds.x(), 16.0, 1e-9);
    EXPECT_NEAR(bounds.width(), 28.0, 1e-9);
    EXPECT_NEAR(bounds.height(), 14.0 + kPointerDepth, 0.01);
}

TEST_F(GraphCalloutTest, OverlapNeedsCommonArea)
{
    const GraphCallout callout = calloutAt(100.0, 100.0);
    const double width = callout.bounds().width();
    const double height = callout.bounds().height();
    struct Case {
        double dx;
        double dy;
        bool expected;
    };
    const Case cases[] = {{0.0, 0.0, true}, {width - 1.0, 0.0, true}, {width + 1.0, 0.0, false}, {-width - 1.0, 0.0, false}, {0.0, std::floor(height), true},
        {0.0, std::ceil(height), false}, {0.0, -std::ceil(height), false}};
    for (const Case& one : cases) {
        const std::vector<GraphCallout> others = {calloutAt(-500.0, -500.0), calloutAt(100.0 + one.dx, 100.0 + one.dy)};
        EXPECT_EQ(callout.intersectsCalloutInArray(others), one.expected) << one.dx << ", " << one.dy;
    }
    EXPECT_FALSE(callout.intersectsCalloutInArray({}));
}

TEST_F(GraphCalloutTest, CalloutsThatOnlyTouchDoNotOverlap)
{
    GraphCallout a = calloutAt(0.0, 0.0);
    GraphCallout b = a;
    a.outerPath = Path::pathWithRect({0.0, 0.0, 10.0, 10.0});
    b.outerPath = Path::pathWithRect({10.0, 0.0, 10.0, 10.0});
    EXPECT_FALSE(a.intersectsCalloutInArray({&b, 1}));
    b.outerPath = Path::pathWithRect({9.0, 9.0, 10.0, 10.0});
    EXPECT_TRUE(a.intersectsCalloutInArray({&b, 1}));
}

TEST_F(GraphCalloutTest, DrawsOutlineInsideAndText)
{
    const GraphCallout callout = calloutAt(20.25, 30.75);
    EXPECT_EQ(linesDrawn([&] { callout.draw(); }),
        (Lines{"fillColor (1, 0, 0, 1)", "fill " + toString(callout.outerPath), "fillColor (1, 1, 1, 1)", "fill " + toString(callout.innerPath),
            "text \"1234\" Helvetica 10 (1, 0, 0, 1) at (20.25, 30)"}));
    callout.draw();
}

TEST_F(GraphCalloutTest, WithoutAStyleOrAColourItIsBlack)
{
    for (const auto& colourless : {std::shared_ptr<TOLVLineStyle>(), std::make_shared<TOLVLineStyle>()}) {
        style = colourless;
        const GraphCallout callout = calloutAt(20.0, 30.0);
        EXPECT_EQ(linesDrawn([&] { callout.draw(); }).front(), "fillColor (0, 0, 0, 1)");
    }
}

TEST_F(GraphCalloutTest, APlaceThatIsNotFiniteIsNotDrawn)
{
    for (const double bad : {kNaN, kInfinity, -kInfinity}) {
        for (const GraphCallout& callout : {calloutAt(bad, 30.0), calloutAt(20.0, bad)}) {
            EXPECT_TRUE(linesDrawn([&] { callout.draw(); }).empty());
            const GraphCallout other = calloutAt(20.0, 30.0);
            EXPECT_FALSE(callout.intersectsCalloutInArray({&other, 1}) && !callout.label->rect().valid() && std::isnan(bad));
        }
    }
}

} // namespace
} // namespace TOLVGraphing
