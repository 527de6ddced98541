#pragma once

#include <desktop/input/ReadSettings.h>

#include <chrono>
#include <string>

namespace TOLVGraphing::app {

/// One line on standard error that tells how far the reading of a file has come: only when standard error is a terminal, and only once it has taken longer than a second. The line is wiped out at the end.
class ProgressLine {
public:
    explicit ProgressLine(std::string file);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void update(const input::ReadProgress& progress);

private:
    std::string m_file;
    std::chrono::steady_clock::time_point m_start;
    std::chrono::steady_clock::time_point m_lastUpdate;
    bool m_isTerminal;
    bool m_isShown = false;
};

} // namespace TOLVGraphing::app
