#include "DecimalDigits.h"

#include <charconv>
#include <limits>

namespace TOLVGraphing {

namespace {

constexpr const char* kSuperscriptDigits[] = {"⁰", "¹", "²", "³", "⁴", "⁵", "⁶", "⁷", "⁸", "⁹"};
constexpr const char* kSuperscriptMinus = "⁻";

template <typename Number>
DecimalDigits shortestDigits(Number magnitude)
{
    char buffer[40];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, magnitude, std::chars_format::scientific);
    const std::string text(buffer, written.ptr);
    const std::size_t mark = text.find('e');
    DecimalDigits decimal;
    for (const char character : text.substr(0, mark)) {
        if (character != '.')
            decimal.digits += character;
    }
    // from_chars takes a leading '-' but no '+'.
    const std::size_t start = mark + (text[mark + 1] == '+' ? 2 : 1);
    std::from_chars(text.data() + start, text.data() + text.size(), decimal.exponent);
    decimal.exponent += 1;
    return decimal;
}

std::string groupedInteger(const DecimalDigits& decimal)
{
    if (decimal.exponent <= 0 || decimal.digits.empty())
        return "0";
    const auto count = static_cast<std::size_t>(decimal.exponent);
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0 && (count - i) % 3 == 0)
            text += ',';
        text += i < decimal.digits.size() ? decimal.digits[i] : '0';
    }
    return text;
}

std::string fraction(const DecimalDigits& decimal, int maximumDigits)
{
    std::string text;
    for (int place = 0; place < maximumDigits; ++place) {
        const int index = decimal.exponent + place;
        const bool stored = index >= 0 && index < static_cast<int>(decimal.digits.size());
        text += stored ? decimal.digits[static_cast<std::size_t>(index)] : '0';
    }
    text.erase(text.find_last_not_of('0') + 1);
    return text;
}

std::string superscript(int number)
{
    std::string text;
    for (const char character : std::to_string(number))
        text += character == '-' ? kSuperscriptMinus : kSuperscriptDigits[character - '0'];
    return text;
}

} // namespace

DecimalDigits shortestDecimalDigits(double magnitude)
{
    return shortestDigits(magnitude);
}

DecimalDigits shortestDecimalDigits(float magnitude)
{
    return shortestDigits(magnitude);
}

void roundDecimalDigits(DecimalDigits& decimal, int kept)
{
    const int count = static_cast<int>(decimal.digits.size());
    if (kept >= count)
        return;
    if (kept < 0) {
        decimal.digits.assign(1, '0');
        decimal.exponent = 1;
        return;
    }
    const auto at = static_cast<std::size_t>(kept);
    const char next = decimal.digits[at];
    const bool moreFollows = decimal.digits.find_first_not_of('0', at + 1) != std::string::npos;
    const bool lastIsOdd = kept > 0 && ((decimal.digits[at - 1] - '0') % 2) != 0;
    const bool up = next > '5' || (next == '5' && (moreFollows || lastIsOdd));
    decimal.digits.resize(at);
    if (!up)
        return;
    std::size_t position = at;
    while (position > 0 && decimal.digits[position - 1] == '9')
        decimal.digits[--position] = '0';
    if (position > 0) {
        ++decimal.digits[position - 1];
    } else {
        decimal.digits.insert(decimal.digits.begin(), '1');
        ++decimal.exponent;
    }
}

void removeTrailingZeros(DecimalDigits& decimal)
{
    decimal.digits.erase(decimal.digits.find_last_not_of('0') + 1);
}

double valueOfDecimalDigits(const DecimalDigits& decimal)
{
    const std::string text = "0." + decimal.digits + "e" + std::to_string(decimal.exponent);
    double value = 0.0;
    if (std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc::result_out_of_range)
        return decimal.exponent > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    return value;
}

std::string groupedText(const DecimalDigits& decimal, int maximumFractionDigits)
{
    const std::string places = fraction(decimal, maximumFractionDigits);
    return places.empty() ? groupedInteger(decimal) : groupedInteger(decimal) + "." + places;
}

std::string scientificText(DecimalDigits decimal)
{
    removeTrailingZeros(decimal);
    if (decimal.digits.empty())
        return "0";
    const int exponent = decimal.exponent - 1;
    decimal.exponent = 1;
    return groupedText(decimal, static_cast<int>(decimal.digits.size()) - 1) + "×10" + superscript(exponent);
}

} // namespace TOLVGraphing
