#include "TOLVRealVector.h"

#include "ExtremePyramid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>
#include <random>
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

std::vector<float> longNoise(std::uint32_t seed)
{
    std::mt19937 engine(seed);
    std::uniform_real_distribution<float> distribution(-1.0F, 1.0F);
    std::vector<float> numbers(TOLVRealVector::kLongStorage + 1000);
    for (float& number : numbers)
        number = distribution(engine);
    return numbers;
}

TEST(TOLVRealVector, ExtremesOfLongVectorsAndTheirSlicesAreExact)
{
    std::vector<float> numbers = longNoise(3);
    numbers[40000] = numbers[60001] = 5.0F;
    numbers[30000] = numbers[50000] = -5.0F;
    numbers[0] = kNaN;
    const auto vector = TOLVRealVector::vectorWithComponents(numbers);
    for (const std::size_t from : {0U, 1U, 777U, 30000U, 30001U, 50001U, 66000U}) {
        for (const std::size_t length : {1U, 100U, 5000U, 35000U, 70000U}) {
            SCOPED_TRACE(testing::Message() << length << " from " << from);
            const auto slice = vector->realVectorInRange(from, length);
            // The only NaN is the very first number.
            const std::size_t first = from == 0 ? 1 : 0;
            const auto begin = slice->components() + first;
            const auto end = slice->components() + slice->length();
            std::size_t location = 99;
            ASSERT_EQ(slice->getMinimum(nullptr, &location), begin < end);
            ASSERT_EQ(location, begin < end ? static_cast<std::size_t>(std::min_element(begin, end) - slice->components()) : 99);
            location = 99;
            ASSERT_EQ(slice->getMaximum(nullptr, &location), begin < end);
            ASSERT_EQ(location, begin < end ? static_cast<std::size_t>(std::max_element(begin, end) - slice->components()) : 99);
        }
    }
}

TEST(TOLVRealVector, ExtremesOfLongAscendingVectorsAreTheFirstOfTheirKind)
{
    std::vector<float> numbers(TOLVRealVector::kLongStorage, 2.0F);
    numbers.front() = 1.0F;
    std::fill(numbers.end() - 10, numbers.end(), 3.0F);
    const auto vector = TOLVRealVector::vectorWithComponents(std::move(numbers));
    std::size_t location = 99;
    EXPECT_TRUE(vector->getMinimum(nullptr, &location));
    EXPECT_EQ(location, 0U);
    EXPECT_TRUE(vector->getMaximum(nullptr, &location));
    EXPECT_EQ(location, vector->length() - 10);
}

TEST(TOLVRealVector, KnowsWhetherItAscends)
{
    EXPECT_TRUE(TOLVRealVector::vector()->isAscending());
    const auto vector = TOLVRealVector::vectorWithComponents({5.0F, 1.0F, 1.0F, 2.0F, kNaN});
    EXPECT_FALSE(vector->isAscending());
    EXPECT_TRUE(vector->realVectorInRange(1, 3)->isAscending());
    EXPECT_FALSE(vector->realVectorInRange(4, 1)->isAscending());
    std::vector<float> numbers(TOLVRealVector::kLongStorage + 10);
    std::iota(numbers.begin(), numbers.end(), 0.0F);
    const auto ascending = TOLVRealVector::vectorWithComponents(numbers);
    EXPECT_TRUE(ascending->isAscending());
    EXPECT_TRUE(ascending->realVectorInRange(100, 20)->isAscending());
    numbers[65000] = 0.0F;
    const auto descending = TOLVRealVector::vectorWithComponents(numbers);
    EXPECT_FALSE(descending->isAscending());
    EXPECT_EQ(descending->sortedStorage(), nullptr);
    EXPECT_TRUE(descending->realVectorInRange(0, 65000)->isAscending());
}

TEST(TOLVRealVector, KnowsWhetherItHasNaN)
{
    EXPECT_FALSE(TOLVRealVector::vector()->hasNaN());
    std::vector<float> numbers = longNoise(4);
    EXPECT_FALSE(TOLVRealVector::vectorWithComponents(numbers)->hasNaN());
    numbers[60000] = kNaN;
    const auto vector = TOLVRealVector::vectorWithComponents(numbers);
    EXPECT_TRUE(vector->hasNaN());
    EXPECT_TRUE(vector->realVectorInRange(60000, 1)->hasNaN());
    EXPECT_FALSE(vector->realVectorInRange(0, 60000)->hasNaN());
}

TEST(TOLVRealVector, SlicesAndCopiesShareWhatIsKnownOfTheStorage)
{
    const auto vector = TOLVRealVector::vectorWithComponents(longNoise(5));
    const ExtremePyramid* pyramid = vector->pyramidOfStorage(vector->length());
    ASSERT_NE(pyramid, nullptr);
    EXPECT_EQ(vector->copy()->pyramidOfStorage(vector->length()), pyramid);
    const auto slice = vector->realVectorInRange(100, 50);
    EXPECT_EQ(slice->pyramidOfStorage(1), pyramid);
    EXPECT_EQ(slice->locationInStorage(), 100U);
    EXPECT_EQ(slice->realVectorInRange(7, 5)->locationInStorage(), 107U);
}

TEST(TOLVRealVector, APyramidIsMadeOnlyWhereItIsWorthIt)
{
    const auto vector = TOLVRealVector::vectorWithComponents(longNoise(6));
    EXPECT_EQ(vector->pyramidOfStorage(100), nullptr);
    EXPECT_EQ(vector->pyramidOfLogarithms(100), nullptr);
    EXPECT_NE(vector->pyramidOfStorage(vector->length() / 16), nullptr);
    EXPECT_NE(vector->pyramidOfStorage(100), nullptr);
    const auto shortVector = TOLVRealVector::vectorWithComponents(std::vector<float>(TOLVRealVector::kLongStorage - 1));
    EXPECT_EQ(shortVector->pyramidOfStorage(shortVector->length()), nullptr);
    EXPECT_EQ(shortVector->sortedStorage(), nullptr);
}

TEST(TOLVRealVector, StorageOfOthersIsNotCopiedAndKept)
{
    const auto numbers = std::make_shared<std::vector<float>>(std::vector<float>{3.0F, 1.0F});
    const std::weak_ptr<std::vector<float>> watched = numbers;
    auto vector = TOLVRealVector::vectorWithStorage(numbers, numbers->data(), numbers->size());
    EXPECT_EQ(vector->components(), numbers->data());
    auto slice = vector->realVectorInRange(1, 1);
    vector.reset();
    EXPECT_EQ(watched.use_count(), 2);
    slice.reset();
    EXPECT_EQ(watched.use_count(), 1);
}

TEST(TOLVRealVector, AGivenPyramidIsUsed)
{
    const auto numbers = std::make_shared<std::vector<float>>(longNoise(7));
    const auto pyramid = std::make_shared<const ExtremePyramid>(*numbers);
    const auto vector = TOLVRealVector::vectorWithStorage(numbers, numbers->data(), numbers->size(), pyramid);
    EXPECT_EQ(vector->pyramidOfStorage(1), pyramid.get());
}

TEST(TOLVRealVector, ManyThreadsMakeOnePyramid)
{
    const auto vector = TOLVRealVector::vectorWithComponents(longNoise(8));
    std::vector<const ExtremePyramid*> pyramids(8);
    std::vector<std::thread> threads;
    for (const ExtremePyramid*& pyramid : pyramids)
        threads.emplace_back([&] { pyramid = vector->copy()->pyramidOfStorage(vector->length()); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_NE(pyramids.front(), nullptr);
    EXPECT_EQ(std::count(pyramids.begin(), pyramids.end(), pyramids.front()), 8);
}

} // namespace
} // namespace TOLVGraphing
