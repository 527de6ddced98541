#include "GraphBuilder.h"

#include "OptionValues.h"

#include "tests/viewer/PlottedFiles.h"

#include <TOLVGraphing/axes/AdaptiveNumberFormatter.h>
#include <TOLVGraphing/axes/TOLVBarAxis.h>
#include <TOLVGraphing/axes/TOLVLinearAxis.h>
#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>
#include <TOLVGraphing/drawing/LineGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVXGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <ostream>

namespace TOLVGraphing::app {

namespace {

using testing_support::PlottedFiles;

constexpr const char* kRising = "t,v\n1,10\n2,20\n4,40\n";

/// A graph with an undo manager, configured once with the default options.
class ConfiguredGraph : public testing::Test {
protected:
    ConfiguredGraph() : files(measurements.files(kRising, {}))
    {
        graph->attachUndoManager(undo);
        configure({}, {});
    }

    void configure(const Options& options, const KeptView& kept) { legend = configureGraph(graph, files, options, kept, notes); }
    void configureKeepingAll(const Options& options) { configure(options, KeptView::everything()); }
    std::string ranges() const { return toString(*graph->extents()->x()) + " " + toString(*graph->extents()->y()); }
    void show(float fromX, float toX, double fromY, double toY)
    {
        graph->zoomXToFixedMin(fromX, toX);
        graph->zoomYToFixedMin(fromY, toY);
    }
    std::vector<double> markerValues() const
    {
        std::vector<double> values;
        for (const auto& marker : graph->markers())
            values.push_back(marker->value());
        return values;
    }

    PlottedFiles measurements;
    std::vector<FileSeries> files;
    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
    std::shared_ptr<UndoManager> undo = std::make_shared<UndoManager>();
    std::vector<LegendEntry> legend;
    std::vector<std::string> notes;
};

struct KeepingCase {
    const char* name;
    std::function<void(Options&)> change;
};

std::ostream& operator<<(std::ostream& stream, const KeepingCase& keepingCase)
{
    return stream << keepingCase.name;
}

class KeptRanges : public ConfiguredGraph, public testing::WithParamInterface<KeepingCase> {};

} // namespace

TEST_P(KeptRanges, andMarkersAndUndoStepsStayAndAxesToo)
{
    show(1.5F, 3.5F, 12.0, 34.0);
    graph->placeHorizontalAxisMarkerWithValue(2.5);
    const auto horizontal = graph->horizontalAxis();
    const auto vertical = graph->verticalAxis();
    Options options;
    GetParam().change(options);
    configureKeepingAll(options);
    EXPECT_EQ(ranges(), "[1.5, 3.5] [12, 34]");
    EXPECT_EQ(markerValues(), (std::vector<double>{2.5}));
    EXPECT_EQ(graph->horizontalAxis(), horizontal);
    EXPECT_EQ(graph->verticalAxis(), vertical);
    undo->undo();
    EXPECT_EQ(markerValues(), std::vector<double>{});
    undo->redo();
    EXPECT_EQ(markerValues(), (std::vector<double>{2.5}));
}

INSTANTIATE_TEST_SUITE_P(Changes, KeptRanges,
    testing::Values(KeepingCase{"nothing", [](Options&) {}}, KeepingCase{"colour", [](Options& options) { options.colors = {Color(1.0, 0.0, 0.0)}; }},
        KeepingCase{"strategy", [](Options& options) { options.drawing = DrawingKind::X; }},
        KeepingCase{"bottom", [](Options& options) { options.drawing = DrawingKind::Impulse; }},
        KeepingCase{"format", [](Options& options) { options.xFormat = NumberStyle::Scientific; }}, KeepingCase{"title", [](Options& options) { options.title = "gypsum"; }},
        KeepingCase{"size",
            [](Options& options) {
                options.size = {1200.0, 100.0};
            }},
        KeepingCase{"markers", [](Options& options) { options.markers = {"1"}; }}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST_F(ConfiguredGraph, replacesSeriesAndLooks)
{
    const auto former = graph->graphData().front();
    Options options;
    options.drawing = DrawingKind::X;
    options.colors = {Color(1.0, 0.0, 0.0)};
    options.title = "gypsum";
    options.xLabel = "";
    options.yLabel = "height";
    options.yFormat = NumberStyle::SI;
    configureKeepingAll(options);
    ASSERT_EQ(graph->graphData().size(), 1U);
    EXPECT_NE(graph->graphData().front(), former);
    EXPECT_EQ(graph->graphData().front()->color(), Color(1.0, 0.0, 0.0));
    EXPECT_EQ(graph->graphData().front()->name(), "v");
    EXPECT_NE(std::dynamic_pointer_cast<TOLVXGraphDrawing>(graph->drawingStrategy()), nullptr);
    EXPECT_EQ(graph->title(), "gypsum");
    EXPECT_EQ(graph->horizontalAxis()->label(), std::nullopt);
    EXPECT_EQ(graph->verticalAxis()->label(), "height");
    EXPECT_EQ(graph->verticalAxis()->tickLabelFormatter()->stringFromNumber(2000.0), "2k");
}

TEST_F(ConfiguredGraph, leavesTheFilesSeriesAsTheyWereRead)
{
    const TOLVGraphData& read = *files.front().selection.series.front().data;
    // The graph's series has a style of its own and the same samples.
    EXPECT_EQ(graph->graphData().front()->X()->components(), read.X()->components());
    EXPECT_EQ(read.X()->length(), 3U);
    EXPECT_EQ(read.color(), Color::blackColor());
    configureKeepingAll({});
    EXPECT_EQ(graph->graphData().front()->X()->components(), read.X()->components());
    EXPECT_EQ(graph->graphData().front()->X()->length(), 3U);
}

TEST_F(ConfiguredGraph, answersALegendEntryForEachSeries)
{
    files = measurements.files("t,quartz,mica\n1,2,3\n2,3,4\n", {});
    Options options;
    options.colors = {Color(1.0, 0.0, 0.0), Color(0.0, 1.0, 0.0)};
    configureKeepingAll(options);
    ASSERT_EQ(legend.size(), 2U);
    EXPECT_EQ(legend[0].title, "quartz");
    EXPECT_EQ(legend[0].lineStyle->color(), Color(1.0, 0.0, 0.0));
    EXPECT_EQ(legend[1].title, "mica");
    EXPECT_EQ(legend[1].lineStyle->color(), Color(0.0, 1.0, 0.0));
}

TEST_F(ConfiguredGraph, fitsTheRangeOfAnAxisWhoseKindChangesAndKeepsItsGridLines)
{
    show(1.5F, 3.5F, 12.0, 34.0);
    graph->verticalAxis()->setDrawsMinorLines(false);
    Options options;
    options.yAxis = AxisKind::Logarithmic;
    configureKeepingAll(options);
    EXPECT_NE(std::dynamic_pointer_cast<TOLVLogarithmicAxis>(graph->verticalAxis()), nullptr);
    EXPECT_EQ(toString(*graph->extents()->x()), "[1.5, 3.5]");
    // A twentieth of log10(40 / 10) more on either side of 10 to 40.
    EXPECT_NEAR(graph->extents()->y()->min(), 10.0 / std::pow(4.0, 0.05), 1e-5);
    EXPECT_NEAR(graph->extents()->y()->max(), 40.0 * std::pow(4.0, 0.05), 1e-5);
    EXPECT_TRUE(graph->verticalAxis()->drawsMajorLines());
    EXPECT_FALSE(graph->verticalAxis()->drawsMinorLines());
    EXPECT_TRUE(graph->horizontalAxis()->drawsMinorLines());
}

TEST_F(ConfiguredGraph, formatsTheNumbersOfAReplacedAxisByThatAxis)
{
    Options options;
    options.yAxis = AxisKind::Logarithmic;
    configureKeepingAll(options);
    GraphSheet sheet = sheetOfGraph(graph, legend, options);
    layoutSheet(sheet, options, {0.0, 0.0, 640.0, 400.0});
    // Between the ticks of an axis fewer digits are written than where nothing is known of ticks.
    constexpr double kBetweenTicks = 12.34567;
    const auto text = graph->verticalAxis()->tickLabelFormatter()->stringFromNumber(kBetweenTicks);
    EXPECT_EQ(text, AdaptiveNumberFormatter(graph->verticalAxis()).stringFromNumber(kBetweenTicks));
    EXPECT_NE(text, AdaptiveNumberFormatter({}).stringFromNumber(kBetweenTicks));
}

TEST_F(ConfiguredGraph, namesNewCategoriesOnAnAxisThatStays)
{
    Options options;
    options.xAxis = AxisKind::Line;
    options.drawing = DrawingKind::Line;
    files = measurements.files("name,v\nquartz,1\nmica,2\n", options);
    configureKeepingAll(options);
    const auto axis = std::dynamic_pointer_cast<TOLVBarAxis>(graph->horizontalAxis());
    ASSERT_NE(axis, nullptr);
    files = measurements.files("name,v\nquartz,1\nmica,2\ngypsum,3\n", options);
    configureKeepingAll(options);
    EXPECT_EQ(graph->horizontalAxis(), axis);
    EXPECT_EQ(*axis->tickLabels(), (std::vector<std::string>{"quartz", "mica", "gypsum"}));
}

TEST_F(ConfiguredGraph, fitsRangesThatCannotBeShown)
{
    const std::string fitting = ranges();
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const std::pair<float, float> cases[] = {{kNan, 1.0F}, {0.0F, kNan}, {-kInfinity, kInfinity}, {3.0F, 3.0F}, {4.0F, 1.0F}};
    for (const auto& [from, to] : cases) {
        show(from, to, static_cast<double>(from), static_cast<double>(to));
        configureKeepingAll({});
        EXPECT_EQ(ranges(), fitting) << from << " to " << to;
    }
}

TEST_F(ConfiguredGraph, fitsALogarithmicRangeThatBeginsAtZero)
{
    Options options;
    options.xAxis = AxisKind::Logarithmic;
    configureKeepingAll(options);
    const std::string fitting = ranges();
    graph->zoomXToFixedMin(0.0F, 10.0F);
    configureKeepingAll(options);
    EXPECT_EQ(ranges(), fitting);
}

TEST_F(ConfiguredGraph, fitsARangeWithoutCategories)
{
    Options options;
    options.xAxis = AxisKind::Bar;
    options.drawing = DrawingKind::Bar;
    files = measurements.files(kRising, options);
    configureKeepingAll(options);
    graph->zoomXToFixedMin(2.0F, 4.0F);
    configureKeepingAll(options);
    EXPECT_EQ(toString(*graph->extents()->x()), "[2, 4]");
    graph->zoomXToFixedMin(2.5F, 3.5F);
    configureKeepingAll(options);
    EXPECT_EQ(toString(*graph->extents()->x()), "[1, 4]");
}

TEST_F(ConfiguredGraph, takesRangesAndMarkersOfTheOptionsWhereTheyAreNotKept)
{
    graph->placeHorizontalAxisMarkerWithValue(2.5);
    Options options;
    options.xRange = RangeText{"0", "8"};
    options.yRange = RangeText{"-1", "1"};
    options.markers = {"1", "3"};
    configure(options, {});
    EXPECT_EQ(ranges(), "[0, 8] [-1, 1]");
    EXPECT_EQ(markerValues(), (std::vector<double>{1.0, 3.0}));
    // The steps of the former markers would not fit.
    EXPECT_FALSE(undo->canUndo());
}

TEST_F(ConfiguredGraph, staysAsItWasWhenTheOptionsCannotBeMet)
{
    files = measurements.files("t,v\n1,-10\n2,-20\n", {});
    configure({}, {});
    graph->placeHorizontalAxisMarkerWithValue(1.5);
    const std::string formerRanges = ranges();
    const auto formerSeries = graph->graphData();
    const auto formerAxis = graph->verticalAxis();
    const auto formerStrategy = graph->drawingStrategy();
    notes = {"a note"};
    Options logarithmic;
    logarithmic.yAxis = AxisKind::Logarithmic;
    Options range;
    range.xRange = RangeText{"2", "1"};
    Options marker;
    marker.markers = {"mica"};
    for (Options options : {logarithmic, range, marker}) {
        options.title = "another";
        options.drawing = DrawingKind::X;
        EXPECT_THROW(configure(options, {}), UsageError);
        EXPECT_EQ(ranges(), formerRanges);
        EXPECT_EQ(graph->graphData(), formerSeries);
        EXPECT_EQ(graph->verticalAxis(), formerAxis);
        EXPECT_EQ(graph->drawingStrategy(), formerStrategy);
        EXPECT_EQ(graph->title(), std::nullopt);
        EXPECT_EQ(markerValues(), (std::vector<double>{1.5}));
        EXPECT_EQ(notes, (std::vector<std::string>{"a note"}));
    }
}

TEST_F(ConfiguredGraph, keepsALogarithmicRangeThatHasNothingToShowAnyMore)
{
    Options options;
    options.yAxis = AxisKind::Logarithmic;
    configureKeepingAll(options);
    const std::string former = ranges();
    files = measurements.files("t,v\n1,-10\n4,-20\n", options);
    configureKeepingAll(options);
    EXPECT_EQ(ranges(), former);
    ASSERT_EQ(notes.size(), 1U);
    EXPECT_TRUE(notes[0].ends_with("--y-axis log: 2 of 2 samples of 'v' are not positive and cannot be shown")) << notes[0];
}

TEST_F(ConfiguredGraph, makesRoomAboveCurvesForMarkersThatAreKept)
{
    graph->placeHorizontalAxisMarkerWithValue(2.0);
    configure({}, {.markers = true});
    // 26 points of 400 above the highest sample, a twentieth below the lowest.
    EXPECT_EQ(toString(*graph->extents()->y()), "[8.5, 41.95]");
}

TEST_F(ConfiguredGraph, labelsMinorValuesAsTheRangesOfTheMomentNeedThem)
{
    const Options options;
    GraphSheet sheet = sheetOfGraph(graph, legend, options);
    struct Case {
        float to;
        bool drawsMinorLabels;
    };
    // Steps of 1: minor values where there are fewer than four of them.
    for (const Case& one : {Case{2.0F, true}, Case{8.0F, false}, Case{2.0F, true}}) {
        graph->zoomXToFixedMin(0.0F, one.to);
        layoutSheet(sheet, options, {0.0, 0.0, 640.0, 400.0});
        EXPECT_EQ(graph->horizontalAxis()->drawsMinorLabels(), one.drawsMinorLabels) << one.to;
    }
}

namespace {

struct ReadingCase {
    const char* name;
    std::function<void(Options&)> change;
    bool needsReading;
};

std::ostream& operator<<(std::ostream& stream, const ReadingCase& readingCase)
{
    return stream << readingCase.name;
}

class ChangedOptions : public testing::TestWithParam<ReadingCase> {};

} // namespace

TEST_P(ChangedOptions, needTheFilesToBeReadAgain)
{
    Options options;
    GetParam().change(options);
    EXPECT_EQ(needFilesBeReadAgain({}, options), GetParam().needsReading);
    EXPECT_EQ(needFilesBeReadAgain(options, {}), GetParam().needsReading);
}

INSTANTIATE_TEST_SUITE_P(Each, ChangedOptions,
    testing::Values(ReadingCase{"nothing", [](Options&) {}, false}, ReadingCase{"files", [](Options& o) { o.files = {"a.csv"}; }, true},
        ReadingCase{"x", [](Options& o) { o.x = "t"; }, true}, ReadingCase{"y", [](Options& o) { o.y = {"v"}; }, true},
        ReadingCase{"categoryColumn", [](Options& o) { o.categoryColumn = "name"; }, true}, ReadingCase{"channels", [](Options& o) { o.channels = 2; }, true},
        ReadingCase{"barAxis", [](Options& o) { o.xAxis = AxisKind::Bar; }, true}, ReadingCase{"lineAxis", [](Options& o) { o.xAxis = AxisKind::Line; }, true},
        ReadingCase{"logarithmicAxes",
            [](Options& o) {
                o.xAxis = AxisKind::Logarithmic;
                o.yAxis = AxisKind::Logarithmic;
            },
            false},
        ReadingCase{"drawing", [](Options& o) { o.drawing = DrawingKind::X; }, false}, ReadingCase{"colors", [](Options& o) { o.colors = {Color()}; }, false},
        ReadingCase{"xRange",
            [](Options& o) {
                o.xRange = RangeText{"0", "1"};
            },
            false},
        ReadingCase{"legend", [](Options& o) { o.legend = true; }, false}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST(NeedFilesBeReadAgain, isFalseBetweenKindsOfCategories)
{
    Options bars;
    bars.xAxis = AxisKind::Bar;
    Options lines;
    lines.xAxis = AxisKind::Line;
    EXPECT_FALSE(needFilesBeReadAgain(bars, lines));
}

} // namespace TOLVGraphing::app
