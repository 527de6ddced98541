#include "CheckingContext.h"

#include <TOLVGraphing/platform/text/AttributedString.h>

#include <algorithm>
#include <cmath>

namespace TOLVGraphing::testing_support {

void CheckingContext::saveState()
{
    m_clips.push_back(m_clip);
    ForwardingContext::saveState();
}

void CheckingContext::restoreState()
{
    if (m_clips.empty()) {
        m_hasUnmatchedRestore = true;
    } else {
        m_clip = m_clips.back();
        m_clips.pop_back();
    }
    ForwardingContext::restoreState();
}

void CheckingContext::concatenateTransform(const AffineTransform& transform)
{
    ++m_calls;
    const double numbers[] = {transform.a, transform.b, transform.c, transform.d, transform.tx, transform.ty};
    expectFinite(std::ranges::all_of(numbers, [](double number) { return std::isfinite(number); }), "a transform");
    m_clip.transform.concatenate(transform);
    ForwardingContext::concatenateTransform(transform);
}

void CheckingContext::clipToPath(const Path& path, FillRule rule)
{
    countPath(path, "a clip");
    m_clip.rect = intersectionRect(m_clip.rect, m_clip.transform.apply(path.bounds()));
    ForwardingContext::clipToPath(path, rule);
}

void CheckingContext::setLineWidth(double width)
{
    ++m_calls;
    expectFinite(std::isfinite(width), "a line width");
    ForwardingContext::setLineWidth(width);
}

void CheckingContext::setLineDash(const LineDash& dash)
{
    ++m_calls;
    expectFinite(std::isfinite(dash.phase) && std::ranges::all_of(dash.lengths, [](double length) { return std::isfinite(length); }), "a dash");
    ForwardingContext::setLineDash(dash);
}

void CheckingContext::drawFilledPath(const Path& path, FillRule rule)
{
    countPath(path, "a filled path");
    notePaint();
    ForwardingContext::drawFilledPath(path, rule);
}

void CheckingContext::drawStrokedPath(const Path& path)
{
    countPath(path, "a stroked path");
    notePaint();
    ForwardingContext::drawStrokedPath(path);
}

void CheckingContext::drawText(const AttributedString& text, Point origin)
{
    ++m_calls;
    expectFinite(origin.valid(), "the place of a text");
    notePaint();
    ForwardingContext::drawText(text, origin);
}

void CheckingContext::drawFilledRepeats(const Path& path, FillRule rule, std::span<const Point> places)
{
    countPath(path, "a repeated fill");
    m_calls += places.size();
    m_points += places.size();
    expectFinite(std::ranges::all_of(places, [](Point place) { return place.valid(); }), "the place of a repeated fill");
    notePaint();
    ForwardingContext::drawFilledRepeats(path, rule, places);
}

void CheckingContext::drawStrokedRepeats(const Path& path, std::span<const Point> places)
{
    countPath(path, "a repeated stroke");
    m_calls += places.size();
    m_points += places.size();
    expectFinite(std::ranges::all_of(places, [](Point place) { return place.valid(); }), "the place of a repeated stroke");
    notePaint();
    ForwardingContext::drawStrokedRepeats(path, places);
}

void CheckingContext::expectFinite(bool isFinite, const char* what)
{
    if (!isFinite && m_notFinite.empty())
        m_notFinite = what;
}

void CheckingContext::countPath(const Path& path, const char* what)
{
    ++m_calls;
    m_points += path.points().size();
    expectFinite(std::ranges::all_of(path.points(), [](Point point) { return point.valid(); }), what);
}

void CheckingContext::notePaint()
{
    m_paintedClip = unionRect(m_paintedClip, m_clip.rect);
}

} // namespace TOLVGraphing::testing_support
