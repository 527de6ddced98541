#pragma once

#include "TOLVGraphing/platform/geometry/Point.h"

#include <span>

namespace TOLVGraphing::raster {

/// What takes the convex polygons that a stroke is made of.
class PolygonSink {
public:
    virtual ~PolygonSink() = default;

    /// The corners go round in either direction, in device units. A corner that is NaN or farther than 1e9 from the origin leaves the polygon out.
    virtual void addConvexPolygon(std::span<const Point> corners) = 0;
    /// Says that on lines that go to the right no later corner lies to the left of `x`.
    virtual void leaveBehind(double x) { static_cast<void>(x); }
};

} // namespace TOLVGraphing::raster
