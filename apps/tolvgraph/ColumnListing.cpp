#include "ColumnListing.h"

#include <TOLVGraphing/platform/text/DayDateFormatter.h>
#include <TOLVGraphing/platform/text/NumberText.h>
#include <TOLVMath/ExtremePyramid.h>

#include <cmath>
#include <optional>

namespace TOLVGraphing::app {

namespace {

using input::ColumnKind;
using input::MeasurementColumn;

std::string valueText(float value, const MeasurementColumn& column)
{
    if (column.kind == ColumnKind::Date)
        return DayDateFormatter(column.dateOrigin).stringFromNumber(static_cast<double>(value)).value_or("");
    return shortestText(value);
}

std::string rangeText(const MeasurementColumn& column)
{
    if (const ExtremePyramid* pyramid = column.values.pyramid()) {
        const Extremes& extremes = pyramid->extremes();
        return extremes.areOfNothing() ? std::string() : ", " + valueText(extremes.minimum, column) + " to " + valueText(extremes.maximum, column);
    }
    std::optional<float> low;
    std::optional<float> high;
    for (const float value : column.values) {
        if (std::isnan(value))
            continue;
        if (!low || value < *low)
            low = value;
        if (!high || value > *high)
            high = value;
    }
    return low ? ", " + valueText(*low, column) + " to " + valueText(*high, column) : std::string();
}

std::string columnLine(const MeasurementColumn& column, std::size_t number)
{
    std::string line = "  " + std::to_string(number) + "  " + column.displayName();
    if (!column.unit.empty())
        line += " (" + column.unit + ")";
    line += ": " + std::string(input::columnKindName(column.kind));
    if (column.kind == ColumnKind::Date)
        line += " in days since " + DayDateFormatter().stringFromNumber(column.dateOrigin).value_or("");
    line += ", " + std::to_string(column.values.size()) + (column.values.size() == 1 ? " row" : " rows");
    if (column.gapCount > 0)
        line += ", " + std::to_string(column.gapCount) + (column.gapCount == 1 ? " gap" : " gaps");
    return line + rangeText(column) + "\n";
}

} // namespace

std::string columnListing(const input::MeasurementTable& table)
{
    std::string text = table.sourceName + ": " + table.format.text();
    if (table.sampleRate)
        text += ", " + shortestText(*table.sampleRate) + " samples a second";
    text += "\n";
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        text += columnLine(table.columns[i], i + 1);
    return text;
}

} // namespace TOLVGraphing::app
