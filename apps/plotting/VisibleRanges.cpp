#include "VisibleRanges.h"

#include "OptionValues.h"
#include "PositiveSamples.h"

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVMath/TOLVRealVector.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>

namespace TOLVGraphing::app {

namespace {

/// The part of the y range that is left free on either side.
constexpr double kFreePart = 0.05;
/// Room for a callout above the highest point, as a part of the picture's height in points.
constexpr double kCalloutRoom = 26.0;
/// The free space behind the last sample of a curve, in points of the picture's width: it ends clear of the frame.
constexpr double kSpaceBehindCurve = 4.0;
/// The free space on either side of marks that stand on their samples, likewise: a cross reaches 4 points to the side.
constexpr double kSpaceAroundMarks = 6.0;
/// The widest step between abscissae may differ from the mean by this part before samples count as unevenly spaced.
constexpr double kEvenSpacingTolerance = 0.1;

bool drawsCurves(const Options& options)
{
    return options.drawing == DrawingKind::Curve || options.drawing == DrawingKind::PlainCurve;
}

bool standsOnBottom(const Options& options)
{
    return options.drawing == DrawingKind::Bar || options.drawing == DrawingKind::Impulse;
}

double endOfRange(const std::string& option, const std::string& text, const Scale& scale, std::optional<double> dateOrigin)
{
    const double end = parseNumberOrDate(option, text, dateOrigin);
    if (scale.isLogarithmic() && !(static_cast<float>(end) > 0.0F))
        throw UsageError(option, text, "a number greater than 0, as the axis is logarithmic");
    return end;
}

Range chosenRange(const std::string& option, const std::optional<RangeText>& text, Range fitting, const Scale& scale, std::optional<double> dateOrigin)
{
    Range range = fitting;
    if (text && !text->from.empty())
        range.from = endOfRange(option, text->from, scale, dateOrigin);
    if (text && !text->to.empty())
        range.to = endOfRange(option, text->to, scale, dateOrigin);
    if (!(static_cast<float>(range.from) < static_cast<float>(range.to)))
        throw UsageError(option, text ? text->from + ":" + text->to : "", "an end greater than the start");
    return range;
}

Range requirePositive(const std::string& axisOption, const std::optional<Range>& range)
{
    if (!range)
        throw UsageError(axisOption, "log", "data with a number greater than 0");
    return *range;
}

Range dataRangeOfX(const TOLVGraph& graph, const Scale& scale)
{
    if (scale.isLogarithmic())
        return requirePositive("--x-axis", positiveXRange(graph));
    return {static_cast<double>(graph.minXValue()), static_cast<double>(graph.maxXValue())};
}

Range dataRangeOfY(const TOLVGraph& graph, const Options& options)
{
    if (options.yAxis == AxisKind::Logarithmic)
        return requirePositive("--y-axis", positiveYRange(graph, options.xAxis == AxisKind::Logarithmic));
    return {static_cast<double>(graph.minYValue()), static_cast<double>(graph.maxYValue())};
}

bool haveEqualLengths(const TOLVGraph& graph)
{
    const auto series = graph.graphData();
    return std::all_of(series.begin(), series.end(), [&](const auto& one) { return one->X()->length() == series.front()->X()->length(); });
}

bool isEvenlySpaced(const TOLVGraphData& series, const Scale& scale, double step)
{
    const float* x = series.X()->components();
    for (std::size_t i = 1; i < series.X()->length(); ++i) {
        const double distance = scale.position(static_cast<double>(x[i])) - scale.position(static_cast<double>(x[i - 1]));
        if (!(std::abs(distance - step) <= kEvenSpacingTolerance * step))
            return false;
    }
    return true;
}

/// Dots stand in the middle of cells of equal width: with half a step on either side the axis tells where they are.
Range cellsAround(const TOLVGraph& graph, const Scale& scale, Range data, std::vector<std::string>& notes)
{
    const auto first = graph.graphData().front();
    const std::size_t count = first->X()->length();
    if (count < 2)
        return data;
    const double step = scale.length(data) / static_cast<double>(count - 1);
    if (!haveEqualLengths(graph) || !isEvenlySpaced(*first, scale, step))
        notes.emplace_back("--draw dotted spreads the samples evenly, but their x values are not evenly spaced: the x axis does not tell where they are");
    return {scale.moved(data.from, -step * 0.5), scale.moved(data.to, step * 0.5)};
}

Range fittingX(const TOLVGraph& graph, const Options& options, std::vector<std::string>& notes)
{
    const Scale scale(options.xAxis);
    const Range data = dataRangeOfX(graph, scale);
    // From the first category to the last one: the axis keeps room around them itself.
    if (options.hasCategories())
        return scale.widenedIfEmpty(data);
    if (options.drawing == DrawingKind::Dotted)
        return scale.widenedIfEmpty(cellsAround(graph, scale, data, notes));
    const Range shown = scale.widenedIfEmpty(data);
    if (drawsCurves(options))
        return scale.extended(shown, 0.0, kSpaceBehindCurve / options.size.width);
    const double room = kSpaceAroundMarks / options.size.width;
    return scale.extended(shown, room, room);
}

bool hasCallouts(const Options& options)
{
    return options.drawing == DrawingKind::Line || (options.drawing == DrawingKind::Curve && !options.markers.empty());
}

/// What stands on the bottom of the data area shows its proportions where that is zero.
Range rangeFromZero(Range data)
{
    return {0.0, data.to > 0.0 ? data.to : 1.0};
}

Range fittingY(const TOLVGraph& graph, const Options& options)
{
    const Scale scale(options.yAxis);
    const Range data = dataRangeOfY(graph, options);
    const double above = hasCallouts(options) ? std::max(kFreePart, kCalloutRoom / options.size.height) : kFreePart;
    if (standsOnBottom(options) && !scale.isLogarithmic() && data.from >= 0.0)
        return scale.extended(rangeFromZero(data), 0.0, above);
    return scale.extended(scale.widenedIfEmpty(data), kFreePart, above);
}

/// The axis shows nothing, or all, where a series has no category in the range.
bool hasCategoriesOfEverySeries(const TOLVGraph& graph, Range range)
{
    const auto isVisible = [&](float x) { return static_cast<double>(x) >= range.from && static_cast<double>(x) <= range.to; };
    const auto series = graph.graphData();
    return std::all_of(series.begin(), series.end(), [&](const auto& one) {
        const float* x = one->X()->components();
        return std::any_of(x, x + one->X()->length(), isVisible);
    });
}

} // namespace

Range visibleXRange(const TOLVGraph& graph, const Options& options, std::optional<double> dateOrigin, std::vector<std::string>& notes)
{
    const Range range = chosenRange("--x-range", options.xRange, fittingX(graph, options, notes), Scale(options.xAxis), dateOrigin);
    if (options.hasCategories() && options.xRange && !hasCategoriesOfEverySeries(graph, range))
        throw UsageError("--x-range", options.xRange->from + ":" + options.xRange->to, "a range with categories of every series");
    return range;
}

Range visibleYRange(const TOLVGraph& graph, const Options& options)
{
    return chosenRange("--y-range", options.yRange, fittingY(graph, options), Scale(options.yAxis), std::nullopt);
}

bool canShowRange(const TOLVGraph& graph, Range range, AxisKind kind)
{
    const auto from = static_cast<float>(range.from);
    const auto to = static_cast<float>(range.to);
    if (!std::isfinite(from) || !std::isfinite(to) || !(from < to) || (kind == AxisKind::Logarithmic && !(from > 0.0F)))
        return false;
    return !isCategorical(kind) || hasCategoriesOfEverySeries(graph, range);
}

} // namespace TOLVGraphing::app
