#pragma once

#include <TOLVMath/Export.h>

#include <cstdint>
#include <string>

namespace TOLVGraphing {

/// What a step between dates is counted in.
enum class DateUnit { Nanoseconds, Days, Months, Years };

/// The distance between neighbouring ticks of an axis of dates: so many nanoseconds, days, months or years of the calendar, in UTC without leap seconds. The ticks stand at whole multiples: of nanoseconds since midnight, of days since 1970-01-01 or, where the count is 7, at Mondays,
/// of months since January and of years since the year 0.
struct TOLV_EXPORT DateStep {
    /// What is counted.
    DateUnit unit = DateUnit::Days;
    /// Positive.
    std::int64_t count = 1;

    friend bool operator==(const DateStep&, const DateStep&) = default;
};

/// The step's length in days; that of months and years is the least that it can be: 28 days for one month, 90 for three, 181 for six, 365 for a year.
[[nodiscard]] TOLV_EXPORT double shortestLengthInDays(const DateStep& step);

/// "900000000000 ns", "7 days", "3 months", "10 years".
[[nodiscard]] TOLV_EXPORT std::string toString(const DateStep& step);

} // namespace TOLVGraphing
