#pragma once

#include <desktop/input/MeasurementError.h>
#include <desktop/input/MeasurementTable.h>
#include <desktop/input/ReadSettings.h>
#include <TOLVMath/Export.h>

#include <string>

/// Measurement files as tables, and their columns as series.
namespace TOLVGraphing::input {

/// Reads a measurement file: delimited text, an npy array, a sound file or raw numbers. What becomes of the table, selectSeries() shows:
///
///     ReadSettings settings;
///     settings.extremesFolder = ExtremesFolder::usualFolder();
///     SeriesSelection selection = selectSeries(readMeasurements("scope.csv", settings), ColumnRequest());
///     for (const SelectedSeries& series : selection.series)
///         graph->addGraphData(series.data);
///
/// `path` may be `-` for standard input, from where it stands. Pipes are waited for, and read to their end. The first bytes decide the kind of file, and only where they do not, the letters behind the last
/// point (a file called .npy or .wav that is none is an error); everything else is text. Files called .f32 or .f64 are raw numbers, whatever
/// they start with.
///
/// **Delimited text**: separators comma, semicolon, tab or runs of blanks; decimal point or comma; with or without a header, a row of units, comments (lines that begin with a number sign, a percent sign, an asterisk, two slashes, or with a semicolon where
/// that is not the separator) and any lines before the table. Separator and decimal mark are those under which most fields of the first megabyte (up to 2,000 lines of it where the table begins there) are numbers or dates and the rows
/// have equally many fields; ReadSettings can fix them. Bytes that are not UTF-8 are taken for Latin-1.
/// - Lines end in LF, CR LF or CR. Blank lines and comments are skipped. Fields in quotation marks may hold separators and line ends; a doubled quotation mark is one of the text.
/// - A field that is empty, a word or an impossible date is a gap (NaN). A row of empty fields only is a row of gaps, except at the end of the file, where such rows are dropped. A row with too few fields is filled with gaps and
///   counted; where it has no number at all, it is a remark and skipped. Surplus fields are dropped and counted.
/// - A separator at the end of every line makes no column. Columns beyond the header's names have no name.
/// - Dates are `2012-01`, `2012-01-31`, `2012/01/31` or `31.01.2012`, and behind a full date `12:30`, `12:30:45` or `12:30:45.5`, then nothing (UTC), Z, `+02:00`, `+0200` or `+02`.
/// - Separators of thousands are not understood: `1,234.5` between semicolons is a word.
/// - Files are read in blocks: beside the values a few megabytes of memory are needed.
///
/// **npy arrays**, versions 1.0 to 3.0: one dimension is a table of one column; of two the first counts the rows and the second the columns, in either order of storage. Elements are floats (f2, f4, f8), integers (i1 to i8, u1 to u8) or
/// truth values (b1, as 0 and 1) in either byte order; each becomes the nearest float. Columns have no names.
///
/// **Sound files** (wav, flac, aiff, ogg and what else libsndfile knows): the first column is "time" in seconds, the frame number divided by the sampling rate in double, rounded once to float. One column for each channel follows: named as the
/// file without its suffix for one channel (or "channel 1" from standard input), "left" and "right" for two, otherwise "channel N". Integer samples are scaled to -1 to 1 (exactly, up to 24 bits).
///
/// **Raw numbers**: floats of four bytes in a file called .f32, of eight in one called .f64, the lowest byte first; `settings.channelCount` numbers make a row, one for each channel, whose columns have no names. A pipe cannot be read so.
///
/// May be called from several threads, each with a file of its own; the progress callback is called in the thread that reads.
///
/// Throws MeasurementError where the file is missing, unreadable, a directory, empty, of an unknown binary kind, broken or too large for
/// the memory, and ReadingCancelled where the progress callback answers false.
[[nodiscard]] TOLV_EXPORT MeasurementTable readMeasurements(const std::string& path, const ReadSettings& settings = {});

} // namespace TOLVGraphing::input
