#pragma once

#include "CalloutPlacement.h"
#include "TOLVGraphDrawing.h"
#include <TOLVMath/Export.h>

#include <memory>
#include <span>
#include <vector>

namespace TOLVGraphing {

class TOLVLineStyle;

/// Draws each series as a curve, as TOLVCurveGraphDrawing does, and at each marker a callout with the interpolated value of each series, the first series first. A callout that would overlap an
/// earlier one of the same marker is left out. Where a marker lies outside the x range of a series, that series and the ones after it get none.
class TOLV_EXPORT CurveGraphDrawing final : public TOLVGraphDrawing, public TOLVGraphMarkerDrawing, public TOLVGraphCalloutLayout {
public:
    void drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect) override;
    void drawMarkers(const std::vector<std::shared_ptr<TOLVMarker>>& markers, const std::shared_ptr<TOLVGraph>& forGraph, const Rect& inRect) override;
    /// Those of the graph's own markers. Callouts of different markers are not kept apart.
    [[nodiscard]] std::vector<CalloutPlacement> calloutPlacements(const TOLVGraph& graph, const Rect& inRect) const override;
    /// For hosts: white dots with a ring in the style's colour at the points (in points of the current context), as line graphs have them at their samples. Nothing is drawn without a colour.
    void drawDotsForPoints(std::span<const Point> points, const TOLVLineStyle* withLineStyle) const;
};

} // namespace TOLVGraphing
