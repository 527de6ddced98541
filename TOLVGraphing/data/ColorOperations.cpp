#include "ColorOperations.h"

#include <cstdint>
#include <limits>

namespace TOLVGraphing {

namespace {

int hexadecimalDigit(char character)
{
    if (character >= '0' && character <= '9')
        return character - '0';
    if (character >= 'a' && character <= 'f')
        return character - 'a' + 10;
    if (character >= 'A' && character <= 'F')
        return character - 'A' + 10;
    return -1;
}

/// The unsigned 32-bit number at the start of the text, saturated.
std::optional<std::uint32_t> scanHexadecimal(std::string_view text)
{
    const std::size_t start = text.find_first_not_of(" \t\n\v\f\r");
    if (start == std::string_view::npos)
        return std::nullopt;
    text.remove_prefix(start);
    if (text.size() >= 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X'))
        text.remove_prefix(2);
    if (text.empty() || hexadecimalDigit(text.front()) < 0)
        return std::nullopt;
    std::uint64_t value = 0;
    for (const char character : text) {
        const int digit = hexadecimalDigit(character);
        if (digit < 0)
            break;
        value = value * 16 + static_cast<std::uint64_t>(digit);
        if (value > std::numeric_limits<std::uint32_t>::max())
            return std::numeric_limits<std::uint32_t>::max();
    }
    return static_cast<std::uint32_t>(value);
}

} // namespace

Color linearBurn(const Color& a, const Color& b)
{
    return {a.redComponent() + b.redComponent() - 1.0, a.greenComponent() + b.greenComponent() - 1.0, a.blueComponent() + b.blueComponent() - 1.0, a.alphaComponent()};
}

Color linearDodge(const Color& a, const Color& b)
{
    return {a.redComponent() + b.redComponent(), a.greenComponent() + b.greenComponent(), a.blueComponent() + b.blueComponent(), a.alphaComponent()};
}

Color multiply(const Color& a, const Color& b)
{
    return {a.redComponent() * b.redComponent(), a.greenComponent() * b.greenComponent(), a.blueComponent() * b.blueComponent(), a.alphaComponent()};
}

bool needsDarkLabel(const Color& color)
{
    const double luminance = 0.2126 * color.redComponent() + 0.7152 * color.greenComponent() + 0.0722 * color.blueComponent();
    return !(luminance < 0.5);
}

Color appropriateLabelColor(const Color& color)
{
    return needsDarkLabel(color) ? Color::blackColor() : Color::whiteColor();
}

Color appropriateSecondaryColor(const Color& color)
{
    const Color middle = Color::grayColor();
    return needsDarkLabel(color) ? linearBurn(color, middle) : linearDodge(color, middle);
}

std::optional<Color> colorWithSRGBHexString(std::string_view text, double alphaComponent)
{
    const auto scanned = scanHexadecimal(text);
    if (!scanned)
        return std::nullopt;
    const auto component = [&](unsigned shift) { return static_cast<double>((*scanned >> shift) & 255U) / 255.0; };
    return Color(component(16), component(8), component(0), alphaComponent);
}

} // namespace TOLVGraphing
