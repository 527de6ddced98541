#include "TickNumberFormatter.h"

#include "TickDigits.h"

#include <cmath>
#include <utility>

namespace TOLVGraphing {

TickNumberFormatter::TickNumberFormatter(std::weak_ptr<const TOLVAxis> axis) : m_spacing(std::move(axis)) {}

DecimalDigits TickNumberFormatter::digitsWithoutTicks(double number) const
{
    return significantDigits(number);
}

std::optional<std::string> TickNumberFormatter::stringFromNumber(double number) const
{
    if (!std::isfinite(number))
        return NumberFormatter::stringFromNumber(number);
    auto decimal = digitsAmongTicks(number, m_spacing);
    if (!decimal)
        decimal = digitsWithoutTicks(number);
    if (decimal->digits.empty())
        return "0";
    return (std::signbit(number) ? "-" : "") + textOfDigits(*decimal);
}

} // namespace TOLVGraphing
