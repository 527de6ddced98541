#include "GraphDescription.h"

#include "../axes/DateTickFormatter.h"
#include "../axes/TOLVBarAxis.h"
#include "../axes/TOLVDateAxis.h"
#include "../axes/TOLVLogarithmicAxis.h"
#include "../graph/TOLVGraph.h"

#include <TOLVMath/TOLVRealVector.h>

#include <gtest/gtest.h>

using namespace TOLVGraphing;

namespace {

std::shared_ptr<TOLVGraphData> seriesNamed(std::optional<std::string> name)
{
    const auto vector = TOLVRealVector::vectorWithComponents({1.0F, 2.0F, 1000.0F});
    auto series = TOLVGraphData::graphDataWithX(vector, vector, Color::blackColor());
    series->setName(std::move(name));
    return series;
}

TEST(GraphDescription, NewGraphHasNeitherRangesNorSeries)
{
    const auto graph = TOLVGraph::graph();
    EXPECT_EQ(graphName(*graph), "Graph");
    EXPECT_EQ(graphDescription(*graph), "x. y. No series.");
}

TEST(GraphDescription, EmptyTitlesCountAsNone)
{
    const auto graph = TOLVGraph::graph();
    graph->setTitle("");
    graph->horizontalAxis()->setLabel("");
    graph->verticalAxis()->setLabel("gain,");
    EXPECT_EQ(graphName(*graph), "Graph");
    EXPECT_EQ(graphDescription(*graph), "x. gain,. No series.");
    graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
    EXPECT_EQ(graphDescription(*graph), "x, logarithmic. gain,. No series.");
}

TEST(GraphDescription, SaysTitlesScalesRangesSeriesAndMarkers)
{
    const auto graph = TOLVGraph::graph();
    graph->setTitle("Run 7");
    graph->addGraphData(seriesNamed("left"));
    graph->addGraphData(seriesNamed(std::nullopt));
    graph->addGraphData(seriesNamed("right"));
    graph->setVerticalAxis(std::make_shared<TOLVLogarithmicAxis>(graph));
    graph->setExtents(graph->extentsFittingGraphData());
    graph->horizontalAxis()->setLabel("Time (s)");
    graph->placeHorizontalAxisMarkerWithValue(3.0);
    EXPECT_EQ(graphName(*graph), "Run 7");
    EXPECT_EQ(graphDescription(*graph), "Time (s) from 1 to 1,000. y, logarithmic, from 1 to 1,000. 3 series: left, right. 1 marker.");
}

TEST(GraphDescription, DatesAreNamed)
{
    const auto graph = TOLVGraph::graph();
    const auto axis = std::make_shared<TOLVDateAxis>();
    axis->setOrigin(20513.0);
    graph->setHorizontalAxis(axis);
    EXPECT_EQ(graphDescription(*graph), "x, dates. y. No series.");
    graph->horizontalAxis()->setTickLabelFormatter(std::make_shared<DateTickFormatter>(graph->horizontalAxis()));
    graph->zoomXToFixedMin(0.0F, 0.4375F);
    EXPECT_EQ(graphDescription(*graph), "x, dates, from 2026-03-01 to 2026-03-01 10:30. y. No series.");
}

TEST(GraphDescription, CategoriesAreNamedAndNoMoreThanTenSeries)
{
    const auto graph = TOLVGraph::graph();
    graph->setHorizontalAxis(std::make_shared<TOLVBarAxis>(graph));
    for (int i = 0; i < 12; ++i)
        graph->addGraphData(seriesNamed("s" + std::to_string(i)));
    graph->placeHorizontalAxisMarkerWithValue(3.0);
    graph->placeHorizontalAxisMarkerWithValue(4.0);
    EXPECT_EQ(graphDescription(*graph), "x, categories. y. 12 series: s0, s1, s2, s3, s4, s5, s6, s7, s8, s9. 2 markers.");
}

TEST(GraphDescription, GraphWithoutAxesTellsItsSeries)
{
    const auto graph = TOLVGraph::graph();
    graph->setHorizontalAxis(nullptr);
    graph->setVerticalAxis(nullptr);
    EXPECT_EQ(graphDescription(*graph), "No series.");
}

} // namespace
