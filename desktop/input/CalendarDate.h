#pragma once

#include <TOLVMath/Export.h>

#include <optional>
#include <string_view>

namespace TOLVGraphing::input {

/// The days from 1970-01-01 00:00 UTC to a date, with the time of day as a fraction; negative before 1970.
///
/// Forms: `2012-01` (the first of the month), `2012-01-31`, `2012/01/31`, `31.01.2012`, and behind a full date, after T, t or blanks, `12:30`, `12:30:45` or
/// `12:30:45.5` (also with a comma), then nothing (which counts as UTC), Z, `+02:00`, `+0200` or `+02`.
/// `24:00` is the end of the day; a 60th second is accepted. The calendar is the Gregorian one throughout, also before 1582.
///
/// Nothing where the text does not have one of these forms; NaN where it has the form and is no date (`2012-13-45`).
[[nodiscard]] TOLV_EXPORT std::optional<double> daysOfDate(std::string_view text);

} // namespace TOLVGraphing::input
