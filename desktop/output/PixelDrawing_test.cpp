#include "PixelDrawing.h"

#include "TOLVGraphing/platform/graphics/CurrentContext.h"
#include "TOLVGraphing/platform/graphics/DrawingContext.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

using namespace TOLVGraphing;

namespace {

/// Four by three pixels in rows of five.
class Image {
public:
    [[nodiscard]] PixelMemory memory() { return {reinterpret_cast<unsigned char*>(m_pixels.data()), 4, 3, 20}; }
    [[nodiscard]] std::uint32_t at(std::size_t column, std::size_t row) const { return m_pixels[row * 5 + column]; }

private:
    std::vector<std::uint32_t> m_pixels = std::vector<std::uint32_t>(15, 0x11223344U);
};

TEST(PixelDrawing, OriginIsTheLowerLeftCornerAndAPointIsAsManyPixelsAsAskedFor)
{
    Image image;
    drawOnPixels(image.memory(), 2.0, [](DrawingContext& context) {
        EXPECT_EQ(currentContext(), &context);
        context.fill(Rect{0.0, 0.0, 1.0, 0.5}, Color(1.0, 0.0, 0.0));
    });
    EXPECT_EQ(image.at(0, 2), 0xFFFF0000U);
    EXPECT_EQ(image.at(1, 2), 0xFFFF0000U);
    EXPECT_EQ(image.at(2, 2), 0x11223344U);
    EXPECT_EQ(image.at(0, 1), 0x11223344U);
    // What lies behind the pixels of a row is not touched.
    EXPECT_EQ(image.at(4, 2), 0x11223344U);
    EXPECT_EQ(currentContext(), nullptr);
}

TEST(PixelDrawing, ErrorsOfTheDrawingPassThrough)
{
    Image image;
    EXPECT_THROW(drawOnPixels(image.memory(), 1.0, [](DrawingContext&) { throw 7; }), int);
    EXPECT_EQ(currentContext(), nullptr);
}

TEST(PixelDrawing, MemoryThatCannotBeAnImageIsRefused)
{
    Image image;
    const auto refused = [](const PixelMemory& memory, double scale) {
        try {
            drawOnPixels(memory, scale, [](DrawingContext&) { ADD_FAILURE() << "drawn"; });
        } catch (const OutputError&) {
            return true;
        }
        return false;
    };
    const PixelMemory good = image.memory();
    EXPECT_TRUE(refused({nullptr, 4, 3, 20}, 1.0));
    EXPECT_TRUE(refused({good.pixels, 4, 3, 15}, 1.0));
    EXPECT_TRUE(refused({good.pixels, 4, 3, 12}, 1.0));
    EXPECT_TRUE(refused({good.pixels, 4, 3, -20}, 1.0));
    // What is left of it in 32 bits would be right.
    EXPECT_TRUE(refused({good.pixels, 4, 3, (std::ptrdiff_t{1} << 32) + 20}, 1.0));
    EXPECT_TRUE(refused(good, 0.0));
    EXPECT_TRUE(refused(good, std::numeric_limits<double>::quiet_NaN()));
    // Nothing to draw on is nothing to complain about.
    EXPECT_FALSE(refused({nullptr, 0, 3, 0}, 1.0));
    EXPECT_FALSE(refused({nullptr, 4, 0, 0}, 1.0));
}

} // namespace
