#include "SVGContext.h"

#include "../text/PangoTextSystem.h"
#include "SVGWriter.h"
#include "TOLVGraphing/platform/graphics/GraphicsStateSaver.h"
#include "TOLVGraphing/platform/text/AttributedString.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>

using namespace TOLVGraphing;
using TOLVGraphing::svg::SVGContext;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

const char* const kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                          "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"100pt\" height=\"50pt\" viewBox=\"0 0 100 50\">\n";

/// What a drawing on 100 x 50 points writes between the document's head and its end.
std::string body(const std::function<void(SVGContext&)>& drawing)
{
    SVGContext context({100.0, 50.0});
    drawing(context);
    std::string document = context.document();
    const std::string head = kHead;
    const std::string end = "</svg>\n";
    EXPECT_TRUE(document.starts_with(head)) << document;
    EXPECT_TRUE(document.ends_with(end)) << document;
    document.erase(document.size() - end.size());
    return document.substr(head.size());
}

Path line(double x1, double y1, double x2, double y2)
{
    Path path;
    path.moveToX(x1, y1);
    path.addLineToX(x2, y2);
    return path;
}

std::string lengthOf(const AttributedString& text)
{
    return svg::numberText(text::PangoTextSystem::shared()->size(text).width);
}

} // namespace

TEST(SVGContext, anEmptyDocumentIsComplete)
{
    SVGContext context({12.5, 3.25});
    context.setTitle("a < b");
    context.setDescription("made \"here\"");
    EXPECT_EQ(context.document(),
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"12.5pt\" height=\"3.25pt\" viewBox=\"0 0 12.5 3.25\">\n"
        "<title>a &lt; b</title>\n"
        "<desc>made &quot;here&quot;</desc>\n"
        "</svg>\n");
}

TEST(SVGContext, fillsCountFromTheTop)
{
    EXPECT_EQ(body([](SVGContext& context) {
        context.setFillColor(Color(1.0, 0.0, 0.0));
        context.fillRect({10.0, 5.0, 20.0, 15.0});
        context.setFillColor(Color(0.0, 0.0, 1.0, 0.25));
        context.drawFilledPath(Path::pathWithRect({0.0, 0.0, 1.0, 1.0}), FillRule::EvenOdd);
        context.setFillColor(std::nullopt);
        context.fillRect({0.0, 50.0, 1.0, -1.0});
        context.setFillColor(Color(0.0, 0.0, 0.0, 0.0));
        context.fillRect({0.0, 0.0, 1.0, 1.0});
    }),
        "<path d=\"M10 45L30 45 30 30 10 30Z\" fill=\"#ff0000\"/>\n"
        "<path d=\"M0 50L1 50 1 49 0 49Z\" fill=\"#0000ff\" fill-opacity=\"0.25\" fill-rule=\"evenodd\"/>\n"
        "<path d=\"M0 0L1 0 1 1 0 1Z\" fill=\"#000000\"/>\n");
}

TEST(SVGContext, strokesWriteWhatDiffersFromTheDefaults)
{
    EXPECT_EQ(body([](SVGContext& context) {
        context.drawStrokedPath(line(0.0, 10.5, 100.0, 10.5));
        context.setStrokeColor(Color(0.0, 1.0, 0.0, 0.5));
        context.setLineWidth(2.5);
        context.setLineDash({{5.0, 5.0, 1.0, 5.0}, 3.0});
        context.setLineCap(LineCap::Round);
        context.setLineJoin(LineJoin::Bevel);
        context.drawStrokedPath(line(0.0, 0.0, 1.0, 1.0));
        context.setLineDash({{0.0}, 0.0});
        context.setLineCap(LineCap::Square);
        context.setLineJoin(LineJoin::Round);
        context.drawStrokedPath(line(0.0, 0.0, 1.0, 1.0));
    }),
        "<path d=\"M0 39.5L100 39.5\" fill=\"none\" stroke=\"#000000\" stroke-miterlimit=\"10\"/>\n"
        "<path d=\"M0 50L1 49\" fill=\"none\" stroke=\"#00ff00\" stroke-opacity=\"0.5\" stroke-width=\"2.5\" stroke-linecap=\"round\" stroke-linejoin=\"bevel\""
        " stroke-dasharray=\"5 5 1 5\" stroke-dashoffset=\"3\"/>\n"
        "<path d=\"M0 50L1 49\" fill=\"none\" stroke=\"#00ff00\" stroke-opacity=\"0.5\" stroke-width=\"2.5\" stroke-linecap=\"square\" stroke-linejoin=\"round\"/>\n");
}

TEST(SVGContext, strokesScaleWithTheTransform)
{
    EXPECT_EQ(body([](SVGContext& context) {
        const GraphicsStateSaver saver(context);
        context.concatenateTransform({0.0, 2.0, -2.0, 0.0, 10.0, 0.0});
        context.setLineDash({{3.0, 1.0}, 1.0});
        context.drawStrokedPath(line(0.0, 0.0, 5.0, 0.0));
        context.setLineDash({});
        context.concatenateTransform({1.0, 0.0, 0.0, 3.0, 0.0, 0.0});
        context.drawStrokedPath(line(0.0, 0.0, 5.0, 0.0));
    }),
        "<path d=\"M10 50L10 40\" fill=\"none\" stroke=\"#000000\" stroke-width=\"2\" stroke-miterlimit=\"10\" stroke-dasharray=\"6 2\" stroke-dashoffset=\"2\"/>\n"
        "<path d=\"M0 0L5 0\" fill=\"none\" stroke=\"#000000\" stroke-miterlimit=\"10\" transform=\"matrix(0 -2 -6 0 10 50)\"/>\n");
}

TEST(SVGContext, textIsTextOnItsBaseline)
{
    const AttributedString title("a<b ", TextAttributes{Font{"HelveticaNeue-Bold", 10.0}, Color(1.0, 0.0, 0.0, 0.5)});
    EXPECT_EQ(body([&](SVGContext& context) {
        context.drawText(title, {5.0, 10.0});
    }),
        "<text x=\"5\" y=\"37.59\" font-family=\"'Helvetica Neue', Helvetica, 'Nimbus Sans', 'Liberation Sans', Arial, sans-serif\" font-size=\"10\""
        " font-weight=\"bold\" fill=\"#ff0000\" fill-opacity=\"0.5\" textLength=\""
            + lengthOf(title) + "\" lengthAdjust=\"spacingAndGlyphs\" xml:space=\"preserve\">a&lt;b </text>\n");
}

TEST(SVGContext, turnedTextReadsUpwards)
{
    const AttributedString text("Tj", TextAttributes{Font{"Helvetica", 10.0}, std::nullopt});
    EXPECT_EQ(body([&](SVGContext& context) {
        AffineTransform transform;
        transform.translateXBy(20.0, 10.0);
        transform.rotateDegrees(90.0);
        const GraphicsStateSaver saver(context);
        context.concatenateTransform(transform);
        context.drawText(text, {0.0, 0.0});
    }),
        "<text transform=\"matrix(0 -1 1 0 17.7 40)\" font-family=\"Helvetica, 'Nimbus Sans', 'Liberation Sans', Arial, sans-serif\" font-size=\"10\" fill=\"#000000\" "
        "textLength=\""
            + lengthOf(text) + "\" lengthAdjust=\"spacingAndGlyphs\" xml:space=\"preserve\">Tj</text>\n");
}

TEST(SVGContext, linesOfTextAreElementsOfTheirOwn)
{
    const std::string text = body([](SVGContext& context) {
        context.drawText(AttributedString("one\n\nthree", TextAttributes{Font{"Odd 'Font'-LightItalic", 10.0}, std::nullopt}), {0.0, 0.0});
        context.drawText(AttributedString("", TextAttributes{}), {0.0, 0.0});
        context.drawText(AttributedString("x", TextAttributes{}), {kNaN, 0.0});
        context.drawText(AttributedString("x", TextAttributes{Font{"Helvetica", 0.0}, std::nullopt}), {0.0, 0.0});
    });
    EXPECT_NE(text.find(">one</text>"), std::string::npos);
    EXPECT_NE(text.find(">three</text>"), std::string::npos);
    EXPECT_NE(text.find("font-family=\"'Odd Font', sans-serif\" font-size=\"10\" font-weight=\"300\" font-style=\"italic\""), std::string::npos) << text;
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2);
}

TEST(SVGContext, clipsNestAndAreShared)
{
    const Path outer = Path::pathWithRect({0.0, 0.0, 50.0, 50.0});
    EXPECT_EQ(body([&](SVGContext& context) {
        for (int i = 0; i < 2; ++i) {
            const GraphicsStateSaver saver(context);
            context.clipToPath(outer, FillRule::NonZero);
            context.fillRect({0.0, 0.0, 1.0, 1.0});
            if (i == 0)
                continue;
            context.clipToPath(Path::pathWithRect({0.0, 0.0, 2.0, 2.0}), FillRule::EvenOdd);
            context.fillRect({1.0, 1.0, 1.0, 1.0});
        }
        context.fillRect({2.0, 2.0, 1.0, 1.0});
        context.clipToPath(outer, FillRule::NonZero);
        context.fillRect({3.0, 3.0, 1.0, 1.0});
    }),
        "<defs><clipPath id=\"clip1\"><path d=\"M0 50L50 50 50 0 0 0Z\"/></clipPath></defs>\n"
        "<g clip-path=\"url(#clip1)\">\n"
        "<path d=\"M0 50L1 50 1 49 0 49Z\" fill=\"#000000\"/>\n"
        "<path d=\"M0 50L1 50 1 49 0 49Z\" fill=\"#000000\"/>\n"
        "<defs><clipPath id=\"clip2\"><path d=\"M0 50L2 50 2 48 0 48Z\" clip-rule=\"evenodd\"/></clipPath></defs>\n"
        "<g clip-path=\"url(#clip2)\">\n"
        "<path d=\"M1 49L2 49 2 48 1 48Z\" fill=\"#000000\"/>\n"
        "</g>\n"
        "</g>\n"
        "<path d=\"M2 48L3 48 3 47 2 47Z\" fill=\"#000000\"/>\n"
        "<g clip-path=\"url(#clip1)\">\n"
        "<path d=\"M3 47L4 47 4 46 3 46Z\" fill=\"#000000\"/>\n"
        "</g>\n");
}

TEST(SVGContext, savesAndRestoresEverySetting)
{
    const auto plain = [](SVGContext& context) {
        context.drawStrokedPath(line(0.0, 0.0, 9.0, 9.0));
        context.fillRect({0.0, 0.0, 1.0, 1.0});
    };
    EXPECT_EQ(body([&](SVGContext& context) {
        context.restoreState();
        context.saveState();
        context.setFillColor(Color(1.0, 0.0, 0.0));
        context.setStrokeColor(Color(1.0, 0.0, 0.0));
        context.setLineWidth(4.0);
        context.setLineDash({{1.0, 1.0}, 0.0});
        context.setLineCap(LineCap::Square);
        context.setLineJoin(LineJoin::Round);
        context.setMiterLimit(2.0);
        context.concatenateTransform({3.0, 0.0, 0.0, 3.0, 5.0, 5.0});
        context.restoreState();
        context.restoreState();
        plain(context);
    }),
        body(plain));
}

TEST(SVGContext, whatPaintsNothingIsNotWritten)
{
    EXPECT_EQ(body([](SVGContext& context) {
        context.drawFilledPath({}, FillRule::NonZero);
        context.drawStrokedPath({});
        Path lost;
        lost.moveToX(kNaN, 0.0);
        lost.addLineToX(0.0, kNaN);
        lost.closeSubpath();
        context.drawFilledPath(lost, FillRule::NonZero);
        context.drawStrokedPath(lost);
        for (const double width : {0.0, -1.0, kNaN, std::numeric_limits<double>::infinity()}) {
            context.setLineWidth(width);
            context.drawStrokedPath(line(0.0, 0.0, 9.0, 9.0));
        }
        context.concatenateTransform({0.0, 0.0, 0.0, 0.0, 0.0, 0.0});
        context.fillRect({0.0, 0.0, 9.0, 9.0});
        context.drawText(AttributedString("x"), {0.0, 0.0});
    }),
        "");
}

TEST(SVGContext, hugeCoordinatesAreCutAroundThePage)
{
    const std::string text = body([](SVGContext& context) {
        context.drawStrokedPath(line(-1e7, 10.0, 1e7, 10.0));
        context.fillRect({10.0, 10.0, 1e9, 1e9});
    });
    EXPECT_EQ(text,
        "<path d=\"M-4008 40L4108 40\" fill=\"none\" stroke=\"#000000\" stroke-miterlimit=\"10\"/>\n"
        "<path d=\"M10 40L4100 40 4100 -4000 10 -4000Z\" fill=\"#000000\"/>\n")
        << text;
}

TEST(SVGContext, dashesGoOnWhereACutLineComesBack)
{
    const std::string text = body([](SVGContext& context) {
        context.setLineDash({{6.0, 4.0}, 0.0});
        context.drawStrokedPath(line(-2000007.0, 10.0, 2000000.0, 10.0));
    });
    // The visible piece begins 1,995,999 points along the line: 9 points into the pattern.
    EXPECT_EQ(text, "<path d=\"M-4008 40L4108 40\" fill=\"none\" stroke=\"#000000\" stroke-miterlimit=\"10\" stroke-dasharray=\"6 4\" stroke-dashoffset=\"9\"/>\n");
}
