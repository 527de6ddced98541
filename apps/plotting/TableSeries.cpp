#include "TableSeries.h"

#include <desktop/input/MappedFile.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

namespace TOLVGraphing::app {

input::ReadSettings readSettingsWithoutTexts(const Options& options)
{
    input::ReadSettings settings;
    settings.channelCount = options.channels;
    // Logarithms need all days to be greater than 0.
    settings.dateOrigin = options.dateOrigin;
    if (!settings.dateOrigin && options.xAxis == AxisKind::Logarithmic)
        settings.dateOrigin = 0.0;
    settings.extremesFolder = input::ExtremesFolder::usualFolder();
    return settings;
}

input::ReadSettings readSettings(const Options& options)
{
    input::ReadSettings settings = readSettingsWithoutTexts(options);
    const std::optional<std::string>& column = options.categoryColumn ? options.categoryColumn : options.x;
    if (!options.hasCategories())
        return settings;
    if (column)
        settings.keptTextColumns.push_back(*column);
    else
        settings.keepsTextsOfFirstColumn = true;
    return settings;
}

FileSeries seriesOfTable(input::MeasurementTable&& table, const Options& options)
{
    std::string file = table.sourceName;
    auto mappedFile = table.mappedFile();
    return {std::move(file), input::selectSeries(std::move(table), {options.x, options.y, options.hasCategories(), options.categoryColumn}), std::move(mappedFile)};
}

void keepDateOrigin(const FileSeries& file, Options& options)
{
    if (file.selection.xIsDate && !options.dateOrigin)
        options.dateOrigin = file.selection.xDateOrigin;
}

std::optional<double> dateOriginOf(const std::vector<FileSeries>& files)
{
    const bool areDates = !files.empty() && std::all_of(files.begin(), files.end(), [](const FileSeries& file) { return file.selection.xIsDate; });
    return areDates ? std::optional(files.front().selection.xDateOrigin) : std::nullopt;
}

void requireWholeFiles(const std::vector<FileSeries>& files)
{
    for (const FileSeries& series : files) {
        if (series.mappedFile)
            series.mappedFile->requireAllBytes(series.file);
    }
}

std::vector<std::string> notesOnRaggedRows(const input::MeasurementTable& table)
{
    const auto rows = [](std::size_t count) { return std::to_string(count) + (count == 1 ? " row" : " rows"); };
    std::vector<std::string> notes;
    if (table.shortRowCount > 0)
        notes.push_back(table.sourceName + ":" + std::to_string(table.firstShortLine) + ": " + rows(table.shortRowCount) + " with fields missing, which are gaps");
    if (table.longRowCount > 0)
        notes.push_back(table.sourceName + ":" + std::to_string(table.firstLongLine) + ": " + rows(table.longRowCount) + " with more fields than columns, which are ignored");
    return notes;
}

} // namespace TOLVGraphing::app
