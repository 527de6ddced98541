#include "DateText.h"

#include <chrono>
#include <cmath>
#include <cstdio>

namespace TOLVGraphing {

std::optional<DateInstant> instantAfterDay(double wholeDay, double days, std::int64_t resolution)
{
    const double sum = wholeDay + days;
    if (!(sum >= kFirstDateDay && sum < kLastDateDay + 1.0))
        return std::nullopt;
    const std::int64_t unitCount = kNanosecondsPerDay / resolution;
    const auto unitsPerDay = static_cast<double>(unitCount);
    const double units = std::round(days * unitsPerDay);
    const double passedDays = std::floor(units / unitsPerDay);
    const double day = wholeDay + passedDays;
    // The last moments are rounded to a day that is outside, and the sum may have been rounded up to the first day.
    if (day < kFirstDateDay || day > kLastDateDay)
        return std::nullopt;
    return DateInstant{static_cast<int>(day), static_cast<std::int64_t>(units - passedDays * unitsPerDay) * resolution};
}

std::optional<DateInstant> instantSinceOrigin(double number, double origin, std::int64_t resolution)
{
    const double wholeDay = std::floor(number + origin);
    return instantAfterDay(wholeDay, number - (wholeDay - origin), resolution);
}

std::string dateText(int day)
{
    const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{day}}};
    char text[48];
    const int length = std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(date.year()), static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    return std::string(text, static_cast<std::size_t>(length));
}

std::string timeText(std::int64_t nanosecond, bool withSeconds)
{
    const auto hour = static_cast<int>(nanosecond / kNanosecondsPerHour);
    const auto minute = static_cast<int>(nanosecond / kNanosecondsPerMinute % 60);
    const auto second = static_cast<int>(nanosecond / kNanosecondsPerSecond % 60);
    const auto fraction = static_cast<int>(nanosecond % kNanosecondsPerSecond);
    char text[64];
    int length = std::snprintf(text, sizeof text, "%02d:%02d", hour, minute);
    if (withSeconds && fraction == 0)
        length = std::snprintf(text, sizeof text, "%02d:%02d:%02d", hour, minute, second);
    else if (withSeconds)
        length = std::snprintf(text, sizeof text, "%02d:%02d:%02d.%09d", hour, minute, second, fraction);
    while (withSeconds && fraction != 0 && text[length - 1] == '0')
        --length;
    return std::string(text, static_cast<std::size_t>(length));
}

} // namespace TOLVGraphing
