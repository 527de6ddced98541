#pragma once

#include "NumberFormatter.h"
#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// Writes days since 1970-01-01 00:00 UTC as ISO dates, "2026-11-21", with the time of day where the number is no whole day: "2026-11-21 06:30". The time is rounded to the minute, because a
/// single-precision number of days knows no more (from the end of 2014 on it knows every third). Numbers outside the years 0 to 9999 once they are rounded, and those that are not finite, are written in decimal style.
///
/// With an origin other than 0 the numbers are days since that origin. The time is then rounded to the second, and the second is written where it is not 0: "2026-03-01 10:30:15". What is written in decimal style is the sum of origin and number.
///
/// On an axis of dates see DateTickFormatter, whose texts are as short as the ticks allow.
class TOLV_EXPORT DayDateFormatter final : public NumberFormatter {
public:
    /// The origin is in days since 1970-01-01 00:00 UTC, whole or not; one that is not finite counts as 0.
    explicit DayDateFormatter(double origin = 0.0);

    [[nodiscard]] std::optional<std::string> stringFromNumber(double number) const override;
    /// With the same origin.
    [[nodiscard]] std::shared_ptr<NumberFormatter> copy() const override;

    /// What number 0 stands for, in days since 1970-01-01 00:00 UTC.
    [[nodiscard]] double origin() const { return m_origin; }

private:
    double m_origin;
};

} // namespace TOLVGraphing
