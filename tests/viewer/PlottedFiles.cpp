#include "PlottedFiles.h"

#include <apps/plotting/TableSeries.h>
#include <desktop/input/MeasurementReader.h>

namespace TOLVGraphing::testing_support {

std::vector<app::FileSeries> readFiles(const std::vector<std::string>& paths, const app::Options& options)
{
    std::vector<app::FileSeries> files;
    for (const std::string& path : paths)
        files.push_back(app::seriesOfTable(input::readMeasurements(path, app::readSettings(options)), options));
    return files;
}

} // namespace TOLVGraphing::testing_support
