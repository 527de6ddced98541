#include "Path.h"

#include "../text/NumberText.h"
#include "CurrentContext.h"
#include "DrawingContext.h"
#include "GraphicsStateSaver.h"

#include <algorithm>
#include <cmath>

namespace TOLVGraphing {

namespace {

/// The distance of a quarter circle's control points from its ends, in radii.
constexpr double kKappa = 0.5522847498;

Point transformed(Point point, const AffineTransform* transform)
{
    return transform ? transform->apply(point) : point;
}

double cubicAt(double p0, double p1, double p2, double p3, double t)
{
    const double s = 1.0 - t;
    return s * s * s * p0 + 3.0 * s * s * t * p1 + 3.0 * s * t * t * p2 + t * t * t * p3;
}

/// Widens [low, high] by the extremes that one coordinate of a cubic reaches between its ends.
void includeCubicExtremes(double p0, double p1, double p2, double p3, double& low, double& high)
{
    // The derivative over three: a t^2 + b t + c.
    const double a = -p0 + 3.0 * p1 - 3.0 * p2 + p3;
    const double b = 2.0 * (p0 - 2.0 * p1 + p2);
    const double c = p1 - p0;
    const double discriminant = b * b - 4.0 * a * c;
    if (discriminant < 0.0)
        return;
    // Neither root loses digits to cancellation this way, also when a is nothing but rounding; a root that does not exist comes out infinite or NaN.
    const double q = -0.5 * (b + std::copysign(std::sqrt(discriminant), b));
    for (const double root : {q / a, c / q}) {
        if (!(root > 0.0 && root < 1.0))
            continue;
        // The curve never leaves the range of its four coordinates, only rounding does.
        const double value = std::clamp(cubicAt(p0, p1, p2, p3, root), std::min({p0, p1, p2, p3}), std::max({p0, p1, p2, p3}));
        low = std::min(low, value);
        high = std::max(high, value);
    }
}

} // namespace

Path Path::pathWithRect(const Rect& rect)
{
    Path path;
    path.addRect(rect);
    return path;
}

Path Path::pathWithRoundedRect(const Rect& rect, double xRadius, double yRadius)
{
    const double rx = std::min(xRadius, rect.width() * 0.5);
    const double ry = std::min(yRadius, rect.height() * 0.5);
    const double kx = rx * (1.0 - kKappa);
    const double ky = ry * (1.0 - kKappa);
    const double left = rect.x();
    const double bottom = rect.y();
    const double right = rect.maxX();
    const double top = rect.maxY();
    Path path;
    path.moveToX(left + rx, bottom);
    path.addLineToX(right - rx, bottom);
    path.addCurveToPoint({right, bottom + ry}, {right - kx, bottom}, {right, bottom + ky});
    path.addLineToX(right, top - ry);
    path.addCurveToPoint({right - rx, top}, {right, top - ky}, {right - kx, top});
    path.addLineToX(left + rx, top);
    path.addCurveToPoint({left, top - ry}, {left + kx, top}, {left, top - ky});
    path.addLineToX(left, bottom + ry);
    path.addCurveToPoint({left + rx, bottom}, {left, bottom + ky}, {left + kx, bottom});
    path.closeSubpath();
    return path;
}

Path Path::pathWithOvalInRect(const Rect& rect)
{
    const double rx = rect.width() * 0.5;
    const double ry = rect.height() * 0.5;
    const double cx = rect.x() + rx;
    const double cy = rect.y() + ry;
    const double kx = rx * kKappa;
    const double ky = ry * kKappa;
    Path path;
    path.moveToX(cx + rx, cy);
    path.addCurveToPoint({cx, cy + ry}, {cx + rx, cy + ky}, {cx + kx, cy + ry});
    path.addCurveToPoint({cx - rx, cy}, {cx - kx, cy + ry}, {cx - rx, cy + ky});
    path.addCurveToPoint({cx, cy - ry}, {cx - rx, cy - ky}, {cx - kx, cy - ry});
    path.addCurveToPoint({cx + rx, cy}, {cx + kx, cy - ry}, {cx + rx, cy - ky});
    path.closeSubpath();
    return path;
}

void Path::moveToX(double x, double y, const AffineTransform* withTransform)
{
    moveToPoint({x, y}, withTransform);
}

void Path::addLineToX(double x, double y, const AffineTransform* withTransform)
{
    addLineToPoint({x, y}, withTransform);
}

void Path::moveToPoint(Point point, const AffineTransform* withTransform)
{
    m_verbs.push_back(Verb::Move);
    m_points.push_back(transformed(point, withTransform));
}

void Path::addLineToPoint(Point point, const AffineTransform* withTransform)
{
    m_verbs.push_back(m_verbs.empty() ? Verb::Move : Verb::Line);
    m_points.push_back(transformed(point, withTransform));
}

void Path::addCurveToPoint(Point end, Point control1, Point control2, const AffineTransform* withTransform)
{
    if (m_verbs.empty())
        moveToPoint(control1, withTransform);
    m_verbs.push_back(Verb::Curve);
    m_points.push_back(transformed(control1, withTransform));
    m_points.push_back(transformed(control2, withTransform));
    m_points.push_back(transformed(end, withTransform));
}

void Path::closeSubpath()
{
    if (!m_verbs.empty())
        m_verbs.push_back(Verb::Close);
}

void Path::addRect(const Rect& rect, const AffineTransform* withTransform)
{
    moveToX(rect.x(), rect.y(), withTransform);
    addLineToX(rect.maxX(), rect.y(), withTransform);
    addLineToX(rect.maxX(), rect.maxY(), withTransform);
    addLineToX(rect.x(), rect.maxY(), withTransform);
    closeSubpath();
}

void Path::addPath(const Path& path, const AffineTransform* withTransform)
{
    // Copied first, because a path may be appended to itself.
    const std::vector<Point> points(path.m_points);
    const std::vector<Verb> verbs(path.m_verbs);
    m_verbs.insert(m_verbs.end(), verbs.begin(), verbs.end());
    for (const Point& point : points)
        m_points.push_back(transformed(point, withTransform));
}

void Path::transformUsingAffineTransform(const AffineTransform& transform)
{
    for (Point& point : m_points)
        point = transform.apply(point);
}

void Path::removeAllPoints()
{
    m_verbs.clear();
    m_points.clear();
}

void Path::reserve(std::size_t elements)
{
    m_verbs.reserve(elements);
    m_points.reserve(elements);
}

Rect Path::bounds() const
{
    if (m_points.empty())
        return {};
    Point low = m_points.front();
    Point high = low;
    Point current = low;
    Point start = low;
    std::size_t next = 0;
    const auto include = [&](Point point) {
        low = {std::min(low.x, point.x), std::min(low.y, point.y)};
        high = {std::max(high.x, point.x), std::max(high.y, point.y)};
        current = point;
    };
    for (const Verb verb : m_verbs) {
        switch (verb) {
        case Verb::Move:
            start = m_points[next];
            include(m_points[next++]);
            break;
        case Verb::Line: include(m_points[next++]); break;
        case Verb::Curve: {
            const Point c1 = m_points[next];
            const Point c2 = m_points[next + 1];
            const Point end = m_points[next + 2];
            includeCubicExtremes(current.x, c1.x, c2.x, end.x, low.x, high.x);
            includeCubicExtremes(current.y, c1.y, c2.y, end.y, low.y, high.y);
            include(end);
            next += 3;
            break;
        }
        case Verb::Close:
            // What follows goes on from where the closed part began.
            current = start;
            break;
        }
    }
    return {low.x, low.y, high.x - low.x, high.y - low.y};
}

void Path::fill() const
{
    if (DrawingContext* context = currentContext())
        context->drawFilledPath(*this, FillRule::NonZero);
}

void Path::stroke() const
{
    DrawingContext* context = currentContext();
    if (!context)
        return;
    if (!m_lineWidth && !m_lineDash) {
        context->drawStrokedPath(*this);
        return;
    }
    const GraphicsStateSaver saver(*context);
    if (m_lineWidth)
        context->setLineWidth(*m_lineWidth);
    if (m_lineDash)
        context->setLineDash(*m_lineDash);
    context->drawStrokedPath(*this);
}

void Path::addClip() const
{
    if (DrawingContext* context = currentContext())
        context->clipToPath(*this, FillRule::NonZero);
}

std::string toString(const Path& path)
{
    std::string text;
    std::size_t next = 0;
    const auto append = [&](const char* letter, std::size_t count) {
        if (!text.empty())
            text += ' ';
        text += letter;
        for (std::size_t i = 0; i < count; ++i, ++next)
            text += ' ' + shortestText(path.points()[next].x) + ' ' + shortestText(path.points()[next].y);
    };
    for (const Path::Verb verb : path.verbs()) {
        switch (verb) {
        case Path::Verb::Move: append("M", 1); break;
        case Path::Verb::Line: append("L", 1); break;
        case Path::Verb::Curve: append("C", 3); break;
        case Path::Verb::Close: append("Z", 0); break;
        }
    }
    return text;
}

} // namespace TOLVGraphing
