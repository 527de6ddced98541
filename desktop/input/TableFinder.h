#pragma once

#include <desktop/input/ReadSettings.h>
#include <desktop/input/SampleRows.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TOLVGraphing::input {

/// Where the table of a text file begins and how its columns are named.
struct TableLayout {
    std::size_t columnCount = 0;
    /// One name and one unit per column; may be empty texts.
    std::vector<std::string> names;
    std::vector<std::string> units;
    /// The first row of the table, in bytes from the start of the sample, and its line, from 1.
    std::size_t dataOffset = 0;
    std::size_t dataLine = 1;
    /// Rows of names and units, and the lines before the table that are neither.
    std::size_t headerRows = 0;
    std::size_t skippedLines = 0;
    /// From a line before the table that mentions the sampling rate, in samples per second.
    std::optional<double> sampleRate;
    /// How many fields the rows have with the empty ones at the end: a column that is empty in the whole sample and has no name is not
    /// counted by columnCount, but may still turn up later.
    std::size_t fieldCount = 0;
    /// Which columns hold words in most of the sampled rows.
    std::vector<bool> isTextColumn;
};

/// Finds the table in the first part of a text file.
///
/// Rows near the end of the sample are taken as patterns of a table row (which columns are numbers, dates, words); the table is the longest
/// stretch up to the end of the sample of which at least half fits the pattern, preferably one below a header; names without their numbers
/// directly below that header belong to it. What stands before it is a title, lines of keys
/// and values, comments, or the header: the nearest row of words with about as many fields as the table. A row of units between the names
/// and the table is told by the words in it. A comment line directly before the table that has one word per column is a header too.
///
/// Nothing where no row of the sample has a number or a date.
///
/// `rows` must come from sampleRows() with the same dialect and sample.
[[nodiscard]] std::optional<TableLayout> foundTable(const std::vector<SampleRow>& rows, const Dialect& dialect, const ReadSettings& settings, std::string_view sample);

} // namespace TOLVGraphing::input
