#include "RectIndex.h"

#include <algorithm>
#include <cmath>

namespace TOLVGraphing {

namespace {

/// The side of a cell in points, about the height of a text.
constexpr double kCellSide = 16.0;
/// Coordinates beyond this share the outermost cells.
constexpr double kOutermostCell = 1e9;
constexpr std::int64_t kMostCells = 1024;

std::int32_t cellOf(double coordinate)
{
    return static_cast<std::int32_t>(std::clamp(std::floor(coordinate / kCellSide), -kOutermostCell, kOutermostCell));
}

std::uint64_t keyOf(std::int32_t column, std::int32_t row)
{
    return static_cast<std::uint64_t>(static_cast<std::uint32_t>(column)) << 32U | static_cast<std::uint32_t>(row);
}

} // namespace

bool RectIndex::Cells::areMany() const
{
    const std::int64_t columns = static_cast<std::int64_t>(right) - left + 1;
    const std::int64_t rows = static_cast<std::int64_t>(top) - bottom + 1;
    return columns > kMostCells || rows > kMostCells || columns * rows > kMostCells;
}

RectIndex::Cells RectIndex::cellsOf(const Rect& rect)
{
    return {cellOf(rect.x()), cellOf(rect.maxX()), cellOf(rect.y()), cellOf(rect.maxY())};
}

void RectIndex::add(const Rect& rect)
{
    const std::size_t number = m_rects.size();
    m_rects.push_back(rect);
    if (!rect.valid() || rect.isEmpty())
        return;
    const Cells cells = cellsOf(rect);
    if (cells.areMany()) {
        m_large.push_back(number);
        return;
    }
    for (std::int32_t column = cells.left; column <= cells.right; ++column) {
        for (std::int32_t row = cells.bottom; row <= cells.top; ++row)
            m_cells[keyOf(column, row)].push_back(number);
    }
}

std::optional<std::size_t> RectIndex::overlappingAmong(const std::vector<std::size_t>& numbers, const Rect& rect) const
{
    const auto found = std::find_if(numbers.begin(), numbers.end(), [&](std::size_t number) { return intersectsRect(m_rects[number], rect); });
    return found == numbers.end() ? std::nullopt : std::optional<std::size_t>(*found);
}

std::optional<std::size_t> RectIndex::anyOverlapping(const Rect& rect) const
{
    if (!rect.valid() || rect.isEmpty())
        return std::nullopt;
    const Cells cells = cellsOf(rect);
    if (cells.areMany()) {
        for (std::size_t number = 0; number < m_rects.size(); ++number) {
            if (m_rects[number].valid() && intersectsRect(m_rects[number], rect))
                return number;
        }
        return std::nullopt;
    }
    for (std::int32_t column = cells.left; column <= cells.right; ++column) {
        for (std::int32_t row = cells.bottom; row <= cells.top; ++row) {
            const auto cell = m_cells.find(keyOf(column, row));
            if (cell == m_cells.end())
                continue;
            if (const auto number = overlappingAmong(cell->second, rect))
                return number;
        }
    }
    return overlappingAmong(m_large, rect);
}

} // namespace TOLVGraphing
