#include "../axes/TOLVLogarithmicAxis.h"
#include "../platform/foundation/Exception.h"
#include "TOLVGraph.h"

#include <TOLVMath/TOLVRealVector.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
/// With the default margin the data area is (30, 15, 200, 100).
const Rect kRect(0.0, 0.0, 245.0, 130.0);
const Rect kEmptyDataRect(0.0, 0.0, 45.0, 30.0);

/// What was announced of the marker list.
struct Change {
    ChangeKind kind;
    std::vector<std::size_t> indexes;

    friend bool operator==(const Change&, const Change&) = default;
};

class TOLVGraphInteractionTest : public testing::Test {
protected:
    TOLVGraphInteractionTest()
    {
        graph->zoomXToFixedMin(0.0F, 100.0F);
        graph->zoomYToFixedMin(-10.0, 10.0);
    }

    std::string extents() const { return toString(*graph->extents()->x()) + " " + toString(*graph->extents()->y()); }

    void addSeries(std::vector<float> x, std::vector<float> y)
    {
        graph->addGraphData(
            TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), Color::blackColor()));
    }

    std::vector<double> markerValues() const
    {
        std::vector<double> values;
        for (const auto& marker : graph->markers())
            values.push_back(marker->value());
        return values;
    }

    static TOLVGraph::Markers markersOf(const std::vector<double>& values)
    {
        TOLVGraph::Markers markers;
        for (const double value : values)
            markers.push_back(TOLVMarker::markerWithValue(value));
        return markers;
    }

    std::shared_ptr<UndoManager> attachUndoManager()
    {
        auto manager = std::make_shared<UndoManager>();
        graph->attachUndoManager(manager);
        return manager;
    }

    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
};

// Conversion.

TEST_F(TOLVGraphInteractionTest, ConvertsWithinTheDataArea)
{
    EXPECT_EQ(graph->XForValue(50.0F, kRect), 130.0F);
    EXPECT_EQ(graph->valueForX(130.0F, kRect), 50.0F);
    EXPECT_EQ(graph->YForValue(0.0F, kRect), 65.0F);
    EXPECT_EQ(graph->valueForY(90.0F, kRect), 5.0F);
}

TEST_F(TOLVGraphInteractionTest, DeltasAreLinearInFloats)
{
    EXPECT_EQ(graph->deltaForX(50.0F, kRect), 25.0F);
    EXPECT_EQ(graph->deltaForY(-50.0F, kRect), -10.0F);
    graph->zoomXToFixedMin(0.0F, 1.0F);
    EXPECT_EQ(graph->deltaForX(3.0F, {0.0, 0.0, 45.0 + 7.0, 130.0}), 3.0F * static_cast<float>(1.0 / 7.0));
    graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
    graph->zoomXToFixedMin(1.0F, 101.0F);
    EXPECT_EQ(graph->deltaForX(50.0F, kRect), 25.0F);
}

TEST_F(TOLVGraphInteractionTest, DeltasOfEmptyRangesAndAreas)
{
    EXPECT_FALSE(std::isfinite(graph->deltaForX(50.0F, kEmptyDataRect)));
    EXPECT_FALSE(std::isfinite(graph->deltaForY(50.0F, kEmptyDataRect)));
    graph->zoomXToFixedMin(3.0F, 3.0F);
    EXPECT_EQ(graph->deltaForX(50.0F, kRect), 0.0F);
}

TEST_F(TOLVGraphInteractionTest, WithoutAxesOrExtentsTheAnswersAreZero)
{
    graph->setExtents(nullptr);
    EXPECT_EQ(graph->deltaForX(50.0F, kRect), 0.0F);
    (void)graph->XForValue(1.0F, kRect);
    graph->setHorizontalAxis(nullptr);
    graph->setVerticalAxis(nullptr);
    EXPECT_EQ(graph->XForValue(1.0F, kRect), 0.0F);
    EXPECT_EQ(graph->YForValue(1.0F, kRect), 0.0F);
    EXPECT_EQ(graph->valueForX(1.0F, kRect), 0.0F);
    EXPECT_EQ(graph->valueForY(1.0F, kRect), 0.0F);
    graph->zoomInXInRect(kRect);
    graph->zoomToFitXInRect(kRect);
    graph->zoomToFitYInRect(kRect);
    graph->zoomXToFixedMin(0.0F, 1.0F);
    graph->zoomYToFixedMin(0.0, 1.0);
    graph->offsetDisplayByX(1.0F, 1.0F, kRect);
    EXPECT_FALSE(graph->extents());
}

// Zoom.

TEST_F(TOLVGraphInteractionTest, StepsAreForbiddenPerDirection)
{
    using Step = std::function<void()>;
    const std::vector<Step> xSteps = {[&] { graph->zoomInXInRect(kRect); }, [&] { graph->zoomOutXInRect(kRect); }, [&] { graph->zoomInXCenteredAtPoint(50.0F, kRect); },
        [&] { graph->zoomOutXCenteredAtPoint(50.0F, kRect); }};
    const std::vector<Step> ySteps = {[&] { graph->zoomInYInRect(kRect); }, [&] { graph->zoomOutYInRect(kRect); }, [&] { graph->zoomInYCenteredAtPoint(50.0F, kRect); },
        [&] { graph->zoomOutYCenteredAtPoint(50.0F, kRect); }};
    const std::string before = extents();
    graph->setCanZoomX(false);
    for (const Step& step : xSteps) {
        step();
        EXPECT_EQ(extents(), before);
    }
    for (const Step& step : ySteps) {
        step();
        EXPECT_NE(toString(*graph->extents()->y()), "[-10, 10]");
        EXPECT_EQ(toString(*graph->extents()->x()), "[0, 100]");
        graph->zoomYToFixedMin(-10.0, 10.0);
    }
    graph->setCanZoomX(true);
    graph->setCanZoomY(false);
    for (const Step& step : ySteps) {
        step();
        EXPECT_EQ(extents(), before);
    }
    for (const Step& step : xSteps) {
        step();
        EXPECT_NE(toString(*graph->extents()->x()), "[0, 100]");
        EXPECT_EQ(toString(*graph->extents()->y()), "[-10, 10]");
        graph->zoomXToFixedMin(0.0F, 100.0F);
    }
}

TEST_F(TOLVGraphInteractionTest, FixedRangesFittingAndPanningIgnoreTheFlags)
{
    graph->setCanZoomX(false);
    graph->setCanZoomY(false);
    graph->zoomXToFixedMin(1.0F, 2.0F);
    graph->zoomYToFixedMin(3.0, 4.0);
    EXPECT_EQ(extents(), "[1, 2] [3, 4]");
    addSeries({0.0F, 10.0F}, {5.0F, 6.0F});
    graph->zoomToFitXInRect(kRect);
    graph->zoomToFitYInRect(kRect);
    EXPECT_EQ(extents(), "[0, 10] [5, 6]");
    graph->offsetDisplayByX(20.0F, 0.0F, kRect);
    EXPECT_EQ(toString(*graph->extents()->x()), "[1, 11]");
}

TEST_F(TOLVGraphInteractionTest, FixedXIsSingleAndFixedYDoublePrecision)
{
    graph->zoomXToFixedMin(0.1F, 0.3F);
    graph->zoomYToFixedMin(0.1, 0.3);
    EXPECT_EQ(graph->extents()->x()->min(), static_cast<double>(0.1F));
    EXPECT_EQ(graph->extents()->y()->min(), 0.1);
}

TEST_F(TOLVGraphInteractionTest, FittingLooksAtNoRectangleAndKeepsTheExtentsObject)
{
    addSeries({0.0F, 5.0F, 10.0F}, {-1.0F, 7.0F, 3.0F});
    const auto held = graph->extents();
    const auto heldX = held->x();
    graph->zoomToFitXInRect({kNaN, kNaN, 0.0, -1.0});
    EXPECT_EQ(extents(), "[0, 10] [-10, 10]");
    graph->zoomToFitYInRect({});
    EXPECT_EQ(extents(), "[0, 10] [-1, 7]");
    EXPECT_EQ(graph->extents(), held);
    EXPECT_EQ(held->x(), heldX);
    EXPECT_EQ(held->graph(), graph);
}

TEST_F(TOLVGraphInteractionTest, FittingToNoDataGivesTheSentinels)
{
    graph->zoomToFitXInRect(kRect);
    EXPECT_GT(graph->extents()->x()->min(), 3.4e38);
    EXPECT_LT(graph->extents()->x()->max(), -3.4e38);
    EXPECT_FALSE(graph->canDraw());
}

TEST_F(TOLVGraphInteractionTest, AnEmptyDataAreaIsNeitherZoomedNorPanned)
{
    const std::string before = extents();
    for (const Rect& rect : {kEmptyDataRect, Rect(0.0, 0.0, 10.0, 10.0), Rect(0.0, 0.0, -500.0, -500.0), Rect(0.0, 0.0, kNaN, kNaN)}) {
        graph->zoomInXInRect(rect);
        graph->zoomOutXInRect(rect);
        graph->zoomInYInRect(rect);
        graph->zoomOutYInRect(rect);
        graph->zoomInXCenteredAtPoint(30.0F, rect);
        graph->zoomOutYCenteredAtPoint(30.0F, rect);
        graph->offsetDisplayByX(5.0F, 5.0F, rect);
        EXPECT_EQ(extents(), before) << toString(rect);
    }
}

// Pan.

TEST_F(TOLVGraphInteractionTest, PanningMovesTheRangesByADistance)
{
    graph->offsetDisplayByX(20.0F, 0.0F, kRect);
    EXPECT_EQ(extents(), "[10, 110] [-10, 10]");
    graph->offsetDisplayByX(0.0F, -25.0F, kRect);
    EXPECT_EQ(extents(), "[10, 110] [-15, 5]");
    graph->offsetDisplayByDeltaX(-20.0F, 25.0F, kRect);
    EXPECT_EQ(extents(), "[0, 100] [-10, 10]");
}

TEST_F(TOLVGraphInteractionTest, APanThatWouldNotBeFiniteIsRefused)
{
    const std::string before = extents();
    graph->offsetDisplayByX(kInfinity, -kInfinity, kRect);
    graph->offsetDisplayByX(std::nanf(""), 0.0F, kRect);
    EXPECT_EQ(extents(), before);
    graph->zoomXToFixedMin(5.0F, 5.0F);
    graph->offsetDisplayByX(3.0F, 0.0F, kRect);
    EXPECT_EQ(toString(*graph->extents()->x()), "[5, 5]");
}

// Hit tests.

TEST_F(TOLVGraphInteractionTest, TheFirstMarkerNearerThanTheRadiusIsHit)
{
    const auto first = graph->placeHorizontalAxisMarkerWithValue(50.0);
    const auto second = graph->placeHorizontalAxisMarkerWithValue(50.0);
    const auto third = graph->placeHorizontalAxisMarkerWithValue(60.0);
    EXPECT_EQ(graph->horizontalAxisMarkerAtPoint(130.0, 5.0, kRect), first);
    EXPECT_EQ(graph->indexOfHorizontalAxisMarkerAtPoint(130.0, 5.0, kRect), 0);
    EXPECT_EQ(graph->horizontalAxisMarkerAtPoint(152.0, 5.0, kRect), third);
    EXPECT_EQ(graph->indexOfHorizontalAxisMarkerAtPoint(152.0, 5.0, kRect), 2);
    // Not the nearest one, the first one near enough.
    EXPECT_EQ(graph->horizontalAxisMarkerAtPoint(149.0, 20.0, kRect), first);
    EXPECT_NE(first, second);
}

TEST_F(TOLVGraphInteractionTest, AMarkerAtExactlyTheRadiusIsNotHit)
{
    const auto marker = graph->placeHorizontalAxisMarkerWithValue(50.0);
    EXPECT_FALSE(graph->horizontalAxisMarkerAtPoint(135.0, 5.0, kRect));
    EXPECT_EQ(graph->horizontalAxisMarkerAtPoint(134.99, 5.0, kRect), marker);
    EXPECT_FALSE(graph->horizontalAxisMarkerAtPoint(125.0, 5.0, kRect));
    EXPECT_EQ(graph->horizontalAxisMarkerAtPoint(125.01, 5.0, kRect), marker);
    EXPECT_FALSE(graph->horizontalAxisMarkerAtPoint(130.0, 0.0, kRect));
}

TEST_F(TOLVGraphInteractionTest, WithoutAHitThereIsNoMarker)
{
    EXPECT_FALSE(graph->horizontalAxisMarkerAtPoint(130.0, 1e9, kRect));
    EXPECT_EQ(graph->indexOfHorizontalAxisMarkerAtPoint(130.0, 1e9, kRect), 9223372036854775807);
    graph->placeHorizontalAxisMarkerWithValue(kNaN);
    EXPECT_EQ(graph->indexOfHorizontalAxisMarkerAtPoint(130.0, 1e9, kRect), kNotFoundIndex);
    EXPECT_EQ(graph->indexOfHorizontalAxisMarkerAtPoint(kNaN, 1e9, kRect), kNotFoundIndex);
}

TEST_F(TOLVGraphInteractionTest, MarkersOfEveryAxisAreHit)
{
    const auto marker = graph->placeHorizontalAxisMarkerWithValue(50.0);
    marker->setAxisIndex(1);
    EXPECT_EQ(graph->horizontalAxisMarkerAtPoint(130.0, 5.0, kRect), marker);
}

TEST_F(TOLVGraphInteractionTest, ThereIsNoSearchByValue)
{
    graph->placeHorizontalAxisMarkerWithValue(50.0);
    EXPECT_FALSE(graph->horizontalAxisMarkerWithValue(50.0, 1.0));
}

// Marker edits.

TEST_F(TOLVGraphInteractionTest, PlacingAppendsAMarkerOfTheHorizontalAxis)
{
    const auto first = graph->placeHorizontalAxisMarkerWithValue(7.5);
    const auto second = graph->placeHorizontalAxisMarkerAtPoint(130.0, kRect);
    EXPECT_EQ(graph->markers(), (TOLVGraph::Markers{first, second}));
    EXPECT_EQ(first->axisIndex(), 0);
    EXPECT_EQ(second->value(), 50.0);
    EXPECT_EQ(graph->countOfMarkers(), 2U);
    EXPECT_EQ(graph->markersAtIndexes({1}), (TOLVGraph::Markers{second}));
}

TEST_F(TOLVGraphInteractionTest, PositionsOfAnInsertionAreThoseAfterIt)
{
    graph->setMarkers(markersOf({1.0, 2.0}));
    graph->insertMarkers(markersOf({10.0, 20.0, 30.0}), {0, 2, 4});
    EXPECT_EQ(markerValues(), (std::vector<double>{10.0, 1.0, 20.0, 2.0, 30.0}));
    graph->removeMarkersAtIndexes({0, 2, 4});
    EXPECT_EQ(markerValues(), (std::vector<double>{1.0, 2.0}));
    graph->replaceMarkersAtIndexes({0}, markersOf({9.0}));
    EXPECT_EQ(markerValues(), (std::vector<double>{9.0, 2.0}));
    graph->insertMarkers({}, {});
    graph->removeMarkersAtIndexes({});
    EXPECT_EQ(graph->countOfMarkers(), 2U);
}

TEST_F(TOLVGraphInteractionTest, EditsAnnounceTheirKindAndPositions)
{
    std::vector<Change> changes;
    graph->addObserver("markers", [&](const PropertyChange& change) { changes.push_back({change.kind, {change.indexes.begin(), change.indexes.end()}}); });
    graph->placeHorizontalAxisMarkerWithValue(1.0);
    graph->insertMarkers(markersOf({2.0, 3.0}), {0, 2});
    graph->replaceMarkersAtIndexes({1, 2}, markersOf({4.0, 5.0}));
    graph->removeMarkersAtIndexes({0, 1});
    graph->setMarkers({});
    EXPECT_EQ(changes,
        (std::vector<Change>{
            {ChangeKind::Insertion, {0}}, {ChangeKind::Insertion, {0, 2}}, {ChangeKind::Replacement, {1, 2}}, {ChangeKind::Removal, {0, 1}}, {ChangeKind::Setting, {}}}));
}

TEST_F(TOLVGraphInteractionTest, PositionsOutsideTheListChangeNothing)
{
    const auto manager = attachUndoManager();
    graph->setMarkers(markersOf({1.0, 2.0}));
    int announced = 0;
    graph->addObserver("markers", [&](const PropertyChange&) { ++announced; });
    const auto expectRefused = [&](const char* what, auto edit) {
        try {
            edit();
            ADD_FAILURE() << "no exception: " << what;
        } catch (const Exception& exception) {
            EXPECT_EQ(exception.name(), "IndexOutOfRange") << what;
        }
        EXPECT_EQ(markerValues(), (std::vector<double>{1.0, 2.0})) << what;
        EXPECT_EQ(announced, 0) << what;
        EXPECT_FALSE(manager->canUndo()) << what;
    };
    expectRefused("insert beyond the end", [&] { graph->insertMarkers(markersOf({3.0}), {3}); });
    expectRefused("insert with a gap", [&] { graph->insertMarkers(markersOf({3.0, 4.0}), {2, 4}); });
    expectRefused("insert fewer", [&] { graph->insertMarkers(markersOf({3.0}), {0, 1}); });
    expectRefused("insert more", [&] { graph->insertMarkers(markersOf({3.0, 4.0}), {0}); });
    expectRefused("remove", [&] { graph->removeMarkersAtIndexes({1, 2}); });
    expectRefused("remove huge", [&] { graph->removeMarkersAtIndexes({static_cast<std::size_t>(kNotFoundIndex)}); });
    expectRefused("replace", [&] { graph->replaceMarkersAtIndexes({2}, markersOf({3.0})); });
    expectRefused("replace with more", [&] { graph->replaceMarkersAtIndexes({0}, markersOf({3.0, 4.0})); });
    expectRefused("read", [&] { (void)graph->markersAtIndexes({5}); });
}

TEST_F(TOLVGraphInteractionTest, TheMarkersOfACopyCannotBeEditedUntilTheyAreSetAnew)
{
    const auto marker = graph->placeHorizontalAxisMarkerWithValue(1.0);
    const auto copy = graph->copy();
    EXPECT_EQ(copy->markers(), (TOLVGraph::Markers{marker}));
    graph->placeHorizontalAxisMarkerWithValue(2.0);
    EXPECT_EQ(copy->countOfMarkers(), 1U);
    const auto expectRefused = [](auto edit) {
        try {
            edit();
            ADD_FAILURE() << "no exception";
        } catch (const Exception& exception) {
            EXPECT_EQ(exception.name(), "ImmutableMarkers");
        }
    };
    expectRefused([&] { copy->placeHorizontalAxisMarkerWithValue(3.0); });
    expectRefused([&] { copy->removeMarkersAtIndexes({0}); });
    expectRefused([&] { copy->replaceMarkersAtIndexes({0}, markersOf({3.0})); });
    EXPECT_EQ(copy->countOfMarkers(), 1U);
    copy->setMarkers(copy->markers());
    copy->placeHorizontalAxisMarkerWithValue(3.0);
    EXPECT_EQ(copy->countOfMarkers(), 2U);
    EXPECT_EQ(graph->countOfMarkers(), 2U);
}

// Undo.

TEST_F(TOLVGraphInteractionTest, RedoBringsTheSameMarkerBack)
{
    const auto manager = attachUndoManager();
    const auto marker = graph->placeHorizontalAxisMarkerWithValue(1.0);
    manager->undo();
    EXPECT_TRUE(graph->markers().empty());
    EXPECT_FALSE(manager->canUndo());
    manager->redo();
    EXPECT_EQ(graph->markers(), (TOLVGraph::Markers{marker}));
    EXPECT_FALSE(manager->canRedo());
    manager->undo();
    manager->redo();
    EXPECT_EQ(graph->markers(), (TOLVGraph::Markers{marker}));
}

TEST_F(TOLVGraphInteractionTest, EveryEditCanBeTakenBackAndDoneAgain)
{
    const auto manager = attachUndoManager();
    std::vector<TOLVGraph::Markers> states = {graph->markers()};
    const auto edited = [&] { states.push_back(graph->markers()); };
    graph->insertMarkers(markersOf({1.0, 2.0, 3.0, 4.0}), {0, 1, 2, 3});
    edited();
    graph->removeMarkersAtIndexes({0, 2});
    edited();
    graph->insertMarkers(markersOf({5.0, 6.0}), {0, 3});
    edited();
    graph->replaceMarkersAtIndexes({1, 3}, markersOf({7.0, 8.0}));
    edited();
    graph->placeHorizontalAxisMarkerAtPoint(130.0, kRect);
    edited();
    for (int round = 0; round < 2; ++round) {
        for (std::size_t i = states.size() - 1; i-- > 0;) {
            manager->undo();
            EXPECT_EQ(graph->markers(), states[i]);
        }
        EXPECT_FALSE(manager->canUndo());
        for (std::size_t i = 1; i < states.size(); ++i) {
            manager->redo();
            EXPECT_EQ(graph->markers(), states[i]);
        }
        EXPECT_FALSE(manager->canRedo());
    }
}

TEST_F(TOLVGraphInteractionTest, OneEditIsOneStepAndAGroupIsOneStep)
{
    const auto manager = attachUndoManager();
    graph->placeHorizontalAxisMarkerWithValue(1.0);
    manager->beginUndoGrouping();
    graph->placeHorizontalAxisMarkerWithValue(2.0);
    graph->removeMarkersAtIndexes({0});
    graph->placeHorizontalAxisMarkerWithValue(3.0);
    manager->endUndoGrouping();
    EXPECT_EQ(markerValues(), (std::vector<double>{2.0, 3.0}));
    manager->undo();
    EXPECT_EQ(markerValues(), (std::vector<double>{1.0}));
    manager->redo();
    EXPECT_EQ(markerValues(), (std::vector<double>{2.0, 3.0}));
    manager->undo();
    manager->undo();
    EXPECT_TRUE(graph->markers().empty());
}

TEST_F(TOLVGraphInteractionTest, AFreshEditEndsWhatCouldBeDoneAgain)
{
    const auto manager = attachUndoManager();
    graph->placeHorizontalAxisMarkerWithValue(1.0);
    manager->undo();
    graph->placeHorizontalAxisMarkerWithValue(2.0);
    EXPECT_FALSE(manager->canRedo());
    manager->undo();
    EXPECT_TRUE(graph->markers().empty());
}

TEST_F(TOLVGraphInteractionTest, UndoAnnouncesTheInverseEdit)
{
    const auto manager = attachUndoManager();
    graph->insertMarkers(markersOf({1.0, 2.0}), {0, 1});
    graph->replaceMarkersAtIndexes({1}, markersOf({3.0}));
    std::vector<Change> changes;
    graph->addObserver("markers", [&](const PropertyChange& change) { changes.push_back({change.kind, {change.indexes.begin(), change.indexes.end()}}); });
    manager->undo();
    manager->undo();
    manager->redo();
    EXPECT_EQ(changes, (std::vector<Change>{{ChangeKind::Replacement, {1}}, {ChangeKind::Removal, {0, 1}}, {ChangeKind::Insertion, {0, 1}}}));
}

TEST_F(TOLVGraphInteractionTest, WithoutAnUndoManagerEditsJustHappen)
{
    graph->placeHorizontalAxisMarkerWithValue(1.0);
    graph->removeMarkersAtIndexes({0});
    EXPECT_TRUE(graph->markers().empty());
    EXPECT_FALSE(graph->undoManager());
}

TEST_F(TOLVGraphInteractionTest, AnUndoManagerKeepsNoGraphAlive)
{
    const auto manager = attachUndoManager();
    graph->placeHorizontalAxisMarkerWithValue(1.0);
    const std::weak_ptr<TOLVGraph> weak = graph;
    graph.reset();
    EXPECT_TRUE(weak.expired());
    manager->undo();
    EXPECT_FALSE(manager->canRedo());
}

TEST_F(TOLVGraphInteractionTest, ADetachedUndoManagerReceivesNothingMore)
{
    const auto manager = attachUndoManager();
    graph->placeHorizontalAxisMarkerWithValue(1.0);
    graph->attachUndoManager(nullptr);
    graph->placeHorizontalAxisMarkerWithValue(2.0);
    manager->undo();
    EXPECT_EQ(markerValues(), (std::vector<double>{2.0}));
    EXPECT_FALSE(manager->canUndo());
}

TEST(TOLVGraph, NullMarkersAreRefused)
{
    const auto graph = TOLVGraph::graph();
    EXPECT_THROW(graph->setMarkers({nullptr}), Exception);
    EXPECT_THROW(graph->insertMarkers({nullptr}, {0}), Exception);
    const auto marker = graph->placeHorizontalAxisMarkerWithValue(1.0);
    EXPECT_THROW(graph->replaceMarkersAtIndexes({0}, {nullptr}), Exception);
    EXPECT_EQ(graph->markers(), (TOLVGraph::Markers{marker}));
}

} // namespace
} // namespace TOLVGraphing
