// A decaying oscillation of 100,000 samples, drawn to a PDF file with a marker and its value.
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/views/GraphSheet.h>
#include <TOLVMath/TOLVRealVector.h>
#include <desktop/output/GraphicsOutput.h>
#include <desktop/text/PangoTextSystem.h>

#include <cmath>

using namespace TOLVGraphing;

int main()
{
    installDesktopTextSystem();
    std::vector<float> x(100'000), y(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
        x[i] = static_cast<float>(i) * 1e-4F;
        y[i] = std::sin(40.0F * x[i]) * std::exp(-0.3F * x[i]);
    }
    const auto graph = TOLVGraph::graph();
    graph->addGraphData(
        TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), Color(0.0, 0.45, 0.7)));
    graph->setExtents(graph->extentsFittingGraphData());
    graph->horizontalAxis()->setLabel("Time (s)");
    graph->placeHorizontalAxisMarkerWithValue(2.5);
    GraphSheet sheet(graph);
    writeToFile("decay.pdf", OutputKind::PDF, OutputSettings(), [&](DrawingContext&, const Rect& bounds) { sheet.drawInRect(bounds); });
}
