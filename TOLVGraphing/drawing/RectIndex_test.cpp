#include "RectIndex.h"

#include <tests/support/Generated.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::Generated;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kLargest = std::numeric_limits<double>::max();

/// The answer has to be a rectangle that overlaps, and there has to be one exactly when looking at all of them finds one.
void expectAnswer(const RectIndex& index, const std::vector<Rect>& rects, const Rect& question)
{
    const bool isOverlapped = question.valid() && std::any_of(rects.begin(), rects.end(), [&](const Rect& rect) { return rect.valid() && intersectsRect(rect, question); });
    const auto answer = index.anyOverlapping(question);
    ASSERT_EQ(answer.has_value(), isOverlapped) << toString(question);
    if (answer) {
        ASSERT_LT(*answer, rects.size());
        EXPECT_TRUE(intersectsRect(rects[*answer], question)) << toString(question) << ", answered " << toString(rects[*answer]);
    }
}

TEST(RectIndex, AnswersNothingWhileItIsEmpty)
{
    EXPECT_EQ(RectIndex().anyOverlapping({0.0, 0.0, 10.0, 10.0}), std::nullopt);
    EXPECT_EQ(RectIndex().anyOverlapping({-1e300, -1e300, kLargest, kLargest}), std::nullopt);
}

TEST(RectIndex, NumbersRectanglesAsTheyAreAdded)
{
    RectIndex index;
    index.add({0.0, 0.0, 10.0, 10.0});
    index.add({kNaN, 0.0, 10.0, 10.0});
    index.add({20.0, 0.0, 0.0, 10.0});
    index.add({100.0, 0.0, 10.0, 10.0});
    EXPECT_EQ(index.anyOverlapping({5.0, 5.0, 1.0, 1.0}), 0U);
    EXPECT_EQ(index.anyOverlapping({105.0, 5.0, 1.0, 1.0}), 3U);
}

TEST(RectIndex, RectanglesThatOnlyTouchDoNotOverlap)
{
    // Edges on the borders of cells and beside them.
    for (const double edge : {10.0, 16.0, 32.0, -16.0}) {
        RectIndex index;
        index.add({edge - 10.0, edge - 10.0, 10.0, 10.0});
        EXPECT_FALSE(index.anyOverlapping({edge, edge - 10.0, 10.0, 10.0})) << edge;
        EXPECT_FALSE(index.anyOverlapping({edge - 10.0, edge, 10.0, 10.0})) << edge;
        EXPECT_TRUE(index.anyOverlapping({edge - 0.25, edge - 0.25, 10.0, 10.0})) << edge;
    }
}

TEST(RectIndex, EmptyAndInfiniteRectanglesOverlapNothing)
{
    const std::vector<Rect> none = {
        {5.0, 5.0, 0.0, 4.0}, {5.0, 5.0, 4.0, 0.0}, {9.0, 9.0, -4.0, 4.0}, {5.0, 5.0, 4.0, kNaN}, {kNaN, 5.0, 4.0, 4.0}, {5.0, 5.0, kInfinity, 4.0}, {-kInfinity, 5.0, 4.0, 4.0}};
    const Rect solid(0.0, 0.0, 10.0, 10.0);
    RectIndex index;
    for (const Rect& rect : none)
        index.add(rect);
    EXPECT_EQ(index.anyOverlapping(solid), std::nullopt);
    EXPECT_EQ(index.anyOverlapping({-1e9, -1e9, 2e9, 2e9}), std::nullopt);
    index.add(solid);
    EXPECT_EQ(index.anyOverlapping({4.0, 4.0, 1.0, 1.0}), none.size());
    for (const Rect& rect : none)
        EXPECT_EQ(index.anyOverlapping(rect), std::nullopt) << toString(rect);
}

TEST(RectIndex, HugeRectanglesAreFoundAndFind)
{
    const std::vector<Rect> rects = {{0.0, 0.0, 10.0, 10.0}, {-1e6, 500.0, 2e6, 1.0}, {2000.0, -1e12, 1.0, 2e12}, {1e300, 1e300, 1e299, 1e299}, {-kLargest, -1e5, 1e300, 1e4},
        {1e17, 1e17, 64.0, 64.0}, {-3e10, -3e10, 10.0, 10.0}};
    RectIndex index;
    for (const Rect& rect : rects)
        index.add(rect);
    for (const Rect& rect : rects)
        expectAnswer(index, rects, rect);
    const Rect questions[] = {{-1e9, -1e9, 2e9, 2e9}, {5e5, 500.5, 1.0, 1.0}, {2000.5, 9e11, 0.25, 0.25}, {1.05e300, 1.05e300, 1.0, 1.0}, {1.05e300, 1.05e300, 1e290, 1e290},
        {-kLargest, -kLargest, kLargest, kLargest}, {kLargest, kLargest, 1.0, 1.0}, {-1.7e308, -99999.0, 1e293, 5.0}, {9.0, 9.0, kLargest, kLargest}, {-4e10, -4e10, 5.0, 5.0},
        {11.0, 11.0, 100.0, 100.0}, {1e17 + 32.0, 1e17, 32.0, 32.0}};
    for (const Rect& question : questions)
        expectAnswer(index, rects, question);
}

TEST(RectIndex, AgreesWithLookingAtAllRectangles)
{
    Generated generated(5);
    for (int round = 0; round < 60; ++round) {
        // From all in a few cells to one in a thousand.
        const double scale = round % 3 == 0 ? 60.0 : round % 3 == 1 ? 600.0 : 2e10;
        const auto generatedRect = [&] {
            const double sizes[] = {generated.number(0.0, 12.0), generated.number(0.0, scale), generated.number(-3.0, 3.0), 16.0, 20000.0};
            return Rect(generated.number(-scale, scale), generated.number(-scale, scale), sizes[generated.whole(5)], sizes[generated.whole(4)]);
        };
        RectIndex index;
        std::vector<Rect> rects;
        for (int i = 0; i < 40; ++i) {
            rects.push_back(generatedRect());
            index.add(rects.back());
            for (int question = 0; question < 10; ++question)
                expectAnswer(index, rects, generatedRect());
        }
        if (HasFailure())
            return;
    }
}

} // namespace
} // namespace TOLVGraphing
