#include "TOLVLinearAxis.h"

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

/// Ten steps and both ends, and half as many again where rounding makes the steps uneven.
constexpr std::size_t kMostMajorValues = 17;
constexpr std::size_t kMostMinorValues = 160;

struct Ticks {
    double majorStep;
    double minorStep;
    Values major;
    Values minor;
};

class TOLVLinearAxisTest : public testing::Test {
protected:
    TOLVLinearAxis& axis() { return dynamic_cast<TOLVLinearAxis&>(*graph->horizontalAxis()); }

    Ticks ticks(double min, double max, double width)
    {
        graph->extents()->setX(TOLVAxisExtents::extentsWithMin(min, max));
        axis().prepareForDrawingInRect({0.0, 0.0, width, 10.0});
        return {axis().majorStep(), axis().minorStep(), axis().majorValues(), axis().minorValues()};
    }

    static bool isAscending(const Values& values) { return std::is_sorted(values.begin(), values.end()); }

    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
};

TEST_F(TOLVLinearAxisTest, HasNoStepsBeforeThePreparation)
{
    const TOLVLinearAxis fresh;
    EXPECT_EQ(fresh.majorStep(), 0.0);
    EXPECT_EQ(fresh.minorStep(), 0.0);
    ASSERT_TRUE(fresh.valueMap());
    Values major = {1.0};
    Values minor = {1.0};
    fresh.getMajorValues(&major, &minor);
    EXPECT_TRUE(major.empty());
    EXPECT_TRUE(minor.empty());
}

TEST_F(TOLVLinearAxisTest, ZeroToOneHasTenths)
{
    const Ticks found = ticks(0.0, 1.0, 400.0);
    EXPECT_EQ(found.majorStep, 1.0);
    EXPECT_EQ(found.minorStep, 0.1);
    EXPECT_EQ(found.major, (Values{0.0, 1.0}));
    EXPECT_EQ(found.minor, (Values{1 * 0.1, 2 * 0.1, 3 * 0.1, 4 * 0.1, 5 * 0.1, 6 * 0.1, 7 * 0.1, 8 * 0.1, 9 * 0.1}));
}

TEST_F(TOLVLinearAxisTest, ARangeJustBelowTenHasTenMajorValues)
{
    const Ticks found = ticks(0.0, 9.99, 400.0);
    EXPECT_EQ(found.majorStep, 1.0);
    EXPECT_EQ(found.major, (Values{0.0, 1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0}));
}

TEST_F(TOLVLinearAxisTest, TheNearestMultipleBelowTheRangeIsKept)
{
    const Ticks found = ticks(3.0, 47.0, 400.0);
    EXPECT_EQ(found.majorStep, 10.0);
    EXPECT_EQ(found.major, (Values{0.0, 10.0, 20.0, 30.0, 40.0}));
}

TEST_F(TOLVLinearAxisTest, MinorStepsAreTheFinestThatStandFourPointsApart)
{
    struct Case {
        double width;
        double minorStep;
    };
    // 100 / 40 = 2.5 data units are 1 point, and so on: the step of 10 becomes 1, 2, 5 or 10.
    const Case cases[] = {{400.0, 10.0}, {40.0, 10.0}, {39.99, 20.0}, {20.0, 20.0}, {19.99, 50.0}, {8.0, 50.0}, {7.99, 100.0}, {4.0, 100.0}, {3.0, 100.0}, {0.0, 100.0},
        {-50.0, 100.0}, {kNaN, 100.0}};
    for (const Case& one : cases) {
        const Ticks found = ticks(0.0, 100.0, one.width);
        EXPECT_EQ(found.majorStep, 100.0);
        EXPECT_EQ(found.minorStep, one.minorStep) << one.width;
    }
}

TEST_F(TOLVLinearAxisTest, OnAShortAxisNoMinorValuesRemain)
{
    const Ticks found = ticks(0.0, 9.0, 20.0);
    EXPECT_EQ(found.minorStep, found.majorStep);
    EXPECT_EQ(found.major.size(), 10U);
    EXPECT_TRUE(found.minor.empty());
}

TEST_F(TOLVLinearAxisTest, ExtentsOfZeroWidthGiveNoTicks)
{
    for (const double value : {0.0, 5.0, -3.0, 1e30, 1e-40}) {
        const Ticks found = ticks(value, value, 400.0);
        EXPECT_EQ(found.majorStep, 0.0);
        EXPECT_EQ(found.minorStep, 0.0);
        EXPECT_TRUE(found.major.empty());
        EXPECT_TRUE(found.minor.empty());
    }
    // Ends that are one float are no range either.
    EXPECT_TRUE(ticks(1.0, 1.0 + 1e-12, 400.0).major.empty());
}

TEST_F(TOLVLinearAxisTest, ReversedExtentsGiveNoTicks)
{
    const Ticks found = ticks(5.0, 1.0, 400.0);
    EXPECT_TRUE(found.major.empty());
    EXPECT_TRUE(found.minor.empty());
}

TEST_F(TOLVLinearAxisTest, ListedValuesAreWholeMultiplesHoweverLongTheWalk)
{
    axis().setMajorStep(0.1);
    axis().setMinorStep(0.025);
    graph->zoomXToFixedMin(0.0F, 1000.0F);
    Values major;
    Values minor;
    axis().getMajorValues(&major, &minor);
    ASSERT_GT(major.size(), 9000U);
    ASSERT_GT(minor.size(), 20000U);
    for (const double value : major)
        ASSERT_EQ(value, std::rint(value / 0.1) * 0.1);
    for (const double value : minor)
        ASSERT_EQ(value, std::rint(value / 0.025) * 0.025);
}

TEST_F(TOLVLinearAxisTest, MinorValuesRepeatNoMajorOne)
{
    const Ticks found = ticks(-25.0, 25.0, 400.0);
    for (const double value : found.minor)
        EXPECT_FALSE(std::binary_search(found.major.begin(), found.major.end(), value)) << value;
    EXPECT_EQ(found.major, (Values{-20.0, -10.0, 0.0, 10.0, 20.0}));
}

TEST_F(TOLVLinearAxisTest, TheUpperEndOfZeroToOneTenthIsAMinorValue)
{
    // The major step is the float nearest to 0.1, which lies above the range; the running sum of the minor steps does not.
    const Ticks found = ticks(0.0, 0.1, 400.0);
    EXPECT_EQ(found.majorStep, static_cast<double>(0.1F));
    EXPECT_EQ(found.major, (Values{0.0}));
    EXPECT_EQ(found.minor.size(), 10U);
    EXPECT_EQ(found.minor.back(), static_cast<double>(0.1F));
}

TEST_F(TOLVLinearAxisTest, MinusZeroIsListedForRangesAcrossZero)
{
    const Ticks found = ticks(-4.0, 100.0, 400.0);
    ASSERT_FALSE(found.major.empty());
    EXPECT_EQ(found.major.front(), 0.0);
    EXPECT_TRUE(std::signbit(found.major.front()));
}

TEST_F(TOLVLinearAxisTest, ARangeFinerThanTheNumbersEndsItsWalk)
{
    // One step beyond 2^24 is half of what the numbers can tell apart: the second value is the first one again.
    EXPECT_EQ(ticks(16777216.0, 16777218.0, 400.0).major, (Values{16777216.0}));
    const double ranges[][2] = {{-16777218.0, -16777216.0}, {1e30, 1.000001e30}, {-1.000001e30, -1e30}, {99999992.0, 100000000.0}};
    for (const auto& [min, max] : ranges) {
        const Ticks found = ticks(min, max, 400.0);
        EXPECT_LE(found.major.size(), kMostMajorValues);
        EXPECT_LE(found.minor.size(), kMostMinorValues);
        EXPECT_TRUE(isAscending(found.major));
        EXPECT_TRUE(isAscending(found.minor));
    }
}

TEST_F(TOLVLinearAxisTest, EveryRangeGivesAShortAscendingList)
{
    const double ends[] = {kNaN, kInfinity, -kInfinity, 0.0, -0.0, kSmallest, -kSmallest, 1e-45, 3e-45, 1e-40, 1e-38, 1e-10, 1.0, 1.0000001, 1e7, 16777216.0, 16777218.0, 1e20,
        3.4e38, -3.4e38, 3.5e38, kLargest, -kLargest};
    for (const double min : ends) {
        for (const double max : ends) {
            for (const double width : {400.0, 1e9, 0.0, kInfinity}) {
                SCOPED_TRACE(testing::Message() << min << " to " << max << " over " << width);
                const Ticks found = ticks(min, max, width);
                EXPECT_LE(found.major.size(), kMostMajorValues);
                EXPECT_LE(found.minor.size(), kMostMinorValues);
                EXPECT_TRUE(isAscending(found.major));
                EXPECT_TRUE(isAscending(found.minor));
            }
        }
    }
}

TEST_F(TOLVLinearAxisTest, StepsSetFromOutsideCannotExhaustTheMemory)
{
    graph->extents()->setX(TOLVAxisExtents::extentsWithMin(0.0, 16777216.0));
    for (const double step : {1e-3, 1.0, 0.0, -1.0, kNaN, kInfinity, kSmallest}) {
        axis().setMajorStep(step);
        axis().setMinorStep(step);
        Values major;
        Values minor;
        axis().getMajorValues(&major, &minor);
        EXPECT_LE(major.size(), 1000000U) << step;
        EXPECT_TRUE(minor.empty()) << step;
    }
}

TEST_F(TOLVLinearAxisTest, MissingTargetsAreSkipped)
{
    graph->zoomXToFixedMin(0.0F, 1.0F);
    axis().updateStepsInRect({0.0, 0.0, 400.0, 10.0});
    Values minor;
    axis().getMajorValues(nullptr, &minor);
    EXPECT_EQ(minor.size(), 9U);
    axis().getMajorValues(nullptr, nullptr);
}

TEST_F(TOLVLinearAxisTest, AVerticalAxisLooksAtTheHeight)
{
    auto& vertical = dynamic_cast<TOLVLinearAxis&>(*graph->verticalAxis());
    graph->zoomYToFixedMin(0.0, 1.0);
    vertical.updateStepsInRect({0.0, 0.0, 4.0, 400.0});
    EXPECT_EQ(vertical.minorStep(), 0.1);
    EXPECT_EQ(vertical.pointForValue(0.5F, {1.0, 20.0, 4.0, 400.0}), 220.0F);
    EXPECT_EQ(vertical.valueForPoint(120.0, {1.0, 20.0, 4.0, 400.0}), 0.25F);
}

TEST_F(TOLVLinearAxisTest, TheMappingIsItsOwnObjectSetUpAnew)
{
    graph->zoomXToFixedMin(0.0F, 10.0F);
    const auto mapping = axis().mappingForRect({100.0, 0.0, 200.0, 10.0});
    EXPECT_EQ(mapping, axis().valueMap());
    EXPECT_EQ(mapping->minPoint(), 100.0F);
    EXPECT_EQ(mapping->maxPoint(), 300.0F);
    EXPECT_EQ(mapping->minValue(), 0.0F);
    EXPECT_EQ(mapping->maxValue(), 10.0F);
    EXPECT_EQ(axis().mappingForRect({0.0, 0.0, 50.0, 10.0}), mapping);
    EXPECT_EQ(mapping->maxPoint(), 50.0F);
}

TEST_F(TOLVLinearAxisTest, TheMappingIsSharedAndNeverMissing)
{
    const auto mapping = std::make_shared<TOLVLinearMapping>();
    axis().setValueMap(mapping);
    EXPECT_EQ(axis().mappingForRect({0.0, 0.0, 50.0, 10.0}), mapping);
    axis().setValueMap(nullptr);
    ASSERT_TRUE(axis().valueMap());
    EXPECT_NE(axis().valueMap(), mapping);
    graph->zoomXToFixedMin(0.0F, 10.0F);
    EXPECT_EQ(axis().pointForValue(5.0F, {0.0, 0.0, 50.0, 10.0}), 25.0F);
}

TEST_F(TOLVLinearAxisTest, ACopyHasItsOwnMappingAndNoSteps)
{
    (void)ticks(0.0, 10.0, 400.0);
    const auto copy = std::dynamic_pointer_cast<TOLVLinearAxis>(axis().copy());
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->majorStep(), 0.0);
    EXPECT_EQ(copy->minorStep(), 0.0);
    EXPECT_NE(copy->valueMap(), axis().valueMap());
    EXPECT_EQ(copy->valueMap()->maxPoint(), axis().valueMap()->maxPoint());
    EXPECT_EQ(copy->pointForValue(5.0F, {0.0, 0.0, 400.0, 10.0}), 200.0F);
}

TEST_F(TOLVLinearAxisTest, TwoHundredZoomStepsStayFiniteAndShort)
{
    const Rect rect(0.0, 0.0, 355.0, 270.0);
    for (const bool zoomsIn : {true, false}) {
        for (const double point : {177.5, 0.0, 355.0, 40.0}) {
            graph->zoomXToFixedMin(0.0F, 100.0F);
            for (int step = 0; step < 200; ++step) {
                if (zoomsIn)
                    axis().zoomInCenteredAtPoint(point, rect);
                else
                    axis().zoomOutCenteredAtPoint(point, rect);
                axis().prepareForDrawingInRect(rect);
                ASSERT_TRUE(std::isfinite(axis().extents()->min())) << step;
                ASSERT_TRUE(std::isfinite(axis().extents()->max())) << step;
                ASSERT_LE(axis().extents()->min(), axis().extents()->max()) << step;
                ASSERT_LE(axis().majorValues().size(), kMostMajorValues) << step;
                ASSERT_LE(axis().minorValues().size(), kMostMinorValues) << step;
            }
        }
    }
}

TEST_F(TOLVLinearAxisTest, AtTheEndOfTheNumbersEveryTickIsANumber)
{
    graph->zoomXToFixedMin(-3.3e38F, 6e36F);
    axis().prepareForDrawingInRect({0.0, 0.0, 50.0, 10.0});
    EXPECT_EQ(axis().majorStep(), static_cast<double>(1e38F));
    EXPECT_EQ(axis().minorStep(), static_cast<double>(1e38F) / 2.0);
    EXPECT_EQ(axis().majorValues().size(), 4U);
    EXPECT_EQ(axis().minorValues().size(), 3U);
    for (const double value : axis().minorValues())
        EXPECT_TRUE(std::isfinite(value));
}

TEST_F(TOLVLinearAxisTest, TheOrdinaryZoomThatOutrunsTheNumbersStillHasAnEnd)
{
    const Rect rect(0.0, 0.0, 355.0, 270.0);
    graph->zoomXToFixedMin(0.0F, 100.0F);
    for (int step = 0; step < 86; ++step)
        axis().zoomInInRect(rect);
    axis().prepareForDrawingInRect(rect);
    EXPECT_LT(axis().extents()->max() - axis().extents()->min(), 1e-4);
    EXPECT_LE(axis().majorValues().size() + axis().minorValues().size(), kMostMajorValues + kMostMinorValues);
}

} // namespace
} // namespace TOLVGraphing
