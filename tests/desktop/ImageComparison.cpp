#include "ImageComparison.h"

#include "../golden/GoldenScenes.h"
#include "Pixels.h"

#include <desktop/text/FontResolver.h>

#include <filesystem>
#include <fstream>

namespace TOLVGraphing::testing_support {

namespace {

bool write(const std::string& path, const std::vector<std::byte>& bytes)
{
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(file.flush());
}

} // namespace

bool hasPinnedFonts()
{
    return text::FontResolver().resolve("HelveticaNeue").face.family == "Nimbus Sans";
}

testing::AssertionResult isImageOfFile(const std::vector<std::byte>& image, const std::string& path)
{
    if (regeneratesGolden())
        return write(path, image) ? testing::AssertionSuccess() : testing::AssertionFailure() << path << " cannot be written";
    const PixelDifference difference = pixelDifference(pixelsOfPNG(image), pixelsOfPNGFile(path), 0);
    if (difference.haveSameSize && difference.largest <= kLargestDifference && difference.differingCount <= kMostDifferingPixels)
        return testing::AssertionSuccess();
    const std::string found = (std::filesystem::temp_directory_path() / ("found-" + std::filesystem::path(path).filename().string())).string();
    write(found, image);
    return testing::AssertionFailure() << path << ": " << difference.text() << "; the image found is " << found;
}

} // namespace TOLVGraphing::testing_support
