#pragma once

#include "../platform/geometry/Point.h"
#include "../platform/geometry/Rect.h"

#include <functional>

namespace TOLVGraphing {

class DrawingContext;
class TOLVGraph;

/// Clips to the graph's data area and calls `drawMark` for each sample of each series, in order, with the sample's position rounded to whole points in single precision. The series' colour is the
/// current one, for strokes and fills, and black stands in for none; the state is as before afterwards. Samples without a finite position are passed over.
void drawSampleMarks(DrawingContext& context, const TOLVGraph& graph, const Rect& inRect, const std::function<void(Point position)>& drawMark);

} // namespace TOLVGraphing
