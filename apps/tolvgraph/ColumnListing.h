#pragma once

#include <desktop/input/MeasurementTable.h>

#include <string>

namespace TOLVGraphing::app {

/// The table's source and format and, a line each, its columns: number, name, unit, kind, rows, gaps and the range of the values. A column of dates says from which day on it counts.
[[nodiscard]] std::string columnListing(const input::MeasurementTable& table);

} // namespace TOLVGraphing::app
