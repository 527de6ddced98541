#include "TOLVVerticalLineGraphDrawing.h"

#include "../graph/TOLVGraph.h"
#include "../platform/foundation/Exception.h"

#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/DrawnLines.h>
#include <tests/support/PointGraph.h>

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::linesDrawn;
using testing_support::linesWith;
using Lines = std::vector<std::string>;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
const Rect kRect(0.0, 0.0, 100.0, 100.0);

std::string fillOf(const Rect& rect)
{
    return "fill " + toString(Path::pathWithRect(rect));
}

/// A graph whose values are its points.
class TOLVVerticalLineGraphDrawingTest : public testing_support::PointGraphTest {
protected:
    Lines drawn(const Rect& rect = kRect) const
    {
        return linesDrawn([&] { TOLVVerticalLineGraphDrawing().drawGraph(graph, rect); });
    }

    Lines lines(const Rect& rect = kRect) const { return linesWith(drawn(rect), "fill"); }
};

TEST_F(TOLVVerticalLineGraphDrawingTest, ALineStandsToTheRightOfTheRoundedPosition)
{
    add({10.4F, 10.6F}, {20.6F, 20.4F});
    EXPECT_EQ(drawn(),
        (Lines{"save", "clip M 0 0 L 100 0 L 100 100 L 0 100 Z", "fillColor (1, 0, 0, 1)", "strokeColor (1, 0, 0, 1)", fillOf({10.0, 0.0, 1.0, 21.0}),
            fillOf({11.0, 0.0, 1.0, 20.0}), "restore"}));
}

TEST_F(TOLVVerticalLineGraphDrawingTest, APointOnTheLowerEdgeHasNoLine)
{
    add({10.0F, 20.0F, 30.0F, 40.0F}, {0.0F, 0.4F, 0.5F, 0.6F});
    EXPECT_EQ(lines(), (Lines{fillOf({40.0, 0.0, 1.0, 1.0})}));
}

TEST_F(TOLVVerticalLineGraphDrawingTest, APointBelowTheDataAreaHasNoLine)
{
    add({10.0F}, {-5.0F});
    EXPECT_TRUE(lines().empty());
}

TEST_F(TOLVVerticalLineGraphDrawingTest, WhatLiesOutsideTheDataAreaIsCutOff)
{
    graph->setMargin({20.5, 10.25, 30.5, 10.5});
    graph->zoomXToFixedMin(10.0F, 90.0F);
    graph->zoomYToFixedMin(30.0, 80.0);
    const Rect dataRect = graph->dataRectInRect(kRect);
    ASSERT_EQ(toString(dataRect), "(10.25, 30.5, 79.25, 49)");
    // Above, at the left edge, at the right edge, and beside the area.
    add({50.0F, 10.0F, 89.5F, 0.0F, 95.0F}, {500.0F, 80.0F, 80.0F, 60.0F, 60.0F});
    EXPECT_EQ(lines(), (Lines{fillOf({50.0, 30.5, 1.0, 49.0}), fillOf({10.25, 30.5, 0.75, 49.0}), fillOf({89.0, 30.5, 0.5, 49.0})}));
}

TEST_F(TOLVVerticalLineGraphDrawingTest, SeriesHaveTheirOwnColours)
{
    add({10.0F}, {10.0F});
    add({20.0F}, {20.0F}, Color(0.0, 1.0, 0.0, 0.5));
    EXPECT_EQ(linesWith(drawn(), "fillColor"), (Lines{"fillColor (1, 0, 0, 1)", "fillColor (0, 1, 0, 0.5)"}));
    EXPECT_EQ(lines(), (Lines{fillOf({10.0, 0.0, 1.0, 10.0}), fillOf({20.0, 0.0, 1.0, 20.0})}));
}

TEST_F(TOLVVerticalLineGraphDrawingTest, WhereTheLengthsDifferTheShorterOneCounts)
{
    add({10.0F, 20.0F, 30.0F}, {10.0F});
    add({10.0F}, {10.0F, 20.0F, 30.0F});
    EXPECT_EQ(lines().size(), 2U);
}

TEST_F(TOLVVerticalLineGraphDrawingTest, SamplesWithoutAPositionHaveNoLine)
{
    add({kNaN, 10.0F, 20.0F, kInfinity, 40.0F}, {10.0F, kNaN, kInfinity, 30.0F, 40.0F});
    EXPECT_EQ(lines(), (Lines{fillOf({40.0, 0.0, 1.0, 40.0})}));
}

TEST_F(TOLVVerticalLineGraphDrawingTest, OddRectanglesHaveNoLines)
{
    add({10.0F, 20.0F}, {10.0F, 20.0F});
    constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
    for (const Rect& rect : {Rect(0.0, 0.0, 0.0, 0.0), Rect(5.0, 5.0, -100.0, -100.0), Rect(kNotANumber, 0.0, 100.0, 100.0), Rect(0.0, 0.0, 100.0, kNotANumber)})
        EXPECT_TRUE(lines(rect).empty()) << toString(rect);
}

TEST_F(TOLVVerticalLineGraphDrawingTest, SeriesWithoutSamplesAreSkipped)
{
    graph->addGraphData(std::make_shared<TOLVGraphData>());
    graph->addGraphData(TOLVGraphData::graphDataWithX(nullptr, TOLVRealVector::vectorWithComponents({1.0F}), Color::blackColor()));
    add({}, {});
    EXPECT_TRUE(lines().empty());
}

TEST_F(TOLVVerticalLineGraphDrawingTest, TheStateIsRestoredWhenAnAxisThrows)
{
    add({10.0F}, {20.0F});
    // An axis of the base class has no positions.
    graph->setVerticalAxis(std::make_shared<TOLVAxis>());
    EXPECT_EQ(linesDrawn([&] { EXPECT_THROW(TOLVVerticalLineGraphDrawing().drawGraph(graph, kRect), UnrecognizedOperation); }).back(), "restore");
}

TEST_F(TOLVVerticalLineGraphDrawingTest, WithoutAGraphOrAContextNothingIsDrawn)
{
    add({10.0F}, {20.0F});
    EXPECT_TRUE(linesDrawn([] { TOLVVerticalLineGraphDrawing().drawGraph(nullptr, kRect); }).empty());
    EXPECT_NO_THROW(TOLVVerticalLineGraphDrawing().drawGraph(graph, kRect));
}

} // namespace
} // namespace TOLVGraphing
