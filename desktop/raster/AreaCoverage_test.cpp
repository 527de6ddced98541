#include "AreaCoverage.h"

#include <tests/support/Generated.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::raster;
using TOLVGraphing::testing_support::Generated;

namespace {

using Points = std::vector<Point>;

std::vector<int> levelsOf(const PixelBox& box, const Points& line, double base)
{
    std::vector<int> levels(static_cast<std::size_t>(box.width) * static_cast<std::size_t>(box.height));
    AreaCoverage(box, line, base).forEachStrip([&](const CoverageStrip& strip) {
        for (int y = 0; y < strip.box.height; ++y) {
            for (int x = 0; x < strip.box.width; ++x) {
                const int row = strip.box.top - box.top + y;
                const int column = strip.box.left - box.left + x;
                levels.at(static_cast<std::size_t>(row * box.width + column)) = strip.coverage[y * strip.stride + x];
            }
        }
    });
    return levels;
}

/// The rows from top to bottom: "0 255 / 128 0".
std::string textOf(const PixelBox& box, const Points& line, double base)
{
    const std::vector<int> levels = levelsOf(box, line, base);
    std::string text;
    for (std::size_t i = 0; i < levels.size(); ++i)
        text += (i == 0 ? "" : i % static_cast<std::size_t>(box.width) == 0 ? " / " : " ") + std::to_string(levels[i]);
    return text;
}

/// The line's row at a place, for a line that goes right.
double rowAt(const Points& line, double x)
{
    for (std::size_t i = 1; i < line.size(); ++i) {
        if (x <= line[i].x && line[i].x > line[i - 1].x)
            return line[i - 1].y + (line[i].y - line[i - 1].y) * (x - line[i - 1].x) / (line[i].x - line[i - 1].x);
    }
    return line.back().y;
}

/// The level of a pixel from many upright cuts.
double sampledLevel(const Points& line, double base, int column, int row)
{
    constexpr int kCuts = 512;
    double covered = 0.0;
    for (int i = 0; i < kCuts; ++i) {
        const double x = column + (i + 0.5) / kCuts;
        if (x < line.front().x || x > line.back().x)
            continue;
        const double edge = rowAt(line, x);
        const double low = std::clamp(std::min(edge, base), static_cast<double>(row), row + 1.0);
        const double high = std::clamp(std::max(edge, base), static_cast<double>(row), row + 1.0);
        covered += high - low;
    }
    return 255.0 * covered / kCuts;
}

constexpr PixelBox kSmall{0, 0, 3, 4};

} // namespace

TEST(AreaCoverage, CoversWhatLiesBetweenLineAndBase)
{
    const struct {
        Points line;
        double base;
        std::string levels;
    } cases[] = {
        // clang-format off
        {{{0.0, 1.0}, {3.0, 1.0}},                         3.0, "0 0 0 / 255 255 255 / 255 255 255 / 0 0 0"},
        {{{0.5, 1.5}, {2.75, 1.5}},                        3.0, "0 0 0 / 64 128 96 / 128 255 191 / 0 0 0"},
        {{{0.0, 0.0}, {3.0, 3.0}},                         3.0, "128 0 0 / 255 128 0 / 255 255 128 / 0 0 0"},
        {{{0.0, 3.0}, {3.0, 0.0}},                         3.0, "0 0 128 / 0 128 255 / 128 255 255 / 0 0 0"},
        {{{0.0, 1.0}, {2.0, 3.0}},                         2.0, "0 0 0 / 128 0 0 / 0 128 0 / 0 0 0"},
        {{{0.0, 3.0}, {3.0, 3.0}},                         1.0, "0 0 0 / 255 255 255 / 255 255 255 / 0 0 0"},
        {{{0.0, -9.0}, {3.0, -9.0}},                       9.0, "255 255 255 / 255 255 255 / 255 255 255 / 255 255 255"},
        {{{-6.0, -3.0}, {6.0, 9.0}},                       9.0, "0 0 0 / 0 0 0 / 0 0 0 / 128 0 0"},
        {{{0.0, 1.0}, {1.0, 1.0}, {1.0, 2.0}, {3.0, 2.0}}, 3.0, "0 0 0 / 255 0 0 / 255 255 255 / 0 0 0"},
        {{{0.0, 5.0}, {3.0, 8.0}},                         9.0, "0 0 0 / 0 0 0 / 0 0 0 / 0 0 0"},
        {{{0.0, 1.0}, {3.0, 1.75}},                       -1.0, "255 255 255 / 32 96 159 / 0 0 0 / 0 0 0"},
        {{{4.0, 1.0}, {9.0, 1.0}},                         3.0, "0 0 0 / 0 0 0 / 0 0 0 / 0 0 0"},
        {{{1.0, 1.0}},                                     3.0, "0 0 0 / 0 0 0 / 0 0 0 / 0 0 0"},
        {{},                                               3.0, "0 0 0 / 0 0 0 / 0 0 0 / 0 0 0"},
        // clang-format on
    };
    for (const auto& [line, base, levels] : cases) {
        EXPECT_EQ(textOf(kSmall, line, base), levels);
        EXPECT_EQ(textOf(kSmall, Points(line.rbegin(), line.rend()), base), levels);
    }
}

TEST(AreaCoverage, IsTheSameWhereverTheBoxIs)
{
    const Points line{{100.0, -49.0}, {103.0, -47.0}};
    EXPECT_EQ(textOf({100, -50, 3, 4}, line, -47.0), textOf(kSmall, {{0.0, 1.0}, {3.0, 3.0}}, 3.0));
}

TEST(AreaCoverage, AgreesWithManyCutsOfNoise)
{
    const PixelBox box{0, 0, 130, 40};
    for (std::uint32_t seed = 0; seed < 12; ++seed) {
        Generated generated(seed);
        const double step = generated.number(0.01, 4.0);
        const double base = generated.number(-10.0, 50.0);
        Points line;
        for (double x = generated.number(-5.0, 20.0); x < 120.0; x += generated.whole(5) == 0 ? 0.0 : step * generated.number(0.0, 2.0))
            line.push_back({x, generated.number(-10.0, 50.0)});
        const std::vector<int> levels = levelsOf(box, line, base);
        for (int row = 0; row < box.height; row += 3) {
            for (int column = 0; column < box.width; column += 7)
                // The cuts are off by less than this on a line that goes up and down between them.
                ASSERT_NEAR(levels.at(static_cast<std::size_t>(row * box.width + column)), sampledLevel(line, base, column, row), 2.5)
                    << "seed " << seed << ": " << column << " " << row;
        }
    }
}

TEST(AreaCoverage, LeavesBoxesWithoutPixelsUncovered)
{
    for (const PixelBox& box : {PixelBox{}, PixelBox{0, 0, -3, 4}, PixelBox{0, 0, 40000, 4}}) {
        int strips = 0;
        const Points line{{0.0, 1.0}, {3.0, 1.0}};
        AreaCoverage(box, line, 3.0).forEachStrip([&](const CoverageStrip&) { ++strips; });
        EXPECT_EQ(strips, 0);
    }
}
