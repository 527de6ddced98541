#include "WindowTest.h"

#include <TOLVGraphing/graph/TOLVGraph.h>

#include <filesystem>
#include <string>

namespace TOLVGraphing::app {

namespace {

class ReloadingInWindow : public WindowTest {
protected:
    ReloadingInWindow()
    {
        open({writeExample()});
        document().graph()->zoomXToFixedMin(1.5F, 3.0F);
        document().graph()->placeHorizontalAxisMarkerWithValue(2.5);
    }

    void expectViewKept() const
    {
        EXPECT_EQ(graph().extents()->x()->min(), 1.5);
        EXPECT_EQ(graph().extents()->x()->max(), 3.0);
        ASSERT_EQ(graph().countOfMarkers(), 1U);
        EXPECT_EQ(graph().markers()[0]->value(), 2.5);
    }

    /// The second ordinate of the first series.
    [[nodiscard]] float secondOrdinate() const { return graph().graphData()[0]->YValueAtX(2.0F); }

    static constexpr const char* kChanged = "t,a,b\n1,10,4\n2,22,3\n3,30,2\n4,40,1\n5,50,0\n";
};

TEST_F(ReloadingInWindow, readsAgainOnDemand)
{
    window.controller()->setReloadsAutomatically(false);
    write("example.csv", kChanged);
    window.controller()->reload();
    ASSERT_TRUE(waitUntil([&] { return secondOrdinate() == 22.0F; }));
    expectViewKept();
}

TEST_F(ReloadingInWindow, followsAFileThatIsWrittenTo)
{
    write("example.csv", kChanged);
    ASSERT_TRUE(waitUntil([&] { return secondOrdinate() == 22.0F; }));
    expectViewKept();
}

TEST_F(ReloadingInWindow, followsAFileThatIsReplacedTwice)
{
    for (const float value : {22.0F, 23.0F}) {
        const std::string text = "t,a,b\n1,10,4\n2," + std::to_string(value) + ",3\n3,30,2\n4,40,1\n";
        const std::string other = folder.write("other", text);
        std::filesystem::rename(other, folder.path("example.csv"));
        ASSERT_TRUE(waitUntil([&] { return secondOrdinate() == value; }));
        expectViewKept();
    }
}

TEST_F(ReloadingInWindow, isNotKeptWaitingByOtherFilesOfTheFolder)
{
    write("example.csv", kChanged);
    int count = 0;
    QTimer busy;
    QObject::connect(&busy, &QTimer::timeout, [&] { write("other" + std::to_string(count++), "x"); });
    busy.start(SourceWatcher::kQuietTime / 6);
    EXPECT_TRUE(waitUntil([&] { return secondOrdinate() == 22.0F; }));
}

TEST_F(ReloadingInWindow, leavesTheGraphWhenItIsSwitchedOff)
{
    window.controller()->setReloadsAutomatically(false);
    write("example.csv", kChanged);
    runEvents(3 * SourceWatcher::kQuietTime);
    EXPECT_EQ(secondOrdinate(), 20.0F);
    window.controller()->setReloadsAutomatically(true);
    EXPECT_TRUE(waitUntil([&] { return secondOrdinate() == 22.0F; }));
}

TEST_F(ReloadingInWindow, tellsOfAFileThatBecameUnreadableWithoutADialog)
{
    QStringList messages;
    QObject::connect(window.controller(), &DocumentController::message, [&](const QString& text) { messages << text; });
    write("example.csv", "broken\n");
    ASSERT_TRUE(waitUntil([&] { return !messages.isEmpty(); }));
    EXPECT_TRUE(messages.front().contains("example.csv"));
    EXPECT_EQ(secondOrdinate(), 20.0F);
    write("example.csv", kChanged);
    EXPECT_TRUE(waitUntil([&] { return secondOrdinate() == 22.0F; }));
}

TEST_F(ReloadingInWindow, waitsForAFileThatIsGone)
{
    std::filesystem::remove(folder.path("example.csv"));
    runEvents(3 * SourceWatcher::kQuietTime);
    EXPECT_EQ(secondOrdinate(), 20.0F);
    EXPECT_FALSE(window.controller()->isReading());
    write("example.csv", kChanged);
    EXPECT_TRUE(waitUntil([&] { return secondOrdinate() == 22.0F; }));
}

} // namespace

} // namespace TOLVGraphing::app
