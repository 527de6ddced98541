#include "CoverageBlock.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace TOLVGraphing::raster {

namespace {

constexpr std::size_t kRowLength = std::size_t{2} * CoverageBlock::kColumns;
constexpr std::size_t kSlopes = CoverageBlock::kColumns;
/// A bend of an edge changes three rows, its step two.
constexpr int kRowsBelow = 3;
/// An edge that crosses fewer rows than this counts as level at its middle.
constexpr double kLevel = 1.0 / 32.0;

/// One number of each column. Operations on all of them are loops without other arrays in sight, which compilers turn into vector instructions.
constexpr std::size_t kLanes = CoverageBlock::kColumns;
using Lanes = std::array<std::uint32_t, kLanes>;

constexpr Lanes kNoLanes{};

void addLanes(Lanes& sums, const std::uint32_t* values)
{
    for (std::size_t i = 0; i < kLanes; ++i)
        sums[i] += values[i];
}

/// Adds to a number that may wrap around.
void add(std::uint32_t& sum, std::int64_t value)
{
    sum += static_cast<std::uint32_t>(value);
}

/// Changes the slope of the coverage by `slope` for each row from the place on. Returns the same seen from row 0: how far the coverage falls behind one that changed at row 0.
std::int64_t addBend(std::uint32_t* slopes, double place, std::int32_t slope)
{
    const auto row = static_cast<int>(place);
    const double below = static_cast<double>(row + 1) - place;
    const double above = 1.0 - below;
    const auto first = static_cast<std::int32_t>(0.5 * slope * below * below);
    const auto third = static_cast<std::int32_t>(0.5 * slope * above * above);
    const std::int32_t second = slope - first - third;
    std::uint32_t* at = slopes + static_cast<std::size_t>(row) * kRowLength;
    add(at[0], first);
    add(at[kRowLength], second);
    add(at[2 * kRowLength], third);
    return static_cast<std::int64_t>(slope) * row + second + 2 * static_cast<std::int64_t>(third);
}

} // namespace

CoverageBlock::CoverageBlock(int height) : m_height(height), m_firstRow(height), m_differences(static_cast<std::size_t>(height + kRowsBelow) * kRowLength) {}

void CoverageBlock::addEdge(int column, double fromRow, double toRow, std::int32_t share)
{
    double upper = std::min(fromRow, toRow);
    double lower = std::max(fromRow, toRow);
    const double end = m_height;
    if (upper >= end) {
        touchRows(m_height, m_height);
        return;
    }
    if (lower <= 0.0) {
        addStep(column, 0.0, share);
        return;
    }
    if (lower - upper < kLevel) {
        addStep(column, std::max(0.5 * (upper + lower), 0.0), share);
        return;
    }
    if (upper < 0.0) {
        const auto outside = static_cast<std::int32_t>(share * (upper / (upper - lower)));
        addStep(column, 0.0, outside);
        share -= outside;
        upper = 0.0;
    }
    if (lower > end) {
        share = static_cast<std::int32_t>(share * ((end - upper) / (lower - upper)));
        lower = end;
    }
    if (lower - upper < kLevel) {
        addStep(column, 0.5 * (upper + lower), share);
        return;
    }
    std::uint32_t* steps = m_differences.data() + column;
    const auto slope = static_cast<std::int32_t>(share / (lower - upper));
    const std::int64_t begun = addBend(steps + kSlopes, upper, slope);
    const std::int64_t ended = addBend(steps + kSlopes, lower, -slope);
    const auto last = static_cast<int>(lower);
    // The slope is a whole number; what it leaves of the share is added at its end.
    add(steps[static_cast<std::size_t>(last + 1) * kRowLength], share + begun + ended);
    touchRows(static_cast<int>(upper), last + 2);
}

void CoverageBlock::moveCoverageTo(std::uint8_t* corner, std::ptrdiff_t stride)
{
    constexpr std::uint32_t kHalf = 1U << 15U;
    Lanes coverage;
    Lanes slopes{};
    coverage.fill(kHalf);
    const int first = firstRow();
    const int end = endRow();
    std::uint32_t* differences = m_differences.data() + static_cast<std::size_t>(first) * kRowLength;
    std::uint8_t* pixels = corner + first * stride;
    for (int row = first; row < end; ++row, pixels += stride, differences += kRowLength) {
        addLanes(slopes, differences + kSlopes);
        addLanes(coverage, differences);
        addLanes(coverage, slopes.data());
        // All of them are set. NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
        std::array<std::uint8_t, kLanes> levels;
        for (std::size_t i = 0; i < kLanes; ++i)
            levels[i] = static_cast<std::uint8_t>(coverage[i] >> 16U);
        std::memcpy(pixels, levels.data(), kLanes);
        for (std::size_t i = 0; i < kRowLength; i += kLanes)
            std::memcpy(differences + i, kNoLanes.data(), sizeof kNoLanes);
    }
    std::fill_n(differences, m_firstRow < m_endRow ? kRowsBelow * kRowLength : 0, 0U);
    m_firstRow = m_height;
    m_endRow = 0;
}

void CoverageBlock::addStep(int column, double place, std::int32_t share)
{
    const auto row = static_cast<int>(place);
    const auto first = static_cast<std::int32_t>(share * (static_cast<double>(row + 1) - place));
    std::uint32_t* steps = m_differences.data() + static_cast<std::size_t>(row) * kRowLength + column;
    add(steps[0], first);
    add(steps[kRowLength], share - first);
    touchRows(row, row + 1);
}

void CoverageBlock::touchRows(int first, int last)
{
    m_firstRow = std::min(m_firstRow, first);
    m_endRow = std::max(m_endRow, std::min(last + 1, m_height));
}

} // namespace TOLVGraphing::raster
