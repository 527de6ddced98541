#pragma once

#include <desktop/input/ByteSource.h>
#include <desktop/input/MeasurementTable.h>
#include <desktop/input/ReadSettings.h>

namespace TOLVGraphing::input {

/// Reads a table of text: separators comma, semicolon, tab or runs of blanks; decimal point or comma; with or without a header, a row of
/// units, comments and any lines before the table. See detectedDialect() and foundTable() for what is detected and how; the first
/// megabyte decides (up to 2,000 lines of it where the table begins there).
///
/// - The source is read in blocks, so that the memory is that of the values and a few megabytes. Pipes are read alike.
/// - Lines end in LF, CR LF or CR. Blank lines and lines that start with a comment mark are skipped.
/// - A field that is empty, a word or an impossible date is a gap (NaN). A row of empty fields only is a row of gaps, except at the end of
///   the file, where such rows are dropped. A row with too few fields is filled with gaps and counted; where it has no number at all, it
///   is a remark and skipped. Surplus fields are dropped and counted.
/// - A separator at the end of every line makes no column. Columns beyond the header's names have no name.
/// - Separators of thousands are not understood: `1,234.5` between semicolons is a word.
///
/// Throws MeasurementError, with the line where one is to blame: no table, binary data, a quotation mark that is not closed, too many
/// columns, too long fields or lines, a table of more than 16 million values that is mostly missing fields. Throws ReadingCancelled.
[[nodiscard]] MeasurementTable readDelimitedText(ByteSource& source, const ReadSettings& settings);

} // namespace TOLVGraphing::input
