#pragma once

#include "Options.h"

#include <desktop/input/SeriesSelection.h>

#include <TOLVGraphing/views/GraphSheet.h>

#include <string>
#include <vector>

namespace TOLVGraphing::app {

/// The series of one file.
struct FileSeries {
    std::string file;
    input::SeriesSelection selection;
};

/// Makes the graph and its legend that the options ask for. Throws UsageError when a range or a marker cannot be understood with these data. `notes` receives sentences that the user should read.
[[nodiscard]] GraphSheet buildSheet(const std::vector<FileSeries>& files, const Options& options, std::vector<std::string>& notes);

} // namespace TOLVGraphing::app
