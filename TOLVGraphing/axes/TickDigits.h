#pragma once

#include "../platform/text/DecimalDigits.h"
#include "TickSpacing.h"

#include <optional>

namespace TOLVGraphing {

/// The digits of a number's magnitude that its axis asks for, without trailing zeros; the number is finite. A tick gets as few digits as tell it from all other ticks and give
/// its own value to a thousandth of their distance; where ticks are hardly further apart than floats are, the noise of their last bit is not written. What is written of a
/// tick always lies nearer to it than to any other one. Any
/// other value is rounded to the place of its resolution, and none gets more digits than its float has.
///
/// Nothing where the spacing knows no resolution for the number.
[[nodiscard]] std::optional<DecimalDigits> digitsAmongTicks(double number, const TickSpacing& spacing);

/// The fewest digits of a finite number's magnitude that read back as the same float, or as the same double where it is no float; without trailing zeros.
[[nodiscard]] DecimalDigits shortestLabelDigits(double number);

/// The same, rounded to six significant digits: what a label has where no ticks ask for more or less.
[[nodiscard]] DecimalDigits significantDigits(double number);

} // namespace TOLVGraphing
