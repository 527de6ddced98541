#include "VisibleSeries.h"

#include "../graph/TOLVGraph.h"

#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/ChangingSamples.h>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::ChangingSamples;

class VisibleSeriesTest : public testing::Test {
protected:
    VisibleSeriesTest() { show(0.0, 10.0); }

    void show(double min, double max) { graph->extents()->setX(TOLVAxisExtents::extentsWithMin(min, max)); }

    void add(TOLVGraphData::Samples x, TOLVGraphData::Samples y) { graph->addGraphData(TOLVGraphData::graphDataWithX(std::move(x), std::move(y), Color::blackColor())); }

    static TOLVGraphData::Samples vectorOf(std::vector<float> numbers) { return TOLVRealVector::vectorWithComponents(std::move(numbers)); }
    static std::vector<float> numbersOf(const TOLVGraphData::Samples& samples) { return {samples->components(), samples->components() + samples->length()}; }

    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
};

TEST_F(VisibleSeriesTest, SeriesAreCutToTheVisibleRangeAndKeepPlaceAndStyle)
{
    add(vectorOf({1.0F, 2.0F, 3.0F, 4.0F}), vectorOf({10.0F, 20.0F, 30.0F, 40.0F}));
    add(vectorOf({3.0F, 5.0F}), vectorOf({31.0F, 51.0F}));
    show(2.0, 3.0);
    const auto visible = visibleSeriesOfGraph(*graph);
    ASSERT_EQ(visible.size(), 2U);
    EXPECT_EQ(visible[0].index, 0U);
    EXPECT_EQ(numbersOf(visible[0].data->X()), (std::vector<float>{2.0F, 3.0F}));
    EXPECT_EQ(numbersOf(visible[0].data->Y()), (std::vector<float>{20.0F, 30.0F}));
    EXPECT_EQ(visible[1].index, 1U);
    EXPECT_EQ(numbersOf(visible[1].data->Y()), (std::vector<float>{31.0F}));
    EXPECT_EQ(visible[1].data->lineStyle(), graph->graphData()[1]->lineStyle());
}

TEST_F(VisibleSeriesTest, SeriesWithoutVectorsAreLeftOutAndTheOthersKeepTheirPositions)
{
    add(nullptr, vectorOf({1.0F}));
    add(vectorOf({1.0F}), vectorOf({1.0F}));
    add(vectorOf({1.0F}), nullptr);
    add(vectorOf({}), vectorOf({}));
    graph->addGraphData(std::make_shared<TOLVGraphData>());
    const auto visible = visibleSeriesOfGraph(*graph);
    ASSERT_EQ(visible.size(), 2U);
    EXPECT_EQ(visible[0].index, 1U);
    EXPECT_EQ(visible[1].index, 3U);
    EXPECT_EQ(visible[1].data->X()->length(), 0U);
}

TEST_F(VisibleSeriesTest, AHostsOwnSamplesAreLeftOut)
{
    const auto samples = std::make_shared<ChangingSamples>(std::vector<float>{1.0F, 2.0F});
    add(samples, vectorOf({1.0F, 2.0F}));
    add(vectorOf({1.0F, 2.0F}), samples);
    add(vectorOf({1.0F, 2.0F}), vectorOf({1.0F, 2.0F}));
    const auto visible = visibleSeriesOfGraph(*graph);
    ASSERT_EQ(visible.size(), 1U);
    EXPECT_EQ(visible[0].index, 2U);
}

TEST_F(VisibleSeriesTest, OneSeriesBetweenItsSamplesTakesAllAway)
{
    add(vectorOf({1.0F, 2.0F, 3.0F}), vectorOf({1.0F, 2.0F, 3.0F}));
    add(vectorOf({1.0F, 3.0F}), vectorOf({1.0F, 3.0F}));
    show(1.5, 2.5);
    EXPECT_TRUE(visibleSeriesOfGraph(*graph).empty());
    // Also one that is left out for its ordinates.
    graph->graphData()[1]->setY(nullptr);
    EXPECT_TRUE(visibleSeriesOfGraph(*graph).empty());
    graph->graphData()[1]->setX(nullptr);
    EXPECT_EQ(visibleSeriesOfGraph(*graph).size(), 1U);
}

TEST_F(VisibleSeriesTest, VectorsOfDifferentLengthsAreCutToWhatTheyHave)
{
    add(vectorOf({1.0F, 2.0F, 3.0F}), vectorOf({10.0F}));
    add(vectorOf({1.0F}), vectorOf({10.0F, 20.0F, 30.0F}));
    const auto visible = visibleSeriesOfGraph(*graph);
    ASSERT_EQ(visible.size(), 2U);
    EXPECT_EQ(visible[0].data->X()->length(), 3U);
    EXPECT_EQ(visible[0].data->Y()->length(), 1U);
    EXPECT_EQ(visible[1].data->X()->length(), 1U);
    EXPECT_EQ(visible[1].data->Y()->length(), 1U);
    show(2.0, 9.0);
    EXPECT_EQ(visibleSeriesOfGraph(*graph)[0].data->Y()->length(), 0U);
}

TEST_F(VisibleSeriesTest, SeriesWithoutARangeAreLeftOut)
{
    add(vectorOf({1.0F, 2.0F, 3.0F}), vectorOf({10.0F, 20.0F, 30.0F}));
    add(vectorOf({1.0F, 2.0F}), vectorOf({11.0F, 21.0F}));
    const std::vector<IndexRange> ranges = {{1, 2}};
    const auto visible = visibleSeriesOfGraph(*graph, ranges);
    ASSERT_EQ(visible.size(), 1U);
    EXPECT_EQ(numbersOf(visible[0].data->Y()), (std::vector<float>{20.0F, 30.0F}));
    const std::vector<IndexRange> more = {{0, 1}, {0, 1}, {0, 1}};
    EXPECT_EQ(visibleSeriesOfGraph(*graph, more).size(), 2U);
    // What reaches past the end is cut off.
    const std::vector<IndexRange> beyond = {{2, 5}, {7, 1}};
    const auto cut = visibleSeriesOfGraph(*graph, beyond);
    ASSERT_EQ(cut.size(), 2U);
    EXPECT_EQ(numbersOf(cut[0].data->X()), (std::vector<float>{3.0F}));
    EXPECT_EQ(cut[1].data->X()->length(), 0U);
}

TEST_F(VisibleSeriesTest, WithoutSeriesThereAreNone)
{
    EXPECT_TRUE(visibleSeriesOfGraph(*graph).empty());
    graph->setExtents(nullptr);
    EXPECT_TRUE(visibleSeriesOfGraph(*graph).empty());
}

} // namespace
} // namespace TOLVGraphing
