// The yield of three sources in four quarters as grouped bars over a category axis.
#include "Picture.h"

#include <TOLVGraphing/axes/TOLVBarAxis.h>
#include <TOLVGraphing/drawing/BarGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVMath/TOLVRealVector.h>

using namespace TOLVGraphing;

Picture groupedBars()
{
    struct Source {
        const char* name;
        std::vector<float> yield;
        Color color;
    };
    const Source sources[] = {
        {"wind", {182.0F, 131.0F, 97.0F, 164.0F}, Color(0.0, 0.45, 0.7)},
        {"sun", {41.0F, 118.0F, 127.0F, 36.0F}, Color(0.9, 0.62, 0.0)},
        {"water", {58.0F, 74.0F, 49.0F, 52.0F}, Color(0.0, 0.62, 0.45)},
    };
    const auto quarters = TOLVRealVector::vectorWithComponents({1.0F, 2.0F, 3.0F, 4.0F});

    const auto graph = TOLVGraph::graph();
    std::vector<LegendEntry> legend;
    for (const Source& source : sources) {
        const auto style = TOLVLineStyle::solidLineWithColor(source.color, 6.0);
        graph->addGraphData(TOLVGraphData::graphDataWithX(quarters, TOLVRealVector::vectorWithComponents(source.yield), style));
        legend.push_back({source.name, style});
    }
    const auto categories = std::make_shared<TOLVBarAxis>();
    categories->setTickLabels({{"January to March", "April to June", "July to Sept.", "Oct. to December"}});
    graph->setHorizontalAxis(categories);
    graph->setDrawingStrategy(std::make_shared<BarGraphDrawing>());
    graph->setExtents(graph->extentsFittingGraphData());
    // Bars stand on the lower edge, so only a range from 0 shows their proportions.
    graph->zoomYToFixedMin(0.0, 200.0);
    graph->verticalAxis()->setLabel("Yield (GWh)");
    graph->verticalAxis()->setDrawsMinorLabels(true);

    Picture picture{"grouped-bars", {520.0, 300.0}, GraphSheet(graph)};
    picture.sheet.setLegendEntries(legend);
    return picture;
}

int main(int argumentCount, char** arguments)
{
    return writePicture(argumentCount, arguments, groupedBars);
}
