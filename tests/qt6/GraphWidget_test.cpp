#include "WidgetSetup.h"

#include <TOLVGraphing/axes/AdaptiveNumberFormatter.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <hosts/qt6/GraphAccessible.h>
#include <hosts/qt6/QtServices.h>

#include <QAction>
#include <QApplication>
#include <QImage>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

namespace {

/// Ranges as the graph has them now.
struct Ranges {
    double xMin;
    double xMax;
    double yMin;
    double yMax;

    friend bool operator==(const Ranges&, const Ranges&) = default;
};

Ranges rangesOf(const TOLVGraph& graph)
{
    const auto& extents = graph.extents();
    return {extents->x()->min(), extents->x()->max(), extents->y()->min(), extents->y()->max()};
}

void expectNear(const Ranges& ranges, const Ranges& expected, double xTolerance, double yTolerance)
{
    EXPECT_NEAR(ranges.xMin, expected.xMin, xTolerance);
    EXPECT_NEAR(ranges.xMax, expected.xMax, xTolerance);
    EXPECT_NEAR(ranges.yMin, expected.yMin, yTolerance);
    EXPECT_NEAR(ranges.yMax, expected.yMax, yTolerance);
}

constexpr Ranges kAll{0.0, 10.0, 0.0, 100.0};

int darkPixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += qGray(image.pixel(x, y)) < 128 ? 1 : 0;
    }
    return count;
}

TEST(GraphWidget, NewOneIsWhiteAndCannotBeCopied)
{
    GraphWidget widget;
    widget.resize(200, 100);
    const QImage image = widget.grab().toImage();
    EXPECT_EQ(image.pixelColor(100, 50), QColor(Qt::white));
    EXPECT_EQ(darkPixels(image), 0);
    EXPECT_FALSE(widget.action(GraphCommand::Copy)->isEnabled());
    EXPECT_FALSE(widget.action(GraphCommand::Undo)->isEnabled());
}

TEST(GraphWidget, SeriesAddedShowWholeInColoursOfTheirOwn)
{
    ShownWidget shown;
    EXPECT_EQ(rangesOf(shown.graph()), kAll);
    shown.widget().addSeries(std::vector<double>{-5.0, 5.0}, std::vector<double>{1.0, 200.0});
    EXPECT_EQ(rangesOf(shown.graph()), (Ranges{-5.0, 10.0, 0.0, 200.0}));
    ASSERT_EQ(shown.graph().graphData().size(), 2U);
    EXPECT_EQ(shown.graph().graphData()[0]->name(), "level");
    EXPECT_EQ(shown.graph().graphData()[1]->name(), std::nullopt);
    EXPECT_NE(shown.graph().graphData()[0]->color(), shown.graph().graphData()[1]->color());
    EXPECT_TRUE(shown.widget().action(GraphCommand::Copy)->isEnabled());
}

TEST(GraphWidget, SeriesOfDifferentLengthsAreCutToTheShorterOne)
{
    GraphWidget widget;
    widget.addSeries({1.0F, 2.0F, 3.0F}, {5.0F, 6.0F});
    widget.addSeries({1.0F}, {5.0F, 6.0F});
    const auto series = widget.graph()->graphData();
    ASSERT_EQ(series.size(), 2U);
    EXPECT_EQ(series[0]->X()->length(), 2U);
    EXPECT_EQ(series[0]->Y()->length(), 2U);
    EXPECT_EQ(series[1]->X()->length(), 1U);
    EXPECT_EQ(series[1]->Y()->length(), 1U);
}

TEST(GraphWidget, ACurveOfAFewSamplesReachesTheLastOne)
{
    GraphWidget widget;
    widget.resize(400, 300);
    widget.addSeries({0.0F, 1.0F, 2.0F}, {0.0F, 2.0F, 1.0F});
    // Three quarters along x and up: halfway between the second sample and the last one. The line is steep enough to be met within a few pixels.
    const QImage image = widget.grab().toImage();
    const Rect data = widget.graph()->dataRectInRect(widget.view()->bounds());
    const int x = static_cast<int>(data.x() + 0.75 * data.width());
    int coloured = 0;
    for (int y = 0; y < image.height(); ++y)
        coloured += image.pixelColor(x, y).hsvSaturation() > 60 ? 1 : 0;
    EXPECT_GT(coloured, 0);
}

TEST(GraphWidget, WheelZoomsXAboutThePointerWithShiftYAndWithControlBoth)
{
    struct Case {
        Qt::KeyboardModifiers modifiers;
        bool x;
        bool y;
    };
    for (const Case& test : {Case{Qt::NoModifier, true, false}, Case{Qt::ShiftModifier, false, true}, Case{Qt::ControlModifier, true, true}}) {
        ShownWidget shown;
        const QPoint place = shown.at(2.0, 30.0);
        shown.wheel(place, 1, test.modifiers);
        const Ranges zoomed = rangesOf(shown.graph());
        EXPECT_EQ(zoomed.xMax - zoomed.xMin < 10.0, test.x);
        EXPECT_EQ(zoomed.yMax - zoomed.yMin < 100.0, test.y);
        // What was under the pointer still is.
        const QPoint now = shown.at(2.0, 30.0);
        EXPECT_LE(std::abs(now.x() - place.x()), 1);
        EXPECT_LE(std::abs(now.y() - place.y()), 1);
        shown.wheel(place, -1, test.modifiers);
        const Ranges out = rangesOf(shown.graph());
        EXPECT_EQ(out.xMax - out.xMin > zoomed.xMax - zoomed.xMin, test.x);
        EXPECT_EQ(out.yMax - out.yMin > zoomed.yMax - zoomed.yMin, test.y);
    }
}

TEST(GraphWidget, LeftButtonDragsTheGraphWithThePointer)
{
    ShownWidget shown;
    const QPoint from = shown.at(5.0, 50.0);
    const QPoint to = shown.at(3.0, 70.0);
    shown.drag(from, to, Qt::LeftButton);
    expectNear(rangesOf(shown.graph()), {2.0, 12.0, -20.0, 80.0}, 0.05, 0.5);
}

TEST(GraphWidget, DoubleClickPlacesAMarkerThatCanBeDraggedAndDeletedAndAllOfItUndone)
{
    ShownWidget shown;
    QSignalSpy edits(&shown.widget(), &GraphWidget::markersChanged);
    QTest::mouseDClick(&shown.widget(), Qt::LeftButton, Qt::NoModifier, shown.at(4.0, 50.0));
    ASSERT_EQ(shown.graph().countOfMarkers(), 1U);
    EXPECT_NEAR(shown.graph().markers()[0]->value(), 4.0, 0.03);
    EXPECT_EQ(edits.count(), 1);
    EXPECT_TRUE(shown.widget().action(GraphCommand::DeleteMarker)->isEnabled());

    shown.drag(shown.at(4.0, 50.0), shown.at(7.0, 50.0), Qt::LeftButton);
    EXPECT_NEAR(shown.graph().markers()[0]->value(), 7.0, 0.03);
    EXPECT_EQ(rangesOf(shown.graph()), kAll);

    QTest::keyClick(&shown.widget(), Qt::Key_Delete);
    EXPECT_EQ(shown.graph().countOfMarkers(), 0U);
    EXPECT_FALSE(shown.widget().action(GraphCommand::DeleteMarker)->isEnabled());

    QAction* undo = shown.widget().action(GraphCommand::Undo);
    undo->trigger();
    ASSERT_EQ(shown.graph().countOfMarkers(), 1U);
    EXPECT_NEAR(shown.graph().markers()[0]->value(), 7.0, 0.03);
    undo->trigger();
    ASSERT_EQ(shown.graph().countOfMarkers(), 1U);
    EXPECT_NEAR(shown.graph().markers()[0]->value(), 4.0, 0.03);
    undo->trigger();
    EXPECT_EQ(shown.graph().countOfMarkers(), 0U);
    EXPECT_FALSE(undo->isEnabled());
    shown.widget().action(GraphCommand::Redo)->trigger();
    EXPECT_EQ(shown.graph().countOfMarkers(), 1U);
}

TEST(GraphWidget, DoubleClickOnAnAxisFitsThatAxisOnly)
{
    ShownWidget shown;
    shown.graph().zoomXToFixedMin(2.0F, 3.0F);
    shown.graph().zoomYToFixedMin(20.0, 30.0);
    const Rect area = shown.graph().dataRectInRect(shown.widget().view()->bounds());
    const QPoint belowArea(static_cast<int>(area.x() + area.width() / 2.0), static_cast<int>(300.0 - area.y() / 2.0));
    QTest::mouseDClick(&shown.widget(), Qt::LeftButton, Qt::NoModifier, belowArea);
    EXPECT_EQ(rangesOf(shown.graph()), (Ranges{0.0, 10.0, 20.0, 30.0}));
    QTest::mouseDClick(&shown.widget(), Qt::LeftButton, Qt::NoModifier, {static_cast<int>(area.x() / 2.0), 150});
    EXPECT_EQ(rangesOf(shown.graph()), kAll);
}

TEST(GraphWidget, RightButtonZoomsToABoxAndOpensAMenuWhereItIsNotMoved)
{
    ShownWidget shown;
    shown.drag(shown.at(2.0, 80.0), shown.at(6.0, 20.0), Qt::RightButton);
    expectNear(rangesOf(shown.graph()), {2.0, 6.0, 20.0, 80.0}, 0.05, 0.5);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);

    QTest::mouseClick(&shown.widget(), Qt::RightButton, Qt::NoModifier, shown.at(4.0, 50.0));
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(menu->actions().contains(shown.widget().action(GraphCommand::Copy)));
    menu->close();
    expectNear(rangesOf(shown.graph()), {2.0, 6.0, 20.0, 80.0}, 0.05, 0.5);
}

TEST(GraphWidget, KeysPanZoomFitAndPlaceMarkers)
{
    ShownWidget shown;
    QWidget* widget = &shown.widget();
    QTest::keyClick(widget, Qt::Key_Right);
    expectNear(rangesOf(shown.graph()), {1.0, 11.0, 0.0, 100.0}, 0.001, 0.001);
    QTest::keyClick(widget, Qt::Key_Up);
    expectNear(rangesOf(shown.graph()), {1.0, 11.0, 10.0, 110.0}, 0.001, 0.01);
    QTest::keyClick(widget, Qt::Key_Left);
    QTest::keyClick(widget, Qt::Key_Down);
    expectNear(rangesOf(shown.graph()), kAll, 0.001, 0.01);
    QTest::keyClick(widget, Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_LT(rangesOf(shown.graph()).xMax, 9.9);
    EXPECT_LT(rangesOf(shown.graph()).yMax, 99.0);
    QTest::keyClick(widget, Qt::Key_Home);
    EXPECT_EQ(rangesOf(shown.graph()), kAll);
    QTest::keyClick(widget, Qt::Key_Plus);
    EXPECT_LT(rangesOf(shown.graph()).xMax, 9.9);
    QTest::keyClick(widget, Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(rangesOf(shown.graph()), kAll);
    QTest::keyClick(widget, Qt::Key_M);
    ASSERT_EQ(shown.graph().countOfMarkers(), 1U);
    QTest::keyClick(widget, Qt::Key_Backspace);
    EXPECT_EQ(shown.graph().countOfMarkers(), 0U);
}

TEST(GraphWidget, StandardShortcutsUndoAndRedo)
{
    ShownWidget shown;
    QTest::keyClick(&shown.widget(), Qt::Key_M);
    ASSERT_EQ(shown.graph().countOfMarkers(), 1U);
    QTest::keyClick(&shown.widget(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown.graph().countOfMarkers(), 0U);
    QTest::keyClick(&shown.widget(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(shown.graph().countOfMarkers(), 1U);
}

TEST(GraphWidget, ActionsFollowTheGraphBeforeItIsDrawn)
{
    ShownWidget shown;
    shown.widget().view()->setNeedsDisplay();
    shown.graph().placeHorizontalAxisMarkerWithValue(2.0);
    EXPECT_TRUE(shown.widget().action(GraphCommand::NextMarker)->isEnabled());
    EXPECT_TRUE(shown.widget().action(GraphCommand::Undo)->isEnabled());
}

TEST(GraphWidget, MarkersAreSelectedInTurn)
{
    ShownWidget shown;
    shown.graph().placeHorizontalAxisMarkerWithValue(2.0);
    shown.graph().placeHorizontalAxisMarkerWithValue(8.0);
    QTest::keyClick(&shown.widget(), Qt::Key_N);
    EXPECT_EQ(shown.interaction().selectedMarker(), shown.graph().markers()[0]);
    QTest::keyClick(&shown.widget(), Qt::Key_N);
    EXPECT_EQ(shown.interaction().selectedMarker(), shown.graph().markers()[1]);
    QTest::keyClick(&shown.widget(), Qt::Key_N, Qt::ShiftModifier);
    EXPECT_EQ(shown.interaction().selectedMarker(), shown.graph().markers()[0]);
}

TEST(GraphWidget, IsDrawnAnewForAnnouncementsOnlyAndOnceForMany)
{
    ShownWidget shown;
    const std::uint64_t before = shown.widget().drawCount();
    for (int x = 60; x < 360; x += 30)
        QTest::mouseMove(&shown.widget(), {x, 150});
    shown.widget().repaint();
    EXPECT_EQ(shown.widget().drawCount(), before);
    for (int i = 0; i < 5; ++i)
        shown.graph().extents()->x()->setMin(static_cast<double>(i));
    ShownWidget::settle();
    waitUntil([&] { return shown.widget().drawCount() > before; });
    EXPECT_EQ(shown.widget().drawCount(), before + 1);
    // The margin is set while drawing and asks for nothing.
    shown.graph().setMargin({20.0, 40.0, 20.0, 20.0});
    ShownWidget::settle();
    EXPECT_EQ(shown.widget().drawCount(), before + 1);
}

TEST(GraphWidget, ChangesOfTitleAxesStrategyAndMarkersAreDrawn)
{
    ShownWidget shown;
    const auto isDrawnAfter = [&](const std::function<void()>& change) {
        const std::uint64_t before = shown.widget().drawCount();
        change();
        return waitUntil([&] { return shown.widget().drawCount() == before + 1; }, std::chrono::seconds(5));
    };
    EXPECT_TRUE(isDrawnAfter([&] { shown.graph().setTitle("Run 7"); }));
    EXPECT_TRUE(isDrawnAfter([&] { shown.graph().setHorizontalAxis(shown.graph().horizontalAxis()); }));
    EXPECT_TRUE(isDrawnAfter([&] { shown.graph().setDrawingStrategy(nullptr); }));
    EXPECT_TRUE(isDrawnAfter([&] { shown.graph().placeHorizontalAxisMarkerWithValue(3.0); }));
    EXPECT_TRUE(isDrawnAfter([&] { shown.widget().resize(420, 310); }));
}

TEST(GraphWidget, ReadOutTellsTheNearestSampleUnderThePointer)
{
    ShownWidget shown;
    shown.graph().horizontalAxis()->setLabel("Time");
    QSignalSpy readouts(&shown.widget(), &GraphWidget::readoutChanged);
    QTest::mouseMove(&shown.widget(), shown.at(3.0, 50.0));
    ASSERT_TRUE(waitUntil([&] { return readouts.count() > 0; }));
    EXPECT_TRUE(shown.widget().readoutText().startsWith("Time ")) << shown.widget().readoutText().toStdString();
    EXPECT_TRUE(shown.widget().readoutText().endsWith(", level 30")) << shown.widget().readoutText().toStdString();
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&shown.widget(), &leave);
    EXPECT_EQ(shown.widget().readoutText(), "");
    EXPECT_TRUE(waitUntil([&] { return readouts.last().first().toString().isEmpty(); }));
}

TEST(GraphWidget, ReadOutThatIsToldHasTheDigitsOfTheOneThatIsShown)
{
    ShownWidget shown;
    const auto& axis = shown.graph().horizontalAxis();
    axis->setTickLabelFormatter(std::make_shared<AdaptiveNumberFormatter>(axis));
    QString told;
    QObject::connect(&shown.widget(), &GraphWidget::readoutChanged, [&](const QString& text) { told = text; });
    QTest::mouseMove(&shown.widget(), shown.at(3.0, 50.0));
    for (int notch = 0; notch < 60; ++notch)
        shown.wheel(shown.at(3.0, 50.0), 1);
    EXPECT_TRUE(waitUntil([&] { return !told.isEmpty() && told == shown.widget().readoutText(); })) << told.toStdString() << " / " << shown.widget().readoutText().toStdString();
}

TEST(GraphWidget, ReadOutShowsBesideThePointerAndCanBeSwitchedOff)
{
    ShownWidget shown;
    const QImage without = shown.widget().grab().toImage();
    QTest::mouseMove(&shown.widget(), shown.at(3.0, 50.0));
    ASSERT_TRUE(waitUntil([&] { return !shown.widget().readoutText().isEmpty(); }));
    EXPECT_NE(shown.widget().grab().toImage(), without);
    shown.widget().setShowsReadout(false);
    EXPECT_EQ(shown.widget().grab().toImage(), without);
}

TEST(GraphWidget, KeyboardFocusShowsAsAFrame)
{
    ShownWidget shown;
    ASSERT_TRUE(waitUntil([&] { return shown.widget().hasFocus(); }));
    const QImage focused = shown.widget().grab().toImage();
    EXPECT_EQ(focused.pixelColor(1, 150), shown.widget().palette().color(QPalette::Highlight));
    shown.widget().clearFocus();
    const QImage plain = shown.widget().grab().toImage();
    EXPECT_EQ(plain.pixelColor(1, 150), QColor(Qt::white));
}

TEST(GraphWidget, IsAChartForAssistivePrograms)
{
    ShownWidget shown;
    shown.graph().setTitle("Run 7");
    shown.graph().horizontalAxis()->setLabel("Time (s)");
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&shown.widget());
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->role(), QAccessible::Chart);
    EXPECT_EQ(interface->text(QAccessible::Name), "Run 7");
    EXPECT_EQ(interface->text(QAccessible::Description), "Time (s) from 0 to 10. y from 0 to 100. 1 series: level.");
    EXPECT_EQ(interface->text(QAccessible::Value), "");
    QTest::mouseMove(&shown.widget(), shown.at(3.0, 50.0));
    ASSERT_TRUE(waitUntil([&] { return !shown.widget().readoutText().isEmpty(); }));
    EXPECT_EQ(interface->text(QAccessible::Value), shown.widget().readoutText());
    shown.widget().setAccessibleName("The host's name");
    EXPECT_EQ(interface->text(QAccessible::Name), "The host's name");
}

TEST(GraphWidget, ShowsTheViewOfAHostAndLetsItGo)
{
    installQtServices();
    const auto view = TOLVGraphView::initWithFrame({0.0, 0.0, 10.0, 10.0});
    const auto graph = view->graph();
    {
        GraphWidget widget(view);
        widget.resize(300, 200);
        EXPECT_EQ(widget.graph(), graph);
        widget.grab();
        EXPECT_EQ(view->bounds().width(), 300.0);
        EXPECT_FALSE(view->needsDisplay());
        ASSERT_NE(graph->undoManager(), nullptr);
    }
    // The widget is gone and nobody listens.
    graph->setTitle("later");
    view->setNeedsDisplay();
    EXPECT_TRUE(view->needsDisplay());
}

TEST(GraphWidget, AnotherGraphOrNoneIsShown)
{
    ShownWidget shown;
    const auto former = shown.widget().graph();
    const auto other = TOLVGraph::graph();
    shown.widget().setGraph(other);
    EXPECT_EQ(shown.widget().graph(), other);
    EXPECT_FALSE(shown.widget().action(GraphCommand::Copy)->isEnabled());
    former->setTitle("not listened to");
    shown.widget().setGraph(nullptr);
    shown.wheel({200, 150}, 1);
    QTest::keyClick(&shown.widget(), Qt::Key_M);
    shown.widget().addSeries(std::vector<float>{1.0F}, std::vector<float>{1.0F});
    EXPECT_EQ(shown.widget().grab().toImage().pixelColor(200, 150), QColor(Qt::white));
}

TEST(GraphWidget, AnySizeIsHarmless)
{
    ShownWidget shown;
    for (const QSize size : {QSize(1, 1), QSize(0, 0), QSize(3, 400), QSize(400, 3), QSize(3000, 20)}) {
        shown.widget().setMinimumSize(0, 0);
        shown.widget().resize(size);
        shown.widget().grab();
        shown.wheel({0, 0}, 1);
    }
}

} // namespace
