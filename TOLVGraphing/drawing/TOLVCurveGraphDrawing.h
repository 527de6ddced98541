#pragma once

#include "TOLVGraphDrawing.h"
#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// Draws each series as a curve in its line style, clipped to the data area less a point on every side so that its frame stays clear. A series that makes no curve (vectors missing,
/// of different lengths, or not TOLVRealVector) is left out. Samples that are NaN, or not positive on a logarithmic axis, are dropped and the line goes on behind them.
class TOLV_EXPORT TOLVCurveGraphDrawing final : public TOLVGraphDrawing {
public:
    void drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect) override;
};

} // namespace TOLVGraphing
