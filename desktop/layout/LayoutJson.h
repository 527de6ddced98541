#pragma once

#include <TOLVGraphing/graph/GraphLayout.h>
#include <TOLVMath/Export.h>

#include <string>

namespace TOLVGraphing {

class GraphSheet;

/// A graph's layout as JSON, UTF-8, ending in a newline, in points with y growing upwards: an object with the members of GraphLayout under their names; only an axis's min and max are together "range", and its slotCenters are "slots".
/// Rectangles are lists [x, y, width, height], ranges [min, max], insets objects of "top", "left", "bottom" and "right", all numbers the shortest texts that read
/// back as the same double; what is not finite is null, and so is what is absent. Fates are the words of `nameOfFate`; `collidesWith` is a position in the same list and only there with a collision. Bytes that are no UTF-8 are
/// replaced by U+FFFD. Throws nothing but for want of memory.
[[nodiscard]] TOLV_EXPORT std::string layoutJson(const GraphLayout& layout);

/// The layout of a sheet that fills the rectangle (0, 0, size), a size in points: an object with "size" as [width, height], "legendRect" (null without a legend) and "graph", the last as above. The sheet, whose graph is not null, is laid
/// out for it, with what that changes in its graph; texts are measured by the text system in force.
[[nodiscard]] TOLV_EXPORT std::string layoutJson(GraphSheet& sheet, const Size& size);

} // namespace TOLVGraphing
