#include "RecordingContext.h"

#include "../text/AttributedString.h"
#include "../text/NumberText.h"

namespace TOLVGraphing {

namespace {

std::string colorText(const std::optional<Color>& color)
{
    return color ? toString(*color) : "none";
}

const char* capText(LineCap cap)
{
    switch (cap) {
    case LineCap::Butt: return "butt";
    case LineCap::Round: return "round";
    case LineCap::Square: return "square";
    }
    return "";
}

const char* joinText(LineJoin join)
{
    switch (join) {
    case LineJoin::Miter: return "miter";
    case LineJoin::Round: return "round";
    case LineJoin::Bevel: return "bevel";
    }
    return "";
}

} // namespace

void RecordingContext::saveState()
{
    ++m_depth;
    m_calls.emplace_back("save");
}

void RecordingContext::restoreState()
{
    if (m_depth == 0)
        m_unmatchedRestore = true;
    else
        --m_depth;
    m_calls.emplace_back("restore");
}

void RecordingContext::concatenateTransform(const AffineTransform& transform)
{
    m_calls.push_back("transform " + toString(transform));
}

void RecordingContext::clipToPath(const Path& path, FillRule rule)
{
    m_calls.push_back((rule == FillRule::EvenOdd ? "eoclip " : "clip ") + toString(path));
}

void RecordingContext::setFillColor(const std::optional<Color>& color)
{
    m_calls.push_back("fillColor " + colorText(color));
}

void RecordingContext::setStrokeColor(const std::optional<Color>& color)
{
    m_calls.push_back("strokeColor " + colorText(color));
}

void RecordingContext::setLineWidth(double width)
{
    m_calls.push_back("lineWidth " + shortestText(width));
}

void RecordingContext::setLineDash(const LineDash& dash)
{
    std::string line = "lineDash " + shortestText(dash.phase) + " [";
    for (std::size_t i = 0; i < dash.lengths.size(); ++i)
        line += (i ? ", " : "") + shortestText(dash.lengths[i]);
    m_calls.push_back(line + "]");
}

void RecordingContext::setLineCap(LineCap cap)
{
    m_calls.push_back(std::string("lineCap ") + capText(cap));
}

void RecordingContext::setLineJoin(LineJoin join)
{
    m_calls.push_back(std::string("lineJoin ") + joinText(join));
}

void RecordingContext::setMiterLimit(double limit)
{
    m_calls.push_back("miterLimit " + shortestText(limit));
}

void RecordingContext::drawFilledPath(const Path& path, FillRule rule)
{
    m_calls.push_back((rule == FillRule::EvenOdd ? "eofill " : "fill ") + toString(path));
}

void RecordingContext::drawStrokedPath(const Path& path)
{
    m_calls.push_back("stroke " + toString(path));
}

void RecordingContext::drawText(const AttributedString& text, Point origin)
{
    const Font& font = text.attributes().fontOrDefault();
    m_calls.push_back(
        "text \"" + text.string() + "\" " + font.name + " " + shortestText(font.size) + " " + toString(text.attributes().foregroundColorOrDefault()) + " at " + toString(origin));
}

std::string RecordingContext::text() const
{
    std::string all;
    for (const std::string& call : m_calls)
        all += call + "\n";
    return all;
}

} // namespace TOLVGraphing
