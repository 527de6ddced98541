#include "TOLVLinearAxis.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace TOLVGraphing {

namespace {

/// The closest that minor grid lines may stand, in points.
constexpr float kMinimumLineDistance = 4.0F;
/// More values than any drawing can show; steps set from outside reach it.
constexpr std::size_t kMaximumValueCount = 1'000'000;
constexpr std::size_t kUsualValueCount = 32;

const ArchiveClassRegistration registration("TOLVLinearAxis", &TOLVLinearAxis::initWithCoder);

/// The multiples of the step from the one nearest to `min` up to `max`. The running sum is single precision and only finds the whole number; each value is that whole
/// number times the step.
TOLVAxis::Values multiplesOfStep(double step, double min, double max)
{
    TOLVAxis::Values values;
    values.reserve(kUsualValueCount);
    const auto first = static_cast<double>(std::rint(static_cast<float>(min / step)));
    auto v = static_cast<float>(step * first);
    // The multiple nearest to the lower end may lie below the smallest float; the next one does not.
    if (std::isinf(v))
        v = static_cast<float>(step * (first + 1.0));
    while (max >= static_cast<double>(v) && values.size() < kMaximumValueCount) {
        values.push_back(static_cast<double>(std::rint(static_cast<float>(static_cast<double>(v) / step))) * step);
        const auto next = static_cast<float>(static_cast<double>(v) + step);
        // Where the step is below the resolution of the values the sum stands still.
        if (!(next > v))
            break;
        v = next;
    }
    return values;
}

} // namespace

TOLVLinearAxis::TOLVLinearAxis() : TOLVLinearAxis(std::weak_ptr<TOLVGraph>()) {}

TOLVLinearAxis::TOLVLinearAxis(std::weak_ptr<TOLVGraph> graph) : TOLVAxis(std::move(graph)), m_valueMap(std::make_shared<TOLVLinearMapping>()) {}

std::shared_ptr<TOLVAxis> TOLVLinearAxis::copy() const
{
    auto axis = std::make_shared<TOLVLinearAxis>(graph());
    copyPropertiesInto(*axis);
    axis->setValueMap(std::static_pointer_cast<TOLVLinearMapping>(m_valueMap->copy()));
    return axis;
}

std::shared_ptr<TOLVLinearAxis> TOLVLinearAxis::initWithCoder(KeyedUnarchiver& coder)
{
    auto axis = std::make_shared<TOLVLinearAxis>();
    axis->decodeFlags(coder);
    return axis;
}

float TOLVLinearAxis::valueForPoint(double point, const Rect& inRect) const
{
    return mappingForRect(inRect)->valueForPoint(static_cast<float>(point));
}

float TOLVLinearAxis::pointForValue(float value, const Rect& inRect) const
{
    return mappingForRect(inRect)->pointForValue(value);
}

std::shared_ptr<TOLVMapping> TOLVLinearAxis::mappingForRect(const Rect& rect) const
{
    configureMapping(*m_valueMap, rect);
    return m_valueMap;
}

void TOLVLinearAxis::updateStepsInRect(const Rect& rect)
{
    const auto range = extents();
    const double length = lengthOfRect(rect);
    const float width = range ? static_cast<float>(range->max()) - static_cast<float>(range->min()) : 0.0F;
    const auto exponent = static_cast<double>(std::floor(std::log10(width)));
    m_majorStep = static_cast<double>(static_cast<float>(std::pow(10.0, exponent)));
    m_minorStep = m_majorStep;
    for (const double divisor : {10.0, 5.0, 2.0, 1.0}) {
        const double candidate = m_majorStep / divisor;
        const auto distance = static_cast<float>((candidate / static_cast<double>(width)) * length);
        if (distance >= kMinimumLineDistance) {
            m_minorStep = candidate;
            break;
        }
    }
}

void TOLVLinearAxis::getMajorValues(Values* majorValues, Values* minorValues) const
{
    const auto range = extents();
    const double min = range ? range->min() : 0.0;
    const double max = range ? range->max() : 0.0;
    const Values major = multiplesOfStep(m_majorStep, min, max);
    if (minorValues) {
        *minorValues = multiplesOfStep(m_minorStep, min, max);
        std::erase_if(*minorValues, [&](double value) { return std::binary_search(major.begin(), major.end(), value); });
    }
    if (majorValues)
        *majorValues = major;
}

} // namespace TOLVGraphing
