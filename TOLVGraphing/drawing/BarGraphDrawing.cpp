#include "BarGraphDrawing.h"

#include "../graph/TOLVGraph.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/DrawingContext.h"
#include "AxisPositions.h"
#include "PixelFills.h"
#include "VisibleSeries.h"

#include <algorithm>
#include <optional>
#include <span>

namespace TOLVGraphing {

namespace {

/// The space beside the groups, as a part of the graph rectangle's width.
constexpr double kPadPart = 0.01;
/// What stays empty on each side of a bar, as a part of its place.
constexpr double kGapPart = 0.08;
constexpr double kThinnestBar = 1.0;

/// The number of groups: a series has a place in each group that it has an abscissa for, also when it has no bar there.
std::size_t longestOf(const std::vector<IndexRange>& ranges)
{
    std::uint64_t longest = 0;
    for (const IndexRange& range : ranges)
        longest = std::max(longest, range.length);
    return longest;
}

std::size_t sampleCount(const TOLVGraphData& series)
{
    return std::min(series.X()->length(), series.Y()->length());
}

/// The places of bars in a slot, all in points.
class BarPlaces {
public:
    explicit BarPlaces(double barWidth) : m_barWidth(barWidth), m_gap(kGapPart * barWidth)
    {
        const double fullWidth = barWidth - 2.0 * m_gap;
        m_width = fullWidth >= kThinnestBar ? fullWidth : kThinnestBar;
    }

    [[nodiscard]] Rect barInSlot(const Rect& slot, std::size_t place, double top) const
    {
        return {slot.x() + static_cast<double>(place) * m_barWidth + m_gap, slot.y(), m_width, top - slot.y()};
    }

private:
    double m_barWidth;
    double m_gap;
    double m_width = 0.0;
};

/// A visible series as its bars need it.
struct BarSeries {
    std::span<const float> values;
    /// Nothing for bars that keep their places and are not drawn.
    std::optional<Color> color;
};

std::vector<BarSeries> barSeriesOf(const std::vector<VisibleSeries>& visible)
{
    std::vector<BarSeries> result;
    for (const auto& [index, series] : visible) {
        if (const std::size_t count = sampleCount(*series))
            result.push_back({{series->Y()->components(), count}, series->color()});
    }
    return result;
}

/// The number of bars that may wait for one another: none where a translucent colour takes turns with others.
std::size_t waitingBarCount(const std::vector<BarSeries>& series)
{
    std::size_t count = 0;
    bool isAnyTranslucent = false;
    for (const BarSeries& each : series) {
        count += each.values.size();
        isAnyTranslucent = isAnyTranslucent || (each.color && each.color->alphaComponent() < 1.0);
    }
    return isAnyTranslucent && series.size() > 1 ? 0 : count;
}

/// The bars of the series that have a sample at this position, side by side.
void fillGroup(std::size_t position, const std::vector<BarSeries>& series, const Rect& slot, const BarPlaces& places, const AxisPositions& vertical, DrawingContext& context,
    PixelFills& fills)
{
    std::size_t place = 0;
    for (const BarSeries& each : series) {
        if (position >= each.values.size())
            continue;
        const std::size_t ownPlace = place++;
        if (!each.color)
            continue;
        const Rect bar = places.barInSlot(slot, ownPlace, static_cast<double>(vertical.pointForValue(each.values[position])));
        if (!bar.valid())
            continue;
        context.setFillColor(each.color);
        fills.fill(bar, *each.color);
    }
}

} // namespace

void BarGroup::drawInRect(const Rect& slot, double withBarWidth, DrawingContext& inContext) const
{
    if (!graph)
        return;
    const BarPlaces places(withBarWidth);
    for (std::size_t j = 0; j < bars.size(); ++j) {
        const auto& style = bars[j].lineStyle;
        if (!style || !style->color())
            continue;
        const Rect bar = places.barInSlot(slot, j, static_cast<double>(graph->YForValue(bars[j].y, graphRect)));
        if (!bar.valid())
            continue;
        inContext.setFillColor(style->color());
        inContext.fillRect(bar);
    }
}

void BarGraphDrawing::drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect)
{
    DrawingContext* context = currentContext();
    if (!graph || !context)
        return;
    const Rect dataRect = graph->dataRectInRect(inRect);
    const double pad = kPadPart * inRect.width();
    const Rect area = insetRect(dataRect, pad, 0.0);
    context->inIsolatedContext([&](DrawingContext& isolated) {
        isolated.addRect(dataRect);
        isolated.clip();
        const auto ranges = graph->xExtentsConstrainedGraphDataRanges();
        if (!ranges)
            return;
        const auto visible = visibleSeriesOfGraph(*graph, *ranges);
        const auto series = barSeriesOf(visible);
        const std::size_t groupCount = longestOf(*ranges);
        const double slotWidth = area.width() / static_cast<double>(groupCount);
        // Every series with samples has a bar in the first group, so that no other has more.
        const BarPlaces places((slotWidth - 2.0 * pad) / static_cast<double>(series.size()));
        const AxisPositions vertical(graph->verticalAxis().get(), dataRect);
        PixelFills fills(isolated, dataRect, waitingBarCount(series));
        for (std::size_t k = 0; k < groupCount; ++k) {
            const Rect slot(area.x() + static_cast<double>(k) * slotWidth, area.y(), slotWidth, area.height());
            fillGroup(k, series, insetRect(slot, pad, 0.0), places, vertical, isolated, fills);
        }
        fills.flush();
    });
}

} // namespace TOLVGraphing
