#include "RecordingContext.h"

#include "../text/AttributedString.h"
#include "GraphicsStateSaver.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace TOLVGraphing {
namespace {

using Lines = std::vector<std::string>;

TEST(RecordingContext, WritesEveryCallAsOneLine)
{
    RecordingContext context;
    const Path path = Path::pathWithRect({0.0, 0.0, 2.0, 1.0});
    context.saveState();
    context.concatenateTransform({1.0, 0.0, 0.0, -1.0, 0.5, 100.0});
    context.clipToPath(path, FillRule::NonZero);
    context.clipToPath(path, FillRule::EvenOdd);
    context.setFillColor(Color(0.1, 0.2, 0.3, 0.4));
    context.setFillColor(std::nullopt);
    context.setStrokeColor(Color::whiteColor());
    context.setStrokeColor(std::nullopt);
    context.setLineWidth(1.0);
    context.setLineDash({{5.0, 2.5}, 1.0});
    context.setLineDash({});
    context.setLineCap(LineCap::Butt);
    context.setLineCap(LineCap::Round);
    context.setLineCap(LineCap::Square);
    context.setLineJoin(LineJoin::Miter);
    context.setLineJoin(LineJoin::Round);
    context.setLineJoin(LineJoin::Bevel);
    context.setMiterLimit(10.0);
    context.drawFilledPath(path, FillRule::NonZero);
    context.drawFilledPath(path, FillRule::EvenOdd);
    context.drawStrokedPath(path);
    context.drawText(AttributedString("Tj", {Font{"HelveticaNeue", 9.5}, Color::grayColor()}), {1.0, 2.0});
    context.drawText(AttributedString("plain"), {0.0, 0.0});
    context.restoreState();
    const Lines expected{"save", "transform [1 0 0 -1 0.5 100]", "clip M 0 0 L 2 0 L 2 1 L 0 1 Z", "eoclip M 0 0 L 2 0 L 2 1 L 0 1 Z", "fillColor (0.1, 0.2, 0.3, 0.4)",
        "fillColor none", "strokeColor (1, 1, 1, 1)", "strokeColor none", "lineWidth 1", "lineDash 1 [5, 2.5]", "lineDash 0 []", "lineCap butt", "lineCap round", "lineCap square",
        "lineJoin miter", "lineJoin round", "lineJoin bevel", "miterLimit 10", "fill M 0 0 L 2 0 L 2 1 L 0 1 Z", "eofill M 0 0 L 2 0 L 2 1 L 0 1 Z",
        "stroke M 0 0 L 2 0 L 2 1 L 0 1 Z", "text \"Tj\" HelveticaNeue 9.5 (0.5, 0.5, 0.5, 1) at (1, 2)", "text \"plain\" Helvetica 12 (0, 0, 0, 1) at (0, 0)", "restore"};
    EXPECT_EQ(context.calls(), expected);
}

TEST(RecordingContext, TextIsTheLinesWithNewlines)
{
    RecordingContext context;
    EXPECT_EQ(context.text(), "");
    context.setLineWidth(0.5);
    context.saveState();
    EXPECT_EQ(context.text(), "lineWidth 0.5\nsave\n");
    context.clearCalls();
    EXPECT_EQ(context.text(), "");
    EXPECT_EQ(context.depth(), 1);
}

TEST(RecordingContext, CountsSavesAndRestores)
{
    RecordingContext context;
    context.saveState();
    context.saveState();
    EXPECT_EQ(context.depth(), 2);
    context.restoreState();
    context.restoreState();
    EXPECT_EQ(context.depth(), 0);
    EXPECT_FALSE(context.hasUnmatchedRestore());
    context.restoreState();
    EXPECT_EQ(context.depth(), 0);
    EXPECT_TRUE(context.hasUnmatchedRestore());
}

TEST(DrawingContext, PaintsAndEmptiesTheCurrentPath)
{
    struct Case {
        const char* expected;
        void (DrawingContext::*operation)();
    };
    const Case cases[] = {
        {"fill M 1 2 L 4 2 L 4 6 L 1 6 Z M 0 0", &DrawingContext::fillPath},
        {"eofill M 1 2 L 4 2 L 4 6 L 1 6 Z M 0 0", &DrawingContext::EOFillPath},
        {"stroke M 1 2 L 4 2 L 4 6 L 1 6 Z M 0 0", &DrawingContext::strokePath},
        {"clip M 1 2 L 4 2 L 4 6 L 1 6 Z M 0 0", &DrawingContext::clip},
        {"eoclip M 1 2 L 4 2 L 4 6 L 1 6 Z M 0 0", &DrawingContext::EOClip},
    };
    for (const Case& one : cases) {
        RecordingContext context;
        Path move;
        move.moveToX(0.0, 0.0);
        context.addRect({1.0, 2.0, 3.0, 4.0});
        context.addPath(move);
        EXPECT_FALSE(context.currentPath().isEmpty());
        (context.*one.operation)();
        EXPECT_EQ(context.calls(), Lines{one.expected});
        EXPECT_TRUE(context.currentPath().isEmpty());
    }
}

TEST(DrawingContext, FillsRectanglesWithoutTouchingTheCurrentPath)
{
    RecordingContext context;
    context.addRect({0.0, 0.0, 1.0, 1.0});
    context.fillRect({0.0, 10.0, 2.0, -3.0});
    context.fill(Rect(0.0, 0.0, 5.0, 5.0), Color(1.0, 0.0, 0.0));
    context.fill(Rect(0.0, 0.0, 5.0, 5.0));
    EXPECT_EQ(context.calls(), (Lines{"fill M 0 10 L 2 10 L 2 7 L 0 7 Z", "fillColor (1, 0, 0, 1)", "fill M 0 0 L 5 0 L 5 5 L 0 5 Z", "fill M 0 0 L 5 0 L 5 5 L 0 5 Z"}));
    EXPECT_FALSE(context.currentPath().isEmpty());
}

TEST(DrawingContext, FillsAndStrokesThePathItIsGivenAfterTheCurrentOne)
{
    RecordingContext context;
    Path path;
    path.moveToX(0.0, 0.0);
    path.addLineToX(1.0, 1.0);
    context.addRect({5.0, 5.0, 1.0, 1.0});
    context.fill(&path, Color::whiteColor());
    context.stroke(&path, Color::blackColor());
    context.addPath(path);
    context.stroke();
    context.addPath(path);
    context.fill();
    EXPECT_EQ(context.calls(),
        (Lines{
            "fillColor (1, 1, 1, 1)", "fill M 5 5 L 6 5 L 6 6 L 5 6 Z M 0 0 L 1 1", "strokeColor (0, 0, 0, 1)", "stroke M 0 0 L 1 1", "stroke M 0 0 L 1 1", "fill M 0 0 L 1 1"}));
}

TEST(DrawingContext, TheCurrentPathIsNotPartOfTheState)
{
    RecordingContext context;
    context.saveState();
    context.addRect({0.0, 0.0, 1.0, 1.0});
    context.restoreState();
    EXPECT_FALSE(context.currentPath().isEmpty());
}

TEST(DrawingContext, IsolatedDrawingRestoresAlsoWhenItThrows)
{
    RecordingContext context;
    context.inIsolatedContext([](DrawingContext& inner) { inner.setLineWidth(3.0); });
    EXPECT_EQ(context.calls(), (Lines{"save", "lineWidth 3", "restore"}));
    EXPECT_THROW(context.inIsolatedContext([](DrawingContext&) { throw std::runtime_error("no"); }), std::runtime_error);
    EXPECT_EQ(context.depth(), 0);
}

TEST(GraphicsStateSaver, RestoresOnEveryWayOut)
{
    RecordingContext context;
    try {
        const GraphicsStateSaver outer(context);
        const GraphicsStateSaver inner(context);
        EXPECT_EQ(context.depth(), 2);
        throw std::runtime_error("no");
    } catch (const std::runtime_error&) {
        EXPECT_EQ(context.depth(), 0);
    }
    EXPECT_EQ(context.calls(), (Lines{"save", "save", "restore", "restore"}));
}

} // namespace
} // namespace TOLVGraphing
