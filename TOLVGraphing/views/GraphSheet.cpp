#include "GraphSheet.h"

#include "../graph/TOLVGraph.h"
#include "../platform/foundation/Exception.h"
#include "LabelMargins.h"

#include <algorithm>
#include <utility>

namespace TOLVGraphing {

namespace {

/// White space around everything, in points.
constexpr double kSheetPadding = 8.0;
/// The most of the sheet's height that a legend takes.
constexpr double kLargestLegendPart = 0.4;

/// At least one; one for a height that is no number.
std::size_t rowsThatFit(double height)
{
    if (!(height > 0.0))
        return 1;
    return static_cast<std::size_t>(std::clamp(height * kLargestLegendPart / LegendRows::kRowHeight, 1.0, 1000.0));
}

} // namespace

GraphSheet::GraphSheet(std::shared_ptr<TOLVGraph> graph) : m_graph(std::move(graph))
{
    if (!m_graph)
        throw Exception("NullGraph", "A sheet shows a graph");
}

void GraphSheet::placeLegend(const Rect& rect, double left, double width)
{
    m_legend.emplace(m_legendEntries, width, rowsThatFit(rect.height()));
    const double below = m_legendEntries.empty() ? 0.0 : kSheetPadding;
    m_legendRect = {left, rect.y() + below, width, m_legend->height()};
    m_graphRect = {rect.x(), m_legendRect.maxY(), rect.width(), rect.maxY() - m_legendRect.maxY()};
}

void GraphSheet::placeGraph(const Rect& rect)
{
    const EdgeInsets padding = m_margin ? EdgeInsets{} : EdgeInsets{kSheetPadding, kSheetPadding, kSheetPadding, kSheetPadding};
    // Whoever listens for changes that show is not told of each layout.
    if (m_graph->padding() != padding)
        m_graph->setPadding(padding);
    if (m_margin)
        m_graph->setMargin(*m_margin);
    else
        fitMarginsToLabels(*m_graph, rect);
}

void GraphSheet::layoutInRect(const Rect& rect)
{
    placeLegend(rect, rect.x() + kSheetPadding, rect.width() - 2.0 * kSheetPadding);
    placeGraph(m_graphRect);
    if (m_legendEntries.empty())
        return;
    // Now that the data area is known, the legend stands below it.
    const Rect dataRect = m_graph->dataRectInRect(m_graphRect);
    const std::size_t formerRows = m_legend->rowCount();
    placeLegend(rect, dataRect.x(), dataRect.width());
    if (m_legend->rowCount() != formerRows)
        placeGraph(m_graphRect);
}

void GraphSheet::drawInRect(const Rect& rect)
{
    layoutInRect(rect);
    m_graph->drawInRect(m_graphRect);
    if (m_legend)
        m_legend->drawInRect(m_legendRect);
}

} // namespace TOLVGraphing
