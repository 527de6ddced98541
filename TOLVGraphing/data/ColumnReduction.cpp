#include "ColumnReduction.h"

#include "ColumnExtremes.h"
#include "ColumnScales.h"

#include <TOLVMath/Prefetch.h>
#include <TOLVMath/SortedSamples.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <type_traits>

namespace TOLVGraphing {

namespace {

using Linear = ColumnScale<TOLVLinearMapping>;
using Logarithmic = ColumnScale<TOLVLogarithmicMapping>;

constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

/// The samples of one column: their extremes in position and where they occurred.
struct ColumnState {
    double center = 0.0;
    float low = 0.0F;
    float high = 0.0F;
    std::size_t lowIndex = kNone;
    std::size_t highIndex = kNone;
    std::size_t first = kNone;
    std::size_t last = kNone;
    int count = 0;

    [[nodiscard]] bool isEmpty() const { return first == kNone || last == kNone; }

    void open(double newCenter, float y, std::size_t index, int newCount)
    {
        center = newCenter;
        low = high = y;
        lowIndex = highIndex = first = last = index;
        count = newCount;
    }

    void add(float y, std::size_t index)
    {
        last = index;
        if (y > high) {
            high = y;
            highIndex = index;
        }
        if (low > y) {
            low = y;
            lowIndex = index;
        }
        if (count < 2)
            ++count;
    }
};

float orZero(float position)
{
    return std::isnan(position) ? 0.0F : position;
}

/// Where the vertices go.
class Vertices {
public:
    explicit Vertices(TOLVCurve& curve) : m_curve(curve) {}

    void emit(float x, double y)
    {
        m_lastX = static_cast<double>(x);
        m_curve.addPoint({m_lastX, y});
    }
    void emit(float x, float y) { emit(x, static_cast<double>(y)); }

    /// The abscissa of the vertex that was offered last, whether the curve took it or not.
    [[nodiscard]] double lastX() const { return m_lastX; }
    [[nodiscard]] TOLVCurve& curve() { return m_curve; }

private:
    TOLVCurve& m_curve;
    double m_lastX = 0.0;
};

/// One sample after the other, as the vertices are defined.
template <typename XScale, typename YScale>
class SampleBySample {
public:
    SampleBySample(const ColumnReduction& settings, const ReducibleSeries& series, const XScale& xScale, const YScale& yScale, Vertices& vertices)
        : m_settings(settings)
        , m_xs(series.xs.data())
        , m_ys(series.ys.data())
        , m_count(series.xs.size())
        , m_xScale(xScale)
        , m_yScale(yScale)
        , m_vertices(vertices)
    {
    }

    void run(std::size_t from)
    {
        for (std::size_t i = from; i < m_count; ++i) {
            if (m_xs[i] > m_settings.xMaximum)
                break;
            if (m_settings.xMinimum > m_xs[i]) {
                m_column = {};
                continue;
            }
            visit(i);
        }
    }

private:
    void visit(std::size_t i)
    {
        const float px = m_xScale.pointForValue(m_xs[i]);
        const float py = m_yScale.pointForValue(m_ys[i]);
        if (m_column.isEmpty()) {
            // The very first column is centred on the sample itself, which makes that sample a vertex of its own.
            m_column.open(static_cast<double>(px), py, i, m_column.count + 1);
            if (m_settings.closed)
                m_vertices.emit(px, m_settings.rect.y());
        }
        const auto center = static_cast<double>(std::ceil(px) + 0.5F);
        if (std::abs(center - m_column.center) < 0.01) {
            m_column.add(py, i);
        } else {
            flush();
            m_column.open(center, py, i, 1);
        }
    }

    void flush()
    {
        const float x1 = m_xScale.pointForValue(m_xs[m_column.first]);
        const float x2 = m_xScale.pointForValue(m_xs[m_column.last]);
        const float low = orZero(m_column.low);
        const float high = orZero(m_column.high);
        if (m_column.count < 2) {
            m_vertices.emit(x1, low);
        } else if (m_column.highIndex >= m_column.lowIndex) {
            m_vertices.emit(x1, low);
            m_vertices.emit(x2, high);
        } else {
            m_vertices.emit(x1, high);
            m_vertices.emit(x2, low);
        }
    }

    const ColumnReduction& m_settings;
    const float* m_xs;
    const float* m_ys;
    std::size_t m_count;
    const XScale& m_xScale;
    const YScale& m_yScale;
    Vertices& m_vertices;
    ColumnState m_column;
};

/// Finds the columns' edges among ascending abscissae whose positions are finite and below kFarthest, so that a column is one whole number, the position rounded up.
template <typename XScale>
class ColumnEdges {
public:
    /// Abscissae from `begin` to before `end` are in range, at least one.
    ColumnEdges(const ReducibleSeries& series, const XScale& scale, std::size_t begin, std::size_t end)
        : m_series(series)
        , m_xs(series.xs.data())
        , m_scale(scale)
        , m_end(end)
        , m_begin(begin)
        , m_firstX(static_cast<double>(m_xs[begin]))
        , m_lastColumn(std::ceil(positionOf(end - 1)))
    {
        const double length = static_cast<double>(m_xs[end - 1]) - m_firstX;
        m_samplesToUnit = length > 0.0 ? static_cast<double>(end - 1 - begin) / length : 0.0;
        m_localSamplesToUnit = m_samplesToUnit;
    }

    [[nodiscard]] float positionOf(std::size_t index) const { return m_scale.pointForValue(m_xs[index]); }
    [[nodiscard]] bool isInLastColumn(float position) const { return std::ceil(position) == m_lastColumn; }

    /// The first index behind the column of the sample at `first`, which has this position and is not in the last column.
    std::size_t endOfColumn(std::size_t first, float position)
    {
        // Positions ascend or descend with the index. Up to the whole number at its upper side, or down to before the one at its lower side, is the column.
        const float column = std::ceil(position);
        const bool ascends = m_lastColumn > column;
        const float edge = ascends ? column : column - 1.0F;
        const double value = m_scale.valueNear(static_cast<double>(edge));
        const std::size_t found = firstAbove(value, first + 1, guess(value, first));
        const auto isBehind = [&](std::size_t index) { return ascends ? positionOf(index) > edge : positionOf(index) <= edge; };
        const std::size_t end = settled(found, first + 1, isBehind);
        learn(value, first, end);
        return end;
    }

    /// Where the edges of the next columns will be found, roughly; nowhere when the samples do not come evenly.
    template <typename Function>
    void forRoughEdges(float position, std::size_t columns, const Function& function) const
    {
        if (!m_isEven)
            return;
        const auto further = m_scale.onePositionFurther();
        double value = m_scale.valueNear(static_cast<double>(position));
        for (std::size_t i = 0; i < columns; ++i) {
            function(clampedIndex(guessFromAll(value)));
            value = value * further.factor + further.summand;
        }
    }

private:
    [[nodiscard]] std::size_t clampedIndex(double index) const
    {
        // Written so that NaN becomes the beginning.
        if (!(index > static_cast<double>(m_begin)))
            return m_begin;
        return index < static_cast<double>(m_end) ? static_cast<std::size_t>(index) : m_end;
    }

    [[nodiscard]] double guessFromAll(double value) const { return static_cast<double>(m_begin) + (value - m_firstX) * m_samplesToUnit; }
    [[nodiscard]] double guessFrom(double value, std::size_t first) const { return static_cast<double>(first) + (value - static_cast<double>(m_xs[first])) * m_localSamplesToUnit; }
    [[nodiscard]] std::size_t guess(double value, std::size_t first) const { return clampedIndex(m_isEven ? guessFromAll(value) : guessFrom(value, first)); }

    /// Samples that come evenly are foreseen from the whole range, others from the column before.
    void learn(double value, std::size_t first, std::size_t end)
    {
        const auto place = static_cast<double>(end);
        m_isEven = std::abs(guessFromAll(value) - place) <= std::abs(guessFrom(value, first) - place);
        const double length = static_cast<double>(m_xs[end]) - static_cast<double>(m_xs[first]);
        m_localSamplesToUnit = length > 0.0 ? static_cast<double>(end - first) / length : m_samplesToUnit;
    }

    [[nodiscard]] std::size_t firstAbove(double exactValue, std::size_t from, std::size_t near) const
    {
        if (std::isnan(exactValue))
            return from;
        constexpr auto kLargest = static_cast<double>(std::numeric_limits<float>::max());
        const auto value = static_cast<float>(std::clamp(exactValue, -kLargest, kLargest));
        if (!m_series.sortedX)
            return firstSampleAbove(m_series.xs, value, from, m_end, near);
        const std::size_t location = m_series.xLocation;
        return m_series.sortedX->firstAbove(value, from + location, m_end + location, near + location) - location;
    }

    /// The first index from `low` on that is behind the edge, which is certain of the last one; searched from a place where it should be, by mapping on both sides.
    template <typename IsBehind>
    std::size_t settled(std::size_t near, std::size_t low, const IsBehind& isBehind) const
    {
        std::size_t high = m_end - 1;
        near = std::clamp(near, low, high);
        std::size_t step = 1;
        if (isBehind(near)) {
            high = near;
            while (high > low && isBehind(high - std::min(step, high - low))) {
                high -= std::min(step, high - low);
                step *= 2;
            }
            low = high - low > step ? high - step + 1 : low;
        } else {
            low = near + 1;
            while (low < high && !isBehind(std::min(low + step - 1, high))) {
                low = std::min(low + step, high);
                step *= 2;
            }
            high = std::min(low + step - 1, high);
        }
        while (low < high) {
            const std::size_t middle = low + (high - low) / 2;
            if (isBehind(middle))
                high = middle;
            else
                low = middle + 1;
        }
        return high;
    }

    const ReducibleSeries& m_series;
    const float* m_xs;
    const XScale& m_scale;
    std::size_t m_end;
    std::size_t m_begin;
    double m_firstX;
    float m_lastColumn;
    double m_samplesToUnit = 0.0;
    double m_localSamplesToUnit = 0.0;
    bool m_isEven = true;
};

/// Positions of a larger magnitude have columns that are no whole numbers any more.
constexpr float kFarthest = 4'194'304.0F;
/// Fewer samples to a column than this are mapped one by one. A logarithm costs more than the search.
constexpr std::size_t kFewSamples = 8;
constexpr std::size_t kFewLogarithms = 3;
/// The memory around the edges of so many columns is read before it is needed.
constexpr std::size_t kColumnsAhead = 32;
/// Edges are first looked for so many samples around where they should be.
constexpr std::size_t kHalfWindow = SortedSamples::kWindow / 2;

/// Column by column: two edges and two extremes of each.
template <typename XScale, typename YScale>
class ColumnByColumn {
public:
    ColumnByColumn(const ColumnReduction& settings, const ReducibleSeries& series, const XScale& xScale, const YScale& yScale, Vertices& vertices)
        : m_settings(settings)
        , m_series(series)
        , m_xScale(xScale)
        , m_yScale(yScale)
        , m_vertices(vertices)
    {
    }

    /// Samples from `begin` to before `end` are in range, at least one, and ascend.
    void run(std::size_t begin, std::size_t end)
    {
        ColumnEdges<XScale> edges(m_series, m_xScale, begin, end);
        const float* storage = m_series.ys.data() - m_series.yLocation;
        ColumnExtremes<YScale> extremes(m_yScale, storage, floor(), pyramid());
        float position = edges.positionOf(begin);
        if (m_settings.closed)
            m_vertices.emit(position, m_settings.rect.y());
        m_vertices.emit(position, orZero(yPosition(begin)));
        std::size_t touched = 0;
        // The last sample is in the last column, unless somebody changes a mapped file meanwhile.
        for (std::size_t first = begin; first + 1 < end && !edges.isInLastColumn(position);) {
            if (touched-- == 0) {
                edges.forRoughEdges(position, kColumnsAhead, [&](std::size_t index) { touchAround(index); });
                touched = kColumnsAhead - 1;
            }
            const std::size_t next = edges.endOfColumn(first, position);
            flush(extremes, first, next, position, edges.positionOf(next - 1));
            position = edges.positionOf(next);
            first = next;
        }
    }

private:
    static constexpr bool kIsLogarithmic = std::is_same_v<YScale, Logarithmic>;
    static constexpr float kFloor = -std::numeric_limits<float>::min();

    [[nodiscard]] const ExtremePyramid* pyramid() const { return m_series.logarithms ? m_series.logarithms : m_series.pyramid; }
    [[nodiscard]] float floor() const { return kIsLogarithmic && (m_series.logarithms || !m_series.pyramid) ? kFloor : -std::numeric_limits<float>::infinity(); }
    [[nodiscard]] bool allHavePositions() const { return m_series.pyramid && !m_series.pyramid->hasNaN() && !m_series.logarithms; }
    [[nodiscard]] float yPosition(std::size_t index) const { return m_yScale.pointForValue(m_series.ys[index]); }

    /// Reads what an edge at about this index will need. The loads depend on nothing, so that the memory of many edges is waited for together.
    void touchAround(std::size_t index) const
    {
        const float* abscissa = m_series.xs.data() + std::min(index, m_series.xs.size() - 1);
        touch(abscissa);
        prefetch(abscissa - kHalfWindow);
        prefetch(abscissa + kHalfWindow);
        const ExtremePyramid* extremes = pyramid();
        for (std::size_t level = 0; extremes && level < std::min<std::size_t>(extremes->levelCount(), 2); ++level) {
            const std::size_t entry = std::min((m_series.yLocation + index) >> extremes->shiftOfLevel(level), extremes->entryCount(level) - 1);
            const float* minimum = extremes->minimumOf(level, entry);
            prefetch(minimum);
            prefetch(minimum + ExtremePyramid::kFan);
        }
    }

    void flush(ColumnExtremes<YScale>& extremes, std::size_t from, std::size_t end, float x1, float x2)
    {
        const bool isSingle = end - from == 1;
        // The first sample decides: comparisons with NaN are false, so that nothing replaces it.
        if (isSingle || m_yScale.scaler() == 0.0F || (!allHavePositions() && std::isnan(yPosition(from)))) {
            const float y = orZero(yPosition(from));
            m_vertices.emit(x1, y);
            if (!isSingle)
                m_vertices.emit(x2, y);
            return;
        }
        const Extremes& found = extremes.find(m_series.yLocation + from, m_series.yLocation + end);
        const float atMinimum = m_yScale.pointForValue(found.minimum);
        const float atMaximum = m_yScale.pointForValue(found.maximum);
        if (atMinimum != atMaximum && extremes.isMaximumFirst(atMinimum, atMaximum)) {
            m_vertices.emit(x1, atMaximum);
            m_vertices.emit(x2, atMinimum);
        } else {
            m_vertices.emit(x1, atMinimum);
            m_vertices.emit(x2, atMaximum);
        }
    }

    const ColumnReduction& m_settings;
    const ReducibleSeries& m_series;
    const XScale& m_xScale;
    const YScale& m_yScale;
    Vertices& m_vertices;
};

template <typename XScale, typename YScale>
class Reduction {
public:
    /// `y` is where summaries of the ordinates come from, or null.
    Reduction(const ColumnReduction& settings, const ReducibleSeries& series, const TOLVRealVector* y, TOLVCurve& curve)
        : m_settings(settings)
        , m_series(series)
        , m_y(y)
        , m_vertices(curve)
        , m_xScale(settings.xMinimum, settings.xMaximum, settings.rect.x(), settings.rect.maxX())
        , m_yScale(settings.yMinimum, settings.yMaximum, settings.rect.y(), settings.rect.maxY())
    {
    }

    void run()
    {
        if (m_series.isAscending)
            runAscending();
        else
            SampleBySample(m_settings, m_series, m_xScale, m_yScale, m_vertices).run(indexBeforeRange());
        if (m_settings.closed && !m_series.xs.empty())
            m_vertices.curve().addPoint({m_vertices.lastX(), m_settings.rect.y()});
    }

    [[nodiscard]] bool goesByColumns()
    {
        if (!m_series.isAscending)
            return false;
        findRange();
        return m_begin < m_end && isWorth(columnsInRange());
    }

private:
    /// The sample before the first one that is not below the range, or the first of all. What lies before it is not looked at, not even for an abscissa that would end the curve, as every one does in a reversed range.
    [[nodiscard]] std::size_t indexBeforeRange() const
    {
        const auto& xs = m_series.xs;
        const auto first = static_cast<std::size_t>(std::ranges::find_if_not(xs, [&](float x) { return m_settings.xMinimum > x; }) - xs.begin());
        return first > 0 ? first - 1 : 0;
    }

    /// An end that is NaN leaves nothing out.
    void findRange()
    {
        const auto& xs = m_series.xs;
        m_begin = static_cast<std::size_t>(std::lower_bound(xs.begin(), xs.end(), m_settings.xMinimum) - xs.begin());
        m_end = static_cast<std::size_t>(std::upper_bound(xs.begin() + static_cast<std::ptrdiff_t>(m_begin), xs.end(), m_settings.xMaximum) - xs.begin());
    }

    void runAscending()
    {
        findRange();
        if (m_begin >= m_end)
            return;
        const std::size_t count = m_end - m_begin;
        const std::size_t columns = columnsInRange();
        m_vertices.curve().reserve(std::min(count, 2 * columns) + 4);
        if (!isWorth(columns)) {
            SampleBySample(m_settings, m_series, m_xScale, m_yScale, m_vertices).run(m_begin);
            return;
        }
        if (m_y)
            m_series.useSummaries(*m_y, count, m_settings.yIsLog);
        ColumnByColumn(m_settings, m_series, m_xScale, m_yScale, m_vertices).run(m_begin, m_end);
    }

    [[nodiscard]] bool isWorth(std::size_t columns) const { return columns > 0 && m_end - m_begin >= columns * samplesWorthIt(); }

    static constexpr std::size_t samplesWorthIt() { return std::is_same_v<XScale, Logarithmic> || std::is_same_v<YScale, Logarithmic> ? kFewLogarithms : kFewSamples; }

    /// How many columns there are from the first sample in range to the last, or 0 when only mapping each sample tells.
    [[nodiscard]] std::size_t columnsInRange() const
    {
        const float first = m_xScale.pointForValue(m_series.xs[m_begin]);
        const float last = m_xScale.pointForValue(m_series.xs[m_end - 1]);
        const bool isNear = std::abs(first) < kFarthest && std::abs(last) < kFarthest;
        if (!isNear || !m_xScale.isMonotone() || !m_yScale.isMonotone())
            return 0;
        return static_cast<std::size_t>(std::abs(std::ceil(last) - std::ceil(first))) + 1;
    }

    const ColumnReduction& m_settings;
    ReducibleSeries m_series;
    const TOLVRealVector* m_y;
    Vertices m_vertices;
    XScale m_xScale;
    YScale m_yScale;
    /// The samples in range.
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
};

/// Calls the function with a reduction for the scales of the settings.
template <typename Function>
auto withReduction(const ColumnReduction& settings, const ReducibleSeries& series, const TOLVRealVector* y, TOLVCurve& curve, Function function)
{
    if (settings.xIsLog)
        return settings.yIsLog ? function(Reduction<Logarithmic, Logarithmic>(settings, series, y, curve)) : function(Reduction<Logarithmic, Linear>(settings, series, y, curve));
    return settings.yIsLog ? function(Reduction<Linear, Logarithmic>(settings, series, y, curve)) : function(Reduction<Linear, Linear>(settings, series, y, curve));
}

} // namespace

void ColumnReduction::reduce(const TOLVRealVector& x, const TOLVRealVector& y, TOLVCurve& curve) const
{
    withReduction(*this, ReducibleSeries::of(x, y), &y, curve, [](auto reduction) { reduction.run(); });
}

void ColumnReduction::reduce(const ReducibleSeries& series, TOLVCurve& curve) const
{
    withReduction(*this, series, nullptr, curve, [](auto reduction) { reduction.run(); });
}

bool ColumnReduction::goesByColumns(const ReducibleSeries& series) const
{
    TOLVCurve unused;
    return withReduction(*this, series, nullptr, unused, [](auto reduction) { return reduction.goesByColumns(); });
}

} // namespace TOLVGraphing
