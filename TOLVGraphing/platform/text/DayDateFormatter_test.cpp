#include "DayDateFormatter.h"

#include <gtest/gtest.h>

#include <limits>

namespace TOLVGraphing {
namespace {

TEST(DayDateFormatter, WritesIsoDatesAndTheTimeOfPartDays)
{
    const struct {
        double days;
        const char* text;
    } cases[] = {
        {0.0, "1970-01-01"},
        {-0.0, "1970-01-01"},
        {-1.0, "1969-12-31"},
        {19782.0, "2024-02-29"},
        {20778.0, "2026-11-21"},
        {20778.270833333, "2026-11-21 06:30"},
        {-0.25, "1969-12-31 18:00"},
        {0.99999, "1970-01-02"},
        {-719528.0, "0000-01-01"},
        {2932896.0, "9999-12-31"},
        {2932896.999, "9999-12-31 23:59"},
        {2932896.9999, "2,932,897"},
        {2932897.0, "2,932,897"},
        {-719529.0, "-719,529"},
        {1e30, "1,000,000,000,000,000,000,000,000,000,000"},
        {std::numeric_limits<double>::quiet_NaN(), "NaN"},
        {std::numeric_limits<double>::infinity(), "+∞"},
    };
    const DayDateFormatter formatter;
    for (const auto& one : cases)
        EXPECT_EQ(formatter.stringFromNumber(one.days), one.text) << one.days;
}

TEST(DayDateFormatter, SinceAnOriginTheSecondIsWrittenWhereItIsNotZero)
{
    const struct {
        double origin;
        double days;
        const char* text;
    } cases[] = {
        {20513.0, 0.0, "2026-03-01"},
        {20513.0, 0.4375, "2026-03-01 10:30"},
        {20513.0, 37815.0 / 86400.0, "2026-03-01 10:30:15"},
        {20513.0, 37815.4 / 86400.0, "2026-03-01 10:30:15"},
        {20513.0, 37859.6 / 86400.0, "2026-03-01 10:31"},
        {20513.0, 86399.6 / 86400.0, "2026-03-02"},
        {20513.4375, -0.4375, "2026-03-01"},
        {20513.4375, 15.0 / 86400.0, "2026-03-01 10:30:15"},
        {20513.0, -20513.0, "1970-01-01"},
        {-1.0, 0.5, "1969-12-31 12:00"},
        {20513.0, 2912383.0 + 86399.0 / 86400.0, "9999-12-31 23:59:59"},
        {20513.0, 2912384.0, "2,932,897"},
        {20513.0, -740042.0, "-719,529"},
        {20513.0, std::numeric_limits<double>::quiet_NaN(), "NaN"},
        {20513.0, -std::numeric_limits<double>::infinity(), "-∞"},
        {std::numeric_limits<double>::quiet_NaN(), 0.27, "1970-01-01 06:29"},
        {std::numeric_limits<double>::infinity(), 0.27, "1970-01-01 06:29"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(DayDateFormatter(one.origin).stringFromNumber(one.days), one.text) << one.origin << " and " << one.days;
}

TEST(DayDateFormatter, CopyWritesDatesToo)
{
    EXPECT_EQ(DayDateFormatter().copy()->stringFromNumber(1.0), "1970-01-02");
    EXPECT_EQ(DayDateFormatter(20513.0).copy()->stringFromNumber(1.0), "2026-03-02");
}

} // namespace
} // namespace TOLVGraphing
