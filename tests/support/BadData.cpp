#include "BadData.h"

#include <TOLVGraphing/axes/TOLVBarAxis.h>
#include <TOLVGraphing/axes/TOLVDateAxis.h>
#include <TOLVGraphing/axes/TOLVLineAxis.h>
#include <TOLVGraphing/axes/TOLVLinearAxis.h>
#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>
#include <TOLVGraphing/drawing/BarGraphDrawing.h>
#include <TOLVGraphing/drawing/CurveGraphDrawing.h>
#include <TOLVGraphing/drawing/LineGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVCurveGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVDottedCurveGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVVerticalLineGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVXGraphDrawing.h>
#include <TOLVGraphing/drawing/WholeCurveGraphDrawing.h>
#include <TOLVMath/TOLVRealVector.h>

#include <iostream>
#include <limits>

namespace TOLVGraphing::testing_support {

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kLargest = std::numeric_limits<float>::max();
constexpr float kSubnormal = std::numeric_limits<float>::denorm_min();
constexpr double kInfiniteDouble = std::numeric_limits<double>::infinity();
constexpr double kNaNDouble = std::numeric_limits<double>::quiet_NaN();
constexpr double kLargestFloat = static_cast<double>(kLargest);

std::shared_ptr<TOLVAxis> categoryAxis(const std::shared_ptr<TOLVBarAxis>& axis)
{
    axis->setTickLabels(TOLVBarAxis::TickLabels(20, "category"));
    return axis;
}

} // namespace

std::shared_ptr<TOLVGraphData> BadSeries::series() const
{
    auto style = TOLVLineStyle::solidLineWithColor(Color(0.8, 0.1, 0.1), 1.0);
    auto result = TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(x), TOLVRealVector::vectorWithComponents(y), style);
    result->setName(name);
    return result;
}

const std::vector<BadSeries>& badSeries()
{
    static const std::vector<BadSeries> kSeries = {
        {"ordinary", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, {3, 1, 4, 1, 5, 9, 2, 6, 5, 3}},
        {"noSamples", {}, {}},
        {"oneSample", {5}, {5}},
        {"oneSampleOfNaN", {kNaN}, {kNaN}},
        {"twoEqualSamples", {5, 5}, {5, 5}},
        {"NaNsAmongOrdinates", {1, 2, 3, 4, 5, 6, 7}, {kNaN, 1, kNaN, 9, 2, kNaN, kNaN}},
        {"NaNsAmongAbscissae", {kNaN, 2, kNaN, 4, 5, 6, kNaN}, {1, 2, 3, 4, 5, 6, 7}},
        {"onlyNaN", {kNaN, kNaN, kNaN, kNaN}, {kNaN, kNaN, kNaN, kNaN}},
        {"infiniteOrdinates", {1, 2, 3, 4, 5, 6}, {kInfinity, 1, -kInfinity, kInfinity, 5, -kInfinity}},
        {"infiniteAbscissae", {-kInfinity, 2, 3, kInfinity, 5, kInfinity}, {1, 2, 3, 4, 5, 6}},
        {"largestFloats", {-kLargest, -kLargest, 2, 5, kLargest, kLargest}, {kLargest, -kLargest, kLargest, 5, -kLargest, kLargest}},
        {"subnormalFloats", {-kSubnormal, 0, kSubnormal, 2 * kSubnormal, 1e-40F, 5}, {kSubnormal, -kSubnormal, 1e-40F, 0, -0.0F, 5}},
        {"unsortedAbscissae", {9, 2, 7, 1, 10, 3, 5}, {1, 2, 3, 4, 5, 6, 7}},
        {"descendingAbscissae", {10, 8, 6, 4, 2, 1}, {1, 2, 3, 4, 5, 6}},
        {"repeatedAbscissae", {1, 1, 1, 5, 5, 5, 5, 10, 10}, {1, 9, 2, 8, 3, 7, 4, 6, 5}},
        {"notPositive", {-5, -1, 0, 1, 2, 5}, {0, -1, -5, 1, -0.0F, 5}},
        {"neighbouringFloats", {16777216, 16777218, 16777220, 16777222}, {1, 1.0000001F, 1.0000002F, 1.0000004F}},
        {"moreAbscissae", {1, 2, 3, 4, 5, 6, 7}, {1, 9}},
        {"moreOrdinates", {2, 9}, {1, 2, 3, 4, 5, 6, 7}},
    };
    return kSeries;
}

const std::vector<BadRange>& badRanges()
{
    static const std::vector<BadRange> kRanges = {
        {"ordinary", 1.0, 10.0},
        {"emptyAtZero", 0.0, 0.0},
        {"empty", 5.0, 5.0},
        {"reversed", 10.0, 1.0},
        {"fromNaN", kNaNDouble, 10.0},
        {"toNaN", 1.0, kNaNDouble},
        {"onlyNaN", kNaNDouble, kNaNDouble},
        {"infinite", -kInfiniteDouble, kInfiniteDouble},
        {"toInfinity", 1.0, kInfiniteDouble},
        {"fromInfinityToMinusInfinity", kInfiniteDouble, -kInfiniteDouble},
        {"unknown", kLargestFloat, -kLargestFloat},
        {"allFloats", -kLargestFloat, kLargestFloat},
        {"beyondFloats", -1e300, 1e300},
        {"subnormal", 0.0, static_cast<double>(kSubnormal)},
        {"subnormalDoubles", 1e-310, 1e-300},
        {"fromZero", 0.0, 10.0},
        {"negative", -10.0, -1.0},
        {"acrossZero", -5.0, 5.0},
        {"neighbouringFloats", 16777216.0, 16777218.0},
        {"manyDecades", 1e-45, 1e38},
        {"narrow", 5.0, 5.0000005},
    };
    return kRanges;
}

const std::vector<BadRect>& badRects()
{
    static const std::vector<BadRect> kRects = {
        {"ordinary", {0.0, 0.0, 120.0, 90.0}},
        {"fractional", {10.25, 7.75, 99.5, 70.25}},
        {"ofTheInsets", {20.0, 20.0, 45.0, 30.0}},
        {"aLittleMoreThanTheInsets", {20.0, 20.0, 46.5, 31.5}},
        {"lessThanTheInsets", {20.0, 20.0, 20.0, 15.0}},
        {"zero", {20.0, 20.0, 0.0, 0.0}},
        {"negative", {100.0, 80.0, -80.0, -60.0}},
        {"wide", {0.0, 0.0, 1e9, 90.0}},
        {"high", {0.0, 0.0, 120.0, 1e9}},
        {"large", {-1e9, -1e9, 2e9, 2e9}},
        {"farAway", {1e7, -1e7, 120.0, 90.0}},
        {"flat", {0.0, 0.0, 3000.0, 31.0}},
        {"NaN", {kNaNDouble, kNaNDouble, kNaNDouble, kNaNDouble}, false},
        {"NaNWide", {0.0, 0.0, kNaNDouble, 90.0}, false},
        {"infinite", {-kInfiniteDouble, -kInfiniteDouble, kInfiniteDouble, kInfiniteDouble}, false},
        {"infinitelyWide", {0.0, 0.0, kInfiniteDouble, 90.0}, false},
        {"beyondFloats", {0.0, 0.0, 1e300, 1e300}, false},
    };
    return kRects;
}

const std::vector<NamedStrategy>& allStrategies()
{
    static const std::vector<NamedStrategy> kStrategies = {
        {"curve", [] { return std::make_shared<CurveGraphDrawing>(); }},
        {"plainCurve", [] { return std::make_shared<TOLVCurveGraphDrawing>(); }},
        {"wholeCurve", [] { return std::make_shared<WholeCurveGraphDrawing>(); }},
        {"dottedCurve", [] { return std::make_shared<TOLVDottedCurveGraphDrawing>(); }},
        {"lineWithCallouts", [] { return std::make_shared<LineGraphDrawing>(); }},
        {"bars", [] { return std::make_shared<BarGraphDrawing>(); }},
        {"xMarks", [] { return std::make_shared<TOLVXGraphDrawing>(); }},
        {"impulses", [] { return std::make_shared<TOLVVerticalLineGraphDrawing>(); }},
    };
    return kStrategies;
}

const std::vector<NamedAxes>& allAxes()
{
    static const std::vector<NamedAxes> kAxes = [] {
        const std::pair<const char*, std::shared_ptr<const TOLVAxis>> kinds[] = {
            {"linear", std::make_shared<TOLVLinearAxis>()},
            {"logarithmic", std::make_shared<TOLVLogarithmicAxis>()},
            {"bar", categoryAxis(std::make_shared<TOLVBarAxis>())},
            {"line", categoryAxis(std::make_shared<TOLVLineAxis>())},
        };
        std::vector<NamedAxes> axes;
        for (const auto& [horizontalName, horizontal] : kinds) {
            for (const auto& [verticalName, vertical] : kinds)
                axes.push_back({std::string(horizontalName) + "By_" + verticalName, horizontal, vertical});
        }
        axes.push_back({"dateBy_date", std::make_shared<TOLVDateAxis>(), std::make_shared<TOLVDateAxis>()});
        return axes;
    }();
    return kAxes;
}

std::shared_ptr<TOLVGraph> badDataGraph(const NamedStrategy& strategy, const NamedAxes& axes)
{
    auto graph = TOLVGraph::graph();
    graph->setHorizontalAxis(axes.horizontal);
    graph->setVerticalAxis(axes.vertical);
    graph->setDrawingStrategy(strategy.make());
    graph->setTitle("title");
    graph->horizontalAxis()->setLabel("time");
    graph->verticalAxis()->setLabel("volt");
    for (const double value : {5.0, 0.0, kNaNDouble, kInfiniteDouble, -1e300}) {
        for (const std::int64_t axisIndex : {0, 1})
            graph->placeHorizontalAxisMarkerWithValue(value)->setAxisIndex(axisIndex);
    }
    return graph;
}

void setBadRange(TOLVGraph& graph, const BadRange& range, BadEnds ends)
{
    const auto bad = TOLVAxisExtents::extentsWithMin(range.min, range.max);
    const auto ordinary = TOLVAxisExtents::extentsWithMin(1.0, 10.0);
    graph.extents()->setX(ends == BadEnds::Y ? ordinary : bad);
    graph.extents()->setY(ends == BadEnds::X ? ordinary : bad);
}

void CellCount::add(const std::string& name, std::initializer_list<std::size_t> positions)
{
    m_cells.emplace(name, positions);
}

void CellCount::print(const std::string& ofWhat) const
{
    std::cout << "[  CELLS   ] " << m_cells.size() << " different " << ofWhat << "\n";
}

} // namespace TOLVGraphing::testing_support
