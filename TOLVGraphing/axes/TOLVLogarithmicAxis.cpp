#include "TOLVLogarithmicAxis.h"

#include "../mapping/TOLVLogarithmicMapping.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace TOLVGraphing {

namespace {

/// The closest that neighbouring lines may stand at depth 2, in points.
constexpr double kMinimumLineDistance = 4.0;
/// Values closer than this, relatively, are one value that was computed in two ways.
constexpr double kSameValueTolerance = 1e-12;
constexpr std::uint32_t kMaximumDepth = 4;

const ArchiveClassRegistration registration("TOLVLogarithmicAxis", &TOLVLogarithmicAxis::initWithCoder);

bool isSameValue(double a, double b)
{
    return std::abs(a - b) <= kSameValueTolerance * std::max(std::abs(a), std::abs(b));
}

/// The values of one level of the decade that starts at `start`: start + j * step, the last one taken as the next decade's start.
void listLevel(std::vector<double>& level, double start, double next, double step, int count, double min, double max)
{
    level.clear();
    for (int j = 1; j <= count; ++j) {
        const double v = j == count ? next : static_cast<double>(j) * step + start;
        if (v > max)
            return;
        if (v > start && v >= min)
            level.push_back(v);
    }
}

/// Merges ascending values into ascending values; of those that are the same, the one listed before stays.
std::vector<double> merged(const std::vector<double>& listed, const std::vector<double>& added)
{
    std::vector<double> all;
    all.reserve(listed.size() + added.size());
    auto next = listed.begin();
    for (const double value : added) {
        while (next != listed.end() && *next < value && !isSameValue(*next, value))
            all.push_back(*next++);
        const bool isListed = (next != listed.end() && isSameValue(*next, value)) || (!all.empty() && isSameValue(all.back(), value));
        if (!isListed)
            all.push_back(value);
    }
    all.insert(all.end(), next, listed.end());
    return all;
}

} // namespace

std::vector<double> logRange(std::uint32_t depth, double min, double max)
{
    std::vector<double> values;
    std::vector<double> level;
    if (!(min > 0.0) || !(min <= max) || !(max <= std::numeric_limits<double>::max()))
        return values;
    const int low = static_cast<int>(std::floor(std::log10(min)));
    const int high = static_cast<int>(std::floor(std::log10(max) + 1.0));
    const std::uint32_t levels = std::min(depth, kMaximumDepth);
    for (int exponent = low; exponent < high; ++exponent) {
        const double start = std::pow(10.0, exponent);
        if (start > max)
            break;
        std::vector<double> decade;
        if (start >= min)
            decade.push_back(start);
        const double next = std::pow(10.0, exponent + 1);
        int count = 9;
        for (std::uint32_t depthLevel = 0; depthLevel < levels; ++depthLevel, count *= 10) {
            const double step = std::pow(10.0, exponent - static_cast<int>(depthLevel));
            // Below the smallest double there is no step to go by.
            if (!(step > 0.0))
                continue;
            listLevel(level, start, next, step, count, min, max);
            decade = merged(decade, level);
        }
        // A decade ends where the next one starts.
        const bool startsListed = !values.empty() && !decade.empty() && isSameValue(values.back(), decade.front());
        values.insert(values.end(), decade.begin() + (startsListed ? 1 : 0), decade.end());
    }
    return values;
}

std::shared_ptr<TOLVAxis> TOLVLogarithmicAxis::copy() const
{
    auto axis = std::make_shared<TOLVLogarithmicAxis>(graph());
    copyPropertiesInto(*axis);
    copyDepthInto(*axis);
    return axis;
}

void TOLVLogarithmicAxis::copyDepthInto(TOLVLogarithmicAxis& axis) const
{
    axis.m_minorValuesDepth = m_minorValuesDepth;
}

std::shared_ptr<TOLVLogarithmicAxis> TOLVLogarithmicAxis::initWithCoder(KeyedUnarchiver& coder)
{
    auto axis = std::make_shared<TOLVLogarithmicAxis>();
    axis->decodeFlags(coder);
    return axis;
}

float TOLVLogarithmicAxis::valueForPoint(double point, const Rect& inRect) const
{
    return mappingForRect(inRect)->valueForPoint(static_cast<float>(point));
}

float TOLVLogarithmicAxis::pointForValue(float value, const Rect& inRect) const
{
    return mappingForRect(inRect)->pointForValue(value);
}

std::shared_ptr<TOLVMapping> TOLVLogarithmicAxis::mappingForRect(const Rect& rect) const
{
    auto mapping = std::make_shared<TOLVLogarithmicMapping>();
    configureMapping(*mapping, rect);
    return mapping;
}

bool TOLVLogarithmicAxis::canEndRangeAt(float value) const
{
    return TOLVAxis::canEndRangeAt(value) && value > 0.0F;
}

void TOLVLogarithmicAxis::updateStepsInRect(const Rect& rect)
{
    m_minorValuesDepth = 2;
    const auto range = extents();
    const Values values = range ? logRange(m_minorValuesDepth, range->min(), range->max()) : Values();
    if (values.empty())
        return;
    const auto mapping = mappingForRect(rect);
    double gap = std::numeric_limits<double>::max();
    for (std::size_t i = 1; i < values.size(); ++i) {
        const float current = mapping->pointForValue(static_cast<float>(values[i]));
        const float previous = mapping->pointForValue(static_cast<float>(values[i - 1]));
        gap = std::min(gap, static_cast<double>(current - previous));
    }
    if (!(gap >= kMinimumLineDistance))
        m_minorValuesDepth = 1;
}

void TOLVLogarithmicAxis::getMajorValues(Values* majorValues, Values* minorValues) const
{
    Values major;
    Values all;
    const auto range = extents();
    if (range && m_minorValuesDepth > 0) {
        major = logRange(m_minorValuesDepth - 1, range->min(), range->max());
        all = logRange(m_minorValuesDepth, range->min(), range->max());
    }
    if (minorValues) {
        minorValues->clear();
        std::set_difference(all.begin(), all.end(), major.begin(), major.end(), std::back_inserter(*minorValues), [](double a, double b) { return a < b && !isSameValue(a, b); });
    }
    if (majorValues)
        *majorValues = std::move(major);
}

} // namespace TOLVGraphing
