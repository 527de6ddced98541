#include "SortedSamples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace TOLVGraphing {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// Ascending numbers with ties and jumps.
std::vector<float> ascending(std::size_t count, std::uint32_t seed)
{
    std::mt19937 engine(seed);
    std::vector<float> samples;
    float value = -100.0F;
    for (std::size_t i = 0; i < count; ++i) {
        samples.push_back(value);
        value += engine() % 3 == 0 ? 0.0F : engine() % 500 == 0 ? 300.0F : 0.01F;
    }
    return samples;
}

TEST(SortedSamples, AscendingMeansNeverBelowTheOneBeforeAndNeverNaN)
{
    struct Case {
        const char* name;
        std::vector<float> samples;
        bool isAscending;
    };
    for (const Case& one : {Case{"none", {}, true}, Case{"one", {3.0F}, true}, Case{"NaN alone", {kNaN}, false}, Case{"ties", {1.0F, 1.0F, 2.0F}, true},
             Case{"a descent", {1.0F, 0.5F}, false}, Case{"infinities at the ends", {-kInfinity, 0.0F, kInfinity}, true}, Case{"NaN first", {kNaN, 1.0F}, false},
             Case{"NaN last", {1.0F, kNaN}, false}, Case{"zeros of either sign", {0.0F, -0.0F}, true}}) {
        SCOPED_TRACE(one.name);
        EXPECT_EQ(isAscending(one.samples), one.isAscending);
        EXPECT_EQ(SortedSamples::of(one.samples) != nullptr, one.isAscending);
    }
}

TEST(SortedSamples, ADescentIsFoundBetweenThePartsOfTheTable)
{
    for (std::size_t place = 250; place < 260; ++place) {
        std::vector<float> samples = ascending(600, 1);
        samples[place] = -200.0F;
        EXPECT_EQ(SortedSamples::of(samples), nullptr) << place;
        samples[place] = kNaN;
        EXPECT_EQ(SortedSamples::of(samples), nullptr) << place;
    }
}

TEST(SortedSamples, TheFirstSampleAboveIsFoundWhateverTheGuess)
{
    for (const std::size_t count : {1U, 5U, 16U, 17U, 255U, 256U, 257U, 3000U, 40000U}) {
        const std::vector<float> samples = ascending(count, static_cast<std::uint32_t>(count));
        const auto sorted = SortedSamples::of(samples);
        ASSERT_NE(sorted, nullptr);
        std::mt19937 engine(9);
        for (int round = 0; round < 2000; ++round) {
            const std::size_t from = engine() % (count + 1);
            const std::size_t end = from + engine() % (count - from + 1);
            const float values[] = {samples[engine() % count], samples[engine() % count] + 0.004F, -1e9F, 1e9F, kInfinity, -kInfinity};
            const float value = values[engine() % std::size(values)];
            const auto expected = static_cast<std::size_t>(
                std::upper_bound(samples.begin() + static_cast<std::ptrdiff_t>(from), samples.begin() + static_cast<std::ptrdiff_t>(end), value) - samples.begin());
            const std::size_t guesses[] = {expected, expected + 3, expected > 9 ? expected - 9 : 0, engine() % (count + 1), count + 1000};
            const std::size_t guess = guesses[engine() % std::size(guesses)];
            ASSERT_EQ(sorted->firstAbove(value, from, end, guess), expected) << value << " from " << from << " to " << end << ", guess " << guess;
            ASSERT_EQ(firstSampleAbove(samples, value, from, end, guess), expected) << value << " from " << from << " to " << end << ", guess " << guess;
        }
    }
}

TEST(SortedSamples, TheTableIsSmall)
{
    const std::vector<float> samples(100'000);
    EXPECT_LT(static_cast<double>(SortedSamples::of(samples)->memory()), 0.005 * 100'000 * sizeof(float));
}

} // namespace
} // namespace TOLVGraphing
