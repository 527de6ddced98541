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

std::vector<GraphCallout> calloutsForMarker(const TOLVMarker& marker, const TOLVGraph& graph, const Rect& inRect)
{
    std::vector<GraphCallout> callouts;
    if (!graph.verticalAxis())
        return callouts;
    const auto markerValue = static_cast<float>(marker.value());
    const auto markerX = static_cast<double>(graph.XForValue(markerValue, inRect));
    for (const auto& series : graph.graphData()) {
        const auto x = std::dynamic_pointer_cast<const TOLVRealVector>(series->X());
        const auto y = std::dynamic_pointer_cast<const TOLVRealVector>(series->Y());
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
            callouts.emplace_back(std::move(label), series->lineStyle(), markerX);
    }
    return callouts;
}

std::vector<GraphCallout> calloutsWithoutOverlap(std::vector<GraphCallout> callouts)
{
    std::vector<GraphCallout> kept;
    for (GraphCallout& callout : callouts) {
        if (!callout.intersectsCalloutInArray(kept))
            kept.push_back(std::move(callout));
    }
    return kept;
}

} // namespace TOLVGraphing
