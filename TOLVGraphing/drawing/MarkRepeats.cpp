#include "MarkRepeats.h"

#include <algorithm>
#include <limits>

namespace TOLVGraphing {

namespace {

constexpr double kMostPlaces = 67108864.0;

} // namespace

MarkRepeats::MarkRepeats(const Rect& area) : m_area(integralRect(area)), m_last{std::numeric_limits<double>::quiet_NaN(), 0.0}
{
    if (!(m_area.width() * m_area.height() <= kMostPlaces)) {
        m_area = {};
        return;
    }
    m_width = static_cast<std::size_t>(m_area.width());
    m_height = static_cast<std::size_t>(m_area.height());
    m_counts.assign(m_width * m_height, 0);
}

bool MarkRepeats::paints(Point place)
{
    const double x = place.x - m_area.x();
    const double y = place.y - m_area.y();
    const bool isCounted = x >= 0.0 && x < m_area.width() && y >= 0.0 && y < m_area.height();
    if (!isCounted)
        return true;
    const auto column = static_cast<std::size_t>(x);
    const auto row = static_cast<std::size_t>(y);
    std::uint8_t& count = m_counts[row * m_width + column];
    if (count == kMostChanges)
        return false;
    const auto painted = static_cast<std::uint8_t>(count + 1);
    // Around the last mark painted there is nothing to forget.
    if (place != m_last)
        forgetNearby(column, row);
    m_last = place;
    count = painted;
    return true;
}

void MarkRepeats::forgetNearby(std::size_t column, std::size_t row)
{
    constexpr auto kReach = static_cast<std::size_t>(kNearby);
    const std::size_t left = column - std::min(column, kReach);
    const std::size_t right = std::min(column + kReach + 1, m_width);
    const std::size_t bottom = row - std::min(row, kReach);
    const std::size_t top = std::min(row + kReach + 1, m_height);
    for (std::size_t i = bottom; i < top; ++i) {
        const auto begin = m_counts.begin() + static_cast<std::ptrdiff_t>(i * m_width);
        std::fill(begin + static_cast<std::ptrdiff_t>(left), begin + static_cast<std::ptrdiff_t>(right), std::uint8_t{0});
    }
}

} // namespace TOLVGraphing
