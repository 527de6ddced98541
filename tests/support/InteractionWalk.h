#pragma once

#include <TOLVGraphing/axes/TOLVDateAxis.h>
#include <TOLVGraphing/axes/TOLVLineAxis.h>
#include <TOLVGraphing/axes/TOLVLinearAxis.h>
#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>
#include <TOLVGraphing/drawing/BarGraphDrawing.h>
#include <TOLVGraphing/drawing/CurveGraphDrawing.h>
#include <TOLVGraphing/drawing/LineGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVVerticalLineGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVXGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVMath/TOLVRealVector.h>

#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace TOLVGraphing::testing_support {

/// The kinds of axes and the strategy that a walk goes over.
struct WalkSetting {
    std::string name;
    std::shared_ptr<const TOLVAxis> horizontal;
    std::shared_ptr<const TOLVAxis> vertical;
    std::shared_ptr<TOLVGraphDrawing> strategy;

    friend std::ostream& operator<<(std::ostream& stream, const WalkSetting& setting) { return stream << setting.name; }
};

/// Every kind of axis.
inline std::vector<WalkSetting> walkSettings()
{
    const auto linear = std::make_shared<TOLVLinearAxis>();
    const auto logarithmic = std::make_shared<TOLVLogarithmicAxis>();
    return {
        {"linear", linear, linear, std::make_shared<CurveGraphDrawing>()},
        {"logarithmic", logarithmic, logarithmic, std::make_shared<TOLVXGraphDrawing>()},
        {"impulses", logarithmic, linear, std::make_shared<TOLVVerticalLineGraphDrawing>()},
        {"bars", std::make_shared<TOLVBarAxis>(), linear, std::make_shared<BarGraphDrawing>()},
        {"lines", std::make_shared<TOLVLineAxis>(), logarithmic, std::make_shared<LineGraphDrawing>()},
        {"dates", std::make_shared<TOLVDateAxis>(), std::make_shared<TOLVDateAxis>(), std::make_shared<CurveGraphDrawing>()},
    };
}

/// A random walk of zoom, pan and fit over a graph of three series with gaps and of both signs, to the ends of single precision and into rectangles of any size. Each walk is the same.
class InteractionWalk {
public:
    static constexpr std::size_t kLongestSeries = 60;

    explicit InteractionWalk(const WalkSetting& setting)
    {
        graph->setHorizontalAxis(setting.horizontal);
        graph->setVerticalAxis(setting.vertical);
        graph->setDrawingStrategy(setting.strategy);
        if (const auto categories = std::dynamic_pointer_cast<TOLVBarAxis>(graph->horizontalAxis()))
            categories->setTickLabels(TOLVBarAxis::TickLabels(kLongestSeries, "category"));
        for (const auto& [count, firstX] : {std::pair{kLongestSeries, 0.5F}, std::pair<std::size_t, float>{25, 10.0F}, std::pair<std::size_t, float>{1, 30.0F}})
            graph->addGraphData(seriesOf(count, firstX));
        graph->placeHorizontalAxisMarkerWithValue(20.0);
        graph->placeHorizontalAxisMarkerWithValue(1e30);
        graph->setExtents(graph->extentsFittingGraphData());
    }

    /// One step and a drawing of the graph into the current context; answers the graph rectangle.
    Rect step()
    {
        const Rect rects[] = {{0, 0, 400, 300}, {0, 0, 400, 300}, {10.5, -7.25, 1920, 1080}, {0, 0, 60, 40}, {0, 0, 20, 15}, {0, 0, 0, 0}, {0, 0, -50, 80}, {0, 0, 30000, 3}};
        const Rect rect = rects[below(std::size(rects))];
        const auto at = static_cast<float>(rect.x() + rect.width() * number(-0.5, 1.5));
        const auto atY = static_cast<float>(rect.y() + rect.height() * number(-0.5, 1.5));
        switch (below(14)) {
        case 0: graph->zoomInXInRect(rect); break;
        case 1: graph->zoomOutXInRect(rect); break;
        case 2: graph->zoomInYInRect(rect); break;
        case 3: graph->zoomOutYInRect(rect); break;
        case 4: graph->zoomInXCenteredAtPoint(at, rect); break;
        case 5: graph->zoomOutXCenteredAtPoint(at, rect); break;
        case 6: graph->zoomInYCenteredAtPoint(atY, rect); break;
        case 7: graph->zoomOutYCenteredAtPoint(atY, rect); break;
        case 8: graph->offsetDisplayByX(static_cast<float>(number(-500, 500)), static_cast<float>(number(-500, 500)), rect); break;
        case 9: graph->offsetDisplayByDeltaX(static_cast<float>(number(-1e6, 1e6)), 0.0F, rect); break;
        case 10: repeatedly(rect); break;
        case 11: below(8) == 0 ? graph->zoomToFitXInRect(rect) : graph->zoomInXInRect(rect); break;
        case 12: below(8) == 0 ? graph->zoomToFitYInRect(rect) : graph->zoomOutYInRect(rect); break;
        default: setFixedRange(); break;
        }
        graph->drawInRect(rect);
        return rect;
    }

    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();

private:
    /// Samples of both signs, small and large, with gaps; abscissae that ascend.
    std::shared_ptr<TOLVGraphData> seriesOf(std::size_t count, float firstX)
    {
        std::uniform_real_distribution<float> step(0.01F, 3.0F);
        std::normal_distribution<float> level(20.0F, 60.0F);
        std::vector<float> x;
        std::vector<float> y;
        for (std::size_t i = 0; i < count; ++i) {
            x.push_back(firstX += step(m_random));
            y.push_back(i % 17 == 5 ? std::numeric_limits<float>::quiet_NaN() : level(m_random));
        }
        return TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), Color(1.0, 0.0, 0.0));
    }

    std::size_t below(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(m_random); }
    double number(double from, double to) { return std::uniform_real_distribution<double>(from, to)(m_random); }

    /// To the ends of single precision.
    void repeatedly(const Rect& rect)
    {
        const bool zoomsIn = below(2) == 0;
        for (std::size_t i = below(60); i > 0; --i)
            zoomsIn ? graph->zoomInXInRect(rect) : graph->zoomOutXInRect(rect);
    }

    void setFixedRange()
    {
        const float ends[] = {0.0F, -0.0F, 1.0F, 1000.0F, -5.0F, 1e-38F, 3e38F, -3e38F, 1e-45F, 16777216.0F, 16777218.0F, 40.0F, 41.0F, 0.1F, 1e20F};
        const auto end = [&] { return ends[below(std::size(ends))]; };
        if (below(8) != 0)
            graph->setExtents(graph->extentsFittingGraphData());
        else if (below(2) == 0)
            graph->zoomXToFixedMin(end(), end());
        else
            graph->zoomYToFixedMin(static_cast<double>(end()), static_cast<double>(end()));
    }

    std::mt19937 m_random{20261121};
};

} // namespace TOLVGraphing::testing_support
