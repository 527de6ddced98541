// Mean temperatures of the months in two towns as lines over categories, with the values above the dots.
#include "Picture.h"

#include <TOLVGraphing/axes/TOLVLineAxis.h>
#include <TOLVGraphing/drawing/LineGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVMath/TOLVRealVector.h>

using namespace TOLVGraphing;

Picture categoryLine()
{
    const auto months = TOLVRealVector::vectorWithComponents({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    const auto north = TOLVLineStyle::solidLineWithColor(Color(0.0, 0.45, 0.7), 2.0);
    const auto south = TOLVLineStyle::solidLineWithColor(Color(0.84, 0.37, 0.0), 2.0);

    const auto graph = TOLVGraph::graph();
    graph->addGraphData(
        TOLVGraphData::graphDataWithX(months, TOLVRealVector::vectorWithComponents({-3.1F, -2.8F, 0.2F, 4.9F, 10.4F, 14.7F, 17.2F, 16.1F, 11.9F, 6.8F, 2.0F, -1.4F}), north));
    graph->addGraphData(
        TOLVGraphData::graphDataWithX(months, TOLVRealVector::vectorWithComponents({7.5F, 8.2F, 10.9F, 13.8F, 18.1F, 22.4F, 25.3F, 25.0F, 21.2F, 16.7F, 11.6F, 8.4F}), south));
    const auto categories = std::make_shared<TOLVLineAxis>();
    categories->setTickLabels({{"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"}});
    graph->setHorizontalAxis(categories);
    graph->setDrawingStrategy(std::make_shared<LineGraphDrawing>());
    graph->setExtents(graph->extentsFittingGraphData());
    graph->zoomYToFixedMin(-10.0, 30.0);
    graph->setTitle("Mean temperature by month");
    graph->verticalAxis()->setLabel("°C");
    graph->verticalAxis()->setDrawsMinorLines(false);

    Picture picture{"category-line", {560.0, 320.0}, GraphSheet(graph)};
    picture.sheet.setLegendEntries({{"north", north}, {"south", south}});
    return picture;
}

int main(int argumentCount, char** arguments)
{
    return writePicture(argumentCount, arguments, categoryLine);
}
