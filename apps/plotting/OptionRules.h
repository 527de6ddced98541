#pragma once

#include "Options.h"

namespace TOLVGraphing::app {

// Which drawings and horizontal axes belong together.

/// The kind of drawing that goes with an axis where none is asked for.
[[nodiscard]] DrawingKind usualDrawing(AxisKind xAxis);
/// The axis that goes with a kind of drawing where none is asked for.
[[nodiscard]] AxisKind usualXAxis(DrawingKind drawing);
/// Lines need the line axis and bars need categories; curves and dots have places of their own, which are not those of categories.
[[nodiscard]] bool canDrawOnAxis(DrawingKind drawing, AxisKind xAxis);

} // namespace TOLVGraphing::app
