#include <desktop/input/CalendarDate.h>

#include <gtest/gtest.h>

#include <cmath>

namespace TOLVGraphing::input {

namespace {

struct DateCase {
    const char* text;
    double days;
};

TEST(CalendarDate, datesAreDays)
{
    // clang-format off
    const DateCase cases[] = {
        // clang-format off
        { "1970-01-01",                    0 },
        { "1970-01",                       0 },
        { "1969-12-31",                   -1 },
        { "2012-01-01",                15340 },
        { "2012-01",                   15340 },
        { "2012-02-29",                15399 },
        { "2012/02/29",                15399 },
        { "29.02.2012",                15399 },
        { "01.02.1970",                   31 },
        { "02.01.1970 06:00:00",        1.25 },
        { "1970/01/02 06:00",           1.25 },
        { "2000-02-29",                11016 },
        { "0000-01-01",              -719528 },
        { "9999-12-31",              2932896 },
        { "1970-01-02T12:00",            1.5 },
        { "1970-01-02t06:00",           1.25 },
        { "1970-01-02 06:00:00",        1.25 },
        { "1970-01-02   06:00:00",      1.25 },
        { "1970-01-01T00:00:43.2",    0.0005 },
        { "1970-01-01T00:00:43,2Z",   0.0005 },
        { "1970-01-01T24:00",              1 },
        { "1970-01-01T23:59:60",           1 },
        { "1970-01-01T02:00+02:00",        0 },
        { "1970-01-01T02:30+0230",         0 },
        { "1970-01-01T02:00+02",           0 },
        { "1969-12-31T18:00:00-06:00",     0 },
        { "2012-01-01T12:30:45.5Z", 15340 + 45045.5 / 86400 },
        // clang-format on
    };
    // clang-format on
    for (const DateCase& dateCase : cases) {
        auto days = daysOfDate(dateCase.text);
        ASSERT_TRUE(days) << dateCase.text;
        // Fractions of seconds are sums of decimal places: equal within a nanosecond.
        EXPECT_NEAR(*days, dateCase.days, 1e-14 + std::abs(dateCase.days) * 3e-16) << dateCase.text;
    }
}

TEST(CalendarDate, impossibleDatesAreNaN)
{
    for (const char* text : {"2012-13-45", "2012-13", "2012-00", "2012-01-00", "2011-02-29", "1900-02-29", "2012-04-31", "2012-01-01T25:00", "2012-01-01T12:60",
             "2012-01-01T12:00:61", "2012-01-01T24:00:01", "2012-01-01T12:00+24:00", "2012-01-01T12:00+01:60", "2012/13/01", "30.02.2012", "12.13.2012"}) {
        auto days = daysOfDate(text);
        ASSERT_TRUE(days) << text;
        EXPECT_TRUE(std::isnan(*days)) << text;
    }
}

TEST(CalendarDate, otherTextsAreNoDates)
{
    for (const char* text :
        {"", "2012", "2012-", "2012-1", "2012-1-1", "12-01-01", "2012/01", "2012/1/1", "2012/01-01", "2012-01/01", "2012/01/", "2012-01-", "2012-01-1", "2012-01-011",
            "2012-01-01T", "2012-01-01 ", "2012-01-01T1", "2012-01-01T12", "2012-01-01T12:", "2012-01-01T12:3", "2012-01-01T12:30:", "2012-01-01T12:30:1", "2012-01-01T12:30:45.",
            "2012-01-01T12:30:45.x", "2012-01-01T12:30X", "2012-01-01T12:30+", "2012-01-01T12:30+2", "2012-01-01T12:30+02:", "2012-01-01T12:30+02:0", "2012-01-01T12:30+02:000",
            "2012-01-01x", "-2012-01-01", "2012-01T12:30", "20120101", "20l2-01-01", "1.2.2012", "01.02.12", "01.02", "01.02.", "01.02/2012", "01-02-2012", "01.02.20122"})
        EXPECT_FALSE(daysOfDate(text)) << text;
}

TEST(CalendarDate, everyDayFollowsTheLast)
{
    // 400 years are a whole period of the calendar.
    const int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    double expected = -135140;
    for (int year = 1600; year < 2000; ++year) {
        bool isLeap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
        for (int month = 1; month <= 12; ++month) {
            for (int day = 1; day <= lengths[month - 1] + (month == 2 && isLeap ? 1 : 0); ++day) {
                char text[32];
                std::snprintf(text, sizeof text, "%04d-%02d-%02d", year, month, day);
                ASSERT_EQ(daysOfDate(text), expected++) << text;
            }
        }
    }
    EXPECT_EQ(expected, 10957);
}

} // namespace

} // namespace TOLVGraphing::input
