#pragma once

#include <desktop/input/SeriesSelection.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace TOLVGraphing::input {
class MappedFile;
}

namespace TOLVGraphing::app {

/// The series of one file.
struct FileSeries {
    std::string file;
    input::SeriesSelection selection;
    /// Where samples are used as they lie in the file; null where all are in memory.
    std::shared_ptr<const input::MappedFile> mappedFile = nullptr;
};

/// What the abscissae are counted from, in days since 1970-01-01, where all of them are dates; nothing otherwise. The files of a graph have one origin.
[[nodiscard]] std::optional<double> dateOriginOf(const std::vector<FileSeries>& files);

/// Throws MeasurementError, which names the file, where one has become shorter since it was read or could not be read on: zeros may stand in for its samples then.
void requireWholeFiles(const std::vector<FileSeries>& files);

} // namespace TOLVGraphing::app
