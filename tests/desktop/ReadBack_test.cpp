// Every kind of file, read back by programs that have nothing to do with this library.

#include "OtherRenderers.h"
#include "PageWords.h"
#include "Process.h"
#include "SceneFiles.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdio>
#include <sstream>

namespace TOLVGraphing::testing_support {

namespace {

/// How far apart texts may stand in different kinds of file, in points.
constexpr double kTextTolerance = 0.6;

void expectSuccess(const ProcessResult& result)
{
    EXPECT_EQ(result.status, 0) << result.text();
}

constexpr int kPixelsPerInch = static_cast<int>(72.0 * kSceneScale);

std::string resolutionText()
{
    return std::to_string(kPixelsPerInch);
}

class ReadBack : public SceneTest {};

TEST_P(ReadBack, textsOfPDFStandWhereThoseOfSVGDo)
{
    TOLV_REQUIRE_PROGRAM("pdftotext");
    const DrawnPage drawn = page();
    ASSERT_FALSE(drawn.texts.empty());
    EXPECT_TRUE(standWhereDrawn(wordsOfPDF(written(OutputKind::PDF, "scene.pdf")), drawn, kTextTolerance));
}

TEST_P(ReadBack, textsOfPostScriptStandWhereThoseOfSVGDo)
{
    TOLV_REQUIRE_PROGRAM("gs");
    EXPECT_TRUE(standWhereDrawn(wordsOfPostScript(written(OutputKind::PostScript, "scene.ps"), false), page(), kTextTolerance));
    EXPECT_TRUE(standWhereDrawn(wordsOfPostScript(written(OutputKind::EPS, "scene.eps"), true), page(), kTextTolerance));
}

TEST_P(ReadBack, textsThatStandElsewhereAreNoticed)
{
    TOLV_REQUIRE_PROGRAM("pdftotext");
    const auto words = wordsOfPDF(written(OutputKind::PDF, "scene.pdf"));
    DrawnPage moved = page();
    moved.texts.front().x += 1.0;
    EXPECT_FALSE(standWhereDrawn(words, moved, kTextTolerance));
    DrawnPage wider = page();
    wider.texts.back().length += 1.0;
    EXPECT_FALSE(standWhereDrawn(words, wider, kTextTolerance));
    DrawnPage fewer = page();
    fewer.texts.pop_back();
    EXPECT_FALSE(standWhereDrawn(words, fewer, kTextTolerance));
}

TEST_P(ReadBack, PDFIsOnePageOfItsSize)
{
    TOLV_REQUIRE_PROGRAM("pdfinfo");
    TOLV_REQUIRE_PROGRAM("pdffonts");
    TOLV_REQUIRE_PROGRAM("pdfimages");
    const std::string path = written(OutputKind::PDF, "scene.pdf");
    const std::string info = runProcess({"pdfinfo", path}).output;
    const Size size = GetParam().size;
    EXPECT_THAT(info, testing::ContainsRegex("Page size: +" + std::to_string(static_cast<int>(size.width)) + " x " + std::to_string(static_cast<int>(size.height)) + " pts"));
    EXPECT_THAT(info, testing::ContainsRegex("Pages: +1\n"));
    EXPECT_THAT(info, testing::ContainsRegex("Title: +The scene " + GetParam().name + "\n"));
    EXPECT_THAT(info, testing::ContainsRegex("Creator: +scene tests\n"));
    EXPECT_THAT(info, testing::Not(testing::HasSubstr("CreationDate"))) << "the same drawing gives the same bytes at any time";
    // Embedded and with a table of characters, so that text can be searched and copied.
    const std::string fonts = runProcess({"pdffonts", path}).output;
    EXPECT_THAT(fonts, testing::ContainsRegex("yes yes yes +[0-9]+ +0"));
    EXPECT_THAT(fonts, testing::Not(testing::ContainsRegex(" no +(yes|no) +(yes|no) +[0-9]+ +0")));
    // Two lines of headings and no image: nothing was turned into pixels.
    const std::string images = runProcess({"pdfimages", "-list", path}).output;
    EXPECT_EQ(std::count(images.begin(), images.end(), '\n'), 2) << images;
}

TEST_P(ReadBack, PDFLooksLikeTheImage)
{
    TOLV_REQUIRE_PROGRAM("pdftoppm");
    EXPECT_TRUE(looksLike(pageByPdftoppm(written(OutputKind::PDF, "scene.pdf"), kPixelsPerInch), image(), kAdjustedStrokes));
}

TEST_P(ReadBack, PostScriptLooksLikeTheImage)
{
    TOLV_REQUIRE_PROGRAM("gs");
    EXPECT_TRUE(looksLike(pageByGhostscript(written(OutputKind::PostScript, "scene.ps"), kPixelsPerInch), image(), kGhostscript));
    EXPECT_TRUE(looksLike(figureByGhostscript(written(OutputKind::EPS, "scene.eps"), kPixelsPerInch), image(), kGhostscript));
}

TEST_P(ReadBack, SVGLooksLikeTheImage)
{
    TOLV_REQUIRE_PROGRAM("rsvg-convert");
    EXPECT_TRUE(looksLike(pageByRsvg(written(OutputKind::SVG, "scene.svg"), kPixelsPerInch), image(), kSameRasteriser));
}

TEST_P(ReadBack, anotherPictureIsNoticed)
{
    // What even the widest tolerance has to tell apart: the picture one pixel to the left.
    Pixels moved = image();
    const auto row = static_cast<std::ptrdiff_t>(moved.width) * 3;
    for (auto start = moved.bytes.begin(); start != moved.bytes.end(); start += row)
        std::rotate(start, start + 3, start + row);
    EXPECT_FALSE(looksLike(image(), moved, kAdjustedStrokes));
}

TEST_P(ReadBack, SVGIsWellFormed)
{
    TOLV_REQUIRE_PROGRAM("xmllint");
    const ProcessResult result = runProcess({"xmllint", "--noout", written(OutputKind::SVG, "scene.svg")});
    EXPECT_EQ(result.status, 0) << result.text();
    EXPECT_EQ(result.error, "");
}

TEST_P(ReadBack, marksOfPostScriptStayWithinTheirBox)
{
    TOLV_REQUIRE_PROGRAM("gs");
    for (const OutputKind kind : {OutputKind::PostScript, OutputKind::EPS}) {
        // The device reports on standard error.
        const ProcessResult result = runProcess({"gs", "-q", "-dNOPAUSE", "-dBATCH", "-dSAFER", "-sDEVICE=bbox", written(kind, "scene.ps")});
        expectSuccess(result);
        double box[4] = {};
        const std::size_t at = result.error.find("%%HiResBoundingBox: ");
        ASSERT_NE(at, std::string::npos) << result.text();
        ASSERT_EQ(std::sscanf(result.error.c_str() + at, "%%%%HiResBoundingBox: %lf %lf %lf %lf", box, box + 1, box + 2, box + 3), 4);
        EXPECT_GE(box[0], 0.0);
        EXPECT_GE(box[1], 0.0);
        EXPECT_LE(box[2], GetParam().size.width);
        EXPECT_LE(box[3], GetParam().size.height);
        EXPECT_GT(box[2] - box[0], GetParam().size.width * 0.5) << "something was drawn";
    }
}

TEST_P(ReadBack, TIFFTellsItsSizeAndResolution)
{
    TOLV_REQUIRE_PROGRAM("tiffinfo");
    const std::string info = runProcess({"tiffinfo", written(OutputKind::TIFF, "scene.tiff")}).output;
    const Size size = GetParam().size;
    EXPECT_THAT(info,
        testing::HasSubstr(
            "Image Width: " + std::to_string(static_cast<int>(size.width * kSceneScale)) + " Image Length: " + std::to_string(static_cast<int>(size.height * kSceneScale))));
    EXPECT_THAT(info, testing::HasSubstr("Resolution: " + resolutionText() + ", " + resolutionText() + " pixels/inch"));
    EXPECT_THAT(info, testing::HasSubstr("Compression Scheme: AdobeDeflate"));
    EXPECT_THAT(info, testing::HasSubstr("Samples/Pixel: 3"));
    EXPECT_THAT(info, testing::HasSubstr("Bits/Sample: 8"));
    EXPECT_THAT(info, testing::HasSubstr("Software: scene tests"));
    EXPECT_THAT(info, testing::Not(testing::HasSubstr("Extra Samples")));
}

TEST_P(ReadBack, transparentTIFFHasAlpha)
{
    TOLV_REQUIRE_PROGRAM("tiffinfo");
    OutputSettings settings = sceneSettings(GetParam());
    settings.background.reset();
    const auto bytes = renderedScene(GetParam(), OutputKind::TIFF, settings);
    const std::string info = runProcess({"tiffinfo", folder().write("scene.tiff", {reinterpret_cast<const char*>(bytes.data()), bytes.size()})}).output;
    EXPECT_THAT(info, testing::HasSubstr("Samples/Pixel: 4"));
    EXPECT_THAT(info, testing::HasSubstr("Extra Samples: 1<unassoc-alpha>"));
}

TEST_P(ReadBack, imagesAreTheSamePixels)
{
    TOLV_REQUIRE_PROGRAM("convert");
    const std::string converted = folder().path("converted.png");
    expectSuccess(runProcess({"convert", written(OutputKind::TIFF, "scene.tiff"), converted}));
    const PixelDifference difference = pixelDifference(pixelsOfPNGFile(converted), image(), 0);
    EXPECT_TRUE(difference.haveSameSize && difference.differingCount == 0) << difference.text();
}

TEST_P(ReadBack, PNGTellsItsSizeAndResolution)
{
    TOLV_REQUIRE_PROGRAM("identify");
    const ProcessResult result = runProcess({"identify", "-units", "PixelsPerInch", "-format", "%m %w %h %z %x %y %[channels]", written(OutputKind::PNG, "scene.png")});
    expectSuccess(result);
    std::istringstream stream(result.output);
    std::string kind;
    std::string channels;
    double width = 0.0;
    double height = 0.0;
    double depth = 0.0;
    double resolutionX = 0.0;
    double resolutionY = 0.0;
    stream >> kind >> width >> height >> depth >> resolutionX >> resolutionY >> channels;
    EXPECT_EQ(kind, "PNG");
    EXPECT_EQ(width, GetParam().size.width * kSceneScale);
    EXPECT_EQ(height, GetParam().size.height * kSceneScale);
    EXPECT_EQ(depth, 8.0);
    // The file counts pixels per metre in whole numbers.
    EXPECT_NEAR(resolutionX, 72.0 * kSceneScale, 0.02);
    EXPECT_NEAR(resolutionY, 72.0 * kSceneScale, 0.02);
    EXPECT_EQ(channels, "srgb");
}

INSTANTIATE_TEST_SUITE_P(Scenes, ReadBack, testing::ValuesIn(goldenScenes()), sceneName);

} // namespace

} // namespace TOLVGraphing::testing_support
