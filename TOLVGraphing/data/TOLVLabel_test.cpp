#include "TOLVLabel.h"

#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/RecordingContext.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace TOLVGraphing {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::shared_ptr<TOLVLabel> labelAt(const Rect& rect)
{
    return TOLVLabel::labelWithAttributedString(AttributedString("text"), rect);
}

bool overlaps(const Rect& rect, const std::vector<Rect>& placed)
{
    std::vector<std::shared_ptr<TOLVLabel>> labels;
    for (const Rect& one : placed)
        labels.push_back(labelAt(one));
    return labelAt(rect)->overlapsLabelInArray(labels);
}

TEST(TOLVLabel, OverlapsWhatIsPlacedWithinTheDefaultInsets)
{
    const Rect own(0.0, 0.0, 10.0, 10.0);
    struct Case {
        Rect placed;
        bool expected;
    };
    const Case cases[] = {
        {{12.0, 0.0, 10.0, 10.0}, true},
        {{16.0, 0.0, 10.0, 10.0}, false},
        {{15.0, 0.0, 10.0, 10.0}, false}, // touches only
        {{14.999, 0.0, 10.0, 10.0}, true},
        {{-15.0, 0.0, 10.0, 10.0}, false},
        {{-14.999, 0.0, 10.0, 10.0}, true},
        {{0.0, 14.0, 10.0, 10.0}, false},
        {{0.0, 13.0, 10.0, 10.0}, false}, // touches only
        {{0.0, 12.0, 10.0, 10.0}, true},
        {{0.0, -13.0, 10.0, 10.0}, false},
        {{0.0, -12.0, 10.0, 10.0}, true},
    };
    for (const Case& one : cases)
        EXPECT_EQ(overlaps(own, {one.placed}), one.expected) << toString(one.placed);
}

TEST(TOLVLabel, InsetsGrowTheirOwnSides)
{
    const auto own = labelAt({0.0, 0.0, 10.0, 10.0});
    const EdgeInsets insets{1.0, 2.0, 4.0, 8.0};
    struct Case {
        Rect placed;
        bool expected;
    };
    const Case cases[] = {
        {{11.9, 0.0, 1.0, 1.0}, true}, // its left side grows by 2
        {{12.0, 0.0, 1.0, 1.0}, false},
        {{-8.9, 0.0, 1.0, 1.0}, true}, // its right side by 8
        {{-9.0, 0.0, 1.0, 1.0}, false},
        {{0.0, 13.9, 1.0, 1.0}, true}, // its lower side by 4
        {{0.0, 14.0, 1.0, 1.0}, false},
        {{0.0, -1.9, 1.0, 1.0}, true}, // its upper side by 1
        {{0.0, -2.0, 1.0, 1.0}, false},
    };
    for (const Case& one : cases) {
        const std::vector<std::shared_ptr<TOLVLabel>> labels = {labelAt(one.placed)};
        EXPECT_EQ(own->overlapsLabelInArray(labels, insets), one.expected) << toString(one.placed);
    }
}

TEST(TOLVLabel, AnEmptyListOverlapsNothing)
{
    EXPECT_FALSE(overlaps({0.0, 0.0, 10.0, 10.0}, {}));
}

TEST(TOLVLabel, TheLabelItselfIsNotSkipped)
{
    const auto label = labelAt({0.0, 0.0, 10.0, 10.0});
    const std::vector<std::shared_ptr<TOLVLabel>> list = {label};
    EXPECT_TRUE(label->overlapsLabelInArray(list));
    label->setRect({0.0, 0.0, 0.0, 10.0});
    EXPECT_FALSE(label->overlapsLabelInArray(list));
}

TEST(TOLVLabel, AnEmptyPlacedRectangleStillKeepsItsMargin)
{
    EXPECT_TRUE(overlaps({0.0, 0.0, 10.0, 10.0}, {{5.0, 5.0, 0.0, 0.0}}));
}

TEST(TOLVLabel, NonFinitePlacedLabelsArePassedOver)
{
    const Rect own(0.0, 0.0, 10.0, 10.0);
    for (const Rect& placed :
        {Rect(kNaN, 0.0, 10.0, 10.0), Rect(0.0, kNaN, 10.0, 10.0), Rect(0.0, 0.0, kInfinity, 10.0), Rect(0.0, 0.0, 10.0, kNaN), Rect(-kInfinity, 0.0, 10.0, 10.0)})
        EXPECT_FALSE(overlaps(own, {placed})) << toString(placed);
    EXPECT_TRUE(overlaps(own, {{kNaN, 0.0, 10.0, 10.0}, own}));
}

TEST(TOLVLabel, NullsArePassedOver)
{
    const auto own = labelAt({0.0, 0.0, 10.0, 10.0});
    std::vector<std::shared_ptr<TOLVLabel>> labels = {nullptr};
    EXPECT_FALSE(own->overlapsLabelInArray(labels));
    labels.push_back(labelAt({5.0, 0.0, 10.0, 10.0}));
    EXPECT_TRUE(own->overlapsLabelInArray(labels));
}

TEST(TOLVLabel, LiesOutsideWhenItsCentreDoes)
{
    const Rect area(0.0, 0.0, 100.0, 100.0);
    struct Case {
        Rect rect;
        bool vertical;
        bool expected;
    };
    const Case cases[] = {
        {{95.0, 0.0, 10.0, 5.0}, false, false}, // centre on the edge
        {{96.0, 0.0, 10.0, 5.0}, false, true},
        {{-5.0, 0.0, 10.0, 5.0}, false, false},
        {{-6.0, 0.0, 10.0, 5.0}, false, true},
        {{50.0, 900.0, 10.0, 5.0}, false, false}, // the other direction is not looked at
        {{0.0, 95.0, 5.0, 10.0}, true, false},
        {{0.0, 96.0, 5.0, 10.0}, true, true},
        {{0.0, -5.0, 5.0, 10.0}, true, false},
        {{0.0, -6.0, 5.0, 10.0}, true, true},
        {{900.0, 50.0, 5.0, 10.0}, true, false},
        {{kNaN, 0.0, 10.0, 5.0}, false, false},
    };
    for (const Case& one : cases)
        EXPECT_EQ(labelAt(one.rect)->liesOutsideRect(area, one.vertical), one.expected) << toString(one.rect);
}

TEST(TOLVLabel, DrawsItsTextAtTheOriginWhateverTheSize)
{
    const auto label = TOLVLabel::labelWithAttributedString(AttributedString("5", TextAttributes{Font{"Helvetica", 9.0}, Color(1.0, 0.0, 0.0)}), {3.0, 4.0, 0.0, -1.0});
    label->draw();
    RecordingContext context;
    const CurrentContextScope scope(context);
    label->draw();
    EXPECT_EQ(context.text(), "text \"5\" Helvetica 9 (1, 0, 0, 1) at (3, 4)\n");
}

TEST(TOLVLabel, KeepsACopyOfItsText)
{
    AttributedString text("5");
    const auto label = TOLVLabel::labelWithAttributedString(text, {});
    text.setForegroundColor(Color::whiteColor());
    EXPECT_FALSE(label->label().attributes().foregroundColor);
}

} // namespace
} // namespace TOLVGraphing
