#pragma once

#include <desktop/input/SeriesSelection.h>

#include <memory>
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

/// Throws MeasurementError, which names the file, where one has become shorter since it was read or could not be read on: zeros may stand in for its samples then.
void requireWholeFiles(const std::vector<FileSeries>& files);

} // namespace TOLVGraphing::app
