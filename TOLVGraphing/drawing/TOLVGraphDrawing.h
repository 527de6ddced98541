#pragma once

#include "../platform/geometry/Rect.h"
#include <TOLVMath/Export.h>

#include <memory>
#include <vector>

namespace TOLVGraphing {

class TOLVGraph;
class TOLVMarker;

/// Draws the series of a graph into the current drawing context. A strategy keeps nothing about a graph: it takes what it needs from the graph it is given, and one object may
/// serve several graphs. It leaves the context's state as it was.
class TOLV_EXPORT TOLVGraphDrawing {
public:
    virtual ~TOLVGraphDrawing();

    /// Draws the graph's series; the rectangle is the graph rectangle, of which `dataRectInRect` gives the data area. An absent graph (null), one without series, and a thread without a current context draw nothing.
    /// Any rectangle will do. What a subclass throws leaves the graph's drawing.
    virtual void drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect) = 0;
};

/// What a strategy implements in addition when it draws something at the graph's markers. The graph asks whether its strategy has this interface.
class TOLV_EXPORT TOLVGraphMarkerDrawing {
public:
    virtual ~TOLVGraphMarkerDrawing();

    /// Draws over data and title, with the graph's markers of both axes (nulls are passed over); the rectangle is the graph rectangle. Nothing is drawn without a graph or a current context.
    virtual void drawMarkers(const std::vector<std::shared_ptr<TOLVMarker>>& markers, const std::shared_ptr<TOLVGraph>& forGraph, const Rect& inRect) = 0;
};

} // namespace TOLVGraphing
