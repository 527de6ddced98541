#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace TOLVGraphing {

/// Days from 1970-01-01 to 0000-01-01 and to 9999-12-31, the days that are written as dates.
inline constexpr double kFirstDateDay = -719528.0;
inline constexpr double kLastDateDay = 2932896.0;

inline constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;
inline constexpr std::int64_t kNanosecondsPerMinute = 60 * kNanosecondsPerSecond;
inline constexpr std::int64_t kNanosecondsPerHour = 60 * kNanosecondsPerMinute;
inline constexpr std::int64_t kNanosecondsPerDay = 24 * kNanosecondsPerHour;

/// A day, counted from 1970-01-01, and the time since its midnight, in UTC.
struct DateInstant {
    int day = 0;
    std::int64_t nanosecond = 0;
};

/// The instant so many days after the midnight of a whole day, rounded to the resolution in nanoseconds, which divides a day. Nothing for what lies outside the years 0 to 9999, before or after it is rounded, and for what is not finite.
[[nodiscard]] std::optional<DateInstant> instantAfterDay(double wholeDay, double days, std::int64_t resolution);

/// The instant of a number of days since an origin, which is itself in days since 1970-01-01 00:00 UTC, otherwise as above. A number near the origin keeps all its digits: the sum is never taken.
[[nodiscard]] std::optional<DateInstant> instantSinceOrigin(double number, double origin, std::int64_t resolution);

/// "2026-03-01"; the day is one of the years 0 to 9999.
[[nodiscard]] std::string dateText(int day);

/// "10:30" or, with seconds, "10:30:15" and "10:30:15.25", with the digits of the second that there are; nanoseconds since midnight, less than a day.
[[nodiscard]] std::string timeText(std::int64_t nanosecond, bool withSeconds);

} // namespace TOLVGraphing
