#pragma once

#include "Path.h"
#include <TOLVMath/Export.h>

#include <vector>

namespace TOLVGraphing {

/// The points that a path goes through, in order and as they are: that of each move and line and the end of each curve. Closing adds none.
[[nodiscard]] TOLV_EXPORT std::vector<Point> onPathPoints(const Path& path);

} // namespace TOLVGraphing
