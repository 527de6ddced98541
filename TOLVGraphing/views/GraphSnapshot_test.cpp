#include "GraphSnapshot.h"

#include "../axes/DateTickFormatter.h"
#include "../axes/TOLVDateAxis.h"
#include "../axes/AdaptiveNumberFormatter.h"
#include "../axes/SINumberFormatter.h"
#include "../axes/ScientificNumberFormatter.h"
#include "../axes/TOLVBarAxis.h"
#include "../axes/TOLVLinearAxis.h"
#include "../axes/TOLVLogarithmicAxis.h"
#include "../drawing/TOLVVerticalLineGraphDrawing.h"
#include "../graph/TOLVGraph.h"
#include "LabelMargins.h"

#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/DrawnLines.h>
#include <tests/support/StubTextSystem.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::linesDrawn;
using testing_support::StubTextScope;
using Lines = std::vector<std::string>;

const Rect kRect(0.0, 0.0, 500.0, 300.0);

std::shared_ptr<TOLVGraphData> series(const char* name, std::vector<float> y)
{
    auto one
        = TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents({10.0F, 100.0F, 2000.0F}), TOLVRealVector::vectorWithComponents(std::move(y)), Color(1.0, 0.0, 0.0));
    one->setName(name);
    return one;
}

/// A graph with nothing as it is by default.
std::shared_ptr<TOLVGraph> fullGraph()
{
    auto graph = TOLVGraph::graph();
    graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
    graph->horizontalAxis()->setTickLabelFormatter(std::make_shared<SINumberFormatter>(graph->horizontalAxis()));
    graph->verticalAxis()->setTickLabelFormatter(std::make_shared<AdaptiveNumberFormatter>(graph->verticalAxis()));
    graph->horizontalAxis()->setLabel("Frequency");
    graph->verticalAxis()->setLabel("Level");
    graph->verticalAxis()->setDrawsMinorLines(false);
    graph->setTitle("Response");
    graph->setTitleAttributes(makeTextAttributes(Font{"Helvetica", 20.0}, Color::grayColor()));
    graph->setLabelAttributes(makeTextAttributes(Font{"Helvetica", 18.0}, Color(0.0, 0.0, 1.0)));
    graph->setTickLabelAttributes(makeTextAttributes(Font{"Helvetica", 9.0}, Color(0.0, 1.0, 0.0)));
    graph->setLabelFontHeight(23.0);
    graph->setTickLabelFontHeight(11.0);
    graph->setMajorLineStyle(TOLVLineStyle::solidLineWithColor(Color(0.5, 0.0, 0.0), 2.0));
    graph->setMinorLineStyle(TOLVLineStyle::solidLineWithColor(Color(0.0, 0.5, 0.0), 0.25));
    graph->addGraphData(series("one", {0.5F, 1.25F, 1.0F}));
    graph->addGraphData(series("two", {1.5F, 0.25F, 2.0F}));
    graph->setExtents(graph->extentsFittingGraphData());
    graph->setPadding({1.0, 2.0, 3.0, 4.0});
    fitMarginsToLabels(*graph, kRect);
    graph->placeHorizontalAxisMarkerWithValue(50.0);
    graph->placeHorizontalAxisMarkerWithValue(1234.0);
    graph->markers().back()->setAxisIndex(1);
    graph->markers().back()->setValue(0.75);
    return graph;
}

Lines drawn(TOLVGraph& graph)
{
    return linesDrawn([&] { graph.drawInRect(kRect); });
}

TEST(GraphSnapshot, DrawsWhatTheGraphDraws)
{
    const StubTextScope text(Size{30.0, 14.0});
    const auto graph = fullGraph();
    const Lines expected = drawn(*graph);
    ASSERT_GT(expected.size(), 40U);
    EXPECT_EQ(drawn(*snapshotOfGraph(*graph)), expected);
    // Taken before the graph has drawn, too.
    EXPECT_EQ(drawn(*snapshotOfGraph(*fullGraph())), expected);
}

TEST(GraphSnapshot, DrawsTheSameWhateverBecomesOfTheGraph)
{
    const StubTextScope text(Size{30.0, 14.0});
    const auto atOnce = drawn(*fullGraph());
    const std::function<void(TOLVGraph&)> changes[] = {
        [](TOLVGraph& graph) { graph.zoomXToFixedMin(1.0F, 5.0F); },
        [](TOLVGraph& graph) { graph.extents()->setY(TOLVAxisExtents::extentsWithMin(-7.0, 7.0)); },
        [](TOLVGraph& graph) {
            graph.zoomYToFixedMin(0.0, 0.001);
            graph.prepareForDrawingInRect(kRect);
        },
        [](TOLVGraph& graph) { graph.setTitle(std::nullopt); },
        [](TOLVGraph& graph) { graph.horizontalAxis()->setLabel("Other"); },
        [](TOLVGraph& graph) { graph.horizontalAxis()->setTickLabelPadding(30.0); },
        [](TOLVGraph& graph) { graph.verticalAxis()->setDrawsMajorLines(false); },
        [](TOLVGraph& graph) { graph.setHorizontalAxis(std::make_shared<TOLVBarAxis>()); },
        [](TOLVGraph& graph) { graph.setVerticalAxis(nullptr); },
        [](TOLVGraph& graph) { graph.majorLineStyle()->setColor(Color::whiteColor()); },
        [](TOLVGraph& graph) { graph.minorLineStyle()->setThickness(5.0); },
        [](TOLVGraph& graph) { graph.setLabelFontHeight(2.0); },
        [](TOLVGraph& graph) { graph.setTickLabelAttributes(nullptr); },
        [](TOLVGraph& graph) { graph.setMargin({}); },
        [](TOLVGraph& graph) { graph.setPadding({}); },
        [](TOLVGraph& graph) { graph.markers().front()->setValue(70.0); },
        [](TOLVGraph& graph) { graph.removeMarkersAtIndexes({0}); },
        [](TOLVGraph& graph) { graph.setDrawingStrategy(nullptr); },
        [](TOLVGraph& graph) { graph.graphData().front()->lineStyle()->setColor(Color::whiteColor()); },
        [](TOLVGraph& graph) { graph.graphData().front()->setY(nullptr); },
        [](TOLVGraph& graph) { graph.clearGraphData(); },
    };
    for (std::size_t i = 0; i < std::size(changes); ++i) {
        auto graph = fullGraph();
        const auto snapshot = snapshotOfGraph(*graph);
        changes[i](*graph);
        EXPECT_NE(drawn(*graph), atOnce) << "change " << i;
        EXPECT_EQ(drawn(*snapshot), atOnce) << "change " << i;
        graph.reset();
        EXPECT_EQ(drawn(*snapshot), atOnce) << "change " << i;
    }
}

TEST(GraphSnapshot, FormattersLookAtTheTicksOfItsOwnAxes)
{
    const StubTextScope text(Size{30.0, 14.0});
    const auto graph = fullGraph();
    graph->verticalAxis()->setTickLabelFormatter(std::make_shared<ScientificNumberFormatter>(graph->horizontalAxis()));
    const auto snapshot = snapshotOfGraph(*graph);
    const auto axisOf = [](const TOLVAxis& axis) { return std::dynamic_pointer_cast<const TickNumberFormatter>(axis.tickLabelFormatter())->axis(); };
    EXPECT_EQ(axisOf(*snapshot->horizontalAxis()), snapshot->horizontalAxis());
    // Crossed on purpose.
    EXPECT_EQ(axisOf(*snapshot->verticalAxis()), snapshot->horizontalAxis());
    EXPECT_EQ(axisOf(*graph->horizontalAxis()), graph->horizontalAxis());
    EXPECT_NE(std::dynamic_pointer_cast<const ScientificNumberFormatter>(snapshot->verticalAxis()->tickLabelFormatter()), nullptr);
}

TEST(GraphSnapshot, FormattersOfDatesLookAtItsOwnAxes)
{
    const auto graph = TOLVGraph::graph();
    graph->setHorizontalAxis(std::make_shared<TOLVDateAxis>());
    graph->horizontalAxis()->setTickLabelFormatter(std::make_shared<DateTickFormatter>(graph->horizontalAxis()));
    const auto snapshot = snapshotOfGraph(*graph);
    const auto formatter = std::dynamic_pointer_cast<const DateTickFormatter>(snapshot->horizontalAxis()->tickLabelFormatter());
    ASSERT_TRUE(formatter);
    EXPECT_EQ(formatter->axis(), snapshot->horizontalAxis());
}

TEST(GraphSnapshot, SharesSamplesAndStrategyAndNothingElse)
{
    const auto graph = fullGraph();
    graph->attachUndoManager(std::make_shared<UndoManager>());
    const auto snapshot = snapshotOfGraph(*graph);
    EXPECT_EQ(snapshot->drawingStrategy(), graph->drawingStrategy());
    EXPECT_EQ(snapshot->undoManager(), nullptr);
    ASSERT_EQ(snapshot->graphData().size(), 2U);
    EXPECT_EQ(snapshot->graphData()[0]->X(), graph->graphData()[0]->X());
    EXPECT_EQ(snapshot->graphData()[0]->name(), "one");
    EXPECT_NE(snapshot->graphData()[0], graph->graphData()[0]);
    EXPECT_NE(snapshot->graphData()[0]->lineStyle(), graph->graphData()[0]->lineStyle());
    EXPECT_NE(snapshot->markers()[0], graph->markers()[0]);
    EXPECT_EQ(snapshot->markers()[1]->axisIndex(), 1);
    // Its markers can be edited.
    snapshot->placeHorizontalAxisMarkerWithValue(3.0);
    EXPECT_EQ(graph->markers().size(), 2U);
}

TEST(GraphSnapshot, OfAnEmptyGraphIsEmpty)
{
    auto graph = TOLVGraph::graph();
    graph->setHorizontalAxis(nullptr);
    graph->setVerticalAxis(nullptr);
    graph->setMajorLineStyle(nullptr);
    graph->setMinorLineStyle(nullptr);
    graph->setExtents(nullptr);
    auto bare = std::make_shared<TOLVGraphData>();
    bare->setLineStyle(nullptr);
    graph->addGraphData(bare);
    const auto snapshot = snapshotOfGraph(*graph);
    EXPECT_EQ(snapshot->horizontalAxis(), nullptr);
    EXPECT_EQ(snapshot->majorLineStyle(), nullptr);
    EXPECT_EQ(snapshot->extents(), nullptr);
    EXPECT_EQ(snapshot->graphData().front()->lineStyle(), nullptr);
}

} // namespace
} // namespace TOLVGraphing
