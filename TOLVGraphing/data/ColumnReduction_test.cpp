#include "ColumnReduction.h"

#include "../mapping/TOLVLinearMapping.h"
#include "../mapping/TOLVLogarithmicMapping.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <vector>

namespace TOLVGraphing {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// The reduction as plainly as it can be written: one sample after the other, nothing skipped, nothing remembered between columns. The product has to give the same points to the last bit.
class PlainReduction {
public:
    PlainReduction(const ColumnReduction& settings, const std::vector<float>& xs, const std::vector<float>& ys)
        : m_settings(settings)
        , m_xs(xs)
        , m_ys(ys)
        , m_count(static_cast<long>(std::min(xs.size(), ys.size())))
        , m_xMap(mapping(settings.xIsLog, settings.xMinimum, settings.xMaximum, settings.rect.x(), settings.rect.width()))
        , m_yMap(mapping(settings.yIsLog, settings.yMinimum, settings.yMaximum, settings.rect.y(), settings.rect.height()))
    {
    }

    std::vector<Point> points()
    {
        for (long i = start(); i < m_count; ++i) {
            const float x = m_xs[static_cast<std::size_t>(i)];
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
        return m_points;
    }

private:
    static std::unique_ptr<TOLVMapping> mapping(bool isLog, float minValue, float maxValue, double origin, double length)
    {
        std::unique_ptr<TOLVMapping> result;
        if (isLog)
            result = std::make_unique<TOLVLogarithmicMapping>();
        else
            result = std::make_unique<TOLVLinearMapping>();
        result->setMinValue(minValue);
        result->setMaxValue(maxValue);
        result->setMinPoint(static_cast<float>(origin));
        result->setMaxPoint(static_cast<float>(origin + length));
        return result;
    }

    long start() const
    {
        for (long k = 0; k < m_count; ++k) {
            if (!(m_settings.xMinimum > m_xs[static_cast<std::size_t>(k)]))
                return std::max(k - 1, 0L);
        }
        return std::max(m_count - 1, 0L);
    }

    float px(long i) const { return m_xMap->pointForValue(m_xs[static_cast<std::size_t>(i)]); }
    float py(long i) const { return m_yMap->pointForValue(m_ys[static_cast<std::size_t>(i)]); }

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
    const std::vector<float>& m_xs;
    const std::vector<float>& m_ys;
    long m_count;
    std::unique_ptr<TOLVMapping> m_xMap;
    std::unique_ptr<TOLVMapping> m_yMap;
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

void expectPlainPoints(const ColumnReduction& settings, const std::vector<float>& xs, const std::vector<float>& ys)
{
    TOLVCurve curve;
    settings.reduce(xs, ys, curve);
    const auto points = curve.path().points();
    const std::vector<Point> actual(points.begin(), points.end());
    const std::vector<Point> expected = PlainReduction(settings, xs, ys).points();
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i)
        ASSERT_EQ(toString(actual[i]), toString(expected[i])) << "vertex " << i;
}

ColumnReduction settingsFor(double width)
{
    ColumnReduction settings;
    settings.xMinimum = 0.0F;
    settings.xMaximum = 1.0F;
    settings.yMinimum = -1.0F;
    settings.yMaximum = 1.0F;
    settings.rect = Rect(12.25, 7.5, width, 93.75);
    return settings;
}

std::vector<float> ramp(std::size_t count, float from, float to)
{
    std::vector<float> values;
    for (std::size_t i = 0; i < count; ++i)
        values.push_back(from + (to - from) * static_cast<float>(i) / static_cast<float>(count));
    return values;
}

std::vector<float> noise(std::size_t count, unsigned long seed)
{
    std::mt19937 engine(seed);
    std::uniform_real_distribution<float> distribution(-1.0F, 1.0F);
    std::vector<float> values;
    for (std::size_t i = 0; i < count; ++i)
        values.push_back(distribution(engine));
    return values;
}

TEST(ColumnReduction, GivesThePlainRulesPointsForEveryDensity)
{
    for (const std::size_t count : {1U, 2U, 3U, 10U, 99U, 100U, 101U, 1000U, 20000U}) {
        for (const double width : {0.0, 0.5, 1.0, 3.0, 100.0, 1000.0, 33.3}) {
            for (const bool closed : {false, true}) {
                SCOPED_TRACE(testing::Message() << count << " samples over " << width << " points, closed " << closed);
                ColumnReduction settings = settingsFor(width);
                settings.closed = closed;
                expectPlainPoints(settings, ramp(count, -0.1F, 1.1F), noise(count, 1));
            }
        }
    }
}

TEST(ColumnReduction, GivesThePlainRulesPointsForDamagedSamples)
{
    std::mt19937 engine(7);
    const float damage[] = {kNaN, kInfinity, -kInfinity, 0.0F, -5.0F, 3e38F, -3e38F, 1e-40F};
    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE(round);
        const std::size_t count = 1 + engine() % 300;
        std::vector<float> xs = ramp(count, -0.1F, 1.1F);
        std::vector<float> ys = noise(count, engine());
        for (std::size_t i = 0; i < 1 + count / 10; ++i) {
            ys[engine() % count] = damage[engine() % std::size(damage)];
            if (round % 2)
                xs[engine() % count] = damage[engine() % std::size(damage)];
        }
        ColumnReduction settings = settingsFor(static_cast<double>(1 + engine() % 60));
        settings.closed = engine() % 2;
        settings.xIsLog = engine() % 3 == 0;
        settings.yIsLog = engine() % 3 == 0;
        expectPlainPoints(settings, xs, ys);
    }
}

TEST(ColumnReduction, GivesThePlainRulesPointsForStrangeRangesAndRectangles)
{
    const std::vector<float> xs = ramp(500, -0.1F, 1.1F);
    const std::vector<float> ys = noise(500, 3);
    const float ends[] = {kNaN, kInfinity, -kInfinity, 0.0F, 1.0F, 0.5F, -1.0F, 3.4028235e38F};
    for (const float min : ends) {
        for (const float max : ends) {
            for (const double width : {-50.0, 0.0, 100.0, 1e9, 1e300}) {
                SCOPED_TRACE(testing::Message() << min << ", " << max << " over " << width);
                ColumnReduction settings = settingsFor(width);
                settings.xMinimum = min;
                settings.xMaximum = max;
                settings.closed = true;
                expectPlainPoints(settings, xs, ys);
                std::swap(settings.xMinimum, settings.yMinimum);
                std::swap(settings.xMaximum, settings.yMaximum);
                expectPlainPoints(settings, xs, ys);
            }
        }
    }
}

TEST(ColumnReduction, AColumnShowsItsTrueExtremesWhateverTheNumberOfSamples)
{
    // One spike up and one down in the same column among many samples.
    std::vector<float> xs = ramp(100000, 0.0F, 1.0F);
    std::vector<float> ys(xs.size(), 0.0F);
    ys[50200] = 1.0F;
    ys[50300] = -1.0F;
    ColumnReduction settings = settingsFor(100.0);
    settings.rect = Rect(0.0, 0.0, 100.0, 200.0);
    TOLVCurve curve;
    settings.reduce(xs, ys, curve);
    std::vector<double> heights;
    for (const Point& point : curve.path().points()) {
        if (point.y != 100.0)
            heights.push_back(point.y);
    }
    EXPECT_EQ(heights, (std::vector<double>{200.0, 0.0}));
}

TEST(ColumnReduction, VerticesAreBoundedByTheColumns)
{
    const ColumnReduction settings = settingsFor(250.0);
    TOLVCurve curve;
    const std::vector<float> xs = ramp(200000, 0.0F, 1.0F);
    settings.reduce(xs, noise(200000, 9), curve);
    EXPECT_LE(curve.pointIdx(), 2U * 252U);
    EXPECT_GE(curve.pointIdx(), 2U * 248U);
}

// Beyond 2^23 a single-precision position has no half points: neighbouring columns run together, and the first sample is no vertex of its own.
TEST(ColumnReduction, PositionsWithoutHalfPointsMergeIntoTheFirstColumn)
{
    ColumnReduction settings = settingsFor(4.0);
    settings.rect = Rect(16777216.0, 0.0, 4.0, 10.0);
    const std::vector<float> xs = {0.0F, 0.0F, 1.0F};
    const std::vector<float> ys = {0.0F, 1.0F, 0.0F};
    expectPlainPoints(settings, xs, ys);
    TOLVCurve curve;
    settings.reduce(xs, ys, curve);
    EXPECT_EQ(toString(curve.path()), "M 16777216 5 L 16777216 10");
}

} // namespace
} // namespace TOLVGraphing
