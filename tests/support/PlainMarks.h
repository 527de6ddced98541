#pragma once

#include <TOLVGraphing/data/TOLVCurve.h>
#include <TOLVGraphing/data/TOLVGraphData.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVGraphing/platform/graphics/DrawingContext.h>
#include <TOLVGraphing/platform/graphics/GraphicsStateSaver.h>
#include <TOLVGraphing/platform/graphics/Path.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <vector>

// Drawings with a mark for each sample as they are defined: one mark after the other, nothing left out. They draw into the current context.

namespace TOLVGraphing::testing_support {

/// Calls the function with each sample's position rounded to whole points, the series' colour being set, with the data area for a clip.
inline void eachPlainMark(const TOLVGraph& graph, const Rect& rect, const std::function<void(DrawingContext&, Point)>& drawMark)
{
    DrawingContext& context = *currentContext();
    const GraphicsStateSaver saver(context);
    Path::pathWithRect(graph.dataRectInRect(rect)).addClip();
    for (const auto& series : graph.graphData()) {
        series->color().value_or(Color::blackColor()).set();
        const std::size_t count = std::min(series->X()->length(), series->Y()->length());
        for (std::size_t i = 0; i < count; ++i) {
            const float x = std::rint(graph.XForValue(series->X()->components()[i], rect));
            const float y = std::rint(graph.YForValue(series->Y()->components()[i], rect));
            if (std::isfinite(x) && std::isfinite(y))
                drawMark(context, {static_cast<double>(x), static_cast<double>(y)});
        }
    }
}

inline void drawPlainXMarks(const TOLVGraph& graph, const Rect& rect)
{
    eachPlainMark(graph, rect, [](DrawingContext&, Point center) {
        Path path;
        path.setLineWidth(1.0);
        path.moveToX(center.x - 4.0, center.y - 4.0);
        path.addLineToX(center.x + 4.0, center.y + 4.0);
        path.moveToX(center.x - 4.0, center.y + 4.0);
        path.addLineToX(center.x + 4.0, center.y - 4.0);
        path.stroke();
    });
}

inline void drawPlainImpulses(const TOLVGraph& graph, const Rect& rect)
{
    const Rect dataRect = graph.dataRectInRect(rect);
    eachPlainMark(graph, rect, [&](DrawingContext& context, Point position) {
        const Rect line = intersectionRect({position.x, dataRect.y(), 1.0, position.y - dataRect.y()}, dataRect);
        if (line.height() != 0.0)
            context.fillRect(line);
    });
}

inline void drawPlainDottedCurve(const TOLVGraph& graph, const Rect& rect)
{
    DrawingContext& context = *currentContext();
    const Rect dataRect = graph.dataRectInRect(rect);
    const GraphicsStateSaver saver(context);
    Path::pathWithRect(dataRect).addClip();
    for (const auto& series : graph.graphData()) {
        series->color().value_or(Color::blackColor()).set();
        const std::size_t count = series->Y()->length();
        const auto step = static_cast<float>(dataRect.width() / static_cast<double>(count));
        float previous = std::rint(static_cast<float>(dataRect.x()));
        float current = std::rint(static_cast<float>(dataRect.x() + static_cast<double>(step)));
        TOLVCurve curve;
        for (std::size_t i = 0; i < count; ++i) {
            const Point center{static_cast<double>((previous + current) * 0.5F), static_cast<double>(graph.YForValue(series->Y()->components()[i], rect))};
            curve.addPoint(center);
            if (center.valid())
                context.fillRect(integralRect({center.x - 2.5, center.y - 2.5, 5.0, 5.0}));
            previous = current;
            current += step;
        }
        curve.stroke();
    }
}

/// All samples have to be in the visible range.
inline void drawPlainBars(const TOLVGraph& graph, const Rect& rect)
{
    DrawingContext& context = *currentContext();
    const Rect dataRect = graph.dataRectInRect(rect);
    const double pad = 0.01 * rect.width();
    const Rect area = insetRect(dataRect, pad, 0.0);
    const GraphicsStateSaver saver(context);
    Path::pathWithRect(dataRect).addClip();
    std::size_t groups = 0;
    for (const auto& series : graph.graphData())
        groups = std::max(groups, series->Y()->length());
    const double slotWidth = area.width() / static_cast<double>(groups);
    const double barWidth = (slotWidth - 2.0 * pad) / static_cast<double>(graph.graphData().size());
    const double gap = 0.08 * barWidth;
    const double width = std::max(barWidth - 2.0 * gap, 1.0);
    for (std::size_t k = 0; k < groups; ++k) {
        std::size_t place = 0;
        for (const auto& series : graph.graphData()) {
            if (k >= series->Y()->length())
                continue;
            const double top = static_cast<double>(graph.YForValue(series->Y()->components()[k], rect));
            const double left = area.x() + static_cast<double>(k) * slotWidth + pad + static_cast<double>(place) * barWidth + gap;
            const Rect bar(left, area.y(), width, top - area.y());
            ++place;
            if (bar.valid() && series->color()) {
                context.setFillColor(series->color());
                context.fillRect(bar);
            }
        }
    }
}

} // namespace TOLVGraphing::testing_support
