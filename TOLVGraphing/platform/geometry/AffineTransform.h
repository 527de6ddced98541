#pragma once

#include "Point.h"
#include "Rect.h"
#include <TOLVMath/Export.h>

#include <string>

namespace TOLVGraphing {

/// A two-dimensional affine transform: a point (x, y) maps to (a x + c y + tx, b x + d y + ty). Double precision; identity by default. Any numbers will do; those that are not finite give what arithmetic makes of them, and nothing throws.
/// The operations modify the transform in place and act before what it already does, as a drawing context's own transform:
/// after t.translateXBy(10, 0), points are first moved by 10 and then mapped as before.
struct TOLV_EXPORT AffineTransform {
    /// A number of the equations that the class has, tx and ty in points; those of the identity by default.
    double a = 1.0;
    double b = 0.0;
    double c = 0.0;
    double d = 1.0;
    double tx = 0.0;
    double ty = 0.0;

    /// Moves by (dx, dy) first.
    void translateXBy(double dx, double dy);
    /// Scales by (sx, sy) first.
    void scaleXBy(double sx, double sy);
    /// Turns by the angle in radians first, counter-clockwise where y grows upwards.
    void rotateRadians(double angle);
    /// Turns by the angle in degrees about the given point first.
    void rotateDegrees(double angle, Point aboutPoint = {});
    /// Applies `first` before this transform.
    void concatenate(const AffineTransform& first);

    /// The point's image.
    [[nodiscard]] Point apply(Point point) const;
    /// The bounding box of the images of the four corners; its size is never negative, also where the rectangle's is.
    [[nodiscard]] Rect apply(const Rect& rect) const;
    /// The transform that undoes this one; a transform that cannot be undone, or whose determinant is not finite, gives the identity.
    [[nodiscard]] AffineTransform inverted() const;
    /// True when all six numbers are those of the identity.
    [[nodiscard]] bool isIdentity() const;

    friend bool operator==(const AffineTransform&, const AffineTransform&) = default;
};

/// "[a b c d tx ty]", digits as for a point.
[[nodiscard]] TOLV_EXPORT std::string toString(const AffineTransform& transform);

} // namespace TOLVGraphing
