#include "AttributedString.h"

#include "../graphics/CurrentContext.h"
#include "../graphics/RecordingContext.h"
#include "TextSystem.h"

#include <gtest/gtest.h>

namespace TOLVGraphing {
namespace {

using Lines = std::vector<std::string>;

TEST(AttributedString, AbsentAttributesMeanBlackHelvetica)
{
    const AttributedString text("Tj", SharedTextAttributes());
    EXPECT_EQ(text.attributes(), TextAttributes());
    EXPECT_EQ(text.attributes().fontOrDefault(), (Font{"Helvetica", 12.0}));
    EXPECT_EQ(text.attributes().foregroundColorOrDefault(), Color::blackColor());
}

TEST(AttributedString, IsAValue)
{
    const SharedTextAttributes shared = makeTextAttributes(Font{"HelveticaNeue", 9.0}, Color::grayColor());
    AttributedString text("Tj", shared);
    const AttributedString copy = text;
    EXPECT_EQ(text, copy);
    text.setForegroundColor(Color::whiteColor());
    EXPECT_NE(text, copy);
    EXPECT_EQ(text.attributes().foregroundColor, Color::whiteColor());
    EXPECT_EQ(copy.attributes().foregroundColor, Color::grayColor());
    EXPECT_EQ(shared->foregroundColor, Color::grayColor());
    text.setForegroundColor(std::nullopt);
    EXPECT_EQ(text.attributes().foregroundColorOrDefault(), Color::blackColor());
    EXPECT_NE(AttributedString("a"), AttributedString("b"));
}

TEST(AttributedString, IsMeasuredByTheTextSystem)
{
    const TextSystemScope scope(nullptr);
    EXPECT_EQ(AttributedString("abcd", {Font{"Helvetica", 10.0}, std::nullopt}).size(), (Size{24.0, 12.0}));
}

TEST(AttributedString, DrawsWithItsLowerLeftCornerAtAPoint)
{
    RecordingContext context;
    const AttributedString text("Tj", {Font{"Helvetica", 10.0}, std::nullopt});
    text.drawAtPoint({1.0, 2.0});
    {
        const CurrentContextScope scope(context);
        text.drawAtPoint({1.0, 2.0});
    }
    EXPECT_EQ(context.calls(), Lines{"text \"Tj\" Helvetica 10 (0, 0, 0, 1) at (1, 2)"});
}

TEST(AttributedString, DrawsWithItsUpperLeftCornerInThatOfARectangle)
{
    const TextSystemScope textScope(nullptr);
    RecordingContext context;
    const AttributedString text("Tj", {Font{"Helvetica", 10.0}, std::nullopt});
    text.drawInRect({5.0, 0.0, 1.0, 100.0});
    {
        const CurrentContextScope scope(context);
        text.drawInRect({5.0, 0.0, 1.0, 100.0});
    }
    EXPECT_EQ(context.calls(), Lines{"text \"Tj\" Helvetica 10 (0, 0, 0, 1) at (5, 88)"});
}

// Flipped coordinates: y grows downwards, and whoever says so has turned the context about already.

TEST(AttributedString, DrawsUprightBelowItsPointInFlippedCoordinates)
{
    const TextSystemScope textScope(nullptr);
    RecordingContext context;
    const AttributedString text("Tj", {Font{"Helvetica", 10.0}, std::nullopt});
    const FlippedCoordinatesScope outside(true);
    text.drawAtPoint({1.0, 2.0});
    {
        const CurrentContextScope scope(context);
        const FlippedCoordinatesScope flipped(true);
        text.drawAtPoint({1.0, 2.0});
    }
    // The line is 12 high: its lower edge is at 14, and y grows upwards from there.
    EXPECT_EQ(context.calls(), (Lines{"save", "transform [1 0 0 -1 1 14]", "text \"Tj\" Helvetica 10 (0, 0, 0, 1) at (0, 0)", "restore"}));
}

TEST(AttributedString, ItsUpperLeftCornerIsThatOfARectangleInFlippedCoordinatesToo)
{
    const TextSystemScope textScope(nullptr);
    RecordingContext context;
    const AttributedString text("Tj", {Font{"Helvetica", 10.0}, std::nullopt});
    {
        const CurrentContextScope scope(context);
        const FlippedCoordinatesScope flipped(true);
        text.drawInRect({5.0, 7.0, 1.0, 100.0});
    }
    EXPECT_EQ(context.calls(), (Lines{"save", "transform [1 0 0 -1 5 19]", "text \"Tj\" Helvetica 10 (0, 0, 0, 1) at (0, 0)", "restore"}));
}

TEST(AttributedString, AllItsLinesHangBelowThePointInFlippedCoordinates)
{
    const TextSystemScope textScope(nullptr);
    RecordingContext context;
    const AttributedString text("T\nj", {Font{"Helvetica", 10.0}, std::nullopt});
    ASSERT_EQ(text.size().height, 24.0);
    {
        const CurrentContextScope scope(context);
        const FlippedCoordinatesScope flipped(true);
        text.drawAtPoint({0.0, 0.0});
    }
    EXPECT_EQ(context.calls().at(1), "transform [1 0 0 -1 0 24]");
}

} // namespace
} // namespace TOLVGraphing
