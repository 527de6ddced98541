#pragma once

#include "TOLVGraphDrawing.h"
#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// Draws an X of 8 by 8 points at each sample, in the series' colour (black without one) and 1 point wide, centred on the sample's position rounded to whole points and clipped to the data area. Samples without a finite
/// position get none; where the two vectors' lengths differ the samples up to the shorter one count.
///
/// Of a series of 2,048 samples and more, marks are left out that change nothing: those farther than 100 points from the data area, and, where a context takes long for each mark, those at a place where so many were drawn that pixels stand still (see MarkRepeats).
/// All others are drawn, because each darkens its edges a little more: their time grows with their number.
class TOLV_EXPORT TOLVXGraphDrawing final : public TOLVGraphDrawing {
public:
    void drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect) override;
};

} // namespace TOLVGraphing
