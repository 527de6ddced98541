#pragma once

#include "../platform/geometry/EdgeInsets.h"
#include "../platform/geometry/Rect.h"
#include <TOLVMath/Export.h>

#include <cstdint>

namespace TOLVGraphing {

class TOLVGraph;

/// What becomes of the margins that a graph has: they are forgotten, or are the least that it keeps.
enum class MarginFit : std::uint8_t {
    Exact,    ///< they are forgotten
    OnlyGrow, ///< they are the least that the graph keeps
};

/// Sets the graph's margin, and the tick label padding of its axes, to the smallest that leave every tick label, axis title, marker badge and the graph title whole inside the rectangle (points, y growing
/// upwards) and clear of one another. They are whole points: in single precision a position on the edge of the data area is then exactly on it, and its label is not taken for one outside. The graph's padding stays: it is the white space around everything. Uses the extents and texts as they are; call it again when they change. Does
/// nothing without both axes. In a rectangle too small for its labels the margins take what they need and the data area becomes empty.
/// The margin is announced at least once, the paddings are not.
/// With `MarginFit::OnlyGrow` no side becomes smaller than it was: while something is dragged, the data area then does not go to and fro under the pointer.
TOLV_EXPORT void fitMarginsToLabels(TOLVGraph& graph, const Rect& rect, MarginFit fit = MarginFit::Exact);

} // namespace TOLVGraphing
