#pragma once

#include <string>
#include <string_view>

namespace TOLVGraphing::input {

/// Appends a character (at most U+10FFFF) in UTF-8 at `target`, which has room for four bytes. Returns the position behind it.
char* appendUtf8(char* target, unsigned character);

/// Whether the bytes are UTF-8: no cut, overlong or surrogate characters.
[[nodiscard]] bool isUtf8(std::string_view bytes);

/// The text where it is UTF-8; otherwise its bytes are taken for Latin-1 (ISO 8859-1), which older instruments write: `\xB5V` is "µV".
[[nodiscard]] std::string asUtf8(std::string_view bytes);

} // namespace TOLVGraphing::input
