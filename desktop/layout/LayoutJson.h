#pragma once

#include <TOLVGraphing/graph/GraphLayout.h>
#include <TOLVMath/Export.h>

#include <string>

namespace TOLVGraphing {

class GraphSheet;

/// A graph's layout as JSON, UTF-8, ending in a newline: an object with the members of GraphLayout under their names. Rectangles are lists [x, y, width, height], ranges [min, max], all numbers the shortest texts that read
/// back as the same double; what is not finite is null, and so is what is absent. Fates are the words of `nameOfFate`; `collidesWith` is a position in the same list and only there with a collision. Bytes that are no UTF-8 are
/// replaced by U+FFFD.
[[nodiscard]] TOLV_EXPORT std::string layoutJson(const GraphLayout& layout);

/// The layout of a sheet that fills the rectangle (0, 0, size): {"size", "legendRect", "graph"}, the last as above. The sheet is laid out for it.
[[nodiscard]] TOLV_EXPORT std::string layoutJson(GraphSheet& sheet, const Size& size);

} // namespace TOLVGraphing
