// The graph's account of its layout.

#include "../axes/TOLVBarAxis.h"
#include "../axes/TOLVDateAxis.h"
#include "GraphLayout.h"
#include "TOLVGraph.h"

#include <unordered_map>
#include <utility>

namespace TOLVGraphing {

namespace {

std::vector<LabelLayout> labelLayouts(const LabelPlacements& placements)
{
    std::vector<LabelLayout> layouts;
    std::unordered_map<const TOLVLabel*, std::size_t> positions;
    for (const LabelPlacement& placement : placements) {
        positions.emplace(placement.label.get(), layouts.size());
        LabelLayout layout{placement.value, placement.label->label().string(), placement.label->rect(), placement.isMajor, placement.fate, std::nullopt, std::nullopt};
        if (placement.collidesWith)
            layout.collidesWith = positions.at(placement.collidesWith.get());
        layouts.push_back(std::move(layout));
    }
    return layouts;
}

std::vector<LabelLayout> badgeLayouts(const LabelPlacements& placements)
{
    auto layouts = labelLayouts(placements);
    for (std::size_t i = 0; i < layouts.size(); ++i) {
        if (!layouts[i].text.empty())
            layouts[i].badge = TOLVAxis::badgeRectForLabel(*placements[i].label);
    }
    return layouts;
}

std::vector<TickLayout> tickLayouts(const TOLVAxis& axis, const TOLVAxis::Values& values, const Rect& dataRect)
{
    std::vector<TickLayout> layouts;
    for (const double value : values)
        layouts.push_back({value, static_cast<double>(axis.pointForValue(static_cast<float>(value), dataRect))});
    return layouts;
}

AxisLayout axisLayout(const TOLVAxis& axis, const Rect& rect, const TOLVAxis::Markers& markers)
{
    AxisLayout layout;
    layout.kind = axis.archiveClassName();
    if (const auto* dates = dynamic_cast<const TOLVDateAxis*>(&axis))
        layout.origin = dates->origin();
    if (const auto range = axis.extents()) {
        layout.min = range->min();
        layout.max = range->max();
    }
    const Rect dataRect = axis.dataRectInRect(rect);
    layout.rect = rect;
    layout.tickLabelRect = axis.tickLabelRectInRect(rect);
    layout.labelRect = axis.labelRectInRect(rect);
    layout.majorTicks = tickLayouts(axis, axis.majorValues(), dataRect);
    layout.minorTicks = tickLayouts(axis, axis.minorValues(), dataRect);
    layout.drawsMajorLines = axis.drawsMajorLines();
    layout.drawsMinorLines = axis.drawsMinorLines();
    if (const auto* categories = dynamic_cast<const TOLVBarAxis*>(&axis)) {
        for (std::uint64_t i = 0; i < categories->dataPointCount(); ++i)
            layout.slotCenters.push_back(categories->pointForDataAtIndex(i, dataRect));
    }
    layout.labels = labelLayouts(axis.tickLabelPlacements(rect));
    layout.markerLabels = badgeLayouts(axis.markerLabelPlacements(markers, rect));
    if (axis.label())
        layout.title = TextLayout{*axis.label(), axis.titleRectInRect(rect)};
    return layout;
}

} // namespace

GraphLayout TOLVGraph::layoutInRect(const Rect& rect)
{
    prepareForDrawingInRect(rect);
    GraphLayout layout;
    layout.rect = rect;
    layout.dataRect = dataRectInRect(rect);
    layout.titleBand = titleBandInRect(rect);
    layout.margin = m_margin;
    layout.padding = m_padding;
    if (m_title) {
        const AttributedString title(*m_title, m_titleAttributes);
        layout.title = TextLayout{*m_title, {titlePointInRect(rect), title.size()}};
    }
    if (m_horizontalAxis && m_verticalAxis) {
        layout.horizontalAxis = axisLayout(*m_horizontalAxis, horizontalAxisRectInRect(rect), markersWithAxisIndex(kHorizontalAxisIndex));
        layout.verticalAxis = axisLayout(*m_verticalAxis, verticalAxisRectInRect(rect), markersWithAxisIndex(kVerticalAxisIndex));
    }
    if (const auto* callouts = dynamic_cast<const TOLVGraphCalloutLayout*>(m_drawingStrategy.get()))
        layout.callouts = callouts->calloutPlacements(*this, rect);
    return layout;
}

std::string_view nameOfFate(LabelFate fate)
{
    switch (fate) {
    case LabelFate::Kept: return "kept";
    case LabelFate::Collides: return "collides";
    case LabelFate::Outside: return "outside";
    case LabelFate::NotFinite: return "not finite";
    }
    return "";
}

std::string_view nameOfFate(CalloutFate fate)
{
    switch (fate) {
    case CalloutFate::Kept: return "kept";
    case CalloutFate::CollidesWithCallout: return "collides";
    case CalloutFate::CollidesWithDot: return "covers a dot";
    case CalloutFate::NotFinite: return "not finite";
    }
    return "";
}

} // namespace TOLVGraphing
