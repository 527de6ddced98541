// What a program around the widget can add to it.

#include "WidgetSetup.h"

#include <TOLVGraphing/drawing/TOLVGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/graphics/Path.h>

#include <QAction>
#include <QImage>
#include <QPixmap>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

namespace {

TEST(GraphWidgetHost, preparesEachDrawingOfTheGraphAndNothingElse)
{
    ShownWidget shown;
    ShownWidget::settle();
    int count = 0;
    shown.widget().setPreparation([&] {
        ++count;
        // Asks for redisplay, which the drawing that is prepared answers.
        shown.graph().setTitle("Prepared " + std::to_string(count));
    });
    shown.widget().view()->setNeedsDisplay();
    ShownWidget::settle();
    EXPECT_EQ(count, 1);
    QTest::mouseMove(&shown.widget(), shown.at(5.0, 50.0));
    QTest::mouseMove(&shown.widget(), shown.at(6.0, 50.0));
    ShownWidget::settle();
    EXPECT_EQ(count, 1);
    shown.graph().zoomXToFixedMin(2.0F, 4.0F);
    ShownWidget::settle();
    EXPECT_EQ(count, 2);
}

TEST(GraphWidgetHost, staysInOrderWhenAPreparationThrows)
{
    ShownWidget shown;
    ShownWidget::settle();
    const auto drawn = shown.widget().drawCount();
    shown.widget().setPreparation([] { throw std::runtime_error("no layout"); });
    shown.widget().view()->setNeedsDisplay();
    ShownWidget::settle();
    EXPECT_EQ(shown.widget().drawCount(), drawn);
    shown.widget().setPreparation({});
    shown.widget().view()->setNeedsDisplay();
    ShownWidget::settle();
    EXPECT_EQ(shown.widget().drawCount(), drawn + 1);
}

/// Draws half of something and gives up, as often as it is asked.
struct FailingDrawing final : TOLVGraphDrawing {
    void drawGraph(const std::shared_ptr<TOLVGraph>&, const Rect& inRect) override
    {
        ++count;
        Path::pathWithRect(inRect).fill();
        throw std::runtime_error("no series");
    }

    int count = 0;
};

TEST(GraphWidgetHost, ShowsNoHalfOfAPicture)
{
    ShownWidget shown;
    ShownWidget::settle();
    const auto drawing = std::make_shared<FailingDrawing>();
    shown.graph().setDrawingStrategy(drawing);
    const QImage first = shown.widget().grab().toImage();
    EXPECT_EQ(drawing->count, 1);
    // What went wrong is said again, and it is tried again, however often the window is uncovered.
    EXPECT_EQ(shown.widget().grab().toImage(), first);
    EXPECT_EQ(drawing->count, 2);
}

TEST(GraphWidgetHost, fitsAsTheHostWantsIt)
{
    ShownWidget shown;
    int count = 0;
    shown.widget().setFitting([&] { ++count; });
    shown.graph().zoomXToFixedMin(2.0F, 4.0F);
    shown.widget().action(GraphCommand::Fit)->trigger();
    QTest::keyClick(&shown.widget(), Qt::Key_Home);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(shown.graph().extents()->x()->min(), 2.0);
    // One axis alone is the interaction's.
    QTest::keyClick(&shown.widget(), Qt::Key_Home, Qt::ShiftModifier);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(shown.graph().extents()->y()->min(), 0.0);
    shown.widget().setFitting({});
    shown.widget().action(GraphCommand::Fit)->trigger();
    EXPECT_EQ(shown.graph().extents()->x()->min(), 0.0);
}

TEST(GraphWidgetHost, selectsMarkersByTheirPlace)
{
    ShownWidget shown;
    for (const double value : {2.0, 4.0, 6.0})
        shown.graph().placeHorizontalAxisMarkerWithValue(value);
    QSignalSpy spy(&shown.widget(), &GraphWidget::selectedMarkerChanged);
    for (const std::size_t index : {2U, 0U, 1U}) {
        shown.widget().selectMarker(index);
        EXPECT_EQ(shown.widget().selectedMarker(), shown.graph().markers()[index]);
    }
    EXPECT_EQ(spy.count(), 3);
    shown.widget().selectMarker(3);
    EXPECT_EQ(shown.widget().selectedMarker(), shown.graph().markers()[1]);
    EXPECT_EQ(spy.count(), 3);
}

TEST(GraphWidgetHost, selectsNoMarkerThatIsGone)
{
    ShownWidget shown;
    shown.graph().placeHorizontalAxisMarkerWithValue(2.0);
    shown.widget().selectMarker(0);
    shown.widget().carryOut(GraphCommand::Undo);
    EXPECT_EQ(shown.widget().selectedMarker(), nullptr);
    EXPECT_FALSE(shown.widget().action(GraphCommand::DeleteMarker)->isEnabled());
}

TEST(GraphWidgetHost, selectsNoMarkerOfAFormerGraph)
{
    ShownWidget shown;
    shown.graph().placeHorizontalAxisMarkerWithValue(2.0);
    shown.widget().selectMarker(0);
    shown.widget().setGraph(TOLVGraph::graph());
    EXPECT_EQ(shown.widget().selectedMarker(), nullptr);
}

TEST(GraphWidgetHost, keepsAMarkerThatIsDraggedSelected)
{
    ShownWidget shown;
    shown.graph().placeHorizontalAxisMarkerWithValue(2.0);
    shown.drag(shown.at(2.0, 50.0), shown.at(6.0, 50.0), Qt::LeftButton);
    ASSERT_EQ(shown.graph().countOfMarkers(), 1U);
    EXPECT_NEAR(shown.graph().markers()[0]->value(), 6.0, 0.05);
    EXPECT_EQ(shown.widget().selectedMarker(), shown.graph().markers()[0]);
}

} // namespace
