#include "TOLVBarAxis.h"

#include "../graph/TOLVGraph.h"
#include "../platform/foundation/Exception.h"
#include "TOLVLineAxis.h"

#include <tests/support/ChangingSamples.h>
#include <tests/support/DrawnLines.h>
#include <tests/support/Generated.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::ChangingSamples;
using testing_support::EvenTextScope;
using testing_support::Generated;
using testing_support::linesDrawn;
using testing_support::linesWith;
using Lines = std::vector<std::string>;
using Ranges = std::vector<IndexRange>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
/// The graph rectangle of the tests, and the data area: the strip of the tick labels, 12 points high, stands on 3.
const Rect kRect(0.0, 0.0, 400.0, 100.0);

std::vector<float> numbersTo(std::size_t count)
{
    std::vector<float> numbers;
    for (std::size_t i = 0; i < count; ++i)
        numbers.push_back(static_cast<float>(i));
    return numbers;
}

TOLVBarAxis::TickLabels lettersTo(std::size_t count)
{
    TOLVBarAxis::TickLabels letters;
    for (std::size_t i = 0; i < count; ++i)
        letters.emplace_back(1, static_cast<char>('A' + i % 26));
    return letters;
}

/// A graph with a bar axis below, even text metrics and a visible range of 0 to 100.
class TOLVBarAxisTest : public testing::Test {
protected:
    TOLVBarAxisTest()
    {
        graph->setMargin({0.0, 0.0, 15.0, 0.0});
        graph->setHorizontalAxis(std::make_shared<TOLVBarAxis>());
        show(0.0, 100.0);
    }

    TOLVBarAxis& axis() { return dynamic_cast<TOLVBarAxis&>(*graph->horizontalAxis()); }

    std::shared_ptr<TOLVGraphData> add(TOLVGraphData::Samples x)
    {
        const std::vector<float> y(x ? x->length() : 0, 1.0F);
        auto series = TOLVGraphData::graphDataWithX(std::move(x), TOLVRealVector::vectorWithComponents(y), Color::blackColor());
        graph->addGraphData(series);
        return series;
    }

    std::shared_ptr<TOLVGraphData> add(std::vector<float> x) { return add(TOLVRealVector::vectorWithComponents(std::move(x))); }

    /// Sets the visible range and prepares the graph for it.
    void show(double min, double max)
    {
        graph->extents()->setX(TOLVAxisExtents::extentsWithMin(min, max));
        prepare();
    }

    void prepare() { graph->prepareForDrawingInRect(kRect); }

    std::vector<double> centersIn(const Rect& rect)
    {
        std::vector<double> centers;
        for (std::uint64_t i = 0; i < axis().dataPointCount(); ++i)
            centers.push_back(axis().pointForDataAtIndex(i, rect));
        return centers;
    }

    /// "A (B) C": the texts that are thought of, those that are not drawn in brackets.
    std::string labels()
    {
        std::string words;
        for (const LabelPlacement& placement : axis().tickLabelPlacements(kRect)) {
            const std::string& word = placement.label->label().string();
            words += (words.empty() ? "" : " ") + (placement.fate == LabelFate::Kept ? word : "(" + word + ")");
        }
        return words;
    }

    Lines drawnTexts()
    {
        return linesWith(linesDrawn([&] { axis().drawTickLabelsInRect(kRect); }), "text");
    }

    EvenTextScope text;
    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
};

// Construction, copying, archiving.

TEST_F(TOLVBarAxisTest, HasItsDefaults)
{
    const TOLVBarAxis fresh;
    EXPECT_EQ(fresh.dataPointCount(), 0U);
    EXPECT_FALSE(fresh.tickLabels());
    EXPECT_FALSE(fresh.graph());
    EXPECT_TRUE(fresh.drawsMajorLines());
}

TEST_F(TOLVBarAxisTest, TickLabelsAreTheHostsOwnAndStayUntilReplaced)
{
    TOLVBarAxis::TickLabels texts = {"one", "two"};
    axis().setTickLabels(texts);
    texts[0] = "changed";
    ASSERT_TRUE(axis().tickLabels());
    EXPECT_EQ(*axis().tickLabels(), (TOLVBarAxis::TickLabels{"one", "two"}));
    add({1.0F, 2.0F, 3.0F});
    prepare();
    EXPECT_EQ(axis().tickLabels()->size(), 2U);
    axis().setTickLabels(std::nullopt);
    EXPECT_FALSE(axis().tickLabels());
}

TEST_F(TOLVBarAxisTest, ACopySharesTheTextsAndCountsItsSlotsAnew)
{
    add({1.0F, 2.0F, 3.0F});
    axis().setTickLabels(lettersTo(3));
    axis().setLabel("title");
    axis().setDrawsMinorLines(false);
    axis().setMargin(15.0);
    prepare();
    ASSERT_EQ(axis().dataPointCount(), 3U);
    const auto copied = axis().copy();
    const auto copy = std::dynamic_pointer_cast<TOLVBarAxis>(copied);
    ASSERT_TRUE(copy);
    EXPECT_FALSE(std::dynamic_pointer_cast<TOLVLineAxis>(copied));
    EXPECT_EQ(copy->tickLabels(), axis().tickLabels());
    EXPECT_EQ(copy->dataPointCount(), 0U);
    EXPECT_EQ(copy->graph(), graph);
    EXPECT_EQ(copy->label(), "title");
    EXPECT_FALSE(copy->drawsMinorLines());
    EXPECT_EQ(copy->margin(), 0.0);
    copy->prepareForDrawingInRect(kRect);
    EXPECT_EQ(copy->dataPointCount(), 3U);
    // New texts of the copy leave the original alone.
    copy->setTickLabels(lettersTo(1));
    EXPECT_EQ(axis().tickLabels()->size(), 3U);
}

TEST_F(TOLVBarAxisTest, TheAxisOfACopiedGraphHasItsOwnFindings)
{
    add({1.0F, 2.0F, 3.0F});
    prepare();
    const auto other = graph->copy();
    other->addGraphData(TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents({1.0F, 2.0F, 3.0F, 4.0F}), nullptr, Color::blackColor()));
    other->prepareForDrawingInRect(kRect);
    EXPECT_EQ(dynamic_cast<TOLVBarAxis&>(*other->horizontalAxis()).dataPointCount(), 4U);
    EXPECT_EQ(axis().extentsConstrainedGraphDataRanges(), (Ranges{{0, 3}}));
}

TEST_F(TOLVBarAxisTest, AnArchivedGraphHasItsBarAxisBack)
{
    axis().setDrawsMinorLines(false);
    axis().setTickLabels(lettersTo(3));
    axis().setDataPointCount(3);
    const auto archive = KeyedArchiver::archivedObject(*graph);
    const auto back = std::dynamic_pointer_cast<TOLVGraph>(KeyedUnarchiver::unarchivedObject(archive));
    ASSERT_TRUE(back);
    const auto restored = std::dynamic_pointer_cast<TOLVBarAxis>(back->horizontalAxis());
    ASSERT_TRUE(restored);
    EXPECT_FALSE(std::dynamic_pointer_cast<TOLVLineAxis>(back->horizontalAxis()));
    EXPECT_TRUE(restored->drawsMajorLines());
    EXPECT_FALSE(restored->drawsMinorLines());
    EXPECT_FALSE(restored->tickLabels());
    EXPECT_EQ(restored->dataPointCount(), 0U);
    EXPECT_EQ(restored->graph(), back);
}

TEST_F(TOLVBarAxisTest, TheArchiveHoldsTheTwoLineFlagsUnderItsClassName)
{
    const auto archive = KeyedArchiver::archivedObject(axis());
    EXPECT_EQ(archive->className, "TOLVBarAxis");
    EXPECT_EQ(axis().archiveBaseClassNames(), (std::vector<std::string>{"TOLVAxis"}));
    Lines keys;
    for (const auto& [key, value] : archive->values)
        keys.push_back(key);
    EXPECT_EQ(keys, (Lines{"drawsMajorLines", "drawsMinorLines"}));
}

// Categories.

TEST_F(TOLVBarAxisTest, PreparationCountsTheSlotsAndListsNoTicks)
{
    axis().setMajorValues({1.0});
    add({1.0F, 2.0F});
    add({1.0F, 2.0F, 3.0F, 4.0F});
    add({1.0F, 2.0F, 3.0F});
    EXPECT_EQ(axis().dataPointCount(), 0U);
    prepare();
    EXPECT_EQ(axis().dataPointCount(), 4U);
    EXPECT_EQ(axis().indexOfRepresentativeXData(), 1);
    EXPECT_TRUE(axis().majorValues().empty());
    EXPECT_TRUE(axis().minorValues().empty());
}

TEST_F(TOLVBarAxisTest, BothListsOfTicksAreEmptied)
{
    TOLVAxis::Values major = {1.0};
    TOLVAxis::Values minor = {2.0};
    axis().getMajorValues(&major, nullptr);
    EXPECT_TRUE(major.empty());
    axis().getMajorValues(nullptr, &minor);
    EXPECT_TRUE(minor.empty());
    axis().getMajorValues(nullptr, nullptr);
}

TEST_F(TOLVBarAxisTest, WhatNeedsAContinuousScaleIsNotRecognised)
{
    add({1.0F, 2.0F});
    prepare();
    std::vector<Point> points;
    EXPECT_THROW((void)axis().mappingForRect(kRect), UnrecognizedOperation);
    EXPECT_THROW(axis().getPoints(points, {1.0}, kRect), UnrecognizedOperation);
    EXPECT_THROW(axis().getMajorPoints(points, {1.0}, points, {}, kRect), UnrecognizedOperation);
}

TEST_F(TOLVBarAxisTest, ARangeBetweenTwoSamplesOfOneSeriesTakesAllCategoriesAway)
{
    add({1.0F, 2.0F, 3.0F, 4.0F, 5.0F});
    add({3.0F, 3.55F, 4.0F});
    axis().setTickLabels(lettersTo(5));
    show(3.5, 3.6);
    EXPECT_FALSE(axis().extentsConstrainedGraphDataRanges());
    EXPECT_EQ(axis().dataPointCount(), 0U);
    EXPECT_EQ(axis().indexOfRepresentativeXData(), 0);
    EXPECT_EQ(axis().representativeXDataRange().location, static_cast<std::uint64_t>(kNotFoundIndex));
    EXPECT_FALSE(axis().representativeXData());
    EXPECT_EQ(labels(), "");
    EXPECT_TRUE(drawnTexts().empty());
}

TEST_F(TOLVBarAxisTest, OnlyTheFirstSampleInRangeIsOneCategory)
{
    add({1.0F, 5.0F, 9.0F});
    show(0.0, 2.0);
    EXPECT_EQ(axis().extentsConstrainedGraphDataRanges(), (Ranges{{0, 1}}));
    EXPECT_EQ(axis().dataPointCount(), 1U);
    EXPECT_EQ(centersIn(kRect), (std::vector<double>{200.0}));
}

TEST_F(TOLVBarAxisTest, OfSeriesWithEqualRangesTheFirstRepresents)
{
    add({1.0F, 2.0F});
    add({1.5F, 2.5F, 3.5F});
    add({1.0F, 2.0F, 3.0F});
    prepare();
    EXPECT_EQ(axis().indexOfRepresentativeXData(), 1);
    EXPECT_EQ(axis().representativeXDataRange(), (IndexRange{0, 3}));
    ASSERT_TRUE(axis().representativeXData());
    EXPECT_EQ(axis().representativeXData()->components()[0], 1.5F);
}

TEST_F(TOLVBarAxisTest, WithoutSeriesOrGraphNoneRepresents)
{
    prepare();
    EXPECT_EQ(axis().indexOfRepresentativeXData(), kNotFoundIndex);
    EXPECT_EQ(axis().extentsConstrainedGraphDataRanges(), Ranges());
    const TOLVBarAxis alone;
    EXPECT_EQ(alone.indexOfRepresentativeXData(), kNotFoundIndex);
    EXPECT_FALSE(alone.extentsConstrainedGraphDataRanges());
    EXPECT_FALSE(alone.representativeXData());
}

TEST_F(TOLVBarAxisTest, AnAxisThatOutlivesItsGraphHasNoCategories)
{
    add({1.0F, 2.0F});
    prepare();
    const auto survivor = std::dynamic_pointer_cast<TOLVBarAxis>(graph->horizontalAxis());
    ASSERT_EQ(survivor->indexOfRepresentativeXData(), 0);
    graph = nullptr;
    EXPECT_EQ(survivor->indexOfRepresentativeXData(), kNotFoundIndex);
    EXPECT_EQ(survivor->pointForValue(1.0F, kRect), 0.0F);
    survivor->prepareForDrawingInRect(kRect);
    EXPECT_EQ(survivor->dataPointCount(), 0U);
}

TEST_F(TOLVBarAxisTest, WithoutExtentsTheRangeIsZeroToZero)
{
    add({0.0F, 1.0F, 2.0F});
    graph->setExtents(nullptr);
    prepare();
    EXPECT_EQ(axis().extentsConstrainedGraphDataRanges(), (Ranges{{0, 1}}));
}

TEST_F(TOLVBarAxisTest, ChangesOfSeriesAndRangeShowAtTheNextQuestion)
{
    const auto series = add({1.0F, 2.0F, 3.0F});
    prepare();
    add({1.0F, 2.0F, 3.0F, 4.0F});
    EXPECT_EQ(axis().indexOfRepresentativeXData(), 1);
    // The slots are those of the last preparation.
    EXPECT_EQ(axis().dataPointCount(), 3U);
    prepare();
    EXPECT_EQ(axis().dataPointCount(), 4U);
    graph->zoomXToFixedMin(2.0F, 3.0F);
    EXPECT_EQ(axis().representativeXDataRange(), (IndexRange{1, 2}));
    graph->extents()->x()->setMax(2.0);
    EXPECT_EQ(axis().representativeXDataRange(), (IndexRange{1, 1}));
    graph->extents()->x()->setMax(99.0);
    series->setX(TOLVRealVector::vectorWithComponents(numbersTo(20)));
    EXPECT_EQ(axis().indexOfRepresentativeXData(), 0);
    graph->clearGraphData();
    EXPECT_EQ(axis().indexOfRepresentativeXData(), kNotFoundIndex);
    prepare();
    EXPECT_EQ(axis().dataPointCount(), 0U);
}

TEST_F(TOLVBarAxisTest, AHostsSamplesMayChangeInPlace)
{
    const auto samples = std::make_shared<ChangingSamples>(std::vector<float>{1.0F, 2.0F, 3.0F, 400.0F});
    add(samples);
    prepare();
    EXPECT_EQ(axis().dataPointCount(), 3U);
    samples->setSample(3, 4.0F);
    samples->setSample(0, 0.25F);
    prepare();
    EXPECT_EQ(axis().dataPointCount(), 4U);
    EXPECT_EQ(axis().valueForPoint(0.0, kRect), 0.25F);
    EXPECT_EQ(axis().pointForValue(4.0F, kRect), 342.5F);
}

// Slots and conversions.

TEST_F(TOLVBarAxisTest, SlotsAreTwentyPointsApartAndFromBothEnds)
{
    const TOLVBarAxis fresh;
    struct Row {
        std::uint64_t count;
        Rect rect;
        std::vector<double> centers;
    };
    const Row rows[] = {
        {1, {0.0, 0.0, 400.0, 100.0}, {200.0}},
        {2, {0.0, 0.0, 400.0, 100.0}, {105.0, 295.0}},
        {4, {0.0, 0.0, 400.0, 100.0}, {57.5, 152.5, 247.5, 342.5}},
        {4, {1000.0, 7.0, 400.0, -1.0}, {1057.5, 1152.5, 1247.5, 1342.5}},
        {2, {0.0, 0.0, 60.0, 10.0}, {20.0, 40.0}},
        {2, {0.0, 0.0, 20.0, 10.0}, {10.0, 10.0}},
        {2, {0.0, 0.0, 0.0, 10.0}, {5.0, -5.0}},
        {2, {0.0, 0.0, -20.0, 10.0}, {0.0, -20.0}},
    };
    for (const Row& row : rows) {
        axis().setDataPointCount(row.count);
        EXPECT_EQ(centersIn(row.rect), row.centers) << row.count << " in " << toString(row.rect);
    }
    axis().setDataPointCount(3);
    const double width = (400.0 - 80.0) / 3.0;
    EXPECT_EQ(centersIn(kRect), (std::vector<double>{0.5 * width + 20.0, (width + 20.0) + (0.5 * width + 20.0), (width + 20.0) * 2.0 + (0.5 * width + 20.0)}));
}

TEST_F(TOLVBarAxisTest, AValueStandsAtTheSlotOfTheNearestAbscissa)
{
    add({10.0F, 20.0F, 30.0F, 90.0F, 500.0F});
    prepare();
    ASSERT_EQ(centersIn(kRect), (std::vector<double>{57.5, 152.5, 247.5, 342.5}));
    const std::pair<float, float> rows[] = {{10.0F, 57.5F}, {-99.0F, 57.5F}, {15.0F, 57.5F}, {15.5F, 152.5F}, {59.0F, 247.5F}, {61.0F, 342.5F}, {1e6F, 342.5F},
        // So far away all distances are one number.
        {1e30F, 57.5F}, {-1e30F, 57.5F}, {std::numeric_limits<float>::infinity(), 57.5F}};
    for (const auto& [value, point] : rows)
        EXPECT_EQ(axis().pointForValue(value, kRect), point) << value;
    EXPECT_TRUE(std::isnan(axis().pointForValue(static_cast<float>(kNaN), kRect)));
}

TEST_F(TOLVBarAxisTest, ACoordinateHasTheAbscissaOfTheNearestSlot)
{
    add({10.0F, 20.0F, 30.0F, 90.0F, 500.0F});
    prepare();
    const std::pair<double, float> rows[] = {{57.5, 10.0F}, {-1e9, 10.0F}, {105.0, 10.0F}, {105.5, 20.0F}, {200.0, 20.0F}, {295.5, 90.0F}, {400.0, 90.0F}, {1e9, 90.0F}};
    for (const auto& [point, value] : rows)
        EXPECT_EQ(axis().valueForPoint(point, kRect), value) << point;
    for (const double point : {kNaN, kInfinity, -kInfinity})
        EXPECT_TRUE(std::isnan(axis().valueForPoint(point, kRect))) << point;
    EXPECT_TRUE(std::isnan(axis().valueForPoint(1.0, {kNaN, 0.0, 400.0, 100.0})));
    EXPECT_TRUE(std::isnan(axis().valueForPoint(1.0, {0.0, 0.0, kInfinity, 100.0})));
}

TEST_F(TOLVBarAxisTest, WithoutCategoriesConversionsAnswerZero)
{
    add({10.0F, 20.0F});
    // Not prepared yet.
    ASSERT_EQ(axis().dataPointCount(), 0U);
    EXPECT_EQ(axis().pointForValue(10.0F, kRect), 0.0F);
    EXPECT_EQ(axis().valueForPoint(10.0, kRect), 0.0F);
    EXPECT_EQ(graph->XForValue(10.0F, kRect), 0.0F);
    show(12.0, 18.0);
    EXPECT_EQ(axis().pointForValue(10.0F, kRect), 0.0F);
    EXPECT_EQ(axis().valueForPoint(10.0, kRect), 0.0F);
    const TOLVBarAxis alone;
    EXPECT_EQ(alone.pointForValue(10.0F, kRect), 0.0F);
    EXPECT_EQ(alone.valueForPoint(10.0, kRect), 0.0F);
}

TEST_F(TOLVBarAxisTest, ASlotWithoutAnAbscissaHasTheValueZero)
{
    add({10.0F, 20.0F});
    axis().setDataPointCount(4);
    EXPECT_EQ(axis().valueForPoint(57.5, kRect), 10.0F);
    EXPECT_EQ(axis().valueForPoint(247.5, kRect), 0.0F);
    graph->clearGraphData();
    EXPECT_EQ(axis().valueForPoint(57.5, kRect), 0.0F);
}

TEST_F(TOLVBarAxisTest, TheNearestSlotIsTheOneThatAScanFinds)
{
    add(numbersTo(60));
    Generated generated(3);
    for (int round = 0; round < 600; ++round) {
        const std::uint64_t count = 1 + generated.whole(60);
        axis().setDataPointCount(count);
        // In rectangles narrower than 20 points the slots run backwards; in those of 20 points all stand on one place.
        const double widths[] = {generated.number(-50.0, 50.0), generated.number(0.0, 900.0), 20.0, 0.0};
        const Rect rect(generated.number(-100.0, 100.0), 0.0, widths[round % 4], 10.0);
        const double points[] = {generated.number(-500.0, 900.0), generated.number(rect.x() - 5.0, rect.x() + 25.0), axis().pointForDataAtIndex(count / 2, rect),
            0.5 * (axis().pointForDataAtIndex(0, rect) + axis().pointForDataAtIndex(count - 1, rect))};
        for (const double point : points) {
            std::uint64_t nearest = 0;
            for (std::uint64_t i = 1; i < count; ++i) {
                if (std::abs(axis().pointForDataAtIndex(i, rect) - point) < std::abs(axis().pointForDataAtIndex(nearest, rect) - point))
                    nearest = i;
            }
            ASSERT_EQ(axis().valueForPoint(point, rect), static_cast<float>(nearest)) << point << ", " << count << " slots in " << toString(rect);
        }
    }
}

TEST_F(TOLVBarAxisTest, TheGraphConvertsThroughTheSlots)
{
    add({10.0F, 20.0F, 30.0F, 90.0F});
    graph->setMargin({0.0, 100.0, 15.0, 0.0});
    const Rect rect(0.0, 0.0, 500.0, 100.0);
    graph->prepareForDrawingInRect(rect);
    EXPECT_EQ(graph->XForValue(30.0F, rect), 347.5F);
    EXPECT_EQ(graph->valueForX(347.5F, rect), 30.0F);
}

// Zoom.

TEST_F(TOLVBarAxisTest, ASeriesWhollyOutsideHasAllItsCategoriesOrItsFirst)
{
    add({1.0F, 2.0F, 3.0F});
    show(10.0, 20.0);
    EXPECT_EQ(axis().extentsConstrainedGraphDataRanges(), (Ranges{{0, 3}}));
    show(-5.0, 0.0);
    EXPECT_EQ(axis().extentsConstrainedGraphDataRanges(), (Ranges{{0, 1}}));
    EXPECT_EQ(axis().dataPointCount(), 1U);
}

TEST_F(TOLVBarAxisTest, StepsBetweenTwoDrawingsCountTheSlotsOfTheRangeTheyFind)
{
    std::vector<float> x;
    for (int i = 0; i < 20; ++i)
        x.push_back(100.0F + static_cast<float>(i));
    add(x);
    show(100.0, 119.0);
    const auto step = [&](bool isDrawnBetween) {
        show(100.0, 119.0);
        graph->zoomInXInRect(kRect);
        if (isDrawnBetween)
            prepare();
        graph->zoomInXCenteredAtPoint(350.0F, kRect);
        return toString(*axis().extents());
    };
    EXPECT_EQ(step(false), step(true));
    EXPECT_GT(axis().extents()->min(), 100.0);
    EXPECT_GT(axis().extents()->max(), axis().extents()->min());
    // A range between two samples, set while the slots of the former one are counted.
    show(100.0, 119.0);
    graph->zoomXToFixedMin(100.25F, 100.75F);
    graph->zoomOutXInRect(kRect);
    EXPECT_EQ(toString(*axis().extents()), "[100.25, 100.75]");
}

TEST_F(TOLVBarAxisTest, WithoutCategoriesZoomAndPanDoNothing)
{
    show(0.0, 100.0);
    const auto stepsKeep = [&](const std::string& range) {
        graph->zoomOutXInRect(kRect);
        graph->zoomInXCenteredAtPoint(10.0F, kRect);
        graph->offsetDisplayByX(50.0F, 0.0F, kRect);
        EXPECT_EQ(toString(*axis().extents()), range);
    };
    stepsKeep("[0, 100]");
    // With the range between two samples there are none either.
    add({1.0F, 2.0F, 3.0F});
    show(1.25, 1.75);
    stepsKeep("[1.25, 1.75]");
}

TEST_F(TOLVBarAxisTest, AnAxisThatWasNeverPreparedIsZoomedLikeAnother)
{
    add({1.0F, 2.0F, 3.0F});
    ASSERT_EQ(axis().dataPointCount(), 0U);
    graph->zoomOutXInRect(kRect);
    EXPECT_EQ(toString(*axis().extents()), "[1, 3]");
}

TEST_F(TOLVBarAxisTest, AZoomStepEndsAtAbscissae)
{
    add(numbersTo(11));
    prepare();
    // Slots are 34.5 points apart, the first one at 27.3. A step takes 30 points from both ends, which then are nearest to the first and the last slot.
    graph->zoomInXInRect(kRect);
    EXPECT_EQ(toString(*graph->extents()->x()), "[0, 10]");
    prepare();
    // This one takes 60 from the left end.
    graph->zoomInXCenteredAtPoint(400.0F, kRect);
    EXPECT_EQ(toString(*graph->extents()->x()), "[1, 10]");
    prepare();
    EXPECT_EQ(axis().dataPointCount(), 10U);
}

TEST_F(TOLVBarAxisTest, AStepWhoseEndsStayNearestToTheSameSlotsDoesNothing)
{
    add({3.0F, 4.0F});
    prepare();
    for (int step = 0; step < 3; ++step) {
        graph->zoomInXInRect(kRect);
        prepare();
        EXPECT_EQ(toString(*graph->extents()->x()), "[3, 4]");
        graph->zoomOutXInRect(kRect);
        prepare();
        EXPECT_EQ(toString(*graph->extents()->x()), "[3, 4]");
    }
}

// Labels.

TEST_F(TOLVBarAxisTest, TextsStandCentredUnderTheirSlots)
{
    add({1.0F, 2.0F, 3.0F, 4.0F});
    axis().setTickLabels({{"jan", "feb", "mar", "apr"}});
    prepare();
    // The strip begins at 3; half the line height of axis titles is 7, half that of the texts 6.
    EXPECT_EQ(drawnTexts(),
        (Lines{"text \"jan\" HelveticaNeue-Light 12 (0, 0, 0, 1) at (48.5, 4.5)", "text \"feb\" HelveticaNeue-Light 12 (0, 0, 0, 1) at (143.5, 4.5)",
            "text \"mar\" HelveticaNeue-Light 12 (0, 0, 0, 1) at (238.5, 4.5)", "text \"apr\" HelveticaNeue-Light 12 (0, 0, 0, 1) at (333.5, 4.5)"}));
    const auto placements = axis().tickLabelPlacements(kRect);
    ASSERT_EQ(placements.size(), 4U);
    EXPECT_EQ(placements[1].value, 2.0);
    EXPECT_EQ(toString(placements[1].label->rect()), "(143.5, 4.5, 18, 12)");
}

TEST_F(TOLVBarAxisTest, FewerTextsThanSlotsLabelNone)
{
    add({1.0F, 2.0F, 3.0F, 4.0F});
    prepare();
    for (std::size_t count = 0; count < 6; ++count) {
        axis().setTickLabels(lettersTo(count));
        EXPECT_EQ(labels(), count < 4 ? "" : "A B C D") << count;
        EXPECT_EQ(drawnTexts().size(), count < 4 ? 0U : 4U) << count;
    }
    axis().setTickLabels(std::nullopt);
    EXPECT_EQ(labels(), "");
    EXPECT_TRUE(drawnTexts().empty());
}

TEST_F(TOLVBarAxisTest, TextsStayWithTheirSamplesWhileZoomed)
{
    add({0.0F, 1.0F, 2.0F, 3.0F, 4.0F, 5.0F});
    axis().setTickLabels(lettersTo(6));
    show(2.0, 4.0);
    EXPECT_EQ(labels(), "C D E");
    show(4.0, 9.0);
    EXPECT_EQ(labels(), "E F");
}

TEST_F(TOLVBarAxisTest, TheRowEndsWhereTheTextsEnd)
{
    add(numbersTo(10));
    axis().setTickLabels(lettersTo(5));
    show(3.0, 6.0);
    ASSERT_EQ(axis().dataPointCount(), 4U);
    EXPECT_EQ(labels(), "D E");
    show(6.0, 9.0);
    EXPECT_EQ(labels(), "");
    EXPECT_TRUE(drawnTexts().empty());
}

TEST_F(TOLVBarAxisTest, OfCollidingTextsTheEarlierCategoryStays)
{
    add({1.0F, 2.0F, 3.0F, 4.0F});
    // Slots are 95 points apart, letters 6 points wide.
    axis().setTickLabels({{std::string(15, 'a'), std::string(15, 'b'), std::string(16, 'c'), "d"}});
    prepare();
    const auto placements = axis().tickLabelPlacements(kRect);
    ASSERT_EQ(placements.size(), 4U);
    EXPECT_EQ(placements[0].fate, LabelFate::Kept);
    // 90 points wide: 5 points apart.
    EXPECT_EQ(placements[1].fate, LabelFate::Kept);
    // 96 points wide: exactly 2 points behind the second, which only touches.
    EXPECT_EQ(placements[2].fate, LabelFate::Kept);
    EXPECT_EQ(placements[3].fate, LabelFate::Kept);
    axis().setTickLabels({{std::string(15, 'a'), std::string(17, 'b'), std::string(15, 'c'), "d"}});
    const auto closer = axis().tickLabelPlacements(kRect);
    EXPECT_EQ(closer[1].fate, LabelFate::Collides);
    EXPECT_EQ(closer[1].collidesWith, closer[0].label);
    EXPECT_EQ(closer[2].fate, LabelFate::Kept);
    EXPECT_EQ(drawnTexts().size(), 3U);
}

TEST_F(TOLVBarAxisTest, AThousandCategoriesAreThinned)
{
    add(numbersTo(1000));
    TOLVBarAxis::TickLabels texts;
    for (int i = 0; i < 1000; ++i)
        texts.push_back(std::to_string(i));
    axis().setTickLabels(texts);
    show(-1.0, 1000.0);
    ASSERT_EQ(axis().dataPointCount(), 1000U);
    // Going from left to right, the next text is the first that leaves 2 points to the last one taken.
    Lines expected;
    double clearFrom = -kInfinity;
    for (std::size_t i = 0; i < 1000; ++i) {
        const double halfWidth = 3.0 * static_cast<double>(texts[i].size());
        const double centre = axis().pointForDataAtIndex(i, kRect);
        if (centre < 0.0 || centre > 400.0 || centre - halfWidth < clearFrom)
            continue;
        expected.push_back("\"" + texts[i] + "\"");
        clearFrom = centre + halfWidth + 2.0;
    }
    const Lines drawn = drawnTexts();
    ASSERT_EQ(drawn.size(), expected.size());
    ASSERT_GT(drawn.size(), 10U);
    for (std::size_t i = 0; i < drawn.size(); ++i)
        EXPECT_TRUE(drawn[i].starts_with("text " + expected[i] + " ")) << drawn[i] << ", expected " << expected[i];
}

TEST_F(TOLVBarAxisTest, TextsBeyondTheEndOfTheAxisEndTheRow)
{
    add({1.0F, 2.0F, 3.0F, 4.0F});
    axis().setTickLabels(lettersTo(4));
    // Backwards slots in a rectangle 4 points wide: the first one stands at 8.
    const Rect narrow(0.0, 0.0, 4.0, 100.0);
    ASSERT_EQ(axis().dataPointCount(), 0U);
    prepare();
    ASSERT_EQ(axis().pointForDataAtIndex(0, narrow), 8.0);
    EXPECT_TRUE(axis().tickLabelPlacements(narrow).empty());
}

TEST_F(TOLVBarAxisTest, PlacesThatAreNotFiniteAreNotDrawn)
{
    add({1.0F, 2.0F});
    axis().setTickLabels(lettersTo(2));
    prepare();
    const Rect rect(kNaN, 0.0, 400.0, 100.0);
    const auto placements = axis().tickLabelPlacements(rect);
    ASSERT_EQ(placements.size(), 2U);
    EXPECT_EQ(placements[0].fate, LabelFate::NotFinite);
    EXPECT_EQ(placements[1].fate, LabelFate::NotFinite);
    EXPECT_TRUE(linesDrawn([&] { axis().drawTickLabelsInRect(rect); }).empty());
}

TEST_F(TOLVBarAxisTest, AnAxisThatWasNeverPreparedHasNoLabels)
{
    add({1.0F, 2.0F, 3.0F});
    axis().setTickLabels(lettersTo(3));
    for (const double width : {400.0, 20.0, 10.0, 0.0, -400.0})
        EXPECT_TRUE(linesDrawn([&] { axis().drawTickLabelsInRect({0.0, 0.0, width, 100.0}); }).empty()) << width;
}

TEST_F(TOLVBarAxisTest, WithoutAGraphOrSeriesThereAreNoLabels)
{
    TOLVBarAxis alone;
    alone.setTickLabels(lettersTo(3));
    EXPECT_TRUE(alone.tickLabelPlacements(kRect).empty());
    EXPECT_TRUE(linesDrawn([&] {
        alone.prepareForDrawingInRect(kRect);
        alone.drawTickLabelsInRect(kRect);
        alone.drawMinorLinesInRect(kRect);
    }).empty());
    axis().setTickLabels(lettersTo(3));
    prepare();
    EXPECT_EQ(labels(), "");
}

TEST_F(TOLVBarAxisTest, MarkersHaveTheirBadgesAtTheNearestSlots)
{
    add({10.0F, 20.0F, 30.0F, 90.0F});
    prepare();
    const TOLVAxis::Markers markers{TOLVMarker::markerWithValue(29.0), TOLVMarker::markerWithValue(kNaN)};
    const Lines texts = linesWith(linesDrawn([&] { axis().drawMarkers(markers, kRect); }), "text");
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_TRUE(texts[0].starts_with("text \"29\" ")) << texts[0];
    EXPECT_NE(texts[0].find(" at (241.5, "), std::string::npos) << texts[0];
}

// The vertical side.

TEST_F(TOLVBarAxisTest, AVerticalAxisHasItsTextsBesideTheDataArea)
{
    add({1.0F, 2.0F, 3.0F, 4.0F});
    graph->setMargin({0.0, 60.0, 0.0, 0.0});
    graph->setVerticalAxis(std::make_shared<TOLVBarAxis>());
    graph->zoomYToFixedMin(1.0, 2.0);
    auto& vertical = dynamic_cast<TOLVBarAxis&>(*graph->verticalAxis());
    vertical.setTickLabels(lettersTo(4));
    // Slots depend on the horizontal extent of a rectangle on this side too: two slots at 35 and 85 of 120 points' width.
    const Rect rect(0.0, 0.0, 120.0, 100.0);
    graph->prepareForDrawingInRect(rect);
    ASSERT_EQ(vertical.dataPointCount(), 2U);
    const auto placements = vertical.tickLabelPlacements(rect);
    ASSERT_EQ(placements.size(), 2U);
    // The strip begins at 14, right of the title; the texts end 2 points before 60.5.
    EXPECT_EQ(toString(placements[0].label->rect()), "(52.5, 29, 6, 12)");
    EXPECT_EQ(toString(placements[1].label->rect()), "(52.5, 79, 6, 12)");
    EXPECT_EQ(placements[1].fate, LabelFate::Kept);
}

TEST_F(TOLVBarAxisTest, OnAVerticalAxisSlotsOutsideTheStripHaveNoText)
{
    add({1.0F, 2.0F, 3.0F, 4.0F});
    graph->setVerticalAxis(std::make_shared<TOLVBarAxis>());
    graph->zoomYToFixedMin(0.0, 9.0);
    auto& vertical = dynamic_cast<TOLVBarAxis&>(*graph->verticalAxis());
    vertical.setTickLabels(lettersTo(4));
    vertical.prepareForDrawingInRect(kRect);
    // The slots stand at 57.5, 152.5, 247.5 and 342.5.
    const auto fatesIn = [&](const Rect& rect) {
        std::string fates;
        for (const LabelPlacement& placement : vertical.tickLabelPlacements(rect))
            fates += placement.fate == LabelFate::Outside ? "-" : placement.fate == LabelFate::Kept ? "+" : "?";
        return fates;
    };
    EXPECT_EQ(fatesIn({0.0, 0.0, 400.0, 400.0}), "++++");
    EXPECT_EQ(fatesIn({0.0, 100.0, 400.0, 200.0}), "-++");
    EXPECT_EQ(fatesIn({0.0, 152.5, 400.0, 95.0}), "-++");
    EXPECT_EQ(fatesIn({0.0, 0.0, 400.0, 50.0}), "");
}

// Lines.

TEST_F(TOLVBarAxisTest, AFrameIsAllThatIsDrawnOfLines)
{
    add({1.0F, 2.0F, 3.0F, 4.0F});
    prepare();
    EXPECT_EQ(linesDrawn([&] { axis().drawMajorLinesInRect(kRect); }),
        (Lines{"fillColor (0.5, 0.5, 0.5, 1)", "strokeColor (0.5, 0.5, 0.5, 1)", "stroke M 0.5 15.5 L 399.5 15.5 L 399.5 99.5 L 0.5 99.5 Z"}));
    EXPECT_TRUE(linesDrawn([&] { axis().drawMinorLinesInRect(kRect); }).empty());
}

TEST_F(TOLVBarAxisTest, WithoutAContextNothingIsDrawn)
{
    add({1.0F, 2.0F});
    axis().setTickLabels(lettersTo(2));
    prepare();
    EXPECT_NO_THROW(axis().drawMajorLinesInRect(kRect));
    EXPECT_NO_THROW(axis().drawMinorLinesInRect(kRect));
    EXPECT_NO_THROW(axis().drawTickLabelsInRect(kRect));
}

} // namespace
} // namespace TOLVGraphing
