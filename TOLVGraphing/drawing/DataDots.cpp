#include "DataDots.h"

#include "../data/TOLVLineStyle.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/DrawingContext.h"
#include "../platform/graphics/GraphicsStateSaver.h"
#include "../platform/graphics/Path.h"

#include <optional>

namespace TOLVGraphing {

namespace {

constexpr double kDotInset = 0.5;
constexpr double kRingWidth = 2.0;
constexpr double kAreaAlpha = 0.05;

std::optional<Color> colorOf(const TOLVLineStyle* style)
{
    return style ? style->color() : std::nullopt;
}

void drawDotPath(Path path, const TOLVLineStyle* style)
{
    DrawingContext* context = currentContext();
    const auto color = colorOf(style);
    if (!context || !color)
        return;
    const GraphicsStateSaver saver(*context);
    context->setStrokeColor(color);
    context->setFillColor(Color::whiteColor());
    path.setLineWidth(kRingWidth);
    path.fill();
    path.stroke();
}

std::vector<Point> finitePoints(std::span<const Point> points)
{
    std::vector<Point> finite;
    finite.reserve(points.size());
    for (const Point& point : points) {
        if (point.valid())
            finite.push_back(point);
    }
    return finite;
}

} // namespace

Rect dataDotRectForPoint(Point point)
{
    constexpr double kRadius = 0.5 * kDataPointDiameter;
    return insetRect({point.x - kRadius, point.y - kRadius, kDataPointDiameter, kDataPointDiameter}, kDotInset, kDotInset);
}

std::vector<Rect> dataDotRects(std::span<const Point> points)
{
    std::vector<Rect> rects;
    rects.reserve(points.size());
    for (const Point& point : points)
        rects.push_back(dataDotRectForPoint(point));
    return rects;
}

void drawDot(const Rect& rect, const TOLVLineStyle* withLineStyle)
{
    if (rect.valid())
        drawDotPath(Path::pathWithOvalInRect(rect), withLineStyle);
}

void drawDataDots(std::span<const Rect> rects, const TOLVLineStyle* withLineStyle)
{
    Path dots;
    for (const Rect& rect : rects) {
        if (rect.valid())
            dots.addPath(Path::pathWithOvalInRect(rect));
    }
    if (!dots.isEmpty())
        drawDotPath(std::move(dots), withLineStyle);
}

void strokePoints(std::span<const Point> points, const TOLVLineStyle* withLineStyle)
{
    DrawingContext* context = currentContext();
    const auto finite = finitePoints(points);
    if (!context || finite.empty())
        return;
    Path line;
    for (const Point& point : finite)
        line.addLineToPoint(point);
    const GraphicsStateSaver saver(*context);
    if (withLineStyle)
        withLineStyle->set();
    line.stroke();
}

void fillUnderPoints(std::span<const Point> points, const Rect& inRect, const TOLVLineStyle* withLineStyle)
{
    DrawingContext* context = currentContext();
    const auto finite = finitePoints(points);
    const auto color = colorOf(withLineStyle);
    if (!context || finite.empty() || !color)
        return;
    Path area;
    area.moveToX(finite.front().x, inRect.y());
    for (const Point& point : finite)
        area.addLineToPoint(point);
    area.addLineToX(finite.back().x, inRect.y());
    area.closeSubpath();
    const GraphicsStateSaver saver(*context);
    color->colorWithAlphaComponent(kAreaAlpha).set();
    area.fill();
}

} // namespace TOLVGraphing
