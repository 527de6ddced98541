#include "Given.h"

#include <TOLVMath/TOLVRealVector.h>
#include <desktop/output/GraphicsOutput.h>
#include <desktop/text/PangoTextSystem.h>

#include <cmath>

namespace TOLVGraphing::testing_support::given {

namespace {

constexpr std::size_t kSampleCount = 100'000;

} // namespace

std::vector<float> abscissae()
{
    std::vector<float> x(kSampleCount);
    for (std::size_t i = 0; i < x.size(); ++i)
        x[i] = static_cast<float>(i) * 1e-4F;
    return x;
}

std::vector<float> ordinates()
{
    std::vector<float> y = abscissae();
    for (float& value : y)
        value = std::sin(40.0F * value) * std::exp(-0.3F * value);
    return y;
}

std::shared_ptr<TOLVGraph> graph()
{
    installDesktopTextSystem();
    auto graph = TOLVGraph::graph();
    graph->addGraphData(TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(abscissae()), TOLVRealVector::vectorWithComponents(ordinates()), Color(0.0, 0.45, 0.7)));
    graph->setExtents(graph->extentsFittingGraphData());
    return graph;
}

std::shared_ptr<TOLVGraphView> view(const std::shared_ptr<TOLVGraph>& graph)
{
    auto view = TOLVGraphView::initWithFrame({0.0, 0.0, 640.0, 400.0});
    view->setFitsMarginsToLabels(true);
    view->setGraph(graph);
    return view;
}

input::MeasurementTable table()
{
    input::MeasurementTable table;
    table.sourceName = "given.csv";
    for (const auto& [name, values] : {std::pair{"time", abscissae()}, std::pair{"voltage", ordinates()}}) {
        input::MeasurementColumn column;
        column.number = table.columns.size() + 1;
        column.name = name;
        column.values = values;
        table.columns.push_back(std::move(column));
    }
    return table;
}

void draw(const std::shared_ptr<TOLVGraph>& graph)
{
    GraphSheet sheet(graph);
    writeToFile("graph.png", OutputKind::PNG, OutputSettings(), [&](DrawingContext&, const Rect& bounds) { sheet.drawInRect(bounds); });
}

} // namespace TOLVGraphing::testing_support::given
