#include "DayDateFormatter.h"

#include "DateText.h"

#include <cmath>

namespace TOLVGraphing {

DayDateFormatter::DayDateFormatter(double origin) : m_origin(std::isfinite(origin) ? origin : 0.0) {}

std::optional<std::string> DayDateFormatter::stringFromNumber(double number) const
{
    const double days = m_origin + number;
    const auto instant = instantAfterDay(0.0, days, m_origin == 0.0 ? kNanosecondsPerMinute : kNanosecondsPerSecond);
    if (!instant)
        return NumberFormatter::stringFromNumber(days);
    const std::string date = dateText(instant->day);
    if (instant->nanosecond == 0)
        return date;
    return date + " " + timeText(instant->nanosecond, instant->nanosecond % kNanosecondsPerMinute != 0);
}

std::shared_ptr<NumberFormatter> DayDateFormatter::copy() const
{
    return std::make_shared<DayDateFormatter>(*this);
}

} // namespace TOLVGraphing
