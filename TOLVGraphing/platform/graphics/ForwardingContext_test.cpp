#include "ForwardingContext.h"

#include "../text/AttributedString.h"
#include "PixelAlignedContext.h"
#include "RecordingContext.h"

#include <gtest/gtest.h>

#include <array>

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
    context.drawFilledRepeats(path, FillRule::EvenOdd, std::array{Point{10.0, 20.0}, Point{-1.0, 0.5}});
    context.drawStrokedRepeats(path, std::array{Point{30.0, 40.0}});
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
    ASSERT_EQ(direct.calls().size(), 21U);
    RecordingContext target;
    ForwardingContext context(target);
    drawEverything(context);
    EXPECT_EQ(target.calls(), direct.calls());
}

/// Counts repeats instead of drawing them.
class QuickContext final : public ForwardingContext {
public:
    explicit QuickContext(DrawingContext& target) : ForwardingContext(target) {}

    [[nodiscard]] bool drawsRepeatsQuickly() const override { return true; }
    void drawFilledRepeats(const Path&, FillRule, std::span<const Point> places) override { filled += places.size(); }
    void drawStrokedRepeats(const Path&, std::span<const Point> places) override { stroked += places.size(); }

    std::size_t filled = 0;
    std::size_t stroked = 0;
};

TEST(ForwardingContext, RepeatsAreAsManyPathsWhereTheTargetIsNotQuick)
{
    RecordingContext recording;
    Path path;
    path.moveToX(0.0, 1.0);
    path.addLineToX(2.0, 5.0);
    recording.drawStrokedRepeats(path, std::array{Point{10.0, 20.0}, Point{-1.0, 0.5}});
    recording.drawFilledRepeats(path, FillRule::EvenOdd, std::array{Point{10.0, 20.0}});
    EXPECT_EQ(recording.calls(), (std::vector<std::string>{"stroke M 10 21 L 12 25", "stroke M -1 1.5 L 1 5.5", "eofill M 10 21 L 12 25"}));
    EXPECT_FALSE(recording.drawsRepeatsQuickly());
}

TEST(ForwardingContext, HandsRepeatsOnInOnePiece)
{
    RecordingContext recording;
    QuickContext target(recording);
    ForwardingContext context(static_cast<DrawingContext&>(target));
    EXPECT_TRUE(context.drawsRepeatsQuickly());
    const Path path = Path::pathWithRect({0.0, 0.0, 2.0, 1.0});
    context.drawFilledRepeats(path, FillRule::NonZero, std::array{Point{1.0, 2.0}, Point{3.0, 4.0}});
    context.drawStrokedRepeats(path, std::array{Point{1.0, 2.0}});
    EXPECT_EQ(target.filled, 2U);
    EXPECT_EQ(target.stroked, 1U);
    EXPECT_TRUE(recording.calls().empty());
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
