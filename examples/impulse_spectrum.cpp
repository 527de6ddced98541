// The spectrum of a slightly distorted 1 kHz tone as impulses: the tone, its harmonics, and hum below it.
#include "Picture.h"

#include <TOLVGraphing/axes/SINumberFormatter.h>
#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>
#include <TOLVGraphing/drawing/TOLVVerticalLineGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVMath/TOLVRealVector.h>

using namespace TOLVGraphing;

namespace {

std::shared_ptr<TOLVGraphData> impulses(std::vector<float> frequencies, std::vector<float> levels, const Color& color)
{
    return TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(frequencies)), TOLVRealVector::vectorWithComponents(std::move(levels)), color);
}

} // namespace

Picture impulseSpectrum()
{
    const auto tone = impulses({1000.0F, 2000.0F, 3000.0F, 4000.0F, 5000.0F, 6000.0F, 7000.0F, 8000.0F, 9000.0F},
        {-3.0F, -82.0F, -71.5F, -98.0F, -88.0F, -108.0F, -101.0F, -113.0F, -109.5F}, Color(0.0, 0.45, 0.7));
    const auto hum = impulses({50.0F, 100.0F, 150.0F, 250.0F, 350.0F}, {-96.0F, -109.0F, -104.0F, -112.0F, -115.0F}, Color(0.84, 0.37, 0.0));

    const auto graph = TOLVGraph::graph();
    graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
    graph->setDrawingStrategy(std::make_shared<TOLVVerticalLineGraphDrawing>());
    graph->addGraphData(tone);
    graph->addGraphData(hum);
    graph->zoomXToFixedMin(20.0F, 20000.0F);
    graph->zoomYToFixedMin(-120.0, 0.0);
    graph->horizontalAxis()->setLabel("Frequency (Hz)");
    graph->horizontalAxis()->setTickLabelFormatter(std::make_shared<SINumberFormatter>(graph->horizontalAxis()));
    graph->horizontalAxis()->setDrawsMinorLabels(true);
    graph->verticalAxis()->setLabel("Level (dB)");
    graph->verticalAxis()->setDrawsMinorLabels(true);

    Picture picture{"impulse-spectrum", {520.0, 300.0}, GraphSheet(graph)};
    picture.sheet.setLegendEntries({{"tone and harmonics", tone->lineStyle()}, {"hum", hum->lineStyle()}});
    return picture;
}

int main(int argumentCount, char** arguments)
{
    return writePicture(argumentCount, arguments, impulseSpectrum);
}
