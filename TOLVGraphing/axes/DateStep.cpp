#include "DateStep.h"

#include "../platform/text/DateText.h"

namespace TOLVGraphing {

namespace {

/// Any months in a row have at least so many days: from February on, of a year that is no leap year.
double daysOfMonths(std::int64_t count)
{
    switch (count) {
    case 3: return 90.0;
    case 6: return 181.0;
    default: return 28.0 * static_cast<double>(count);
    }
}

} // namespace

double shortestLengthInDays(const DateStep& step)
{
    const auto count = static_cast<double>(step.count);
    switch (step.unit) {
    case DateUnit::Nanoseconds: return count / static_cast<double>(kNanosecondsPerDay);
    case DateUnit::Days: return count;
    case DateUnit::Months: return daysOfMonths(step.count);
    case DateUnit::Years: break;
    }
    return 365.0 * count;
}

std::string toString(const DateStep& step)
{
    const char* const names[] = {" ns", " days", " months", " years"};
    return std::to_string(step.count) + names[static_cast<int>(step.unit)];
}

} // namespace TOLVGraphing
