#include "Color.h"

#include "../text/NumberText.h"
#include "CurrentContext.h"
#include "DrawingContext.h"

namespace TOLVGraphing {

namespace {

double clampedComponent(double component)
{
    if (!(component > 0.0))
        return 0.0;
    return component < 1.0 ? component : 1.0;
}

} // namespace

Color Color::clamped() const
{
    return {clampedComponent(m_red), clampedComponent(m_green), clampedComponent(m_blue), clampedComponent(m_alpha)};
}

void Color::set() const
{
    setFill();
    setStroke();
}

void Color::setFill() const
{
    if (DrawingContext* context = currentContext())
        context->setFillColor(*this);
}

void Color::setStroke() const
{
    if (DrawingContext* context = currentContext())
        context->setStrokeColor(*this);
}

std::string toString(const Color& color)
{
    return "(" + shortestText(color.redComponent()) + ", " + shortestText(color.greenComponent()) + ", " + shortestText(color.blueComponent()) + ", "
        + shortestText(color.alphaComponent()) + ")";
}

} // namespace TOLVGraphing
