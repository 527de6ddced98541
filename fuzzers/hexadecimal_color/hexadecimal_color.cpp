#include "../support/FuzzTarget.h"
#include "../support/InputReader.h"

#include <TOLVGraphing/data/ColorOperations.h>

#include <cstdint>
#include <optional>

namespace TOLVGraphing::fuzzing {
namespace {

std::optional<unsigned> digit(char character)
{
    if (character >= '0' && character <= '9')
        return static_cast<unsigned>(character - '0');
    const char lower = static_cast<char>(character | 0x20);
    if (lower >= 'a' && lower <= 'f')
        return static_cast<unsigned>(lower - 'a') + 10U;
    return std::nullopt;
}

/// The number that the text starts with, digit by digit and in 64 bits that never overflow.
std::optional<std::uint64_t> leadingNumber(std::string_view text)
{
    std::optional<std::uint64_t> number;
    for (const char character : text) {
        const std::optional<unsigned> value = digit(character);
        if (!value)
            break;
        number = std::min<std::uint64_t>(number.value_or(0) * 16 + *value, 0xFFFFFFFF);
    }
    return number;
}

double component(std::uint64_t number, unsigned shift)
{
    return static_cast<double>((number >> shift) & 0xFFU) / 255.0;
}

} // namespace

Verdict tryInput(std::span<const std::byte> input)
{
    const std::string_view text = textOf(input);
    const std::optional<Color> color = colorWithSRGBHexString(text, 0.25);
    if (!color)
        return Verdict::refused;
    std::string_view digits = text.substr(std::min(text.size(), text.find_first_not_of(" \t\n\v\f\r")));
    if (digits.starts_with("0x") || digits.starts_with("0X"))
        digits.remove_prefix(2);
    const std::optional<std::uint64_t> number = leadingNumber(digits);
    require(number.has_value(), "a text without a leading digit has no colour");
    require(*color == Color(component(*number, 16), component(*number, 8), component(*number, 0), 0.25), "the colour is made of the lowest three bytes");
    return Verdict::accepted;
}

} // namespace TOLVGraphing::fuzzing
