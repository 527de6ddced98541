#include "CategoryRanges.h"

#include "../data/VisibleSamples.h"
#include "../graph/TOLVGraph.h"
#include "NearestIndex.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace TOLVGraphing {

namespace {

/// The samples as a vector that never changes: the vector itself, or a copy of other samples.
std::shared_ptr<const TOLVRealVector> realVectorOf(const std::shared_ptr<const TOLVAxisData>& samples)
{
    if (auto vector = std::dynamic_pointer_cast<const TOLVRealVector>(samples))
        return vector;
    if (!samples || samples->length() == 0)
        return TOLVRealVector::vector();
    const float* c = samples->components();
    return TOLVRealVector::vectorWithComponents(std::vector<float>(c, c + samples->length()));
}

bool neverChanges(const std::shared_ptr<const TOLVAxisData>& samples)
{
    return !samples || std::dynamic_pointer_cast<const TOLVRealVector>(samples);
}

/// NaN is the same end as NaN.
bool isSameEnd(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

} // namespace

void CategoryRanges::clear()
{
    *this = CategoryRanges();
}

bool CategoryRanges::areOf(const TOLVGraph::Series& series, double min, double max) const
{
    const bool isSameRange = isSameEnd(m_min, min) && isSameEnd(m_max, max);
    return isSameRange && std::equal(series.begin(), series.end(), m_abscissae.begin(), m_abscissae.end(), [](const auto& one, const auto& x) { return one->X() == x; });
}

void CategoryRanges::update(const TOLVGraph& graph, double min, double max)
{
    const TOLVGraph::Series allSeries = graph.graphData();
    if (m_isCurrent && areOf(allSeries, min, max))
        return;
    m_abscissae.clear();
    for (const auto& series : allSeries)
        m_abscissae.push_back(series->X());
    m_isCurrent = std::all_of(m_abscissae.begin(), m_abscissae.end(), neverChanges);
    m_min = min;
    m_max = max;
    find(allSeries, min, max);
}

void CategoryRanges::find(const TOLVGraph::Series& allSeries, double min, double max)
{
    m_ranges.emplace();
    m_representative = m_abscissae.empty() ? kNotFoundIndex : 0;
    m_representativeX = nullptr;
    for (const auto& series : allSeries) {
        const auto range = visibleSampleRange(*series, min, max);
        if (!range) {
            m_ranges.reset();
            return;
        }
        m_ranges->push_back(*range);
    }
    if (m_ranges->empty())
        return;
    // The first of several longest ones.
    const auto longest = std::max_element(m_ranges->begin(), m_ranges->end(), [](const IndexRange& a, const IndexRange& b) { return a.length < b.length; });
    m_representative = longest - m_ranges->begin();
    m_representativeX = realVectorOf(m_abscissae[static_cast<std::size_t>(m_representative)])->realVectorInRange(longest->location, longest->length);
    const float* x = m_representativeX->components();
    const std::size_t count = m_representativeX->length();
    // An order holds between numbers only; infinities would make differences that are none.
    m_isAscending = std::all_of(x, x + count, [](float value) { return std::isfinite(value); }) && std::is_sorted(x, x + count);
}

IndexRange CategoryRanges::representativeRange() const
{
    if (!m_ranges || m_ranges->empty())
        return {static_cast<std::uint64_t>(kNotFoundIndex), 0};
    return (*m_ranges)[static_cast<std::size_t>(m_representative)];
}

std::optional<std::size_t> CategoryRanges::indexNearestTo(float value) const
{
    const std::size_t count = m_representativeX ? m_representativeX->length() : 0;
    if (count == 0)
        return std::nullopt;
    const float* x = m_representativeX->components();
    const auto distance = [&](std::size_t i) { return std::abs(x[i] - value); };
    if (m_isAscending && std::isfinite(value))
        return nearestIndexOfOrdered(
            count, [&](std::size_t i) { return x[i] >= value; }, distance);
    return nearestIndex(count, distance);
}

} // namespace TOLVGraphing
