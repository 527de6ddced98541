#include "Rect.h"

#include "../text/NumberText.h"

#include <algorithm>
#include <cmath>

namespace TOLVGraphing {

Rect integralRect(const Rect& r)
{
    if (r.isEmpty())
        return {};
    const double left = std::floor(r.x());
    const double bottom = std::floor(r.y());
    return {left, bottom, std::ceil(r.maxX()) - left, std::ceil(r.maxY()) - bottom};
}

Rect insetRect(const Rect& r, double dx, double dy)
{
    return {r.x() + dx, r.y() + dy, r.width() - 2.0 * dx, r.height() - 2.0 * dy};
}

Rect offsetRect(const Rect& r, double dx, double dy)
{
    return {r.x() + dx, r.y() + dy, r.width(), r.height()};
}

Rect intersectionRect(const Rect& a, const Rect& b)
{
    if (!intersectsRect(a, b))
        return {};
    const double left = std::max(a.x(), b.x());
    const double bottom = std::max(a.y(), b.y());
    return {left, bottom, std::min(a.maxX(), b.maxX()) - left, std::min(a.maxY(), b.maxY()) - bottom};
}

bool intersectsRect(const Rect& a, const Rect& b)
{
    if (a.isEmpty() || b.isEmpty())
        return false;
    return a.x() < b.maxX() && b.x() < a.maxX() && a.y() < b.maxY() && b.y() < a.maxY();
}

Rect unionRect(const Rect& a, const Rect& b)
{
    if (a.isEmpty())
        return b;
    if (b.isEmpty())
        return a;
    const double left = std::min(a.x(), b.x());
    const double bottom = std::min(a.y(), b.y());
    return {left, bottom, std::max(a.maxX(), b.maxX()) - left, std::max(a.maxY(), b.maxY()) - bottom};
}

std::string toString(const Rect& rect)
{
    return "(" + shortestText(rect.x()) + ", " + shortestText(rect.y()) + ", " + shortestText(rect.width()) + ", " + shortestText(rect.height()) + ")";
}

} // namespace TOLVGraphing
