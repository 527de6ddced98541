#pragma once

#include <string>
#include <vector>

namespace TOLVGraphing::testing_support {

/// What xclip, a program of its own, gets from the clipboard when it asks for a type, while this program goes on answering. Empty when there is nothing of the type.
[[nodiscard]] std::string pasted(const std::string& type);

/// The lines of a text that are not empty.
[[nodiscard]] std::vector<std::string> linesOf(const std::string& text);

} // namespace TOLVGraphing::testing_support
