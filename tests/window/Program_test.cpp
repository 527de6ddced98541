#include "../desktop/Process.h"

#include <TestPaths.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

namespace TOLVGraphing::app {

namespace {

using testing_support::ProcessResult;

/// Runs the program where no display is.
ProcessResult runWithoutDisplay(const std::vector<std::string>& arguments, const std::vector<std::string>& environment = {})
{
    std::vector<std::string> words{"env", "-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", "-u", "QT_QPA_PLATFORM"};
    words.insert(words.end(), environment.begin(), environment.end());
    words.emplace_back(TOLV_PROGRAM_TOLVGRAPH_VIEWER);
    words.insert(words.end(), arguments.begin(), arguments.end());
    return testing_support::runProcess(words);
}

TEST(ViewerProgram, saysThatItFindsNoDisplay)
{
    const ProcessResult result = runWithoutDisplay({"data.csv"});
    EXPECT_EQ(result.status, 1) << result.text();
    EXPECT_THAT(result.error, testing::StartsWith("tolvgraph-viewer: found no display"));
    EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 1) << result.text();
    EXPECT_EQ(result.output, "");
}

TEST(ViewerProgram, saysSoWhereADisplayDoesNotAnswer)
{
    const ProcessResult result = runWithoutDisplay({}, {"DISPLAY=:4711", "QT_QPA_PLATFORM=xcb"});
    EXPECT_EQ(result.status, 1) << result.text();
    EXPECT_THAT(result.error, testing::StartsWith("tolvgraph-viewer: found no display"));
}

TEST(ViewerProgram, printsHelpAndVersionWithoutADisplay)
{
    const ProcessResult help = runWithoutDisplay({"--help"});
    EXPECT_EQ(help.status, 0) << help.text();
    EXPECT_THAT(help.output, testing::HasSubstr("[FILES...]"));
    const ProcessResult version = runWithoutDisplay({"--version"});
    EXPECT_EQ(version.status, 0) << version.text();
    EXPECT_EQ(version.output, "tolvgraph-viewer " TOLVGRAPHING_VERSION "\n");
}

TEST(ViewerProgram, refusesUnknownOptions)
{
    const ProcessResult result = runWithoutDisplay({"--colour"});
    EXPECT_EQ(result.status, 1) << result.text();
    EXPECT_THAT(result.error, testing::HasSubstr("colour"));
}

} // namespace

} // namespace TOLVGraphing::app
