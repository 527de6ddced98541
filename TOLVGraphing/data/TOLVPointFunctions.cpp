#include "TOLVPointFunctions.h"

#include <cmath>

namespace TOLVGraphing {

Point TOLVNSPointMidpoint(Point a, Point b)
{
    return {(a.x + b.x) * 0.5, (a.y + b.y) * 0.5};
}

Point TOLVNSPointFractionalMidpoint(Point a, Point b, float f)
{
    const auto fraction = static_cast<double>(f);
    return {a.x + (b.x - a.x) * fraction, a.y + fraction * (b.y - a.y)};
}

float TOLVNSPointSegmentLength(Point a, Point b)
{
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    return std::sqrt(static_cast<float>(dy * dy + dx * dx));
}

void TOLVDrawPointInit(TOLVDrawPoint& drawPoint)
{
    drawPoint = {};
}

} // namespace TOLVGraphing
