#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace TOLVGraphing::plist {

// The text forms of single values in an XML property list. Each answers nothing when the text is something else. Space around a number or a date is passed over.

/// A decimal number of 64 bits with an optional sign.
[[nodiscard]] std::optional<std::int64_t> wholeNumberFromText(std::string_view text);
/// A decimal number, rounded once to the nearest double, or nan, inf, infinity with an optional sign.
[[nodiscard]] std::optional<double> numberFromText(std::string_view text);
/// Base64 with white space anywhere.
[[nodiscard]] std::optional<std::string> bytesFromBase64(std::string_view text);
/// Seconds from the start of 2001 to a date such as 2013-03-18T09:30:00Z; nothing when they do not fit into 32 bits.
[[nodiscard]] std::optional<std::int32_t> secondsFromDate(std::string_view text);

/// True when the bytes are well-formed UTF-8 without a zero character, which is what a property list can keep.
[[nodiscard]] bool isStorableText(std::string_view text);
/// The first characters of a text for an error, at most 40 bytes and never a part of a character.
[[nodiscard]] std::string_view beginningOf(std::string_view text);

/// Base64 in one line.
[[nodiscard]] std::string base64FromBytes(std::string_view bytes);
/// Appends the character in UTF-8. False, and nothing appended, for zero, surrogates and numbers beyond Unicode.
bool appendCodePoint(std::string& text, std::uint32_t code);

} // namespace TOLVGraphing::plist
