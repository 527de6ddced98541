#include "GraphSheet.h"

#include "../graph/TOLVGraph.h"
#include "../platform/foundation/Exception.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/NullContext.h"
#include "../platform/graphics/RecordingContext.h"

#include <TOLVMath/TOLVRealVector.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace TOLVGraphing {
namespace {

std::shared_ptr<TOLVGraph> graphOfOneSeries()
{
    auto graph = TOLVGraph::graph();
    graph->addGraphData(
        TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents({0.0F, 1.0F, 2.0F}), TOLVRealVector::vectorWithComponents({1.0F, 3.0F, 2.0F}), Color::blackColor()));
    graph->setExtents(graph->extentsFittingGraphData());
    return graph;
}

const Rect kSheet(0, 0, 400, 300);

TEST(GraphSheet, WithoutALegendTheGraphTakesTheWholeSheet)
{
    GraphSheet sheet(graphOfOneSeries());
    sheet.layoutInRect(kSheet);
    EXPECT_EQ(sheet.graphRect(), kSheet);
    EXPECT_EQ(sheet.legendRect().height(), 0.0);
}

TEST(GraphSheet, TheLegendStandsBelowTheGraphAndBeginsAtTheDataArea)
{
    GraphSheet sheet(graphOfOneSeries());
    sheet.setLegendEntries({{"one", TOLVLineStyle::dashedLineStyle()}, {"two", TOLVLineStyle::dottedLineStyle()}});
    sheet.layoutInRect(kSheet);
    EXPECT_EQ(sheet.legendRect().height(), LegendRows::kRowHeight);
    EXPECT_EQ(sheet.graphRect().y(), sheet.legendRect().maxY());
    EXPECT_EQ(sheet.graphRect().maxY(), kSheet.maxY());
    EXPECT_EQ(sheet.legendRect().x(), sheet.graph()->dataRectInRect(sheet.graphRect()).x());
}

TEST(GraphSheet, AGivenMarginHoldsAsItIs)
{
    GraphSheet sheet(graphOfOneSeries());
    sheet.setMargin(EdgeInsets{10, 20, 30, 40});
    sheet.layoutInRect(kSheet);
    EXPECT_EQ(sheet.graph()->dataRectInRect(sheet.graphRect()), Rect(20, 30, 340, 260));
}

TEST(GraphSheet, TheLegendNeverTakesMoreThanItsPart)
{
    GraphSheet sheet(graphOfOneSeries());
    std::vector<LegendEntry> entries(500, {"a rather long name of a series", TOLVLineStyle::dashedLineStyle()});
    sheet.setLegendEntries(entries);
    sheet.layoutInRect(kSheet);
    EXPECT_LE(sheet.legendRect().height(), 0.4 * kSheet.height());
    EXPECT_GT(sheet.graph()->dataRectInRect(sheet.graphRect()).height(), 0.0);
}

TEST(GraphSheet, DrawsGraphAndLegendOnceEach)
{
    GraphSheet sheet(graphOfOneSeries());
    sheet.setLegendEntries({{"only one", nullptr}});
    RecordingContext context;
    const CurrentContextScope scope(context);
    sheet.drawInRect(kSheet);
    EXPECT_EQ(context.depth(), 0);
    const auto isLegend = [](const std::string& call) { return call.starts_with("text \"only one\""); };
    EXPECT_EQ(std::count_if(context.calls().begin(), context.calls().end(), isLegend), 1);
}

TEST(GraphSheet, AnySheetIsDrawnWithoutHarm)
{
    GraphSheet sheet(graphOfOneSeries());
    sheet.setLegendEntries({{"name", TOLVLineStyle::dashedLineStyle()}});
    NullContext context;
    const CurrentContextScope scope(context);
    for (const Rect& rect : {Rect(), Rect(0, 0, 1, 1), Rect(0, 0, -50, -50), Rect(0, 0, 1e9, 10), Rect(-1e9, 1e9, 20, 1e9)})
        sheet.drawInRect(rect);
}

TEST(GraphSheet, ThereIsNoneWithoutAGraph)
{
    try {
        const GraphSheet sheet(nullptr);
        FAIL() << "expected an exception";
    } catch (const Exception& exception) {
        EXPECT_STREQ(exception.what(), "NullGraph: A sheet shows a graph");
    }
}

TEST(GraphSheet, ASheetWhoseHeightIsNoNumberHasALegendOfOneRow)
{
    for (const double height : {std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::infinity(), -300.0, 0.0}) {
        GraphSheet sheet(graphOfOneSeries());
        sheet.setLegendEntries({{"one", nullptr}, {"two", nullptr}, {"three", nullptr}});
        sheet.layoutInRect({0.0, 0.0, 40.0, height});
        EXPECT_EQ(sheet.legendRect().height(), LegendRows::kRowHeight) << height;
    }
}

} // namespace
} // namespace TOLVGraphing
