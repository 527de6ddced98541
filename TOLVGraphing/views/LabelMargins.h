#pragma once

#include "../platform/geometry/EdgeInsets.h"
#include "../platform/geometry/Rect.h"

namespace TOLVGraphing {

class TOLVGraph;

/// Sets the graph's margin, and the tick label padding of its axes, to the smallest that leave every tick label, axis title, marker badge and the graph title whole inside the rectangle (points, y growing
/// upwards) and clear of one another. They are whole points: in single precision a position on the edge of the data area is then exactly on it, and its label is not taken for one outside. The graph's padding stays: it is the white space around everything. Uses the extents and texts as they are; call it again when they change. Does
/// nothing without both axes. In a rectangle too small for its labels the margins take what they need and the data area becomes empty.
void fitMarginsToLabels(TOLVGraph& graph, const Rect& rect);

} // namespace TOLVGraphing
