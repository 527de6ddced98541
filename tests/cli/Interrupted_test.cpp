// A signal while a picture is written: the old picture is there or the new one, whole, and nothing else is.

#include "CommandLine.h"

#include <gmock/gmock.h>

#include <poll.h>
#include <signal.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <string>

namespace TOLVGraphing::testing_support {

namespace {

using testing::ElementsAre;

/// Tells when something is made in a folder.
class FolderWatch {
public:
    explicit FolderWatch(const std::string& folder) : m_descriptor(::inotify_init1(IN_CLOEXEC))
    {
        if (m_descriptor < 0 || ::inotify_add_watch(m_descriptor, folder.c_str(), IN_CREATE) < 0)
            throw std::runtime_error("cannot watch " + folder);
    }
    ~FolderWatch() { ::close(m_descriptor); }
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

    /// True when it has happened; false after so many milliseconds without.
    [[nodiscard]] bool wait(int patience) const
    {
        pollfd waiting{m_descriptor, POLLIN, 0};
        if (::poll(&waiting, 1, patience) <= 0)
            return false;
        std::array<char, 4096> events{};
        return ::read(m_descriptor, events.data(), events.size()) > 0;
    }

private:
    int m_descriptor;
};

class Interrupted : public CommandLineTest, public testing::WithParamInterface<int> {
protected:
    Interrupted()
    {
        folder().write("table.csv", "t,v\n1,2\n2,5\n3,4\n4,4\n");
        const std::vector<std::string> arguments{"table.csv", "--scale", "3", "-o", kPicture};
        EXPECT_TRUE(succeededSilently(run(arguments)));
        m_new = folder().read(kPicture);
        folder().write(kPicture, kOld);
    }

    /// Draws the picture and sends the signal when its file, which has another name at first, is made, or before that.
    [[nodiscard]] ProcessResult drawAndInterrupt(int patience) const
    {
        const FolderWatch watch(folder().path());
        ProcessSurroundings surroundings;
        surroundings.whileRunning = [&](pid_t process) {
            static_cast<void>(watch.wait(patience));
            ::kill(process, GetParam());
        };
        return run({"table.csv", "--scale", "3", "-o", kPicture}, surroundings);
    }

    static constexpr const char* kPicture = "picture.tiff";
    static constexpr const char* kOld = "the old picture";
    std::string m_new;
};

TEST_P(Interrupted, leavesTheOldPictureOrTheNewOne)
{
    constexpr int kWaitForTheFile = 20000;
    // Behind the last it is the file that is waited for.
    for (const int patience : {20, 60, kWaitForTheFile, kWaitForTheFile, kWaitForTheFile, kWaitForTheFile}) {
        const ProcessResult result = drawAndInterrupt(patience);
        // Whoever is fast enough ends before the signal comes.
        EXPECT_TRUE(result.signal == GetParam() || (result.signal == 0 && result.status == 0)) << result.text();
        EXPECT_EQ(result.error, "");
        const std::string picture = folder().read(kPicture);
        EXPECT_TRUE(picture == m_new || (picture == kOld && result.signal != 0)) << picture.size() << " bytes, " << result.text();
        // Nobody hears of SIGKILL.
        if (GetParam() != SIGKILL) {
            EXPECT_THAT(folder().names(), ElementsAre(kPicture, "table.csv"));
        }
        folder().write(kPicture, kOld);
    }
}

std::string nameOfSignal(const testing::TestParamInfo<int>& info)
{
    return info.param == SIGKILL ? "SIGKILL" : info.param == SIGINT ? "SIGINT" : info.param == SIGHUP ? "SIGHUP" : "SIGTERM";
}

INSTANTIATE_TEST_SUITE_P(Signals, Interrupted, testing::Values(SIGHUP, SIGINT, SIGTERM, SIGKILL), nameOfSignal);

class InterruptedReading : public CommandLineTest {};

TEST_F(InterruptedReading, endsWithTheSignal)
{
    folder().write("table.csv", "t,v\n1,2\n2,5\n");
    ProcessSurroundings surroundings;
    // The program waits for its input, of which nothing comes.
    surroundings.input = "";
    surroundings.inputDelay = std::chrono::seconds(30);
    bool isSent = false;
    surroundings.whileRunning = [&](pid_t process) { isSent = ::kill(process, SIGINT) == 0; };
    const ProcessResult result = run({"-", "-o", "picture.svg"}, surroundings);
    EXPECT_TRUE(isSent);
    EXPECT_EQ(result.signal, SIGINT) << result.text();
    EXPECT_THAT(folder().names(), ElementsAre("table.csv"));
}

} // namespace

} // namespace TOLVGraphing::testing_support
