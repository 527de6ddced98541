#include "UnionCoverage.h"

#include "testing/CoverageImage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace TOLVGraphing;
using namespace TOLVGraphing::raster;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::vector<Point> rectangle(double left, double top, double right, double bottom)
{
    return {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
}

CoverageImage coverageOf(const PixelBox& box, const std::vector<std::vector<Point>>& polygons)
{
    UnionCoverage coverage(box);
    for (const std::vector<Point>& polygon : polygons)
        coverage.addConvexPolygon(polygon);
    return CoverageImage(box, coverage);
}

} // namespace

TEST(UnionCoverage, rectanglesCoverTheirArea)
{
    EXPECT_EQ(coverageOf({0, 0, 4, 3}, {rectangle(1.0, 1.0, 3.0, 2.0)}).text(), "0 0 0 0 / 0 255 255 0 / 0 0 0 0");
    EXPECT_EQ(coverageOf({0, 0, 4, 3}, {rectangle(0.5, 0.75, 2.25, 2.0)}).text(), "32 64 16 0 / 128 255 64 0 / 0 0 0 0");
    EXPECT_EQ(coverageOf({0, 0, 2, 2}, {rectangle(-5.0, -5.0, 50.0, 50.0)}).text(), "255 255 / 255 255");
    EXPECT_EQ(coverageOf({0, 0, 1, 1}, {rectangle(0.0, 0.0, 0.5, 0.5)}).text(), "64");
    EXPECT_EQ(coverageOf({0, 0, 3, 1}, {rectangle(1.4, -9.0, 1.6, 9.0)}).text(), "0 51 0");
}

TEST(UnionCoverage, trianglesCoverTheirArea)
{
    EXPECT_EQ(coverageOf({0, 0, 2, 2}, {{{0.0, 0.0}, {2.0, 0.0}, {0.0, 2.0}}}).text(), "255 128 / 128 0");
    EXPECT_EQ(coverageOf({0, 0, 2, 2}, {{{0.0, 0.0}, {0.0, 2.0}, {2.0, 0.0}}}).text(), "255 128 / 128 0");
    EXPECT_EQ(coverageOf({0, 0, 2, 1}, {{{0.0, 0.0}, {2.0, 0.0}, {1.0, 1.0}}}).text(), "128 128");
}

TEST(UnionCoverage, overlapsCountOnce)
{
    const auto left = rectangle(0.0, 0.0, 2.0, 1.0);
    const auto right = rectangle(1.0, 0.0, 2.5, 1.0);
    EXPECT_EQ(coverageOf({0, 0, 3, 1}, {left, right}).text(), "255 255 128");
    EXPECT_EQ(coverageOf({0, 0, 3, 1}, {left, left, left, right, right}).text(), "255 255 128");
    // Two halves that meet are a whole; two that overlap by a quarter are three quarters.
    EXPECT_EQ(coverageOf({0, 0, 1, 1}, {rectangle(0.0, 0.0, 0.5, 1.0), rectangle(0.5, 0.0, 1.0, 1.0)}).text(), "255");
    EXPECT_EQ(coverageOf({0, 0, 1, 1}, {rectangle(0.0, 0.0, 0.5, 1.0), rectangle(0.25, 0.0, 0.75, 1.0)}).text(), "191");
    EXPECT_EQ(coverageOf({0, 0, 1, 1}, {rectangle(0.0, 0.0, 1.0, 0.5), rectangle(0.0, 0.25, 1.0, 0.75)}).text(), "191");
}

TEST(UnionCoverage, crossingSidesAreCut)
{
    // Two triangles that form a bow: together three quarters of the square.
    const std::vector<Point> rising{{0.0, 1.0}, {1.0, 1.0}, {1.0, 0.0}};
    const std::vector<Point> falling{{0.0, 1.0}, {1.0, 1.0}, {0.0, 0.0}};
    EXPECT_EQ(coverageOf({0, 0, 1, 1}, {rising, falling}).text(), "191");
    // The same, stretched to many rows: the sides cross halfway down.
    const std::vector<Point> steep{{0.0, 100.0}, {1.0, 100.0}, {1.0, 0.0}};
    const std::vector<Point> steepToo{{0.0, 100.0}, {1.0, 100.0}, {0.0, 0.0}};
    const CoverageImage image = coverageOf({0, 0, 1, 100}, {steep, steepToo});
    for (int row = 0; row < 100; ++row)
        EXPECT_NEAR(image.at(0, row), row < 50 ? 255.0 * 2.0 * (row + 0.5) / 100.0 : 255.0, 1.0) << row;
}

TEST(UnionCoverage, gapsStayOpenInAnyOrder)
{
    const auto first = rectangle(0.0, 0.0, 1.0, 1.0);
    const auto second = rectangle(0.0, 2.0, 1.0, 3.0);
    const auto third = rectangle(0.0, 4.0, 1.0, 4.5);
    EXPECT_EQ(coverageOf({0, 0, 1, 5}, {first, second, third}).text(), "255 / 0 / 255 / 0 / 128");
    EXPECT_EQ(coverageOf({0, 0, 1, 5}, {third, second, first}).text(), "255 / 0 / 255 / 0 / 128");
    EXPECT_EQ(coverageOf({0, 0, 1, 5}, {second, third, first}).text(), "255 / 0 / 255 / 0 / 128");
}

TEST(UnionCoverage, boxesLieAnywhere)
{
    EXPECT_EQ(coverageOf({-3, 7, 3, 2}, {rectangle(-2.0, 7.5, -1.0, 12.0)}).text(), "0 128 0 / 0 255 0");
    EXPECT_EQ(coverageOf({0, 0, 0, 5}, {rectangle(0.0, 0.0, 9.0, 9.0)}).stripCount(), 0);
    EXPECT_EQ(coverageOf({0, 0, 40000, 5}, {rectangle(0.0, 0.0, 9.0, 9.0)}).stripCount(), 0);
    EXPECT_EQ(coverageOf({0, 0, 5, -5}, {rectangle(0.0, 0.0, 9.0, 9.0)}).stripCount(), 0);
}

TEST(UnionCoverage, stripsSpanOnlyWhatIsCovered)
{
    UnionCoverage coverage({0, 0, 1000, 500});
    coverage.addConvexPolygon(rectangle(20.0, 100.0, 30.0, 110.0));
    coverage.addConvexPolygon(rectangle(900.0, 300.0, 910.0, 310.0));
    int painted = 0;
    int end = 0;
    coverage.forEachStrip([&](const CoverageStrip& strip) {
        EXPECT_GE(strip.box.left, end);
        end = strip.box.left + strip.box.width;
        EXPECT_LE(end, 1000);
        EXPECT_EQ(strip.box.top, painted == 0 ? 100 : 300);
        EXPECT_LE(strip.box.height, 13);
        ++painted;
    });
    EXPECT_EQ(painted, 2);
    // Nothing is left over for the next time.
    coverage.begin({0, 0, 1000, 500});
    coverage.forEachStrip([](const CoverageStrip&) { ADD_FAILURE(); });
}

TEST(UnionCoverage, cornersOutOfReachLeaveThePolygonOut)
{
    for (const double bad : {kNaN, std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(), 1e300, -2e9})
        EXPECT_EQ(coverageOf({0, 0, 2, 1}, {{{0.0, 0.0}, {bad, 0.0}, {2.0, 1.0}}, {{0.0, 0.0}, {2.0, bad}, {2.0, 1.0}}, rectangle(0.0, 0.0, 1.0, 1.0)}).text(), "255 0") << bad;
    EXPECT_EQ(coverageOf({0, 0, 2, 1}, {rectangle(-9e8, -9e8, 1.0, 9e8)}).text(), "255 0");
    EXPECT_EQ(coverageOf({0, 0, 2, 1}, {{{0.0, 0.0}, {2.0, 1.0}}, {}}).text(), "0 0");
}

TEST(UnionCoverage, hundredsOfPolygonsInAColumnKeepTheirUnion)
{
    // Level bars of a sixteenth of a row, every other sixteenth free: half of every pixel, however many there are.
    std::vector<std::vector<Point>> bars;
    for (int i = 0; i < 1600; ++i)
        bars.push_back(rectangle(0.5 - 0.0003 * i, i / 8.0, 1.5, (i + 0.5) / 8.0));
    const CoverageImage image = coverageOf({0, 0, 2, 200}, bars);
    for (int row = 0; row < 200; ++row)
        EXPECT_NEAR(image.at(1, row), 64.0, 1.0) << row;
}
