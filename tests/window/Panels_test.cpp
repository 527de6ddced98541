#include "WindowTest.h"

#include <TOLVGraphing/axes/TOLVBarAxis.h>
#include <TOLVGraphing/drawing/BarGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <apps/viewer/qt/ColumnFields.h>
#include <apps/viewer/qt/GraphPanel.h>
#include <apps/viewer/qt/RangeFields.h>
#include <apps/viewer/qt/SeriesPanel.h>
#include <hosts/qt6/GraphWidget.h>

#include <QAction>
#include <QCheckBox>
#include <QColor>
#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QTest>
#include <QTreeWidget>

namespace TOLVGraphing::app {

namespace {

class PanelsOfWindow : public WindowTest {
protected:
    PanelsOfWindow() { open({writeExample()}); }

    [[nodiscard]] GraphPanel& panel() { return *window.graphPanel(); }

    template <typename Value>
    static void choose(QComboBox* box, Value value)
    {
        box->setCurrentIndex(box->findData(static_cast<int>(value)));
    }

    /// As somebody writes it, with Enter.
    static void write(QLineEdit* edit, const QString& text)
    {
        edit->selectAll();
        edit->insert(text);
        emit edit->editingFinished();
    }

    void undo() { window.graphWidget()->carryOut(GraphCommand::Undo); }
    void redo() { window.graphWidget()->carryOut(GraphCommand::Redo); }
};

TEST_F(PanelsOfWindow, logarithmicAxesReplaceLinearOnes)
{
    choose(panel().yAxis(), AxisKind::Logarithmic);
    EXPECT_TRUE(graph().YIsLog());
    EXPECT_FALSE(graph().XIsLog());
    choose(panel().xAxis(), AxisKind::Logarithmic);
    EXPECT_TRUE(graph().XIsLog());
}

TEST_F(PanelsOfWindow, barsBringCategoriesAlong)
{
    choose(panel().drawing(), DrawingKind::Bar);
    EXPECT_EQ(panel().xAxis()->currentData().toInt(), static_cast<int>(AxisKind::Bar));
    ASSERT_TRUE(waitUntil([&] { return document().options().drawing == DrawingKind::Bar; }));
    EXPECT_TRUE(std::dynamic_pointer_cast<TOLVBarAxis>(graph().horizontalAxis()));
    EXPECT_TRUE(std::dynamic_pointer_cast<BarGraphDrawing>(graph().drawingStrategy()));
    EXPECT_FALSE(panel().xFormat()->isEnabled());
    // Bars stand on zero, whatever was visible before.
    EXPECT_EQ(graph().extents()->y()->min(), 0.0);
}

TEST_F(PanelsOfWindow, anAxisOfNumbersTakesBarsAway)
{
    choose(panel().drawing(), DrawingKind::Bar);
    ASSERT_TRUE(waitUntil([&] { return document().options().drawing == DrawingKind::Bar; }));
    choose(panel().xAxis(), AxisKind::Linear);
    ASSERT_TRUE(waitUntil([&] { return document().options().xAxis == AxisKind::Linear; }));
    EXPECT_EQ(document().options().drawing, DrawingKind::Curve);
    EXPECT_EQ(panel().drawing()->currentData().toInt(), static_cast<int>(DrawingKind::Curve));
}

TEST_F(PanelsOfWindow, changesAreUndoneAndRedone)
{
    EXPECT_FALSE(window.graphWidget()->action(GraphCommand::Undo)->isEnabled());
    choose(panel().yAxis(), AxisKind::Logarithmic);
    EXPECT_TRUE(window.graphWidget()->action(GraphCommand::Undo)->isEnabled());
    write(panel().title(), "Voltage");
    EXPECT_EQ(graph().title(), "Voltage");
    undo();
    EXPECT_EQ(graph().title(), std::nullopt);
    EXPECT_TRUE(graph().YIsLog());
    undo();
    EXPECT_FALSE(graph().YIsLog());
    EXPECT_EQ(panel().yAxis()->currentData().toInt(), static_cast<int>(AxisKind::Linear));
    redo();
    redo();
    EXPECT_TRUE(graph().YIsLog());
    EXPECT_EQ(graph().title(), "Voltage");
    EXPECT_FALSE(window.graphWidget()->action(GraphCommand::Redo)->isEnabled());
}

TEST_F(PanelsOfWindow, aChangeOfColumnsIsUndoneAfterAnotherReading)
{
    write(panel().columns()->y(), "b");
    ASSERT_TRUE(waitUntil([&] { return graph().graphData().size() == 1; }));
    EXPECT_EQ(graph().graphData()[0]->name(), "b");
    undo();
    ASSERT_TRUE(waitUntil([&] { return graph().graphData().size() == 2; }));
    redo();
    EXPECT_TRUE(waitUntil([&] { return graph().graphData().size() == 1; }));
}

TEST_F(PanelsOfWindow, columnsOfTheFileAreOffered)
{
    QComboBox* x = panel().columns()->x();
    EXPECT_GE(x->findData("t"), 0);
    EXPECT_GE(x->findData("b"), 0);
    x->setCurrentIndex(x->findData("b"));
    emit x->activated(x->currentIndex());
    ASSERT_TRUE(waitUntil([&] { return document().options().x == "b"; }));
    EXPECT_EQ(graph().horizontalAxis()->label(), "b");
    EXPECT_EQ(graph().minXValue(), 1.0F);
}

TEST_F(PanelsOfWindow, anUnknownColumnIsSaidAndTheFieldGoesBack)
{
    DialogAnswer answer(QMessageBox::Ok);
    write(panel().columns()->y(), "voltage");
    ASSERT_TRUE(waitUntil([&] { return answer.isGiven(); }));
    EXPECT_THAT(answer.reason(), testing::HasSubstr("voltage"));
    EXPECT_EQ(panel().columns()->y()->text(), "");
    EXPECT_EQ(graph().graphData().size(), 2U);
    EXPECT_FALSE(window.graphWidget()->action(GraphCommand::Undo)->isEnabled()) << "nothing has changed";
}

TEST_F(PanelsOfWindow, rawNumbersHaveAsManyChannelsAsTheFieldSays)
{
    QSpinBox* channels = panel().columns()->channels();
    EXPECT_FALSE(channels->isVisibleTo(&panel())) << "other files say themselves";
    const float numbers[] = {1.0F, 10.0F, 2.0F, 20.0F, 3.0F, 30.0F};
    open({WindowTest::write("raw.f32", std::string(reinterpret_cast<const char*>(numbers), sizeof numbers))});
    EXPECT_TRUE(channels->isVisibleTo(&panel()));
    EXPECT_EQ(graph().graphData().size(), 1U);
    channels->setValue(2);
    ASSERT_TRUE(waitUntil([&] { return graph().graphData().size() == 2; }));
    EXPECT_EQ(graph().graphData()[1]->Y()->length(), 3U);
    EXPECT_EQ(graph().maxYValue(), 30.0F);
    EXPECT_LT(graph().extents()->x()->max(), 5.0F) << "the ranges are those of the rows now";
    {
        DialogAnswer answer(QMessageBox::Ok);
        channels->setValue(4);
        ASSERT_TRUE(waitUntil([&] { return answer.isGiven(); }));
        EXPECT_THAT(answer.reason(), testing::HasSubstr("raw.f32"));
        EXPECT_EQ(channels->value(), 2);
    }
    // What failed is no step.
    undo();
    ASSERT_TRUE(waitUntil([&] { return graph().graphData().size() == 1; }));
    EXPECT_EQ(channels->value(), 1);
}

TEST_F(PanelsOfWindow, textsReplaceThoseOfTheData)
{
    EXPECT_EQ(panel().xLabel()->placeholderText(), "t");
    write(panel().xLabel(), "Time (s)");
    EXPECT_EQ(graph().horizontalAxis()->label(), "Time (s)");
    write(panel().xLabel(), "");
    EXPECT_EQ(graph().horizontalAxis()->label(), "t");
    EXPECT_TRUE(window.isWindowModified());
}

TEST_F(PanelsOfWindow, theLegendIsForPictures)
{
    window.graphWidget()->grab();
    const double height = graph().dataRectInRect(window.graphWidget()->view()->bounds()).height();
    panel().legend()->setChecked(true);
    EXPECT_TRUE(document().options().legend);
    window.graphWidget()->grab();
    EXPECT_EQ(graph().dataRectInRect(window.graphWidget()->view()->bounds()).height(), height);
}

TEST_F(PanelsOfWindow, rangesAreShownAndWritten)
{
    write(panel().xRange()->from(), "2");
    write(panel().xRange()->to(), "3.5");
    EXPECT_EQ(graph().extents()->x()->min(), 2.0);
    EXPECT_EQ(graph().extents()->x()->max(), 3.5);
    window.graphWidget()->carryOut(GraphCommand::Fit);
    EXPECT_EQ(graph().extents()->x()->min(), 1.0);
    EXPECT_EQ(panel().xRange()->from()->text(), "1");
}

TEST_F(PanelsOfWindow, rangesFollowTheGraph)
{
    document().graph()->zoomXToFixedMin(1.5F, 2.5F);
    document().graph()->zoomYToFixedMin(7.0, 9.0);
    document().graph()->zoomXToFixedMin(2.5F, 3.5F);
    EXPECT_TRUE(waitUntil([&] { return panel().xRange()->from()->text() == "2.5"; }));
    EXPECT_EQ(panel().xRange()->to()->text(), "3.5");
    EXPECT_EQ(panel().yRange()->from()->text(), "7");
    EXPECT_EQ(panel().yRange()->to()->text(), "9");
}

TEST_F(PanelsOfWindow, rangesAndMarkersOfDatesAreDates)
{
    open({WindowTest::write("log.csv", "time,v\n2026-03-01 10:00:00,1\n2026-03-01 10:00:30,2\n2026-03-01 10:01:00,3\n")});
    write(panel().xRange()->from(), "2026-03-01 10:00:15");
    write(panel().xRange()->to(), "2026-03-01 10:00:45");
    EXPECT_NEAR(graph().extents()->x()->min() * 86'400.0, 36'015.0, 0.01);
    EXPECT_NEAR(graph().extents()->x()->max() * 86'400.0, 36'045.0, 0.01);
    EXPECT_EQ(panel().xRange()->from()->text(), "2026-03-01 10:00:15");
    EXPECT_EQ(panel().xRange()->to()->text(), "2026-03-01 10:00:45");
    EXPECT_EQ(panel().yRange()->from()->text().contains("1970"), false);
    // Another graph of numbers has numbers again.
    open({writeExample()});
    EXPECT_EQ(panel().xRange()->from()->text(), "1");
}

TEST_F(PanelsOfWindow, keysGoToTheFieldThatIsWrittenIn)
{
    window.activateWindow();
    panel().title()->setFocus();
    ASSERT_TRUE(waitUntil([&] { return panel().title()->hasFocus(); }));
    QTest::keyClicks(panel().title(), "mean m");
    EXPECT_EQ(panel().title()->text(), "mean m");
    EXPECT_EQ(graph().countOfMarkers(), 0U);
    QTest::keyClick(panel().title(), Qt::Key_Return);
    EXPECT_EQ(graph().title(), "mean m");
    window.graphWidget()->setFocus();
    QTest::keyClick(window.graphWidget(), Qt::Key_M);
    EXPECT_EQ(graph().countOfMarkers(), 1U);
    QTest::keyClick(window.graphWidget(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(graph().countOfMarkers(), 0U);
}

TEST_F(PanelsOfWindow, rangesThatCannotBeShownAreRefused)
{
    const struct {
        const char* from;
        const char* reason;
    } rows[] = {{"9", "The second end has to be greater than the first."}, {"many", "Both ends have to be numbers."}};
    const double former = graph().extents()->x()->min();
    for (const auto& row : rows) {
        DialogAnswer answer(QMessageBox::Ok);
        write(panel().xRange()->from(), row.from);
        EXPECT_TRUE(answer.isGiven());
        EXPECT_EQ(answer.reason(), row.reason);
        EXPECT_EQ(graph().extents()->x()->min(), former);
        EXPECT_EQ(panel().xRange()->from()->text(), "1");
    }
}

TEST_F(PanelsOfWindow, selectedSeriesGetAnotherColorPatternAndThickness)
{
    const auto former = graph().graphData()[0]->color();
    window.seriesPanel()->list()->topLevelItem(1)->setSelected(true);
    window.seriesPanel()->setColor(QColor(255, 0, 51));
    window.seriesPanel()->setPattern(LinePattern::Dashed);
    window.seriesPanel()->setThickness(2.5);
    EXPECT_EQ(graph().graphData()[1]->color(), Color(1.0, 0.0, 0.2));
    EXPECT_EQ(graph().graphData()[1]->lineStyle()->patternValues(), TOLVLineStyle::dashedLineStyle()->patternValues());
    EXPECT_EQ(graph().graphData()[1]->lineStyle()->thickness(), 2.5);
    EXPECT_EQ(graph().graphData()[0]->color(), former);
    EXPECT_EQ(graph().graphData()[0]->lineStyle()->patternValues().value_or(std::vector<float>()).size(), 0U);
    EXPECT_EQ(graph().graphData()[0]->lineStyle()->thickness(), 1.0);
    EXPECT_TRUE(window.seriesPanel()->list()->topLevelItem(1)->isSelected());
}

TEST_F(PanelsOfWindow, theLegendNamesEverySeries)
{
    QTreeWidget* list = window.seriesPanel()->list();
    ASSERT_EQ(list->topLevelItemCount(), 2);
    EXPECT_EQ(list->topLevelItem(0)->text(0), "a");
    EXPECT_EQ(list->topLevelItem(1)->text(0), "b");
}

} // namespace

} // namespace TOLVGraphing::app
