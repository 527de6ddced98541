#include "Log.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace TOLVGraphing {
namespace {

TEST(Log, WritesLinesToTheSink)
{
    std::vector<std::string> lines;
    {
        const LogSinkScope scope([&](std::string_view line) { lines.emplace_back(line); });
        writeLog("first");
        writeLog("");
        writeLog("second");
    }
    EXPECT_EQ(lines, (std::vector<std::string>{"first", "", "second"}));
}

TEST(Log, ScopesNestAndRestore)
{
    std::string outerText;
    std::string innerText;
    const LogSinkScope outer([&](std::string_view line) { outerText += line; });
    writeLog("a");
    {
        const LogSinkScope inner([&](std::string_view line) { innerText += line; });
        writeLog("b");
    }
    writeLog("c");
    EXPECT_EQ(outerText, "ac");
    EXPECT_EQ(innerText, "b");
}

TEST(Log, GoesToStandardErrorWithoutASink)
{
    const LogSinkScope scope(nullptr);
    testing::internal::CaptureStderr();
    writeLog("a line");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "a line\n");
}

TEST(Log, CallsTheSinkOneLineAtATime)
{
    int lines = 0;
    const LogSinkScope scope([&](std::string_view) { ++lines; });
    const auto writeMany = [] {
        for (int i = 0; i < 1000; ++i)
            writeLog("line");
    };
    std::thread other(writeMany);
    writeMany();
    other.join();
    EXPECT_EQ(lines, 2000);
}

} // namespace
} // namespace TOLVGraphing
