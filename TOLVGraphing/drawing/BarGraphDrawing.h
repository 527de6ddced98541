#pragma once

#include "../data/TOLVLineStyle.h"
#include "../platform/geometry/Rect.h"
#include "TOLVGraphDrawing.h"
#include <TOLVMath/Export.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace TOLVGraphing {

class DrawingContext;

/// One bar of a grouped bar chart. A value.
struct Bar {
    /// In data units.
    float y = 0.0F;
    /// The position of its series in the graph's list.
    std::int64_t graphDataIndex = 0;
    /// Shared. Its series' style; a bar whose style is null or has no colour keeps its place and is not drawn.
    std::shared_ptr<TOLVLineStyle> lineStyle;
};

/// The bars of one category, side by side. A value that refers to its graph.
struct TOLV_EXPORT BarGroup {
    /// In the order of the series.
    std::vector<Bar> bars;
    /// Shared. Null draws nothing.
    std::shared_ptr<TOLVGraph> graph;
    /// The graph rectangle, which the heights of the bars are taken in.
    Rect graphRect;
    /// The abscissa of the group, in data units; nothing draws by it.
    float x = 0.0F;

    /// Fills the bars from the lower edge of the rectangle (the group's slot, in points) to the height of their values. Each has a place of the given width (points), of which 8 % on either side stay empty; a bar is never thinner
    /// than a point. A value below the slot gives a bar downwards, a height that is not finite none.
    void drawInRect(const Rect& slot, double withBarWidth, DrawingContext& inContext) const;
};

/// Draws grouped bars: the samples at one position of every series form a group, and the groups share the data area evenly. The abscissae play no part but for their choice by the visible x range: a
/// range between two samples of a series shows no bars. A group with fewer bars than the largest fills its places from the left.
///
/// Bars stand on the lower edge of the data area, so a y range that starts at 0 shows their proportions. Samples without a finite position keep their places and have no bar.
///
/// Many bars are drawn at the cost of pixels where they cover whole pixels (see PixelFills), with the same picture; others, and those in vector files, one by one.
class TOLV_EXPORT BarGraphDrawing final : public TOLVGraphDrawing {
public:
    void drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect) override;
};

} // namespace TOLVGraphing
