#include "AffineTransform.h"

#include "../text/NumberText.h"

#include <algorithm>
#include <cmath>

namespace TOLVGraphing {

namespace {

constexpr double kRadiansPerDegree = 0.017453292519943295;

} // namespace

void AffineTransform::concatenate(const AffineTransform& first)
{
    // Copies of both, because a transform may be concatenated with itself.
    const AffineTransform inner = first;
    const AffineTransform outer = *this;
    a = inner.a * outer.a + inner.b * outer.c;
    b = inner.a * outer.b + inner.b * outer.d;
    c = inner.c * outer.a + inner.d * outer.c;
    d = inner.c * outer.b + inner.d * outer.d;
    tx = inner.tx * outer.a + inner.ty * outer.c + outer.tx;
    ty = inner.tx * outer.b + inner.ty * outer.d + outer.ty;
}

void AffineTransform::translateXBy(double dx, double dy)
{
    concatenate({1.0, 0.0, 0.0, 1.0, dx, dy});
}

void AffineTransform::scaleXBy(double sx, double sy)
{
    concatenate({sx, 0.0, 0.0, sy, 0.0, 0.0});
}

void AffineTransform::rotateRadians(double angle)
{
    const double sine = std::sin(angle);
    const double cosine = std::cos(angle);
    concatenate({cosine, sine, -sine, cosine, 0.0, 0.0});
}

void AffineTransform::rotateDegrees(double angle, Point aboutPoint)
{
    translateXBy(aboutPoint.x, aboutPoint.y);
    rotateRadians(angle * kRadiansPerDegree);
    translateXBy(-aboutPoint.x, -aboutPoint.y);
}

Point AffineTransform::apply(Point point) const
{
    return {a * point.x + c * point.y + tx, b * point.x + d * point.y + ty};
}

Rect AffineTransform::apply(const Rect& rect) const
{
    const Point corners[4] = {apply(rect.origin), apply(Point{rect.maxX(), rect.y()}), apply(Point{rect.maxX(), rect.maxY()}), apply(Point{rect.x(), rect.maxY()})};
    Point low = corners[0];
    Point high = corners[0];
    for (const Point& corner : corners) {
        low = {std::min(low.x, corner.x), std::min(low.y, corner.y)};
        high = {std::max(high.x, corner.x), std::max(high.y, corner.y)};
    }
    return {low.x, low.y, high.x - low.x, high.y - low.y};
}

AffineTransform AffineTransform::inverted() const
{
    const double determinant = a * d - b * c;
    if (!std::isfinite(determinant) || determinant == 0.0)
        return {};
    AffineTransform inverse{d / determinant, -b / determinant, -c / determinant, a / determinant, 0.0, 0.0};
    inverse.tx = -(tx * inverse.a + ty * inverse.c);
    inverse.ty = -(tx * inverse.b + ty * inverse.d);
    return inverse;
}

bool AffineTransform::isIdentity() const
{
    return *this == AffineTransform{};
}

std::string toString(const AffineTransform& transform)
{
    return "[" + shortestText(transform.a) + " " + shortestText(transform.b) + " " + shortestText(transform.c) + " " + shortestText(transform.d) + " " + shortestText(transform.tx)
        + " " + shortestText(transform.ty) + "]";
}

} // namespace TOLVGraphing
