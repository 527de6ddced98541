#pragma once

#include "../platform/geometry/Point.h"
#include <TOLVMath/Export.h>

#include <array>

namespace TOLVGraphing {

/// The point half-way between two points, in double precision. As of all functions here, what is not finite gives what arithmetic makes of it.
[[nodiscard]] TOLV_EXPORT Point TOLVNSPointMidpoint(Point a, Point b);
/// The point at the fraction f of the way from a (0) to b (1); other fractions lie outside the segment. In double precision, to which the fraction is widened.
[[nodiscard]] TOLV_EXPORT Point TOLVNSPointFractionalMidpoint(Point a, Point b, float f);
/// The distance between two points: squared in double precision, its root taken in single precision, in which distances beyond about 1.8e19 are infinite and those below about 1e-23 are 0.
[[nodiscard]] TOLV_EXPORT float TOLVNSPointSegmentLength(Point a, Point b);

/// A point with two control points, in points.
struct TOLVDrawPoint {
    /// The point.
    Point p;
    /// Its control points.
    std::array<Point, 2> cp;
};

/// Sets all three points to zero.
TOLV_EXPORT void TOLVDrawPointInit(TOLVDrawPoint& drawPoint);

} // namespace TOLVGraphing
