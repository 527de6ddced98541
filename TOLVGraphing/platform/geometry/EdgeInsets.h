#pragma once

#include <TOLVMath/Export.h>

#include <string>

namespace TOLVGraphing {

/// Four distances inwards from the edges of a rectangle, in points. Negative ones point outwards; together they may exceed the rectangle, which then has a negative size. The top is the edge with the larger y where y grows upwards.
struct EdgeInsets {
    /// From this edge, in points.
    double top = 0.0;
    double left = 0.0;
    double bottom = 0.0;
    double right = 0.0;

    friend bool operator==(const EdgeInsets&, const EdgeInsets&) = default;
};

/// "(top, left, bottom, right)", digits as for a point.
[[nodiscard]] TOLV_EXPORT std::string toString(const EdgeInsets& insets);

} // namespace TOLVGraphing
