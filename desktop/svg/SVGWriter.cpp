#include "SVGWriter.h"

#include "../text/ValidUtf8.h"
#include "TOLVGraphing/platform/text/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace TOLVGraphing::svg {

namespace {

constexpr double kFarthest = 1.0e9;
/// Matrix entries below this lose too much with a fixed number of digits.
constexpr double kSmallEntry = 1.0e-3;

std::string fixedText(double number, int digits)
{
    if (std::isnan(number))
        return "0";
    char buffer[64];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, std::clamp(number, -kFarthest, kFarthest), std::chars_format::fixed, digits);
    std::string text(buffer, written.ptr);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.')
        text.pop_back();
    return text == "-0" ? "0" : text;
}

void appendPoint(std::string& data, Point point)
{
    data += numberText(point.x);
    data += ' ';
    data += numberText(point.y);
}

} // namespace

std::string numberText(double number)
{
    return fixedText(number, 6);
}

std::string escapedText(std::string_view text)
{
    const std::string valid = text::validUtf8(text);
    std::string escaped;
    escaped.reserve(valid.size());
    for (std::size_t i = 0; i < valid.size(); ++i) {
        const char character = valid[i];
        switch (character) {
        case '&': escaped += "&amp;"; break;
        case '<': escaped += "&lt;"; break;
        case '>': escaped += "&gt;"; break;
        case '"': escaped += "&quot;"; break;
        case '\r': escaped += "&#13;"; break;
        default:
            if (valid.compare(i, 3, "\xEF\xBF\xBE") == 0 || valid.compare(i, 3, "\xEF\xBF\xBF") == 0) {
                escaped += "\xEF\xBF\xBD";
                i += 2;
            } else if (static_cast<unsigned char>(character) < 0x20U && character != '\t' && character != '\n') {
                escaped += "\xEF\xBF\xBD";
            } else {
                escaped += character;
            }
        }
    }
    return escaped;
}

std::string colorText(const Color& color)
{
    static constexpr char kDigits[] = "0123456789abcdef";
    const Color painted = color.clamped();
    std::string text = "#";
    for (const double component : {painted.redComponent(), painted.greenComponent(), painted.blueComponent()}) {
        const auto value = static_cast<unsigned>(std::lround(component * 255.0));
        text += kDigits[value / 16U];
        text += kDigits[value % 16U];
    }
    return text;
}

std::string pathData(const Path& path, const AffineTransform& transform)
{
    const std::span<const Point> points = path.points();
    std::string data;
    std::size_t next = 0;
    bool isInLines = false;
    const auto append = [&](char letter, int count) {
        // Lines in a row share one letter.
        data += letter == 'L' && isInLines ? ' ' : letter;
        for (int i = 0; i < count; ++i) {
            if (i > 0)
                data += ' ';
            appendPoint(data, transform.apply(points[next++]));
        }
        isInLines = letter == 'L';
    };
    for (const Path::Verb verb : path.verbs()) {
        switch (verb) {
        case Path::Verb::Move: append('M', 1); break;
        case Path::Verb::Line: append('L', 1); break;
        case Path::Verb::Curve: append('C', 3); break;
        case Path::Verb::Close: append('Z', 0); break;
        }
    }
    return data;
}

std::string matrixText(const AffineTransform& transform)
{
    const double entries[4] = {transform.a, transform.b, transform.c, transform.d};
    double largest = 0.0;
    for (const double entry : entries)
        largest = std::max(largest, std::abs(entry));
    std::string text = "matrix(";
    for (const double entry : entries)
        text += (largest < kSmallEntry ? shortestText(entry) : fixedText(entry, 9)) + " ";
    return text + numberText(transform.tx) + " " + numberText(transform.ty) + ")";
}

} // namespace TOLVGraphing::svg
