#include "ImagePixels.h"

#include <tests/support/Generated.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::cairo;
using TOLVGraphing::testing_support::Generated;

namespace {

constexpr int kWidth = 37;
constexpr int kHeight = 23;
constexpr PixelRange kAll{0, 0, kWidth, kHeight};
constexpr PixelRange kClip{3, 2, 31, 20};
constexpr cairo_format_t kFormats[] = {CAIRO_FORMAT_RGB24, CAIRO_FORMAT_ARGB32};

/// An image of colours that may be translucent, the same for equal seeds.
SurfacePointer colorfulImage(cairo_format_t format, unsigned seed)
{
    SurfacePointer surface(cairo_image_surface_create(format, kWidth, kHeight));
    Generated generated(seed);
    const ContextPointer target(cairo_create(surface.get()));
    for (int i = 0; i < 40; ++i) {
        cairo_set_source_rgba(target.get(), generated.number(0.0, 1.0), generated.number(0.0, 1.0), generated.number(0.0, 1.0), generated.number(0.0, 1.0));
        cairo_rectangle(target.get(), generated.number(0.0, kWidth), generated.number(0.0, kHeight), 9.0, 7.0);
        cairo_fill(target.get());
    }
    return surface;
}

std::vector<unsigned char> bytesOf(cairo_surface_t* surface)
{
    cairo_surface_flush(surface);
    const unsigned char* data = cairo_image_surface_get_data(surface);
    return {data, data + static_cast<std::ptrdiff_t>(cairo_image_surface_get_stride(surface)) * kHeight};
}

ContextPointer clippedTarget(cairo_surface_t* surface)
{
    ContextPointer target(cairo_create(surface));
    cairo_rectangle(target.get(), kClip.left, kClip.top, kClip.right - kClip.left, kClip.bottom - kClip.top);
    cairo_clip(target.get());
    return target;
}

void setSource(cairo_t* target, const Color& color)
{
    cairo_set_source_rgba(target, color.redComponent(), color.greenComponent(), color.blueComponent(), color.alphaComponent());
}

Color generatedColor(Generated& generated, double alpha)
{
    return {generated.number(0.0, 1.0), generated.number(0.0, 1.0), generated.number(0.0, 1.0), alpha};
}

} // namespace

TEST(ImagePixels, fillBoxesToTheByteAsCairoDoes)
{
    Generated generated(11);
    for (unsigned seed = 0; seed < 400; ++seed) {
        const cairo_format_t format = kFormats[seed % 2];
        const bool isOnWholePixels = seed % 3 == 0;
        const Color color = seed % 7 == 0 ? Color::whiteColor() : generatedColor(generated, isOnWholePixels ? generated.number(0.0, 1.5) : 1.0).clamped();
        const double left = generated.number(-3.0, kWidth);
        const double top = generated.number(-3.0, kHeight);
        // Thin ones, wide ones, and ones of whole pixels.
        const double unit = isOnWholePixels ? 1.0 : seed % 3 == 1 ? 0.5 : 1.0 / 256.0;
        const auto onGrid = [&](double length) { return std::floor(length / unit) * unit; };
        const double x = onGrid(left);
        const double y = onGrid(top);
        const double right = x + onGrid(generated.number(0.0, seed % 5 == 0 ? 2.0 : 30.0));
        const double bottom = y + onGrid(generated.number(0.0, seed % 5 == 1 ? 2.0 : 20.0));
        const SurfacePointer ours = colorfulImage(format, seed);
        const SurfacePointer cairos = colorfulImage(format, seed);
        ImagePixels(ours.get()).fillBox({fixedFromPixels(x), fixedFromPixels(y), fixedFromPixels(right), fixedFromPixels(bottom)}, color, kClip);
        const ContextPointer target = clippedTarget(cairos.get());
        setSource(target.get(), color);
        cairo_rectangle(target.get(), x, y, right - x, bottom - y);
        cairo_fill(target.get());
        EXPECT_EQ(bytesOf(ours.get()), bytesOf(cairos.get())) << "seed " << seed << ": " << x << " " << y << " " << right << " " << bottom;
    }
}

TEST(ImagePixels, drawMasksToTheByteAsCairoDoes)
{
    Generated generated(12);
    for (unsigned seed = 0; seed < 200; ++seed) {
        const cairo_format_t format = kFormats[seed % 2];
        const Color color = generatedColor(generated, seed % 3 == 0 ? 1.0 : generated.number(0.0, 1.0));
        const int width = 1 + static_cast<int>(generated.number(0.0, 30.0));
        const int height = 1 + static_cast<int>(generated.number(0.0, 20.0));
        const int left = static_cast<int>(generated.number(-10.0, kWidth));
        const int top = static_cast<int>(generated.number(-10.0, kHeight));
        const int stride = cairo_format_stride_for_width(CAIRO_FORMAT_A8, width);
        std::vector<unsigned char> coverage(static_cast<std::size_t>(stride) * static_cast<std::size_t>(height));
        for (unsigned char& entry : coverage)
            entry = static_cast<unsigned char>(std::clamp(generated.number(-100.0, 355.0), 0.0, 255.0));
        const SurfacePointer ours = colorfulImage(format, seed);
        const SurfacePointer cairos = colorfulImage(format, seed);
        ImagePixels(ours.get()).drawMask({{left, top, left + width, top + height}, coverage.data(), stride}, color, kClip);
        const ContextPointer target = clippedTarget(cairos.get());
        setSource(target.get(), color);
        const SurfacePointer mask(cairo_image_surface_create_for_data(coverage.data(), CAIRO_FORMAT_A8, width, height, stride));
        cairo_mask_surface(target.get(), mask.get(), left, top);
        EXPECT_EQ(bytesOf(ours.get()), bytesOf(cairos.get())) << "seed " << seed;
    }
}

TEST(ImagePixels, areNotTouchedOutsideTheImage)
{
    const SurfacePointer ours = colorfulImage(CAIRO_FORMAT_RGB24, 5);
    const auto before = bytesOf(ours.get());
    const PixelRange beyond{-1000, -1000, 1000, 1000};
    for (const FixedBox& box :
        {FixedBox{-5000, 0, 0, 5000}, FixedBox{kWidth * 256, 0, 200000, 5000}, FixedBox{0, -9000, 9000, -1}, FixedBox{0, kHeight * 256, 9000, 90000}, FixedBox{500, 500, 500, 900}})
        ImagePixels(ours.get()).fillBox(box, Color::blackColor(), beyond);
    EXPECT_EQ(bytesOf(ours.get()), before);
    ImagePixels(ours.get()).fillBox({-90000, -90000, 90000, 90000}, Color::whiteColor(), beyond);
    EXPECT_EQ(bytesOf(ours.get()), std::vector<unsigned char>(before.size(), 255));
}

TEST(ImagePixels, canChangeImagesOf32BitsOnly)
{
    for (const cairo_format_t format : kFormats)
        EXPECT_TRUE(ImagePixels::canChange(SurfacePointer(cairo_image_surface_create(format, 4, 4)).get()));
    for (const cairo_format_t format : {CAIRO_FORMAT_A8, CAIRO_FORMAT_A1, CAIRO_FORMAT_RGB16_565, CAIRO_FORMAT_RGB30})
        EXPECT_FALSE(ImagePixels::canChange(SurfacePointer(cairo_image_surface_create(format, 4, 4)).get())) << format;
    EXPECT_FALSE(ImagePixels::canChange(SurfacePointer(cairo_image_surface_create(CAIRO_FORMAT_RGB24, -1, 4)).get()));
    EXPECT_FALSE(ImagePixels::canChange(SurfacePointer(cairo_recording_surface_create(CAIRO_CONTENT_COLOR, nullptr)).get()));
}

TEST(ImagePixels, ofFinishedSurfacesAreLeftAlone)
{
    const SurfacePointer finished(cairo_image_surface_create(CAIRO_FORMAT_RGB24, 4, 4));
    cairo_surface_finish(finished.get());
    const unsigned char coverage[4] = {255, 255, 255, 255};
    ImagePixels pixels(finished.get());
    pixels.fillBox({0, 0, 1024, 1024}, Color::whiteColor(), kAll);
    pixels.drawMask({{0, 0, 4, 1}, coverage, 4}, Color::whiteColor(), kAll);
    EXPECT_EQ(cairo_surface_status(finished.get()), CAIRO_STATUS_SURFACE_FINISHED);
}

TEST(ImagePixels, rangesMeetWhereBothAre)
{
    EXPECT_EQ(intersectionRange({0, 0, 10, 10}, {4, -2, 20, 6}), (PixelRange{4, 0, 10, 6}));
    EXPECT_TRUE(intersectionRange({0, 0, 10, 10}, {10, 0, 20, 6}).isEmpty());
    EXPECT_EQ(intersectionRange(kAll, kClip), kClip);
}

TEST(FixedBox, knowsItsPixels)
{
    EXPECT_EQ((FixedBox{256, 512, 768, 1024}).pixels(), (PixelRange{1, 2, 3, 4}));
    EXPECT_TRUE((FixedBox{256, 512, 768, 1024}).isWholePixels());
    EXPECT_EQ((FixedBox{-1, 255, 257, 256}).pixels(), (PixelRange{-1, 0, 2, 1}));
    EXPECT_FALSE((FixedBox{-256, 256, 257, 512}).isWholePixels());
}

TEST(FixedBox, coordinatesAreRoundedToEven256ths)
{
    EXPECT_EQ(fixedFromPixels(1.0), 256);
    EXPECT_EQ(fixedFromPixels(0.5 / 256.0), 0);
    EXPECT_EQ(fixedFromPixels(1.5 / 256.0), 2);
    EXPECT_EQ(fixedFromPixels(-1.25), -320);
}
