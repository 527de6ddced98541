#include "ForwardingContext.h"

#include "../text/AttributedString.h"
#include "PixelAlignedContext.h"
#include "RecordingContext.h"

#include <gtest/gtest.h>

namespace TOLVGraphing {
namespace {

void drawEverything(DrawingContext& context)
{
    const Path path = Path::pathWithRect({0.25, 0.5, 2.0, 1.0});
    context.saveState();
    context.concatenateTransform({1.0, 0.0, 0.0, -1.0, 0.5, 100.0});
    context.clipToPath(path, FillRule::NonZero);
    context.clipToPath(path, FillRule::EvenOdd);
    context.setFillColor(Color(0.1, 0.2, 0.3, 0.4));
    context.setStrokeColor(std::nullopt);
    context.setLineWidth(1.5);
    context.setLineDash({{5.0, 2.5}, 1.0});
    context.setLineCap(LineCap::Round);
    context.setLineJoin(LineJoin::Bevel);
    context.setMiterLimit(7.0);
    context.drawFilledPath(path, FillRule::EvenOdd);
    context.drawStrokedPath(path);
    context.drawText(AttributedString("Tj"), {1.0, 2.0});
    context.fillRect({1.0, 2.0, 3.0, 4.0});
    context.addRect({1.0, 2.0, 3.0, 4.0});
    context.strokePath();
    context.restoreState();
    context.restoreState();
}

TEST(ForwardingContext, HandsEverythingOn)
{
    RecordingContext direct;
    drawEverything(direct);
    ASSERT_EQ(direct.calls().size(), 18U);
    RecordingContext target;
    ForwardingContext context(target);
    drawEverything(context);
    EXPECT_EQ(target.calls(), direct.calls());
}

TEST(ForwardingContext, AsksForWholePixelsToo)
{
    RecordingContext recording;
    ForwardingContext unknown(recording);
    EXPECT_EQ(unknown.wholePixelsOfFill({1.0, 2.0, 3.0, 4.0}), std::nullopt);
    PixelAlignedContext target(recording, 2.0);
    ForwardingContext context(static_cast<DrawingContext&>(target));
    EXPECT_EQ(context.wholePixelsOfFill({1.0, 2.0, 3.0, 4.0}), Rect(2.0, 4.0, 6.0, 8.0));
    EXPECT_EQ(context.fillOfWholePixels({2.0, 4.0, 6.0, 8.0}), Rect(1.0, 2.0, 3.0, 4.0));
}

} // namespace
} // namespace TOLVGraphing
