#include "SVGContext.h"

#include "../graphics/LineDashRules.h"
#include "../graphics/PathWindow.h"
#include "../text/FontName.h"
#include "../text/TextLayout.h"
#include "SVGWriter.h"
#include "TOLVGraphing/platform/text/AttributedString.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace TOLVGraphing::svg {

namespace {

/// Paths within this distance of the page's origin are written as they are.
constexpr double kSafeReach = 1.0e6;
constexpr double kWindowMargin = 4000.0;
const Rect kSafeWindow{-kSafeReach, -kSafeReach, 2.0 * kSafeReach, 2.0 * kSafeReach};
/// Clips with longer definitions are not compared with former ones.
constexpr std::size_t kLongestSharedClip = 512;

double determinant(const AffineTransform& transform)
{
    return transform.a * transform.d - transform.b * transform.c;
}

bool hasInverse(const AffineTransform& transform)
{
    const double value = determinant(transform);
    return std::isfinite(value) && value != 0.0 && std::isfinite(transform.tx) && std::isfinite(transform.ty);
}

/// True when the transform turns, mirrors and enlarges alike in all directions: line widths can be multiplied then.
bool isSimilarity(const AffineTransform& t)
{
    const double first = t.a * t.a + t.b * t.b;
    const double second = t.c * t.c + t.d * t.d;
    const double slack = 1.0e-9 * std::max(first, second);
    return std::abs(first - second) <= slack && std::abs(t.a * t.c + t.b * t.d) <= slack;
}

std::string attribute(const char* name, const std::string& value)
{
    return std::string(" ") + name + "=\"" + value + "\"";
}

std::string opacityAttribute(const char* name, const Color& color)
{
    return color.alphaComponent() < 1.0 ? attribute(name, numberText(color.alphaComponent())) : std::string();
}

/// The quoted family, without the characters that would end the quotation.
std::string quotedFamily(const std::string& family)
{
    std::string quoted = "'";
    for (const char character : family) {
        if (character != '\'' && character != '\\' && character != '\n')
            quoted += character;
    }
    return escapedText(quoted + "'");
}

std::string fontAttributes(const Font& font)
{
    const text::FontFace face = text::faceFromFontName(font.name.empty() ? "Helvetica" : font.name);
    std::string families;
    switch (text::namedFamily(face.family)) {
    case text::NamedFamily::HelveticaNeue: families = "'Helvetica Neue', Helvetica, 'Nimbus Sans', 'Liberation Sans', Arial, sans-serif"; break;
    case text::NamedFamily::Helvetica: families = "Helvetica, 'Nimbus Sans', 'Liberation Sans', Arial, sans-serif"; break;
    case text::NamedFamily::None: families = quotedFamily(face.family) + ", sans-serif"; break;
    }
    std::string attributes = attribute("font-family", families) + attribute("font-size", numberText(font.size));
    if (face.weight == 700)
        attributes += attribute("font-weight", "bold");
    else if (face.weight != 400)
        attributes += attribute("font-weight", std::to_string(face.weight));
    if (face.isItalic)
        attributes += attribute("font-style", "italic");
    return attributes;
}

/// Where a line of text starts: plain coordinates when the text stands level and has its own size, otherwise a matrix.
std::string placeAttributes(const AffineTransform& toPage)
{
    const auto isNear = [](double value, double expected) { return std::abs(value - expected) < 1.0e-12; };
    if (isNear(toPage.a, 1.0) && isNear(toPage.b, 0.0) && isNear(toPage.c, 0.0) && isNear(toPage.d, 1.0))
        return attribute("x", numberText(toPage.tx)) + attribute("y", numberText(toPage.ty));
    return attribute("transform", matrixText(toPage));
}

Path pathOfRun(const paint::StrokeRun& run)
{
    Path path;
    for (const Point& point : run.points)
        path.addLineToPoint(point);
    if (run.isClosed)
        path.closeSubpath();
    return path;
}

} // namespace

SVGContext::SVGContext(Size size) : m_size(size)
{
    m_state.transform = {1.0, 0.0, 0.0, -1.0, 0.0, size.height};
}

void SVGContext::saveState()
{
    m_saved.push_back(m_state);
}

void SVGContext::restoreState()
{
    if (m_saved.empty())
        return;
    m_state = std::move(m_saved.back());
    m_saved.pop_back();
}

void SVGContext::concatenateTransform(const AffineTransform& transform)
{
    m_state.transform.concatenate(transform);
    m_state.isUsable = m_state.isUsable && hasInverse(transform) && hasInverse(m_state.transform);
}

void SVGContext::clipToPath(const Path& path, FillRule rule)
{
    if (!m_state.isUsable)
        return;
    const char* ruleAttribute = rule == FillRule::EvenOdd ? " clip-rule=\"evenodd\"" : "";
    const std::string content = "<path d=\"" + filledData(path) + "\"" + ruleAttribute + "/>";
    const std::size_t number = clipNumber(content);
    // A clip that is in force already changes nothing.
    if (std::find(m_state.clips.begin(), m_state.clips.end(), number) == m_state.clips.end())
        m_state.clips.push_back(number);
}

void SVGContext::setFillColor(const std::optional<Color>& color)
{
    m_state.fillColor = color.value_or(Color::blackColor());
}

void SVGContext::setStrokeColor(const std::optional<Color>& color)
{
    m_state.strokeColor = color.value_or(Color::blackColor());
}

void SVGContext::setLineWidth(double width)
{
    m_state.lineWidth = width;
}

void SVGContext::setLineDash(const LineDash& dash)
{
    m_state.dash = paint::usableDash(dash);
}

void SVGContext::setLineCap(LineCap cap)
{
    m_state.cap = cap;
}

void SVGContext::setLineJoin(LineJoin join)
{
    m_state.join = join;
}

void SVGContext::setMiterLimit(double limit)
{
    m_state.miterLimit = std::isfinite(limit) ? std::max(limit, 1.0) : 10.0;
}

void SVGContext::drawFilledPath(const Path& path, FillRule rule)
{
    const Color color = m_state.fillColor.clamped();
    if (!m_state.isUsable || path.isEmpty() || color.alphaComponent() <= 0.0)
        return;
    const std::string data = filledData(path);
    if (data.empty())
        return;
    enterClips();
    m_body += "<path" + attribute("d", data) + attribute("fill", colorText(color)) + opacityAttribute("fill-opacity", color);
    if (rule == FillRule::EvenOdd)
        m_body += attribute("fill-rule", "evenodd");
    m_body += "/>\n";
}

void SVGContext::drawStrokedPath(const Path& path)
{
    const bool hasWidth = m_state.lineWidth > 0.0 && std::isfinite(m_state.lineWidth);
    if (!m_state.isUsable || path.isEmpty() || !hasWidth || m_state.strokeColor.clamped().alphaComponent() <= 0.0)
        return;
    const paint::PathReach reach = paint::reachOfPath(path, m_state.transform);
    if (!reach.isFinite) {
        drawStrokedPath(paint::finiteElements(path));
        return;
    }
    if (!reach.liesWithin(kSafeWindow))
        strokeInPieces(path);
    else if (isSimilarity(m_state.transform))
        appendStrokedElement(pathData(path, m_state.transform), strokeAttributes(std::sqrt(std::abs(determinant(m_state.transform)))));
    else
        appendStrokedElement(pathData(path, {}), strokeAttributes(1.0) + attribute("transform", matrixText(m_state.transform)));
}

void SVGContext::drawText(const AttributedString& text, Point origin)
{
    const Color color = text.attributes().foregroundColorOrDefault().clamped();
    if (!m_state.isUsable || !origin.valid() || color.alphaComponent() <= 0.0 || text.string().empty())
        return;
    const Font& font = text.attributes().fontOrDefault();
    text::SharedLayouts::withLayout(text, [&](const text::TextLayout& layout) {
        for (std::size_t i = 0; i < layout.lines.size(); ++i) {
            const text::TextLine& line = layout.lines[i];
            AffineTransform place = m_state.transform;
            place.concatenate({1.0, 0.0, 0.0, -1.0, origin.x, origin.y + layout.baseline(i)});
            const bool isInReach = std::abs(place.tx) <= kSafeReach && std::abs(place.ty) <= kSafeReach;
            if (line.length == 0 || !isInReach)
                continue;
            enterClips();
            m_body += "<text" + placeAttributes(place) + fontAttributes(font) + attribute("fill", colorText(color)) + opacityAttribute("fill-opacity", color);
            if (line.width > 0.0)
                m_body += attribute("textLength", numberText(line.width)) + attribute("lengthAdjust", "spacingAndGlyphs");
            m_body += attribute("xml:space", "preserve") + ">" + escapedText(std::string_view(layout.text).substr(line.start, line.length)) + "</text>\n";
        }
    });
}

std::string SVGContext::document() const
{
    const std::string width = numberText(m_size.width);
    const std::string height = numberText(m_size.height);
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\"" + attribute("width", width + "pt")
        + attribute("height", height + "pt") + attribute("viewBox", "0 0 " + width + " " + height) + ">\n";
    if (!m_title.empty())
        text += "<title>" + escapedText(m_title) + "</title>\n";
    if (!m_description.empty())
        text += "<desc>" + escapedText(m_description) + "</desc>\n";
    text += m_body;
    for (std::size_t i = 0; i < m_openClips.size(); ++i)
        text += "</g>\n";
    return text + "</svg>\n";
}

void SVGContext::enterClips()
{
    const std::vector<std::size_t>& wanted = m_state.clips;
    const auto difference = std::mismatch(m_openClips.begin(), m_openClips.end(), wanted.begin(), wanted.end());
    const auto common = static_cast<std::size_t>(difference.first - m_openClips.begin());
    for (std::size_t i = m_openClips.size(); i > common; --i)
        m_body += "</g>\n";
    m_openClips.resize(common);
    for (std::size_t i = common; i < wanted.size(); ++i) {
        m_body += "<g clip-path=\"url(#clip" + std::to_string(wanted[i]) + ")\">\n";
        m_openClips.push_back(wanted[i]);
    }
}

std::size_t SVGContext::clipNumber(const std::string& content)
{
    const bool isShared = content.size() <= kLongestSharedClip;
    if (isShared) {
        if (const auto known = m_clipNumbers.find(content); known != m_clipNumbers.end())
            return known->second;
    }
    const std::size_t number = ++m_clipCount;
    m_body += "<defs><clipPath id=\"clip" + std::to_string(number) + "\">" + content + "</clipPath></defs>\n";
    if (isShared)
        m_clipNumbers.emplace(content, number);
    return number;
}

std::string SVGContext::strokeAttributes(double scale) const
{
    const Color color = m_state.strokeColor.clamped();
    std::string attributes = attribute("fill", "none") + attribute("stroke", colorText(color)) + opacityAttribute("stroke-opacity", color);
    const std::string width = numberText(m_state.lineWidth * scale);
    if (width != "1")
        attributes += attribute("stroke-width", width);
    if (m_state.cap != LineCap::Butt)
        attributes += attribute("stroke-linecap", m_state.cap == LineCap::Round ? "round" : "square");
    if (m_state.join == LineJoin::Miter)
        attributes += attribute("stroke-miterlimit", numberText(m_state.miterLimit));
    else
        attributes += attribute("stroke-linejoin", m_state.join == LineJoin::Round ? "round" : "bevel");
    if (m_state.dash.lengths.empty())
        return attributes;
    std::string lengths;
    for (const double length : m_state.dash.lengths)
        lengths += (lengths.empty() ? "" : " ") + numberText(length * scale);
    attributes += attribute("stroke-dasharray", lengths);
    if (m_state.dash.phase != 0.0)
        attributes += attribute("stroke-dashoffset", numberText(m_state.dash.phase * scale));
    return attributes;
}

void SVGContext::appendStrokedElement(const std::string& data, const std::string& attributes)
{
    if (data.empty())
        return;
    enterClips();
    m_body += "<path" + attribute("d", data) + attributes + "/>\n";
}

void SVGContext::strokeInPieces(const Path& path)
{
    // The pieces are in page coordinates. Where widths cannot be multiplied they go back to the path's own.
    const bool isSimilar = isSimilarity(m_state.transform);
    const double scale = isSimilar ? std::sqrt(std::abs(determinant(m_state.transform))) : 1.0;
    const AffineTransform back = isSimilar ? AffineTransform{} : m_state.transform.inverted();
    const std::string suffix = isSimilar ? std::string() : attribute("transform", matrixText(m_state.transform));
    const LineDash dash = m_state.dash;
    const AffineTransform& t = m_state.transform;
    const double lineReach = m_state.lineWidth * 0.5 * std::max(m_state.miterLimit, 1.5) * std::hypot(std::hypot(t.a, t.b), std::hypot(t.c, t.d));
    std::string together;
    for (const paint::StrokeRun& run : paint::strokeRunsWithin(path, t, window(lineReach))) {
        const std::string data = pathData(pathOfRun(run), back);
        if (dash.lengths.empty()) {
            together += data;
            continue;
        }
        m_state.dash = paint::usableDash({dash.lengths, dash.phase + run.startLength});
        appendStrokedElement(data, strokeAttributes(scale) + suffix);
    }
    m_state.dash = dash;
    appendStrokedElement(together, strokeAttributes(scale) + suffix);
}

Rect SVGContext::window(double lineReach) const
{
    const double margin = kWindowMargin + std::clamp(std::ceil(lineReach), 0.0, kSafeReach);
    return insetRect({0.0, 0.0, m_size.width, m_size.height}, -margin, -margin);
}

std::string SVGContext::filledData(const Path& path) const
{
    const paint::PathReach reach = paint::reachOfPath(path, m_state.transform);
    if (!reach.isFinite)
        return filledData(paint::finiteElements(path));
    if (reach.liesWithin(kSafeWindow))
        return pathData(path, m_state.transform);
    return pathData(paint::filledPathWithin(path, m_state.transform, window(0.0)), {});
}

} // namespace TOLVGraphing::svg
