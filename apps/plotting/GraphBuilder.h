#pragma once

#include "FileSeries.h"
#include "Options.h"

#include <TOLVGraphing/platform/geometry/Rect.h>
#include <TOLVGraphing/views/GraphSheet.h>
#include <TOLVGraphing/views/LegendRows.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace TOLVGraphing {
class TOLVGraph;
}

namespace TOLVGraphing::app {

/// The most series of a graph, of all files together. More is an error.
inline constexpr std::size_t kMaximumSeriesCount = 16'384;

/// What of a graph's view stays as it is while the graph is configured.
struct KeptView {
    /// The visible ranges. One is fitted anew all the same where the axis's kind changes and where the axis cannot show it: an empty one, no finite numbers, on a logarithmic axis one that begins at 0 or below, and of categories one
    /// without categories of every series.
    bool xRange = false;
    bool yRange = false;
    /// The markers, and what the undo manager knows of them.
    bool markers = false;

    [[nodiscard]] static constexpr KeptView everything() { return {true, true, true}; }
};

/// Makes the graph show the files' series as the options say: series, axes, ranges, formats, strategy, colours, title and labels. Answers a legend entry for each series, whether the options ask for a legend or not.
///
/// At least one file, each with at least one series; they are not changed, the graph has series of its own that share the samples. An axis is replaced only where its kind changes, and the new one draws the grid lines that the
/// former one drew. The undo manager stays attached. Ranges and markers are those of the options unless they are kept; markers that are replaced empty the undo manager, whose steps would no longer fit.
/// `notes` is replaced by sentences that the user should read. Nothing of the graph's looks beyond that is touched: margins are set by a sheet, see layoutSheet().
///
/// Throws UsageError when a range or a marker that is looked at cannot be understood with these data, when there are more than kMaximumSeriesCount series, or when a logarithmic axis has nothing to show; graph and notes are then as they were. The vertical range is not looked at where it
/// is kept.
[[nodiscard]] std::vector<LegendEntry> configureGraph(
    const std::shared_ptr<TOLVGraph>& graph, const std::vector<FileSeries>& files, const Options& options, const KeptView& kept, std::vector<std::string>& notes);

/// True when what the options ask for cannot be made of series that were read with the former ones: other files or columns, categories in place of numbers or the other way round. Otherwise configureGraph() is enough.
[[nodiscard]] bool needFilesBeReadAgain(const Options& former, const Options& wanted);

/// A sheet of the graph (shared) with the margin that the options ask for, and the legend where they ask for one.
[[nodiscard]] GraphSheet sheetOfGraph(std::shared_ptr<TOLVGraph> graph, std::vector<LegendEntry> legend, const Options& options);

/// Lays the sheet out, with labels at those minor values that suit the visible ranges of this moment and the rectangle. Before each drawing of a graph whose ranges may have changed; it is drawn with that layout then.
void layoutSheet(GraphSheet& sheet, const Options& options, const Rect& rect);

/// A new graph on a sheet, laid out for the size that the options ask for. Throws as configureGraph() does.
[[nodiscard]] GraphSheet buildSheet(const std::vector<FileSeries>& files, const Options& options, std::vector<std::string>& notes);

} // namespace TOLVGraphing::app
