#include "TOLVXGraphDrawing.h"

#include "../graph/TOLVGraph.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/Path.h"
#include "SampleMarks.h"

namespace TOLVGraphing {

namespace {

/// How far the arms reach from the sample's position along both axes, in points.
constexpr double kArm = 4.0;

void drawX(Point center)
{
    Path path;
    path.setLineWidth(1.0);
    path.moveToX(center.x - kArm, center.y - kArm);
    path.addLineToX(center.x + kArm, center.y + kArm);
    path.moveToX(center.x - kArm, center.y + kArm);
    path.addLineToX(center.x + kArm, center.y - kArm);
    path.stroke();
}

} // namespace

void TOLVXGraphDrawing::drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect)
{
    DrawingContext* context = currentContext();
    if (graph && context)
        drawSampleMarks(*context, *graph, inRect, drawX);
}

} // namespace TOLVGraphing
