#pragma once

#include "TOLVGraphDrawing.h"
#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// Draws each series as a curve in its line style, clipped to the data area less a point on every side so that its frame stays clear. A series that makes no curve (vectors missing,
/// of different lengths, or not TOLVRealVector) is left out, and all are without both ranges. Without a line style a series is stroked as the context is set.
///
/// There are at most two vertices for each pixel column, as TOLVGraphCurve makes them. A sample without a position (NaN, or negative on a logarithmic axis) is passed over beside others of its column, and the line goes on behind an infinite one; a
/// column that begins with one without a position makes the line dip to the coordinate 0 instead, which mostly lies below the data area. Hosts leave such samples out beforehand.
class TOLV_EXPORT TOLVCurveGraphDrawing final : public TOLVGraphDrawing {
public:
    void drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect) override;
};

} // namespace TOLVGraphing
