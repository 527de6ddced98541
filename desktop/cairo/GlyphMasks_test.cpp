#include "GlyphMasks.h"

#include "../text/TextLayout.h"
#include "TOLVGraphing/platform/text/AttributedString.h"

#include <gtest/gtest.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

using namespace TOLVGraphing;
using namespace TOLVGraphing::cairo;

namespace {

constexpr int kWidth = 200;
constexpr int kHeight = 60;

/// The sum of an image's coverage and where its middle is.
struct Ink {
    double amount = 0.0;
    double x = 0.0;
    double y = 0.0;
};

Ink inkOf(cairo_surface_t* surface)
{
    cairo_surface_flush(surface);
    Ink ink;
    for (int y = 0; y < kHeight; ++y) {
        const std::uint8_t* row = cairo_image_surface_get_data(surface) + y * cairo_image_surface_get_stride(surface);
        for (int x = 0; x < kWidth; ++x) {
            ink.amount += row[x];
            ink.x += row[x] * x;
            ink.y += row[x] * y;
        }
    }
    ink.x /= std::max(ink.amount, 1.0);
    ink.y /= std::max(ink.amount, 1.0);
    return ink;
}

/// The ink of a text drawn from masks, or filled as outlines.
Ink inkOfText(GlyphMasks* masks, const std::string& string, double size, const AffineTransform& toPixels)
{
    const SurfacePointer surface(cairo_image_surface_create(CAIRO_FORMAT_A8, kWidth, kHeight));
    const ContextPointer target(cairo_create(surface.get()));
    text::SharedLayouts::withLayout(AttributedString(string, TextAttributes{Font{"HelveticaNeue", size}, std::nullopt}), [&](const text::TextLayout& layout) {
        PangoLayoutLine* line = layout.lines.at(0).shaped;
        if (masks) {
            EXPECT_TRUE(masks->drawLine(target.get(), line, toPixels)) << string;
            return;
        }
        const cairo_matrix_t matrix{toPixels.a, toPixels.b, toPixels.c, toPixels.d, toPixels.tx, toPixels.ty};
        cairo_set_matrix(target.get(), &matrix);
        pango_cairo_layout_line_path(target.get(), line);
        cairo_fill(target.get());
    });
    return inkOf(surface.get());
}

} // namespace

TEST(GlyphMasks, drawAsTheOutlinesDo)
{
    GlyphMasks masks;
    const AffineTransform transforms[] = {
        {1.0, 0.0, 0.0, 1.0, 10.0, 30.0},
        {1.0, 0.0, 0.0, 1.0, 10.3, 30.6},
        {2.0, 0.0, 0.0, 2.0, 10.9, 40.1},
        {0.0, -0.5, 0.5, 0.0, 100.4, 50.2},
        {0.8, 0.3, -0.3, 0.8, 20.7, 10.2},
        {1.0, 0.0, 0.0, -1.0, 10.0, 30.0},
    };
    for (const char* text : {"12,345.67", "Tj µ∞×10⁻³", "fi AVAToé"}) {
        for (const AffineTransform& transform : transforms) {
            const Ink exact = inkOfText(nullptr, text, 11.0, transform);
            const Ink drawn = inkOfText(&masks, text, 11.0, transform);
            EXPECT_GT(exact.amount, 1000.0);
            EXPECT_NEAR(drawn.amount, exact.amount, exact.amount * 0.02) << text << toString(transform);
            // No glyph is farther than an eighth of a pixel from its place.
            EXPECT_NEAR(drawn.x, exact.x, 0.13) << text << toString(transform);
            EXPECT_NEAR(drawn.y, exact.y, 0.13) << text << toString(transform);
        }
    }
}

TEST(GlyphMasks, rememberedMasksDrawTheSame)
{
    GlyphMasks masks;
    for (int i = 0; i < 40; ++i) {
        // Sizes enough to fill the memory and to forget it.
        const double size = 30.0 + i;
        const Ink first = inkOfText(&masks, "20,000", size, {1.0, 0.0, 0.0, 1.0, 1.5, 55.25});
        const Ink again = inkOfText(&masks, "20,000", size, {1.0, 0.0, 0.0, 1.0, 1.5, 55.25});
        EXPECT_EQ(first.amount, again.amount);
        EXPECT_EQ(first.x, again.x);
    }
}

TEST(GlyphMasks, largeGlyphsAreLeftToFilling)
{
    GlyphMasks masks;
    const SurfacePointer surface(cairo_image_surface_create(CAIRO_FORMAT_A8, kWidth, kHeight));
    const ContextPointer target(cairo_create(surface.get()));
    text::SharedLayouts::withLayout(AttributedString("W", TextAttributes{Font{"HelveticaNeue", 300.0}, std::nullopt}), [&](const text::TextLayout& layout) {
        PangoLayoutLine* line = layout.lines.at(0).shaped;
        EXPECT_FALSE(masks.drawLine(target.get(), line, {1.0, 0.0, 0.0, 1.0, 0.0, 50.0}));
        EXPECT_FALSE(masks.drawLine(target.get(), line, {0.01, 0.0, 0.0, 0.01, 1e9, 50.0}));
    });
    EXPECT_EQ(inkOf(surface.get()).amount, 0.0);
}

TEST(GlyphMasks, emptyLinesDrawNothing)
{
    GlyphMasks masks;
    EXPECT_EQ(inkOfText(&masks, " ", 11.0, {1.0, 0.0, 0.0, 1.0, 10.0, 30.0}).amount, 0.0);
}
