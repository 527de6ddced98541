// The frequency response of a loudspeaker, on its axis and beside it, from 20 Hz to 20 kHz on a logarithmic axis.
#include "Picture.h"

#include <TOLVGraphing/axes/SINumberFormatter.h>
#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>
#include <TOLVGraphing/drawing/TOLVCurveGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVMath/TOLVRealVector.h>

#include <cmath>

using namespace TOLVGraphing;

namespace {

/// A rise or dip of `level` decibels around a frequency, a few tenths of a decade wide.
double bump(double frequency, double center, double level)
{
    const double decades = std::log10(frequency / center);
    return level * std::exp(-40.0 * decades * decades);
}

double levelOnAxis(double f)
{
    const double bass = -10.0 * std::log10(1.0 + std::pow(48.0 / f, 4.0));
    const double treble = -10.0 * std::log10(1.0 + std::pow(f / 21000.0, 6.0));
    return 86.0 + bass + treble + bump(f, 95.0, 2.5) + bump(f, 640.0, -1.5) + bump(f, 1900.0, -2.2) + bump(f, 3400.0, 1.8) + bump(f, 11000.0, 1.2);
}

double levelBeside(double f)
{
    return levelOnAxis(f) - 12.0 * std::log10(1.0 + std::pow(f / 2600.0, 2.0)) + bump(f, 2200.0, -2.0);
}

} // namespace

Picture audioResponse()
{
    constexpr int kPointsPerDecade = 200;
    std::vector<float> frequencies, onAxis, beside;
    for (int i = 0; i <= 3 * kPointsPerDecade + 1; ++i) {
        const double f = 20.0 * std::pow(10.0, static_cast<double>(i) / kPointsPerDecade);
        frequencies.push_back(static_cast<float>(f));
        onAxis.push_back(static_cast<float>(levelOnAxis(f)));
        beside.push_back(static_cast<float>(levelBeside(f)));
    }
    const auto x = TOLVRealVector::vectorWithComponents(frequencies);
    const auto solid = TOLVLineStyle::solidLineWithColor(Color(0.0, 0.45, 0.7), 1.5);
    const auto dashed = TOLVLineStyle::dashedLineStyle()->styleWithColor(Color(0.84, 0.37, 0.0));
    dashed->setThickness(1.5);

    const auto graph = TOLVGraph::graph();
    graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
    graph->setDrawingStrategy(std::make_shared<TOLVCurveGraphDrawing>());
    graph->addGraphData(TOLVGraphData::graphDataWithX(x, TOLVRealVector::vectorWithComponents(onAxis), solid));
    graph->addGraphData(TOLVGraphData::graphDataWithX(x, TOLVRealVector::vectorWithComponents(beside), dashed));
    graph->zoomXToFixedMin(20.0F, 20000.0F);
    graph->zoomYToFixedMin(60.0, 95.0);
    graph->setTitle("Loudspeaker, 1 m, 2.83 V");
    graph->horizontalAxis()->setLabel("Frequency (Hz)");
    graph->horizontalAxis()->setTickLabelFormatter(std::make_shared<SINumberFormatter>(graph->horizontalAxis()));
    graph->horizontalAxis()->setDrawsMinorLabels(true);
    graph->verticalAxis()->setLabel("Sound pressure level (dB)");

    Picture picture{"audio-response", {520.0, 320.0}, GraphSheet(graph)};
    picture.sheet.setLegendEntries({{"on axis", solid}, {"45° beside it", dashed}});
    return picture;
}

int main(int argumentCount, char** arguments)
{
    return writePicture(argumentCount, arguments, audioResponse);
}
