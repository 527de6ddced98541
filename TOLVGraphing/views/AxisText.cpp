#include "AxisText.h"

#include "../axes/TOLVAxis.h"

namespace TOLVGraphing {

std::string textOfValue(const TOLVAxis& axis, double value)
{
    const auto& formatter = axis.tickLabelFormatter();
    return formatter ? labelTextFromNumber(*formatter, value).value_or("") : "";
}

} // namespace TOLVGraphing
