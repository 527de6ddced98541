#include "TickFormats.h"

#include "Categories.h"
#include "Scale.h"

#include <TOLVGraphing/axes/AdaptiveNumberFormatter.h>
#include <TOLVGraphing/axes/DateTickFormatter.h>
#include <TOLVGraphing/axes/SINumberFormatter.h>
#include <TOLVGraphing/axes/ScientificNumberFormatter.h>
#include <TOLVGraphing/axes/TOLVDateAxis.h>
#include <TOLVGraphing/axes/TOLVLinearAxis.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/text/DayDateFormatter.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <vector>

namespace TOLVGraphing::app {

namespace {

bool isAxisOfDates(const TOLVAxis* axis)
{
    return dynamic_cast<const TOLVDateAxis*>(axis) != nullptr;
}

std::shared_ptr<const NumberFormatter> formatterForAxis(NumberStyle style, const std::shared_ptr<const TOLVAxis>& axis, double dateOrigin = 0.0)
{
    switch (style) {
    case NumberStyle::Decimal: break;
    case NumberStyle::Adaptive: return std::make_shared<AdaptiveNumberFormatter>(axis);
    case NumberStyle::SI: return std::make_shared<SINumberFormatter>(axis);
    case NumberStyle::Scientific: return std::make_shared<ScientificNumberFormatter>(axis);
    case NumberStyle::Date:
        if (isAxisOfDates(axis.get()))
            return std::make_shared<DateTickFormatter>(axis);
        return std::make_shared<DayDateFormatter>(dateOrigin);
    }
    return std::make_shared<NumberFormatter>();
}

/// Major values stand on powers of ten only; where few of them are in range, minor values are labelled as well.
bool areMajorValuesFew(const TOLVAxisExtents& range, const Scale& scale)
{
    constexpr double kFewDecades = 4.0;
    constexpr double kFewMajorSteps = 4.0;
    const double length = scale.length({range.min(), range.max()});
    return scale.isLogarithmic() ? length < kFewDecades : length < kFewMajorSteps * std::pow(10.0, std::floor(std::log10(length)));
}

/// The labels that are drawn, in ascending order, are equally far apart.
bool areEvenlySpaced(std::vector<double> values)
{
    constexpr double kTolerance = 0.01;
    std::sort(values.begin(), values.end());
    for (std::size_t i = 2; i < values.size(); ++i) {
        const double first = values[1] - values[0];
        if (std::abs(values[i] - values[i - 1] - first) > kTolerance * first)
            return false;
    }
    return true;
}

void dropUnevenMinorLabels(TOLVAxis& axis, const Rect& axisRect)
{
    constexpr std::size_t kEnoughMajorLabels = 3;
    std::vector<double> values;
    std::size_t majorLabels = 0;
    for (const LabelPlacement& placement : axis.tickLabelPlacements(axisRect)) {
        if (placement.fate != LabelFate::Kept)
            continue;
        values.push_back(placement.value);
        majorLabels += placement.isMajor ? 1 : 0;
    }
    if (majorLabels >= kEnoughMajorLabels && !areEvenlySpaced(values))
        axis.setDrawsMinorLabels(false);
}

} // namespace

void dropUnevenMinorLabels(TOLVGraph& graph, const Rect& inRect)
{
    if (dynamic_cast<TOLVLinearAxis*>(graph.horizontalAxis().get()))
        dropUnevenMinorLabels(*graph.horizontalAxis(), graph.horizontalAxisRectInRect(inRect));
    if (dynamic_cast<TOLVLinearAxis*>(graph.verticalAxis().get()))
        dropUnevenMinorLabels(*graph.verticalAxis(), graph.verticalAxisRectInRect(inRect));
}

void chooseMinorLabels(TOLVGraph& graph, const Options& options)
{
    // The steps of dates leave no need for more.
    graph.horizontalAxis()->setDrawsMinorLabels(!isAxisOfDates(graph.horizontalAxis().get()) && areMajorValuesFew(*graph.horizontalAxis()->extents(), Scale(options.xAxis)));
    graph.verticalAxis()->setDrawsMinorLabels(areMajorValuesFew(*graph.verticalAxis()->extents(), Scale(options.yAxis)));
}

void setTickFormats(TOLVGraph& graph, const Options& options, std::optional<double> dateOrigin, const Categories* categories)
{
    const auto& horizontal = graph.horizontalAxis();
    const auto& vertical = graph.verticalAxis();
    if (categories)
        horizontal->setTickLabelFormatter(std::make_shared<CategoryFormatter>(*categories));
    else
        horizontal->setTickLabelFormatter(formatterForAxis(options.xFormat.value_or(dateOrigin ? NumberStyle::Date : NumberStyle::Adaptive), horizontal, dateOrigin.value_or(0.0)));
    vertical->setTickLabelFormatter(formatterForAxis(options.yFormat.value_or(NumberStyle::Adaptive), vertical));
    chooseMinorLabels(graph, options);
}

} // namespace TOLVGraphing::app
