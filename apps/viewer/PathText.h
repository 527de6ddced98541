#pragma once

#include <string>

namespace TOLVGraphing::app {

// File names are bytes; settings and documents hold texts. A name that is UTF-8 without control characters and without "%" is its own text. Other bytes stand as "%" and two hexadecimal digits.

/// UTF-8 in one line.
[[nodiscard]] std::string textOfPath(const std::string& path);
/// What textOfPath() was given. A "%" that no two hexadecimal digits follow stands for itself.
[[nodiscard]] std::string pathOfText(const std::string& text);

} // namespace TOLVGraphing::app
