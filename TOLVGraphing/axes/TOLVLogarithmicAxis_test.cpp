#include "TOLVLogarithmicAxis.h"

#include "../graph/TOLVGraph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace TOLVGraphing {
namespace {

using Values = TOLVAxis::Values;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kSmallest = std::numeric_limits<double>::denorm_min();
constexpr double kLargest = std::numeric_limits<double>::max();

class TOLVLogarithmicAxisTest : public testing::Test {
protected:
    TOLVLogarithmicAxisTest() { graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>()); }

    TOLVLogarithmicAxis& axis() { return dynamic_cast<TOLVLogarithmicAxis&>(*graph->horizontalAxis()); }

    void prepare(double min, double max, double width)
    {
        graph->extents()->setX(TOLVAxisExtents::extentsWithMin(min, max));
        axis().prepareForDrawingInRect({0.0, 0.0, width, 10.0});
    }

    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
};

/// Ascending and without two values that are one value computed in two ways.
void expectDistinct(const Values& values)
{
    for (std::size_t i = 1; i < values.size(); ++i)
        ASSERT_GT(values[i], values[i - 1] * (1.0 + 1e-12)) << "place " << i;
}

TEST_F(TOLVLogarithmicAxisTest, OnAShortAxisPowersOfTenAreMajor)
{
    EXPECT_EQ(axis().minorValuesDepth(), 0U);
    prepare(1.0, 1000.0, 355.0);
    EXPECT_EQ(axis().minorValuesDepth(), 1U);
    EXPECT_EQ(axis().majorValues(), (Values{1, 10, 100, 1000}));
    EXPECT_EQ(axis().minorValues(), (Values{2, 3, 4, 5, 6, 7, 8, 9, 20, 30, 40, 50, 60, 70, 80, 90, 200, 300, 400, 500, 600, 700, 800, 900}));
}

TEST_F(TOLVLogarithmicAxisTest, OnALongAxisTheirMultiplesAreMajor)
{
    prepare(20.0, 20000.0, 2800.0);
    EXPECT_EQ(axis().minorValuesDepth(), 2U);
    EXPECT_EQ(axis().majorValues(),
        (Values{20, 30, 40, 50, 60, 70, 80, 90, 100, 200, 300, 400, 500, 600, 700, 800, 900, 1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000, 10000, 20000}));
    const Values& minor = axis().minorValues();
    EXPECT_EQ(minor.front(), 21.0);
    EXPECT_EQ(minor.back(), 19000.0);
    EXPECT_EQ(minor.size(), 3U * 81U);
    expectDistinct(minor);
    prepare(20.0, 20000.0, 2700.0);
    EXPECT_EQ(axis().minorValuesDepth(), 1U);
    EXPECT_EQ(axis().majorValues(), (Values{100, 1000, 10000}));
}

TEST_F(TOLVLogarithmicAxisTest, OnlyValuesInsideTheRangeAreListed)
{
    prepare(3.0, 4500.0, 400.0);
    EXPECT_EQ(axis().majorValues(), (Values{10, 100, 1000}));
    EXPECT_EQ(axis().minorValues().front(), 3.0);
    EXPECT_EQ(axis().minorValues().back(), 4000.0);
}

TEST_F(TOLVLogarithmicAxisTest, ARangeInsideOneDecadeHasMinorValuesOnly)
{
    prepare(2.0, 8.0, 100.0);
    EXPECT_EQ(axis().minorValuesDepth(), 1U);
    EXPECT_TRUE(axis().majorValues().empty());
    EXPECT_EQ(axis().minorValues(), (Values{2, 3, 4, 5, 6, 7, 8}));
}

TEST_F(TOLVLogarithmicAxisTest, ASingleValueOrNoneKeepsDepthTwo)
{
    prepare(1.95, 2.05, 1.0);
    EXPECT_EQ(axis().minorValuesDepth(), 2U);
    EXPECT_EQ(axis().majorValues(), (Values{2}));
    EXPECT_TRUE(axis().minorValues().empty());
    prepare(2.01, 2.05, 1.0);
    EXPECT_EQ(axis().minorValuesDepth(), 2U);
    EXPECT_TRUE(axis().majorValues().empty());
}

TEST_F(TOLVLogarithmicAxisTest, AnAxisThatWasNeverPreparedHasNoTicks)
{
    graph->zoomXToFixedMin(1.0F, 1000.0F);
    Values major = {1.0};
    Values minor = {1.0};
    axis().getMajorValues(&major, &minor);
    EXPECT_TRUE(major.empty());
    EXPECT_TRUE(minor.empty());
    axis().getMajorValues(nullptr, nullptr);
}

TEST_F(TOLVLogarithmicAxisTest, RangesThatAreNotPositiveAndFiniteHaveNoTicks)
{
    const double ranges[][2] = {{0.0, 10.0}, {-0.0, 10.0}, {-5.0, 10.0}, {-5.0, -1.0}, {kNaN, 10.0}, {1.0, kNaN}, {1.0, kInfinity}, {kInfinity, kInfinity}, {-kInfinity, kInfinity},
        {10.0, 1.0}, {0.0, 0.0}};
    for (const auto& [min, max] : ranges) {
        SCOPED_TRACE(testing::Message() << min << " to " << max);
        for (const std::uint32_t depth : {0U, 1U, 2U, 7U, 4294967295U})
            EXPECT_TRUE(logRange(depth, min, max).empty());
        prepare(min, max, 400.0);
        EXPECT_TRUE(axis().majorValues().empty());
        EXPECT_TRUE(axis().minorValues().empty());
        EXPECT_TRUE(axis().extents()->max() == max || std::isnan(max));
    }
}

TEST_F(TOLVLogarithmicAxisTest, TheSmallestAndLargestNumbersEndTheirWalk)
{
    for (const double min : {kSmallest, 1e-323, 1e-322, 3e-321, 1e-310, 1e-308, 1e300}) {
        for (const std::uint32_t depth : {0U, 1U, 2U, 3U}) {
            SCOPED_TRACE(testing::Message() << min << " at depth " << depth);
            for (const double max : {min, min * 7.0, kLargest}) {
                const Values values = logRange(depth, min, max);
                EXPECT_LE(values.size(), 640U * 900U);
                EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
                if (!values.empty()) {
                    EXPECT_GE(values.front(), min);
                    EXPECT_LE(values.back(), max);
                }
            }
        }
    }
}

TEST_F(TOLVLogarithmicAxisTest, SixHundredDecadesAreListedAtOnce)
{
    const Values values = logRange(2, 1e-300, 1e300);
    EXPECT_EQ(values.size(), 600U * 90U + 1U);
    expectDistinct(values);
    prepare(1e-300, 1e300, 400.0);
    EXPECT_EQ(axis().minorValuesDepth(), 1U);
}

TEST_F(TOLVLogarithmicAxisTest, FractionalDecadesHaveNeitherStraysNorNearDuplicates)
{
    EXPECT_EQ(logRange(1, 0.1, 1.0).size(), 10U);
    for (int exponent = -20; exponent <= 20; ++exponent) {
        const double start = std::pow(10.0, exponent);
        SCOPED_TRACE(start);
        for (const std::uint32_t depth : {1U, 2U}) {
            const Values values = logRange(depth, start * 0.955, start * 1000.0 * 1.05);
            EXPECT_EQ(values.size(), depth == 1 ? 3U * 9U + 1U : 3U * 90U + 1U + 4U);
            expectDistinct(values);
        }
    }
}

TEST_F(TOLVLogarithmicAxisTest, OfAValueComputedInTwoWaysTheFirstListedIsKept)
{
    // Coarser values are listed first, so they are among the finer ones to the last bit.
    const Values coarse = logRange(1, 1e-20, 1e20);
    const Values fine = logRange(2, 1e-20, 1e20);
    expectDistinct(fine);
    EXPECT_TRUE(std::includes(fine.begin(), fine.end(), coarse.begin(), coarse.end()));
}

TEST_F(TOLVLogarithmicAxisTest, DepthTwoIsChosenBelowOneToo)
{
    prepare(0.01, 0.1, 1200.0);
    EXPECT_EQ(axis().minorValuesDepth(), 2U);
    EXPECT_EQ(axis().majorValues().size(), 10U);
    EXPECT_EQ(axis().minorValues().size(), 81U);
}

TEST_F(TOLVLogarithmicAxisTest, AnAxisWithoutLengthHasDepthOne)
{
    for (const double width : {0.0, -100.0, 1.0}) {
        prepare(1.0, 1000.0, width);
        EXPECT_EQ(axis().minorValuesDepth(), 1U);
        EXPECT_EQ(axis().majorValues().size(), 4U);
    }
}

TEST_F(TOLVLogarithmicAxisTest, AVerticalAxisLooksAtTheHeight)
{
    graph->setVerticalAxis(std::make_shared<TOLVLogarithmicAxis>());
    graph->zoomYToFixedMin(1.0, 1000.0);
    EXPECT_EQ(graph->verticalAxis()->pointForValue(10.0F, {0.0, 20.0, 1.0, 300.0}), 120.0F);
    EXPECT_NEAR(graph->verticalAxis()->valueForPoint(220.0, {0.0, 20.0, 1.0, 300.0}), 100.0, 1e-3);
}

TEST_F(TOLVLogarithmicAxisTest, TheMappingIsNewEachTime)
{
    graph->zoomXToFixedMin(1.0F, 1000.0F);
    const auto mapping = axis().mappingForRect({0.0, 0.0, 300.0, 10.0});
    const auto other = axis().mappingForRect({0.0, 0.0, 30.0, 10.0});
    EXPECT_NE(mapping, other);
    EXPECT_EQ(mapping->pointForValue(10.0F), 100.0F);
    EXPECT_EQ(other->pointForValue(10.0F), 10.0F);
}

TEST_F(TOLVLogarithmicAxisTest, ACopyKeepsTheDepth)
{
    prepare(1.0, 1000.0, 400.0);
    const auto copy = std::dynamic_pointer_cast<TOLVLogarithmicAxis>(axis().copy());
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->minorValuesDepth(), 1U);
}

TEST_F(TOLVLogarithmicAxisTest, TwoHundredZoomStepsStayFiniteAndPositive)
{
    const Rect rect(0.0, 0.0, 355.0, 270.0);
    for (const bool zoomsIn : {true, false}) {
        graph->zoomXToFixedMin(1.0F, 1000.0F);
        for (int step = 0; step < 200; ++step) {
            if (zoomsIn)
                axis().zoomInInRect(rect);
            else
                axis().zoomOutInRect(rect);
            axis().prepareForDrawingInRect(rect);
            ASSERT_TRUE(std::isfinite(axis().extents()->min())) << step;
            ASSERT_TRUE(std::isfinite(axis().extents()->max())) << step;
            ASSERT_GT(axis().extents()->min(), 0.0) << step;
            ASSERT_LE(axis().majorValues().size() + axis().minorValues().size(), 100U * 10U) << step;
        }
    }
}

TEST_F(TOLVLogarithmicAxisTest, FromTheWidestRangeItCanBeZoomedInAgain)
{
    const Rect rect(0.0, 0.0, 355.0, 270.0);
    graph->zoomXToFixedMin(1.0F, 1000.0F);
    for (int step = 0; step < 100; ++step)
        axis().zoomOutInRect(rect);
    EXPECT_LT(axis().extents()->min(), 1e-30);
    EXPECT_GT(axis().extents()->max(), 1e30);
    for (int step = 0; step < 40; ++step)
        axis().zoomInInRect(rect);
    EXPECT_GT(axis().extents()->min(), 1e-3);
    EXPECT_LT(axis().extents()->max(), 1e3);
    EXPECT_LT(axis().extents()->min(), axis().extents()->max());
    const auto former = axis().extents()->copy();
    // Panning below the smallest number is refused as a whole.
    graph->offsetDisplayByX(-1e6F, 0.0F, rect);
    EXPECT_EQ(*axis().extents(), *former);
}

} // namespace
} // namespace TOLVGraphing
