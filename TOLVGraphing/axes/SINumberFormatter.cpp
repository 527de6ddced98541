#include "SINumberFormatter.h"

#include "TickDigits.h"

#include <cmath>
#include <utility>

namespace TOLVGraphing {

namespace {

constexpr const char* kPrefixes[] = {"f", "p", "n", "µ", "m", "", "k", "M", "G", "T", "P", "E"};
/// The powers of ten that the first prefix and the one behind the last stand for.
constexpr int kFirstPower = -15;
constexpr int kEndPower = 21;

std::string textWithPrefix(DecimalDigits decimal)
{
    // The power of ten of the first digit.
    const int power = decimal.exponent - 1;
    if (power < kFirstPower || power >= kEndPower)
        return scientificText(std::move(decimal));
    const int thousands = (power - kFirstPower) / 3;
    decimal.exponent -= kFirstPower + 3 * thousands;
    return groupedText(decimal, static_cast<int>(decimal.digits.size())) + kPrefixes[thousands];
}

} // namespace

SINumberFormatter::SINumberFormatter(std::weak_ptr<const TOLVAxis> axis)
    : m_spacing(std::move(axis))
{
}

std::optional<std::string> SINumberFormatter::stringFromNumber(double number) const
{
    if (!std::isfinite(number))
        return NumberFormatter::stringFromNumber(number);
    auto decimal = digitsAmongTicks(number, m_spacing);
    if (!decimal)
        decimal = significantDigits(number);
    if (decimal->digits.empty())
        return "0";
    return (std::signbit(number) ? "-" : "") + textWithPrefix(*decimal);
}

std::shared_ptr<NumberFormatter> SINumberFormatter::copy() const
{
    return std::make_shared<SINumberFormatter>(*this);
}

} // namespace TOLVGraphing
