#pragma once

#include <string_view>

namespace TOLVGraphing::input {

/// What a field of a text table is.
enum class FieldKind {
    Empty,  ///< nothing, or a word that stands for nothing: nan, NA, N/A, null (in any case)
    Number, ///< a number; inf and infinity too
    Date,   ///< has the form of a date, see daysOfDate(); the value is NaN where no such day exists
    Word,   ///< anything else
};

struct FieldValue {
    FieldKind kind = FieldKind::Empty;
    /// The number, or the days since 1970-01-01; NaN for the others.
    float value = 0;
    /// Those days before they were rounded to a float; 0 where there is no date.
    double days = 0;
};

/// How numbers are written in a file.
struct NumberStyle {
    char decimalMark = '.';
    /// The other of point and comma is a decimal mark too: no number has shown yet which one it is.
    bool allowsBothMarks = false;

    friend bool operator==(const NumberStyle&, const NumberStyle&) = default;
};

/// What a field is. Blanks around the field must be removed. The byte behind the text must be readable and must not be one that could
/// continue a number (see scanNumber), which a separator, a quote, a line end and NUL cannot.
[[nodiscard]] FieldValue fieldValue(std::string_view text, NumberStyle style);

} // namespace TOLVGraphing::input
