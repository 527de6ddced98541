// Counts of 24 hours as evenly spaced dots.
#include "Picture.h"

#include <TOLVGraphing/drawing/TOLVDottedCurveGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVMath/TOLVRealVector.h>

using namespace TOLVGraphing;

Picture dottedCounts()
{
    const std::vector<float> counts = {12, 8, 5, 4, 6, 19, 58, 121, 164, 143, 117, 108, 122, 118, 109, 127, 158, 181, 149, 96, 67, 48, 33, 21};
    std::vector<float> hours;
    for (std::size_t hour = 0; hour < counts.size(); ++hour)
        hours.push_back(static_cast<float>(hour));
    const auto graph = TOLVGraph::graph();
    graph->addGraphData(TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(hours), TOLVRealVector::vectorWithComponents(counts), Color(0.0, 0.62, 0.45)));
    graph->setDrawingStrategy(std::make_shared<TOLVDottedCurveGraphDrawing>());
    // Every dot has a cell of its own: half an hour on either side tells where the hours are.
    graph->zoomXToFixedMin(-0.5F, 23.5F);
    graph->zoomYToFixedMin(0.0, 200.0);
    graph->horizontalAxis()->setLabel("Hour of the day");
    graph->horizontalAxis()->setDrawsMinorLabels(true);
    graph->verticalAxis()->setLabel("Vehicles in the hour");
    graph->verticalAxis()->setDrawsMinorLabels(true);
    return {"dotted-counts", {520.0, 260.0}, GraphSheet(graph)};
}

int main(int argumentCount, char** arguments)
{
    return writePicture(argumentCount, arguments, dottedCounts);
}
