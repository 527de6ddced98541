// The graph's layout and its rendering pass.

#include "TOLVGraph.h"

#include "../platform/text/AttributedString.h"

#include <limits>

namespace TOLVGraphing {

namespace {

constexpr double kUnknownMinimum = static_cast<double>(std::numeric_limits<float>::max());
constexpr double kUnknownMaximum = -kUnknownMinimum;

} // namespace

// The sums are evaluated in the order written, which fixes them to the last bit.

Rect TOLVGraph::dataRectInRect(const Rect& rect) const
{
    const Rect moved = offsetRect(rect, m_padding.left + m_margin.left, m_padding.bottom + m_margin.bottom);
    return {moved.x(), moved.y(), rect.width() - (((m_padding.left + m_margin.left) + m_padding.right) + m_margin.right),
        rect.height() - (((m_padding.bottom + m_margin.bottom) + m_padding.top) + m_margin.top)};
}

Rect TOLVGraph::horizontalAxisRectInRect(const Rect& rect) const
{
    const Rect moved = offsetRect(rect, m_padding.left + m_margin.left, 0.0);
    return {moved.x(), moved.y(), rect.width() - (((m_padding.right + m_margin.right) + m_padding.left) + m_margin.left), rect.height() - (m_padding.top + m_margin.top)};
}

Rect TOLVGraph::verticalAxisRectInRect(const Rect& rect) const
{
    const Rect moved = offsetRect(rect, 0.0, m_padding.bottom + m_margin.bottom);
    return {moved.x(), moved.y(), rect.width() - (m_padding.right + m_margin.right), rect.height() - (((m_padding.bottom + m_margin.bottom) + m_padding.top) + m_margin.top)};
}

Rect TOLVGraph::titleBandInRect(const Rect& rect) const
{
    return {rect.x() + (m_padding.left + m_margin.left), rect.y() + ((rect.height() - m_margin.top) - m_padding.top),
        (((rect.width() - m_padding.left) - m_margin.left) - m_padding.right) - m_margin.right, m_padding.top + m_margin.top};
}

bool TOLVGraph::canDraw() const
{
    if (m_graphDataArray.empty() || !m_extents || !m_extents->x() || !m_extents->y())
        return false;
    const TOLVAxisExtents& x = *m_extents->x();
    const TOLVAxisExtents& y = *m_extents->y();
    return y.min() != kUnknownMinimum && y.max() != kUnknownMaximum && x.min() != kUnknownMinimum && x.max() != kUnknownMaximum;
}

void TOLVGraph::prepareForDrawingInRect(const Rect& rect)
{
    if (!m_verticalAxis || !m_horizontalAxis)
        return;
    const Rect verticalRect = verticalAxisRectInRect(rect);
    m_verticalAxis->setMargin(m_margin.left);
    m_verticalAxis->setPadding(m_padding.left);
    const Rect horizontalRect = horizontalAxisRectInRect(rect);
    m_horizontalAxis->setMargin(m_margin.bottom);
    m_horizontalAxis->setPadding(m_padding.bottom);
    m_horizontalAxis->prepareForDrawingInRect(horizontalRect);
    m_verticalAxis->prepareForDrawingInRect(verticalRect);
}

void TOLVGraph::drawInRect(const Rect& rect)
{
    prepareForDrawingInRect(rect);
    drawAxesInRect(rect);
    drawDataInRect(rect);
    drawTitleInRect(rect);
    drawMarkersInRect(rect);
}

void TOLVGraph::drawAxesInRect(const Rect& rect)
{
    if (!m_verticalAxis || !m_horizontalAxis)
        return;
    const Rect verticalRect = verticalAxisRectInRect(rect);
    const Rect horizontalRect = horizontalAxisRectInRect(rect);
    if (m_horizontalAxis->drawsMinorLines())
        m_horizontalAxis->drawMinorLinesInRect(horizontalRect);
    if (m_verticalAxis->drawsMinorLines())
        m_verticalAxis->drawMinorLinesInRect(verticalRect);
    if (m_horizontalAxis->drawsMajorLines())
        m_horizontalAxis->drawMajorLinesInRect(horizontalRect);
    if (m_verticalAxis->drawsMajorLines())
        m_verticalAxis->drawMajorLinesInRect(verticalRect);
    m_horizontalAxis->drawTickLabelsInRect(horizontalRect);
    m_verticalAxis->drawTickLabelsInRect(verticalRect);
    m_horizontalAxis->drawMarkers(markersWithAxisIndex(kHorizontalAxisIndex), horizontalRect);
    m_verticalAxis->drawMarkers(markersWithAxisIndex(kVerticalAxisIndex), verticalRect);
    m_horizontalAxis->drawLabelInRect(horizontalRect);
    m_verticalAxis->drawLabelInRect(verticalRect);
}

void TOLVGraph::drawDataInRect(const Rect& rect)
{
    if (m_drawingStrategy)
        m_drawingStrategy->drawGraph(shared_from_this(), rect);
}

Point TOLVGraph::titlePointInRect(const Rect& rect) const
{
    const Rect band = titleBandInRect(rect);
    const double height = AttributedString(m_title.value_or(""), m_titleAttributes).size().height;
    return {band.x(), ((band.y() + band.height()) - m_padding.top) - height};
}

void TOLVGraph::drawTitleInRect(const Rect& rect)
{
    if (m_title)
        AttributedString(*m_title, m_titleAttributes).drawAtPoint(titlePointInRect(rect));
}

void TOLVGraph::drawMarkersInRect(const Rect& rect)
{
    if (auto* overlay = dynamic_cast<TOLVGraphMarkerDrawing*>(m_drawingStrategy.get()))
        overlay->drawMarkers(m_markers, shared_from_this(), rect);
}

TOLVGraph::Markers TOLVGraph::markersWithAxisIndex(std::int64_t axisIndex) const
{
    Markers selected;
    for (const auto& marker : m_markers) {
        if (marker->axisIndex() == axisIndex)
            selected.push_back(marker);
    }
    return selected;
}

} // namespace TOLVGraphing
