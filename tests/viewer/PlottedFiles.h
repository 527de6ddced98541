#pragma once

#include "../desktop/TemporaryFolder.h"

#include <apps/plotting/FileSeries.h>
#include <apps/plotting/Options.h>

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing::testing_support {

/// Reads measurement files for a graph with these options, as the programs do.
[[nodiscard]] std::vector<app::FileSeries> readFiles(const std::vector<std::string>& paths, const app::Options& options);

/// A test with a folder of its own for measurements.
class PlottedFiles {
public:
    /// Writes a file and answers its path.
    std::string write(const std::string& name, const std::string& content) const { return m_folder.write(name, content); }
    /// The series of one file, "data.csv", of this content.
    [[nodiscard]] std::vector<app::FileSeries> files(const std::string& content, const app::Options& options) const { return readFiles({write("data.csv", content)}, options); }

    [[nodiscard]] const TemporaryFolder& folder() const { return m_folder; }

private:
    TemporaryFolder m_folder;
};

} // namespace TOLVGraphing::testing_support
