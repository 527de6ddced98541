#include "TOLVGraphView.h"

#include "../graph/TOLVGraph.h"
#include "../platform/foundation/Exception.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/RecordingContext.h"
#include "GraphSnapshot.h"
#include "LabelMargins.h"

#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/DrawnLines.h>
#include <tests/support/PlacedDrawing.h>
#include <tests/support/RecordingServices.h>

#include <gtest/gtest.h>

#include <functional>
#include <iterator>
#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::EvenTextScope;
using testing_support::linesDrawn;
using testing_support::PasteboardScope;
using testing_support::RecordingRenderer;
using testing_support::RenderedDocument;
using testing_support::RendererScope;
using testing_support::textOf;
using testing_support::UserDefaultsScope;
using Lines = std::vector<std::string>;
using Series = TOLVGraph::Series;

const Color kRed(1.0, 0.0, 0.0);
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

TOLVGraphData::Samples samples(std::vector<float> values)
{
    return TOLVRealVector::vectorWithComponents(std::move(values));
}

std::shared_ptr<TOLVGraphData> seriesOf(std::vector<float> x, std::vector<float> y, const std::optional<std::string>& name = std::nullopt)
{
    auto series = TOLVGraphData::graphDataWithX(samples(std::move(x)), samples(std::move(y)), kRed);
    series->setName(name);
    return series;
}

std::string nameOfException(const std::function<void()>& action)
{
    try {
        action();
    } catch (const Exception& exception) {
        return exception.name();
    }
    return "none";
}

/// A view, and how often it asked for redisplay.
class TOLVGraphViewTest : public testing::Test {
protected:
    TOLVGraphViewTest()
    {
        view->setRedisplayHandler([this] { ++m_requests; });
    }

    /// The requests since the last time this was asked; the view counts as displayed afterwards.
    int takenRequests()
    {
        RecordingContext context;
        const int requests = std::exchange(m_requests, 0);
        view->displayInContext(context);
        m_requests = 0;
        return requests;
    }

    /// Gives a graph a series and fitting ranges.
    static void fill(TOLVGraph& graph)
    {
        graph.addGraphData(seriesOf({0.0F, 1.0F, 2.0F}, {5.0F, 4.0F, 6.0F}, "a"));
        graph.setExtents(graph.extentsFittingGraphData());
    }

    EvenTextScope text;
    std::shared_ptr<TOLVGraphView> view = TOLVGraphView::initWithFrame({10.0, 20.0, 400.0, 300.0});

private:
    int m_requests = 0;
};

// A new view and its copies.

TEST_F(TOLVGraphViewTest, ANewViewHasAGraphOfItsOwn)
{
    ASSERT_NE(view->graph(), nullptr);
    EXPECT_NE(view->graph(), TOLVGraphView::initWithFrame({})->graph());
    EXPECT_EQ(view->frame(), Rect(10.0, 20.0, 400.0, 300.0));
    EXPECT_FALSE(view->extentsLocked());
    EXPECT_TRUE(view->drawsBackground());
    EXPECT_EQ(view->dataSource(), nullptr);
    EXPECT_FALSE(view->isFlipped());
    EXPECT_FALSE(view->hasEntriesForLegendView());
}

TEST_F(TOLVGraphViewTest, ACopyShowsTheSameGraph)
{
    const auto copy = view->copy();
    EXPECT_NE(copy, view);
    EXPECT_EQ(copy->frame(), view->frame());
    EXPECT_EQ(copy->graph(), view->graph());
    view->graph()->setTitle("both");
    EXPECT_EQ(copy->graph()->title(), "both");
    view->setGraph(nullptr);
    EXPECT_NE(copy->graph(), nullptr);
    EXPECT_EQ(view->copy()->graph(), nullptr);
}

TEST_F(TOLVGraphViewTest, ACopyIsOtherwiseLikeANewView)
{
    view->setExtentsLocked(true);
    view->setDrawsBackground(false);
    view->setDataSource(std::make_shared<TOLVGraphViewDataSource>());
    const auto copy = view->copy();
    EXPECT_FALSE(copy->extentsLocked());
    EXPECT_TRUE(copy->drawsBackground());
    EXPECT_EQ(copy->dataSource(), nullptr);
}

TEST_F(TOLVGraphViewTest, ACopyAnswersTheGraphsChangesToo)
{
    const auto copy = view->copy();
    int copyRequests = 0;
    copy->setRedisplayHandler([&] { ++copyRequests; });
    takenRequests();
    view->graph()->extents()->x()->setMin(1.0);
    EXPECT_EQ(copyRequests, 1);
    EXPECT_EQ(takenRequests(), 1);
}

// Drawing.

TEST_F(TOLVGraphViewTest, ANewViewDrawsAWhiteBackgroundAndNothingElse)
{
    EXPECT_EQ(linesDrawn([&] { view->drawRect(view->bounds()); }),
        (Lines{
            "save",
            "clip M 0 0 L 400 0 L 400 300 L 0 300 Z",
            "save",
            "fillColor (1, 1, 1, 1)",
            "strokeColor (1, 1, 1, 1)",
            "fill M 0 0 L 400 0 L 400 300 L 0 300 Z",
            "restore",
            "restore",
        }));
}

TEST_F(TOLVGraphViewTest, WithoutABackgroundAndAGraphThatCanBeDrawnDrawsNothing)
{
    view->setDrawsBackground(false);
    EXPECT_TRUE(linesDrawn([&] { view->drawInRect(view->bounds()); }).empty());
    // Series whose ranges are not known, and no graph at all.
    view->graph()->setExtents(view->graph()->extentsFittingGraphData());
    view->graph()->addGraphData(seriesOf({0.0F, 1.0F}, {0.0F, 1.0F}));
    EXPECT_FALSE(view->graph()->canDraw());
    EXPECT_TRUE(linesDrawn([&] { view->drawInRect(view->bounds()); }).empty());
    view->setGraph(nullptr);
    EXPECT_TRUE(linesDrawn([&] { view->drawInRect(view->bounds()); }).empty());
    EXPECT_EQ(linesDrawn([&] { view->drawRect({1.0, 2.0, 3.0, 4.0}); }), (Lines{"save", "clip M 1 2 L 4 2 L 4 6 L 1 6 Z", "restore"}));
}

TEST_F(TOLVGraphViewTest, TheBackgroundCoversTheBoundsWhateverTheRectangle)
{
    const auto lines = linesDrawn([&] { view->drawInRect({10.0, 10.0, 20.0, 20.0}); });
    EXPECT_EQ(testing_support::linesWith(lines, "fill"), Lines{"fill M 0 0 L 400 0 L 400 300 L 0 300 Z"});
}

TEST_F(TOLVGraphViewTest, DrawsTheGraphInTheRectangleAboveTheBackground)
{
    fill(*view->graph());
    const Rect rect(5.0, 6.0, 200.0, 100.0);
    const auto graphAlone = linesDrawn([&] { view->graph()->drawInRect(rect); });
    const auto lines = linesDrawn([&] { view->drawInRect(rect); });
    ASSERT_GT(graphAlone.size(), 10U);
    ASSERT_EQ(lines.size(), graphAlone.size() + 5U);
    EXPECT_EQ(Lines(lines.begin() + 5, lines.end()), graphAlone);
}

TEST_F(TOLVGraphViewTest, TheDirtyPartOnlyClipsTheGraph)
{
    fill(*view->graph());
    const auto whole = linesDrawn([&] { view->drawInRect(view->bounds()); });
    const auto part = linesDrawn([&] { view->drawRect({10.0, 20.0, 30.0, 40.0}); });
    ASSERT_EQ(part.size(), whole.size() + 3U);
    EXPECT_EQ(part[1], "clip M 10 20 L 40 20 L 40 60 L 10 60 Z");
    EXPECT_EQ(Lines(part.begin() + 2, std::prev(part.end())), whole);
}

TEST_F(TOLVGraphViewTest, DrawsIntoItsBoundsWhereverTheyBegin)
{
    fill(*view->graph());
    const auto marks = testing_support::placedMarks(linesDrawn([&] { view->drawRect(view->bounds()); }));
    view->setBoundsOrigin({1000.0, 2000.0});
    RecordingContext context;
    view->displayInContext(context);
    const auto moved = testing_support::placedMarks(context.calls());
    ASSERT_GT(marks.size(), 5U);
    ASSERT_EQ(moved.size(), marks.size());
    for (std::size_t i = 0; i < marks.size(); ++i) {
        EXPECT_EQ(moved[i].text, marks[i].text);
        // Single precision holds coordinates of this size to the 8192nd part of a point.
        EXPECT_NEAR(moved[i].rect.x(), marks[i].rect.x(), 1.0 / 4096.0) << marks[i].text;
        EXPECT_NEAR(moved[i].rect.y(), marks[i].rect.y(), 1.0 / 4096.0) << marks[i].text;
    }
}

TEST_F(TOLVGraphViewTest, DrawingItsRectMarksTheGraphsDataAsLoaded)
{
    EXPECT_FALSE(linesDrawn([&] { view->drawInRect(view->bounds()); }).empty());
    EXPECT_TRUE(view->graph()->needsReloadData());
    int announced = 0;
    view->graph()->addObserver("needsReloadData", [&](const PropertyChange&) { ++announced; });
    for (int i = 0; i < 2; ++i) {
        EXPECT_FALSE(linesDrawn([&] { view->drawRect(view->bounds()); }).empty());
        EXPECT_FALSE(view->graph()->needsReloadData());
        EXPECT_EQ(announced, 1);
    }
}

TEST_F(TOLVGraphViewTest, WithoutAContextDrawsNothing)
{
    fill(*view->graph());
    view->drawRect(view->bounds());
    view->drawInRect(view->bounds());
    EXPECT_EQ(currentContext(), nullptr);
    EXPECT_TRUE(view->graph()->needsReloadData());
}

class ThrowingDrawing final : public TOLVGraphDrawing {
public:
    void drawGraph(const std::shared_ptr<TOLVGraph>&, const Rect&) override { throw std::runtime_error("no"); }
};

TEST_F(TOLVGraphViewTest, AnExceptionWhileDrawingRestoresEverything)
{
    fill(*view->graph());
    view->graph()->setDrawingStrategy(std::make_shared<ThrowingDrawing>());
    RecordingContext context;
    EXPECT_THROW(view->displayInContext(context), std::runtime_error);
    EXPECT_EQ(context.depth(), 0);
    EXPECT_FALSE(context.hasUnmatchedRestore());
    EXPECT_EQ(currentContext(), nullptr);
}

// The graph and redisplay.

TEST_F(TOLVGraphViewTest, AnotherGraphAsksForRedisplayAndTheSameOneDoesNot)
{
    takenRequests();
    view->setGraph(view->graph());
    EXPECT_EQ(takenRequests(), 0);
    view->setGraph(TOLVGraph::graph());
    EXPECT_EQ(takenRequests(), 1);
    view->setGraph(nullptr);
    EXPECT_EQ(takenRequests(), 1);
    view->setGraph(nullptr);
    EXPECT_EQ(takenRequests(), 0);
}

TEST_F(TOLVGraphViewTest, ItsOwnReferenceMayBePassedBackToIt)
{
    const auto graph = view->graph();
    view->setGraph(nullptr);
    view->setGraph(graph);
    EXPECT_EQ(view->graph(), graph);
    view->setGraph(view->graph());
    EXPECT_EQ(view->graph(), graph);
}

TEST_F(TOLVGraphViewTest, ChangesThatShowAskForRedisplay)
{
    const auto graph = view->graph();
    fill(*graph);
    takenRequests();
    graph->extents()->x()->setMax(20.0);
    EXPECT_EQ(takenRequests(), 1);
    graph->zoomInXInRect(view->bounds());
    graph->zoomInYInRect(view->bounds());
    EXPECT_EQ(takenRequests(), 1);
    graph->setExtents(graph->extentsFittingGraphData());
    EXPECT_EQ(takenRequests(), 1);
    graph->setTitle("title");
    graph->addGraphData(seriesOf({0.0F}, {0.0F}));
    EXPECT_EQ(takenRequests(), 0);
}

TEST_F(TOLVGraphViewTest, AGraphThatWasReplacedIsNoLongerListenedTo)
{
    const auto former = view->graph();
    const auto graph = TOLVGraph::graph();
    view->setGraph(graph);
    takenRequests();
    former->extents()->x()->setMin(1.0);
    EXPECT_EQ(takenRequests(), 0);
    graph->extents()->x()->setMin(1.0);
    EXPECT_EQ(takenRequests(), 1);
    view->setGraph(former);
    takenRequests();
    graph->extents()->x()->setMin(2.0);
    EXPECT_EQ(takenRequests(), 0);
    former->extents()->x()->setMin(2.0);
    EXPECT_EQ(takenRequests(), 1);
}

TEST_F(TOLVGraphViewTest, ReleasesItsGraph)
{
    std::weak_ptr<TOLVGraph> weak = view->graph();
    view->setGraph(nullptr);
    EXPECT_TRUE(weak.expired());
    weak = TOLVGraphView::initWithFrame({})->graph();
    EXPECT_TRUE(weak.expired());
}

TEST_F(TOLVGraphViewTest, AfterItsEndTheGraphAnnouncesToOthersOnly)
{
    const auto graph = view->graph();
    int others = 0;
    int own = 0;
    graph->addObserver("canDraw", [&](const PropertyChange&) { ++others; });
    view->setRedisplayHandler([&] { ++own; });
    graph->extents()->x()->setMin(1.0);
    EXPECT_EQ(own, 1);
    const std::weak_ptr<View> weak = view;
    view.reset();
    EXPECT_TRUE(weak.expired());
    graph->extents()->x()->setMin(2.0);
    EXPECT_EQ(own, 1);
    EXPECT_EQ(others, 2);
    view = TOLVGraphView::initWithFrame({});
}

TEST_F(TOLVGraphViewTest, MayEndOrChangeItsGraphWhileItIsTold)
{
    const auto graph = view->graph();
    view->setRedisplayHandler([&] { view->setGraph(nullptr); });
    graph->extents()->x()->setMin(1.0);
    EXPECT_EQ(view->graph(), nullptr);

    view = TOLVGraphView::initWithFrame({});
    view->setGraph(graph);
    view->setRedisplayHandler([&] { view.reset(); });
    graph->extents()->x()->setMin(2.0);
    EXPECT_EQ(view, nullptr);
    graph->extents()->x()->setMin(3.0);
    view = TOLVGraphView::initWithFrame({});
}

TEST_F(TOLVGraphViewTest, AnotherBackgroundAsksForRedisplay)
{
    int announced = 0;
    view->addObserver("drawsBackground", [&](const PropertyChange&) { ++announced; });
    takenRequests();
    view->setDrawsBackground(false);
    EXPECT_EQ(takenRequests(), 1);
    EXPECT_EQ(announced, 1);
}

TEST_F(TOLVGraphViewTest, GainingAndLosingTheKeyboardAsksForRedisplay)
{
    takenRequests();
    EXPECT_TRUE(view->becomeFirstResponder());
    EXPECT_EQ(takenRequests(), 1);
    EXPECT_TRUE(view->resignFirstResponder());
    EXPECT_EQ(takenRequests(), 1);
}

// Commands and values by name.

TEST_F(TOLVGraphViewTest, CopyingNeedsASeriesAndOtherCommandsNothing)
{
    EXPECT_FALSE(view->validateUserInterfaceItem({"copy"}));
    EXPECT_TRUE(view->validateUserInterfaceItem({"paste"}));
    EXPECT_TRUE(view->validateUserInterfaceItem({""}));
    view->graph()->addGraphData(seriesOf({}, {}));
    EXPECT_TRUE(view->validateUserInterfaceItem({"copy"}));
    view->graph()->clearGraphData();
    EXPECT_FALSE(view->validateUserInterfaceItem({"copy"}));
    view->setGraph(nullptr);
    EXPECT_FALSE(view->validateUserInterfaceItem({"copy"}));
    EXPECT_TRUE(view->validateUserInterfaceItem({"print"}));
}

TEST_F(TOLVGraphViewTest, NothingSetForTheLockIsFalseAndForOtherNamesIgnored)
{
    view->setExtentsLocked(true);
    view->setValueForKey(std::monostate(), "extentsLocked");
    EXPECT_FALSE(view->extentsLocked());
    for (const bool draws : {true, false}) {
        view->setDrawsBackground(draws);
        view->setValueForKey(std::monostate(), "drawsBackground");
        EXPECT_EQ(view->drawsBackground(), draws);
    }
    EXPECT_NO_THROW(view->setValueForKey(std::monostate(), "unknown"));
    EXPECT_NO_THROW(view->setNilValueForKey(""));
}

TEST_F(TOLVGraphViewTest, ItsFlagsAreSetByName)
{
    struct Row {
        PropertyValue value;
        bool expected;
    };
    const Row rows[] = {{std::int64_t{1}, true}, {std::int64_t{0}, false}, {-2.5, true}, {0.0, false}};
    for (const Row& row : rows) {
        view->setExtentsLocked(!row.expected);
        view->setDrawsBackground(!row.expected);
        view->setValueForKey(row.value, "extentsLocked");
        EXPECT_EQ(view->extentsLocked(), row.expected);
        EXPECT_EQ(view->drawsBackground(), !row.expected);
        view->setValueForKey(row.value, "drawsBackground");
        EXPECT_EQ(view->drawsBackground(), row.expected);
    }
}

TEST_F(TOLVGraphViewTest, TheLockIsAnnouncedHoweverItIsSet)
{
    int announced = 0;
    view->addObserver("extentsLocked", [&](const PropertyChange&) { ++announced; });
    view->setExtentsLocked(true);
    view->setValueForKey(std::int64_t{1}, "extentsLocked");
    view->setValueForKey(std::monostate(), "extentsLocked");
    EXPECT_EQ(announced, 3);
}

TEST_F(TOLVGraphViewTest, OtherNamesAndOtherKindsOfValuesAreErrors)
{
    EXPECT_EQ(nameOfException([&] { view->setValueForKey(std::int64_t{1}, "graph"); }), "UndefinedKey");
    EXPECT_EQ(nameOfException([&] { view->setValueForKey(std::string("text"), "extentslocked"); }), "UndefinedKey");
    EXPECT_EQ(nameOfException([&] { view->setValueForKey(std::string("true"), "extentsLocked"); }), "WrongValue");
    EXPECT_EQ(nameOfException([&] { view->setValueForKey(std::string("0"), "drawsBackground"); }), "WrongValue");
    EXPECT_FALSE(view->extentsLocked());
    EXPECT_TRUE(view->drawsBackground());
}

// Margins.

TEST_F(TOLVGraphViewTest, MarginsAreTheHostsUnlessTheViewFitsThem)
{
    const auto graph = view->graph();
    fill(*graph);
    EXPECT_FALSE(linesDrawn([&] { view->drawRect(view->bounds()); }).empty());
    EXPECT_EQ(graph->margin(), (EdgeInsets{15.0, 30.0, 15.0, 15.0}));
    EXPECT_EQ(graph->padding(), EdgeInsets());
    EXPECT_FALSE(view->fitsMarginsToLabels());
}

TEST_F(TOLVGraphViewTest, FitsMarginsToTheLabelsOfItsBoundsBeforeItDraws)
{
    const auto graph = view->graph();
    fill(*graph);
    graph->verticalAxis()->setLabel("Level");
    const auto expected = snapshotOfGraph(*graph);
    expected->setPadding({8.0, 8.0, 8.0, 8.0});
    for (const Size size : {Size{400.0, 300.0}, Size{90.0, 60.0}}) {
        view->setFrameSize(size);
        view->setFitsMarginsToLabels(true);
        fitMarginsToLabels(*expected, view->bounds());
        const auto lines = linesDrawn([&] { view->drawRect(view->bounds()); });
        EXPECT_EQ(graph->margin(), expected->margin());
        EXPECT_EQ(graph->horizontalTickLabelPadding(), expected->horizontalTickLabelPadding());
        EXPECT_EQ(graph->padding(), (EdgeInsets{8.0, 8.0, 8.0, 8.0}));
        // What is drawn is drawn in these margins.
        view->setFitsMarginsToLabels(false);
        EXPECT_EQ(linesDrawn([&] { view->drawRect(view->bounds()); }), lines);
    }
}

TEST_F(TOLVGraphViewTest, KeepsAPaddingThatIsThere)
{
    fill(*view->graph());
    view->graph()->setPadding({0.0, 3.0, 0.0, 0.0});
    view->fitMargins();
    EXPECT_EQ(view->graph()->padding(), (EdgeInsets{0.0, 3.0, 0.0, 0.0}));
    EXPECT_NE(view->graph()->margin(), (EdgeInsets{15.0, 30.0, 15.0, 15.0}));
}

TEST_F(TOLVGraphViewTest, FitsNothingThatCannotBeDrawn)
{
    view->fitMargins();
    EXPECT_EQ(view->graph()->margin(), (EdgeInsets{15.0, 30.0, 15.0, 15.0}));
    EXPECT_EQ(view->graph()->padding(), EdgeInsets());
    view->setGraph(nullptr);
    view->setFitsMarginsToLabels(true);
    view->fitMargins();
    view->useFittedMargins();
    EXPECT_FALSE(linesDrawn([&] { view->drawRect(view->bounds()); }).empty());
}

TEST_F(TOLVGraphViewTest, FittingIsAnnouncedAndAsksForRedisplayAndDrawingDoesNot)
{
    fill(*view->graph());
    takenRequests();
    int announced = 0;
    view->addObserver("fitsMarginsToLabels", [&](const PropertyChange&) { ++announced; });
    view->setFitsMarginsToLabels(true);
    EXPECT_EQ(announced, 1);
    EXPECT_EQ(takenRequests(), 1);
    EXPECT_FALSE(view->needsDisplay());
    EXPECT_EQ(takenRequests(), 0);
    view->setValueForKey(std::int64_t{0}, "fitsMarginsToLabels");
    EXPECT_FALSE(view->fitsMarginsToLabels());
    EXPECT_EQ(announced, 2);
}

TEST_F(TOLVGraphViewTest, ACopyFitsItsMarginsToo)
{
    EXPECT_FALSE(view->copy()->fitsMarginsToLabels());
    view->setFitsMarginsToLabels(true);
    EXPECT_TRUE(view->copy()->fitsMarginsToLabels());
}

TEST_F(TOLVGraphViewTest, MarginsOfNoViewAreRefused)
{
    EXPECT_EQ(nameOfException([] { const MarginsOnlyGrow none(nullptr); }), "NullView");
}

TEST_F(TOLVGraphViewTest, MarginsOnlyGrowWhileAScopeLives)
{
    const auto graph = view->graph();
    fill(*graph);
    view->setFitsMarginsToLabels(true);
    graph->zoomYToFixedMin(0.0, 100000.0);
    view->fitMargins();
    const EdgeInsets wide = graph->margin();
    graph->zoomYToFixedMin(0.0, 1.0);
    view->fitMargins();
    const EdgeInsets narrow = graph->margin();
    ASSERT_LT(narrow.left, wide.left);
    {
        const MarginsOnlyGrow outer(view);
        const MarginsOnlyGrow inner(view);
        graph->zoomYToFixedMin(0.0, 100000.0);
        view->fitMargins();
        EXPECT_EQ(graph->margin(), wide);
        graph->zoomYToFixedMin(0.0, 1.0);
        view->fitMargins();
        EXPECT_EQ(graph->margin(), wide);
        takenRequests();
    }
    EXPECT_EQ(takenRequests(), 1);
    EXPECT_EQ(graph->margin(), narrow);
}

TEST_F(TOLVGraphViewTest, TwoViewsOfAGraphHaveTheirOwnMargins)
{
    const auto graph = view->graph();
    fill(*graph);
    graph->horizontalAxis()->setLabel("Time");
    view->setFitsMarginsToLabels(true);
    takenRequests();
    view->fitMargins();
    const EdgeInsets own = graph->margin();
    const auto small = view->copy();
    small->setFrameSize({60.0, 40.0});
    graph->zoomYToFixedMin(0.0, 100000.0);
    small->fitMargins();
    ASSERT_NE(graph->margin(), own);
    view->useFittedMargins();
    EXPECT_EQ(graph->margin(), own);
    // Copying in another size is over when it is over.
    const UserDefaultsScope defaults;
    const PasteboardScope pasteboard;
    const RendererScope renderer(std::make_shared<RecordingRenderer>());
    graph->zoomYToFixedMin(4.0, 6.0);
    view->fitMargins();
    const EdgeInsets before = graph->margin();
    defaults->setBool(true, "TOLVPlot_UsesFixedCopySize");
    defaults->setInteger(70, "TOLVPlot_FixedCopyWidth");
    defaults->setInteger(900, "TOLVPlot_FixedCopyHeight");
    view->copy(nullptr);
    EXPECT_EQ(graph->margin(), before);
    // Switched off, the margins are the host's again.
    view->setFitsMarginsToLabels(false);
    graph->setMargin({1.0, 2.0, 3.0, 4.0});
    view->useFittedMargins();
    EXPECT_EQ(graph->margin(), (EdgeInsets{1.0, 2.0, 3.0, 4.0}));
}

// Reloading.

class ListedSets final : public TOLVGraphViewDataSource {
public:
    explicit ListedSets(std::vector<TOLVDataSet> sets) : m_sets(std::move(sets)) {}

    [[nodiscard]] bool hasDataSets() const override { return true; }
    std::int32_t numberOfDataSetsInPlotView(TOLVGraphView& view) override
    {
        askers.push_back(&view);
        return static_cast<std::int32_t>(m_sets.size());
    }
    TOLVDataSet plotViewDataSetForIndex(TOLVGraphView& view, std::int32_t index) override
    {
        askers.push_back(&view);
        if (whileAsked)
            whileAsked();
        return m_sets.at(static_cast<std::size_t>(index));
    }

    std::vector<const TOLVGraphView*> askers;
    std::function<void()> whileAsked;

private:
    std::vector<TOLVDataSet> m_sets;
};

TEST_F(TOLVGraphViewTest, ReloadingReplacesTheSeriesByThoseOfTheDataSourceInOrder)
{
    const auto style = TOLVLineStyle::solidLineWithColor(kRed, 2.0);
    const auto x = samples({1.0F, 2.0F});
    const auto source = std::make_shared<ListedSets>(std::vector<TOLVDataSet>{
        {x, samples({3.0F, 4.0F}), Color::blackColor(), style},
        {x, samples({5.0F, 6.0F}), std::nullopt, style},
        {samples({7.0F}), samples({8.0F}), kRed, style},
    });
    view->graph()->addGraphData(seriesOf({0.0F}, {0.0F}));
    view->setDataSource(source);
    EXPECT_TRUE(source->askers.empty());
    view->reloadData();
    const Series series = view->graph()->graphData();
    ASSERT_EQ(series.size(), 3U);
    EXPECT_EQ(series[0]->X(), x);
    EXPECT_EQ(series[0]->Y()->components()[1], 4.0F);
    EXPECT_EQ(series[1]->Y()->components()[0], 5.0F);
    EXPECT_EQ(series[2]->X()->components()[0], 7.0F);
    // The style's own colour holds.
    EXPECT_EQ(series[0]->lineStyle(), style);
    EXPECT_EQ(series[0]->color(), kRed);
    EXPECT_EQ(source->askers, std::vector<const TOLVGraphView*>(4, view.get()));
    view->reloadData();
    EXPECT_EQ(view->graph()->graphData().size(), 3U);
}

TEST_F(TOLVGraphViewTest, AbsentEntriesOfADataSetAreAbsentInItsSeries)
{
    view->setDataSource(std::make_shared<ListedSets>(std::vector<TOLVDataSet>{{}}));
    view->reloadData();
    ASSERT_EQ(view->graph()->graphData().size(), 1U);
    const auto series = view->graph()->graphData().front();
    EXPECT_EQ(series->X(), nullptr);
    EXPECT_EQ(series->Y(), nullptr);
    EXPECT_EQ(series->lineStyle(), nullptr);
    EXPECT_EQ(series->color(), std::nullopt);
    view->graph()->zoomXToFixedMin(0.0F, 1.0F);
    view->graph()->zoomYToFixedMin(0.0, 1.0);
    EXPECT_TRUE(view->graph()->canDraw());
    EXPECT_FALSE(linesDrawn([&] { view->drawRect(view->bounds()); }).empty());
}

TEST_F(TOLVGraphViewTest, ReloadingLeavesTheRangesAndTheGraphsFlagAlone)
{
    view->setDataSource(std::make_shared<ListedSets>(std::vector<TOLVDataSet>{{samples({1.0F, 2.0F}), samples({3.0F, 4.0F}), kRed, nullptr}}));
    view->graph()->extents()->setX(TOLVAxisExtents::extentsWithMin(-3.0, 30.0));
    view->reloadData();
    EXPECT_EQ(toString(*view->graph()->extents()->x()), "[-3, 30]");
    EXPECT_TRUE(view->graph()->needsReloadData());
    view->graph()->reloadData();
    view->reloadData();
    EXPECT_FALSE(view->graph()->needsReloadData());
}

TEST_F(TOLVGraphViewTest, ReloadingIsAnnouncedOnceItsSeriesAreThere)
{
    view->setDataSource(std::make_shared<ListedSets>(std::vector<TOLVDataSet>(2)));
    std::vector<std::size_t> counts;
    view->addObserver("canDrawGraph", [&](const PropertyChange&) { counts.push_back(view->graph()->graphData().size()); });
    view->reloadData();
    EXPECT_EQ(counts, std::vector<std::size_t>{2});
    view->setDataSource(std::make_shared<ListedSets>(std::vector<TOLVDataSet>()));
    view->reloadData();
    EXPECT_EQ(counts, (std::vector<std::size_t>{2, 0}));
}

TEST_F(TOLVGraphViewTest, ADataSourceThatThrowsEndsTheReloadingAndTheAnnouncement)
{
    const auto source = std::make_shared<ListedSets>(std::vector<TOLVDataSet>(3));
    source->whileAsked = [&] {
        if (source->askers.size() == 3)
            throw std::runtime_error("no more");
    };
    view->setDataSource(source);
    std::vector<std::size_t> counts;
    view->addObserver("canDrawGraph", [&](const PropertyChange&) { counts.push_back(view->graph()->graphData().size()); });
    EXPECT_THROW(view->reloadData(), std::runtime_error);
    EXPECT_EQ(counts, std::vector<std::size_t>{1});
    source->whileAsked = nullptr;
    view->reloadData();
    EXPECT_EQ(counts, (std::vector<std::size_t>{1, 3}));
}

TEST_F(TOLVGraphViewTest, WithoutDataSetsTheGraphIsLeftEmptyAndTheAnnouncementOpen)
{
    const std::shared_ptr<TOLVGraphViewDataSource> sources[] = {nullptr, std::make_shared<TOLVGraphViewDataSource>()};
    for (const auto& source : sources) {
        view = TOLVGraphView::initWithFrame({});
        view->graph()->addGraphData(seriesOf({0.0F}, {0.0F}));
        view->setDataSource(source);
        int announced = 0;
        view->addObserver("canDrawGraph", [&](const PropertyChange&) { ++announced; });
        view->didChangeValueForKey("canDrawGraph");
        EXPECT_EQ(announced, 0);
        view->reloadData();
        EXPECT_TRUE(view->graph()->graphData().empty());
        EXPECT_EQ(announced, 0);
        // The change has begun: whoever ends it is heard.
        view->didChangeValueForKey("canDrawGraph");
        EXPECT_EQ(announced, 1);
        view->reloadData();
        view->setDataSource(std::make_shared<ListedSets>(std::vector<TOLVDataSet>(1)));
        view->reloadData();
        EXPECT_EQ(announced, 2);
    }
}

TEST_F(TOLVGraphViewTest, ADataSourceByItselfHasNoSets)
{
    TOLVGraphViewDataSource source;
    EXPECT_FALSE(source.hasDataSets());
    EXPECT_EQ(source.numberOfDataSetsInPlotView(*view), 0);
    EXPECT_EQ(source.plotViewDataSetForIndex(*view, 0).x, nullptr);
}

TEST_F(TOLVGraphViewTest, WithoutAGraphTheDataSourceIsAskedAndTheReloadingAnnounced)
{
    const auto source = std::make_shared<ListedSets>(std::vector<TOLVDataSet>(2));
    int announced = 0;
    view->setDataSource(source);
    view->setGraph(nullptr);
    view->addObserver("canDrawGraph", [&](const PropertyChange&) { ++announced; });
    view->reloadData();
    EXPECT_EQ(source->askers.size(), 3U);
    EXPECT_EQ(announced, 1);
}

TEST_F(TOLVGraphViewTest, ADataSourceMayTakeTheGraphAndItselfAwayWhileAsked)
{
    auto source = std::make_shared<ListedSets>(std::vector<TOLVDataSet>(3));
    const std::weak_ptr<ListedSets> weak = source;
    const auto graph = view->graph();
    source->whileAsked = [&] {
        view->setDataSource(nullptr);
        view->setGraph(nullptr);
    };
    view->setDataSource(std::move(source));
    EXPECT_FALSE(weak.expired());
    view->reloadData();
    EXPECT_TRUE(weak.expired());
    EXPECT_TRUE(graph->graphData().empty());
}

// Copying.

/// Types in the order in which they are offered.
const Lines kTypes{"application/pdf", "application/postscript", "image/tiff", "image/x-eps", "image/svg+xml", "image/png", "text/plain;charset=utf-8"};

/// Notes the view's size when everything is there.
class FinishingPasteboard final : public MemoryPasteboard {
public:
    explicit FinishingPasteboard(const View& view) : m_view(view) {}
    void finish() override { sizes.push_back(m_view.bounds().size); }

    std::vector<Size> sizes;

private:
    const View& m_view;
};

class FailingRenderer final : public DocumentRenderer {
public:
    [[nodiscard]] std::vector<std::byte> render(OutputKind, const Size&, const std::function<void(DrawingContext&)>&) const override { throw std::runtime_error("page too large"); }
};

class GraphViewCopying : public TOLVGraphViewTest {
protected:
    void useFixedSize(std::int64_t width, std::int64_t height)
    {
        defaults->setBool(true, "TOLVPlot_UsesFixedCopySize");
        defaults->setInteger(width, "TOLVPlot_FixedCopyWidth");
        defaults->setInteger(height, "TOLVPlot_FixedCopyHeight");
    }

    void askForAll()
    {
        for (const std::string& type : kTypes)
            EXPECT_TRUE(pasteboard->dataForType(type).has_value()) << type;
    }
    [[nodiscard]] std::string copied(std::string_view type) { return textOf(pasteboard->dataForType(type).value()); }

    UserDefaultsScope defaults;
    PasteboardScope pasteboard;
    std::shared_ptr<RecordingRenderer> renderer = std::make_shared<RecordingRenderer>();
    RendererScope rendererScope{renderer};
};

TEST_F(GraphViewCopying, OffersPDFPostScriptAndTIFFFirst)
{
    fill(*view->graph());
    view->copy(nullptr);
    EXPECT_EQ(pasteboard->types(), kTypes);
    EXPECT_EQ(renderer->kinds(), (std::vector<OutputKind>{OutputKind::PDF, OutputKind::EPS, OutputKind::TIFF}));
    // PostScript and EPS are one document under two names.
    const int documents[] = {1, 2, 3, 2, 4, 5};
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_EQ(copied(kTypes[i]), "document " + std::to_string(documents[i])) << kTypes[i];
    // The other two are made when they are asked for.
    EXPECT_EQ(renderer->kinds(), (std::vector<OutputKind>{OutputKind::PDF, OutputKind::EPS, OutputKind::TIFF, OutputKind::SVG, OutputKind::PNG}));
    EXPECT_EQ(copied(kPasteboardTypeText), "x\ta\n0\t5\n1\t4\n2\t6\n");
}

TEST_F(GraphViewCopying, AllDocumentsShowTheSameDrawing)
{
    fill(*view->graph());
    RecordingContext context;
    view->displayInContext(context);
    view->copy(view.get());
    askForAll();
    ASSERT_EQ(renderer->documents().size(), 5U);
    const auto expected = testing_support::placedMarks(context.calls());
    ASSERT_GT(expected.size(), 5U);
    for (const RenderedDocument& document : renderer->documents()) {
        EXPECT_EQ(document.calls, renderer->documents()[0].calls);
        EXPECT_EQ(document.size, (Size{400.0, 300.0}));
        const auto marks = testing_support::placedMarks(document.calls);
        ASSERT_EQ(marks.size(), expected.size());
        for (std::size_t i = 0; i < marks.size(); ++i)
            EXPECT_EQ(marks[i].rect, expected[i].rect);
    }
}

TEST_F(GraphViewCopying, ReplacesWhatWasOnThePasteboard)
{
    pasteboard->declareTypes({"text/html", "image/png"});
    pasteboard->setDataForType(testing_support::bytesOf("old"), "image/png");
    view->copy(nullptr);
    EXPECT_EQ(pasteboard->types(), kTypes);
    EXPECT_EQ(copied("image/png"), "document 4");
}

TEST_F(GraphViewCopying, OfAFixedSizeLeavesTheViewAsItWas)
{
    useFixedSize(800, 600);
    view->copy(nullptr);
    askForAll();
    ASSERT_EQ(renderer->documents().size(), 5U);
    for (const RenderedDocument& document : renderer->documents()) {
        EXPECT_EQ(document.size, (Size{800.0, 600.0}));
        EXPECT_EQ(testing_support::placedMarks(document.calls).at(0).rect, Rect(0.0, 0.0, 800.0, 600.0));
    }
    EXPECT_EQ(view->frame(), Rect(10.0, 20.0, 400.0, 300.0));
}

TEST_F(GraphViewCopying, OfNoSizeOffersEmptyDocuments)
{
    // The size of the setting without width and height, and sizes that are none.
    defaults->setBool(true, "TOLVPlot_UsesFixedCopySize");
    fill(*view->graph());
    for (const Size size : {Size{0.0, 0.0}, Size{-800.0, 600.0}, Size{800.0, 0.0}}) {
        if (size.width != 0.0)
            useFixedSize(static_cast<std::int64_t>(size.width), static_cast<std::int64_t>(size.height));
        view->copy(nullptr);
        EXPECT_EQ(pasteboard->types(), kTypes);
        for (std::size_t i = 0; i < 6; ++i)
            EXPECT_EQ(copied(kTypes[i]), "") << kTypes[i];
        EXPECT_EQ(copied(kPasteboardTypeText), "x\ta\n0\t5\n1\t4\n2\t6\n");
        EXPECT_EQ(view->frame(), Rect(10.0, 20.0, 400.0, 300.0));
    }
    EXPECT_TRUE(renderer->documents().empty());
}

TEST_F(GraphViewCopying, HandsOverOnceWhenEverythingIsThereAndTheSizeIsBack)
{
    useFixedSize(800, 600);
    const auto finishing = std::make_shared<FinishingPasteboard>(*view);
    const PasteboardScope scope(finishing);
    view->copy(nullptr);
    EXPECT_EQ(finishing->sizes, (std::vector<Size>{{400.0, 300.0}}));
    EXPECT_EQ(finishing->types(), kTypes);
}

TEST_F(GraphViewCopying, WithoutARendererOffersTheDataOnly)
{
    const RendererScope none(nullptr);
    fill(*view->graph());
    view->copy(nullptr);
    EXPECT_EQ(pasteboard->types(), kTypes);
    EXPECT_EQ(copied(kPasteboardTypePDF), "");
    EXPECT_EQ(copied(kPasteboardTypePNG), "");
    EXPECT_EQ(copied(kPasteboardTypeText), "x\ta\n0\t5\n1\t4\n2\t6\n");
}

TEST_F(GraphViewCopying, ThatFailsLeavesTheViewAsItWas)
{
    const RendererScope failing(std::make_shared<FailingRenderer>());
    useFixedSize(800, 600);
    EXPECT_THROW(view->copy(nullptr), std::runtime_error);
    EXPECT_EQ(view->frame(), Rect(10.0, 20.0, 400.0, 300.0));
}

TEST_F(GraphViewCopying, TheTextIsThatOfThePictureHoweverLateItIsPasted)
{
    const auto graph = view->graph();
    fill(*graph);
    const auto series = graph->graphData().front();
    view->copy(nullptr);
    series->setName("renamed");
    series->setY(samples({7.0F, 8.0F, 9.0F}));
    graph->clearGraphData();
    view.reset();
    EXPECT_EQ(copied(kPasteboardTypeText), "x\ta\n0\t5\n1\t4\n2\t6\n");
    view = TOLVGraphView::initWithFrame({});
}

TEST_F(GraphViewCopying, WithoutAGraphOffersTheBackgroundAndNoText)
{
    view->setGraph(nullptr);
    view->copy(nullptr);
    EXPECT_EQ(pasteboard->types(), kTypes);
    askForAll();
    EXPECT_EQ(renderer->documents().size(), 5U);
    EXPECT_EQ(copied(kPasteboardTypeText), "");
}

TEST_F(GraphViewCopying, PicturesMadeLaterShowTheGraphAsItWas)
{
    const auto graph = view->graph();
    fill(*graph);
    graph->setTitle("Before");
    graph->placeHorizontalAxisMarkerWithValue(1.0);
    view->setBoundsOrigin({5.0, 6.0});
    for (const bool fits : {false, true}) {
        view->setFitsMarginsToLabels(fits);
        view->copy(nullptr);
        const Lines eager = renderer->documents().back().calls;
        graph->setTitle("After");
        graph->markers().front()->setValue(0.5);
        graph->zoomXToFixedMin(0.0F, 0.5F);
        view->setFrameSize({100.0, 100.0});
        view->setDrawsBackground(false);
        for (const auto type : {kPasteboardTypeSVG, kPasteboardTypePNG}) {
            EXPECT_NE(copied(type), "");
            EXPECT_EQ(renderer->documents().back().calls, eager) << type << fits;
            EXPECT_EQ(renderer->documents().back().size, (Size{400.0, 300.0}));
        }
        view->setFrameSize({400.0, 300.0});
        view->setDrawsBackground(true);
        graph->setTitle("Before");
    }
}

TEST_F(GraphViewCopying, PicturesMadeLaterDoNotNeedTheView)
{
    fill(*view->graph());
    view->copy(nullptr);
    view = nullptr;
    EXPECT_EQ(copied(kPasteboardTypeSVG), "document 4");
    EXPECT_EQ(renderer->documents()[3].calls, renderer->documents()[0].calls);
    view = TOLVGraphView::initWithFrame({});
}

TEST_F(GraphViewCopying, AViewThatHoldsOthersIsDrawnAtOnce)
{
    fill(*view->graph());
    view->addSubview(std::make_shared<View>(Rect(0.0, 0.0, 10.0, 10.0)));
    view->copy(nullptr);
    EXPECT_EQ(renderer->documents().size(), 5U);
    EXPECT_EQ(copied(kPasteboardTypeSVG), "document 4");
    EXPECT_EQ(copied(kPasteboardTypePNG), "document 5");
}

TEST_F(GraphViewCopying, APartGoesToAnyPasteboardThatDeclaresTheType)
{
    MemoryPasteboard own;
    own.declareTypes({"image/tiff", "application/pdf"});
    view->writeTIFFInsideRect({10.0, 20.0, 30.0, 40.0}, own);
    view->writeEPSInsideRect({10.0, 20.0, 3.0, 4.0}, own);
    view->writePDFInsideRect({10.0, 20.0, 5.0, 6.0}, own);
    EXPECT_EQ(textOf(own.dataForType("image/tiff").value()), "document 1");
    EXPECT_EQ(own.dataForType("application/postscript"), std::nullopt);
    EXPECT_EQ(textOf(own.dataForType("application/pdf").value()), "document 3");
    EXPECT_EQ(renderer->documents()[0].size, (Size{30.0, 40.0}));
    EXPECT_EQ(renderer->documents()[2].size, (Size{5.0, 6.0}));
    EXPECT_TRUE(pasteboard->types().empty());
}

// The data as text.

TEST(TabSeparatedData, HasTwoColumnsForEachSeries)
{
    EXPECT_EQ(tabSeparatedData({seriesOf({1.0F, 2.0F}, {0.5F, -3.0F}, "a"), seriesOf({1e10F, 0.1F}, {1e-10F, 4.0F}, "b")}),
        "x\ta\tx\tb\n"
        "1\t0.5\t1e+10\t1e-10\n"
        "2\t-3\t0.1\t4\n");
}

TEST(TabSeparatedData, ShorterColumnsEndInEmptyFields)
{
    EXPECT_EQ(tabSeparatedData({seriesOf({1.0F}, {2.0F}, "a"), seriesOf({3.0F, 4.0F, 5.0F}, {6.0F, 7.0F, 8.0F}, "b"), seriesOf({}, {}, "c")}),
        "x\ta\tx\tb\tx\tc\n"
        "1\t2\t3\t6\t\t\n"
        "\t\t4\t7\t\t\n"
        "\t\t5\t8\t\t\n");
}

TEST(TabSeparatedData, SamplesWithoutAPartnerAreLeftOut)
{
    EXPECT_EQ(tabSeparatedData({seriesOf({1.0F, 2.0F, 3.0F}, {4.0F}, "a"), seriesOf({}, {5.0F, 6.0F}, "b")}),
        "x\ta\tx\tb\n"
        "1\t4\t\t\n");
    EXPECT_EQ(tabSeparatedData({TOLVGraphData::graphDataWithX(nullptr, samples({1.0F}), kRed)}), "x\ty\n");
    EXPECT_EQ(tabSeparatedData({TOLVGraphData::graphDataWithX(samples({1.0F}), nullptr, kRed)}), "x\ty\n");
}

TEST(TabSeparatedData, NamesDoNotBreakTheTable)
{
    EXPECT_EQ(tabSeparatedData({seriesOf({}, {}, "a\tb\nc\r\nd"), seriesOf({}, {}), seriesOf({}, {}, "")}), "x\ta b c  d\tx\ty\tx\t\n");
}

TEST(TabSeparatedData, NumbersReadBackAsTheSameFloat)
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(tabSeparatedData({seriesOf({kNaN, kInfinity, -0.0F, 16777216.0F}, {-kNaN, -kInfinity, 1.17549435e-38F, 3.4028235e38F}, "a")}),
        "x\ta\n"
        "nan\tnan\n"
        "inf\t-inf\n"
        "-0\t1.1754944e-38\n"
        "16777216\t3.4028235e+38\n");
}

TEST(TabSeparatedData, LeavesNullsOut)
{
    EXPECT_EQ(tabSeparatedData({nullptr, seriesOf({1.0F}, {2.0F}, "a"), nullptr}), "x\ta\n1\t2\n");
    EXPECT_EQ(tabSeparatedData({nullptr}), "");
}

TEST(TabSeparatedData, IsEmptyWithoutSeries)
{
    EXPECT_EQ(tabSeparatedData({}), "");
}

} // namespace
} // namespace TOLVGraphing
