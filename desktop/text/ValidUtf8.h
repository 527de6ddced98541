#pragma once

#include <string>
#include <string_view>

namespace TOLVGraphing::text {

/// The text as valid UTF-8 without NUL bytes: each byte that begins no well-formed character, and each NUL, becomes U+FFFD.
[[nodiscard]] std::string validUtf8(std::string_view bytes);

} // namespace TOLVGraphing::text
