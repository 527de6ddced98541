#include <desktop/input/CalendarDate.h>

#include <chrono>
#include <cstddef>
#include <limits>

namespace TOLVGraphing::input {

namespace {

/// Takes parts from the front of a text.
class PartReader {
public:
    explicit PartReader(std::string_view text) : m_text(text) {}

    [[nodiscard]] bool isAtEnd() const { return m_text.empty(); }

    /// Exactly this many digits.
    std::optional<int> digits(std::size_t count)
    {
        if (m_text.size() < count)
            return std::nullopt;
        int value = 0;
        for (char character : m_text.substr(0, count)) {
            if (character < '0' || character > '9')
                return std::nullopt;
            value = value * 10 + (character - '0');
        }
        m_text.remove_prefix(count);
        return value;
    }

    /// One of these characters, or NUL.
    char oneOf(std::string_view characters)
    {
        if (m_text.empty() || characters.find(m_text.front()) == std::string_view::npos)
            return '\0';
        char character = m_text.front();
        m_text.remove_prefix(1);
        return character;
    }

    /// Any number of digits behind a decimal mark, as a fraction.
    std::optional<double> fraction()
    {
        double value = 0;
        double place = 0.1;
        std::size_t count = 0;
        for (; !m_text.empty() && m_text.front() >= '0' && m_text.front() <= '9'; ++count) {
            value += place * (m_text.front() - '0');
            place /= 10;
            m_text.remove_prefix(1);
        }
        return count > 0 ? std::optional(value) : std::nullopt;
    }

private:
    std::string_view m_text;
};

/// Hours and minutes behind a sign, in minutes.
std::optional<int> offsetMinutes(PartReader& reader, bool& isValid)
{
    auto hours = reader.digits(2);
    if (!hours)
        return std::nullopt;
    int minutes = 0;
    bool hasColon = reader.oneOf(":") != '\0';
    if (hasColon || !reader.isAtEnd()) {
        auto part = reader.digits(2);
        if (!part)
            return std::nullopt;
        minutes = *part;
    }
    isValid = isValid && *hours <= 23 && minutes <= 59;
    return *hours * 60 + minutes;
}

/// Seconds since midnight UTC.
std::optional<double> secondsOfTime(PartReader& reader, bool& isValid)
{
    auto hour = reader.digits(2);
    if (!hour || !reader.oneOf(":"))
        return std::nullopt;
    auto minute = reader.digits(2);
    if (!minute)
        return std::nullopt;
    double second = 0;
    if (reader.oneOf(":")) {
        auto whole = reader.digits(2);
        if (!whole)
            return std::nullopt;
        second = *whole;
        if (reader.oneOf(".,")) {
            auto fraction = reader.fraction();
            if (!fraction)
                return std::nullopt;
            second += *fraction;
        }
    }
    isValid = isValid && *minute <= 59 && second < 61 && (*hour <= 23 || (*hour == 24 && *minute == 0 && second == 0));
    double seconds = *hour * 3600 + *minute * 60 + second;
    if (reader.oneOf("Zz"))
        return seconds;
    char sign = reader.oneOf("+-");
    if (!sign)
        return seconds;
    auto offset = offsetMinutes(reader, isValid);
    if (!offset)
        return std::nullopt;
    return seconds - (sign == '-' ? -60.0 : 60.0) * *offset;
}

struct DayOfYear {
    int year = 0;
    int month = 1;
    int day = 1;
};

/// The year first, parted by dashes or strokes.
std::optional<DayOfYear> dayBehindYear(PartReader& reader)
{
    const auto year = reader.digits(4);
    const char mark = year ? reader.oneOf("-/") : '\0';
    const auto month = mark ? reader.digits(2) : std::nullopt;
    if (!month)
        return std::nullopt;
    // With strokes only a whole date is one: 2012/01 may be a fraction.
    if (reader.isAtEnd() && mark == '-')
        return DayOfYear{*year, *month, 1};
    const auto day = reader.oneOf(std::string_view(&mark, 1)) ? reader.digits(2) : std::nullopt;
    return day ? std::optional(DayOfYear{*year, *month, *day}) : std::nullopt;
}

/// The year last, parted by points.
std::optional<DayOfYear> dayBeforeYear(PartReader& reader)
{
    const auto day = reader.digits(2);
    const auto month = day && reader.oneOf(".") ? reader.digits(2) : std::nullopt;
    const auto year = month && reader.oneOf(".") ? reader.digits(4) : std::nullopt;
    return year ? std::optional(DayOfYear{*year, *month, *day}) : std::nullopt;
}

} // namespace

std::optional<double> daysOfDate(std::string_view text)
{
    PartReader reader(text);
    const auto parts = text.size() > 2 && text[2] == '.' ? dayBeforeYear(reader) : dayBehindYear(reader);
    if (!parts)
        return std::nullopt;
    double seconds = 0;
    bool isValid = true;
    if (!reader.isAtEnd()) {
        char separator = reader.oneOf("Tt ");
        while (separator == ' ' && reader.oneOf(" ")) {}
        auto time = separator ? secondsOfTime(reader, isValid) : std::nullopt;
        if (!time || !reader.isAtEnd())
            return std::nullopt;
        seconds = *time;
    }
    std::chrono::year_month_day date(std::chrono::year(parts->year), std::chrono::month(static_cast<unsigned>(parts->month)), std::chrono::day(static_cast<unsigned>(parts->day)));
    if (!isValid || !date.ok())
        return std::numeric_limits<double>::quiet_NaN();
    auto days = static_cast<double>(std::chrono::sys_days(date).time_since_epoch().count());
    return days + seconds / 86400.0;
}

} // namespace TOLVGraphing::input
