#pragma once

#include "FuzzTarget.h"

#include <desktop/input/MeasurementError.h>
#include <desktop/input/MeasurementTable.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <string>

namespace TOLVGraphing::fuzzing {

/// The same number, bit for bit; any gap is any other.
[[nodiscard]] inline bool areSame(float one, float other)
{
    return (std::isnan(one) && std::isnan(other)) || std::bit_cast<std::uint32_t>(one) == std::bit_cast<std::uint32_t>(other);
}

/// What is promised of every table, whatever it was read from.
inline void requireSoundTable(const input::MeasurementTable& table)
{
    require(!table.columns.empty() && table.rowCount() > 0, "a table has a column and a row");
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const input::MeasurementColumn& column = table.columns[i];
        require(column.number == i + 1, "columns are numbered");
        require(column.values.size() == table.rowCount(), "columns are equally long");
        require(column.texts.empty() || column.texts.size() == table.rowCount(), "texts that are kept are as many as the rows");
        const auto gaps = std::count_if(column.values.begin(), column.values.end(), [](float value) { return std::isnan(value); });
        require(column.gapCount == static_cast<std::size_t>(gaps), "gaps are counted");
        require(column.wordCount <= column.gapCount, "every counted word is a gap");
    }
    require((table.shortRowCount == 0) == (table.firstShortLine == 0) && (table.longRowCount == 0) == (table.firstLongLine == 0), "ragged rows have a line");
    require(table.shortRowCount <= table.rowCount() && table.longRowCount <= table.rowCount(), "only rows are ragged");
}

/// What is promised of the error of a file with this many line ends.
inline void requireClearError(const input::MeasurementError& error, const std::string& path, std::size_t lineEnds)
{
    const std::string line = error.line() > 0 ? ":" + std::to_string(error.line()) : "";
    require(std::string(error.what()).starts_with(path + line + ": ") && error.file() == path, "an error names the file and the line");
    require(error.line() <= lineEnds + 1, "the line is one of the file");
    require(!error.found().empty() && error.expected().starts_with("expected "), "an error says what was found and what was expected");
}

} // namespace TOLVGraphing::fuzzing
