#include "OptionRules.h"

#include "OptionValues.h"

#include <gtest/gtest.h>

#include <string>

namespace TOLVGraphing::app {

TEST(OptionRules, tellWhichDrawingsAnAxisAllows)
{
    struct Case {
        DrawingKind drawing;
        const char* axes;
    };
    const Case cases[] = {
        {DrawingKind::Curve, "linear log "},
        {DrawingKind::PlainCurve, "linear log "},
        {DrawingKind::Dotted, "linear log "},
        {DrawingKind::Line, "line "},
        {DrawingKind::Bar, "bar line "},
        {DrawingKind::X, "linear log bar line "},
        {DrawingKind::Impulse, "linear log bar line "},
    };
    for (const Case& one : cases) {
        std::string axes;
        for (const AxisKind axis : {AxisKind::Linear, AxisKind::Logarithmic, AxisKind::Bar, AxisKind::Line})
            axes += canDrawOnAxis(one.drawing, axis) ? wordFor(axis) + " " : "";
        EXPECT_EQ(axes, one.axes) << wordFor(one.drawing);
        EXPECT_TRUE(canDrawOnAxis(one.drawing, usualXAxis(one.drawing)));
    }
    for (const AxisKind axis : {AxisKind::Linear, AxisKind::Logarithmic, AxisKind::Bar, AxisKind::Line})
        EXPECT_TRUE(canDrawOnAxis(usualDrawing(axis), axis)) << wordFor(axis);
}

TEST(WordFor, isWhatTheOptionsRead)
{
    for (const char* word : {"curve", "plain-curve", "dotted", "line", "bar", "x", "impulse"})
        EXPECT_EQ(wordFor(parseDrawing("--draw", word)), word);
    for (const char* word : {"linear", "log", "bar", "line"})
        EXPECT_EQ(wordFor(parseXAxis("--x-axis", word)), word);
    for (const char* word : {"decimal", "adaptive", "si", "scientific", "date"})
        EXPECT_EQ(wordFor(parseNumberStyle("--x-format", word)), word);
    for (const char* word : {"solid", "dashed", "dash-dot", "dotted"})
        EXPECT_EQ(wordFor(parsePattern("--pattern", word)), word);
}

} // namespace TOLVGraphing::app
