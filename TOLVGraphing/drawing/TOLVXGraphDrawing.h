#pragma once

#include "TOLVGraphDrawing.h"

namespace TOLVGraphing {

/// Draws an X of 8 by 8 points at each sample, in the series' colour (black without one) and 1 point wide, centred on the sample's position rounded to whole points and clipped to the data area. Samples without a finite
/// position get none; where the two vectors' lengths differ the samples up to the shorter one count.
class TOLVXGraphDrawing final : public TOLVGraphDrawing {
public:
    void drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect) override;
};

} // namespace TOLVGraphing
