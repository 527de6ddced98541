// Where the viewer keeps what is the user's.

#include "../desktop/Process.h"
#include "../desktop/TemporaryFolder.h"

#include <apps/viewer/qt/UserFolders.h>

#include <TestPaths.h>

#include <gmock/gmock.h>

#include <QByteArray>

#include <poll.h>
#include <signal.h>

#include <chrono>
#include <filesystem>

namespace TOLVGraphing::app {

namespace {

using testing_support::ProcessResult;
using testing_support::ProcessSurroundings;
using testing_support::TemporaryFolder;

TEST(UserFolders, thatAreRelativeDoNotCount)
{
    const struct {
        QByteArray value;
        bool counts;
    } kCases[] = {{"/absolute", true}, {"relative", false}, {"./here", false}, {"~/home", false}, {"", false}};
    const QByteArray former = qgetenv("XDG_STATE_HOME");
    const bool wasSet = qEnvironmentVariableIsSet("XDG_STATE_HOME");
    for (const auto& [value, counts] : kCases) {
        qputenv("XDG_STATE_HOME", value);
        dropRelativeUserFolders();
        EXPECT_EQ(qEnvironmentVariableIsSet("XDG_STATE_HOME"), counts) << value.toStdString();
    }
    wasSet ? qputenv("XDG_STATE_HOME", former) : qunsetenv("XDG_STATE_HOME");
}

/// The whole program, until it has kept its first settings.
class SettingsFolder : public testing::Test {
protected:
    /// Starts the program in the folder and ends it as soon as the file below the folder is there.
    void runUntilKept(const std::string& configuration, const std::string& file) const
    {
        ProcessSurroundings surroundings;
        surroundings.folder = m_folder.path();
        surroundings.whileRunning = [&](pid_t process) {
            const auto last = std::chrono::steady_clock::now() + std::chrono::seconds(20);
            while (!std::filesystem::exists(m_folder.path(file)) && std::chrono::steady_clock::now() < last)
                ::poll(nullptr, 0, 20);
            ::kill(process, SIGTERM);
        };
        const ProcessResult result = testing_support::runProcess({"env", "-u", "XDG_CACHE_HOME", "-u", "XDG_DATA_HOME", "QT_QPA_PLATFORM=offscreen",
                                                                     "HOME=" + m_folder.path("home"), "XDG_CONFIG_HOME=" + configuration, TOLV_PROGRAM_TOLVGRAPH_VIEWER},
            surroundings);
        EXPECT_EQ(result.signal, SIGTERM) << result.text();
        EXPECT_TRUE(std::filesystem::exists(m_folder.path(file))) << configuration;
    }
    [[nodiscard]] std::filesystem::perms permissions(const std::string& name) const { return std::filesystem::status(m_folder.path(name)).permissions(); }

    TemporaryFolder m_folder;
};

TEST_F(SettingsFolder, isWhereTheVariableSaysAndForTheUserOnly)
{
    runUntilKept(m_folder.path("one/two"), "one/two/TOLVGraphing/viewer.conf");
    for (const char* made : {"one", "one/two", "one/two/TOLVGraphing"})
        EXPECT_EQ(permissions(made), std::filesystem::perms::owner_all) << made;
    EXPECT_THAT(m_folder.names(), testing::ElementsAre("one"));
}

TEST_F(SettingsFolder, isInTheHomeFolderWhereTheVariableSaysNothing)
{
    for (const char* nothing : {"", "relative/folder"}) {
        std::filesystem::remove_all(m_folder.path("home"));
        std::filesystem::create_directory(m_folder.path("home"));
        const std::filesystem::perms home = permissions("home");
        runUntilKept(nothing, "home/.config/TOLVGraphing/viewer.conf");
        EXPECT_EQ(permissions("home"), home);
        EXPECT_EQ(permissions("home/.config"), std::filesystem::perms::owner_all);
        EXPECT_EQ(permissions("home/.config/TOLVGraphing"), std::filesystem::perms::owner_all);
        EXPECT_THAT(m_folder.names(), testing::ElementsAre("home"));
    }
}

} // namespace

} // namespace TOLVGraphing::app
