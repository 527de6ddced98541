#include "OtherRenderers.h"

#include "Process.h"
#include "TemporaryFolder.h"

#include <stdexcept>
#include <vector>

namespace TOLVGraphing::testing_support {

namespace {

constexpr int kHalfRange = 128;

void requireSuccess(const std::vector<std::string>& arguments)
{
    const ProcessResult result = runProcess(arguments);
    if (result.status != 0)
        throw std::runtime_error(arguments.front() + ": " + result.text());
}

Pixels byGhostscript(const std::string& path, int pixelsPerInch, const std::vector<std::string>& options)
{
    const TemporaryFolder folder;
    const std::string image = folder.path("page.png");
    std::vector<std::string> arguments{"gs", "-q", "-dNOPAUSE", "-dBATCH", "-dSAFER", "-sDEVICE=png16m", "-dTextAlphaBits=4", "-dGraphicsAlphaBits=4",
        "-r" + std::to_string(pixelsPerInch), "-sOutputFile=" + image};
    arguments.insert(arguments.end(), options.begin(), options.end());
    arguments.push_back(path);
    requireSuccess(arguments);
    return pixelsOfPNGFile(image);
}

} // namespace

testing::AssertionResult looksLike(const Pixels& picture, const Pixels& image, const PictureTolerance& tolerance)
{
    const PixelDifference difference = pixelDifference(picture, image, kHalfRange);
    if (difference.haveSameSize && difference.mean <= tolerance.mean && static_cast<double>(difference.differingCount) <= tolerance.part * image.width * image.height)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << difference.text();
}

Pixels pageByPdftoppm(const std::string& path, int pixelsPerInch)
{
    const TemporaryFolder folder;
    requireSuccess({"pdftoppm", "-r", std::to_string(pixelsPerInch), "-png", "-singlefile", path, folder.path("page")});
    return pixelsOfPNGFile(folder.path("page.png"));
}

Pixels pageByGhostscript(const std::string& path, int pixelsPerInch)
{
    return byGhostscript(path, pixelsPerInch, {});
}

Pixels figureByGhostscript(const std::string& path, int pixelsPerInch)
{
    return byGhostscript(path, pixelsPerInch, {"-dEPSCrop"});
}

Pixels pageByRsvg(const std::string& path, int pixelsPerInch)
{
    const TemporaryFolder folder;
    const std::string resolution = std::to_string(pixelsPerInch);
    requireSuccess({"rsvg-convert", "--dpi-x", resolution, "--dpi-y", resolution, "-b", "white", path, "-o", folder.path("page.png")});
    return pixelsOfPNGFile(folder.path("page.png"));
}

} // namespace TOLVGraphing::testing_support
