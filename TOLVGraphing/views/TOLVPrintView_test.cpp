#include "TOLVPrintView.h"

#include "../graph/TOLVGraph.h"
#include "../platform/foundation/Log.h"
#include "../platform/graphics/RecordingContext.h"
#include "GraphSnapshot.h"
#include "LabelMargins.h"

#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/DrawnLines.h>
#include <tests/support/PlacedDrawing.h>
#include <tests/support/RecordingServices.h>

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::EvenTextScope;
using testing_support::PlacedMark;
using testing_support::placedMarks;
using testing_support::RecordingRenderer;
using testing_support::RendererScope;
using Lines = std::vector<std::string>;
using Entries = TOLVPrintView::Entries;
using Views = std::vector<std::shared_ptr<View>>;

const Color kRed(1.0, 0.0, 0.0);

PrintInfo sheetWithArea(double width, double height)
{
    PrintInfo info;
    info.leftMargin = 10.0;
    info.rightMargin = 20.0;
    info.topMargin = 30.0;
    info.bottomMargin = 40.0;
    info.paperSize = {width + 30.0, height + 70.0};
    return info;
}

std::shared_ptr<TOLVGraphData> series(const std::optional<std::string>& name, const std::optional<Color>& color)
{
    auto one = TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents({0.0F, 1.0F}), TOLVRealVector::vectorWithComponents({2.0F, 3.0F}), color);
    one->setName(name);
    return one;
}

class TOLVPrintViewTest : public testing::Test {
protected:
    std::shared_ptr<TOLVPrintView> pageWithArea(double width, double height, Entries entries = {})
    {
        auto page = TOLVPrintView::initWithPrintInfo(sheetWithArea(width, height), *screenView, std::move(entries));
        page->setRedisplayHandler([this] { ++requests; });
        return page;
    }

    static Lines displayed(View& view)
    {
        RecordingContext context;
        view.displayInContext(context);
        EXPECT_EQ(context.depth(), 0);
        return context.calls();
    }

    EvenTextScope text;
    Lines log;
    LogSinkScope sink{[this](std::string_view line) { log.emplace_back(line); }};
    std::shared_ptr<TOLVGraphView> screenView = TOLVGraphView::initWithFrame({7.0, 8.0, 300.0, 200.0});
    int requests = 0;
};

TEST_F(TOLVPrintViewTest, ItsFrameIsThePrintableAreaOfThePaper)
{
    EXPECT_EQ(pageWithArea(500.0, 700.0)->frame(), Rect(0.0, 0.0, 500.0, 700.0));
    // A4 with the margins of a new print job.
    EXPECT_EQ(TOLVPrintView::initWithPrintInfo({}, *screenView, {})->frame(), Rect(0.0, 0.0, 451.0, 662.0));
}

TEST_F(TOLVPrintViewTest, KeepsThePrintSettingsItWasMadeWith)
{
    const auto page = pageWithArea(500.0, 700.0);
    EXPECT_EQ(page->printInfo(), sheetWithArea(500.0, 700.0));
    page->setPrintInfo(sheetWithArea(100.0, 50.0));
    EXPECT_EQ(page->printInfo(), sheetWithArea(100.0, 50.0));
    EXPECT_TRUE(page->printInfo().isLandscape());
    EXPECT_EQ(page->frame(), Rect(0.0, 0.0, 500.0, 700.0));
}

TEST_F(TOLVPrintViewTest, ShowsACopyOfTheViewAndTheSameGraph)
{
    const auto page = pageWithArea(500.0, 700.0);
    EXPECT_NE(page->plotView(), screenView);
    EXPECT_EQ(page->plotView()->graph(), screenView->graph());
    EXPECT_EQ(page->plotView()->frame(), screenView->frame());
    displayed(*page);
    EXPECT_EQ(screenView->frame(), Rect(7.0, 8.0, 300.0, 200.0));
    EXPECT_EQ(screenView->superview(), nullptr);
}

TEST_F(TOLVPrintViewTest, PutsThePlotAtTheTopAndTheLegendBelowIt)
{
    const auto page = pageWithArea(500.0, 700.0);
    EXPECT_TRUE(page->isFlipped());
    EXPECT_EQ(page->legendView(), nullptr);
    displayed(*page);
    EXPECT_EQ(page->plotView()->frame(), Rect(0.0, 0.0, 500.0, 200.0));
    ASSERT_NE(page->legendView(), nullptr);
    EXPECT_EQ(page->legendView()->frame(), Rect(0.0, 205.0, 500.0, 500.0));
    EXPECT_EQ(page->legendView()->dataSource(), page->plotView());
    EXPECT_EQ(page->subviews(), (Views{page->plotView(), page->legendView()}));
}

TEST_F(TOLVPrintViewTest, EverythingStandsUprightOnThePaper)
{
    const auto page = pageWithArea(500.0, 700.0, {{"abcd", kRed}});
    const auto marks = placedMarks(displayed(*page));
    ASSERT_EQ(marks.size(), 3U);
    // The plot's background; the paper's upper edge is 700.
    EXPECT_EQ(marks[0].rect, Rect(0.0, 500.0, 500.0, 200.0));
    EXPECT_EQ(marks[0].clip, Rect(0.0, 500.0, 500.0, 200.0));
    // The legend begins at 495 and is cut off at the end of the page.
    EXPECT_EQ(marks[1].rect, Rect(492.0, 485.0, 6.0, 6.0));
    EXPECT_EQ(marks[1].clip, Rect(0.0, 0.0, 500.0, 495.0));
    EXPECT_EQ(marks[2].text, "abcd");
    EXPECT_EQ(marks[2].rect.origin, (Point{466.0, 483.0}));
    EXPECT_TRUE(marks[2].isUpright);
}

TEST_F(TOLVPrintViewTest, TheGraphOnThePaperIsTheGraphMovedUp)
{
    const auto graph = screenView->graph();
    graph->addGraphData(series("a", kRed));
    graph->setExtents(graph->extentsFittingGraphData());
    graph->setTitle("title");
    const auto alone = TOLVGraphView::initWithFrame({0.0, 0.0, 500.0, 200.0});
    alone->setGraph(graph);
    const auto expected = placedMarks(displayed(*alone));
    const auto marks = placedMarks(displayed(*pageWithArea(500.0, 700.0)));
    ASSERT_GT(expected.size(), 5U);
    ASSERT_EQ(marks.size(), expected.size());
    for (std::size_t i = 0; i < marks.size(); ++i) {
        EXPECT_EQ(marks[i].text, expected[i].text);
        EXPECT_EQ(marks[i].isUpright, expected[i].isUpright) << marks[i].text;
        EXPECT_EQ(marks[i].rect.x(), expected[i].rect.x()) << marks[i].text;
        // Sums in another order: what differs is rounding.
        EXPECT_NEAR(marks[i].rect.y(), expected[i].rect.y() + 500.0, 1e-9) << marks[i].text;
    }
}

TEST_F(TOLVPrintViewTest, LogsEachDrawingWithTheSizeOfThePage)
{
    struct Row {
        double width;
        double height;
        const char* line;
    };
    const Row rows[] = {
        // clang-format off
        {500.0, 700.0,  "(ERROR) TOLVGraphing/TOLVPrintView : Printing portrait to rect (0.000000,0.000000,500.000000,700.000000)"},
        {700.0, 500.0,  "(ERROR) TOLVGraphing/TOLVPrintView : Printing landscape to rect (0.000000,0.000000,700.000000,500.000000)"},
        {500.0, 500.0,  "(ERROR) TOLVGraphing/TOLVPrintView : Printing portrait to rect (0.000000,0.000000,500.000000,500.000000)"},
        {0.25,  1e15,   "(ERROR) TOLVGraphing/TOLVPrintView : Printing portrait to rect (0.000000,0.000000,0.250000,1000000000000000.000000)"},
        // clang-format on
    };
    for (const Row& row : rows) {
        log.clear();
        const auto page = pageWithArea(row.width, row.height);
        displayed(*page);
        EXPECT_EQ(log, Lines{row.line});
        displayed(*page);
        EXPECT_EQ(log, (Lines{row.line, row.line}));
    }
}

TEST_F(TOLVPrintViewTest, LogsPagesOfAnySize)
{
    constexpr double kMaximum = std::numeric_limits<double>::max();
    PrintInfo info;
    info.paperSize = {kMaximum, kMaximum};
    info.leftMargin = info.rightMargin = info.topMargin = info.bottomMargin = 0.0;
    const auto page = TOLVPrintView::initWithPrintInfo(info, *screenView, {});
    page->drawRect(page->bounds());
    ASSERT_EQ(log.size(), 1U);
    EXPECT_EQ(log[0].size(), std::string("(ERROR) TOLVGraphing/TOLVPrintView : Printing portrait to rect (0.000000,0.000000,.000000,.000000)").size() + 2U * 309U);
}

TEST_F(TOLVPrintViewTest, IsLaidOutOnceHoweverOftenItIsDrawn)
{
    const auto page = pageWithArea(500.0, 700.0, {{"abcd", kRed}});
    const Lines first = displayed(*page);
    const auto legend = page->legendView();
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(displayed(*page), first);
    EXPECT_EQ(page->legendView(), legend);
    EXPECT_EQ(page->subviews(), (Views{page->plotView(), legend}));
}

TEST_F(TOLVPrintViewTest, DrawingItTwiceAsksForNoThirdDrawing)
{
    const auto page = pageWithArea(500.0, 700.0, {{"abcd", kRed}});
    displayed(*page);
    const int askedByLayout = requests;
    EXPECT_LE(askedByLayout, 1);
    displayed(*page);
    EXPECT_EQ(requests, askedByLayout);
    EXPECT_FALSE(page->needsDisplay());
    EXPECT_FALSE(page->plotView()->needsDisplay());
    EXPECT_FALSE(page->legendView()->needsDisplay());
}

TEST_F(TOLVPrintViewTest, EntriesAreCopiedAndMayBeEditedBetweenDrawings)
{
    Entries entries{{"abcd", kRed}};
    const auto page = pageWithArea(500.0, 700.0, entries);
    entries[0].title = "changed";
    EXPECT_EQ(page->entries(), (Entries{{"abcd", kRed}}));
    displayed(*page);
    page->entries().push_back({"ef", std::nullopt});
    displayed(*page);
    EXPECT_EQ(page->legendView()->entries(), (Entries{{"abcd", kRed}, {"ef", std::nullopt}}));
    page->setEntries({});
    displayed(*page);
    EXPECT_TRUE(page->legendView()->entries().empty());
}

TEST_F(TOLVPrintViewTest, ALegendThatWasTakenAwayComesBack)
{
    const auto page = pageWithArea(500.0, 700.0);
    displayed(*page);
    const auto legend = page->legendView();
    legend->removeFromSuperview();
    page->plotView()->removeFromSuperview();
    displayed(*page);
    EXPECT_EQ(page->subviews(), (Views{page->plotView(), legend}));
}

TEST_F(TOLVPrintViewTest, APlotViewIsCopiedOnSettingAndReplacesTheFormerOne)
{
    const auto page = pageWithArea(500.0, 700.0);
    displayed(*page);
    const auto former = page->plotView();
    const auto other = TOLVGraphView::initWithFrame({0.0, 0.0, 10.0, 10.0});
    page->setPlotView(other);
    EXPECT_NE(page->plotView(), other);
    EXPECT_EQ(page->plotView()->graph(), other->graph());
    EXPECT_EQ(former->superview(), nullptr);
    displayed(*page);
    EXPECT_EQ(page->plotView()->frame(), Rect(0.0, 0.0, 500.0, 200.0));
    EXPECT_EQ(page->legendView()->dataSource(), page->plotView());
    EXPECT_EQ(page->subviews().size(), 2U);
}

TEST_F(TOLVPrintViewTest, WithoutAPlotViewShowsTheLegendWhereItAlwaysIs)
{
    const auto page = pageWithArea(500.0, 700.0, {{"abcd", kRed}});
    page->setPlotView(nullptr);
    const auto marks = placedMarks(displayed(*page));
    EXPECT_EQ(page->plotView(), nullptr);
    EXPECT_EQ(page->legendView()->frame(), Rect(0.0, 205.0, 500.0, 500.0));
    EXPECT_EQ(page->subviews(), (Views{page->legendView()}));
    ASSERT_EQ(marks.size(), 2U);
    EXPECT_EQ(marks[1].text, "abcd");
    page->setPlotView(screenView);
    displayed(*page);
    EXPECT_EQ(page->subviews().size(), 2U);
}

TEST_F(TOLVPrintViewTest, WithoutAPrintableAreaIsNotDrawn)
{
    const auto page = pageWithArea(-60.0, 80.0);
    EXPECT_EQ(page->frame(), Rect(0.0, 0.0, -60.0, 80.0));
    displayed(*page);
    EXPECT_TRUE(log.empty());
    EXPECT_TRUE(page->subviews().empty());
}

TEST_F(TOLVPrintViewTest, SettingsThatAreNotFiniteGiveAnEmptyPage)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double length : {infinity, -infinity, nan}) {
        for (const bool isWidth : {true, false}) {
            const auto page = pageWithArea(isWidth ? length : 500.0, isWidth ? 700.0 : length);
            EXPECT_EQ(page->frame(), Rect()) << length;
            EXPECT_TRUE(displayed(*page).size() <= 3U);
            EXPECT_TRUE(log.empty());
            EXPECT_TRUE(page->subviews().empty());
        }
    }
    PrintInfo info;
    info.paperSize.width = infinity;
    info.leftMargin = infinity;
    EXPECT_EQ(TOLVPrintView(info).frame(), Rect());
}

TEST_F(TOLVPrintViewTest, OtherSettingsEntriesAndPlotsAskForRedisplay)
{
    const auto page = pageWithArea(500.0, 700.0, {{"abcd", kRed}});
    const auto taken = [&] {
        displayed(*page);
        displayed(*page);
        return std::exchange(requests, 0);
    };
    taken();
    page->setPrintInfo(PrintInfo(page->printInfo()));
    page->setEntries(Entries(page->entries()));
    EXPECT_EQ(taken(), 0);
    page->setPrintInfo(PrintInfo());
    EXPECT_EQ(requests, 1);
    taken();
    page->setEntries({});
    EXPECT_EQ(requests, 1);
    taken();
    page->setPlotView(screenView);
    EXPECT_EQ(requests, 1);
    taken();
    page->setPlotView(nullptr);
    EXPECT_EQ(requests, 1);
}

TEST_F(TOLVPrintViewTest, FitsTheMarginsOfItsPlotWhereTheViewOnTheScreenDoes)
{
    screenView->graph()->addGraphData(series("a", kRed));
    screenView->graph()->setExtents(screenView->graph()->extentsFittingGraphData());
    EXPECT_FALSE(pageWithArea(500.0, 700.0)->plotView()->fitsMarginsToLabels());
    screenView->setFitsMarginsToLabels(true);
    const auto page = pageWithArea(500.0, 700.0);
    EXPECT_TRUE(page->plotView()->fitsMarginsToLabels());
    displayed(*page);
    const auto expected = snapshotOfGraph(*screenView->graph());
    fitMarginsToLabels(*expected, {0.0, 0.0, 500.0, 200.0});
    EXPECT_EQ(screenView->graph()->margin(), expected->margin());
}

TEST_F(TOLVPrintViewTest, ALowPageHasNoRoomForALegend)
{
    // The plot alone is 280 high.
    const auto page = pageWithArea(700.0, 200.0, {{"abcd", kRed}});
    const auto marks = placedMarks(displayed(*page));
    EXPECT_EQ(page->plotView()->frame(), Rect(0.0, 0.0, 700.0, 280.0));
    EXPECT_EQ(page->legendView()->frame(), Rect(0.0, 285.0, 700.0, -80.0));
    ASSERT_EQ(marks.size(), 1U);
    EXPECT_EQ(marks[0].clip, Rect(0.0, 0.0, 700.0, 200.0));
}

TEST_F(TOLVPrintViewTest, BecomesADocumentOfThePrintableArea)
{
    const auto renderer = std::make_shared<RecordingRenderer>();
    const RendererScope scope(renderer);
    const auto page = pageWithArea(500.0, 700.0, {{"abcd", kRed}});
    EXPECT_FALSE(page->dataWithPDFInsideRect(page->bounds()).empty());
    ASSERT_EQ(renderer->documents().size(), 1U);
    EXPECT_EQ(renderer->documents()[0].size, (Size{500.0, 700.0}));
    const auto marks = placedMarks(renderer->documents()[0].calls);
    ASSERT_EQ(marks.size(), 3U);
    EXPECT_EQ(marks[0].rect, Rect(0.0, 500.0, 500.0, 200.0));
    EXPECT_EQ(marks[2].rect.origin, (Point{466.0, 483.0}));
}

TEST_F(TOLVPrintViewTest, GoesAwayWithItsLastOwner)
{
    auto page = pageWithArea(500.0, 700.0);
    displayed(*page);
    const std::weak_ptr<View> plot = page->plotView();
    const std::weak_ptr<View> legend = page->legendView();
    page.reset();
    EXPECT_TRUE(plot.expired());
    EXPECT_TRUE(legend.expired());
    screenView->graph()->extents()->x()->setMin(1.0);
}

TEST_F(TOLVPrintViewTest, AGraphsLegendNamesItsSeriesInOrder)
{
    const auto graph = TOLVGraph::graph();
    EXPECT_TRUE(legendEntriesOfGraph(*graph).empty());
    graph->addGraphData(series("a", kRed));
    graph->addGraphData(series(std::nullopt, std::nullopt));
    graph->addGraphData(series("", kRed));
    graph->addGraphData(series(std::nullopt, kRed));
    graph->graphData()[3]->setLineStyle(nullptr);
    EXPECT_EQ(legendEntriesOfGraph(*graph), (Entries{{"a", kRed}, {"Series 2", std::nullopt}, {"", kRed}, {"Series 4", std::nullopt}}));
}

} // namespace
} // namespace TOLVGraphing
