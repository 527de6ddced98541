#include "PixelRows.h"

#include "OutputError.h"

#include <gtest/gtest.h>

using namespace TOLVGraphing;

namespace {

TEST(PixelRows, AnImageWithoutPixelsCannotBeEncoded)
{
    const unsigned char pixel[4] = {};
    for (const auto& [width, height] : {std::pair(0U, 0U), std::pair(0U, 1U), std::pair(1U, 0U)}) {
        output::PixelRows image;
        image.data = pixel;
        image.stride = 4;
        image.width = width;
        image.height = height;
        EXPECT_THROW((void)output::encodedTIFF(image), OutputError) << width << " by " << height;
        EXPECT_THROW((void)output::encodedPNG(image), OutputError) << width << " by " << height;
    }
}

} // namespace
