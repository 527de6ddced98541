#include "../axes/TOLVLogarithmicAxis.h"
#include "TOLVGraph.h"

#include <TOLVMath/TOLVRealVector.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <variant>
#include <vector>

namespace TOLVGraphing {
namespace {

constexpr float kLargest = std::numeric_limits<float>::max();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

std::shared_ptr<TOLVGraphData> seriesOf(std::vector<float> x, std::vector<float> y)
{
    return TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), Color::blackColor());
}

std::vector<float> elements(const TOLVGraphData::Samples& vector)
{
    return {vector->components(), vector->components() + vector->length()};
}

class TOLVGraphExtremesTest : public testing::Test {
protected:
    void add(std::vector<float> x, std::vector<float> y) { graph->addGraphData(seriesOf(std::move(x), std::move(y))); }
    void setVisible(double min, double max) { graph->extents()->setX(TOLVAxisExtents::extentsWithMin(min, max)); }

    /// The range of the only series.
    std::optional<IndexRange> rangeOf(std::vector<float> x, double min, double max)
    {
        graph->clearGraphData();
        const std::vector<float> y(x.size(), 0.0F);
        add(std::move(x), y);
        setVisible(min, max);
        const auto ranges = graph->xExtentsConstrainedGraphDataRanges();
        return ranges ? std::optional(ranges->front()) : std::nullopt;
    }

    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
};

// Extremes.

TEST_F(TOLVGraphExtremesTest, WithoutSeriesTheyAreTheSentinels)
{
    EXPECT_EQ(graph->minXValue(), 3.4028235e38F);
    EXPECT_EQ(graph->maxXValue(), -3.4028235e38F);
    EXPECT_EQ(graph->minYValue(), 3.4028235e38F);
    EXPECT_EQ(graph->maxYValue(), -3.4028235e38F);
}

TEST_F(TOLVGraphExtremesTest, OfTheAbscissaeTheFirstAndTheLastCount)
{
    add({5.0F, 100.0F, 7.0F}, {0.0F, 0.0F, 0.0F});
    add({2.0F, -100.0F, 6.0F}, {0.0F, 0.0F, 0.0F});
    EXPECT_EQ(graph->minXValue(), 2.0F);
    EXPECT_EQ(graph->maxXValue(), 7.0F);
}

TEST_F(TOLVGraphExtremesTest, SeriesWithoutAbscissaeAreSkipped)
{
    add({}, {1.0F});
    graph->addGraphData(std::make_shared<TOLVGraphData>());
    add({5.0F, 6.0F}, {1.0F, 1.0F});
    add({}, {});
    EXPECT_EQ(graph->minXValue(), 5.0F);
    EXPECT_EQ(graph->maxXValue(), 6.0F);
}

TEST_F(TOLVGraphExtremesTest, ANaNAbscissaGivesWayToTheNextSeries)
{
    add({kNaN, kNaN}, {0.0F, 0.0F});
    EXPECT_TRUE(std::isnan(graph->minXValue()));
    EXPECT_EQ(graph->maxXValue(), -kLargest);
    add({5.0F, 6.0F}, {0.0F, 0.0F});
    EXPECT_EQ(graph->minXValue(), 5.0F);
    EXPECT_EQ(graph->maxXValue(), 6.0F);
}

TEST_F(TOLVGraphExtremesTest, OfTheOrdinatesAllCountExceptNaN)
{
    add({0.0F, 1.0F, 2.0F}, {4.0F, kNaN, 9.0F});
    add({0.0F}, {6.0F});
    EXPECT_EQ(graph->minYValue(), 4.0F);
    EXPECT_EQ(graph->maxYValue(), 9.0F);
}

TEST_F(TOLVGraphExtremesTest, SeriesWithoutOrdinatesChangeNothing)
{
    add({0.0F}, {});
    add({0.0F}, {kNaN});
    EXPECT_EQ(graph->minYValue(), kLargest);
    EXPECT_EQ(graph->maxYValue(), -kLargest);
    add({0.0F}, {-2.0F});
    add({0.0F}, {});
    graph->addGraphData(std::make_shared<TOLVGraphData>());
    EXPECT_EQ(graph->minYValue(), -2.0F);
    EXPECT_EQ(graph->maxYValue(), -2.0F);
}

TEST_F(TOLVGraphExtremesTest, FittingExtentsAreNewAndWidenTheFloats)
{
    add({0.1F, 0.7F}, {-0.3F, 0.9F});
    setVisible(5.0, 6.0);
    const auto extents = graph->extentsFittingGraphData();
    EXPECT_EQ(extents->x()->min(), static_cast<double>(0.1F));
    EXPECT_EQ(extents->x()->max(), static_cast<double>(0.7F));
    EXPECT_EQ(extents->y()->min(), static_cast<double>(-0.3F));
    EXPECT_EQ(extents->y()->max(), static_cast<double>(0.9F));
    EXPECT_EQ(toString(*extents->z()), "[0, 0]");
    EXPECT_EQ(toString(*graph->extents()->x()), "[5, 6]");
    EXPECT_FALSE(extents->graph());
}

// Validation.

TEST_F(TOLVGraphExtremesTest, AnEndThatWouldEmptyTheRangeIsReplacedByTheCurrentOne)
{
    struct Case {
        const char* keyPath;
        double proposed;
        double expected;
    };
    graph->extents()->setX(TOLVAxisExtents::extentsWithMin(1.0, 5.0));
    graph->extents()->setY(TOLVAxisExtents::extentsWithMin(-2.0, 2.0));
    const Case cases[] = {
        {"x.min", 10.0, 1.0},
        {"x.min", 5.0, 1.0},
        {"x.min", 4.999, 4.999},
        {"x.min", -100.0, -100.0},
        {"x.max", 0.0, 5.0},
        {"x.max", 1.0, 5.0},
        {"x.max", 1.001, 1.001},
        {"y.min", 2.0, -2.0},
        {"y.min", 1.0, 1.0},
        {"y.max", -2.0, 2.0},
        {"y.max", -1.0, -1.0},
        {"z.min", 1e300, 1e300},
        {"x", 77.0, 77.0},
        {"x.", 77.0, 77.0},
        {"x.middle", 77.0, 77.0},
        {"", 77.0, 77.0},
    };
    for (const Case& one : cases) {
        PropertyValue value = one.proposed;
        std::string error = "untouched";
        EXPECT_TRUE(graph->validateExtentsValue(value, one.keyPath, &error)) << one.keyPath;
        EXPECT_EQ(std::get<double>(value), one.expected) << one.keyPath << " " << one.proposed;
        EXPECT_EQ(error, "untouched");
    }
    // Nothing is stored by asking.
    EXPECT_EQ(toString(*graph->extents()), "x [1, 5] y [-2, 2] z [0, 0]");
}

TEST_F(TOLVGraphExtremesTest, WholeNumbersAreNumbersToo)
{
    graph->extents()->setX(TOLVAxisExtents::extentsWithMin(1.0, 5.0));
    PropertyValue value = std::int64_t{4};
    EXPECT_TRUE(graph->validateExtentsValue(value, "x.min"));
    EXPECT_EQ(std::get<std::int64_t>(value), 4);
    value = std::int64_t{9};
    EXPECT_TRUE(graph->validateExtentsValue(value, "x.min"));
    EXPECT_EQ(std::get<double>(value), 1.0);
}

TEST_F(TOLVGraphExtremesTest, WhatIsNoNumberFails)
{
    for (const PropertyValue& proposed : {PropertyValue(), PropertyValue(std::string("5"))}) {
        PropertyValue value = proposed;
        EXPECT_FALSE(graph->validateExtentsValue(value, "y.max"));
        EXPECT_EQ(value, proposed);
    }
}

TEST_F(TOLVGraphExtremesTest, NaNIsAcceptedAsItIs)
{
    graph->extents()->setX(TOLVAxisExtents::extentsWithMin(1.0, 5.0));
    graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
    for (const char* keyPath : {"x.min", "x.max"}) {
        PropertyValue value = std::numeric_limits<double>::quiet_NaN();
        EXPECT_TRUE(graph->validateExtentsValue(value, keyPath));
        EXPECT_TRUE(std::isnan(std::get<double>(value))) << keyPath;
    }
}

TEST_F(TOLVGraphExtremesTest, OnALogarithmicAxisAnEndThatIsNotPositiveBecomesOne)
{
    class Subclass final : public TOLVLogarithmicAxis {
    public:
        using TOLVLogarithmicAxis::TOLVLogarithmicAxis;
        std::shared_ptr<TOLVAxis> copy() const override { return std::make_shared<Subclass>(); }
    };
    for (const std::shared_ptr<TOLVAxis>& axis : {std::shared_ptr<TOLVAxis>(std::make_shared<TOLVLogarithmicAxis>()), std::shared_ptr<TOLVAxis>(std::make_shared<Subclass>())}) {
        graph->setHorizontalAxis(axis);
        graph->setVerticalAxis(axis);
        for (const std::string side : {"x", "y"}) {
            graph->extents()->setX(TOLVAxisExtents::extentsWithMin(0.5, 100.0));
            graph->extents()->setY(TOLVAxisExtents::extentsWithMin(0.5, 100.0));
            for (const double proposed : {-3.0, 0.0, -0.0}) {
                PropertyValue value = proposed;
                EXPECT_TRUE(graph->validateExtentsValue(value, side + ".min"));
                EXPECT_EQ(std::get<std::int64_t>(value), 1) << side << proposed;
            }
            // The comparison is made with the value as proposed: a maximum of -3 stays below the minimum.
            PropertyValue value = -3.0;
            EXPECT_TRUE(graph->validateExtentsValue(value, side + ".max"));
            EXPECT_EQ(std::get<double>(value), 100.0);
        }
    }
}

TEST_F(TOLVGraphExtremesTest, AReplacedOneMayLieBeyondTheCurrentMaximum)
{
    // The comparison looks at the -3 that was proposed, so the 1 passes although the range ends at 0.75.
    graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
    graph->extents()->setX(TOLVAxisExtents::extentsWithMin(0.5, 0.75));
    PropertyValue value = -3.0;
    EXPECT_TRUE(graph->validateExtentsValue(value, "x.min"));
    EXPECT_EQ(std::get<std::int64_t>(value), 1);
}

TEST_F(TOLVGraphExtremesTest, ALinearAxisTakesAnySign)
{
    graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
    graph->extents()->setY(TOLVAxisExtents::extentsWithMin(1.0, 5.0));
    PropertyValue value = -3.0;
    EXPECT_TRUE(graph->validateExtentsValue(value, "y.min"));
    EXPECT_EQ(std::get<double>(value), -3.0);
}

TEST_F(TOLVGraphExtremesTest, WithoutExtentsOrAxesEveryNumberPasses)
{
    graph->setExtents(nullptr);
    graph->setHorizontalAxis(nullptr);
    PropertyValue value = -3.0;
    EXPECT_TRUE(graph->validateExtentsValue(value, "x.min"));
    EXPECT_EQ(std::get<double>(value), -3.0);
}

// Visible ranges.

TEST_F(TOLVGraphExtremesTest, TheVisibleRangeGoesFromTheFirstNotBelowToTheLastNotAbove)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
    const std::vector<float> five = {1.0F, 2.0F, 3.0F, 4.0F, 5.0F};
    struct Case {
        const char* name;
        std::vector<float> x;
        double min;
        double max;
        std::optional<IndexRange> expected;
    };
    const Case cases[] = {
        {"inside", five, 2.5, 4.5, IndexRange{2, 2}},
        {"all", five, 0.0, 9.0, IndexRange{0, 5}},
        {"ends included", five, 2.0, 4.0, IndexRange{1, 3}},
        {"all data to the left", five, 10.0, 20.0, IndexRange{0, 5}},
        {"all data to the right", {1.0F, 2.0F, 3.0F}, -5.0, -1.0, IndexRange{0, 1}},
        {"between two samples", five, 3.5, 3.6, std::nullopt},
        {"first sample only", five, 0.0, 1.0, IndexRange{0, 1}},
        {"one sample, visible", {1.0F}, 0.0, 2.0, IndexRange{0, 1}},
        {"one sample, left", {1.0F}, 5.0, 6.0, IndexRange{0, 1}},
        {"one sample, right", {1.0F}, -5.0, -4.0, IndexRange{0, 1}},
        {"no samples", {}, 0.0, 1.0, IndexRange{0, 0}},
        {"reversed", five, 4.0, 2.0, std::nullopt},
        {"infinite", five, -kInfinity, kInfinity, IndexRange{0, 5}},
        {"NaN minimum", five, kNotANumber, 3.0, IndexRange{0, 3}},
        {"NaN maximum", five, 2.0, kNotANumber, std::nullopt},
        {"NaN samples are never in range", {kNaN, 2.0F, 3.0F, kNaN}, 0.0, 9.0, IndexRange{1, 2}},
        {"compared in double precision", {0.1F, 0.2F}, 0.1, 1.0, IndexRange{0, 2}},
        {"compared in double precision, above", {0.1F, 0.7F}, 0.7, 1.0, IndexRange{0, 2}},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.name);
        const auto found = rangeOf(one.x, one.min, one.max);
        ASSERT_EQ(found.has_value(), one.expected.has_value());
        if (found) {
            EXPECT_EQ(found->location, one.expected->location);
            EXPECT_EQ(found->length, one.expected->length);
        }
    }
}

TEST_F(TOLVGraphExtremesTest, OneSeriesBetweenItsSamplesTakesAllRangesAway)
{
    add({1.0F, 2.0F, 3.0F}, {0.0F, 0.0F, 0.0F});
    add({1.0F, 3.0F}, {0.0F, 0.0F});
    setVisible(1.5, 2.5);
    EXPECT_FALSE(graph->xExtentsConstrainedGraphDataRanges());
    setVisible(1.5, 3.5);
    EXPECT_EQ(graph->graphDataRangesConstrainedByXExtents(), (std::vector<IndexRange>{{1, 2}, {1, 1}}));
}

TEST_F(TOLVGraphExtremesTest, AnEmptySeriesDoesNotAbortTheList)
{
    add({1.0F, 2.0F, 3.0F}, {10.0F, 20.0F, 30.0F});
    add({}, {});
    setVisible(1.5, 9.0);
    const auto visible = graph->graphDataConstrainedByXExtents();
    ASSERT_EQ(visible.size(), 2U);
    EXPECT_EQ(elements(visible[0]->X()), (std::vector<float>{2.0F, 3.0F}));
    EXPECT_EQ(elements(visible[0]->Y()), (std::vector<float>{20.0F, 30.0F}));
    EXPECT_EQ(visible[1]->X()->length(), 0U);
    EXPECT_EQ(visible[1]->Y()->length(), 0U);
}

TEST_F(TOLVGraphExtremesTest, VisibleSeriesKeepTheirStyleOnly)
{
    add({1.0F, 2.0F}, {10.0F, 20.0F});
    graph->graphData()[0]->setName("name");
    setVisible(0.0, 9.0);
    const auto visible = graph->graphDataConstrainedByXExtents();
    ASSERT_EQ(visible.size(), 1U);
    EXPECT_EQ(visible[0]->lineStyle(), graph->graphData()[0]->lineStyle());
    EXPECT_FALSE(visible[0]->name());
}

TEST_F(TOLVGraphExtremesTest, OrdinatesThatEndEarlierAreCutShort)
{
    add({1.0F, 2.0F, 3.0F}, {10.0F});
    setVisible(0.0, 9.0);
    const auto visible = graph->graphDataConstrainedByXExtents();
    EXPECT_EQ(elements(visible[0]->Y()), (std::vector<float>{10.0F}));
}

TEST_F(TOLVGraphExtremesTest, WithoutSeriesTheListIsEmpty)
{
    ASSERT_TRUE(graph->xExtentsConstrainedGraphDataRanges());
    EXPECT_TRUE(graph->xExtentsConstrainedGraphDataRanges()->empty());
    EXPECT_TRUE(graph->graphDataConstrainedByXExtents().empty());
}

using TOLVGraphExtremesDeathTest = TOLVGraphExtremesTest;

TEST_F(TOLVGraphExtremesDeathTest, WhereThereAreNoRangesTheProgramStops)
{
    add({1.0F, 2.0F}, {0.0F, 0.0F});
    setVisible(1.4, 1.6);
    EXPECT_FALSE(graph->xExtentsConstrainedGraphDataRanges());
    EXPECT_DEATH((void)graph->graphDataRangesConstrainedByXExtents(), "");
    EXPECT_DEATH((void)graph->graphDataConstrainedByXExtents(), "");
}

} // namespace
} // namespace TOLVGraphing
