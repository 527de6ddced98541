#include "../support/FuzzTarget.h"
#include "../support/InputReader.h"

#include <TOLVGraphing/axes/AdaptiveNumberFormatter.h>
#include <TOLVGraphing/axes/TOLVLinearAxis.h>
#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>
#include <TOLVGraphing/graph/TOLVGraph.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

namespace TOLVGraphing::fuzzing {
namespace {

constexpr std::uint32_t kDeepestDepth = 4;

bool ascends(const std::vector<double>& values)
{
    return std::ranges::adjacent_find(values, [](double a, double b) { return !(a < b); }) == values.end();
}

bool areFinite(const std::vector<double>& values)
{
    return std::ranges::all_of(values, [](double value) { return std::isfinite(value); });
}

/// All j * 10^k in the range that depth 1 stands for, without regard to what is listed twice.
bool isDecimalMultiple(double value)
{
    const double exponent = std::floor(std::log10(value) + 1e-9);
    const double multiple = value / std::pow(10.0, exponent);
    return std::abs(multiple - std::round(multiple)) < 1e-9 * multiple;
}

Verdict tryLogRange(InputReader& input)
{
    const auto depth = static_cast<std::uint32_t>(input.below(8) == 7 ? input.number<std::uint32_t>() : input.below(5));
    const double min = input.interestingDouble();
    const double max = input.yes() ? input.interestingDouble() : min * static_cast<double>(1 + input.below(5000));
    const std::vector<double> values = logRange(depth, min, max);
    if (!(min > 0.0 && min <= max && std::isfinite(max))) {
        require(values.empty(), "a range that is not positive and finite has no values");
        return Verdict::refused;
    }
    const double decades = std::log10(max) - std::log10(min) + 2.0;
    require(
        static_cast<double>(values.size()) <= decades * 9.0 * std::pow(10.0, std::max(0, static_cast<int>(std::min(depth, kDeepestDepth)) - 1)), "so many values for each decade");
    require(ascends(values), "the values ascend");
    require(std::ranges::all_of(values, [&](double value) { return value >= min && value <= max; }), "the values lie in the range");
    constexpr double kFullPrecision = 1e-300;
    if (depth == 1 && min > kFullPrecision)
        require(std::ranges::all_of(values, isDecimalMultiple), "the values of depth 1 are whole multiples of powers of ten");
    return Verdict::accepted;
}

Rect rectOf(InputReader& input, bool isVertical)
{
    const double length = input.yes() ? static_cast<double>(input.below(5000)) : input.interestingDouble();
    return isVertical ? Rect(0.0, 0.0, 300.0, length) : Rect(0.0, 0.0, length, 300.0);
}

/// No more lines than the length has room for, and some more where floats are as coarse as the steps.
double mostLines(double length, bool isLogarithmic, double min, double max)
{
    const double byLength = length > 0.0 ? 1.5 * length / 4.0 + 13.0 : 13.0;
    // Whatever the length, a logarithmic axis lists nine values for each decade; where none has a position, ninety.
    // What scales positions overflows before they do.
    constexpr double kLargest = 1e30;
    const bool havePositions
        = std::abs(length) <= kLargest && max <= static_cast<double>(std::numeric_limits<float>::max()) && min >= static_cast<double>(std::numeric_limits<float>::denorm_min());
    return isLogarithmic ? std::max(byLength, (havePositions ? 9.0 : 90.0) * (std::log10(max) - std::log10(min) + 2.0)) : byLength;
}

Verdict tryAxis(InputReader& input)
{
    const bool isVertical = input.yes();
    const bool isLogarithmic = input.yes();
    const auto graph = TOLVGraph::graph();
    const double min = input.interestingDouble();
    const double max
        = input.yes() ? input.interestingDouble() : min + static_cast<double>(input.below(100000)) * std::pow(10.0, static_cast<double>(input.number<std::int8_t>() / 4));
    const auto extents = TOLVAxisExtents::extentsWithMin(min, max);
    isVertical ? graph->extents()->setY(extents) : graph->extents()->setX(extents);
    std::shared_ptr<const TOLVAxis> wanted;
    if (isLogarithmic)
        wanted = std::make_shared<TOLVLogarithmicAxis>();
    else
        wanted = std::make_shared<TOLVLinearAxis>();
    isVertical ? graph->setVerticalAxis(wanted) : graph->setHorizontalAxis(wanted);
    const auto axis = isVertical ? graph->verticalAxis() : graph->horizontalAxis();
    const Rect rect = rectOf(input, isVertical);
    axis->updateStepsInRect(rect);
    std::vector<double> major;
    std::vector<double> minor;
    axis->getMajorValues(&major, &minor);
    require(areFinite(major) && areFinite(minor), "ticks are finite");
    if (major.empty() && minor.empty())
        return Verdict::refused;
    const double length = isVertical ? rect.height() : rect.width();
    constexpr double kLongestAxis = 1e5;
    if (!(length > kLongestAxis) && (!isLogarithmic || min > 0.0))
        require(static_cast<double>(major.size() + minor.size()) <= mostLines(length, isLogarithmic, min, max), "no more ticks than the axis has room for");
    const AdaptiveNumberFormatter formatter(axis);
    for (std::size_t i = 0; i < std::min<std::size_t>(major.size(), 12); ++i) {
        const auto text = formatter.stringFromNumber(static_cast<double>(static_cast<float>(major[i])));
        require(text && !text->empty() && text->size() < 80, "a tick has a text of a few characters");
    }
    return Verdict::accepted;
}

} // namespace

/// The lists of tick values: bounded, ascending and finite for every range and length.
Verdict tryInput(std::span<const std::byte> bytes)
{
    InputReader input(bytes);
    return input.yes() ? tryLogRange(input) : tryAxis(input);
}

} // namespace TOLVGraphing::fuzzing
