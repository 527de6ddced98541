#pragma once

#include "../platform/geometry/EdgeInsets.h"
#include "../platform/geometry/Rect.h"
#include "LegendRows.h"
#include <TOLVMath/Export.h>

#include <memory>
#include <optional>
#include <vector>

namespace TOLVGraphing {

class TOLVGraph;

/// A graph with a legend below it, laid out for a sheet of any size: what a file, a page or a window shows. Coordinates are points, y growing upwards.
class TOLV_EXPORT GraphSheet {
public:
    /// The graph is shared. Throws Exception "NullGraph" for null. Its margin, padding and tick label paddings are set by the layout.
    explicit GraphSheet(std::shared_ptr<TOLVGraph> graph);

    /// Shared. The graph shown.
    [[nodiscard]] const std::shared_ptr<TOLVGraph>& graph() const { return m_graph; }
    /// Copied. No entries, no legend.
    void setLegendEntries(std::vector<LegendEntry> entries) { m_legendEntries = std::move(entries); }
    /// Copied. A margin in points that holds as it is, with no padding added; nothing, the default, fits the margins to the labels.
    void setMargin(const std::optional<EdgeInsets>& margin) { m_margin = margin; }

    /// Places legend and graph in the rectangle, which may be any: one too small leaves the graph no data area. Ticks and labels are those of the graph's extents at this moment. Announces the graph's margin, and its padding when it changes.
    void layoutInRect(const Rect& rect);
    /// Where the last layout put the graph and the legend; the zero rectangle before the first one.
    [[nodiscard]] const Rect& graphRect() const { return m_graphRect; }
    [[nodiscard]] const Rect& legendRect() const { return m_legendRect; }

    /// Lays out and draws into the current context, without one nothing. The rectangle's background is the caller's.
    void drawInRect(const Rect& rect);

private:
    void placeLegend(const Rect& rect, double left, double width);
    void placeGraph(const Rect& rect);

    std::shared_ptr<TOLVGraph> m_graph;
    std::vector<LegendEntry> m_legendEntries;
    std::optional<EdgeInsets> m_margin;
    std::optional<LegendRows> m_legend;
    Rect m_graphRect;
    Rect m_legendRect;
};

} // namespace TOLVGraphing
