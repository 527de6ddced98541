#pragma once

#include <TOLVMath/Export.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace TOLVGraphing::text {

/// The length in bytes of the well-formed character at the beginning of the bytes, or 0 where none begins. Overlong forms, surrogates and values above U+10FFFF are not well-formed.
[[nodiscard]] TOLV_EXPORT std::size_t utf8CharacterLength(std::string_view bytes);

/// The text as valid UTF-8 without NUL bytes: each byte that begins no well-formed character, and each NUL, becomes U+FFFD.
[[nodiscard]] std::string validUtf8(std::string_view bytes);

} // namespace TOLVGraphing::text
