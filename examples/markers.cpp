// A damped oscillation and its envelope with markers: badges on the axis and the values of both curves beside them.
#include "Picture.h"

#include <TOLVGraphing/axes/AdaptiveNumberFormatter.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVMath/TOLVRealVector.h>

#include <cmath>

using namespace TOLVGraphing;

Picture markers()
{
    std::vector<float> seconds, oscillation, envelope;
    for (int i = 0; i <= 2050; ++i) {
        const double t = i * 0.001;
        seconds.push_back(static_cast<float>(t));
        oscillation.push_back(static_cast<float>(1.2 * std::exp(-1.4 * t) * std::cos(21.0 * t)));
        envelope.push_back(static_cast<float>(1.2 * std::exp(-1.4 * t)));
    }
    const auto x = TOLVRealVector::vectorWithComponents(seconds);
    const auto line = TOLVLineStyle::solidLineWithColor(Color(0.0, 0.45, 0.7), 1.5);
    const auto dashed = TOLVLineStyle::dashedLineStyle()->styleWithColor(Color(0.84, 0.37, 0.0));

    const auto graph = TOLVGraph::graph();
    graph->addGraphData(TOLVGraphData::graphDataWithX(x, TOLVRealVector::vectorWithComponents(oscillation), line));
    graph->addGraphData(TOLVGraphData::graphDataWithX(x, TOLVRealVector::vectorWithComponents(envelope), dashed));
    graph->zoomXToFixedMin(0.0F, 2.0F);
    graph->zoomYToFixedMin(-1.2, 1.4);
    graph->setTitle("Damped oscillation");
    graph->horizontalAxis()->setLabel("Time (s)");
    graph->verticalAxis()->setLabel("Deflection (mm)");
    for (const auto& axis : {graph->horizontalAxis(), graph->verticalAxis()})
        axis->setTickLabelFormatter(std::make_shared<AdaptiveNumberFormatter>(axis));
    graph->verticalAxis()->setDrawsMinorLabels(true);
    for (const double t : {0.15, 0.598, 1.0, 1.646})
        graph->placeHorizontalAxisMarkerWithValue(t);

    Picture picture{"markers", {520.0, 300.0}, GraphSheet(graph)};
    picture.sheet.setLegendEntries({{"deflection", line}, {"envelope", dashed}});
    return picture;
}

int main(int argumentCount, char** arguments)
{
    return writePicture(argumentCount, arguments, markers);
}
