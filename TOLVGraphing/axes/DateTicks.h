#pragma once

#include "DateStep.h"

#include <vector>

namespace TOLVGraphing {

/// All steps that an axis of dates chooses from, the shortest first: 1, 2 and 5 times the powers of ten from a nanosecond to half a second; 1, 2, 5, 10, 15, 30 seconds and minutes; 1, 2, 3, 6, 12 hours; 1, 2, 7 days; 1, 3, 6 months; 1, 2, 5, 10, 20, 50, ... 5000 years.
[[nodiscard]] const std::vector<DateStep>& allDateSteps();

/// Whether the multiples of a step have all multiples of a longer one among them, other than the step itself; also of weeks in single months, between which there is nothing else that is wide enough.
[[nodiscard]] bool dividesStep(const DateStep& shorter, const DateStep& longer);

/// The multiples of the step from `min` to `max`, both included, in days since the origin, ascending. Both ends are finite, and a value counts as inside when it is narrowed to single precision. Each value is a whole number of days or nanoseconds less the origin and rounded once or
/// twice, so that none drifts. Only instants of the years 0 to 9999 are listed, and no more than ten thousand.
[[nodiscard]] std::vector<double> dateTicks(const DateStep& step, double origin, float min, float max);

} // namespace TOLVGraphing
