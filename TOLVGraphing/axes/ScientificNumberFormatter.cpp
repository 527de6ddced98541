#include "ScientificNumberFormatter.h"

#include "TickDigits.h"

#include <cmath>
#include <utility>

namespace TOLVGraphing {

ScientificNumberFormatter::ScientificNumberFormatter(std::weak_ptr<const TOLVAxis> axis)
    : m_spacing(std::move(axis))
{
}

std::optional<std::string> ScientificNumberFormatter::stringFromNumber(double number) const
{
    if (!std::isfinite(number))
        return NumberFormatter::stringFromNumber(number);
    auto decimal = digitsAmongTicks(number, m_spacing);
    if (!decimal)
        decimal = significantDigits(number);
    if (decimal->digits.empty())
        return "0";
    return (std::signbit(number) ? "-" : "") + scientificText(*decimal);
}

std::shared_ptr<NumberFormatter> ScientificNumberFormatter::copy() const
{
    return std::make_shared<ScientificNumberFormatter>(*this);
}

} // namespace TOLVGraphing
