#include "WindowTest.h"

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <apps/viewer/qt/GraphPanel.h>
#include <hosts/qt6/GraphWidget.h>

#include <QComboBox>

namespace TOLVGraphing::app {

namespace {

class SavingFromWindow : public WindowTest {
protected:
    SavingFromWindow() { open({writeExample()}); }

    [[nodiscard]] QString inFolder(const std::string& name) const { return QString::fromStdString(folder.path(name)); }
};

TEST_F(SavingFromWindow, keepsAxesRangesAndMarkers)
{
    QComboBox* axis = window.graphPanel()->yAxis();
    axis->setCurrentIndex(axis->findData(static_cast<int>(AxisKind::Logarithmic)));
    document().graph()->placeHorizontalAxisMarkerWithValue(2.5);
    document().graph()->zoomXToFixedMin(1.5F, 3.0F);
    document().graph()->zoomYToFixedMin(2.0, 50.0);
    EXPECT_TRUE(window.isWindowModified());
    ASSERT_TRUE(window.files()->saveTo(inFolder("kept.tolvgraph")));
    EXPECT_FALSE(window.isWindowModified());
    EXPECT_TRUE(window.windowTitle().startsWith("kept.tolvgraph[*]"));
    window.files()->closeDocument();

    open({inFolder("kept.tolvgraph")});
    EXPECT_TRUE(graph().YIsLog());
    EXPECT_FALSE(graph().XIsLog());
    EXPECT_EQ(graph().extents()->x()->min(), 1.5);
    EXPECT_EQ(graph().extents()->x()->max(), 3.0);
    EXPECT_EQ(graph().extents()->y()->min(), 2.0);
    EXPECT_EQ(graph().extents()->y()->max(), 50.0);
    ASSERT_EQ(graph().countOfMarkers(), 1U);
    EXPECT_EQ(graph().markers()[0]->value(), 2.5);
    EXPECT_EQ(graph().graphData().size(), 2U);
    EXPECT_FALSE(window.isWindowModified());
    EXPECT_EQ(axis->currentData().toInt(), static_cast<int>(AxisKind::Logarithmic));
}

TEST_F(SavingFromWindow, saysThatAFolderIsMissing)
{
    DialogAnswer answer(QMessageBox::Ok);
    EXPECT_FALSE(window.files()->saveTo(inFolder("missing/a.tolvgraph")));
    EXPECT_EQ(answer.text(), "The graph document could not be saved.");
    EXPECT_THAT(answer.reason(), testing::HasSubstr("missing/a.tolvgraph"));
}

TEST_F(SavingFromWindow, exportsEveryKindOfPicture)
{
    const struct {
        const char* name;
        std::string start;
    } rows[] = {{"a.pdf", "%PDF-"}, {"a.ps", "%!PS-Adobe-"}, {"a.eps", "%!PS-Adobe-"}, {"a.svg", "<?xml"}, {"a.png", "\x89PNG"}, {"a.tiff", "II*"}};
    for (const auto& row : rows) {
        EXPECT_TRUE(window.files()->exportTo(inFolder(row.name), {300.0, 200.0}, 2.0)) << row.name;
        EXPECT_THAT(folder.read(row.name), testing::StartsWith(row.start)) << row.name;
    }
    // Width and height of a PNG stand at the bytes 16 to 23, the highest first.
    const std::string png = folder.read("a.png");
    EXPECT_EQ(png.substr(16, 8), std::string("\0\0\x02\x58\0\0\x01\x90", 8));
}

TEST_F(SavingFromWindow, refusesPicturesOfOtherSuffixes)
{
    DialogAnswer answer(QMessageBox::Ok);
    EXPECT_FALSE(window.files()->exportTo(inFolder("a.gif"), {300.0, 200.0}, 2.0));
    EXPECT_EQ(answer.text(), "The graph could not be exported.");
    EXPECT_THAT(answer.reason(), testing::HasSubstr("a.gif"));
}

TEST_F(SavingFromWindow, asksAboutUnsavedChangesBeforeClosing)
{
    document().graph()->placeHorizontalAxisMarkerWithValue(2.5);
    {
        DialogAnswer answer(QMessageBox::Cancel);
        EXPECT_FALSE(window.close());
        EXPECT_TRUE(answer.isGiven());
        EXPECT_THAT(answer.text(), testing::HasSubstr("example.csv"));
        EXPECT_TRUE(answer.wasLetterByLetter());
        EXPECT_TRUE(window.isVisible());
    }
    ASSERT_TRUE(window.files()->saveTo(inFolder("a.tolvgraph")));
    document().graph()->placeHorizontalAxisMarkerWithValue(3.5);
    const std::string former = folder.read("a.tolvgraph");
    {
        DialogAnswer answer(QMessageBox::Save);
        EXPECT_TRUE(window.close());
        EXPECT_TRUE(answer.isGiven());
        EXPECT_NE(folder.read("a.tolvgraph"), former);
    }
}

TEST_F(SavingFromWindow, discardsChangesThatNobodyWants)
{
    document().graph()->placeHorizontalAxisMarkerWithValue(2.5);
    DialogAnswer answer(QMessageBox::Discard);
    EXPECT_TRUE(window.close());
    EXPECT_TRUE(answer.isGiven());
    EXPECT_THAT(folder.names(), testing::ElementsAre("example.csv"));
}

TEST_F(SavingFromWindow, closesWithoutAQuestionWhereNothingChanged)
{
    document().graph()->zoomXToFixedMin(1.5F, 3.0F);
    EXPECT_TRUE(window.close());
}

} // namespace

} // namespace TOLVGraphing::app
