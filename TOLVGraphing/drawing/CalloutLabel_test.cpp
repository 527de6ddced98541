#include "CalloutLabel.h"

#include <tests/support/DrawnLines.h>
#include <tests/support/Generated.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::EvenTextScope;
using testing_support::Generated;
using testing_support::linesDrawn;
using Lines = std::vector<std::string>;
using Categories = std::vector<std::vector<CalloutLabel>>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

CalloutLabel labelAt(const Rect& rect, const std::string& name = "label")
{
    return {AttributedString(name), rect};
}

/// "a (b) [c] -d-": the labels in the order of choice, those that collide with a label in round brackets, with a dot in square ones, and those that are not finite between dashes.
std::string summary(const std::vector<CalloutLabelPlacement>& placements)
{
    std::string words;
    for (const CalloutLabelPlacement& placement : placements) {
        const std::string& name = placement.label.string.string();
        words += words.empty() ? "" : " ";
        switch (placement.fate) {
        case CalloutFate::Kept: words += name; break;
        case CalloutFate::CollidesWithCallout: words += "(" + name + ")"; break;
        case CalloutFate::CollidesWithDot: words += "[" + name + "]"; break;
        case CalloutFate::NotFinite: words += "-" + name + "-"; break;
        }
    }
    return words;
}

std::string chosen(const Categories& categories, const std::vector<Rect>& dots = {})
{
    return summary(placeCalloutLabels(categories, dots));
}

TEST(CalloutLabel, StandsCentredThreeAndAHalfPointsAboveItsPoint)
{
    const EvenTextScope text;
    const AttributedString string("1,234", makeTextAttributes(Font{"HelveticaNeue", 11.0}));
    EXPECT_EQ(toString(rectForCalloutLabel(string, {100.0, 50.0})), "(86.25, 53.5, 27.5, 11)");
    EXPECT_EQ(toString(rectForCalloutLabel(AttributedString("", string.attributes()), {100.0, 50.0})), "(100, 53.5, 0, 11)");
}

TEST(CalloutLabel, OverlapNeedsCommonArea)
{
    const CalloutLabel label = labelAt({0.0, 0.0, 10.0, 10.0});
    EXPECT_TRUE(label.overlapsRect({9.75, 9.75, 5.0, 5.0}));
    EXPECT_FALSE(label.overlapsRect({10.0, 0.0, 5.0, 5.0}));
    EXPECT_FALSE(label.overlapsRect({0.0, -5.0, 5.0, 5.0}));
    EXPECT_FALSE(label.overlapsRect({5.0, 5.0, 0.0, 5.0}));
    EXPECT_FALSE(label.overlapsRect({kNaN, 5.0, 5.0, 5.0}));
}

TEST(CalloutLabel, PaddingGrowsItOnEverySide)
{
    const CalloutLabel label = labelAt({0.0, 0.0, 10.0, 10.0});
    const Rect beside[] = {{12.0, 0.0, 5.0, 5.0}, {-7.0, 0.0, 5.0, 5.0}, {0.0, 12.0, 5.0, 5.0}, {0.0, -7.0, 5.0, 5.0}};
    for (const Rect& rect : beside) {
        EXPECT_FALSE(label.overlapsRect(rect)) << toString(rect);
        EXPECT_FALSE(label.overlapsRect(rect, 2.0)) << toString(rect);
        EXPECT_TRUE(label.overlapsRect(rect, 2.25)) << toString(rect);
    }
    EXPECT_FALSE(label.overlapsRect({9.0, 0.0, 5.0, 5.0}, -1.0));
}

TEST(CalloutLabel, ItsOwnDotNeverBlocksALabel)
{
    EXPECT_EQ(chosen({{labelAt({40.0, 43.5, 20.0, 11.0}, "a")}}, {{47.0, 37.0, 6.0, 6.0}}), "a");
    // Half a point lower it would only touch.
    EXPECT_EQ(chosen({{labelAt({40.0, 43.0, 20.0, 11.0}, "a")}}, {{47.0, 37.0, 6.0, 6.0}}), "a");
    EXPECT_EQ(chosen({{labelAt({40.0, 42.75, 20.0, 11.0}, "a")}}, {{47.0, 37.0, 6.0, 6.0}}), "[a]");
}

TEST(CalloutLabel, OfEqualHeightsTheFirstSeriesGoesFirst)
{
    EXPECT_EQ(chosen({{labelAt({0.0, 5.0, 20.0, 11.0}, "a"), labelAt({0.0, 5.0, 20.0, 11.0}, "b"), labelAt({30.0, 5.0, 20.0, 11.0}, "c")}}), "a (b) c");
}

TEST(CalloutLabel, TheHigherLabelOfACategoryGoesFirst)
{
    EXPECT_EQ(chosen({{labelAt({0.0, 5.0, 20.0, 11.0}, "low"), labelAt({0.0, 30.0, 20.0, 11.0}, "high"), labelAt({0.0, 20.0, 20.0, 11.0}, "middle")}}), "high (middle) low");
}

TEST(CalloutLabel, LowerCategoriesGoFirst)
{
    EXPECT_EQ(chosen({{labelAt({0.0, 5.0, 20.0, 11.0}, "a")}, {}, {labelAt({10.0, 9.0, 20.0, 11.0}, "b")}, {labelAt({25.0, 5.0, 20.0, 11.0}, "c")}}), "a (b) c");
}

TEST(CalloutLabel, DotsOfEveryCategoryBlock)
{
    const Categories categories{{labelAt({0.0, 5.0, 20.0, 11.0}, "a")}, {labelAt({100.0, 5.0, 20.0, 11.0}, "b")}};
    EXPECT_EQ(chosen(categories, {{110.0, 10.0, 6.0, 6.0}, {15.0, 0.0, 6.0, 6.0}}), "[a] [b]");
    // What is dropped for a dot blocks nothing.
    EXPECT_EQ(chosen({{labelAt({0.0, 5.0, 20.0, 11.0}, "a")}, {labelAt({10.0, 5.0, 20.0, 11.0}, "b")}}, {{2.0, 6.0, 6.0, 6.0}}), "[a] b");
}

TEST(CalloutLabel, ACollisionNamesTheLabelThatWasKept)
{
    const Categories categories{{labelAt({0.0, 5.0, 20.0, 11.0}, "a"), labelAt({0.0, 50.0, 20.0, 11.0}, "b")},
        {labelAt({10.0, 7.0, 20.0, 11.0}, "c"), labelAt({500.0, 5.0, 20.0, 11.0}, "d")}, {labelAt({510.0, 5.0, 20.0, 11.0}, "e")}};
    const auto placements = placeCalloutLabels(categories, {});
    ASSERT_EQ(summary(placements), "b a (c) d (e)");
    EXPECT_EQ(placements[2].collidesWith, 1U);
    EXPECT_EQ(placements[4].collidesWith, 3U);
    EXPECT_EQ(placements[1].collidesWith, std::nullopt);
    EXPECT_EQ(placements[1].category, 0U);
    EXPECT_EQ(placements[1].position, 0U);
    EXPECT_EQ(placements[3].category, 1U);
    EXPECT_EQ(placements[3].position, 1U);
}

TEST(CalloutLabel, LabelsAndDotsThatAreNotFiniteAreLeftOut)
{
    EXPECT_EQ(
        chosen({{labelAt({kNaN, 5.0, 20.0, 11.0}, "a"), labelAt({0.0, kNaN, 20.0, 11.0}, "b"), labelAt({0.0, 5.0, 20.0, 11.0}, "c"), labelAt({0.0, kInfinity, 20.0, 11.0}, "d")}},
            {{kNaN, 5.0, 6.0, 6.0}, {0.0, -kInfinity, 6.0, kInfinity}}),
        "c -a- -b- -d-");
}

TEST(CalloutLabel, NoLabelsGiveNoPlacements)
{
    EXPECT_TRUE(placeCalloutLabels({}, {}).empty());
    EXPECT_TRUE(placeCalloutLabels(Categories(5), std::vector<Rect>{{0.0, 0.0, 6.0, 6.0}}).empty());
}

TEST(CalloutLabel, AgreesWithLookingAtAllLabelsAndDots)
{
    Generated generated(6);
    for (int round = 0; round < 200; ++round) {
        Categories categories(1 + generated.whole(12));
        std::vector<Rect> dots;
        for (std::size_t i = 0; i < categories.size(); ++i) {
            for (std::uint32_t j = generated.whole(7); j > 0; --j) {
                // Few different heights give labels of equal height.
                const double y = round % 2 == 0 ? generated.number(0.0, 120.0) : static_cast<double>(generated.whole(8)) * 9.0;
                const Point point{static_cast<double>(i) * generated.number(5.0, 30.0), generated.whole(20) == 0 ? kNaN : y};
                categories[i].push_back(labelAt({point.x - 11.0, point.y + 3.5, 22.0, 11.0}));
                if (generated.whole(3) != 0)
                    dots.push_back({point.x - 3.0, point.y - 3.0, 6.0, 6.0});
            }
        }
        // Label by label, from category to category and from top to bottom.
        std::vector<Rect> kept;
        for (const auto& labels : categories) {
            std::vector<Rect> rects;
            for (const CalloutLabel& label : labels) {
                if (label.rect.valid())
                    rects.push_back(label.rect);
            }
            std::stable_sort(rects.begin(), rects.end(), [](const Rect& a, const Rect& b) { return a.y() > b.y(); });
            for (const Rect& rect : rects) {
                const auto overlaps = [&](const Rect& other) { return intersectsRect(rect, other); };
                if (std::none_of(dots.begin(), dots.end(), overlaps) && std::none_of(kept.begin(), kept.end(), overlaps))
                    kept.push_back(rect);
            }
        }
        std::vector<Rect> found;
        const auto placements = placeCalloutLabels(categories, dots);
        for (const CalloutLabelPlacement& placement : placements) {
            if (placement.fate == CalloutFate::Kept)
                found.push_back(placement.label.rect);
            ASSERT_EQ(placement.collidesWith.has_value(), placement.fate == CalloutFate::CollidesWithCallout);
            if (placement.collidesWith) {
                const CalloutLabelPlacement& other = placements[*placement.collidesWith];
                ASSERT_EQ(other.fate, CalloutFate::Kept);
                ASSERT_TRUE(placement.label.overlapsRect(other.label.rect));
            }
        }
        ASSERT_EQ(found, kept) << "round " << round;
    }
}

TEST(CalloutLabel, TextsAreDrawnInTheirRectanglesInOrder)
{
    const EvenTextScope text;
    const SharedTextAttributes attributes = makeTextAttributes(Font{"HelveticaNeue", 10.0}, Color(1.0, 0.0, 0.0));
    const std::vector<CalloutLabel> labels{{AttributedString("one", attributes), {1.0, 2.0, 15.0, 10.0}}, {AttributedString("two", attributes), {30.0, 40.0, 15.0, 12.0}}};
    // A text stands at the top of a rectangle that is higher.
    EXPECT_EQ(
        linesDrawn([&] { drawCalloutLabels(labels); }), (Lines{"text \"one\" HelveticaNeue 10 (1, 0, 0, 1) at (1, 2)", "text \"two\" HelveticaNeue 10 (1, 0, 0, 1) at (30, 42)"}));
    EXPECT_TRUE(linesDrawn([] { drawCalloutLabels({}); }).empty());
    EXPECT_NO_THROW(drawCalloutLabels(labels));
}

} // namespace
} // namespace TOLVGraphing
