#include "TemporaryFiles.h"

#include "AtomicFile.h"

#include <tests/desktop/TemporaryFolder.h>

#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing::ElementsAre;
using testing_support::TemporaryFolder;

class TemporaryFilesTest : public testing::Test {
protected:
    // A new start of the program would leave its own folder behind.
    TemporaryFilesTest()
    {
        GTEST_FLAG_SET(death_test_style, "fast");
        // A shell starts what runs in its background with some of them ignored.
        for (const int signal : {SIGHUP, SIGINT, SIGTERM})
            std::signal(signal, SIG_DFL);
    }

    [[nodiscard]] std::string path(const std::string& name) const { return m_folder.path(name); }

    TemporaryFolder m_folder;
};

void write(AtomicFile& file)
{
    const std::vector<std::byte> bytes(200000);
    file.write(bytes);
}

/// Sends a signal to this process while a file is being written.
void endWhileWriting(const std::string& path, int signal)
{
    AtomicFile file(path);
    write(file);
    ::raise(signal);
    file.commit();
}

TEST_F(TemporaryFilesTest, goWithTheSignalThatEndsTheProgram)
{
    m_folder.write("old", "old");
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
        EXPECT_EXIT((removeTemporaryFilesAtSignals(), endWhileWriting(path("old"), signal)), testing::KilledBySignal(signal), "");
        EXPECT_THAT(m_folder.names(), ElementsAre("old"));
        EXPECT_EQ(m_folder.read("old"), "old");
    }
}

TEST_F(TemporaryFilesTest, ofSeveralFilesAllGo)
{
    const auto writeSeveral = [this] {
        removeTemporaryFilesAtSignals();
        std::vector<std::unique_ptr<AtomicFile>> files;
        for (int i = 0; i < 60; ++i) {
            files.push_back(std::make_unique<AtomicFile>(path(std::to_string(i))));
            write(*files.back());
        }
        files[7]->commit();
        files.erase(files.begin() + 3);
        ::raise(SIGTERM);
    };
    EXPECT_EXIT(writeSeveral(), testing::KilledBySignal(SIGTERM), "");
    EXPECT_THAT(m_folder.names(), ElementsAre("7")) << "which was finished";
}

TEST_F(TemporaryFilesTest, beyondThoseThatAreRememberedFilesAreWrittenAllTheSame)
{
    std::vector<std::unique_ptr<AtomicFile>> files;
    for (int i = 0; i < 70; ++i) {
        files.push_back(std::make_unique<AtomicFile>(path(std::to_string(i))));
        write(*files.back());
    }
    for (const auto& file : files)
        file->commit();
    EXPECT_EQ(m_folder.names().size(), 70U);
}

TEST_F(TemporaryFilesTest, aSignalWithoutTheRequestLeavesThem)
{
    EXPECT_EXIT(endWhileWriting(path("old"), SIGTERM), testing::KilledBySignal(SIGTERM), "");
    EXPECT_EQ(m_folder.names().size(), 1U) << "otherwise the other tests show nothing";
}

TEST_F(TemporaryFilesTest, ignoredSignalsStayIgnored)
{
    const auto goOn = [this] {
        std::signal(SIGHUP, SIG_IGN);
        removeTemporaryFilesAtSignals();
        endWhileWriting(path("new"), SIGHUP);
        std::_Exit(0);
    };
    EXPECT_EXIT(goOn(), testing::ExitedWithCode(0), "");
    EXPECT_THAT(m_folder.names(), ElementsAre("new"));
    EXPECT_EQ(m_folder.read("new").size(), 200000U);
}

TEST_F(TemporaryFilesTest, handlersOfAHostStay)
{
    const auto goOn = [this] {
        std::signal(SIGINT, [](int) {});
        removeTemporaryFilesAtSignals();
        endWhileWriting(path("new"), SIGINT);
        std::_Exit(0);
    };
    EXPECT_EXIT(goOn(), testing::ExitedWithCode(0), "");
    EXPECT_THAT(m_folder.names(), ElementsAre("new"));
}

} // namespace
} // namespace TOLVGraphing
