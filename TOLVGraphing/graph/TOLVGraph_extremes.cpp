// The graph's data extremes, the validation of its extents and the visible ranges of its series.

#include "TOLVGraph.h"

#include "../axes/TOLVLogarithmicAxis.h"
#include "../data/VisibleSamples.h"
#include "../platform/foundation/Exception.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace TOLVGraphing {

namespace {

constexpr float kUnknownMinimum = std::numeric_limits<float>::max();
constexpr float kUnknownMaximum = -std::numeric_limits<float>::max();

bool isLogarithmic(const std::shared_ptr<TOLVAxis>& axis)
{
    return dynamic_cast<const TOLVLogarithmicAxis*>(axis.get()) != nullptr;
}

std::size_t lengthOf(const TOLVGraphData::Samples& samples)
{
    return samples ? samples->length() : 0;
}

} // namespace

float TOLVGraph::minXValue() const
{
    float result = kUnknownMinimum;
    for (const auto& series : m_graphDataArray) {
        if (lengthOf(series->X()) == 0)
            continue;
        const float first = series->X()->components()[0];
        if (!(result <= first))
            result = first;
    }
    return result;
}

float TOLVGraph::maxXValue() const
{
    float result = kUnknownMaximum;
    for (const auto& series : m_graphDataArray) {
        const std::size_t length = lengthOf(series->X());
        if (length == 0)
            continue;
        const float last = series->X()->components()[length - 1];
        if (result <= last)
            result = last;
    }
    return result;
}

float TOLVGraph::minYValue() const
{
    float result = kUnknownMinimum;
    // A series without a minimum reports nothing and leaves the former series' value.
    float reported = kUnknownMinimum;
    for (const auto& series : m_graphDataArray) {
        if (series->Y())
            series->Y()->getMinimum(&reported, nullptr);
        if (reported < result)
            result = reported;
    }
    return result;
}

float TOLVGraph::maxYValue() const
{
    float result = kUnknownMaximum;
    float reported = kUnknownMaximum;
    for (const auto& series : m_graphDataArray) {
        if (series->Y())
            series->Y()->getMaximum(&reported, nullptr);
        if (reported > result)
            result = reported;
    }
    return result;
}

std::shared_ptr<TOLVGraphExtents> TOLVGraph::extentsFittingGraphData() const
{
    auto extents = std::make_shared<TOLVGraphExtents>();
    extents->setX(TOLVAxisExtents::extentsWithMin(static_cast<double>(minXValue()), static_cast<double>(maxXValue())));
    extents->setY(TOLVAxisExtents::extentsWithMin(static_cast<double>(minYValue()), static_cast<double>(maxYValue())));
    return extents;
}

bool TOLVGraph::validateExtentsValue(PropertyValue& value, std::string_view forKeyPath, std::string*) const
{
    const auto proposed = numberValue(value);
    if (!proposed)
        return false;
    const bool concernsX = forKeyPath.starts_with("x.");
    const bool concernsY = forKeyPath.starts_with("y.");
    const bool logarithmic = (concernsX && isLogarithmic(m_horizontalAxis)) || (concernsY && isLogarithmic(m_verticalAxis));
    if (logarithmic && *proposed <= 0.0)
        value = std::int64_t{1};
    const auto range = !m_extents ? nullptr : concernsX ? m_extents->x() : concernsY ? m_extents->y() : nullptr;
    if (!range)
        return true;
    // Compared with the value as it was proposed; NaN is unordered and stays.
    const std::string_view end = forKeyPath.substr(2);
    if (end == "min" && *proposed >= range->max())
        value = range->min();
    else if (end == "max" && *proposed <= range->min())
        value = range->max();
    return true;
}

std::optional<std::vector<IndexRange>> TOLVGraph::xExtentsConstrainedGraphDataRanges() const
{
    const auto visible = m_extents ? m_extents->x() : nullptr;
    const double min = visible ? visible->min() : 0.0;
    const double max = visible ? visible->max() : 0.0;
    std::vector<IndexRange> ranges;
    for (const auto& series : m_graphDataArray) {
        const auto range = visibleSampleRange(*series, min, max);
        if (!range)
            return std::nullopt;
        ranges.push_back(*range);
    }
    return ranges;
}

std::vector<IndexRange> TOLVGraph::graphDataRangesConstrainedByXExtents() const
{
    auto ranges = xExtentsConstrainedGraphDataRanges();
    if (!ranges)
        stopProgram();
    return *std::move(ranges);
}

TOLVGraph::Series TOLVGraph::graphDataConstrainedByXExtents() const
{
    const std::vector<IndexRange> ranges = graphDataRangesConstrainedByXExtents();
    Series visible;
    for (std::size_t i = 0; i < m_graphDataArray.size() && i < ranges.size(); ++i)
        visible.push_back(m_graphDataArray[i]->graphDataInRange(ranges[i]));
    return visible;
}

} // namespace TOLVGraphing
