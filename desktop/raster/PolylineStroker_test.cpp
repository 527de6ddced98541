#include "PolylineStroker.h"

#include "testing/CoverageImage.h"
#include "testing/SampledStroke.h"
#include "tests/support/Generated.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

using namespace TOLVGraphing;
using namespace TOLVGraphing::raster;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
/// What the reference may be off by: 3 of its 256 places along each edge, and up to four edges in a pixel.
constexpr double kLargestError = 12.0;
constexpr double kMeanError = 2.0;

struct Curve {
    const char* name;
    std::vector<Point> points;
};

std::vector<Point> wave(double step, double height)
{
    std::vector<Point> points;
    for (double x = -2.0; x <= 34.0; x += step)
        points.push_back({x, 12.0 + height * std::sin(0.4 * x)});
    return points;
}

/// A minimum and a maximum in each pixel column, as a noisy series comes out.
std::vector<Point> noise(int columns, double height)
{
    testing_support::Generated generated(3);
    std::vector<Point> points;
    for (int column = 0; column < columns; ++column) {
        points.push_back({column + generated.number(0.0, 0.5), height * generated.number(0.03, 0.2)});
        points.push_back({column + generated.number(0.5, 1.0), height * generated.number(0.8, 0.97)});
    }
    return points;
}

std::vector<Curve> curves()
{
    return {
        {"level", {{2.0, 12.0}, {29.0, 12.0}}},
        {"upright", {{16.3, 2.0}, {16.3, 21.0}}},
        {"rising", {{2.0, 20.0}, {29.0, 3.0}}},
        {"steep", {{15.2, 1.5}, {16.9, 22.5}}},
        {"right angle", {{5.0, 5.0}, {20.0, 5.0}, {20.0, 20.0}}},
        {"steps", {{1.0, 18.0}, {8.0, 18.0}, {8.0, 9.0}, {15.0, 9.0}, {15.0, 14.0}, {22.0, 14.0}, {22.0, 4.0}, {30.0, 4.0}}},
        {"spike", {{3.0, 20.0}, {15.5, 20.0}, {16.0, 3.0}, {16.5, 20.0}, {29.0, 20.0}}},
        {"closed spike", {{16.25, 21.0}, {16.25, 4.0}, {16.25, 17.0}}},
        {"twice the same point", {{4.0, 6.0}, {12.0, 16.0}, {12.0, 16.0}, {12.0, 16.0}, {24.0, 7.0}}},
        {"flat wave", wave(0.5, 3.0)},
        {"high wave", wave(0.25, 9.0)},
        {"coarse wave", wave(2.7, 9.0)},
        {"noise", noise(32, 24.0)},
        {"leftwards", {{30.0, 4.0}, {22.0, 19.0}, {17.0, 5.0}, {3.0, 11.0}}},
        {"partly outside", {{-40.0, 12.0}, {10.0, -30.0}, {16.0, 50.0}, {90.0, 3.0}}},
        {"wholly outside", {{-40.0, -52.0}, {10.0, -60.0}, {90.0, -43.0}}},
        {"far away", {{-1e5, 3e5}, {10.5, 12.0}, {1e5, 2e4}}},
    };
}

constexpr PixelBox kBox{0, 0, 32, 24};

CoverageImage strokeOf(const PixelBox& box, const std::vector<Point>& points, const StrokeStyle& style)
{
    UnionCoverage coverage(box);
    PolylineStroker(coverage, style).strokeLine(points);
    return CoverageImage(box, coverage);
}

/// The largest and the mean difference between a stroke and the definition, over the pixels that either has.
struct Errors {
    double largest = 0.0;
    double mean = 0.0;
    double largeShare = 0.0;
};

Errors errorsOf(const PixelBox& box, const std::vector<Point>& points, const StrokeStyle& style)
{
    const CoverageImage image = strokeOf(box, points, style);
    const SampledStroke reference(points, style);
    Errors errors;
    int count = 0;
    int large = 0;
    for (int y = 0; y < box.height; ++y) {
        for (int x = 0; x < box.width; ++x) {
            const double expected = reference.coverage(box.left + x, box.top + y);
            const double error = std::abs(image.at(x, y) - expected);
            errors.largest = std::max(errors.largest, error);
            errors.mean += error;
            count += expected > 0.0 || image.at(x, y) > 0 ? 1 : 0;
            large += error > 32.0 ? 1 : 0;
        }
    }
    errors.mean /= std::max(count, 1);
    errors.largeShare = static_cast<double>(large) / std::max(count, 1);
    return errors;
}

std::string joinName(LineJoin join)
{
    return join == LineJoin::Miter ? "miter" : join == LineJoin::Round ? "round" : "bevel";
}

void expectTheDefinition(const StrokeStyle& style)
{
    for (const Curve& curve : curves()) {
        const Errors errors = errorsOf(kBox, curve.points, style);
        EXPECT_LE(errors.largest, kLargestError) << curve.name << ", width " << style.width << ", " << joinName(style.join);
        EXPECT_LE(errors.mean, kMeanError) << curve.name << ", width " << style.width << ", " << joinName(style.join);
    }
}

} // namespace

class StrokeOfWidth : public testing::TestWithParam<double> {};

TEST_P(StrokeOfWidth, coversWhatTheDefinitionSays)
{
    for (const LineJoin join : {LineJoin::Miter, LineJoin::Round, LineJoin::Bevel})
        expectTheDefinition({GetParam(), join, 10.0, {}});
}

TEST_P(StrokeOfWidth, dashesCoverWhatTheDefinitionSays)
{
    for (const LineDash& dash : {LineDash{{5.0, 3.0}, 0.0}, LineDash{{5.0, 3.0}, 6.5}, LineDash{{7.0, 2.0, 1.0, 2.0}, 3.3}})
        expectTheDefinition({GetParam(), LineJoin::Miter, 10.0, dash});
    expectTheDefinition({GetParam(), LineJoin::Round, 10.0, {{2.5, 2.5}, 1.0}});
}

INSTANTIATE_TEST_SUITE_P(Widths, StrokeOfWidth, testing::Values(0.3, 0.5, 1.0, 1.5, 2.0, 5.0, 20.0));

TEST(PolylineStroker, levelAndUprightLinesAreExact)
{
    EXPECT_EQ(strokeOf({0, 0, 4, 3}, {{1.0, 1.5}, {3.0, 1.5}}, {}).text(), "0 0 0 0 / 0 255 255 0 / 0 0 0 0");
    EXPECT_EQ(strokeOf({0, 0, 4, 3}, {{1.0, 1.0}, {3.5, 1.0}}, {}).text(), "0 128 128 64 / 0 128 128 64 / 0 0 0 0");
    EXPECT_EQ(strokeOf({0, 0, 3, 3}, {{1.5, 0.0}, {1.5, 2.5}}, {}).text(), "0 255 0 / 0 255 0 / 0 128 0");
    EXPECT_EQ(strokeOf({0, 0, 3, 1}, {{1.1, -4.0}, {1.1, 7.0}}, {}).text(), "102 153 0");
    EXPECT_EQ(strokeOf({0, 0, 3, 1}, {{1.5, -4.0}, {1.5, 7.0}}, {0.2, LineJoin::Miter, 10.0, {}}).text(), "0 51 0");
    EXPECT_EQ(strokeOf({0, 0, 1, 1}, {{-3.0, 0.5}, {3.0, 0.5}}, {}).text(), "255");
    EXPECT_EQ(strokeOf({0, 0, 1, 1}, {{-3.0, 1.75}, {3.0, 1.75}}, {}).text(), "0");
}

TEST(PolylineStroker, cornersAreOfTheirKind)
{
    // The pixel outside of a corner of a line two wide: whole with a point, half with a bevel, a quarter of a disc of area pi.
    const std::vector<Point> corner{{-5.0, 1.0}, {1.0, 1.0}, {1.0, 9.0}};
    const auto cornerPixel = [&](LineJoin join, double limit) { return strokeOf({1, 0, 1, 1}, corner, {2.0, join, limit, {}}).text(); };
    EXPECT_EQ(cornerPixel(LineJoin::Miter, 10.0), "255");
    EXPECT_EQ(cornerPixel(LineJoin::Bevel, 10.0), "128");
    EXPECT_NEAR(std::stoi(cornerPixel(LineJoin::Round, 10.0)), 255.0 * 0.7854, 4.0);
    // The point of a right angle is 1.4142 widths long.
    EXPECT_EQ(cornerPixel(LineJoin::Miter, 1.42), "255");
    EXPECT_EQ(cornerPixel(LineJoin::Miter, 1.41), "128");
}

TEST(PolylineStroker, miterLimitsAreThoseOfTheDefinition)
{
    for (const double limit : {1.0, 2.0, 4.0, 30.0})
        expectTheDefinition({2.0, LineJoin::Miter, limit, {}});
}

TEST(PolylineStroker, dashesGoOnAlongTheLine)
{
    const auto row = [](const std::vector<Point>& points, const LineDash& dash) { return strokeOf({0, 0, 10, 1}, points, {1.0, LineJoin::Miter, 10.0, dash}).text(); };
    const std::string expected = "255 255 0 0 0 255 255 255 0 0";
    EXPECT_EQ(row({{0.0, 0.5}, {10.0, 0.5}}, {{3.0, 3.0}, 1.0}), expected);
    EXPECT_EQ(row({{0.0, 0.5}, {0.5, 0.5}, {2.5, 0.5}, {6.0, 0.5}, {6.5, 0.5}, {10.0, 0.5}}, {{3.0, 3.0}, 1.0}), expected);
    EXPECT_EQ(row({{-3000.0, 0.5}, {10.0, 0.5}}, {{3.0, 3.0}, 1.0}), expected);
    EXPECT_EQ(row({{0.0, 0.5}, {10.0, 0.5}}, {{3.0, 3.0}, 601.0}), expected);
    EXPECT_EQ(row({{0.0, 0.5}, {10.0, 0.5}}, {{3.0, 3.0}, -5.0}), expected);
    // Painted parts and gaps of no length.
    EXPECT_EQ(row({{0.0, 0.5}, {10.0, 0.5}}, {{0.0, 3.0, 3.0, 0.0}, 2.0}), "0 255 255 255 0 0 0 255 255 255");
    EXPECT_EQ(row({{0.0, 0.5}, {10.0, 0.5}}, {{3.0, 0.0}, 1.0}), "255 255 255 255 255 255 255 255 255 255");
}

TEST(PolylineStroker, lengthsBelowAnyNumberOfDigitsEnd)
{
    // Each of these parts is lost in the rounding of the place on the line.
    const CoverageImage image = strokeOf({0, 0, 10, 1}, {{-1e6, 0.5}, {10.0, 0.5}}, {1.0, LineJoin::Miter, 10.0, {{1e-300, 0.0, 1e3, 1e-300}, 0.0}});
    EXPECT_EQ(image.at(5, 0), 255);
}

TEST(PolylineStroker, closePointsHaveNoCornersOfTheirOwn)
{
    // A step of a millionth of a pixel would have two right angles.
    const std::vector<Point> wobbling{{0.0, 1.5}, {2.0, 1.5}, {2.0, 1.500001}, {2.0, 1.5}, {4.0, 1.5}};
    EXPECT_EQ(strokeOf({0, 0, 4, 3}, wobbling, {}).text(), "0 0 0 0 / 255 255 255 255 / 0 0 0 0");
}

TEST(PolylineStroker, whatHasNoLengthOrWidthIsNotThere)
{
    const std::vector<std::vector<Point>> nothing{{}, {{5.0, 5.0}}, {{5.0, 5.0}, {5.0, 5.0}}, {{5.0, 5.0}, {5.001, 5.001}, {5.0, 5.0}}};
    for (const std::vector<Point>& points : nothing) {
        for (const LineJoin join : {LineJoin::Miter, LineJoin::Round, LineJoin::Bevel})
            EXPECT_EQ(strokeOf({0, 0, 10, 10}, points, {3.0, join, 10.0, {}}).stripCount(), 0);
    }
    for (const double width : {0.0, -1.0, kNaN, kInfinity})
        EXPECT_EQ(strokeOf({0, 0, 10, 10}, {{0.0, 5.0}, {9.0, 5.0}}, {width, LineJoin::Miter, 10.0, {}}).stripCount(), 0) << width;
}

TEST(PolylineStroker, pointsOutOfReachLeaveTheRestAsItIs)
{
    for (const double bad : {kNaN, kInfinity, -kInfinity, 1e300, -1e300, 1e12}) {
        for (const LineDash& dash : {LineDash{}, LineDash{{2.0, 1.0}, 0.5}}) {
            for (const LineJoin join : {LineJoin::Miter, LineJoin::Round}) {
                const StrokeStyle style{1.0, join, 10.0, dash};
                EXPECT_EQ(strokeOf({0, 0, 10, 3}, {{0.0, bad}, {9.0, 1.5}}, style).stripCount(), 0) << bad;
                EXPECT_EQ(strokeOf({0, 0, 10, 3}, {{0.0, 1.5}, {4.0, 1.5}, {bad, bad}, {9.0, 1.5}}, style).stripCount(), 0) << bad;
            }
        }
    }
}

TEST(PolylineStroker, widerThanTheImageCoversIt)
{
    EXPECT_EQ(strokeOf({0, 0, 2, 2}, {{-50.0, 0.5}, {50.0, 0.7}}, {4e4, LineJoin::Miter, 10.0, {}}).text(), "255 255 / 255 255");
    EXPECT_EQ(strokeOf({0, 0, 2, 2}, {{0.5, -50.0}, {0.6, 50.0}, {0.7, -50.0}}, {4e4, LineJoin::Round, 10.0, {}}).text(), "255 255 / 255 255");
}

TEST(PolylineStroker, wideLinesLeaveOutPointsOnTheWay)
{
    class Counter final : public PolygonSink {
    public:
        void addConvexPolygon(std::span<const Point>) override { ++count; }
        int count = 0;
    };
    std::vector<Point> level;
    for (int i = 0; i <= 500; ++i)
        level.push_back({i * 0.1, 12.0 + 0.001 * (i % 2)});
    std::vector<Point> there = level;
    // Upwards along one line and back again: three parts, a corner at each end of the one in the middle.
    for (int i = 0; i < 100; ++i)
        there.push_back({50.0, 12.0 - 0.2 * std::min(i, 100 - i)});
    const auto countOf = [](const std::vector<Point>& points, double width, const LineDash& dash) {
        Counter counter;
        PolylineStroker(counter, {width, LineJoin::Miter, 10.0, dash}).strokeLine(points);
        return counter.count;
    };
    EXPECT_EQ(countOf(level, 20.0, {}), 1);
    EXPECT_EQ(countOf(there, 20.0, {}), 5);
    EXPECT_EQ(countOf(level, 1.0, {}), 500);
    // Dashes are measured along every segment; between those there are 499 corners.
    EXPECT_EQ(countOf(level, 20.0, {{1000.0, 1.0}, 0.0}), 999);
}

TEST(PolylineStroker, linesShareOneUnion)
{
    UnionCoverage coverage({0, 0, 3, 1});
    PolylineStroker stroker(coverage, {});
    stroker.strokeLine(std::vector<Point>{{0.0, 0.25}, {3.0, 0.25}});
    stroker.strokeLine(std::vector<Point>{{1.0, 0.25}, {3.0, 0.25}});
    stroker.strokeLine(std::vector<Point>{{2.0, 0.75}, {3.0, 0.75}});
    EXPECT_EQ(CoverageImage({0, 0, 3, 1}, coverage).text(), "191 191 255");
}

TEST(PolylineStroker, partsOfATakenLineHaveThePolygonsOfTheWhole)
{
    class Collector final : public PolygonSink {
    public:
        void addConvexPolygon(std::span<const Point> corners) override { polygons.emplace_back(corners.begin(), corners.end()); }
        std::vector<std::vector<Point>> polygons;
    };
    for (const LineJoin join : {LineJoin::Miter, LineJoin::Round, LineJoin::Bevel}) {
        for (const double width : {0.5, 2.0, 6.0}) {
            for (const std::vector<Point>& points : {noise(96, 64.0), wave(0.4, 20.0)}) {
                const StrokeStyle style{width, join, 10.0, {}};
                Collector whole;
                PolylineStroker(whole, style).strokeLine(points);
                PolylineStroker stroker(style);
                stroker.takeLine(points);
                Collector all;
                stroker.strokeBetween(all, -1e9, 1e9);
                EXPECT_EQ(all.polygons, whole.polygons);
                // What reaches into columns 30 to 40 is there, in its order; what is added beyond is the whole line's too.
                Collector part;
                stroker.strokeBetween(part, 30.0, 40.0);
                auto next = part.polygons.begin();
                for (const std::vector<Point>& polygon : whole.polygons) {
                    const bool isAdded = next != part.polygons.end() && polygon == *next;
                    next += isAdded ? 1 : 0;
                    const auto [left, right] = std::minmax_element(polygon.begin(), polygon.end(), [](const Point& a, const Point& b) { return a.x < b.x; });
                    EXPECT_TRUE(isAdded || right->x < 30.0 || left->x > 40.0);
                }
                EXPECT_EQ(next, part.polygons.end());
                EXPECT_LT(part.polygons.size(), whole.polygons.size() / 2);
            }
        }
    }
}

TEST(PolylineStroker, denseNoiseStaysCloseToTheDefinition)
{
    const std::vector<Point> points = noise(96, 64.0);
    for (const double width : {0.5, 1.0, 2.0}) {
        const Errors errors = errorsOf({0, 0, 96, 64}, points, {width, LineJoin::Miter, 10.0, {}});
        EXPECT_LE(errors.mean, 4.9) << width;
        EXPECT_LE(errors.largeShare, 0.001) << width;
    }
}
