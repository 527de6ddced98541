#pragma once

#include <desktop/input/ReadSettings.h>
#include <desktop/input/SampleRows.h>

#include <string_view>

namespace TOLVGraphing::input {

/// Finds out how the fields of a text table are separated and how its numbers are written, from the first part of the file.
///
/// Every combination of comma, semicolon, tab and blanks with decimal point and comma is tried (a comma does not do both), and the one
/// wins under which most fields are numbers or dates and the rows have equally many fields, then the one under which a header has as many.
/// Where several do equally well the order is comma, semicolon, tab, blanks, and the point before the comma: a lone `1,5` is two numbers, `1,5;2` is one and a half and two.
/// Separators of thousands are not guessed.
///
/// What `settings` fixes is not looked for. A NUL must stand behind the text.
[[nodiscard]] Dialect detectedDialect(std::string_view sample, const ReadSettings& settings);

} // namespace TOLVGraphing::input
