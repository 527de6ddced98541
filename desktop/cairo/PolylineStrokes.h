#pragma once

#include "TOLVGraphing/platform/geometry/AffineTransform.h"
#include "TOLVGraphing/platform/geometry/Rect.h"
#include "TOLVGraphing/platform/graphics/Path.h"
#include "../graphics/PathWindow.h"

#include <optional>
#include <span>
#include <vector>

typedef struct _cairo cairo_t;

// Curves of many corners on pixels. Cairo takes some 50 microseconds for each corner of a noisy line; the coverage that raster::PolylineStroker computes is blended into the image,
// or goes through Cairo as a mask where clip, source, operator or surface are of another kind. The bytes are the same.

namespace TOLVGraphing::cairo {

/// The device units of a point where the transform keeps all angles (turned or mirrored as may be); nothing where it does not, and lines have no one width therefore.
[[nodiscard]] std::optional<double> scaleKeepingAngles(const AffineTransform& transform);

/// The path's lines in device units, when it consists of open straight-sided lines that have many points and each go in one direction of x only; nothing when Cairo should stroke the path.
/// The points have to be finite.
[[nodiscard]] std::optional<std::vector<paint::StrokeRun>> longPolylines(const Path& path, const AffineTransform& toDevice);
/// The same question about lines in device units.
[[nodiscard]] bool areLongPolylines(std::span<const paint::StrokeRun> lines);

/// Paints lines, which `areLongPolylines`, with the target's source, clip, join and miter limit. `scale` makes device units of the width, the dash and the lines' start lengths;
/// the dash is one that paint::usableDash gives. `visible` is the clip's box in device units. False, with nothing painted, when only Cairo can do it: with round or square ends,
/// without smooth edges, or with dashes by the million.
[[nodiscard]] bool strokePolylines(cairo_t* target, std::span<const paint::StrokeRun> lines, double width, const LineDash& dash, double scale, const Rect& visible);

} // namespace TOLVGraphing::cairo
