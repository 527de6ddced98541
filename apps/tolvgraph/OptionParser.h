#pragma once

#include <apps/plotting/Options.h>

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace TOLVGraphing::app {

/// Reads the arguments, without the program's name. Answers the options, or the exit status when there is nothing more to do: 0 after --help and --version, 2 after a message about wrong usage.
struct ParsedOptions {
    std::optional<Options> options;
    int status = 0;
};
[[nodiscard]] ParsedOptions parseOptions(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& error);

} // namespace TOLVGraphing::app
