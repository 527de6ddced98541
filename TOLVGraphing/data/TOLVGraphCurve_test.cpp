#include "TOLVGraphCurve.h"

#include "../platform/foundation/Exception.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/RecordingContext.h"

#include <tests/support/RecordingOpenGL.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace TOLVGraphing {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kUnknownMinimum = std::numeric_limits<float>::max();
constexpr float kUnknownMaximum = -std::numeric_limits<float>::max();
const Rect kRect(0.0, 0.0, 100.0, 10.0);

TOLVGraphCurve::Vector vectorOf(std::vector<float> numbers)
{
    return TOLVRealVector::vectorWithComponents(std::move(numbers));
}

/// A curve over x 0...100 and y 0...10, so that in kRect positions are values.
std::shared_ptr<TOLVGraphCurve> curveOf(std::vector<float> x, std::vector<float> y)
{
    auto curve = TOLVGraphCurve::curveWithX(vectorOf(std::move(x)), vectorOf(std::move(y)), nullptr);
    curve->setXMinimum(0.0F);
    curve->setXMaximum(100.0F);
    curve->setYMinimum(0.0F);
    curve->setYMaximum(10.0F);
    return curve;
}

std::string built(TOLVGraphCurve& curve, const Rect& rect = kRect, bool closed = false)
{
    curve.buildPathWithRect(rect, closed);
    return toString(curve.curve()->path());
}

TEST(TOLVGraphCurve, LengthsThatDifferAreAnError)
{
    try {
        (void)TOLVGraphCurve::curveWithX(vectorOf({1.0F, 2.0F, 3.0F}), vectorOf({1.0F}), nullptr);
        ADD_FAILURE() << "no exception";
    } catch (const Exception& exception) {
        EXPECT_EQ(exception.name(), "LengthMismatch");
        EXPECT_EQ(exception.reason(), "Curve X and Y data length mismatch (3 vs 1)");
    }
    EXPECT_THROW((void)TOLVGraphCurve::curveWithX(nullptr, vectorOf({1.0F}), nullptr), Exception);
}

TEST(TOLVGraphCurve, StartsWithUnknownRangesLinearAndNotDisplayed)
{
    const auto curve = TOLVGraphCurve::curveWithX(nullptr, nullptr, nullptr);
    EXPECT_EQ(curve->xMinimum(), kUnknownMinimum);
    EXPECT_EQ(curve->xMaximum(), kUnknownMaximum);
    EXPECT_EQ(curve->yMinimum(), kUnknownMinimum);
    EXPECT_EQ(curve->yMaximum(), kUnknownMaximum);
    EXPECT_FALSE(curve->xIsLog());
    EXPECT_FALSE(curve->yIsLog());
    EXPECT_FALSE(curve->isDisplayed());
    EXPECT_FALSE(curve->label());
    EXPECT_EQ(curve->pointCount(), 0U);
    EXPECT_TRUE(curve->curve());
}

TEST(TOLVGraphCurve, RangesAreComputedOnceAndKept)
{
    const auto curve = TOLVGraphCurve::curveWithX(vectorOf({1.0F, 2.0F}), vectorOf({7.0F, 5.0F}), nullptr);
    EXPECT_EQ(curve->xMinimum(), 1.0F);
    EXPECT_EQ(curve->xMaximum(), 2.0F);
    EXPECT_EQ(curve->yMinimum(), 5.0F);
    EXPECT_EQ(curve->yMaximum(), 7.0F);
    curve->setX(vectorOf({10.0F, 20.0F}));
    curve->setY(vectorOf({70.0F, 50.0F}));
    EXPECT_EQ(curve->xMinimum(), 1.0F);
    EXPECT_EQ(curve->xMaximum(), 2.0F);
    EXPECT_EQ(curve->yMinimum(), 5.0F);
    EXPECT_EQ(curve->yMaximum(), 7.0F);
    // The sentinels ask for them anew.
    curve->setXMinimum(kUnknownMinimum);
    curve->setXMaximum(kUnknownMaximum);
    curve->setYMinimum(kUnknownMinimum);
    curve->setYMaximum(kUnknownMaximum);
    EXPECT_EQ(curve->xMinimum(), 10.0F);
    EXPECT_EQ(curve->xMaximum(), 20.0F);
    EXPECT_EQ(curve->yMinimum(), 50.0F);
    EXPECT_EQ(curve->yMaximum(), 70.0F);
}

TEST(TOLVGraphCurve, ASetRangeIsAnsweredAsItIs)
{
    const auto curve = curveOf({1.0F, 2.0F}, {3.0F, 4.0F});
    curve->setXMinimum(kNaN);
    EXPECT_TRUE(std::isnan(curve->xMinimum()));
    curve->setYMaximum(-1.0F);
    EXPECT_EQ(curve->yMaximum(), -1.0F);
}

TEST(TOLVGraphCurve, SharesStyleAndCurve)
{
    const auto style = TOLVLineStyle::dashedLineStyle();
    const auto curve = TOLVGraphCurve::curveWithX(vectorOf({1.0F}), vectorOf({1.0F}), style);
    EXPECT_EQ(curve->lineStyle(), style);
    const auto polyline = std::make_shared<TOLVCurve>();
    curve->setCurve(polyline);
    EXPECT_EQ(curve->curve(), polyline);
    curve->setCurve(nullptr);
    ASSERT_TRUE(curve->curve());
    EXPECT_NE(curve->curve(), polyline);
}

TEST(TOLVGraphCurve, AllSamplesBelowTheRangeMakeAnEmptyPath)
{
    const auto curve = curveOf({-3.0F, -2.0F, -1.0F}, {1.0F, 2.0F, 3.0F});
    EXPECT_EQ(built(*curve), "");
    EXPECT_EQ(built(*curve, {5.0, 7.0, 100.0, 10.0}, true), "M 0 7");
}

TEST(TOLVGraphCurve, ASampleAboveTheRangeEndsTheBuild)
{
    const auto curve = curveOf({10.0F, 20.0F, 101.0F, 30.0F, 40.0F}, {1.0F, 2.0F, 3.0F, 4.0F, 5.0F});
    EXPECT_EQ(built(*curve), "M 10 1 L 10 1");
}

TEST(TOLVGraphCurve, TheColumnsExtremesComeInTheirOrderOfOccurrence)
{
    const std::vector<float> x = {10.0F, 50.25F, 50.5F, 50.75F, 80.0F};
    EXPECT_EQ(built(*curveOf(x, {0.0F, 5.0F, 1.0F, 3.0F, 0.0F})), "M 10 0 L 10 0 L 50.25 5 L 50.75 1");
    EXPECT_EQ(built(*curveOf(x, {0.0F, 1.0F, 5.0F, 3.0F, 0.0F})), "M 10 0 L 10 0 L 50.25 1 L 50.75 5");
}

TEST(TOLVGraphCurve, OneSampleIsOneVertex)
{
    const auto curve = curveOf({20.0F}, {4.0F});
    EXPECT_EQ(built(*curve), "M 20 4");
    EXPECT_EQ(built(*curve, kRect, true), "M 20 0 L 20 4 L 20 0");
}

TEST(TOLVGraphCurve, AColumnThatNaNOpensIsDrawnAtZero)
{
    EXPECT_EQ(built(*curveOf({10.0F, 20.0F, 30.0F}, {1.0F, kNaN, 3.0F}), {0.0, 5.0, 100.0, 10.0}), "M 10 6 L 10 6 L 20 0");
    // Inside a column NaN loses every comparison.
    EXPECT_EQ(built(*curveOf({10.0F, 20.25F, 20.5F, 20.75F, 40.0F}, {1.0F, 2.0F, kNaN, 4.0F, 1.0F})), "M 10 1 L 10 1 L 20.25 2 L 20.75 4");
}

TEST(TOLVGraphCurve, TheClosingPointStandsUnderTheLastVertexAlsoWhenThatWasDropped)
{
    const float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(built(*curveOf({10.0F, 20.0F, 30.0F}, {1.0F, infinity, 3.0F}), kRect, true), "M 10 0 L 10 1 L 10 1 L 20 0");
}

TEST(TOLVGraphCurve, TheLastColumnReachedIsNotDrawn)
{
    EXPECT_EQ(built(*curveOf({10.0F, 20.0F, 99.25F, 99.5F, 99.75F}, {1.0F, 2.0F, 3.0F, 9.0F, 0.0F})), "M 10 1 L 10 1 L 20 2");
}

TEST(TOLVGraphCurve, NoSamplesMakeAnEmptyPathWhenTheRangeIsSet)
{
    const auto curve = curveOf({}, {});
    EXPECT_EQ(built(*curve), "");
    EXPECT_EQ(built(*curve, kRect, true), "");
}

TEST(TOLVGraphCurve, AnUnknownSmallestYIsAnError)
{
    const std::vector<std::vector<float>> ordinates = {{}, {kNaN, kNaN}, {kUnknownMinimum}};
    for (const auto& y : ordinates) {
        const auto curve = TOLVGraphCurve::curveWithX(vectorOf(std::vector<float>(y.size(), 1.0F)), vectorOf(y), nullptr);
        try {
            curve->buildForRect(kRect);
            ADD_FAILURE() << "no exception";
        } catch (const Exception& exception) {
            EXPECT_EQ(exception.name(), "BadGraphData");
            EXPECT_EQ(exception.reason(), "Could not obtain an overall minimum Y value");
        }
    }
}

TEST(TOLVGraphCurve, VectorsThatDifferInLengthLaterAreReadToTheShorterEnd)
{
    const auto curve = curveOf({10.0F, 20.0F, 30.0F}, {1.0F, 2.0F, 3.0F});
    curve->setY(vectorOf({1.0F}));
    EXPECT_EQ(built(*curve), "M 10 1");
    curve->setX(vectorOf({}));
    EXPECT_EQ(built(*curve), "");
    curve->setX(vectorOf({10.0F}));
    curve->setY(nullptr);
    EXPECT_EQ(built(*curve), "");
}

TEST(TOLVGraphCurve, BuildingStartsOverEachTime)
{
    const auto curve = curveOf({10.0F, 20.0F, 30.0F}, {1.0F, 2.0F, 3.0F});
    const std::string first = built(*curve);
    EXPECT_EQ(built(*curve), first);
    curve->buildForRect(kRect);
    EXPECT_EQ(toString(curve->curve()->path()), first);
}

TEST(TOLVGraphCurve, DrawsTheBuiltPathWithItsStyle)
{
    const auto curve = curveOf({10.0F, 20.0F, 30.0F}, {1.0F, 2.0F, 3.0F});
    curve->setLineStyle(TOLVLineStyle::solidLineWithColor(Color(1.0, 0.0, 0.0), 2.0));
    curve->buildForRect(kRect);
    RecordingContext context;
    const CurrentContextScope scope(context);
    curve->drawInRect({});
    const std::string stroked = "save\nstrokeColor (1, 0, 0, 1)\nlineWidth 2\nstroke M 10 1 L 10 1 L 20 2\nrestore\n";
    EXPECT_EQ(context.text(), stroked);
    EXPECT_EQ(curve->curve()->lineStyle(), curve->lineStyle());
    context.clearCalls();
    curve->drawFilledInRect({}, Color(0.0, 0.0, 1.0));
    EXPECT_EQ(context.text(), "save\nfillColor (0, 0, 1, 1)\neofill M 10 1 L 10 1 L 20 2\nrestore\n" + stroked);
}

TEST(TOLVGraphCurve, DrawsTheBuiltPathInSpaceAtADepth)
{
    const auto openGL = std::make_shared<testing_support::RecordingOpenGLContext>("A");
    const testing_support::OpenGLScope scope(openGL);
    const auto curve = curveOf({10.0F, 20.0F, 30.0F}, {1.0F, 2.0F, 3.0F});
    curve->buildForRect(kRect);
    curve->draw3DInRect({5.0, 5.0, 5.0, 5.0}, 7.5F);
    EXPECT_EQ(openGL->lines(), (std::vector<std::string>{"perform A", "begin 3", "vertex3f 10 1 7.5", "vertex3f 10 1 7.5", "vertex3f 20 2 7.5", "end", "done"}));
}

} // namespace
} // namespace TOLVGraphing
