#include "ProgramStart.h"

#include <desktop/output/TemporaryFiles.h>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace TOLVGraphing::app {

namespace {

/// The way in which nothing can be read from standard input or written to standard output; standard error is the one that may be lost.
constexpr std::array kWays{O_WRONLY, O_RDONLY, O_WRONLY};

} // namespace

void prepareProgram()
{
    removeTemporaryFilesAtSignals();
    for (int descriptor = 0; descriptor < static_cast<int>(kWays.size()); ++descriptor) {
        // A new file gets the lowest free number, and those below are taken.
        if (::fcntl(descriptor, F_GETFD) < 0 && errno == EBADF && ::open("/dev/null", kWays[static_cast<std::size_t>(descriptor)]) < 0)
            return;
    }
}

} // namespace TOLVGraphing::app
