#include "AdaptiveNumberFormatter.h"

#include "TickDigits.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace TOLVGraphing {

namespace {

/// Numbers of at most nine digits before the point, and of at most four zeros behind it, read easily.
constexpr int kLargestPlainExponent = 9;
constexpr int kSmallestPlainExponent = -4;
/// Behind three zeros, steps well below a millionth are too fine. Distances of floats are not exact.
constexpr int kLargestSmallExponent = -3;
constexpr double kFinestPlainDistance = 0.9e-6;

bool readsEasily(int exponent)
{
    return exponent >= kSmallestPlainExponent && exponent <= kLargestPlainExponent;
}

/// Numbers of more digits before the point are written in groups.
constexpr int kLargestUngroupedExponent = 4;

/// The exponent of the largest tick's digits.
int largestExponent(const TickSpacing::Span& span)
{
    return shortestLabelDigits(std::max(std::abs(span.smallest), std::abs(span.largest))).exponent;
}

} // namespace

AdaptiveNumberFormatter::AdaptiveNumberFormatter(std::weak_ptr<const TOLVAxis> axis) : TickNumberFormatter(std::move(axis)) {}

bool AdaptiveNumberFormatter::writesScientifically(int exponent) const
{
    const auto span = spacing().span();
    if (!span || !span->isEven)
        return !readsEasily(exponent);
    const int largest = largestExponent(*span);
    const bool isTooFine = largest <= kLargestSmallExponent && span->distance < kFinestPlainDistance;
    return isTooFine || !readsEasily(largest) || exponent > kLargestPlainExponent;
}

std::string AdaptiveNumberFormatter::plainText(const DecimalDigits& decimal) const
{
    std::string text = groupedText(decimal, std::max(0, static_cast<int>(decimal.digits.size()) - decimal.exponent));
    const auto span = spacing().span();
    if (std::max(decimal.exponent, span ? largestExponent(*span) : 0) <= kLargestUngroupedExponent)
        std::erase(text, ',');
    return text;
}

DecimalDigits AdaptiveNumberFormatter::digitsWithoutTicks(double number) const
{
    return shortestLabelDigits(number);
}

std::string AdaptiveNumberFormatter::textOfDigits(const DecimalDigits& decimal) const
{
    return writesScientifically(decimal.exponent) ? scientificText(decimal) : plainText(decimal);
}

std::shared_ptr<NumberFormatter> AdaptiveNumberFormatter::copy() const
{
    return std::make_shared<AdaptiveNumberFormatter>(*this);
}

std::shared_ptr<NumberFormatter> AdaptiveNumberFormatter::copyForAxis(std::weak_ptr<const TOLVAxis> axis) const
{
    return std::make_shared<AdaptiveNumberFormatter>(std::move(axis));
}

} // namespace TOLVGraphing
