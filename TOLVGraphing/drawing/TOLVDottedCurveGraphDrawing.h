#pragma once

#include "TOLVGraphDrawing.h"
#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// Draws each series as square dots of about 5 points, spread evenly across the data area and joined by a line, in the series' colour (black without one). The abscissae play no part: every ordinate has a
/// cell of the same width, as categories have. Ordinates without a finite position get no dot.
///
/// The dots of many samples are drawn at the cost of pixels where they cover whole pixels (see PixelFills), with the same picture. The line goes through all of them, whatever their number.
class TOLV_EXPORT TOLVDottedCurveGraphDrawing final : public TOLVGraphDrawing {
public:
    void drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect) override;
};

} // namespace TOLVGraphing
