#include "GraphDisplayObserver.h"

#include "../axes/TOLVLinearAxis.h"
#include "../graph/TOLVGraph.h"
#include "GraphSheet.h"
#include "LabelMargins.h"

#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/DrawnLines.h>

#include <gtest/gtest.h>

#include <functional>
#include <optional>

namespace TOLVGraphing {
namespace {

using testing_support::linesDrawn;

struct Change {
    const char* name;
    std::function<void(TOLVGraph&)> make;
};

std::shared_ptr<TOLVGraph> graphWithSeries()
{
    auto graph = TOLVGraph::graph();
    graph->addGraphData(
        TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents({0.0F, 1.0F}), TOLVRealVector::vectorWithComponents({2.0F, 3.0F}), Color(1.0, 0.0, 0.0)));
    graph->setExtents(graph->extentsFittingGraphData());
    return graph;
}

TEST(GraphDisplayObserver, TellsOfEveryAnnouncedChangeThatShows)
{
    const Change changes[] = {
        {"title", [](TOLVGraph& graph) { graph.setTitle("Title"); }},
        {"title attributes", [](TOLVGraph& graph) { graph.setTitleAttributes(nullptr); }},
        {"label attributes", [](TOLVGraph& graph) { graph.setLabelAttributes(nullptr); }},
        {"tick label attributes", [](TOLVGraph& graph) { graph.setTickLabelAttributes(nullptr); }},
        {"label font height", [](TOLVGraph& graph) { graph.setLabelFontHeight(3.0); }},
        {"tick label font height", [](TOLVGraph& graph) { graph.setTickLabelFontHeight(3.0); }},
        {"horizontal axis", [](TOLVGraph& graph) { graph.setHorizontalAxis(std::make_shared<TOLVLinearAxis>()); }},
        {"vertical axis", [](TOLVGraph& graph) { graph.setVerticalAxis(nullptr); }},
        {"major lines", [](TOLVGraph& graph) { graph.setMajorLineStyle(nullptr); }},
        {"minor lines", [](TOLVGraph& graph) { graph.setMinorLineStyle(nullptr); }},
        {"strategy", [](TOLVGraph& graph) { graph.setDrawingStrategy(nullptr); }},
        {"extents", [](TOLVGraph& graph) { graph.setExtents(std::make_shared<TOLVGraphExtents>()); }},
        {"range of x", [](TOLVGraph& graph) { graph.zoomXToFixedMin(0.0F, 5.0F); }},
        {"range of y", [](TOLVGraph& graph) { graph.extents()->setY(TOLVAxisExtents::extentsWithMin(0.0, 5.0)); }},
        {"a new marker", [](TOLVGraph& graph) { graph.placeHorizontalAxisMarkerWithValue(0.5); }},
        {"all markers", [](TOLVGraph& graph) { graph.setMarkers({}); }},
        {"padding",
            [](TOLVGraph& graph) {
                graph.setPadding({1.0, 1.0, 1.0, 1.0});
            }},
    };
    for (const Change& change : changes) {
        const auto graph = graphWithSeries();
        int count = 0;
        const GraphDisplayObserver observer(graph, [&] { ++count; });
        EXPECT_EQ(count, 0) << change.name;
        change.make(*graph);
        EXPECT_GE(count, 1) << change.name;
    }
}

TEST(GraphDisplayObserver, DoesNotTellOfWhatIsWrittenWhileDrawing)
{
    const auto graph = graphWithSeries();
    GraphSheet sheet(graph);
    EXPECT_FALSE(linesDrawn([&] { sheet.drawInRect({0.0, 0.0, 400.0, 300.0}); }).empty());
    int count = 0;
    const GraphDisplayObserver observer(graph, [&] { ++count; });
    EXPECT_FALSE(linesDrawn([&] { sheet.drawInRect({0.0, 0.0, 500.0, 300.0}); }).empty());
    EXPECT_FALSE(linesDrawn([&] { graph->drawInRect({0.0, 0.0, 300.0, 200.0}); }).empty());
    fitMarginsToLabels(*graph, {0.0, 0.0, 200.0, 200.0});
    graph->setMargin({1.0, 2.0, 3.0, 4.0});
    graph->setHorizontalTickLabelPadding(5.0);
    graph->setVerticalTickLabelPadding(6.0);
    graph->setNeedsReloadData(true);
    graph->setCanZoomX(false);
    EXPECT_EQ(count, 0);
}

TEST(GraphDisplayObserver, TellsUntilItsEnd)
{
    const auto graph = graphWithSeries();
    int count = 0;
    std::optional<GraphDisplayObserver> observer(std::in_place, graph, [&] {
        ++count;
        observer.reset();
    });
    EXPECT_EQ(observer->graph(), graph);
    graph->setTitle("one");
    graph->setTitle("two");
    EXPECT_EQ(count, 1);
}

TEST(GraphDisplayObserver, DoesNotKeepTheGraph)
{
    auto graph = graphWithSeries();
    const GraphDisplayObserver observer(graph, [] {});
    graph.reset();
    EXPECT_EQ(observer.graph(), nullptr);
}

TEST(GraphDisplayObserver, NoGraphAndNoHandlerAreAllowed)
{
    const GraphDisplayObserver none(nullptr, [] {});
    EXPECT_EQ(none.graph(), nullptr);
    const auto graph = graphWithSeries();
    const GraphDisplayObserver silent(graph, nullptr);
    graph->setTitle("Title");
    EXPECT_EQ(silent.graph(), graph);
}

} // namespace
} // namespace TOLVGraphing
