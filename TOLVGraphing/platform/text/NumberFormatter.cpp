#include "NumberFormatter.h"

#include "DecimalDigits.h"

#include <algorithm>
#include <cmath>

namespace TOLVGraphing {

namespace {

/// A double has no more than these.
constexpr int kLargestFractionDigits = 18;

} // namespace

NumberFormatter::NumberFormatter(int maximumFractionDigits) : m_maximumFractionDigits(std::clamp(maximumFractionDigits, 0, kLargestFractionDigits)) {}

NumberFormatter::~NumberFormatter() = default;

std::optional<std::string> NumberFormatter::stringFromNumber(double number) const
{
    if (std::isnan(number))
        return "NaN";
    const bool negative = std::signbit(number);
    if (std::isinf(number))
        return negative ? "-∞" : "+∞";
    DecimalDigits decimal = shortestDecimalDigits(std::abs(number));
    roundDecimalDigits(decimal, decimal.exponent + m_maximumFractionDigits);
    return (negative ? "-" : "") + groupedText(decimal, m_maximumFractionDigits);
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
