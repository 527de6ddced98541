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

TEST(ViewerProgram, saysSoWhereADisplayDoesNotAnswerOrAPlatformIsUnknown)
{
    const struct {
        std::vector<std::string> environment;
        std::string platform;
    } kCases[] = {
        // clang-format off
        {{"DISPLAY=:4711"},                                            ""},
        {{"DISPLAY=nonsense"},                                         ""},
        {{"WAYLAND_DISPLAY=nothing", "XDG_RUNTIME_DIR=/proc/nowhere"}, ""},
        {{"QT_QPA_PLATFORM=xcb"},                                      "xcb"},
        {{"DISPLAY=:4711", "QT_QPA_PLATFORM=xcb"},                     "xcb"},
        {{"WAYLAND_DISPLAY=nothing", "QT_QPA_PLATFORM=wayland"},       "wayland"},
        {{"QT_QPA_PLATFORM=nonsense"},                                 "nonsense"},
        {{"QT_QPA_PLATFORM=xcb;nonsense"},                             "xcb;nonsense"},
        {{"DISPLAY=:4711", "QT_QPA_PLATFORM_PLUGIN_PATH=/nowhere"},    ""},
        // clang-format on
    };
    for (const auto& [environment, platform] : kCases) {
        const ProcessResult result = runWithoutDisplay({}, environment);
        EXPECT_EQ(result.status, 1) << result.text();
        EXPECT_EQ(result.error,
            "tolvgraph-viewer: found no display to open a window on" + (platform.empty() ? "" : " with QT_QPA_PLATFORM=" + platform)
                + ", expected a desktop session (DISPLAY or WAYLAND_DISPLAY); tolvgraph draws files without one\n");
    }
    EXPECT_EQ(runWithoutDisplay({"-platform", "nonsense"}).status, 1);
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
