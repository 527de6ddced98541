#include "TOLVCurveGraphDrawing.h"

#include "SeriesCurves.h"

namespace TOLVGraphing {

void TOLVCurveGraphDrawing::drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect)
{
    drawSeriesCurves(graph, inRect);
}

} // namespace TOLVGraphing
