#include "../support/FuzzTarget.h"
#include "../support/InputReader.h"

#include <tests/support/PlainColumnReduction.h>
#include <tests/support/ReductionCase.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace TOLVGraphing::fuzzing {
namespace {

constexpr std::size_t kMostSamples = 2000;

/// Samples that say something in few bytes: each one on its own, from a short list, or a step or a few representable numbers on from the one before.
std::vector<float> samples(InputReader& input, std::size_t count)
{
    const std::size_t kind = input.below(4);
    if (kind == 0)
        return input.floats(count);
    const std::vector<float> list = input.floats(1 + input.below(8));
    const float step = input.interestingFloat();
    std::vector<float> result(count);
    float value = list.front();
    for (std::size_t i = 0; i < count; ++i) {
        result[i] = kind == 1 ? input.oneOf(list) : value;
        value = kind == 2 ? value + step * static_cast<float>(input.below(4)) : std::nextafter(value, input.yes() ? INFINITY : -INFINITY);
    }
    return result;
}

testing_support::ReductionCase reductionCase(InputReader& input)
{
    testing_support::ReductionCase one;
    ColumnReduction& settings = one.settings;
    settings.closed = input.yes();
    settings.xIsLog = input.yes();
    settings.yIsLog = input.yes();
    one.hasTable = input.yes();
    if (input.yes())
        one.blockShift = 4 + static_cast<unsigned>(input.below(3));
    const bool sortsX = input.below(4) != 0;
    settings.rect = {input.interestingDouble(), input.interestingDouble(), input.interestingDouble(), input.interestingDouble()};
    const float ends[] = {input.interestingFloat(), input.interestingFloat(), input.interestingFloat(), input.interestingFloat()};
    one.xLocation = input.below(70);
    one.yLocation = input.below(70);
    one.count = input.below(kMostSamples);
    const std::size_t after = input.below(70);
    one.xStorage = samples(input, one.xLocation + one.count + after);
    one.yStorage = samples(input, one.yLocation + one.count + after);
    if (sortsX && std::ranges::none_of(one.xStorage, [](float x) { return std::isnan(x); }))
        std::ranges::sort(one.xStorage);
    settings.xMinimum = ends[0];
    settings.xMaximum = ends[1];
    settings.yMinimum = ends[2];
    settings.yMaximum = ends[3];
    // Ranges that have to do with the samples are the ones that give curves.
    if (one.count > 0 && input.below(4) != 0) {
        settings.xMinimum = one.xs()[input.below(one.count)];
        settings.xMaximum = one.xs()[one.count - 1 - input.below(one.count)];
    }
    return one;
}

} // namespace

/// The quick reduction against the plain rule, to the last bit.
Verdict tryInput(std::span<const std::byte> bytes)
{
    InputReader input(bytes);
    const testing_support::ReductionCase one = reductionCase(input);
    const testing_support::ReductionSummaries summaries(one);
    TOLVCurve curve;
    one.settings.reduce(summaries.series(), curve);
    const auto points = curve.path().points();
    const std::vector<Point> expected = testing_support::plainlyReduced(one.settings, one.xs(), one.ys());
    require(points.size() == expected.size(), "as many vertices as by the plain rule");
    require(expected.empty() || std::memcmp(points.data(), expected.data(), expected.size() * sizeof(Point)) == 0, "the same vertices as by the plain rule");
    return expected.empty() ? Verdict::refused : Verdict::accepted;
}

} // namespace TOLVGraphing::fuzzing
