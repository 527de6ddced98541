#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace TOLVGraphing::raster {

/// The coverage of sixteen pixel columns, built from edges. Rows count downwards from 0. An edge says that everything below it in its column gains (or loses) a share of
/// the column's width; areas come out exact, because what is kept is the second difference of the coverage along the column in whole numbers:
/// a slanted edge costs seven additions, however long it is, and nothing is left behind where all edges have ended.
class CoverageBlock {
public:
    static constexpr int kColumns = 16;
    /// The share of a column that is as wide as a pixel: 255 times 65,536.
    static constexpr std::int32_t kFullShare = 255 << 16;

    /// `height` rows, all without coverage.
    explicit CoverageBlock(int height);

    /// Everything below gains `share` (negative to lose it) of the column's width: all of it below the lower of the two rows, nothing above the upper one, and evenly more between them.
    /// The rows are finite and may lie outside of the block.
    void addEdge(int column, double fromRow, double toRow, std::int32_t share);

    /// The first row that may have coverage, and the one after the last: equal when nothing was added.
    [[nodiscard]] int firstRow() const { return m_firstRow < m_endRow ? m_firstRow : 0; }
    [[nodiscard]] int endRow() const { return m_firstRow < m_endRow ? m_endRow : 0; }

    /// Writes the coverage of the rows from `firstRow` to `endRow`, 0 to 255 a pixel, sixteen to a row; `corner` is the place of row 0. The block is empty afterwards.
    /// The shares of a column have to add up to 0 ... kFullShare everywhere.
    void moveCoverageTo(std::uint8_t* corner, std::ptrdiff_t stride);

private:
    void addStep(int column, double place, std::int32_t share);
    void touchRows(int first, int last);

    int m_height;
    int m_firstRow;
    int m_endRow = 0;
    /// For each row sixteen differences of the coverage, then sixteen differences of its slope. They wrap around on their way, and end exact.
    std::vector<std::uint32_t> m_differences;
};

} // namespace TOLVGraphing::raster
