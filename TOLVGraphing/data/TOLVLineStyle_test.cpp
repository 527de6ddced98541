#include "TOLVLineStyle.h"

#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/Path.h"
#include "../platform/graphics/RecordingContext.h"

#include <gtest/gtest.h>

namespace TOLVGraphing {
namespace {

const Color kRed(1.0, 0.0, 0.0);

TEST(TOLVLineStyle, IsSolidOnePointWideAndColourlessAtFirst)
{
    const TOLVLineStyle style;
    EXPECT_EQ(style.thickness(), 1.0);
    EXPECT_FALSE(style.patternValues());
    EXPECT_FALSE(style.color());
}

TEST(TOLVLineStyle, PredefinedPatterns)
{
    using Pattern = std::vector<float>;
    EXPECT_EQ(TOLVLineStyle::dashedLineStyle()->patternValues(), (Pattern{5.0F, 2.0F}));
    EXPECT_EQ(TOLVLineStyle::dashDotLineStyle()->patternValues(), (Pattern{5.0F, 5.0F, 1.0F, 5.0F}));
    EXPECT_EQ(TOLVLineStyle::dottedLineStyle()->patternValues(), (Pattern{1.0F, 1.0F}));
    for (const auto& style : {TOLVLineStyle::dashedLineStyle(), TOLVLineStyle::dashDotLineStyle(), TOLVLineStyle::dottedLineStyle()}) {
        EXPECT_FALSE(style->color());
        EXPECT_EQ(style->thickness(), 1.0);
    }
    const auto solid = TOLVLineStyle::solidLineWithColor(kRed, 2.5);
    EXPECT_FALSE(solid->patternValues());
    EXPECT_EQ(solid->color(), kRed);
    EXPECT_EQ(solid->thickness(), 2.5);
}

TEST(TOLVLineStyle, CopyIsIndependent)
{
    const auto style = TOLVLineStyle::dashedLineStyle();
    style->setColor(kRed);
    style->setThickness(3.0);
    const auto copy = style->copy();
    EXPECT_EQ(*copy, *style);
    style->setPatternValues(std::nullopt);
    style->setColor(std::nullopt);
    style->setThickness(9.0);
    EXPECT_EQ(copy->patternValues(), (std::vector<float>{5.0F, 2.0F}));
    EXPECT_EQ(copy->color(), kRed);
    EXPECT_EQ(copy->thickness(), 3.0);
}

TEST(TOLVLineStyle, StyleWithColorChangesOnlyTheColourOfACopy)
{
    const auto style = TOLVLineStyle::dashedLineStyle();
    style->setThickness(2.0);
    const auto red = style->styleWithColor(kRed);
    EXPECT_NE(red, style);
    EXPECT_EQ(red->patternValues(), style->patternValues());
    EXPECT_EQ(red->thickness(), 2.0);
    EXPECT_EQ(red->color(), kRed);
    EXPECT_FALSE(style->color());
}

TEST(TOLVLineStyle, SetPatternSetsDashAndWidth)
{
    RecordingContext context;
    TOLVLineStyle::dashDotLineStyle()->setPatternInContext(context);
    EXPECT_EQ(context.text(), "lineDash 0 [5, 5, 1, 5]\nlineWidth 1\n");
}

TEST(TOLVLineStyle, EmptyOrMissingPatternLeavesTheDashInForce)
{
    RecordingContext context;
    TOLVLineStyle style;
    style.setPatternInContext(context);
    style.setPatternValues(std::vector<float>());
    style.setPatternInContext(context);
    EXPECT_EQ(context.text(), "");
    style.setInContext(context);
    EXPECT_EQ(context.text(), "strokeColor none\nlineWidth 1\n");
}

TEST(TOLVLineStyle, SetInContextSetsPatternColourAndThicknessInThisOrder)
{
    RecordingContext context;
    const auto style = TOLVLineStyle::dashedLineStyle()->styleWithColor(kRed);
    style->setThickness(2.0);
    style->setInContext(context);
    EXPECT_EQ(context.text(), "lineDash 0 [5, 2]\nlineWidth 2\nstrokeColor (1, 0, 0, 1)\nlineWidth 2\n");
}

TEST(TOLVLineStyle, PatternIsNotScaledByTheThicknessAndWidensItsFloats)
{
    RecordingContext context;
    TOLVLineStyle style;
    style.setThickness(4.0);
    style.setPatternValues(std::vector<float>{0.5F, 0.1F});
    style.setPatternInContext(context);
    EXPECT_EQ(context.calls().front(), "lineDash 0 [0.5, 0.10000000149011612]");
}

TEST(TOLVLineStyle, SetUsesTheCurrentContextAndNeedsNone)
{
    const auto style = TOLVLineStyle::solidLineWithColor(kRed, 1.5);
    style->set();
    RecordingContext context;
    const CurrentContextScope scope(context);
    style->set();
    EXPECT_EQ(context.text(), "strokeColor (1, 0, 0, 1)\nlineWidth 1.5\n");
}

TEST(TOLVLineStyle, PathTakesTheDashAndKeepsItsWidth)
{
    Path path;
    path.setLineWidth(7.0);
    path.setLineDashStyle(TOLVLineStyle::dashedLineStyle().get());
    EXPECT_EQ(path.lineDash(), (LineDash{{5.0, 2.0}, 0.0}));
    EXPECT_EQ(path.lineWidth(), 7.0);
}

TEST(TOLVLineStyle, PathBecomesSolidWithoutAPattern)
{
    TOLVLineStyle empty;
    empty.setPatternValues(std::vector<float>());
    const TOLVLineStyle missing;
    const TOLVLineStyle* const styles[] = {&empty, &missing, nullptr};
    for (const TOLVLineStyle* style : styles) {
        Path path;
        path.setLineDash(LineDash{{3.0}, 1.0});
        path.setLineDashStyle(style);
        EXPECT_EQ(path.lineDash(), LineDash{});
    }
}

} // namespace
} // namespace TOLVGraphing
