#include <TestPaths.h>

// The example of an OpenGL scene in a window, on the screen of the tests.
#ifdef TOLV_PROGRAM_WATERFALL

#include "WidgetSetup.h"

#include <tests/desktop/Process.h>

#include <QGuiApplication>
#include <QImage>
#include <QProcess>
#include <QScreen>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

using namespace TOLVGraphing::testing_support;

namespace {

constexpr const char* kRecording = "/usr/share/sounds/alsa/Front_Center.wav";

/// The colours of the loudest levels, which nothing else on the screen has.
int warmPixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            count += color.red() > 230 && color.green() < 190 && color.blue() < 110 ? 1 : 0;
        }
    }
    return count;
}

std::string nameOf(const testing::TestParamInfo<const char*>& info)
{
    return info.param;
}

class WaterfallWindow : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(Integrations, WaterfallWindow, testing::Values("xcb_glx", "xcb_egl"), nameOf);

TEST(WaterfallProgram, SaysInOneLineThatItFindsNoDisplay)
{
    if (!std::filesystem::exists(kRecording))
        GTEST_SKIP() << kRecording << " is not installed";
    for (const char* environment : {"QT_QPA_PLATFORM=", "QT_QPA_PLATFORM=nonsense", "DISPLAY=:4711"}) {
        const ProcessResult result = runProcess({"env", "-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", "-u", "QT_QPA_PLATFORM", environment, TOLV_PROGRAM_WATERFALL});
        EXPECT_EQ(result.status, 1) << result.text();
        EXPECT_TRUE(result.error.starts_with("waterfall: found no display to open a window on")) << result.error;
        EXPECT_TRUE(result.error.ends_with("expected a desktop session (DISPLAY or WAYLAND_DISPLAY); --output FILE.png needs none\n")) << result.error;
        EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 1) << result.error;
    }
}

TEST_P(WaterfallWindow, ShowsTheDecay)
{
    if (QGuiApplication::platformName() != "xcb")
        GTEST_SKIP() << "no display server is installed";
    if (!std::filesystem::exists(kRecording))
        GTEST_SKIP() << "the recording " << kRecording << " is not installed";
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_XCB_GL_INTEGRATION", GetParam());
    environment.insert("LIBGL_ALWAYS_SOFTWARE", "1");
    // The program is ended and reports nothing; with whole call stacks for that, the driver would take minutes to start.
    environment.remove("LSAN_OPTIONS");
    const auto shownWarmPixels = [] { return warmPixels(QGuiApplication::primaryScreen()->grabWindow(0).toImage()); };
    ASSERT_TRUE(waitUntil([&] { return shownWarmPixels() == 0; })) << "another window is still there";
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(TOLV_PROGRAM_WATERFALL, {kRecording});
    const bool isShown = waitUntil([&] { return shownWarmPixels() > 200; });
    EXPECT_TRUE(isShown) << program.readAllStandardError().toStdString();
    EXPECT_EQ(program.state(), QProcess::Running);
    EXPECT_EQ(program.readAllStandardError().toStdString().find("StringTexture"), std::string::npos);
    program.kill();
    program.waitForFinished();
}

} // namespace

#endif
