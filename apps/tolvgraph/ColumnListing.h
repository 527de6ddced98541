#pragma once

#include <desktop/input/MeasurementTable.h>

#include <string>

namespace TOLVGraphing::app {

/// The table's source and format and, a line each, its columns: number, name, unit, kind, rows, gaps and the range of the values. A column of dates says that it counts days since 1970-01-01.
[[nodiscard]] std::string columnListing(const input::MeasurementTable& table);

} // namespace TOLVGraphing::app
