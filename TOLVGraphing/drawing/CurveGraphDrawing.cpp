#include "CurveGraphDrawing.h"

#include "../graph/TOLVGraph.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/GraphicsStateSaver.h"
#include "DataDots.h"
#include "MarkerCallouts.h"
#include "TOLVCurveGraphDrawing.h"

#include <utility>

namespace TOLVGraphing {

void CurveGraphDrawing::drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect)
{
    TOLVCurveGraphDrawing().drawGraph(graph, inRect);
}

void CurveGraphDrawing::drawMarkers(const std::vector<std::shared_ptr<TOLVMarker>>& markers, const std::shared_ptr<TOLVGraph>& forGraph, const Rect& inRect)
{
    DrawingContext* context = currentContext();
    if (!forGraph || !context)
        return;
    const GraphicsStateSaver saver(*context);
    Path::pathWithRect(insetRect(forGraph->dataRectInRect(inRect), 1.0, 1.0)).addClip();
    for (const auto& marker : markers) {
        if (!marker)
            continue;
        const auto callouts = calloutsForMarker(*marker, *forGraph, inRect);
        const auto overlapped = overlappedCallouts(callouts);
        for (std::size_t i = 0; i < callouts.size(); ++i) {
            if (!overlapped[i])
                callouts[i].callout.draw();
        }
    }
}

std::vector<CalloutPlacement> CurveGraphDrawing::calloutPlacements(const TOLVGraph& graph, const Rect& inRect) const
{
    std::vector<CalloutPlacement> placements;
    for (std::size_t position = 0; position < graph.markers().size(); ++position) {
        const auto callouts = calloutsForMarker(*graph.markers()[position], graph, inRect);
        const auto overlapped = overlappedCallouts(callouts);
        const std::size_t first = placements.size();
        for (std::size_t i = 0; i < callouts.size(); ++i) {
            const auto& [callout, series] = callouts[i];
            CalloutPlacement placement{callout.label->label().string(), callout.label->rect(), callout.bounds(), series, position, CalloutFate::Kept, std::nullopt};
            if (overlapped[i]) {
                placement.fate = CalloutFate::CollidesWithCallout;
                placement.collidesWith = first + *overlapped[i];
            } else if (!placement.textRect.valid()) {
                placement.fate = CalloutFate::NotFinite;
            }
            placements.push_back(std::move(placement));
        }
    }
    return placements;
}

// What a strategy is asked for is asked of it, also where it needs nothing of itself.
// NOLINTNEXTLINE(readability-convert-member-functions-to-static)
void CurveGraphDrawing::drawDotsForPoints(std::span<const Point> points, const TOLVLineStyle* withLineStyle) const
{
    drawDataDots(dataDotRects(points), withLineStyle);
}

} // namespace TOLVGraphing
