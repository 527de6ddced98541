#include "DrawnPage.h"

#include "XmlElements.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <sstream>
#include <stdexcept>

namespace TOLVGraphing::testing_support {

namespace {

constexpr double kCapitalHeight = 0.73;

std::vector<double> numbersIn(const std::string& text)
{
    std::vector<double> numbers;
    const char* at = text.c_str();
    while (*at) {
        char* end = nullptr;
        const double number = std::strtod(at, &end);
        if (end == at) {
            ++at;
            continue;
        }
        numbers.push_back(number);
        at = end;
    }
    return numbers;
}

double numberOr(const XmlElement& element, const std::string& name, double otherwise)
{
    return element.has(name) ? element.number(name) : otherwise;
}

std::string textOr(const XmlElement& element, const std::string& name, const std::string& otherwise)
{
    return element.has(name) ? element.attribute(name) : otherwise;
}

DrawnText textOfElement(const XmlElement& element)
{
    DrawnText text;
    text.text = element.text;
    text.length = numberOr(element, "textLength", 0.0);
    text.size = element.number("font-size");
    text.color = element.attribute("fill");
    text.isBold = textOr(element, "font-weight", "") == "bold";
    if (element.has("x")) {
        text.x = element.number("x");
        text.y = element.number("y");
        return text;
    }
    const auto matrix = numbersIn(element.attribute("transform"));
    if (matrix.size() != 6)
        throw std::runtime_error("no matrix: " + element.attribute("transform"));
    text.angle = std::atan2(matrix[1], matrix[0]) * 180.0 / std::numbers::pi;
    text.x = matrix[4];
    text.y = matrix[5];
    return text;
}

DrawnPath pathOfElement(const XmlElement& element)
{
    DrawnPath path;
    path.data = element.attribute("d");
    path.fill = textOr(element, "fill", "#000000");
    path.stroke = textOr(element, "stroke", "none");
    path.strokeWidth = numberOr(element, "stroke-width", 1.0);
    path.dashes = textOr(element, "stroke-dasharray", "");
    return path;
}

} // namespace

Rect DrawnText::capitalBox() const
{
    const double height = size * kCapitalHeight;
    const double radians = angle * std::numbers::pi / 180.0;
    const Point corners[4] = {{0.0, 0.0}, {length, 0.0}, {0.0, -height}, {length, -height}};
    double low[2] = {x, y};
    double high[2] = {x, y};
    for (const Point& corner : corners) {
        const double at[2] = {x + corner.x * std::cos(radians) - corner.y * std::sin(radians), y + corner.x * std::sin(radians) + corner.y * std::cos(radians)};
        for (int i = 0; i < 2; ++i) {
            low[i] = std::min(low[i], at[i]);
            high[i] = std::max(high[i], at[i]);
        }
    }
    return {low[0], low[1], high[0] - low[0], high[1] - low[1]};
}

std::vector<Point> DrawnPath::points() const
{
    const auto numbers = numbersIn(data);
    if (numbers.size() % 2 != 0)
        throw std::runtime_error("half a point in the path " + data.substr(0, 80));
    std::vector<Point> points;
    for (std::size_t i = 0; i + 1 < numbers.size(); i += 2)
        points.push_back({numbers[i], numbers[i + 1]});
    return points;
}

DrawnPage DrawnPage::fromSVG(const std::string& document)
{
    DrawnPage page;
    bool isInClip = false;
    const auto elements = xmlElements(document);
    if (elements.empty() || elements.front().name != "svg")
        throw std::runtime_error("no SVG document: " + document.substr(0, 80));
    for (const XmlElement& element : elements) {
        if (element.name == "svg")
            page.size = {element.number("width"), element.number("height")};
        else if (element.name == "title")
            page.title = element.text;
        else if (element.name == "desc")
            page.description = element.text;
        else if (element.name == "text")
            page.texts.push_back(textOfElement(element));
        else if (element.name == "path" && !isInClip)
            page.paths.push_back(pathOfElement(element));
        // A clip's own path paints nothing.
        isInClip = element.name == "clipPath";
    }
    return page;
}

std::optional<DrawnText> DrawnPage::textNamed(const std::string& text) const
{
    const auto found = std::find_if(texts.begin(), texts.end(), [&](const DrawnText& drawn) { return drawn.text == text; });
    return found == texts.end() ? std::nullopt : std::optional<DrawnText>(*found);
}

std::string DrawnPage::allTexts() const
{
    std::string all;
    for (const DrawnText& text : texts)
        all += (all.empty() ? "" : " | ") + text.text;
    return all;
}

std::vector<DrawnPath> DrawnPage::strokesOfColor(const std::string& color) const
{
    std::vector<DrawnPath> found;
    std::copy_if(paths.begin(), paths.end(), std::back_inserter(found), [&](const DrawnPath& path) { return path.stroke == color; });
    return found;
}

} // namespace TOLVGraphing::testing_support
