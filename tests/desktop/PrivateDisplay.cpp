#include "PrivateDisplay.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace TOLVGraphing::testing_support {

namespace {

constexpr const char* kServer = "/usr/bin/Xvfb";
constexpr int kStartPatience = 20000;

/// What the display writes when it is ready: its number and a newline.
std::string readNumber(int descriptor)
{
    std::string number;
    pollfd waiting{descriptor, POLLIN, 0};
    while (::poll(&waiting, 1, kStartPatience) > 0) {
        char character = 0;
        if (::read(descriptor, &character, 1) != 1 || character == '\n')
            break;
        number += character;
    }
    return number;
}

} // namespace

bool PrivateDisplay::isInstalled()
{
    return ::access(kServer, X_OK) == 0;
}

PrivateDisplay::PrivateDisplay()
{
    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return;
    constexpr int kChildEnd = 9;
    // It ends by itself when its last program does, so that a test that is killed leaves none behind.
    std::array<const char*, 10> arguments{kServer, "-displayfd", "9", "-screen", "0", "1600x1200x24", "-nolisten", "tcp", "-terminate", nullptr};
    posix_spawn_file_actions_t files;
    ::posix_spawn_file_actions_init(&files);
    ::posix_spawn_file_actions_adddup2(&files, ends[1], kChildEnd);
    ::posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_adddup2(&files, STDOUT_FILENO, STDERR_FILENO);
    const int error = ::posix_spawn(&m_process, kServer, &files, nullptr, const_cast<char**>(arguments.data()), environ);
    ::posix_spawn_file_actions_destroy(&files);
    ::close(ends[1]);
    if (error != 0)
        m_process = -1;
    const std::string number = m_process > 0 ? readNumber(ends[0]) : "";
    ::close(ends[0]);
    if (!number.empty())
        m_name = ":" + number;
}

PrivateDisplay::~PrivateDisplay()
{
    end();
}

void PrivateDisplay::end()
{
    if (m_process <= 0)
        return;
    ::kill(m_process, SIGTERM);
    while (::waitpid(m_process, nullptr, 0) < 0 && errno == EINTR) {}
    m_process = -1;
}

} // namespace TOLVGraphing::testing_support
