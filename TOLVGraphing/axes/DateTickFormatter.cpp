#include "DateTickFormatter.h"

#include "../platform/text/DateText.h"
#include "../platform/text/DayDateFormatter.h"
#include "TOLVDateAxis.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace TOLVGraphing {

namespace {

/// A value between ticks is written this much more exactly than they are: lines 6 points apart tell it to about a point.
constexpr double kPartsOfStep = 10.0;
/// Ticks are sums of doubles: they stand at a multiple of their step when they do to this part of it.
constexpr std::int64_t kAlignedParts = 1000;
constexpr std::size_t kYearLength = sizeof "2026" - 1;
constexpr std::size_t kMonthLength = sizeof "2026-03" - 1;

/// The largest power of ten that is not above a number of nanoseconds, at least 1.
std::int64_t powerOfTenBelow(double nanoseconds)
{
    std::int64_t power = 1;
    while (static_cast<double>(power) * 10.0 <= nanoseconds)
        power *= 10;
    return power;
}

/// The value among the ticks that narrows to the same float.
std::optional<double> tickAt(const TOLVAxis::Values& ticks, double number)
{
    const auto narrowed = static_cast<float>(number);
    const auto found = std::partition_point(ticks.begin(), ticks.end(), [narrowed](double tick) { return static_cast<float>(tick) < narrowed; });
    return found != ticks.end() && static_cast<float>(*found) == narrowed ? std::optional(*found) : std::nullopt;
}

/// The instant of a tick, exactly; nothing for one that stands elsewhere than at a multiple of the step.
std::optional<DateInstant> instantOfTick(double tick, double origin, const DateStep& step)
{
    const bool isTime = step.unit == DateUnit::Nanoseconds;
    const std::int64_t alignedPart = std::min(step.count, kNanosecondsPerSecond) / kAlignedParts;
    const std::int64_t resolution = isTime ? powerOfTenBelow(static_cast<double>(alignedPart)) : kNanosecondsPerSecond;
    const auto instant = instantSinceOrigin(tick, origin, resolution);
    const std::int64_t multiple = isTime ? step.count : kNanosecondsPerDay;
    return instant && instant->nanosecond % multiple == 0 ? instant : std::nullopt;
}

/// A date that stands for a day, month or year; nothing for a day within the month or year.
std::optional<std::string> textOfDay(int day, DateUnit unit)
{
    std::string text = dateText(day);
    if (unit == DateUnit::Days)
        return text;
    const std::size_t length = unit == DateUnit::Years ? kYearLength : kMonthLength;
    const std::string first = std::string("-01-01").substr(length == kYearLength ? 0 : 3);
    if (text.substr(length) != first)
        return std::nullopt;
    text.resize(length);
    return text;
}

std::optional<std::string> shortText(double tick, double origin, const DateStep& step, bool isFirst)
{
    const auto instant = instantOfTick(tick, origin, step);
    if (!instant)
        return std::nullopt;
    if (step.unit != DateUnit::Nanoseconds)
        return textOfDay(instant->day, step.unit);
    if (instant->nanosecond == 0)
        return dateText(instant->day);
    const std::string time = timeText(instant->nanosecond, step.count % kNanosecondsPerMinute != 0);
    return isFirst ? dateText(instant->day) + " " + time : time;
}

/// The distance between a number's float and the next larger one.
double floatDistance(double number)
{
    const auto narrowed = static_cast<float>(std::abs(number));
    return static_cast<double>(std::nextafter(narrowed, std::numeric_limits<float>::infinity())) - static_cast<double>(narrowed);
}

/// The coarsest resolution of texts, in nanoseconds, that is not above so many days.
std::int64_t resolutionBelow(double days)
{
    const double nanoseconds = days * static_cast<double>(kNanosecondsPerDay);
    for (const std::int64_t unit : {kNanosecondsPerMinute, kNanosecondsPerSecond}) {
        if (nanoseconds >= static_cast<double>(unit))
            return unit;
    }
    return powerOfTenBelow(nanoseconds);
}

/// The finest resolution that is not below so many days, at most a minute.
std::int64_t resolutionAbove(double days)
{
    const double nanoseconds = days * static_cast<double>(kNanosecondsPerDay);
    for (std::int64_t power = 1; power <= kNanosecondsPerSecond; power *= 10) {
        if (nanoseconds <= static_cast<double>(power))
            return power;
    }
    return kNanosecondsPerMinute;
}

} // namespace

DateTickFormatter::DateTickFormatter(std::weak_ptr<const TOLVAxis> axis) : m_axis(std::move(axis)) {}

std::optional<std::string> DateTickFormatter::stringFromNumber(double number) const
{
    const auto axis = std::dynamic_pointer_cast<const TOLVDateAxis>(m_axis.lock());
    auto text = axis ? textOfTick(*axis, number) : std::nullopt;
    if (!text && axis)
        text = wholeText(*axis, number);
    return text ? text : DayDateFormatter(axis ? axis->origin() : 0.0).stringFromNumber(number);
}

std::optional<std::string> DateTickFormatter::textOfTick(const TOLVDateAxis& axis, double number)
{
    const TOLVAxis::Values& major = axis.majorValues();
    const TOLVAxis::Values& minor = axis.minorValues();
    if (const auto tick = tickAt(major, number); tick && axis.majorStep())
        return shortText(*tick, axis.origin(), *axis.majorStep(), *tick == major.front());
    if (const auto tick = tickAt(minor, number); tick && axis.minorStep())
        return shortText(*tick, axis.origin(), *axis.minorStep(), major.empty() && *tick == minor.front());
    return std::nullopt;
}

std::optional<std::string> DateTickFormatter::wholeText(const TOLVDateAxis& axis, double number)
{
    if (!axis.majorStep())
        return std::nullopt;
    const double step = shortestLengthInDays(axis.minorStep().value_or(*axis.majorStep()));
    const double days = step / kPartsOfStep;
    const std::int64_t resolution = std::max(resolutionBelow(days), resolutionAbove(floatDistance(number)));
    const auto instant = instantSinceOrigin(number, axis.origin(), resolution);
    if (!instant)
        return std::nullopt;
    std::string text = dateText(instant->day);
    const bool isMidnightOfDays = instant->nanosecond == 0 && axis.majorStep()->unit != DateUnit::Nanoseconds;
    if (days < 1.0 && !isMidnightOfDays)
        text += " " + timeText(instant->nanosecond, resolution < kNanosecondsPerMinute);
    return text;
}

std::shared_ptr<NumberFormatter> DateTickFormatter::copy() const
{
    return std::make_shared<DateTickFormatter>(*this);
}

} // namespace TOLVGraphing
