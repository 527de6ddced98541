#pragma once

#include "../platform/geometry/Point.h"
#include <TOLVMath/Export.h>

#include <array>

namespace TOLVGraphing {

/// The point half-way between two points.
[[nodiscard]] TOLV_EXPORT Point TOLVNSPointMidpoint(Point a, Point b);
/// The point at the fraction f of the way from a (0) to b (1); other fractions lie outside the segment.
[[nodiscard]] TOLV_EXPORT Point TOLVNSPointFractionalMidpoint(Point a, Point b, float f);
/// The distance between two points: squared in double precision, its root taken in single precision.
[[nodiscard]] TOLV_EXPORT float TOLVNSPointSegmentLength(Point a, Point b);

/// A point with two control points.
struct TOLVDrawPoint {
    /// The point.
    Point p;
    /// Its control points.
    std::array<Point, 2> cp;
};

/// Sets all three points to zero.
TOLV_EXPORT void TOLVDrawPointInit(TOLVDrawPoint& drawPoint);

} // namespace TOLVGraphing
