#include "SeriesCurves.h"

#include "../data/TOLVGraphCurve.h"
#include "../graph/TOLVGraph.h"
#include "../platform/foundation/Exception.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/GraphicsStateSaver.h"

namespace TOLVGraphing {

namespace {

void drawSeries(const TOLVGraph& graph, const TOLVGraphData& series, const Rect& dataRect, const CurvePreparation& prepare)
{
    const auto x = std::dynamic_pointer_cast<const TOLVRealVector>(series.X());
    const auto y = std::dynamic_pointer_cast<const TOLVRealVector>(series.Y());
    const auto& extents = graph.extents();
    if (!x || !y || !extents || !extents->x() || !extents->y())
        return;
    try {
        const auto curve = TOLVGraphCurve::curveWithX(x, y, series.lineStyle());
        curve->setXMinimum(static_cast<float>(extents->x()->min()));
        curve->setXMaximum(static_cast<float>(extents->x()->max()));
        curve->setYMinimum(static_cast<float>(extents->y()->min()));
        curve->setYMaximum(static_cast<float>(extents->y()->max()));
        curve->setXIsLog(graph.XIsLog());
        curve->setYIsLog(graph.YIsLog());
        if (prepare)
            prepare(*curve, dataRect);
        curve->buildForRect(dataRect);
        curve->drawInRect(dataRect);
    } catch (const Exception&) {
        // One series that cannot be drawn must not keep the others from being drawn.
    }
}

} // namespace

void drawSeriesCurves(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect, const CurvePreparation& prepare)
{
    DrawingContext* context = currentContext();
    if (!graph || !context)
        return;
    const Rect dataRect = graph->dataRectInRect(inRect);
    const GraphicsStateSaver saver(*context);
    Path::pathWithRect(insetRect(dataRect, 1.0, 1.0)).addClip();
    for (const auto& series : graph->graphData())
        drawSeries(*graph, *series, dataRect, prepare);
}

} // namespace TOLVGraphing
