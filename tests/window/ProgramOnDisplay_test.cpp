// The program on a display of its own, where what surrounds it fails.

#include "../desktop/PrivateDisplay.h"
#include "../desktop/Process.h"
#include "../desktop/TemporaryFolder.h"

#include <TestPaths.h>

#include <gmock/gmock.h>

#include <poll.h>
#include <signal.h>
#include <xcb/xcb.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace TOLVGraphing::app {

namespace {

using testing_support::PrivateDisplay;
using testing_support::ProcessResult;
using testing_support::ProcessSurroundings;
using testing_support::TemporaryFolder;

/// Hears of windows that appear on a display.
class WindowWatch {
public:
    explicit WindowWatch(const std::string& display) : m_connection(xcb_connect(display.c_str(), nullptr), &xcb_disconnect)
    {
        const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data;
        const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(m_connection.get(), screen->root, XCB_CW_EVENT_MASK, &mask);
        xcb_flush(m_connection.get());
    }

    /// True when one has appeared; false after the patience.
    [[nodiscard]] bool wait(std::chrono::seconds patience = std::chrono::seconds(20))
    {
        const auto end = std::chrono::steady_clock::now() + patience;
        while (std::chrono::steady_clock::now() < end && xcb_connection_has_error(m_connection.get()) == 0) {
            while (const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event{xcb_poll_for_event(m_connection.get()), &std::free}) {
                if ((event->response_type & 0x7F) == XCB_MAP_NOTIFY) {
                    m_window = reinterpret_cast<const xcb_map_notify_event_t*>(event.get())->window;
                    return true;
                }
            }
            pollfd waiting{xcb_get_file_descriptor(m_connection.get()), POLLIN, 0};
            ::poll(&waiting, 1, 100);
        }
        return false;
    }

    /// What the window that appeared says of its program: two names, each with a zero behind it.
    [[nodiscard]] std::string programNames() const
    {
        const auto cookie = xcb_get_property(m_connection.get(), 0, m_window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 256);
        const std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> reply{xcb_get_property_reply(m_connection.get(), cookie, nullptr), &std::free};
        return reply ? std::string(static_cast<const char*>(xcb_get_property_value(reply.get())), static_cast<std::size_t>(xcb_get_property_value_length(reply.get())))
                     : std::string();
    }

private:
    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> m_connection;
    xcb_window_t m_window = XCB_WINDOW_NONE;
};

class ViewerOnDisplay : public testing::Test {
protected:
    void SetUp() override
    {
        if (!PrivateDisplay::isInstalled())
            GTEST_SKIP() << "no display server is installed";
        m_folder.write("table.csv", "t,v\n1,2\n2,5\n3,4\n");
    }

    /// Runs the program with a file and these assignments, or options, of env, and does something when its window is there.
    [[nodiscard]] ProcessResult run(const std::vector<std::string>& environment, const std::function<void(pid_t)>& whenShown)
    {
        // It ends with its last program.
        m_display.emplace();
        if (m_display->name().empty()) {
            ADD_FAILURE() << "the display does not start";
            return {};
        }
        std::vector<std::string> words{"env", "-u", "WAYLAND_DISPLAY", "DISPLAY=" + m_display->name(), "QT_QPA_PLATFORM=xcb", "XDG_RUNTIME_DIR=" + m_folder.path(),
            "HOME=" + m_folder.path(), "env", "-u", "XDG_CONFIG_HOME", "-u", "XDG_CACHE_HOME", "-u", "XDG_DATA_HOME"};
        words.insert(words.end(), environment.begin(), environment.end());
        words.emplace_back(TOLV_PROGRAM_TOLVGRAPH_VIEWER);
        words.push_back(m_folder.path("table.csv"));
        WindowWatch watch(m_display->name());
        ProcessSurroundings surroundings;
        surroundings.whileRunning = [&](pid_t process) {
            EXPECT_TRUE(watch.wait());
            m_programNames = watch.programNames();
            whenShown(process);
        };
        return testing_support::runProcess(words, surroundings);
    }

    TemporaryFolder m_folder;
    std::optional<PrivateDisplay> m_display;
    std::string m_programNames;
};

void end(pid_t process)
{
    ::kill(process, SIGTERM);
}

TEST_F(ViewerOnDisplay, endsWithoutACrashWhenTheDisplayDoes)
{
    const ProcessResult result = run({}, [this](pid_t) { m_display->end(); });
    EXPECT_EQ(result.signal, 0) << result.text();
    EXPECT_EQ(result.status, 1) << result.text();
}

TEST_F(ViewerOnDisplay, namesItselfAsItsDesktopFileExpects)
{
    const ProcessResult result = run({}, end);
    EXPECT_EQ(result.signal, SIGTERM) << result.text();
    EXPECT_THAT(m_programNames, testing::StartsWith(std::string("tolvgraph-viewer\0", 17)));
    EXPECT_THAT(
        testing_support::contentOfFile(TOLV_SOURCE_DIR "/apps/viewer/qt/desktop/io.github.tolvgraphing.Viewer.desktop"), testing::HasSubstr("\nStartupWMClass=tolvgraph-viewer\n"));
}

TEST_F(ViewerOnDisplay, startsWhereNothingCanBeKept)
{
    const std::string file = m_folder.write("file", "no folder");
    const std::vector<std::vector<std::string>> kCases = {
        // Without it the home folder is that of the whole machine.
        {"-u", "HOME", "XDG_CONFIG_HOME=" + m_folder.path("made"), "XDG_CACHE_HOME=" + m_folder.path("made"), "XDG_DATA_HOME=" + m_folder.path("made")},
        {"HOME=" + file, "XDG_CONFIG_HOME=" + file, "XDG_CACHE_HOME=" + file, "XDG_DATA_HOME=" + file},
        {"HOME=/proc/nowhere", "TMPDIR=/proc/nowhere", "LC_ALL=xx"},
    };
    for (const auto& environment : kCases) {
        const ProcessResult result = run(environment, end);
        EXPECT_EQ(result.signal, SIGTERM) << environment.front() << ": " << result.text();
    }
    EXPECT_EQ(m_folder.read("file"), "no folder");
}

TEST_F(ViewerOnDisplay, startsWithoutFontsAndSaysSoOnce)
{
    const std::string configuration = m_folder.write(
        "fonts.conf", "<?xml version=\"1.0\"?>\n<!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">\n<fontconfig><cachedir>" + m_folder.path("cache") + "</cachedir></fontconfig>\n");
    // Its first words may come after the window.
    const std::string words = m_folder.path("words");
    const std::string said = "No usable font is installed: a box stands for each character\n";
    const auto endWhenItHasBeenSaid = [&](pid_t process) {
        const auto last = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (m_folder.read("words").find(said) == std::string::npos && std::chrono::steady_clock::now() < last)
            ::poll(nullptr, 0, 20);
        end(process);
    };
    const ProcessResult result
        = run({"MALLOC_PERTURB_=85", "HOME=" + m_folder.path(), "FONTCONFIG_FILE=" + configuration, "sh", "-c", "exec \"$0\" \"$@\" 2>" + words}, endWhenItHasBeenSaid);
    EXPECT_EQ(result.signal, SIGTERM) << result.text();
    const std::string all = m_folder.read("words");
    const std::size_t first = all.find(said);
    ASSERT_NE(first, std::string::npos) << all;
    EXPECT_EQ(all.find(said, first + 1), std::string::npos) << all;
}

} // namespace

} // namespace TOLVGraphing::app
