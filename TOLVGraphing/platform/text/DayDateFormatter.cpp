#include "DayDateFormatter.h"

#include <chrono>
#include <cmath>
#include <cstdio>

namespace TOLVGraphing {

namespace {

constexpr double kMinutesPerDay = 1440.0;
/// Days to 0000-01-01 and to 9999-12-31.
constexpr double kFirstDay = -719528.0;
constexpr double kLastDay = 2932896.0;

} // namespace

std::optional<std::string> DayDateFormatter::stringFromNumber(double number) const
{
    if (!(number >= kFirstDay && number < kLastDay + 1.0))
        return NumberFormatter::stringFromNumber(number);
    const double minutes = std::round(number * kMinutesPerDay);
    const double day = std::floor(minutes / kMinutesPerDay);
    // The last half minute is rounded to a day that is outside.
    if (day > kLastDay)
        return NumberFormatter::stringFromNumber(number);
    const int minuteOfDay = static_cast<int>(minutes - day * kMinutesPerDay);
    const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{static_cast<int>(day)}}};
    char text[48];
    int length = std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(date.year()), static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    if (minuteOfDay != 0)
        length += std::snprintf(text + length, sizeof text - static_cast<std::size_t>(length), " %02d:%02d", minuteOfDay / 60, minuteOfDay % 60);
    return std::string(text, static_cast<std::size_t>(length));
}

std::shared_ptr<NumberFormatter> DayDateFormatter::copy() const
{
    return std::make_shared<DayDateFormatter>(*this);
}

} // namespace TOLVGraphing
