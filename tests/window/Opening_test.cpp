#include "WindowTest.h"

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <apps/viewer/RecentFiles.h>
#include <hosts/qt6/GraphWidget.h>

#include <QApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMimeData>
#include <QToolButton>
#include <QUrl>

namespace TOLVGraphing::app {

namespace {

class OpeningInWindow : public WindowTest {};

TEST_F(OpeningInWindow, showsEverySeriesOfAFileAndItsName)
{
    open({writeExample()});
    ASSERT_EQ(graph().graphData().size(), 2U);
    EXPECT_EQ(graph().graphData()[0]->name(), "a");
    EXPECT_EQ(graph().graphData()[1]->name(), "b");
    EXPECT_TRUE(window.windowTitle().startsWith("example.csv[*]"));
    EXPECT_FALSE(window.isWindowModified());
    EXPECT_TRUE(window.graphWidget()->isVisible());
}

TEST_F(OpeningInWindow, showsSeveralFilesInOneGraph)
{
    open({write("one.csv", "t,a\n1,10\n2,20\n"), write("two.csv", "t,a\n1,11\n2,21\n")});
    ASSERT_EQ(graph().graphData().size(), 2U);
    EXPECT_EQ(document().legendEntries()[1].title, "two.csv");
    EXPECT_EQ(graph().graphData()[1]->name(), "two.csv");
}

TEST_F(OpeningInWindow, addsFilesToTheGraph)
{
    open({writeExample()});
    window.controller()->addFiles({write("more.csv", "t,c\n1,7\n2,8\n")});
    ASSERT_TRUE(waitUntil([&] { return graph().graphData().size() == 3; }));
    EXPECT_EQ(graph().graphData()[2]->YValueAtX(2.0F), 8.0F);
}

TEST_F(OpeningInWindow, opensDroppedFiles)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(writeExample())});
    // A drop goes to where the drag came in.
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(10.0, 10.0), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &drop);
    EXPECT_TRUE(waitUntil([&] { return document().hasData(); }));
}

TEST_F(OpeningInWindow, remembersWhatWasOpened)
{
    const QString path = writeExample();
    open({path});
    EXPECT_THAT(RecentFiles().paths(), testing::ElementsAre(path.toStdString()));
}

TEST_F(OpeningInWindow, saysWhichFileCannotBeReadAndKeepsTheGraph)
{
    open({writeExample()});
    DialogAnswer answer(QMessageBox::Ok);
    window.openFiles({write("bad.csv", "only words\nand no numbers\n")});
    ASSERT_TRUE(waitUntil([&] { return answer.isGiven(); }));
    EXPECT_EQ(answer.text(), "The measurements could not be opened.");
    EXPECT_THAT(answer.reason(), testing::HasSubstr("bad.csv"));
    EXPECT_EQ(document().displayName(), "example.csv");
}

TEST_F(OpeningInWindow, saysThatAFileIsMissing)
{
    DialogAnswer answer(QMessageBox::Ok);
    window.openFiles({QString::fromStdString(folder.path("nothing.csv"))});
    ASSERT_TRUE(waitUntil([&] { return answer.isGiven(); }));
    EXPECT_THAT(answer.reason(), testing::HasSubstr("nothing.csv"));
    EXPECT_FALSE(window.graphWidget()->isVisible());
}

TEST_F(OpeningInWindow, asksWhereTheMeasurementsOfADocumentHaveGone)
{
    const QString measurements = writeExample();
    open({measurements});
    window.controller()->save(QString::fromStdString(folder.path("plot.tolvgraph")));
    window.files()->closeDocument();
    QDir().mkdir(QString::fromStdString(folder.path("elsewhere")));
    const QString moved = QString::fromStdString(folder.path("elsewhere/example.csv"));
    ASSERT_TRUE(QFile::rename(measurements, moved));
    {
        // Giving up says nothing more and keeps what is shown.
        DialogAnswer answer(QMessageBox::Cancel);
        QTimer::singleShot(0, [&] { window.openFiles({QString::fromStdString(folder.path("plot.tolvgraph"))}); });
        ASSERT_TRUE(waitUntil([&] { return answer.isGiven(); }));
        EXPECT_EQ(answer.text(), "Where are the measurements “example.csv” now?");
        EXPECT_THAT(answer.reason(), testing::HasSubstr(measurements.toStdString()));
        EXPECT_TRUE(answer.wasLetterByLetter());
        runEvents(50);
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
        EXPECT_FALSE(document().hasData());
    }
    DialogAnswer answer(QMessageBox::Open);
    QTimer chooser;
    QObject::connect(&chooser, &QTimer::timeout, [&] {
        if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
            dialog->selectFile(moved);
            dialog->findChild<QLineEdit*>()->setText(moved);
            QMetaObject::invokeMethod(dialog, "accept");
        }
    });
    chooser.start(10);
    QTimer::singleShot(0, [&] { window.openFiles({QString::fromStdString(folder.path("plot.tolvgraph"))}); });
    ASSERT_TRUE(waitUntil([&] { return document().hasData(); }));
    EXPECT_EQ(document().sourcePaths(), std::vector<std::string>{moved.toStdString()});
    EXPECT_TRUE(window.isWindowModified());
    EXPECT_EQ(document().displayName(), "plot.tolvgraph");
}

TEST_F(OpeningInWindow, refusesADocumentAmongMeasurements)
{
    DialogAnswer answer(QMessageBox::Ok);
    QTimer::singleShot(0, [&] { window.openFiles({writeExample(), QString::fromStdString(folder.path("a.tolvgraph"))}); });
    ASSERT_TRUE(waitUntil([&] { return answer.isGiven(); }));
    EXPECT_THAT(answer.reason(), testing::HasSubstr("a.tolvgraph"));
    EXPECT_FALSE(window.controller()->isReading());
}

TEST_F(OpeningInWindow, keepsTheGraphWhenReadingIsCancelled)
{
    open({writeExample()});
    window.openFiles({write("other.csv", "t,c\n1,7\n2,8\n")});
    EXPECT_TRUE(window.controller()->isReading());
    window.controller()->cancelReading();
    EXPECT_FALSE(window.controller()->isReading());
    runEvents(200);
    EXPECT_EQ(document().displayName(), "example.csv");
    EXPECT_EQ(graph().graphData().size(), 2U);
}

TEST_F(OpeningInWindow, countsNotesOnSamplesLeftOut)
{
    open({writeExample()});
    EXPECT_FALSE(window.notesButton()->isVisible());
    open({write("gap.csv", "t,a\n1,10\n2,\n3,30\n4,40\n")});
    ASSERT_EQ(document().notes().size(), 1U);
    EXPECT_TRUE(window.notesButton()->isVisible());
    EXPECT_EQ(window.notesButton()->text(), "1 note");
}

TEST_F(OpeningInWindow, closesToAnEmptyWindow)
{
    open({writeExample()});
    window.files()->closeDocument();
    EXPECT_FALSE(document().hasData());
    EXPECT_TRUE(window.windowTitle().startsWith("Untitled[*]"));
    EXPECT_FALSE(window.graphWidget()->isVisible());
}

TEST_F(OpeningInWindow, drawsTheGraphOnceWithMarginsForItsLabels)
{
    open({write("wide.csv", "t,a\n0,1000000\n1,2000000\n")});
    ASSERT_TRUE(waitUntil([&] { return window.graphWidget()->drawCount() > 0; }));
    runEvents(100);
    const auto count = window.graphWidget()->drawCount();
    // Seven digits need more room than the usual 30 points of a graph nobody has laid out.
    const Rect area = graph().dataRectInRect(window.graphWidget()->view()->bounds());
    EXPECT_GT(area.x(), 30.0);
    runEvents(100);
    EXPECT_EQ(window.graphWidget()->drawCount(), count);
}

} // namespace

} // namespace TOLVGraphing::app
