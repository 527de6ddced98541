#include "AreaFills.h"

#include "CairoContext.h"
#include "CairoPointers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::cairo;

namespace {

constexpr int kWidth = 120;
constexpr int kHeight = 60;
constexpr AffineTransform kToPixels{1.0, 0.0, 0.0, -1.0, 0.0, kHeight};

/// The area under a wave of so many points, y growing upwards.
Path areaOf(int count, bool goesLeft = false)
{
    Path path;
    const auto x = [&](int i) { return 5.0 + 110.0 * (goesLeft ? count - 1 - i : i) / (count - 1); };
    path.moveToX(x(0), 8.25);
    for (int i = 0; i < count; ++i)
        path.addLineToX(x(i), 28.0 + 25.0 * std::sin(x(i) * 0.15));
    path.addLineToX(x(count - 1), 8.25);
    path.closeSubpath();
    return path;
}

/// The green of all pixels on a white ground; the clip is the picture less a margin.
std::vector<int> painted(const Path& path, const Color& color, double margin, bool isByCairo)
{
    const SurfacePointer image(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight));
    const ContextPointer target(cairo_create(image.get()));
    cairo_set_source_rgb(target.get(), 1.0, 1.0, 1.0);
    cairo_paint(target.get());
    setUpwardCoordinates(target.get(), kHeight, 1.0);
    cairo_rectangle(target.get(), margin, margin, kWidth - 2.0 * margin, kHeight - 2.0 * margin);
    cairo_clip(target.get());
    if (isByCairo) {
        cairo_set_source_rgba(target.get(), color.redComponent(), color.greenComponent(), color.blueComponent(), color.alphaComponent());
        for (const Point& point : path.points())
            cairo_line_to(target.get(), point.x, point.y);
        cairo_fill(target.get());
    } else {
        CairoContext context(target.get());
        context.setFillColor(color);
        context.drawFilledPath(path, FillRule::NonZero);
    }
    cairo_surface_flush(image.get());
    std::vector<int> greens;
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x)
            greens.push_back(cairo_image_surface_get_data(image.get())[y * cairo_image_surface_get_stride(image.get()) + x * 4 + 1]);
    }
    return greens;
}

int largestDifference(const std::vector<int>& one, const std::vector<int>& other)
{
    int largest = 0;
    for (std::size_t i = 0; i < one.size(); ++i)
        largest = std::max(largest, std::abs(one[i] - other[i]));
    return largest;
}

} // namespace

TEST(AreaFills, LookLikeCairos)
{
    for (const bool goesLeft : {false, true}) {
        for (const double margin : {0.0, 10.0}) {
            const Path path = areaOf(200, goesLeft);
            const Color black = Color::blackColor();
            // Cairo divides a row into fifteen and points into 256.
            EXPECT_LE(largestDifference(painted(path, black, margin, false), painted(path, black, margin, true)), 14);
            const Color tint(0.0, 0.0, 0.0, 0.05);
            EXPECT_LE(largestDifference(painted(path, tint, margin, false), painted(path, tint, margin, true)), 1);
        }
    }
}

TEST(AreaFills, OfFewPointsAreCairosToTheByte)
{
    const Path path = areaOf(61);
    EXPECT_EQ(painted(path, Color::blackColor(), 0.0, false), painted(path, Color::blackColor(), 0.0, true));
}

TEST(AreaFills, KnowTheLineAndItsBase)
{
    const auto area = areaUnderLine(areaOf(62), kToPixels);
    ASSERT_TRUE(area);
    EXPECT_EQ(area->base, 51.75);
    ASSERT_EQ(area->line.size(), 62U);
    EXPECT_EQ(area->line.front(), kToPixels.apply(areaOf(62).points()[1]));
    EXPECT_EQ(area->line.back(), kToPixels.apply(areaOf(62).points()[62]));
}

TEST(AreaFills, LeaveOtherPathsToCairo)
{
    const Path area = areaOf(80);
    EXPECT_TRUE(areaUnderLine(area, kToPixels));
    EXPECT_FALSE(areaUnderLine(areaOf(61), kToPixels));
    EXPECT_FALSE(areaUnderLine(area, {0.8, 0.6, -0.6, 0.8, 0.0, 0.0}));
    EXPECT_FALSE(areaUnderLine(area, {1e9, 0.0, 0.0, 1.0, 0.0, 0.0}));
    EXPECT_FALSE(areaUnderLine(Path(), kToPixels));

    Path curved = area;
    curved.addCurveToPoint({1.0, 2.0}, {3.0, 4.0}, {5.0, 6.0});
    EXPECT_FALSE(areaUnderLine(curved, kToPixels));
    Path twice = area;
    twice.addPath(area);
    EXPECT_FALSE(areaUnderLine(twice, kToPixels));

    const auto changed = [&](std::size_t index, Point to) {
        Path path;
        for (std::size_t i = 0; i < area.points().size(); ++i)
            path.addLineToPoint(i == index ? to : area.points()[i]);
        return path;
    };
    EXPECT_TRUE(areaUnderLine(changed(40, {area.points()[40].x, 0.0}), kToPixels));
    EXPECT_FALSE(areaUnderLine(changed(0, {5.0, 9.0}), kToPixels));
    EXPECT_FALSE(areaUnderLine(changed(0, {4.0, 8.25}), kToPixels));
    EXPECT_FALSE(areaUnderLine(changed(81, {116.0, 8.25}), kToPixels));
    EXPECT_FALSE(areaUnderLine(changed(40, {5.0, 30.0}), kToPixels));
    EXPECT_FALSE(areaUnderLine(changed(40, {area.points()[40].x, std::numeric_limits<double>::infinity()}), kToPixels));
}
