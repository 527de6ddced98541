#include "TickSpacing.h"

#include "TOLVAxis.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace TOLVGraphing {

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
/// A value between two ticks is written with two digits more than they are.
constexpr double kPartsBetweenTicks = 100.0;
/// More than what the ends of a linear axis differ by, where the first major value may lie up to half a major step below the others and where steps near the floats' own are
/// rounded up or down; less than two decades.
constexpr double kLargestEvenRatio = 20.0;

/// What stands next to a value among the ticks; infinite where nothing does.
struct Neighbours {
    float below = -kInfinity;
    float above = kInfinity;
    bool isTick = false;
};

Neighbours neighboursInValues(const TOLVAxis::Values& values, float value)
{
    const auto from = std::partition_point(values.begin(), values.end(), [value](double tick) { return static_cast<float>(tick) < value; });
    const auto to = std::partition_point(from, values.end(), [value](double tick) { return static_cast<float>(tick) <= value; });
    Neighbours found;
    if (from != values.begin())
        found.below = static_cast<float>(*std::prev(from));
    if (to != values.end())
        found.above = static_cast<float>(*to);
    found.isTick = from != to;
    return found;
}

Neighbours neighboursOnAxis(const TOLVAxis& axis, float value)
{
    const Neighbours major = neighboursInValues(axis.majorValues(), value);
    const Neighbours minor = neighboursInValues(axis.minorValues(), value);
    return {std::max(major.below, minor.below), std::min(major.above, minor.above), major.isTick || minor.isTick};
}

double distance(float from, float to)
{
    return static_cast<double>(to) - static_cast<double>(from);
}

/// A major and a minor value that should be one may come out as neighbouring floats. A neighbour of a tick is the tick itself when it is that close and the others, at the given distance, are far away.
bool isTwin(float tick, float neighbour, double others)
{
    constexpr float kTwinTolerance = 4.0F * std::numeric_limits<float>::epsilon();
    constexpr double kFarAway = 100.0;
    const double near = std::abs(distance(tick, neighbour));
    return near <= static_cast<double>(std::abs(tick) * kTwinTolerance) && std::isfinite(others) && others >= kFarAway * near;
}

/// The distance from a tick to the nearest other one; infinite without any.
double distanceToNearest(const TOLVAxis& axis, float tick, const Neighbours& neighbours)
{
    const double toBelow = distance(neighbours.below, tick);
    const double toAbove = distance(tick, neighbours.above);
    const double beyondBelow = distance(neighboursOnAxis(axis, neighbours.below).below, tick);
    const double beyondAbove = distance(tick, neighboursOnAxis(axis, neighbours.above).above);
    if (isTwin(tick, neighbours.below, std::min(beyondBelow, toAbove)))
        return std::min(beyondBelow, toAbove);
    if (isTwin(tick, neighbours.above, std::min(beyondAbove, toBelow)))
        return std::min(beyondAbove, toBelow);
    return std::min(toBelow, toAbove);
}

/// The distance between the ticks on both sides of a value that is none, or of the nearest two; infinite or NaN where there are no two.
double distanceAround(const TOLVAxis& axis, const Neighbours& neighbours)
{
    if (std::isinf(neighbours.below))
        return distance(neighbours.above, neighboursOnAxis(axis, neighbours.above).above);
    if (std::isinf(neighbours.above))
        return distance(neighboursOnAxis(axis, neighbours.below).below, neighbours.below);
    return distance(neighbours.below, neighbours.above);
}

} // namespace

TickSpacing::TickSpacing(std::weak_ptr<const TOLVAxis> axis) : m_axis(std::move(axis)) {}

std::optional<TickSpacing::Resolution> TickSpacing::resolutionForValue(double value) const
{
    const auto axis = m_axis.lock();
    const auto narrowed = static_cast<float>(value);
    if (!axis || !std::isfinite(narrowed))
        return std::nullopt;
    const Neighbours neighbours = neighboursOnAxis(*axis, narrowed);
    Resolution resolution;
    resolution.isTick = neighbours.isTick;
    if (neighbours.isTick)
        resolution.distance = distanceToNearest(*axis, narrowed, neighbours);
    else
        resolution.distance = distanceAround(*axis, neighbours) / kPartsBetweenTicks;
    if (!(resolution.distance > 0.0) || std::isinf(resolution.distance))
        return std::nullopt;
    return resolution;
}

std::optional<TickSpacing::Span> TickSpacing::span() const
{
    const auto axis = m_axis.lock();
    if (!axis)
        return std::nullopt;
    const float first = neighboursOnAxis(*axis, -kInfinity).above;
    const float last = neighboursOnAxis(*axis, kInfinity).below;
    if (!(first < last) || std::isinf(first) || std::isinf(last))
        return std::nullopt;
    const double atFirst = distance(first, neighboursOnAxis(*axis, first).above);
    const double atLast = distance(neighboursOnAxis(*axis, last).below, last);
    const auto [smaller, larger] = std::minmax(atFirst, atLast);
    return Span{static_cast<double>(first), static_cast<double>(last), smaller, larger <= smaller * kLargestEvenRatio};
}

} // namespace TOLVGraphing
