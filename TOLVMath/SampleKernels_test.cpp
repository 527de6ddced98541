#include "SampleKernels.h"

#include "ExtremePyramid.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

namespace TOLVGraphing {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// Sample by sample.
Extremes plainExtremes(const float* samples, std::size_t count, float floor)
{
    Extremes extremes;
    for (std::size_t i = 0; i < count; ++i) {
        if (samples[i] < extremes.minimum && samples[i] >= floor)
            extremes.minimum = samples[i];
        if (samples[i] > extremes.maximum)
            extremes.maximum = samples[i];
    }
    return extremes;
}

std::vector<float> samplesWithDamage(std::size_t count, std::uint32_t seed)
{
    std::mt19937 engine(seed);
    std::uniform_real_distribution<float> distribution(-1.0F, 1.0F);
    std::vector<float> samples;
    for (std::size_t i = 0; i < count; ++i)
        samples.push_back(distribution(engine));
    const float damage[] = {kNaN, kInfinity, -kInfinity, 7.0F, -7.0F};
    for (std::size_t i = 0; seed % 2 == 1 && i < 1 + count / 10 && count > 0; ++i)
        samples[engine() % count] = damage[engine() % std::size(damage)];
    return samples;
}

/// Every kind of loops that this processor can run.
class SampleKernelsTest : public testing::TestWithParam<std::size_t> {
protected:
    const SampleKernels& kernels = SampleKernels::all()[GetParam()];
};

TEST_P(SampleKernelsTest, ExtremesAreThoseOfEverySample)
{
    for (std::uint32_t count = 0; count < 200; ++count) {
        const std::vector<float> samples = samplesWithDamage(count, count);
        EXPECT_EQ(kernels.extremes(samples.data(), count), plainExtremes(samples.data(), count, -kInfinity)) << count;
        EXPECT_EQ(kernels.extremesAbove(samples.data(), count, -0.25F), plainExtremes(samples.data(), count, -0.25F)) << count;
    }
}

TEST_P(SampleKernelsTest, OnlyNaNGivesTheExtremesOfNothing)
{
    const std::vector<float> samples(40, kNaN);
    EXPECT_TRUE(kernels.extremes(samples.data(), samples.size()).areOfNothing());
    EXPECT_TRUE(kernels.extremesAbove(samples.data(), samples.size(), 0.0F).areOfNothing());
}

TEST_P(SampleKernelsTest, AnExtremeIsFoundAtEveryPlace)
{
    for (std::size_t place = 0; place < 70; ++place) {
        std::vector<float> samples(70, 0.5F);
        samples[place] = -3.0F;
        EXPECT_EQ(kernels.extremes(samples.data(), samples.size()), (Extremes{-3.0F, 0.5F})) << place;
        samples[place] = 3.0F;
        EXPECT_EQ(kernels.extremes(samples.data(), samples.size()), (Extremes{0.5F, 3.0F})) << place;
    }
}

TEST_P(SampleKernelsTest, BlocksHaveTheirOwnExtremes)
{
    for (const std::size_t length : {16U, 32U, 64U, 1024U}) {
        for (const std::size_t count : {4U, 8U, 16U, 20U, 36U}) {
            const std::vector<float> samples = samplesWithDamage(length * count, static_cast<std::uint32_t>(length + count / 4));
            bool hasNaN = false;
            for (const float sample : samples)
                hasNaN = hasNaN || std::isnan(sample);
            std::vector<float> found(64 * 3, 99.0F);
            EXPECT_EQ(kernels.blockExtremes(samples.data(), length, count, found.data()), hasNaN);
            std::vector<float> above(64 * 3, 99.0F);
            EXPECT_EQ(kernels.blockExtremesAbove(samples.data(), length, count, above.data(), 0.1F), hasNaN);
            for (std::size_t i = 0; i < count; ++i) {
                const std::size_t place = i / 16 * 32 + i % 16;
                EXPECT_EQ((Extremes{found[place], found[place + 16]}), plainExtremes(samples.data() + i * length, length, -kInfinity)) << length << " " << i;
                EXPECT_EQ((Extremes{above[place], above[place + 16]}), plainExtremes(samples.data() + i * length, length, 0.1F)) << length << " " << i;
            }
            EXPECT_EQ(found[count / 16 * 32 + count % 16], 99.0F) << "written too far";
        }
    }
}

TEST_P(SampleKernelsTest, ADescentOrNaNIsFoundAtEveryPlace)
{
    constexpr std::size_t kCount = 100;
    for (std::size_t place = 0; place <= kCount; ++place) {
        std::vector<float> samples;
        for (std::size_t i = 0; i <= kCount; ++i)
            samples.push_back(static_cast<float>(i / 3));
        EXPECT_TRUE(kernels.ascend(samples.data(), place)) << place;
        samples[place] = kNaN;
        EXPECT_FALSE(kernels.ascend(samples.data(), kCount)) << place;
        samples[place] = place == 0 ? 1e9F : -1.0F;
        EXPECT_FALSE(kernels.ascend(samples.data(), kCount)) << place;
    }
    EXPECT_TRUE(kernels.ascend(nullptr, 0));
}

INSTANTIATE_TEST_SUITE_P(Kind, SampleKernelsTest, testing::Range<std::size_t>(0, SampleKernels::all().size()));

} // namespace
} // namespace TOLVGraphing
