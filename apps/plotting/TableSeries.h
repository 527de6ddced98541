#pragma once

#include "FileSeries.h"
#include "Options.h"

#include <desktop/input/MeasurementTable.h>
#include <desktop/input/ReadSettings.h>

#include <string>
#include <vector>

namespace TOLVGraphing::app {

// From a file to its series, as the options choose columns.

/// How to read a file whose columns are to be listed. What is learned of long columns is kept in the user's folder for such things.
[[nodiscard]] input::ReadSettings readSettingsWithoutTexts(const Options& options);
/// How to read a file for a graph. The texts that become categories are kept while reading; other texts only cost memory.
[[nodiscard]] input::ReadSettings readSettings(const Options& options);

/// The series of a table that was read with those settings. The file is named as the table's source. Throws MeasurementError where the columns asked for do not exist or have nothing to draw.
[[nodiscard]] FileSeries seriesOfTable(input::MeasurementTable&& table, const Options& options);

/// The dates of other files, and of these when they are read again, are counted from where the dates of this one are, if it is the first with dates.
void keepDateOrigin(const FileSeries& file, Options& options);

/// Rows that are longer or shorter than the others are worth a word each: the file may be broken there. The sentences begin with the table's source.
[[nodiscard]] std::vector<std::string> notesOnRaggedRows(const input::MeasurementTable& table);

} // namespace TOLVGraphing::app
