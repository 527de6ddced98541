#pragma once

#include "CalloutPlacement.h"
#include "TOLVGraphDrawing.h"
#include <TOLVMath/Export.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace TOLVGraphing {

/// Draws each series as a curve from edge to edge, as measurements of few samples need it. CurveGraphDrawing leaves three pieces out: from the edge of the data area to the first sample in range, from the last one in range to the
/// other edge, and to the last sample of a series, whose pixel column no further one completes. Here the line between a sample in range and its neighbour outside goes to the edge, straight in points on every scale, and the last
/// sample is reached.
///
/// Samples that have no position, because a coordinate is not finite or not positive on a logarithmic axis, are left out, and the line goes on behind them. The series stay as they are. One that does not ascend, and one of more than
/// kMostSamples in range, of which each column has some, is drawn as TOLVCurveGraphDrawing does.
class TOLV_EXPORT WholeCurveGraphDrawing final : public TOLVGraphDrawing, public TOLVGraphMarkerDrawing, public TOLVGraphCalloutLayout {
public:
    /// The most samples in range that are looked at one by one.
    static constexpr std::size_t kMostSamples = 16'384;

    /// `drawsMarkerValues` draws a callout with each series' value at each marker, as CurveGraphDrawing does.
    explicit WholeCurveGraphDrawing(bool drawsMarkerValues = true) : m_drawsMarkerValues(drawsMarkerValues) {}

    /// As it was made.
    [[nodiscard]] bool drawsMarkerValues() const { return m_drawsMarkerValues; }

    void drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect) override;
    void drawMarkers(const std::vector<std::shared_ptr<TOLVMarker>>& markers, const std::shared_ptr<TOLVGraph>& forGraph, const Rect& inRect) override;
    /// Those of the graph's own markers; none where their values are not drawn.
    [[nodiscard]] std::vector<CalloutPlacement> calloutPlacements(const TOLVGraph& graph, const Rect& inRect) const override;

private:
    bool m_drawsMarkerValues;
};

} // namespace TOLVGraphing
