// The graph's conversions, zoom, pan and marker edits.

#include "TOLVGraph.h"

#include "../platform/foundation/Exception.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace TOLVGraphing {

namespace {

float quotientTimes(float distance, const std::shared_ptr<TOLVAxisExtents>& range, double length)
{
    const double extent = range ? range->max() - range->min() : 0.0;
    return distance * static_cast<float>(extent / length);
}

/// The axis's range moved by a distance along it, in points.
void offsetAxis(TOLVAxis& axis, double origin, double length, float distance, const Rect& dataRect)
{
    if (!(length > 0.0))
        return;
    const float from = static_cast<float>(origin) + distance;
    const float to = static_cast<float>(origin + length) + distance;
    axis.zoomToPoints(static_cast<double>(from), static_cast<double>(to), dataRect);
}

} // namespace

// Conversion.

float TOLVGraph::valueForX(float x, const Rect& inRect) const
{
    return m_horizontalAxis ? m_horizontalAxis->valueForPoint(static_cast<double>(x), dataRectInRect(inRect)) : 0.0F;
}

float TOLVGraph::valueForY(float y, const Rect& inRect) const
{
    return m_verticalAxis ? m_verticalAxis->valueForPoint(static_cast<double>(y), dataRectInRect(inRect)) : 0.0F;
}

float TOLVGraph::XForValue(float value, const Rect& inRect) const
{
    return m_horizontalAxis ? m_horizontalAxis->pointForValue(value, dataRectInRect(inRect)) : 0.0F;
}

float TOLVGraph::YForValue(float value, const Rect& inRect) const
{
    return m_verticalAxis ? m_verticalAxis->pointForValue(value, dataRectInRect(inRect)) : 0.0F;
}

float TOLVGraph::deltaForX(float dx, const Rect& inRect) const
{
    return quotientTimes(dx, m_extents ? m_extents->x() : nullptr, dataRectInRect(inRect).width());
}

float TOLVGraph::deltaForY(float dy, const Rect& inRect) const
{
    return quotientTimes(dy, m_extents ? m_extents->y() : nullptr, dataRectInRect(inRect).height());
}

// Zoom and pan.

void TOLVGraph::zoomInXInRect(const Rect& rect)
{
    if (m_canZoomX && m_horizontalAxis)
        m_horizontalAxis->zoomInInRect(dataRectInRect(rect));
}

void TOLVGraph::zoomOutXInRect(const Rect& rect)
{
    if (m_canZoomX && m_horizontalAxis)
        m_horizontalAxis->zoomOutInRect(dataRectInRect(rect));
}

void TOLVGraph::zoomInYInRect(const Rect& rect)
{
    if (m_canZoomY && m_verticalAxis)
        m_verticalAxis->zoomInInRect(dataRectInRect(rect));
}

void TOLVGraph::zoomOutYInRect(const Rect& rect)
{
    if (m_canZoomY && m_verticalAxis)
        m_verticalAxis->zoomOutInRect(dataRectInRect(rect));
}

void TOLVGraph::zoomInXCenteredAtPoint(float x, const Rect& inRect)
{
    if (m_canZoomX && m_horizontalAxis)
        m_horizontalAxis->zoomInCenteredAtPoint(static_cast<double>(x), dataRectInRect(inRect));
}

void TOLVGraph::zoomOutXCenteredAtPoint(float x, const Rect& inRect)
{
    if (m_canZoomX && m_horizontalAxis)
        m_horizontalAxis->zoomOutCenteredAtPoint(static_cast<double>(x), dataRectInRect(inRect));
}

void TOLVGraph::zoomInYCenteredAtPoint(float y, const Rect& inRect)
{
    if (m_canZoomY && m_verticalAxis)
        m_verticalAxis->zoomInCenteredAtPoint(static_cast<double>(y), dataRectInRect(inRect));
}

void TOLVGraph::zoomOutYCenteredAtPoint(float y, const Rect& inRect)
{
    if (m_canZoomY && m_verticalAxis)
        m_verticalAxis->zoomOutCenteredAtPoint(static_cast<double>(y), dataRectInRect(inRect));
}

void TOLVGraph::zoomToFitXInRect(const Rect&)
{
    if (!m_extents || !m_extents->x())
        return;
    m_extents->x()->setMin(static_cast<double>(minXValue()));
    m_extents->x()->setMax(static_cast<double>(maxXValue()));
}

void TOLVGraph::zoomToFitYInRect(const Rect&)
{
    if (!m_extents || !m_extents->y())
        return;
    m_extents->y()->setMin(static_cast<double>(minYValue()));
    m_extents->y()->setMax(static_cast<double>(maxYValue()));
}

void TOLVGraph::zoomXToFixedMin(float min, float max)
{
    if (m_horizontalAxis)
        m_horizontalAxis->setExtents(TOLVAxisExtents::extentsWithMin(static_cast<double>(min), static_cast<double>(max)));
}

void TOLVGraph::zoomYToFixedMin(double min, double max)
{
    if (m_verticalAxis)
        m_verticalAxis->setExtents(TOLVAxisExtents::extentsWithMin(min, max));
}

void TOLVGraph::offsetDisplayByX(float dx, float Y, const Rect& inRect)
{
    const Rect dataRect = dataRectInRect(inRect);
    if (m_horizontalAxis)
        offsetAxis(*m_horizontalAxis, dataRect.x(), dataRect.width(), dx, dataRect);
    if (m_verticalAxis)
        offsetAxis(*m_verticalAxis, dataRect.y(), dataRect.height(), Y, dataRect);
}

void TOLVGraph::offsetDisplayByDeltaX(float dx, float deltaY, const Rect& inRect)
{
    offsetDisplayByX(dx, deltaY, inRect);
}

// Markers.

template <typename Operation>
void TOLVGraph::registerUndo(Operation operation)
{
    // The manager runs the operation only while it holds this graph, so the plain pointer in it is good.
    if (m_undoManager)
        m_undoManager->registerUndoWithTarget(weak_from_this(), std::move(operation));
}

void TOLVGraph::requireEditableMarkers() const
{
    if (!m_markersAreEditable)
        throw Exception("ImmutableMarkers", "The markers of a copied graph are a snapshot and cannot be edited");
}

void TOLVGraph::requireMarkerIndexes(const IndexSet& indexes, std::size_t end)
{
    for (const std::size_t index : indexes) {
        if (index >= end) {
            throw Exception("IndexOutOfRange", "Marker index " + std::to_string(index) + " lies outside the " + std::to_string(end) + " places of the list");
        }
    }
}

void TOLVGraph::requireMarkers(const Markers& markers, std::size_t count)
{
    if (markers.size() != count)
        throw Exception("IndexOutOfRange", "The number of markers differs from the number of positions");
    if (std::find(markers.begin(), markers.end(), nullptr) != markers.end())
        throw Exception("NullMarker", "A marker list holds markers only");
}

TOLVGraph::Markers TOLVGraph::markersAtIndexes(const IndexSet& indexes) const
{
    requireMarkerIndexes(indexes, m_markers.size());
    Markers selected;
    for (const std::size_t index : indexes)
        selected.push_back(m_markers[index]);
    return selected;
}

void TOLVGraph::insertMarkers(const Markers& markers, const IndexSet& atIndexes)
{
    requireEditableMarkers();
    requireMarkers(markers, atIndexes.count());
    requireMarkerIndexes(atIndexes, m_markers.size() + markers.size());
    registerUndo([this, atIndexes] { removeMarkersAtIndexes(atIndexes); });
    willChange(ChangeKind::Insertion, atIndexes, "markers");
    auto next = markers.begin();
    for (const std::size_t index : atIndexes)
        m_markers.insert(std::next(m_markers.begin(), static_cast<std::ptrdiff_t>(index)), *next++);
    didChange(ChangeKind::Insertion, atIndexes, "markers");
}

void TOLVGraph::removeMarkersAtIndexes(const IndexSet& indexes)
{
    requireEditableMarkers();
    registerUndo([this, removed = markersAtIndexes(indexes), indexes] { insertMarkers(removed, indexes); });
    willChange(ChangeKind::Removal, indexes, "markers");
    for (const std::size_t index : indexes)
        m_markers[index] = nullptr;
    std::erase(m_markers, nullptr);
    didChange(ChangeKind::Removal, indexes, "markers");
}

void TOLVGraph::replaceMarkersAtIndexes(const IndexSet& indexes, const Markers& withMarkers)
{
    requireEditableMarkers();
    requireMarkers(withMarkers, indexes.count());
    registerUndo([this, replaced = markersAtIndexes(indexes), indexes] { replaceMarkersAtIndexes(indexes, replaced); });
    willChange(ChangeKind::Replacement, indexes, "markers");
    auto next = withMarkers.begin();
    for (const std::size_t index : indexes)
        m_markers[index] = *next++;
    didChange(ChangeKind::Replacement, indexes, "markers");
}

std::shared_ptr<TOLVMarker> TOLVGraph::placeHorizontalAxisMarkerWithValue(double value)
{
    auto marker = TOLVMarker::markerWithValue(value);
    insertMarkers({marker}, {m_markers.size()});
    return marker;
}

std::shared_ptr<TOLVMarker> TOLVGraph::placeHorizontalAxisMarkerAtPoint(double x, const Rect& inRect)
{
    return placeHorizontalAxisMarkerWithValue(static_cast<double>(valueForX(static_cast<float>(x), inRect)));
}

// One of the operations of a graph, though no graph has an answer.
// NOLINTNEXTLINE(readability-convert-member-functions-to-static)
std::shared_ptr<TOLVMarker> TOLVGraph::horizontalAxisMarkerWithValue(double, double) const
{
    return nullptr;
}

std::shared_ptr<TOLVMarker> TOLVGraph::horizontalAxisMarkerAtPoint(double x, double inRadius, const Rect& inRect) const
{
    const std::int64_t index = indexOfHorizontalAxisMarkerAtPoint(x, inRadius, inRect);
    return index == kNotFoundIndex ? nullptr : m_markers[static_cast<std::size_t>(index)];
}

std::int64_t TOLVGraph::indexOfHorizontalAxisMarkerAtPoint(double x, double inRadius, const Rect& inRect) const
{
    for (std::size_t i = 0; i < m_markers.size(); ++i) {
        const auto position = static_cast<double>(XForValue(static_cast<float>(m_markers[i]->value()), inRect));
        if (inRadius > std::abs(x - position))
            return static_cast<std::int64_t>(i);
    }
    return kNotFoundIndex;
}

} // namespace TOLVGraphing
