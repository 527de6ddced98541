#include "WholeCurveGraphDrawing.h"

#include "../axes/TOLVLogarithmicAxis.h"
#include "../graph/TOLVGraph.h"
#include "CurveGraphDrawing.h"
#include "TOLVCurveGraphDrawing.h"

#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/DrawnLines.h>

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::linesDrawn;
using testing_support::linesWith;
using Lines = std::vector<std::string>;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
const Rect kRect(0.0, 0.0, 128.0, 128.0);

/// Data units are points, so that all positions are exact.
class WholeCurveGraphDrawingTest : public testing::Test {
protected:
    WholeCurveGraphDrawingTest()
    {
        graph->setMargin({});
        graph->zoomXToFixedMin(0.0F, 128.0F);
        graph->zoomYToFixedMin(0.0, 128.0);
    }

    void add(std::vector<float> x, std::vector<float> y)
    {
        graph->addGraphData(TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), Color()));
    }

    Lines drawn() const
    {
        return linesDrawn([&] { WholeCurveGraphDrawing().drawGraph(graph, kRect); });
    }

    Lines drawnBySamplesAlone() const
    {
        return linesDrawn([&] { TOLVCurveGraphDrawing().drawGraph(graph, kRect); });
    }

    Lines strokes() const { return linesWith(drawn(), "stroke M"); }

    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
};

TEST_F(WholeCurveGraphDrawingTest, TheLastSampleIsReached)
{
    add({0.0F, 32.0F, 64.0F}, {0.0F, 16.0F, 8.0F});
    EXPECT_EQ(strokes(), (Lines{"stroke M 0 0 L 0 0 L 32 16 L 64 8"}));
}

TEST_F(WholeCurveGraphDrawingTest, TheClipAndTheStyleAreThoseOfOtherCurves)
{
    add({0.0F, 32.0F, 64.0F}, {0.0F, 16.0F, 8.0F});
    graph->graphData()[0]->setLineStyle(TOLVLineStyle::dashedLineStyle());
    Lines lines = drawnBySamplesAlone();
    for (std::string& line : lines) {
        if (line == "stroke M 0 0 L 0 0 L 32 16")
            line += " L 64 8";
    }
    EXPECT_EQ(drawn(), lines);
}

TEST_F(WholeCurveGraphDrawingTest, ALastSampleAtTheEdgeIsApproachedBeyondTheClip)
{
    // The clip ends at 127. 126.9375 is 62.9375 / 64 of the way from 64 to 128: 16 * (1 - 62.9375 / 64) = 0.265625.
    add({0.0F, 64.0F, 128.0F}, {0.0F, 16.0F, 0.0F});
    EXPECT_EQ(strokes(), (Lines{"stroke M 0 0 L 0 0 L 64 16 L 126.9375 0.265625"}));
}

TEST_F(WholeCurveGraphDrawingTest, LinesToSamplesOutsideGoToTheEdges)
{
    // Two units below and two above: at 126.9375 the line from (96, 32) to (160, 96) is at 32 + 30.9375.
    add({-64.0F, 64.0F, 96.0F, 160.0F, 999.0F}, {0.0F, 64.0F, 32.0F, 96.0F, 0.0F});
    EXPECT_EQ(strokes(), (Lines{"stroke M 0 32 L 0 32 L 64 64 L 96 32 L 126.9375 62.9375"}));
}

TEST_F(WholeCurveGraphDrawingTest, ALineMayCrossTheRangeWithoutASampleInIt)
{
    add({-64.0F, 192.0F}, {0.0F, 128.0F});
    EXPECT_EQ(strokes(), (Lines{"stroke M 0 32 L 0 32 L 126.9375 95.46875"}));
}

TEST_F(WholeCurveGraphDrawingTest, SeriesOnOneSideOfTheRangeAreNotDrawn)
{
    add({-64.0F, -32.0F}, {0.0F, 128.0F});
    add({160.0F, 192.0F}, {0.0F, 128.0F});
    add({}, {});
    EXPECT_EQ(strokes(), Lines());
}

TEST_F(WholeCurveGraphDrawingTest, SamplesWithoutAPositionAreLeftOutAndTheLineGoesOn)
{
    add({0.0F, 16.0F, 32.0F, 48.0F, 64.0F}, {0.0F, kNaN, 16.0F, kInfinity, 8.0F});
    EXPECT_EQ(strokes(), (Lines{"stroke M 0 0 L 0 0 L 32 16 L 64 8"}));
}

TEST_F(WholeCurveGraphDrawingTest, NeighboursWithoutAPositionArePassedOver)
{
    add({-64.0F, -32.0F, 64.0F, 130.0F, 192.0F}, {0.0F, kNaN, 64.0F, kNaN, 64.0F});
    EXPECT_EQ(strokes(), (Lines{"stroke M 0 32 L 0 32 L 64 64 L 126.9375 64"}));
}

TEST_F(WholeCurveGraphDrawingTest, OnLogarithmicAxesLinesAreStraightInPoints)
{
    graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
    graph->setVerticalAxis(std::make_shared<TOLVLogarithmicAxis>());
    graph->zoomXToFixedMin(10.0F, 1'000.0F);
    graph->zoomYToFixedMin(1.0, 100.0);
    // The sample at 0 has no place. From (1, 1) to (100, 100), positions -64 and 64, 0 and 128, the left edge is crossed at half the height.
    add({0.0F, 1.0F, 100.0F}, {5.0F, 1.0F, 100.0F});
    EXPECT_EQ(strokes(), (Lines{"stroke M 0 64 L 0 64 L 64 128"}));
}

TEST_F(WholeCurveGraphDrawingTest, SeriesThatDoNotAscendAreDrawnAsTheyAre)
{
    add({0.0F, 64.0F, 32.0F, 96.0F}, {0.0F, 16.0F, 8.0F, 4.0F});
    EXPECT_EQ(drawn(), drawnBySamplesAlone());
    EXPECT_EQ(strokes().size(), 1U);
}

TEST_F(WholeCurveGraphDrawingTest, ManySamplesAreDrawnAsTheyAre)
{
    for (const std::size_t count : {WholeCurveGraphDrawing::kMostSamples, WholeCurveGraphDrawing::kMostSamples + 1}) {
        std::vector<float> x(count);
        for (std::size_t i = 0; i < count; ++i)
            x[i] = static_cast<float>(i) * 0.00390625F;
        x.back() = 128.0F;
        graph->clearGraphData();
        add(x, std::vector<float>(count, 64.0F));
        const bool reachesTheEdge = strokes().at(0).ends_with(" L 126.9375 64");
        EXPECT_EQ(reachesTheEdge, count <= WholeCurveGraphDrawing::kMostSamples) << count;
        EXPECT_EQ(drawn() == drawnBySamplesAlone(), !reachesTheEdge) << count;
    }
}

TEST_F(WholeCurveGraphDrawingTest, TheSeriesStayAsTheyAre)
{
    add({-64.0F, 64.0F, 192.0F}, {0.0F, 64.0F, 0.0F});
    const auto x = graph->graphData()[0]->X();
    EXPECT_FALSE(strokes().empty());
    EXPECT_EQ(graph->graphData()[0]->X(), x);
    EXPECT_EQ(x->length(), 3U);
}

TEST_F(WholeCurveGraphDrawingTest, WithoutGraphExtentsOrVectorsNothingIsDrawn)
{
    EXPECT_EQ(linesDrawn([] { WholeCurveGraphDrawing().drawGraph(nullptr, kRect); }), Lines());
    graph->addGraphData(std::make_shared<TOLVGraphData>());
    add({0.0F, 1.0F, 2.0F}, {0.0F});
    EXPECT_EQ(strokes(), Lines());
    add({0.0F, 64.0F}, {0.0F, 64.0F});
    EXPECT_EQ(strokes().size(), 1U);
    graph->zoomXToFixedMin(64.0F, 64.0F);
    EXPECT_EQ(drawn(), drawnBySamplesAlone());
    graph->setExtents(nullptr);
    EXPECT_EQ(strokes(), Lines());
}

TEST_F(WholeCurveGraphDrawingTest, ValuesOfMarkersAreDrawnUnlessTheyAreNotWanted)
{
    add({0.0F, 64.0F, 128.0F}, {0.0F, 64.0F, 0.0F});
    graph->placeHorizontalAxisMarkerWithValue(64.0);
    const auto drawnMarkers = [&](TOLVGraphMarkerDrawing& drawing) { return linesDrawn([&] { drawing.drawMarkers(graph->markers(), graph, kRect); }); };
    WholeCurveGraphDrawing drawing;
    CurveGraphDrawing other;
    EXPECT_EQ(drawnMarkers(drawing), drawnMarkers(other));
    EXPECT_EQ(drawing.calloutPlacements(*graph, kRect), other.calloutPlacements(*graph, kRect));
    EXPECT_EQ(drawing.calloutPlacements(*graph, kRect).size(), 1U);
    WholeCurveGraphDrawing plain(false);
    EXPECT_FALSE(plain.drawsMarkerValues());
    EXPECT_EQ(drawnMarkers(plain), Lines());
    EXPECT_TRUE(plain.calloutPlacements(*graph, kRect).empty());
}

} // namespace
} // namespace TOLVGraphing
