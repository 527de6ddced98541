#include "CurveGraphDrawing.h"

#include "../graph/TOLVGraph.h"
#include "TOLVCurveGraphDrawing.h"

#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/DrawnLines.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::EvenTextScope;
using testing_support::linesDrawn;
using testing_support::linesWith;
using Lines = std::vector<std::string>;

const Rect kRect(0.0, 0.0, 100.0, 100.0);

class CurveGraphDrawingTest : public testing::Test {
protected:
    CurveGraphDrawingTest()
    {
        graph->setMargin({});
        graph->zoomXToFixedMin(0.0F, 100.0F);
        graph->zoomYToFixedMin(0.0, 100.0);
        add({0.0F, 50.0F, 100.0F}, {10.0F, 50.0F, 10.0F});
    }

    void add(std::vector<float> x, std::vector<float> y)
    {
        graph->addGraphData(
            TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), Color(1.0, 0.0, 0.0)));
    }

    Lines markersDrawn(const std::vector<double>& values)
    {
        TOLVGraph::Markers markers;
        for (const double value : values)
            markers.push_back(TOLVMarker::markerWithValue(value));
        return linesDrawn([&] { drawing.drawMarkers(markers, graph, kRect); });
    }

    EvenTextScope text;
    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
    CurveGraphDrawing drawing;
};

TEST_F(CurveGraphDrawingTest, DrawsCurvesAsThePlainStrategyDoes)
{
    const Lines own = linesDrawn([&] { drawing.drawGraph(graph, kRect); });
    EXPECT_EQ(own, linesDrawn([&] { TOLVCurveGraphDrawing().drawGraph(graph, kRect); }));
    EXPECT_EQ(linesWith(own, "stroke").size(), 1U);
}

TEST_F(CurveGraphDrawingTest, CalloutsAreClippedToTheDataAreaLessAPoint)
{
    const Lines lines = markersDrawn({50.0});
    ASSERT_EQ(lines.size(), 8U);
    EXPECT_EQ(lines[0], "save");
    EXPECT_EQ(lines[1], "clip M 1 1 L 99 1 L 99 99 L 1 99 Z");
    EXPECT_EQ(lines[2], "fillColor (1, 0, 0, 1)");
    EXPECT_EQ(lines[4], "fillColor (1, 1, 1, 1)");
    EXPECT_EQ(lines[6], "text \"50\" HelveticaNeue-Light 12 (1, 0, 0, 1) at (44, 53)");
    EXPECT_EQ(lines[7], "restore");
}

TEST_F(CurveGraphDrawingTest, EachMarkerIsDrawnCompletelyBeforeTheNext)
{
    add({0.0F, 100.0F}, {90.0F, 90.0F});
    const Lines texts = linesWith(markersDrawn({50.0, 25.0}), "text");
    ASSERT_EQ(texts.size(), 4U);
    EXPECT_TRUE(texts[0].starts_with("text \"50\""));
    EXPECT_TRUE(texts[1].starts_with("text \"90\""));
    EXPECT_TRUE(texts[2].starts_with("text \"30\""));
    EXPECT_TRUE(texts[3].starts_with("text \"90\""));
}

TEST_F(CurveGraphDrawingTest, CalloutsOfDifferentMarkersMayOverlap)
{
    EXPECT_EQ(linesWith(markersDrawn({50.0, 50.0}), "text").size(), 2U);
}

TEST_F(CurveGraphDrawingTest, NullMarkersArePassedOver)
{
    const TOLVGraph::Markers markers = {nullptr, TOLVMarker::markerWithValue(50.0)};
    EXPECT_EQ(linesWith(linesDrawn([&] { drawing.drawMarkers(markers, graph, kRect); }), "text").size(), 1U);
}

TEST_F(CurveGraphDrawingTest, MarkersOfEveryAxisHaveCallouts)
{
    const auto marker = TOLVMarker::markerWithValue(50.0);
    marker->setAxisIndex(1);
    EXPECT_EQ(linesWith(linesDrawn([&] { drawing.drawMarkers({marker}, graph, kRect); }), "text").size(), 1U);
}

TEST_F(CurveGraphDrawingTest, WithoutMarkersOrGraphOrContextNoTextIsDrawn)
{
    EXPECT_EQ(markersDrawn({}), (Lines{"save", "clip M 1 1 L 99 1 L 99 99 L 1 99 Z", "restore"}));
    EXPECT_TRUE(linesDrawn([&] { drawing.drawMarkers({TOLVMarker::markerWithValue(50.0)}, nullptr, kRect); }).empty());
    EXPECT_TRUE(linesDrawn([&] { drawing.drawGraph(nullptr, kRect); }).empty());
    drawing.drawMarkers({TOLVMarker::markerWithValue(50.0)}, graph, kRect);
    drawing.drawGraph(graph, kRect);
}

TEST_F(CurveGraphDrawingTest, OneStrategyServesSeveralGraphs)
{
    const auto other = graph->copy();
    other->clearGraphData();
    const Lines before = linesDrawn([&] { drawing.drawGraph(graph, kRect); });
    EXPECT_TRUE(linesWith(linesDrawn([&] { drawing.drawGraph(other, kRect); }), "stroke").empty());
    EXPECT_EQ(linesDrawn([&] { drawing.drawGraph(graph, kRect); }), before);
}

} // namespace
} // namespace TOLVGraphing
