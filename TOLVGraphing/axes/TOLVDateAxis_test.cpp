#include "TOLVDateAxis.h"

#include "../graph/TOLVGraph.h"
#include "TOLVLinearAxis.h"

#include <tests/support/TickLabels.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using namespace testing_support;

using Values = TOLVAxis::Values;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kLargest = std::numeric_limits<double>::max();

constexpr std::int64_t kSecond = 1'000'000'000;
constexpr std::int64_t kMinute = 60 * kSecond;
constexpr std::int64_t kHour = 60 * kMinute;
constexpr DateStep kSixHours{DateUnit::Nanoseconds, 6 * kHour};
/// 2026-03-01, a Sunday.
constexpr double kMarch = 20513.0;

/// The part of a day that a time of day is.
double dayPart(double hours, double minutes = 0.0, double seconds = 0.0)
{
    return (hours * 3600.0 + minutes * 60.0 + seconds) / 86400.0;
}

struct StepCase {
    const char* name;
    double origin;
    double min;
    double max;
    double width;
    DateStep major;
    Values majorValues;
    std::optional<DateStep> minor;
    std::size_t minorCount;
};

void expectTicks(const std::vector<StepCase>& cases)
{
    for (const StepCase& one : cases) {
        SCOPED_TRACE(one.name);
        GraphWithAxis<TOLVDateAxis> graph;
        graph.axis()->setOrigin(one.origin);
        graph.prepare(one.min, one.max, one.width);
        EXPECT_EQ(graph.axis()->majorStep(), one.major);
        EXPECT_EQ(graph.axis()->majorValues(), one.majorValues);
        EXPECT_EQ(graph.axis()->minorStep(), one.minor);
        EXPECT_EQ(graph.axis()->minorValues().size(), one.minorCount);
    }
}

TEST(TOLVDateAxis, TimesStandAtNaturalInstantsSinceTheOrigin)
{
    expectTicks({
        {"a quarter of a second", kMarch, dayPart(0, 0, 15.1), dayPart(0, 0, 15.35), 400.0, {DateUnit::Nanoseconds, kSecond / 20},
            {dayPart(0, 0, 15.1), dayPart(0, 0, 15.15), dayPart(0, 0, 15.2), dayPart(0, 0, 15.25), dayPart(0, 0, 15.3), dayPart(0, 0, 15.35)},
            DateStep{DateUnit::Nanoseconds, kSecond / 200}, 45},
        {"3 seconds", kMarch, dayPart(10, 30, 15), dayPart(10, 30, 18), 400.0, {DateUnit::Nanoseconds, kSecond},
            {dayPart(10, 30, 15), dayPart(10, 30, 16), dayPart(10, 30, 17), dayPart(10, 30, 18)}, DateStep{DateUnit::Nanoseconds, kSecond / 20}, 57},
        {"90 seconds", kMarch, dayPart(10, 30, 15), dayPart(10, 31, 45), 400.0, {DateUnit::Nanoseconds, 30 * kSecond}, {dayPart(10, 30, 30), dayPart(10, 31), dayPart(10, 31, 30)},
            DateStep{DateUnit::Nanoseconds, 2 * kSecond}, 42},
        {"1 hour", kMarch, dayPart(10), dayPart(11), 400.0, {DateUnit::Nanoseconds, 15 * kMinute}, {dayPart(10), dayPart(10, 15), dayPart(10, 30), dayPart(10, 45), dayPart(11)},
            DateStep{DateUnit::Nanoseconds, kMinute}, 56},
        {"1 day", kMarch, 0.0, 1.0, 400.0, kSixHours, {0.0, 0.25, 0.5, 0.75, 1.0}, DateStep{DateUnit::Nanoseconds, 30 * kMinute}, 44},
        {"across midnight", kMarch, -0.5, 0.5, 400.0, kSixHours, {-0.5, -0.25, 0.0, 0.25, 0.5}, DateStep{DateUnit::Nanoseconds, 30 * kMinute}, 44},
        {"a day of no origin", 0.0, kMarch, kMarch + 1.0, 400.0, kSixHours, {kMarch, kMarch + 0.25, kMarch + 0.5, kMarch + 0.75, kMarch + 1.0},
            DateStep{DateUnit::Nanoseconds, 30 * kMinute}, 44},
        {"before 1970", 0.0, -1.0, 0.0, 400.0, kSixHours, {-1.0, -0.75, -0.5, -0.25, 0.0}, DateStep{DateUnit::Nanoseconds, 30 * kMinute}, 44},
    });
}

TEST(TOLVDateAxis, DaysWeeksMonthsAndYearsAreThoseOfTheCalendar)
{
    expectTicks({
        // The days since 1970 that are even.
        {"10 days", kMarch, 0.0, 10.0, 400.0, {DateUnit::Days, 2}, {1.0, 3.0, 5.0, 7.0, 9.0}, kSixHours, 36},
        {"4 days", kMarch, 0.0, 4.0, 400.0, {DateUnit::Days, 1}, {0.0, 1.0, 2.0, 3.0, 4.0}, DateStep{DateUnit::Nanoseconds, 2 * kHour}, 44},
        {"30 days on Mondays", kMarch, 0.0, 30.0, 400.0, {DateUnit::Days, 7}, {1.0, 8.0, 15.0, 22.0, 29.0}, DateStep{DateUnit::Nanoseconds, 12 * kHour}, 56},
        {"Mondays before 1970", 0.0, -30.0, 0.0, 400.0, {DateUnit::Days, 7}, {-24.0, -17.0, -10.0, -3.0}, DateStep{DateUnit::Nanoseconds, 12 * kHour}, 57},
        // 2023-12-15 to 2024-06-15: a leap year.
        {"half a year", 0.0, 19706.0, 19889.0, 700.0, {DateUnit::Months, 1}, {19723.0, 19754.0, 19783.0, 19814.0, 19844.0, 19875.0}, DateStep{DateUnit::Days, 7}, 24},
        {"half a year on a long axis", 0.0, 19706.0, 19889.0, 1200.0, {DateUnit::Months, 1}, {19723.0, 19754.0, 19783.0, 19814.0, 19844.0, 19875.0}, DateStep{DateUnit::Days, 1},
            178},
        {"1 leap year", 0.0, 19723.0, 20089.0, 400.0, {DateUnit::Months, 3}, {19723.0, 19814.0, 19905.0, 19997.0, 20089.0}, DateStep{DateUnit::Months, 1}, 8},
        {"1900 is no leap year", -25567.0, 0.0, 90.0, 400.0, {DateUnit::Months, 1}, {0.0, 31.0, 59.0, 90.0}, DateStep{DateUnit::Days, 7}, 12},
        {"3 years", 0.0, 19723.0, 20819.0, 400.0, {DateUnit::Years, 1}, {19723.0, 20089.0, 20454.0, 20819.0}, DateStep{DateUnit::Months, 1}, 33},
        {"30 years", 0.0, 10957.0, 21915.0, 400.0, {DateUnit::Years, 10}, {10957.0, 14610.0, 18262.0, 21915.0}, DateStep{DateUnit::Months, 6}, 57},
        {"4000 years", 0.0, -719528.0, 741442.0, 400.0, {DateUnit::Years, 1000}, {-719528.0, -354285.0, 10957.0, 376200.0, 741442.0}, DateStep{DateUnit::Years, 100}, 36},
        {"4000 years since 2026", kMarch, -719528.0 - kMarch, 741442.0 - kMarch, 400.0, {DateUnit::Years, 1000},
            {-719528.0 - kMarch, -354285.0 - kMarch, 10957.0 - kMarch, 376200.0 - kMarch, 741442.0 - kMarch}, DateStep{DateUnit::Years, 100}, 36},
    });
}

TEST(TOLVDateAxis, MondaysStandBetweenMonthsButNotNextToTheirFirst)
{
    GraphWithAxis<TOLVDateAxis> graph;
    // 2023-12-15 to 2024-02-15. 2024-01-01 is a Monday, 2024-02-01 a Thursday.
    graph.prepare(19706.0, 19768.0, 200.0);
    EXPECT_EQ(graph.axis()->majorValues(), (Values{19723.0, 19754.0}));
    EXPECT_EQ(graph.axis()->minorValues(), (Values{19709.0, 19716.0, 19730.0, 19737.0, 19744.0, 19751.0, 19758.0, 19765.0}));
    // 2024-08-20 to 2024-10-20: 2024-09-01 is a Sunday, 2024-10-01 a Tuesday: the Mondays beside them are left out.
    graph.prepare(19955.0, 20016.0, 200.0);
    EXPECT_EQ(graph.axis()->majorValues(), (Values{19967.0, 19997.0}));
    EXPECT_EQ(graph.axis()->minorValues(), (Values{19961.0, 19975.0, 19982.0, 19989.0, 20003.0, 20010.0}));
}

TEST(TOLVDateAxis, AnOriginWithinADayShiftsTheValuesOfTheSameInstants)
{
    GraphWithAxis<TOLVDateAxis> graph;
    graph.axis()->setOrigin(kMarch + 0.4375);
    graph.prepare(-dayPart(0, 30), dayPart(0, 30));
    EXPECT_EQ(graph.axis()->majorStep(), (DateStep{DateUnit::Nanoseconds, 15 * kMinute}));
    EXPECT_EQ(graph.axis()->majorValues(), (Values{-0.4375 + dayPart(10), -0.4375 + dayPart(10, 15), 0.0, -0.4375 + dayPart(10, 45), -0.4375 + dayPart(11)}));
    // Major and minor values of one instant are rounded differently, and none is listed twice.
    graph.axis()->setOrigin(kMarch + 1.0 / 3.0);
    graph.prepare(-0.6, 3.4);
    ASSERT_EQ(graph.axis()->majorValues().size(), 4U);
    EXPECT_EQ(graph.axis()->majorValues()[1], (kMarch + 1.0) - (kMarch + 1.0 / 3.0));
    for (const double minor : graph.axis()->minorValues()) {
        for (const double major : graph.axis()->majorValues())
            EXPECT_GT(std::abs(minor - major), dayPart(1)) << minor;
    }
}

TEST(TOLVDateAxis, StepsAreNotFinerThanSinglePrecision)
{
    GraphWithAxis<TOLVDateAxis> graph;
    // Floats at 20513 are 1/512 of a day apart, nearly three minutes: four of them are 11.25 minutes.
    graph.prepare(kMarch, kMarch + 0.0625, 4000.0);
    EXPECT_EQ(graph.axis()->majorStep(), (DateStep{DateUnit::Nanoseconds, 15 * kMinute}));
    EXPECT_EQ(graph.axis()->minorStep(), std::nullopt);
    EXPECT_EQ(graph.axis()->majorValues(),
        (Values{kMarch, kMarch + dayPart(0, 15), kMarch + dayPart(0, 30), kMarch + dayPart(0, 45), kMarch + dayPart(1), kMarch + dayPart(1, 15), kMarch + dayPart(1, 30)}));
    graph.prepare(kMarch, kMarch + 1.0 / 512.0, 4000.0);
    EXPECT_EQ(graph.axis()->majorValues(), (Values{kMarch}));
    // Two ends that are one float.
    graph.prepare(kMarch, kMarch + 1e-9);
    EXPECT_TRUE(graph.axis()->majorValues().empty());
}

TEST(TOLVDateAxis, OnlyInstantsOfTheYears0To9999AreListed)
{
    GraphWithAxis<TOLVDateAxis> graph;
    graph.prepare(2932895.0, 2932905.0, 800.0);
    EXPECT_EQ(graph.axis()->majorStep(), (DateStep{DateUnit::Days, 1}));
    EXPECT_EQ(graph.axis()->majorValues(), (Values{2932895.0, 2932896.0}));
    graph.prepare(-719533.0, -719525.0, 800.0);
    EXPECT_EQ(graph.axis()->majorValues(), (Values{-719528.0, -719527.0, -719526.0, -719525.0}));
    graph.prepare(2932900.0, 2932910.0, 800.0);
    EXPECT_TRUE(graph.axis()->majorValues().empty());
    EXPECT_TRUE(graph.axis()->minorValues().empty());
    // 5000 years are 1,825,000 days.
    graph.prepare(-4e6, 4e6, 400.0);
    EXPECT_EQ(graph.axis()->majorStep(), (DateStep{DateUnit::Years, 5000}));
    EXPECT_EQ(graph.axis()->majorValues(), (Values{-719528.0, 1106685.0}));
    graph.prepare(-1e7, 1e7, 400.0);
    EXPECT_EQ(graph.axis()->majorStep(), std::nullopt);
    EXPECT_TRUE(graph.axis()->majorValues().empty());
}

TEST(TOLVDateAxis, TicksKeepTheirDistancesOnEveryRange)
{
    std::mt19937_64 random(20261122);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    GraphWithAxis<TOLVDateAxis> graph;
    for (int round = 0; round < 2000; ++round) {
        graph.axis()->setOrigin(round % 3 == 0 ? 0.0 : 40000.0 * unit(random));
        const double span = std::pow(10.0, 15.0 * unit(random) - 9.0);
        const double min = span * (2.0 * unit(random) - 1.0);
        const double width = 100.0 + 2000.0 * unit(random);
        graph.prepare(min, min + span, width);
        SCOPED_TRACE(testing::Message() << "from " << min << " over " << span << ", " << width << " points");
        const Values& major = graph.axis()->majorValues();
        const Values& minor = graph.axis()->minorValues();
        EXPECT_LE(static_cast<double>(major.size()), width / 80.0 + 1.0);
        EXPECT_LE(static_cast<double>(minor.size()), width / 6.0 + 1.0);
        for (const auto& [values, distance] : {std::pair(&major, 80.0), std::pair(&minor, 6.0)}) {
            for (std::size_t i = 1; i < values->size(); ++i)
                EXPECT_GE(((*values)[i] - (*values)[i - 1]) / span * width, distance * 0.999) << i;
        }
    }
}

TEST(TOLVDateAxis, EveryRangeAndOriginGivesAShortAscendingList)
{
    const double ends[] = {kNaN, kInfinity, -kInfinity, 0.0, -0.0, 1e-45, 3e-45, 1e-38, 1e-12, 1.0, 1.0000001, -1.0, 20513.0, 20514.0, -719529.0, 2932897.0, 1e7, 16777216.0,
        16777218.0, 1e20, 3.4e38, -3.4e38, kLargest, -kLargest};
    GraphWithAxis<TOLVDateAxis> graph;
    for (const double origin : {0.0, 20513.4375, -719528.0, 2932896.9}) {
        graph.axis()->setOrigin(origin);
        for (const double min : ends) {
            for (const double max : ends) {
                for (const double width : {400.0, 1e9, 0.0, -50.0, kNaN, kInfinity}) {
                    SCOPED_TRACE(testing::Message() << min << " to " << max << " over " << width << " since " << origin);
                    graph.prepare(min, max, width);
                    EXPECT_LE(graph.axis()->majorValues().size(), 201U);
                    EXPECT_LE(graph.axis()->minorValues().size(), 1001U);
                    for (const Values* values : {&graph.axis()->majorValues(), &graph.axis()->minorValues()}) {
                        EXPECT_TRUE(std::is_sorted(values->begin(), values->end()));
                        EXPECT_TRUE(std::all_of(values->begin(), values->end(),
                            [&](double value) { return static_cast<float>(value) >= static_cast<float>(min) && static_cast<float>(value) <= static_cast<float>(max); }));
                    }
                }
            }
        }
    }
}

TEST(TOLVDateAxis, RangesSetAfterTheChoiceOfTheStepCannotExhaustTheMemory)
{
    GraphWithAxis<TOLVDateAxis> graph;
    graph.prepare(0.0, 1e-11);
    ASSERT_TRUE(graph.axis()->majorStep());
    graph.axis()->setExtents(TOLVAxisExtents::extentsWithMin(-1e6, 1e6));
    Values major;
    Values minor;
    graph.axis()->getMajorValues(&major, &minor);
    EXPECT_EQ(major.size(), 10000U);
    EXPECT_LE(minor.size(), 10000U);
}

TEST(TOLVDateAxis, MissingTargetsAreSkippedAndAnAxisWithoutAGraphHasNoTicks)
{
    GraphWithAxis<TOLVDateAxis> graph;
    graph.prepare(0.0, 1.0);
    Values minor;
    graph.axis()->getMajorValues(nullptr, &minor);
    EXPECT_EQ(minor.size(), 44U);
    graph.axis()->getMajorValues(nullptr, nullptr);
    TOLVDateAxis alone;
    alone.prepareForDrawingInRect({0.0, 0.0, 400.0, 10.0});
    EXPECT_EQ(alone.majorStep(), std::nullopt);
    EXPECT_TRUE(alone.majorValues().empty());
}

TEST(TOLVDateAxis, MapsAsALinearAxisDoes)
{
    GraphWithAxis<TOLVDateAxis> dates;
    GraphWithAxis<TOLVLinearAxis> numbers;
    const Rect rect(3.0, 5.0, 612.3, 417.9);
    dates.prepare(0.3, 171.7);
    numbers.prepare(0.3, 171.7);
    for (const float value : {0.0F, 0.3F, 17.123F, 171.7F, 1e20F, -5.0F, std::numeric_limits<float>::infinity()}) {
        EXPECT_EQ(dates.axis()->pointForValue(value, rect), numbers.axis()->pointForValue(value, rect)) << value;
        EXPECT_EQ(dates.axis()->mappingForRect(rect)->pointForValue(value), numbers.axis()->mappingForRect(rect)->pointForValue(value)) << value;
        EXPECT_EQ(dates.axis()->valueForPoint(static_cast<double>(value), rect), numbers.axis()->valueForPoint(static_cast<double>(value), rect)) << value;
    }
    EXPECT_TRUE(std::isnan(dates.axis()->pointForValue(std::numeric_limits<float>::quiet_NaN(), rect)));
}

TEST(TOLVDateAxis, AVerticalAxisLooksAtTheHeight)
{
    const auto graph = TOLVGraph::graph();
    graph->setVerticalAxis(std::make_shared<TOLVDateAxis>());
    graph->zoomYToFixedMin(0.0, 1.0);
    graph->verticalAxis()->prepareForDrawingInRect({0.0, 0.0, 4.0, 400.0});
    EXPECT_EQ(graph->verticalAxis()->majorValues(), (Values{0.0, 0.25, 0.5, 0.75, 1.0}));
}

TEST(TOLVDateAxis, OriginsOutsideTheYears0To9999AreNone)
{
    const struct {
        double set;
        double origin;
    } cases[] = {{0.0, 0.0}, {20513.4375, 20513.4375}, {-719528.0, -719528.0}, {2932896.75, 2932896.75}, {-719528.5, 0.0}, {2932897.0, 0.0}, {kNaN, 0.0}, {kInfinity, 0.0},
        {-kInfinity, 0.0}, {kLargest, 0.0}};
    for (const auto& one : cases) {
        TOLVDateAxis axis;
        axis.setOrigin(5.0);
        axis.setOrigin(one.set);
        EXPECT_EQ(axis.origin(), one.origin) << one.set;
    }
}

TEST(TOLVDateAxis, ACopyKeepsTheOriginAndHasNoSteps)
{
    GraphWithAxis<TOLVDateAxis> graph;
    graph.axis()->setOrigin(kMarch);
    graph.axis()->setLabel("time");
    graph.axis()->setDrawsMinorLines(false);
    graph.prepare(0.0, 1.0);
    const auto copy = std::dynamic_pointer_cast<TOLVDateAxis>(graph.axis()->copy());
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->origin(), kMarch);
    EXPECT_EQ(copy->label(), "time");
    EXPECT_FALSE(copy->drawsMinorLines());
    EXPECT_EQ(copy->majorStep(), std::nullopt);
    EXPECT_EQ(copy->minorStep(), std::nullopt);
    EXPECT_EQ(copy->graph(), graph.axis()->graph());
    EXPECT_EQ(copy->pointForValue(0.5F, {0.0, 0.0, 400.0, 10.0}), 200.0F);
}

TEST(TOLVDateAxis, TheArchiveHoldsTheLineFlagsAndTheOrigin)
{
    const auto graph = TOLVGraph::graph();
    TOLVDateAxis axis;
    axis.setOrigin(20513.4375);
    axis.setDrawsMinorLines(false);
    graph->setHorizontalAxis(std::shared_ptr<const TOLVAxis>(axis.copy()));
    const auto archive = KeyedArchiver::archivedObject(axis);
    EXPECT_EQ(archive->className, "TOLVDateAxis");
    EXPECT_EQ(archive->baseClassNames, (std::vector<std::string>{"TOLVAxis"}));
    std::vector<std::string> keys;
    for (const auto& [key, value] : archive->values)
        keys.push_back(key);
    EXPECT_EQ(keys, (std::vector<std::string>{"drawsMajorLines", "drawsMinorLines", "origin"}));
    const auto back = std::dynamic_pointer_cast<TOLVGraph>(KeyedUnarchiver::unarchivedObject(KeyedArchiver::archivedObject(*graph)));
    ASSERT_TRUE(back);
    const auto read = std::dynamic_pointer_cast<TOLVDateAxis>(back->horizontalAxis());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->origin(), 20513.4375);
    EXPECT_TRUE(read->drawsMajorLines());
    EXPECT_FALSE(read->drawsMinorLines());
}

/// The archive of an axis with another value under "origin".
std::shared_ptr<ArchiveObject> archiveWithOrigin(const ArchiveValue& origin)
{
    const auto archive = KeyedArchiver::archivedObject(TOLVDateAxis());
    archive->values.back() = {"origin", origin};
    return archive;
}

TEST(TOLVDateAxis, DamagedArchivesAreRefused)
{
    for (const double origin : {kNaN, kInfinity, -kInfinity, -719528.5, 2932897.0, 1e300}) {
        try {
            (void)KeyedUnarchiver::unarchivedObject(archiveWithOrigin(origin));
            FAIL() << origin;
        } catch (const ArchiveError& error) {
            EXPECT_STREQ(error.what(), "TOLVDateAxis \"origin\": found a number outside the years 0 to 9999, expected days since 1970-01-01");
        }
    }
    EXPECT_THROW((void)KeyedUnarchiver::unarchivedObject(archiveWithOrigin(std::string("2026-03-01"))), ArchiveError);
    const auto archive = KeyedArchiver::archivedObject(TOLVDateAxis());
    archive->values.clear();
    const auto axis = std::dynamic_pointer_cast<TOLVDateAxis>(KeyedUnarchiver::unarchivedObject(archive));
    ASSERT_TRUE(axis);
    EXPECT_EQ(axis->origin(), 0.0);
    EXPECT_FALSE(axis->drawsMajorLines());
    const auto whole = std::dynamic_pointer_cast<TOLVDateAxis>(KeyedUnarchiver::unarchivedObject(archiveWithOrigin(std::int64_t{20513})));
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->origin(), kMarch);
}

TEST(TOLVDateAxis, TwoHundredZoomStepsStayFiniteAndShort)
{
    const Rect rect(0.0, 0.0, 355.0, 270.0);
    for (const double origin : {0.0, kMarch}) {
        for (const bool zoomsIn : {true, false}) {
            GraphWithAxis<TOLVDateAxis> graph;
            graph.axis()->setOrigin(origin);
            graph.prepare(kMarch - origin, kMarch - origin + 30.0);
            std::size_t ticks = 0;
            for (int step = 0; step < 200; ++step) {
                if (zoomsIn)
                    graph.axis()->zoomInCenteredAtPoint(100.0, rect);
                else
                    graph.axis()->zoomOutCenteredAtPoint(100.0, rect);
                graph.axis()->prepareForDrawingInRect(rect);
                ASSERT_TRUE(std::isfinite(graph.axis()->extents()->min()) && std::isfinite(graph.axis()->extents()->max())) << step;
                ASSERT_LE(graph.axis()->majorValues().size(), 5U) << step;
                ASSERT_LE(graph.axis()->minorValues().size(), 60U) << step;
                ticks += graph.axis()->majorValues().size();
            }
            EXPECT_GT(ticks, 50U);
        }
    }
}

TEST(DateStep, TellsItsLengthAndText)
{
    const struct {
        DateStep step;
        double days;
        const char* text;
    } cases[] = {
        {{DateUnit::Nanoseconds, 15 * kMinute}, 1.0 / 96.0, "900000000000 ns"},
        {{DateUnit::Days, 7}, 7.0, "7 days"},
        {{DateUnit::Months, 1}, 28.0, "1 months"},
        {{DateUnit::Months, 3}, 90.0, "3 months"},
        {{DateUnit::Months, 6}, 181.0, "6 months"},
        {{DateUnit::Years, 10}, 3650.0, "10 years"},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(shortestLengthInDays(one.step), one.days) << one.text;
        EXPECT_EQ(toString(one.step), one.text);
    }
}

} // namespace
} // namespace TOLVGraphing
