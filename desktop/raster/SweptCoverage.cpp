#include "SweptCoverage.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <utility>

namespace TOLVGraphing::raster {

namespace {

constexpr int kLargestSide = 32767;
constexpr double kFarthest = 1e9;
constexpr int kChunkRows = 64;
constexpr int kPixel = 256;
constexpr int kStripPlaces = 64 * kPixel;
constexpr int kRows = static_cast<int>(kLaneCount);
constexpr std::int16_t kNowhere = INT16_MIN;
/// The front of a row whose parts have fronts of their own: no polygon goes beyond it.
constexpr std::int16_t kDivided = INT16_MAX;
/// Places farther to the right than this many 1/256 pixels are moved there.
constexpr int kLastPlace = 2 * kStripPlaces - 4 * kPixel;
/// Sides that move by more pixels from row to row are divided rows' business.
constexpr double kSteepEnough = 1.0 / 8.0;
/// Corners of wider strokes do not come from left to right: a pointed one may lean to the left of the one before.
constexpr double kWidestStroke = 2.5;
/// Lines whose steep steps are shorter than this on average are not worth it.
constexpr double kFewRows = 12.0;
/// Sides that go down by less than this part of a row count as level.
constexpr double kLevel = 1.0 / 64.0;
constexpr double kSmallestArea = 1e-9;

/// Moves the lanes to the left by a strip's width; what is too far left to matter stays there.
void moveLanes(Lanes& lanes)
{
    for (std::int16_t& lane : lanes)
        lane = static_cast<std::int16_t>(largerOf(lane, kNowhere + kStripPlaces) - kStripPlaces);
}

/// The number of the first sixteenth of a row, counted from row 0, whose middle is not above the place.
int partBelow(double place)
{
    return static_cast<int>(std::ceil(place * kRows - 0.5));
}

/// The bits of the rows from `from` to before `end`.
std::uint64_t rowBits(int from, int end)
{
    const std::uint64_t below = end >= kChunkRows ? ~std::uint64_t{0} : (std::uint64_t{1} << end) - 1U;
    return below & ~((std::uint64_t{1} << from) - 1U);
}

} // namespace

inline Lanes SweptCoverage::Line::rowsFrom(int row) const
{
    return lanesAlong(static_cast<std::int16_t>(at(row)), slope);
}

bool SweptCoverage::suits(std::span<const Point> line, double width)
{
    if (!(width <= kWidestStroke))
        return false;
    const double longestStep = kReach - 2.0 * width;
    double steepRows = 0.0;
    for (std::size_t i = 1; i < line.size(); ++i) {
        const double step = line[i].x - line[i - 1].x;
        const double rows = std::abs(line[i].y - line[i - 1].y);
        if (!(step >= 0.0 && step <= longestStep))
            return false;
        steepRows += step <= kSteepEnough * rows ? rows : 0.0;
    }
    return steepRows >= kFewRows * static_cast<double>(line.size());
}

void SweptCoverage::begin(const PixelBox& box, Paint paint)
{
    const bool isUsable = !box.isEmpty() && box.width <= kLargestSide && box.height <= kLargestSide;
    m_box = isUsable ? box : PixelBox();
    m_paint = std::move(paint);
    m_left = 0;
    m_column = 0;
    m_chunkCount = static_cast<std::size_t>((m_box.height + kChunkRows - 1) / kChunkRows);
    m_rowCount = m_chunkCount * kChunkRows;
    Chunk untouched;
    untouched.line.start = kNowhere;
    m_chunks.assign(m_chunkCount, untouched);
    m_fronts.resize(m_rowCount / kLaneCount);
    m_partFronts.resize(m_rowCount);
    m_gaps.assign(kRingWidth * m_rowCount / kLaneCount, Lanes{});
    m_hasGaps.assign(kRingWidth * m_chunkCount, 0);
    m_levels.resize(kStripWidth * m_rowCount);
    m_strip.resize(kStripWidth * m_rowCount);
    m_isPainted.assign(m_chunkCount, 0);
}

std::size_t SweptCoverage::keptBytes() const
{
    return (m_fronts.capacity() + m_partFronts.capacity() + m_gaps.capacity()) * sizeof(Lanes) + m_levels.capacity() + m_strip.capacity();
}

void SweptCoverage::addConvexPolygon(std::span<const Point> corners)
{
    if (corners.size() < 3 || m_box.isEmpty())
        return;
    double left = corners[0].x;
    double right = left;
    double top = corners[0].y;
    double bottom = top;
    double area = 0.0;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        if (!(std::abs(corners[i].x) <= kFarthest) || !(std::abs(corners[i].y) <= kFarthest))
            return;
        left = std::min(left, corners[i].x);
        right = std::max(right, corners[i].x);
        top = std::min(top, corners[i].y);
        bottom = std::max(bottom, corners[i].y);
        const Point& next = corners[i + 1 < corners.size() ? i + 1 : 0];
        area += (corners[i].x - corners[0].x) * (next.y - corners[0].y) - (corners[i].y - corners[0].y) * (next.x - corners[0].x);
    }
    const double firstColumn = m_box.left + m_left + m_column;
    const bool isOutside = right <= firstColumn || left >= m_box.left + m_box.width || bottom <= m_box.top || top >= m_box.top + m_box.height;
    if (isOutside || std::abs(area) < kSmallestArea)
        return;
    top = std::max(top - m_box.top, 0.0);
    bottom = std::min(bottom - m_box.top, static_cast<double>(m_box.height));
    if (partBelow(top) >= partBelow(bottom))
        return;
    collectSides(corners, area);
    const auto isLower = [](const Side& a, const Side& b) { return a.height() < b.height(); };
    const auto longestLeft = std::max_element(m_leftSides.begin(), m_leftSides.end(), isLower);
    const auto longestRight = std::max_element(m_rightSides.begin(), m_rightSides.end(), isLower);
    if (longestLeft == m_leftSides.end() || longestRight == m_rightSides.end())
        return;
    const auto firstRow = static_cast<int>(top);
    const auto endRow = static_cast<int>(std::ceil(bottom));
    // Between the two long sides, as far as they go side by side, rows are covered as a whole.
    const double limit = m_box.height;
    const auto firstWhole = static_cast<int>(std::ceil(std::clamp(std::max(longestLeft->top, longestRight->top), 0.0, limit)));
    const auto endWhole = static_cast<int>(std::clamp(std::min(longestLeft->bottom, longestRight->bottom), 0.0, limit));
    const double steepEnough = kSteepEnough * kPixel;
    if (firstWhole >= endWhole || std::abs(longestLeft->slope) > steepEnough || std::abs(longestRight->slope) > steepEnough) {
        coverDividedRows(firstRow, endRow, top, bottom);
        return;
    }
    coverDividedRows(firstRow, firstWhole, top, bottom);
    coverWholeRows(firstWhole, endWhole, *longestLeft, *longestRight);
    coverDividedRows(endWhole, endRow, top, bottom);
}

void SweptCoverage::collectSides(std::span<const Point> corners, double area)
{
    m_leftSides.clear();
    m_rightSides.clear();
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Point& from = corners[i];
        const Point& to = corners[i + 1 < corners.size() ? i + 1 : 0];
        const double height = to.y - from.y;
        if (std::abs(height) < kLevel)
            continue;
        // With y growing downwards, corners of a positive area go down on the right.
        const bool isRight = (height > 0.0) == (area > 0.0);
        const Point& upper = height > 0.0 ? from : to;
        const Side side{upper.y - m_box.top, std::max(from.y, to.y) - m_box.top, (upper.x - m_box.left - m_left) * kPixel, (to.x - from.x) / height * kPixel};
        (isRight ? m_rightSides : m_leftSides).push_back(side);
    }
}

void SweptCoverage::coverDividedRows(int from, int end, double top, double bottom)
{
    constexpr double kParts = kLaneCount;
    constexpr auto kFirst = static_cast<float>(kNowhere);
    constexpr auto kLast = static_cast<float>(kLastPlace);
    for (int row = from; row < end; ++row) {
        // Part i counts with its middle at (i + 0.5) / 16.
        const int firstPart = std::max(partBelow(top) - row * kRows, 0);
        const int endPart = std::min(partBelow(bottom) - row * kRows, kRows);
        if (firstPart >= endPart)
            continue;
        // A convex polygon is what lies between all of its left and all of its right sides.
        Places left;
        Places right;
        left.fill(kFirst);
        right.fill(kLast);
        const auto placeOf = [&](const Side& side) { return static_cast<float>(std::clamp(side.x + (row + 0.5 / kParts - side.top) * side.slope + 0.5, -1e9, 1e9)); };
        for (const Side& side : m_leftSides)
            raisePlaces(left, placeOf(side), static_cast<float>(side.slope / kParts));
        for (const Side& side : m_rightSides)
            lowerPlaces(right, placeOf(side), static_cast<float>(side.slope / kParts));
        lowerPlaces(left, kLast, 0.0F);
        raisePlaces(right, kFirst, 0.0F);
        Lanes starts = roundedPlaces(left);
        Lanes stops = roundedPlaces(right);
        // Where a left side is beyond a right one there is nothing.
        keepLanes(starts, stops, firstPart, endPart);
        divideRow(row);
        coverParts(row, starts, stops);
    }
}

void SweptCoverage::coverWholeRows(int from, int end, const Side& left, const Side& right)
{
    // Rounded down, like what is added on the way down; half of the difference is made up for here.
    const auto lineOf = [](const Side& side, int firstRow) {
        const double start = side.x + (firstRow + 0.5 - side.top) * side.slope + (side.slope == 0.0 ? 0.5 : 1.0);
        const double limited = std::min(std::max(start, -static_cast<double>(kLastPlace)), static_cast<double>(kLastPlace));
        return Line{static_cast<int>(limited + kLastPlace) - kLastPlace, static_cast<int>(side.slope * kPixel)};
    };
    // Rows below the box may count as covered.
    const int limit = end == m_box.height ? static_cast<int>(m_rowCount) : end;
    for (int row = from; row < limit; row = (row / kChunkRows + 1) * kChunkRows) {
        const int firstRow = row / kChunkRows * kChunkRows;
        coverChunk(static_cast<std::size_t>(row / kChunkRows), row - firstRow, std::min(limit - firstRow, kChunkRows), lineOf(left, firstRow), lineOf(right, firstRow));
    }
}

void SweptCoverage::coverChunk(std::size_t index, int from, int end, const Line& left, const Line& right)
{
    Chunk& chunk = m_chunks[index];
    const bool isWhole = from == 0 && end == kChunkRows;
    if (isWhole && chunk.isLine && coverLine(index, left, right))
        return;
    giveRowsFronts(index);
    const std::size_t firstRow = index * kChunkRows;
    bool isBehind = false;
    for (int row = from / kRows * kRows; row < end; row += kRows) {
        Lanes start = left.rowsFrom(row);
        Lanes stop = right.rowsFrom(row);
        if (row < from || row + kRows > end)
            keepLanes(start, stop, from - row, end - row);
        const std::size_t place = firstRow + static_cast<std::size_t>(row);
        Lanes& front = frontOf(place);
        if (isAnyLarger(start, front))
            leaveGap(place, front, start, smallestLaneBelow(front, start), largestLane(start));
        isBehind = isBehind || isAnyLarger(front, stop);
        raiseLanes(front, stop);
    }
    for (std::uint64_t rows = chunk.divided & rowBits(from, end); rows != 0; rows &= rows - 1) {
        const int row = std::countr_zero(rows);
        const std::size_t place = firstRow + static_cast<std::size_t>(row);
        const auto step = static_cast<std::int16_t>(right.slope / kRows / kPixel);
        const auto stop = static_cast<std::int16_t>(right.at(row));
        coverParts(static_cast<int>(place), lanesAlong(static_cast<std::int16_t>(left.at(row)), left.slope / kRows), sameLanes(static_cast<std::int16_t>(stop + step)));
        if (isAnyLarger(m_partFronts[place], sameLanes(static_cast<std::int16_t>(stop + step))))
            continue;
        chunk.divided &= ~(std::uint64_t{1} << row);
        frontOf(place)[place % kLaneCount] = stop;
    }
    if (isWhole && chunk.divided == 0 && !isBehind) {
        chunk.isLine = true;
        chunk.line = right;
    }
}

bool SweptCoverage::coverLine(std::size_t index, const Line& left, const Line& right)
{
    Chunk& chunk = m_chunks[index];
    constexpr int kLast = kChunkRows - 1;
    const Line& front = chunk.line;
    const int before = right.start - front.start;
    const int after = right.at(kLast) - front.at(kLast);
    if ((before < 0) != (after < 0))
        return false;
    if (left.start > front.start || left.at(kLast) > front.at(kLast)) {
            for (int row = 0; row < kChunkRows; row += kRows) {
            const int end = row + kRows - 1;
            const int frontStart = front.at(row);
            const int frontEnd = front.at(end);
            const int leftStart = left.at(row);
            const int leftEnd = left.at(end);
            if (leftStart <= frontStart && leftEnd <= frontEnd)
                continue;
            leaveGap(index * kChunkRows + static_cast<std::size_t>(row), front.rowsFrom(row), left.rowsFrom(row), std::min(frontStart, frontEnd), std::max(leftStart, leftEnd));
        }
    }
    if (before >= 0)
        chunk.line = right;
    return true;
}

void SweptCoverage::coverParts(int row, const Lanes& left, const Lanes& right)
{
    const auto place = static_cast<std::size_t>(row);
    Lanes& front = m_partFronts[place];
    if (isAnyLarger(left, front)) {
        const int first = std::max(smallestLaneBelow(front, left) / kPixel, m_column);
        const int last = std::min(largestLane(left) / kPixel, m_box.width - m_left - 1);
        for (int column = first; column <= last; ++column) {
            const auto low = static_cast<std::int16_t>(column * kPixel);
            const int part = sumOfPartBetween(front, left, low, static_cast<std::int16_t>(low + kPixel));
            const std::size_t ring = ringIndex(column);
            std::int16_t& gap = gapsOf(ring, place)[place % kLaneCount];
            gap = static_cast<std::int16_t>(gap + (part + kRows / 2) / kRows);
            m_hasGaps[ring * m_chunkCount + place / kChunkRows] |= static_cast<std::uint8_t>(1U << (place % kChunkRows / kLaneCount));
        }
    }
    raiseLanes(front, right);
}

void SweptCoverage::leaveGap(std::size_t firstRow, const Lanes& front, const Lanes& left, int first, int last)
{
    const int firstColumn = std::max(first / kPixel, m_column);
    const int lastColumn = std::min(last / kPixel, m_box.width - m_left - 1);
    const auto block = static_cast<std::uint8_t>(1U << (firstRow % kChunkRows / kLaneCount));
    for (int column = firstColumn; column <= lastColumn; ++column) {
        const auto low = static_cast<std::int16_t>(column * kPixel);
        const std::size_t ring = ringIndex(column);
        addPartBetween(gapsOf(ring, firstRow), front, left, low, static_cast<std::int16_t>(low + kPixel));
        m_hasGaps[ring * m_chunkCount + firstRow / kChunkRows] |= block;
    }
}

void SweptCoverage::divideRow(int row)
{
    const auto place = static_cast<std::size_t>(row);
    Chunk& chunk = m_chunks[place / kChunkRows];
    const std::uint64_t bit = std::uint64_t{1} << (place % kChunkRows);
    if ((chunk.divided & bit) != 0)
        return;
    giveRowsFronts(place / kChunkRows);
    std::int16_t& front = frontOf(place)[place % kLaneCount];
    m_partFronts[place] = sameLanes(front);
    front = kDivided;
    chunk.divided |= bit;
}

void SweptCoverage::giveRowsFronts(std::size_t index)
{
    Chunk& chunk = m_chunks[index];
    if (!chunk.isLine)
        return;
    chunk.isLine = false;
    for (std::size_t row = 0; row < kChunkRows; row += kLaneCount)
        frontOf(index * kChunkRows + row) = chunk.line.rowsFrom(static_cast<int>(row));
}

void SweptCoverage::leaveBehind(double x)
{
    const double column = std::clamp(std::floor(x - m_box.left), 0.0, static_cast<double>(m_box.width));
    while (m_left + m_column < column)
        finishColumn();
}

void SweptCoverage::end()
{
    while (m_left + m_column < m_box.width)
        finishColumn();
    if (m_column > 0)
        paintStrip();
    m_box = {};
    m_paint = nullptr;
}

void SweptCoverage::finishColumn()
{
    const auto low = static_cast<std::int16_t>(m_column * kPixel);
    std::uint8_t* levels = m_levels.data() + static_cast<std::size_t>(m_column) * m_rowCount;
    for (std::size_t i = 0; i < m_chunkCount; ++i) {
        if (finishRows(i, low, levels + i * kChunkRows))
            m_isPainted[i] = 1;
    }
    ++m_column;
    if (m_column < static_cast<int>(kStripWidth))
        return;
    paintStrip();
    moveStrip();
}

bool SweptCoverage::finishRows(std::size_t index, std::int16_t low, std::uint8_t* levels)
{
    const Chunk& chunk = m_chunks[index];
    const int high = low + kPixel;
    const std::size_t ring = ringIndex(low / kPixel);
    std::uint8_t& hasGaps = m_hasGaps[ring * m_chunkCount + index];
    const int first = chunk.line.start;
    const int last = chunk.line.at(kChunkRows - 1);
    const bool isCovered = chunk.isLine && std::min(first, last) >= high;
    const bool isOpen = chunk.isLine && std::max(first, last) <= low;
    if (hasGaps == 0 && (isCovered || isOpen)) {
        std::memset(levels, isCovered ? 255 : 0, kChunkRows);
        return isCovered;
    }
    const std::size_t firstRow = index * kChunkRows;
    const Lanes lows = sameLanes(low);
    for (std::size_t row = 0; row < kChunkRows; row += kLaneCount) {
        const bool hasGap = ((hasGaps >> (row / kLaneCount)) & 1U) != 0;
        if (isCovered && !hasGap) {
            std::memset(levels + row, 255, kLaneCount);
            continue;
        }
        const Lanes front = chunk.isLine ? chunk.line.rowsFrom(static_cast<int>(row)) : frontOf(firstRow + row);
        if (!hasGap && !isAnyLarger(front, lows))
            std::memset(levels + row, 0, kLaneCount);
        else
            writeLevels(levels + row, front, gapsOf(ring, firstRow + row), low);
    }
    if (chunk.divided != 0)
        finishDividedRows(index, low, levels);
    if (hasGaps != 0)
        std::fill_n(&gapsOf(ring, firstRow), kChunkRows / kLaneCount, Lanes{});
    hasGaps = 0;
    return true;
}

void SweptCoverage::finishDividedRows(std::size_t index, std::int16_t low, std::uint8_t* levels)
{
    const std::size_t firstRow = index * kChunkRows;
    const std::size_t ring = ringIndex(low / kPixel);
    for (std::uint64_t rows = m_chunks[index].divided; rows != 0; rows &= rows - 1) {
        const auto row = static_cast<std::size_t>(std::countr_zero(rows));
        const int reach = sumOfPartBetween(sameLanes(low), m_partFronts[firstRow + row], low, static_cast<std::int16_t>(low + kPixel));
        const int covered = (reach + kRows / 2) / kRows - gapsOf(ring, firstRow + row)[row % kLaneCount];
        levels[row] = static_cast<std::uint8_t>((std::max(covered, 0) * 255 + 128) >> 8);
    }
}

void SweptCoverage::paintStrip()
{
    const auto first = std::find(m_isPainted.begin(), m_isPainted.end(), 1);
    if (first == m_isPainted.end())
        return;
    const auto last = std::find(m_isPainted.rbegin(), m_isPainted.rend(), 1).base();
    const auto top = (first - m_isPainted.begin()) * kChunkRows;
    const auto end = std::min((last - m_isPainted.begin()) * kChunkRows, static_cast<std::ptrdiff_t>(m_box.height));
    // Columns become rows in squares of eight by eight; rows below the box have their place too.
    const auto width = static_cast<std::size_t>(m_column);
    for (auto row = static_cast<std::size_t>(top); row < static_cast<std::size_t>(end); row += kSquare) {
        for (std::size_t column = 0; column < width; column += kSquare)
            transposeSquare(m_levels.data() + column * m_rowCount + row, m_rowCount, m_strip.data() + row * kStripWidth + column, kStripWidth);
    }
    m_paint({{m_box.left + m_left, m_box.top + static_cast<int>(top), m_column, static_cast<int>(end - top)}, m_strip.data() + top * kStripWidth, kStripWidth});
    std::fill(m_isPainted.begin(), m_isPainted.end(), std::uint8_t{0});
}

void SweptCoverage::moveStrip()
{
    m_left += static_cast<int>(kStripWidth);
    m_column = 0;
    for (std::size_t index = 0; index < m_chunkCount; ++index) {
        Chunk& chunk = m_chunks[index];
        if (chunk.isLine) {
            chunk.line.start -= kStripPlaces;
            // Eight pixels are what a line moves by at most.
            if (chunk.line.start < -kStripPlaces)
                chunk.line = {kNowhere, 0};
            continue;
        }
        const std::size_t firstRow = index * kChunkRows;
        for (std::size_t row = 0; row < kChunkRows; row += kLaneCount)
            moveLanes(frontOf(firstRow + row));
        for (std::uint64_t rows = chunk.divided; rows != 0; rows &= rows - 1) {
            const auto row = static_cast<std::size_t>(std::countr_zero(rows));
            Lanes& parts = m_partFronts[firstRow + row];
            moveLanes(parts);
            const bool isPast = largestLane(parts) <= 0;
            frontOf(firstRow + row)[row % kLaneCount] = isPast ? kNowhere : kDivided;
            if (isPast)
                chunk.divided &= ~(std::uint64_t{1} << row);
        }
    }
}

} // namespace TOLVGraphing::raster
