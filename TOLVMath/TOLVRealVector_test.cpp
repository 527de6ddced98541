#include "TOLVRealVector.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <thread>
#include <vector>

namespace TOLVGraphing {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

std::vector<float> elements(const TOLVRealVector& vector)
{
    return {vector.components(), vector.components() + vector.length()};
}

TEST(TOLVRealVector, HoldsItsNumbersContiguously)
{
    const auto vector = TOLVRealVector::vectorWithComponents({3.0F, 1.0F, 2.0F});
    EXPECT_EQ(vector->length(), 3U);
    EXPECT_EQ(elements(*vector), (std::vector<float>{3.0F, 1.0F, 2.0F}));
}

TEST(TOLVRealVector, IsEmptyWithoutNumbers)
{
    for (const auto& vector : {TOLVRealVector::vector(), TOLVRealVector::vectorWithComponents({})}) {
        EXPECT_EQ(vector->length(), 0U);
        float number = 7.0F;
        std::size_t location = 5;
        EXPECT_FALSE(vector->getMinimum(&number, &location));
        EXPECT_FALSE(vector->getMaximum(&number, &location));
        EXPECT_EQ(number, 7.0F);
        EXPECT_EQ(location, 5U);
    }
}

TEST(TOLVRealVector, FindsExtremesAndTheirFirstPlace)
{
    struct Case {
        const char* name;
        std::vector<float> numbers;
        float minimum;
        std::size_t minimumAt;
        float maximum;
        std::size_t maximumAt;
    };
    const std::vector<Case> cases = {
        {"one", {4.0F}, 4.0F, 0, 4.0F, 0},
        {"ascending", {1.0F, 2.0F, 3.0F}, 1.0F, 0, 3.0F, 2},
        {"descending", {3.0F, 2.0F, 1.0F}, 1.0F, 2, 3.0F, 0},
        {"ties take the first", {2.0F, 1.0F, 1.0F, 5.0F, 5.0F}, 1.0F, 1, 5.0F, 3},
        {"infinities count", {0.0F, kInfinity, -kInfinity}, -kInfinity, 2, kInfinity, 1},
        {"NaN first", {kNaN, 2.0F, 1.0F}, 1.0F, 2, 2.0F, 1},
        {"NaN last", {2.0F, 1.0F, kNaN}, 1.0F, 1, 2.0F, 0},
        {"NaN between", {2.0F, kNaN, 3.0F}, 2.0F, 0, 3.0F, 2},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.name);
        const auto vector = TOLVRealVector::vectorWithComponents(one.numbers);
        float number = 0.0F;
        std::size_t location = 99;
        EXPECT_TRUE(vector->getMinimum(&number, &location));
        EXPECT_EQ(number, one.minimum);
        EXPECT_EQ(location, one.minimumAt);
        EXPECT_TRUE(vector->getMaximum(&number, &location));
        EXPECT_EQ(number, one.maximum);
        EXPECT_EQ(location, one.maximumAt);
    }
}

TEST(TOLVRealVector, WritesNoExtremeWhenAllAreNaN)
{
    const auto vector = TOLVRealVector::vectorWithComponents({kNaN, -kNaN});
    float number = 7.0F;
    EXPECT_FALSE(vector->getMinimum(&number, nullptr));
    EXPECT_FALSE(vector->getMaximum(&number, nullptr));
    EXPECT_EQ(number, 7.0F);
}

TEST(TOLVRealVector, ToleratesMissingTargets)
{
    const auto vector = TOLVRealVector::vectorWithComponents({1.0F, 2.0F});
    EXPECT_TRUE(vector->getMinimum(nullptr, nullptr));
    EXPECT_TRUE(vector->getMaximum(nullptr, nullptr));
}

TEST(TOLVRealVector, SlicesAreCutOffAtTheEnd)
{
    const auto vector = TOLVRealVector::vectorWithComponents({0.0F, 1.0F, 2.0F, 3.0F});
    constexpr std::uint64_t kHuge = std::numeric_limits<std::uint64_t>::max();
    struct Case {
        std::uint64_t location;
        std::uint64_t length;
        std::vector<float> expected;
    };
    const std::vector<Case> cases = {
        {0, 4, {0.0F, 1.0F, 2.0F, 3.0F}},
        {1, 2, {1.0F, 2.0F}},
        {3, 1, {3.0F}},
        {2, 0, {}},
        {2, 9, {2.0F, 3.0F}},
        {4, 1, {}},
        {9, 1, {}},
        {1, kHuge, {1.0F, 2.0F, 3.0F}},
        {kHuge, kHuge, {}},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(testing::Message() << one.location << ", " << one.length);
        EXPECT_EQ(elements(*vector->realVectorInRange(one.location, one.length)), one.expected);
    }
}

TEST(TOLVRealVector, SlicesAndCopiesOutliveTheirSource)
{
    auto vector = TOLVRealVector::vectorWithComponents({5.0F, 6.0F, 7.0F});
    const auto slice = vector->realVectorInRange(1, 2);
    const auto sliceOfSlice = slice->realVectorInRange(1, 1);
    const auto copy = vector->copy();
    EXPECT_NE(copy, vector);
    vector.reset();
    EXPECT_EQ(elements(*slice), (std::vector<float>{6.0F, 7.0F}));
    EXPECT_EQ(elements(*sliceOfSlice), (std::vector<float>{7.0F}));
    EXPECT_EQ(elements(*copy), (std::vector<float>{5.0F, 6.0F, 7.0F}));
}

TEST(TOLVRealVector, ExtremesOfASliceLookAtTheSliceOnly)
{
    const auto slice = TOLVRealVector::vectorWithComponents({-9.0F, 3.0F, 1.0F, 9.0F})->realVectorInRange(1, 2);
    float number = 0.0F;
    std::size_t location = 99;
    EXPECT_TRUE(slice->getMinimum(&number, &location));
    EXPECT_EQ(number, 1.0F);
    EXPECT_EQ(location, 1U);
    EXPECT_TRUE(slice->getMaximum(&number, &location));
    EXPECT_EQ(number, 3.0F);
    EXPECT_EQ(location, 0U);
}

TEST(TOLVRealVector, ExtremesAreTheSameFromEveryThreadAndInEveryCopy)
{
    const auto vector = TOLVRealVector::vectorWithComponents({2.0F, std::numeric_limits<float>::quiet_NaN(), -7.0F, 8.0F, -7.0F, 8.0F});
    std::vector<std::thread> threads;
    std::vector<std::size_t> locations(16);
    for (std::size_t i = 0; i < 8; ++i) {
        threads.emplace_back([&, i] {
            vector->getMinimum(nullptr, &locations[2 * i]);
            vector->copy()->getMaximum(nullptr, &locations[2 * i + 1]);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (std::size_t i = 0; i < 8; ++i) {
        EXPECT_EQ(locations[2 * i], 2U);
        EXPECT_EQ(locations[2 * i + 1], 3U);
    }
    // Asked again, and where there is none.
    float number = 0.0F;
    EXPECT_TRUE(vector->getMinimum(&number, nullptr));
    EXPECT_EQ(number, -7.0F);
    const auto gaps = vector->realVectorInRange(1, 1);
    EXPECT_FALSE(gaps->getMinimum(&number, nullptr));
    EXPECT_FALSE(gaps->getMinimum(&number, nullptr));
    EXPECT_EQ(number, -7.0F);
}

} // namespace
} // namespace TOLVGraphing
