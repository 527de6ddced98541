#pragma once

#include "TOLVGraphDrawing.h"

namespace TOLVGraphing {

/// Draws each series as square dots of about 5 points, spread evenly across the data area and joined by a line, in the series' colour. The abscissae play no part: every ordinate has a
/// cell of the same width, as categories have. Ordinates without a finite position get no dot.
class TOLVDottedCurveGraphDrawing final : public TOLVGraphDrawing {
public:
    void drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect) override;
};

} // namespace TOLVGraphing
