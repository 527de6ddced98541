#pragma once

#include <TOLVGraphing/data/ColumnReduction.h>
#include <TOLVGraphing/mapping/TOLVLinearMapping.h>
#include <TOLVGraphing/mapping/TOLVLogarithmicMapping.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

namespace TOLVGraphing::testing_support {

/// The reduction as plainly as it can be written: one sample after the other, nothing skipped, nothing remembered between columns. The product has to give the same points to the last bit.
template <typename XMapping, typename YMapping>
class PlainColumnReduction {
public:
    PlainColumnReduction(const ColumnReduction& settings, std::span<const float> xs, std::span<const float> ys)
        : m_settings(settings)
        , m_xs(xs.data())
        , m_ys(ys.data())
        , m_count(static_cast<long>(std::min(xs.size(), ys.size())))
    {
        configure(m_xMap, settings.xMinimum, settings.xMaximum, settings.rect.x(), settings.rect.width());
        configure(m_yMap, settings.yMinimum, settings.yMaximum, settings.rect.y(), settings.rect.height());
    }

    std::vector<Point> points()
    {
        for (long i = start(); i < m_count; ++i) {
            const float x = m_xs[i];
            if (x > m_settings.xMaximum)
                break;
            if (m_settings.xMinimum > x) {
                m_first = m_last = -1;
                m_columnCount = 0;
                continue;
            }
            take(i);
        }
        if (m_settings.closed && m_count > 0)
            emit(m_lastX, m_settings.rect.y());
        return std::move(m_points);
    }

private:
    template <typename Mapping>
    static void configure(Mapping& mapping, float minValue, float maxValue, double origin, double length)
    {
        mapping.setMinValue(minValue);
        mapping.setMaxValue(maxValue);
        mapping.setMinPoint(static_cast<float>(origin));
        mapping.setMaxPoint(static_cast<float>(origin + length));
    }

    long start() const
    {
        for (long k = 0; k < m_count; ++k) {
            if (!(m_settings.xMinimum > m_xs[k]))
                return std::max(k - 1, 0L);
        }
        return std::max(m_count - 1, 0L);
    }

    float px(long i) const { return m_xMap.pointForValue(m_xs[i]); }
    float py(long i) const { return m_yMap.pointForValue(m_ys[i]); }

    void emit(double x, double y)
    {
        if (std::isfinite(x) && std::isfinite(y))
            m_points.push_back({x, y});
    }

    void open(double center, long i)
    {
        m_center = center;
        m_low = m_high = py(i);
        m_lowAt = m_highAt = m_first = m_last = i;
    }

    void take(long i)
    {
        const float x = px(i);
        const float y = py(i);
        if (m_first < 0) {
            open(static_cast<double>(x), i);
            ++m_columnCount;
            if (m_settings.closed) {
                emit(static_cast<double>(x), m_settings.rect.y());
                m_lastX = static_cast<double>(x);
            }
        }
        const double q = static_cast<double>(std::ceil(x) + 0.5F);
        if (std::fabs(q - m_center) < 0.01) {
            m_last = i;
            if (y > m_high) {
                m_high = y;
                m_highAt = i;
            }
            if (m_low > y) {
                m_low = y;
                m_lowAt = i;
            }
            m_columnCount = std::min(m_columnCount + 1, 2);
            return;
        }
        flush();
        open(q, i);
        m_columnCount = 1;
    }

    void flush()
    {
        const auto x1 = static_cast<double>(px(m_first));
        const auto x2 = static_cast<double>(px(m_last));
        const double low = std::isnan(m_low) ? 0.0 : static_cast<double>(m_low);
        const double high = std::isnan(m_high) ? 0.0 : static_cast<double>(m_high);
        if (m_columnCount < 2) {
            emit(x1, low);
            m_lastX = x1;
            return;
        }
        const bool lowFirst = m_highAt >= m_lowAt;
        emit(x1, lowFirst ? low : high);
        emit(x2, lowFirst ? high : low);
        m_lastX = x2;
    }

    const ColumnReduction& m_settings;
    const float* m_xs;
    const float* m_ys;
    long m_count;
    XMapping m_xMap;
    YMapping m_yMap;
    std::vector<Point> m_points;
    double m_center = 0.0;
    double m_lastX = 0.0;
    float m_low = 0.0F;
    float m_high = 0.0F;
    long m_lowAt = -1;
    long m_highAt = -1;
    long m_first = -1;
    long m_last = -1;
    int m_columnCount = 0;
};

/// The points by the plain rule.
[[nodiscard]] inline std::vector<Point> plainlyReduced(const ColumnReduction& settings, std::span<const float> xs, std::span<const float> ys)
{
    using Linear = TOLVLinearMapping;
    using Logarithmic = TOLVLogarithmicMapping;
    if (settings.xIsLog)
        return settings.yIsLog ? PlainColumnReduction<Logarithmic, Logarithmic>(settings, xs, ys).points() : PlainColumnReduction<Logarithmic, Linear>(settings, xs, ys).points();
    return settings.yIsLog ? PlainColumnReduction<Linear, Logarithmic>(settings, xs, ys).points() : PlainColumnReduction<Linear, Linear>(settings, xs, ys).points();
}

} // namespace TOLVGraphing::testing_support
