#include "CoverageBlock.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

using TOLVGraphing::raster::CoverageBlock;

namespace {

/// The coverage of one column of a block, top to bottom.
std::vector<int> column(CoverageBlock& block, int height, int index)
{
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(height) * CoverageBlock::kColumns);
    block.moveCoverageTo(pixels.data(), CoverageBlock::kColumns);
    std::vector<int> coverage;
    for (int row = 0; row < height; ++row)
        coverage.push_back(pixels[static_cast<std::size_t>(row * CoverageBlock::kColumns + index)]);
    return coverage;
}

struct EdgeCase {
    double from;
    double to;
    std::vector<int> coverage;
};

} // namespace

TEST(CoverageBlock, areasUnderAnEdgeAreExact)
{
    // The share above 255 is the part of the pixel's area below a straight edge from one corner row to the other.
    const std::vector<EdgeCase> cases{
        {0.0, 0.0, {255, 255, 255, 255}},
        {2.0, 2.0, {0, 0, 255, 255}},
        {1.25, 1.25, {0, 191, 255, 255}},
        {1.2, 1.8, {0, 128, 255, 255}},
        {0.0, 4.0, {32, 96, 159, 223}},
        {4.0, 0.0, {32, 96, 159, 223}},
        {1.0, 3.0, {0, 64, 191, 255}},
        {0.5, 1.5, {32, 223, 255, 255}},
        {-4.0, 4.0, {143, 175, 207, 239}},
        {2.0, 6.0, {0, 0, 32, 96}},
        {-2.0, 6.0, {80, 112, 143, 175}},
        {-3.0, -1.0, {255, 255, 255, 255}},
        {4.0, 9.0, {0, 0, 0, 0}},
        {-1e9, 1e9, {128, 128, 128, 128}},
        {-1e300, -1e299, {255, 255, 255, 255}},
    };
    for (const EdgeCase& edge : cases) {
        CoverageBlock block(4);
        block.addEdge(3, edge.from, edge.to, CoverageBlock::kFullShare);
        block.addEdge(3, 7.0, 8.0, -CoverageBlock::kFullShare);
        EXPECT_EQ(column(block, 4, 3), edge.coverage) << edge.from << " to " << edge.to;
    }
}

TEST(CoverageBlock, edgesEndWithoutResidue)
{
    CoverageBlock block(2000);
    for (int i = 0; i < 500; ++i) {
        const double from = 1.0 + 0.37 * i;
        block.addEdge(0, from, from + 1700.123 - 3.1 * i, CoverageBlock::kFullShare / 500);
        block.addEdge(0, from + 1.9 * i, from + 7.7 + i * 0.21, -(CoverageBlock::kFullShare / 500));
        block.addEdge(0, 500.3 + i, 1200.7 + i, CoverageBlock::kFullShare / 1000);
        block.addEdge(0, 1200.9 + i, 501.2 + i, -(CoverageBlock::kFullShare / 1000));
    }
    const std::vector<int> coverage = column(block, 2000, 0);
    for (int row = 1800; row < 2000; ++row)
        EXPECT_EQ(coverage[static_cast<std::size_t>(row)], 0) << row;
}

TEST(CoverageBlock, columnsAreIndependent)
{
    CoverageBlock block(3);
    for (int i = 0; i < CoverageBlock::kColumns; ++i) {
        block.addEdge(i, 1.0, 1.0, CoverageBlock::kFullShare / 255 * i);
        block.addEdge(i, 2.0, 2.0, -(CoverageBlock::kFullShare / 255 * i));
    }
    std::array<std::uint8_t, 48> pixels{};
    block.moveCoverageTo(pixels.data(), 16);
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_EQ(pixels[i], 0);
        EXPECT_EQ(pixels[16 + i], i);
        EXPECT_EQ(pixels[32 + i], 0);
    }
}

TEST(CoverageBlock, tellsItsRowsAndIsEmptyAfterwards)
{
    CoverageBlock block(100);
    EXPECT_EQ(block.firstRow(), block.endRow());
    block.addEdge(0, 20.5, 30.5, CoverageBlock::kFullShare);
    block.addEdge(0, 40.5, 50.5, -CoverageBlock::kFullShare);
    EXPECT_EQ(block.firstRow(), 20);
    EXPECT_GE(block.endRow(), 51);
    EXPECT_LE(block.endRow(), 54);
    EXPECT_EQ(column(block, 100, 0)[35], 255);
    EXPECT_EQ(block.firstRow(), block.endRow());
    block.addEdge(0, 60.0, 60.0, CoverageBlock::kFullShare);
    block.addEdge(0, 200.0, 300.0, -CoverageBlock::kFullShare);
    EXPECT_EQ(block.firstRow(), 60);
    EXPECT_EQ(block.endRow(), 100);
    const std::vector<int> coverage = column(block, 100, 0);
    EXPECT_EQ(coverage[35], 0);
    EXPECT_EQ(coverage[59], 0);
    EXPECT_EQ(coverage[60], 255);
    EXPECT_EQ(coverage[99], 255);
}
