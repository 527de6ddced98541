#include "TOLVDateAxis.h"

#include "../mapping/TOLVLinearMapping.h"
#include "../platform/text/DateText.h"
#include "DateTicks.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace TOLVGraphing {

namespace {

/// How close ticks may stand, and how many there may be on the longest axis.
struct TickDensity {
    /// In points.
    double minimumDistance;
    double mostSteps;
};

constexpr TickDensity kMajorDensity{80.0, 200.0};
constexpr TickDensity kMinorDensity{6.0, 1000.0};
/// The shortest step in distances of neighbouring floats, so that rounding moves no tick further than an eighth of a step.
constexpr double kFloatsPerStep = 4.0;

const ArchiveClassRegistration registration("TOLVDateAxis", &TOLVDateAxis::initWithCoder);

bool isOrigin(double days)
{
    return days >= kFirstDateDay && days < kLastDateDay + 1.0;
}

/// A range of positive finite length, in days.
struct ShownRange {
    float min = 0.0F;
    float max = 0.0F;

    [[nodiscard]] double length() const { return static_cast<double>(max) - static_cast<double>(min); }

    /// The shortest step whose ticks can be told apart; infinite at the largest floats.
    [[nodiscard]] double finestLength() const
    {
        const float largest = std::max(std::abs(min), std::abs(max));
        const double distance = static_cast<double>(std::nextafter(largest, std::numeric_limits<float>::infinity())) - static_cast<double>(largest);
        return kFloatsPerStep * distance;
    }
};

std::optional<ShownRange> shownRange(const std::shared_ptr<TOLVAxisExtents>& extents)
{
    if (!extents)
        return std::nullopt;
    const ShownRange range{static_cast<float>(extents->min()), static_cast<float>(extents->max())};
    const bool isProper = std::isfinite(range.min) && std::isfinite(range.max) && range.min < range.max;
    return isProper ? std::optional(range) : std::nullopt;
}

/// The shortest step that passes and is no denser than it may be, on an axis of a length in points.
template <typename Passes>
std::optional<DateStep> shortestStep(const ShownRange& range, double axisLength, const TickDensity& density, Passes passes)
{
    const double finest = std::max(range.finestLength(), range.length() / density.mostSteps);
    for (const DateStep& step : allDateSteps()) {
        const double days = shortestLengthInDays(step);
        if (days >= finest && days / range.length() * axisLength >= density.minimumDistance && passes(step))
            return step;
    }
    return std::nullopt;
}

/// Removes the minor values that stand where a major one does, which may differ by a rounding, and Mondays next to the first of a month.
void removeMajorValues(TOLVAxis::Values& minorValues, const TOLVAxis::Values& majorValues, double minorLength)
{
    const double tolerance = 0.25 * minorLength;
    std::erase_if(minorValues, [&](double value) {
        const auto next = std::lower_bound(majorValues.begin(), majorValues.end(), value - tolerance);
        return next != majorValues.end() && *next <= value + tolerance;
    });
}

} // namespace

TOLVDateAxis::TOLVDateAxis() : TOLVDateAxis(std::weak_ptr<TOLVGraph>()) {}

TOLVDateAxis::TOLVDateAxis(std::weak_ptr<TOLVGraph> graph) : TOLVAxis(std::move(graph)) {}

std::shared_ptr<TOLVAxis> TOLVDateAxis::copy() const
{
    auto axis = std::make_shared<TOLVDateAxis>(graph());
    copyPropertiesInto(*axis);
    axis->setOrigin(m_origin);
    return axis;
}

void TOLVDateAxis::encodeWithCoder(KeyedArchiver& coder) const
{
    TOLVAxis::encodeWithCoder(coder);
    coder.encodeDouble(m_origin, "origin");
}

std::shared_ptr<TOLVDateAxis> TOLVDateAxis::initWithCoder(KeyedUnarchiver& coder)
{
    auto axis = std::make_shared<TOLVDateAxis>();
    axis->decodeFlags(coder);
    const double origin = coder.decodeDouble("origin").value_or(0.0);
    if (!isOrigin(origin))
        throw ArchiveError("TOLVDateAxis \"origin\": found a number outside the years 0 to 9999, expected days since 1970-01-01");
    axis->setOrigin(origin);
    return axis;
}

void TOLVDateAxis::setOrigin(double origin)
{
    m_origin = isOrigin(origin) ? origin : 0.0;
}

float TOLVDateAxis::valueForPoint(double point, const Rect& inRect) const
{
    return mappingForRect(inRect)->valueForPoint(static_cast<float>(point));
}

float TOLVDateAxis::pointForValue(float value, const Rect& inRect) const
{
    return mappingForRect(inRect)->pointForValue(value);
}

std::shared_ptr<TOLVMapping> TOLVDateAxis::mappingForRect(const Rect& rect) const
{
    auto mapping = std::make_shared<TOLVLinearMapping>();
    configureMapping(*mapping, rect);
    return mapping;
}

void TOLVDateAxis::updateStepsInRect(const Rect& rect)
{
    m_majorStep.reset();
    m_minorStep.reset();
    const auto range = shownRange(extents());
    if (!range)
        return;
    const double length = lengthOfRect(rect);
    m_majorStep = shortestStep(*range, length, kMajorDensity, [](const DateStep&) { return true; });
    if (m_majorStep)
        m_minorStep = shortestStep(*range, length, kMinorDensity, [this](const DateStep& step) { return dividesStep(step, *m_majorStep); });
}

void TOLVDateAxis::getMajorValues(Values* majorValues, Values* minorValues) const
{
    Values major;
    Values minor;
    const auto range = shownRange(extents());
    if (range && m_majorStep)
        major = dateTicks(*m_majorStep, m_origin, range->min, range->max);
    if (range && m_minorStep && minorValues) {
        minor = dateTicks(*m_minorStep, m_origin, range->min, range->max);
        removeMajorValues(minor, major, shortestLengthInDays(*m_minorStep));
    }
    if (minorValues)
        *minorValues = std::move(minor);
    if (majorValues)
        *majorValues = std::move(major);
}

} // namespace TOLVGraphing
