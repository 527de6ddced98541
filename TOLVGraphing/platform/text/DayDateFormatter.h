#pragma once

#include "NumberFormatter.h"
#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// Writes days since 1970-01-01 00:00 UTC as ISO dates, "2026-11-21", with the time of day where the number is no whole day: "2026-11-21 06:30". The time is rounded to the minute, because a
/// single-precision number of days knows no more (from the end of 2014 on it knows every third). Numbers outside the years 0 to 9999 once they are rounded, and those that are not finite, are written in decimal style.
class TOLV_EXPORT DayDateFormatter final : public NumberFormatter {
public:
    [[nodiscard]] std::optional<std::string> stringFromNumber(double number) const override;
    [[nodiscard]] std::shared_ptr<NumberFormatter> copy() const override;
};

} // namespace TOLVGraphing
