#include "Point.h"

#include "../text/NumberText.h"

#include <cmath>

namespace TOLVGraphing {

bool valid(double number)
{
    return std::isfinite(number);
}

bool Point::valid() const
{
    return TOLVGraphing::valid(x) && TOLVGraphing::valid(y);
}

bool Size::valid() const
{
    return TOLVGraphing::valid(width) && TOLVGraphing::valid(height);
}

std::string toString(const Point& point)
{
    return "(" + shortestText(point.x) + ", " + shortestText(point.y) + ")";
}

std::string toString(const Size& size)
{
    return "(" + shortestText(size.width) + ", " + shortestText(size.height) + ")";
}

} // namespace TOLVGraphing
