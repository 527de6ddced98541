#pragma once

#include <desktop/input/FieldValue.h>
#include <desktop/input/RecordSplitter.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace TOLVGraphing::input {

/// How the fields of a text file are separated and its numbers written.
struct Dialect {
    /// ' ' stands for runs of blanks and tabs.
    char delimiter = ',';
    NumberStyle numberStyle;

    friend bool operator==(const Dialect&, const Dialect&) = default;
};

/// A record of the first part of a text file, as one dialect sees it.
struct SampleRow {
    /// Where the record begins, in bytes from the start of the sample, and on which line, from 1.
    std::size_t offset = 0;
    std::size_t line = 0;
    /// The line starts with a comment mark; the mark is not in the fields.
    bool isComment = false;
    std::vector<FieldText> fields;
    std::vector<FieldKind> kinds;
    /// The number of fields without the empty ones at the end.
    std::size_t width = 0;
    /// How many fields are numbers or dates, and how many are words.
    std::size_t valueCount = 0;
    std::size_t wordCount = 0;

    [[nodiscard]] FieldKind kindAt(std::size_t column) const { return column < kinds.size() ? kinds[column] : FieldKind::Empty; }
    /// Has fields, and all of them are empty.
    [[nodiscard]] bool isAllEmpty() const { return width == 0 && !fields.empty(); }
    /// A blank line.
    [[nodiscard]] bool isBlank() const { return fields.empty(); }
};

/// How long the comment mark at `position` is, 0 for none: `#`, `%`, `//`, `*`, and `;` where it does not separate the fields, behind
/// blanks. The text must end in a NUL or a line end.
[[nodiscard]] std::size_t commentMarkLength(const char* position, char delimiter);

/// The complete records at the start of `text`, at most `largestCount` of them; ends early at one that cannot be split. A NUL must stand
/// behind the text, and the text must live as long as the rows.
[[nodiscard]] std::vector<SampleRow> sampleRows(std::string_view text, const Dialect& dialect, std::size_t largestCount);

} // namespace TOLVGraphing::input
