#include "DateText.h"

#include <gtest/gtest.h>

#include <limits>

namespace TOLVGraphing {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(DateText, InstantsAreRoundedToTheirResolutionAndCarryIntoTheNextDay)
{
    const struct {
        double number;
        double origin;
        std::int64_t resolution;
        int day;
        std::int64_t nanosecond;
    } cases[] = {
        {0.0, 0.0, 1, 0, 0},
        {-0.25, 0.0, 1, -1, 64'800'000'000'000},
        {0.4375, 20513.0, kNanosecondsPerMinute, 20513, 37'800'000'000'000},
        {-0.4375, 20513.4375, kNanosecondsPerMinute, 20513, 0},
        {86399.6 / 86400.0, 20513.0, kNanosecondsPerSecond, 20514, 0},
        {86399.4 / 86400.0, 20513.0, kNanosecondsPerSecond, 20513, 86'399'000'000'000},
        // The sum would be the origin.
        {1e-14, 20513.0, 1, 20513, 1},
        {-1e-14, 20513.0, 1, 20512, 86'399'999'999'999},
    };
    for (const auto& one : cases) {
        const auto instant = instantSinceOrigin(one.number, one.origin, one.resolution);
        ASSERT_TRUE(instant) << one.number;
        EXPECT_EQ(instant->day, one.day) << one.number;
        EXPECT_EQ(instant->nanosecond, one.nanosecond) << one.number;
    }
}

TEST(DateText, InstantsOutsideTheYears0To9999AreNone)
{
    const struct {
        double number;
        double origin;
        std::int64_t resolution;
    } cases[] = {{kNaN, 0.0, 1}, {kInfinity, 0.0, 1}, {-kInfinity, 0.0, 1}, {1e300, 0.0, 1}, {kLastDateDay + 1.0, 0.0, 1}, {0.9999, kLastDateDay, kNanosecondsPerMinute},
        {-1e-14, kFirstDateDay, 1}, {-1.0, kFirstDateDay, kNanosecondsPerMinute}};
    for (const auto& one : cases)
        EXPECT_FALSE(instantSinceOrigin(one.number, one.origin, one.resolution)) << one.number;
}

TEST(DateText, TimesHaveTheDigitsThatThereAre)
{
    const struct {
        std::int64_t nanosecond;
        bool withSeconds;
        const char* text;
    } cases[] = {
        {0, false, "00:00"},
        {0, true, "00:00:00"},
        {kNanosecondsPerDay - 1, false, "23:59"},
        {kNanosecondsPerDay - 1, true, "23:59:59.999999999"},
        {37'815'250'000'000, true, "10:30:15.25"},
        {37'810'000'000'001, true, "10:30:10.000000001"},
        {37'820'000'000'000, true, "10:30:20"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(timeText(one.nanosecond, one.withSeconds), one.text);
}

} // namespace
} // namespace TOLVGraphing
