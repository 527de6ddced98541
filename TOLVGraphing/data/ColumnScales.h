#pragma once

#include "../mapping/TOLVLinearMapping.h"
#include "../mapping/TOLVLogarithmicMapping.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace TOLVGraphing {

/// What a reduction needs of a mapping besides the positions themselves: all of it estimates, which are proved by mapping.
template <typename Mapping>
class ColumnScale {
public:
    /// The ends of the points' range are narrowed to single precision.
    ColumnScale(float minValue, float maxValue, double minPoint, double maxPoint)
    {
        m_mapping.setMinValue(minValue);
        m_mapping.setMaxValue(maxValue);
        m_mapping.setMinPoint(static_cast<float>(minPoint));
        m_mapping.setMaxPoint(static_cast<float>(maxPoint));
        m_unitOfPosition = 1.0F / std::abs(m_mapping.scaler());
    }

    [[nodiscard]] float pointForValue(float value) const { return m_mapping.pointForValue(value); }
    [[nodiscard]] float scaler() const { return m_mapping.scaler(); }

    /// True when larger values have larger positions, or smaller ones throughout, and no position is a negative zero. Ends that are not finite have a scale that is not, or a scale of zero, where all positions are the same or NaN.
    [[nodiscard]] bool isMonotone() const { return std::isfinite(scaler()) && !(minPoint() == 0.0F && std::signbit(minPoint())); }

    /// About the value at a position.
    [[nodiscard]] double valueNear(double point) const;
    /// A value times the factor plus the summand is about the value one position above.
    struct Step {
        double factor = 1.0;
        double summand = 0.0;
    };
    [[nodiscard]] Step onePositionFurther() const;

    /// A value on one side of another one, above it for the direction 1 and below it for -1, so that all values that map to the other's position lie before it. Infinite when there is none that can be told.
    [[nodiscard]] float endOfPosition(float value, float position, float direction) const
    {
        float distance = std::max(resolution(value, position), std::numeric_limits<float>::denorm_min());
        while (true) {
            const float end = value + direction * distance;
            if (!std::isfinite(end))
                return direction * std::numeric_limits<float>::infinity();
            if (pointForValue(end) != position)
                return end;
            distance *= 2.0F;
        }
    }

private:
    [[nodiscard]] float minPoint() const { return m_mapping.minPoint(); }
    /// What maps to the low point: a value, or its logarithm.
    [[nodiscard]] float lowValue() const;
    /// About how far apart values have to be for positions that differ.
    [[nodiscard]] float resolution(float value, float position) const;
    /// The rounding errors on the way to a position, in positions.
    [[nodiscard]] float roundingOf(float position) const
    {
        return 4.0F * std::numeric_limits<float>::epsilon() * (std::abs(position) + std::abs(position - minPoint()) + std::abs(minPoint()));
    }

    Mapping m_mapping;
    /// Values, or decades, to a position.
    float m_unitOfPosition = 0.0F;
};

template <>
inline float ColumnScale<TOLVLinearMapping>::lowValue() const
{
    return m_mapping.minValue();
}

template <>
inline double ColumnScale<TOLVLinearMapping>::valueNear(double point) const
{
    return (point - static_cast<double>(minPoint())) / static_cast<double>(scaler()) + static_cast<double>(lowValue());
}

template <>
inline auto ColumnScale<TOLVLinearMapping>::onePositionFurther() const -> Step
{
    return {1.0, 1.0 / static_cast<double>(scaler())};
}

template <>
inline float ColumnScale<TOLVLinearMapping>::resolution(float value, float position) const
{
    return roundingOf(position) * m_unitOfPosition + 4.0F * std::numeric_limits<float>::epsilon() * (std::abs(value - lowValue()) + std::abs(value));
}

template <>
inline float ColumnScale<TOLVLogarithmicMapping>::lowValue() const
{
    return m_mapping.logMin();
}

template <>
inline double ColumnScale<TOLVLogarithmicMapping>::valueNear(double point) const
{
    return std::pow(10.0, (point - static_cast<double>(minPoint())) / static_cast<double>(scaler()) + static_cast<double>(lowValue()));
}

template <>
inline auto ColumnScale<TOLVLogarithmicMapping>::onePositionFurther() const -> Step
{
    return {std::pow(10.0, 1.0 / static_cast<double>(scaler())), 0.0};
}

template <>
inline float ColumnScale<TOLVLogarithmicMapping>::resolution(float value, float position) const
{
    constexpr float kLn10 = 2.302585F;
    const float decades = roundingOf(position) * m_unitOfPosition + 8.0F * std::numeric_limits<float>::epsilon() * std::abs(lowValue());
    return kLn10 * (decades + 8.0F * std::numeric_limits<float>::epsilon()) * (std::abs(value) + std::numeric_limits<float>::min());
}

} // namespace TOLVGraphing
