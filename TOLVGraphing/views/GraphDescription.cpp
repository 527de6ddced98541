#include "GraphDescription.h"

#include "../axes/TOLVBarAxis.h"
#include "../axes/TOLVDateAxis.h"
#include "../axes/TOLVLineAxis.h"
#include "../axes/TOLVLogarithmicAxis.h"
#include "../graph/TOLVGraph.h"
#include "AxisText.h"

#include <cmath>

namespace TOLVGraphing {

namespace {

constexpr std::size_t kMostNames = 10;

std::string scaleText(const TOLVAxis& axis)
{
    if (dynamic_cast<const TOLVLogarithmicAxis*>(&axis))
        return ", logarithmic,";
    if (dynamic_cast<const TOLVDateAxis*>(&axis))
        return ", dates,";
    const bool hasCategories = dynamic_cast<const TOLVBarAxis*>(&axis) || dynamic_cast<const TOLVLineAxis*>(&axis);
    return hasCategories ? ", categories," : "";
}

/// A range between two numbers: that of a graph without data is none.
bool isKnown(const TOLVAxisExtents& range)
{
    return std::isfinite(range.min()) && std::isfinite(range.max()) && range.min() < range.max();
}

std::string axisText(const TOLVAxis* axis, const std::shared_ptr<TOLVAxisExtents>& range, const char* name)
{
    if (!axis)
        return "";
    const std::string title = axis->label().value_or("");
    std::string scale = scaleText(*axis);
    if (range && isKnown(*range))
        scale += " from " + textOfValue(*axis, range->min()) + " to " + textOfValue(*axis, range->max());
    else if (!scale.empty())
        scale.pop_back();
    return (title.empty() ? name : title) + scale + ". ";
}

std::string seriesText(const TOLVGraph::Series& series)
{
    std::string text = series.empty() ? "No series" : std::to_string(series.size()) + " series";
    std::size_t named = 0;
    for (const auto& one : series) {
        if (one->name().value_or("").empty() || named == kMostNames)
            continue;
        text += (named++ ? ", " : ": ") + *one->name();
    }
    return text + ".";
}

} // namespace

std::string graphName(const TOLVGraph& graph)
{
    const std::string title = graph.title().value_or("");
    return title.empty() ? "Graph" : title;
}

std::string graphDescription(const TOLVGraph& graph)
{
    const auto& extents = graph.extents();
    std::string text = axisText(graph.horizontalAxis().get(), extents ? extents->x() : nullptr, "x");
    text += axisText(graph.verticalAxis().get(), extents ? extents->y() : nullptr, "y");
    text += seriesText(graph.graphData());
    if (const std::size_t count = graph.countOfMarkers())
        text += " " + std::to_string(count) + (count == 1 ? " marker." : " markers.");
    return text;
}

} // namespace TOLVGraphing
