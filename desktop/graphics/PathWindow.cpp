#include "PathWindow.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace TOLVGraphing::paint {

namespace {

/// Coordinates beyond this are moved here, so that differences and products stay finite.
constexpr double kFarthest = 1e15;
/// How far a flattened curve may stay from the true one, in device units.
constexpr double kFlatness = 0.05;
constexpr int kDeepestSplit = 48;
/// A curve becomes so many lines at most. The window of any page needs far fewer.
constexpr std::size_t kMostPieces = 20000;

struct Polyline {
    std::vector<Point> points;
    bool isClosed = false;
};

Point nearPoint(Point point)
{
    // A coordinate may have overflowed in the transform; NaN (infinity minus infinity) becomes 0.
    const auto limited = [](double value) { return std::isnan(value) ? 0.0 : std::clamp(value, -kFarthest, kFarthest); };
    return {limited(point.x), limited(point.y)};
}

Point between(Point from, Point to, double t)
{
    return {from.x + (to.x - from.x) * t, from.y + (to.y - from.y) * t};
}

struct Cubic {
    Point start;
    Point control1;
    Point control2;
    Point end;

    [[nodiscard]] bool isFlat() const
    {
        const auto square = [](double value) { return value * value; };
        const double ux = square(3.0 * control1.x - 2.0 * start.x - end.x);
        const double uy = square(3.0 * control1.y - 2.0 * start.y - end.y);
        const double vx = square(3.0 * control2.x - start.x - 2.0 * end.x);
        const double vy = square(3.0 * control2.y - start.y - 2.0 * end.y);
        return std::max(ux, vx) + std::max(uy, vy) <= 16.0 * kFlatness * kFlatness;
    }

    /// True when all four points lie beyond one side of the window: its chord then stands in for it.
    [[nodiscard]] bool missesWindow(const Rect& window) const
    {
        const auto all = [&](auto test) { return test(start) && test(control1) && test(control2) && test(end); };
        return all([&](Point p) { return p.x < window.x(); }) || all([&](Point p) { return p.x > window.maxX(); }) || all([&](Point p) { return p.y < window.y(); })
            || all([&](Point p) { return p.y > window.maxY(); });
    }
};

/// Appends the cubic's points after its start until there are `limit` points.
void flatten(const Cubic& cubic, const Rect& window, int depth, std::size_t limit, std::vector<Point>& points)
{
    if (depth >= kDeepestSplit || points.size() >= limit || cubic.isFlat() || cubic.missesWindow(window)) {
        points.push_back(cubic.end);
        return;
    }
    const Point a = between(cubic.start, cubic.control1, 0.5);
    const Point b = between(cubic.control1, cubic.control2, 0.5);
    const Point c = between(cubic.control2, cubic.end, 0.5);
    const Point ab = between(a, b, 0.5);
    const Point bc = between(b, c, 0.5);
    const Point middle = between(ab, bc, 0.5);
    flatten({cubic.start, a, ab, middle}, window, depth + 1, limit, points);
    flatten({middle, bc, c, cubic.end}, window, depth + 1, limit, points);
}

std::vector<Polyline> polylines(const Path& path, const AffineTransform& toDevice, const Rect& window)
{
    std::vector<Polyline> lines;
    std::size_t next = 0;
    const auto take = [&] { return nearPoint(toDevice.apply(path.points()[next++])); };
    const auto current = [&]() -> Polyline& {
        // After a close the next element goes on from the closed subpath's start.
        if (lines.back().isClosed) {
            const Point start = lines.back().points.front();
            lines.push_back({{start}, false});
        }
        return lines.back();
    };
    for (const Path::Verb verb : path.verbs()) {
        switch (verb) {
        case Path::Verb::Move: lines.push_back({{take()}, false}); break;
        case Path::Verb::Line: current().points.push_back(take()); break;
        case Path::Verb::Curve: {
            Polyline& line = current();
            Cubic cubic{line.points.back(), take(), {}, {}};
            cubic.control2 = take();
            cubic.end = take();
            flatten(cubic, window, 0, line.points.size() + kMostPieces, line.points);
            break;
        }
        case Path::Verb::Close: lines.back().isClosed = true; break;
        }
    }
    return lines;
}

/// Keeps the part of a closed polygon on one side of a straight line; `inside` is at least 0 there and changes linearly.
template <typename Inside>
std::vector<Point> polygonOnSide(const std::vector<Point>& polygon, Inside inside)
{
    std::vector<Point> kept;
    kept.reserve(polygon.size() + 4);
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Point from = polygon[i];
        const Point to = polygon[(i + 1) % polygon.size()];
        const double fromInside = inside(from);
        const double toInside = inside(to);
        if (fromInside >= 0.0)
            kept.push_back(from);
        if ((fromInside >= 0.0) != (toInside >= 0.0))
            kept.push_back(between(from, to, fromInside / (fromInside - toInside)));
    }
    return kept;
}

std::vector<Point> polygonWithin(std::vector<Point> polygon, const Rect& window)
{
    polygon = polygonOnSide(polygon, [&](Point p) { return p.x - window.x(); });
    polygon = polygonOnSide(polygon, [&](Point p) { return window.maxX() - p.x; });
    polygon = polygonOnSide(polygon, [&](Point p) { return p.y - window.y(); });
    return polygonOnSide(polygon, [&](Point p) { return window.maxY() - p.y; });
}

/// The share of a straight segment inside the window, as the interval [from, to] of 0...1.
struct Share {
    double from = 0.0;
    double to = 1.0;
};

std::optional<Share> shareWithin(Point start, Point end, const Rect& window)
{
    Share share;
    const auto cut = [&](double distance, double advance) {
        // The side is kept while distance + advance t >= 0.
        if (advance == 0.0)
            return distance >= 0.0;
        const double t = -distance / advance;
        if (advance > 0.0)
            share.from = std::max(share.from, t);
        else
            share.to = std::min(share.to, t);
        return share.from <= share.to;
    };
    const double dx = end.x - start.x;
    const double dy = end.y - start.y;
    if (cut(start.x - window.x(), dx) && cut(window.maxX() - start.x, -dx) && cut(start.y - window.y(), dy) && cut(window.maxY() - start.y, -dy))
        return share;
    return std::nullopt;
}

/// Cuts one polyline into the runs inside the window.
class RunCutter {
public:
    RunCutter(const AffineTransform& toDevice, const Rect& window, std::vector<StrokeRun>& runs) : m_toUser(toDevice.inverted()), m_window(window), m_runs(runs) {}

    void cut(const Polyline& line)
    {
        const std::size_t first = m_runs.size();
        m_travelled = 0.0;
        m_isOpen = false;
        const std::size_t segments = line.points.size() - (line.isClosed ? 0 : 1);
        bool whole = true;
        for (std::size_t i = 0; i < segments; ++i)
            whole = addSegment(line.points[i], line.points[(i + 1) % line.points.size()]) && whole;
        if (!line.isClosed || m_runs.size() == first)
            return;
        if (whole)
            closeRun(m_runs.back());
        else
            joinEnds(line.points.front(), first);
    }

private:
    /// True when the whole segment is visible.
    bool addSegment(Point from, Point to)
    {
        const double length = userLength(from, to);
        const double travelled = m_travelled;
        m_travelled += length;
        const std::optional<Share> share = shareWithin(from, to, m_window);
        if (!share) {
            m_isOpen = false;
            return false;
        }
        if (!m_isOpen || share->from > 0.0)
            m_runs.push_back({{between(from, to, share->from)}, false, travelled + length * share->from});
        m_isOpen = !(share->to < 1.0);
        m_runs.back().points.push_back(m_isOpen ? to : between(from, to, share->to));
        return m_isOpen && !(share->from > 0.0);
    }

    static void closeRun(StrokeRun& run)
    {
        run.points.pop_back();
        run.isClosed = true;
    }

    /// Makes one run of the last and the first when the closed line is visible where it starts, so that its corner there is joined.
    void joinEnds(Point start, std::size_t first)
    {
        if (!m_isOpen || m_runs.size() - first < 2 || !(m_runs[first].points.front() == start))
            return;
        const std::vector<Point>& head = m_runs[first].points;
        std::vector<Point>& tail = m_runs.back().points;
        tail.insert(tail.end(), head.begin() + 1, head.end());
        m_runs.erase(m_runs.begin() + static_cast<std::ptrdiff_t>(first));
    }

    double userLength(Point from, Point to) const
    {
        const double dx = to.x - from.x;
        const double dy = to.y - from.y;
        return std::hypot(m_toUser.a * dx + m_toUser.c * dy, m_toUser.b * dx + m_toUser.d * dy);
    }

    AffineTransform m_toUser;
    Rect m_window;
    std::vector<StrokeRun>& m_runs;
    double m_travelled = 0.0;
    /// True while the last run reaches the end of the last segment.
    bool m_isOpen = false;
};

} // namespace

bool PathReach::liesWithin(const Rect& window) const
{
    return low.x >= window.x() && high.x <= window.maxX() && low.y >= window.y() && high.y <= window.maxY();
}

PathReach reachOfPath(const Path& path, const AffineTransform& toDevice)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    PathReach reach{true, {kInfinity, kInfinity}, {-kInfinity, -kInfinity}};
    for (const Point& point : path.points()) {
        if (!point.valid()) {
            reach.isFinite = false;
            continue;
        }
        Point image = toDevice.apply(point);
        if (std::isnan(image.x) || std::isnan(image.y))
            image = {kInfinity, kInfinity};
        reach.low = {std::min(reach.low.x, image.x), std::min(reach.low.y, image.y)};
        reach.high = {std::max(reach.high.x, image.x), std::max(reach.high.y, image.y)};
    }
    return reach;
}

Path finiteElements(const Path& path)
{
    Path finite;
    finite.reserve(path.verbs().size());
    const std::span<const Point> points = path.points();
    std::size_t next = 0;
    bool needsMove = true;
    for (const Path::Verb verb : path.verbs()) {
        if (verb == Path::Verb::Close) {
            if (!needsMove)
                finite.closeSubpath();
            continue;
        }
        const std::size_t count = verb == Path::Verb::Curve ? 3 : 1;
        const std::span<const Point> element = points.subspan(next, count);
        next += count;
        const bool isFinite = std::all_of(element.begin(), element.end(), [](const Point& point) { return point.valid(); });
        if (verb == Path::Verb::Move)
            needsMove = true;
        if (!isFinite)
            continue;
        if (needsMove)
            finite.moveToPoint(element.back());
        else if (verb == Path::Verb::Line)
            finite.addLineToPoint(element[0]);
        else
            finite.addCurveToPoint(element[2], element[0], element[1]);
        needsMove = false;
    }
    return finite;
}

Path filledPathWithin(const Path& path, const AffineTransform& toDevice, const Rect& window)
{
    Path visible;
    for (const Polyline& line : polylines(path, toDevice, window)) {
        const std::vector<Point> polygon = polygonWithin(line.points, window);
        if (polygon.size() < 3)
            continue;
        visible.moveToPoint(polygon.front());
        for (std::size_t i = 1; i < polygon.size(); ++i)
            visible.addLineToPoint(polygon[i]);
        visible.closeSubpath();
    }
    return visible;
}

std::vector<StrokeRun> strokeRunsWithin(const Path& path, const AffineTransform& toDevice, const Rect& window)
{
    std::vector<StrokeRun> runs;
    RunCutter cutter(toDevice, window, runs);
    for (const Polyline& line : polylines(path, toDevice, window))
        cutter.cut(line);
    return runs;
}

} // namespace TOLVGraphing::paint
