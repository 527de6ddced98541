#include "GraphInteraction.h"

#include "../axes/TOLVBarAxis.h"
#include "../axes/TOLVLogarithmicAxis.h"
#include "../graph/TOLVGraph.h"
#include "../platform/foundation/Exception.h"
#include "../platform/foundation/Log.h"
#include "../platform/graphics/RecordingContext.h"
#include "TOLVGraphView.h"

#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/StubTextSystem.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::StubTextScope;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr KeyModifiers kNoKeys{};
constexpr KeyModifiers kShift{true, false};
constexpr KeyModifiers kControl{false, true};

/// The data area is (50, 40, 200, 100); x goes from 0 to 100 and y from 0 to 10.
class GraphInteractionTest : public testing::Test {
protected:
    GraphInteractionTest()
    {
        graph().setMargin({10.0, 50.0, 40.0, 30.0});
        graph().addGraphData(TOLVGraphData::graphDataWithX(
            TOLVRealVector::vectorWithComponents({0.0F, 40.0F, 100.0F}), TOLVRealVector::vectorWithComponents({1.0F, 5.0F, 9.0F}), Color(1.0, 0.0, 0.0)));
        graph().attachUndoManager(undoManager);
        showAll();
    }

    TOLVGraph& graph() { return *view->graph(); }
    void showAll()
    {
        graph().zoomXToFixedMin(0.0F, 100.0F);
        graph().zoomYToFixedMin(0.0, 10.0);
    }
    std::string x() { return toString(*graph().extents()->x()); }
    std::string y() { return toString(*graph().extents()->y()); }

    void drag(Point from, Point to, PointerButton button = PointerButton::Primary)
    {
        interaction.pointerPressed(from, button);
        interaction.pointerMoved({(from.x + to.x) * 0.5, (from.y + to.y) * 0.5});
        interaction.pointerMoved(to);
        interaction.pointerReleased(to, button);
    }

    std::shared_ptr<TOLVGraphView> view = TOLVGraphView::initWithFrame({0.0, 0.0, 280.0, 150.0});
    std::shared_ptr<UndoManager> undoManager = std::make_shared<UndoManager>();
    GraphInteraction interaction{view};
};

TEST_F(GraphInteractionTest, TheDataAreaIsTheOneAssumed)
{
    EXPECT_EQ(toString(graph().dataRectInRect(view->bounds())), "(50, 40, 200, 100)");
}

// Wheel.

TEST_F(GraphInteractionTest, TheWheelZoomsXAboutThePointer)
{
    interaction.wheelTurned(1.0, {50.0, 90.0}, kNoKeys);
    // The left end stays; 15 % of the length go at the right.
    EXPECT_EQ(graph().extents()->x()->min(), 0.0);
    EXPECT_NEAR(graph().extents()->x()->max(), 85.0, 1e-4);
    EXPECT_EQ(y(), "[0, 10]");
    interaction.wheelTurned(-1.0, {50.0, 90.0}, kNoKeys);
    EXPECT_NEAR(graph().extents()->x()->max(), 97.75, 1e-4);
}

TEST_F(GraphInteractionTest, WithShiftTheWheelZoomsYAndWithControlBoth)
{
    interaction.wheelTurned(1.0, {150.0, 40.0}, kShift);
    EXPECT_EQ(x(), "[0, 100]");
    EXPECT_EQ(graph().extents()->y()->min(), 0.0);
    EXPECT_NEAR(graph().extents()->y()->max(), 8.5, 1e-5);
    showAll();
    interaction.wheelTurned(1.0, {50.0, 40.0}, kControl);
    EXPECT_NEAR(graph().extents()->x()->max(), 85.0, 1e-4);
    EXPECT_NEAR(graph().extents()->y()->max(), 8.5, 1e-5);
}

TEST_F(GraphInteractionTest, PartsOfAStepAreCollected)
{
    interaction.wheelTurned(0.5, {50.0, 90.0}, kNoKeys);
    EXPECT_EQ(x(), "[0, 100]");
    // The other way round begins anew.
    interaction.wheelTurned(-0.75, {50.0, 90.0}, kNoKeys);
    interaction.wheelTurned(0.5, {50.0, 90.0}, kNoKeys);
    EXPECT_EQ(x(), "[0, 100]");
    interaction.wheelTurned(0.5, {50.0, 90.0}, kNoKeys);
    EXPECT_NEAR(graph().extents()->x()->max(), 85.0, 1e-4);
}

TEST_F(GraphInteractionTest, AFlickOfTheWheelHasAnEnd)
{
    interaction.wheelTurned(1e300, {150.0, 90.0}, kNoKeys);
    EXPECT_LT(graph().extents()->x()->min(), graph().extents()->x()->max());
    interaction.wheelTurned(std::numeric_limits<double>::quiet_NaN(), {150.0, 90.0}, kNoKeys);
    interaction.wheelTurned(std::numeric_limits<double>::infinity(), {150.0, 90.0}, kNoKeys);
    EXPECT_LT(graph().extents()->x()->min(), graph().extents()->x()->max());
}

TEST_F(GraphInteractionTest, HoweverFarItIsZoomedInItComesOutAgain)
{
    for (const bool isLogarithmic : {false, true}) {
        if (isLogarithmic)
            graph().setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
        graph().zoomXToFixedMin(1000.0F, 1100.0F);
        for (int i = 0; i < 500; ++i)
            interaction.wheelTurned(1.0, {120.0, 90.0}, kControl);
        EXPECT_LT(graph().extents()->x()->min(), graph().extents()->x()->max());
        const double narrow = graph().extents()->x()->max() - graph().extents()->x()->min();
        for (int i = 0; i < 10; ++i)
            interaction.wheelTurned(-1.0, {120.0, 90.0}, kControl);
        EXPECT_GT(graph().extents()->x()->max() - graph().extents()->x()->min(), 2.0 * narrow) << isLogarithmic;
    }
}

TEST_F(GraphInteractionTest, FlagsForbidZooming)
{
    graph().setCanZoomX(false);
    interaction.wheelTurned(1.0, {150.0, 90.0}, kControl);
    drag({60.0, 50.0}, {160.0, 120.0}, PointerButton::Secondary);
    EXPECT_EQ(x(), "[0, 100]");
    EXPECT_NE(y(), "[0, 10]");
}

// Dragging the graph.

TEST_F(GraphInteractionTest, ADragMovesTheGraphWithThePointer)
{
    interaction.pointerPressed({150.0, 90.0}, PointerButton::Primary);
    EXPECT_EQ(interaction.pointerLook(), PointerLook::Moving);
    interaction.pointerMoved({170.0, 100.0});
    EXPECT_EQ(x(), "[-10, 90]");
    EXPECT_EQ(y(), "[-1, 9]");
    // Back and forth adds no rounding: the ranges follow from where the drag began.
    for (int i = 0; i < 1000; ++i)
        interaction.pointerMoved({150.0 + i % 37, 90.0 + i % 11});
    interaction.pointerMoved({150.0, 90.0});
    EXPECT_EQ(x(), "[0, 100]");
    EXPECT_EQ(y(), "[0, 10]");
    interaction.pointerReleased({150.0, 90.0}, PointerButton::Primary);
    interaction.pointerMoved({200.0, 90.0});
    EXPECT_EQ(x(), "[0, 100]");
}

TEST_F(GraphInteractionTest, ADragMayLeaveTheView)
{
    interaction.pointerPressed({150.0, 90.0}, PointerButton::Primary);
    interaction.pointerLeft();
    interaction.pointerMoved({-50.0, 90.0});
    EXPECT_EQ(x(), "[100, 200]");
    EXPECT_EQ(interaction.keyPressed(GraphKey::Cancel, kNoKeys), true);
    EXPECT_EQ(x(), "[0, 100]");
}

TEST_F(GraphInteractionTest, TellsWhetherSomethingIsDragged)
{
    EXPECT_FALSE(interaction.isDragging());
    for (const PointerButton button : {PointerButton::Primary, PointerButton::Secondary}) {
        interaction.pointerPressed({100.0, 60.0}, button);
        EXPECT_TRUE(interaction.isDragging());
        interaction.pointerMoved({120.0, 70.0});
        EXPECT_TRUE(interaction.isDragging());
        interaction.pointerReleased({120.0, 70.0}, button);
        EXPECT_FALSE(interaction.isDragging());
        interaction.pointerPressed({100.0, 60.0}, button);
        EXPECT_TRUE(interaction.keyPressed(GraphKey::Cancel, kNoKeys));
        EXPECT_FALSE(interaction.isDragging());
        // Outside the data area nothing is taken hold of.
        interaction.pointerPressed({100.0, 20.0}, button);
        EXPECT_FALSE(interaction.isDragging());
    }
}

TEST_F(GraphInteractionTest, FittedMarginsOnlyGrowDuringADrag)
{
    const auto draw = [this] {
        RecordingContext context;
        view->displayInContext(context);
        return graph().margin().left;
    };
    const StubTextScope text(Size{10.0, 10.0});
    text->setSize("10", {40.0, 10.0});
    view->setFitsMarginsToLabels(true);
    const double wide = draw();
    const Rect area = graph().dataRectInRect(view->bounds());
    const Point start{area.x() + 20.0, area.y() + 60.0};
    interaction.pointerPressed(start, PointerButton::Primary);
    // The tick at 10 leaves the view.
    interaction.pointerMoved({start.x, start.y + 30.0});
    EXPECT_EQ(draw(), wide);
    EXPECT_EQ(graph().dataRectInRect(view->bounds()), area);
    interaction.pointerReleased({start.x, start.y + 30.0}, PointerButton::Primary);
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_LT(draw(), wide);
}

TEST_F(GraphInteractionTest, AnswersForTheMarginsOfItsOwnView)
{
    view->setFitsMarginsToLabels(true);
    view->fitMargins();
    const EdgeInsets own = graph().margin();
    graph().setMargin({70.0, 70.0, 70.0, 70.0});
    interaction.pointerMoved({100.0, 60.0});
    interaction.pointerPressed({100.0, 60.0}, PointerButton::Primary);
    EXPECT_EQ(graph().margin(), own);
    EXPECT_TRUE(interaction.isDragging());
}

TEST_F(GraphInteractionTest, OutsideTheDataAreaNothingIsDragged)
{
    drag({20.0, 90.0}, {60.0, 90.0});
    drag({20.0, 90.0}, {150.0, 20.0}, PointerButton::Secondary);
    EXPECT_EQ(x(), "[0, 100]");
    EXPECT_EQ(y(), "[0, 10]");
}

// Box.

TEST_F(GraphInteractionTest, TheRangesBecomeThoseOfTheBox)
{
    interaction.pointerPressed({170.0, 120.0}, PointerButton::Secondary);
    interaction.pointerMoved({70.0, 60.0});
    EXPECT_EQ(interaction.selectionBox(), Rect(70.0, 60.0, 100.0, 60.0));
    EXPECT_EQ(interaction.pointerLook(), PointerLook::SelectsBox);
    EXPECT_EQ(x(), "[0, 100]");
    interaction.pointerReleased({70.0, 60.0}, PointerButton::Secondary);
    EXPECT_EQ(x(), "[10, 60]");
    EXPECT_EQ(y(), "[2, 8]");
    EXPECT_FALSE(interaction.selectionBox());
}

TEST_F(GraphInteractionTest, AThinBoxChangesOneDirectionAndASmallOneNone)
{
    drag({70.0, 60.0}, {170.0, 62.0}, PointerButton::Secondary);
    EXPECT_EQ(x(), "[10, 60]");
    EXPECT_EQ(y(), "[0, 10]");
    showAll();
    drag({70.0, 60.0}, {70.0, 120.0}, PointerButton::Secondary);
    EXPECT_EQ(x(), "[0, 100]");
    EXPECT_EQ(y(), "[2, 8]");
    showAll();
    drag({70.0, 60.0}, {72.0, 62.0}, PointerButton::Secondary);
    EXPECT_EQ(x() + y(), "[0, 100][0, 10]");
}

TEST_F(GraphInteractionTest, ABoxIsCutAtTheDataArea)
{
    drag({150.0, 90.0}, {400.0, 400.0}, PointerButton::Secondary);
    EXPECT_EQ(x(), "[50, 100]");
    EXPECT_EQ(y(), "[5, 10]");
}

TEST_F(GraphInteractionTest, ABoxMayBeCancelled)
{
    interaction.pointerPressed({70.0, 60.0}, PointerButton::Secondary);
    interaction.pointerMoved({170.0, 120.0});
    EXPECT_TRUE(interaction.keyPressed(GraphKey::Cancel, kNoKeys));
    EXPECT_FALSE(interaction.selectionBox());
    interaction.pointerReleased({170.0, 120.0}, PointerButton::Secondary);
    EXPECT_EQ(x(), "[0, 100]");
}

// Markers.

TEST_F(GraphInteractionTest, ADoubleClickPlacesAMarker)
{
    interaction.pointerDoubleClicked({100.0, 90.0});
    ASSERT_EQ(graph().countOfMarkers(), 1U);
    EXPECT_EQ(graph().markers()[0]->value(), 25.0);
    EXPECT_EQ(interaction.selectedMarker(), graph().markers()[0]);
    // Where there is one already, none is added.
    interaction.pointerDoubleClicked({102.0, 50.0});
    EXPECT_EQ(graph().countOfMarkers(), 1U);
    undoManager->undo();
    EXPECT_EQ(graph().countOfMarkers(), 0U);
}

TEST_F(GraphInteractionTest, AMarkerIsDraggedAsOneStep)
{
    const auto marker = graph().placeHorizontalAxisMarkerWithValue(25.0);
    interaction.pointerMoved({103.0, 20.0});
    EXPECT_EQ(interaction.pointerLook(), PointerLook::MovesMarker);
    interaction.pointerPressed({103.0, 20.0}, PointerButton::Primary);
    interaction.pointerMoved({150.0, 30.0});
    EXPECT_EQ(graph().markers()[0]->value(), 50.0);
    interaction.pointerMoved({200.0, 30.0});
    interaction.pointerReleased({200.0, 30.0}, PointerButton::Primary);
    EXPECT_EQ(graph().markers()[0]->value(), 75.0);
    EXPECT_EQ(x(), "[0, 100]");
    undoManager->undo();
    EXPECT_EQ(graph().markers()[0], marker);
    EXPECT_EQ(marker->value(), 25.0);
    undoManager->redo();
    EXPECT_EQ(graph().markers()[0]->value(), 75.0);
    undoManager->undo();
    undoManager->undo();
    EXPECT_EQ(graph().countOfMarkers(), 0U);
}

TEST_F(GraphInteractionTest, AMarkerIsNotDraggedOutOfTheDataAreaAndStaysWhenCancelled)
{
    graph().placeHorizontalAxisMarkerWithValue(25.0);
    interaction.pointerPressed({100.0, 90.0}, PointerButton::Primary);
    interaction.pointerMoved({900.0, 90.0});
    EXPECT_EQ(graph().markers()[0]->value(), 100.0);
    interaction.keyPressed(GraphKey::Cancel, kNoKeys);
    EXPECT_EQ(graph().markers()[0]->value(), 25.0);
    // A click moves nothing and leaves no step.
    drag({100.0, 90.0}, {100.0, 90.0});
    undoManager->undo();
    EXPECT_EQ(graph().countOfMarkers(), 0U);
}

TEST_F(GraphInteractionTest, AKeyForMarkersPutsTheDraggedOneDown)
{
    const struct {
        GraphKey key;
        double value;
        std::size_t count;
    } cases[] = {
        {GraphKey::Undo, 25.0, 2},
        {GraphKey::NextMarker, 50.0, 2},
        {GraphKey::PreviousMarker, 50.0, 2},
        {GraphKey::PlaceMarker, 50.0, 3},
        {GraphKey::Right, 51.0, 2},
    };
    for (const auto& one : cases) {
        graph().setMarkers({TOLVMarker::markerWithValue(25.0), TOLVMarker::markerWithValue(80.0)});
        interaction.pointerPressed({100.0, 90.0}, PointerButton::Primary);
        interaction.pointerMoved({150.0, 90.0});
        EXPECT_TRUE(interaction.keyPressed(one.key, kNoKeys));
        EXPECT_FALSE(interaction.isDragging());
        // Nothing is dragged any more, whatever is selected now.
        interaction.pointerMoved({220.0, 90.0});
        interaction.pointerReleased({220.0, 90.0}, PointerButton::Primary);
        ASSERT_EQ(graph().countOfMarkers(), one.count);
        EXPECT_EQ(graph().markers()[0]->value(), one.value);
        EXPECT_EQ(graph().markers()[1]->value(), 80.0);
    }
}

TEST_F(GraphInteractionTest, AMarkerDeletedWhileItIsDraggedComesBackWhereItWasPutDown)
{
    graph().placeHorizontalAxisMarkerWithValue(25.0);
    interaction.pointerPressed({100.0, 90.0}, PointerButton::Primary);
    interaction.pointerMoved({150.0, 90.0});
    EXPECT_TRUE(interaction.keyPressed(GraphKey::Delete, kNoKeys));
    EXPECT_EQ(graph().countOfMarkers(), 0U);
    // Nothing is left to cancel.
    EXPECT_FALSE(interaction.keyPressed(GraphKey::Cancel, kNoKeys));
    interaction.keyPressed(GraphKey::Undo, kNoKeys);
    EXPECT_EQ(graph().markers()[0]->value(), 50.0);
    interaction.keyPressed(GraphKey::Undo, kNoKeys);
    EXPECT_EQ(graph().markers()[0]->value(), 25.0);
}

TEST_F(GraphInteractionTest, SelectingAnotherMarkerPutsTheDraggedOneDown)
{
    graph().placeHorizontalAxisMarkerWithValue(25.0);
    const auto other = graph().placeHorizontalAxisMarkerWithValue(80.0);
    interaction.pointerPressed({100.0, 90.0}, PointerButton::Primary);
    interaction.pointerMoved({150.0, 90.0});
    // No such place.
    interaction.selectMarkerAtIndex(2);
    EXPECT_TRUE(interaction.isDragging());
    interaction.selectMarkerAtIndex(1);
    EXPECT_EQ(interaction.selectedMarker(), other);
    interaction.pointerMoved({220.0, 90.0});
    EXPECT_EQ(graph().markers()[0]->value(), 50.0);
    EXPECT_EQ(other->value(), 80.0);
}

TEST_F(GraphInteractionTest, ThereAreNoneWithoutAView)
{
    try {
        const GraphInteraction none(nullptr);
        FAIL() << "expected an exception";
    } catch (const Exception& exception) {
        EXPECT_STREQ(exception.what(), "NullView: Gestures are those of a graph view");
    }
}

TEST_F(GraphInteractionTest, OfTwoMarkersTheNearerIsTaken)
{
    graph().placeHorizontalAxisMarkerWithValue(25.0);
    const auto second = graph().placeHorizontalAxisMarkerWithValue(28.0);
    graph().placeHorizontalAxisMarkerWithValue(27.0)->setAxisIndex(1);
    interaction.pointerPressed({105.0, 90.0}, PointerButton::Primary);
    EXPECT_EQ(interaction.selectedMarker(), second);
}

TEST_F(GraphInteractionTest, DeleteRemovesTheSelectedMarker)
{
    EXPECT_FALSE(interaction.keyPressed(GraphKey::Delete, kNoKeys));
    const auto first = graph().placeHorizontalAxisMarkerWithValue(25.0);
    const auto second = graph().placeHorizontalAxisMarkerWithValue(50.0);
    EXPECT_TRUE(interaction.keyPressed(GraphKey::NextMarker, kNoKeys));
    EXPECT_EQ(interaction.selectedMarker(), first);
    interaction.keyPressed(GraphKey::NextMarker, kNoKeys);
    EXPECT_EQ(interaction.selectedMarker(), second);
    interaction.keyPressed(GraphKey::NextMarker, kNoKeys);
    EXPECT_EQ(interaction.selectedMarker(), first);
    interaction.keyPressed(GraphKey::PreviousMarker, kNoKeys);
    EXPECT_EQ(interaction.selectedMarker(), second);
    EXPECT_TRUE(interaction.keyPressed(GraphKey::Delete, kNoKeys));
    EXPECT_EQ(graph().markers(), (TOLVGraph::Markers{first}));
    EXPECT_FALSE(interaction.selectedMarker());
    EXPECT_TRUE(interaction.keyPressed(GraphKey::Undo, kNoKeys));
    EXPECT_EQ(graph().countOfMarkers(), 2U);
    EXPECT_TRUE(interaction.keyPressed(GraphKey::Redo, kNoKeys));
    EXPECT_EQ(graph().countOfMarkers(), 1U);
    EXPECT_FALSE(interaction.keyPressed(GraphKey::Redo, kNoKeys));
}

TEST_F(GraphInteractionTest, AMarkerThatIsGoneIsNoLongerSelected)
{
    interaction.pointerDoubleClicked({100.0, 90.0});
    undoManager->undo();
    EXPECT_FALSE(interaction.keyPressed(GraphKey::Delete, kNoKeys));
    interaction.keyPressed(GraphKey::Right, kNoKeys);
    EXPECT_EQ(x(), "[10, 110]");
}

// Fitting.

TEST_F(GraphInteractionTest, ADoubleClickOnAnAxisFitsIt)
{
    graph().zoomXToFixedMin(20.0F, 30.0F);
    graph().zoomYToFixedMin(2.0, 3.0);
    interaction.pointerDoubleClicked({150.0, 20.0});
    EXPECT_EQ(x() + y(), "[0, 100][2, 3]");
    interaction.pointerDoubleClicked({20.0, 90.0});
    EXPECT_EQ(x() + y(), "[0, 100][1, 9]");
    EXPECT_EQ(graph().countOfMarkers(), 0U);
}

TEST_F(GraphInteractionTest, WithoutDataFittingKeepsTheRanges)
{
    graph().clearGraphData();
    interaction.keyPressed(GraphKey::Fit, kNoKeys);
    EXPECT_EQ(x() + y(), "[0, 100][0, 10]");
    graph().addGraphData(TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents({1.0F}), TOLVRealVector::vectorWithComponents({kNaN}), Color()));
    interaction.keyPressed(GraphKey::Fit, kNoKeys);
    EXPECT_EQ(y(), "[0, 10]");
}

// Keys.

TEST_F(GraphInteractionTest, ArrowsPan)
{
    interaction.keyPressed(GraphKey::Right, kNoKeys);
    interaction.keyPressed(GraphKey::Up, kNoKeys);
    EXPECT_EQ(x() + y(), "[10, 110][1, 11]");
    interaction.keyPressed(GraphKey::Left, kNoKeys);
    interaction.keyPressed(GraphKey::Down, kNoKeys);
    EXPECT_EQ(x() + y(), "[0, 100][0, 10]");
    interaction.keyPressed(GraphKey::Right, kShift);
    EXPECT_EQ(x(), "[0.5, 100.5]");
}

TEST_F(GraphInteractionTest, WithAMarkerSelectedArrowsMoveIt)
{
    interaction.pointerDoubleClicked({150.0, 90.0});
    interaction.keyPressed(GraphKey::Right, kNoKeys);
    EXPECT_EQ(graph().markers()[0]->value(), 51.0);
    interaction.keyPressed(GraphKey::Left, kShift);
    EXPECT_EQ(graph().markers()[0]->value(), 50.5);
    EXPECT_EQ(x(), "[0, 100]");
    undoManager->undo();
    EXPECT_EQ(graph().markers()[0]->value(), 51.0);
}

TEST_F(GraphInteractionTest, KeysZoomAboutTheMiddle)
{
    interaction.keyPressed(GraphKey::ZoomIn, kNoKeys);
    EXPECT_NEAR(graph().extents()->x()->min(), 7.5, 1e-4);
    EXPECT_NEAR(graph().extents()->y()->max(), 9.25, 1e-5);
    showAll();
    interaction.keyPressed(GraphKey::ZoomOut, kShift);
    EXPECT_EQ(x(), "[0, 100]");
    EXPECT_NEAR(graph().extents()->y()->max(), 10.75, 1e-5);
    showAll();
    interaction.keyPressed(GraphKey::ZoomIn, kControl);
    EXPECT_EQ(y(), "[0, 10]");
    EXPECT_NEAR(graph().extents()->x()->min(), 7.5, 1e-4);
}

TEST_F(GraphInteractionTest, AKeyPlacesAMarkerAtThePointerOrInTheMiddle)
{
    interaction.keyPressed(GraphKey::PlaceMarker, kNoKeys);
    interaction.pointerMoved({100.0, 90.0});
    interaction.keyPressed(GraphKey::PlaceMarker, kNoKeys);
    ASSERT_EQ(graph().countOfMarkers(), 2U);
    EXPECT_EQ(graph().markers()[0]->value(), 50.0);
    EXPECT_EQ(graph().markers()[1]->value(), 25.0);
}

// Read-out.

TEST_F(GraphInteractionTest, NothingIsReadOutWhileTheGraphIsDragged)
{
    interaction.pointerMoved({150.0, 100.0});
    EXPECT_TRUE(interaction.valueUnderPointer());
    EXPECT_FALSE(interaction.samplesUnderPointer().empty());
    interaction.pointerPressed({150.0, 100.0}, PointerButton::Primary);
    interaction.pointerMoved({160.0, 100.0});
    EXPECT_FALSE(interaction.valueUnderPointer());
    EXPECT_TRUE(interaction.samplesUnderPointer().empty());
    EXPECT_EQ(interaction.abscissaText(), "");
    EXPECT_EQ(interaction.readoutText(), "");
    interaction.pointerReleased({160.0, 100.0}, PointerButton::Primary);
    EXPECT_TRUE(interaction.valueUnderPointer());
}

TEST_F(GraphInteractionTest, TheNearestSampleOfEachSeriesIsReadOut)
{
    graph().graphData()[0]->setName("level");
    graph().addGraphData(TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents({30.0F}), TOLVRealVector::vectorWithComponents({2.0F}), Color()));
    graph().addGraphData(std::make_shared<TOLVGraphData>());
    EXPECT_TRUE(interaction.samplesUnderPointer().empty());
    interaction.pointerMoved({120.0, 90.0});
    EXPECT_EQ(interaction.valueUnderPointer(), 35.0F);
    EXPECT_EQ(interaction.samplesUnderPointer(), (std::vector<SampleReadout>{{0, "level", 40.0F, 5.0F, {130.0, 90.0}}, {1, "", 30.0F, 2.0F, {110.0, 60.0}}}));
    EXPECT_EQ(interaction.readoutText(), "x 35, level 5, y 2");
    graph().horizontalAxis()->setLabel("Time");
    EXPECT_EQ(interaction.readoutText(), "Time 35, level 5, y 2");
    graph().horizontalAxis()->setLabel("");
    EXPECT_EQ(interaction.abscissaText(), "x 35");
    EXPECT_EQ(interaction.pointerLook(), PointerLook::Crosshair);
    interaction.pointerLeft();
    EXPECT_EQ(interaction.readoutText(), "");
    EXPECT_EQ(interaction.pointerLook(), PointerLook::Plain);
    interaction.pointerMoved({20.0, 90.0});
    EXPECT_FALSE(interaction.valueUnderPointer());
}

TEST_F(GraphInteractionTest, ASeriesWithoutANearestSampleIsNotReadOut)
{
    const LogSinkScope quiet([](std::string_view) {});
    graph().addGraphData(TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents({kNaN, kNaN}), TOLVRealVector::vectorWithComponents({2.0F, 3.0F}), Color()));
    interaction.pointerMoved({120.0, 90.0});
    EXPECT_EQ(interaction.samplesUnderPointer(), (std::vector<SampleReadout>{{0, "", 40.0F, 5.0F, {130.0, 90.0}}}));
    EXPECT_EQ(interaction.readoutText(), "x 35, y 5");
}

// Robustness.

TEST_F(GraphInteractionTest, WithoutAGraphOrItsPartsNothingIsAnswered)
{
    const auto everything = [&] {
        for (const PointerButton button : {PointerButton::Primary, PointerButton::Secondary})
            drag({100.0, 90.0}, {150.0, 60.0}, button);
        interaction.pointerDoubleClicked({100.0, 90.0});
        interaction.wheelTurned(3.0, {100.0, 90.0}, kControl);
        for (int key = 0; key <= static_cast<int>(GraphKey::Redo); ++key)
            EXPECT_FALSE(interaction.keyPressed(static_cast<GraphKey>(key), kNoKeys));
        EXPECT_EQ(interaction.readoutText(), "");
        EXPECT_EQ(interaction.pointerLook(), PointerLook::Plain);
    };
    graph().setExtents(nullptr);
    everything();
    view->setGraph(nullptr);
    everything();
}

TEST_F(GraphInteractionTest, EveryGestureOnEveryAxisAndSizeIsHarmless)
{
    const std::shared_ptr<TOLVAxis> axes[] = {std::make_shared<TOLVLogarithmicAxis>(), std::make_shared<TOLVBarAxis>()};
    for (const auto& axis : axes) {
        graph().setHorizontalAxis(axis);
        for (const Rect& frame : {Rect(0.0, 0.0, 280.0, 150.0), Rect(), Rect(0.0, 0.0, 20.0, 20.0)}) {
            view->setFrame(frame);
            showAll();
            graph().prepareForDrawingInRect(view->bounds());
            for (const PointerButton button : {PointerButton::Primary, PointerButton::Secondary})
                drag({100.0, 90.0}, {150.0, 60.0}, button);
            interaction.pointerDoubleClicked({100.0, 90.0});
            interaction.wheelTurned(3.0, {100.0, 90.0}, kControl);
            for (int key = 0; key <= static_cast<int>(GraphKey::Redo); ++key)
                interaction.keyPressed(static_cast<GraphKey>(key), kNoKeys);
            EXPECT_TRUE(std::isfinite(graph().extents()->x()->min()) && std::isfinite(graph().extents()->x()->max()));
            interaction.pointerMoved({100.0, 90.0});
            EXPECT_NO_THROW((void)interaction.readoutText());
        }
    }
}

} // namespace
} // namespace TOLVGraphing
