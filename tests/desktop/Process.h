#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace TOLVGraphing::testing_support {

/// What surrounds a program while it runs.
struct ProcessSurroundings {
    /// What the program reads from standard input; nothing gives it an empty file.
    std::optional<std::string> input;
    /// Standard input comes this much after the start.
    std::chrono::milliseconds inputDelay{0};
    /// Standard output goes to this file or device instead of into the result. Empty collects it.
    std::string outputFile;
    /// Standard error is a terminal, whose output is collected all the same.
    bool errorIsTerminal = false;
    /// The folder that the program starts in; empty for this one's.
    std::string folder;
    /// The program gives up root's privileges, to which no permission applies. Nothing happens where there are none.
    bool withoutPrivileges = false;
    /// No file grows beyond this many bytes: writing more fails as on a full disk. 0 for no limit.
    unsigned long fileSizeLimit = 0;
    /// Called once with the program's process, soon after its start. What the program writes meanwhile has to fit into a pipe.
    std::function<void(pid_t process)> whileRunning;
    /// A program that takes longer is ended.
    std::chrono::seconds timeout{60};
};

/// How a program ended and what it said.
struct ProcessResult {
    /// The exit status; -1 when a signal ended the program.
    int status = -1;
    /// The signal that ended the program, or 0.
    int signal = 0;
    bool timedOut = false;
    std::string output;
    std::string error;

    /// For messages of failed tests: status, signal and both outputs.
    [[nodiscard]] std::string text() const;
};

/// Runs a program, found on the PATH when its name has no slash, without a shell in between, and waits for its end. Throws std::runtime_error when it cannot be started.
[[nodiscard]] ProcessResult runProcess(const std::vector<std::string>& arguments, const ProcessSurroundings& surroundings = {});

/// True when a program of this name is on the PATH.
[[nodiscard]] bool hasProgram(const std::string& name);

} // namespace TOLVGraphing::testing_support

/// Leaves the test with a line that names the program, where it is not installed.
#define TOLV_REQUIRE_PROGRAM(name)                                                                                                                                                 \
    do {                                                                                                                                                                           \
        if (!TOLVGraphing::testing_support::hasProgram(name))                                                                                                                      \
            GTEST_SKIP() << "the program " << (name) << " is not installed";                                                                                                       \
    } while (false)
