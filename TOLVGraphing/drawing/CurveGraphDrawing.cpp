#include "CurveGraphDrawing.h"

#include "../graph/TOLVGraph.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/GraphicsStateSaver.h"
#include "MarkerCallouts.h"

namespace TOLVGraphing {

void CurveGraphDrawing::drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect)
{
    TOLVCurveGraphDrawing().drawGraph(graph, inRect);
}

void CurveGraphDrawing::drawMarkers(
    const std::vector<std::shared_ptr<TOLVMarker>>& markers, const std::shared_ptr<TOLVGraph>& forGraph, const Rect& inRect)
{
    DrawingContext* context = currentContext();
    if (!forGraph || !context)
        return;
    const GraphicsStateSaver saver(*context);
    Path::pathWithRect(insetRect(forGraph->dataRectInRect(inRect), 1.0, 1.0)).addClip();
    for (const auto& marker : markers) {
        for (const GraphCallout& callout : calloutsWithoutOverlap(calloutsForMarker(*marker, *forGraph, inRect)))
            callout.draw();
    }
}

} // namespace TOLVGraphing
