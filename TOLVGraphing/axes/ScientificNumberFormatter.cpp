#include "ScientificNumberFormatter.h"

#include "TickDigits.h"

#include <utility>

namespace TOLVGraphing {

ScientificNumberFormatter::ScientificNumberFormatter(std::weak_ptr<const TOLVAxis> axis) : TickNumberFormatter(std::move(axis)) {}

std::string ScientificNumberFormatter::textOfDigits(const DecimalDigits& decimal) const
{
    return scientificText(decimal);
}

std::shared_ptr<NumberFormatter> ScientificNumberFormatter::copy() const
{
    return std::make_shared<ScientificNumberFormatter>(*this);
}

std::shared_ptr<NumberFormatter> ScientificNumberFormatter::copyForAxis(std::weak_ptr<const TOLVAxis> axis) const
{
    return std::make_shared<ScientificNumberFormatter>(std::move(axis));
}

} // namespace TOLVGraphing
