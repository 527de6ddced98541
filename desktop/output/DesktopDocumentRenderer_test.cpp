#include "DesktopDocumentRenderer.h"

#include "../text/PangoTextSystem.h"
#include "GraphicsOutput.h"
#include "TOLVGraphing/axes/SINumberFormatter.h"
#include "TOLVGraphing/graph/TOLVGraph.h"
#include "TOLVGraphing/platform/foundation/UserDefaults.h"
#include "TOLVGraphing/platform/graphics/DrawingContext.h"

#include <tests/desktop/ExampleView.h>
#include <tests/desktop/OtherRenderers.h>
#include <tests/desktop/PageWords.h>
#include <tests/desktop/Process.h>
#include <tests/desktop/TemporaryFolder.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <limits>
#include <sstream>

namespace TOLVGraphing {
namespace {

using namespace testing_support;
using testing::HasSubstr;

constexpr int kPixelsPerInch = 144;
/// How far apart texts may stand in different kinds of file, in points.
constexpr double kTextTolerance = 0.6;

std::string textOf(const std::vector<std::byte>& bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// A view whose copies go to a pasteboard in memory, with the desktop's fonts and documents.
class CopiedView : public testing::Test {
protected:
    CopiedView()
    {
        Pasteboard::setGeneralPasteboard(m_pasteboard);
        installDesktopDocumentRenderer();
    }
    ~CopiedView() override
    {
        setDocumentRenderer(nullptr);
        Pasteboard::setGeneralPasteboard(nullptr);
        UserDefaults::setStandardUserDefaults(nullptr);
    }

    [[nodiscard]] std::vector<std::byte> pasted(std::string_view type) const { return m_pasteboard->dataForType(type).value_or(Pasteboard::Data()); }
    /// Writes what was copied into a file and answers its path.
    [[nodiscard]] std::string pastedFile(std::string_view type) const { return m_folder.write("pasted", textOf(pasted(type))); }
    [[nodiscard]] DrawnPage pastedSVG() const { return DrawnPage::fromSVG(textOf(pasted(kPasteboardTypeSVG))); }
    [[nodiscard]] Pixels pastedPNG() const { return pixelsOfPNG(pasted(kPasteboardTypePNG)); }

    TextSystemScope m_fonts{text::PangoTextSystem::shared()};
    TemporaryFolder m_folder;
    std::shared_ptr<MemoryPasteboard> m_pasteboard = std::make_shared<MemoryPasteboard>();
    std::shared_ptr<TOLVGraphView> m_view = exampleView({10.0, 20.0, 360.0, 240.0});
};

TEST_F(CopiedView, showsItsTextsInSVG)
{
    m_view->copy(nullptr);
    const DrawnPage page = pastedSVG();
    EXPECT_EQ(page.size, (Size{360.0, 240.0}));
    EXPECT_TRUE(page.hasText("Time (s)")) << page.allTexts();
    EXPECT_TRUE(page.hasText("Level")) << page.allTexts();
    EXPECT_EQ(page.strokesOfColor("#0060bf").size(), 1U) << "each series is one stroke";
    EXPECT_EQ(page.strokesOfColor("#bf4000").size(), 1U);
}

TEST_F(CopiedView, hasItsTextsAtTheSamePlacesInPDF)
{
    TOLV_REQUIRE_PROGRAM("pdftotext");
    m_view->copy(nullptr);
    EXPECT_TRUE(standWhereDrawn(wordsOfPDF(pastedFile(kPasteboardTypePDF)), pastedSVG(), kTextTolerance));
}

TEST_F(CopiedView, hasItsTextsAtTheSamePlacesInPostScript)
{
    TOLV_REQUIRE_PROGRAM("gs");
    m_view->copy(nullptr);
    for (const std::string_view type : {kPasteboardTypePostScript, kPasteboardTypeEPS}) {
        EXPECT_THAT(textOf(pasted(type)), testing::StartsWith("%!PS-Adobe-3.0 EPSF-3.0"));
        EXPECT_TRUE(standWhereDrawn(wordsOfPostScript(pastedFile(type), true), pastedSVG(), kTextTolerance)) << type;
    }
}

TEST_F(CopiedView, isThePNGInEveryOtherProgram)
{
    TOLV_REQUIRE_PROGRAM("pdftoppm");
    TOLV_REQUIRE_PROGRAM("gs");
    TOLV_REQUIRE_PROGRAM("rsvg-convert");
    m_view->copy(nullptr);
    const Pixels image = pastedPNG();
    EXPECT_TRUE(looksLike(pageByPdftoppm(pastedFile(kPasteboardTypePDF), kPixelsPerInch), image, kAdjustedStrokes));
    EXPECT_TRUE(looksLike(figureByGhostscript(pastedFile(kPasteboardTypeEPS), kPixelsPerInch), image, kGhostscript));
    EXPECT_TRUE(looksLike(pageByRsvg(pastedFile(kPasteboardTypeSVG), kPixelsPerInch), image, kSameRasteriser));
}

TEST_F(CopiedView, hasTwoPixelsAPointInPNG)
{
    m_view->copy(nullptr);
    const Pixels image = pastedPNG();
    EXPECT_EQ(image.width, 720);
    EXPECT_EQ(image.height, 480);
    EXPECT_EQ(image.colorAt(0, 0), "#ffffff");
}

TEST_F(CopiedView, tellsItsResolutionInTIFFAndIsThePNG)
{
    TOLV_REQUIRE_PROGRAM("tiffinfo");
    TOLV_REQUIRE_PROGRAM("convert");
    m_view->copy(nullptr);
    const std::string path = pastedFile(kPasteboardTypeTIFF);
    const std::string info = runProcess({"tiffinfo", path}).output;
    EXPECT_THAT(info, HasSubstr("Image Width: 720 Image Length: 480"));
    EXPECT_THAT(info, HasSubstr("Resolution: 144, 144 pixels/inch"));
    EXPECT_THAT(info, HasSubstr("Samples/Pixel: 3"));
    const std::string converted = m_folder.path("converted.png");
    ASSERT_EQ(runProcess({"convert", "tiff:" + path, converted}).status, 0);
    const PixelDifference difference = pixelDifference(pixelsOfPNGFile(converted), pastedPNG(), 0);
    EXPECT_TRUE(difference.haveSameSize && difference.differingCount == 0) << difference.text();
}

TEST_F(CopiedView, isTheFileThatIsWritten)
{
    m_view->copy(nullptr);
    OutputSettings settings;
    settings.size = m_view->bounds().size;
    settings.background.reset();
    const auto draw = [this](DrawingContext& context, const Rect&) { m_view->displayInContext(context); };
    EXPECT_EQ(pasted(kPasteboardTypePDF), renderToBytes(OutputKind::PDF, settings, draw));
    EXPECT_EQ(pasted(kPasteboardTypeSVG), renderToBytes(OutputKind::SVG, settings, draw));
    settings.background = Color::whiteColor();
    EXPECT_EQ(pasted(kPasteboardTypePNG), renderToBytes(OutputKind::PNG, settings, draw));
}

TEST_F(CopiedView, isTheSameFileHoweverLateItIsPasted)
{
    const auto graph = m_view->graph();
    graph->setTitle("Before");
    graph->setTickLabelAttributes(makeTextAttributes(Font{"HelveticaNeue-Bold", 17.0}, Color::grayColor()));
    graph->verticalAxis()->setTickLabelFormatter(std::make_shared<SINumberFormatter>(graph->verticalAxis()));
    graph->zoomYToFixedMin(0.0, 0.002);
    for (const bool fits : {false, true}) {
        m_view->setFitsMarginsToLabels(fits);
        const auto svg = m_view->dataInsideRect(m_view->bounds(), OutputKind::SVG);
        const auto png = m_view->dataInsideRect(m_view->bounds(), OutputKind::PNG);
        m_view->copy(nullptr);
        graph->zoomYToFixedMin(-3000.0, 3000.0);
        graph->markers().front()->setValue(5.0);
        EXPECT_NE(m_view->dataInsideRect(m_view->bounds(), OutputKind::SVG), svg);
        EXPECT_EQ(pasted(kPasteboardTypeSVG), svg);
        EXPECT_EQ(pasted(kPasteboardTypePNG), png);
        graph->markers().front()->setValue(4.0);
        graph->zoomYToFixedMin(0.0, 0.002);
    }
}

TEST_F(CopiedView, hasTheFixedSizeOfTheSettings)
{
    const auto defaults = UserDefaults::standardUserDefaults();
    defaults->setBool(true, kUsesFixedCopySizeKey);
    defaults->setInteger(500, kFixedCopyWidthKey);
    defaults->setInteger(300, kFixedCopyHeightKey);
    m_view->copy(nullptr);
    EXPECT_EQ(pastedSVG().size, (Size{500.0, 300.0}));
    EXPECT_EQ(pastedPNG().width, 1000);
    EXPECT_EQ(pastedPNG().height, 600);
    EXPECT_EQ(m_view->frame(), Rect(10.0, 20.0, 360.0, 240.0));
}

TEST_F(CopiedView, hasItsDataAsText)
{
    m_view->copy(nullptr);
    std::istringstream lines(textOf(pasted(kPasteboardTypeText)));
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(line, "x\tone\tx\ttwo");
    std::getline(lines, line);
    EXPECT_EQ(line, "0\t0\t0\t0.84147096");
}

TEST_F(CopiedView, isAPartOfThePictureWhereAPartIsAskedFor)
{
    // The lower-left quarter, whose pixels are those of the whole image. The rasteriser rounds strokes otherwise where it cuts them at another edge: 2 components differ by 1.
    const Pixels whole = pixelsOfPNG(m_view->dataInsideRect({0.0, 0.0, 360.0, 240.0}, OutputKind::PNG));
    const Pixels part = pixelsOfPNG(m_view->dataInsideRect({0.0, 0.0, 180.0, 120.0}, OutputKind::PNG));
    ASSERT_EQ(part.width, 360);
    ASSERT_EQ(part.height, 240);
    Pixels cut{360, 240, {}};
    for (int y = 0; y < cut.height; ++y) {
        const auto row = whole.bytes.begin() + (y + 240) * 720 * 3;
        cut.bytes.insert(cut.bytes.end(), row, row + 360 * 3);
    }
    const PixelDifference difference = pixelDifference(part, cut, 0);
    EXPECT_TRUE(difference.haveSameSize && difference.largest <= 1) << difference.text();
}

TEST(DesktopDocumentRenderer, theRendererIsTheProcessesOwnOnceInstalled)
{
    ASSERT_EQ(documentRenderer(), nullptr);
    EXPECT_TRUE(View({0.0, 0.0, 10.0, 10.0}).dataWithPDFInsideRect({0.0, 0.0, 10.0, 10.0}).empty());
    installDesktopDocumentRenderer();
    EXPECT_THAT(textOf(View({0.0, 0.0, 10.0, 10.0}).dataWithPDFInsideRect({0.0, 0.0, 10.0, 10.0})), testing::StartsWith("%PDF-"));
    setDocumentRenderer(nullptr);
}

TEST(DesktopDocumentRenderer, imagesAreWhiteAndPagesAreClearWhereNothingIsDrawn)
{
    const DesktopDocumentRenderer renderer;
    const auto drawNothing = [](DrawingContext&) {};
    const Pixels image = pixelsOfPNG(renderer.render(OutputKind::PNG, {2.0, 1.0}, drawNothing));
    EXPECT_EQ(image.width, 4);
    EXPECT_EQ(image.height, 2);
    EXPECT_TRUE(std::all_of(image.bytes.begin(), image.bytes.end(), [](std::uint8_t component) { return component == 255; }));
    EXPECT_TRUE(DrawnPage::fromSVG(textOf(renderer.render(OutputKind::SVG, {2.0, 1.0}, drawNothing))).paths.empty());
}

TEST(DesktopDocumentRenderer, sizesBeyondTheLimitsAreErrors)
{
    struct Case {
        OutputKind kind;
        Size size;
        const char* message;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const Case cases[] = {
        {OutputKind::PDF, {14401.0, 10.0}, "cannot make the PDF output: a page of 14401 x 10 points was asked for; the limit is 14400 points a side"},
        {OutputKind::EPS, {10.0, 20000.0}, "cannot make the EPS output: a page of 10 x 20000 points was asked for; the limit is 14400 points a side"},
        {OutputKind::PNG, {16384.0, 1.0}, "cannot make the PNG output: an image side of 32768 pixels was asked for; the limit is 32767 pixels a side"},
        {OutputKind::TIFF, {16000.0, 8000.0}, "cannot make the TIFF output: an image of 32000 x 16000 pixels was asked for; the limit is 268435456 pixels in all"},
        {OutputKind::PDF, {0.0, 10.0}, "cannot make the PDF output: the size is 0 x 10 points; both have to be finite and above 0"},
        {OutputKind::SVG, {10.0, nan}, "cannot make the SVG output: the size is 10 x nan points; both have to be finite and above 0"},
    };
    for (const Case& test : cases) {
        try {
            static_cast<void>(DesktopDocumentRenderer().render(test.kind, test.size, [](DrawingContext&) { ADD_FAILURE() << "nothing is to be drawn"; }));
            ADD_FAILURE() << "no error: " << test.message;
        } catch (const OutputError& error) {
            EXPECT_STREQ(error.what(), test.message);
        }
    }
}

} // namespace
} // namespace TOLVGraphing
