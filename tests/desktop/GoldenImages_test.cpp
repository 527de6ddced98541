// Whole drawings as images, compared with the files in tests/golden. TOLV_REGENERATE_GOLDEN=1 writes the files anew; every new picture is looked at before it is kept.

#include "SceneFiles.h"

#include <desktop/text/FontResolver.h>

#include <fstream>

namespace TOLVGraphing::testing_support {

namespace {

/// The images were made with this family. Where another one stands in, glyphs are of other shapes and widths.
constexpr const char* kPinnedFamily = "Nimbus Sans";
/// Another version of the rasteriser may round differently here and there: this many pixels may differ at all, and each component by at most this much.
constexpr std::size_t kMostDifferingPixels = 60;
constexpr int kLargestDifference = 24;

class GoldenImages : public SceneTest {};

TEST_P(GoldenImages, areThoseOfTheFile)
{
    const std::string family = text::FontResolver().resolve("HelveticaNeue").face.family;
    if (family != kPinnedFamily)
        GTEST_SKIP() << "the images are made with " << kPinnedFamily << ", here the face is " << family;
    const std::string path = goldenPath(GetParam().name + ".png");
    const auto bytes = renderedScene(GetParam(), OutputKind::PNG, sceneSettings(GetParam()));
    if (regeneratesGolden()) {
        std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        GTEST_SKIP() << "wrote " << path;
    }
    const PixelDifference difference = pixelDifference(pixelsOfPNG(bytes), pixelsOfPNGFile(path), 0);
    const bool isSame = difference.haveSameSize && difference.largest <= kLargestDifference && difference.differingCount <= kMostDifferingPixels;
    if (!isSame) {
        const std::string found = (std::filesystem::temp_directory_path() / ("found-" + GetParam().name + ".png")).string();
        std::ofstream(found, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        ADD_FAILURE() << path << ": " << difference.text() << "; the image found is " << found;
    }
}

INSTANTIATE_TEST_SUITE_P(Scenes, GoldenImages, testing::ValuesIn(goldenScenes()), sceneName);

TEST(PixelComparison, findsDifferences)
{
    Pixels one{2, 2, std::vector<std::uint8_t>(12, 100)};
    Pixels other = one;
    EXPECT_EQ(pixelDifference(one, other, 0).differingCount, 0U);
    other.bytes[4] = 110;
    other.bytes[5] = 90;
    other.bytes[9] = 101;
    const PixelDifference difference = pixelDifference(one, other, 1);
    EXPECT_TRUE(difference.haveSameSize);
    EXPECT_EQ(difference.largest, 10);
    EXPECT_EQ(difference.differingCount, 1U);
    EXPECT_EQ(difference.mean, 21.0 / 12.0);
    other.width = 1;
    other.height = 4;
    EXPECT_FALSE(pixelDifference(one, other, 0).haveSameSize);
}

TEST(PixelComparison, tellsTheScenesApart)
{
    // Both are 360 points wide; a taller or shorter copy of one is another picture.
    GoldenScene moved = goldenScene("markers");
    moved.draw = [](const Rect& rect) { goldenScene("markers").draw({rect.x() + 0.5, rect.y(), rect.width(), rect.height()}); };
    const auto settings = sceneSettings(moved);
    const PixelDifference difference
        = pixelDifference(pixelsOfPNG(renderedScene(goldenScene("markers"), OutputKind::PNG, settings)), pixelsOfPNG(renderedScene(moved, OutputKind::PNG, settings)), 0);
    EXPECT_GT(difference.largest, kLargestDifference);
    EXPECT_GT(difference.differingCount, kMostDifferingPixels) << "half a point to the right must not pass";
}

} // namespace

} // namespace TOLVGraphing::testing_support
