#include "Scale.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace TOLVGraphing::app {

double Scale::position(double value) const
{
    return m_isLogarithmic ? std::log10(value) : value;
}

double Scale::length(Range range) const
{
    return m_isLogarithmic ? std::log10(range.to / range.from) : range.to - range.from;
}

double Scale::moved(double value, double distance) const
{
    if (!m_isLogarithmic)
        return value + distance;
    constexpr auto kSmallest = static_cast<double>(std::numeric_limits<float>::denorm_min());
    constexpr auto kLargest = static_cast<double>(std::numeric_limits<float>::max());
    return std::clamp(value * std::pow(10.0, distance), kSmallest, kLargest);
}

Range Scale::extended(Range range, double before, double behind) const
{
    const double whole = length(range);
    return {moved(range.from, -whole * before), moved(range.to, whole * behind)};
}

Range Scale::widenedIfEmpty(Range range) const
{
    if (range.from < range.to)
        return range;
    double half = 0.5;
    if (!m_isLogarithmic && range.from != 0.0)
        half = std::abs(range.from) * 0.1;
    return {moved(range.from, -half), moved(range.from, half)};
}

} // namespace TOLVGraphing::app
