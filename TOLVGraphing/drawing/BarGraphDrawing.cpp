#include "BarGraphDrawing.h"

#include "../graph/TOLVGraph.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/DrawingContext.h"
#include "VisibleSeries.h"

#include <algorithm>

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

/// The bars of the series that have a sample at this position.
BarGroup groupAt(std::size_t position, const std::vector<VisibleSeries>& visible, const std::shared_ptr<TOLVGraph>& graph, const Rect& rect)
{
    BarGroup group{{}, graph, rect};
    for (const auto& [index, series] : visible) {
        if (position >= sampleCount(*series))
            continue;
        // The last series that has a sample here decides.
        group.x = series->X()->components()[position];
        group.bars.push_back({series->Y()->components()[position], static_cast<std::int64_t>(index), series->lineStyle()});
    }
    return group;
}

} // namespace

void BarGroup::drawInRect(const Rect& slot, double withBarWidth, DrawingContext& inContext) const
{
    if (!graph)
        return;
    const double gap = kGapPart * withBarWidth;
    const double fullWidth = withBarWidth - 2.0 * gap;
    const double width = fullWidth >= kThinnestBar ? fullWidth : kThinnestBar;
    for (std::size_t j = 0; j < bars.size(); ++j) {
        const auto& style = bars[j].lineStyle;
        if (!style || !style->color())
            continue;
        const auto top = static_cast<double>(graph->YForValue(bars[j].y, graphRect));
        const double left = slot.x() + static_cast<double>(j) * withBarWidth + gap;
        const Rect bar(left, slot.y(), width, top - slot.y());
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
        const std::size_t groupCount = longestOf(*ranges);
        // Every series with samples has a bar in the first group, so that no other has more.
        std::size_t mostBars = 0;
        for (const auto& [index, series] : visible)
            mostBars += sampleCount(*series) > 0 ? 1 : 0;
        const double slotWidth = area.width() / static_cast<double>(groupCount);
        const double barWidth = (slotWidth - 2.0 * pad) / static_cast<double>(mostBars);
        for (std::size_t k = 0; k < groupCount; ++k) {
            const Rect slot(area.x() + static_cast<double>(k) * slotWidth, area.y(), slotWidth, area.height());
            groupAt(k, visible, graph, inRect).drawInRect(insetRect(slot, pad, 0.0), barWidth, isolated);
        }
    });
}

} // namespace TOLVGraphing
