#pragma once

#include <sstream>
#include <string>
#include <vector>

namespace TOLVGraphing::testing_support {

/// The lines of a text, empty ones too, without their newlines; a newline at the end begins no further line.
[[nodiscard]] inline std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

} // namespace TOLVGraphing::testing_support
