#include "TOLVGraph.h"

#include "../axes/TOLVLinearAxis.h"
#include "../axes/TOLVLogarithmicAxis.h"
#include "../drawing/CurveGraphDrawing.h"
#include "../drawing/TOLVCurveGraphDrawing.h"

#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/DrawnLines.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::EvenTextScope;
using Names = std::vector<std::string>;

constexpr double kUnknown = static_cast<double>(std::numeric_limits<float>::max());

std::shared_ptr<TOLVGraphData> seriesOf(std::vector<float> x, std::vector<float> y)
{
    return TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), Color::blackColor());
}

/// A strategy that a host archives together with its graph.
class ArchivedStrategy final : public TOLVGraphDrawing, public Codable {
public:
    void drawGraph(const std::shared_ptr<TOLVGraph>&, const Rect&) override {}
    std::string archiveClassName() const override { return "ArchivedStrategy"; }
    void encodeWithCoder(KeyedArchiver&) const override {}
};

const ArchiveClassRegistration archivedStrategyRegistration("ArchivedStrategy", [](KeyedUnarchiver&) { return std::make_shared<ArchivedStrategy>(); });

/// Counts the announcements of one property.
class Announcements {
public:
    Announcements(Observable& object, const char* key)
    {
        object.addObserver(key, [count = m_count](const PropertyChange&) { ++*count; });
    }
    /// How many there were since the last question.
    int taken() { return std::exchange(*m_count, 0); }

private:
    std::shared_ptr<int> m_count = std::make_shared<int>(0);
};

std::shared_ptr<TOLVGraph> unarchived(const std::shared_ptr<ArchiveObject>& archive)
{
    return std::dynamic_pointer_cast<TOLVGraph>(KeyedUnarchiver::unarchivedObject(archive));
}

class TOLVGraphTest : public testing::Test {
protected:
    EvenTextScope text;
    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
};

// A new graph.

TEST_F(TOLVGraphTest, HasItsDefaults)
{
    EXPECT_EQ(toString(graph->margin()), "(15, 30, 15, 15)");
    EXPECT_EQ(toString(graph->padding()), "(0, 0, 0, 0)");
    EXPECT_TRUE(graph->canZoomX());
    EXPECT_TRUE(graph->canZoomY());
    EXPECT_TRUE(graph->needsReloadData());
    EXPECT_TRUE(graph->graphData().empty());
    EXPECT_TRUE(graph->markers().empty());
    EXPECT_FALSE(graph->title());
    EXPECT_FALSE(graph->undoManager());
    EXPECT_EQ(*graph->majorLineStyle(), *TOLVLineStyle::solidLineWithColor(Color::grayColor(), 1.0));
    EXPECT_EQ(*graph->minorLineStyle(), *TOLVLineStyle::solidLineWithColor(Color::lightGrayColor(), 0.5));
    EXPECT_EQ(*graph->titleAttributes(), (TextAttributes{Font{"HelveticaNeue-Bold", 12.0}, std::nullopt}));
    EXPECT_EQ(*graph->labelAttributes(), (TextAttributes{Font{"HelveticaNeue", 14.0}, Color::blackColor()}));
    EXPECT_EQ(*graph->tickLabelAttributes(), (TextAttributes{Font{"HelveticaNeue-Light", 12.0}, Color::blackColor()}));
    EXPECT_TRUE(std::dynamic_pointer_cast<CurveGraphDrawing>(graph->drawingStrategy()));
    EXPECT_EQ(toString(*graph->extents()), "x [0, 0] y [0, 0] z [0, 0]");
    EXPECT_EQ(graph->extents()->graph(), graph);
    for (const auto& axis : {graph->horizontalAxis(), graph->verticalAxis()}) {
        EXPECT_TRUE(std::dynamic_pointer_cast<TOLVLinearAxis>(axis));
        EXPECT_EQ(axis->graph(), graph);
    }
    EXPECT_TRUE(graph->verticalAxis()->isVertical());
}

TEST_F(TOLVGraphTest, FontHeightsAreThoseOfTheAttributes)
{
    EXPECT_EQ(graph->labelFontHeight(), 14.0);
    EXPECT_EQ(graph->tickLabelFontHeight(), 12.0);
    graph->setLabelAttributes(makeTextAttributes(Font{"Helvetica", 30.0}));
    EXPECT_EQ(graph->labelFontHeight(), 30.0);
    EXPECT_EQ(graph->tickLabelFontHeight(), 12.0);
    graph->setTickLabelAttributes(makeTextAttributes(Font{"Helvetica", 7.0}));
    EXPECT_EQ(graph->tickLabelFontHeight(), 7.0);
    graph->setLabelAttributes(nullptr);
    EXPECT_EQ(graph->labelFontHeight(), 12.0);
}

TEST_F(TOLVGraphTest, GoesAwayWithItsLastOwner)
{
    const std::weak_ptr<TOLVGraph> weak = graph;
    const auto extents = graph->extents();
    graph.reset();
    EXPECT_TRUE(weak.expired());
    EXPECT_FALSE(extents->graph());
    extents->x()->setMin(3.0);
}

TEST_F(TOLVGraphTest, ItsEndIsNotAnnounced)
{
    Announcements extents(*graph, "extents");
    Announcements canDraw(*graph, "canDraw");
    graph.reset();
    EXPECT_EQ(extents.taken(), 0);
    EXPECT_EQ(canDraw.taken(), 0);
}

TEST_F(TOLVGraphTest, ReloadingMarksTheDataAsLoaded)
{
    graph->reloadData();
    EXPECT_FALSE(graph->needsReloadData());
}

// Copied and shared properties.

TEST_F(TOLVGraphTest, AxesAreCopiedAndBelongToTheGraph)
{
    const auto axis = std::make_shared<TOLVLogarithmicAxis>();
    axis->setLabel("frequency");
    graph->setHorizontalAxis(axis);
    graph->setVerticalAxis(axis);
    axis->setLabel("changed");
    EXPECT_NE(graph->horizontalAxis(), axis);
    EXPECT_NE(graph->horizontalAxis(), graph->verticalAxis());
    for (const auto& own : {graph->horizontalAxis(), graph->verticalAxis()}) {
        EXPECT_TRUE(std::dynamic_pointer_cast<TOLVLogarithmicAxis>(own));
        EXPECT_EQ(own->label(), "frequency");
        EXPECT_EQ(own->graph(), graph);
    }
    EXPECT_FALSE(graph->horizontalAxis()->isVertical());
    EXPECT_TRUE(graph->verticalAxis()->isVertical());
    EXPECT_FALSE(axis->graph());
}

TEST_F(TOLVGraphTest, AnAxisOfAnotherGraphIsTakenOver)
{
    const auto other = TOLVGraph::graph();
    graph->setHorizontalAxis(other->horizontalAxis());
    EXPECT_EQ(graph->horizontalAxis()->graph(), graph);
    EXPECT_EQ(other->horizontalAxis()->graph(), other);
    graph->setHorizontalAxis(graph->horizontalAxis());
    EXPECT_EQ(graph->horizontalAxis()->graph(), graph);
}

TEST_F(TOLVGraphTest, LineStylesAreCopied)
{
    const auto style = TOLVLineStyle::dashedLineStyle();
    graph->setMajorLineStyle(style);
    graph->setMinorLineStyle(style);
    style->setThickness(9.0);
    EXPECT_EQ(*graph->majorLineStyle(), *TOLVLineStyle::dashedLineStyle());
    EXPECT_EQ(*graph->minorLineStyle(), *TOLVLineStyle::dashedLineStyle());
    graph->setMajorLineStyle(nullptr);
    EXPECT_FALSE(graph->majorLineStyle());
}

TEST_F(TOLVGraphTest, AttributesStrategyAndUndoManagerAreShared)
{
    const auto attributes = makeTextAttributes(Font{"Helvetica", 9.0});
    graph->setTitleAttributes(attributes);
    graph->setLabelAttributes(attributes);
    graph->setTickLabelAttributes(attributes);
    EXPECT_EQ(graph->titleAttributes(), attributes);
    EXPECT_EQ(graph->labelAttributes(), attributes);
    EXPECT_EQ(graph->tickLabelAttributes(), attributes);
    const auto strategy = std::make_shared<TOLVCurveGraphDrawing>();
    graph->setDrawingStrategy(strategy);
    EXPECT_EQ(graph->drawingStrategy(), strategy);
    const auto undoManager = std::make_shared<UndoManager>();
    graph->attachUndoManager(undoManager);
    EXPECT_EQ(graph->undoManager(), undoManager);
}

TEST_F(TOLVGraphTest, ExtentsAreCopiedAndPointBack)
{
    const auto former = graph->extents();
    const auto extents = std::make_shared<TOLVGraphExtents>();
    extents->setX(TOLVAxisExtents::extentsWithMin(1.0, 2.0));
    graph->setExtents(extents);
    EXPECT_NE(graph->extents(), extents);
    extents->x()->setMin(-9.0);
    EXPECT_EQ(toString(*graph->extents()->x()), "[1, 2]");
    EXPECT_EQ(graph->extents()->graph(), graph);
    EXPECT_FALSE(former->graph());
    EXPECT_FALSE(extents->graph());
}

TEST_F(TOLVGraphTest, SettingTheExtentsHeldChangesNothing)
{
    const auto extents = graph->extents();
    Announcements announcements(*graph, "extents");
    graph->setExtents(extents);
    EXPECT_EQ(graph->extents(), extents);
    EXPECT_EQ(extents->graph(), graph);
    EXPECT_EQ(announcements.taken(), 0);
}

TEST_F(TOLVGraphTest, SeriesAreSharedAndTheListIsASnapshot)
{
    const auto first = seriesOf({1.0F}, {2.0F});
    const auto second = seriesOf({3.0F}, {4.0F});
    graph->addGraphData(first);
    const auto snapshot = graph->graphData();
    graph->addGraphData(second);
    graph->addGraphData(nullptr);
    EXPECT_EQ(snapshot, (TOLVGraph::Series{first}));
    EXPECT_EQ(graph->graphData(), (TOLVGraph::Series{first, second}));
    graph->clearGraphData();
    EXPECT_TRUE(graph->graphData().empty());
    EXPECT_EQ(snapshot.size(), 1U);
}

TEST_F(TOLVGraphTest, TickLabelPaddingsAreThoseOfTheAxes)
{
    graph->setHorizontalTickLabelPadding(3.0);
    graph->setVerticalTickLabelPadding(4.0);
    EXPECT_EQ(graph->horizontalAxis()->tickLabelPadding(), 3.0);
    EXPECT_EQ(graph->verticalAxis()->tickLabelPadding(), 4.0);
    EXPECT_EQ(graph->horizontalTickLabelPadding(), 3.0);
    EXPECT_EQ(graph->verticalTickLabelPadding(), 4.0);
    graph->setHorizontalAxis(nullptr);
    graph->setVerticalAxis(nullptr);
    graph->setHorizontalTickLabelPadding(9.0);
    graph->setVerticalTickLabelPadding(9.0);
    EXPECT_EQ(graph->horizontalTickLabelPadding(), 0.0);
    EXPECT_EQ(graph->verticalTickLabelPadding(), 0.0);
}

TEST_F(TOLVGraphTest, OnlyTheLogarithmicClassItselfCountsAsLogarithmic)
{
    class Subclass final : public TOLVLogarithmicAxis {
    public:
        using TOLVLogarithmicAxis::TOLVLogarithmicAxis;
        std::shared_ptr<TOLVAxis> copy() const override { return std::make_shared<Subclass>(); }
    };
    EXPECT_FALSE(graph->XIsLog());
    graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
    EXPECT_TRUE(graph->XIsLog());
    EXPECT_FALSE(graph->YIsLog());
    graph->setVerticalAxis(std::make_shared<TOLVLogarithmicAxis>());
    EXPECT_TRUE(graph->YIsLog());
    graph->setHorizontalAxis(std::make_shared<Subclass>());
    EXPECT_FALSE(graph->XIsLog());
    graph->setVerticalAxis(nullptr);
    EXPECT_FALSE(graph->YIsLog());
}

// Copying.

TEST_F(TOLVGraphTest, ACopySharesSeriesStylesAndStrategyOnly)
{
    graph->addGraphData(seriesOf({1.0F}, {2.0F}));
    graph->setTitle("title");
    graph->setMargin({1.0, 2.0, 3.0, 4.0});
    graph->setPadding({5.0, 6.0, 7.0, 8.0});
    graph->setCanZoomX(false);
    graph->setCanZoomY(false);
    graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
    graph->verticalAxis()->setLabel("volt");
    graph->zoomXToFixedMin(1.0F, 2.0F);
    graph->reloadData();
    graph->attachUndoManager(std::make_shared<UndoManager>());
    const auto copy = graph->copy();
    EXPECT_EQ(copy->graphData(), graph->graphData());
    EXPECT_EQ(copy->majorLineStyle(), graph->majorLineStyle());
    EXPECT_EQ(copy->minorLineStyle(), graph->minorLineStyle());
    EXPECT_EQ(copy->drawingStrategy(), graph->drawingStrategy());
    EXPECT_EQ(copy->title(), "title");
    EXPECT_EQ(copy->margin(), graph->margin());
    EXPECT_EQ(copy->padding(), graph->padding());
    EXPECT_FALSE(copy->canZoomX());
    EXPECT_FALSE(copy->canZoomY());
    EXPECT_TRUE(copy->needsReloadData());
    EXPECT_FALSE(copy->undoManager());
    EXPECT_NE(copy->extents(), graph->extents());
    EXPECT_EQ(toString(*copy->extents()), toString(*graph->extents()));
    EXPECT_EQ(copy->extents()->graph(), copy);
    EXPECT_EQ(graph->extents()->graph(), graph);
    EXPECT_TRUE(copy->XIsLog());
    EXPECT_EQ(copy->verticalAxis()->label(), "volt");
    EXPECT_TRUE(copy->verticalAxis()->isVertical());
    for (const auto& axis : {copy->horizontalAxis(), copy->verticalAxis()})
        EXPECT_EQ(axis->graph(), copy);
    for (const auto& axis : {graph->horizontalAxis(), graph->verticalAxis()})
        EXPECT_EQ(axis->graph(), graph);
}

TEST_F(TOLVGraphTest, ChangesOfACopyLeaveTheOriginalAlone)
{
    graph->zoomXToFixedMin(1.0F, 2.0F);
    const auto copy = graph->copy();
    copy->extents()->x()->setMin(-5.0);
    copy->addGraphData(seriesOf({1.0F}, {2.0F}));
    copy->horizontalAxis()->setLabel("changed");
    EXPECT_EQ(toString(*graph->extents()->x()), "[1, 2]");
    EXPECT_TRUE(graph->graphData().empty());
    EXPECT_FALSE(graph->horizontalAxis()->label());
}

TEST_F(TOLVGraphTest, ACopyHasTheAttributesAndTheFontHeightsOfTheDefaults)
{
    graph->setLabelAttributes(makeTextAttributes(Font{"Helvetica", 30.0}));
    graph->setTickLabelAttributes(makeTextAttributes(Font{"Helvetica", 7.0}));
    graph->setTitleAttributes(makeTextAttributes(Font{"Helvetica", 8.0}));
    const auto copy = graph->copy();
    EXPECT_EQ(*copy->labelAttributes(), *graph->labelAttributes());
    EXPECT_EQ(*copy->tickLabelAttributes(), *graph->tickLabelAttributes());
    EXPECT_EQ(*copy->titleAttributes(), *graph->titleAttributes());
    EXPECT_EQ(copy->labelFontHeight(), 14.0);
    EXPECT_EQ(copy->tickLabelFontHeight(), 12.0);
    copy->setLabelAttributes(copy->labelAttributes());
    EXPECT_EQ(copy->labelFontHeight(), 30.0);
}

TEST_F(TOLVGraphTest, AnIncompleteGraphCanBeCopied)
{
    graph->setHorizontalAxis(nullptr);
    graph->setVerticalAxis(nullptr);
    graph->setExtents(nullptr);
    graph->setDrawingStrategy(nullptr);
    const auto copy = graph->copy();
    EXPECT_FALSE(copy->horizontalAxis());
    EXPECT_FALSE(copy->verticalAxis());
    EXPECT_FALSE(copy->extents());
    EXPECT_FALSE(copy->drawingStrategy());
}

// Archiving.

TEST_F(TOLVGraphTest, ArchivesFourObjectsInTheirOrder)
{
    const auto archive = KeyedArchiver::archivedObject(*graph);
    EXPECT_EQ(archive->className, "TOLVGraph");
    Names keys;
    for (const auto& [key, value] : archive->values)
        keys.push_back(key);
    EXPECT_EQ(keys, (Names{"horizontalAxis", "verticalAxis", "extents", "markers"}));
}

TEST_F(TOLVGraphTest, AnArchiveRestoresAxesExtentsAndMarkers)
{
    graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
    graph->horizontalAxis()->setDrawsMinorLines(false);
    graph->verticalAxis()->setDrawsMajorLines(false);
    graph->zoomXToFixedMin(0.5F, 2000.0F);
    graph->zoomYToFixedMin(-0.1, 0.3);
    graph->placeHorizontalAxisMarkerWithValue(7.25);
    graph->placeHorizontalAxisMarkerWithValue(-3.0)->setAxisIndex(1);
    graph->setTitle("not archived");
    graph->setDrawingStrategy(std::make_shared<ArchivedStrategy>());
    const auto back = unarchived(KeyedArchiver::archivedObject(*graph));
    ASSERT_TRUE(back);
    EXPECT_EQ(toString(*back->extents()), toString(*graph->extents()));
    EXPECT_EQ(back->extents()->graph(), back);
    EXPECT_TRUE(back->XIsLog());
    EXPECT_FALSE(back->horizontalAxis()->drawsMinorLines());
    EXPECT_TRUE(back->horizontalAxis()->drawsMajorLines());
    EXPECT_FALSE(back->verticalAxis()->drawsMajorLines());
    EXPECT_EQ(back->horizontalAxis()->graph(), back);
    EXPECT_TRUE(back->verticalAxis()->isVertical());
    ASSERT_EQ(back->countOfMarkers(), 2U);
    EXPECT_EQ(back->markers()[0]->value(), 7.25);
    EXPECT_EQ(back->markers()[0]->axisIndex(), 0);
    EXPECT_EQ(back->markers()[1]->value(), -3.0);
    EXPECT_EQ(back->markers()[1]->axisIndex(), 1);
    EXPECT_FALSE(back->title());
    EXPECT_TRUE(std::dynamic_pointer_cast<CurveGraphDrawing>(back->drawingStrategy()));
    back->placeHorizontalAxisMarkerWithValue(1.0);
    EXPECT_EQ(back->countOfMarkers(), 3U);
}

TEST_F(TOLVGraphTest, AnArchiveWithExtentsOnlyRestoresThemOnDefaultAxes)
{
    graph->zoomXToFixedMin(1.0F, 2.0F);
    const auto full = KeyedArchiver::archivedObject(*graph);
    const auto archive = std::make_shared<ArchiveObject>();
    archive->className = "TOLVGraph";
    archive->values = {{"extents", *full->find("extents")}};
    const auto back = unarchived(archive);
    ASSERT_TRUE(back);
    EXPECT_EQ(toString(*back->extents()->x()), "[1, 2]");
    EXPECT_EQ(back->extents()->graph(), back);
    for (const auto& axis : {back->horizontalAxis(), back->verticalAxis()}) {
        EXPECT_TRUE(std::dynamic_pointer_cast<TOLVLinearAxis>(axis));
        EXPECT_EQ(axis->graph(), back);
    }
    EXPECT_TRUE(back->markers().empty());
}

TEST_F(TOLVGraphTest, AnEmptyArchiveIsANewGraph)
{
    const auto archive = std::make_shared<ArchiveObject>();
    archive->className = "TOLVGraph";
    const auto back = unarchived(archive);
    ASSERT_TRUE(back);
    EXPECT_EQ(toString(*back->extents()), "x [0, 0] y [0, 0] z [0, 0]");
    EXPECT_TRUE(back->needsReloadData());
}

TEST_F(TOLVGraphTest, AStrategyThatAHostStoredIsRestored)
{
    const auto archive = KeyedArchiver::archivedObject(*graph);
    archive->values.emplace_back("drawingStrategy", KeyedArchiver::archivedObject(ArchivedStrategy()));
    const auto back = unarchived(archive);
    ASSERT_TRUE(back);
    EXPECT_TRUE(std::dynamic_pointer_cast<ArchivedStrategy>(back->drawingStrategy()));
}

TEST_F(TOLVGraphTest, AnArchivedObjectOfTheWrongClassIsAnError)
{
    const ArchiveValue marker = KeyedArchiver::archivedObject(*TOLVMarker::markerWithValue(1.0));
    for (const char* key : {"drawingStrategy", "horizontalAxis", "verticalAxis", "extents", "markers"}) {
        const auto archive = std::make_shared<ArchiveObject>();
        archive->className = "TOLVGraph";
        archive->values = {{key, marker}};
        EXPECT_THROW((void)unarchived(archive), ArchiveError) << key;
        archive->values = {{key, std::string("text")}};
        EXPECT_THROW((void)unarchived(archive), ArchiveError) << key;
    }
}

TEST_F(TOLVGraphTest, AnIncompleteGraphCanBeArchived)
{
    graph->setHorizontalAxis(nullptr);
    graph->setExtents(nullptr);
    const auto back = unarchived(KeyedArchiver::archivedObject(*graph));
    ASSERT_TRUE(back);
    EXPECT_TRUE(back->horizontalAxis());
    EXPECT_TRUE(back->extents());
}

// Announcements.

TEST_F(TOLVGraphTest, PropertiesThatAffectDisplayAndReloading)
{
    EXPECT_EQ(TOLVGraph::keyPathsOfPropertiesAffectingDisplay(), (Names{"canDraw"}));
    EXPECT_TRUE(TOLVGraph::keyPathsOfPropertiesAffectingReloadData().empty());
    EXPECT_EQ(graph->keysAffectingValueOfKey("labelFontHeight"), (Names{"labelAttributes"}));
    EXPECT_EQ(graph->keysAffectingValueOfKey("tickLabelFontHeight"), (Names{"tickLabelAttributes"}));
}

TEST_F(TOLVGraphTest, EveryChangeOfTheExtentsAnnouncesCanDraw)
{
    const Rect rect(0.0, 0.0, 400.0, 300.0);
    Announcements canDraw(*graph, "canDraw");
    graph->setExtents(std::make_shared<TOLVGraphExtents>());
    EXPECT_EQ(canDraw.taken(), 1);
    graph->extents()->setX(TOLVAxisExtents::extentsWithMin(0.0, 1.0));
    EXPECT_EQ(canDraw.taken(), 1);
    graph->extents()->x()->setMin(-1.0);
    EXPECT_EQ(canDraw.taken(), 1);
    graph->extents()->y()->setMax(1.0);
    EXPECT_EQ(canDraw.taken(), 1);
    graph->zoomInXInRect(rect);
    EXPECT_EQ(canDraw.taken(), 1);
    graph->zoomYToFixedMin(0.0, 1.0);
    EXPECT_EQ(canDraw.taken(), 1);
    graph->offsetDisplayByX(1.0F, 1.0F, rect);
    EXPECT_EQ(canDraw.taken(), 2);
    graph->zoomToFitXInRect(rect);
    EXPECT_EQ(canDraw.taken(), 2);
}

TEST_F(TOLVGraphTest, ExtentsThatWereReplacedAreNoLongerListenedTo)
{
    const auto former = graph->extents();
    graph->setExtents(std::make_shared<TOLVGraphExtents>());
    Announcements canDraw(*graph, "canDraw");
    former->x()->setMin(5.0);
    former->setY(nullptr);
    EXPECT_EQ(canDraw.taken(), 0);
    graph->setExtents(nullptr);
    EXPECT_EQ(canDraw.taken(), 1);
}

TEST_F(TOLVGraphTest, AddingAndClearingSeriesIsSilent)
{
    Announcements canDraw(*graph, "canDraw");
    Announcements graphData(*graph, "graphData");
    graph->addGraphData(seriesOf({1.0F}, {2.0F}));
    graph->clearGraphData();
    EXPECT_EQ(canDraw.taken(), 0);
    EXPECT_EQ(graphData.taken(), 0);
}

TEST_F(TOLVGraphTest, PropertiesAnnounceThemselves)
{
    struct Case {
        const char* key;
        std::function<void()> change;
    };
    const Case cases[] = {
        {"canZoomX", [&] { graph->setCanZoomX(true); }},
        {"canZoomY", [&] { graph->setCanZoomY(true); }},
        {"needsReloadData", [&] { graph->reloadData(); }},
        {"title", [&] { graph->setTitle("title"); }},
        {"horizontalAxis", [&] { graph->setHorizontalAxis(graph->horizontalAxis()); }},
        {"verticalAxis", [&] { graph->setVerticalAxis(graph->verticalAxis()); }},
        {"majorLineStyle", [&] { graph->setMajorLineStyle(nullptr); }},
        {"minorLineStyle", [&] { graph->setMinorLineStyle(nullptr); }},
        {"titleAttributes", [&] { graph->setTitleAttributes(nullptr); }},
        {"labelAttributes", [&] { graph->setLabelAttributes(nullptr); }},
        {"tickLabelAttributes", [&] { graph->setTickLabelAttributes(nullptr); }},
        {"drawingStrategy", [&] { graph->setDrawingStrategy(nullptr); }},
        {"extents", [&] { graph->setExtents(nullptr); }},
        {"undoManager", [&] { graph->attachUndoManager(nullptr); }},
        {"markers", [&] { graph->setMarkers({}); }},
        {"margin", [&] { graph->setMargin({}); }},
        {"padding", [&] { graph->setPadding({}); }},
    };
    for (const Case& one : cases) {
        Announcements announcements(*graph, one.key);
        one.change();
        EXPECT_EQ(announcements.taken(), 1) << one.key;
    }
}

TEST_F(TOLVGraphTest, FontHeightsAreAnnouncedWithTheirNewValue)
{
    double announced = 0.0;
    double announcedTick = 0.0;
    graph->addObserver("labelFontHeight", [&](const PropertyChange&) { announced = graph->labelFontHeight(); });
    graph->addObserver("tickLabelFontHeight", [&](const PropertyChange&) { announcedTick = graph->tickLabelFontHeight(); });
    graph->setLabelAttributes(makeTextAttributes(Font{"Helvetica", 30.0}));
    EXPECT_EQ(announced, 30.0);
    EXPECT_EQ(announcedTick, 0.0);
    graph->setTickLabelAttributes(makeTextAttributes(Font{"Helvetica", 40.0}));
    EXPECT_EQ(announcedTick, 40.0);
}

TEST_F(TOLVGraphTest, AnObserverMayReplaceTheExtentsThatAreBeingAnnounced)
{
    const auto limits = std::make_shared<TOLVGraphExtents>();
    limits->setX(TOLVAxisExtents::extentsWithMin(0.0, 10.0));
    bool limited = false;
    graph->addObserver("canDraw", [&](const PropertyChange&) {
        if (!std::exchange(limited, true))
            graph->setExtents(limits);
    });
    graph->extents()->x()->setMin(-5.0);
    EXPECT_EQ(toString(*graph->extents()->x()), "[0, 10]");
}

TEST_F(TOLVGraphTest, AnObserverMayBringTheGraphToItsEnd)
{
    const auto extents = graph->extents();
    graph->addObserver("canDraw", [&](const PropertyChange&) { graph.reset(); });
    extents->x()->setMin(1.0);
    EXPECT_FALSE(graph);
    EXPECT_FALSE(extents->graph());
}

// Drawability.

TEST_F(TOLVGraphTest, CanDrawNeedsSeriesAndRangesThatAreKnown)
{
    EXPECT_FALSE(graph->canDraw());
    graph->setExtents(graph->extentsFittingGraphData());
    graph->addGraphData(seriesOf({0.0F, 1.0F}, {2.0F, 3.0F}));
    // The extents still say that there is no data.
    EXPECT_FALSE(graph->canDraw());
    graph->setExtents(graph->extentsFittingGraphData());
    EXPECT_TRUE(graph->canDraw());
    graph->clearGraphData();
    EXPECT_FALSE(graph->canDraw());
}

TEST_F(TOLVGraphTest, EachSentinelEndForbidsDrawing)
{
    graph->addGraphData(seriesOf({0.0F, 1.0F}, {2.0F, 3.0F}));
    EXPECT_TRUE(graph->canDraw());
    const auto check = [&](auto set, double sentinel) {
        graph->setExtents(std::make_shared<TOLVGraphExtents>());
        set(sentinel);
        EXPECT_FALSE(graph->canDraw());
        set(-sentinel);
        EXPECT_TRUE(graph->canDraw());
        set(std::numeric_limits<double>::quiet_NaN());
        EXPECT_TRUE(graph->canDraw());
    };
    check([&](double value) { graph->extents()->x()->setMin(value); }, kUnknown);
    check([&](double value) { graph->extents()->x()->setMax(value); }, -kUnknown);
    check([&](double value) { graph->extents()->y()->setMin(value); }, kUnknown);
    check([&](double value) { graph->extents()->y()->setMax(value); }, -kUnknown);
    graph->setExtents(nullptr);
    EXPECT_FALSE(graph->canDraw());
}

} // namespace
} // namespace TOLVGraphing
