#pragma once

#include <desktop/input/ByteSource.h>
#include <desktop/input/MeasurementTable.h>
#include <desktop/input/ReadSettings.h>

#include <cstdint>

namespace TOLVGraphing::input {

/// Makes the next floats of the source, of the lowest byte first, the values of the table's columns without copying them: `rowCount` for each column, one column after another. The extremes of long columns are taken from
/// the folder of the settings, or found and kept there. Counts the gaps and what it read as progress.
///
/// Answers false, with nothing changed, where the source is not a file of settings.shortestMappedFile bytes, where the floats do not lie at whole multiples of their size, and where the system does not map the file.
/// The source must contain the floats. Throws MeasurementError when the file is cut meanwhile, and ReadingCancelled.
[[nodiscard]] bool mapColumns(ByteSource& source, const ReadSettings& settings, std::uint64_t rowCount, MeasurementTable& table);

} // namespace TOLVGraphing::input
