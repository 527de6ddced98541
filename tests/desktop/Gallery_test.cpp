// The pictures of the gallery: the calls and the layout that they are made of with fixed text metrics, and the files that users see. TOLV_REGENERATE_GOLDEN=1 writes the expectations anew; every picture is
// looked at before it is kept.

#include "../golden/GoldenText.h"
#include "GalleryScenes.h"
#include "ImageComparison.h"
#include "SceneFiles.h"

#include <TOLVGraphing/platform/text/TextSystem.h>

#include <gtest/gtest.h>

#include <string>

namespace TOLVGraphing::testing_support {

namespace {

class Gallery : public testing::TestWithParam<GoldenScene> {
protected:
    /// What the example program writes: no title or creator.
    static OutputSettings settings()
    {
        OutputSettings result;
        result.size = GetParam().size;
        return result;
    }
};

TEST_P(Gallery, drawsTheCallsOfTheFile)
{
    EXPECT_TRUE(isTextOfFile(recordedText(GetParam().size, GetParam().draw), goldenPath("gallery/" + GetParam().name + ".calls")));
}

TEST_P(Gallery, hasTheLayoutOfTheFile)
{
    const TextSystemScope fixed(std::make_shared<FixedTextSystem>());
    EXPECT_TRUE(isTextOfFile(galleryLayout(GetParam().name), goldenPath("gallery/" + GetParam().name + ".layout.json")));
}

TEST_P(Gallery, looksLikeThePicture)
{
    if (!hasPinnedFonts())
        GTEST_SKIP() << "the pictures are made with other fonts";
    const auto bytes = renderedScene(GetParam(), OutputKind::PNG, settings());
    EXPECT_TRUE(isImageOfFile(bytes, galleryPath(GetParam().name, ".png")));
}

TEST_P(Gallery, isTheVectorPicture)
{
    if (!hasPinnedFonts())
        GTEST_SKIP() << "the pictures are made with other fonts";
    const auto bytes = renderedScene(GetParam(), OutputKind::SVG, settings());
    EXPECT_TRUE(isTextOfFile({reinterpret_cast<const char*>(bytes.data()), bytes.size()}, galleryPath(GetParam().name, ".svg")));
}

INSTANTIATE_TEST_SUITE_P(Examples, Gallery, testing::ValuesIn(galleryScenes()), sceneName);

} // namespace

} // namespace TOLVGraphing::testing_support
