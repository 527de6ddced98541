#pragma once

#include <desktop/input/ColumnValues.h>
#include <TOLVMath/Export.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TOLVGraphing::input {

/// What the fields of a column are.
enum class ColumnKind {
    Number, ///< at least half of the fields that are not empty are numbers; also a column without any field filled
    Date,   ///< at least nine tenths of the fields that are not empty are dates; the values are days, see MeasurementColumn::values
    Text,   ///< words; numbers among them are still in the values
};

/// The word for a listing: "number", "date" or "text".
[[nodiscard]] TOLV_EXPORT std::string_view columnKindName(ColumnKind kind);

/// One column of a measurement: a name and one float per row. A value. Texts are UTF-8.
struct TOLV_EXPORT MeasurementColumn {
    /// Position in the file, counted from 1.
    std::size_t number = 0;
    /// From the header row; empty where there is none. Two columns may have the same name.
    std::string name;
    /// From the units row, for example "Volt"; without the brackets that may surround it; empty where there is none.
    std::string unit;
    /// Numbers, dates or words.
    ColumnKind kind = ColumnKind::Number;

    /// One value per row, NaN for a gap (an empty or missing field, a word). A number is the float nearest to the decimal text: beyond
    /// the range of float it is an infinity, below it a zero.
    ///
    /// A date is days since `dateOrigin`. A time without an offset counts as UTC.
    ColumnValues values;
    /// Of dates, what their values are counted from: days since 1970-01-01 00:00 UTC, so that a date is `dateOrigin` + value. 0 where every date is a whole day, for which floats are exact for 45,000 years. Where some have a time of day it
    /// is the day of the first one, because floats tell seconds apart for 128 days on either side of their origin only (a step is 5 ms within the first day, 2.6 s after a year). ReadSettings::dateOrigin goes before both. 0 for other kinds.
    double dateOrigin = 0.0;

    /// How many of the values are NaN.
    std::size_t gapCount = 0;
    /// How many of those gaps have a word in the file, in contrast to nothing or "nan".
    std::size_t wordCount = 0;
    /// How many dates differ from the one in the row before in the file but not in the values: their times of day lie closer together than the steps of a float.
    std::size_t mergedDateCount = 0;
    /// The fields as they stand in the file, one per row, without quotes; empty unless ReadSettings asks for this column's texts.
    std::vector<std::string> texts;

    /// The name, or "column N" where there is none.
    [[nodiscard]] std::string displayName() const;
    /// For example `CH1 [Volt] number, 600 rows, 2 gaps, 1 word`.
    [[nodiscard]] std::string text() const;

    /// NaN equals NaN here, because a gap equals a gap.
    friend bool operator==(const MeasurementColumn&, const MeasurementColumn&);
};

/// How a file was read: what a listing of its columns can tell the user. A value.
struct TOLV_EXPORT TableFormat {
    /// For example "delimited text", `npy 1.0 <f8` or "WAV (Microsoft), Signed 16 bit PCM".
    std::string kind;
    /// A comma, a semicolon, a tab or another character; ' ' stands for runs of blanks and tabs. NUL where the file is not text.
    char delimiter = '\0';
    /// '.' or ','.
    char decimalMark = '.';
    /// Rows used for names and units: 0, 1 or 2.
    std::size_t headerRows = 0;
    /// Lines that are neither header nor rows of the table: what stands before it, comments, remarks, blank lines.
    std::size_t skippedLines = 0;

    /// For example `delimited text, comma, decimal point, 1 header row, 16 skipped lines`.
    [[nodiscard]] std::string text() const;

    friend bool operator==(const TableFormat&, const TableFormat&) = default;
};

/// The separator's name for a listing: "comma", "semicolon", "tab", "blanks", otherwise the character itself in quotation marks.
[[nodiscard]] TOLV_EXPORT std::string delimiterName(char delimiter);

/// A measurement file in memory. As a reader makes it, all columns have the same number of rows, and at least one column has at least one value. A value; a table that is made by default is empty.
///
/// The values may be moved out of the columns without a copy (`table.columns[1].values.takeVector()`, or `std::vector<float> values = std::move(table.columns[1].values)` where they are not in a mapped file); rowCount() is
/// then meaningless.
struct TOLV_EXPORT MeasurementTable {
    /// In the order of the file.
    std::vector<MeasurementColumn> columns;
    /// The path as it was given, `-` for standard input.
    std::string sourceName;
    /// Samples per second, where the file states them: a sound file, or a line about the sampling rate before a text table.
    std::optional<double> sampleRate;
    /// How the file was read.
    TableFormat format;
    /// The columns are channels that were sampled together, none of them the time: the row number stands for x unless a column is chosen.
    bool areColumnsChannels = false;

    /// Rows with fewer fields than the table has columns; the missing fields are gaps. The line of the first one, 0 for none.
    std::size_t shortRowCount = 0;
    std::size_t firstShortLine = 0;
    /// Rows with more fields than the table has columns; the surplus is not in the table. The line of the first one, 0 for none.
    std::size_t longRowCount = 0;
    std::size_t firstLongLine = 0;

    /// The mapped file that values are in (shared), to be kept or compared with null: null where all are in memory of their own.
    [[nodiscard]] std::shared_ptr<const MappedFile> mappedFile() const;
    /// 0 for a table without columns.
    [[nodiscard]] std::size_t rowCount() const;
    /// The index (from 0) of the first column whose name, or else whose display name, is this text; nothing where there is none.
    [[nodiscard]] std::optional<std::size_t> indexOfColumn(std::string_view name) const;
    /// The same, or else the index of the column whose number, counted from 1, is this text.
    [[nodiscard]] std::optional<std::size_t> indexOfColumnOrNumber(std::string_view nameOrNumber) const;
    /// The source, the format and one line per column.
    [[nodiscard]] std::string text() const;

    friend bool operator==(const MeasurementTable&, const MeasurementTable&) = default;
};

} // namespace TOLVGraphing::input
