#include "OpaqueContext.h"

#include "TOLVGraphing/platform/graphics/GraphicsStateSaver.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace TOLVGraphing::paint {

namespace {

bool isInvisible(const Color& color)
{
    return color.clamped().alphaComponent() <= 0.0;
}

bool mayTouch(const Rect& first, const Rect& second)
{
    // Lines along an axis have no area of their own; a point around them gives them one.
    return !first.valid() || !second.valid() || intersectsRect(insetRect(first, -1.0, -1.0), insetRect(second, -1.0, -1.0));
}

double largestScale(const AffineTransform& transform)
{
    return std::hypot(std::hypot(transform.a, transform.b), std::hypot(transform.c, transform.d));
}

bool hasInverse(const AffineTransform& transform)
{
    const double determinant = transform.a * transform.d - transform.b * transform.c;
    return std::isfinite(determinant) && determinant != 0.0;
}

AttributedString inColor(AttributedString text, const Color& color)
{
    text.setForegroundColor(color);
    return text;
}

} // namespace

Color blendedColor(const Color& over, const Color& under)
{
    const Color top = over.clamped();
    const double alpha = top.alphaComponent();
    const auto mixed = [alpha](double first, double second) { return first * alpha + second * (1.0 - alpha); };
    return {mixed(top.redComponent(), under.redComponent()), mixed(top.greenComponent(), under.greenComponent()), mixed(top.blueComponent(), under.blueComponent()), 1.0};
}

Color OpaqueContext::Tint::over(const Color& under) const
{
    const Color tinted = blendedColor(color, under);
    return outer ? outer->over(tinted) : tinted;
}

void OpaqueContext::saveState()
{
    m_target.saveState();
    m_saved.push_back(m_state);
}

void OpaqueContext::restoreState()
{
    if (m_saved.empty())
        return;
    m_target.restoreState();
    m_state = std::move(m_saved.back());
    m_saved.pop_back();
}

void OpaqueContext::concatenateTransform(const AffineTransform& transform)
{
    m_state.transform.concatenate(transform);
    m_target.concatenateTransform(transform);
}

void OpaqueContext::clipToPath(const Path& path, FillRule rule)
{
    const std::size_t outerPoints = m_state.clip ? m_state.clip->pointCount : 0;
    m_state.clip = std::make_shared<const Clip>(Clip{path, rule, m_state.transform, m_state.clip, outerPoints + path.points().size()});
    m_target.clipToPath(path, rule);
}

void OpaqueContext::setFillColor(const std::optional<Color>& color)
{
    m_state.fillColor = color.value_or(Color::blackColor());
}

void OpaqueContext::setStrokeColor(const std::optional<Color>& color)
{
    m_state.strokeColor = color.value_or(Color::blackColor());
}

void OpaqueContext::setLineWidth(double width)
{
    m_state.lineWidth = width;
    m_target.setLineWidth(width);
}

void OpaqueContext::setLineDash(const LineDash& dash)
{
    m_state.dash = dash;
    m_target.setLineDash(dash);
}

void OpaqueContext::setLineCap(LineCap cap)
{
    m_state.cap = cap;
    m_target.setLineCap(cap);
}

void OpaqueContext::setLineJoin(LineJoin join)
{
    m_state.join = join;
    m_target.setLineJoin(join);
}

void OpaqueContext::setMiterLimit(double limit)
{
    m_state.miterLimit = limit;
    m_target.setMiterLimit(limit);
}

void OpaqueContext::drawFilledPath(const Path& path, FillRule rule)
{
    const Color color = m_state.fillColor.clamped();
    if (path.isEmpty() || isInvisible(color))
        return;
    Element element{Kind::Fill, m_state, path, rule, {}, {}, pageBounds(path.bounds(), 0.0)};
    const bool isVeil = color.alphaComponent() < 1.0 && hasInverse(m_state.transform) && canRepeat(element.bounds);
    m_target.setFillColor(onPage(color));
    m_target.drawFilledPath(path, rule);
    if (!isVeil) {
        remember(std::move(element));
        return;
    }
    element.kind = Kind::Veil;
    {
        const GraphicsStateSaver saver(m_target);
        m_target.clipToPath(path, rule);
        m_target.concatenateTransform(m_state.transform.inverted());
        repeat(m_elements.size(), element.bounds, Tint{color, nullptr});
    }
    remember(std::move(element));
}

void OpaqueContext::drawStrokedPath(const Path& path)
{
    if (path.isEmpty() || isInvisible(m_state.strokeColor))
        return;
    m_target.setStrokeColor(onPage(m_state.strokeColor));
    m_target.drawStrokedPath(path);
    const double reach = m_state.lineWidth * 0.5 * std::max(m_state.miterLimit, 1.5);
    remember({Kind::Stroke, m_state, path, FillRule::NonZero, {}, {}, pageBounds(path.bounds(), reach)});
}

void OpaqueContext::drawText(const AttributedString& text, Point origin)
{
    const Color color = text.attributes().foregroundColorOrDefault();
    if (text.string().empty() || isInvisible(color))
        return;
    m_target.drawText(inColor(text, onPage(color)), origin);
    const Size size = text.size();
    remember({Kind::Text, m_state, {}, FillRule::NonZero, text, origin, pageBounds({origin, size}, size.height)});
}

bool OpaqueContext::canRepeat(const Rect& bounds)
{
    const std::size_t remaining = kMostRepeatedPoints - m_repeatedPoints;
    const std::size_t cost = costOfRepeating(m_elements.size(), bounds, remaining);
    m_repeatedPoints += std::min(cost, remaining);
    return cost <= remaining;
}

std::size_t OpaqueContext::costOfRepeating(std::size_t count, const Rect& bounds, std::size_t limit) const
{
    // Looking through many elements costs as well.
    std::size_t cost = count / 256;
    for (std::size_t i = 0; i < count && cost <= limit; ++i) {
        const Element& element = m_elements[i];
        if (!mayTouch(element.bounds, bounds))
            continue;
        cost += element.path.points().size() + element.text.string().size() + (element.state.clip ? element.state.clip->pointCount : 0);
        if (element.kind == Kind::Veil)
            cost += costOfRepeating(i, intersectionRect(element.bounds, bounds), limit - std::min(limit, cost));
    }
    return cost;
}

void OpaqueContext::repeat(std::size_t count, const Rect& bounds, const Tint& tint)
{
    for (std::size_t i = 0; i < count; ++i) {
        if (mayTouch(m_elements[i].bounds, bounds))
            repeatElement(i, bounds, tint);
    }
}

void OpaqueContext::repeatElement(std::size_t index, const Rect& bounds, const Tint& tint)
{
    const Element& element = m_elements[index];
    const State& state = element.state;
    const GraphicsStateSaver saver(m_target);
    enterClip(state.clip.get());
    m_target.concatenateTransform(state.transform);
    switch (element.kind) {
    case Kind::Fill:
    case Kind::Veil:
        m_target.setFillColor(tint.over(onPage(state.fillColor)));
        m_target.drawFilledPath(element.path, element.rule);
        if (element.kind == Kind::Veil)
            paintVeil(index, bounds, tint);
        break;
    case Kind::Stroke:
        m_target.setStrokeColor(tint.over(onPage(state.strokeColor)));
        m_target.setLineWidth(state.lineWidth);
        m_target.setLineDash(state.dash);
        m_target.setLineCap(state.cap);
        m_target.setLineJoin(state.join);
        m_target.setMiterLimit(state.miterLimit);
        m_target.drawStrokedPath(element.path);
        break;
    case Kind::Text: m_target.drawText(inColor(element.text, tint.over(onPage(element.text.attributes().foregroundColorOrDefault()))), element.origin); break;
    }
}

void OpaqueContext::paintVeil(std::size_t index, const Rect& bounds, const Tint& tint)
{
    const Element& element = m_elements[index];
    m_target.clipToPath(element.path, element.rule);
    m_target.concatenateTransform(element.state.transform.inverted());
    repeat(index, intersectionRect(element.bounds, bounds), Tint{element.state.fillColor.clamped(), &tint});
}

void OpaqueContext::enterClip(const Clip* clip)
{
    std::vector<const Clip*> clips;
    for (; clip; clip = clip->outer.get())
        clips.push_back(clip);
    std::reverse(clips.begin(), clips.end());
    for (const Clip* entered : clips) {
        m_target.concatenateTransform(entered->transform);
        m_target.clipToPath(entered->path, entered->rule);
        m_target.concatenateTransform(entered->transform.inverted());
    }
}

void OpaqueContext::remember(Element element)
{
    m_elements.push_back(std::move(element));
}

Rect OpaqueContext::pageBounds(const Rect& bounds, double margin) const
{
    const double scaled = margin * largestScale(m_state.transform);
    return insetRect(m_state.transform.apply(bounds), -scaled, -scaled);
}

} // namespace TOLVGraphing::paint
