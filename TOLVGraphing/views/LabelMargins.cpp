#include "LabelMargins.h"

#include "../graph/TOLVGraph.h"

#include <algorithm>
#include <cmath>

namespace TOLVGraphing {

namespace {

constexpr double kTitleGap = 4.0;
constexpr double kHorizontalLabelGap = 3.0;
constexpr double kVerticalLabelGap = 4.0;
constexpr double kBadgeOverhang = 4.0;
/// What a label on the vertical axis keeps from the data area besides the padding: half a point of alignment less two points.
constexpr double kVerticalLabelInset = 1.5;
constexpr double kSmallestMargin = 2.0;
/// Margins change the ticks and ticks the margins; each round only widens them.
constexpr int kMaximumRounds = 4;

double titleHeight(const TOLVGraph& graph)
{
    return graph.title() ? AttributedString(*graph.title(), graph.titleAttributes()).size().height : 0.0;
}

double tickAscender(const TOLVGraph& graph)
{
    return AttributedString("", graph.tickLabelAttributes()).attributes().fontOrDefault().ascender();
}

/// The labels that the axis will draw, and those of its markers.
TOLVAxis::Labels labelsOfAxis(const TOLVGraph& graph, const TOLVAxis& axis, const Rect& axisRect, std::int64_t axisIndex, TOLVAxis::Labels& badges)
{
    TOLVAxis::Markers markers;
    for (const auto& marker : graph.markers()) {
        if (marker->axisIndex() == axisIndex)
            markers.push_back(marker);
    }
    badges = keptLabels(axis.markerLabelPlacements(markers, axisRect));
    return keptLabels(axis.tickLabelPlacements(axisRect));
}

/// The height of the horizontal axis's labels: the ascender for numbers, the whole line box and more for categories.
double horizontalLabelHeight(const TOLVGraph& graph, const Rect& rect)
{
    double height = tickAscender(graph);
    for (const auto& label : keptLabels(graph.horizontalAxis()->tickLabelPlacements(graph.horizontalAxisRectInRect(rect))))
        height = std::max(height, label->rect().height());
    return height;
}

/// Widens left and right by what sticks out of the data area.
void includeOverhang(const TOLVAxis::Labels& labels, double extra, const Rect& dataRect, EdgeInsets& overhang)
{
    for (const auto& label : labels) {
        overhang.left = std::max(overhang.left, dataRect.x() - (label->rect().x() - extra));
        overhang.right = std::max(overhang.right, label->rect().maxX() + extra - dataRect.maxX());
    }
}

double widest(const TOLVAxis::Labels& labels)
{
    double width = 0.0;
    for (const auto& label : labels)
        width = std::max(width, label->rect().width());
    return width;
}

EdgeInsets neededMargin(TOLVGraph& graph, const Rect& rect)
{
    graph.prepareForDrawingInRect(rect);
    const TOLVAxis& horizontal = *graph.horizontalAxis();
    const TOLVAxis& vertical = *graph.verticalAxis();
    const Rect dataRect = graph.dataRectInRect(rect);
    const double ascender = tickAscender(graph);
    const double labelFontHeight = graph.labelFontHeight();

    EdgeInsets needed(graph.margin());
    needed.top = std::max(ascender * 0.5 + 1.0, graph.title() ? titleHeight(graph) + kTitleGap : 0.0);
    needed.bottom = graph.tickLabelFontHeight() + horizontal.tickLabelPadding();
    // How far the labels reach below their strip.
    const double below = (horizontalLabelHeight(graph, rect) - labelFontHeight) * 0.5 - 0.5;
    needed.bottom += horizontal.label() ? labelFontHeight + below + 1.5 : std::max(0.0, below);

    TOLVAxis::Labels badges;
    const auto verticalLabels = labelsOfAxis(graph, vertical, graph.verticalAxisRectInRect(rect), 1, badges);
    const double width = std::max(widest(verticalLabels), badges.empty() ? 0.0 : widest(badges) + kBadgeOverhang);
    needed.left = width + kVerticalLabelInset + vertical.tickLabelPadding() + (vertical.label() ? labelFontHeight + kTitleGap : kSmallestMargin);

    EdgeInsets overhang{0.0, kSmallestMargin, 0.0, kSmallestMargin};
    const auto horizontalLabels = labelsOfAxis(graph, horizontal, graph.horizontalAxisRectInRect(rect), 0, badges);
    includeOverhang(horizontalLabels, 0.0, dataRect, overhang);
    includeOverhang(badges, kBadgeOverhang, dataRect, overhang);
    needed.left = std::max(needed.left, overhang.left - graph.padding().left);
    needed.right = std::max(kSmallestMargin, overhang.right - graph.padding().right + kSmallestMargin);
    return needed;
}

} // namespace

void fitMarginsToLabels(TOLVGraph& graph, const Rect& rect, MarginFit fit)
{
    if (!graph.horizontalAxis() || !graph.verticalAxis())
        return;
    if (fit == MarginFit::Exact)
        graph.setMargin({0.0, 0.0, 0.0, 0.0});
    graph.prepareForDrawingInRect(rect);
    // The labels of the horizontal axis reach above their strip by this much: keep them clear of the data area.
    const double rise = (graph.labelFontHeight() + horizontalLabelHeight(graph, rect)) * 0.5 + 0.5 - graph.tickLabelFontHeight();
    graph.setHorizontalTickLabelPadding(std::max(0.0, rise + kHorizontalLabelGap));
    graph.setVerticalTickLabelPadding(kVerticalLabelGap);
    for (int round = 0; round < kMaximumRounds; ++round) {
        const EdgeInsets former = graph.margin();
        const EdgeInsets needed = neededMargin(graph, rect);
        graph.setMargin({std::max(former.top, std::ceil(needed.top)), std::max(former.left, std::ceil(needed.left)), std::max(former.bottom, std::ceil(needed.bottom)),
            std::max(former.right, std::ceil(needed.right))});
        if (graph.margin() == former)
            break;
    }
}

} // namespace TOLVGraphing
