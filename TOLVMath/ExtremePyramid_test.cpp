#include "ExtremePyramid.h"

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

std::vector<float> noise(std::size_t count, std::uint32_t seed)
{
    std::mt19937 engine(seed);
    std::uniform_real_distribution<float> distribution(-1.0F, 1.0F);
    std::vector<float> samples(count);
    for (float& sample : samples)
        sample = distribution(engine);
    return samples;
}

Extremes plainExtremes(const std::vector<float>& samples, std::size_t from, std::size_t end)
{
    Extremes extremes;
    for (std::size_t i = from; i < end; ++i) {
        if (!std::isnan(samples[i]))
            extremes.add({samples[i], samples[i]});
    }
    return extremes;
}

TEST(Extremes, OfNothingAreChangedByAnything)
{
    Extremes extremes;
    EXPECT_TRUE(extremes.areOfNothing());
    extremes.add({2.0F, 3.0F});
    EXPECT_EQ(extremes, (Extremes{2.0F, 3.0F}));
    EXPECT_FALSE(extremes.areOfNothing());
}

TEST(Extremes, ContainWhatChangesNothing)
{
    const Extremes extremes{-1.0F, 1.0F};
    EXPECT_TRUE(extremes.contain({-1.0F, 1.0F}));
    EXPECT_TRUE(extremes.contain({}));
    EXPECT_FALSE(extremes.contain({-2.0F, 0.0F}));
    EXPECT_FALSE(extremes.contain({0.0F, 2.0F}));
}

TEST(ExtremePyramid, EveryEntryHasTheExtremesOfItsSamples)
{
    for (const std::size_t count : {0U, 1U, 15U, 63U, 64U, 65U, 1023U, 1024U, 1025U, 5000U, 70000U}) {
        for (const unsigned shift : {4U, 6U, 10U}) {
            SCOPED_TRACE(testing::Message() << count << " samples in blocks of 2^" << shift);
            const std::vector<float> samples = noise(count, 5);
            const ExtremePyramid pyramid(samples, shift);
            EXPECT_EQ(pyramid.extremes(), plainExtremes(samples, 0, count));
            EXPECT_FALSE(pyramid.hasNaN());
            EXPECT_LE(pyramid.entryCount(pyramid.levelCount() - 1), ExtremePyramid::kFan);
            for (std::size_t level = 0; level < pyramid.levelCount(); ++level) {
                for (std::size_t i = 0; i < pyramid.entryCount(level); ++i) {
                    const std::size_t from = std::min(i << pyramid.shiftOfLevel(level), count);
                    const std::size_t end = std::min((i + 1) << pyramid.shiftOfLevel(level), count);
                    ASSERT_EQ(pyramid.entry(level, i), plainExtremes(samples, from, end)) << "level " << level << " entry " << i;
                }
            }
        }
    }
}

TEST(ExtremePyramid, ExtremesOfRangesAreExact)
{
    const std::vector<float> samples = noise(20000, 8);
    const ExtremePyramid pyramid(samples, 4);
    std::mt19937 engine(1);
    for (int round = 0; round < 3000; ++round) {
        std::size_t from = engine() % samples.size();
        std::size_t end = from + engine() % (samples.size() - from + 1);
        if (round % 3 == 0)
            end = std::min(from + engine() % 100, samples.size());
        ASSERT_EQ(pyramid.extremesInRange(samples, from, end), plainExtremes(samples, from, end)) << from << " to " << end;
    }
}

TEST(ExtremePyramid, EntriesOfOneLevelAreJoined)
{
    const std::vector<float> samples = noise(64 * 100, 2);
    const ExtremePyramid pyramid(samples);
    for (std::size_t from = 0; from < 40; ++from) {
        for (std::size_t end = from; end < 100; ++end)
            ASSERT_EQ(pyramid.extremesOfEntries(0, from, end), plainExtremes(samples, from * 64, end * 64));
    }
}

TEST(ExtremePyramid, NaNIsPassedOverAndReported)
{
    for (const std::size_t place : {0U, 1U, 255U, 256U, 300U}) {
        std::vector<float> samples = noise(301, 4);
        samples[place] = kNaN;
        const ExtremePyramid pyramid(samples);
        EXPECT_TRUE(pyramid.hasNaN()) << place;
        EXPECT_EQ(pyramid.extremes(), plainExtremes(samples, 0, samples.size())) << place;
    }
    EXPECT_TRUE(ExtremePyramid(std::vector<float>(100, kNaN)).extremes().areOfNothing());
}

TEST(ExtremePyramid, InfinitiesCount)
{
    EXPECT_EQ(ExtremePyramid(std::vector<float>{1.0F, kInfinity, -kInfinity}).extremes(), (Extremes{-kInfinity, kInfinity}));
}

TEST(ExtremePyramid, MinimaAreOfSamplesFromTheFloorOn)
{
    std::vector<float> samples = noise(3000, 6);
    const ExtremePyramid pyramid(samples, 6, 0.5F);
    float smallest = kInfinity;
    for (const float sample : samples)
        smallest = sample >= 0.5F ? std::min(smallest, sample) : smallest;
    EXPECT_EQ(pyramid.extremes(), (Extremes{smallest, *std::max_element(samples.begin(), samples.end())}));
    const ExtremePyramid none(std::vector<float>(100, -1.0F), 6, 0.0F);
    EXPECT_EQ(none.extremes(), (Extremes{kInfinity, -1.0F}));
}

TEST(ExtremePyramid, NeedsLessThanATwentiethOfTheSamplesMemory)
{
    for (const std::size_t count : {65'536U, 100'000U, 1'000'000U}) {
        const std::vector<float> samples(count);
        EXPECT_LT(static_cast<double>(ExtremePyramid(samples).memory() + ExtremePyramid(samples, 10).memory()), 0.05 * static_cast<double>(count * sizeof(float)));
    }
}

TEST(ExtremePyramid, ARowOfNumbersMakesTheSamePyramid)
{
    const std::vector<float> samples = noise(40000, 3);
    const ExtremePyramid pyramid(samples);
    ASSERT_EQ(pyramid.numbers().size(), ExtremePyramid::numberCountFor(samples.size(), 6));
    const auto row = std::make_shared<std::vector<float>>(pyramid.numbers().begin(), pyramid.numbers().end());
    const std::weak_ptr<std::vector<float>> watched = row;
    {
        const ExtremePyramid other(row, row->data(), samples.size(), 6, false);
        EXPECT_EQ(other.extremes(), pyramid.extremes());
        EXPECT_EQ(other.extremesInRange(samples, 17, 30011), pyramid.extremesInRange(samples, 17, 30011));
        EXPECT_EQ(watched.use_count(), 2);
    }
    EXPECT_EQ(watched.use_count(), 1);
}

} // namespace
} // namespace TOLVGraphing
