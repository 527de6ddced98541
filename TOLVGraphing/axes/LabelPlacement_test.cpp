#include "LabelPlacement.h"

#include "../graph/TOLVGraph.h"

#include <tests/support/DrawnLines.h>

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using testing_support::EvenTextScope;
using testing_support::linesDrawn;
using testing_support::linesWith;
using Labels = std::vector<std::shared_ptr<TOLVLabel>>;

std::shared_ptr<TOLVLabel> labelAt(const Rect& rect)
{
    return TOLVLabel::labelWithAttributedString(AttributedString("label"), rect);
}

TEST(LabelPlacement, TheFirstOfSeveralOverlappedLabelsIsNamed)
{
    const Labels placed{labelAt({100.0, 0.0, 20.0, 10.0}), labelAt({0.0, 0.0, 20.0, 10.0}), labelAt({10.0, 0.0, 20.0, 10.0})};
    EXPECT_EQ(firstOverlappedLabel(*labelAt({15.0, 0.0, 20.0, 10.0}), placed), placed[1]);
    EXPECT_EQ(firstOverlappedLabel(*labelAt({32.0, 0.0, 20.0, 10.0}), placed), placed[2]);
    EXPECT_EQ(firstOverlappedLabel(*labelAt({50.0, 0.0, 20.0, 10.0}), placed), nullptr);
    EXPECT_EQ(firstOverlappedLabel(*labelAt({15.0, 0.0, 20.0, 10.0}), {}), nullptr);
}

TEST(LabelPlacement, InsetsGrowTheLabelsThatArePlaced)
{
    const Labels placed{labelAt({0.0, 0.0, 20.0, 10.0})};
    const auto label = labelAt({24.0, 0.0, 20.0, 10.0});
    // Without insets of its own a label keeps 5 points to its sides.
    EXPECT_EQ(firstOverlappedLabel(*label, placed), placed[0]);
    EXPECT_EQ(firstOverlappedLabel(*label, placed, EdgeInsets{0.0, 4.0, 0.0, 4.0}), nullptr);
    EXPECT_EQ(firstOverlappedLabel(*label, placed, EdgeInsets{0.0, 0.0, 0.0, 4.5}), placed[0]);
    EXPECT_EQ(firstOverlappedLabel(*label, placed, EdgeInsets{0.0, 4.5, 0.0, 0.0}), nullptr);
    EXPECT_EQ(firstOverlappedLabel(*label, placed, EdgeInsets()), nullptr);
}

TEST(LabelPlacement, OnlyKeptLabelsAreDrawn)
{
    LabelPlacements placements(5);
    const LabelFate fates[] = {LabelFate::Kept, LabelFate::Collides, LabelFate::Kept, LabelFate::Outside, LabelFate::NotFinite};
    for (std::size_t i = 0; i < placements.size(); ++i) {
        placements[i].label = labelAt({static_cast<double>(i), 0.0, 1.0, 1.0});
        placements[i].fate = fates[i];
    }
    EXPECT_EQ(keptLabels(placements), (Labels{placements[0].label, placements[2].label}));
    EXPECT_TRUE(keptLabels({}).empty());
}

// What an axis tells is what it draws.

class TickLabelPlacementsTest : public testing::Test {
protected:
    TickLabelPlacementsTest()
    {
        graph->setMargin({0.0, 0.0, 15.0, 0.0});
        graph->zoomXToFixedMin(0.0F, 100.0F);
        graph->zoomYToFixedMin(0.0, 1.0);
        graph->prepareForDrawingInRect(kRect);
    }

    TOLVAxis& axis() { return *graph->horizontalAxis(); }
    LabelPlacements placements() { return axis().tickLabelPlacements(graph->horizontalAxisRectInRect(kRect)); }

    /// "0 10* 20": the texts, those of minor values with a star and those that are not drawn in brackets.
    std::string summary()
    {
        std::string words;
        for (const LabelPlacement& placement : placements()) {
            const std::string shown = placement.label->label().string() + (placement.isMajor ? "" : "*");
            words += (words.empty() ? "" : " ") + (placement.fate == LabelFate::Kept ? shown : "(" + shown + ")");
        }
        return words;
    }

    const Rect kRect{0.0, 0.0, 400.0, 100.0};
    EvenTextScope text;
    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
};

TEST_F(TickLabelPlacementsTest, MinorValuesAreThoughtOfOnlyWhenTheyMayBeLabelled)
{
    axis().setMajorValues({0.0, 50.0, 100.0});
    axis().setMinorValues({2.0, 25.0});
    EXPECT_EQ(summary(), "0 50 100");
    axis().setDrawsMinorLabels(true);
    EXPECT_EQ(summary(), "0 50 100 (2*) 25*");
    axis().setDrawsMinorLabels(false);
    axis().setMajorValues({50.0});
    EXPECT_EQ(summary(), "50 2* 25*");
}

TEST_F(TickLabelPlacementsTest, EachLabelTellsWhatBecameOfIt)
{
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    axis().setMajorValues({50.0, 51.0, -20.0, notANumber, 52.0});
    axis().setMinorValues({49.0, 10.0});
    axis().setDrawsMinorLabels(true);
    const auto all = placements();
    ASSERT_EQ(all.size(), 7U);
    const LabelFate fates[] = {LabelFate::Kept, LabelFate::Collides, LabelFate::Outside, LabelFate::NotFinite, LabelFate::Collides, LabelFate::Collides, LabelFate::Kept};
    for (std::size_t i = 0; i < all.size(); ++i) {
        EXPECT_EQ(all[i].fate, fates[i]) << i;
        EXPECT_EQ(all[i].collidesWith, all[i].fate == LabelFate::Collides ? all[0].label : nullptr) << i;
        EXPECT_EQ(all[i].isMajor, i < 5) << i;
    }
    EXPECT_EQ(all[4].value, 52.0);
    EXPECT_EQ(all[6].value, 10.0);
}

TEST_F(TickLabelPlacementsTest, WhatIsKeptIsWhatIsDrawn)
{
    axis().setDrawsMinorLabels(true);
    for (const double width : {30.0, 100.0, 400.0, 2000.0}) {
        const Rect rect(0.0, 0.0, width, 100.0);
        graph->prepareForDrawingInRect(rect);
        const Rect axisRect = graph->horizontalAxisRectInRect(rect);
        const auto drawn = linesWith(linesDrawn([&] { axis().drawTickLabelsInRect(axisRect); }), "text");
        const auto kept = linesWith(linesDrawn([&] {
            for (const auto& label : keptLabels(axis().tickLabelPlacements(axisRect)))
                label->draw();
        }),
            "text");
        EXPECT_FALSE(drawn.empty());
        EXPECT_EQ(kept, drawn) << width;
    }
}

TEST_F(TickLabelPlacementsTest, MarkersAreTheirOwnList)
{
    const TOLVAxis::Markers markers{TOLVMarker::markerWithValue(50.0), TOLVMarker::markerWithValue(50.0), TOLVMarker::markerWithValue(900.0)};
    const auto all = axis().markerLabelPlacements(markers, graph->horizontalAxisRectInRect(kRect));
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(all[0].fate, LabelFate::Kept);
    EXPECT_EQ(all[1].fate, LabelFate::Collides);
    EXPECT_EQ(all[1].collidesWith, all[0].label);
    EXPECT_EQ(all[2].fate, LabelFate::Outside);
}

} // namespace
} // namespace TOLVGraphing
