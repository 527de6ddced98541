#include "WindowTest.h"

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <apps/viewer/qt/MarkersPanel.h>
#include <hosts/qt6/GraphWidget.h>

#include <QAction>
#include <QColor>
#include <QImage>
#include <QPixmap>
#include <QTableWidget>

namespace TOLVGraphing::app {

namespace {

class MarkersOfWindow : public WindowTest {
protected:
    MarkersOfWindow() { open({writeExample()}); }

    [[nodiscard]] QTableWidget& table() { return *window.markersPanel()->table(); }
    [[nodiscard]] GraphWidget& widget() { return *window.graphWidget(); }
    void place(double value) { document().graph()->placeHorizontalAxisMarkerWithValue(value); }
    [[nodiscard]] std::string text(int row, int column) { return table().item(row, column)->text().toStdString(); }
};

TEST_F(MarkersOfWindow, areListedWithTheNearestSamples)
{
    place(2.25);
    ASSERT_EQ(table().rowCount(), 1);
    ASSERT_EQ(table().columnCount(), 3);
    EXPECT_EQ(text(0, 0), "2.25");
    EXPECT_EQ(text(0, 1), "20");
    EXPECT_EQ(text(0, 2), "3");
    EXPECT_EQ(table().horizontalHeaderItem(0)->text(), "t");
    EXPECT_EQ(table().horizontalHeaderItem(2)->text(), "b");
    EXPECT_TRUE(table().horizontalHeaderItem(0)->icon().isNull());
    // The first colour of the series is 0072B2.
    EXPECT_EQ(table().horizontalHeaderItem(1)->icon().pixmap(10, 10).toImage().pixelColor(5, 5), QColor(0x00, 0x72, 0xB2));
}

TEST_F(MarkersOfWindow, areUndoneWithTheWidgetsCommand)
{
    widget().carryOut(GraphCommand::PlaceMarker);
    EXPECT_EQ(table().rowCount(), 1);
    EXPECT_TRUE(window.isWindowModified());
    widget().carryOut(GraphCommand::Undo);
    EXPECT_EQ(table().rowCount(), 0);
    EXPECT_EQ(graph().countOfMarkers(), 0U);
    widget().carryOut(GraphCommand::Redo);
    EXPECT_EQ(table().rowCount(), 1);
}

TEST_F(MarkersOfWindow, moveToTheValueThatIsWritten)
{
    place(2.0);
    table().item(0, 0)->setText("3.75");
    EXPECT_EQ(graph().markers()[0]->value(), 3.75);
    EXPECT_EQ(text(0, 1), "40");
    widget().carryOut(GraphCommand::Undo);
    EXPECT_EQ(graph().markers()[0]->value(), 2.0);
    EXPECT_EQ(text(0, 0), "2");
}

TEST_F(MarkersOfWindow, stayWhereNoNumberIsWritten)
{
    place(2.0);
    DialogAnswer answer(QMessageBox::Ok);
    table().item(0, 0)->setText("here");
    EXPECT_TRUE(answer.isGiven());
    EXPECT_EQ(answer.reason(), "Found “here”, expected a number.");
    EXPECT_EQ(text(0, 0), "2");
    EXPECT_EQ(graph().markers()[0]->value(), 2.0);
}

TEST_F(MarkersOfWindow, areSelectedInTableAndGraphAlike)
{
    place(2.0);
    place(3.0);
    table().selectRow(1);
    EXPECT_EQ(widget().selectedMarker(), graph().markers()[1]);
    widget().selectMarker(0);
    EXPECT_EQ(table().currentRow(), 0);
    widget().carryOut(GraphCommand::DeleteMarker);
    ASSERT_EQ(graph().countOfMarkers(), 1U);
    EXPECT_EQ(graph().markers()[0]->value(), 3.0);
    EXPECT_TRUE(table().selectedItems().isEmpty());
}

TEST_F(MarkersOfWindow, thatAreGoneAreNotSelected)
{
    widget().carryOut(GraphCommand::PlaceMarker);
    EXPECT_EQ(widget().selectedMarker(), graph().markers()[0]);
    widget().carryOut(GraphCommand::Undo);
    EXPECT_EQ(widget().selectedMarker(), nullptr);
    EXPECT_FALSE(widget().action(GraphCommand::DeleteMarker)->isEnabled());
    place(2.0);
    widget().selectMarker(0);
    ASSERT_TRUE(window.files()->saveTo(QString::fromStdString(folder.path("a.tolvgraph"))));
    open({write("other.csv", "t,c\n1,7\n2,8\n")});
    EXPECT_EQ(widget().selectedMarker(), nullptr);
}

TEST_F(MarkersOfWindow, comeToTheMiddleOfTheRange)
{
    document().graph()->zoomXToFixedMin(1.0F, 2.0F);
    place(3.5);
    window.markersPanel()->goTo(0);
    EXPECT_NEAR(graph().extents()->x()->min(), 3.0, 1e-5);
    EXPECT_NEAR(graph().extents()->x()->max(), 4.0, 1e-5);
    EXPECT_EQ(widget().selectedMarker(), graph().markers()[0]);
}

TEST_F(MarkersOfWindow, ofDatesAreWrittenAsDates)
{
    open({write("dates.csv", "day,a\n2026-01-01,1\n2026-01-02,2\n2026-01-03,3\n")});
    // 2026-01-02 is 20455 days after 1970-01-01: 56 years, 14 of them leap years, and a day.
    place(20455.0);
    EXPECT_EQ(text(0, 0), "2026-01-02");
    EXPECT_EQ(text(0, 1), "2");
    table().item(0, 0)->setText("2026-01-02 12:00");
    EXPECT_EQ(graph().markers()[0]->value(), 20455.5);
    EXPECT_EQ(text(0, 0), "2026-01-02 12:00:00");
}

} // namespace

} // namespace TOLVGraphing::app
