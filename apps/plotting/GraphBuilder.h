#pragma once

#include "FileSeries.h"
#include "Options.h"

#include <TOLVGraphing/views/GraphSheet.h>

#include <string>
#include <vector>

namespace TOLVGraphing::app {

/// Makes the graph and its legend that the options ask for. Throws UsageError when a range or a marker cannot be understood with these data, or when a logarithmic axis has nothing to show. `notes` receives sentences that the user should read.
[[nodiscard]] GraphSheet buildSheet(const std::vector<FileSeries>& files, const Options& options, std::vector<std::string>& notes);

} // namespace TOLVGraphing::app
