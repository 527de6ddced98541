#include "MarkerCallouts.h"

#include "../axes/TOLVLogarithmicAxis.h"
#include "../graph/TOLVGraph.h"

#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/DrawnLines.h>

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::EvenTextScope;
using Lines = std::vector<std::string>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
/// The data area is (0, 0, 100, 100) and values are positions.
const Rect kRect(0.0, 0.0, 100.0, 100.0);

/// Has a text for positive numbers only.
class PositiveFormatter final : public NumberFormatter {
public:
    std::optional<std::string> stringFromNumber(double number) const override { return number > 0.0 ? NumberFormatter::stringFromNumber(number) : std::nullopt; }
    std::shared_ptr<NumberFormatter> copy() const override { return std::make_shared<PositiveFormatter>(*this); }
};

/// A host's own vector class.
class ForeignSamples final : public TOLVAxisData {
public:
    std::size_t length() const override { return 2; }
    const float* components() const override { return m_samples; }
    bool getMinimum(float*, std::size_t*) const override { return false; }
    bool getMaximum(float*, std::size_t*) const override { return false; }

private:
    float m_samples[2] = {0.0F, 100.0F};
};

class MarkerCalloutsTest : public testing::Test {
protected:
    MarkerCalloutsTest()
    {
        graph->setMargin({});
        graph->zoomXToFixedMin(0.0F, 100.0F);
        graph->zoomYToFixedMin(0.0, 100.0);
    }

    void add(std::vector<float> x, std::vector<float> y)
    {
        graph->addGraphData(
            TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), Color(1.0, 0.0, 0.0)));
    }

    std::vector<GraphCallout> calloutsAt(double value) const
    {
        std::vector<GraphCallout> callouts;
        for (const MarkerCallout& one : calloutsForMarker(TOLVMarker(value), *graph, kRect))
            callouts.push_back(one.callout);
        return callouts;
    }

    /// Those that overlap none kept before them.
    std::vector<GraphCallout> keptCalloutsAt(double value) const
    {
        const auto callouts = calloutsForMarker(TOLVMarker(value), *graph, kRect);
        const auto overlapped = overlappedCallouts(callouts);
        std::vector<GraphCallout> kept;
        for (std::size_t i = 0; i < callouts.size(); ++i) {
            if (!overlapped[i])
                kept.push_back(callouts[i].callout);
        }
        return kept;
    }

    static Lines textsOf(const std::vector<GraphCallout>& callouts)
    {
        Lines texts;
        for (const GraphCallout& callout : callouts)
            texts.push_back(callout.label->label().string());
        return texts;
    }

    Lines textsAt(double value) const { return textsOf(calloutsAt(value)); }

    EvenTextScope text;
    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
};

TEST_F(MarkerCalloutsTest, ShowTheInterpolatedValueOfEachSeriesInOrder)
{
    add({0.0F, 100.0F}, {0.0F, 50.0F});
    add({0.0F, 50.0F, 100.0F}, {20.0F, 80.0F, 20.0F});
    EXPECT_EQ(textsAt(25.0), (Lines{"12.5", "50"}));
    const auto callouts = calloutsAt(25.0);
    EXPECT_EQ(callouts[0].lineStyle, graph->graphData()[0]->lineStyle());
    EXPECT_EQ(callouts[1].lineStyle, graph->graphData()[1]->lineStyle());
}

TEST_F(MarkerCalloutsTest, TheTextStandsCentredThreePointsAboveTheDataPoint)
{
    add({0.0F, 100.0F}, {0.0F, 25.0F});
    const auto callouts = calloutsAt(50.0);
    ASSERT_EQ(callouts.size(), 1U);
    // "12.5" is 24 points wide and stands at y 12.5 + 3, then snapped to a whole point.
    EXPECT_EQ(toString(callouts[0].label->rect()), "(38, 15, 24, 12)");
}

TEST_F(MarkerCalloutsTest, HalfTheWidthIsRoundedDown)
{
    add({0.0F, 100.0F}, {50.0F, 50.0F});
    graph->setTickLabelAttributes(makeTextAttributes(Font{"Helvetica", 9.0}));
    const auto callouts = calloutsAt(50.0);
    ASSERT_EQ(callouts.size(), 1U);
    // "50" is 9 points wide.
    EXPECT_EQ(callouts[0].label->rect().x(), 46.0);
    EXPECT_EQ(callouts[0].label->rect().width(), 9.0);
}

TEST_F(MarkerCalloutsTest, TheTextHasTheTickLabelAttributesInTheSeriesColour)
{
    add({0.0F, 100.0F}, {50.0F, 50.0F});
    const auto callouts = calloutsAt(50.0);
    ASSERT_EQ(callouts.size(), 1U);
    EXPECT_EQ(callouts[0].label->label().attributes(), (TextAttributes{Font{"HelveticaNeue-Light", 12.0}, Color(1.0, 0.0, 0.0)}));
    graph->setTickLabelAttributes(nullptr);
    EXPECT_EQ(calloutsAt(50.0)[0].label->label().attributes(), (TextAttributes{std::nullopt, Color(1.0, 0.0, 0.0)}));
}

TEST_F(MarkerCalloutsTest, AMarkerOutsideTheFirstSeriesHasNoneAtAll)
{
    add({40.0F, 60.0F}, {10.0F, 10.0F});
    add({0.0F, 100.0F}, {90.0F, 90.0F});
    EXPECT_TRUE(textsAt(39.0).empty());
    EXPECT_TRUE(textsAt(61.0).empty());
    EXPECT_TRUE(textsAt(-kInfinity).empty());
    EXPECT_EQ(textsAt(40.0), (Lines{"10", "90"}));
    EXPECT_EQ(textsAt(60.0), (Lines{"10", "90"}));
}

TEST_F(MarkerCalloutsTest, ASeriesThatTheMarkerLiesOutsideEndsTheCollection)
{
    add({0.0F, 100.0F}, {10.0F, 10.0F});
    add({40.0F, 60.0F}, {50.0F, 50.0F});
    add({0.0F, 100.0F}, {90.0F, 90.0F});
    EXPECT_EQ(textsAt(20.0), (Lines{"10"}));
    EXPECT_EQ(textsAt(50.0), (Lines{"10", "50", "90"}));
}

TEST_F(MarkerCalloutsTest, AnEmptySeriesEndsTheCollectionToo)
{
    add({}, {});
    add({0.0F, 100.0F}, {90.0F, 90.0F});
    EXPECT_TRUE(textsAt(50.0).empty());
}

TEST_F(MarkerCalloutsTest, SeriesWithoutVectorsAreSkipped)
{
    graph->addGraphData(std::make_shared<TOLVGraphData>());
    const auto foreign = std::make_shared<ForeignSamples>();
    const auto own = TOLVRealVector::vectorWithComponents({0.0F, 100.0F});
    graph->addGraphData(TOLVGraphData::graphDataWithX(foreign, own, Color()));
    graph->addGraphData(TOLVGraphData::graphDataWithX(own, foreign, Color()));
    graph->addGraphData(TOLVGraphData::graphDataWithX(own, nullptr, Color()));
    add({0.0F, 100.0F}, {90.0F, 90.0F});
    EXPECT_EQ(textsAt(50.0), (Lines{"90"}));
}

TEST_F(MarkerCalloutsTest, OrdinatesThatEndEarlierGiveNoCallout)
{
    add({0.0F, 50.0F, 100.0F}, {10.0F});
    add({0.0F, 100.0F}, {90.0F, 90.0F});
    EXPECT_EQ(textsAt(75.0), (Lines{"90"}));
    EXPECT_EQ(textsAt(0.0), (Lines{"10", "90"}));
}

TEST_F(MarkerCalloutsTest, AValueThatTheFormatterHasNoTextForGivesNoCallout)
{
    add({0.0F, 100.0F}, {-10.0F, 10.0F});
    add({0.0F, 100.0F}, {90.0F, 90.0F});
    graph->verticalAxis()->setTickLabelFormatter(std::make_shared<PositiveFormatter>());
    EXPECT_EQ(textsAt(25.0), (Lines{"90"}));
    EXPECT_EQ(textsAt(75.0), (Lines{"5", "90"}));
    graph->verticalAxis()->setTickLabelFormatter(nullptr);
    EXPECT_TRUE(textsAt(75.0).empty());
}

TEST_F(MarkerCalloutsTest, ATextNeverReadsMinusZero)
{
    add({0.0F, 100.0F}, {-0.0F, -0.0F});
    EXPECT_EQ(textsAt(50.0), (Lines{"0"}));
}

TEST_F(MarkerCalloutsTest, WithoutAVerticalAxisThereAreNone)
{
    add({0.0F, 100.0F}, {90.0F, 90.0F});
    graph->setVerticalAxis(nullptr);
    EXPECT_TRUE(textsAt(50.0).empty());
}

TEST_F(MarkerCalloutsTest, OddMarkersAndSamplesThrowNothing)
{
    const float nan = static_cast<float>(kNaN);
    add({0.0F, 50.0F, 50.0F, 100.0F}, {1.0F, nan, 3.0F, 4.0F});
    add({nan, 50.0F, nan}, {1.0F, 2.0F, 3.0F});
    add({100.0F, 50.0F, 0.0F}, {1.0F, 2.0F, 3.0F});
    for (const bool logarithmic : {false, true}) {
        if (logarithmic)
            graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
        for (const double value : {kNaN, kInfinity, -kInfinity, 1e300, -1e300, 0.0, 25.0, 50.0, 75.0, 100.0}) {
            const Lines lines = testing_support::linesDrawn([&] {
                for (const GraphCallout& callout : keptCalloutsAt(value))
                    callout.draw();
            });
            EXPECT_LE(lines.size(), 15U) << value;
        }
    }
}

TEST_F(MarkerCalloutsTest, OfOverlappingCalloutsTheFirstSeriesWins)
{
    add({0.0F, 100.0F}, {50.0F, 50.0F});
    add({0.0F, 100.0F}, {55.0F, 55.0F});
    add({0.0F, 100.0F}, {80.0F, 80.0F});
    add({0.0F, 100.0F}, {62.0F, 62.0F});
    EXPECT_EQ(textsOf(keptCalloutsAt(50.0)), (Lines{"50", "80"}));
    // The last one overlaps the second, which was left out, and the first.
    const auto overlapped = overlappedCallouts(calloutsForMarker(TOLVMarker(50.0), *graph, kRect));
    EXPECT_EQ(overlapped, (std::vector<std::optional<std::size_t>>{std::nullopt, 0, std::nullopt, 0}));
}

TEST_F(MarkerCalloutsTest, NothingIsLeftOutWhereThereIsRoom)
{
    add({0.0F, 100.0F}, {20.0F, 20.0F});
    add({0.0F, 100.0F}, {40.0F, 40.0F});
    add({0.0F, 100.0F}, {60.0F, 60.0F});
    EXPECT_EQ(textsOf(keptCalloutsAt(50.0)), (Lines{"20", "40", "60"}));
    EXPECT_TRUE(overlappedCallouts({}).empty());
}

} // namespace
} // namespace TOLVGraphing
