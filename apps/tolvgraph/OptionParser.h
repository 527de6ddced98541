#pragma once

#include <apps/plotting/Options.h>

#include <iosfwd>
#include <optional>

namespace TOLVGraphing::app {

/// Reads the command line. Answers the options, or the exit status when there is nothing more to do: 0 after --help and --version, 2 after a message about wrong usage.
struct ParsedOptions {
    std::optional<Options> options;
    int status = 0;
};
[[nodiscard]] ParsedOptions parseOptions(int argumentCount, const char* const* arguments, std::ostream& out, std::ostream& error);

} // namespace TOLVGraphing::app
