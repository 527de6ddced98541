// Long random walks of zooming, panning, fitting and drawing on every kind of axis: nothing hangs, ranges stay numbers, and the number of ticks follows the length of the axis.

#include <TOLVGraphing/axes/TOLVLineAxis.h>
#include <TOLVGraphing/axes/TOLVLinearAxis.h>
#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>
#include <TOLVGraphing/drawing/BarGraphDrawing.h>
#include <TOLVGraphing/drawing/CurveGraphDrawing.h>
#include <TOLVGraphing/drawing/LineGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVVerticalLineGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVXGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVGraphing/platform/graphics/NullContext.h>
#include <TOLVMath/TOLVRealVector.h>

#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <limits>
#include <random>

namespace TOLVGraphing {
namespace {

constexpr int kSteps = 100'000;
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr std::size_t kLongestSeries = 60;

struct Setting {
    const char* name;
    std::shared_ptr<TOLVAxis> (*horizontal)();
    std::shared_ptr<TOLVAxis> (*vertical)();
    std::shared_ptr<TOLVGraphDrawing> (*strategy)();

    friend std::ostream& operator<<(std::ostream& stream, const Setting& setting) { return stream << setting.name; }
};

template <typename Class, typename Base>
std::shared_ptr<Base> make()
{
    return std::make_shared<Class>();
}

/// Samples of both signs, small and large, with gaps; abscissae that ascend.
std::shared_ptr<TOLVGraphData> seriesOf(std::size_t count, float firstX, std::mt19937& random)
{
    std::uniform_real_distribution<float> step(0.01F, 3.0F);
    std::normal_distribution<float> level(20.0F, 60.0F);
    std::vector<float> x;
    std::vector<float> y;
    for (std::size_t i = 0; i < count; ++i) {
        x.push_back(firstX += step(random));
        y.push_back(i % 17 == 5 ? kNaN : level(random));
    }
    return TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), Color(1.0, 0.0, 0.0));
}

class Walk {
public:
    explicit Walk(const Setting& setting)
    {
        graph->setHorizontalAxis(setting.horizontal());
        graph->setVerticalAxis(setting.vertical());
        graph->setDrawingStrategy(setting.strategy());
        if (const auto categories = std::dynamic_pointer_cast<TOLVBarAxis>(graph->horizontalAxis()))
            categories->setTickLabels(TOLVBarAxis::TickLabels(kLongestSeries, "category"));
        for (const auto& [count, firstX] : {std::pair{kLongestSeries, 0.5F}, std::pair<std::size_t, float>{25, 10.0F}, std::pair<std::size_t, float>{1, 30.0F}})
            graph->addGraphData(seriesOf(count, firstX, m_random));
        graph->placeHorizontalAxisMarkerWithValue(20.0);
        graph->placeHorizontalAxisMarkerWithValue(1e30);
        graph->setExtents(graph->extentsFittingGraphData());
    }

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

/// The most ticks that an axis may have over its data area's length.
double mostTicks(const TOLVAxis& axis, double length)
{
    const double lines = std::max(length, 0.0) / 4.0;
    const auto* logarithmic = dynamic_cast<const TOLVLogarithmicAxis*>(&axis);
    if (!logarithmic) {
        // One to ten steps between major values, whose halves are listed however short the axis is.
        return std::max(lines + 13.0, 36.0);
    }
    if (logarithmic->minorValuesDepth() == 2)
        return lines + 2.0;
    // Nine to a decade of the range.
    return axis.majorValues().empty() ? 9.0 : 9.0 * (std::log10(axis.extents()->max() / axis.extents()->min()) + 2.0);
}

void expectSoundTicks(const TOLVAxis& axis, double length)
{
    ASSERT_TRUE(std::isfinite(axis.extents()->min()) && std::isfinite(axis.extents()->max()));
    ASSERT_LE(static_cast<double>(axis.majorValues().size() + axis.minorValues().size()), mostTicks(axis, length))
        << axis.archiveClassName() << " " << toString(*axis.extents()) << " over " << length;
    for (const auto* values : {&axis.majorValues(), &axis.minorValues()}) {
        for (std::size_t i = 0; i < values->size(); ++i) {
            ASSERT_TRUE(std::isfinite((*values)[i]));
            ASSERT_TRUE(i == 0 || (*values)[i - 1] < (*values)[i]) << "ticks ascend";
        }
    }
}

class RandomInteraction : public testing::TestWithParam<Setting> {};

TEST_P(RandomInteraction, keepsRangesAndTicksSound)
{
    NullContext context;
    const CurrentContextScope scope(context);
    Walk walk(GetParam());
    for (int step = 0; step < kSteps; ++step) {
        const Rect rect = walk.step();
        const Rect dataRect = walk.graph->dataRectInRect(rect);
        SCOPED_TRACE(step);
        ASSERT_NO_FATAL_FAILURE(expectSoundTicks(*walk.graph->horizontalAxis(), dataRect.width()));
        ASSERT_NO_FATAL_FAILURE(expectSoundTicks(*walk.graph->verticalAxis(), dataRect.height()));
        if (const auto categories = std::dynamic_pointer_cast<TOLVBarAxis>(walk.graph->horizontalAxis())) {
            ASSERT_LE(categories->dataPointCount(), kLongestSeries);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Axes, RandomInteraction,
    testing::Values(Setting{"linear", make<TOLVLinearAxis, TOLVAxis>, make<TOLVLinearAxis, TOLVAxis>, make<CurveGraphDrawing, TOLVGraphDrawing>},
        Setting{"logarithmic", make<TOLVLogarithmicAxis, TOLVAxis>, make<TOLVLogarithmicAxis, TOLVAxis>, make<TOLVXGraphDrawing, TOLVGraphDrawing>},
        Setting{"impulses", make<TOLVLogarithmicAxis, TOLVAxis>, make<TOLVLinearAxis, TOLVAxis>, make<TOLVVerticalLineGraphDrawing, TOLVGraphDrawing>},
        Setting{"bars", make<TOLVBarAxis, TOLVAxis>, make<TOLVLinearAxis, TOLVAxis>, make<BarGraphDrawing, TOLVGraphDrawing>},
        Setting{"lines", make<TOLVLineAxis, TOLVAxis>, make<TOLVLogarithmicAxis, TOLVAxis>, make<LineGraphDrawing, TOLVGraphDrawing>}),
    [](const testing::TestParamInfo<Setting>& setting) { return setting.param.name; });

} // namespace
} // namespace TOLVGraphing
