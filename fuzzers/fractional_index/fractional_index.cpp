#include "../support/FuzzTarget.h"
#include "../support/InputReader.h"

#include <TOLVGraphing/data/TOLVGraphData.h>
#include <TOLVGraphing/data/TOLVRealVector+Interpolation.h>
#include <TOLVGraphing/platform/foundation/Exception.h>
#include <TOLVGraphing/platform/foundation/Log.h>
#include <TOLVMath/TOLVRealVector.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>

namespace TOLVGraphing::fuzzing {
namespace {

constexpr std::size_t kMostSamples = 300;
using Vector = std::shared_ptr<const TOLVRealVector>;

/// The place of a whole number among ascending whole numbers, with the distances as 64-bit integers: nothing is rounded but the last quotient, which has eleven bits more than a double.
long double exactPlace(const std::vector<std::int64_t>& numbers, std::int64_t value)
{
    if (value <= numbers.front())
        return 0.0L;
    if (value >= numbers.back())
        return static_cast<long double>(numbers.size() - 1);
    const auto above = std::ranges::upper_bound(numbers, value);
    const std::int64_t below = *(above - 1);
    return static_cast<long double>(above - 1 - numbers.begin()) + static_cast<long double>(value - below) / static_cast<long double>(*above - below);
}

Vector vectorOf(const std::vector<std::int64_t>& numbers)
{
    return TOLVRealVector::vectorWithComponents(std::vector<float>(numbers.begin(), numbers.end()));
}

/// Whole numbers that are floats, each greater than the one before.
std::vector<std::int64_t> ascendingNumbers(InputReader& input)
{
    std::vector<std::int64_t> numbers(1 + input.below(kMostSamples));
    std::int64_t number = input.number<std::int16_t>();
    for (std::int64_t& each : numbers)
        each = number += 1 + static_cast<std::int64_t>(input.below(input.yes() ? 4 : 30000));
    return numbers;
}

void tryAscending(InputReader& input)
{
    const std::vector<std::int64_t> numbers = ascendingNumbers(input);
    const Vector vector = vectorOf(numbers);
    float previous = 0.0F;
    std::int64_t value = numbers.front() - 2;
    for (int i = 0; i < 20; ++i) {
        const float place = fractionalIndexOfValue(*vector, static_cast<float>(value));
        const long double exact = exactPlace(numbers, value);
        // Two roundings of the quotient, which is at most 1, and one of the sum.
        const long double tolerance = 0x1p-22L + exact * 0x1p-24L;
        require(std::abs(static_cast<long double>(place) - exact) <= tolerance, "the place is the exact one up to three roundings");
        require(place >= previous, "greater numbers have no smaller places");
        previous = place;
        value += static_cast<std::int64_t>(input.below(4000));
    }
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const float own = fractionalIndexOfValue(*vector, static_cast<float>(numbers[i]));
        require(own == static_cast<float>(i), "a sample's own place is its index");
        require(valueAtFractionalIndex(*vector, own) == static_cast<float>(numbers[i]), "the sample at its own place is the sample");
    }
}

/// One sample after the other.
std::optional<std::size_t> nearestSample(const std::vector<float>& xs, float x)
{
    float best = std::numeric_limits<float>::max();
    std::optional<std::size_t> nearest;
    for (std::size_t i = 0; i < xs.size(); ++i) {
        const float distance = (x - xs[i]) * (x - xs[i]);
        if (distance < best) {
            best = distance;
            nearest = i;
        }
    }
    return nearest;
}

void tryAny(InputReader& input)
{
    std::vector<float> xs = input.floats(input.below(kMostSamples));
    if (input.yes() && std::ranges::none_of(xs, [](float x) { return std::isnan(x); }))
        std::ranges::sort(xs);
    const Vector x = TOLVRealVector::vectorWithComponents(xs);
    const float sought = xs.empty() || input.yes() ? input.interestingFloat() : xs[input.below(xs.size())];
    const float place = fractionalIndexOfValue(*x, sought);
    require(xs.empty() ? place == -1.0F : !(place < 0.0F && std::isfinite(place) && std::ranges::is_sorted(xs)), "a place is an index, or -1 without samples");

    // Where the ordinates are the indexes, the nearest sample's ordinate names it.
    std::vector<float> indexes(xs.size());
    for (std::size_t i = 0; i < indexes.size(); ++i)
        indexes[i] = static_cast<float>(i);
    const auto series = TOLVGraphData::graphDataWithX(x, TOLVRealVector::vectorWithComponents(indexes), std::nullopt);
    const std::optional<std::size_t> nearest = nearestSample(xs, sought);
    require(series->YValueAtX(sought) == static_cast<float>(nearest.value_or(0)), "the nearest sample is the first of the nearest ones");
}

void tryIndex(InputReader& input)
{
    const std::vector<float> samples = input.floats(input.below(20));
    const float index = input.yes() ? input.interestingFloat() : static_cast<float>(input.below(25)) + static_cast<float>(input.below(16)) / 16.0F;
    const bool isInside = index >= 0.0F && index < static_cast<float>(samples.size());
    try {
        const float value = valueAtFractionalIndex(*TOLVRealVector::vectorWithComponents(samples), index);
        require(isInside, "an index outside of the vector is refused");
        const auto whole = static_cast<std::size_t>(index);
        require(index != static_cast<float>(whole) || std::isnan(value) || value == samples[whole] || whole + 1 < samples.size(), "the value at a whole index is the sample");
    } catch (const AssertionFailure&) {
        require(!isInside, "an index inside of the vector is taken");
    }
}

} // namespace

/// Interpolation and the search for samples against models that are exact or look at every sample.
Verdict tryInput(std::span<const std::byte> bytes)
{
    // What has no nearest sample is logged each time.
    static const LogSinkScope silence([](std::string_view) {});
    InputReader input(bytes);
    switch (input.below(3)) {
    case 0: tryAscending(input); break;
    case 1: tryAny(input); break;
    default: tryIndex(input); break;
    }
    return Verdict::accepted;
}

} // namespace TOLVGraphing::fuzzing
