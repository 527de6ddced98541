#pragma once

#include "TOLVGraphing/platform/geometry/AffineTransform.h"
#include "TOLVGraphing/platform/geometry/Rect.h"
#include "TOLVGraphing/platform/graphics/Path.h"

#include <vector>

// Paths that a drawing library cannot hold are reduced here to their part in a window before the library sees them. Fixed-point libraries wrap around
// beyond a few million units, and a dashed line that runs far out of sight costs a step for every dash. Everything is in device units, after the transform.

namespace TOLVGraphing::paint {

/// How far a path reaches once it is transformed.
struct PathReach {
    /// False when an element of the path has a NaN or an infinite coordinate; such elements do not count in the corners.
    bool isFinite = true;
    Point low;
    Point high;

    /// True when no point, control points included, lies outside the window. A path without points is inside.
    [[nodiscard]] bool liesWithin(const Rect& window) const;
};

[[nodiscard]] PathReach reachOfPath(const Path& path, const AffineTransform& toDevice);

/// The path without the elements that have non-finite points: a line or curve after a dropped one continues from the last finite point,
/// a line after a dropped move starts a subpath, a close without a subpath goes.
[[nodiscard]] Path finiteElements(const Path& path);

/// The area of the path as straight-sided closed subpaths in device units, cut off at the window's sides. Inside the window, winding numbers are those of the
/// whole path, so both fill rules hold. The path's points have to be finite; beyond 1e15 device units they are moved there.
[[nodiscard]] Path filledPathWithin(const Path& path, const AffineTransform& toDevice, const Rect& window);

/// A connected visible piece of a line, in device units.
struct StrokeRun {
    std::vector<Point> points;
    bool isClosed = false;
    /// The line's length from its subpath's start to the piece's first point in the path's own units: the dash goes on from there.
    double startLength = 0.0;
};

/// The pieces of the path's lines that lie in the window, curves as short straight lines. Conditions as for filledPathWithin. Subpaths that are inside as a whole
/// stay whole. Lengths along curves out of sight are approximate.
[[nodiscard]] std::vector<StrokeRun> strokeRunsWithin(const Path& path, const AffineTransform& toDevice, const Rect& window);

} // namespace TOLVGraphing::paint
