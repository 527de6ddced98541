#include "SampleMarks.h"

#include "../graph/TOLVGraph.h"
#include "../platform/graphics/DrawingContext.h"
#include "../platform/graphics/GraphicsStateSaver.h"

#include <algorithm>
#include <cmath>

namespace TOLVGraphing {

namespace {

void drawSeriesMarks(const TOLVGraph& graph, const TOLVGraphData& series, const Rect& rect, const std::function<void(Point)>& drawMark)
{
    if (!series.X() || !series.Y())
        return;
    const std::size_t count = std::min(series.X()->length(), series.Y()->length());
    const float* x = series.X()->components();
    const float* y = series.Y()->components();
    series.color().value_or(Color::blackColor()).set();
    for (std::size_t i = 0; i < count; ++i) {
        const float px = std::rint(graph.XForValue(x[i], rect));
        const float py = std::rint(graph.YForValue(y[i], rect));
        if (std::isfinite(px) && std::isfinite(py))
            drawMark({static_cast<double>(px), static_cast<double>(py)});
    }
}

} // namespace

void drawSampleMarks(DrawingContext& context, const TOLVGraph& graph, const Rect& inRect, const std::function<void(Point position)>& drawMark)
{
    const GraphicsStateSaver saver(context);
    Path::pathWithRect(graph.dataRectInRect(inRect)).addClip();
    for (const auto& series : graph.graphData())
        drawSeriesMarks(graph, *series, inRect, drawMark);
}

} // namespace TOLVGraphing
