// The core by itself, drawn into a context that writes down what is drawn.
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/foundation/Exception.h>
#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVGraphing/platform/graphics/RecordingContext.h>
#include <TOLVMath/TOLVRealVector.h>

#include <cstdio>

using namespace TOLVGraphing;

namespace {

/// What the library throws is caught as what it is, also across the border of a shared library.
bool catchesItsExceptions()
{
    try {
        (void)TOLVAxis().mappingForRect({0.0, 0.0, 1.0, 1.0});
    } catch (const Exception& exception) {
        return !exception.name().empty();
    }
    return false;
}

} // namespace

int main()
{
    const auto graph = TOLVGraph::graph();
    graph->addGraphData(
        TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents({0.0F, 1.0F, 2.0F}), TOLVRealVector::vectorWithComponents({0.0F, 4.0F, 1.0F}), Color(0.0, 0.45, 0.7)));
    graph->setExtents(graph->extentsFittingGraphData());
    RecordingContext context;
    {
        const CurrentContextScope scope(context);
        graph->drawInRect({0.0, 0.0, 300.0, 200.0});
    }
    std::printf("%zu calls\n", context.calls().size());
    const bool drawsSeries = context.text().find("strokeColor (0, 0.45, 0.7, 1)") != std::string::npos;
    return drawsSeries && context.depth() == 0 && catchesItsExceptions() ? 0 : 1;
}
