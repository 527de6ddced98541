#include "TOLVLineStyle.h"

#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/DrawingContext.h"
#include "../platform/graphics/Path.h"

#include <utility>

namespace TOLVGraphing {

namespace {

LineDash dashOf(const std::vector<float>& values)
{
    return {std::vector<double>(values.begin(), values.end()), 0.0};
}

} // namespace

std::shared_ptr<TOLVLineStyle> TOLVLineStyle::styleWithPattern(std::vector<float> values)
{
    auto style = std::make_shared<TOLVLineStyle>();
    style->setPatternValues(std::move(values));
    return style;
}

std::shared_ptr<TOLVLineStyle> TOLVLineStyle::dashedLineStyle()
{
    return styleWithPattern({5.0F, 2.0F});
}

std::shared_ptr<TOLVLineStyle> TOLVLineStyle::dashDotLineStyle()
{
    return styleWithPattern({5.0F, 5.0F, 1.0F, 5.0F});
}

std::shared_ptr<TOLVLineStyle> TOLVLineStyle::dottedLineStyle()
{
    return styleWithPattern({1.0F, 1.0F});
}

std::shared_ptr<TOLVLineStyle> TOLVLineStyle::solidLineWithColor(const std::optional<Color>& color, double thickness)
{
    auto style = std::make_shared<TOLVLineStyle>();
    style->setColor(color);
    style->setThickness(thickness);
    return style;
}

std::shared_ptr<TOLVLineStyle> TOLVLineStyle::copy() const
{
    return std::make_shared<TOLVLineStyle>(*this);
}

std::shared_ptr<TOLVLineStyle> TOLVLineStyle::styleWithColor(const std::optional<Color>& color) const
{
    auto style = copy();
    style->setColor(color);
    return style;
}

void TOLVLineStyle::setPatternInContext(DrawingContext& context) const
{
    if (!m_patternValues || m_patternValues->empty())
        return;
    context.setLineDash(dashOf(*m_patternValues));
    context.setLineWidth(m_thickness);
}

void TOLVLineStyle::setColorInContext(DrawingContext& context) const
{
    context.setStrokeColor(m_color);
}

void TOLVLineStyle::setThicknessInContext(DrawingContext& context) const
{
    context.setLineWidth(m_thickness);
}

void TOLVLineStyle::setInContext(DrawingContext& context) const
{
    setPatternInContext(context);
    setColorInContext(context);
    setThicknessInContext(context);
}

void TOLVLineStyle::set() const
{
    if (DrawingContext* context = currentContext())
        setInContext(*context);
}

void Path::setLineDashStyle(const TOLVLineStyle* style)
{
    setLineDash(style && style->patternValues() ? dashOf(*style->patternValues()) : LineDash{});
}

} // namespace TOLVGraphing
