#include "PixelFills.h"

#include "../platform/graphics/PixelAlignedContext.h"
#include "../platform/graphics/RecordingContext.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using Lines = std::vector<std::string>;

constexpr std::size_t kMany = 100'000;
const Rect kArea(0.0, 0.0, 20.0, 10.0);
const Color kRed(1.0, 0.0, 0.0);
const Color kGreen(0.0, 1.0, 0.0);

std::string fillOf(const Rect& rect)
{
    return "fill " + toString(Path::pathWithRect(rect));
}

class PixelFillsTest : public testing::Test {
protected:
    void fill(PixelFills& fills, const Rect& rect, const Color& color)
    {
        context.setFillColor(color);
        fills.fill(rect, color);
    }

    /// The calls without the colours that `fill` sets.
    Lines painted() const
    {
        Lines lines;
        int depth = 0;
        for (const std::string& call : target.calls()) {
            const bool isInside = depth > 0;
            depth += call == "save" ? 1 : call == "restore" ? -1 : 0;
            if (call.starts_with("fill ") || isInside || depth > 0)
                lines.push_back(call);
        }
        return lines;
    }

    RecordingContext target;
    PixelAlignedContext context{target, 1.0};
};

TEST_F(PixelFillsTest, FillsOfOneColourReachTheContextAsWhatTheyCoverTogether)
{
    PixelFills fills(context, kArea, kMany);
    fill(fills, {2.0, 0.0, 1.0, 4.0}, kRed);
    fill(fills, {2.0, 0.0, 1.0, 7.0}, kRed);
    fill(fills, {2.0, 0.0, 1.0, 2.0}, kRed);
    fill(fills, {5.0, 1.0, 3.0, 2.0}, kRed);
    EXPECT_TRUE(painted().empty());
    fills.flush();
    EXPECT_EQ(painted(), (Lines{"save", "fillColor (1, 0, 0, 1)", fillOf({2.0, 0.0, 1.0, 7.0}), "fillColor (1, 0, 0, 1)", fillOf({5.0, 1.0, 3.0, 2.0}), "restore"}));
}

TEST_F(PixelFillsTest, TheLastColourOfAPixelIsItsOwn)
{
    PixelFills fills(context, kArea, kMany);
    fill(fills, {2.0, 0.0, 1.0, 6.0}, kRed);
    fill(fills, {2.0, 2.0, 1.0, 2.0}, kGreen);
    fill(fills, {2.0, 5.0, 1.0, 1.0}, kGreen);
    fill(fills, {2.0, 5.0, 1.0, 1.0}, kRed);
    fills.flush();
    EXPECT_EQ(painted(),
        (Lines{"save", "fillColor (1, 0, 0, 1)", fillOf({2.0, 0.0, 1.0, 2.0}), "fillColor (0, 1, 0, 1)", fillOf({2.0, 2.0, 1.0, 2.0}), "fillColor (1, 0, 0, 1)",
            fillOf({2.0, 4.0, 1.0, 2.0}), "restore"}));
}

TEST_F(PixelFillsTest, EdgesGoWhereTheContextPutsThem)
{
    PixelFills fills(context, kArea, kMany);
    fill(fills, {2.4, 0.6, 1.2, 2.0}, kRed);
    fills.flush();
    EXPECT_EQ(painted(), (Lines{"save", "fillColor (1, 0, 0, 1)", fillOf({2.0, 1.0, 2.0, 2.0}), "restore"}));
}

TEST_F(PixelFillsTest, ATranslucentFillComesAfterWhatWasBeforeIt)
{
    PixelFills fills(context, kArea, kMany);
    const Color translucent(0.0, 0.0, 1.0, 0.5);
    fill(fills, {2.0, 0.0, 1.0, 4.0}, kRed);
    fill(fills, {2.0, 0.0, 1.0, 3.0}, translucent);
    fill(fills, {2.0, 0.0, 1.0, 1.0}, kGreen);
    fills.flush();
    fills.flush();
    EXPECT_EQ(painted(),
        (Lines{"save", "fillColor (1, 0, 0, 1)", fillOf({2.0, 0.0, 1.0, 4.0}), "restore", "save", "fillColor (0, 0, 1, 0.5)", fillOf({2.0, 0.0, 1.0, 3.0}), "restore", "save",
            "fillColor (0, 1, 0, 1)", fillOf({2.0, 0.0, 1.0, 1.0}), "restore"}));
}

TEST_F(PixelFillsTest, APixelGetsAsManyTranslucentFillsAsCoverIt)
{
    PixelFills fills(context, kArea, kMany);
    const Color translucent(0.0, 0.0, 1.0, 0.5);
    fill(fills, {2.0, 0.0, 1.0, 3.0}, translucent);
    fill(fills, {2.0, 0.0, 3.0, 5.0}, translucent);
    fill(fills, {2.0, 4.0, 1.0, 2.0}, translucent);
    fills.flush();
    EXPECT_EQ(painted(),
        (Lines{"save", "fillColor (0, 0, 1, 0.5)", fillOf({2.0, 0.0, 1.0, 6.0}), fillOf({2.0, 0.0, 1.0, 3.0}), fillOf({2.0, 4.0, 1.0, 1.0}), fillOf({3.0, 0.0, 2.0, 5.0}),
            "restore"}));
}

TEST_F(PixelFillsTest, TranslucentFillsEndWhereTheyChangeNothing)
{
    PixelFills fills(context, kArea, kMany);
    const Color translucent(0.0, 0.0, 1.0, 0.5);
    for (int i = 0; i < 1000; ++i)
        fill(fills, {2.0, 0.0, 1.0, 3.0}, translucent);
    fills.flush();
    // Without the lines around and of the colour.
    EXPECT_EQ(painted().size() - 3, std::size_t{PixelFills::mostBlends(0.5)});
}

/// A component after a translucent fill. The rounding adds to each product before a division by 255.
int filled(int pixel, int part, int alpha, int rounding)
{
    return part + ((255 - alpha) * pixel + rounding) / 255;
}

TEST_F(PixelFillsTest, KnowsWhenATranslucentFillChangesNothing)
{
    for (int alpha = 1; alpha < 255; ++alpha) {
        const int enough = PixelFills::mostBlends(alpha / 255.0);
        for (const int rounding : {0, 127, 254}) {
            for (int part = 0; part <= alpha; ++part) {
                for (int start : {0, 128, 255}) {
                    int pixel = start;
                    for (int i = 0; i < enough; ++i)
                        pixel = std::min(filled(pixel, part, alpha, rounding), 255);
                    ASSERT_EQ(std::min(filled(pixel, part, alpha, rounding), 255), pixel) << alpha << " " << part << " " << start << " " << rounding;
                }
            }
        }
    }
    EXPECT_EQ(PixelFills::mostBlends(0.0), 255);
    EXPECT_EQ(PixelFills::mostBlends(1e-9), 255);
    EXPECT_LE(PixelFills::mostBlends(0.5), 23);
}

TEST_F(PixelFillsTest, EqualRunsOfNeighbouringColumnsAreOneRectangle)
{
    PixelFills fills(context, kArea, kMany);
    fill(fills, {1.0, 0.0, 4.0, 2.0}, kRed);
    fill(fills, {1.0, 4.0, 4.0, 2.0}, kRed);
    fill(fills, {2.0, 4.0, 1.0, 3.0}, kRed);
    fill(fills, {4.0, 0.0, 1.0, 2.0}, kGreen);
    fills.flush();
    const std::string red = "fillColor (1, 0, 0, 1)";
    EXPECT_EQ(painted(),
        (Lines{"save", red, fillOf({1.0, 4.0, 1.0, 2.0}), red, fillOf({2.0, 4.0, 1.0, 3.0}), red, fillOf({1.0, 0.0, 3.0, 2.0}), "fillColor (0, 1, 0, 1)",
            fillOf({4.0, 0.0, 1.0, 2.0}), red, fillOf({3.0, 4.0, 2.0, 2.0}), "restore"}));
}

TEST_F(PixelFillsTest, WhatLiesOutsideIsCutOffTwoPixelsBeyondTheClip)
{
    PixelFills fills(context, kArea, kMany);
    fill(fills, {-100.0, -100.0, 101.0, 300.0}, kRed);
    fill(fills, {30.0, 0.0, 5.0, 5.0}, kRed);
    fills.flush();
    EXPECT_EQ(painted(), (Lines{"save", "fillColor (1, 0, 0, 1)", fillOf({-2.0, -2.0, 3.0, 14.0}), "restore"}));
}

TEST_F(PixelFillsTest, MoreColoursThanItKeepsApartAreNotMixedUp)
{
    PixelFills fills(context, {0.0, 0.0, 300.0, 10.0}, kMany);
    for (int i = 0; i < 300; ++i)
        fill(fills, {static_cast<double>(i), 0.0, 1.0, 1.0}, Color(i / 300.0, 0.0, 0.0));
    fills.flush();
    Lines expected = {"save"};
    for (int i = 0; i < 300; ++i) {
        if (i == 255)
            expected.insert(expected.end(), {"restore", "save"});
        expected.push_back("fillColor " + toString(Color(i / 300.0, 0.0, 0.0)));
        expected.push_back(fillOf({static_cast<double>(i), 0.0, 1.0, 1.0}));
    }
    expected.push_back("restore");
    EXPECT_EQ(painted(), expected);
}

TEST_F(PixelFillsTest, AllFillsPassWhereItIsNotWorthItOrNotKnownToBeExact)
{
    const auto passes = [](DrawingContext& drawn, const RecordingContext& calls, const Rect& area, std::size_t expected) {
        PixelFills fills(drawn, area, expected);
        fills.fill({2.0, 0.0, 1.0, 4.0}, kRed);
        fills.fill({2.0, 0.0, 1.0, 3.0}, kRed);
        return calls.calls().size() == 2;
    };
    EXPECT_TRUE(passes(context, target, kArea, 2047));
    RecordingContext unknown;
    EXPECT_TRUE(passes(unknown, unknown, kArea, kMany));
    for (const Rect& area : {Rect(), Rect(5.0, 5.0, -5.0, 5.0), Rect(0.0, 0.0, 1e5, 1.0), Rect(0.0, 0.0, 3e4, 3e4)}) {
        RecordingContext calls;
        PixelAlignedContext aligned(calls, 1.0);
        EXPECT_TRUE(passes(aligned, calls, area, kMany)) << toString(area);
    }
}

} // namespace
} // namespace TOLVGraphing
