#include "TOLVDottedCurveGraphDrawing.h"

#include "../data/TOLVCurve.h"
#include "../graph/TOLVGraph.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/DrawingContext.h"
#include "../platform/graphics/GraphicsStateSaver.h"

#include <cmath>

namespace TOLVGraphing {

namespace {

constexpr double kDotSize = 5.0;

void drawDot(DrawingContext& context, Point center)
{
    if (center.valid())
        context.fillRect(integralRect(offsetRect({center.x, center.y, kDotSize, kDotSize}, -0.5 * kDotSize, -0.5 * kDotSize)));
}

void drawSeries(DrawingContext& context, const TOLVGraph& graph, const TOLVGraphData& series, const Rect& dataRect, const Rect& rect)
{
    const std::size_t count = series.Y() ? series.Y()->length() : 0;
    const float* values = count ? series.Y()->components() : nullptr;
    TOLVCurve curve;
    series.color().value_or(Color::blackColor()).set();
    if (count > 0) {
        const auto step = static_cast<float>(dataRect.width() / static_cast<double>(count));
        // Only the first two edges are rounded to whole points.
        float previous = std::rint(static_cast<float>(dataRect.x()));
        float current = std::rint(static_cast<float>(dataRect.x() + static_cast<double>(step)));
        for (std::size_t i = 0; i < count; ++i) {
            const float x = (previous + current) * 0.5F;
            const float y = graph.YForValue(values[i], rect);
            const Point center{static_cast<double>(x), static_cast<double>(y)};
            curve.addPoint(center);
            drawDot(context, center);
            previous = current;
            current = current + step;
        }
    }
    curve.stroke();
}

} // namespace

void TOLVDottedCurveGraphDrawing::drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect)
{
    DrawingContext* context = currentContext();
    if (!graph || !context)
        return;
    const Rect dataRect = graph->dataRectInRect(inRect);
    const GraphicsStateSaver saver(*context);
    Path::pathWithRect(dataRect).addClip();
    for (const auto& series : graph->graphData())
        drawSeries(*context, *graph, *series, dataRect, inRect);
}

} // namespace TOLVGraphing
