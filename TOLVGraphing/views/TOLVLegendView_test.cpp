#include "TOLVLegendView.h"

#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/RecordingContext.h"

#include <tests/support/DrawnLines.h>
#include <tests/support/PlacedDrawing.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::EvenTextScope;
using testing_support::PlacedMark;
using testing_support::placedMarks;
using Lines = std::vector<std::string>;
using Entries = TOLVLegendView::Entries;

const Color kRed(1.0, 0.0, 0.0);
const Color kBlue(0.0, 0.0, 1.0, 0.5);

Lines displayed(View& view)
{
    RecordingContext context;
    view.displayInContext(context);
    EXPECT_EQ(context.depth(), 0);
    return context.calls();
}

/// Answers entries of its own and notes who asks.
class OwnEntries final : public TOLVLegendViewDataSource {
public:
    explicit OwnEntries(Entries entries) : m_entries(std::move(entries)) {}

    [[nodiscard]] bool hasEntriesForLegendView() const override { return true; }
    Entries entriesForLegendView(TOLVLegendView& view) override
    {
        askers.push_back(&view);
        return m_entries;
    }

    std::vector<const TOLVLegendView*> askers;

private:
    Entries m_entries;
};

class NoEntries final : public TOLVLegendViewDataSource {};

/// Titles are 10 points high and 5 a character wide.
class TOLVLegendViewTest : public testing::Test {
protected:
    EvenTextScope text;
    std::shared_ptr<TOLVLegendView> view = TOLVLegendView::initWithEntries({{"abcd", kRed}, {"ef", kBlue}}, {10.0, 20.0, 200.0, 100.0});
};

TEST_F(TOLVLegendViewTest, HasTheEntriesAndTheFrameItWasMadeWith)
{
    EXPECT_EQ(view->entries(), (Entries{{"abcd", kRed}, {"ef", kBlue}}));
    EXPECT_EQ(view->frame(), Rect(10.0, 20.0, 200.0, 100.0));
    EXPECT_EQ(view->dataSource(), nullptr);
    EXPECT_TRUE(view->isFlipped());
}

TEST_F(TOLVLegendViewTest, ItsEntriesAreCopied)
{
    Entries entries{{"a", kRed}};
    view->setEntries(entries);
    entries[0].title = "b";
    EXPECT_EQ(view->entries(), (Entries{{"a", kRed}}));
}

TEST_F(TOLVLegendViewTest, DrawsASwatchBesideEachTitle)
{
    const auto marks = placedMarks(displayed(*view));
    ASSERT_EQ(marks.size(), 4U);
    // The view is 100 high. A title's line begins 2 below the line before; its swatch, 6 by 6 points, ends at the bottom of 10 points and 2 from the right edge.
    EXPECT_EQ(marks[0].rect, Rect(192.0, 90.0, 6.0, 6.0));
    EXPECT_EQ(marks[1].rect, Rect(192.0, 80.0, 6.0, 6.0));
    EXPECT_EQ(marks[2].text, "abcd");
    EXPECT_EQ(marks[2].rect.origin, (Point{200.0 - 20.0 - 4.0 - 10.0, 88.0}));
    EXPECT_EQ(marks[3].text, "ef");
    EXPECT_EQ(marks[3].rect.origin, (Point{200.0 - 10.0 - 4.0 - 10.0, 78.0}));
    for (const PlacedMark& mark : marks) {
        EXPECT_TRUE(mark.isUpright);
        EXPECT_EQ(mark.clip, Rect(0.0, 0.0, 200.0, 100.0));
    }
}

TEST_F(TOLVLegendViewTest, DrawsSwatchesInTheEntriesColoursAndTitlesInBlackHelvetica)
{
    const Lines expected{
        "fillColor (1, 0, 0, 1)",
        "fill M 192 4 L 198 4 L 198 10 L 192 10 Z",
        "fillColor (0, 0, 1, 0.5)",
        "fill M 192 14 L 198 14 L 198 20 L 192 20 Z",
        "save",
        "transform [1 0 0 -1 166 12]",
        "text \"abcd\" Helvetica 10 (0, 0, 0, 1) at (0, 0)",
        "restore",
        "save",
        "transform [1 0 0 -1 176 22]",
        "text \"ef\" Helvetica 10 (0, 0, 0, 1) at (0, 0)",
        "restore",
    };
    const auto drawn = testing_support::linesDrawn([&] {
        const FlippedCoordinatesScope flipped(true);
        view->drawRect(view->bounds());
    });
    EXPECT_EQ(drawn, expected);
}

TEST_F(TOLVLegendViewTest, AnEntryWithoutAColourKeepsItsLineAndHasNoSwatch)
{
    view->setEntries({{"ab", std::nullopt}, {"", kRed}});
    const auto marks = placedMarks(displayed(*view));
    ASSERT_EQ(marks.size(), 3U);
    EXPECT_EQ(marks[0].rect, Rect(192.0, 80.0, 6.0, 6.0));
    EXPECT_EQ(marks[1].text, "ab");
    EXPECT_EQ(marks[1].rect.origin, (Point{176.0, 88.0}));
    EXPECT_EQ(marks[2].text, "");
}

TEST_F(TOLVLegendViewTest, WithoutEntriesDrawsNothing)
{
    view->setEntries({});
    EXPECT_TRUE(testing_support::linesDrawn([&] { view->drawRect(view->bounds()); }).empty());
    const auto source = std::make_shared<OwnEntries>(Entries());
    view->setEntries({{"abcd", kRed}});
    view->setDataSource(source);
    EXPECT_TRUE(testing_support::linesDrawn([&] { view->drawRect(view->bounds()); }).empty());
}

TEST_F(TOLVLegendViewTest, SwatchesFollowTheBoundsAndTitlesTheRectangleToDraw)
{
    RecordingContext context;
    view->displayInContext(context, {50.0, 30.0, 100.0, 40.0});
    const auto marks = placedMarks(context.calls());
    ASSERT_EQ(marks.size(), 4U);
    EXPECT_EQ(marks[0].rect, Rect(192.0, 90.0, 6.0, 6.0));
    // The rectangle's upper edge is 70 on the page.
    EXPECT_EQ(marks[2].rect.origin, (Point{150.0 - 20.0 - 4.0 - 10.0, 58.0}));
    EXPECT_EQ(marks[3].rect.origin, (Point{150.0 - 10.0 - 4.0 - 10.0, 48.0}));
}

TEST_F(TOLVLegendViewTest, AskedEntriesReplaceItsOwnAtEachDrawing)
{
    const auto source = std::make_shared<OwnEntries>(Entries{{"own", kBlue}});
    view->setDataSource(source);
    EXPECT_EQ(view->entries().size(), 2U);
    displayed(*view);
    EXPECT_EQ(view->entries(), (Entries{{"own", kBlue}}));
    view->setEntries({});
    const auto marks = placedMarks(displayed(*view));
    EXPECT_EQ(view->entries(), (Entries{{"own", kBlue}}));
    ASSERT_EQ(marks.size(), 2U);
    EXPECT_EQ(marks[1].text, "own");
    EXPECT_EQ(source->askers, (std::vector<const TOLVLegendView*>{view.get(), view.get()}));
}

TEST_F(TOLVLegendViewTest, ADataSourceThatAnswersNoEntriesLeavesThoseGiven)
{
    const auto source = std::make_shared<NoEntries>();
    EXPECT_FALSE(source->hasEntriesForLegendView());
    EXPECT_TRUE(source->entriesForLegendView(*view).empty());
    view->setDataSource(source);
    EXPECT_EQ(placedMarks(displayed(*view)).size(), 4U);
    EXPECT_EQ(view->entries(), (Entries{{"abcd", kRed}, {"ef", kBlue}}));
}

TEST_F(TOLVLegendViewTest, OtherEntriesAndAnotherDataSourceAskForRedisplay)
{
    int requests = 0;
    view->setRedisplayHandler([&] { ++requests; });
    const auto taken = [&] {
        displayed(*view);
        return std::exchange(requests, 0);
    };
    taken();
    view->setEntries(Entries(view->entries()));
    view->setDataSource({});
    EXPECT_EQ(taken(), 0);
    view->setEntries({{"gh", kRed}});
    EXPECT_EQ(taken(), 1);
    const auto source = std::make_shared<OwnEntries>(Entries{{"ij", kBlue}});
    view->setDataSource(source);
    EXPECT_EQ(taken(), 1);
    // Entries that come while it is drawn do not.
    view->setDataSource(source);
    EXPECT_EQ(taken(), 0);
    EXPECT_EQ(view->entries(), (Entries{{"ij", kBlue}}));
    view->setDataSource({});
    EXPECT_EQ(taken(), 1);
}

TEST_F(TOLVLegendViewTest, ItsDataSourceIsNotKept)
{
    auto source = std::make_shared<OwnEntries>(Entries{{"own", kBlue}});
    const std::weak_ptr<OwnEntries> weak = source;
    view->setDataSource(source);
    EXPECT_EQ(view->dataSource(), source);
    source.reset();
    EXPECT_TRUE(weak.expired());
    EXPECT_EQ(view->dataSource(), nullptr);
    EXPECT_EQ(placedMarks(displayed(*view)).size(), 4U);
}

TEST_F(TOLVLegendViewTest, WithoutAContextAsksNobody)
{
    const auto source = std::make_shared<OwnEntries>(Entries{{"own", kBlue}});
    view->setDataSource(source);
    view->drawRect(view->bounds());
    EXPECT_TRUE(source->askers.empty());
}

} // namespace
} // namespace TOLVGraphing
