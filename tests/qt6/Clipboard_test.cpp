// What another program gets from the clipboard: each type is fetched by xclip, a process of its own, and read by a program that has nothing to do with this library.

#include "Pasting.h"
#include "WidgetSetup.h"

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/foundation/UserDefaults.h>
#include <TOLVGraphing/views/TOLVGraphView.h>
#include <tests/desktop/ExampleView.h>
#include <tests/desktop/OtherRenderers.h>
#include <tests/desktop/Process.h>
#include <tests/desktop/TemporaryFolder.h>
#include <tests/desktop/XmlElements.h>

#include <hosts/qt6/QtServices.h>

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QSettings>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <span>
#include <string>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSupersetOf;

namespace {

/// The example's graph in a widget of 612 by 396 points, copied by its action.
class Clipboard : public testing::Test {
protected:
    void SetUp() override
    {
        if (QGuiApplication::platformName() != "xcb")
            GTEST_SKIP() << "no display server is installed";
        TOLV_REQUIRE_PROGRAM("xclip");
        installQtServices();
        m_view = exampleView({0.0, 0.0, 612.0, 396.0});
        m_widget = std::make_unique<GraphWidget>(m_view);
        m_widget->resize(612, 396);
        m_widget->show();
        waitUntil([this] { return m_widget->drawCount() > 0; });
    }
    void TearDown() override { QSettings().clear(); }

    void copy() { m_widget->action(GraphCommand::Copy)->trigger(); }

    TemporaryFolder m_folder;
    std::shared_ptr<TOLVGraphView> m_view;
    std::unique_ptr<GraphWidget> m_widget;
};

TEST_F(Clipboard, OffersPDFPostScriptAndTIFFInThisOrderAndThenTheOthers)
{
    copy();
    std::vector<std::string> offered;
    for (const std::string& target : linesOf(pasted("TARGETS"))) {
        if (target.find('/') != std::string::npos)
            offered.push_back(target);
    }
    EXPECT_THAT(
        offered, ElementsAre("application/pdf", "application/postscript", "image/tiff", "image/x-eps", "image/svg+xml", "image/png", "text/plain;charset=utf-8", "text/plain"));
    EXPECT_THAT(linesOf(pasted("TARGETS")), IsSupersetOf({"UTF8_STRING"}));
}

TEST_F(Clipboard, PDFHasTheGraphAsText)
{
    copy();
    TOLV_REQUIRE_PROGRAM("pdftotext");
    const std::string text = runProcess({"pdftotext", "-raw", m_folder.write("pasted.pdf", pasted("application/pdf")), "-"}).output;
    EXPECT_THAT(text, HasSubstr("Time (s)"));
    EXPECT_THAT(text, HasSubstr("Level"));
    const std::string info = runProcess({"pdfinfo", m_folder.path("pasted.pdf")}).output;
    EXPECT_THAT(info, HasSubstr("612 x 396 pts"));
}

TEST_F(Clipboard, PostScriptAndEPSAreTheSameFigure)
{
    copy();
    TOLV_REQUIRE_PROGRAM("gs");
    const std::string bytes = pasted("application/postscript");
    EXPECT_EQ(bytes.substr(0, 23), "%!PS-Adobe-3.0 EPSF-3.0");
    EXPECT_EQ(pasted("image/x-eps"), bytes);
    const Pixels figure = figureByGhostscript(m_folder.write("pasted.eps", bytes), 72);
    EXPECT_EQ(figure.width, 612);
    EXPECT_EQ(figure.height, 396);
    const Pixels image = pixelsOfPNGFile(m_folder.write("pasted.png", pasted("image/png")));
    EXPECT_TRUE(looksLike(figureByGhostscript(m_folder.path("pasted.eps"), 144), image, kGhostscript));
}

TEST_F(Clipboard, TIFFHasTwoPixelsAPointAndSaysSo)
{
    copy();
    TOLV_REQUIRE_PROGRAM("tiffinfo");
    const std::string info = runProcess({"tiffinfo", m_folder.write("pasted.tiff", pasted("image/tiff"))}).output;
    EXPECT_THAT(info, HasSubstr("Image Width: 1224 Image Length: 792"));
    EXPECT_THAT(info, HasSubstr("Resolution: 144, 144 pixels/inch"));
}

TEST_F(Clipboard, PNGHasTwoPixelsAPointOnWhite)
{
    copy();
    const Pixels image = pixelsOfPNGFile(m_folder.write("pasted.png", pasted("image/png")));
    EXPECT_EQ(image.width, 1224);
    EXPECT_EQ(image.height, 792);
    EXPECT_EQ(image.colorAt(2, 2), "#ffffff");
}

TEST_F(Clipboard, SVGIsWellFormedAndItsTextsAreTexts)
{
    copy();
    TOLV_REQUIRE_PROGRAM("xmllint");
    const std::string document = pasted("image/svg+xml");
    EXPECT_EQ(runProcess({"xmllint", "--noout", m_folder.write("pasted.svg", document)}).status, 0);
    bool hasTitle = false;
    for (const XmlElement& element : xmlElements(document))
        hasTitle = hasTitle || element.text.find("Time (s)") != std::string::npos;
    EXPECT_TRUE(hasTitle);
}

TEST_F(Clipboard, TextIsTheDataInColumns)
{
    copy();
    const std::string expected = tabSeparatedData(m_view->graph()->graphData());
    ASSERT_EQ(expected.substr(0, 12), "x\tone\tx\ttwo\n");
    EXPECT_EQ(pasted("text/plain;charset=utf-8"), expected);
    EXPECT_EQ(pasted("UTF8_STRING"), expected);
}

TEST_F(Clipboard, HasTheGraphOfTheMomentOfCopying)
{
    copy();
    m_view->graph()->horizontalAxis()->setLabel("Changed");
    m_view->graph()->clearGraphData();
    EXPECT_THAT(pasted("image/svg+xml"), HasSubstr("Time (s)"));
    EXPECT_THAT(pasted("text/plain"), HasSubstr("one"));
}

TEST_F(Clipboard, FixedSizeOfTheSettingsIsThatOfTheCopyOnly)
{
    QSettings settings;
    settings.setValue("TOLVPlot_UsesFixedCopySize", true);
    settings.setValue("TOLVPlot_FixedCopyWidth", 800);
    settings.setValue("TOLVPlot_FixedCopyHeight", 600);
    copy();
    TOLV_REQUIRE_PROGRAM("pdfinfo");
    EXPECT_THAT(runProcess({"pdfinfo", m_folder.write("pasted.pdf", pasted("application/pdf"))}).output, HasSubstr("800 x 600 pts"));
    const Pixels image = pixelsOfPNGFile(m_folder.write("pasted.png", pasted("image/png")));
    EXPECT_EQ(image.width, 1600);
    EXPECT_EQ(image.height, 1200);
    EXPECT_EQ(m_view->bounds().width(), 612.0);
}

TEST_F(Clipboard, StaysLightWhileTheWidgetIsDark)
{
    m_widget->setAppearance(GraphAppearance::Dark);
    EXPECT_LT(m_widget->grab().toImage().pixelColor(4, 4).lightness(), 60);
    copy();
    const Pixels image = pixelsOfPNGFile(m_folder.write("pasted.png", pasted("image/png")));
    EXPECT_EQ(image.colorAt(4, 4), "#ffffff");
}

TEST_F(Clipboard, CopyShortcutCopies)
{
    QGuiApplication::clipboard()->setText("before");
    m_widget->activateWindow();
    m_widget->setFocus();
    waitUntil([this] { return m_widget->hasFocus(); });
    QTest::keyClick(m_widget.get(), Qt::Key_C, Qt::ControlModifier);
    ASSERT_NE(QGuiApplication::clipboard()->mimeData(), nullptr);
    EXPECT_TRUE(QGuiApplication::clipboard()->mimeData()->hasFormat("application/pdf"));
    EXPECT_EQ(pasted("application/pdf").substr(0, 5), "%PDF-");
}

} // namespace
