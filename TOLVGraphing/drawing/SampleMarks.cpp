#include "SampleMarks.h"

#include "../graph/TOLVGraph.h"
#include "../platform/graphics/DrawingContext.h"
#include "../platform/graphics/GraphicsStateSaver.h"
#include "AxisPositions.h"

#include <algorithm>
#include <cmath>

namespace TOLVGraphing {

namespace {

void drawSeriesMarks(const TOLVGraph& graph, const TOLVGraphData& series, const Rect& dataRect, SampleMarks& marks)
{
    if (!series.X() || !series.Y())
        return;
    const std::size_t count = std::min(series.X()->length(), series.Y()->length());
    const float* x = series.X()->components();
    const float* y = series.Y()->components();
    const Color color = series.color().value_or(Color::blackColor());
    color.set();
    if (count == 0)
        return;
    const AxisPositions horizontal(graph.horizontalAxis().get(), dataRect);
    const AxisPositions vertical(graph.verticalAxis().get(), dataRect);
    marks.beginSeries(color, count);
    for (std::size_t i = 0; i < count; ++i) {
        const float px = std::rint(horizontal.pointForValue(x[i]));
        const float py = std::rint(vertical.pointForValue(y[i]));
        if (std::isfinite(px) && std::isfinite(py))
            marks.drawMark({static_cast<double>(px), static_cast<double>(py)});
    }
    marks.endSeries();
}

} // namespace

SampleMarks::~SampleMarks() = default;

void drawSampleMarks(DrawingContext& context, const TOLVGraph& graph, const Rect& inRect, SampleMarks& marks)
{
    const Rect dataRect = graph.dataRectInRect(inRect);
    const GraphicsStateSaver saver(context);
    Path::pathWithRect(dataRect).addClip();
    for (const auto& series : graph.graphData())
        drawSeriesMarks(graph, *series, dataRect, marks);
}

} // namespace TOLVGraphing
