#include "TOLVGraph.h"

#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/DrawnLines.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::EvenTextScope;
using testing_support::linesDrawn;
using testing_support::linesWith;
using Lines = std::vector<std::string>;
using Journal = std::shared_ptr<Lines>;

const Rect kRect(0.0, 0.0, 400.0, 300.0);

/// An axis that writes down what it is asked to do.
class JournalAxis final : public TOLVAxis {
public:
    JournalAxis(std::string name, Journal journal) : m_name(std::move(name)), m_journal(std::move(journal)) {}

    std::shared_ptr<TOLVAxis> copy() const override
    {
        auto axis = std::make_shared<JournalAxis>(m_name, m_journal);
        copyPropertiesInto(*axis);
        return axis;
    }
    void prepareForDrawingInRect(const Rect& rect) override { note("prepare", rect); }
    void drawMinorLinesInRect(const Rect& rect) const override { note("minor lines", rect); }
    void drawMajorLinesInRect(const Rect& rect) const override { note("major lines", rect); }
    void drawTickLabelsInRect(const Rect& rect) const override { note("tick labels", rect); }
    void drawLabelInRect(const Rect& rect) const override { note("title", rect); }
    void drawMarkers(const Markers& markers, const Rect& inRect) const override
    {
        std::string values;
        for (const auto& marker : markers)
            values += std::to_string(static_cast<int>(marker->value())) + " ";
        note("markers " + values + "in", inRect);
    }

private:
    void note(const std::string& what, const Rect& rect) const { m_journal->push_back(m_name + " " + what + " " + toString(rect)); }

    std::string m_name;
    Journal m_journal;
};

/// A strategy that writes down what it is asked to do, without markers.
class JournalDrawing : public TOLVGraphDrawing {
public:
    explicit JournalDrawing(Journal journal) : m_journal(std::move(journal)) {}
    void drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect) override
    {
        m_journal->push_back("data of " + std::to_string(graph->graphData().size()) + " series " + toString(inRect));
    }

protected:
    Journal m_journal;
};

/// The same with markers.
class JournalMarkerDrawing final : public JournalDrawing, public TOLVGraphMarkerDrawing {
public:
    using JournalDrawing::JournalDrawing;
    void drawMarkers(const std::vector<std::shared_ptr<TOLVMarker>>& markers, const std::shared_ptr<TOLVGraph>& forGraph, const Rect& inRect) override
    {
        EXPECT_EQ(markers, forGraph->markers());
        m_journal->push_back("overlay of " + std::to_string(markers.size()) + " markers " + toString(inRect));
    }
};

class TOLVGraphDrawingTest : public testing::Test {
protected:
    void useJournal()
    {
        graph->setHorizontalAxis(std::make_shared<JournalAxis>("horizontal", journal));
        graph->setVerticalAxis(std::make_shared<JournalAxis>("vertical", journal));
        graph->setDrawingStrategy(std::make_shared<JournalMarkerDrawing>(journal));
    }

    void addMarker(double value, std::int64_t axisIndex) { graph->placeHorizontalAxisMarkerWithValue(value)->setAxisIndex(axisIndex); }

    EvenTextScope text;
    Journal journal = std::make_shared<Lines>();
    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
};

// Layout.

TEST_F(TOLVGraphDrawingTest, RectanglesWithTheDefaultMargin)
{
    EXPECT_EQ(toString(graph->dataRectInRect(kRect)), "(30, 15, 355, 270)");
    EXPECT_EQ(toString(graph->horizontalAxisRectInRect(kRect)), "(30, 0, 355, 285)");
    EXPECT_EQ(toString(graph->verticalAxisRectInRect(kRect)), "(0, 15, 385, 270)");
    EXPECT_EQ(toString(graph->titleBandInRect(kRect)), "(30, 285, 355, 15)");
}

TEST_F(TOLVGraphDrawingTest, MarginAndPaddingAddUpOnEachSide)
{
    graph->setMargin({1.0, 2.0, 4.0, 8.0});
    graph->setPadding({16.0, 32.0, 64.0, 128.0});
    const Rect rect(1000.0, 2000.0, 400.0, 300.0);
    EXPECT_EQ(toString(graph->dataRectInRect(rect)), "(1034, 2068, 230, 215)");
    EXPECT_EQ(toString(graph->horizontalAxisRectInRect(rect)), "(1034, 2000, 230, 283)");
    EXPECT_EQ(toString(graph->verticalAxisRectInRect(rect)), "(1000, 2068, 264, 215)");
    EXPECT_EQ(toString(graph->titleBandInRect(rect)), "(1034, 2283, 230, 17)");
}

TEST_F(TOLVGraphDrawingTest, SumsAreEvaluatedInTheirOrder)
{
    graph->setMargin({0.1, 0.2, 0.3, 0.7});
    graph->setPadding({0.4, 0.5, 0.6, 0.9});
    const Rect rect(0.1, 0.2, 100.3, 50.7);
    const Rect data = graph->dataRectInRect(rect);
    EXPECT_EQ(data.x(), 0.1 + (0.5 + 0.2));
    EXPECT_EQ(data.y(), 0.2 + (0.6 + 0.3));
    EXPECT_EQ(data.width(), 100.3 - (((0.5 + 0.2) + 0.9) + 0.7));
    EXPECT_EQ(data.height(), 50.7 - (((0.6 + 0.3) + 0.4) + 0.1));
    EXPECT_EQ(graph->horizontalAxisRectInRect(rect).width(), 100.3 - (((0.9 + 0.7) + 0.5) + 0.2));
    EXPECT_EQ(graph->horizontalAxisRectInRect(rect).height(), 50.7 - (0.4 + 0.1));
    EXPECT_EQ(graph->verticalAxisRectInRect(rect).width(), 100.3 - (0.9 + 0.7));
    EXPECT_EQ(graph->titleBandInRect(rect).y(), 0.2 + ((50.7 - 0.1) - 0.4));
    EXPECT_EQ(graph->titleBandInRect(rect).width(), (((100.3 - 0.5) - 0.2) - 0.9) - 0.7);
}

TEST_F(TOLVGraphDrawingTest, NegativeSizesArePassedOn)
{
    EXPECT_EQ(toString(graph->dataRectInRect({0.0, 0.0, 10.0, 10.0})), "(30, 15, -35, -20)");
}

TEST_F(TOLVGraphDrawingTest, PreparationWritesTheInsetsIntoTheAxes)
{
    graph->setMargin({1.0, 2.0, 4.0, 8.0});
    graph->setPadding({16.0, 32.0, 64.0, 128.0});
    graph->horizontalAxis()->setMargin(99.0);
    graph->prepareForDrawingInRect(kRect);
    EXPECT_EQ(graph->horizontalAxis()->margin(), 4.0);
    EXPECT_EQ(graph->horizontalAxis()->padding(), 64.0);
    EXPECT_EQ(graph->verticalAxis()->margin(), 2.0);
    EXPECT_EQ(graph->verticalAxis()->padding(), 32.0);
    // So the axes' own data areas are the graph's.
    EXPECT_EQ(toString(graph->horizontalAxis()->dataRectInRect(graph->horizontalAxisRectInRect(kRect))), toString(graph->dataRectInRect(kRect)));
    EXPECT_EQ(toString(graph->verticalAxis()->dataRectInRect(graph->verticalAxisRectInRect(kRect))), toString(graph->dataRectInRect(kRect)));
}

// Order.

TEST_F(TOLVGraphDrawingTest, OnePassAsksInItsOrder)
{
    useJournal();
    graph->addGraphData(std::make_shared<TOLVGraphData>());
    graph->setTitle("title");
    addMarker(10.0, 0);
    addMarker(20.0, 1);
    addMarker(30.0, 2);
    addMarker(40.0, 0);
    addMarker(50.0, -1);
    graph->drawInRect(kRect);
    EXPECT_EQ(*journal,
        (Lines{
            "horizontal prepare (30, 0, 355, 285)",
            "vertical prepare (0, 15, 385, 270)",
            "horizontal minor lines (30, 0, 355, 285)",
            "vertical minor lines (0, 15, 385, 270)",
            "horizontal major lines (30, 0, 355, 285)",
            "vertical major lines (0, 15, 385, 270)",
            "horizontal tick labels (30, 0, 355, 285)",
            "vertical tick labels (0, 15, 385, 270)",
            "horizontal markers 10 40 in (30, 0, 355, 285)",
            "vertical markers 20 in (0, 15, 385, 270)",
            "horizontal title (30, 0, 355, 285)",
            "vertical title (0, 15, 385, 270)",
            "data of 1 series (0, 0, 400, 300)",
            "overlay of 5 markers (0, 0, 400, 300)",
        }));
}

TEST_F(TOLVGraphDrawingTest, OnlyTheLineFlagsAreAskedFor)
{
    useJournal();
    graph->horizontalAxis()->setDrawsMinorLines(false);
    graph->verticalAxis()->setDrawsMajorLines(false);
    graph->horizontalAxis()->setDrawsMajorLabels(false);
    graph->horizontalAxis()->setDrawsLabelAtEnd(true);
    graph->drawAxesInRect(kRect);
    EXPECT_EQ(*journal,
        (Lines{
            "vertical minor lines (0, 15, 385, 270)",
            "horizontal major lines (30, 0, 355, 285)",
            "horizontal tick labels (30, 0, 355, 285)",
            "vertical tick labels (0, 15, 385, 270)",
            "horizontal markers in (30, 0, 355, 285)",
            "vertical markers in (0, 15, 385, 270)",
            "horizontal title (30, 0, 355, 285)",
            "vertical title (0, 15, 385, 270)",
        }));
}

TEST_F(TOLVGraphDrawingTest, AStrategyWithoutMarkersIsNotAskedForThem)
{
    useJournal();
    graph->setDrawingStrategy(std::make_shared<JournalDrawing>(journal));
    addMarker(10.0, 0);
    graph->drawMarkersInRect(kRect);
    EXPECT_TRUE(journal->empty());
    graph->drawInRect(kRect);
    EXPECT_EQ(journal->back(), "data of 0 series (0, 0, 400, 300)");
}

TEST_F(TOLVGraphDrawingTest, WithoutAnAxisDataTitleAndMarkersAreStillDrawn)
{
    for (const bool horizontal : {false, true}) {
        useJournal();
        journal->clear();
        graph->setTitle("title");
        if (horizontal)
            graph->setHorizontalAxis(nullptr);
        else
            graph->setVerticalAxis(nullptr);
        const Lines lines = linesDrawn([&] { graph->drawInRect(kRect); });
        EXPECT_EQ(*journal, (Lines{"data of 0 series (0, 0, 400, 300)", "overlay of 0 markers (0, 0, 400, 300)"}));
        EXPECT_EQ(lines.size(), 1U);
    }
}

TEST_F(TOLVGraphDrawingTest, TheStagesReachTheContextInTheirOrder)
{
    graph->addGraphData(
        TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents({0.0F, 5.0F, 10.0F}), TOLVRealVector::vectorWithComponents({0.0F, 5.0F, 10.0F}), Color(0.0, 0.0, 1.0)));
    graph->zoomXToFixedMin(0.0F, 10.0F);
    graph->zoomYToFixedMin(0.0, 10.0);
    graph->setMajorLineStyle(TOLVLineStyle::solidLineWithColor(Color(1.0, 0.0, 0.0), 1.0));
    graph->setMinorLineStyle(TOLVLineStyle::solidLineWithColor(Color(0.0, 1.0, 0.0), 0.5));
    graph->horizontalAxis()->setLabel("time");
    graph->verticalAxis()->setLabel("volt");
    graph->setTitle("title");
    addMarker(5.0, 0);
    const Lines lines = linesDrawn([&] { graph->drawInRect(kRect); });
    const auto place = [&](const std::string& beginning, std::size_t from = 0) {
        const auto found = std::find_if(lines.begin() + static_cast<std::ptrdiff_t>(from), lines.end(), [&](const auto& line) { return line.starts_with(beginning); });
        EXPECT_NE(found, lines.end()) << beginning;
        return static_cast<std::size_t>(found - lines.begin());
    };
    std::size_t at = place("strokeColor (0, 1, 0, 1)");
    const std::size_t lastMinor = static_cast<std::size_t>(lines.rend() - std::find(lines.rbegin(), lines.rend(), "strokeColor (0, 1, 0, 1)"));
    for (const char* next : {"strokeColor (1, 0, 0, 1)", "text \"0\"", "fillColor (0, 0, 0, 1)", "text \"5\" HelveticaNeue-Light 12 (1, 1, 1, 1)", "text \"time\"", "text \"volt\"",
             "strokeColor (0, 0, 1, 1)", "text \"title\"", "fillColor (0, 0, 1, 1)", "text \"5\" HelveticaNeue-Light 12 (0, 0, 1, 1)"}) {
        const std::size_t following = place(next, at);
        EXPECT_GT(following, at);
        at = following;
    }
    EXPECT_LT(lastMinor, place("strokeColor (1, 0, 0, 1)"));
}

// Title.

TEST_F(TOLVGraphDrawingTest, TheTitleIsLeftAlignedBelowTheTopPadding)
{
    graph->setTitle("title");
    graph->setTitleAttributes(makeTextAttributes(Font{"Helvetica", 14.0}));
    for (const double top : {0.0, 15.0, 100.0}) {
        graph->setMargin({top, 30.0, 15.0, 15.0});
        graph->setPadding({20.0, 0.0, 0.0, 0.0});
        EXPECT_EQ(linesDrawn([&] { graph->drawTitleInRect(kRect); }), (Lines{"text \"title\" Helvetica 14 (0, 0, 0, 1) at (30, 266)"})) << top;
    }
}

TEST_F(TOLVGraphDrawingTest, WithoutATitleNothingIsDrawnNorMeasured)
{
    const int before = text->questions();
    EXPECT_TRUE(linesDrawn([&] { graph->drawTitleInRect(kRect); }).empty());
    EXPECT_EQ(text->questions(), before);
    graph->setTitle("");
    EXPECT_EQ(linesDrawn([&] { graph->drawTitleInRect(kRect); }).size(), 1U);
}

TEST_F(TOLVGraphDrawingTest, WithoutAStrategyOrAContextThePassDrawsLess)
{
    graph->setTitle("title");
    graph->drawInRect(kRect);
    graph->setDrawingStrategy(nullptr);
    EXPECT_EQ(linesWith(linesDrawn([&] { graph->drawInRect(kRect); }), "text").size(), 1U);
}

} // namespace
} // namespace TOLVGraphing
