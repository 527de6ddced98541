#include "TOLVAxis.h"

#include "../graph/TOLVGraph.h"
#include "../platform/foundation/Exception.h"
#include "TOLVLinearAxis.h"
#include "TOLVLogarithmicAxis.h"

#include <tests/support/DrawnLines.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::EvenTextScope;
using testing_support::linesDrawn;
using testing_support::linesWith;
using Lines = std::vector<std::string>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
const Rect kGraphRect(0.0, 0.0, 400.0, 300.0);

/// A formatter of another class, without a text for odd numbers.
class EvenNumberFormatter final : public NumberFormatter {
public:
    std::optional<std::string> stringFromNumber(double number) const override { return std::fmod(number, 2.0) == 0.0 ? std::optional<std::string>("even") : std::nullopt; }
    std::shared_ptr<NumberFormatter> copy() const override { return std::make_shared<EvenNumberFormatter>(*this); }
};

/// A graph with even text metrics: title strips 14 and tick label strips 12 points high.
class TOLVAxisTest : public testing::Test {
protected:
    TOLVAxisTest() : graph(TOLVGraph::graph())
    {
        graph->zoomXToFixedMin(0.0F, 100.0F);
        graph->zoomYToFixedMin(0.0, 100.0);
    }

    TOLVAxis& horizontal() { return *graph->horizontalAxis(); }
    TOLVAxis& vertical() { return *graph->verticalAxis(); }
    Rect horizontalRect() const { return graph->horizontalAxisRectInRect(kGraphRect); }
    Rect verticalRect() const { return graph->verticalAxisRectInRect(kGraphRect); }

    static Lines texts(const TOLVAxis::Labels& labels)
    {
        Lines result;
        for (const auto& label : labels)
            result.push_back(label->label().string());
        return result;
    }

    EvenTextScope text;
    std::shared_ptr<TOLVGraph> graph;
};

// Construction, copying, archiving.

TEST_F(TOLVAxisTest, HasItsDefaults)
{
    const TOLVAxis axis;
    EXPECT_TRUE(axis.drawsMajorLines());
    EXPECT_TRUE(axis.drawsMinorLines());
    EXPECT_FALSE(axis.drawsMinorLabels());
    EXPECT_TRUE(axis.drawsMajorLabels());
    EXPECT_FALSE(axis.drawsLabelAtEnd());
    EXPECT_FALSE(axis.graph());
    EXPECT_EQ(axis.tickLabelPadding(), 0.0);
    EXPECT_EQ(axis.margin(), 0.0);
    EXPECT_EQ(axis.padding(), 0.0);
    EXPECT_FALSE(axis.label());
    EXPECT_TRUE(axis.majorValues().empty());
    EXPECT_TRUE(axis.minorValues().empty());
    ASSERT_TRUE(axis.tickLabelFormatter());
    EXPECT_EQ(axis.tickLabelFormatter()->stringFromNumber(1234.5), "1,234.5");
}

TEST_F(TOLVAxisTest, OpenOperationsAreNotRecognised)
{
    TOLVAxis axis;
    const auto expectUnrecognised = [](const char* reason, auto operation) {
        try {
            operation();
            ADD_FAILURE() << "no exception: " << reason;
        } catch (const UnrecognizedOperation& exception) {
            EXPECT_EQ(exception.name(), "UnrecognizedOperation");
            EXPECT_EQ(exception.reason(), reason);
        }
    };
    TOLVAxis::Values values;
    expectUnrecognised("TOLVAxis does not implement valueForPoint", [&] { (void)axis.valueForPoint(1.0, kGraphRect); });
    expectUnrecognised("TOLVAxis does not implement pointForValue", [&] { (void)axis.pointForValue(1.0F, kGraphRect); });
    expectUnrecognised("TOLVAxis does not implement updateStepsInRect", [&] { axis.updateStepsInRect(kGraphRect); });
    expectUnrecognised("TOLVAxis does not implement mappingForRect", [&] { (void)axis.mappingForRect(kGraphRect); });
    expectUnrecognised("TOLVAxis does not implement getMajorValues", [&] { axis.getMajorValues(&values, &values); });
    expectUnrecognised("TOLVAxis does not implement updateStepsInRect", [&] { axis.prepareForDrawingInRect(kGraphRect); });
}

TEST_F(TOLVAxisTest, WithoutAGraphItIsHorizontalAndHasNoRange)
{
    TOLVLinearAxis axis;
    EXPECT_FALSE(axis.isVertical());
    EXPECT_FALSE(axis.extents());
    EXPECT_FALSE(axis.tickLabelAttributes());
    axis.setExtents(TOLVAxisExtents::extentsWithMin(1.0, 2.0));
    EXPECT_FALSE(axis.extents());
    axis.setMargin(10.0);
    EXPECT_EQ(toString(axis.dataRectInRect({1.0, 2.0, 30.0, 40.0})), "(1, 12, 30, 30)");
    EXPECT_EQ(toString(axis.tickLabelRectInRect({1.0, 2.0, 30.0, 40.0})), "(1, 12, 30, 0)");
    EXPECT_EQ(toString(axis.labelRectInRect({1.0, 2.0, 30.0, 40.0})), "(1, 2, 30, 0)");
}

TEST_F(TOLVAxisTest, WithoutAGraphItDrawsWithoutHarm)
{
    TOLVLinearAxis axis;
    axis.setLabel("title");
    const Lines lines = linesDrawn([&] {
        axis.prepareForDrawingInRect(kGraphRect);
        axis.drawMinorLinesInRect(kGraphRect);
        axis.drawMajorLinesInRect(kGraphRect);
        axis.drawTickLabelsInRect(kGraphRect);
        axis.drawMarkers({TOLVMarker::markerWithValue(1.0)}, kGraphRect);
        axis.drawLabelInRect(kGraphRect);
        axis.zoomInInRect(kGraphRect);
    });
    EXPECT_EQ(linesWith(lines, "stroke"), (Lines{"stroke M 0.5 0.5 L 399.5 0.5 L 399.5 299.5 L 0.5 299.5 Z"}));
}

TEST_F(TOLVAxisTest, IsVerticalByIdentity)
{
    EXPECT_TRUE(vertical().isVertical());
    EXPECT_FALSE(horizontal().isVertical());
    EXPECT_FALSE(vertical().copy()->isVertical());
    EXPECT_EQ(vertical().copy()->graph(), graph);
}

TEST_F(TOLVAxisTest, DoesNotKeepItsGraphAlive)
{
    const auto axis = graph->verticalAxis();
    const std::weak_ptr<TOLVGraph> weak = graph;
    graph.reset();
    EXPECT_TRUE(weak.expired());
    EXPECT_FALSE(axis->graph());
    EXPECT_FALSE(axis->isVertical());
    EXPECT_FALSE(axis->extents());
}

TEST_F(TOLVAxisTest, ItsRangeIsTheGraphs)
{
    EXPECT_EQ(horizontal().extents(), graph->extents()->x());
    EXPECT_EQ(vertical().extents(), graph->extents()->y());
    const auto range = TOLVAxisExtents::extentsWithMin(3.0, 4.0);
    vertical().setExtents(range);
    range->setMin(-1.0);
    EXPECT_EQ(toString(*graph->extents()), "x [0, 100] y [3, 4] z [0, 0]");
    horizontal().setExtents(range);
    EXPECT_EQ(toString(*graph->extents()), "x [-1, 4] y [3, 4] z [0, 0]");
}

TEST_F(TOLVAxisTest, ACopyKeepsFlagsAndTitleButNoPaddingsNorFormatter)
{
    for (const std::shared_ptr<TOLVAxis>& axis : {std::shared_ptr<TOLVAxis>(std::make_shared<TOLVAxis>(graph)), std::shared_ptr<TOLVAxis>(std::make_shared<TOLVLinearAxis>(graph)),
             std::shared_ptr<TOLVAxis>(std::make_shared<TOLVLogarithmicAxis>(graph))}) {
        SCOPED_TRACE(axis->archiveClassName());
        axis->setDrawsMajorLabels(false);
        axis->setDrawsMajorLines(false);
        axis->setDrawsMinorLabels(true);
        axis->setDrawsMinorLines(false);
        axis->setDrawsLabelAtEnd(true);
        axis->setLabel("title");
        axis->setMargin(1.0);
        axis->setPadding(2.0);
        axis->setTickLabelPadding(3.0);
        axis->setTickLabelFormatter(std::make_shared<EvenNumberFormatter>());
        axis->setMajorValues({1.0});
        axis->setMinorValues({2.0});
        const auto copy = axis->copy();
        EXPECT_EQ(copy->archiveClassName(), axis->archiveClassName());
        EXPECT_EQ(copy->graph(), graph);
        EXPECT_FALSE(copy->drawsMajorLabels());
        EXPECT_FALSE(copy->drawsMajorLines());
        EXPECT_TRUE(copy->drawsMinorLabels());
        EXPECT_FALSE(copy->drawsMinorLines());
        EXPECT_TRUE(copy->drawsLabelAtEnd());
        EXPECT_EQ(copy->label(), "title");
        EXPECT_EQ(copy->margin(), 0.0);
        EXPECT_EQ(copy->padding(), 0.0);
        EXPECT_EQ(copy->tickLabelPadding(), 0.0);
        EXPECT_EQ(copy->tickLabelFormatter()->stringFromNumber(3.0), "3");
        EXPECT_TRUE(copy->majorValues().empty());
        EXPECT_TRUE(copy->minorValues().empty());
    }
}

TEST_F(TOLVAxisTest, TheFormatterIsCopied)
{
    const auto formatter = std::make_shared<EvenNumberFormatter>();
    horizontal().setTickLabelFormatter(formatter);
    EXPECT_NE(horizontal().tickLabelFormatter(), formatter);
    EXPECT_EQ(horizontal().tickLabelFormatter()->stringFromNumber(2.0), "even");
}

TEST_F(TOLVAxisTest, OnlyTheTwoLineFlagsAreArchived)
{
    for (const bool major : {false, true}) {
        for (const bool minor : {false, true}) {
            TOLVLinearAxis axis;
            axis.setDrawsMajorLines(major);
            axis.setDrawsMinorLines(minor);
            axis.setDrawsMajorLabels(false);
            axis.setDrawsMinorLabels(true);
            axis.setDrawsLabelAtEnd(true);
            axis.setLabel("title");
            axis.setMargin(9.0);
            const auto archive = KeyedArchiver::archivedObject(axis);
            EXPECT_EQ(archive->className, "TOLVLinearAxis");
            EXPECT_EQ(archive->baseClassNames, (Lines{"TOLVAxis"}));
            ASSERT_EQ(archive->values.size(), 2U);
            EXPECT_EQ(archive->values[0].first, "drawsMajorLines");
            EXPECT_EQ(std::get<bool>(archive->values[0].second), major);
            EXPECT_EQ(archive->values[1].first, "drawsMinorLines");
            EXPECT_EQ(std::get<bool>(archive->values[1].second), minor);
            const auto back = std::dynamic_pointer_cast<TOLVLinearAxis>(KeyedUnarchiver::unarchivedObject(archive));
            ASSERT_TRUE(back);
            EXPECT_EQ(back->drawsMajorLines(), major);
            EXPECT_EQ(back->drawsMinorLines(), minor);
            EXPECT_TRUE(back->drawsMajorLabels());
            EXPECT_FALSE(back->drawsMinorLabels());
            EXPECT_FALSE(back->drawsLabelAtEnd());
            EXPECT_FALSE(back->label());
            EXPECT_EQ(back->margin(), 0.0);
            EXPECT_FALSE(back->graph());
        }
    }
}

// Layout.

TEST_F(TOLVAxisTest, RectanglesOfTheTwoSidesAreNoMirrorImages)
{
    for (TOLVAxis* axis : {&horizontal(), &vertical()}) {
        axis->setMargin(40.0);
        axis->setPadding(5.0);
        axis->setTickLabelPadding(3.0);
    }
    const Rect rect(100.0, 200.0, 600.0, 400.0);
    EXPECT_EQ(toString(horizontal().dataRectInRect(rect)), "(100, 245, 600, 355)");
    EXPECT_EQ(toString(horizontal().tickLabelRectInRect(rect)), "(100, 230, 600, 12)");
    EXPECT_EQ(toString(horizontal().labelRectInRect(rect)), "(100, 205, 600, 14)");
    EXPECT_EQ(toString(vertical().dataRectInRect(rect)), "(145, 200, 555, 400)");
    EXPECT_EQ(toString(vertical().tickLabelRectInRect(rect)), "(116, 200, 26, 400)");
    EXPECT_EQ(toString(vertical().labelRectInRect(rect)), "(105, 200, 14, 400)");
}

TEST_F(TOLVAxisTest, PreparationStoresTheTickValues)
{
    horizontal().prepareForDrawingInRect({0.0, 0.0, 40.0, 40.0});
    EXPECT_EQ(horizontal().majorValues(), (TOLVAxis::Values{0.0, 100.0}));
    EXPECT_EQ(horizontal().minorValues(), (TOLVAxis::Values{10.0, 20.0, 30.0, 40.0, 50.0, 60.0, 70.0, 80.0, 90.0}));
    graph->zoomXToFixedMin(1.0F, 1.0F);
    horizontal().prepareForDrawingInRect({0.0, 0.0, 40.0, 40.0});
    EXPECT_TRUE(horizontal().majorValues().empty());
    EXPECT_TRUE(horizontal().minorValues().empty());
}

// Lines.

TEST_F(TOLVAxisTest, MajorLinesDrawTheFrameAndStandOnTheMiddleOfPoints)
{
    graph->prepareForDrawingInRect(kGraphRect);
    horizontal().setMajorValues({0.0, 50.0});
    EXPECT_EQ(linesDrawn([&] { horizontal().drawMajorLinesInRect(horizontalRect()); }),
        (Lines{"fillColor (0.5, 0.5, 0.5, 1)", "strokeColor (0.5, 0.5, 0.5, 1)", "stroke M 30.5 15.5 L 384.5 15.5 L 384.5 284.5 L 30.5 284.5 Z", "save",
            "fillColor (0.5, 0.5, 0.5, 1)", "strokeColor (0.5, 0.5, 0.5, 1)", "clip M 31 16 L 384 16 L 384 284 L 31 284 Z", "save", "lineWidth 1",
            "stroke M 30.5 15.5 L 30.5 285.5 M 208.5 15.5 L 208.5 285.5", "restore", "restore"}));
}

TEST_F(TOLVAxisTest, MinorLinesHaveNoFrame)
{
    graph->prepareForDrawingInRect(kGraphRect);
    vertical().setMinorValues({10.0});
    const Lines lines = linesDrawn([&] { vertical().drawMinorLinesInRect(verticalRect()); });
    EXPECT_EQ(linesWith(lines, "stroke"), (Lines{"stroke M 30.5 42.5 L 385.5 42.5"}));
    EXPECT_EQ(linesWith(lines, "lineWidth"), (Lines{"lineWidth 0.5"}));
}

TEST_F(TOLVAxisTest, GridLinesIgnoreTheStylesDash)
{
    const auto style = TOLVLineStyle::dashedLineStyle()->styleWithColor(Color(1.0, 0.0, 0.0));
    const Lines lines = linesDrawn([&] { horizontal().drawLinesForValues({50.0}, kGraphRect, style.get()); });
    EXPECT_TRUE(linesWith(lines, "lineDash").empty());
    EXPECT_EQ(linesWith(lines, "strokeColor"), (Lines{"strokeColor (1, 0, 0, 1)"}));
}

TEST_F(TOLVAxisTest, LinesWithoutAFinitePositionAreLeftOut)
{
    graph->setVerticalAxis(std::make_shared<TOLVLogarithmicAxis>());
    graph->zoomYToFixedMin(1.0, 100.0);
    const Lines lines = linesDrawn([&] { vertical().drawLinesForValues({-1.0, kNaN, 10.0, kInfinity}, kGraphRect, nullptr); });
    EXPECT_EQ(linesWith(lines, "stroke"), (Lines{"stroke M 0.5 150.5 L 400.5 150.5"}));
}

TEST_F(TOLVAxisTest, NoFrameAroundAnEmptyOrInfiniteDataArea)
{
    for (const Rect& rect : {Rect(0.0, 0.0, 0.0, 100.0), Rect(0.0, 0.0, 100.0, 0.0), Rect(0.0, 0.0, -5.0, 100.0), Rect(0.0, 0.0, kInfinity, 100.0), Rect(kNaN, 0.0, 100.0, 100.0)})
        EXPECT_TRUE(linesWith(linesDrawn([&] { horizontal().drawMajorLinesInRect(rect); }), "stroke").empty()) << toString(rect);
}

TEST_F(TOLVAxisTest, DrawsNothingWithoutAContext)
{
    graph->prepareForDrawingInRect(kGraphRect);
    horizontal().setLabel("title");
    horizontal().drawMajorLinesInRect(horizontalRect());
    horizontal().drawMinorLinesInRect(horizontalRect());
    horizontal().drawTickLabelsInRect(horizontalRect());
    horizontal().drawMarkers({TOLVMarker::markerWithValue(1.0)}, horizontalRect());
    horizontal().drawLabelInRect(horizontalRect());
}

TEST_F(TOLVAxisTest, PointsLieOnTheFarSide)
{
    std::vector<Point> major;
    std::vector<Point> minor;
    horizontal().getMajorPoints(major, {0.0, 50.0}, minor, {100.0}, {10.0, 20.0, 200.0, 100.0});
    ASSERT_EQ(major.size(), 2U);
    ASSERT_EQ(minor.size(), 1U);
    EXPECT_EQ(toString(major[0]), "(10, 120)");
    EXPECT_EQ(toString(major[1]), "(110, 120)");
    EXPECT_EQ(toString(minor[0]), "(210, 120)");
    std::vector<Point> points;
    vertical().getPoints(points, {50.0}, {10.0, 20.0, 200.0, 100.0});
    ASSERT_EQ(points.size(), 1U);
    EXPECT_EQ(toString(points[0]), "(210, 70)");
}

// Tick labels.

TEST_F(TOLVAxisTest, TickTextBoxesTheValueAsSinglePrecision)
{
    EXPECT_EQ(horizontal().attributedStringForValue(1234567.9F, nullptr).string(), "1,234,567.875");
    EXPECT_EQ(horizontal().attributedStringForValue(0.1F, nullptr).string(), "0.1");
}

TEST_F(TOLVAxisTest, ALabelNeverReadsMinusZero)
{
    for (const float value : {-0.0F, -0.0001F, -1e-30F, 0.0F})
        EXPECT_EQ(horizontal().labelForValue(value, kGraphRect)->label().string(), "0") << value;
    EXPECT_EQ(horizontal().labelForValue(-0.001F, kGraphRect)->label().string(), "-0.001");
}

TEST_F(TOLVAxisTest, ATextThatTheFormatterLacksIsEmpty)
{
    horizontal().setTickLabelFormatter(std::make_shared<EvenNumberFormatter>());
    EXPECT_EQ(horizontal().attributedStringForValue(1.0F, nullptr).string(), "");
    horizontal().setTickLabelFormatter(nullptr);
    EXPECT_FALSE(horizontal().tickLabelFormatter());
    EXPECT_EQ(horizontal().attributedStringForValue(2.0F, nullptr).string(), "");
}

TEST_F(TOLVAxisTest, LabelsStandCentredBelowAndRightAlignedBeside)
{
    graph->prepareForDrawingInRect(kGraphRect);
    const Rect horizontalStrip = horizontal().tickLabelRectInRect(horizontalRect());
    EXPECT_EQ(toString(horizontalStrip), "(30, 3, 355, 12)");
    // 50 stands at x 207.5, is 12 points wide and 9 high.
    EXPECT_EQ(toString(horizontal().labelForValue(50.0F, horizontalStrip)->rect()), "(201.5, 6, 12, 9)");
    const Rect verticalStrip = vertical().tickLabelRectInRect(verticalRect());
    EXPECT_EQ(toString(verticalStrip), "(14, 15, 16, 270)");
    // 50 stands at y 150 and ends 2 points before 30.5.
    EXPECT_EQ(toString(vertical().labelForValue(50.0F, verticalStrip)->rect()), "(16.5, 145.5, 12, 9)");
}

TEST_F(TOLVAxisTest, TheLabelsHeightIsTheAscender)
{
    graph->setTickLabelAttributes(makeTextAttributes(Font{"Helvetica", 40.0}));
    EXPECT_EQ(horizontal().labelForValue(50.0F, kGraphRect)->rect().height(), 30.0);
}

TEST_F(TOLVAxisTest, OfCollidingLabelsTheFirstInTheListStays)
{
    const Rect strip(0.0, 0.0, 400.0, 12.0);
    TOLVAxis::Labels labels;
    horizontal().getLabels(&labels, {50.0, 51.0, 80.0, 49.0}, strip);
    EXPECT_EQ(texts(labels), (Lines{"50", "80"}));
    horizontal().getLabels(&labels, {49.0, 51.0, 50.0}, strip);
    EXPECT_EQ(texts(labels), (Lines{"49"}));
    horizontal().getLabels(nullptr, {50.0}, strip);
}

TEST_F(TOLVAxisTest, LabelsOutsideTheStripAreDropped)
{
    const Rect strip(0.0, 0.0, 400.0, 12.0);
    TOLVAxis::Labels labels;
    horizontal().getLabels(&labels, {-10.0, 0.0, 100.0, 110.0}, strip);
    EXPECT_EQ(texts(labels), (Lines{"0", "100"}));
}

TEST_F(TOLVAxisTest, LabelsThatAreNotFiniteAreDropped)
{
    TOLVAxis::Labels labels;
    horizontal().getLabels(&labels, {kNaN, kInfinity, -kInfinity, 50.0}, {0.0, 0.0, 400.0, 12.0});
    EXPECT_EQ(texts(labels), (Lines{"50"}));
    horizontal().getLabels(&labels, {50.0}, {kNaN, 0.0, 400.0, 12.0});
    EXPECT_TRUE(labels.empty());
}

TEST_F(TOLVAxisTest, MinorLabelsStandInWhenAtMostOneMajorOneFits)
{
    const Rect strip(0.0, 0.0, 400.0, 12.0);
    TOLVAxis::Labels major;
    TOLVAxis::Labels minor;
    const TOLVAxis::Values minorValues = {20.0, 40.0, 60.0};
    struct Case {
        TOLVAxis::Values majorValues;
        bool drawsMinorLabels;
        Lines majorTexts;
        Lines minorTexts;
    };
    const Case cases[] = {
        {{}, false, {}, {"20", "40", "60"}},
        {{0.0}, false, {"0"}, {"20", "40", "60"}},
        {{0.0, 1.0}, false, {"0"}, {"20", "40", "60"}}, // the second one collides
        {{0.0, 100.0}, false, {"0", "100"}, {}},
        {{0.0, 100.0}, true, {"0", "100"}, {"20", "40", "60"}},
    };
    for (const Case& one : cases) {
        horizontal().setDrawsMinorLabels(one.drawsMinorLabels);
        major = {TOLVLabel::labelWithAttributedString(AttributedString("left over"), {})};
        minor = major;
        horizontal().getMajorLabels(major, one.majorValues, minor, minorValues, strip);
        EXPECT_EQ(texts(major), one.majorTexts);
        EXPECT_EQ(texts(minor), one.minorTexts);
    }
}

TEST_F(TOLVAxisTest, AMinorLabelGivesWayToMajorAndEarlierMinorOnes)
{
    TOLVAxis::Labels major;
    TOLVAxis::Labels minor;
    horizontal().setDrawsMinorLabels(true);
    horizontal().getMajorLabels(major, {50.0}, minor, {49.0, 51.0, 70.0, 71.0, 120.0}, {0.0, 0.0, 400.0, 12.0});
    EXPECT_EQ(texts(major), (Lines{"50"}));
    EXPECT_EQ(texts(minor), (Lines{"70"}));
}

TEST_F(TOLVAxisTest, MajorLabelsAreDrawnBeforeMinorOnes)
{
    graph->prepareForDrawingInRect(kGraphRect);
    horizontal().setMajorValues({50.0});
    horizontal().setMinorValues({20.0});
    EXPECT_EQ(linesDrawn([&] { horizontal().drawTickLabelsInRect(horizontalRect()); }),
        (Lines{"text \"50\" HelveticaNeue-Light 12 (0, 0, 0, 1) at (201.5, 6)", "text \"20\" HelveticaNeue-Light 12 (0, 0, 0, 1) at (95, 6)"}));
}

TEST_F(TOLVAxisTest, MajorValuesAreLabelledWhateverTheKeptFlagsSay)
{
    graph->prepareForDrawingInRect(kGraphRect);
    const Lines before = linesDrawn([&] { horizontal().drawTickLabelsInRect(horizontalRect()); });
    horizontal().setDrawsMajorLabels(false);
    horizontal().setDrawsLabelAtEnd(true);
    EXPECT_FALSE(before.empty());
    EXPECT_EQ(linesDrawn([&] { horizontal().drawTickLabelsInRect(horizontalRect()); }), before);
}

// Title.

TEST_F(TOLVAxisTest, NoTitleDrawsNothing)
{
    EXPECT_TRUE(linesDrawn([&] { horizontal().drawLabelInRect(horizontalRect()); }).empty());
}

TEST_F(TOLVAxisTest, TheHorizontalTitleStandsInTheMiddleOfItsStrip)
{
    graph->prepareForDrawingInRect(kGraphRect);
    horizontal().setLabel("time");
    EXPECT_EQ(linesDrawn([&] { horizontal().drawLabelInRect(horizontalRect()); }), (Lines{"save", "text \"time\" HelveticaNeue 14 (0, 0, 0, 1) at (193.5, 0)", "restore"}));
}

TEST_F(TOLVAxisTest, TheVerticalTitleReadsUpwardsInTheMiddleOfItsStrip)
{
    graph->prepareForDrawingInRect(kGraphRect);
    vertical().setLabel("volt");
    const Lines lines = linesDrawn([&] { vertical().drawLabelInRect(verticalRect()); });
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0], "save");
    // The strip is (0, 15, 14, 270): unturned the text would stand around its middle.
    EXPECT_EQ(lines[2], "text \"volt\" HelveticaNeue 14 (0, 0, 0, 1) at (-7, 143)");
    EXPECT_EQ(lines[3], "restore");
    AffineTransform expected;
    expected.translateXBy(14.0, 136.0);
    expected.rotateDegrees(90.0);
    expected.translateXBy(7.0, -143.0);
    EXPECT_EQ(lines[1], "transform " + toString(expected));
    const Point start = expected.apply(Point{-7.0, 143.0});
    EXPECT_NEAR(start.x, 14.0, 1e-9);
    EXPECT_NEAR(start.y, 136.0, 1e-9);
}

// Marker badges.

TEST_F(TOLVAxisTest, ABadgeIsBlackWithWhiteTextAndFourPointsWiderOnEachSide)
{
    graph->prepareForDrawingInRect(kGraphRect);
    const Lines lines = linesDrawn([&] { horizontal().drawMarkers({TOLVMarker::markerWithValue(50.0)}, horizontalRect()); });
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0], "fillColor (0, 0, 0, 1)");
    EXPECT_EQ(lines[1], "strokeColor (0, 0, 0, 1)");
    // Around the text (201.5, 6, 12, 12): 201 to 214, then four points more and one point up.
    EXPECT_EQ(lines[2], "fill " + toString(Path::pathWithRoundedRect({197.0, 7.0, 21.0, 12.0}, 6.0, 6.0)));
    EXPECT_EQ(lines[3], "text \"50\" HelveticaNeue-Light 12 (1, 1, 1, 1) at (201.5, 6)");
}

TEST_F(TOLVAxisTest, ABadgeIsTwelvePointsHighWhateverTheFont)
{
    for (const double size : {4.0, 12.0, 48.0}) {
        graph->setTickLabelAttributes(makeTextAttributes(Font{"Helvetica", size}));
        graph->prepareForDrawingInRect(kGraphRect);
        RecordingContext context;
        const CurrentContextScope scope(context);
        horizontal().drawMarkers({TOLVMarker::markerWithValue(50.0)}, horizontalRect());
        const Rect strip = horizontal().tickLabelRectInRect(horizontalRect());
        const Rect label = horizontal().labelForValue(50.0F, strip).get()->rect();
        const Rect around = integralRect({label.x(), label.y(), label.width(), size});
        const Rect badge(around.x() - 4.0, around.y() + 1.0, around.width() + 8.0, 12.0);
        EXPECT_EQ(linesWith(context.calls(), "fill"), (Lines{"fill " + toString(Path::pathWithRoundedRect(badge, 6.0, 6.0))})) << size;
    }
}

TEST_F(TOLVAxisTest, BadgesCollideAmongThemselvesFirstComeFirstServed)
{
    graph->prepareForDrawingInRect(kGraphRect);
    TOLVAxis::Markers markers;
    for (const double value : {50.0, 51.0, 80.0, -20.0})
        markers.push_back(TOLVMarker::markerWithValue(value));
    const Lines lines = linesWith(linesDrawn([&] { horizontal().drawMarkers(markers, horizontalRect()); }), "text");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_TRUE(lines[0].starts_with("text \"50\""));
    EXPECT_TRUE(lines[1].starts_with("text \"80\""));
}

TEST_F(TOLVAxisTest, MarkersWithoutAFinitePositionHaveNoBadge)
{
    graph->setHorizontalAxis(std::make_shared<TOLVLogarithmicAxis>());
    graph->zoomXToFixedMin(1.0F, 100.0F);
    graph->prepareForDrawingInRect(kGraphRect);
    TOLVAxis::Markers markers;
    for (const double value : {kNaN, -5.0, kInfinity, 1e300, 10.0})
        markers.push_back(TOLVMarker::markerWithValue(value));
    const Lines lines = linesWith(linesDrawn([&] { horizontal().drawMarkers(markers, horizontalRect()); }), "text");
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_TRUE(lines[0].starts_with("text \"10\""));
}

TEST_F(TOLVAxisTest, NullMarkersArePassedOver)
{
    graph->prepareForDrawingInRect(kGraphRect);
    const TOLVAxis::Markers markers = {nullptr, TOLVMarker::markerWithValue(50.0), nullptr};
    const Lines lines = linesWith(linesDrawn([&] { horizontal().drawMarkers(markers, horizontalRect()); }), "text");
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_TRUE(lines[0].starts_with("text \"50\""));
    EXPECT_EQ(horizontal().markerLabelPlacements(markers, horizontalRect()).size(), 1U);
}

TEST_F(TOLVAxisTest, AMarkerWithoutATextHasNoBadge)
{
    graph->prepareForDrawingInRect(kGraphRect);
    horizontal().setTickLabelFormatter(std::make_shared<EvenNumberFormatter>());
    const TOLVAxis::Markers markers = {TOLVMarker::markerWithValue(51.0), TOLVMarker::markerWithValue(80.0)};
    const Lines lines = linesDrawn([&] { horizontal().drawMarkers(markers, horizontalRect()); });
    EXPECT_EQ(linesWith(lines, "fill").size(), 1U);
    EXPECT_EQ(linesWith(lines, "text").size(), 1U);
}

// Zoom.

TEST_F(TOLVAxisTest, AZoomStepIsFifteenHundredthsOfTheLengthInSinglePrecision)
{
    const Rect rect(0.0, 0.0, 200.0, 100.0);
    const double d = 200.0 * static_cast<double>(0.15F);
    horizontal().zoomOutInRect(rect);
    EXPECT_EQ(graph->extents()->x()->min(), static_cast<double>(static_cast<float>(-d * 0.5) / 2.0F));
    EXPECT_EQ(graph->extents()->x()->max(), static_cast<double>(static_cast<float>(200.0 + d * 0.5) / 2.0F));
    graph->zoomXToFixedMin(0.0F, 100.0F);
    horizontal().zoomInInRect(rect);
    EXPECT_EQ(graph->extents()->x()->min(), static_cast<double>(static_cast<float>(d * 0.5) / 2.0F));
    EXPECT_EQ(toString(*graph->extents()->y()), "[0, 100]");
}

TEST_F(TOLVAxisTest, TheValueUnderTheCoordinateStays)
{
    const Rect rect(40.0, 30.0, 200.0, 100.0);
    for (const double fraction : {0.0, 0.25, 0.5, 1.0}) {
        graph->zoomYToFixedMin(0.0, 100.0);
        const double y = rect.y() + fraction * rect.height();
        const float before = vertical().valueForPoint(y, rect);
        vertical().zoomInCenteredAtPoint(y, rect);
        EXPECT_NEAR(vertical().valueForPoint(y, rect), before, 1e-4) << fraction;
        vertical().zoomOutCenteredAtPoint(y, rect);
        EXPECT_NEAR(vertical().valueForPoint(y, rect), before, 1e-4) << fraction;
    }
    EXPECT_EQ(toString(*graph->extents()->x()), "[0, 100]");
}

TEST_F(TOLVAxisTest, ZoomingInAndOutAgainDoesNotQuiteComeBack)
{
    horizontal().zoomInInRect(kGraphRect);
    horizontal().zoomOutInRect(kGraphRect);
    EXPECT_NEAR(graph->extents()->x()->min(), 1.125, 1e-3);
    EXPECT_NEAR(graph->extents()->x()->max(), 98.875, 1e-3);
}

TEST_F(TOLVAxisTest, ZoomingOverNoLengthIsIgnored)
{
    for (const double length : {0.0, -10.0, kNaN}) {
        const Rect rect(10.0, 10.0, length, length);
        for (TOLVAxis* axis : {&horizontal(), &vertical()}) {
            axis->zoomInInRect(rect);
            axis->zoomOutInRect(rect);
            axis->zoomInCenteredAtPoint(10.0, rect);
            axis->zoomOutCenteredAtPoint(10.0, rect);
        }
        EXPECT_EQ(toString(*graph->extents()), "x [0, 100] y [0, 100] z [0, 0]") << length;
    }
}

TEST_F(TOLVAxisTest, ANewRangeThatIsNotFiniteIsRefused)
{
    for (const double point : {kNaN, kInfinity, -kInfinity}) {
        horizontal().zoomInCenteredAtPoint(point, kGraphRect);
        horizontal().zoomOutCenteredAtPoint(point, kGraphRect);
        EXPECT_EQ(toString(*graph->extents()->x()), "[0, 100]") << point;
    }
    horizontal().zoomInInRect({0.0, 0.0, kInfinity, 10.0});
    EXPECT_EQ(toString(*graph->extents()->x()), "[0, 100]");
    // An empty range cannot be zoomed either.
    graph->zoomXToFixedMin(5.0F, 5.0F);
    horizontal().zoomOutInRect(kGraphRect);
    EXPECT_EQ(toString(*graph->extents()->x()), "[5, 5]");
}

} // namespace
} // namespace TOLVGraphing
