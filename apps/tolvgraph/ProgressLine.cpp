#include "ProgressLine.h"

#include <unistd.h>

#include <cstdio>
#include <utility>

namespace TOLVGraphing::app {

namespace {

constexpr auto kDelay = std::chrono::seconds(1);
constexpr auto kInterval = std::chrono::milliseconds(100);

} // namespace

ProgressLine::ProgressLine(std::string file) : m_file(std::move(file)), m_start(std::chrono::steady_clock::now()), m_lastUpdate(m_start), m_isTerminal(isatty(STDERR_FILENO) == 1)
{
}

ProgressLine::~ProgressLine()
{
    // Back to the start of the line and clear it.
    if (m_isShown)
        static_cast<void>(std::fputs("\r\033[K", stderr));
}

void ProgressLine::update(const input::ReadProgress& progress)
{
    const auto now = std::chrono::steady_clock::now();
    if (!m_isTerminal || now - m_start < kDelay || (m_isShown && now - m_lastUpdate < kInterval))
        return;
    m_lastUpdate = now;
    m_isShown = true;
    const double megabytes = static_cast<double>(progress.bytesRead) / 1e6;
    if (progress.totalBytes && *progress.totalBytes > 0) {
        const double percent = 100.0 * static_cast<double>(progress.bytesRead) / static_cast<double>(*progress.totalBytes);
        static_cast<void>(std::fprintf(stderr, "\rtolvgraph: reading %s: %.0f %% (%.0f MB)\033[K", m_file.c_str(), percent, megabytes));
    } else {
        static_cast<void>(std::fprintf(stderr, "\rtolvgraph: reading %s: %.0f MB\033[K", m_file.c_str(), megabytes));
    }
    static_cast<void>(std::fflush(stderr));
}

} // namespace TOLVGraphing::app
