#include "DateTicks.h"

#include "../platform/text/DateText.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <initializer_list>

namespace TOLVGraphing {

namespace {

/// More values than any drawing can show; ranges set after the choice of the step reach it.
constexpr std::size_t kMaximumValueCount = 10'000;
constexpr std::int64_t kLongestYears = 5000;
/// 1970-01-05.
constexpr std::int64_t kFirstMonday = 4;
constexpr std::int64_t kDaysPerWeek = 7;
constexpr std::int64_t kMonthsPerYear = 12;

void addSteps(std::vector<DateStep>& steps, DateUnit unit, std::int64_t size, std::initializer_list<std::int64_t> counts)
{
    for (const std::int64_t count : counts)
        steps.push_back({unit, size * count});
}

std::vector<DateStep> madeSteps()
{
    std::vector<DateStep> steps;
    for (std::int64_t power = 1; power < kNanosecondsPerSecond; power *= 10)
        addSteps(steps, DateUnit::Nanoseconds, power, {1, 2, 5});
    addSteps(steps, DateUnit::Nanoseconds, kNanosecondsPerSecond, {1, 2, 5, 10, 15, 30});
    addSteps(steps, DateUnit::Nanoseconds, kNanosecondsPerMinute, {1, 2, 5, 10, 15, 30});
    addSteps(steps, DateUnit::Nanoseconds, kNanosecondsPerHour, {1, 2, 3, 6, 12});
    addSteps(steps, DateUnit::Days, 1, {1, 2, kDaysPerWeek});
    addSteps(steps, DateUnit::Months, 1, {1, 3, 6});
    for (std::int64_t power = 1; power < kLongestYears; power *= 10)
        addSteps(steps, DateUnit::Years, power, {1, 2, 5});
    return steps;
}

std::int64_t flooredQuotient(std::int64_t number, std::int64_t divisor)
{
    return number / divisor - (number % divisor < 0 ? 1 : 0);
}

/// The number of the month or year that a day lies in, or of the day itself.
std::int64_t numberOfDay(DateUnit unit, int day)
{
    const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{day}}};
    const std::int64_t year = static_cast<int>(date.year());
    switch (unit) {
    case DateUnit::Months: return year * kMonthsPerYear + static_cast<unsigned>(date.month()) - 1;
    case DateUnit::Years: return year;
    default: return day;
    }
}

/// The first day of a month or year, or the day itself.
std::int64_t dayOfNumber(DateUnit unit, std::int64_t number)
{
    if (unit == DateUnit::Years)
        number *= kMonthsPerYear;
    else if (unit != DateUnit::Months)
        return number;
    const std::int64_t year = flooredQuotient(number, kMonthsPerYear);
    const std::chrono::month month{static_cast<unsigned>(number - year * kMonthsPerYear + 1)};
    return std::chrono::sys_days{std::chrono::year{static_cast<int>(year)} / month / 1}.time_since_epoch().count();
}

/// Takes instants in ascending order and lists those inside the range.
class TickList {
public:
    TickList(float min, float max) : m_min(min), m_max(max) {}

    /// False when no later one needs to be asked for. The day is the one that the instant lies in.
    bool take(std::int64_t day, double value)
    {
        const auto narrowed = static_cast<float>(value);
        if (static_cast<double>(day) > kLastDateDay || narrowed > m_max || values.size() == kMaximumValueCount)
            return false;
        if (static_cast<double>(day) >= kFirstDateDay && narrowed >= m_min)
            values.push_back(value);
        return true;
    }

    std::vector<double> values;

private:
    float m_min;
    float m_max;
};

/// The days, months or years from the one before the first day on.
void listDays(TickList& ticks, const DateStep& step, double origin, int firstDay)
{
    const std::int64_t phase = step.unit == DateUnit::Days && step.count == kDaysPerWeek ? kFirstMonday : 0;
    const std::int64_t multiple = flooredQuotient(numberOfDay(step.unit, firstDay) - phase, step.count);
    for (std::int64_t number = multiple * step.count + phase;; number += step.count) {
        const std::int64_t day = dayOfNumber(step.unit, number);
        if (!ticks.take(day, static_cast<double>(day) - origin))
            return;
    }
}

/// The times from `firstDay` on, about those of `passed` nanoseconds after its midnight first.
void listTimes(TickList& ticks, const DateStep& step, double origin, int firstDay, double passed)
{
    const double midnight = static_cast<double>(firstDay) - origin;
    // The quotient may be rounded up.
    const auto multiple = static_cast<std::int64_t>(std::floor(passed / static_cast<double>(step.count))) - 1;
    for (std::int64_t nanosecond = multiple * step.count;; nanosecond += step.count) {
        const std::int64_t day = firstDay + flooredQuotient(nanosecond, kNanosecondsPerDay);
        if (!ticks.take(day, midnight + static_cast<double>(nanosecond) / static_cast<double>(kNanosecondsPerDay)))
            return;
    }
}

} // namespace

const std::vector<DateStep>& allDateSteps()
{
    static const std::vector<DateStep> kSteps = madeSteps();
    return kSteps;
}

bool dividesStep(const DateStep& shorter, const DateStep& longer)
{
    if (shorter.unit == longer.unit)
        return shorter.count < longer.count && longer.count % shorter.count == 0;
    switch (shorter.unit) {
    case DateUnit::Nanoseconds: return true;
    case DateUnit::Days: return (shorter.count == 1 && longer.unit != DateUnit::Nanoseconds) || (shorter.count == kDaysPerWeek && longer == DateStep{DateUnit::Months, 1});
    case DateUnit::Months: return longer.unit == DateUnit::Years;
    case DateUnit::Years: break;
    }
    return false;
}

std::vector<double> dateTicks(const DateStep& step, double origin, float min, float max)
{
    TickList ticks(min, max);
    const double start = static_cast<double>(min) + origin;
    const double first = std::clamp(start, kFirstDateDay, kLastDateDay + 1.0);
    const auto firstDay = static_cast<int>(std::floor(first));
    // Not from the sum, which has lost the digits of a value near the origin.
    const double passed = start < first ? 0.0 : (static_cast<double>(min) - (static_cast<double>(firstDay) - origin)) * static_cast<double>(kNanosecondsPerDay);
    if (step.unit != DateUnit::Nanoseconds)
        listDays(ticks, step, origin, firstDay);
    else if (start <= first)
        listTimes(ticks, step, origin, firstDay, passed);
    return ticks.values;
}

} // namespace TOLVGraphing
