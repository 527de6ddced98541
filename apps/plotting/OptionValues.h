#pragma once

#include "Options.h"

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace TOLVGraphing::app {

/// A value that an option cannot take, or an option that has to be there. `what()` reads "OPTION: found 'VALUE', expected ..." or "OPTION: found nothing, expected ...".
class UsageError : public std::runtime_error {
public:
    UsageError(const std::string& option, const std::string& found, const std::string& expected);
    /// For an option that was not given.
    UsageError(const std::string& option, const std::string& expected);
};

/// The longest side of a picture in points, that of the largest page of the page formats.
inline constexpr double kLargestSide = 14400.0;
/// The most pixels a point, and the widest line in points.
inline constexpr double kLargestScale = 64.0;
inline constexpr double kLargestThickness = 1000.0;

// Each reads one option's text and throws UsageError, naming the option, when it is not what the option takes.

/// "640x400": width and height in points.
[[nodiscard]] Size parseSize(const std::string& option, const std::string& text);
/// A finite number greater than zero and at most `largest`.
[[nodiscard]] double parsePositive(const std::string& option, const std::string& text, double largest);
/// A whole number from 1 to `most`, in digits.
[[nodiscard]] std::size_t parseCount(const std::string& option, const std::string& text, std::size_t most);
/// "A:B", ":B", "A:" with the ends as texts.
[[nodiscard]] RangeText parseRange(const std::string& option, const std::string& text);
/// Six hexadecimal digits, with or without "#" or "0x" before them.
[[nodiscard]] Color parseColor(const std::string& option, const std::string& text);
[[nodiscard]] LinePattern parsePattern(const std::string& option, const std::string& text);
[[nodiscard]] DrawingKind parseDrawing(const std::string& option, const std::string& text);
[[nodiscard]] AxisKind parseXAxis(const std::string& option, const std::string& text);
/// A scale of numbers: categories are for x.
[[nodiscard]] AxisKind parseYAxis(const std::string& option, const std::string& text);
[[nodiscard]] NumberStyle parseNumberStyle(const std::string& option, const std::string& text);
/// A file name that ends in .json, in letters of any case.
[[nodiscard]] std::string parseLayoutFile(const std::string& option, const std::string& text);
/// "T,L,B,R" in points, not negative.
[[nodiscard]] EdgeInsets parseInsets(const std::string& option, const std::string& text);
/// The parts of a list separated by commas; no part may be empty.
[[nodiscard]] std::vector<std::string> parseList(const std::string& option, const std::string& text);
/// A finite number, or with a `dateOrigin` a date or days since 1970-01-01, as days since that origin (which is in days since 1970-01-01 itself).
[[nodiscard]] double parseNumberOrDate(const std::string& option, const std::string& text, std::optional<double> dateOrigin);
/// The words that the operations above read as these values.
[[nodiscard]] std::string wordFor(LinePattern pattern);
[[nodiscard]] std::string wordFor(DrawingKind drawing);
[[nodiscard]] std::string wordFor(AxisKind axis);
[[nodiscard]] std::string wordFor(NumberStyle style);
/// A finite number.
[[nodiscard]] std::optional<double> numberFromText(const std::string& text);

} // namespace TOLVGraphing::app
