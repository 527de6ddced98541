#include "GraphInteraction.h"

#include "../graph/TOLVGraph.h"
#include "../platform/foundation/Exception.h"
#include "AxisText.h"
#include "TOLVGraphView.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace TOLVGraphing {

namespace {

/// How near to a marker the pointer takes hold of it, in points.
constexpr double kMarkerRadius = 5.0;
/// A box thinner than this in one direction leaves that direction alone.
constexpr double kThinnestBox = 4.0;
/// The part of the data area that an arrow key pans by.
constexpr double kKeyPart = 0.1;
/// A range narrower than this many steps of its floats is not zoomed in any further.
constexpr double kNarrowestRange = 256.0;

/// True for the keys that edit or select markers.
bool concernsMarkers(GraphKey key)
{
    switch (key) {
    case GraphKey::Left:
    case GraphKey::Right:
    case GraphKey::PlaceMarker:
    case GraphKey::NextMarker:
    case GraphKey::PreviousMarker:
    case GraphKey::Delete:
    case GraphKey::Undo:
    case GraphKey::Redo: return true;
    case GraphKey::Up:
    case GraphKey::Down:
    case GraphKey::ZoomIn:
    case GraphKey::ZoomOut:
    case GraphKey::Fit:
    case GraphKey::Cancel: break;
    }
    return false;
}

/// True when the range's ends can be told apart well in single precision.
bool isWideEnough(const TOLVAxisExtents& range)
{
    const double largest = std::max(std::abs(range.min()), std::abs(range.max()));
    return range.max() - range.min() > kNarrowestRange * largest * static_cast<double>(std::numeric_limits<float>::epsilon());
}

} // namespace

GraphInteraction::GraphInteraction(std::shared_ptr<TOLVGraphView> view) : m_view(std::move(view))
{
    if (!m_view)
        throw Exception("NullView", "Gestures are those of a graph view");
}

std::shared_ptr<TOLVGraph> GraphInteraction::graph() const
{
    m_view->useFittedMargins();
    const auto& graph = m_view->graph();
    const bool isWhole = graph && graph->horizontalAxis() && graph->verticalAxis() && graph->extents() && graph->extents()->x() && graph->extents()->y();
    return isWhole ? graph : nullptr;
}

Rect GraphInteraction::rect() const
{
    return m_view->bounds();
}

Rect GraphInteraction::dataRect() const
{
    const auto shown = graph();
    return shown ? shown->dataRectInRect(rect()) : Rect();
}

bool GraphInteraction::isInDataArea(Point position) const
{
    const Rect area = dataRect();
    return position.x >= area.x() && position.x <= area.maxX() && position.y >= area.y() && position.y <= area.maxY();
}

// Markers.

std::optional<std::size_t> GraphInteraction::markerAt(Point position) const
{
    const auto shown = graph();
    if (!shown || position.y > dataRect().maxY())
        return std::nullopt;
    std::optional<std::size_t> nearest;
    double smallest = kMarkerRadius;
    for (std::size_t i = 0; i < shown->markers().size(); ++i) {
        const TOLVMarker& marker = *shown->markers()[i];
        const double distance = std::abs(position.x - static_cast<double>(shown->XForValue(static_cast<float>(marker.value()), rect())));
        if (marker.axisIndex() == 0 && distance < smallest) {
            smallest = distance;
            nearest = i;
        }
    }
    return nearest;
}

std::optional<std::size_t> GraphInteraction::indexOfSelectedMarker() const
{
    const auto shown = graph();
    if (!shown || !m_selectedMarker)
        return std::nullopt;
    const auto& markers = shown->markers();
    const auto found = std::find(markers.begin(), markers.end(), m_selectedMarker);
    return found == markers.end() ? std::nullopt : std::optional<std::size_t>(found - markers.begin());
}

void GraphInteraction::finishMarkerDrag()
{
    const auto index = indexOfSelectedMarker();
    const double value = m_selectedMarker ? m_selectedMarker->value() : m_markerStart;
    if (!index || value == m_markerStart)
        return;
    // The marker that was dragged goes back to its place, so that undoing brings it there.
    const auto moved = m_selectedMarker->copy();
    m_selectedMarker->setValue(m_markerStart);
    graph()->replaceMarkersAtIndexes({*index}, {moved});
    m_selectedMarker = moved;
    m_view->setNeedsDisplay();
}

void GraphInteraction::putMarkerDown()
{
    if (m_drag != Drag::Marker)
        return;
    endDrag();
    finishMarkerDrag();
}

void GraphInteraction::moveMarkerTo(double x)
{
    const auto shown = graph();
    if (!shown || !m_selectedMarker)
        return;
    const Rect area = dataRect();
    const float value = shown->valueForX(static_cast<float>(std::clamp(x, area.x(), std::max(area.x(), area.maxX()))), rect());
    if (!std::isfinite(value))
        return;
    m_selectedMarker->setValue(static_cast<double>(value));
    m_view->setNeedsDisplay();
}

void GraphInteraction::moveMarkerBy(double distance)
{
    m_markerStart = m_selectedMarker->value();
    moveMarkerTo(static_cast<double>(graph()->XForValue(static_cast<float>(m_markerStart), rect())) + distance);
    finishMarkerDrag();
}

void GraphInteraction::selectMarkerAtIndex(std::size_t index)
{
    const auto shown = graph();
    if (!shown || index >= shown->markers().size())
        return;
    putMarkerDown();
    m_selectedMarker = shown->markers()[index];
    m_view->setNeedsDisplay();
}

void GraphInteraction::selectMarker(bool next)
{
    const auto shown = graph();
    if (!shown || shown->markers().empty()) {
        m_selectedMarker = nullptr;
        return;
    }
    const std::size_t count = shown->markers().size();
    const auto current = indexOfSelectedMarker();
    const std::size_t first = next ? 0 : count - 1;
    m_selectedMarker = shown->markers()[current ? (*current + (next ? 1 : count - 1)) % count : first];
    m_view->setNeedsDisplay();
}

bool GraphInteraction::deleteSelectedMarker()
{
    const auto index = indexOfSelectedMarker();
    if (!index)
        return false;
    graph()->removeMarkersAtIndexes({*index});
    m_selectedMarker = nullptr;
    m_view->setNeedsDisplay();
    return true;
}

// Ranges.

void GraphInteraction::beginDrag(Drag drag)
{
    m_drag = drag;
    m_marginsOnlyGrow = std::make_shared<const MarginsOnlyGrow>(m_view);
}

GraphInteraction::Drag GraphInteraction::endDrag()
{
    m_marginsOnlyGrow.reset();
    return std::exchange(m_drag, Drag::None);
}

void GraphInteraction::restoreRanges()
{
    if (const auto shown = graph()) {
        shown->extents()->setX(m_startX);
        shown->extents()->setY(m_startY);
    }
}

void GraphInteraction::panTo(Point position)
{
    const auto shown = graph();
    if (!shown)
        return;
    // From where the drag began, so that rounding does not add up on the way.
    restoreRanges();
    shown->offsetDisplayByX(static_cast<float>(m_dragStart.x - position.x), static_cast<float>(m_dragStart.y - position.y), rect());
}

void GraphInteraction::zoom(bool zoomsIn, bool inX, bool inY, Point center)
{
    const auto shown = graph();
    if (!shown)
        return;
    const auto x = shown->extents()->x()->copy();
    const auto y = shown->extents()->y()->copy();
    const auto cx = static_cast<float>(center.x);
    const auto cy = static_cast<float>(center.y);
    if (inX)
        zoomsIn ? shown->zoomInXCenteredAtPoint(cx, rect()) : shown->zoomOutXCenteredAtPoint(cx, rect());
    if (inY)
        zoomsIn ? shown->zoomInYCenteredAtPoint(cy, rect()) : shown->zoomOutYCenteredAtPoint(cy, rect());
    // A range that was narrow before may be left, but none is made so.
    if (zoomsIn && isWideEnough(*x) && !isWideEnough(*shown->extents()->x()))
        shown->extents()->setX(x);
    if (zoomsIn && isWideEnough(*y) && !isWideEnough(*shown->extents()->y()))
        shown->extents()->setY(y);
}

void GraphInteraction::fit(bool x, bool y)
{
    const auto shown = graph();
    if (!shown || shown->graphData().empty())
        return;
    if (x && shown->minXValue() <= shown->maxXValue())
        shown->zoomToFitXInRect(rect());
    if (y && shown->minYValue() <= shown->maxYValue())
        shown->zoomToFitYInRect(rect());
}

void GraphInteraction::zoomToBox(const Rect& box)
{
    const auto shown = graph();
    if (!shown)
        return;
    const Rect part = intersectionRect(box, dataRect());
    if (part.width() >= kThinnestBox && shown->canZoomX()) {
        const float from = shown->valueForX(static_cast<float>(part.x()), rect());
        const float to = shown->valueForX(static_cast<float>(part.maxX()), rect());
        if (from < to && isWideEnough(*TOLVAxisExtents::extentsWithMin(static_cast<double>(from), static_cast<double>(to))))
            shown->zoomXToFixedMin(from, to);
    }
    if (part.height() >= kThinnestBox && shown->canZoomY()) {
        const auto from = static_cast<double>(shown->valueForY(static_cast<float>(part.y()), rect()));
        const auto to = static_cast<double>(shown->valueForY(static_cast<float>(part.maxY()), rect()));
        if (from < to && isWideEnough(*TOLVAxisExtents::extentsWithMin(from, to)))
            shown->zoomYToFixedMin(from, to);
    }
}

// Pointer.

void GraphInteraction::pointerMoved(Point position)
{
    m_pointer = position;
    switch (m_drag) {
    case Drag::None: break;
    case Drag::Pan: panTo(position); break;
    case Drag::Marker: moveMarkerTo(position.x); break;
    case Drag::Box:
        m_dragEnd = position;
        m_view->setNeedsDisplay();
        break;
    }
}

void GraphInteraction::pointerLeft()
{
    m_pointer.reset();
}

void GraphInteraction::pointerPressed(Point position, PointerButton button)
{
    m_pointer = position;
    const auto shown = graph();
    if (!shown || m_drag != Drag::None)
        return;
    m_dragStart = position;
    m_dragEnd = position;
    if (button == PointerButton::Secondary) {
        if (isInDataArea(position))
            beginDrag(Drag::Box);
        return;
    }
    const auto marker = markerAt(position);
    m_selectedMarker = marker ? shown->markers()[*marker] : nullptr;
    if (marker) {
        m_markerStart = m_selectedMarker->value();
        beginDrag(Drag::Marker);
    } else if (isInDataArea(position)) {
        m_startX = shown->extents()->x()->copy();
        m_startY = shown->extents()->y()->copy();
        beginDrag(Drag::Pan);
    }
    m_view->setNeedsDisplay();
}

void GraphInteraction::pointerReleased(Point position, PointerButton button)
{
    const bool endsDrag = button == PointerButton::Secondary ? m_drag == Drag::Box : m_drag == Drag::Pan || m_drag == Drag::Marker;
    if (!endsDrag)
        return;
    pointerMoved(position);
    const Drag drag = endDrag();
    if (drag == Drag::Marker)
        finishMarkerDrag();
    if (drag == Drag::Box) {
        Rect box = dragBox();
        // A direction in which the box is thin has no area of its own.
        box.size = {std::max(box.width(), 1e-3), std::max(box.height(), 1e-3)};
        zoomToBox(box);
        m_view->setNeedsDisplay();
    }
}

void GraphInteraction::pointerDoubleClicked(Point position)
{
    const auto shown = graph();
    if (!shown)
        return;
    cancel();
    const Rect area = dataRect();
    if (isInDataArea(position)) {
        if (!markerAt(position)) {
            m_selectedMarker = shown->placeHorizontalAxisMarkerAtPoint(position.x, rect());
            m_view->setNeedsDisplay();
        }
    } else if (position.y < area.y() && position.x >= area.x()) {
        fit(true, false);
    } else if (position.x < area.x() && position.y >= area.y()) {
        fit(false, true);
    }
}

void GraphInteraction::wheelTurned(double steps, Point position, KeyModifiers modifiers)
{
    constexpr double kMostSteps = 20.0;
    if (!std::isfinite(steps))
        return;
    m_pointer = position;
    // What was collected in the other direction is forgotten.
    if (steps * m_wheelSteps < 0.0)
        m_wheelSteps = 0.0;
    m_wheelSteps = std::clamp(m_wheelSteps + steps, -kMostSteps, kMostSteps);
    while (std::abs(m_wheelSteps) >= 1.0) {
        zoom(m_wheelSteps > 0.0, modifiers.control || !modifiers.shift, modifiers.control || modifiers.shift, position);
        m_wheelSteps -= std::copysign(1.0, m_wheelSteps);
    }
}

// Keys.

bool GraphInteraction::panByKey(GraphKey key, KeyModifiers modifiers)
{
    const Rect area = dataRect();
    const bool isHorizontal = key == GraphKey::Left || key == GraphKey::Right;
    const double length = isHorizontal ? area.width() : area.height();
    const double distance = (key == GraphKey::Left || key == GraphKey::Down ? -1.0 : 1.0) * (modifiers.shift ? 1.0 : length * kKeyPart);
    if (isHorizontal && indexOfSelectedMarker())
        moveMarkerBy(modifiers.shift ? distance : distance * kKeyPart);
    else
        graph()->offsetDisplayByX(isHorizontal ? static_cast<float>(distance) : 0.0F, isHorizontal ? 0.0F : static_cast<float>(distance), rect());
    return true;
}

bool GraphInteraction::zoomByKey(bool zoomsIn, KeyModifiers modifiers)
{
    const Rect area = dataRect();
    zoom(zoomsIn, !modifiers.shift, !modifiers.control, {area.x() + area.width() * 0.5, area.y() + area.height() * 0.5});
    return true;
}

bool GraphInteraction::cancel()
{
    switch (endDrag()) {
    case Drag::None: return std::exchange(m_selectedMarker, nullptr) != nullptr;
    case Drag::Pan: restoreRanges(); break;
    case Drag::Marker: m_selectedMarker->setValue(m_markerStart); break;
    case Drag::Box: break;
    }
    m_view->setNeedsDisplay();
    return true;
}

bool GraphInteraction::keyPressed(GraphKey key, KeyModifiers modifiers)
{
    const auto shown = graph();
    if (!shown)
        return false;
    if (concernsMarkers(key))
        putMarkerDown();
    const auto& undoManager = shown->undoManager();
    switch (key) {
    case GraphKey::Left:
    case GraphKey::Right:
    case GraphKey::Up:
    case GraphKey::Down: return panByKey(key, modifiers);
    case GraphKey::ZoomIn: return zoomByKey(true, modifiers);
    case GraphKey::ZoomOut: return zoomByKey(false, modifiers);
    case GraphKey::Fit: fit(!modifiers.shift, !modifiers.control); return true;
    case GraphKey::PlaceMarker: {
        const Rect area = dataRect();
        const bool isOverArea = m_pointer && isInDataArea(*m_pointer);
        m_selectedMarker = shown->placeHorizontalAxisMarkerAtPoint(isOverArea ? m_pointer->x : area.x() + area.width() * 0.5, rect());
        m_view->setNeedsDisplay();
        return true;
    }
    case GraphKey::NextMarker:
    case GraphKey::PreviousMarker: selectMarker(key == GraphKey::NextMarker); return m_selectedMarker != nullptr;
    case GraphKey::Delete: return deleteSelectedMarker();
    case GraphKey::Cancel: return cancel();
    case GraphKey::Undo:
    case GraphKey::Redo: break;
    }
    const bool isUndo = key == GraphKey::Undo;
    if (!undoManager || !(isUndo ? undoManager->canUndo() : undoManager->canRedo()))
        return false;
    isUndo ? undoManager->undo() : undoManager->redo();
    m_view->setNeedsDisplay();
    return true;
}

// What a host shows.

std::optional<Rect> GraphInteraction::selectionBox() const
{
    return m_drag == Drag::Box ? std::optional<Rect>(dragBox()) : std::nullopt;
}

Rect GraphInteraction::dragBox() const
{
    const auto [left, right] = std::minmax(m_dragStart.x, m_dragEnd.x);
    const auto [bottom, top] = std::minmax(m_dragStart.y, m_dragEnd.y);
    return {left, bottom, right - left, top - bottom};
}

PointerLook GraphInteraction::pointerLook() const
{
    switch (m_drag) {
    case Drag::Pan: return PointerLook::Moving;
    case Drag::Marker: return PointerLook::MovesMarker;
    case Drag::Box: return PointerLook::SelectsBox;
    case Drag::None: break;
    }
    if (m_pointer && markerAt(*m_pointer))
        return PointerLook::MovesMarker;
    return m_pointer && isInDataArea(*m_pointer) ? PointerLook::Crosshair : PointerLook::Plain;
}

std::optional<float> GraphInteraction::valueUnderPointer() const
{
    const auto shown = graph();
    if (!shown || !m_pointer || m_drag == Drag::Pan || !isInDataArea(*m_pointer))
        return std::nullopt;
    const float value = shown->valueForX(static_cast<float>(m_pointer->x), rect());
    return std::isfinite(value) ? std::optional<float>(value) : std::nullopt;
}

std::vector<SampleReadout> GraphInteraction::samplesUnderPointer() const
{
    std::vector<SampleReadout> readouts;
    const auto value = valueUnderPointer();
    if (!value)
        return readouts;
    const auto shown = graph();
    const auto series = shown->graphData();
    for (std::size_t i = 0; i < series.size(); ++i) {
        const bool hasSamples = series[i]->X() && series[i]->Y() && series[i]->X()->length() > 0 && series[i]->Y()->length() > 0;
        if (!hasSamples)
            continue;
        // Whatever is nearest is a number.
        float x = std::numeric_limits<float>::quiet_NaN();
        const float y = series[i]->YValueAtX(*value, &x);
        if (std::isnan(x))
            continue;
        const Point position{static_cast<double>(shown->XForValue(x, rect())), static_cast<double>(shown->YForValue(y, rect()))};
        readouts.push_back({i, series[i]->name().value_or(""), x, y, position});
    }
    return readouts;
}

std::string GraphInteraction::abscissaText() const
{
    const auto value = valueUnderPointer();
    if (!value)
        return "";
    const TOLVAxis& axis = *graph()->horizontalAxis();
    const std::string title = axis.label().value_or("");
    return (title.empty() ? std::string("x") : title) + " " + textOfValue(axis, static_cast<double>(*value));
}

std::string GraphInteraction::ordinateText(const SampleReadout& readout) const
{
    const auto shown = graph();
    return shown ? (readout.name.empty() ? std::string("y") : readout.name) + " " + textOfValue(*shown->verticalAxis(), static_cast<double>(readout.y)) : "";
}

std::string GraphInteraction::readoutText() const
{
    std::string text = abscissaText();
    for (const SampleReadout& readout : samplesUnderPointer())
        text += ", " + ordinateText(readout);
    return text;
}

} // namespace TOLVGraphing
