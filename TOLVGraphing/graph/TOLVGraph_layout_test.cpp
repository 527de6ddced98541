#include "../axes/TOLVLineAxis.h"
#include "../axes/TOLVLogarithmicAxis.h"
#include "../drawing/CurveGraphDrawing.h"
#include "../drawing/LineGraphDrawing.h"
#include "../drawing/TOLVCurveGraphDrawing.h"
#include "TOLVGraph.h"

#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/DrawnLines.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::EvenTextScope;
using testing_support::linesDrawn;
using testing_support::linesWith;
using Texts = std::vector<std::string>;

const Rect kRect(0.0, 0.0, 400.0, 300.0);

class TOLVGraphLayoutTest : public testing::Test {
protected:
    TOLVGraphLayoutTest()
    {
        graph->zoomXToFixedMin(0.0F, 100.0F);
        graph->zoomYToFixedMin(0.0, 10.0);
        graph->setMargin({15.0, 50.0, 40.0, 15.0});
        graph->setDrawingStrategy(std::make_shared<TOLVCurveGraphDrawing>());
    }

    void add(std::vector<float> x, std::vector<float> y)
    {
        graph->addGraphData(
            TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), Color(1.0, 0.0, 0.0)));
    }

    EvenTextScope text;
    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
};

/// The recorded line of a text in the graph's tick labels' looks.
std::string drawnLabel(const LabelLayout& label, const std::string& color)
{
    return "text \"" + label.text + "\" HelveticaNeue-Light 12 " + color + " at ("
        + toString(label.rect).substr(1, toString(label.rect).find(',', toString(label.rect).find(',') + 1) - 1) + ")";
}

Texts textsOf(const std::vector<LabelLayout>& labels, LabelFate fate)
{
    Texts texts;
    for (const LabelLayout& label : labels) {
        if (label.fate == fate)
            texts.push_back(label.text);
    }
    return texts;
}

TEST_F(TOLVGraphLayoutTest, TheRectanglesAreThoseOfTheGraph)
{
    const GraphLayout layout = graph->layoutInRect(kRect);
    EXPECT_EQ(layout.rect, kRect);
    EXPECT_EQ(layout.dataRect, graph->dataRectInRect(kRect));
    EXPECT_EQ(layout.titleBand, graph->titleBandInRect(kRect));
    EXPECT_EQ(layout.margin, graph->margin());
    ASSERT_TRUE(layout.horizontalAxis && layout.verticalAxis);
    EXPECT_EQ(layout.horizontalAxis->rect, graph->horizontalAxisRectInRect(kRect));
    EXPECT_EQ(layout.horizontalAxis->tickLabelRect, graph->horizontalAxis()->tickLabelRectInRect(layout.horizontalAxis->rect));
    EXPECT_EQ(layout.verticalAxis->labelRect, graph->verticalAxis()->labelRectInRect(layout.verticalAxis->rect));
    EXPECT_EQ(layout.horizontalAxis->kind, "TOLVLinearAxis");
    EXPECT_EQ(layout.horizontalAxis->max, 100.0);
    EXPECT_EQ(layout.verticalAxis->max, 10.0);
    EXPECT_FALSE(layout.title);
    EXPECT_FALSE(layout.horizontalAxis->title);
    EXPECT_TRUE(layout.callouts.empty());
}

TEST_F(TOLVGraphLayoutTest, TicksStandWhereTheirLinesAre)
{
    const GraphLayout layout = graph->layoutInRect(kRect);
    EXPECT_EQ(layout.horizontalAxis->majorTicks, (std::vector<TickLayout>{{0.0, 50.0}, {100.0, 385.0}}));
    EXPECT_EQ(layout.horizontalAxis->minorTicks[4], (TickLayout{50.0, 217.5}));
    EXPECT_TRUE(layout.horizontalAxis->drawsMinorLines);
    EXPECT_TRUE(layout.horizontalAxis->slotCenters.empty());
}

TEST_F(TOLVGraphLayoutTest, TheLabelsThatAreKeptAreTheOnesDrawn)
{
    graph->horizontalAxis()->setDrawsMinorLabels(true);
    const GraphLayout layout = graph->layoutInRect(kRect);
    Texts expected;
    for (const auto& axis : {layout.horizontalAxis, layout.verticalAxis}) {
        for (const LabelLayout& label : axis->labels) {
            if (label.fate == LabelFate::Kept)
                expected.push_back(drawnLabel(label, "(0, 0, 0, 1)"));
        }
    }
    EXPECT_GT(expected.size(), 8U);
    EXPECT_EQ(linesWith(linesDrawn([&] { graph->drawInRect(kRect); }), "text"), expected);
}

TEST_F(TOLVGraphLayoutTest, ALabelThatCollidesNamesTheOneBeforeIt)
{
    // Texts are 18 to 24 points wide and 67 points apart, but only 6.7 on the minor steps.
    graph->zoomXToFixedMin(0.0F, 500.0F);
    graph->horizontalAxis()->setDrawsMinorLabels(true);
    const auto labels = graph->layoutInRect(kRect).horizontalAxis->labels;
    ASSERT_EQ(textsOf(labels, LabelFate::Outside), Texts());
    std::size_t collisions = 0;
    for (const LabelLayout& label : labels) {
        ASSERT_EQ(label.collidesWith.has_value(), label.fate == LabelFate::Collides) << label.text;
        if (!label.collidesWith)
            continue;
        ++collisions;
        const LabelLayout& other = labels[*label.collidesWith];
        EXPECT_EQ(other.fate, LabelFate::Kept);
        EXPECT_LT(std::abs(other.rect.x() - label.rect.x()), 24.0 + 5.0) << label.text << " and " << other.text;
    }
    EXPECT_GT(collisions, 20U);
    // Major labels come first and give way to none.
    EXPECT_EQ(std::count_if(labels.begin(), labels.end(), [](const LabelLayout& label) { return label.isMajor; }), 6);
    EXPECT_TRUE(labels.front().isMajor);
    EXPECT_FALSE(labels.back().isMajor);
}

TEST_F(TOLVGraphLayoutTest, LabelsBeyondTheAxisAreOutsideAndThoseWithoutAPlaceNotFinite)
{
    graph->zoomXToFixedMin(3.0F, 47.0F);
    EXPECT_EQ(textsOf(graph->layoutInRect(kRect).horizontalAxis->labels, LabelFate::Outside), (Texts{"0"}));
    graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
    graph->placeHorizontalAxisMarkerWithValue(-5.0);
    graph->placeHorizontalAxisMarkerWithValue(1000.0);
    const auto badges = graph->layoutInRect(kRect).horizontalAxis->markerLabels;
    ASSERT_EQ(badges.size(), 2U);
    EXPECT_EQ(badges[0].fate, LabelFate::NotFinite);
    EXPECT_EQ(badges[1].fate, LabelFate::Outside);
}

TEST_F(TOLVGraphLayoutTest, BadgesAreThoseDrawn)
{
    graph->placeHorizontalAxisMarkerWithValue(40.0);
    graph->placeHorizontalAxisMarkerWithValue(42.0);
    graph->placeHorizontalAxisMarkerWithValue(5.0)->setAxisIndex(1);
    const GraphLayout layout = graph->layoutInRect(kRect);
    ASSERT_EQ(layout.horizontalAxis->markerLabels.size(), 2U);
    ASSERT_EQ(layout.verticalAxis->markerLabels.size(), 1U);
    const LabelLayout& kept = layout.horizontalAxis->markerLabels[0];
    EXPECT_EQ(kept.value, 40.0);
    EXPECT_EQ(kept.text, "40");
    EXPECT_EQ(layout.horizontalAxis->markerLabels[1].fate, LabelFate::Collides);
    EXPECT_EQ(layout.horizontalAxis->markerLabels[1].collidesWith, 0U);
    const auto lines = linesDrawn([&] { graph->drawAxesInRect(kRect); });
    EXPECT_EQ(linesWith(lines, "fill")[0], "fill " + toString(Path::pathWithRoundedRect(*kept.badge, 6.0, 6.0)));
    EXPECT_TRUE(std::find(lines.begin(), lines.end(), drawnLabel(kept, "(1, 1, 1, 1)")) != lines.end());
}

TEST_F(TOLVGraphLayoutTest, TitlesStandWhereTheyAreDrawn)
{
    graph->setTitle("title");
    graph->horizontalAxis()->setLabel("seconds");
    graph->verticalAxis()->setLabel("volt");
    const GraphLayout layout = graph->layoutInRect(kRect);
    EXPECT_EQ(layout.title, (TextLayout{"title", {50.0, 288.0, 30.0, 12.0}}));
    // 49 by 14 points in the middle of the strip (50, 0, 335, 14).
    EXPECT_EQ(layout.horizontalAxis->title, (TextLayout{"seconds", {193.0, 0.0, 49.0, 14.0}}));
    EXPECT_EQ(layout.verticalAxis->title, (TextLayout{"volt", {-7.0, 155.5, 28.0, 14.0}}));
    const auto lines = linesDrawn([&] { graph->drawInRect(kRect); });
    EXPECT_EQ(linesWith(lines, "text").back(), "text \"title\" HelveticaNeue-Bold 12 (0, 0, 0, 1) at (50, 288)");
    EXPECT_TRUE(std::find(lines.begin(), lines.end(), "text \"seconds\" HelveticaNeue 14 (0, 0, 0, 1) at (193, 0)") != lines.end());
}

TEST_F(TOLVGraphLayoutTest, CategoriesHaveSlotsAndTheirTextsAreLabels)
{
    add({1.0F, 2.0F, 3.0F}, {1.0F, 2.0F, 3.0F});
    const auto axis = std::make_shared<TOLVLineAxis>();
    axis->setTickLabels({{"one", "a text as long as three slots are wide, a text as long as three slots are wide", "three"}});
    graph->setHorizontalAxis(axis);
    graph->setExtents(graph->extentsFittingGraphData());
    const auto layout = graph->layoutInRect(kRect).horizontalAxis;
    EXPECT_EQ(layout->kind, "TOLVLineAxis");
    EXPECT_EQ(layout->slotCenters.size(), 3U);
    EXPECT_EQ(layout->slotCenters[1], 217.5);
    ASSERT_EQ(layout->labels.size(), 3U);
    EXPECT_EQ(layout->labels[0].fate, LabelFate::Kept);
    EXPECT_EQ(layout->labels[0].value, 1.0);
    EXPECT_EQ(layout->labels[1].collidesWith, 0U);
    EXPECT_EQ(layout->labels[2].fate, LabelFate::Kept);
    EXPECT_TRUE(layout->majorTicks.empty());
}

TEST_F(TOLVGraphLayoutTest, CalloutsAtMarkersSayWhichOneTheyGaveWayTo)
{
    graph->setDrawingStrategy(std::make_shared<CurveGraphDrawing>());
    add({0.0F, 100.0F}, {5.0F, 5.0F});
    add({0.0F, 100.0F}, {5.25F, 5.25F});
    add({0.0F, 100.0F}, {9.0F, 9.0F});
    graph->placeHorizontalAxisMarkerWithValue(20.0);
    graph->placeHorizontalAxisMarkerWithValue(60.0);
    const auto callouts = graph->layoutInRect(kRect).callouts;
    ASSERT_EQ(callouts.size(), 6U);
    EXPECT_EQ(callouts[1].fate, CalloutFate::CollidesWithCallout);
    EXPECT_EQ(callouts[1].collidesWith, 0U);
    EXPECT_EQ(callouts[4].collidesWith, 3U);
    EXPECT_EQ(callouts[4].position, 1U);
    EXPECT_EQ(callouts[4].series, 1U);
    EXPECT_EQ(callouts[5].text, "9");
    Texts kept;
    for (const CalloutPlacement& callout : callouts) {
        if (callout.fate == CalloutFate::Kept)
            kept.push_back(callout.text);
    }
    Texts drawn;
    for (const std::string& line : linesWith(linesDrawn([&] { graph->drawMarkersInRect(kRect); }), "text"))
        drawn.push_back(line.substr(6, line.find('"', 6) - 6));
    EXPECT_EQ(drawn, kept);
    EXPECT_EQ(kept, (Texts{"5", "9", "5", "9"}));
}

TEST_F(TOLVGraphLayoutTest, ValueLabelsOfLineGraphsSayWhatTheyGaveWayTo)
{
    add({1.0F, 2.0F, 3.0F}, {5.0F, 6.0F, std::numeric_limits<float>::quiet_NaN()});
    add({1.0F, 2.0F, 3.0F}, {5.0F, 6.6F, 7.0F});
    graph->setHorizontalAxis(std::make_shared<TOLVLineAxis>());
    graph->setDrawingStrategy(std::make_shared<LineGraphDrawing>());
    graph->zoomXToFixedMin(1.0F, 3.0F);
    const auto callouts = graph->layoutInRect(kRect).callouts;
    ASSERT_EQ(callouts.size(), 6U);
    // Equal values: the first one is kept, the second one stands on it.
    EXPECT_EQ(callouts[0].fate, CalloutFate::Kept);
    EXPECT_EQ(callouts[1].fate, CalloutFate::CollidesWithCallout);
    EXPECT_EQ(callouts[1].collidesWith, 0U);
    // The higher one of a category is chosen first; the lower one would cover its dot.
    EXPECT_EQ(callouts[2].series, 1U);
    EXPECT_EQ(callouts[2].fate, CalloutFate::Kept);
    EXPECT_EQ(callouts[3].series, 0U);
    EXPECT_EQ(callouts[3].fate, CalloutFate::CollidesWithDot);
    EXPECT_FALSE(callouts[3].collidesWith);
    EXPECT_EQ(callouts[4].text, "7");
    EXPECT_EQ(callouts[4].position, 2U);
    EXPECT_EQ(callouts[5].fate, CalloutFate::NotFinite);
}

TEST_F(TOLVGraphLayoutTest, WithoutAnAxisThereIsNoneAndNothingElseFails)
{
    graph->setHorizontalAxis(nullptr);
    const GraphLayout layout = graph->layoutInRect(kRect);
    EXPECT_FALSE(layout.horizontalAxis);
    EXPECT_FALSE(layout.verticalAxis);
    graph->setDrawingStrategy(nullptr);
    graph->setExtents(nullptr);
    static_cast<void>(graph->layoutInRect({0.0, 0.0, -5.0, 0.0}));
}

TEST_F(TOLVGraphLayoutTest, TheLayoutIsAValueAndDrawsNothing)
{
    graph->placeHorizontalAxisMarkerWithValue(5.0);
    const GraphLayout first = graph->layoutInRect(kRect);
    EXPECT_TRUE(linesDrawn([&] { EXPECT_EQ(graph->layoutInRect(kRect), first); }).empty());
    EXPECT_NE(graph->layoutInRect({0.0, 0.0, 200.0, 300.0}), first);
}

TEST(FateNames, AreWordsForReports)
{
    EXPECT_EQ(nameOfFate(LabelFate::Kept), "kept");
    EXPECT_EQ(nameOfFate(LabelFate::Collides), "collides");
    EXPECT_EQ(nameOfFate(LabelFate::Outside), "outside");
    EXPECT_EQ(nameOfFate(LabelFate::NotFinite), "not finite");
    EXPECT_EQ(nameOfFate(CalloutFate::Kept), "kept");
    EXPECT_EQ(nameOfFate(CalloutFate::CollidesWithCallout), "collides");
    EXPECT_EQ(nameOfFate(CalloutFate::CollidesWithDot), "covers a dot");
    EXPECT_EQ(nameOfFate(CalloutFate::NotFinite), "not finite");
}

} // namespace
} // namespace TOLVGraphing
