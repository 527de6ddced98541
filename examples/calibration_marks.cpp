// The readings of a meter against a reference as X marks, five decades of both on logarithmic axes.
#include "Picture.h"

#include <TOLVGraphing/axes/SINumberFormatter.h>
#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>
#include <TOLVGraphing/drawing/TOLVXGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVMath/TOLVRealVector.h>

#include <cmath>

using namespace TOLVGraphing;

Picture calibrationMarks()
{
    // The meter reads high at the low end, where its own noise adds.
    std::vector<float> reference, reading;
    for (int i = 0; i <= 25; ++i) {
        const double volts = 1e-4 * std::pow(10.0, i * 0.2);
        reference.push_back(static_cast<float>(volts));
        reading.push_back(static_cast<float>(std::hypot(volts * (1.0 + 0.04 * std::sin(2.1 * i)), 4e-4)));
    }
    const auto graph = TOLVGraph::graph();
    graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
    graph->setVerticalAxis(std::make_shared<TOLVLogarithmicAxis>());
    graph->setDrawingStrategy(std::make_shared<TOLVXGraphDrawing>());
    graph->addGraphData(TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(reference), TOLVRealVector::vectorWithComponents(reading), Color(0.84, 0.37, 0.0)));
    graph->zoomXToFixedMin(7e-5F, 14.0F);
    graph->zoomYToFixedMin(7e-5, 14.0);
    graph->horizontalAxis()->setLabel("Reference (V)");
    graph->verticalAxis()->setLabel("Reading (V)");
    for (const auto& axis : {graph->horizontalAxis(), graph->verticalAxis()})
        axis->setTickLabelFormatter(std::make_shared<SINumberFormatter>(axis));
    return {"calibration-marks", {400.0, 360.0}, GraphSheet(graph)};
}

int main(int argumentCount, char** arguments)
{
    return writePicture(argumentCount, arguments, calibrationMarks);
}
