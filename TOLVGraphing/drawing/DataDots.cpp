#include "DataDots.h"

#include "../data/TOLVLineStyle.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/DrawingContext.h"
#include "../platform/graphics/GraphicsStateSaver.h"
#include "../platform/graphics/Path.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>

namespace TOLVGraphing {

namespace {

constexpr double kDotInset = 0.5;
constexpr double kRingWidth = 2.0;
constexpr double kAreaAlpha = 0.05;

std::optional<Color> colorOf(const TOLVLineStyle* style)
{
    return style ? style->color() : std::nullopt;
}

/// Dots that are painted as one path. The cost of a path grows faster than its length where its shapes overlap, and opaque shapes look the same in several paths.
constexpr std::size_t kDotsInPath = 256;

/// So many dots of an opaque colour are drawn as repeats of one where that is quicker, at the nearest quarters of a point.
constexpr std::size_t kManyDots = 2048;
constexpr double kPlaces = 4.0;

Path pathOfDots(std::span<const Rect> rects)
{
    Path path;
    path.setLineWidth(kRingWidth);
    for (const Rect& rect : rects) {
        if (rect.valid())
            path.addPath(Path::pathWithOvalInRect(rect));
    }
    return path;
}

/// The middles of dots at the nearest quarters of a point; nothing when the dots are not all of one size.
std::optional<std::vector<Point>> repeatedPlaces(std::span<const Rect> rects)
{
    const auto nearestPlace = [](double coordinate) { return std::floor(coordinate * kPlaces + 0.5) / kPlaces; };
    std::vector<Point> places;
    places.reserve(rects.size());
    for (const Rect& rect : rects) {
        if (rect.size != rects.front().size)
            return std::nullopt;
        if (rect.valid())
            places.push_back({nearestPlace(rect.x() + 0.5 * rect.width()), nearestPlace(rect.y() + 0.5 * rect.height())});
    }
    return places;
}

/// The same as all insides and then all rings in one path each; false when the dots have to be drawn in another way.
bool drawRepeatedDots(DrawingContext& context, std::span<const Rect> rects)
{
    const auto places = repeatedPlaces(rects);
    if (!places)
        return false;
    const Size size = rects.front().size;
    const Path dot = Path::pathWithOvalInRect({-0.5 * size.width, -0.5 * size.height, size.width, size.height});
    context.setLineWidth(kRingWidth);
    // A ring has no corners; mitered ones would count as such.
    context.setLineJoin(LineJoin::Round);
    context.drawFilledRepeats(dot, FillRule::NonZero, *places);
    context.drawStrokedRepeats(dot, *places);
    return true;
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
    drawDataDots({&rect, 1}, withLineStyle);
}

void drawDataDots(std::span<const Rect> rects, const TOLVLineStyle* withLineStyle)
{
    DrawingContext* context = currentContext();
    const auto color = colorOf(withLineStyle);
    if (!context || !color)
        return;
    const bool isOpaque = color->alphaComponent() >= 1.0;
    const std::size_t step = isOpaque ? kDotsInPath : std::max<std::size_t>(rects.size(), 1);
    const auto setColors = [&] {
        context->setStrokeColor(color);
        context->setFillColor(Color::whiteColor());
    };
    if (isOpaque && rects.size() >= kManyDots && context->drawsRepeatsQuickly()) {
        const GraphicsStateSaver saver(*context);
        setColors();
        if (drawRepeatedDots(*context, rects))
            return;
    }
    std::vector<Path> paths;
    for (std::size_t first = 0; first < rects.size(); first += step) {
        Path path = pathOfDots(rects.subspan(first, std::min(step, rects.size() - first)));
        if (!path.isEmpty())
            paths.push_back(std::move(path));
    }
    if (paths.empty())
        return;
    const GraphicsStateSaver saver(*context);
    setColors();
    for (const Path& path : paths)
        path.fill();
    for (const Path& path : paths)
        path.stroke();
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
