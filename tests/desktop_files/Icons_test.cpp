// The icons that are installed are the ones that the library draws. `cmake --build build/dev --target icons` draws them anew; every one is looked at, on light and dark, before it is kept.

#include "InstalledFiles.h"

#include "../desktop/Pixels.h"
#include "../desktop/TemporaryFolder.h"

#include <packaging/icons/IconDrawings.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string_view>

namespace TOLVGraphing::testing_support {

namespace {

constexpr int kLargestDifference = 4;

TEST(Icons, areTheDrawings)
{
    for (const icons::Icon& icon : icons::allIcons()) {
        const auto vector = icons::iconData(icon, 0);
        EXPECT_EQ(contentOfFile(sharedFile("icons/hicolor/" + icons::iconPath(icon, 0))), std::string_view(reinterpret_cast<const char*>(vector.data()), vector.size()))
            << icon.name;
        for (const int side : icons::kImageSides) {
            // Another version of the rasteriser may round differently.
            const PixelDifference difference
                = pixelDifference(pixelsOfPNG(icons::iconData(icon, side)), pixelsOfPNGFile(sharedFile("icons/hicolor/" + icons::iconPath(icon, side))), 0);
            EXPECT_TRUE(difference.haveSameSize && difference.largest <= kLargestDifference) << icons::iconPath(icon, side) << ": " << difference.text();
        }
    }
}

TEST(Icons, areAllThatIsInstalled)
{
    std::set<std::string> expected;
    for (const icons::Icon& icon : icons::allIcons()) {
        expected.insert(icons::iconPath(icon, 0));
        for (const int side : icons::kImageSides)
            expected.insert(icons::iconPath(icon, side));
    }
    std::set<std::string> found;
    const std::filesystem::path folder = sharedFile("icons/hicolor");
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file())
            found.insert(entry.path().lexically_relative(folder));
    }
    EXPECT_EQ(found, expected);
}

} // namespace

} // namespace TOLVGraphing::testing_support
