#pragma once

#include <desktop/input/MeasurementTable.h>
#include <TOLVMath/Export.h>

#include <TOLVGraphing/data/TOLVGraphData.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace TOLVGraphing::input {

/// The most rows of a table that is drawn by categories. More is an error: not even the largest sheet, 14,400 points wide, has room for them.
inline constexpr std::size_t kMaximumCategoryCount = 20'000;

/// Which columns of a table become series. A column is named by its name, by its display name ("column 3") or by its number counted from 1; a name goes before a number. A value.
struct ColumnRequest {
    /// The abscissae; "index" stands for the row number counted from 0. Nothing: the first column when the table has others, this one is not words and the columns are not channels, else the row number. With categories also words:
    /// the row number then stands in for them.
    std::optional<std::string> x;
    /// The ordinates, one series each. Empty: every column of numbers but the abscissae and the categories' texts.
    std::vector<std::string> y = {};
    /// Every row is a category, for an axis that gives each the same room.
    bool categories = false;
    /// The column of the categories' texts, "index" for the row number. Nothing: that of x.
    std::optional<std::string> categoryColumn = std::nullopt;
};

/// A series made from two columns. The line style is the library's default, black and 1 point wide; the series' name is the column's, or "column 3" where it has none.
struct SelectedSeries {
    /// New, shared with nobody; never null.
    std::shared_ptr<TOLVGraphData> data;
    /// The ordinates' name and unit as the file states them; empty where it does not.
    std::string name;
    std::string unit;
};

/// The series of one table.
struct SeriesSelection {
    /// In the order of the request, or of the table. Never empty.
    std::vector<SelectedSeries> series;
    /// The abscissae's name and unit as the file states them; the name is "sample" where the row number stands in. With categories those of the column of their texts.
    std::string xName;
    std::string xUnit;
    /// The abscissae are days since `xDateOrigin`, which is itself in days since 1970-01-01: MeasurementColumn::dateOrigin of their column. 0 where they are no dates.
    bool xIsDate = false;
    double xDateOrigin = 0.0;
    /// One text per row where categories were asked for, else none. They are those of the file where the table kept them; otherwise numbers in their shortest form, ISO dates, and empty texts for gaps.
    std::vector<std::string> categoryTexts;
    /// What the user should know about the data: samples left out, left empty or sorted. Each is a sentence without the file's name.
    std::vector<std::string> notes;
};

/// Makes series of a table, whose values are moved out. Samples whose abscissa or ordinate is not a finite number are left out, and where the abscissae do not ascend the samples are sorted by them, because
/// a curve needs both; each is noted. A column that has no samples left is no series. Series of one table share their abscissae where no sample had to be left out. Row numbers are floats as all samples are: exact up to 16,777,216, the nearest
/// ones beyond.
///
/// With categories nothing is left out or sorted, so that sample i of every series belongs to row i: an ordinate that is not a finite number becomes NaN, which is noted. The abscissae are shared by all series; they are
/// the x column's values where these are finite and each is greater than the one before, and the row numbers otherwise.
///
/// Throws MeasurementError when a column does not exist, when one that is asked for or all that could be drawn have no number, when no sample is left, or when there are more categories than kMaximumCategoryCount.
/// The table is not of use any more then.
[[nodiscard]] TOLV_EXPORT SeriesSelection selectSeries(MeasurementTable&& table, const ColumnRequest& request);

/// The index (from 0) of the column that a name or number means. Throws MeasurementError naming the table's columns when there is none.
[[nodiscard]] TOLV_EXPORT std::size_t requireColumn(const MeasurementTable& table, const std::string& nameOrNumber);

} // namespace TOLVGraphing::input
