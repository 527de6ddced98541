#include "TOLVGraphData.h"

#include "../platform/foundation/Exception.h"
#include "../platform/foundation/Log.h"

#include <TOLVMath/TOLVRealVector.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <span>
#include <utility>

namespace TOLVGraphing {

namespace {

float squaredDistance(float a, float b)
{
    return (a - b) * (a - b);
}

/// The first of the samples nearest to x; their number when none has a squared distance below FLT_MAX.
std::size_t nearestOf(std::span<const float> xs, float x)
{
    float best = std::numeric_limits<float>::max();
    std::size_t nearest = xs.size();
    for (std::size_t i = 0; i < xs.size(); ++i) {
        const float distance = squaredDistance(x, xs[i]);
        if (best > distance) {
            nearest = i;
            best = distance;
        }
    }
    return nearest;
}

/// The same, found by halving: towards x the distances of ascending samples never grow, and behind it they never shrink.
std::size_t nearestOfAscending(std::span<const float> xs, float x)
{
    if (std::isnan(x))
        return xs.size();
    const auto behind = std::lower_bound(xs.begin(), xs.end(), x);
    const float farthest = std::numeric_limits<float>::max();
    const float before = behind == xs.begin() ? farthest : squaredDistance(x, *(behind - 1));
    const float after = behind == xs.end() ? farthest : squaredDistance(x, *behind);
    // Written so that infinite distances, and those that are NaN, count as no place.
    const bool isBefore = before < farthest;
    const bool isAfter = after < farthest;
    if (isAfter && !(isBefore && before <= after))
        return static_cast<std::size_t>(behind - xs.begin());
    if (!isBefore)
        return xs.size();
    // Several may be equally near once the distance is rounded: the first one counts.
    const auto first = std::partition_point(xs.begin(), behind, [&](float sample) { return squaredDistance(x, sample) > before; });
    return static_cast<std::size_t>(first - xs.begin());
}

} // namespace

TOLVGraphData::TOLVGraphData() : m_lineStyle(TOLVLineStyle::solidLineWithColor(Color::blackColor(), 1.0)) {}

std::shared_ptr<TOLVGraphData> TOLVGraphData::graphDataWithDataArray(std::span<const Samples> vectors)
{
    if (vectors.size() < 2)
        throw Exception("BadGraphData", "A series needs two vectors, X and Y");
    auto data = std::make_shared<TOLVGraphData>();
    data->setX(vectors[0]);
    data->setY(vectors[1]);
    return data;
}

std::shared_ptr<TOLVGraphData> TOLVGraphData::graphDataWithX(Samples x, Samples y, const std::optional<Color>& color)
{
    auto data = std::make_shared<TOLVGraphData>();
    data->setX(std::move(x));
    data->setY(std::move(y));
    data->setColor(color);
    return data;
}

std::shared_ptr<TOLVGraphData> TOLVGraphData::graphDataWithX(Samples x, Samples y, std::shared_ptr<TOLVLineStyle> lineStyle)
{
    auto data = std::make_shared<TOLVGraphData>();
    data->setX(std::move(x));
    data->setY(std::move(y));
    data->setLineStyle(std::move(lineStyle));
    return data;
}

std::shared_ptr<TOLVGraphData> TOLVGraphData::graphDataWithX(Samples x, Samples y, const std::optional<Color>& color, std::shared_ptr<TOLVLineStyle> lineStyle)
{
    auto data = graphDataWithX(std::move(x), std::move(y), color);
    data->setLineStyle(std::move(lineStyle));
    return data;
}

std::optional<Color> TOLVGraphData::color() const
{
    return m_lineStyle ? m_lineStyle->color() : std::nullopt;
}

void TOLVGraphData::setColor(const std::optional<Color>& color)
{
    if (m_lineStyle)
        m_lineStyle->setColor(color);
}

float TOLVGraphData::YValueAtX(float x, float* actualX) const
{
    const std::size_t length = m_x && m_y ? std::min(m_x->length(), m_y->length()) : 0;
    const std::span<const float> xs(length ? m_x->components() : nullptr, length);
    const auto* vector = dynamic_cast<const TOLVRealVector*>(m_x.get());
    const std::size_t nearest = vector && vector->isAscending() ? nearestOfAscending(xs, x) : nearestOf(xs, x);
    if (nearest == length) {
        writeLog("Could not obtain an x index!!");
        return 0.0F;
    }
    if (actualX)
        *actualX = xs[nearest];
    return m_y->components()[nearest];
}

std::shared_ptr<TOLVGraphData> TOLVGraphData::graphDataInRange(IndexRange range) const
{
    const auto x = std::dynamic_pointer_cast<const TOLVRealVector>(m_x);
    const auto y = std::dynamic_pointer_cast<const TOLVRealVector>(m_y);
    if (!x || !y)
        stopProgram("graphDataInRange only works for TOLVRealVector-based graph data");
    return graphDataWithX(x->realVectorInRange(range.location, range.length), y->realVectorInRange(range.location, range.length), color(), m_lineStyle);
}

} // namespace TOLVGraphing
