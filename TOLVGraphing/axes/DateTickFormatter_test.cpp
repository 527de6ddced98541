#include "DateTickFormatter.h"

#include "TOLVDateAxis.h"

#include <tests/support/TickLabels.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using namespace testing_support;

using Labels = std::vector<std::string>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
/// 2026-03-01.
constexpr double kMarch = 20513.0;

double dayPart(double hours, double minutes = 0.0, double seconds = 0.0)
{
    return (hours * 3600.0 + minutes * 60.0 + seconds) / 86400.0;
}

/// What an axis's labels are made of: the values narrowed to single precision.
Labels labelsOf(const std::shared_ptr<TOLVDateAxis>& axis, const TOLVAxis::Values& values)
{
    axis->setTickLabelFormatter(std::make_shared<DateTickFormatter>(axis));
    Labels labels;
    for (const double value : values)
        labels.push_back(axis->attributedStringForValue(static_cast<float>(value), nullptr).string());
    return labels;
}

TEST(DateTickFormatter, MajorTicksAreAsShortAsTheirStepAllows)
{
    const struct {
        const char* name;
        double origin;
        double min;
        double max;
        Labels labels;
    } cases[] = {
        {"4000 years", 0.0, -719528.0, 741442.0, {"0000", "1000", "2000", "3000", "4000"}},
        {"30 years", 0.0, 10957.0, 21915.0, {"2000", "2010", "2020", "2030"}},
        {"3 years", 0.0, 19723.0, 20819.0, {"2024", "2025", "2026", "2027"}},
        {"1 year", 0.0, 19723.0, 20089.0, {"2024-01", "2024-04", "2024-07", "2024-10", "2025-01"}},
        {"30 days", kMarch, 0.0, 30.0, {"2026-03-02", "2026-03-09", "2026-03-16", "2026-03-23", "2026-03-30"}},
        {"10 days", kMarch, 0.0, 10.0, {"2026-03-02", "2026-03-04", "2026-03-06", "2026-03-08", "2026-03-10"}},
        {"1 day", kMarch, 0.0, 1.0, {"2026-03-01", "06:00", "12:00", "18:00", "2026-03-02"}},
        {"a day from noon on", kMarch, 0.5, 1.5, {"2026-03-01 12:00", "18:00", "2026-03-02", "06:00", "12:00"}},
        {"a day of no origin", 0.0, kMarch - 0.5, kMarch + 0.5, {"2026-02-28 12:00", "18:00", "2026-03-01", "06:00", "12:00"}},
        {"1 hour", kMarch, dayPart(10, 20), dayPart(11, 20), {"2026-03-01 10:30", "10:45", "11:00", "11:15"}},
        {"90 seconds", kMarch, dayPart(10, 30, 15), dayPart(10, 31, 45), {"2026-03-01 10:30:30", "10:31:00", "10:31:30"}},
        {"3 seconds to midnight", kMarch, dayPart(23, 59, 58), dayPart(24, 0, 1), {"2026-03-01 23:59:58", "23:59:59", "2026-03-02", "00:00:01"}},
        {"a quarter of a second", kMarch, dayPart(0, 0, 15.1), dayPart(0, 0, 15.35),
            {"2026-03-01 00:00:15.1", "00:00:15.15", "00:00:15.2", "00:00:15.25", "00:00:15.3", "00:00:15.35"}},
        {"before the origin", kMarch + 0.4375, -dayPart(0, 30), dayPart(0, 30), {"2026-03-01 10:00", "10:15", "10:30", "10:45", "11:00"}},
        {"before 1970", 0.0, -1.0, 0.0, {"1969-12-31", "06:00", "12:00", "18:00", "1970-01-01"}},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        GraphWithAxis<TOLVDateAxis> graph;
        graph.axis()->setOrigin(one.origin);
        graph.prepare(one.min, one.max);
        EXPECT_EQ(labelsOf(graph.axis(), graph.axis()->majorValues()), one.labels);
    }
}

TEST(DateTickFormatter, MinorTicksAreWrittenByTheirOwnStep)
{
    GraphWithAxis<TOLVDateAxis> graph;
    graph.prepare(19723.0, 20089.0);
    EXPECT_EQ(labelsOf(graph.axis(), graph.axis()->minorValues()), (Labels{"2024-02", "2024-03", "2024-05", "2024-06", "2024-08", "2024-09", "2024-11", "2024-12"}));
    graph.axis()->setOrigin(kMarch);
    graph.prepare(0.0, 2.0, 100.0);
    EXPECT_EQ(labelsOf(graph.axis(), graph.axis()->majorValues()), (Labels{"2026-03-02"}));
    EXPECT_EQ(labelsOf(graph.axis(), graph.axis()->minorValues()),
        (Labels{"2026-03-01", "03:00", "06:00", "09:00", "12:00", "15:00", "18:00", "21:00", "03:00", "06:00", "09:00", "12:00", "15:00", "18:00", "21:00", "2026-03-03"}));
    // The first minor tick has the date where there is no major one.
    graph.prepare(dayPart(10, 31), dayPart(10, 34), 30.0);
    EXPECT_TRUE(graph.axis()->majorValues().empty());
    EXPECT_EQ(labelsOf(graph.axis(), graph.axis()->minorValues()), (Labels{"2026-03-01 10:31", "10:32", "10:33", "10:34"}));
}

TEST(DateTickFormatter, OtherValuesHaveDateAndTime)
{
    const struct {
        double origin;
        double min;
        double max;
        double value;
        const char* text;
    } cases[] = {
        // Minor steps of 100 years, half a year, a month: a tenth of them is longer than a day.
        {0.0, -719528.0, 741442.0, 20513.4375, "2026-03-01"},
        {0.0, 10957.0, 21915.0, 20513.4375, "2026-03-01"},
        {0.0, 19723.0, 20089.0, 19783.4375, "2024-03-01"},
        {0.0, 19723.0, 20089.0, 19783.9375, "2024-03-01"},
        {0.0, 19723.0, 20089.0, 19784.0, "2024-03-02"},
        // Of 6 hours, 36 minutes; of half an hour, 3 minutes.
        {kMarch, 0.0, 10.0, 2.4375, "2026-03-03 10:30"},
        {kMarch, 0.0, 10.0, 2.0, "2026-03-03"},
        {kMarch, 0.0, 1.0, dayPart(10, 30, 15), "2026-03-01 10:30"},
        // Midnight is a time among times.
        {kMarch, 0.0, 1.0, 5.0, "2026-03-06 00:00"},
        // Of a minute, 6 seconds.
        {kMarch, dayPart(10), dayPart(11), dayPart(10, 30, 15.26), "2026-03-01 10:30:15"},
        {kMarch, dayPart(10), dayPart(11), 1.0, "2026-03-02 00:00:00"},
        // Of a fifth of a second, 20 milliseconds.
        {kMarch, dayPart(10, 30, 15), dayPart(10, 30, 25), dayPart(10, 30, 16.126), "2026-03-01 10:30:16.13"},
        {kMarch, dayPart(10, 30, 15), dayPart(10, 30, 25), dayPart(10, 30, 16.5), "2026-03-01 10:30:16.5"},
        // Of a twentieth, 5 milliseconds, but floats are 2.6 milliseconds apart.
        {kMarch, dayPart(10, 30, 15), dayPart(10, 30, 18), dayPart(10, 30, 16.123), "2026-03-01 10:30:16.12"},
        // Of half a minute, 3 seconds; floats are 0.7 and 1.3 seconds apart.
        {kMarch, 127.0, 127.02, 127.0 + dayPart(10, 30, 15), "2026-07-06 10:30:15"},
        {kMarch, 128.0, 128.02, 128.0 + dayPart(10, 30, 15), "2026-07-07 10:30"},
        // Nearly three minutes.
        {0.0, kMarch, kMarch + 1.0, kMarch + 83.0 / 512.0, "2026-03-01 03:53"},
        // Outside.
        {0.0, 19723.0, 20089.0, 2932897.0, "2,932,897"},
        {kMarch, 0.0, 1.0, 4e6, "4,020,513"},
    };
    for (const auto& one : cases) {
        GraphWithAxis<TOLVDateAxis> graph;
        graph.axis()->setOrigin(one.origin);
        graph.prepare(one.min, one.max);
        EXPECT_EQ(labelsOf(graph.axis(), {one.value}), (Labels{one.text})) << one.min << " to " << one.max;
    }
}

TEST(DateTickFormatter, TicksOfAHostAreWrittenInFullWhereTheStepHasNone)
{
    GraphWithAxis<TOLVDateAxis> graph;
    graph.prepare(19723.0, 20089.0);
    graph.axis()->setMajorValues({19723.0, 19724.0, 19754.0, 19783.4375});
    EXPECT_EQ(labelsOf(graph.axis(), graph.axis()->majorValues()), (Labels{"2024-01", "2024-01-02", "2024-02", "2024-03-01"}));
    graph.axis()->setOrigin(kMarch);
    graph.prepare(0.0, 1.0);
    graph.axis()->setMajorValues({0.0, dayPart(3), dayPart(6), dayPart(10, 30)});
    EXPECT_EQ(labelsOf(graph.axis(), graph.axis()->majorValues()), (Labels{"2026-03-01", "2026-03-01 03:00", "06:00", "2026-03-01 10:30"}));
}

TEST(DateTickFormatter, WithoutStepsTheTextsAreThoseOfDays)
{
    const auto axis = std::make_shared<TOLVDateAxis>();
    axis->setOrigin(kMarch);
    EXPECT_EQ(DateTickFormatter(axis).stringFromNumber(0.0), "2026-03-01");
    EXPECT_EQ(DateTickFormatter(axis).stringFromNumber(dayPart(10, 30, 15)), "2026-03-01 10:30:15");
    EXPECT_EQ(DateTickFormatter({}).stringFromNumber(20513.4375), "2026-03-01 10:30");
    EXPECT_EQ(DateTickFormatter(axisWithTicks({0.0, 1.0})).stringFromNumber(20513.4375), "2026-03-01 10:30");
    GraphWithAxis<TOLVDateAxis> graph;
    graph.prepare(0.0, 1.0);
    for (const std::shared_ptr<const TOLVAxis>& one : {std::shared_ptr<const TOLVAxis>(graph.axis()), std::shared_ptr<const TOLVAxis>()}) {
        EXPECT_EQ(DateTickFormatter(one).stringFromNumber(kNaN), "NaN");
        EXPECT_EQ(DateTickFormatter(one).stringFromNumber(kInfinity), "+∞");
        EXPECT_EQ(DateTickFormatter(one).stringFromNumber(-kInfinity), "-∞");
        EXPECT_EQ(DateTickFormatter(one).stringFromNumber(1e30), "1,000,000,000,000,000,000,000,000,000,000");
    }
}

TEST(DateTickFormatter, CopiesLookAtTheSameAxisOrAtAnother)
{
    auto axis = std::make_shared<TOLVDateAxis>();
    axis->setOrigin(kMarch);
    const DateTickFormatter formatter(axis);
    EXPECT_EQ(formatter.axis(), axis);
    EXPECT_EQ(axis.use_count(), 1);
    const auto copy = formatter.copy();
    EXPECT_EQ(copy->stringFromNumber(0.0), "2026-03-01");
    axis.reset();
    EXPECT_EQ(copy->stringFromNumber(0.0), "1970-01-01");
    EXPECT_EQ(formatter.axis(), nullptr);
}

} // namespace
} // namespace TOLVGraphing
