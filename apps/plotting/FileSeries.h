#pragma once

#include <desktop/input/SeriesSelection.h>

#include <string>

namespace TOLVGraphing::app {

/// The series of one file.
struct FileSeries {
    std::string file;
    input::SeriesSelection selection;
};

} // namespace TOLVGraphing::app
