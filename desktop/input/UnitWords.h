#pragma once

#include <string>
#include <string_view>

namespace TOLVGraphing::input {

/// Whether a word is likely to be the unit of a column: it stands in brackets (`[V]`, `(s)`), or is a well-known unit by name or sign, also
/// with a prefix, a power or as a quotient (`Second`, `mV`, `m/s^2`, `dBV`, `%`).
[[nodiscard]] bool isUnitWord(std::string_view word);

/// The word without the brackets around it: `[V]` is `V`.
[[nodiscard]] std::string withoutBrackets(std::string_view word);

} // namespace TOLVGraphing::input
