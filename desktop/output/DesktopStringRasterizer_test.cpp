#include "DesktopStringRasterizer.h"

#include "GraphicsOutput.h"
#include "TOLVGraphing/platform/foundation/Log.h"
#include "TOLVGraphing/platform/text/TextSystem.h"
#include "desktop/text/PangoTextSystem.h"

#include <tests/desktop/Pixels.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

using namespace TOLVGraphing;
using TOLVGraphing::testing_support::Pixels;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

AttributedString textOf(const std::string& text, const Color& color)
{
    return AttributedString(text, TextAttributes{Font{"Helvetica", 14.0}, color});
}

int alphaAt(const StringBitmap& bitmap, int x, int y)
{
    return bitmap.pixels[static_cast<std::size_t>((y * bitmap.pixelWidth + x) * 4 + 3)];
}

/// The rows from the first to the last with any ink, counted from the top; {-1, -1} for none.
std::pair<int, int> inkedRows(const StringBitmap& bitmap)
{
    std::pair<int, int> rows{-1, -1};
    for (int y = 0; y < bitmap.pixelHeight; ++y) {
        for (int x = 0; x < bitmap.pixelWidth; ++x) {
            if (alphaAt(bitmap, x, y) == 0)
                continue;
            if (rows.first < 0)
                rows.first = y;
            rows.second = y;
        }
    }
    return rows;
}

/// The bitmap blended over white as a scene does it.
std::vector<std::uint8_t> overWhite(const StringBitmap& bitmap)
{
    std::vector<std::uint8_t> blended;
    for (std::size_t i = 0; i < bitmap.pixels.size(); i += 4) {
        const int alpha = bitmap.pixels[i + 3];
        for (std::size_t component = 0; component < 3; ++component) {
            const int source = bitmap.isPremultiplied ? bitmap.pixels[i + component] * 255 : bitmap.pixels[i + component] * alpha;
            blended.push_back(static_cast<std::uint8_t>((source + 255 * (255 - alpha) + 127) / 255));
        }
    }
    return blended;
}

class DesktopStringRasterizerTest : public testing::Test {
protected:
    TextSystemScope m_text{text::PangoTextSystem::shared()};
};

TEST_F(DesktopStringRasterizerTest, BlendedOverWhiteItIsThePictureOfTheImageContext)
{
    for (const Color& color : {Color::blackColor(), Color(0.8, 0.1, 0.3), Color(0.0, 0.5, 1.0, 0.4), Color(1.0, 1.0, 0.0, 0.05)}) {
        for (const double scale : {1.0, 1.5, 2.0}) {
            const AttributedString string = textOf("Sphinx, 20 kHz", color);
            const Size size{110.0, 20.0};
            OutputSettings settings;
            settings.size = size;
            settings.scale = scale;
            const Pixels expected = testing_support::pixelsOfPNG(renderToBytes(OutputKind::PNG, settings, [&](DrawingContext&, const Rect&) { string.drawAtPoint({2.0, 3.0}); }));
            for (const auto components : {DesktopStringRasterizer::Components::Straight, DesktopStringRasterizer::Components::Premultiplied}) {
                const StringBitmap bitmap = DesktopStringRasterizer(components).bitmapOfString(string, {size, {2.0, 3.0}, scale});
                ASSERT_EQ(bitmap.pixelWidth, expected.width);
                ASSERT_EQ(bitmap.pixelHeight, expected.height);
                EXPECT_EQ(bitmap.isPremultiplied, components == DesktopStringRasterizer::Components::Premultiplied);
                const auto blended = overWhite(bitmap);
                ASSERT_EQ(blended.size(), expected.bytes.size());
                EXPECT_NE(*std::min_element(blended.begin(), blended.end()), 255);
                int largest = 0;
                for (std::size_t i = 0; i < blended.size(); ++i)
                    largest = std::max(largest, std::abs(static_cast<int>(blended[i]) - static_cast<int>(expected.bytes[i])));
                // Dividing a byte by its alpha errs by at most a half, and multiplying it again brings the byte back.
                EXPECT_EQ(largest, 0) << toString(color) << " at " << scale;
            }
        }
    }
}

TEST_F(DesktopStringRasterizerTest, RowsStartAtTheTopOfTheText)
{
    const DesktopStringRasterizer rasterizer;
    const auto dotRows = inkedRows(rasterizer.bitmapOfString(textOf(".", Color::blackColor()), {{10.0, 40.0}, {1.0, 1.0}, 1.0}));
    const auto quoteRows = inkedRows(rasterizer.bitmapOfString(textOf("'", Color::blackColor()), {{10.0, 40.0}, {1.0, 1.0}, 1.0}));
    // The line box is at the lower edge of the frame; the quotation mark stands above the point.
    EXPECT_GT(dotRows.first, 30);
    EXPECT_LT(quoteRows.second, dotRows.first);
    EXPECT_GT(quoteRows.first, 20);
}

TEST_F(DesktopStringRasterizerTest, ClearPixelsHaveTheTextsColourUnlessPremultiplied)
{
    const AttributedString string = textOf("i", Color(1.0, 0.4, 0.2));
    const StringFrame frame{{20.0, 20.0}, {1.0, 1.0}, 1.0};
    const StringBitmap straight = DesktopStringRasterizer().bitmapOfString(string, frame);
    EXPECT_TRUE(straight.hasAlpha);
    EXPECT_EQ(std::vector<std::uint8_t>(straight.pixels.begin(), straight.pixels.begin() + 4), (std::vector<std::uint8_t>{255, 102, 51, 0}));
    const StringBitmap premultiplied = DesktopStringRasterizer(DesktopStringRasterizer::Components::Premultiplied).bitmapOfString(string, frame);
    EXPECT_EQ(std::vector<std::uint8_t>(premultiplied.pixels.begin(), premultiplied.pixels.begin() + 4), (std::vector<std::uint8_t>{0, 0, 0, 0}));
}

TEST_F(DesktopStringRasterizerTest, AFrameIsRoundedUpToWholePixelsAndTheTextStandsInItsLowerLeftCorner)
{
    const DesktopStringRasterizer rasterizer;
    const AttributedString string = textOf("l", Color::blackColor());
    const StringBitmap whole = rasterizer.bitmapOfString(string, {{12.0, 20.0}, {1.0, 1.0}, 1.0});
    const StringBitmap fraction = rasterizer.bitmapOfString(string, {{11.25, 19.5}, {1.0, 1.0}, 1.0});
    EXPECT_EQ(fraction.size, (Size{12.0, 20.0}));
    EXPECT_EQ(fraction.pixels, whole.pixels);
    const StringBitmap fine = rasterizer.bitmapOfString(string, {{11.25, 19.5}, {1.0, 1.0}, 2.0});
    EXPECT_EQ(fine.size, (Size{23.0, 39.0}));
}

TEST_F(DesktopStringRasterizerTest, WhatSticksOutOfTheFrameIsCutOff)
{
    const DesktopStringRasterizer rasterizer;
    const StringBitmap wide = rasterizer.bitmapOfString(textOf("mmmm", Color::blackColor()), {{60.0, 20.0}, {1.0, 1.0}, 1.0});
    const StringBitmap narrow = rasterizer.bitmapOfString(textOf("mmmm", Color::blackColor()), {{15.0, 20.0}, {1.0, 1.0}, 1.0});
    ASSERT_EQ(narrow.pixelWidth, 15);
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 15; ++x)
            ASSERT_EQ(alphaAt(narrow, x, y), alphaAt(wide, x, y)) << x << " " << y;
    }
}

TEST_F(DesktopStringRasterizerTest, FramesWithoutPixelsAreEmptyAndFramesThatAreTooLargeAreLogged)
{
    std::vector<std::string> log;
    const LogSinkScope sink([&](std::string_view line) { log.emplace_back(line); });
    const DesktopStringRasterizer rasterizer;
    const AttributedString string = textOf("text", Color::blackColor());
    const StringFrame withoutPixels[] = {{{0.0, 10.0}, {}, 1.0}, {{10.0, -1.0}, {}, 1.0}, {{kNaN, 10.0}, {}, 1.0}, {{10.0, kInfinity}, {}, 1.0}, {{10.0, 10.0}, {}, 0.0},
        {{10.0, 10.0}, {}, kNaN}, {{-10.0, -10.0}, {}, -1.0}};
    for (const StringFrame& frame : withoutPixels)
        EXPECT_TRUE(rasterizer.bitmapOfString(string, frame).isEmpty()) << toString(frame.size) << " at " << frame.scale;
    EXPECT_TRUE(log.empty());
    EXPECT_TRUE(rasterizer.bitmapOfString(string, {{16385.0, 1.0}, {}, 1.0}).isEmpty());
    EXPECT_TRUE(rasterizer.bitmapOfString(string, {{8192.0, 8193.0}, {}, 1.0}).isEmpty());
    EXPECT_EQ(log,
        (std::vector<std::string>{"The bitmap of a text would have 16385 x 1 pixels; at most 16384 a side and 67108864 in all are made",
            "The bitmap of a text would have 8192 x 8193 pixels; at most 16384 a side and 67108864 in all are made"}));
    EXPECT_FALSE(rasterizer.bitmapOfString(string, {{16384.0, 1.0}, {}, 1.0}).isEmpty());
}

} // namespace
