#include "TOLVXGraphDrawing.h"

#include "../graph/TOLVGraph.h"
#include "../platform/foundation/Exception.h"

#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/ChangingSamples.h>
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

using testing_support::ChangingSamples;
using testing_support::linesDrawn;
using testing_support::linesWith;
using Lines = std::vector<std::string>;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
const Rect kRect(0.0, 0.0, 100.0, 100.0);
const std::string kClip = "clip M 0 0 L 100 0 L 100 100 L 0 100 Z";

/// A graph whose values are its points.
class TOLVXGraphDrawingTest : public testing_support::PointGraphTest {
protected:
    Lines drawn(const Rect& rect = kRect) const
    {
        return linesDrawn([&] { TOLVXGraphDrawing().drawGraph(graph, rect); });
    }
};

TEST_F(TOLVXGraphDrawingTest, AnXIsCentredOnTheRoundedPosition)
{
    add({10.4F}, {20.6F});
    EXPECT_EQ(
        drawn(), (Lines{"save", kClip, "fillColor (1, 0, 0, 1)", "strokeColor (1, 0, 0, 1)", "save", "lineWidth 1", "stroke M 6 17 L 14 25 M 6 25 L 14 17", "restore", "restore"}));
}

TEST_F(TOLVXGraphDrawingTest, HalvesAreRoundedToEven)
{
    add({10.5F, 11.5F}, {20.5F, 21.5F});
    EXPECT_EQ(linesWith(drawn(), "stroke"), (Lines{"stroke M 6 16 L 14 24 M 6 24 L 14 16", "stroke M 8 18 L 16 26 M 8 26 L 16 18"}));
}

TEST_F(TOLVXGraphDrawingTest, MarksOutsideAreLeftToTheClip)
{
    graph->setMargin({10.0, 20.0, 30.0, 40.0});
    add({-50.0F}, {500.0F});
    EXPECT_EQ(linesWith(drawn(), "clip"), (Lines{"clip M 20 30 L 60 30 L 60 90 L 20 90 Z"}));
    EXPECT_EQ(linesWith(drawn(), "stroke"), (Lines{"stroke M -4 326 L 4 334 M -4 334 L 4 326"}));
}

TEST_F(TOLVXGraphDrawingTest, SeriesHaveTheirOwnColours)
{
    add({10.0F}, {10.0F});
    add({20.0F}, {20.0F}, Color(0.0, 1.0, 0.0, 0.5));
    add({30.0F}, {30.0F}, std::nullopt);
    graph->graphData()[2]->setLineStyle(nullptr);
    const Lines lines = drawn();
    EXPECT_EQ(linesWith(lines, "strokeColor"), (Lines{"strokeColor (1, 0, 0, 1)", "strokeColor (0, 1, 0, 0.5)", "strokeColor (0, 0, 0, 1)"}));
    EXPECT_EQ(linesWith(lines, "stroke").size(), 3U);
}

TEST_F(TOLVXGraphDrawingTest, AllSamplesAreDrawnWhateverTheVisibleRange)
{
    add({10.0F, 20.0F, 30.0F}, {10.0F, 20.0F, 30.0F});
    graph->zoomXToFixedMin(22.0F, 28.0F);
    EXPECT_EQ(linesWith(drawn(), "stroke").size(), 3U);
}

TEST_F(TOLVXGraphDrawingTest, WhereTheLengthsDifferTheShorterOneCounts)
{
    add({10.0F, 20.0F, 30.0F}, {10.0F});
    add({10.0F}, {10.0F, 20.0F, 30.0F});
    EXPECT_EQ(linesWith(drawn(), "stroke").size(), 2U);
}

TEST_F(TOLVXGraphDrawingTest, SamplesWithoutAPositionHaveNoMark)
{
    add({kNaN, 10.0F, 20.0F, kInfinity, 40.0F}, {10.0F, kNaN, -kInfinity, 30.0F, 40.0F});
    EXPECT_EQ(linesWith(drawn(), "stroke"), (Lines{"stroke M 36 36 L 44 44 M 36 44 L 44 36"}));
    EXPECT_TRUE(linesWith(drawn({std::numeric_limits<double>::quiet_NaN(), 0.0, 100.0, 100.0}), "stroke").empty());
}

TEST_F(TOLVXGraphDrawingTest, SeriesWithoutSamplesAreSkipped)
{
    graph->addGraphData(std::make_shared<TOLVGraphData>());
    graph->addGraphData(TOLVGraphData::graphDataWithX(nullptr, TOLVRealVector::vectorWithComponents({1.0F}), Color::blackColor()));
    graph->addGraphData(TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents({1.0F}), nullptr, Color::blackColor()));
    add({}, {});
    EXPECT_TRUE(linesWith(drawn(), "stroke").empty());
    graph->clearGraphData();
    EXPECT_EQ(drawn(), (Lines{"save", kClip, "restore"}));
}

TEST_F(TOLVXGraphDrawingTest, AHostsOwnSamplesAreDrawn)
{
    const auto samples = std::make_shared<ChangingSamples>(std::vector<float>{10.0F});
    graph->addGraphData(TOLVGraphData::graphDataWithX(samples, samples, Color::blackColor()));
    EXPECT_EQ(linesWith(drawn(), "stroke"), (Lines{"stroke M 6 6 L 14 14 M 6 14 L 14 6"}));
    samples->setSample(0, 20.0F);
    EXPECT_EQ(linesWith(drawn(), "stroke"), (Lines{"stroke M 16 16 L 24 24 M 16 24 L 24 16"}));
}

TEST_F(TOLVXGraphDrawingTest, WithoutAnAxisPositionsAreZero)
{
    add({10.0F}, {20.0F});
    graph->setHorizontalAxis(nullptr);
    EXPECT_EQ(linesWith(drawn(), "stroke"), (Lines{"stroke M -4 16 L 4 24 M -4 24 L 4 16"}));
}

TEST_F(TOLVXGraphDrawingTest, TheStateIsRestoredWhenAnAxisThrows)
{
    add({10.0F}, {20.0F});
    // An axis of the base class has no positions.
    graph->setVerticalAxis(std::make_shared<TOLVAxis>());
    EXPECT_EQ(linesDrawn([&] { EXPECT_THROW(TOLVXGraphDrawing().drawGraph(graph, kRect), UnrecognizedOperation); }).back(), "restore");
}

TEST_F(TOLVXGraphDrawingTest, WithoutAGraphOrAContextNothingIsDrawn)
{
    add({10.0F}, {20.0F});
    EXPECT_TRUE(linesDrawn([] { TOLVXGraphDrawing().drawGraph(nullptr, kRect); }).empty());
    EXPECT_NO_THROW(TOLVXGraphDrawing().drawGraph(graph, kRect));
}

} // namespace
} // namespace TOLVGraphing
