#pragma once

#include "ImagePixels.h"
#include "TOLVGraphing/platform/geometry/AffineTransform.h"
#include "TOLVGraphing/platform/graphics/Path.h"

#include <optional>
#include <vector>

// Areas under lines of many points on pixels. Cairo's time for a fill grows with the crossings of its edges and rows: the area under a hundred thousand points of noise takes it seconds.

namespace TOLVGraphing::cairo {

/// What lies between a line, which goes in one direction of x, and a level base, in device units.
struct LineArea {
    std::vector<Point> line;
    double base = 0.0;
};

/// The area of a path that is a single one of this kind: from the base upright to the line, along it and upright back to the base. Winding numbers do not matter to it, as it does not lie over itself. Nothing for other paths, for those of so few points
/// that Cairo is as quick, for points that are not finite or far away, and where the transform turns or shears.
[[nodiscard]] std::optional<LineArea> areaUnderLine(const Path& path, const AffineTransform& toDevice);

/// Fills the area in an image, which ImagePixels::canChange, as far as it lies in the clip. Coverage is exact to a level of 255.
void fillArea(cairo_surface_t* surface, const LineArea& area, const Color& color, const PixelRange& clip);

} // namespace TOLVGraphing::cairo
