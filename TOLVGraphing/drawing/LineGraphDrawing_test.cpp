#include "LineGraphDrawing.h"

#include "../axes/TOLVLineAxis.h"
#include "../graph/TOLVGraph.h"
#include "DataDots.h"

#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/ChangingSamples.h>
#include <tests/support/DrawnLines.h>
#include <tests/support/Generated.h>

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::ChangingSamples;
using testing_support::EvenTextScope;
using testing_support::linesDrawn;
using testing_support::linesWith;
using Lines = std::vector<std::string>;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
/// The plot is (0.5, 0.5, 400, 100): four categories stand at 58, 153, 248 and 343.
const Rect kRect(0.0, 0.0, 401.0, 101.0);
const std::string kClip = "clip M 0.5 0.5 L 400.5 0.5 L 400.5 100.5 L 0.5 100.5 Z";

/// A formatter of another class, without a text for negative numbers.
class PositiveFormatter final : public NumberFormatter {
public:
    std::optional<std::string> stringFromNumber(double number) const override { return number < 0.0 ? std::nullopt : std::optional<std::string>("x"); }
    std::shared_ptr<NumberFormatter> copy() const override { return std::make_shared<PositiveFormatter>(); }
};

/// A text system that throws from some question on: after the texts have been placed, while they are drawn.
class FailingTextSystem final : public TextSystem {
public:
    explicit FailingTextSystem(int questions) : m_questionsLeft(questions) {}
    [[nodiscard]] Size size(const AttributedString&) const override
    {
        if (m_questionsLeft-- == 0)
            throw std::runtime_error("no metrics");
        return {10.0, 10.0};
    }
    [[nodiscard]] double ascender(const Font&) const override { return 8.0; }

private:
    mutable int m_questionsLeft;
};

/// A graph over categories whose y range is the height of the data area in points.
class LineGraphDrawingTest : public testing::Test {
protected:
    LineGraphDrawingTest()
    {
        graph->setMargin({});
        graph->setHorizontalAxis(std::make_shared<TOLVLineAxis>());
        graph->zoomXToFixedMin(0.0F, 100.0F);
        graph->zoomYToFixedMin(0.0, 101.0);
    }

    std::shared_ptr<TOLVGraphData> add(std::vector<float> x, std::vector<float> y, const std::optional<Color>& color = Color(1.0, 0.0, 0.0))
    {
        auto series = TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), color);
        graph->addGraphData(series);
        return series;
    }

    /// Adds a series over the four categories.
    std::shared_ptr<TOLVGraphData> addFour(std::vector<float> y, const std::optional<Color>& color = Color(1.0, 0.0, 0.0))
    {
        return add({1.0F, 2.0F, 3.0F, 4.0F}, std::move(y), color);
    }

    Lines drawn(const Rect& rect = kRect)
    {
        graph->prepareForDrawingInRect(rect);
        return linesDrawn([&] { drawing.drawGraph(graph, rect); });
    }

    std::vector<CalloutPlacement> callouts(const Rect& rect = kRect)
    {
        graph->prepareForDrawingInRect(rect);
        return drawing.calloutPlacements(*graph, rect);
    }

    /// "0:5 (1:20) [2:7]": category and text in the order of choice; what collides with a callout in round brackets, with a dot in square ones, and what is not finite between dashes.
    std::string chosen(const Rect& rect = kRect)
    {
        std::string words;
        for (const CalloutPlacement& callout : callouts(rect)) {
            const std::string word = std::to_string(callout.position) + ":" + callout.text;
            words += words.empty() ? "" : " ";
            switch (callout.fate) {
            case CalloutFate::Kept: words += word; break;
            case CalloutFate::CollidesWithCallout: words += "(" + word + ")"; break;
            case CalloutFate::CollidesWithDot: words += "[" + word + "]"; break;
            case CalloutFate::NotFinite: words += "-" + word + "-"; break;
            }
        }
        return words;
    }

    static std::string dotsAt(const std::vector<Point>& points)
    {
        Path dots;
        for (const Point& point : points)
            dots.addPath(Path::pathWithOvalInRect(dataDotRectForPoint(point)));
        return toString(dots);
    }

    EvenTextScope text;
    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
    LineGraphDrawing drawing;
};

TEST_F(LineGraphDrawingTest, HasItsDefaults)
{
    ASSERT_TRUE(drawing.calloutLabelFormatter());
    EXPECT_EQ(drawing.calloutLabelFormatter()->stringFromNumber(1234.5), "1,234.5");
    ASSERT_TRUE(drawing.calloutLabelAttributes());
    EXPECT_EQ(*drawing.calloutLabelAttributes(), (TextAttributes{Font{"HelveticaNeue", 11.0}, Color::blackColor()}));
    EXPECT_EQ(kDataPointDiameter, 7.0);
}

TEST_F(LineGraphDrawingTest, ASeriesIsAnAreaALineAndDotsWithItsCalloutsOnTop)
{
    addFour({10.0F, 20.0F, 30.0F, 40.0F});
    const std::string dots = dotsAt({{58.0, 10.0}, {153.0, 20.0}, {248.0, 30.0}, {343.0, 40.0}});
    EXPECT_EQ(drawn(),
        (Lines{"save", kClip, "save", "fillColor (1, 0, 0, 0.05)", "strokeColor (1, 0, 0, 0.05)", "fill M 58 0 L 58 10 L 153 20 L 248 30 L 343 40 L 343 0 Z", "restore", "save",
            "strokeColor (1, 0, 0, 1)", "lineWidth 1", "stroke M 58 10 L 153 20 L 248 30 L 343 40", "restore", "save", "strokeColor (1, 0, 0, 1)", "fillColor (1, 1, 1, 1)",
            "fill " + dots, "save", "lineWidth 2", "stroke " + dots, "restore", "restore", "restore", "save", kClip, "text \"10\" HelveticaNeue 11 (0, 0, 0, 1) at (52.5, 13.5)",
            "text \"20\" HelveticaNeue 11 (0, 0, 0, 1) at (147.5, 23.5)", "text \"30\" HelveticaNeue 11 (0, 0, 0, 1) at (242.5, 33.5)",
            "text \"40\" HelveticaNeue 11 (0, 0, 0, 1) at (337.5, 43.5)", "restore"}));
}

TEST_F(LineGraphDrawingTest, LaterSeriesLieOnTopAndAllCalloutsOnTopOfThem)
{
    addFour({10.0F, 20.0F, 30.0F, 40.0F});
    addFour({50.0F, 60.0F, 70.0F, 80.0F}, Color(0.0, 0.0, 1.0));
    const Lines lines = drawn();
    EXPECT_EQ(linesWith(lines, "clip"), (Lines{kClip, kClip, kClip}));
    EXPECT_EQ(linesWith(lines, "strokeColor"),
        (Lines{"strokeColor (1, 0, 0, 0.05)", "strokeColor (1, 0, 0, 1)", "strokeColor (1, 0, 0, 1)", "strokeColor (0, 0, 1, 0.05)", "strokeColor (0, 0, 1, 1)",
            "strokeColor (0, 0, 1, 1)"}));
    ASSERT_GE(lines.size(), 10U);
    for (std::size_t i = 2; i < 10; ++i)
        EXPECT_TRUE(lines[lines.size() - i].starts_with("text ")) << i;
}

TEST_F(LineGraphDrawingTest, TheLineHasTheSeriesDashAndWidth)
{
    const auto series = addFour({10.0F, 20.0F, 30.0F, 40.0F});
    series->setLineStyle(TOLVLineStyle::dashedLineStyle()->styleWithColor(Color(0.0, 0.0, 1.0)));
    series->lineStyle()->setThickness(3.0);
    const Lines lines = drawn();
    EXPECT_EQ(linesWith(lines, "lineDash"), (Lines{"lineDash 0 [5, 2]"}));
    EXPECT_EQ(linesWith(lines, "lineWidth"), (Lines{"lineWidth 3", "lineWidth 3", "lineWidth 2"}));
}

TEST_F(LineGraphDrawingTest, SeriesOfDifferentLengthsShareTheFirstCategories)
{
    add({1.0F, 2.0F, 3.0F}, {10.0F, 20.0F, 30.0F});
    add({1.0F, 2.0F, 3.0F, 4.0F, 5.0F}, {50.0F, 60.0F, 70.0F, 80.0F, 90.0F});
    EXPECT_EQ(maximumGraphDataLength(*graph), 5U);
    EXPECT_EQ(chosen(), "0:50 0:10 1:60 1:20 2:70 2:30 3:80 4:90");
}

TEST_F(LineGraphDrawingTest, OfEqualValuesOneCalloutAndBothDotsAreDrawn)
{
    addFour({10.0F, 20.0F, 30.0F, 40.0F});
    addFour({10.0F, 60.0F, 30.0F, 80.0F});
    EXPECT_EQ(chosen(), "0:10 (0:10) 1:60 1:20 2:30 (2:30) 3:80 3:40");
    EXPECT_EQ(linesWith(drawn(), "text").size(), 6U);
    const auto all = callouts();
    ASSERT_EQ(all.size(), 8U);
    EXPECT_EQ(all[0].series, 0U);
    EXPECT_EQ(all[1].series, 1U);
    EXPECT_EQ(all[1].collidesWith, 0U);
    EXPECT_EQ(all[5].collidesWith, 4U);
    EXPECT_EQ(all[2].series, 1U);
    const std::string dots = dotsAt({{58.0, 10.0}, {153.0, 60.0}, {248.0, 30.0}, {343.0, 80.0}});
    EXPECT_EQ(linesWith(drawn(), "fill").back(), "fill " + dots);
}

TEST_F(LineGraphDrawingTest, ACalloutThatWouldCoverADotIsDropped)
{
    // The text of 10 stands from 13.5 to 24.5; the dot at 22 begins at 19, its own text at 25.5.
    addFour({10.0F, 50.0F, 50.0F, 50.0F});
    addFour({22.0F, 80.0F, 80.0F, 80.0F});
    EXPECT_EQ(chosen(), "0:22 [0:10] 1:80 1:50 2:80 2:50 3:80 3:50");
    EXPECT_EQ(callouts()[1].collidesWith, std::nullopt);
}

TEST_F(LineGraphDrawingTest, OnACrowdedGraphLowerCategoriesWin)
{
    std::vector<float> x;
    for (int i = 0; i < 40; ++i)
        x.push_back(static_cast<float>(i));
    add(x, std::vector<float>(40, 50.0F));
    // Categories are 9.5 points apart; texts of two digits, 11 points wide, overlap the next one only.
    const auto all = callouts();
    ASSERT_EQ(all.size(), 40U);
    for (std::size_t i = 0; i < all.size(); ++i) {
        EXPECT_EQ(all[i].position, i);
        EXPECT_EQ(all[i].fate, i % 2 == 0 ? CalloutFate::Kept : CalloutFate::CollidesWithCallout) << i;
    }
}

TEST_F(LineGraphDrawingTest, DrawsTheCalloutsThatAreKeptAmongDotsInEveryNumber)
{
    for (const std::uint32_t count : {4U, 20U, 60U, 300U, 1500U}) {
        testing_support::Generated generated(count);
        graph->clearGraphData();
        for (int series = 0; series < 2; ++series) {
            std::vector<float> x;
            std::vector<float> y;
            for (std::uint32_t i = 0; i < count; ++i) {
                x.push_back(static_cast<float>(i) * 100.0F / static_cast<float>(count));
                y.push_back(static_cast<float>(generated.number(-5.0, 110.0)));
            }
            add(x, y);
        }
        std::size_t kept = 0;
        for (const CalloutPlacement& callout : callouts())
            kept += callout.fate == CalloutFate::Kept ? 1 : 0;
        const Lines texts = linesWith(drawn(), "text");
        EXPECT_EQ(texts.size(), kept) << count;
        EXPECT_GT(kept, 0U) << count;
        std::size_t next = 0;
        for (const CalloutPlacement& callout : callouts()) {
            if (callout.fate == CalloutFate::Kept && next < texts.size()) {
                EXPECT_NE(texts[next++].find(callout.text), std::string::npos) << count << ": " << callout.text;
            }
        }
    }
}

TEST_F(LineGraphDrawingTest, AnEmptySeriesDrawsNothing)
{
    add({}, {});
    EXPECT_EQ(maximumGraphDataLength(*graph), 0U);
    EXPECT_EQ(drawn(), (Lines{"save", kClip, "restore", "save", kClip, "restore"}));
    addFour({10.0F, 20.0F, 30.0F, 40.0F});
    EXPECT_EQ(chosen(), "0:10 1:20 2:30 3:40");
    EXPECT_EQ(callouts()[0].series, 1U);
}

TEST_F(LineGraphDrawingTest, WithoutSeriesNothingIsPainted)
{
    EXPECT_EQ(drawn(), (Lines{"save", kClip, "restore"}));
    EXPECT_TRUE(callouts().empty());
    EXPECT_EQ(maximumGraphDataLength(*graph), 0U);
}

TEST_F(LineGraphDrawingTest, TheVisibleRangeChoosesTheCategories)
{
    add({0.0F, 1.0F, 2.0F, 3.0F, 4.0F, 5.0F}, {5.0F, 10.0F, 20.0F, 30.0F, 40.0F, 50.0F});
    graph->zoomXToFixedMin(1.0F, 4.0F);
    EXPECT_EQ(maximumGraphDataLength(*graph), 4U);
    EXPECT_EQ(linesWith(drawn(), "stroke")[0], "stroke M 58 10 L 153 20 L 248 30 L 343 40");
    EXPECT_EQ(chosen(), "0:10 1:20 2:30 3:40");
}

TEST_F(LineGraphDrawingTest, BetweenTwoSamplesNothingIsPainted)
{
    addFour({10.0F, 20.0F, 30.0F, 40.0F});
    graph->zoomXToFixedMin(1.25F, 1.75F);
    EXPECT_EQ(maximumGraphDataLength(*graph), 0U);
    EXPECT_EQ(drawn(), (Lines{"save", kClip, "restore"}));
}

TEST_F(LineGraphDrawingTest, SamplesWithoutAPositionHaveNeitherDotNorCalloutAndTheLinePassesThemOver)
{
    addFour({10.0F, kNaN, kInfinity, 40.0F});
    EXPECT_EQ(chosen(), "0:10 -1:NaN- -2:+∞- 3:40");
    const Lines lines = drawn();
    EXPECT_EQ(linesWith(lines, "fill")[0], "fill M 58 0 L 58 10 L 343 40 L 343 0 Z");
    EXPECT_EQ(linesWith(lines, "stroke"), (Lines{"stroke M 58 10 L 343 40", "stroke " + dotsAt({{58.0, 10.0}, {343.0, 40.0}})}));
    EXPECT_EQ(linesWith(lines, "text").size(), 2U);
}

TEST_F(LineGraphDrawingTest, ASeriesWithoutColourHasItsLineAndCalloutsOnly)
{
    addFour({10.0F, 20.0F, 30.0F, 40.0F}, std::nullopt);
    addFour({50.0F, 60.0F, 70.0F, 80.0F})->setLineStyle(nullptr);
    const Lines lines = drawn();
    EXPECT_TRUE(linesWith(lines, "fill").empty());
    EXPECT_EQ(linesWith(lines, "stroke"), (Lines{"stroke M 58 10 L 153 20 L 248 30 L 343 40", "stroke M 58 50 L 153 60 L 248 70 L 343 80"}));
    EXPECT_EQ(linesWith(lines, "text").size(), 8U);
}

TEST_F(LineGraphDrawingTest, SeriesThatCannotBeCutAreLeftOut)
{
    const auto samples = std::make_shared<ChangingSamples>(std::vector<float>{1.0F, 2.0F, 3.0F, 4.0F});
    graph->addGraphData(TOLVGraphData::graphDataWithX(samples, samples, Color::blackColor()));
    graph->addGraphData(std::make_shared<TOLVGraphData>());
    addFour({10.0F, 20.0F, 30.0F, 40.0F});
    EXPECT_EQ(chosen(), "0:10 1:20 2:30 3:40");
    EXPECT_EQ(callouts()[0].series, 2U);
    EXPECT_EQ(linesWith(drawn(), "stroke").size(), 2U);
}

TEST_F(LineGraphDrawingTest, WhereTheLengthsDifferTheOrdinatesInRangeCount)
{
    add({1.0F, 2.0F, 3.0F, 4.0F}, {10.0F, 20.0F});
    add({1.0F}, {50.0F, 60.0F, 70.0F});
    EXPECT_EQ(maximumGraphDataLength(*graph), 2U);
    EXPECT_EQ(chosen(), "0:50 0:10 1:20");
    EXPECT_EQ(linesWith(drawn(), "stroke")[0], "stroke M 58 10 L 153 20");
}

TEST_F(LineGraphDrawingTest, AHostsFormatterIsCopied)
{
    const auto formatter = std::make_shared<PositiveFormatter>();
    drawing = LineGraphDrawing(formatter);
    EXPECT_TRUE(std::dynamic_pointer_cast<PositiveFormatter>(drawing.calloutLabelFormatter()));
    EXPECT_NE(drawing.calloutLabelFormatter(), formatter);
}

TEST_F(LineGraphDrawingTest, AValueThatTheFormatterHasNoTextForHasADotAndNoCallout)
{
    graph->zoomYToFixedMin(-50.0, 51.0);
    addFour({10.0F, -10.0F, 20.0F, -20.0F});
    drawing = LineGraphDrawing(std::make_shared<PositiveFormatter>());
    EXPECT_EQ(chosen(), "0:x 2:x");
    EXPECT_EQ(linesWith(drawn(), "fill")[1], "fill " + dotsAt({{58.0, 60.0}, {153.0, 40.0}, {248.0, 70.0}, {343.0, 30.0}}));
    drawing = LineGraphDrawing(nullptr);
    EXPECT_FALSE(drawing.calloutLabelFormatter());
    EXPECT_EQ(chosen(), "");
    EXPECT_EQ(linesWith(drawn(), "fill").size(), 2U);
}

TEST_F(LineGraphDrawingTest, ATextNeverReadsMinusZero)
{
    addFour({-0.0F, -0.0001F, 20.0F, 30.0F});
    EXPECT_EQ(chosen(), "0:0 1:0 2:20 3:30");
}

TEST_F(LineGraphDrawingTest, AnAxisThatWasNeverPreparedHasNoPlaces)
{
    addFour({10.0F, 20.0F, 30.0F, 40.0F});
    EXPECT_EQ(linesDrawn([&] { drawing.drawGraph(graph, kRect); }), (Lines{"save", kClip, "restore", "save", kClip, "restore"}));
}

TEST_F(LineGraphDrawingTest, WithAnotherHorizontalAxisNothingIsDrawn)
{
    addFour({10.0F, 20.0F, 30.0F, 40.0F});
    graph->setHorizontalAxis(std::make_shared<TOLVBarAxis>());
    EXPECT_TRUE(drawn().empty());
    EXPECT_TRUE(callouts().empty());
    graph->setHorizontalAxis(nullptr);
    EXPECT_TRUE(drawn().empty());
    EXPECT_TRUE(callouts().empty());
}

TEST_F(LineGraphDrawingTest, WithoutAGraphOrAContextNothingIsDrawn)
{
    addFour({10.0F, 20.0F, 30.0F, 40.0F});
    EXPECT_TRUE(linesDrawn([&] { drawing.drawGraph(nullptr, kRect); }).empty());
    EXPECT_NO_THROW(drawing.drawGraph(graph, kRect));
}

TEST_F(LineGraphDrawingTest, TheStateIsRestoredWhenATextCannotBeMeasured)
{
    addFour({10.0F, 20.0F, 30.0F, 40.0F});
    graph->prepareForDrawingInRect(kRect);
    // Four texts are measured to place them, and again to draw them.
    for (int questions = 0; questions < 8; ++questions) {
        const TextSystemScope failing(std::make_shared<FailingTextSystem>(questions));
        const Lines lines = linesDrawn([&] { EXPECT_THROW(drawing.drawGraph(graph, kRect), std::runtime_error) << questions; });
        EXPECT_EQ(linesWith(lines, "text").size(), questions < 4 ? 0U : static_cast<std::size_t>(questions) - 4U) << questions;
    }
}

TEST_F(LineGraphDrawingTest, OneStrategyServesSeveralGraphs)
{
    addFour({10.0F, 20.0F, 30.0F, 40.0F});
    const Lines before = drawn();
    const auto other = TOLVGraph::graph();
    other->setHorizontalAxis(std::make_shared<TOLVLineAxis>());
    other->prepareForDrawingInRect(kRect);
    EXPECT_TRUE(linesWith(linesDrawn([&] { drawing.drawGraph(other, kRect); }), "text").empty());
    EXPECT_EQ(drawn(), before);
}

TEST_F(LineGraphDrawingTest, TheGraphsLayoutTellsSlotsLabelsAndCallouts)
{
    addFour({10.0F, 10.0F, 10.0F, 10.0F});
    graph->setDrawingStrategy(std::make_shared<LineGraphDrawing>());
    dynamic_cast<TOLVLineAxis&>(*graph->horizontalAxis()).setTickLabels({{"a", "b", "c", "d"}});
    const GraphLayout layout = graph->layoutInRect({0.0, 0.0, 400.0, 100.0});
    ASSERT_TRUE(layout.horizontalAxis);
    EXPECT_EQ(layout.horizontalAxis->kind, "TOLVLineAxis");
    EXPECT_EQ(layout.horizontalAxis->slotCenters, (std::vector<double>{57.5, 152.5, 247.5, 342.5}));
    EXPECT_TRUE(layout.horizontalAxis->majorTicks.empty());
    ASSERT_EQ(layout.horizontalAxis->labels.size(), 4U);
    EXPECT_EQ(layout.horizontalAxis->labels[3].text, "d");
    EXPECT_EQ(layout.horizontalAxis->labels[3].value, 4.0);
    EXPECT_EQ(layout.callouts, drawing.calloutPlacements(*graph, {0.0, 0.0, 400.0, 100.0}));
    EXPECT_EQ(layout.callouts.size(), 4U);
}

} // namespace
} // namespace TOLVGraphing
