#pragma once

#include "../platform/geometry/Rect.h"

#include <functional>
#include <memory>

namespace TOLVGraphing {

class TOLVGraph;
class TOLVGraphCurve;

/// Changes the samples of a curve, whose ranges and scales are set, before it is made for the data rectangle in points.
using CurvePreparation = std::function<void(TOLVGraphCurve&, const Rect& dataRect)>;

/// Draws each series of the graph as a curve into the current context, within the data area of the rectangle, whose outermost point stays clear for the frame. A series without samples or ranges, and one that cannot be drawn, is left out.
/// Does nothing without a graph or a context.
void drawSeriesCurves(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect, const CurvePreparation& prepare = nullptr);

} // namespace TOLVGraphing
