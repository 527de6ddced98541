#pragma once

#include <desktop/input/ExtremesFolder.h>
#include <TOLVMath/Export.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace TOLVGraphing::input {

/// The largest number of columns of any file. More is an error.
inline constexpr std::size_t kMaximumColumnCount = 16384;
/// The longest field of a text file, in bytes. More is an error.
inline constexpr std::size_t kMaximumFieldLength = std::size_t{1} << 20;
/// The longest line of a text file, in bytes. More is an error.
inline constexpr std::size_t kMaximumLineLength = std::size_t{16} << 20;

/// The largest number of channels side by side in a file of raw numbers. More is an error.
inline constexpr std::size_t kMaximumChannelCount = 1024;

/// The most bytes from a pipe or device, which need not have an end. More is an error.
inline constexpr std::uint64_t kMaximumPipedBytes = std::uint64_t{1} << 30;
/// The most samples of a sound file, its times counted too, whose bytes are too few for them otherwise: silence can be compressed beyond all bounds. Longer sounds may have kMaximumSoundValuesPerByte for each byte of the file. More is
/// an error.
inline constexpr std::uint64_t kMaximumSoundValues = std::uint64_t{1} << 28;
inline constexpr std::uint64_t kMaximumSoundValuesPerByte = 64;

/// How far reading has come. A value.
struct ReadProgress {
    /// Bytes of the file that have been used.
    std::uint64_t bytesRead = 0;
    /// The file's length in bytes; nothing where it is not known beforehand: a pipe, a terminal.
    std::optional<std::uint64_t> totalBytes;

    friend bool operator==(const ReadProgress&, const ReadProgress&) = default;
};

/// How to read a measurement file. A default-made value detects everything. A value. Settings that cannot be are told as a MeasurementError when a file is read that they hold for.
struct ReadSettings {
    /// The field separator of a text file: a punctuation mark that is no part of numbers, a tab, or ' ' for runs of blanks and tabs. Detected among `,` `;` tab and blanks where absent.
    std::optional<char> delimiter;
    /// '.' or ','. Detected where absent; never a comma where the comma separates the fields.
    std::optional<char> decimalMark;
    /// 0: the first line is a row of the table; 1: it has the names; 2: a line of units follows. Where absent, the table and its header
    /// are looked for, whatever stands before them.
    std::optional<std::size_t> headerRows;
    /// This many lines at the start of a text file are not looked at. No more lines in the file is an error.
    std::size_t skippedLines = 0;

    /// Names, display names ("column 3") or numbers counted from 1 of the columns whose field texts are kept, see MeasurementColumn::texts; a
    /// name goes before a number. What does not exist is no error. Keeping texts costs 32 bytes and more per row. Only text files have texts.
    std::vector<std::string> keptTextColumns;
    /// Keeps the texts of the first column.
    bool keepsTextsOfFirstColumn = false;
    /// Keeps the texts of every column whose first rows are words.
    bool keepsTextsOfTextColumns = false;

    /// Where the values of dates are counted from, in days since 1970-01-01, for every column of dates; see MeasurementColumn::dateOrigin. Each column has its own where absent or not finite. Files of one graph need the same.
    std::optional<double> dateOrigin;

    /// Channels side by side in a file of raw numbers, 1 to kMaximumChannelCount. Other files say themselves.
    std::size_t channelCount = 1;
    /// Files of at least this many bytes are mapped, where their columns can be used as they lie there, and stay mapped as long as the values are used; shorter ones are read, so that nothing can happen to them any more.
    std::uint64_t shortestMappedFile = std::uint64_t{4} << 20;
    /// Where the extremes of mapped columns are kept from one reading to the next. Nothing: nowhere.
    std::optional<ExtremesFolder> extremesFolder;

    /// Limits for what the length of a file does not bound: see kMaximumPipedBytes and kMaximumSoundValues.
    std::uint64_t mostPipedBytes = kMaximumPipedBytes;
    std::uint64_t mostSoundValues = kMaximumSoundValues;

    /// Called about every 4 MiB from the reading thread, and once at the end; false cancels by ReadingCancelled, and what it throws ends the reading likewise. Empty for none.
    std::function<bool(const ReadProgress&)> progress;
};

} // namespace TOLVGraphing::input
