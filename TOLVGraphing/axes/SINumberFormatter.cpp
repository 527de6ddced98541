#include "SINumberFormatter.h"

#include "TickDigits.h"

#include <utility>

namespace TOLVGraphing {

namespace {

constexpr const char* kPrefixes[] = {"f", "p", "n", "µ", "m", "", "k", "M", "G", "T", "P", "E"};
/// The powers of ten that the first prefix and the one behind the last stand for.
constexpr int kFirstPower = -15;
constexpr int kEndPower = 21;

} // namespace

SINumberFormatter::SINumberFormatter(std::weak_ptr<const TOLVAxis> axis) : TickNumberFormatter(std::move(axis)) {}

std::string SINumberFormatter::textOfDigits(const DecimalDigits& decimal) const
{
    // The power of ten of the first digit.
    const int power = decimal.exponent - 1;
    if (power < kFirstPower || power >= kEndPower)
        return scientificText(decimal);
    const int thousands = (power - kFirstPower) / 3;
    const DecimalDigits scaled{decimal.digits, decimal.exponent - (kFirstPower + 3 * thousands)};
    return groupedText(scaled, static_cast<int>(scaled.digits.size())) + kPrefixes[thousands];
}

std::shared_ptr<NumberFormatter> SINumberFormatter::copy() const
{
    return std::make_shared<SINumberFormatter>(*this);
}

std::shared_ptr<NumberFormatter> SINumberFormatter::copyForAxis(std::weak_ptr<const TOLVAxis> axis) const
{
    return std::make_shared<SINumberFormatter>(std::move(axis));
}

} // namespace TOLVGraphing
