#include "CategoryRanges.h"

#include "../graph/TOLVGraph.h"
#include "NearestIndex.h"

#include <tests/support/ChangingSamples.h>
#include <tests/support/Generated.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::ChangingSamples;
using testing_support::Generated;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr IndexRange kNone{static_cast<std::uint64_t>(kNotFoundIndex), 0};
using Ranges = std::vector<IndexRange>;

class CategoryRangesTest : public testing::Test {
protected:
    std::shared_ptr<TOLVGraphData> add(TOLVGraphData::Samples x)
    {
        auto series = TOLVGraphData::graphDataWithX(std::move(x), nullptr, Color::blackColor());
        graph->addGraphData(series);
        return series;
    }

    std::shared_ptr<TOLVGraphData> add(std::vector<float> x) { return add(TOLVRealVector::vectorWithComponents(std::move(x))); }

    /// Brings the findings up to date for a visible range.
    const CategoryRanges& in(double min, double max)
    {
        ranges.update(*graph, min, max);
        return ranges;
    }

    std::vector<float> representativeX() const
    {
        const auto& x = ranges.representativeX();
        return x ? std::vector<float>(x->components(), x->components() + x->length()) : std::vector<float>();
    }

    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
    CategoryRanges ranges;
};

TEST_F(CategoryRangesTest, FindNothingBeforeTheFirstUpdateAndWhenCleared)
{
    for (int time = 0; time < 2; ++time) {
        EXPECT_FALSE(ranges.ranges());
        EXPECT_EQ(ranges.representative(), kNotFoundIndex);
        EXPECT_EQ(ranges.representativeRange(), kNone);
        EXPECT_FALSE(ranges.representativeX());
        EXPECT_FALSE(ranges.indexNearestTo(1.0F));
        add({1.0F, 2.0F});
        EXPECT_TRUE(in(0.0, 9.0).ranges());
        ranges.clear();
    }
}

TEST_F(CategoryRangesTest, WithoutSeriesTheListIsEmptyAndNoneRepresents)
{
    EXPECT_EQ(in(0.0, 1.0).ranges(), Ranges());
    EXPECT_EQ(ranges.representative(), kNotFoundIndex);
    EXPECT_EQ(ranges.representativeRange(), kNone);
    EXPECT_FALSE(ranges.representativeX());
}

TEST_F(CategoryRangesTest, TheLongestRangeRepresentsTheFirstOfSeveral)
{
    add({1.0F, 2.0F});
    add({1.0F, 2.0F, 3.0F, 4.0F});
    add({5.0F, 6.0F, 7.0F, 8.0F});
    EXPECT_EQ(in(0.0, 9.0).ranges(), (Ranges{{0, 2}, {0, 4}, {0, 4}}));
    EXPECT_EQ(ranges.representative(), 1);
    EXPECT_EQ(ranges.representativeRange(), (IndexRange{0, 4}));
    EXPECT_EQ(representativeX(), (std::vector<float>{1.0F, 2.0F, 3.0F, 4.0F}));
    EXPECT_EQ(in(2.0, 7.0).ranges(), (Ranges{{1, 1}, {1, 3}, {0, 3}}));
    EXPECT_EQ(ranges.representative(), 1);
    // A series wholly to the left keeps its full range.
    EXPECT_EQ(in(3.0, 7.0).ranges(), (Ranges{{0, 2}, {2, 2}, {0, 3}}));
    EXPECT_EQ(ranges.representative(), 2);
    EXPECT_EQ(representativeX(), (std::vector<float>{5.0F, 6.0F, 7.0F}));
}

TEST_F(CategoryRangesTest, OneSeriesBetweenItsSamplesTakesAllRangesAway)
{
    add({1.0F, 2.0F, 3.0F, 4.0F, 5.0F});
    add({0.0F, 3.5F, 9.0F});
    EXPECT_FALSE(in(3.25, 3.75).ranges());
    EXPECT_EQ(ranges.representative(), 0);
    EXPECT_EQ(ranges.representativeRange(), kNone);
    EXPECT_FALSE(ranges.representativeX());
    EXPECT_FALSE(ranges.indexNearestTo(3.5F));
}

TEST_F(CategoryRangesTest, SeriesWithoutAbscissaeHaveEmptyRanges)
{
    add(nullptr);
    add(std::vector<float>());
    EXPECT_EQ(in(0.0, 9.0).ranges(), (Ranges{{0, 0}, {0, 0}}));
    EXPECT_EQ(ranges.representative(), 0);
    EXPECT_EQ(ranges.representativeRange(), (IndexRange{0, 0}));
    ASSERT_TRUE(ranges.representativeX());
    EXPECT_EQ(ranges.representativeX()->length(), 0U);
    EXPECT_FALSE(ranges.indexNearestTo(1.0F));
    add({1.0F});
    EXPECT_EQ(in(0.0, 9.0).representative(), 2);
}

// What was found is kept.

TEST_F(CategoryRangesTest, WhatWasFoundIsKeptWhileNothingChanges)
{
    add({1.0F, 2.0F, 3.0F});
    add(nullptr);
    const auto x = in(0.0, 9.0).representativeX();
    EXPECT_EQ(in(0.0, 9.0).representativeX(), x);
    // Names, styles and ordinates play no part.
    graph->graphData()[0]->setName("name");
    graph->graphData()[0]->setY(TOLVRealVector::vectorWithComponents({1.0F}));
    EXPECT_EQ(in(0.0, 9.0).representativeX(), x);
}

TEST_F(CategoryRangesTest, NewSeriesAbscissaeAndVisibleRangesAreLookedAt)
{
    const auto series = add({1.0F, 2.0F, 3.0F});
    EXPECT_EQ(in(0.0, 9.0).representativeRange(), (IndexRange{0, 3}));
    EXPECT_EQ(in(0.0, 2.0).representativeRange(), (IndexRange{0, 2}));
    EXPECT_EQ(in(2.0, 2.0).representativeRange(), (IndexRange{1, 1}));
    EXPECT_EQ(in(2.0, 9.0).representativeRange(), (IndexRange{1, 2}));
    add({5.0F, 6.0F, 7.0F, 8.0F});
    EXPECT_EQ(in(2.0, 9.0).representative(), 1);
    series->setX(TOLVRealVector::vectorWithComponents({2.0F, 3.0F, 4.0F, 5.0F, 6.0F}));
    EXPECT_EQ(in(2.0, 9.0).representative(), 0);
    EXPECT_EQ(representativeX(), (std::vector<float>{2.0F, 3.0F, 4.0F, 5.0F, 6.0F}));
    series->setX(nullptr);
    EXPECT_EQ(in(2.0, 9.0).representative(), 1);
    graph->clearGraphData();
    EXPECT_EQ(in(2.0, 9.0).representative(), kNotFoundIndex);
    EXPECT_FALSE(ranges.representativeX());
}

TEST_F(CategoryRangesTest, AnotherGraphHasItsOwn)
{
    add({1.0F, 2.0F, 3.0F});
    EXPECT_EQ(in(0.0, 9.0).representativeRange().length, 3U);
    const auto other = TOLVGraph::graph();
    ranges.update(*other, 0.0, 9.0);
    EXPECT_EQ(ranges.representative(), kNotFoundIndex);
    EXPECT_EQ(in(0.0, 9.0).representativeRange().length, 3U);
}

TEST_F(CategoryRangesTest, AHostsSamplesAreLookedAtEachTime)
{
    const auto samples = std::make_shared<ChangingSamples>(std::vector<float>{1.0F, 2.0F, 30.0F});
    add({5.0F});
    add(samples);
    EXPECT_EQ(in(0.0, 9.0).ranges(), (Ranges{{0, 1}, {0, 2}}));
    EXPECT_EQ(representativeX(), (std::vector<float>{1.0F, 2.0F}));
    samples->setSample(2, 3.0F);
    samples->setSample(0, 0.5F);
    EXPECT_EQ(in(0.0, 9.0).ranges(), (Ranges{{0, 1}, {0, 3}}));
    EXPECT_EQ(representativeX(), (std::vector<float>{0.5F, 2.0F, 3.0F}));
    EXPECT_EQ(ranges.indexNearestTo(0.6F), 0U);
}

TEST_F(CategoryRangesTest, ARangeThatIsNoNumberHasItsSamplesToo)
{
    const auto series = add({1.0F, 2.0F, 3.0F});
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(in(notANumber, 2.0).ranges(), (Ranges{{0, 2}}));
    EXPECT_FALSE(in(1.5, notANumber).ranges());
    EXPECT_EQ(in(notANumber, notANumber).ranges(), (Ranges{{0, 1}}));
    EXPECT_EQ(in(-std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()).ranges(), (Ranges{{0, 3}}));
}

// The nearest category.

TEST_F(CategoryRangesTest, TheNearestAbscissaIsTheFirstOfSeveral)
{
    struct Row {
        const char* name;
        std::vector<float> x;
        float value;
        std::optional<std::size_t> nearest;
    };
    const Row rows[] = {
        {"between two", {10.0F, 20.0F}, 15.0F, 0},
        {"a run", {10.0F, 20.0F, 20.0F}, 99.0F, 1},
        {"without order", {10.0F, 30.0F, 20.0F, 11.0F}, 12.0F, 3},
        {"descending", {30.0F, 20.0F, 10.0F}, 12.0F, 2},
        {"samples that are no numbers are passed over", {10.0F, kNaN, kNaN, 20.0F}, 19.0F, 3},
        {"no numbers at all", {kNaN, kNaN}, 19.0F, std::nullopt},
        {"a value that is no number", {10.0F, 20.0F}, kNaN, std::nullopt},
        {"infinitely far from all", {10.0F, 20.0F}, kInfinity, 0},
        {"an infinite sample", {10.0F, kInfinity}, 1e30F, 0},
        {"an infinite sample has no distance from itself", {10.0F, kInfinity}, kInfinity, 0},
        {"from one end of all numbers to the other", {-3e38F, 3e38F}, 1e38F, 1},
        {"distances beyond all numbers", {-3e38F, -2e38F}, 3e38F, 0},
    };
    for (const Row& row : rows) {
        graph->clearGraphData();
        const auto x = TOLVRealVector::vectorWithComponents(row.x);
        add(x);
        const double infinity = std::numeric_limits<double>::infinity();
        EXPECT_EQ(in(-infinity, infinity).indexNearestTo(row.value), row.nearest) << row.name;
    }
}

TEST_F(CategoryRangesTest, TheNearestAbscissaIsTheOneThatAScanFinds)
{
    Generated generated(2);
    for (int round = 0; round < 400; ++round) {
        graph->clearGraphData();
        std::vector<float> x(1 + generated.whole(30));
        for (std::size_t i = 0; i < x.size(); ++i)
            x[i] = static_cast<float>(generated.number(-5.0, 5.0)) + (round % 2 == 0 ? static_cast<float>(i) * 10.0F : 0.0F);
        add(x);
        in(-1e6, 1e6);
        ASSERT_EQ(ranges.representativeRange().length, x.size());
        for (int question = 0; question < 10; ++question) {
            const auto value = static_cast<float>(generated.number(-20.0, 320.0));
            const auto expected = nearestIndex(x.size(), [&](std::size_t i) { return std::abs(x[i] - value); });
            ASSERT_EQ(ranges.indexNearestTo(value), expected) << value;
        }
    }
}

} // namespace
} // namespace TOLVGraphing
