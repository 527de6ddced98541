#pragma once

#include <TOLVMath/Export.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace TOLVGraphing::input {

/// A measurement file that cannot be read, or has not what is asked of it.
///
/// `what()` is one line of text, `FILE:LINE: what was found, what was expected`; `:LINE` is left out where no line is to blame
/// (a missing file, a binary format). Standard input is named `-`.
class TOLV_EXPORT MeasurementError : public std::runtime_error {
public:
    /// `line` counts from 1; 0 means that no line is to blame. `found` and `expected` are parts of a sentence without a full stop.
    MeasurementError(std::string file, std::size_t line, std::string found, std::string expected);

    /// The path as it was given, `-` for standard input.
    [[nodiscard]] const std::string& file() const { return m_file; }
    /// Counted from 1; 0 where no line is to blame.
    [[nodiscard]] std::size_t line() const { return m_line; }
    /// What was found, and what was expected instead: parts of a sentence without a full stop.
    [[nodiscard]] const std::string& found() const { return m_found; }
    [[nodiscard]] const std::string& expected() const { return m_expected; }

private:
    std::string m_file;
    std::size_t m_line = 0;
    std::string m_found;
    std::string m_expected;
};

/// Reading was given up because the progress callback answered false. Not a MeasurementError: nothing is wrong with the file. `what()` reads "FILE: reading was cancelled".
class TOLV_EXPORT ReadingCancelled : public std::runtime_error {
public:
    /// Of the file as it was given.
    explicit ReadingCancelled(const std::string& file);
};

/// The text in single quotation marks, fit for an error message: at most 40 bytes (cut between characters, then "..."), with `?` in place
/// of control characters (U+0000 to U+001F and U+007F to U+009F). The result is UTF-8: bytes that are not are taken for Latin-1 (ISO 8859-1).
[[nodiscard]] TOLV_EXPORT std::string quotedExcerpt(std::string_view text);

} // namespace TOLVGraphing::input
