#include "MarkerCallouts.h"

#include "../data/TOLVRealVector+Interpolation.h"
#include "../graph/TOLVGraph.h"

#include <TOLVMath/TOLVRealVector.h>

#include <cmath>
#include <optional>
#include <utility>

namespace TOLVGraphing {

namespace {

/// The space between a data point and the text above it.
constexpr double kTextRise = 3.0;

/// True when the value lies before the first or behind the last sample, or there is no sample.
bool liesOutside(float value, const TOLVRealVector& x)
{
    return x.length() == 0 || value < x.components()[0] || value > x.components()[x.length() - 1];
}

std::shared_ptr<TOLVLabel> labelForValue(float value, Point dataPoint, const TOLVAxis& axis)
{
    std::optional<std::string> text;
    if (axis.tickLabelFormatter())
        text = labelTextFromNumber(*axis.tickLabelFormatter(), static_cast<double>(value));
    if (!text || text->empty())
        return nullptr;
    AttributedString string(*std::move(text), axis.tickLabelAttributes());
    const Size size = string.size();
    const Rect rect = offsetRect({dataPoint.x - std::floor(size.width * 0.5), dataPoint.y, size.width, size.height}, 0.0, kTextRise);
    return TOLVLabel::labelWithAttributedString(std::move(string), rect);
}

} // namespace

std::vector<MarkerCallout> calloutsForMarker(const TOLVMarker& marker, const TOLVGraph& graph, const Rect& inRect)
{
    std::vector<MarkerCallout> callouts;
    if (!graph.verticalAxis())
        return callouts;
    const auto markerValue = static_cast<float>(marker.value());
    const auto markerX = static_cast<double>(graph.XForValue(markerValue, inRect));
    const auto allSeries = graph.graphData();
    for (std::size_t i = 0; i < allSeries.size(); ++i) {
        const auto x = std::dynamic_pointer_cast<const TOLVRealVector>(allSeries[i]->X());
        const auto y = std::dynamic_pointer_cast<const TOLVRealVector>(allSeries[i]->Y());
        if (!x || !y)
            continue;
        const float index = fractionalIndexOfValue(*x, markerValue);
        if (index < 0.0F || liesOutside(markerValue, *x))
            break;
        // A shorter Y, or an interpolation between equal abscissae, leaves no value to show.
        if (!(index < static_cast<float>(y->length())))
            continue;
        const float value = valueAtFractionalIndex(*y, index);
        const Point dataPoint{markerX, static_cast<double>(graph.YForValue(value, inRect))};
        if (auto label = labelForValue(value, dataPoint, *graph.verticalAxis()))
            callouts.push_back({GraphCallout(std::move(label), allSeries[i]->lineStyle(), markerX), i});
    }
    return callouts;
}

std::vector<std::optional<std::size_t>> overlappedCallouts(std::span<const MarkerCallout> callouts)
{
    std::vector<GraphCallout> kept;
    std::vector<std::size_t> keptPositions;
    std::vector<std::optional<std::size_t>> overlapped;
    for (const auto& [callout, series] : callouts) {
        std::size_t first = 0;
        while (first < kept.size() && !callout.intersectsCalloutInArray({&kept[first], 1}))
            ++first;
        if (first < kept.size()) {
            overlapped.emplace_back(keptPositions[first]);
            continue;
        }
        keptPositions.push_back(overlapped.size());
        overlapped.emplace_back();
        kept.push_back(callout);
    }
    return overlapped;
}

} // namespace TOLVGraphing
