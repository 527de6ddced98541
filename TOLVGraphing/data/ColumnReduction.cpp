#include "ColumnReduction.h"

#include "../mapping/TOLVLinearMapping.h"
#include "../mapping/TOLVLogarithmicMapping.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace TOLVGraphing {

namespace {

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

/// One pass of the reduction with the concrete mappings, so that mapping a sample is no virtual call.
template <typename XMapping, typename YMapping>
class ReductionPass {
public:
    ReductionPass(const ColumnReduction& settings, std::span<const float> xs, std::span<const float> ys, TOLVCurve& curve)
        : m_settings(settings)
        , m_xs(xs.data())
        , m_ys(ys.data())
        , m_count(std::min(xs.size(), ys.size()))
        , m_curve(curve)
    {
        const Rect& rect = settings.rect;
        configure(m_xMapping, settings.xMinimum, settings.xMaximum, rect.x(), rect.maxX());
        configure(m_yMapping, settings.yMinimum, settings.yMaximum, rect.y(), rect.maxY());
    }

    void run()
    {
        for (std::size_t i = startIndex(); i < m_count; ++i) {
            if (m_xs[i] > m_settings.xMaximum)
                break;
            if (m_settings.xMinimum > m_xs[i]) {
                m_column = {};
                continue;
            }
            visit(i);
        }
        if (m_settings.closed && m_count > 0)
            m_curve.addPoint({m_lastX, m_settings.rect.y()});
    }

private:
    template <typename Mapping>
    static void configure(Mapping& mapping, float minValue, float maxValue, double minPoint, double maxPoint)
    {
        mapping.setMinValue(minValue);
        mapping.setMaxValue(maxValue);
        mapping.setMinPoint(static_cast<float>(minPoint));
        mapping.setMaxPoint(static_cast<float>(maxPoint));
    }

    /// The sample before the first one that is not below the range.
    [[nodiscard]] std::size_t startIndex() const
    {
        std::size_t k = 0;
        while (k < m_count && m_settings.xMinimum > m_xs[k])
            ++k;
        return k > 0 ? k - 1 : 0;
    }

    void visit(std::size_t i)
    {
        const float px = m_xMapping.pointForValue(m_xs[i]);
        const float py = m_yMapping.pointForValue(m_ys[i]);
        if (m_column.isEmpty()) {
            // The very first column is centred on the sample itself, which makes that sample a vertex of its own.
            m_column.open(static_cast<double>(px), py, i, m_column.count + 1);
            if (m_settings.closed)
                emit(px, m_settings.rect.y());
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
        const float x1 = m_xMapping.pointForValue(m_xs[m_column.first]);
        const float x2 = m_xMapping.pointForValue(m_xs[m_column.last]);
        const float low = std::isnan(m_column.low) ? 0.0F : m_column.low;
        const float high = std::isnan(m_column.high) ? 0.0F : m_column.high;
        if (m_column.count < 2) {
            emit(x1, static_cast<double>(low));
        } else if (m_column.highIndex >= m_column.lowIndex) {
            emit(x1, static_cast<double>(low));
            emit(x2, static_cast<double>(high));
        } else {
            emit(x1, static_cast<double>(high));
            emit(x2, static_cast<double>(low));
        }
    }

    void emit(float x, double y)
    {
        m_lastX = static_cast<double>(x);
        m_curve.addPoint({m_lastX, y});
    }

    const ColumnReduction& m_settings;
    const float* m_xs;
    const float* m_ys;
    std::size_t m_count;
    TOLVCurve& m_curve;
    XMapping m_xMapping;
    YMapping m_yMapping;
    ColumnState m_column;
    /// The abscissa of the vertex that was offered last, whether the curve took it or not.
    double m_lastX = 0.0;
};

template <typename XMapping, typename YMapping>
void runPass(const ColumnReduction& settings, std::span<const float> xs, std::span<const float> ys, TOLVCurve& curve)
{
    ReductionPass<XMapping, YMapping>(settings, xs, ys, curve).run();
}

} // namespace

void ColumnReduction::reduce(std::span<const float> xs, std::span<const float> ys, TOLVCurve& curve) const
{
    if (xIsLog) {
        if (yIsLog)
            runPass<TOLVLogarithmicMapping, TOLVLogarithmicMapping>(*this, xs, ys, curve);
        else
            runPass<TOLVLogarithmicMapping, TOLVLinearMapping>(*this, xs, ys, curve);
    } else if (yIsLog) {
        runPass<TOLVLinearMapping, TOLVLogarithmicMapping>(*this, xs, ys, curve);
    } else {
        runPass<TOLVLinearMapping, TOLVLinearMapping>(*this, xs, ys, curve);
    }
}

} // namespace TOLVGraphing
