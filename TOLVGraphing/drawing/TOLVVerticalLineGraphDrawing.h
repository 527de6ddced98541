#pragma once

#include "TOLVGraphDrawing.h"
#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// Draws a vertical line 1 point wide from the lower edge of the data area up to each sample, in the series' colour (black without one): an impulse plot. A line stands to the right of the sample's position, which is
/// rounded to whole points; what lies outside the data area is cut off, and a line without height is left out. Samples without a finite position get none; where the two vectors' lengths differ the
/// samples up to the shorter one count.
///
/// The lines of many samples are drawn at the cost of pixels where they cover whole pixels (see PixelFills), with the same picture; others, and those in vector files, one by one.
class TOLV_EXPORT TOLVVerticalLineGraphDrawing final : public TOLVGraphDrawing {
public:
    void drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect) override;
};

} // namespace TOLVGraphing
