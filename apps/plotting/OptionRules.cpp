#include "OptionRules.h"

namespace TOLVGraphing::app {

DrawingKind usualDrawing(AxisKind xAxis)
{
    if (xAxis == AxisKind::Bar)
        return DrawingKind::Bar;
    return xAxis == AxisKind::Line ? DrawingKind::Line : DrawingKind::Curve;
}

AxisKind usualXAxis(DrawingKind drawing)
{
    if (drawing == DrawingKind::Bar)
        return AxisKind::Bar;
    return drawing == DrawingKind::Line ? AxisKind::Line : AxisKind::Linear;
}

bool canDrawOnAxis(DrawingKind drawing, AxisKind xAxis)
{
    switch (drawing) {
    case DrawingKind::Curve:
    case DrawingKind::PlainCurve:
    case DrawingKind::Dotted: return !isCategorical(xAxis);
    case DrawingKind::Line: return xAxis == AxisKind::Line;
    case DrawingKind::Bar: return isCategorical(xAxis);
    case DrawingKind::X:
    case DrawingKind::Impulse: break;
    }
    return true;
}

} // namespace TOLVGraphing::app
