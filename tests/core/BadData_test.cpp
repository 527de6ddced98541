// What is drawn of bad data: every kind of it through every strategy on every pair of axes, into rectangles of every kind. Nothing throws, what is drawn stays little and finite, and everything that is painted lies in a clip.

#include "../support/BadData.h"
#include "../support/CheckingContext.h"
#include "../support/DrawnLines.h"

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/foundation/Log.h>
#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVGraphing/platform/graphics/NullContext.h>
#include <TOLVGraphing/views/GraphDescription.h>
#include <TOLVGraphing/views/GraphInteraction.h>
#include <TOLVGraphing/views/GraphSheet.h>
#include <TOLVGraphing/views/GraphSnapshot.h>
#include <TOLVGraphing/views/TOLVGraphView.h>
#include <TOLVGraphing/views/TOLVPrintView.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing::testing_support {

namespace {

/// What one pass over a few series of at most ten samples may hand to a context: frames, grids, some dozens of labels and badges, and for each sample a mark, a dot and a callout.
constexpr std::size_t kMostCalls = 2000;
constexpr std::size_t kMostPoints = 10'000;
constexpr std::size_t kMostBytes = 400'000;
/// Ninety to a decade, where nothing is known of the distance between them.
constexpr std::size_t kMostTicks = 10'000;

constexpr BadEnds kAllEnds[] = {BadEnds::X, BadEnds::Y, BadEnds::Both};

/// The rectangle that a cell of series and ranges is drawn into besides the ordinary one: each comes round.
std::size_t rectOfCell(std::size_t series, std::size_t range, std::size_t ends)
{
    return 1 + (5 * series + 3 * range + 7 * ends) % (badRects().size() - 1);
}

std::string nameOfCell(const BadSeries* series, const BadRange& range, BadEnds ends, const BadRect& rect)
{
    const char* endNames[] = {"x", "y", "both"};
    return (series ? series->name : "all series") + ", range " + range.name + " of " + endNames[static_cast<std::size_t>(ends)] + ", rectangle " + rect.name;
}

/// A rectangle's points whatever the signs of its sides, with a point around for rounding.
Rect around(const Rect& rect)
{
    const Rect upright(std::min(rect.x(), rect.maxX()), std::min(rect.y(), rect.maxY()), std::abs(rect.width()), std::abs(rect.height()));
    return insetRect(upright, -1.0, -1.0);
}

bool contains(const Rect& outer, const Rect& inner)
{
    return inner.isEmpty() || (inner.x() >= outer.x() && inner.y() >= outer.y() && inner.maxX() <= outer.maxX() && inner.maxY() <= outer.maxY());
}

/// The tests of one pair of axes, which each strategy draws on.
class BadDataDrawing : public testing::TestWithParam<NamedAxes> {
protected:
    static void TearDownTestSuite() { s_cells.print("cells of bad data"); }

    /// Calls the operation with a new graph for each strategy.
    template <typename Operation>
    void forEachStrategy(Operation operation)
    {
        for (m_strategy = 0; m_strategy < allStrategies().size(); ++m_strategy) {
            graph = badDataGraph(allStrategies()[m_strategy], GetParam());
            SCOPED_TRACE(allStrategies()[m_strategy].name);
            ASSERT_NO_FATAL_FAILURE(operation());
        }
    }

    void addAllSeries() const
    {
        for (const BadSeries& series : badSeries())
            graph->addGraphData(series.series());
    }

    void count(std::size_t series, std::size_t range, std::size_t ends, std::size_t rect) const { s_cells.add(GetParam().name, {m_strategy, series, range, ends, rect}); }

    /// Draws the graph as it is and checks what reaches the context.
    void expectSoundDrawing(const BadRect& rect) const
    {
        NullContext null;
        CheckingContext context(null);
        const CurrentContextScope scope(context);
        ASSERT_NO_THROW(graph->drawInRect(rect.rect));
        ASSERT_TRUE(context.isBalanced());
        ASSERT_LE(context.calls(), kMostCalls);
        ASSERT_LE(context.points(), kMostPoints);
        // What is computed of numbers that are not finite passes through: contexts leave out what they cannot draw.
        if (rect.isFinite) {
            ASSERT_EQ(context.notFinite(), "");
            expectClippedData(rect.rect);
        }
    }

    /// What the strategy paints lies in a clip that lies in the data area.
    void expectClippedData(const Rect& rect) const
    {
        NullContext null;
        CheckingContext context(null);
        const CurrentContextScope scope(context);
        graph->drawDataInRect(rect);
        graph->drawMarkersInRect(rect);
        ASSERT_TRUE(contains(around(graph->dataRectInRect(rect)), context.paintedClip())) << toString(context.paintedClip());
    }

    std::shared_ptr<TOLVGraph> graph;
    std::size_t m_strategy = 0;

private:
    static inline CellCount s_cells;
};

TEST_P(BadDataDrawing, ofEverySeriesInEveryRangeIsBoundedFiniteAndClipped)
{
    const auto drawCell = [&](std::size_t series, std::size_t range, std::size_t ends) {
        const std::size_t rectOfThis = ends == 2 ? 0 : rectOfCell(series, range, ends);
        const BadRect& rect = badRects()[rectOfThis];
        setBadRange(*graph, badRanges()[range], kAllEnds[ends]);
        count(series, range, ends, rectOfThis);
        SCOPED_TRACE(nameOfCell(&badSeries()[series], badRanges()[range], kAllEnds[ends], rect));
        expectSoundDrawing(rect);
    };
    forEachStrategy([&] {
        for (std::size_t series = 0; series < badSeries().size(); ++series) {
            graph->clearGraphData();
            graph->addGraphData(badSeries()[series].series());
            for (std::size_t range = series % kCellStep; range < badRanges().size(); range += kCellStep) {
                for (std::size_t ends = 0; ends < std::size(kAllEnds); ++ends)
                    ASSERT_NO_FATAL_FAILURE(drawCell(series, range, ends));
            }
        }
    });
}

TEST_P(BadDataDrawing, ofAllSeriesIntoEveryRectangleIsBoundedFiniteAndClipped)
{
    const auto drawCell = [&](std::size_t range, std::size_t rect) {
        setBadRange(*graph, badRanges()[range], BadEnds::Both);
        count(badSeries().size(), range, 2, rect);
        SCOPED_TRACE(nameOfCell(nullptr, badRanges()[range], BadEnds::Both, badRects()[rect]));
        expectSoundDrawing(badRects()[rect]);
    };
    forEachStrategy([&] {
        addAllSeries();
        for (std::size_t range = 0; range < badRanges().size(); ++range) {
            for (std::size_t rect = range % kCellStep; rect < badRects().size(); rect += kCellStep)
                ASSERT_NO_FATAL_FAILURE(drawCell(range, rect));
        }
    });
}

TEST_P(BadDataDrawing, recordedIsShortText)
{
    const auto drawCell = [&](std::size_t range) {
        const std::size_t rect = range % badRects().size();
        setBadRange(*graph, badRanges()[range], BadEnds::X);
        count(badSeries().size(), range, 0, rect);
        SCOPED_TRACE(nameOfCell(nullptr, badRanges()[range], BadEnds::X, badRects()[rect]));
        std::size_t bytes = 0;
        for (const std::string& line : linesDrawn([&] { graph->drawInRect(badRects()[rect].rect); }))
            bytes += line.size() + 1;
        ASSERT_LE(bytes, kMostBytes);
    };
    forEachStrategy([&] {
        addAllSeries();
        for (std::size_t range = 0; range < badRanges().size(); ++range)
            ASSERT_NO_FATAL_FAILURE(drawCell(range));
    });
}

INSTANTIATE_TEST_SUITE_P(Axes, BadDataDrawing, testing::ValuesIn(allAxes()), [](const testing::TestParamInfo<NamedAxes>& axes) { return axes.param.name; });

/// What is done with a graph besides drawing it.
class BadDataOperations : public BadDataDrawing {
protected:
    /// Ranges that were numbers are numbers afterwards.
    void expectKeptRanges(const std::function<void()>& operation) const
    {
        const auto isFinite = [](const TOLVAxisExtents& range) { return std::isfinite(range.min()) && std::isfinite(range.max()); };
        const bool xWasFinite = isFinite(*graph->extents()->x());
        const bool yWasFinite = isFinite(*graph->extents()->y());
        ASSERT_NO_THROW(operation());
        ASSERT_TRUE(!xWasFinite || isFinite(*graph->extents()->x())) << toString(*graph->extents());
        ASSERT_TRUE(!yWasFinite || isFinite(*graph->extents()->y())) << toString(*graph->extents());
    }

    void zoomAndPan(const Rect& rect) const
    {
        graph->zoomInXInRect(rect);
        graph->zoomOutYInRect(rect);
        graph->zoomOutXCenteredAtPoint(1e30F, rect);
        graph->zoomInYCenteredAtPoint(-20.0F, rect);
        graph->zoomInXCenteredAtPoint(std::numeric_limits<float>::quiet_NaN(), rect);
        graph->offsetDisplayByX(15.0F, -15.0F, rect);
        graph->offsetDisplayByX(3e38F, -std::numeric_limits<float>::infinity(), rect);
    }

    void ask(const Rect& rect) const
    {
        for (const float at : {0.0F, 5.0F, -1e30F, std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
            static_cast<void>(graph->valueForX(at, rect));
            static_cast<void>(graph->XForValue(at, rect));
            static_cast<void>(graph->valueForY(at, rect));
            static_cast<void>(graph->YForValue(at, rect));
            const std::int64_t index = graph->indexOfHorizontalAxisMarkerAtPoint(static_cast<double>(at), 5.0, rect);
            ASSERT_TRUE(index == kNotFoundIndex || (index >= 0 && index < static_cast<std::int64_t>(graph->countOfMarkers())));
            for (const auto& series : graph->graphData())
                static_cast<void>(series->YValueAtX(at));
        }
        ASSERT_FALSE(graphDescription(*graph).empty());
    }

    /// Every label of a report has a fate, and what is kept has a place.
    void expectSoundLayout(const Rect& rect) const
    {
        const GraphLayout layout = graph->layoutInRect(rect);
        for (const auto* axis : {&layout.horizontalAxis, &layout.verticalAxis}) {
            ASSERT_TRUE(axis->has_value());
            ASSERT_LE((*axis)->majorTicks.size() + (*axis)->minorTicks.size(), kMostTicks);
            for (const auto* labels : {&(*axis)->labels, &(*axis)->markerLabels}) {
                for (const LabelLayout& label : *labels) {
                    ASSERT_TRUE(label.fate != LabelFate::Kept || label.rect.valid()) << label.text;
                    ASSERT_TRUE(!label.collidesWith || *label.collidesWith < labels->size()) << label.text;
                }
            }
        }
        for (const CalloutPlacement& callout : layout.callouts)
            ASSERT_TRUE(callout.fate != CalloutFate::Kept || callout.textRect.valid()) << callout.text;
    }

    /// Gestures over the whole view.
    void gesture(const Rect& rect) const
    {
        const auto view = TOLVGraphView::initWithFrame(rect);
        view->setGraph(graph);
        GraphInteraction interaction(view);
        interaction.pointerMoved({60.0, 45.0});
        static_cast<void>(interaction.readoutText());
        interaction.wheelTurned(3.0, {60.0, 45.0}, {});
        interaction.pointerPressed({60.0, 45.0}, PointerButton::Primary);
        interaction.pointerMoved({1e300, -20.0});
        interaction.pointerReleased({20.0, 45.0}, PointerButton::Primary);
        interaction.pointerPressed({40.0, 45.0}, PointerButton::Secondary);
        interaction.pointerMoved({90.0, 70.0});
        interaction.pointerReleased({90.0, 70.0}, PointerButton::Secondary);
        for (const GraphKey key : {GraphKey::Left, GraphKey::ZoomIn, GraphKey::NextMarker, GraphKey::Right, GraphKey::PreviousMarker})
            interaction.keyPressed(key, {});
    }

    template <typename Operation>
    void forEachCell(Operation operation)
    {
        const auto useCell = [&](std::size_t range, std::size_t ends) {
            const std::size_t rect = (range + 6 * ends) % badRects().size();
            setBadRange(*graph, badRanges()[range], kAllEnds[ends]);
            count(badSeries().size(), range, ends, rect);
            SCOPED_TRACE(nameOfCell(nullptr, badRanges()[range], kAllEnds[ends], badRects()[rect]));
            operation(badRects()[rect].rect);
        };
        forEachStrategy([&] {
            addAllSeries();
            for (std::size_t range = m_strategy % kCellStep; range < badRanges().size(); range += kCellStep) {
                for (std::size_t ends = 0; ends < std::size(kAllEnds); ++ends)
                    ASSERT_NO_FATAL_FAILURE(useCell(range, ends));
            }
        });
    }
};

TEST_P(BadDataOperations, zoomAndPanKeepFiniteRangesFinite)
{
    forEachCell([&](const Rect& rect) { expectKeptRanges([&] { zoomAndPan(rect); }); });
}

TEST_P(BadDataOperations, conversionsAndHitTestsAnswer)
{
    // Infinite abscissae are near to no sample.
    const LogSinkScope log([](std::string_view) {});
    forEachCell([&](const Rect& rect) {
        graph->prepareForDrawingInRect(rect);
        ask(rect);
    });
}

TEST_P(BadDataOperations, layoutReportsAreSound)
{
    forEachCell([&](const Rect& rect) { expectSoundLayout(rect); });
}

TEST_P(BadDataOperations, gesturesKeepFiniteRangesFinite)
{
    const LogSinkScope log([](std::string_view) {});
    forEachCell([&](const Rect& rect) { expectKeptRanges([&] { gesture(rect); }); });
}

TEST_P(BadDataOperations, aSnapshotDrawsTheSame)
{
    forEachCell([&](const Rect& rect) {
        const auto snapshot = snapshotOfGraph(*graph);
        const auto drawn = linesDrawn([&] { snapshot->drawInRect(rect); });
        ASSERT_EQ(drawn, linesDrawn([&] { graph->drawInRect(rect); }));
    });
}

INSTANTIATE_TEST_SUITE_P(Axes, BadDataOperations, testing::ValuesIn(allAxes()), [](const testing::TestParamInfo<NamedAxes>& axes) { return axes.param.name; });

/// Views, sheets and pages of any size around a graph of all series.
class BadDataViews : public testing::TestWithParam<BadRect> {
protected:
    BadDataViews()
    {
        for (const BadSeries& series : badSeries())
            graph->addGraphData(series.series());
    }

    void expectSoundDisplay(View& view) const
    {
        NullContext null;
        CheckingContext context(null);
        ASSERT_NO_THROW(view.displayInContext(context));
        ASSERT_TRUE(context.isBalanced());
        ASSERT_LE(context.calls(), kMostCalls);
        if (GetParam().isFinite) {
            ASSERT_EQ(context.notFinite(), "");
        }
    }

    template <typename Operation>
    void forEachRange(Operation operation)
    {
        for (const BadRange& range : badRanges()) {
            setBadRange(*graph, range, BadEnds::Both);
            SCOPED_TRACE("range " + range.name);
            ASSERT_NO_FATAL_FAILURE(operation());
        }
    }

    std::shared_ptr<TOLVGraph> graph = badDataGraph(allStrategies().front(), allAxes().front());
};

TEST_P(BadDataViews, showGraphsWithFittedMargins)
{
    forEachRange([&] {
        const auto view = TOLVGraphView::initWithFrame(GetParam().rect);
        view->setGraph(graph);
        view->setFitsMarginsToLabels(true);
        expectSoundDisplay(*view);
    });
}

TEST_P(BadDataViews, showLegends)
{
    const auto legend = TOLVLegendView::initWithEntries(legendEntriesOfGraph(*graph), GetParam().rect);
    expectSoundDisplay(*legend);
}

TEST_P(BadDataViews, areSheetsWithLegends)
{
    forEachRange([&] {
        GraphSheet sheet(graph);
        sheet.setLegendEntries({{"one", TOLVLineStyle::dashedLineStyle()}, {"a name without a style", nullptr}, {std::string(300, 'x'), TOLVLineStyle::dottedLineStyle()}});
        NullContext null;
        CheckingContext context(null);
        const CurrentContextScope scope(context);
        ASSERT_NO_THROW(sheet.drawInRect(GetParam().rect));
        ASSERT_TRUE(context.isBalanced());
        ASSERT_LE(context.calls(), kMostCalls);
    });
}

TEST_P(BadDataViews, arePages)
{
    const LogSinkScope log([](std::string_view) {});
    forEachRange([&] {
        const auto view = TOLVGraphView::initWithFrame({0.0, 0.0, 120.0, 90.0});
        view->setGraph(graph);
        PrintInfo info;
        info.paperSize = GetParam().rect.size;
        info.leftMargin = GetParam().rect.x();
        const auto page = TOLVPrintView::initWithPrintInfo(info, *view, legendEntriesOfGraph(*graph));
        // The second time with what the first has laid out.
        expectSoundDisplay(*page);
        expectSoundDisplay(*page);
        ASSERT_EQ(page->subviews().size(), page->frame().isEmpty() ? page->subviews().size() : 2U);
    });
}

INSTANTIATE_TEST_SUITE_P(Rectangles, BadDataViews, testing::ValuesIn(badRects()), [](const testing::TestParamInfo<BadRect>& rect) { return rect.param.name; });

} // namespace

} // namespace TOLVGraphing::testing_support
