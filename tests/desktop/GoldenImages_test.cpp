// Whole drawings as images, compared with the files in tests/golden. TOLV_REGENERATE_GOLDEN=1 writes the files anew; every new picture is looked at before it is kept.

#include "ImageComparison.h"
#include "SceneFiles.h"

namespace TOLVGraphing::testing_support {

namespace {

class GoldenImages : public SceneTest {};

TEST_P(GoldenImages, areThoseOfTheFile)
{
    if (!hasPinnedFonts())
        GTEST_SKIP() << "the images are made with other fonts";
    EXPECT_TRUE(isImageOfFile(renderedScene(GetParam(), OutputKind::PNG, sceneSettings(GetParam())), goldenPath(GetParam().name + ".png")));
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
