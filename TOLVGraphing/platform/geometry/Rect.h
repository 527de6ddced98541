#pragma once

#include "Point.h"
#include <TOLVMath/Export.h>

#include <string>

namespace TOLVGraphing {

/// A rectangle in points: its origin is the corner with the smallest coordinates while the size is positive, that is the
/// lower-left corner where y grows upwards (the upper-left one in a flipped view). Sizes may be negative; nothing is normalised. Double precision; all zero by default. Any numbers will do, and nothing throws.
struct Rect {
    /// The corner with the smallest coordinates.
    Point origin;
    /// Width and height.
    Size size;

    /// The zero rectangle.
    Rect() = default;
    /// From its corner and size.
    Rect(Point rectOrigin, Size rectSize) : origin(rectOrigin), size(rectSize) {}
    Rect(double x, double y, double width, double height) : origin{x, y}, size{width, height} {}

    /// A number of the origin or of the size: x and y of the one, width and height of the other.
    [[nodiscard]] double x() const { return origin.x; }
    [[nodiscard]] double y() const { return origin.y; }
    [[nodiscard]] double width() const { return size.width; }
    [[nodiscard]] double height() const { return size.height; }
    /// The coordinate at the end of the width: x + width.
    [[nodiscard]] double maxX() const { return origin.x + size.width; }
    /// The coordinate at the end of the height: y + height.
    [[nodiscard]] double maxY() const { return origin.y + size.height; }
    /// True when the width or the height is not greater than zero (a NaN counts as empty).
    [[nodiscard]] bool isEmpty() const { return !(size.width > 0.0) || !(size.height > 0.0); }
    /// True when all four numbers are finite. Negative and empty rectangles are valid.
    [[nodiscard]] bool valid() const { return origin.valid() && size.valid(); }

    friend bool operator==(const Rect&, const Rect&) = default;
};

/// The smallest rectangle with whole coordinates around r: left floor(x), bottom floor(y), right ceil(x + width), top ceil(y + height).
/// An empty or negative rectangle gives the zero rectangle; an origin that is NaN stays so.
[[nodiscard]] TOLV_EXPORT Rect integralRect(const Rect& r);
/// (x + dx, y + dy, width - 2 dx, height - 2 dy), as computed: the size may become negative.
[[nodiscard]] TOLV_EXPORT Rect insetRect(const Rect& r, double dx, double dy);
/// The rectangle moved by (dx, dy).
[[nodiscard]] TOLV_EXPORT Rect offsetRect(const Rect& r, double dx, double dy);
/// The common area; rectangles that do not intersect (see `intersectsRect`) give the zero rectangle.
[[nodiscard]] TOLV_EXPORT Rect intersectionRect(const Rect& a, const Rect& b);
/// True when the interiors overlap with positive area. Rectangles that only touch, empty ones, and those with NaN, intersect nothing.
[[nodiscard]] TOLV_EXPORT bool intersectsRect(const Rect& a, const Rect& b);
/// The smallest rectangle around both; an empty one is left out, and of two empty ones b is the answer as it is.
[[nodiscard]] TOLV_EXPORT Rect unionRect(const Rect& a, const Rect& b);

/// "(x, y, width, height)", digits as for a point.
[[nodiscard]] TOLV_EXPORT std::string toString(const Rect& rect);

} // namespace TOLVGraphing
