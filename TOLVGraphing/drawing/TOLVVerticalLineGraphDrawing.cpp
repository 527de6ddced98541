#include "TOLVVerticalLineGraphDrawing.h"

#include "../graph/TOLVGraph.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/DrawingContext.h"
#include "SampleMarks.h"

namespace TOLVGraphing {

namespace {

constexpr double kLineWidth = 1.0;

} // namespace

void TOLVVerticalLineGraphDrawing::drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect)
{
    DrawingContext* context = currentContext();
    if (!graph || !context)
        return;
    const Rect dataRect = graph->dataRectInRect(inRect);
    drawSampleMarks(*context, *graph, inRect, [&](Point position) {
        const Rect line = intersectionRect({position.x, dataRect.y(), kLineWidth, position.y - dataRect.y()}, dataRect);
        if (line.height() != 0.0)
            context->fillRect(line);
    });
}

} // namespace TOLVGraphing
