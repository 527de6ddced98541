#include "TOLVDottedCurveGraphDrawing.h"

#include "../data/TOLVCurve.h"
#include "../graph/TOLVGraph.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/DrawingContext.h"
#include "../platform/graphics/GraphicsStateSaver.h"
#include "AxisPositions.h"
#include "PixelFills.h"

#include <cmath>
#include <span>

namespace TOLVGraphing {

namespace {

constexpr double kDotSize = 5.0;

Rect rectOfDot(Point center)
{
    return integralRect(offsetRect({center.x, center.y, kDotSize, kDotSize}, -0.5 * kDotSize, -0.5 * kDotSize));
}

/// Draws the dots and collects the line through them.
void drawDots(DrawingContext& context, const AxisPositions& vertical, std::span<const float> values, const Rect& dataRect, const Color& color, TOLVCurve& curve)
{
    PixelFills fills(context, dataRect, values.size());
    const auto step = static_cast<float>(dataRect.width() / static_cast<double>(values.size()));
    // Only the first two edges are rounded to whole points.
    float previous = std::rint(static_cast<float>(dataRect.x()));
    float current = std::rint(static_cast<float>(dataRect.x() + static_cast<double>(step)));
    for (const float value : values) {
        const float x = (previous + current) * 0.5F;
        const float y = vertical.pointForValue(value);
        const Point center{static_cast<double>(x), static_cast<double>(y)};
        curve.addPoint(center);
        if (center.valid())
            fills.fill(rectOfDot(center), color);
        previous = current;
        current = current + step;
    }
    fills.flush();
}

void drawSeries(DrawingContext& context, const TOLVGraph& graph, const TOLVGraphData& series, const Rect& dataRect)
{
    const std::size_t count = series.Y() ? series.Y()->length() : 0;
    const Color color = series.color().value_or(Color::blackColor());
    TOLVCurve curve;
    color.set();
    if (count > 0) {
        curve.reserve(count);
        drawDots(context, AxisPositions(graph.verticalAxis().get(), dataRect), {series.Y()->components(), count}, dataRect, color, curve);
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
        drawSeries(*context, *graph, *series, dataRect);
}

} // namespace TOLVGraphing
