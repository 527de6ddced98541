#include "SweptCoverage.h"

#include "ChunkRows.h"

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
constexpr int kStripPlaces = 64 * kPixel;
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

/// Adds what lies between two lanes in a pixel for a number of blocks of rows.
void addParts(Lanes* sums, const Lanes* from, const Lanes* to, int blocks, std::int16_t low)
{
#ifdef TOLVGRAPHING_WIDE_LANES
    if (hasWideVectors()) {
        addPartsWide(sums, from, to, blocks, low);
        return;
    }
#endif
    for (int i = 0; i < blocks; ++i)
        addPartBetween(sums[i], from[i], to[i], low, static_cast<std::int16_t>(low + kPixel));
}

/// Moves the lanes to the left by a strip's width; what is too far left to matter stays there.
void moveLanes(Lanes& lanes)
{
    for (std::int16_t& lane : lanes)
        lane = static_cast<std::int16_t>(largerOf(lane, kNowhere + kStripPlaces) - kStripPlaces);
}

/// The number of the first sixteenth of a row, counted from row 0, whose middle is below the place, which is not negative.
int partBelow(double place)
{
    return static_cast<int>(place * kRows + 0.5);
}

/// What is not negative, rounded up; the library's function is not one instruction on every processor.
int roundedUp(double number)
{
    const auto whole = static_cast<int>(number);
    return whole < number ? whole + 1 : whole;
}

/// The bits of the rows from `from` to before `end`.
std::uint64_t rowBits(int from, int end)
{
    const std::uint64_t below = end >= kChunkRows ? ~std::uint64_t{0} : (std::uint64_t{1} << end) - 1U;
    return below & ~((std::uint64_t{1} << from) - 1U);
}

} // namespace

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
    untouched.line = kNoLine;
    m_chunks.assign(m_chunkCount, untouched);
    m_firstChunk = m_chunkCount;
    m_endChunk = 0;
    m_fronts.resize(m_rowCount / kLaneCount);
    m_partFronts.resize(m_rowCount);
    // Columns that are finished leave no gaps behind.
    if (!m_isEnded || m_gaps.size() != kRingWidth * m_rowCount / kLaneCount) {
        m_gaps.assign(kRingWidth * m_rowCount / kLaneCount, Lanes{});
        m_hasGaps.assign(kRingWidth * m_chunkCount, 0);
    }
    m_isEnded = false;
    m_levels.resize(kStripWidth * m_rowCount);
    m_strip.resize(kStripWidth * kChunkRows);
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
    const Point& first = corners[0];
    double left = first.x;
    double right = left;
    double top = first.y;
    double bottom = top;
    double area = 0.0;
    bool isNear = std::abs(first.x) <= kFarthest && std::abs(first.y) <= kFarthest;
    for (std::size_t i = 1; i < corners.size(); ++i) {
        const Point& corner = corners[i];
        isNear = isNear && std::abs(corner.x) <= kFarthest && std::abs(corner.y) <= kFarthest;
        left = std::min(left, corner.x);
        right = std::max(right, corner.x);
        top = std::min(top, corner.y);
        bottom = std::max(bottom, corner.y);
        area += (corners[i - 1].x - first.x) * (corner.y - first.y) - (corners[i - 1].y - first.y) * (corner.x - first.x);
    }
    if (!isNear)
        return;
    const double firstColumn = m_box.left + m_left + m_column;
    const bool isOutside = right <= firstColumn || left >= m_box.left + m_box.width || bottom <= m_box.top || top >= m_box.top + m_box.height;
    if (isOutside || std::abs(area) < kSmallestArea)
        return;
    top = std::max(top - m_box.top, 0.0);
    bottom = std::min(bottom - m_box.top, static_cast<double>(m_box.height));
    if (partBelow(top) >= partBelow(bottom))
        return;
    m_farthest = static_cast<int>(std::min((right - m_box.left - m_left) * kPixel, static_cast<double>(kLastPlace))) + kPixel;
    collectSides(corners, area);
    if (m_leftSides.empty() || m_rightSides.empty())
        return;
    const auto isLower = [](const Side& a, const Side& b) { return a.height() < b.height(); };
    const auto longestLeft = std::max_element(m_leftSides.begin(), m_leftSides.end(), isLower);
    const auto longestRight = std::max_element(m_rightSides.begin(), m_rightSides.end(), isLower);
    const auto firstRow = static_cast<int>(top);
    const int endRow = roundedUp(bottom);
    // Between the two long sides, as far as they go side by side, rows are covered as a whole.
    const double limit = m_box.height;
    const int firstWhole = roundedUp(std::clamp(std::max(longestLeft->top, longestRight->top), 0.0, limit));
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
    const auto isSteepSide = [](const std::vector<Side>& sides) { return sides.size() == 1 && std::abs(sides.front().slope) <= kSteepEnough * kPixel; };
    const bool isSteep = isSteepSide(m_leftSides) && isSteepSide(m_rightSides);
    const auto partsOf = [](const Side& side, int row) {
        const double limit = kLastPlace;
        const double start = std::min(std::max(side.x + (row + 0.5 / kRows - side.top) * side.slope + 0.5, -limit), limit);
        return lanesAlong(static_cast<std::int16_t>(static_cast<int>(start + limit) - kLastPlace), static_cast<int>(side.slope * kPixel / kRows));
    };
    for (int row = from; row < end; ++row) {
        // Part i counts with its middle at (i + 0.5) / 16.
        const int firstPart = std::max(partBelow(top) - row * kRows, 0);
        const int endPart = std::min(partBelow(bottom) - row * kRows, kRows);
        if (firstPart >= endPart)
            continue;
        Lanes starts;
        Lanes stops;
        if (isSteep) {
            starts = partsOf(m_leftSides.front(), row);
            stops = partsOf(m_rightSides.front(), row);
        } else {
            collectParts(row, starts, stops);
        }
        // Where a left side is beyond a right one there is nothing.
        keepLanes(starts, stops, firstPart, endPart);
        divideRow(row);
        coverParts(row, starts, stops);
    }
}

void SweptCoverage::collectParts(int row, Lanes& starts, Lanes& stops) const
{
    // A convex polygon is what lies between all of its left and all of its right sides.
    constexpr auto kFirst = static_cast<float>(kNowhere);
    constexpr auto kLast = static_cast<float>(kLastPlace);
    Places left;
    Places right;
    left.fill(kFirst);
    right.fill(kLast);
    const auto placeOf = [&](const Side& side) { return static_cast<float>(std::clamp(side.x + (row + 0.5 / kRows - side.top) * side.slope + 0.5, -1e9, 1e9)); };
    for (const Side& side : m_leftSides)
        raisePlaces(left, placeOf(side), static_cast<float>(side.slope / kRows));
    for (const Side& side : m_rightSides)
        lowerPlaces(right, placeOf(side), static_cast<float>(side.slope / kRows));
    lowerPlaces(left, kLast, 0.0F);
    raisePlaces(right, kFirst, 0.0F);
    starts = roundedPlaces(left);
    stops = roundedPlaces(right);
}

void SweptCoverage::coverWholeRows(int from, int end, const Side& left, const Side& right)
{
    const int rowsBefore = from / kChunkRows * kChunkRows;
    // Each chunk's lines begin exactly. What rounding down takes off on the way down is made up for.
    const auto startOf = [&](const Side& side) {
        const double start = (side.x + (rowsBefore + 0.5 - side.top) * side.slope) * kPixel + (side.slope == 0.0 ? kPixel / 2 : kPixel);
        const double limit = static_cast<double>(kLastPlace) * kPixel;
        return std::min(std::max(start, -limit), limit);
    };
    double leftStart = startOf(left);
    double rightStart = startOf(right);
    const double leftStep = left.slope * (kChunkRows * kPixel);
    const double rightStep = right.slope * (kChunkRows * kPixel);
    const auto leftSlope = static_cast<int>(left.slope * kPixel);
    const auto rightSlope = static_cast<int>(right.slope * kPixel);
    const auto lineAt = [](double start, int slope) { return Line{static_cast<int>(start), static_cast<int>(start) + (kChunkRows - 1) * slope, slope}; };
    // Rows below the box may count as covered.
    const int limit = end == m_box.height ? static_cast<int>(m_rowCount) : end;
    touchChunks(static_cast<std::size_t>(rowsBefore / kChunkRows), static_cast<std::size_t>((limit + kChunkRows - 1) / kChunkRows));
    // Rows are counted; where the lines are goes along. NOLINTNEXTLINE(cert-flp30-c)
    for (int first = rowsBefore; first < limit; first += kChunkRows, leftStart += leftStep, rightStart += rightStep) {
        const Line leftLine = lineAt(leftStart, leftSlope);
        const Line rightLine = lineAt(rightStart, rightSlope);
        const auto index = static_cast<std::size_t>(first / kChunkRows);
        Chunk& chunk = m_chunks[index];
        chunk.farthest = std::max(chunk.farthest, m_farthest);
        if (first < from || first + kChunkRows > limit || !chunk.isLine || !rightLine.isRightOf(chunk.line)) {
            coverChunk(index, std::max(from - first, 0), std::min(limit - first, kChunkRows), leftLine, rightLine);
            continue;
        }
        if (!chunk.line.isRightOf(leftLine))
            leaveGapOfLines(index, chunk.line, leftLine);
        // One by one: what was written in other pieces takes long to be read.
        chunk.line.start = rightLine.start;
        chunk.line.end = rightLine.end;
        chunk.line.slope = rightLine.slope;
    }
}

void SweptCoverage::coverChunk(std::size_t index, int from, int end, const Line& left, const Line& right)
{
    Chunk& chunk = m_chunks[index];
    const bool isWhole = from == 0 && end == kChunkRows;
    giveRowsFronts(index);
    const std::size_t firstRow = index * kChunkRows;
    const std::uint64_t covered = rowBits(from, end);
    const bool areAllDivided = (chunk.divided & covered) == covered;
    const bool isBehind = !areAllDivided && raiseFronts(index, from, end, left, right);
    for (std::uint64_t rows = chunk.divided & covered; rows != 0; rows &= rows - 1) {
        const int row = std::countr_zero(rows);
        const std::size_t place = firstRow + static_cast<std::size_t>(row);
        const auto step = static_cast<std::int16_t>(right.slope / 2 / kPixel);
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

bool SweptCoverage::raiseFronts(std::size_t index, int from, int end, const Line& left, const Line& right)
{
    const std::size_t firstRow = index * kChunkRows;
#ifdef TOLVGRAPHING_WIDE_LANES
    if (hasWideVectors()) {
        Opening opening;
        coverRowsWide(&frontOf(firstRow), from, end, {left.start, left.slope}, {right.start, right.slope}, opening);
        const int blocks = opening.endBlock - opening.firstBlock;
        if (blocks > 0) {
            const auto block = static_cast<std::size_t>(opening.firstBlock);
            const int most = std::max(left.at(opening.firstBlock * kRows), left.at(opening.endBlock * kRows - 1));
            leaveGap(firstRow + block * kLaneCount, &opening.fronts[block], &opening.lefts[block], blocks, {opening.least, most});
        }
        return opening.isBehind;
    }
#endif
    bool isBehind = false;
    for (int row = from / kRows * kRows; row < end; row += kRows) {
        Lanes start = left.rowsFrom(row);
        Lanes stop = right.rowsFrom(row);
        if (row < from || row + kRows > end)
            keepLanes(start, stop, from - row, end - row);
        const std::size_t place = firstRow + static_cast<std::size_t>(row);
        Lanes& front = frontOf(place);
        if (isAnyLarger(start, front))
            leaveGap(place, &front, &start, 1, {smallestLaneBelow(front, start), largestLane(start)});
        isBehind = isBehind || isAnyLarger(front, stop);
        raiseLanes(front, stop);
    }
    return isBehind;
}

void SweptCoverage::leaveGapOfLines(std::size_t index, const Line& front, const Line& left)
{
    // The blocks of rows where the left side is to the right of the front, which are neighbours.
    const auto isGap = [&](int row) { return left.at(row) > front.at(row); };
    int first = 0;
    int end = kChunkRows;
    while (first < end && !isGap(first) && !isGap(first + kRows - 1))
        first += kRows;
    while (end > first && !isGap(end - 1) && !isGap(end - kRows))
        end -= kRows;
    const int least = std::min(front.at(first), front.at(end - 1));
    const int most = std::max(left.at(first), left.at(end - 1));
    const std::size_t firstRow = index * kChunkRows + static_cast<std::size_t>(first);
#ifdef TOLVGRAPHING_WIDE_LANES
    if (hasWideVectors()) {
        const int firstColumn = std::max(least / kPixel, m_column);
        const int lastColumn = std::min(most / kPixel, m_box.width - m_left - 1);
        const Slant from{front.start + first * front.slope, front.slope};
        const Slant to{left.start + first * left.slope, left.slope};
        for (int column = firstColumn; column <= lastColumn; ++column) {
            const std::size_t ring = ringIndex(column);
            addLinePartsWide(&gapsOf(ring, firstRow), from, to, (end - first) / kRows, static_cast<std::int16_t>(column * kPixel));
            m_hasGaps[ring * m_chunkCount + index] = 1;
        }
        return;
    }
#endif
    int blocks = 0;
    // As many as there are blocks are set and used.
    // NOLINTBEGIN(cppcoreguidelines-pro-type-member-init)
    std::array<Lanes, kChunkBlocks> fronts;
    std::array<Lanes, kChunkBlocks> lefts;
    // NOLINTEND(cppcoreguidelines-pro-type-member-init)
    for (int row = first; row < end; row += kRows, ++blocks) {
        fronts[static_cast<std::size_t>(blocks)] = front.rowsFrom(row);
        lefts[static_cast<std::size_t>(blocks)] = left.rowsFrom(row);
    }
    leaveGap(firstRow, fronts.data(), lefts.data(), blocks, {least, most});
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
            m_hasGaps[ring * m_chunkCount + place / kChunkRows] = 1;
        }
    }
    raiseLanes(front, right);
}

void SweptCoverage::leaveGap(std::size_t firstRow, const Lanes* front, const Lanes* left, int blocks, const Reach& reach)
{
    const int firstColumn = std::max(reach.least / kPixel, m_column);
    const int lastColumn = std::min(reach.most / kPixel, m_box.width - m_left - 1);
    for (int column = firstColumn; column <= lastColumn; ++column) {
        const std::size_t ring = ringIndex(column);
        addParts(&gapsOf(ring, firstRow), front, left, blocks, static_cast<std::int16_t>(column * kPixel));
        m_hasGaps[ring * m_chunkCount + firstRow / kChunkRows] = 1;
    }
}

void SweptCoverage::divideRow(int row)
{
    const auto place = static_cast<std::size_t>(row);
    Chunk& chunk = m_chunks[place / kChunkRows];
    chunk.farthest = std::max(chunk.farthest, m_farthest);
    touchChunks(place / kChunkRows, place / kChunkRows + 1);
    const std::uint64_t bit = std::uint64_t{1} << (place % kChunkRows);
    if ((chunk.divided & bit) != 0)
        return;
    giveRowsFronts(place / kChunkRows);
    std::int16_t& front = frontOf(place)[place % kLaneCount];
    m_partFronts[place] = sameLanes(front);
    front = kDivided;
    chunk.divided |= bit;
}

void SweptCoverage::touchChunks(std::size_t first, std::size_t end)
{
    if (first >= m_firstChunk && end <= m_endChunk)
        return;
    const bool isFirst = m_firstChunk >= m_endChunk;
    const std::size_t newFirst = isFirst ? first : std::min(m_firstChunk, first);
    const std::size_t newEnd = std::max(m_endChunk, end);
    // The strip's columns that are finished have nothing there.
    for (std::size_t i = newFirst; i < newEnd; ++i) {
        for (int column = 0; column < m_column && (isFirst || i < m_firstChunk || i >= m_endChunk); ++column)
            std::memset(m_levels.data() + static_cast<std::size_t>(column) * m_rowCount + i * kChunkRows, 0, kChunkRows);
    }
    m_firstChunk = newFirst;
    m_endChunk = newEnd;
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
    m_isEnded = true;
}

void SweptCoverage::finishColumn()
{
    const auto low = static_cast<std::int16_t>(m_column * kPixel);
    std::uint8_t* levels = m_levels.data() + static_cast<std::size_t>(m_column) * m_rowCount;
    for (std::size_t i = m_firstChunk; i < m_endChunk; ++i) {
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
    const bool isCovered = chunk.isLine && std::min(chunk.line.start, chunk.line.end) >= high * kPixel;
    const bool isOpen = chunk.farthest <= low;
    if (hasGaps == 0 && (isCovered || isOpen)) {
        std::memset(levels, isCovered ? 255 : 0, kChunkRows);
        return isCovered;
    }
    const std::size_t firstRow = index * kChunkRows;
    writeChunkLevels(chunk, isCovered ? Line{high * kPixel, high * kPixel, 0} : chunk.line, firstRow, &gapsOf(ring, firstRow), low, levels);
    if (chunk.divided != 0)
        finishDividedRows(index, low, levels);
    if (hasGaps != 0)
        std::fill_n(&gapsOf(ring, firstRow), kChunkBlocks, Lanes{});
    hasGaps = 0;
    return true;
}

void SweptCoverage::writeChunkLevels(const Chunk& chunk, const Line& line, std::size_t firstRow, const Lanes* gaps, std::int16_t low, std::uint8_t* levels)
{
#ifdef TOLVGRAPHING_WIDE_LANES
    if (hasWideVectors()) {
        if (chunk.isLine)
            writeLineLevelsWide(levels, line.start, line.slope, gaps, low);
        else
            writeLevelsWide(levels, &frontOf(firstRow), gaps, low);
        return;
    }
#endif
    for (int row = 0; row < kChunkRows; row += kRows)
        writeLevels(levels + row, chunk.isLine ? line.rowsFrom(row) : frontOf(firstRow + static_cast<std::size_t>(row)), *gaps++, low);
}

void SweptCoverage::finishDividedRows(std::size_t index, std::int16_t low, std::uint8_t* levels)
{
    const std::size_t firstRow = index * kChunkRows;
    const std::size_t ring = ringIndex(low / kPixel);
    const Lanes lows = sameLanes(low);
    for (std::uint64_t rows = m_chunks[index].divided; rows != 0; rows &= rows - 1) {
        const auto row = static_cast<std::size_t>(std::countr_zero(rows));
        const int reach = sumOfPartBetween(lows, m_partFronts[firstRow + row], low, static_cast<std::int16_t>(low + kPixel));
        const int covered = (reach + kRows / 2) / kRows - gapsOf(ring, firstRow + row)[row % kLaneCount];
        levels[row] = static_cast<std::uint8_t>((std::max(covered, 0) * 255 + 128) >> 8);
    }
}

void SweptCoverage::paintStrip()
{
    const auto width = static_cast<std::size_t>(m_column);
    for (std::size_t index = m_firstChunk; index < m_endChunk; ++index) {
        if (m_isPainted[index] == 0)
            continue;
        m_isPainted[index] = 0;
        // Columns become rows in squares of eight by eight; rows below the box have their place too.
        const std::size_t top = index * kChunkRows;
        for (std::size_t row = 0; row < kChunkRows; row += kSquare) {
            for (std::size_t column = 0; column < width; column += kSquare)
                transposeSquare(m_levels.data() + column * m_rowCount + top + row, m_rowCount, m_strip.data() + row * kStripWidth + column, kStripWidth);
        }
        const int height = std::min(m_box.height - static_cast<int>(top), kChunkRows);
        m_paint({{m_box.left + m_left, m_box.top + static_cast<int>(top), m_column, height}, m_strip.data(), kStripWidth});
    }
}

void SweptCoverage::moveStrip()
{
    m_left += static_cast<int>(kStripWidth);
    m_column = 0;
    for (std::size_t index = m_firstChunk; index < m_endChunk; ++index) {
        Chunk& chunk = m_chunks[index];
        chunk.farthest = std::max(chunk.farthest - kStripPlaces, static_cast<int>(kNowhere));
        if (chunk.isLine) {
            chunk.line.start -= kStripPlaces * kPixel;
            chunk.line.end -= kStripPlaces * kPixel;
            // Eight pixels are what a line moves by at most.
            if (chunk.line.start < -kStripPlaces * kPixel)
                chunk.line = kNoLine;
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
