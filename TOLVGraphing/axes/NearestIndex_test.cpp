#include "NearestIndex.h"

#include <tests/support/Generated.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <optional>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::Generated;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// Looks at one place after the other; only a smaller distance takes the place of an earlier one.
std::size_t scanned(const std::vector<float>& places, float target)
{
    std::size_t nearest = 0;
    for (std::size_t i = 1; i < places.size(); ++i) {
        if (std::abs(places[i] - target) < std::abs(places[nearest] - target))
            nearest = i;
    }
    return nearest;
}

std::size_t found(const std::vector<float>& places, float target)
{
    const bool ascends = places.front() <= places.back();
    return nearestIndexOfOrdered(
        places.size(), [&](std::size_t i) { return ascends ? places[i] >= target : places[i] <= target; }, [&](std::size_t i) { return std::abs(places[i] - target); });
}

std::optional<std::size_t> nearestOf(const std::vector<float>& distances)
{
    return nearestIndex(distances.size(), [&](std::size_t i) { return distances[i]; });
}

TEST(NearestIndex, OfEqualDistancesTheFirstCounts)
{
    EXPECT_EQ(nearestOf({3.0F, 1.0F, 2.0F, 1.0F}), 1U);
    EXPECT_EQ(nearestOf({2.0F, 2.0F, 2.0F}), 0U);
    EXPECT_EQ(nearestOf({5.0F}), 0U);
    EXPECT_EQ(nearestOf({kInfinity, kInfinity}), 0U);
    EXPECT_EQ(nearestOf({kInfinity, 7.0F}), 1U);
}

TEST(NearestIndex, DistancesThatAreNoNumbersArePassedOver)
{
    EXPECT_EQ(nearestOf({kNaN, 5.0F, kNaN, 4.0F}), 3U);
    EXPECT_EQ(nearestOf({kNaN, kInfinity}), 1U);
    EXPECT_EQ(nearestOf({4.0F, kNaN, 5.0F}), 0U);
}

TEST(NearestIndex, WithoutADistanceThereIsNone)
{
    EXPECT_EQ(nearestOf({}), std::nullopt);
    EXPECT_EQ(nearestOf({kNaN, kNaN}), std::nullopt);
}

TEST(NearestIndex, ASearchInOrderFindsWhatAScanFinds)
{
    struct Row {
        const char* name;
        std::vector<float> places;
        float target;
        std::size_t nearest;
    };
    const Row rows[] = {
        {"one place", {5.0F}, -1.0F, 0},
        {"before the first", {1.0F, 2.0F, 3.0F}, -9.0F, 0},
        {"on the first", {1.0F, 2.0F, 3.0F}, 1.0F, 0},
        {"on a place", {1.0F, 2.0F, 3.0F}, 2.0F, 1},
        {"nearer to the lower one", {1.0F, 2.0F, 3.0F}, 2.25F, 1},
        {"nearer to the upper one", {1.0F, 2.0F, 3.0F}, 2.75F, 2},
        {"half way takes the earlier one", {1.0F, 2.0F, 3.0F}, 2.5F, 1},
        {"behind the last", {1.0F, 2.0F, 3.0F}, 9.0F, 2},
        {"the first of a run that is reached", {1.0F, 4.0F, 4.0F, 4.0F}, 3.5F, 1},
        {"the first of a run that lies behind", {1.0F, 1.0F, 1.0F, 4.0F}, 2.0F, 0},
        {"the first of a run that is hit", {1.0F, 4.0F, 4.0F, 9.0F}, 4.0F, 1},
        {"half way between two runs", {1.0F, 1.0F, 3.0F, 3.0F}, 2.0F, 0},
        {"a run at the end", {1.0F, 3.0F, 3.0F}, 99.0F, 1},
        {"all are equal", {7.0F, 7.0F, 7.0F}, 7.0F, 0},
        {"distances that rounding makes equal", {0.0F, 0.25F, 0.5F, 0.75F}, 1e8F, 0},
        {"backwards, before the first", {3.0F, 2.0F, 1.0F}, 9.0F, 0},
        {"backwards, between", {3.0F, 2.0F, 1.0F}, 1.25F, 2},
        {"backwards, half way", {3.0F, 2.0F, 1.0F}, 1.5F, 1},
        {"backwards, behind the last", {3.0F, 2.0F, 1.0F}, -9.0F, 2},
        {"backwards, a run", {3.0F, 1.0F, 1.0F}, -9.0F, 1},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(found(row.places, row.target), row.nearest) << row.name;
        EXPECT_EQ(scanned(row.places, row.target), row.nearest) << row.name;
    }
}

TEST(NearestIndex, InGeneratedOrdersASearchFindsWhatAScanFinds)
{
    Generated generated(1);
    for (int round = 0; round < 3000; ++round) {
        // Few different places give runs and ties, many give neither.
        const std::uint32_t different = round % 2 == 0 ? 8 : 2000;
        std::vector<float> places(1 + generated.whole(40));
        for (float& place : places)
            place = static_cast<float>(generated.whole(different)) * 0.37F - 1.0F;
        if (round % 3 == 0)
            std::sort(places.begin(), places.end(), std::greater<>());
        else
            std::sort(places.begin(), places.end());
        const float between = static_cast<float>(generated.whole(4 * different)) * 0.185F - 2.0F;
        const float on = places[generated.whole(static_cast<std::uint32_t>(places.size()))];
        const float middle = 0.5F * (places.front() + places.back());
        for (const float target : {between, on, middle, -1e9F, 1e9F, places.front(), places.back()})
            ASSERT_EQ(found(places, target), scanned(places, target)) << "round " << round << ", target " << target;
    }
}

} // namespace
} // namespace TOLVGraphing
