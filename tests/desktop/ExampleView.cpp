#include "ExampleView.h"

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVMath/TOLVRealVector.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing::testing_support {

namespace {

std::shared_ptr<TOLVGraphData> wave(const std::string& name, const Color& color, double phase)
{
    std::vector<float> x(400);
    std::vector<float> y(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
        x[i] = static_cast<float>(i) * 0.025F;
        y[i] = static_cast<float>(std::sin(static_cast<double>(x[i]) + phase));
    }
    auto data = TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), color);
    data->setName(name);
    return data;
}

} // namespace

std::shared_ptr<TOLVGraphView> exampleView(const Rect& frame)
{
    auto view = TOLVGraphView::initWithFrame(frame);
    const auto graph = view->graph();
    graph->addGraphData(wave("one", Color(0.0, 0.375, 0.75), 0.0));
    graph->addGraphData(wave("two", Color(0.75, 0.25, 0.0), 1.0));
    graph->setExtents(graph->extentsFittingGraphData());
    graph->horizontalAxis()->setLabel("Time (s)");
    graph->verticalAxis()->setLabel("Level");
    graph->placeHorizontalAxisMarkerWithValue(4.0);
    return view;
}

std::shared_ptr<TOLVPrintView> examplePage(const PrintInfo& printInfo)
{
    const auto view = exampleView({0.0, 0.0, 360.0, 240.0});
    return TOLVPrintView::initWithPrintInfo(printInfo, *view, legendEntriesOfGraph(*view->graph()));
}

} // namespace TOLVGraphing::testing_support
