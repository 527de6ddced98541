#include "LineGraphDrawing.h"

#include "../axes/TOLVLineAxis.h"
#include "../graph/TOLVGraph.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/DrawingContext.h"
#include "DataDots.h"
#include "RectIndex.h"
#include "VisibleSeries.h"

#include <algorithm>
#include <optional>
#include <string>

namespace TOLVGraphing {

namespace {

const TOLVLineAxis* lineAxisOf(const TOLVGraph& graph)
{
    return dynamic_cast<const TOLVLineAxis*>(graph.horizontalAxis().get());
}

Rect plotRectOf(const TOLVGraph& graph, const Rect& rect)
{
    return insetRect(graph.dataRectInRect(rect), 0.5, 0.5);
}

std::size_t longestOf(const std::vector<VisibleSeries>& visible)
{
    std::size_t longest = 0;
    for (const auto& [index, series] : visible)
        longest = std::max(longest, series->Y()->length());
    return longest;
}

/// Where the samples of a series are drawn.
std::vector<Point> pointsOfSeries(const TOLVGraphData& series, const TOLVGraph& graph, const TOLVLineAxis& axis, const Rect& rect)
{
    const Rect plotRect = plotRectOf(graph, rect);
    const float* values = series.Y()->components();
    std::vector<Point> points;
    points.reserve(series.Y()->length());
    for (std::size_t i = 0; i < series.Y()->length(); ++i)
        points.push_back({axis.pointForDataAtIndex(i, plotRect), static_cast<double>(graph.YForValue(values[i], rect))});
    return points;
}

/// Collects the callouts and dots of all series, category by category, and remembers whose they are.
class CalloutCollection {
public:
    CalloutCollection(std::size_t categoryCount, const NumberFormatter* formatter, const SharedTextAttributes& attributes)
        : m_formatter(formatter)
        , m_attributes(attributes)
        , m_labels(categoryCount)
        , m_series(categoryCount)
    {
    }

    void addDots(const std::vector<Point>& points)
    {
        const auto dots = dataDotRects(points);
        m_dots.insert(m_dots.end(), dots.begin(), dots.end());
    }

    /// Labels that surely cover a dot of those added so far are left out from now on: laying out their text takes longer than all the rest.
    void leaveOutCovered()
    {
        m_covered.emplace();
        for (const Rect& dot : m_dots)
            m_covered->add(dot);
    }

    void addLabels(const VisibleSeries& visible, const std::vector<Point>& points)
    {
        const float* values = visible.data->Y()->components();
        for (std::size_t i = 0; i < points.size(); ++i) {
            const auto text = m_formatter ? labelTextFromNumber(*m_formatter, static_cast<double>(values[i])) : std::nullopt;
            if (!text || (m_covered && coversDot(*text, points[i])))
                continue;
            AttributedString string(*text, m_attributes);
            const Rect rect = rectForCalloutLabel(string, points[i]);
            m_labels[i].push_back({std::move(string), rect});
            m_series[i].push_back(visible.index);
        }
    }

    [[nodiscard]] std::vector<CalloutLabelPlacement> placements() const { return placeCalloutLabels(m_labels, m_dots); }
    [[nodiscard]] std::size_t seriesOf(const CalloutLabelPlacement& placement) const { return m_series[placement.category][placement.position]; }

private:
    [[nodiscard]] bool coversDot(const std::string& text, Point point) const
    {
        return text.find_first_of("0123456789") != std::string::npos && m_covered->anyOverlapping(coreOfCalloutLabel(point));
    }

    const NumberFormatter* m_formatter;
    const SharedTextAttributes& m_attributes;
    std::vector<std::vector<CalloutLabel>> m_labels;
    std::vector<std::vector<std::size_t>> m_series;
    std::vector<Rect> m_dots;
    std::optional<RectIndex> m_covered;
};

} // namespace

LineGraphDrawing::LineGraphDrawing() : LineGraphDrawing(std::make_shared<NumberFormatter>()) {}

LineGraphDrawing::LineGraphDrawing(const std::shared_ptr<const NumberFormatter>& calloutLabelFormatter)
    : m_calloutLabelFormatter(calloutLabelFormatter ? calloutLabelFormatter->copy() : nullptr)
    , m_calloutLabelAttributes(makeTextAttributes(Font{"HelveticaNeue", 11.0}, Color::blackColor()))
{
}

void LineGraphDrawing::drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect)
{
    DrawingContext* context = currentContext();
    const TOLVLineAxis* axis = graph ? lineAxisOf(*graph) : nullptr;
    if (!context || !axis)
        return;
    const Rect dataRect = graph->dataRectInRect(inRect);
    const auto inPlot = [&](const std::function<void()>& drawing) {
        context->inIsolatedContext([&](DrawingContext& isolated) {
            isolated.addRect(plotRectOf(*graph, inRect));
            isolated.clip();
            drawing();
        });
    };
    const auto visible = visibleSeriesOfGraph(*graph);
    CalloutCollection callouts(longestOf(visible), m_calloutLabelFormatter.get(), m_calloutLabelAttributes);
    std::vector<std::vector<Point>> pointsOfAll;
    for (const VisibleSeries& series : visible) {
        pointsOfAll.push_back(pointsOfSeries(*series.data, *graph, *axis, inRect));
        callouts.addDots(pointsOfAll.back());
    }
    callouts.leaveOutCovered();
    for (std::size_t i = 0; i < visible.size(); ++i) {
        const VisibleSeries& series = visible[i];
        const std::vector<Point>& points = pointsOfAll[i];
        callouts.addLabels(series, points);
        const TOLVLineStyle* style = series.data->lineStyle().get();
        inPlot([&] {
            fillUnderPoints(points, dataRect, style);
            strokePoints(points, style);
            drawDataDots(dataDotRects(points), style);
        });
    }
    std::vector<CalloutLabel> kept;
    for (CalloutLabelPlacement& placement : callouts.placements()) {
        if (placement.fate == CalloutFate::Kept)
            kept.push_back(std::move(placement.label));
    }
    inPlot([&] { drawCalloutLabels(kept); });
}

std::vector<CalloutPlacement> LineGraphDrawing::calloutPlacements(const TOLVGraph& graph, const Rect& inRect) const
{
    std::vector<CalloutPlacement> result;
    const TOLVLineAxis* axis = lineAxisOf(graph);
    if (!axis)
        return result;
    const auto visible = visibleSeriesOfGraph(graph);
    CalloutCollection callouts(longestOf(visible), m_calloutLabelFormatter.get(), m_calloutLabelAttributes);
    for (const VisibleSeries& series : visible) {
        const auto points = pointsOfSeries(*series.data, graph, *axis, inRect);
        callouts.addDots(points);
        callouts.addLabels(series, points);
    }
    for (const CalloutLabelPlacement& placement : callouts.placements()) {
        const auto& [string, rect] = placement.label;
        result.push_back({string.string(), rect, rect, callouts.seriesOf(placement), placement.category, placement.fate, placement.collidesWith});
    }
    return result;
}

std::size_t maximumGraphDataLength(const TOLVGraph& graph)
{
    return longestOf(visibleSeriesOfGraph(graph));
}

} // namespace TOLVGraphing
