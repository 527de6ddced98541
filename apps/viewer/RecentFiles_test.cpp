#include "RecentFiles.h"

#include "tests/desktop/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

namespace TOLVGraphing::app {

namespace {

using Paths = std::vector<std::string>;

class RecentFilesTest : public testing::Test {
protected:
    std::shared_ptr<MemoryUserDefaults> defaults = std::make_shared<MemoryUserDefaults>();
    RecentFiles files{defaults};
};

} // namespace

TEST_F(RecentFilesTest, areNoneAtFirst)
{
    EXPECT_EQ(files.paths(), Paths());
    files.dropMissing();
    EXPECT_TRUE(defaults->values().empty());
}

TEST_F(RecentFilesTest, haveTheLatestInFrontAndEachOnce)
{
    files.add("/a.csv");
    files.add("/b.csv");
    EXPECT_EQ(files.paths(), (Paths{"/b.csv", "/a.csv"}));
    files.add("/a.csv");
    EXPECT_EQ(files.paths(), (Paths{"/a.csv", "/b.csv"}));
    files.add("/x/../b.csv");
    EXPECT_EQ(files.paths(), (Paths{"/b.csv", "/a.csv"}));
}

TEST_F(RecentFilesTest, areAtMostTen)
{
    for (int i = 0; i < 12; ++i)
        files.add("/" + std::to_string(i));
    EXPECT_EQ(files.paths(), (Paths{"/11", "/10", "/9", "/8", "/7", "/6", "/5", "/4", "/3", "/2"}));
}

TEST_F(RecentFilesTest, makeRelativePathsAbsoluteAndIgnoreEmptyOnes)
{
    files.add("data.csv");
    files.add("");
    EXPECT_EQ(files.paths(), (Paths{(std::filesystem::current_path() / "data.csv").string()}));
}

TEST_F(RecentFilesTest, areSharedThroughTheSettingsWhateverTheirNames)
{
    files.add("/a\tb");
    files.add("/100%\xFF");
    EXPECT_EQ(defaults->stringForKey(RecentFiles::kKey), "/100%25%FF\t/a%09b");
    EXPECT_EQ(RecentFiles(defaults).paths(), (Paths{"/100%\xFF", "/a\tb"}));
}

TEST_F(RecentFilesTest, passOverWhatIsNoAbsolutePathInEditedSettings)
{
    defaults->setString("\t/a.csv\tb.csv\t\t/a.csv\t/c.csv\t", RecentFiles::kKey);
    EXPECT_EQ(files.paths(), (Paths{"/a.csv", "/c.csv"}));
}

TEST_F(RecentFilesTest, dropMissingFilesWhenAsked)
{
    const testing_support::TemporaryFolder folder;
    const std::string there = folder.write("there.csv", "1\n");
    files.add(there);
    files.add(folder.path("gone.csv"));
    EXPECT_EQ(files.paths(), (Paths{folder.path("gone.csv"), there}));
    files.dropMissing();
    EXPECT_EQ(files.paths(), (Paths{there}));
}

TEST_F(RecentFilesTest, canBeForgotten)
{
    files.add("/a.csv");
    files.clear();
    EXPECT_EQ(files.paths(), Paths());
}

} // namespace TOLVGraphing::app
