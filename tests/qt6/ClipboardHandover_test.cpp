// What can be pasted when the program that copied has ended: everything where a clipboard manager runs, nothing where none does.

#include "Pasting.h"
#include "WidgetSetup.h"

#include <tests/desktop/ExampleView.h>
#include <tests/desktop/OtherRenderers.h>
#include <tests/desktop/Process.h>
#include <tests/desktop/TemporaryFolder.h>

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/foundation/Log.h>
#include <TOLVGraphing/views/TOLVGraphView.h>
#include <hosts/qt6/ClipboardHandover.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QProcess>
#include <QTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <signal.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// A clipboard manager on the tests' display, for the life of the object.
class Manager {
public:
    explicit Manager(const QStringList& arguments)
    {
        m_process.start(TOLV_CLIPBOARD_MANAGER, arguments);
        waitUntil([this] { return m_process.canReadLine() || m_process.state() == QProcess::NotRunning; });
        m_isReady = m_process.readLine() == "ready\n";
    }
    ~Manager()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    Manager(const Manager&) = delete;
    Manager& operator=(const Manager&) = delete;

    [[nodiscard]] bool isReady() const { return m_isReady; }
    /// It is there and answers nothing any more.
    void stop() const { ::kill(static_cast<pid_t>(m_process.processId()), SIGSTOP); }

private:
    QProcess m_process;
    bool m_isReady = false;
};

/// Runs the program that copies to its end, as another program on the display.
testing::AssertionResult copiesAndEnds(const QStringList& arguments = {})
{
    QProcess program;
    program.start(TOLV_COPYING_PROGRAM, arguments);
    const bool hasEnded = waitUntil([&] { return program.state() == QProcess::NotRunning; }, std::chrono::seconds(60));
    const std::string said = program.readAllStandardOutput().toStdString() + program.readAllStandardError().toStdString();
    if (!hasEnded)
        program.kill();
    program.waitForFinished();
    const bool isGood = hasEnded && program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0 && said == "copied\n";
    return isGood ? testing::AssertionSuccess() : testing::AssertionFailure() << said;
}

class ClipboardHandover : public testing::Test {
protected:
    void SetUp() override
    {
        if (QGuiApplication::platformName() != "xcb")
            GTEST_SKIP() << "no display server is installed";
        TOLV_REQUIRE_PROGRAM("xclip");
    }

    TemporaryFolder m_folder;
};

/// With managers that ask for one type after the other and with those that ask for all at once.
class ClipboardHandoverTo : public ClipboardHandover, public testing::WithParamInterface<const char*> {
protected:
    [[nodiscard]] static QStringList managerArguments() { return *GetParam() ? QStringList(GetParam()) : QStringList(); }
};

TEST_F(ClipboardHandover, WithoutManagerTheContentsEndWithTheProgram)
{
    QGuiApplication::clipboard()->setText("before");
    EXPECT_TRUE(copiesAndEnds());
    EXPECT_EQ(pasted("TARGETS"), "");
    EXPECT_EQ(pasted("application/pdf"), "");
    EXPECT_EQ(pasted("text/plain"), "");
}

TEST_P(ClipboardHandoverTo, EveryTypeOutlivesTheProgram)
{
    const Manager manager(managerArguments());
    ASSERT_TRUE(manager.isReady());
    ASSERT_TRUE(copiesAndEnds());
    const struct {
        const char* type;
        const char* start;
    } kCases[] = {
        // clang-format off
        {"application/pdf",          "%PDF-"                  },
        {"application/postscript",   "%!PS-Adobe-3.0 EPSF-3.0"},
        {"image/tiff",               "II*"                    },
        {"image/x-eps",              "%!PS-Adobe-3.0 EPSF-3.0"},
        {"image/svg+xml",            "<?xml"                  },
        {"image/png",                "\x89PNG\r\n\x1A\n"      },
        {"text/plain;charset=utf-8", "x\tone\tx\ttwo\n"       },
        {"text/plain",               "x\tone\tx\ttwo\n"       },
        {"UTF8_STRING",              "x\tone\tx\ttwo\n"       },
        // clang-format on
    };
    for (const auto& [type, start] : kCases)
        EXPECT_THAT(pasted(type), StartsWith(start)) << type;
}

TEST_P(ClipboardHandoverTo, WhatOutlivesTheProgramIsWhole)
{
    const Manager manager(managerArguments());
    ASSERT_TRUE(manager.isReady());
    ASSERT_TRUE(copiesAndEnds());
    TOLV_REQUIRE_PROGRAM("pdftotext");
    EXPECT_THAT(runProcess({"pdftotext", "-raw", m_folder.write("pasted.pdf", pasted("application/pdf")), "-"}).output, HasSubstr("Time (s)"));
    EXPECT_THAT(pasted("image/svg+xml"), EndsWith("</svg>\n"));
    const Pixels image = pixelsOfPNGFile(m_folder.write("pasted.png", pasted("image/png")));
    EXPECT_EQ(image.width, 1224);
    EXPECT_EQ(image.height, 792);
    EXPECT_EQ(pasted("text/plain"), tabSeparatedData(exampleView({0.0, 0.0, 612.0, 396.0})->graph()->graphData()));
}

TEST_P(ClipboardHandoverTo, ContentsLongerThanOneMessageToTheDisplayOutliveTheProgramToo)
{
    const Manager manager(managerArguments());
    ASSERT_TRUE(manager.isReady());
    ASSERT_TRUE(copiesAndEnds({"--samples", "1000000"}));
    const std::string text = pasted("text/plain;charset=utf-8");
    // A message to the display has at most 16 MiB.
    EXPECT_GT(text.size(), 16U << 20);
    EXPECT_THAT(text.substr(0, 40), StartsWith("x\tone\tx\ttwo\tx\tlong\n"));
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1'000'001);
    EXPECT_EQ(text.substr(text.rfind('\n', text.size() - 2)), "\n\t\t\t\t9.9999895\t0.9990001\n");
    EXPECT_EQ(pasted("application/pdf").substr(0, 5), "%PDF-");
    EXPECT_THAT(pasted("image/svg+xml"), EndsWith("</svg>\n"));
}

TEST_F(ClipboardHandover, AManagerThatHangsIsGivenUp)
{
    const Manager manager({});
    ASSERT_TRUE(manager.isReady());
    QGuiApplication::clipboard()->setText("kept");
    manager.stop();
    std::vector<std::string> log;
    const LogSinkScope sink([&](std::string_view line) { log.emplace_back(line); });
    EXPECT_FALSE(handClipboardOver(std::chrono::milliseconds(200)));
    EXPECT_EQ(log, std::vector<std::string>{"the clipboard manager did not answer: what was copied may end with the program"});
}

TEST_F(ClipboardHandover, AManagerThatGoesAwayMeanwhileIsGivenUp)
{
    std::optional<Manager> manager(std::in_place, QStringList());
    ASSERT_TRUE(manager->isReady());
    QGuiApplication::clipboard()->setText("kept");
    manager->stop();
    QTimer::singleShot(50, qGuiApp, [&] { manager.reset(); });
    const LogSinkScope silence([](std::string_view) {});
    EXPECT_FALSE(handClipboardOver(std::chrono::milliseconds(300)));
    EXPECT_FALSE(manager);
    EXPECT_FALSE(handClipboardOver(std::chrono::milliseconds(300))) << "where no manager is any more";
}

TEST_F(ClipboardHandover, ProgramsThatPasteMayEndInTheMiddle)
{
    // Longer than one message to the display, so that it goes in pieces.
    const QString contents(24 << 20, QLatin1Char('x'));
    QGuiApplication::clipboard()->setText(contents);
    for (int i = 0; i < 3; ++i) {
        QProcess xclip;
        xclip.start("xclip", {"-selection", "clipboard", "-out", "-target", "UTF8_STRING"});
        ASSERT_TRUE(waitUntil([&] { return xclip.state() != QProcess::Starting && (i == 0 || xclip.bytesAvailable() > 0); }));
        xclip.kill();
        xclip.waitForFinished();
    }
    EXPECT_EQ(pasted("UTF8_STRING").size(), static_cast<std::size_t>(contents.size()));
    QGuiApplication::clipboard()->setText("short");
    EXPECT_EQ(pasted("UTF8_STRING"), "short");
}

TEST_F(ClipboardHandover, AnOwnerThatHasGoneLeavesNothingAndIsNotWaitedFor)
{
    QProcess program;
    program.start(TOLV_COPYING_PROGRAM, {"--stay"});
    ASSERT_TRUE(waitUntil([&] { return program.canReadLine(); }));
    ASSERT_TRUE(QGuiApplication::clipboard()->mimeData()->hasFormat("application/pdf"));
    program.kill();
    program.waitForFinished();
    const QMimeData* left = QGuiApplication::clipboard()->mimeData();
    EXPECT_EQ(left ? left->data("application/pdf").size() : 0, 0);
    EXPECT_FALSE(handClipboardOver(std::chrono::milliseconds(200)));
}

INSTANTIATE_TEST_SUITE_P(Managers, ClipboardHandoverTo, testing::Values("", "--at-once"), [](const auto& each) { return std::string(*each.param ? "AtOnce" : "OneByOne"); });

} // namespace
