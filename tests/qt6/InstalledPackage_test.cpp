// The example program of three lines, built as its own project against the installed library, and run.

#include <TestPaths.h>

#include <tests/desktop/Process.h>
#include <tests/desktop/TemporaryFolder.h>

#include "WidgetSetup.h"

#include <QGuiApplication>
#include <QImage>
#include <QProcess>
#include <QScreen>

#include <gtest/gtest.h>

using namespace TOLVGraphing::testing_support;

namespace {

/// Runs a step of the build. What it said is the message where it fails.
testing::AssertionResult succeeds(const std::vector<std::string>& arguments)
{
    ProcessSurroundings surroundings;
    surroundings.timeout = std::chrono::minutes(5);
    const ProcessResult result = runProcess(arguments, surroundings);
    return result.status == 0 ? testing::AssertionSuccess() : testing::AssertionFailure() << result.text();
}

bool hasColor(const QImage& image, QColor color)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == color)
                return true;
        }
    }
    return false;
}

TEST(InstalledPackage, ThreeLineProgramBuildsAgainstItAndShowsItsGraph)
{
    const TemporaryFolder folder;
    const std::string prefix = folder.path("prefix");
    const std::string build = folder.path("build");
    ASSERT_TRUE(succeeds({"cmake", "--install", TOLV_BINARY_DIR, "--prefix", prefix}));
    ASSERT_TRUE(succeeds({"cmake", "-S", TOLV_SOURCE_DIR "/examples/qt-minimal", "-B", build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release", "-DCMAKE_PREFIX_PATH=" + prefix,
        "-DCMAKE_CXX_COMPILER=" TOLV_COMPILER, "-DCMAKE_CXX_FLAGS=" TOLV_SANITIZE_FLAGS}));
    ASSERT_TRUE(succeeds({"cmake", "--build", build}));
    if (QGuiApplication::platformName() != "xcb")
        GTEST_SKIP() << "no display server is installed: the program was built and not run";
    QProcess program;
    program.start(QString::fromStdString(build + "/qt-minimal"), QStringList());
    // The blue of a first series is on the screen, where nothing else is.
    const bool isShown = waitUntil([&] {
        const QImage screen = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
        return program.state() != QProcess::Starting && hasColor(screen, QColor(0x00, 0x72, 0xB2));
    });
    EXPECT_TRUE(isShown) << program.readAllStandardError().toStdString();
    EXPECT_EQ(program.state(), QProcess::Running);
    program.kill();
    program.waitForFinished();
}

#ifdef TOLV_HAS_OPENGL
TEST(InstalledPackage, OpenGLComponentStandsOnTheCoreAlone)
{
    const TemporaryFolder folder;
    const std::string prefix = folder.path("prefix");
    const std::string build = folder.path("build");
    folder.write("CMakeLists.txt",
        "cmake_minimum_required(VERSION 3.25)\n"
        "project(client LANGUAGES CXX)\n"
        "find_package(TOLVGraphing REQUIRED COMPONENTS OpenGL)\n"
        "add_executable(client main.cpp)\n"
        "target_link_libraries(client PRIVATE TOLVGraphing::OpenGL)\n");
    folder.write("main.cpp",
        "#include <TOLVGraphing/opengl/StringTexture.h>\n"
        "#include <opengl/EpoxyOpenGLSystem.h>\n"
        "#include <fstream>\n"
        "int main()\n"
        "{\n"
        "    TOLVGraphing::installEpoxyOpenGLSystem();\n"
        "    TOLVGraphing::StringTexture(TOLVGraphing::AttributedString(\"text\")).drawAtPoint({});\n"
        "    std::ifstream maps(\"/proc/self/maps\");\n"
        "    for (std::string line; std::getline(maps, line);) {\n"
        "        if (line.find(\"libEGL\") != std::string::npos || line.find(\"libGL\") != std::string::npos)\n"
        "            return 3;\n"
        "    }\n"
        "}\n");
    ASSERT_TRUE(succeeds({"cmake", "--install", TOLV_BINARY_DIR, "--prefix", prefix}));
    ASSERT_TRUE(succeeds({"cmake", "-S", folder.path(), "-B", build, "-G", "Ninja", "-DCMAKE_PREFIX_PATH=" + prefix, "-DCMAKE_CXX_COMPILER=" TOLV_COMPILER,
        "-DCMAKE_CXX_FLAGS=" TOLV_SANITIZE_FLAGS}));
    ASSERT_TRUE(succeeds({"cmake", "--build", build}));
    // No context is current: the program says so and loads neither EGL nor GLX for that.
    const ProcessResult result = runProcess({build + "/client"});
    EXPECT_EQ(result.status, 0) << result.text();
    EXPECT_EQ(result.error, "StringTexture -genTexture: Failure to get current OpenGL context\n");
}
#endif

} // namespace
