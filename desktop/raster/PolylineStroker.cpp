#include "PolylineStroker.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace TOLVGraphing::raster {

namespace {

constexpr double kFarthest = 1e9;
constexpr double kShortestSegment = 1.0 / 256.0;
/// A bevelled or round corner that a pointed one exceeds by less than this many pixels is drawn pointed.
constexpr double kInvisiblePoint = 1.0 / 512.0;
/// Segments share a corner on the inner side when it takes less than this part of either.
constexpr double kSharedPart = 0.45;
/// How far the straight parts of a round corner may be from the circle, in pixels.
constexpr double kFlatness = 1.0 / 64.0;
/// Strokes with at least this reach have so many segments over one another that it pays to leave points out.
constexpr double kWideReach = 2.4;
/// How far from its line a point may be that is left out, in pixels: less than one level of a pixel's edge.
constexpr double kStraightness = 1.0 / 300.0;
constexpr double kMostFanParts = 64.0;

Point sum(Point a, Point b)
{
    return {a.x + b.x, a.y + b.y};
}
Point difference(Point a, Point b)
{
    return {a.x - b.x, a.y - b.y};
}
Point scaled(Point a, double factor)
{
    return {a.x * factor, a.y * factor};
}
double dotProduct(Point a, Point b)
{
    return a.x * b.x + a.y * b.y;
}
double crossProduct(Point a, Point b)
{
    return a.x * b.y - a.y * b.x;
}
/// The direction turned by a right angle, from the x axis towards the y axis.
Point turned(Point direction)
{
    return {-direction.y, direction.x};
}

} // namespace

PolylineStroker::PolylineStroker(PolygonSink& coverage, StrokeStyle style) : PolylineStroker(std::move(style))
{
    m_coverage = &coverage;
}

PolylineStroker::PolylineStroker(StrokeStyle style) : m_style(std::move(style)), m_reach(m_style.width > 0.0 && std::isfinite(m_style.width) ? 0.5 * m_style.width : 0.0) {}

void PolylineStroker::strokeLine(std::span<const Point> points)
{
    if (m_coverage == nullptr)
        return;
    collectSegments(points);
    if (m_style.dash.lengths.empty())
        strokeSegments(*m_coverage, m_segments, 0, m_segments.size());
    else
        strokeDashes();
}

void PolylineStroker::takeLine(std::span<const Point> points)
{
    collectSegments(points);
}

void PolylineStroker::strokeBetween(PolygonSink& coverage, double left, double right) const
{
    // A line that goes one way has no end or corner that sticks out by more than half a width to either side.
    const double reach = m_reach + kShortestSegment;
    const auto first = std::partition_point(m_segments.begin(), m_segments.end(), [&](const Segment& segment) { return segment.to.x + reach < left; });
    const auto end = std::partition_point(first, m_segments.end(), [&](const Segment& segment) { return segment.from.x - reach <= right; });
    strokeSegments(coverage, m_segments, static_cast<std::size_t>(first - m_segments.begin()), static_cast<std::size_t>(end - m_segments.begin()));
}

void PolylineStroker::collectSegments(std::span<const Point> points)
{
    m_segments.clear();
    const auto isNear = [](const Point& point) { return std::abs(point.x) <= kFarthest && std::abs(point.y) <= kFarthest; };
    if (points.size() < 2 || !(m_reach > 0.0) || !std::all_of(points.begin(), points.end(), isNear))
        return;
    m_segments.reserve(points.size());
    if (m_reach >= kWideReach && m_style.dash.lengths.empty())
        addLongSegments(points);
    else
        addSegments(points);
}

void PolylineStroker::addSegments(std::span<const Point> points)
{
    Point from = points[0];
    for (const Point& point : points.subspan(1)) {
        if (std::abs(point.x - from.x) < kShortestSegment && std::abs(point.y - from.y) < kShortestSegment)
            continue;
        addSegment(from, point);
        from = point;
    }
}

void PolylineStroker::addLongSegments(std::span<const Point> points)
{
    // A segment goes on while there is a straight line from its start past all its points. `low` and `high` are the directions that such lines lie between.
    Point from = points[0];
    Point last = from;
    Point low;
    Point high;
    for (const Point& point : points.subspan(1)) {
        const Point step = difference(point, last);
        if (std::abs(step.x) < kShortestSegment && std::abs(step.y) < kShortestSegment)
            continue;
        Point way = difference(point, from);
        const bool isFirst = last == from;
        const bool goesOn = !isFirst && dotProduct(step, difference(last, from)) > 0.0 && crossProduct(low, way) >= 0.0 && crossProduct(way, high) >= 0.0;
        if (!isFirst && !goesOn) {
            addSegment(from, last);
            from = last;
            way = step;
        }
        const Point across = scaled(turned(way), kStraightness / std::sqrt(dotProduct(way, way)));
        const Point lowest = difference(way, across);
        const Point highest = sum(way, across);
        low = goesOn && crossProduct(low, lowest) < 0.0 ? low : lowest;
        high = goesOn && crossProduct(highest, high) < 0.0 ? high : highest;
        last = point;
    }
    if (!(last == from))
        addSegment(from, last);
}

void PolylineStroker::addSegment(Point from, Point to)
{
    const Point way = difference(to, from);
    const double length = std::sqrt(dotProduct(way, way));
    m_segments.push_back({from, to, scaled(way, 1.0 / length), length});
}

void PolylineStroker::strokeDashes()
{
    const std::vector<double>& lengths = m_style.dash.lengths;
    double pattern = 0.0;
    for (const double length : lengths)
        pattern += length;
    std::size_t part = 0;
    double left = std::fmod(m_style.dash.phase, pattern);
    left = left < 0.0 ? left + pattern : left;
    while (left >= lengths[part]) {
        left -= lengths[part];
        part = (part + 1) % lengths.size();
    }
    left = lengths[part] - left;
    m_dash.clear();
    for (const Segment& segment : m_segments) {
        double done = 0.0;
        while (done < segment.length) {
            const bool endsPart = done + left <= segment.length;
            const double next = endsPart ? done + left : segment.length;
            const bool isPainted = part % 2 == 0;
            if (isPainted && next > done) {
                const Point from = sum(segment.from, scaled(segment.direction, done));
                const Point to = next == segment.length ? segment.to : sum(segment.from, scaled(segment.direction, next));
                m_dash.push_back({from, to, segment.direction, next - done});
            }
            left -= next - done;
            done = next;
            if (!endsPart)
                continue;
            strokeSegments(*m_coverage, m_dash, 0, m_dash.size());
            m_dash.clear();
            part = (part + 1) % lengths.size();
            left = lengths[part];
        }
    }
    strokeSegments(*m_coverage, m_dash, 0, m_dash.size());
}

void PolylineStroker::strokeSegments(PolygonSink& coverage, std::span<const Segment> segments, std::size_t first, std::size_t end) const
{
    Point startOffset;
    bool isStartShared = first > 0 && first < end && sharesCorner(segments[first - 1], segments[first], startOffset);
    for (std::size_t i = first; i < end; ++i) {
        const Segment& segment = segments[i];
        const Point across = scaled(turned(segment.direction), m_reach);
        Point endOffset;
        const bool hasNext = i + 1 < segments.size();
        const bool isEndShared = hasNext && sharesCorner(segment, segments[i + 1], endOffset);
        const Point start = isStartShared ? startOffset : across;
        const Point stop = isEndShared ? endOffset : across;
        const std::array<Point, 4> corners{sum(segment.from, start), sum(segment.to, stop), difference(segment.to, stop), difference(segment.from, start)};
        // Neither an end nor a corner of any kind sticks out to the left by more than half a width; the rest is for rounding.
        coverage.leaveBehind(segment.from.x - m_reach - kShortestSegment);
        coverage.addConvexPolygon(corners);
        if (hasNext && !isEndShared)
            addJoin(coverage, segment, segments[i + 1]);
        startOffset = endOffset;
        isStartShared = isEndShared;
    }
}

bool PolylineStroker::sharesCorner(const Segment& before, const Segment& after, Point& offset) const
{
    // With a the angle of the turn: both sides meet at the line's corner plus and minus the middle of the normals divided by cos²(a / 2).
    const double dot = dotProduct(before.direction, after.direction);
    const double cross = crossProduct(before.direction, after.direction);
    if (dot <= 0.0 || m_reach * std::abs(cross) > kSharedPart * std::min(before.length, after.length) * (1.0 + dot))
        return false;
    // Beyond the bevel the point is reach * sin²(a / 2) / cos(a / 2) long.
    const bool isPointed = m_style.join == LineJoin::Miter && m_style.miterLimit * m_style.miterLimit * (1.0 + dot) >= 2.0;
    if (!isPointed && m_reach * (1.0 - dot) > 2.0 * kInvisiblePoint * std::sqrt(0.5 * (1.0 + dot)))
        return false;
    offset = scaled(turned(sum(before.direction, after.direction)), m_reach / (1.0 + dot));
    return true;
}

void PolylineStroker::addJoin(PolygonSink& coverage, const Segment& before, const Segment& after) const
{
    const Point corner = before.to;
    const double dot = dotProduct(before.direction, after.direction);
    const double cross = crossProduct(before.direction, after.direction);
    // The outer side is the one that the line turns away from.
    const double side = cross >= 0.0 ? -m_reach : m_reach;
    const Point from = scaled(turned(before.direction), side);
    const Point to = scaled(turned(after.direction), side);
    if (m_style.join == LineJoin::Round) {
        const double angle = std::atan2(std::abs(cross), dot);
        addFan(coverage, corner, from, cross >= 0.0 ? angle : -angle);
        return;
    }
    const std::array<Point, 4> corners{corner, sum(corner, from), sum(corner, scaled(sum(from, to), 1.0 / (1.0 + dot))), sum(corner, to)};
    if (m_style.join == LineJoin::Miter && m_style.miterLimit * m_style.miterLimit * (1.0 + dot) >= 2.0)
        coverage.addConvexPolygon(corners);
    else
        coverage.addConvexPolygon(std::array<Point, 3>{corners[0], corners[1], corners[3]});
}

void PolylineStroker::addFan(PolygonSink& coverage, Point corner, Point from, double angle) const
{
    // A chord of angle a is reach * (1 - cos(a / 2)), about reach * a² / 8, from its arc.
    const double widest = std::sqrt(8.0 * kFlatness / m_reach);
    const auto parts = static_cast<std::size_t>(std::clamp(std::ceil(std::abs(angle) / widest), 1.0, kMostFanParts));
    std::vector<Point> fan{corner};
    fan.reserve(parts + 2);
    for (std::size_t i = 0; i <= parts; ++i) {
        const double turn = angle * (static_cast<double>(i) / static_cast<double>(parts));
        fan.push_back(sum(corner, sum(scaled(from, std::cos(turn)), scaled(turned(from), std::sin(turn)))));
    }
    coverage.addConvexPolygon(fan);
}

} // namespace TOLVGraphing::raster
