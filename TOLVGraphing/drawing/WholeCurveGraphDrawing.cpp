#include "WholeCurveGraphDrawing.h"

#include "../data/TOLVGraphCurve.h"
#include "../mapping/TOLVLinearMapping.h"
#include "../mapping/TOLVLogarithmicMapping.h"
#include "CurveGraphDrawing.h"
#include "SeriesCurves.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace TOLVGraphing {

namespace {

/// What the clip leaves free of the data area on every side, in points: the frame stays clear.
constexpr double kFrame = 1.0;
/// How far before the right edge a curve that goes on has its last vertex, in points: the sample at the edge begins another column then, which completes this one.
constexpr double kBeforeEdge = kFrame + 0.0625;

std::shared_ptr<TOLVMapping> mapping(bool isLog, float minimum, float maximum, double length)
{
    std::shared_ptr<TOLVMapping> made = isLog ? std::shared_ptr<TOLVMapping>(std::make_shared<TOLVLogarithmicMapping>()) : std::make_shared<TOLVLinearMapping>();
    made->setMinValue(minimum);
    made->setMaxValue(maximum);
    made->setMinPoint(0.0F);
    made->setMaxPoint(static_cast<float>(length));
    return made;
}

struct Sample {
    float x = 0.0F;
    float y = 0.0F;
};

/// The visible part of a series with what a curve of it needs at the edges.
class VisibleSamples {
public:
    explicit VisibleSamples(const TOLVGraphCurve& curve, const Rect& dataRect)
        : m_curve(curve)
        , m_x(mapping(curve.xIsLog(), curve.xMinimum(), curve.xMaximum(), dataRect.width()))
        , m_y(mapping(curve.yIsLog(), curve.yMinimum(), curve.yMaximum(), dataRect.height()))
        , m_width(dataRect.width())
    {
    }

    /// Nothing where the curve is to be drawn of the samples as they are.
    std::optional<std::vector<Sample>> completed() const
    {
        const TOLVRealVector& x = *m_curve.x();
        if (!(m_curve.xMinimum() < m_curve.xMaximum()) || !(m_width > kBeforeEdge) || !x.isAscending())
            return std::nullopt;
        const float* begin = x.components();
        const float* end = begin + x.length();
        const auto first = static_cast<std::size_t>(std::lower_bound(begin, end, m_curve.xMinimum()) - begin);
        const auto behind = static_cast<std::size_t>(std::upper_bound(begin + first, end, m_curve.xMaximum()) - begin);
        if (behind - first > WholeCurveGraphDrawing::kMostSamples)
            return std::nullopt;
        std::vector<Sample> samples;
        for (std::size_t i = first; i < behind; ++i) {
            if (hasPosition(i))
                samples.push_back(sampleAt(i));
        }
        complete(samples, lastBefore(first), firstFrom(behind));
        return samples;
    }

private:
    Sample sampleAt(std::size_t index) const { return {m_curve.x()->components()[index], m_curve.y()->components()[index]}; }

    bool hasPosition(std::size_t index) const
    {
        const auto [x, y] = sampleAt(index);
        return std::isfinite(x) && std::isfinite(y) && (!m_curve.xIsLog() || x > 0.0F) && (!m_curve.yIsLog() || y > 0.0F);
    }

    /// The nearest sample before the range that has a position, among as many as are looked at.
    std::optional<Sample> lastBefore(std::size_t index) const
    {
        for (std::size_t count = 0; count < WholeCurveGraphDrawing::kMostSamples && count < index; ++count) {
            if (hasPosition(index - count - 1))
                return sampleAt(index - count - 1);
        }
        return std::nullopt;
    }

    /// The same behind the range.
    std::optional<Sample> firstFrom(std::size_t index) const
    {
        for (std::size_t count = 0; count < WholeCurveGraphDrawing::kMostSamples && count < m_curve.pointCount() - index; ++count) {
            if (hasPosition(index + count))
                return sampleAt(index + count);
        }
        return std::nullopt;
    }

    double positionOf(const Sample& sample) const { return static_cast<double>(m_x->pointForValue(sample.x)); }

    /// The value at `x` on the line from one sample to another, straight in points; nothing where it has no place.
    std::optional<Sample> between(const Sample& from, const Sample& to, float x) const
    {
        const double start = positionOf(from);
        const double length = positionOf(to) - start;
        const auto low = static_cast<double>(m_y->pointForValue(from.y));
        const auto high = static_cast<double>(m_y->pointForValue(to.y));
        const double point = low + (high - low) * ((positionOf({x, 0.0F}) - start) / length);
        const float y = m_y->valueForPoint(static_cast<float>(point));
        return std::isfinite(y) ? std::optional(Sample{x, y}) : std::nullopt;
    }

    void complete(std::vector<Sample>& samples, const std::optional<Sample>& before, const std::optional<Sample>& after) const
    {
        const std::optional<Sample> next = samples.empty() ? after : std::optional(samples.front());
        if (before && next && m_curve.xMinimum() < next->x) {
            if (const auto atEdge = between(*before, *next, m_curve.xMinimum()))
                samples.insert(samples.begin(), *atEdge);
        }
        if (samples.empty())
            return;
        const float nearEdge = m_x->valueForPoint(static_cast<float>(m_width - kBeforeEdge));
        auto crossing = std::upper_bound(samples.begin(), samples.end(), nearEdge, [](float x, const Sample& sample) { return x < sample.x; });
        const std::optional<Sample> to = crossing == samples.end() ? after : std::optional(*crossing);
        if (to && crossing != samples.begin()) {
            if (const auto vertex = between(*(crossing - 1), *to, nearEdge))
                samples.insert(crossing, *vertex);
        }
        // It begins the column that completes the one before, and is not drawn itself.
        samples.push_back({m_curve.xMaximum(), samples.back().y});
    }

    const TOLVGraphCurve& m_curve;
    std::shared_ptr<const TOLVMapping> m_x;
    std::shared_ptr<const TOLVMapping> m_y;
    double m_width;
};

void setSamples(TOLVGraphCurve& curve, const std::vector<Sample>& samples)
{
    std::vector<float> x;
    std::vector<float> y;
    x.reserve(samples.size());
    y.reserve(samples.size());
    for (const Sample& sample : samples) {
        x.push_back(sample.x);
        y.push_back(sample.y);
    }
    curve.setX(TOLVRealVector::vectorWithComponents(std::move(x)));
    curve.setY(TOLVRealVector::vectorWithComponents(std::move(y)));
}

} // namespace

void WholeCurveGraphDrawing::drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect)
{
    drawSeriesCurves(graph, inRect, [](TOLVGraphCurve& curve, const Rect& dataRect) {
        if (const auto samples = VisibleSamples(curve, dataRect).completed())
            setSamples(curve, *samples);
    });
}

void WholeCurveGraphDrawing::drawMarkers(const std::vector<std::shared_ptr<TOLVMarker>>& markers, const std::shared_ptr<TOLVGraph>& forGraph, const Rect& inRect)
{
    if (m_drawsMarkerValues)
        CurveGraphDrawing().drawMarkers(markers, forGraph, inRect);
}

std::vector<CalloutPlacement> WholeCurveGraphDrawing::calloutPlacements(const TOLVGraph& graph, const Rect& inRect) const
{
    return m_drawsMarkerValues ? CurveGraphDrawing().calloutPlacements(graph, inRect) : std::vector<CalloutPlacement>();
}

} // namespace TOLVGraphing
