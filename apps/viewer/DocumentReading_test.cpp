#include "DocumentReading.h"

#include "tests/desktop/TemporaryFolder.h"
#include "tests/viewer/HostThread.h"

#include <TOLVGraphing/data/TOLVGraphData.h>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <thread>

namespace TOLVGraphing::app {

namespace {

using testing_support::HostThread;
using testing_support::ReadingOutcome;

class DocumentReadingTest : public testing::Test {
protected:
    void start(const std::vector<std::string>& paths, const Options& options = {}) { reading->start(paths, options, outcome.callbacks()); }
    void finish()
    {
        host.runUntil([&] { return outcome.isOver(); });
    }
    std::string errorOf(const std::string& path, const Options& options = {})
    {
        start({path}, options);
        finish();
        return outcome.errors.empty() ? "" : outcome.errors.front();
    }
    /// Several pieces of what is read at once.
    std::string writeLongFile(const std::string& name)
    {
        std::string text = "t,v\n";
        for (int i = 0; text.size() < std::size_t{20} << 20U; ++i)
            text += std::to_string(i) + ",1\n";
        return folder.write(name, text);
    }

    testing_support::TemporaryFolder folder;
    HostThread host;
    ReadingOutcome outcome;
    std::unique_ptr<DocumentReading> reading = std::make_unique<DocumentReading>(host.queue());
};

} // namespace

TEST_F(DocumentReadingTest, handsOverSeriesOptionsSourcesAndNotes)
{
    const std::string one = folder.write("one.csv", "t,v\n1,2\n2\n3,4\n");
    const std::string other = folder.write("other.csv", "t,v\n1,5\n2,6\n");
    Options options;
    options.y = {"v"};
    start({one, other}, options);
    EXPECT_TRUE(reading->isReading());
    finish();
    EXPECT_FALSE(reading->isReading());
    ASSERT_EQ(outcome.data.size(), 1U);
    const ReadDocumentData& data = outcome.data.front();
    EXPECT_EQ(data.options, options);
    const std::vector<SourceColumn> columns{{"t", "", input::ColumnKind::Number}, {"v", "", input::ColumnKind::Number}};
    EXPECT_EQ(data.sources, (std::vector<DocumentSource>{{one, stampOfFile(one), columns}, {other, stampOfFile(other), columns}}));
    ASSERT_EQ(data.files.size(), 2U);
    EXPECT_EQ(data.files[0].file, one);
    EXPECT_EQ(data.files[1].file, other);
    ASSERT_EQ(data.files[1].selection.series.size(), 1U);
    EXPECT_EQ(data.files[1].selection.series[0].data->Y()->components()[1], 6.0F);
    EXPECT_EQ(data.notes, (std::vector<std::string>{one + ":3: 1 row with fields missing, which are gaps", one + ": v: 1 sample without a number left out"}));
}

TEST_F(DocumentReadingTest, tellsHowFarItHasCome)
{
    const std::string one = folder.write("one.csv", "t,v\n1,2\n2,3\n");
    const std::string other = writeLongFile("other.csv");
    start({one, other});
    finish();
    ASSERT_GE(outcome.progress.size(), 4U);
    EXPECT_EQ(outcome.progress[0], (DocumentProgress{one, 0, 2, std::nullopt}));
    EXPECT_EQ(outcome.progress[1], (DocumentProgress{one, 0, 2, 1.0}));
    EXPECT_EQ(outcome.progress[2], (DocumentProgress{other, 1, 2, std::nullopt}));
    EXPECT_EQ(outcome.progress.back(), (DocumentProgress{other, 1, 2, 1.0}));
    for (std::size_t i = 3; i + 1 < outcome.progress.size(); ++i)
        EXPECT_LT(outcome.progress[i].fraction, outcome.progress[i + 1].fraction);
}

TEST_F(DocumentReadingTest, keepsTheTextsOfCategories)
{
    Options options;
    options.xAxis = AxisKind::Bar;
    start({folder.write("names.csv", "name,v\nquartz,1\nmica,2\n")}, options);
    finish();
    ASSERT_EQ(outcome.data.size(), 1U);
    EXPECT_EQ(outcome.data[0].files[0].selection.categoryTexts, (std::vector<std::string>{"quartz", "mica"}));
}

TEST_F(DocumentReadingTest, tellsEachColumnAsOptionsNameIt)
{
    const std::string path = folder.write("one.csv", "date,name,v,v,\ndate,text,Volt,Ampere,Ohm\n2026-11-21,mica,1,2,3\n2026-11-22,gypsum,4,5,6\n");
    start({path});
    finish();
    ASSERT_EQ(outcome.data.size(), 1U) << outcome.errors.front();
    const std::vector<SourceColumn> columns = outcome.data[0].sources[0].columns;
    std::string text;
    for (const SourceColumn& column : columns)
        text += column.option + " [" + column.unit + "] " + std::string(input::columnKindName(column.kind)) + "\n";
    ASSERT_EQ(text, "date [date] date\nname [text] text\nv [Volt] number\n4 [Ampere] number\ncolumn 5 [Ohm] number\n");
    for (const SourceColumn& column : {columns[2], columns[3], columns[4]}) {
        Options options;
        options.y = {column.option};
        outcome = {};
        start({path}, options);
        finish();
        ASSERT_EQ(outcome.data.size(), 1U);
        EXPECT_EQ(outcome.data[0].files[0].selection.series[0].unit, column.unit);
    }
}

TEST_F(DocumentReadingTest, succeedsWithoutFiles)
{
    start({});
    finish();
    ASSERT_EQ(outcome.data.size(), 1U);
    EXPECT_TRUE(outcome.data[0].files.empty());
}

TEST_F(DocumentReadingTest, failsWithATextThatNamesTheFile)
{
    const std::string missing = folder.path("missing.csv");
    EXPECT_EQ(errorOf(missing), missing + ": cannot be opened: No such file or directory");
    EXPECT_TRUE(outcome.data.empty());
    EXPECT_FALSE(reading->isReading());
}

TEST_F(DocumentReadingTest, failsAtTheFirstFileThatCannotBeRead)
{
    const std::string broken = folder.write("broken.npy", "no array");
    start({folder.write("one.csv", "t,v\n1,2\n"), broken, folder.path("missing.csv")});
    finish();
    EXPECT_TRUE(outcome.data.empty());
    ASSERT_EQ(outcome.errors.size(), 1U);
    EXPECT_TRUE(outcome.errors[0].starts_with(broken + ": ")) << outcome.errors[0];
}

TEST_F(DocumentReadingTest, failsForAColumnThatIsNotThere)
{
    Options options;
    options.y = {"w"};
    const std::string path = folder.write("one.csv", "t,v\n1,2\n");
    EXPECT_TRUE(errorOf(path, options).starts_with(path + ": ")) << outcome.errors.front();
}

TEST_F(DocumentReadingTest, doesNotWaitForPipes)
{
    const std::string pipe = folder.path("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(errorOf(pipe), pipe + ": found a pipe or device, expected a regular file");
}

TEST_F(DocumentReadingTest, tellsNothingOnceItIsCancelled)
{
    start({folder.write("one.csv", "t,v\n1,2\n")});
    host.waitForCall();
    reading->cancel();
    EXPECT_FALSE(reading->isReading());
    reading = nullptr;
    host.runWaiting();
    EXPECT_TRUE(outcome.progress.empty());
    EXPECT_FALSE(outcome.isOver());
}

TEST_F(DocumentReadingTest, canBeCancelledByItsOwnProgress)
{
    DocumentReading::Callbacks callbacks = outcome.callbacks();
    callbacks.progress = [&](const DocumentProgress&) {
        reading->cancel();
        reading = nullptr;
    };
    reading->start({writeLongFile("long.csv")}, {}, callbacks);
    host.runNext();
    host.runWaiting();
    EXPECT_EQ(reading, nullptr);
    EXPECT_FALSE(outcome.isOver());
}

TEST_F(DocumentReadingTest, isCancelledByItsEnd)
{
    start({writeLongFile("long.csv")});
    reading = nullptr;
    host.runWaiting();
    EXPECT_TRUE(outcome.progress.empty());
    EXPECT_FALSE(outcome.isOver());
}

TEST_F(DocumentReadingTest, givesUpForALaterReading)
{
    ReadingOutcome former;
    reading->start({writeLongFile("long.csv")}, {}, former.callbacks());
    host.waitForCall();
    const std::string path = folder.write("one.csv", "t,v\n1,2\n");
    start({path});
    finish();
    host.runWaiting();
    EXPECT_FALSE(former.isOver());
    EXPECT_TRUE(former.progress.empty());
    ASSERT_EQ(outcome.data.size(), 1U);
    EXPECT_EQ(outcome.data[0].sources[0].path, path);
}

TEST_F(DocumentReadingTest, canBeStartedAgainFromItsCallbacks)
{
    const std::string path = folder.write("one.csv", "t,v\n1,2\n");
    DocumentReading::Callbacks callbacks = outcome.callbacks();
    callbacks.failed = [&](const std::string&) { start({path}); };
    reading->start({folder.path("missing.csv")}, {}, callbacks);
    finish();
    ASSERT_EQ(outcome.data.size(), 1U);
}

TEST_F(DocumentReadingTest, callsBackInTheHostsThreadOnly)
{
    const std::thread::id hostThread = std::this_thread::get_id();
    std::vector<std::thread::id> threads;
    DocumentReading::Callbacks callbacks;
    callbacks.progress = [&](const DocumentProgress&) { threads.push_back(std::this_thread::get_id()); };
    callbacks.finished = [&](ReadDocumentData data) {
        threads.push_back(std::this_thread::get_id());
        outcome.data.push_back(std::move(data));
    };
    reading->start({folder.write("one.csv", "t,v\n1,2\n")}, {}, callbacks);
    finish();
    EXPECT_EQ(threads, std::vector<std::thread::id>(3, hostThread));
}

TEST(StampOfFile, tellsStatesOfRegularFilesApart)
{
    const testing_support::TemporaryFolder folder;
    const std::string path = folder.write("one.csv", "12345");
    const auto stamp = stampOfFile(path);
    ASSERT_TRUE(stamp);
    EXPECT_EQ(stamp->size, 5U);
    const timespec times[2] = {{1, 0}, {86400, 7}};
    ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
    EXPECT_EQ(stampOfFile(path), (FileStamp{5, 86'400'000'000'007}));
    EXPECT_EQ(stampOfFile(folder.path("missing.csv")), std::nullopt);
    EXPECT_EQ(stampOfFile(folder.path()), std::nullopt);
}

} // namespace TOLVGraphing::app
