#include "PositiveSamples.h"

#include <desktop/input/MeasurementError.h>

#include <TOLVGraphing/graph/TOLVGraph.h>

#include <algorithm>
#include <cstddef>
#include <span>

namespace TOLVGraphing::app {

namespace {

std::span<const float> valuesOf(const TOLVGraphData::Samples& samples)
{
    return {samples->components(), samples->length()};
}

void include(std::optional<Range>& range, float value)
{
    const auto number = static_cast<double>(value);
    if (!range)
        range = {number, number};
    range->from = std::min(range->from, number);
    range->to = std::max(range->to, number);
}

std::size_t countNotPositive(std::span<const float> values)
{
    return static_cast<std::size_t>(std::count_if(values.begin(), values.end(), [](float value) { return value <= 0.0F; }));
}

std::string note(const FileSeries& file, const input::SelectedSeries& series, const std::string& axisOption, std::size_t hidden, std::size_t count)
{
    return file.file + ": " + axisOption + " log: " + std::to_string(hidden) + " of " + std::to_string(count) + (count == 1 ? " sample of " : " samples of ")
        + input::quotedExcerpt(series.data->name().value_or("")) + (hidden == 1 ? " is" : " are") + " not positive and cannot be shown";
}

} // namespace

std::optional<Range> positiveXRange(const TOLVGraph& graph)
{
    std::optional<Range> range;
    for (const auto& series : graph.graphData()) {
        const auto x = valuesOf(series->X());
        const auto first = std::upper_bound(x.begin(), x.end(), 0.0F);
        if (first == x.end())
            continue;
        include(range, *first);
        include(range, x.back());
    }
    return range;
}

std::optional<Range> positiveYRange(const TOLVGraph& graph, bool xIsPositive)
{
    std::optional<Range> range;
    for (const auto& series : graph.graphData()) {
        const auto x = valuesOf(series->X());
        const auto y = valuesOf(series->Y());
        const auto first = xIsPositive ? std::upper_bound(x.begin(), x.end(), 0.0F) - x.begin() : 0;
        for (const float value : y.subspan(static_cast<std::size_t>(first))) {
            if (value > 0.0F)
                include(range, value);
        }
    }
    return range;
}

std::vector<std::string> notesOnHiddenSamples(const std::vector<FileSeries>& files, const Options& options)
{
    std::vector<std::string> notes;
    const auto noteHidden = [&](const FileSeries& file, const input::SelectedSeries& series, const char* axisOption, const TOLVGraphData::Samples& samples) {
        if (const std::size_t hidden = countNotPositive(valuesOf(samples)); hidden > 0)
            notes.push_back(note(file, series, axisOption, hidden, samples->length()));
    };
    for (const FileSeries& file : files) {
        for (const auto& series : file.selection.series) {
            if (options.xAxis == AxisKind::Logarithmic)
                noteHidden(file, series, "--x-axis", series.data->X());
            if (options.yAxis == AxisKind::Logarithmic)
                noteHidden(file, series, "--y-axis", series.data->Y());
        }
    }
    return notes;
}

} // namespace TOLVGraphing::app
