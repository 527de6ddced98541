#pragma once

#include "Lanes.h"
#include "PolygonSink.h"
#include "UnionCoverage.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace TOLVGraphing::raster {

/// How much of each pixel convex polygons cover together when they come from left to right, as those of a noisy line's stroke do: upright slivers, hundreds of rows high.
///
/// What is kept for each row is its front, the right-most place covered so far. A polygon that reaches beyond it moves it, and where the polygon's left side does not meet it a gap is left.
/// A pixel is covered up to the front without the gaps. Sixty-four rows share a front that is one straight line, which it mostly is, so that what a polygon covers in them
/// costs nothing when it leaves no gap.
///
/// Sides that move by an eighth of a pixel or less from row to row count with their place at the row's middle. Other sides and rows where polygons begin or end are
/// divided into sixteen parts. Both are within 8 of 255 of the exact area for each side in a pixel.
class SweptCoverage final : public PolygonSink {
public:
    /// Takes strips of coverage from left to right and from top to bottom, which do not overlap; what lies outside of all of them is not covered. The pixels hold until the function returns.
    using Paint = std::function<void(const CoverageStrip&)>;

    /// No polygon may reach farther than this many pixels to the right of the place that was last left behind.
    static constexpr double kReach = 48.0;

    /// True for a line whose stroke may come here and is drawn faster here than as a UnionCoverage: one that goes right in short and steep steps, and is not too wide.
    [[nodiscard]] static bool suits(std::span<const Point> line, double width);

    /// Begins anew, and keeps the memory. Only the box is computed; one without pixels, or wider or higher than 32,767, stays uncovered.
    void begin(const PixelBox& box, Paint paint);
    void addConvexPolygon(std::span<const Point> corners) override;
    void leaveBehind(double x) override;
    /// Hands out what is left.
    void end();
    /// About how many bytes of memory are kept.
    [[nodiscard]] std::size_t keptBytes() const;

private:
    /// The columns of a strip, and as many after it that polygons of the strip may reach.
    static constexpr std::size_t kStripWidth = 64;
    static constexpr std::size_t kRingWidth = 2 * kStripWidth;

    /// Places from the strip's left edge at the middles of the first and the last of sixty-four rows, and how far they move from row to row, in 1/65,536 pixel.
    struct Line {
        int start = 0;
        int end = 0;
        int slope = 0;

        /// The place in a row in 1/256 pixel.
        int at(int row) const { return (start + row * slope) >> 8; }
        /// Sixteen rows from this one on.
        Lanes rowsFrom(int row) const { return lanesAlong(static_cast<std::int16_t>(at(row)), slope); }
        bool isRightOf(const Line& other) const { return start >= other.start && end >= other.end; }
    };

    static constexpr Line kNoLine{INT16_MIN * 256, INT16_MIN * 256, 0};

    /// Sixty-four rows.
    struct Chunk {
        /// True when the line is the front of all rows; otherwise the rows have fronts of their own.
        bool isLine = true;
        Line line;
        /// No row's front is to the right of this place, in 1/256 pixel.
        int farthest = INT16_MIN;
        /// The rows whose sixteen parts have fronts of their own, a bit for each.
        std::uint64_t divided = 0;
    };

    /// The places in 1/256 pixel that a gap lies between.
    struct Reach {
        int least = 0;
        int most = 0;
    };

    /// A side of the polygon being added: a place in 1/256 pixel from the strip's left edge, and how far it moves from row to row.
    struct Side {
        double top = 0.0;
        double bottom = 0.0;
        double x = 0.0;
        double slope = 0.0;

        double height() const { return bottom - top; }
    };

    void collectSides(std::span<const Point> corners, double area);
    void coverDividedRows(int from, int end, double top, double bottom);
    /// Where the sixteen parts of a row begin and end.
    void collectParts(int row, Lanes& starts, Lanes& stops) const;
    void coverWholeRows(int from, int end, const Side& left, const Side& right);
    void coverChunk(std::size_t index, int from, int end, const Line& left, const Line& right);
    /// Raises the fronts of rows of a chunk that has them, and leaves gaps. True when one is to the right of the right side.
    bool raiseFronts(std::size_t index, int from, int end, const Line& left, const Line& right);
    /// Leaves what lies between a chunk's front and the left side open, where both are lines.
    void leaveGapOfLines(std::size_t index, const Line& front, const Line& left);
    /// The parts of a row from their left to their right places, which are nowhere for those that are not covered.
    void coverParts(int row, const Lanes& left, const Lanes& right);
    /// Leaves what lies between the front and the left side open in a number of blocks of sixteen rows.
    void leaveGap(std::size_t firstRow, const Lanes* front, const Lanes* left, int blocks, const Reach& reach);
    void divideRow(int row);
    /// The polygon being added may cover something of the chunks.
    void touchChunks(std::size_t first, std::size_t end);
    void giveRowsFronts(std::size_t index);

    void finishColumn();
    bool finishRows(std::size_t index, std::int16_t low, std::uint8_t* levels);
    /// The levels of a chunk's rows, from how far they reach and how much of that is gaps. The line counts where the chunk's front is one.
    void writeChunkLevels(const Chunk& chunk, const Line& line, std::size_t firstRow, const Lanes* gaps, std::int16_t low, std::uint8_t* levels);
    void finishDividedRows(std::size_t index, std::int16_t low, std::uint8_t* levels);
    void paintStrip();
    void moveStrip();

    Lanes& gapsOf(std::size_t ring, std::size_t row) { return m_gaps[(ring * m_rowCount + row) / kLaneCount]; }
    Lanes& frontOf(std::size_t row) { return m_fronts[row / kLaneCount]; }
    std::size_t ringIndex(int column) const { return static_cast<std::size_t>(m_left + column) % kRingWidth; }

    PixelBox m_box;
    Paint m_paint;
    /// False from the beginning to the end.
    bool m_isEnded = false;
    std::size_t m_rowCount = 0;
    std::size_t m_chunkCount = 0;
    /// The strip's first column, and the first one in it that is not finished.
    int m_left = 0;
    int m_column = 0;
    std::vector<Chunk> m_chunks;
    /// The chunks that any polygon has touched lie from the first to before the end.
    std::size_t m_firstChunk = 0;
    std::size_t m_endChunk = 0;
    std::vector<Lanes> m_fronts;
    std::vector<Lanes> m_partFronts;
    /// The gaps of the columns that are not finished, column after column, and which chunks have any.
    std::vector<Lanes> m_gaps;
    std::vector<std::uint8_t> m_hasGaps;
    /// The strip's finished columns, column after column, and sixty-four rows of them, row after row.
    std::vector<std::uint8_t> m_levels;
    std::vector<std::uint8_t> m_strip;
    std::vector<std::uint8_t> m_isPainted;
    /// The right-most place of the polygon being added, in 1/256 pixel, and its sides.
    int m_farthest = 0;
    std::vector<Side> m_leftSides;
    std::vector<Side> m_rightSides;
};

} // namespace TOLVGraphing::raster
