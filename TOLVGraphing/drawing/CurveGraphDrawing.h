#pragma once

#include "TOLVCurveGraphDrawing.h"
#include "TOLVGraphDrawing.h"

#include <memory>
#include <vector>

namespace TOLVGraphing {

/// Draws each series as a curve, as TOLVCurveGraphDrawing does, and at each marker a callout with the interpolated value of each series, the first series first. A callout that would overlap an
/// earlier one of the same marker is left out. Where a marker lies outside the x range of a series, that series and the ones after it get none.
class CurveGraphDrawing final : public TOLVGraphDrawing, public TOLVGraphMarkerDrawing {
public:
    void drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect) override;
    void drawMarkers(const std::vector<std::shared_ptr<TOLVMarker>>& markers, const std::shared_ptr<TOLVGraph>& forGraph, const Rect& inRect) override;
};

} // namespace TOLVGraphing
