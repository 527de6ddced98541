#include "SweptCoverage.h"

#include "PolylineStroker.h"
#include "testing/CoverageImage.h"
#include "testing/SampledStroke.h"
#include "tests/support/Generated.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::raster;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// The coverage of a box, row after row.
struct Levels {
    PixelBox box;
    std::vector<int> levels;

    explicit Levels(const PixelBox& pixels) : box(pixels), levels(pixels.isEmpty() ? 0 : static_cast<std::size_t>(pixels.width) * static_cast<std::size_t>(pixels.height)) {}

    int& at(int x, int y) { return levels.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(box.width) + static_cast<std::size_t>(x)); }

    void take(const CoverageStrip& strip)
    {
        for (int y = 0; y < strip.box.height; ++y) {
            for (int x = 0; x < strip.box.width; ++x) {
                EXPECT_EQ(at(strip.box.left - box.left + x, strip.box.top - box.top + y), 0);
                at(strip.box.left - box.left + x, strip.box.top - box.top + y) = strip.coverage[y * strip.stride + x];
            }
        }
    }

    std::string text()
    {
        std::string text;
        for (int y = 0; y < box.height; ++y) {
            text += y == 0 ? "" : " / ";
            for (int x = 0; x < box.width; ++x)
                text += (x == 0 ? "" : " ") + std::to_string(at(x, y));
        }
        return text;
    }
};

std::vector<Point> rectangle(double left, double top, double right, double bottom)
{
    return {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
}

Levels sweptPolygons(const PixelBox& box, const std::vector<std::vector<Point>>& polygons)
{
    Levels levels(box);
    SweptCoverage coverage;
    coverage.begin(box, [&](const CoverageStrip& strip) { levels.take(strip); });
    for (const std::vector<Point>& polygon : polygons)
        coverage.addConvexPolygon(polygon);
    coverage.end();
    return levels;
}

Levels sweptStroke(const PixelBox& box, const std::vector<Point>& points, const StrokeStyle& style)
{
    Levels levels(box);
    SweptCoverage coverage;
    coverage.begin(box, [&](const CoverageStrip& strip) { levels.take(strip); });
    PolylineStroker(coverage, style).strokeLine(points);
    coverage.end();
    return levels;
}

/// Steps of up to `step` pixels between any two rows; every eighth is upright, and every ninth nearly level.
std::vector<Point> noise(unsigned seed, double left, double right, double step, double top, double bottom)
{
    testing_support::Generated generated(seed);
    std::vector<Point> points;
    double y = top;
    for (double x = left; x < right; x += generated.whole(8) == 0 ? 0.0 : generated.number(0.01, step)) {
        y = generated.whole(9) == 0 ? y + generated.number(-2.0, 2.0) : generated.number(top, bottom);
        points.push_back({x, y});
    }
    return points;
}

struct Errors {
    double mean = 0.0;
    double largeShare = 0.0;
    int worst = 0;
};

/// The differences of two coverages over the pixels that either has.
template <typename Expected>
Errors errorsOf(Levels& levels, const Expected& expected)
{
    Errors errors;
    int count = 0;
    int large = 0;
    for (int y = 0; y < levels.box.height; ++y) {
        for (int x = 0; x < levels.box.width; ++x) {
            const double wanted = expected(x, y);
            const double error = std::abs(levels.at(x, y) - wanted);
            count += wanted > 0.0 || levels.at(x, y) > 0 ? 1 : 0;
            large += error > 32.0 ? 1 : 0;
            errors.mean += error;
            errors.worst = std::max(errors.worst, static_cast<int>(error));
        }
    }
    errors.mean /= std::max(count, 1);
    errors.largeShare = static_cast<double>(large) / std::max(count, 1);
    return errors;
}

std::string nameOf(const StrokeStyle& style)
{
    return "width " + std::to_string(style.width) + (style.join == LineJoin::Miter ? " miter" : style.join == LineJoin::Round ? " round" : " bevel");
}

} // namespace

TEST(SweptCoverage, rectanglesCoverTheirArea)
{
    EXPECT_EQ(sweptPolygons({0, 0, 4, 3}, {rectangle(1.0, 1.0, 3.0, 2.0)}).text(), "0 0 0 0 / 0 255 255 0 / 0 0 0 0");
    EXPECT_EQ(sweptPolygons({0, 0, 4, 3}, {rectangle(0.5, 0.75, 2.25, 2.0)}).text(), "32 64 16 0 / 128 255 64 0 / 0 0 0 0");
    EXPECT_EQ(sweptPolygons({0, 0, 2, 2}, {rectangle(-5.0, -5.0, 40.0, 40.0)}).text(), "255 255 / 255 255");
    EXPECT_EQ(sweptPolygons({-3, 7, 3, 2}, {rectangle(-2.0, 7.5, -1.0, 12.0)}).text(), "0 128 0 / 0 255 0");
}

TEST(SweptCoverage, overlapsCountOnceAndGapsStayOpen)
{
    EXPECT_EQ(sweptPolygons({0, 0, 3, 1}, {rectangle(0.0, 0.0, 2.0, 1.0), rectangle(1.0, 0.0, 2.5, 1.0)}).text(), "255 255 128");
    EXPECT_EQ(sweptPolygons({0, 0, 3, 1}, {rectangle(0.0, 0.0, 2.0, 1.0), rectangle(1.0, 0.0, 1.5, 1.0)}).text(), "255 255 0");
    EXPECT_EQ(sweptPolygons({0, 0, 4, 1}, {rectangle(0.25, 0.0, 0.5, 1.0), rectangle(0.75, 0.0, 1.25, 1.0), rectangle(3.5, 0.0, 4.0, 1.0)}).text(), "128 64 0 128");
    // A row that two polygons share from top to bottom, and one that has its upper half only.
    EXPECT_EQ(sweptPolygons({0, 0, 1, 2}, {rectangle(0.0, 0.0, 1.0, 0.25), rectangle(0.0, 0.25, 1.0, 1.5)}).text(), "255 / 128");
    EXPECT_EQ(sweptPolygons({0, 0, 2, 1}, {rectangle(0.0, 0.0, 1.0, 0.5), rectangle(1.0, 0.0, 2.0, 1.0)}).text(), "128 255");
}

TEST(SweptCoverage, gapsAcrossStripsAreEmpty)
{
    Levels levels = sweptPolygons({0, 0, 300, 70}, {rectangle(10.0, 0.0, 11.0, 70.0)});
    for (int x = 0; x < 300; ++x)
        EXPECT_EQ(levels.at(x, 35), x == 10 ? 255 : 0) << x;
    Levels swept({0, 0, 300, 70});
    SweptCoverage coverage;
    coverage.begin(swept.box, [&](const CoverageStrip& strip) { swept.take(strip); });
    for (const double x : {10.0, 63.5, 64.75, 130.0, 290.5}) {
        coverage.leaveBehind(x);
        coverage.addConvexPolygon(rectangle(x, 3.0, x + 1.0, 66.0));
    }
    coverage.end();
    for (int x = 0; x < 300; ++x) {
        const int expected = x == 10 || x == 130 ? 255 : x == 63 || x == 290 || x == 291 ? 128 : x == 64 ? 191 : x == 65 ? 191 : 0;
        EXPECT_EQ(swept.at(x, 35), expected) << x;
        EXPECT_EQ(swept.at(x, 2), 0) << x;
        EXPECT_EQ(swept.at(x, 66), 0) << x;
    }
}

TEST(SweptCoverage, strokesCoverWhatTheDefinitionSays)
{
    unsigned seed = 1;
    for (const double width : {0.3, 0.5, 1.0, 1.5, 2.0, 2.5}) {
        for (const LineJoin join : {LineJoin::Miter, LineJoin::Round, LineJoin::Bevel}) {
            for (const double step : {0.7, 3.0, 9.0}) {
                const PixelBox box{-7, 3, 77, 131};
                const std::vector<Point> points = noise(++seed, -20.0, 80.0, step, 8.0, 125.0);
                const StrokeStyle style{width, join, 10.0, {}};
                Levels levels = sweptStroke(box, points, style);
                const SampledStroke reference(points, style);
                // Every third column and row, to be quick.
                double sum = 0.0;
                int count = 0;
                int large = 0;
                for (int y = 0; y < box.height; y += 3) {
                    for (int x = 0; x < box.width; x += 3) {
                        const double expected = reference.coverage(box.left + x, box.top + y);
                        const double error = std::abs(levels.at(x, y) - expected);
                        sum += error;
                        count += expected > 0.0 || levels.at(x, y) > 0 ? 1 : 0;
                        large += error > 32.0 ? 1 : 0;
                    }
                }
                // Steps that are not steep have sides that are off by 8 levels at most.
                EXPECT_LE(sum / count, step < 9.0 ? 2.0 : 3.0) << nameOf(style) << ", steps of " << step;
                EXPECT_LE(large, 1) << nameOf(style) << ", steps of " << step;
            }
        }
    }
}

TEST(SweptCoverage, strokesAreThoseOfTheUnion)
{
    unsigned seed = 100;
    for (const PixelBox& box : {PixelBox{0, 0, 200, 64}, PixelBox{11, -5, 129, 65}, PixelBox{0, 30, 65, 1}, PixelBox{50, 0, 1, 200}}) {
        for (const double width : {0.3, 1.0, 2.0, 2.5}) {
            const std::vector<Point> points = noise(++seed, -30.0, 230.0, 1.6, -40.0, 240.0);
            const StrokeStyle style{width, LineJoin::Miter, 10.0, {}};
            Levels levels = sweptStroke(box, points, style);
            UnionCoverage coverage(box);
            PolylineStroker(coverage, style).strokeLine(points);
            const CoverageImage expected(box, coverage);
            const Errors errors = errorsOf(levels, [&](int x, int y) { return expected.at(x, y); });
            EXPECT_LE(errors.mean, 2.0) << nameOf(style);
            EXPECT_LE(errors.largeShare, 0.001) << nameOf(style);
        }
    }
}

TEST(SweptCoverage, dashesAreThoseOfTheUnion)
{
    const PixelBox box{0, 0, 90, 150};
    for (const LineDash& dash : {LineDash{{8.0, 4.0}, 0.0}, LineDash{{3.0, 1.5}, 2.0}, LineDash{{0.5, 0.75}, 0.3}}) {
        const std::vector<Point> points = noise(77, -3.0, 95.0, 4.0, 5.0, 145.0);
        const StrokeStyle style{1.0, LineJoin::Miter, 10.0, dash};
        Levels levels = sweptStroke(box, points, style);
        UnionCoverage coverage(box);
        PolylineStroker(coverage, style).strokeLine(points);
        const CoverageImage expected(box, coverage);
        const Errors errors = errorsOf(levels, [&](int x, int y) { return expected.at(x, y); });
        EXPECT_LE(errors.mean, 3.0) << dash.lengths[0];
        EXPECT_LE(errors.largeShare, 0.001) << dash.lengths[0];
    }
}

TEST(SweptCoverage, bandsAreTheUndividedPicture)
{
    unsigned seed = 300;
    for (const double width : {0.3, 1.0, 2.5}) {
        for (const double step : {0.7, 1.6, 9.0}) {
            const PixelBox box{5, -3, 700, 150};
            const std::vector<Point> points = noise(++seed, -30.0, 730.0, step, -10.0, 170.0);
            const StrokeStyle style{width, LineJoin::Miter, 10.0, {}};
            Levels whole = sweptStroke(box, points, style);
            Levels bands(box);
            PolylineStroker stroker(style);
            stroker.takeLine(points);
            SweptCoverage coverage;
            for (int left = 0; left < box.width; left += 128) {
                const PixelBox band{box.left + left, box.top, std::min(128, box.width - left), box.height};
                coverage.begin(band, [&](const CoverageStrip& strip) { bands.take(strip); });
                stroker.strokeBetween(coverage, band.left, band.left + band.width);
                coverage.end();
            }
            // A row that the band before has divided counts with its parts' middles, or else with its own.
            const Errors errors = errorsOf(bands, [&](int x, int y) { return whole.at(x, y); });
            EXPECT_LE(errors.worst, 16) << nameOf(style) << ", steps of " << step;
            EXPECT_LE(errors.mean, 0.01) << nameOf(style) << ", steps of " << step;
        }
    }
}

TEST(SweptCoverage, nothingIsLeftForTheNextTime)
{
    SweptCoverage coverage;
    const PixelBox box{0, 0, 150, 100};
    const auto stroke = [&](const std::vector<Point>& points) {
        Levels levels(box);
        coverage.begin(box, [&](const CoverageStrip& strip) { levels.take(strip); });
        PolylineStroker(coverage, {}).strokeLine(points);
        coverage.end();
        return levels.levels;
    };
    const std::vector<Point> points = noise(5, 0.0, 150.0, 1.0, 3.0, 97.0);
    const std::vector<int> first = stroke(points);
    EXPECT_EQ(stroke({}), std::vector<int>(first.size(), 0));
    EXPECT_EQ(stroke(points), first);
    // One that is not ended leaves nothing either.
    coverage.begin({0, 0, 20, 700}, [](const CoverageStrip&) {});
    PolylineStroker(coverage, {}).strokeLine(noise(6, 0.0, 50.0, 1.0, 3.0, 600.0));
    EXPECT_EQ(stroke(points), first);
}

TEST(SweptCoverage, tellsWhichLinesSuit)
{
    const auto zigzag = [](double step, double height, int count) {
        std::vector<Point> points;
        for (int i = 0; i < count; ++i)
            points.push_back({i * step, i % 2 == 0 ? 0.0 : height});
        return points;
    };
    EXPECT_TRUE(SweptCoverage::suits(zigzag(1.6, 170.0, 100), 1.0));
    EXPECT_TRUE(SweptCoverage::suits(zigzag(0.0, 170.0, 100), 1.0));
    EXPECT_FALSE(SweptCoverage::suits(zigzag(-1.6, 170.0, 100), 1.0));
    EXPECT_FALSE(SweptCoverage::suits(zigzag(30.0, 170.0, 100), 1.0));
    EXPECT_FALSE(SweptCoverage::suits(zigzag(0.5, 3.0, 100), 1.0));
    EXPECT_TRUE(SweptCoverage::suits(zigzag(1.6, 170.0, 100), 2.5));
    EXPECT_FALSE(SweptCoverage::suits(zigzag(1.6, 170.0, 100), 2.6));
    EXPECT_FALSE(SweptCoverage::suits(std::vector<Point>{{0.0, 0.0}, {kNaN, 100.0}}, 1.0));
}

TEST(SweptCoverage, anyPolygonIsHarmless)
{
    const std::vector<double> numbers{0.0, 1.5, -3.0, 70.0, 1e3, -1e5, 9e8, 1e12, kNaN, std::numeric_limits<double>::infinity()};
    for (const double x : numbers) {
        for (const double y : numbers) {
            Levels levels = sweptPolygons({0, 0, 66, 130}, {{{x, 0.0}, {5.0, y}, {1.0, 3.0}}, {{0.0, 0.0}, {x, y}, {y, x}, {4.0, 4.0}}, rectangle(63.0, 129.0, 64.0, 130.0)});
            for (const int level : levels.levels)
                EXPECT_LE(level, 255);
        }
    }
    EXPECT_TRUE(sweptPolygons({0, 0, 0, 5}, {rectangle(0.0, 0.0, 9.0, 9.0)}).levels.empty());
    EXPECT_EQ(sweptPolygons({0, 0, 40000, 1}, {rectangle(0.0, 0.0, 9.0, 9.0)}).at(3, 0), 0);
}
