#pragma once

#include <desktop/input/MeasurementTable.h>

#include <TOLVGraphing/data/TOLVGraphData.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace TOLVGraphing::input {

/// Which columns of a table become series. A column is named by its name, by its display name ("column 3") or by its number counted from 1; a name goes before a number.
struct ColumnRequest {
    /// The abscissae; "index" stands for the row number counted from 0. Nothing: the first column when the table has others and this one is not words, else the row number.
    std::optional<std::string> x;
    /// The ordinates, one series each. Empty: every column of numbers but the abscissae.
    std::vector<std::string> y;
};

/// A series made from two columns. The line style is the library's default; the series' name is the column's, or "column 3" where it has none.
struct SelectedSeries {
    std::shared_ptr<TOLVGraphData> data;
    /// The ordinates' name and unit as the file states them; empty where it does not.
    std::string name;
    std::string unit;
};

/// The series of one table.
struct SeriesSelection {
    std::vector<SelectedSeries> series;
    /// The abscissae's name and unit as the file states them; the name is "sample" where the row number stands in.
    std::string xName;
    std::string xUnit;
    /// The abscissae are days since 1970-01-01.
    bool xIsDate = false;
    /// What the user should know about the data: samples left out or sorted. Each is a sentence without the file's name.
    std::vector<std::string> notes;
};

/// Makes series of a table, whose values are moved out. Samples whose abscissa or ordinate is not a finite number are left out, and where the abscissae do not ascend the samples are sorted by them, because
/// a curve needs both; each is noted. Series of one table share their abscissae where no sample had to be left out.
///
/// Throws MeasurementError when a column does not exist, or when no column to draw has a number.
[[nodiscard]] SeriesSelection selectSeries(MeasurementTable&& table, const ColumnRequest& request);

/// The index (from 0) of the column that a name or number means. Throws MeasurementError naming the table's columns when there is none.
[[nodiscard]] std::size_t requireColumn(const MeasurementTable& table, const std::string& nameOrNumber);

} // namespace TOLVGraphing::input
