#include "PagePrinting.h"

#include "../text/PangoTextSystem.h"
#include "TOLVGraphing/platform/foundation/Log.h"

#include <tests/desktop/ExampleView.h>
#include <tests/desktop/OtherRenderers.h>
#include <tests/desktop/PageWords.h>
#include <tests/desktop/Process.h>
#include <tests/desktop/TemporaryFolder.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <ostream>

namespace TOLVGraphing {
namespace {

using namespace testing_support;
using testing::ContainsRegex;
using testing::HasSubstr;

constexpr double kTextTolerance = 0.6;
/// Of the images: two pixels a point.
constexpr int kPixelsPerInch = 144;

/// A sheet and where things stand on it by the rules: the plot is 2.5 times as wide as high, in whole points, the legend begins 5 points below it, and each of its rows is 10 points high.
struct Sheet {
    std::string name;
    PrintInfo info;
    double plotHeight;

    [[nodiscard]] double legendTop() const { return info.topMargin + plotHeight + 5.0; }
    [[nodiscard]] double right() const { return info.paperSize.width - info.rightMargin; }
};

void PrintTo(const Sheet& sheet, std::ostream* stream)
{
    *stream << sheet.name;
}

std::vector<Sheet> sheets()
{
    Sheet uneven{"uneven", {}, 190.0};
    uneven.info.paperSize = {595.0, 420.0};
    uneven.info.leftMargin = 20.0;
    uneven.info.rightMargin = 100.0;
    uneven.info.topMargin = 30.0;
    uneven.info.bottomMargin = 120.0;
    Sheet portrait{"portrait", {}, 180.0};
    portrait.info.jobTitle = "Überdruck, 3 µbar";
    Sheet landscape{"landscape", {}, 279.0};
    landscape.info.paperSize = {842.0, 595.0};
    return {portrait, landscape, uneven};
}

class PagePrinting : public testing::TestWithParam<Sheet> {
protected:
    [[nodiscard]] std::string writtenPDF()
    {
        printPageToPDF(*m_page, m_folder.path("page.pdf"));
        return m_folder.path("page.pdf");
    }
    [[nodiscard]] std::string writtenPostScript()
    {
        printPageToPostScript(*m_page, m_folder.path("page.ps"));
        return m_folder.path("page.ps");
    }
    [[nodiscard]] Pixels image() { return pixelsOfPNG(dataOfPage(*m_page, OutputKind::PNG)); }

    TextSystemScope m_fonts{text::PangoTextSystem::shared()};
    LogSinkScope m_silence{[](std::string_view) {}};
    TemporaryFolder m_folder;
    std::shared_ptr<TOLVPrintView> m_page = examplePage(GetParam().info);
};

void expectTextsOfPage(const std::vector<PageWord>& words, const Sheet& sheet)
{
    const auto wordNamed = [&](const std::string& text) {
        const auto found = std::find_if(words.begin(), words.end(), [&](const PageWord& word) { return word.text == text; });
        EXPECT_NE(found, words.end()) << text;
        return found == words.end() ? PageWord() : *found;
    };
    const PageWord axis = wordNamed("Time");
    EXPECT_GT(axis.start.y, sheet.info.topMargin + sheet.plotHeight * 0.9);
    EXPECT_LT(axis.start.y, sheet.info.topMargin + sheet.plotHeight);
    // Titles of 10 points, whose ascender is 7.7, begin 2 points below their row's upper edge and end 4 points and a row's height before the right margin.
    const double baseline = sheet.legendTop() + 2.0 + 7.7;
    for (const auto& [title, row] : {std::pair{"one", 0.0}, std::pair{"two", 10.0}}) {
        const PageWord word = wordNamed(title);
        EXPECT_NEAR(word.end.x, sheet.right() - 14.0, kTextTolerance) << title;
        EXPECT_NEAR(word.end.y, baseline + row, kTextTolerance) << title;
    }
}

TEST_P(PagePrinting, PDFIsOneSheetOfPaper)
{
    TOLV_REQUIRE_PROGRAM("pdfinfo");
    const std::string info = runProcess({"pdfinfo", writtenPDF()}).output;
    const PrintInfo& print = GetParam().info;
    EXPECT_THAT(info, ContainsRegex("Page size: +" + std::to_string(std::lround(print.paperSize.width)) + " x " + std::to_string(std::lround(print.paperSize.height)) + " pts"));
    EXPECT_THAT(info, ContainsRegex("Page rot: +0"));
    EXPECT_THAT(info, ContainsRegex("Pages: +1\n"));
    EXPECT_THAT(info, ContainsRegex("Title: +" + print.jobTitle + "\n"));
}

TEST_P(PagePrinting, textsOfPDFStandByTheMarginsAndTheLegendBelowThePlot)
{
    TOLV_REQUIRE_PROGRAM("pdftotext");
    expectTextsOfPage(wordsOfPDF(writtenPDF()), GetParam());
}

TEST_P(PagePrinting, textsOfPostScriptDoSoToo)
{
    TOLV_REQUIRE_PROGRAM("gs");
    expectTextsOfPage(wordsOfPostScript(writtenPostScript(), false), GetParam());
}

TEST_P(PagePrinting, theViewStandsAtTheLeftAndBottomMargins)
{
    const Pixels pixels = image();
    const Sheet& sheet = GetParam();
    EXPECT_EQ(pixels.width, std::lround(2.0 * sheet.info.paperSize.width));
    EXPECT_EQ(pixels.height, std::lround(2.0 * sheet.info.paperSize.height));
    // The swatches are 6 points wide and high; the first begins 8 points before the right margin and 4 points below the legend's upper edge.
    const auto colorAt = [&](double x, double y) { return pixels.colorAt(static_cast<int>(std::lround(2.0 * x)), static_cast<int>(std::lround(2.0 * y))); };
    EXPECT_EQ(colorAt(sheet.right() - 8.0, sheet.legendTop() + 4.0), "#0060bf");
    EXPECT_EQ(colorAt(sheet.right() - 2.5, sheet.legendTop() + 9.5), "#0060bf");
    EXPECT_EQ(colorAt(sheet.right() - 8.5, sheet.legendTop() + 4.0), "#ffffff");
    EXPECT_EQ(colorAt(sheet.right() - 2.0, sheet.legendTop() + 9.5), "#ffffff");
    EXPECT_EQ(colorAt(sheet.right() - 8.0, sheet.legendTop() + 3.5), "#ffffff");
    EXPECT_EQ(colorAt(sheet.right() - 5.0, sheet.legendTop() + 16.0), "#bf4000");
}

TEST_P(PagePrinting, marginsStayEmpty)
{
    const Pixels pixels = image();
    const PrintInfo& info = GetParam().info;
    for (int y = 0; y < pixels.height; ++y) {
        for (int x = 0; x < pixels.width; ++x) {
            const bool isWithin = x >= 2.0 * info.leftMargin && x < 2.0 * (info.paperSize.width - info.rightMargin) && y >= 2.0 * info.topMargin
                && y < 2.0 * (info.paperSize.height - info.bottomMargin);
            if (!isWithin) {
                ASSERT_EQ(pixels.colorAt(x, y), "#ffffff") << x << ", " << y;
            }
        }
    }
}

TEST_P(PagePrinting, otherProgramsShowTheSamePage)
{
    TOLV_REQUIRE_PROGRAM("pdftoppm");
    TOLV_REQUIRE_PROGRAM("gs");
    const Pixels pixels = image();
    EXPECT_TRUE(looksLike(pageByPdftoppm(writtenPDF(), kPixelsPerInch), pixels, kAdjustedStrokes));
    EXPECT_TRUE(looksLike(pageByGhostscript(writtenPostScript(), kPixelsPerInch), pixels, kGhostscript));
    EXPECT_THAT(m_folder.read("page.ps"), HasSubstr("\n%%BoundingBox: 0 0 " + std::to_string(std::lround(GetParam().info.paperSize.width)) + " "));
}

TEST_P(PagePrinting, aPageMayBePrintedAgain)
{
    const auto first = dataOfPage(*m_page, OutputKind::PDF);
    EXPECT_EQ(dataOfPage(*m_page, OutputKind::PDF), first);
}

INSTANTIATE_TEST_SUITE_P(Sheets, PagePrinting, testing::ValuesIn(sheets()), [](const auto& instance) { return instance.param.name; });

TEST(PagePrintingErrors, tellWhatCannotBePrinted)
{
    struct Case {
        Size paper;
        double leftMargin;
        const char* message;
    };
    const Case cases[] = {
        {{144.0, 842.0}, 72.0, "cannot print \"Graph\": the margins leave nothing of the sheet of 144 x 842 points"},
        {{595.0, 842.0}, 600.0, "cannot print \"Graph\": the margins leave nothing of the sheet of 595 x 842 points"},
        {{595.0, 842.0}, std::nan(""), "cannot print \"Graph\": the margins leave nothing of the sheet of 595 x 842 points"},
        {{595.0, 20000.0}, 72.0, "cannot make the PDF output: a page of 595 x 20000 points was asked for; the limit is 14400 points a side"},
    };
    const TemporaryFolder folder;
    for (const Case& test : cases) {
        PrintInfo info;
        info.paperSize = test.paper;
        info.leftMargin = test.leftMargin;
        const auto page = std::make_shared<TOLVPrintView>(info);
        try {
            printPageToPDF(*page, folder.path("page.pdf"));
            ADD_FAILURE() << "no error: " << test.message;
        } catch (const OutputError& error) {
            EXPECT_STREQ(error.what(), test.message);
        }
    }
    EXPECT_TRUE(folder.names().empty());
}

TEST(PagePrintingErrors, tellTheFileThatCannotBeWritten)
{
    const LogSinkScope silence([](std::string_view) {});
    const TemporaryFolder folder;
    const auto page = std::make_shared<TOLVPrintView>(PrintInfo());
    EXPECT_THROW(printPageToPostScript(*page, folder.path("missing/page.ps")), FileError);
}

} // namespace
} // namespace TOLVGraphing
