// Two million samples of a noisy, modulated signal: every pixel column shows the true smallest and largest of its samples, single spikes among them.
#include "Picture.h"

#include <TOLVGraphing/drawing/TOLVCurveGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVMath/TOLVRealVector.h>

#include <cmath>
#include <cstdint>

using namespace TOLVGraphing;

Picture denseSeries()
{
    constexpr std::size_t kCount = 2'000'000;
    std::vector<float> seconds(kCount), level(kCount);
    std::uint32_t random = 1;
    for (std::size_t i = 0; i < kCount; ++i) {
        const double t = static_cast<double>(i) * 5e-6;
        random = random * 1664525U + 1013904223U;
        const double noise = static_cast<double>(random >> 8) / 8388608.0 - 1.0;
        seconds[i] = static_cast<float>(t);
        level[i] = static_cast<float>((0.45 + 0.35 * std::sin(1.9 * t)) * noise + 0.2 * std::sin(0.63 * t));
    }
    // One sample each, among four thousand of a column: they are drawn all the same.
    level[640'000] = 1.4F;
    level[1'450'000] = -1.5F;

    const auto graph = TOLVGraph::graph();
    graph->addGraphData(TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(seconds)), TOLVRealVector::vectorWithComponents(std::move(level)),
        TOLVLineStyle::solidLineWithColor(Color(0.0, 0.45, 0.7), 1.5)));
    graph->setDrawingStrategy(std::make_shared<TOLVCurveGraphDrawing>());
    graph->zoomXToFixedMin(0.0F, 10.0F);
    graph->zoomYToFixedMin(-1.6, 1.6);
    graph->setTitle("Two million samples, two of them spikes");
    graph->horizontalAxis()->setLabel("Time (s)");
    graph->verticalAxis()->setLabel("Level (V)");
    return {"dense-series", {520.0, 280.0}, GraphSheet(graph)};
}

int main(int argumentCount, char** arguments)
{
    return writePicture(argumentCount, arguments, denseSeries);
}
