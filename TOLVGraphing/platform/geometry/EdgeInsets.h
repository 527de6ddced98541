#pragma once

#include <TOLVMath/Export.h>

#include <string>

namespace TOLVGraphing {

/// Four distances inwards from the edges of a rectangle, in points.
struct EdgeInsets {
    double top = 0.0;
    double left = 0.0;
    double bottom = 0.0;
    double right = 0.0;

    friend bool operator==(const EdgeInsets&, const EdgeInsets&) = default;
};

/// "(top, left, bottom, right)".
[[nodiscard]] TOLV_EXPORT std::string toString(const EdgeInsets& insets);

} // namespace TOLVGraphing
