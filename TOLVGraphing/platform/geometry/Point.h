#pragma once

#include <TOLVMath/Export.h>

#include <string>

namespace TOLVGraphing {

/// A position in the current drawing coordinates: double precision points (1/72 inch), y growing upwards unless a view says otherwise.
struct TOLV_EXPORT Point {
    /// In points from the origin.
    double x = 0.0;
    double y = 0.0;

    /// True when both coordinates are finite, neither NaN nor infinite.
    [[nodiscard]] bool valid() const;

    friend bool operator==(const Point&, const Point&) = default;
};

/// A width and a height in points. Negative values are kept as they are.
struct TOLV_EXPORT Size {
    /// In points.
    double width = 0.0;
    double height = 0.0;

    /// True when both are finite; negative and zero sizes are valid.
    [[nodiscard]] bool valid() const;

    friend bool operator==(const Size&, const Size&) = default;
};

/// True when the number is finite: its exponent bits are not all ones.
[[nodiscard]] TOLV_EXPORT bool valid(double number);

/// "(x, y)" with the shortest digits that give each number back.
[[nodiscard]] TOLV_EXPORT std::string toString(const Point& point);
/// "(width, height)", digits as for a point.
[[nodiscard]] TOLV_EXPORT std::string toString(const Size& size);

} // namespace TOLVGraphing
