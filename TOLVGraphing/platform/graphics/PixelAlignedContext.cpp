#include "PixelAlignedContext.h"

#include "GraphicsStateSaver.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace TOLVGraphing {

namespace {

/// Coordinates beyond this many pixels are not on any grid that one sees.
constexpr double kLargestCoordinate = 2147483648.0;
/// Sums that should lie on the edge of a pixel may miss it by this much; they go the way of those that do not.
constexpr double kRounding = 1e-9;
constexpr std::size_t kMostPointsOfRect = 5;

/// The edge of pixels at or below the coordinate.
double edgeBelow(double coordinate)
{
    return std::floor(coordinate + kRounding);
}

double edgeAbove(double coordinate)
{
    return std::ceil(coordinate - kRounding);
}

double nearestEdge(double coordinate)
{
    return edgeBelow(coordinate + 0.5);
}

bool isOnGrid(double coordinate)
{
    return std::abs(coordinate) <= kLargestCoordinate;
}

bool isOnGrid(Point point)
{
    return isOnGrid(point.x) && isOnGrid(point.y);
}

/// The transform neither turns nor shears, and has an inverse.
bool keepsDirections(const AffineTransform& transform)
{
    const bool isFinite = std::isfinite(transform.a) && std::isfinite(transform.d) && std::isfinite(transform.tx) && std::isfinite(transform.ty);
    return isFinite && transform.b == 0.0 && transform.c == 0.0 && transform.a != 0.0 && transform.d != 0.0;
}

/// Where a stroke of a whole number of pixels has to run.
struct LineGrid {
    double width = 1.0;
    bool endsStickOut = false;

    /// The place of a line at the coordinate: both edges of the stroke are edges of pixels.
    [[nodiscard]] double across(double coordinate) const { return std::fmod(width, 2.0) == 0.0 ? nearestEdge(coordinate) : edgeBelow(coordinate) + 0.5; }
    /// The place of a point along a line where the line ends or just goes on.
    [[nodiscard]] double along(double coordinate, bool isEnd) const { return isEnd && endsStickOut ? across(coordinate) : nearestEdge(coordinate); }
};

/// One part of a path: which of the path's points are its own.
struct Subpath {
    std::size_t first = 0;
    std::size_t count = 0;
    bool isClosed = false;
};

bool isStraight(Point from, Point to)
{
    return from.x == to.x || from.y == to.y;
}

/// The parts of a path of nothing but horizontal and vertical lines; nothing for an empty path or when there is anything else.
std::optional<std::vector<Subpath>> straightSubpaths(const Path& path)
{
    const auto points = path.points();
    std::vector<Subpath> parts;
    std::size_t next = 0;
    for (const Path::Verb verb : path.verbs()) {
        // What goes on after a close begins where the closed part did: such a part has no first point of its own.
        if (verb == Path::Verb::Curve || (verb != Path::Verb::Move && (parts.empty() || parts.back().isClosed)))
            return std::nullopt;
        if (verb == Path::Verb::Close) {
            parts.back().isClosed = true;
            if (!isStraight(points[next - 1], points[parts.back().first]))
                return std::nullopt;
            continue;
        }
        if (verb == Path::Verb::Move)
            parts.push_back({next, 0, false});
        else if (!isStraight(points[next - 1], points[next]))
            return std::nullopt;
        ++parts.back().count;
        ++next;
    }
    return parts.empty() ? std::nullopt : std::optional(std::move(parts));
}

using Neighbours = std::vector<std::optional<Point>>;

/// For each point the last one before it that is another one; nothing at the beginning of an open line.
Neighbours formerPoints(std::span<const Point> points, bool isClosed)
{
    Neighbours former(points.size());
    if (isClosed) {
        const auto other = std::find_if(points.rbegin(), points.rend(), [&](const Point& point) { return point != points.front(); });
        if (other != points.rend())
            former.front() = *other;
    }
    for (std::size_t i = 1; i < points.size(); ++i)
        former[i] = points[i - 1] == points[i] ? former[i - 1] : points[i - 1];
    return former;
}

/// For each point the first one after it that is another one; nothing at the end of an open line.
Neighbours nextPoints(std::span<const Point> points, bool isClosed)
{
    const std::vector<Point> reversed(points.rbegin(), points.rend());
    Neighbours next = formerPoints(reversed, isClosed);
    std::reverse(next.begin(), next.end());
    return next;
}

/// A line in one direction whose ends have met keeps the places that it had along that direction.
void keepLength(std::span<Point> aligned, std::span<const Point> former)
{
    const bool isVertical = std::all_of(former.begin(), former.end(), [&](Point point) { return point.x == former.front().x; });
    const bool isHorizontal = std::all_of(former.begin(), former.end(), [&](Point point) { return point.y == former.front().y; });
    if (isVertical == isHorizontal)
        return;
    const auto along = isVertical ? &Point::y : &Point::x;
    if (std::any_of(aligned.begin(), aligned.end(), [&](Point point) { return point.*along != aligned.front().*along; }))
        return;
    for (std::size_t i = 0; i < aligned.size(); ++i)
        aligned[i].*along = former[i].*along;
}

/// Moves the points of one part, in pixels, to the grid.
void alignPoints(std::span<Point> points, bool areClosed, const LineGrid& grid)
{
    const std::vector<Point> exact(points.begin(), points.end());
    const Neighbours former = formerPoints(exact, areClosed);
    const Neighbours next = nextPoints(exact, areClosed);
    for (std::size_t i = 0; i < exact.size(); ++i) {
        const Point point = exact[i];
        const bool isEnd = !former[i] || !next[i];
        const bool isAlone = !former[i] && !next[i];
        const bool touchesVertical = isAlone || (former[i] && former[i]->x == point.x) || (next[i] && next[i]->x == point.x);
        const bool touchesHorizontal = isAlone || (former[i] && former[i]->y == point.y) || (next[i] && next[i]->y == point.y);
        points[i].x = touchesVertical ? grid.across(point.x) : grid.along(point.x, isEnd);
        points[i].y = touchesHorizontal ? grid.across(point.y) : grid.along(point.y, isEnd);
    }
    if (!areClosed)
        keepLength(points, exact);
}

/// The path's points in pixels; nothing where one of them is not on the grid.
std::optional<std::vector<Point>> pointsInPixels(const Path& path, const AffineTransform& toPixels)
{
    std::vector<Point> points;
    points.reserve(path.points().size());
    for (const Point& point : path.points()) {
        points.push_back(toPixels.apply(point));
        if (!isOnGrid(points.back()))
            return std::nullopt;
    }
    return points;
}

/// The path with other points, which are in pixels. It has no curves.
Path pathWithPixels(const Path& path, std::span<const Point> pixels, const AffineTransform& toPixels)
{
    Path result;
    std::size_t next = 0;
    for (const Path::Verb verb : path.verbs()) {
        if (verb == Path::Verb::Close) {
            result.closeSubpath();
            continue;
        }
        // Not by the inverse transform, which rounds more often.
        const Point point{(pixels[next].x - toPixels.tx) / toPixels.a, (pixels[next].y - toPixels.ty) / toPixels.d};
        ++next;
        if (verb == Path::Verb::Move)
            result.moveToPoint(point);
        else
            result.addLineToPoint(point);
    }
    return result;
}

/// True when the path is one upright rectangle, by three lines and the closing one, drawn or not.
bool isRect(const Path& path, std::span<const Point> pixels)
{
    const auto verbs = path.verbs();
    const std::size_t lines = static_cast<std::size_t>(std::count(verbs.begin(), verbs.end(), Path::Verb::Line));
    if (lines + 1 != pixels.size() || (lines != 3 && lines != 4) || verbs.front() != Path::Verb::Move)
        return false;
    if (verbs.size() > lines + 2 || (verbs.size() == lines + 2 && verbs.back() != Path::Verb::Close))
        return false;
    if (lines == 4 && pixels[4] != pixels[0])
        return false;
    const bool beginsSideways = pixels[0].y == pixels[1].y;
    if (beginsSideways)
        return pixels[1].x == pixels[2].x && pixels[2].y == pixels[3].y && pixels[3].x == pixels[0].x;
    return pixels[0].x == pixels[1].x && pixels[1].y == pixels[2].y && pixels[2].x == pixels[3].x && pixels[3].y == pixels[0].y;
}

struct Span {
    double low = 0.0;
    double high = 0.0;
};

/// Not empty where the span has a length.
Span nearestPixels(Span span)
{
    const Span edges{nearestEdge(span.low), nearestEdge(span.high)};
    if (edges.low < edges.high)
        return edges;
    const double low = edgeBelow(span.low + (span.high - span.low) * 0.5);
    return {low, low + 1.0};
}

Span pixelsAround(Span span)
{
    return {edgeBelow(span.low), edgeAbove(span.high)};
}

/// The path with the edges that `align` gives those of the rectangle that it is; nothing when it is none, or one without area.
template <typename Align>
std::optional<Path> alignedRect(const Path& path, const AffineTransform& toPixels, Align align)
{
    if (!keepsDirections(toPixels) || path.points().size() > kMostPointsOfRect)
        return std::nullopt;
    auto pixels = pointsInPixels(path, toPixels);
    if (!pixels || !isRect(path, *pixels))
        return std::nullopt;
    const Point corner = (*pixels)[0];
    const Point opposite = (*pixels)[2];
    if (corner.x == opposite.x || corner.y == opposite.y)
        return std::nullopt;
    const Span exactX{std::min(corner.x, opposite.x), std::max(corner.x, opposite.x)};
    const Span exactY{std::min(corner.y, opposite.y), std::max(corner.y, opposite.y)};
    const Span x = align(exactX);
    const Span y = align(exactY);
    for (Point& point : *pixels)
        point = {point.x == exactX.low ? x.low : x.high, point.y == exactY.low ? y.low : y.high};
    return pathWithPixels(path, *pixels, toPixels);
}

} // namespace

PixelAlignedContext::PixelAlignedContext(DrawingContext& target, double pixelsPerPoint) : ForwardingContext(target), m_pixelsPerPoint(pixelsPerPoint)
{
    // Without a usable ratio the transform has no inverse, and nothing is aligned.
    const double scale = pixelsPerPoint > 0.0 ? pixelsPerPoint : 0.0;
    m_state.toPixels = {scale, 0.0, 0.0, scale, 0.0, 0.0};
}

void PixelAlignedContext::saveState()
{
    target().saveState();
    m_saved.push_back(m_state);
}

void PixelAlignedContext::restoreState()
{
    if (m_saved.empty())
        return;
    target().restoreState();
    m_state = m_saved.back();
    m_saved.pop_back();
}

void PixelAlignedContext::concatenateTransform(const AffineTransform& transform)
{
    target().concatenateTransform(transform);
    m_state.toPixels.concatenate(transform);
}

void PixelAlignedContext::clipToPath(const Path& path, FillRule rule)
{
    const auto aligned = alignedRect(path, m_state.toPixels, pixelsAround);
    target().clipToPath(aligned ? *aligned : path, rule);
    m_state.isClippedToWholePixels = m_state.isClippedToWholePixels && aligned;
}

void PixelAlignedContext::setLineWidth(double width)
{
    target().setLineWidth(width);
    m_state.lineWidth = width;
}

void PixelAlignedContext::setStrokeColor(const std::optional<Color>& color)
{
    m_state.strokeColor = color;
    ForwardingContext::setStrokeColor(color);
}

void PixelAlignedContext::setLineCap(LineCap cap)
{
    target().setLineCap(cap);
    m_state.cap = cap;
}

void PixelAlignedContext::drawFilledPath(const Path& path, FillRule rule)
{
    const auto aligned = alignedRect(path, m_state.toPixels, nearestPixels);
    target().drawFilledPath(aligned ? *aligned : path, rule);
}

void PixelAlignedContext::drawStrokedPath(const Path& path)
{
    const AffineTransform& toPixels = m_state.toPixels;
    const double scale = std::abs(toPixels.a);
    const double width = m_state.lineWidth * scale;
    const bool canAlign = keepsDirections(toPixels) && scale == std::abs(toPixels.d) && width > 0.0 && isOnGrid(width);
    const auto parts = canAlign ? straightSubpaths(path) : std::nullopt;
    auto pixels = parts ? pointsInPixels(path, toPixels) : std::nullopt;
    if (!pixels) {
        target().drawStrokedPath(path);
        return;
    }
    const LineGrid grid{std::max(nearestEdge(width), 1.0), m_state.cap != LineCap::Butt};
    for (const Subpath& part : *parts)
        alignPoints(std::span(*pixels).subspan(part.first, part.count), part.isClosed, grid);
    const Path aligned = pathWithPixels(path, *pixels, toPixels);
    const double alignedWidth = grid.width / scale;
    if (alignedWidth == m_state.lineWidth) {
        target().drawStrokedPath(aligned);
        return;
    }
    const GraphicsStateSaver saver(target());
    target().setLineWidth(alignedWidth);
    if (width < 1.0) {
        const Color color = m_state.strokeColor.value_or(Color::blackColor());
        target().setStrokeColor(color.colorWithAlphaComponent(color.alphaComponent() * width));
    }
    target().drawStrokedPath(aligned);
}

void PixelAlignedContext::drawFilledRepeats(const Path& path, FillRule rule, std::span<const Point> places)
{
    // Rectangles are aligned one by one, as a context does it that knows nothing of repeats; more points than theirs pass anyway.
    if (path.points().size() > kMostPointsOfRect)
        ForwardingContext::drawFilledRepeats(path, rule, places);
    else
        DrawingContext::drawFilledRepeats(path, rule, places); // NOLINT(bugprone-parent-virtual-call)
}

void PixelAlignedContext::drawStrokedRepeats(const Path& path, std::span<const Point> places)
{
    // So are straight strokes.
    if (straightSubpaths(path))
        DrawingContext::drawStrokedRepeats(path, places); // NOLINT(bugprone-parent-virtual-call)
    else
        ForwardingContext::drawStrokedRepeats(path, places);
}

std::optional<Rect> PixelAlignedContext::wholePixelsOfFill(const Rect& rect) const
{
    const AffineTransform& toPixels = m_state.toPixels;
    if (!m_state.isClippedToWholePixels || !keepsDirections(toPixels))
        return std::nullopt;
    // What the transform gives, whose other two numbers are 0: this is asked for millions of rectangles.
    const Point corner{toPixels.a * rect.x() + toPixels.tx, toPixels.d * rect.y() + toPixels.ty};
    const Point opposite{toPixels.a * rect.maxX() + toPixels.tx, toPixels.d * rect.maxY() + toPixels.ty};
    if (!isOnGrid(corner) || !isOnGrid(opposite) || corner.x == opposite.x || corner.y == opposite.y)
        return std::nullopt;
    const Span x = nearestPixels({std::min(corner.x, opposite.x), std::max(corner.x, opposite.x)});
    const Span y = nearestPixels({std::min(corner.y, opposite.y), std::max(corner.y, opposite.y)});
    return Rect(x.low, y.low, x.high - x.low, y.high - y.low);
}

Rect PixelAlignedContext::fillOfWholePixels(const Rect& pixels) const
{
    const AffineTransform& toPixels = m_state.toPixels;
    const Point corner{(pixels.x() - toPixels.tx) / toPixels.a, (pixels.y() - toPixels.ty) / toPixels.d};
    const Point opposite{(pixels.maxX() - toPixels.tx) / toPixels.a, (pixels.maxY() - toPixels.ty) / toPixels.d};
    return {corner, {opposite.x - corner.x, opposite.y - corner.y}};
}

} // namespace TOLVGraphing
