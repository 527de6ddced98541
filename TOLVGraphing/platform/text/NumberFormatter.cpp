#include "NumberFormatter.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace TOLVGraphing {

namespace {

/// A double has no more than these.
constexpr int kLargestFractionDigits = 18;

/// A number's shortest decimal digits, without sign: value = 0.d1 d2 d3 ... x 10^exponent.
struct Decimal {
    std::string digits;
    int exponent = 0;
};

Decimal shortestDecimal(double magnitude)
{
    char buffer[40];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, magnitude, std::chars_format::scientific);
    const std::string text(buffer, written.ptr);
    const std::size_t mark = text.find('e');
    Decimal decimal;
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

/// Keeps the first `kept` digits (may be zero or negative: nothing is kept), rounding half to even on the digits at hand.
void roundDigits(Decimal& decimal, int kept)
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

std::string groupedInteger(const Decimal& decimal)
{
    if (decimal.exponent <= 0)
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

std::string fraction(const Decimal& decimal, int maximumDigits)
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

} // namespace

NumberFormatter::NumberFormatter(int maximumFractionDigits)
    : m_maximumFractionDigits(std::clamp(maximumFractionDigits, 0, kLargestFractionDigits))
{
}

NumberFormatter::~NumberFormatter() = default;

std::optional<std::string> NumberFormatter::stringFromNumber(double number) const
{
    if (std::isnan(number))
        return "NaN";
    const bool negative = std::signbit(number);
    if (std::isinf(number))
        return negative ? "-∞" : "+∞";
    Decimal decimal = shortestDecimal(std::abs(number));
    roundDigits(decimal, decimal.exponent + m_maximumFractionDigits);
    std::string text = negative ? "-" : "";
    text += groupedInteger(decimal);
    const std::string places = fraction(decimal, m_maximumFractionDigits);
    return places.empty() ? text : text + "." + places;
}

std::shared_ptr<NumberFormatter> NumberFormatter::copy() const
{
    return std::make_shared<NumberFormatter>(*this);
}

std::optional<std::string> labelTextFromNumber(const NumberFormatter& formatter, double number)
{
    auto text = formatter.stringFromNumber(number);
    if (text && std::signbit(number) && text == formatter.stringFromNumber(-0.0))
        return formatter.stringFromNumber(0.0);
    return text;
}

} // namespace TOLVGraphing
